// Containment by winding number, and the nearest location on a contour or a
// compound path.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>
#include <limits>

namespace {

// The bounds that reject a point before any curve work: the anchor and
// handle points, without stroke padding.
zgBoundOpt rejectionBoundsOptions()
{
    zgBoundOpt options;
    options.handle = true;
    options.reservedB = true;
    return options;
}

bool isInsideByWinding(int winding, const zgStyle &style)
{
    if (style.evenOdd)
        winding &= 1;
    return winding != 0;
}

// The nearest location over curves in order; every other candidate is
// released. A NaN distance never wins, and a tie keeps the earlier curve.
zgCurveLocation *nearestLocationOf(const QList<zgCurve *> &curves, const zgPoint &point)
{
    zgCurveLocation *best = nullptr;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (zgCurve *curve : curves) {
        const QVector<double> values = curve->getValues(nullptr);
        const double t = zgCurve::getNearestTime(values, point);
        const zgPoint nearest = zgCurve::getPoint(values, t);
        const double distance = point.getDistance(nearest);
        zgCurveLocation *candidate = new zgCurveLocation(curve, t, nearest, false, distance);
        if (distance < bestDistance) {
            if (best)
                best->release();
            best = candidate;
            bestDistance = distance;
        } else {
            candidate->release();
        }
    }
    return best;
}

} // namespace

bool zgPath::contains(const zgPoint &point, const zgStyle &style)
{
    const zgRect bounds = getHandleBounds(segments, style, rejectionBoundsOptions(), nullptr);
    int winding = 0;
    if (point.isInside(bounds)) {
        const QList<zgMono *> pieces = getMonoCurves();
        winding = XPath::getWinding(point, pieces, false).winding;
        // Fresh pieces are this call's; a kept list stays the contour's.
        if (pieces != monos)
            qDeleteAll(pieces);
    }
    return isInsideByWinding(winding, style);
}

bool XPath::contains(const zgPoint &point, const zgStyle &style)
{
    const zgRect bounds = getBounds(rejectionBoundsOptions(), style, nullptr);
    int winding = 0;
    if (point.isInside(bounds))
        winding = getWinding(point, false);
    return isInsideByWinding(winding, style);
}

zgCurveLocation *zgPath::getNearestLocation(const zgPoint &point)
{
    return nearestLocationOf(getCurves(), point);
}

zgCurveLocation *XPath::getNearestLocation(const zgPoint &point)
{
    return nearestLocationOf(getCurves(), point);
}

zgPoint XPath::getNearestPoint(const zgPoint &point)
{
    zgCurveLocation *location = getNearestLocation(point);
    if (!location)
        return zgPoint(qQNaN(), qQNaN());
    const zgPoint nearest = location->getPoint();
    location->release();
    return nearest;
}
