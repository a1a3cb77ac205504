// The curves of an element list as toXPath builds them, as plain values.
#include "drawing/element_curves.h"

#include <zgraphics/model.h>

#include <algorithm>
#include <vector>

namespace {

// A segment of a contour: its point and its handles, relative to the point.
struct Node
{
    zgPoint point;
    zgPoint handleIn;
    zgPoint handleOut;
};

struct Contour
{
    std::vector<Node> nodes;
    bool closed = false;
};

// Writes the values of the curve from a to b into values, added as
// zgCurve::getValues adds them. One array serves all curves; a visitor that
// keeps a copy keeps its own, as the writes detach a shared array.
void setCurveValues(QVector<double> &values, const Node &a, const Node &b)
{
    values[0] = a.point.x;
    values[1] = a.point.y;
    values[2] = a.point.x + a.handleOut.x;
    values[3] = a.point.y + a.handleOut.y;
    values[4] = b.point.x + b.handleIn.x;
    values[5] = b.point.y + b.handleIn.y;
    values[6] = b.point.x;
    values[7] = b.point.y;
}

const Node &nextNode(const Contour &contour, int i)
{
    const int n = int(contour.nodes.size());
    return contour.nodes[i >= n - 1 ? 0 : i + 1];
}

// zgPath::isClockwise of a fresh closed contour: its area, summed over its
// curves from 0.0, is not negative.
bool isClockwise(const Contour &contour, QVector<double> &values)
{
    double area = 0.0;
    const int n = int(contour.nodes.size());
    for (int i = 0; i < n; ++i) {
        setCurveValues(values, contour.nodes[i], nextNode(contour, i));
        area += zgCurve::getArea(values);
    }
    return area >= 0.0;
}

// zgPath::reverse: the segments in reverse order, each with its handles exchanged.
void reverse(Contour &contour)
{
    std::reverse(contour.nodes.begin(), contour.nodes.end());
    for (Node &node : contour.nodes)
        std::swap(node.handleIn, node.handleOut);
}

// The close element: the contour is closed, and a last point within the
// joining tolerance of the first merges into it, giving it its handle in.
void closeContour(Contour &contour)
{
    contour.closed = true;
    std::vector<Node> &nodes = contour.nodes;
    if (nodes.size() < 2 || !nodes.front().point.isClose(nodes.back().point, 1.0))
        return;
    nodes.front().handleIn = nodes.back().handleIn;
    nodes.pop_back();
}

std::vector<Contour> contoursOf(const QVector<ZDPathElement> &elements)
{
    std::vector<Contour> contours;
    const int count = elements.size();
    for (int i = 0; i < count; ++i) {
        const ZDPathElement &e = elements.at(i);
        switch (e.type) {
        case ZDMoveToElement:
            contours.emplace_back();
            contours.back().nodes.push_back({ zgPoint(e.x, e.y), zgPoint(), zgPoint() });
            break;
        case ZDLineToElement:
            if (!contours.empty())
                contours.back().nodes.push_back({ zgPoint(e.x, e.y), zgPoint(), zgPoint() });
            break;
        case ZDCurveToElement:
            if (i + 2 < count) {
                if (!contours.empty()) {
                    const ZDPathElement &control2 = elements.at(i + 1);
                    const ZDPathElement &to = elements.at(i + 2);
                    Node &last = contours.back().nodes.back();
                    last.handleOut = zgPoint(e.x, e.y).subtract(last.point);
                    const zgPoint end(to.x, to.y);
                    contours.back().nodes.push_back(
                            { end, zgPoint(control2.x, control2.y).subtract(end), zgPoint() });
                }
                i += 2;
            }
            break;
        case ZDCloseElement:
            if (!contours.empty())
                closeContour(contours.back());
            break;
        default:
            break;
        }
    }
    return contours;
}

} // namespace

void zgForEachElementCurve(const QVector<ZDPathElement> &elements,
                           const std::function<bool(const QVector<double> &)> &visit)
{
    std::vector<Contour> contours = contoursOf(elements);
    QVector<double> values(8);
    for (int k = 0; k < int(contours.size()); ++k) {
        Contour &contour = contours[k];
        if (contour.closed && isClockwise(contour, values) != (k == 0))
            reverse(contour);
    }
    for (const Contour &contour : contours) {
        const int n = int(contour.nodes.size());
        const int curveCount = contour.closed ? n : n - 1;
        for (int i = 0; i < curveCount; ++i) {
            setCurveValues(values, contour.nodes[i], nextNode(contour, i));
            if (!visit(values))
                return;
        }
    }
}
