// Internal: the cut of a contour at a location, shared by zgPath::splitAt
// and zgCurve::splitAt, which differ only in how the cut curve is divided.
#ifndef ZGRAPHICS_INTERSECT_CONTOUR_CUT_H
#define ZGRAPHICS_INTERSECT_CONTOUR_CUT_H

#include <zgraphics/model.h>

namespace zgPathSplit {

// Cuts contour at location and returns the piece behind the cut. On an open
// contour the piece is a new contour (count 0, added to contour's parent
// right after it if there is one) and contour ends at the cut again with a
// clone of the cut segment. A closed contour is opened and rotated to start
// at the cut, and is itself the piece. A curve is divided at the location's
// time by divideAtTime(time, setHandles) unless the time is within 4e-07 of
// the curve's start, where the cut stands on the segment.
//
// Null for a null contour or location, a location without a curve, or one
// past the last curve (the very end of an open contour). The curve index is
// that of the location's curve, read against contour's curve list.
zgPath *cutContour(zgPath *contour, zgCurveLocation *location, bool setHandles);

} // namespace zgPathSplit

#endif // ZGRAPHICS_INTERSECT_CONTOUR_CUT_H
