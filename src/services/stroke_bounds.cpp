// Stroke bounds of a contour: the curve bounds padded by the stroke width,
// with the points of the joins and caps added, and the polygon generators for
// bevel and miter joins and for butt and square caps, which the hit test
// shares. Under a matrix the stroke is distorted by its linear part (the
// stroke matrix, with the translation taken out).
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <cmath>

QVector<double> zgPath::getStrokePadding(double radius, zgMatrix *matrix)
{
    if (!matrix)
        return { radius, radius };
    // The circle of the stroke maps to an ellipse with the half axes hor and
    // ver; the half extents of its box follow from the angle of hor.
    const zgPoint hor = matrix->transformPoint(zgPoint(radius, 0.0));
    const zgPoint ver = matrix->transformPoint(zgPoint(0.0, radius));
    const double phi = hor.getAngleInRadians(nullptr);
    const double a = hor.getLength();
    const double b = ver.getLength();
    const double tx = std::atan2(b * std::tan(phi), a);
    const double ty = std::atan2(b, a * std::tan(phi));
    const double x = std::fabs(a * std::cos(tx) * std::cos(phi) + b * std::sin(tx) * std::sin(phi));
    const double y = std::fabs(b * std::sin(ty) * std::cos(phi) + a * std::cos(ty) * std::sin(phi));
    return { x, y };
}

namespace {

// A smooth node (both handles present and on one line) is joined round,
// whatever the style says.
bool isRoundJoin(const zgSegment *segment, zgJoin join)
{
    if (join == zgJoinRound)
        return true;
    return !segment->handleIn.isZero() && !segment->handleOut.isZero()
        && segment->handleIn.isCollinear(segment->handleOut);
}

} // namespace

zgRect zgPath::getStrokeBounds(const QList<zgSegment *> &segments, bool closed,
                               const zgStyle &style, zgMatrix *matrix)
{
    // The full width, not the radius: addBounds pads by half of it.
    QVector<double> padding = { 0.0, 0.0 };
    zgMatrix strokeMatrix;
    if (style.hasStroke) {
        if (!matrix) {
            padding = { style.strokeWidth, style.strokeWidth };
        } else {
            strokeMatrix = *matrix;
            strokeMatrix._shiftless();
            padding = getStrokePadding(style.strokeWidth, &strokeMatrix);
        }
    }
    zgRect bounds = getBounds(segments, closed, padding, matrix);
    if (!style.hasStroke || segments.isEmpty())
        return bounds;

    const double radius = style.strokeWidth * 0.5;
    const double miter = radius * style.miterLimit;
    const zgRect joinBounds(0.0, 0.0, padding.at(0), padding.at(1));
    const auto addPoint = [&bounds](zgPoint point) { bounds = bounds.include(point); };
    const auto addRound = [&](const zgSegment *segment) {
        bounds = bounds.unite(joinBounds.setCenter(segment->point.transform(matrix)));
    };
    const auto addJoin = [&](zgSegment *segment) {
        if (isRoundJoin(segment, style.join))
            addRound(segment);
        else
            addBevelJoin(segment, style.join, radius, miter, matrix, &strokeMatrix, addPoint,
                         false);
    };
    const auto addCap = [&](zgSegment *segment) {
        if (style.cap == zgCapRound)
            addRound(segment);
        else
            addSquareCap(segment, style.cap, radius, matrix, &strokeMatrix, addPoint, false);
    };

    const int length = segments.size() - (closed ? 0 : 1);
    for (int i = 1; i < length; ++i)
        addJoin(segments.at(i));
    if (closed) {
        addJoin(segments.first());
    } else if (length > 0) {
        addCap(segments.first());
        addCap(segments.last());
    }
    return bounds;
}

void zgPath::addBevelJoin(zgSegment *segment, zgJoin join, double radius, double miterLimit,
                          zgMatrix *matrix, zgMatrix *strokeMatrix,
                          std::function<void(zgPoint)> addPoint, bool area)
{
    zgCurve *curve2 = segment ? segment->getCurve() : nullptr;
    zgCurve *curve1 = curve2 ? curve2->getPrevious() : nullptr;
    if (!curve1 || !addPoint)
        return;
    zgPoint point = curve2->getPointAtTime(0.0);
    zgPoint normal1 = curve1->getNormalAtTime(1.0);
    zgPoint normal2 = curve2->getNormalAtTime(0.0);
    // Both offsets go to the outer side of the turn.
    const double step = normal1.getDirectedAngle(normal2) < 0.0 ? -radius : radius;
    normal1.setLength(step);
    normal2.setLength(step);
    point = point.transform(matrix);
    normal1 = normal1.transform(strokeMatrix);
    normal2 = normal2.transform(strokeMatrix);

    if (area) {
        addPoint(point);
        addPoint(point.add(normal1));
    }
    if (join == zgJoinMiter) {
        // The outer edges of the stroke, each along its curve's tangent.
        const zgLine line2(point.add(normal2), zgPoint(-normal2.y, normal2.x), true);
        const zgLine line1(point.add(normal1), zgPoint(-normal1.y, normal1.x), true);
        const zgPoint corner = line1.intersect(line2, true);
        if (!corner.isNaN() && corner.getDistance(point) <= miterLimit) {
            addPoint(corner);
            if (!area)
                return;
        }
    }
    if (!area)
        addPoint(point.add(normal1));
    addPoint(point.add(normal2));
}

void zgPath::addSquareCap(zgSegment *segment, zgCap cap, double radius, zgMatrix *matrix,
                          zgMatrix *strokeMatrix, std::function<void(zgPoint)> addPoint,
                          bool area)
{
    if (!segment || !addPoint)
        return;
    zgPoint point = segment->point;
    // The location is only read here; it is nobody's and dies on release.
    zgCurveLocation *location = segment->getLocation();
    zgCurve *curve = location ? location->getCurve() : nullptr;
    const double t = location ? location->getTime() : -100.0;
    if (location)
        location->release();
    zgPoint normal(qQNaN(), qQNaN());
    if (curve && t != -100.0)
        normal = zgCurve::getNormal(curve->getValues(nullptr), t);
    normal = normal.multiply(radius);
    point = point.transform(matrix);
    normal = normal.transform(strokeMatrix);

    if (area) {
        addPoint(point.subtract(normal));
        addPoint(point.add(normal));
    }
    // Pushed out along the line, backwards at the start (time 0) and
    // forwards at the end.
    if (cap == zgCapSquare)
        point = point.add(normal.rotate(t == 0.0 ? -90.0 : 90.0));
    addPoint(point.add(normal));
    addPoint(point.subtract(normal));
}
