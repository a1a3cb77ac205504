// The cut of a contour at a location, shared by zgCurve::splitAt and
// zgPath::splitAt.
#include "intersect/contour_cut.h"

namespace {

// The location's curve index and time, moved to the start of the next curve
// when the time stands at the very end of a curve. -1 without a curve.
void cutPlace(zgCurveLocation *location, int &index, double &time)
{
    zgCurve *locationCurve = location->getCurve();
    index = locationCurve ? locationCurve->index() : -1;
    time = location->getTime();
    // 0.9999996: the upper limit of curve time at which a curve is divided.
    if (time >= 0.9999996) {
        time = 0.0;
        ++index;
    }
}

// The contour that takes the removed segments: a new one behind an open
// contour, the contour itself, opened, for a closed one.
zgPath *cutTarget(zgPath *contour)
{
    if (contour->closed) {
        contour->setClosed(false);
        return contour;
    }
    zgPath *piece = new zgPath(nullptr, false);
    if (contour->parent)
        contour->parent->addChild(piece, contour->index + 1);
    piece->closed = contour->closed;
    piece->flags = contour->flags;
    return piece;
}

} // namespace

zgPath *zgPathSplit::cutContour(zgPath *contour, zgCurveLocation *location, bool setHandles)
{
    if (!contour || !location)
        return nullptr;
    int index;
    double time;
    cutPlace(location, index, time);
    const QList<zgCurve *> curveList = contour->getCurves();
    if (index < 0 || index >= curveList.size())
        return nullptr;
    // 4e-07: below this time the cut stands on the curve's first segment.
    if (time >= 4e-07) {
        curveList.at(index)->divideAtTime(time, setHandles);
        ++index;
    }

    QList<zgSegment *> removedSegments;
    QList<zgCurve *> removedCurves;
    contour->removeSegments(removedSegments, removedCurves, index, -1, false);
    zgPath *target = cutTarget(contour);
    target->addSegments(removedSegments, 0, removedCurves);
    // The cut point ends this contour again: the segment is owned by the
    // target now, so a clone of it goes in.
    if (!removedSegments.isEmpty())
        contour->addSegment(removedSegments.first());
    // The removed segments came out still holding the contour's reference,
    // and the target took one anew: give the old ones back.
    for (zgSegment *segment : qAsConst(removedSegments))
        segment->release();
    return target;
}
