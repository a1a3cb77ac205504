// Division of the working outlines at their crossing locations: every
// location becomes a segment, and the segments at one point carry one chain
// of all the locations that stand there.
#include "location_chains.h"

#include <zgraphics/model.h>

namespace {

// Curve times within these bounds of an end count as that end.
const double kTimeMin = 4e-07;
const double kTimeMax = 0.9999996;

// Whether a location or its partner has lost its curve or contour (mode 2).
bool hasLostCurve(zgCurveLocation *location)
{
    zgCurveLocation *partner = location->intersection();
    return !location->getCurve() || !location->path || !partner || !partner->curve
           || !partner->path;
}

bool isProcessed(zgCurveLocation *location, int mode)
{
    if (mode == 1)
        return location->overlap;
    if (mode == 2)
        return hasLostCurve(location);
    return true;
}

} // namespace

QList<zgCurveLocation *> XPath::divideLocations(QList<zgCurveLocation *> locations, int mode)
{
    QList<zgCurveLocation *> results;
    QList<zgCurve *> clearList;
    zgCurve *prevCurve = nullptr;
    zgCurveLocation *prevLocation = nullptr;
    double prevTime = 0.0;
    bool noHandles = false;

    // Hangs the partner of location on segment, or, where segment carries a
    // location already, joins every chain standing at that point into one.
    // The joins are those of linkIntersections with every location on the
    // chain, without the walks.
    zgLocationChains chains;
    const auto linkAtSegment = [&chains](zgSegment *segment, zgCurveLocation *location) {
        zgCurveLocation *inter = segment->intersection();
        zgCurveLocation *dest = location->intersection();
        if (!inter) {
            segment->setIntersection(dest);
            return;
        }
        chains.linkAt(inter, dest);
    };

    for (int i = locations.size() - 1; i >= 0; --i) {
        zgCurveLocation *location = locations.at(i);
        if (!isProcessed(location, mode))
            continue;
        if (mode != 0)
            results.prepend(location);
        if (mode == 2) {
            if (zgSegment *segment = location->segmentM())
                segment->setIntersection(nullptr);
        }

        // The members, not the getters: an earlier split of this curve has
        // changed the contour's version, and the getters would place the
        // location anew on the piece, where the rescaling below must do it.
        zgCurve *curve = location->curve;
        if (!curve)
            continue; // nothing left to divide
        double time = location->time;
        const double origTime = time;
        if (curve != prevCurve) {
            noHandles = !curve->hasHandles();
            prevLocation = nullptr;
        } else if (prevTime >= kTimeMin && prevTime <= kTimeMax) {
            // The last split left the part before prevTime in this curve.
            time /= prevTime;
        }

        zgSegment *segment = nullptr;
        bool boundToPrevious = false;
        if (time < kTimeMin) {
            segment = curve->segment1();
        } else if (time > kTimeMax) {
            segment = curve->segment2();
        } else {
            zgCurve *newCurve = curve->divideAtTime(time, true);
            if (!newCurve)
                continue; // a curve without its segments cannot be cut
            if (noHandles)
                clearList << curve << newCurve;
            if (prevLocation && prevLocation->time == 1.0) {
                // The earlier location stood at the curve's end, which now
                // belongs to the second piece.
                prevLocation->setSegment(newCurve->segment2());
                segment = curve->segment2();
                location->setSegmentPrev(segment);
                boundToPrevious = true;
            } else {
                segment = newCurve->segment1();
            }
        }
        if (!boundToPrevious)
            location->setSegment(segment);

        linkAtSegment(segment, location);
        prevCurve = curve;
        prevLocation = location;
        prevTime = origTime;
    }

    for (zgCurve *curve : clearList)
        curve->clearHandles();
    return results.isEmpty() ? locations : results;
}

void XPath::linkIntersections(zgCurveLocation *from, zgCurveLocation *to)
{
    if (!from || !to)
        return;
    for (zgCurveLocation *prev = from; prev; prev = prev->previous()) {
        if (prev == to)
            return;
    }
    zgCurveLocation *tail = from;
    for (zgCurveLocation *next = from; next; next = next->next()) {
        if (next == to)
            return;
        tail = next;
    }
    zgCurveLocation *head = to;
    while (head->previous())
        head = head->previous();
    tail->setNext(head);
    head->setPrevious(tail);
}
