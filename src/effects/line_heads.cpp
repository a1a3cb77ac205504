// ZDPath::setLineHead: shortening the open ends of a path for line heads.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <cmath>

namespace {

// The vector of the given length from `from` towards `to`, with components
// below 0.01 in absolute value set to exactly 0, so that a line along an
// axis is shortened along that axis alone.
QPointF shorteningVector(const QPointF &from, const QPointF &to, double length)
{
    const double angle = std::atan2(to.y() - from.y(), to.x() - from.x());
    double vx = std::cos(angle) * length;
    double vy = std::sin(angle) * length;
    if (std::fabs(vx) < 0.01)
        vx = 0.0;
    if (std::fabs(vy) < 0.01)
        vy = 0.0;
    return QPointF(vx, vy);
}

double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(b.x() - a.x(), b.y() - a.y());
}

// An upper bound on the passes of one walk over the open ends: every pass
// either leaves a subpath behind or takes elements out, so a walk needs no
// more than a few passes per element. It only guards against malformed lists.
int walkLimit(int count)
{
    return 4 * count + 16;
}

} // namespace

void ZDPath::shortenStart(int i, const QPointF &a, const QPointF &b, double startLength,
                          bool outerOnly, int &cursor, QList<QPointF> &startPoints)
{
    const int count = elements.size();
    if (i + 1 >= count)
        return;
    const QPointF point = elements.at(i).toPoint();
    switch (elements.at(i + 1).type) {
    case ZDLineToElement:
        // One unit of slack: a line barely longer than the head is removed.
        if (startLength + 1.0 < distance(a, b)) {
            startPoints.append(point);
            if (!outerOnly || i == 0) {
                const QPointF moved = a + shorteningVector(a, b, startLength);
                elements[i].x = moved.x();
                elements[i].y = moved.y();
            }
            return;
        }
        if (!outerOnly)
            startPoints.append(point);
        if (i + 2 >= count || elements.at(i + 2).type == ZDMoveToElement) {
            elements.remove(i, 2);
            cursor -= 2;
        } else {
            elements[i + 1].type = ZDMoveToElement;
            elements.remove(i);
            cursor -= 1;
        }
        return;
    case ZDCurveToElement: {
        XPath xpath;
        toXPath(xpath, i);
        // The conversion cleans the list up first. On a well-formed list that
        // changes nothing; where it took empty subpaths out, i may now lie
        // past the end.
        const int cleanCount = elements.size();
        zgPath *child = xpath.getFirstChild();
        zgCurve *curve = child ? child->getFirstCurve() : nullptr;
        if (!curve || i >= cleanCount)
            return;
        if (startLength < curve->getLength()) {
            startPoints.append(point);
            xpath.splitAt(startLength);
            elements.remove(i, cleanCount - i);
            fromXPath(xpath, 1, -1); // the first child, the part cut off, is dropped
            return;
        }
        if (i + 4 >= cleanCount || elements.at(i + 4).type == ZDMoveToElement) {
            elements.remove(i, qMin(4, cleanCount - i));
            cursor -= 4;
        } else {
            startPoints.append(point);
            elements[i + 3].type = ZDMoveToElement;
            elements.remove(i, 3);
            cursor -= 3;
        }
        return;
    }
    default:
        return;
    }
}

void ZDPath::shortenEnd(int i, int subpathStart, const QPointF &a, const QPointF &b,
                        double endLength, bool outerOnly, int &cursor, QList<QPointF> &endPoints)
{
    const int count = elements.size();
    if (i <= 0 || i >= count)
        return;
    const QPointF point = elements.at(i).toPoint();
    switch (elements.at(i).type) {
    case ZDLineToElement:
        // One unit of slack: a line barely longer than the head is removed.
        if (endLength + 1.0 < distance(a, b)) {
            endPoints.append(point);
            if (!outerOnly || i == count - 1) {
                const QPointF moved = b + shorteningVector(b, a, endLength);
                elements[i].x = moved.x();
                elements[i].y = moved.y();
            }
            return;
        }
        if (!outerOnly)
            endPoints.append(point);
        if (elements.at(i - 1).type == ZDMoveToElement) {
            elements.remove(i - 1, 2);
            cursor -= 2;
        } else {
            elements.remove(i);
            cursor -= 1;
        }
        return;
    case ZDCurveToDataElement: {
        if (i <= 2 || subpathStart < 0)
            return;
        XPath xpath;
        toXPath(xpath, subpathStart);
        // The conversion cleans the list up first; see shortenStart.
        const int cleanCount = elements.size();
        if (i >= cleanCount)
            return;
        zgPath *child = xpath.getFirstChild();
        zgCurve *lastCurve = child ? child->getLastCurve() : nullptr;
        if (!child || !lastCurve || endLength < lastCurve->getLength()) {
            endPoints.append(point);
            if (child)
                xpath.removeChild(child->splitAt(-endLength));
            elements.remove(subpathStart, cleanCount - subpathStart);
            fromXPath(xpath, 0, -1);
            return;
        }
        if (i - 3 == 0 || elements.at(i - 3).type == ZDMoveToElement) {
            elements.remove(i - 3, 4);
            cursor -= 4;
        } else {
            endPoints.append(point);
            elements.remove(i - 2, 3);
            cursor -= 3;
        }
        return;
    }
    default:
        return;
    }
}

bool ZDPath::setLineHead(double startLength, double endLength, bool outerOnly)
{
    bool found = false;
    QList<QPointF> startPoints;
    QList<QPointF> endPoints;
    if (startLength > 0.0) {
        int cursor = 0;
        QPointF a, b;
        for (int pass = walkLimit(elements.size()); pass > 0; --pass) {
            const int i = getOpenedStart(a, b, cursor);
            if (i == -1)
                break;
            found = true;
            shortenStart(i, a, b, startLength, outerOnly, cursor, startPoints);
        }
    }
    if (endLength > 0.0) {
        int cursor = 0;
        int subpathStart = -1;
        QPointF before, end;
        for (int pass = walkLimit(elements.size()); pass > 0; --pass) {
            const int i = getOpenedEnd(end, before, cursor, subpathStart);
            if (i == -1)
                break;
            found = true;
            shortenEnd(i, subpathStart, before, end, endLength, outerOnly, cursor, endPoints);
        }
    }

    // Each shortened end keeps its unshortened point in auxX and auxY.
    int cursor = 0;
    QPointF first, second;
    for (const QPointF &original : qAsConst(startPoints)) {
        const int i = getOpenedStart(first, second, cursor);
        if (i != -1) {
            elements[i].auxX = original.x();
            elements[i].auxY = original.y();
        }
    }
    cursor = 0;
    int subpathStart = -1;
    for (const QPointF &original : qAsConst(endPoints)) {
        const int i = getOpenedEnd(first, second, cursor, subpathStart);
        if (i != -1) {
            elements[i].auxX = original.x();
            elements[i].auxY = original.y();
        }
    }
    return found;
}
