// Set operations and relations of drawing paths, through the compound paths
// of the object graph.
#include "drawing/element_contours.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <algorithm>

namespace {

// Replaces path by the contours of result, which is destroyed; a null result
// leaves path as it is.
void takeResult(ZDPath &path, XPath *result)
{
    if (!result)
        return;
    path.reset();
    path.fromXPath(*result);
    delete result;
}

} // namespace

void ZDPath::unite(ZDPath &other)
{
    XPath self;
    XPath operand;
    toXPath(self);
    other.toXPath(operand);
    takeResult(*this, self.unite(&operand));
}

void ZDPath::intersect(ZDPath &other, bool flag)
{
    XPath self;
    XPath operand;
    toXPath(self);
    other.toXPath(operand);
    takeResult(*this, self.intersect(&operand, flag));
}

void ZDPath::subtract(ZDPath &other)
{
    XPath self;
    XPath operand;
    toXPath(self);
    other.toXPath(operand);
    takeResult(*this, self.subtract(&operand));
}

void ZDPath::evenOdd()
{
    XPath self;
    toXPath(self);
    fromXPath(self);
}

bool ZDPath::isEvenOdd() const
{
    // The contours as toXPath draws them, but without the clean-up and
    // without a parent.
    const QVector<zgPath *> contours = zgContoursOfElements(elements, 0, nullptr);
    bool mixed = false;
    bool haveFirst = false;
    bool firstClockwise = false;
    for (zgPath *contour : contours) {
        if (mixed || !contour->closed)
            continue;
        const bool clockwise = contour->isClockwise();
        if (!haveFirst) {
            haveFirst = true;
            firstClockwise = clockwise;
        } else if (clockwise != firstClockwise) {
            mixed = true;
        }
    }
    qDeleteAll(contours);
    return mixed;
}

bool ZDPath::dividePath(ZDPath &other, QPointF &point, bool flag)
{
    XPath self;
    XPath operand;
    toXPath(self);
    other.toXPath(operand);
    const QList<zgCurveLocation *> crossings = self.getCrossings(&operand);
    if (crossings.isEmpty())
        return false;
    point = crossings.first()->point.toPt();
    zgPath *rest = self.getFirstChild()->splitAt(crossings.first());
    if (!flag) {
        XPath behind;
        behind.addChild(rest);
        self.removeChild(rest);
        reset();
        fromXPath(behind);
    } else {
        self.removeChild(rest);
        reset();
        fromXPath(self);
    }
    return true;
}

QVector<QPointF> ZDPath::crossPoints(ZDPath &other)
{
    XPath self;
    XPath operand;
    toXPath(self);
    other.toXPath(operand);
    const QList<zgCurveLocation *> crossings = self.getCrossings(&operand);
    QVector<QPointF> points;
    for (zgCurveLocation *location : crossings)
        points.append(location->point.toPt());
    // Each crossing comes as a pair of unowned locations: both go.
    QList<zgCurveLocation *> unowned;
    for (zgCurveLocation *location : crossings) {
        for (zgCurveLocation *one : {location, location->intersection()}) {
            if (one && !unowned.contains(one))
                unowned.append(one);
        }
    }
    for (zgCurveLocation *location : unowned)
        location->release();
    return points;
}

QPointF ZDPath::bestCrossPoint(ZDPath &other)
{
    const QVector<QPointF> points = crossPoints(other);
    return points.isEmpty() ? QPointF(0.0, 0.0) : points.first();
}

QPointF ZDPath::getSimilarPoint(ZDPath &oldPath, ZDPath &newPath, const zgPoint &point,
                                const QRectF &rect)
{
    if (oldPath.isEmpty() || newPath.isEmpty())
        return point.toPt();
    const zgPoint near = oldPath.getNearestPoint(point);
    const double distance = point.getDistance(near);
    const double share = oldPath.getLength(near) / oldPath.getLength();
    const zgPoint onNew = newPath.getPointAt(share);
    // Within one unit (the joining tolerance) the point counts as on the path.
    if (distance < 1.0)
        return onNew.toPt();

    const zgPoint oldTangent = oldPath.getTangentAt(near);
    const zgPoint newTangent = newPath.getTangentAt(onNew);
    const int side = zgLine(near, oldTangent, true).getSide(point, true);
    zgPoint moved = point;
    if (side == 1)
        moved = zgPoint(onNew.x + newTangent.y * distance, onNew.y - newTangent.x * distance);
    else if (side == -1)
        moved = zgPoint(onNew.x - newTangent.y * distance, onNew.y + newTangent.x * distance);

    // Half sides of the box, with a margin of 5 units around rect.
    const double w = (rect.width() + 5.0) / 2.0;
    const double h = (rect.height() + 5.0) / 2.0;
    const zgPoint corners[4] = {zgPoint(moved.x - w, moved.y - h), zgPoint(moved.x + w, moved.y - h),
                                zgPoint(moved.x - w, moved.y + h), zgPoint(moved.x + w, moved.y + h)};
    zgPoint nearest[4];
    double distances[4];
    for (int k = 0; k < 4; ++k) {
        nearest[k] = newPath.getNearestPoint(corners[k]);
        distances[k] = corners[k].getDistance(nearest[k]);
    }
    const double smallest = std::min(std::min(distances[0], distances[1]),
                                     std::min(distances[2], distances[3]));
    // The centre of the box whose corner k stands on the nearest point.
    const zgPoint centres[4] = {zgPoint(nearest[0].x + w, nearest[0].y + h),
                                zgPoint(nearest[1].x - w, nearest[1].y + h),
                                zgPoint(nearest[2].x + w, nearest[2].y - h),
                                zgPoint(nearest[3].x - w, nearest[3].y - h)};
    for (int k : {0, 2, 1, 3}) {
        if (!(distances[k] == smallest))
            continue;
        const zgPoint &c = centres[k];
        // The diagonal that does not run through the touching corner.
        ZDPath diagonal;
        if (k == 0 || k == 3) {
            diagonal.moveTo(c.x + w, c.y - h);
            diagonal.lineTo(c.x - w, c.y + h);
        } else {
            diagonal.moveTo(c.x - w, c.y - h);
            diagonal.lineTo(c.x + w, c.y + h);
        }
        if (diagonal.crossPoints(newPath).isEmpty())
            return c.toPt();
        switch (k) {
        case 0:
            return (distances[1] <= distances[2] ? centres[1] : centres[2]).toPt();
        case 2:
            return (distances[0] < distances[3] ? centres[0] : centres[3]).toPt();
        case 1:
            return (distances[0] <= distances[3] ? centres[0] : centres[3]).toPt();
        default:
            return (distances[1] < distances[2] ? centres[1] : centres[2]).toPt();
        }
    }
    return newPath.getNearestPoint(moved).toPt();
}

bool ZDPath::intersects(ZDPath &other)
{
    XPath self;
    XPath operand;
    toXPath(self);
    other.toXPath(operand);
    // Left allocated on purpose: the answer is all that is wanted of it.
    XPath *common = self.intersect(&operand, false);
    return common && common->getFirstChild() != nullptr;
}

zgRect ZDPath::getBounds(const zgBoundOpt &options, const zgStyle &style, zgMatrix *matrix)
{
    XPath self;
    toXPath(self);
    return self.getBounds(options, style, matrix);
}

bool ZDPath::containsPt(const zgPoint &point, bool fill, bool stroke, double tolerance)
{
    XPath self;
    toXPath(self);
    return self.hitTest(point, zgStyle(), zgHitOpt(fill, stroke, false, true, tolerance)).type
            != zgHitNone;
}

zgHitResult ZDPath::hitTest(const zgPoint &point, const zgStyle &style, const zgHitOpt &options)
{
    XPath self;
    toXPath(self);
    return self.hitTest(point, style, options);
}
