// The members of zgCurve that make or take locations: locations by time,
// offset, point and nearness, division at a location and splitting of the
// contour there.
#include "intersect/contour_cut.h"

#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

zgCurveLocation *zgCurve::getLocationAtTime(double t)
{
    if (!(t >= 0.0 && t <= 1.0))
        return nullptr;
    return new zgCurveLocation(this, t, zgPoint(qQNaN(), qQNaN()), false, 0.0);
}

zgCurveLocation *zgCurve::getLocationAt(double value, bool isTime)
{
    if (!isTime)
        value = getTimeAt(getValues(nullptr), value, -100.0);
    return getLocationAtTime(value);
}

zgCurveLocation *zgCurve::getLocationOf(const zgPoint &point)
{
    return getLocationAtTime(getTimeOf(getValues(nullptr), point));
}

zgCurveLocation *zgCurve::getNearestLocation(const zgPoint &point)
{
    const QVector<double> values = getValues(nullptr);
    const double t = getNearestTime(values, point);
    const zgPoint nearest = getPoint(values, t);
    return new zgCurveLocation(this, t, nearest, false, point.getDistance(nearest));
}

zgPoint zgCurve::getNearestPoint(const zgPoint &point)
{
    // The location is deliberately not released.
    return getNearestLocation(point)->getPoint();
}

double zgCurve::getOffsetOf(const zgPoint &point)
{
    zgCurveLocation *location = getLocationOf(point);
    if (!location)
        return -1.0;
    const double offset = location->getOffset();
    location->release();
    return offset;
}

zgCurve *zgCurve::divideAt(zgCurveLocation *location, double t)
{
    const double time = location && location->getCurve() == this ? location->getTime() : t;
    return divideAtTime(time, false);
}

zgPath *zgCurve::splitAt(zgCurveLocation *location)
{
    // Divided with setHandles: a straight curve at the cut gets handles
    // along its line.
    return zgPathSplit::cutContour(m_path, location, true);
}

zgPath *zgCurve::splitAtTime(double t)
{
    zgCurveLocation *location = getLocationAtTime(t);
    zgPath *piece = splitAt(location);
    if (location)
        location->release();
    return piece;
}

zgPath *zgCurve::split(double value, bool isTime)
{
    if (!isTime)
        value = getTimeAt(getValues(nullptr), value, -100.0);
    return splitAtTime(value);
}
