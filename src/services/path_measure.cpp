// Queries of a contour by arc length: locations and curves at an offset,
// the offset of a point, and the point, tangent, normal and curvature at an
// offset.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <cmath>

namespace {

// The curve time that means none.
const double kNoTime = -100.0;

zgPoint noPoint()
{
    return zgPoint(qQNaN(), qQNaN());
}

// Evaluates one quantity of a curve's values at the time of the location at
// offset, through evaluate(values, t). none without a location, a curve or
// a known time. The location is released in every case.
template <class Result, class Evaluate>
Result evaluateAt(zgPath *contour, double offset, Result none, Evaluate evaluate)
{
    zgCurveLocation *location = contour->getLocationAt(offset);
    if (!location)
        return none;
    zgCurve *curve = location->getCurve();
    const double t = location->getTime();
    const Result result = (curve && t != kNoTime) ? evaluate(curve->getValues(nullptr), t) : none;
    location->release();
    return result;
}

} // namespace

zgCurveLocation *zgPath::getLocationAt(double offset)
{
    if (offset < 0.0)
        offset += getLength();
    const QList<zgCurve *> curveList = getCurves();
    // The running length holds whole units only: the fraction is dropped
    // after every curve. A double with whole values, not an int, so that no
    // length overflows it.
    double running = 0.0;
    for (zgCurve *curve : curveList) {
        const double start = running;
        running = std::trunc(running + curve->getLength());
        if (running > offset) {
            const double t = zgCurve::getTimeAt(curve->getValues(nullptr), offset - start, kNoTime);
            return curve->getLocationAtTime(t);
        }
    }
    if (!curveList.isEmpty() && offset <= getLength())
        return new zgCurveLocation(curveList.last(), 1.0, noPoint(), false, 0.0);
    return nullptr;
}

zgCurveLocation *zgPath::getLocationOf(const zgPoint &point)
{
    for (zgCurve *curve : getCurves()) {
        if (zgCurveLocation *location = curve->getLocationOf(point))
            return location;
    }
    return nullptr;
}

double zgPath::getOffsetOf(const zgPoint &point)
{
    zgCurveLocation *location = getLocationOf(point);
    if (!location)
        return 0.0;
    const double offset = location->getOffset();
    location->release();
    return offset;
}

zgCurve *zgPath::getCurveAtOff(double &offset)
{
    const QList<zgCurve *> curveList = getCurves();
    for (zgCurve *curve : curveList) {
        const double curveLength = curve->getLength();
        offset -= curveLength;
        if (offset < 0.0) {
            offset += curveLength;
            return curve;
        }
    }
    if (curveList.isEmpty() || offset <= 0.0)
        return nullptr;
    return curveList.last();
}

zgPoint zgPath::getPointAt(double offset)
{
    zgCurveLocation *location = getLocationAt(offset);
    if (!location)
        return noPoint();
    const zgPoint point = location->getPoint();
    location->release();
    return point;
}

zgPoint zgPath::getTangentAt(double offset)
{
    return evaluateAt(this, offset, noPoint(), zgCurve::getTangent);
}

zgPoint zgPath::getNormalAt(double offset)
{
    return evaluateAt(this, offset, noPoint(), zgCurve::getNormal);
}

zgPoint zgPath::getWeightedTangentAt(double offset)
{
    return evaluateAt(this, offset, noPoint(), zgCurve::getWeightedTangent);
}

zgPoint zgPath::getWeightedNormalAt(double offset)
{
    return evaluateAt(this, offset, noPoint(), zgCurve::getWeightedNormal);
}

double zgPath::getCurvatureAt(double offset)
{
    zgCurveLocation *location = getLocationAt(offset);
    if (!location)
        return qQNaN();
    const double curvature = location->getCurvature();
    location->release();
    return curvature;
}
