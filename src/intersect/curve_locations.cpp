// The members of zgCurve that make or take locations: locations by time,
// offset, point and nearness, division at a location and splitting of the
// contour there.
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
    zgPath *contour = m_path;
    if (!contour || !location)
        return nullptr;
    zgCurve *locationCurve = location->getCurve();
    int index = locationCurve ? locationCurve->index() : -1;
    double time = location->getTime();
    // At the very end of a curve the cut stands on the next segment.
    if (time >= 0.9999996) {
        time = 0.0;
        ++index;
    }
    const QList<zgCurve *> curves = contour->getCurves();
    if (index < 0 || index >= curves.size())
        return nullptr;
    // Away from the curve's start the curve is divided; at its start the cut
    // stands on the segment.
    if (time >= 4e-07) {
        curves.at(index)->divideAtTime(time, true);
        ++index;
    }

    QList<zgSegment *> removedSegments;
    QList<zgCurve *> removedCurves;
    contour->removeSegments(removedSegments, removedCurves, index, -1, false);

    zgPath *piece;
    if (contour->closed) {
        contour->setClosed(false);
        piece = contour;
    } else {
        piece = new zgPath(nullptr, false);
        if (contour->parent)
            contour->parent->addChild(piece, contour->index + 1);
        piece->closed = contour->closed;
        piece->flags = contour->flags;
    }
    piece->addSegments(removedSegments, 0, removedCurves);
    // The cut point ends this contour again: the segment is owned already, so
    // a clone of it goes in.
    if (!removedSegments.isEmpty())
        contour->addSegment(removedSegments.first());
    // The removed segments came out with the contour's references, which the
    // new owner took anew: give the old ones back.
    for (zgSegment *segment : qAsConst(removedSegments))
        segment->release();
    return piece;
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
