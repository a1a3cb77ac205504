// ZDPath to and from the object graph: one zgPath contour per subpath.
#include "drawing/element_contours.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <cmath>

namespace {

QPointF pointOf(const ZDPathElement &element)
{
    return QPointF(element.x, element.y);
}

bool isZeroExactly(const zgPoint &handle)
{
    return handle.x == 0.0 && handle.y == 0.0;
}

// Appends the piece from segment a to segment b: a line if both handles are
// exactly zero, else a cubic ending at end.
void appendPiece(ZDPath &path, const zgSegment *a, const zgSegment *b, const QPointF &end)
{
    if (isZeroExactly(a->handleOut) && isZeroExactly(b->handleIn)) {
        path.lineTo(b->point.toPt());
        return;
    }
    path.cubicTo(a->point.add(a->handleOut).toPt(), b->point.add(b->handleIn).toPt(), end);
}

void appendContour(ZDPath &path, const zgPath *contour)
{
    const QList<zgSegment *> &segments = contour->segments;
    const int n = segments.size();
    if (n < 2)
        return;
    path.moveTo(segments.first()->point.toPt());
    for (int i = 0; i + 1 < n; ++i)
        appendPiece(path, segments.at(i), segments.at(i + 1), segments.at(i + 1)->point.toPt());
    if (!contour->closed)
        return;
    // The closing curve ends on the start truncated toward zero; closeSubpath
    // then snaps it back onto the exact start, which lies less than one unit away.
    const zgPoint start = segments.first()->point;
    appendPiece(path, segments.last(), segments.first(),
                QPointF(std::trunc(start.x), std::trunc(start.y)));
    path.closeSubpath();
}

} // namespace

QVector<zgPath *> zgContoursOfElements(const QVector<ZDPathElement> &elements, int start,
                                       XPath *parent)
{
    QVector<zgPath *> contours;
    zgPath *current = nullptr;
    const int count = elements.size();
    for (int i = qMax(0, start); i < count; ++i) {
        const ZDPathElement &e = elements.at(i);
        switch (e.type) {
        case ZDMoveToElement:
            current = new zgPath(parent, false);
            contours.append(current);
            current->moveTo(e.x, e.y);
            break;
        case ZDLineToElement:
            if (current)
                current->lineTo(e.x, e.y);
            break;
        case ZDCurveToElement:
            if (i + 2 < count) {
                if (current)
                    current->cubicCurveTo(zgPoint(pointOf(e)), zgPoint(pointOf(elements.at(i + 1))),
                                          zgPoint(pointOf(elements.at(i + 2))));
                i += 2;
            }
            break;
        case ZDCloseElement:
            if (current) {
                current->setClosed(true);
                // Joining tolerance of drawing paths: a last point within one
                // unit of the first merges into it.
                current->join(current, 1.0);
            }
            break;
        default:
            break;
        }
    }
    return contours;
}

void ZDPath::toXPath(XPath &out, int start)
{
    cleanUp();
    out.setChildren(zgContoursOfElements(elements, start, &out));
}

void ZDPath::fromXPath(XPath &xpath, int first, int last)
{
    const int childCount = xpath.children.size();
    const int end = last == -1 ? childCount : qMin(last, childCount);
    for (int i = qMax(0, first); i < end; ++i) {
        if (const zgPath *child = xpath.children.at(i))
            appendContour(*this, child);
    }
}
