// zgraphics: the path object graph.
//
// zgSegment (a point with two handles), zgCurve (the cubic between two
// segments), zgPath (one contour), XPath (a compound of contours) and
// zgCurveLocation (a place on a curve).
//
// Lifetime. zgSegment, zgCurve, zgCurveLocation and zgPath are counted by
// hand. A new object has a count of 0 and belongs to nobody until a holder
// calls addRef(). release() lowers the count; when it falls to 0 or -1 the
// count becomes the sentinel -2 and, if zgPath::s_canDelete is true, the
// object is destroyed. With s_canDelete false nothing is freed by release():
// objects are only marked (-2, -3, ...) and every object constructed while
// the flag is false is listed in its class's tracked list, from which its
// destructor removes it while the flag is false. The library never writes
// the flag; disposal in that mode is the host's.
//
// Copy constructors and assignment of the counted classes are shallow member
// copies that take no references and are not tracked; clone() and assign()
// are the deep copies. None of this is thread-safe.
#ifndef ZGRAPHICS_MODEL_H
#define ZGRAPHICS_MODEL_H

#include <zgraphics/primitives.h>

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QVector>

class zgSegment;
class zgCurve;
class zgCurveLocation;
class zgPath;
class XPath;
class zgMono;

// A node of a contour: a point with two handles relative to it, so that
// moving the point takes no work on the handles. While the segment belongs to
// a contour, path is that contour and index its place in the segment list.
class ZG_EXPORT zgSegment
{
public:
    static QList<zgSegment *> s_segmentList;

    bool visited;       // scratch of the boolean tracing
    quint8 onPath;      // the winding was taken on the path
    int32_t refCount;
    int32_t index;      // place in the contour, -1 without one
    int32_t winding;    // -1: not computed
    zgPath *path;       // the owning contour, not counted
    zgPoint point;
    zgPoint handleIn;   // relative to point, toward the previous segment
    zgPoint handleOut;  // relative to point, toward the next segment

    zgSegment();
    zgSegment(double x, double y);
    zgSegment(const zgPoint &point, const zgPoint &handleIn, const zgPoint &handleOut);
    // Bitwise copy of every field, with no reference taken and no tracking.
    zgSegment(const zgSegment &other) = default;
    // Copies path, visited, index, point and handles, and takes over the
    // intersection with proper counting; refCount, onPath and winding stay.
    zgSegment &operator=(const zgSegment &other);
    // Clears path, releases the intersection.
    ~zgSegment();

    void addRef();
    void release();

    // Point and both handles equal within 1e-12 per coordinate; nothing else counts.
    bool operator==(const zgSegment &other) const;
    bool operator!=(const zgSegment &other) const { return !(*this == other); }
    // Same length and equal segments place by place.
    static bool segsEquals(const QList<zgSegment *> &a, const QList<zgSegment *> &b);
    // A new segment on the heap with point and handles only (count 0, no path).
    zgSegment *clone() const;

    zgPoint getPoint() const { return point; }
    zgPoint getHandleIn() const { return handleIn; }
    zgPoint getHandleOut() const { return handleOut; }
    // Store only: the caches of the curves around the segment stay as they are.
    void setPoint(const zgPoint &p) { point = p; }
    void setHandleIn(const zgPoint &h) { handleIn = h; }
    void setHandleOut(const zgPoint &h) { handleOut = h; }
    // True unless both handles are zero.
    bool hasHandles() const;
    void clearHandles();
    // Swaps the two handles in place.
    void reverse();
    // A new segment with the same point and the handles swapped.
    zgSegment reversed() const;

    bool isFirst() const;
    bool isLast() const;
    // The neighbours in the contour, wrapping round a closed one; null at
    // the ends of an open contour or without a contour.
    zgSegment *getNext() const;
    zgSegment *getPrevious() const;
    // The curve that starts here; for the last segment of an open contour the
    // curve that ends here. Builds the contour's curves. Null without one.
    zgCurve *getCurve() const;
    // The curve before this segment on an open contour (the first curve for
    // the first segment); on a closed contour the curve before segment 0 and
    // the curve that starts here for the others.
    zgCurve *getCurvePrev() const;
    // A new location on getCurve() at this segment (time 0 if it is the
    // curve's segment1, else 1), or null without a curve.
    zgCurveLocation *getLocation() const;

    // The counted head of the crossing chain at this node.
    zgCurveLocation *intersection() const { return m_intersection; }
    // Takes a reference on the new location, then releases the old one.
    void setIntersection(zgCurveLocation *location);

    // Removes the segment from its contour (releasing it); false without one.
    bool remove();
    // point and handles become (1 - factor) * from + factor * to.
    void interpolate(const zgSegment *from, const zgSegment *to, double factor);
    void transform(const zgMatrix *matrix);
    // Writes point, point + handleIn and point + handleOut as absolute pairs
    // into coords (grown to six doubles if shorter) and maps them by matrix
    // if it isn't null; with change the segment takes the mapped values.
    void transformCoordinates(const zgMatrix *matrix, QVector<double> &coords,
                              bool change = false);
    // "point: ..., handleIn: ..., handleOut: ..., winding: w, contour: c,
    // visited: v i r"; zero handles are left out.
    QString toString() const;

    // Smoothing. New handles from the previous point p0 and the next point
    // p2 (this point where a neighbour is missing), written straight into the
    // segment without telling the contour: cached curve lengths and bounds
    // stay. With first set the handle-in stays, with last set the handle-out.
    // type 1: Catmull-Rom, factor the exponent of the distances (exactly -1.0
    // means 0.5); a handle whose denominator is exactly 0 becomes (0, 0).
    // type 2: geometric, only with both neighbours, factor the handle length
    // ratio (exactly -1.0 means 0.4); coincident neighbours and point give NaN
    // handles. Any other type changes nothing.
    void smooth(bool first, bool last, int type, double factor);

private:
    zgCurveLocation *m_intersection;
};

// Options handed through the intersection finders of zgCurve.
class opParam
{
public:
    // The start of the first curve is joined to the end of the second.
    bool joinedAtStart = false;
    // The end of the first curve is joined to the start of the second.
    bool joinedAtEnd = false;
    // The two curves are the halves of one curve split at splitTime; their
    // times are mapped back onto the whole curve.
    bool splitRemap = false;
    double splitTime = 0.0;
    // Acceptance test of a found location; empty accepts all.
    std::function<bool(zgCurveLocation *)> filter;
};

// The cubic between two segments of a contour, or a free curve with segments
// of its own.
class ZG_EXPORT zgCurve
{
public:
    static QList<zgCurve *> s_curveList;

    int32_t refCount;

    zgCurve();
    // Takes a reference on each non-null segment; path is not counted.
    zgCurve(zgPath *path, zgSegment *segment1, zgSegment *segment2);
    // Shallow member copy (refCount included), no references taken.
    zgCurve(const zgCurve &other) = default;
    zgCurve &operator=(const zgCurve &other) = default;
    // Releases both segments.
    ~zgCurve();

    void addRef();
    void release();

    zgPath *path() const { return m_path; }
    zgSegment *segment1() const { return m_segment1; }
    zgSegment *segment2() const { return m_segment2; }

    // Curve mathematics on the 8-value array ---------------------------------
    //
    // The values of a cubic are a QVector<double> of eight absolute
    // coordinates: x0, y0 (start), x1, y1 (first control point), x2, y2
    // (second control point), x3, y3 (end). They pass by value (implicitly
    // shared); a function that changes them works on its own copy. Curve time
    // runs from 0 to 1, and -100.0 is the time that does not exist.

    // The values between two segments: point1, point1 + handleOut,
    // point2 + handleIn, point2. A non-null matrix maps the four points as
    // absolute points. A null segment reads as the origin without handles.
    static QVector<double> getValues(const zgSegment *segment1, const zgSegment *segment2,
                                     const zgMatrix *matrix);
    // The single evaluator. type 0: point; 1: derivative (tangent); 2: the
    // derivative turned to (y, -x) (normal); 3: signed curvature in x, 0 in y.
    // normalized scales the derivative to unit length (zero stays zero). A
    // time outside 0 to 1 gives a NaN point. Handles within 1e-12 of zero
    // count as absent.
    static zgPoint _evaluate(QVector<double> values, double t, int type, bool normalized);
    static zgPoint getPoint(QVector<double> values, double t);
    static zgPoint getTangent(QVector<double> values, double t);
    static zgPoint getNormal(QVector<double> values, double t);
    static zgPoint getWeightedTangent(QVector<double> values, double t);
    static zgPoint getWeightedNormal(QVector<double> values, double t);
    static double getCurvature(QVector<double> values, double t);

    // The parts before and after t (de Casteljau); t is not checked, so a time
    // outside 0 to 1 extrapolates.
    static QVector<QVector<double>> subdivide(QVector<double> values, double t);
    // The part between two times, reversed if from is greater than to.
    static QVector<double> getPart(QVector<double> values, double from, double to);
    // Times at which coordinate coord (0: x, 1: y; cut to an integer) equals
    // val, through zgNumeric::solveCubic with its min/max rule. 0 when val
    // lies strictly outside all four control values.
    static int solveCubic(QVector<double> values, double coord, double val,
                          QVector<double> &roots, double min, double max);
    // h1 is relative to the start of line, h2 to its end.
    static bool isStraight(const zgLine &line, const zgPoint &h1, const zgPoint &h2);
    static bool isStraight(QVector<double> values);
    // Straight with handles at the exact thirds of the chord (constant speed).
    static bool isLinear(const zgLine &line, const zgPoint &h1, const zgPoint &h2);
    static bool isLinear(QVector<double> values);
    static bool hasHandles(QVector<double> values);
    static bool isFlatEnough(QVector<double> values, double flatness);
    static zgRect getBounds(QVector<double> values);
    // Widens min[coord] and max[coord] (two-element arrays) to hold the cubic
    // of the four values, padded by half of padding; roots is scratch space.
    static void addBounds(double v0, double v1, double v2, double v3, int coord,
                          double padding, double *min, double *max, QVector<double> &roots);
    // Signed area swept by the curve about the origin, half the integral of
    // x dy - y dx: between the curve and its chord when the chord runs
    // through the origin; over the curves of a closed contour the areas add
    // up to the contour's area.
    static double getArea(QVector<double> values);

    // The speed |B'(t)| of the curve, the integrand of its length.
    static std::function<double(double)> _getLengthIntegrand(QVector<double> values);
    // Quadrature order for the range a to b: ceil(|b - a| * 32) within 2 to 16.
    static int getIterations(double a, double b);
    // Arc length between times a and b; signed (negative for b < a) except on
    // a straight curve, which is measured by its chord.
    static double getLength(QVector<double> values, double a, double b);
    // The time at arc length offset from start (backwards for a negative
    // offset); start -100.0 picks the end that suits the sign. -100.0 when
    // the offset lies beyond the curve.
    static double getTimeAt(QVector<double> values, double offset, double start);
    // The time of a point on the curve (within 2e-07), or -100.0.
    static double getTimeOf(QVector<double> values, const zgPoint &point);
    // The time of the curve point nearest to point.
    static double getNearestTime(QVector<double> values, const zgPoint &point);
    // ------------------------------------ end of the curve mathematics block

    // Curve objects ----------------------------------------------------------
    //
    // A free curve with two new segments of its own (count 0 each, then held
    // by this curve) from eight values: segment1 at (0, 1) with handleOut
    // (2, 3) less it, segment2 at (6, 7) with handleIn (4, 5) less it.
    // Missing values read as 0.
    zgCurve(const QVector<double> &values, zgPath *path);

    // A new curve on the heap with the same path and the same two segments,
    // each gaining a reference; the caches start empty.
    zgCurve *clone() const;
    // Take a reference on the new segment, release the old one; no _changed.
    void setSegment1(zgSegment *segment);
    void setSegment2(zgSegment *segment);
    // The index of segment1, or -1 without one.
    int index() const;

    zgPoint getPoint1() const;
    zgPoint getPoint2() const;
    // The four control points, absolute.
    QVector<zgPoint> getPoints() const;
    // From the first point to the second, handles ignored.
    zgLine getLine() const;
    // The eight values, mapped by matrix if it isn't null. A missing segment
    // reads as the origin without handles.
    QVector<double> getValues(const zgMatrix *matrix = nullptr) const;

    bool isFirst() const;
    bool isLast() const;
    // Neighbours in the contour's curve list, wrapping round a closed
    // contour; null without a path or a built list. Does not build the list.
    zgCurve *getNext() const;
    zgCurve *getPrevious() const;

    // False exactly when segment1's handleOut and segment2's handleIn are zero.
    bool hasHandles() const;
    // Zeroes those two handles; the caches stay.
    void clearHandles();
    // Forgets the cached length and bounds.
    void _changed();

    // The cached length, measured first if the cache holds 0.
    double getLength();
    // Arc length between two times, not cached.
    double getPartLength(double from, double to) const;
    bool isLinear() const;
    bool isStraight() const;
    // Straight with a unit tangent at the middle whose y (x) is below 1e-07.
    bool isHorizontal() const;
    bool isVertical() const;
    // Both straight and their lines collinear; false for null.
    bool isCollinear(const zgCurve *other) const;
    // Signed area between the curve and its chord.
    double getArea() const;

    // Object forms of the evaluator. The ...AtTime forms take a curve time;
    // the ...At forms take a time if isTime is set and otherwise an arc
    // length offset from the start (from the end if negative), which gives
    // NaN results when it lies beyond the curve.
    zgPoint getPointAtTime(double t) const;
    zgPoint getTangentAtTime(double t) const;
    zgPoint getNormalAtTime(double t) const;
    zgPoint getWeightedTangentAtTime(double t) const;
    zgPoint getWeightedNormalAtTime(double t) const;
    double getCurvatureAtTime(double t) const;
    zgPoint getPointAt(double location, bool isTime) const;
    zgPoint getTangentAt(double location, bool isTime) const;
    zgPoint getNormalAt(double location, bool isTime) const;
    zgPoint getWeightedTangentAt(double location, bool isTime) const;
    zgPoint getWeightedNormalAt(double location, bool isTime) const;
    double getCurvatureAt(double location, bool isTime) const;

    // The static searches on this curve's values.
    double getTimeAt(double offset, double start = -100.0) const;
    double getTimeOf(const zgPoint &point) const;
    // Arc length from the start to time t.
    double getOffsetAtTime(double t) const;

    // Removes segment2 from the contour, so that the next curve starts at
    // segment1 and keeps segment2's outgoing handle. False without a path or
    // if nothing was removed.
    bool remove();
    // Inserts a segment at time t and returns the curve after it; null for t
    // below 4e-07 or above 0.9999996. The curve keeps its handles if it had
    // any or setHandles is set.
    zgCurve *divideAtTime(double t, bool setHandles);
    // divideAtTime(t, false), with an arc length offset if isTime is false.
    zgCurve *divide(double value, bool isTime);
    // A new free curve (no path, segments of its own) of the part between
    // two times.
    zgCurve *getPart(double from, double to) const;
    // "point1: p handle1: h handle2: h point2: p"; zero handles are left out.
    QString toString() const;

    // Locations on this curve. New locations come with a count of 0: the
    // caller hands them to a holder or releases them.
    //
    // A location at time t (0 to 1; null outside, so also for -100.0), with
    // its point computed from the curve.
    zgCurveLocation *getLocationAtTime(double t);
    // As getLocationAtTime, with an arc length offset if isTime is false.
    zgCurveLocation *getLocationAt(double value, bool isTime);
    // The location of a point on the curve (getTimeOf), or null.
    zgCurveLocation *getLocationOf(const zgPoint &point);
    // The nearest location to point, with its distance.
    zgCurveLocation *getNearestLocation(const zgPoint &point);
    // The nearest point on the curve. The location it comes from is not
    // released: it is left to the tracked lists, or lost.
    zgPoint getNearestPoint(const zgPoint &point);
    // The arc length from the contour's start to point on this curve, or -1.0.
    double getOffsetOf(const zgPoint &point);
    // divideAtTime(t, false), with the time of location if that is on this curve.
    zgCurve *divideAt(zgCurveLocation *location, double t);
    // Cuts the contour at location and returns the piece behind it: a new
    // contour (added to the same parent after this one) for an open contour,
    // the same contour opened there for a closed one. Null without a path or
    // location, or at the very end of an open contour.
    zgPath *splitAt(zgCurveLocation *location);
    zgPath *splitAtTime(double t);
    // splitAtTime, with an arc length offset if isTime is false.
    zgPath *split(double value, bool isTime);

    // Intersections ----------------------------------------------------------
    //
    // Every finder reports through addLocation into the caller's list, kept
    // sorted by zgCurveLocation::insert with merging. Each finding is a pair
    // of new locations (count 0), partners through intersection(), of which
    // one enters the list; the caller owns both. v1 and v2 are the values of
    // c1 and c2; the points of curve-curve results are computed on the
    // values of the curve objects, so those must match.
    //
    // All intersections of two curves, with a rejection by the boxes of the
    // three-quarter points first. Overlaps are reported as two pairs of
    // overlap locations; straight pairs go to addLineIntersection, mixed ones
    // to addCurveLineIntersections, curved ones to addCurveIntersections; if
    // the last two add nothing, coinciding end points (2e-07) are reported.
    // An empty v2 asks for the self-intersection of v1. Returns a copy of
    // locations.
    static QList<zgCurveLocation *> getIntersections(QVector<double> v1, QVector<double> v2,
                                                     zgCurve *c1, zgCurve *c2,
                                                     QList<zgCurveLocation *> &locations,
                                                     opParam &param);
    // The intersections of this curve with other in a new list; other null
    // or this curve gives the loop of this curve, if any.
    QList<zgCurveLocation *> getIntersectionscurve(zgCurve *other);
    // The crossing of a looping curve with itself: the curve is split at the
    // point of highest curvature and the halves are intersected as joined
    // curves, their times mapped back. Sets joinedAtEnd, splitRemap and
    // splitTime in param. Returns a copy of locations.
    static QList<zgCurveLocation *> getSelfIntersection(QVector<double> v1, zgCurve *c1,
                                                        QList<zgCurveLocation *> &locations,
                                                        opParam &param);
    // The common stretch of two collinear or coinciding curves: empty, or two
    // pairs (time on v1, time on v2), one for each end of the stretch.
    static QVector<QVector<double>> getOverlaps(QVector<double> v1, QVector<double> v2);
    // The crossing of the chords of two straight curves, ends included.
    static void addLineIntersection(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                    zgCurve *c2, QList<zgCurveLocation *> &locations,
                                    opParam &param);
    // The crossings of a curved and a straight curve, in either order.
    static void addCurveLineIntersections(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                          zgCurve *c2, QList<zgCurveLocation *> &locations,
                                          opParam &param);
    // One step of Bezier clipping with fat lines: v1 and v2 are the parts of
    // c1 and c2 over the time ranges tMin..tMax and uMin..uMax; flip tells
    // that the roles of the curves are exchanged. Stops below a depth of 48
    // and after 4096 calls per pair. Returns the running call count; the
    // first call passes 0, 1, 0, 1, false, 0.0 and 0.
    static int addCurveIntersections(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                     zgCurve *c2, QList<zgCurveLocation *> &locations,
                                     opParam &param, double tMin, double tMax, double uMin,
                                     double uMax, bool flip, double recursion, int calls);
    // The convex hull of the distance function with control values dq0..dq3
    // at times 0, 1/3, 2/3, 1: two chains of (time, distance) points, the
    // upper first.
    static QVector<QVector<QVector<double>>> getConvexHull(double dq0, double dq1, double dq2,
                                                           double dq3);
    // The first time at which the hull enters the strip dMin..dMax, walking
    // from the first points of the chains; NaN when it never does.
    static double clipConvexHull(QVector<QVector<double>> top, QVector<QVector<double>> bottom,
                                 double dMin, double dMax);
    // The time at which a chain reaches threshold (from below for the top
    // chain, from above for the bottom one), or NaN.
    static double clipConvexHullPart(QVector<QVector<double>> part, bool top, double threshold);
    // Makes the location pair for times t1 on v1 and t2 on v2 (-100.0: found
    // from the points), filtered by the joins, remapped for split curves,
    // and inserts it with merging if param's filter accepts it. A pair that
    // is refused, or that merges with one already listed, is released.
    static void addLocation(QList<zgCurveLocation *> &locations, opParam &param,
                            QVector<double> v1, zgCurve *c1, double t1, const zgPoint &p1,
                            QVector<double> v2, zgCurve *c2, double t2, const zgPoint &p2,
                            bool overlap);
    // ---------------------------------------------------- end of intersections

private:
    zgPath *m_path;

public:
    zgRect bounds;   // cache; zero means not known
    double length;   // cache; 0 means not known

private:
    // The contour sets path when it places its curves (_adjustCurves) and
    // clears it when it takes them out.
    friend class zgPath;

    zgSegment *m_segment1;
    zgSegment *m_segment2;
};

// A place on a curve: a curve, a time, a point. The result type of
// intersection, nearest-point and offset queries, and the node of the chains
// that the boolean engine walks.
//
// A location survives edits of its contour: it remembers the contour's
// version (zgPath::version) and the segments around it, and when the version
// has changed its next getCurve() finds the curve again from its point. The
// point itself never changes on that road. The getters write caches, so even
// reading is not free of effects.
//
// Failure values: a location that no longer lies on its contour keeps a null
// curve; getIndex() is then -1, getTime() -100.0, getCurveOffset() 0.0,
// getSegment() null and the tangents NaN points.
class ZG_EXPORT zgCurveLocation
{
public:
    static QList<zgCurveLocation *> s_curveLocationList;

    bool overlap;      // an end of an overlap between two curves
    int32_t refCount;
    int32_t version;   // the contour's version when the curve was set
    zgPath *path;      // the curve's contour, null for a free curve
    zgCurve *curve;    // null while it must be found again
    double offset;     // arc length from the contour's start; -1.0: not computed
    double time;       // curve time; -100.0: not known
    double distance;   // distance to the query point of a nearest-point result
    zgPoint point;

private:
    zgCurveLocation *m_intersection; // the partner on the other curve
    zgCurveLocation *m_next;         // chain of intersections at one point
    zgCurveLocation *m_previous;
    zgSegment *m_segmentM;           // the segment closest to the location, lazily

public:
    zgSegment *segment1; // the curve's segments when the curve was set
    zgSegment *segment2;

    // An empty location: no curve, time -100.0, offset -1.0, point (0, 0).
    zgCurveLocation();
    // A location at time on curve. A time above 0.9999996 moves to time 0 of
    // the next curve, if there is one. A NaN point is computed from the curve.
    zgCurveLocation(zgCurve *curve, double time, const zgPoint &point, bool overlap = false,
                    double distance = 0.0);
    // Copies every member; no reference is taken and nothing is tracked.
    zgCurveLocation(const zgCurveLocation &other) = default;
    zgCurveLocation &operator=(const zgCurveLocation &other) = default;
    ~zgCurveLocation();

    void addRef();
    void release();

    zgPoint getPoint() const { return point; }
    // The index of the first segment of getCurve(), or -1.
    int getIndex();
    zgPath *getPath();
    // NaN points (NaN curvature) without a curve or a known time.
    zgPoint getTangent();
    zgPoint getNormal();
    zgPoint getWeightedTangent();
    zgPoint getWeightedNormal();
    double getCurvature();

    zgCurveLocation *intersection() const { return m_intersection; }
    zgCurveLocation *next() const { return m_next; }
    zgCurveLocation *previous() const { return m_previous; }
    zgSegment *segmentM() const { return m_segmentM; }
    void setIntersection(zgCurveLocation *location) { m_intersection = location; }
    void setNext(zgCurveLocation *location) { m_next = location; }
    void setPrevious(zgCurveLocation *location) { m_previous = location; }
    void setSegmentM(zgSegment *segment) { m_segmentM = segment; }
    void setSegment1(zgSegment *segment) { segment1 = segment; }
    void setSegment2(zgSegment *segment) { segment2 = segment; }

    // Sets path, version, curve and both segments from a non-null curve and
    // clears segmentM; time and offset stay.
    void setCurve(zgCurve *curve);
    // Places the location on a segment (time 0 or 1 of its curve); the
    // segment must not be null.
    void setSegment(zgSegment *segment);
    void setSegmentPrev(zgSegment *segment);

    // The curve, found again from the point after an edit of the contour; may be null.
    zgCurve *getCurve();
    // The time, made known from the point if needed; -100.0 if none.
    double getTime();
    // Arc length from the curve's start; 0.0 without a curve or time.
    double getCurveOffset();
    // Arc length from the contour's start, cached until the contour's version
    // changes.
    double getOffset();
    // The nearer of the curve's two segments, cached; null without a time.
    zgSegment *getSegment();

    // Same place within 2e-07 (point) and 4e-07 (time) or 2e-07 (offset),
    // the end of a closed contour meeting its start; unless ignoreOther, the
    // intersections must be equal too.
    bool equals(zgCurveLocation *other, bool ignoreOther);
    // Inserts location into locations, sorted by contour id, then index plus
    // time; with merge, an equal location at the same point stands for it.
    // Returns the location that now stands for the given one.
    static zgCurveLocation *insert(QList<zgCurveLocation *> &locations,
                                   zgCurveLocation *location, bool merge);
    // A copy of locations with the intersection of each entry inserted too.
    static QList<zgCurveLocation *> expand(QList<zgCurveLocation *> locations);

    bool isTouching();
    bool isCrossing();

    // Divides the curve at the location; the new curve after it, or null.
    zgCurve *divide();
    // Splits the contour at the location; the new piece, or null.
    zgPath *split();

    QString toString();
};

// Winding records ------------------------------------------------------------
//
// Flattening and simplification ---------------------------------------------

// One leaf of the flattening walk of a contour: a piece of one curve that is
// flat enough, or short enough, to stand for its chord.
class ZG_EXPORT zgFlatPart
{
public:
    double offset = 0.0;    // running length of the chords up to and including this part
    QVector<double> values; // the piece's 8 curve values
    int32_t index = 0;      // index of the curve's first segment
    double time = 0.0;      // end of the piece's span on its curve

    zgFlatPart() = default;
    zgFlatPart(double offset, const QVector<double> &values, int32_t index, double time)
        : offset(offset), values(values), index(index), time(time) {}
};

// The least-squares fitter behind simplify(): cubics through the points of a
// contour, each range split at its worst point until a trial curve passes
// within the error. A curve is four absolute points: start, first control
// point, second control point, end.
//
// Three properties are deliberate: the tolerance is truncated to an int (so
// any tolerance below 1.0 accepts no trial curve and the fit runs down to
// pairs of points), the squared distance of the worst point is compared with
// that error as it stands, and equal distances let the later point win.
class ZG_EXPORT zgSegmentFitter
{
public:
    QVector<zgPoint> points;     // the points to fit
    bool closed = false;         // the contour is closed
    QList<zgSegment *> segments; // the result of the running fit, count 0 each

    // Takes the contour's points, dropping each one within 1e-12 in both x
    // and y of the last point kept. For a closed contour a copy of the last
    // point goes in front and a copy of the first at the end, so the loop is
    // fitted with one point of overlap at each end.
    explicit zgSegmentFitter(const zgPath *path);

    // Fits the points within tolerance and returns the new segments (count
    // 0, no contour), which the caller adopts or releases. No points give an
    // empty list; on a closed contour the first and the last segment of the
    // fit are released and left out. A NaN tolerance counts as 0, and one
    // beyond the int range as the nearest int.
    QList<zgSegment *> fit(double tolerance);
    // Appends to segments the cubics through points first to last, leaving
    // along tan1 and arriving against tan2. A range of two points is one
    // curve with handles of a third of the chord along the tangents (zero
    // handles for zero tangents). A longer range is parameterised by chord
    // length and tried with up to five least-squares curves, each accepted if
    // its worst squared distance lies below error; otherwise it is split at
    // the worst point and both halves are fitted. A worst point that is no
    // interior point (only when every distance is NaN) splits at the middle.
    void fitRange(int error, int first, int last, const zgPoint &tan1, const zgPoint &tan2);
    // Cumulative chord lengths of points first to last, divided by the total:
    // m + 1 values from 0 to 1 (NaN for a range of zero length).
    QVector<double> parameterizeByChord(int first, int last) const;
    // The cubic from points[first] to points[last] with handles along tan1
    // and tan2 whose lengths solve the least-squares system at the
    // parameters u; handles of a third of the chord when that fails.
    QVector<zgPoint> generateCurve(int first, int last, const QVector<double> &u,
                                   const zgPoint &tan1, const zgPoint &tan2) const;
    // The interior point farthest from curve, as (index, squared distance);
    // the later point wins a tie. The index starts at (last - first + 1) / 2,
    // not offset by first, and stands if no distance reaches 0.
    QPair<int, double> findMaxError(int first, int last, const QVector<zgPoint> &curve,
                                    const QVector<double> &u) const;
    // One Newton step for each parameter; false if the parameters no longer
    // increase strictly.
    bool reparameterize(int first, int last, QVector<double> &u,
                        const QVector<zgPoint> &curve) const;
    // u moved by one Newton step toward the curve point nearest to point;
    // u itself where the step's denominator is below 1e-06.
    static double newtonStep(const QVector<zgPoint> &curve, const zgPoint &point, double u);
    // Sets the handle-out of the last segment to the curve's first handle and
    // appends a segment at its end with the second handle as handle-in (after
    // a segment at the curve's start if the result is still empty).
    void addCurve(const QVector<zgPoint> &curve);
};
// ------------------------------------ end of flattening and simplification

// One y-monotone piece of a contour, a plain heap record of the winding code.
// Whoever holds the list that a getMonoCurves() returned deletes its records.
class ZG_EXPORT zgMono
{
public:
    QVector<double> values; // the piece's 8-value curve array
    int32_t winding;        // +1 y grows, -1 y falls, 0 horizontal
    // Null, except on the first record of a contour: there the last record of
    // that contour whose winding is not 0 (null if all of them are 0). Not
    // owning. A non-null last marks the start of a new contour in a list.
    zgMono *last;

    zgMono() : winding(0), last(nullptr) {}
    zgMono(const QVector<double> &values, int32_t winding)
        : values(values), winding(winding), last(nullptr) {}
};

// Result of the winding query.
class ZG_EXPORT zgWinding
{
public:
    int32_t winding; // the larger of the absolute left and right counts
    bool onPath;     // exactly one of the left and right counts is 0

    zgWinding() : winding(0), onPath(false) {}
    zgWinding(int32_t winding, bool onPath) : winding(winding), onPath(onPath) {}
};
// ------------------------------------------------------- end of winding records

// One contour: an ordered list of segments, open or closed, with the curves
// between them built on demand.
class ZG_EXPORT zgPath
{
public:
    // true: release() destroys; false: release() only marks, constructors track.
    static bool s_canDelete;
    // The last contour id given out; the first contour gets 1.
    static int s_maxID;
    static QList<zgPath *> s_pathList;

    bool closed;
    uint32_t flags;
    int32_t refCount;
    int32_t id;
    int32_t index;
    double length;
    double area;
    XPath *parent;
    QList<zgSegment *> segments;
    QList<zgCurve *> curves;
    QList<zgMono *> monos;
    // Structure version: starts at 0 and goes up by one whenever the segment
    // or curve lists change shape (segments added, removed or replaced,
    // curves thrown away, the contour opened, closed or reversed). Moving
    // points or handles does not count. Locations compare it to know whether
    // the curve they remember is still the contour's.
    int32_t version;

    // Orientation bits of flags.
    enum : uint32_t { ClockwiseFlag = 0x1, CounterClockwiseFlag = 0x2 };
    // Boolean flags: no segment, or no valid segment, lies off an overlap.
    enum : uint32_t { OverlapsOnlyFlag = 0x4, ValidOverlapsOnlyFlag = 0x8 };

    zgPath(XPath *parent = nullptr, bool closed = false);
    // Shallow member copies: the lists are shared, no references are taken.
    zgPath(const zgPath &other) = default;
    zgPath &operator=(const zgPath &other) = default;
    // Clears parent, releases curves and segments, deletes the monotone pieces.
    ~zgPath();

    void addRef();
    void release();

    // A new contour on the heap (count 0, no parent) with clones of the segments.
    zgPath *clone() const;
    // Copies closed and appends a counted clone of each of other's segments,
    // numbered from 0; flags, curves and caches are not copied. Meant for an
    // empty contour.
    void assign(const zgPath *other);
    // The same closed flag and equal segments place by place.
    bool equals(const zgPath *other) const;

    // The segment list itself.
    QList<zgSegment *> &getSegments() { return segments; }
    // Releases all segments and curves, then adds the list.
    void setSegments(const QList<zgSegment *> &list);
    // One-element addSegments at the end or at i; returns the segment that
    // went in, a clone if the given one belongs to a contour already.
    zgSegment *addSegment(zgSegment *segment);
    zgSegment *insertSegment(int i, zgSegment *segment);
    // Inserts list at index (-1 appends), each counted; entries that already
    // belong to a contour are replaced in list by their clones. A built curve
    // list is kept in step; curves, which come out of removeSegments, go back
    // in at the place of the new segments and are released once afterwards.
    // Null entries are dropped. Returns a copy of list.
    QList<zgSegment *> addSegments(QList<zgSegment *> &list, int index = -1,
                                   const QList<zgCurve *> &curves = QList<zgCurve *>());
    // Removes and releases; true if something was removed.
    bool removeSegment(int i);
    bool removeSegments(int from, int to = -1);
    // Takes segments from up to to (-1: the end) out of the list, with the
    // curves that go with them. They are appended to outSegments and
    // outCurves; with release set they are released and the two lists are
    // emptied. Returns the number of segments removed.
    int removeSegments(QList<zgSegment *> &outSegments, QList<zgCurve *> &outCurves, int from,
                       int to, bool release);

    // The curve list, built first if it is empty (a shared copy).
    QList<zgCurve *> getCurves();
    // The number of curves a built list holds: the segment count on a closed
    // contour, one less on an open one with segments.
    double _countCurves() const;
    // Puts the right segments on curves from up to to and on their neighbours.
    void _adjustCurves(int from, int to);

    // Null on an empty contour.
    zgSegment *getFirstSegment() const;
    zgSegment *getLastSegment() const;
    zgSegment *getCurrentSegment() const;
    zgCurve *getFirstCurve();
    zgCurve *getLastCurve();

    void clearSegments();
    // Releases the curves; the list then counts as not built.
    void clearCurves();
    void clearMonos();
    void clearHandles();
    bool hasHandles() const;
    bool isClosed() const { return closed; }
    bool isEmpty() const { return segments.isEmpty(); }
    // Opens or closes the contour, dropping or adding the closing curve of a
    // built curve list.
    void setClosed(bool closed);
    // Removes the contour from its parent, if it has one.
    void remove();
    // Transforms every segment in place; curves are not told. Always true.
    bool transformContent(const zgMatrix *matrix);

    // Flattening and simplification.
    //
    // Replaces every curve by chords of the pieces of a recursive halving
    // that stops at a piece within flatness of its chord (see
    // zgCurve::isFlatEnough), at a straight piece, or at 1/256 of the curve:
    // a flatness of 0 cuts each curved curve into 256 chords. Straight curves
    // stay one chord. Chords of zero length are dropped, so coincident
    // neighbours merge, and a contour whose chords all have zero length ends
    // up empty. The new segments have no handles; the closed flag stays.
    // flatness is used as given: a negative one acts as its magnitude, and
    // with NaN no piece is flat enough, so only straight pieces and the
    // 1/256 limit stop the halving.
    void flatten(double flatness);
    // Replaces the segments by cubics fitted through their points within
    // tolerance (zgSegmentFitter). False, with the contour unchanged, if the
    // fit gives nothing: an empty contour, or a closed one of coincident
    // points with a tolerance of 1 or more (below 1 one segment is left).
    bool simplify(double tolerance);

    void addFlags(uint32_t bits) { flags |= bits; }
    void removeFlags(uint32_t bits) { flags &= ~bits; }
    // True if any of bits is set.
    bool isFlags(uint32_t bits) const { return (flags & bits) != 0; }

    // The known orientation if a flag says it, else getArea() >= 0 (not
    // remembered): a contour of zero area counts as clockwise.
    bool isClockwise();
    // Closed contours only: reverses if needed and records the orientation.
    void setClockwise(bool clockwise);
    void reorient() { setClockwise(true); }
    // Reverses the segment order and swaps every segment's handles; throws
    // the curve list away and swaps the orientation flags. The cached area
    // is kept.
    void reverse();

    // Crossing resolution ---------------------------------------------------
    //
    // A point inside the contour: the centre of its bounds (a flat box
    // widened to one unit) if that is inside under the fill rule, else the
    // midpoint of the first two crossings of the horizontal line through the
    // centre, or the centre itself with fewer than two crossings, even though
    // it then lies outside.
    zgPoint getInteriorPoint(bool evenOdd);
    // Walks the curves from the last to the first and removes straight curves
    // shorter than 2e-07 and, the same, straight curves collinear with their
    // next curve; with simplify clear nothing is removed. Returns this contour.
    zgPath *reduce(bool simplify);

    // Signed area. With useCache, a known cached area is returned, the
    // contour's own closed flag is used and the result is stored; without it
    // the closed argument decides whether the closing curve counts. The sum
    // starts from the cached value.
    double getArea(bool useCache = true, bool closed = false);
    // The sum of the curves' lengths, cached in length (0 means not known, so
    // a contour of length 0 is summed again on every call). Each curve's own
    // cache is used or filled.
    double getLength();

    // Queries by arc length. Offsets are arc lengths from the contour's
    // start, in the units of the coordinates.
    //
    // The location at offset; a negative offset counts back from the end
    // (getLength() is added to it). The lengths of the curves are summed
    // with the fraction dropped after every curve, so the location drifts
    // from the true arc length by up to one unit per curve. Past the last
    // (truncated) curve end but within getLength() the result is the end of
    // the last curve; beyond getLength() it is null. An offset still
    // negative after the addition falls on the first curve and is measured
    // back from that curve's end: null if the curve is too short for it.
    // The caller releases the result.
    zgCurveLocation *getLocationAt(double offset);
    // The location of point on the first curve that holds it (within
    // 2e-07), or null. The caller releases the result.
    zgCurveLocation *getLocationOf(const zgPoint &point);
    // The offset of point on the contour, or 0.0 if it doesn't lie on it.
    // The location used for it is released before returning.
    double getOffsetOf(const zgPoint &point);
    // The curve on which offset falls; offset then holds the distance into
    // it. Past the end the last curve, with offset holding the excess; null
    // without curves or when offset reaches the end exactly.
    zgCurve *getCurveAtOff(double &offset);
    // The point, unit tangent, unit normal, derivative, derivative turned
    // to (y, -x), and signed curvature at offset (as getLocationAt); NaN
    // when there is no location there.
    zgPoint getPointAt(double offset);
    zgPoint getTangentAt(double offset);
    zgPoint getNormalAt(double offset);
    zgPoint getWeightedTangentAt(double offset);
    zgPoint getWeightedNormalAt(double offset);
    double getCurvatureAt(double offset);

    // Editing.
    //
    // Appends path to this contour where their ends meet within tolerance
    // (reversing path if that makes them meet, prepending if its end meets
    // this contour's start), merging the shared node. path's segments are
    // copied. If path is closed, the first of the segments taken from it
    // (the shared node having been dropped) is added once more at the end.
    // path is taken out of its parent, if it has one. An empty path ends
    // the join at once. Last, the contour is closed if its ends meet, so
    // join(nullptr, tolerance) only closes. Returns this contour.
    zgPath *join(zgPath *path, double tolerance);
    // splitAt at time of curve index; null for an invalid index or time.
    zgPath *split(int index, double time);
    // splitAt the location at offset (as getLocationAt); null if none.
    zgPath *splitAt(double offset);
    // Cuts the contour at location and returns the piece behind it. On an
    // open contour that is a new contour (count 0 without a parent; added
    // to this contour's parent after it otherwise), and this contour ends
    // at the cut. A closed contour is opened at the cut and turned to start
    // there, and is itself the result. The cut curve is divided with
    // divideAtTime(time, false). The place is the index of the location's
    // curve and its time, read on this contour. Null for a null location,
    // one without a curve, or at the very end of an open contour.
    zgPath *splitAt(zgCurveLocation *location);
    // Makes this contour the blend (1 - factor) * from + factor * to,
    // segment by segment, with from's closed flag. Nothing happens if from
    // or to is null or empty or their segment counts differ. The curves are
    // not told: their cached lengths stay.
    void interpolate(zgPath *from, zgPath *to, double factor);

    // Smoothing. Keeps the points from segment from to segment to (inclusive;
    // to = -1: the last) and computes new handles through them. A negative
    // index counts from the end (i + segment count); on a closed contour a to
    // below from wraps the range past the end, on an open one the two are
    // swapped. A closed contour with from = 0 and to = -1 is smoothed as a
    // loop. type 1 and 2 (and any other code except 3 and 4) go through
    // zgSegment::smooth segment by segment, the ends of a range that is not
    // a loop keeping their outer handles; indices outside the contour are
    // skipped. type 3 (asymmetric) and 4 (continuous) solve one tridiagonal
    // system for the range, padded by a neighbour at each side where there
    // is one (up to four on a loop), and give each node opposite handles of
    // equal length; factor is not used. A range type on fewer than three
    // knots, or on an open contour whose range leaves the contour, changes
    // nothing. Handles are stored without change notice to the curves.
    void smooth(int type, double factor, int from, int to);

    // Drawing commands. Those that need the current point expect a
    // non-empty contour and do nothing on an empty one.
    //
    // On a contour of at most one segment: starts it at the point, replacing
    // that segment. On a longer contour nothing happens.
    void moveTo(double x, double y);
    void moveToPt(const zgPoint &point);
    void lineTo(double x, double y);
    void lineToPt(const zgPoint &point);
    void lineBy(const zgPoint &vector);
    void cubicCurveTo(const zgPoint &control1, const zgPoint &control2, const zgPoint &to);
    void cubicCurveBy(const zgPoint &control1, const zgPoint &control2, const zgPoint &to);
    void quadraticCurveTo(const zgPoint &handle, const zgPoint &to);
    void quadraticCurveBy(const zgPoint &handle, const zgPoint &to);
    // A quadratic through the point at time t; nothing if the handle is not
    // finite (t at 0 or 1).
    void curveTo(const zgPoint &through, const zgPoint &to, double t);
    void curveBy(const zgPoint &through, const zgPoint &to, double t);
    // An elliptical arc to to; angles in degrees.
    void arcTo(const zgPoint &to, const zgSize &radius, double rotation, bool clockwise,
               bool large);
    void arcBy(const zgPoint &to, const zgSize &radius, double rotation, bool clockwise,
               bool large);
    // The arc of the ellipse inscribed in rect, from startAngle over
    // sweepLength degrees (counted as in arcToBezier, negated).
    void arcTo2(const zgRect &rect, double startAngle, double sweepLength);
    // The whole ellipse inscribed in rect, as four cubics; not closed.
    void ellipse(const zgRect &rect);
    // Closes the contour, merging the last segment into the first if their
    // points are within tolerance.
    void closePath(double tolerance);

    // Bounds --------------------------------------------------------------
    //
    // The bounding rectangle of the contour: the handle bounds if
    // options.handle is set (anchor and handle points, padded for the stroke
    // if options.stroke and style.hasStroke are both set), else the stroke
    // bounds with joins and caps if options.stroke is set, else the tight
    // bounds of the curves. A null matrix means no transformation. An empty
    // contour gives the default rectangle, or for the handle bounds a
    // rectangle at +infinity with -infinity extents, which holds no point.
    zgRect getBounds(const zgBoundOpt &options, const zgStyle &style, zgMatrix *matrix);

private:
    friend class zgBoundsInternals;
    friend class zgFlattenInternals;
    friend class XPath; // the whole-path rejection of the intersection sweep

    // Tight bounds of the curves between the segments (and from the last to
    // the first if closed), each coordinate widened at its extremes by half
    // of padding (x, y); an empty padding means none.
    static zgRect getBounds(const QList<zgSegment *> &segments, bool closed,
                            QVector<double> padding, zgMatrix *matrix);
    // The plain bounds padded by the stroke width, with the joins and caps
    // of style added; the plain bounds alone if style.hasStroke is clear.
    static zgRect getStrokeBounds(const QList<zgSegment *> &segments, bool closed,
                                  const zgStyle &style, zgMatrix *matrix);
    // The box of the anchor and handle points: the anchors padded by the
    // join reach and the handles by the stroke radius when options.stroke
    // and style.hasStroke are both set.
    static zgRect getHandleBounds(const QList<zgSegment *> &segments, const zgStyle &style,
                                  const zgBoundOpt &options, zgMatrix *matrix);
    // Half extents (x, y) of the circle of radius under matrix; (radius,
    // radius) for a null matrix.
    static QVector<double> getStrokePadding(double radius, zgMatrix *matrix);
    // Feeds addPoint the points of a bevel or miter join at segment (of a
    // contour with curves before and after it): with area set the polygon
    // point, offset, miter corner if within miterLimit (a distance), offset;
    // otherwise the miter corner alone, or the two offsets of a bevel.
    static void addBevelJoin(zgSegment *segment, zgJoin join, double radius, double miterLimit,
                             zgMatrix *matrix, zgMatrix *strokeMatrix,
                             std::function<void(zgPoint)> addPoint, bool area);
    // Feeds addPoint the corners of a butt or square cap at an end segment
    // (two with area clear, four with it set).
    static void addSquareCap(zgSegment *segment, zgCap cap, double radius, zgMatrix *matrix,
                             zgMatrix *strokeMatrix, std::function<void(zgPoint)> addPoint,
                             bool area);

public:
    // Winding ---------------------------------------------------------------
    //
    // The contour as y-monotone pieces in curve order, fresh records that the
    // caller deletes; a member list monos that is not empty is returned as it
    // stands instead. Curves of length 0 give no piece. An open contour of
    // two segments or more gets a straight closing piece from its last point
    // to its first, so it winds as if closed; a lone segment gets none.
    QList<zgMono *> getMonoCurves();
    // The winding number of point, XPath::getWinding over getMonoCurves().
    // The pieces of the query are not deleted: each call leaves them
    // allocated.
    int getWinding(const zgPoint &point, bool horizontal);

private:
    friend class zgWindingInternals;

    // Splits values at its interior y extremes (times 4e-07 to 0.9999996,
    // at most two) and appends the pieces; a curve of length 0 is dropped.
    static void addMonoCurve(const QVector<double> &values, QList<zgMono *> &monos,
                             zgMono *&lastNonHorizontal);
    // Appends one piece, horizontal when its chord rises less than 2e-07 per
    // unit of run; lastNonHorizontal follows the last piece that is not.
    static void insertMonoCurve(const QVector<double> &values, QList<zgMono *> &monos,
                                zgMono *&lastNonHorizontal);
    // ---------------------------------------------------------- end of winding

public:
    // Hit test and containment -------------------------------------------------
    //
    // What point touches on this contour. The stroke is a distance test
    // against the nearest curve point, with the radius half of
    // style.strokeWidth if options.stroke is set, else 0 if options.curves is
    // set or options.fill is set with a tolerance above 0 (joins and caps
    // then count as round). A nearest point at a segment (curve time exactly
    // 0, or 1 on a contour of two segments or more) is tested against the
    // join or cap there. The fill test is even-odd whatever style says.
    // Results: zgHitStroke or zgHitCurve with the nearest curve point; or
    // zgHitFill, also for a point within tolerance of the curve when only
    // fill is asked; or zgHitNone. compound is the parent.
    zgHitResult _hitTestSelf(const zgPoint &point, const zgHitOpt &options,
                             const zgStyle &style);
    // Whether the winding number of point is not 0 (with style.evenOdd: odd).
    // Points outside the box of the anchor and handle points, and on its
    // edge, are outside without any curve work. On the outline inside that
    // box the winding is at least 1, so the outline counts as inside.
    bool contains(const zgPoint &point, const zgStyle &style);
    // The location on the curve nearest to point, the first curve winning a
    // tie, with its distance in distance; null without curves. It comes with
    // a count of 0: the caller releases it once, which destroys it.
    zgCurveLocation *getNearestLocation(const zgPoint &point);

private:
    // The stroke query of one _hitTestSelf, with the polygon of its joins and
    // caps.
    class StrokeHit;
    // ------------------------------------------------------ end of hit test
    // Flattening: appends to parts the leaves of the walk of values, the
    // curve at index, over its times t1 to t2; length is the running sum of
    // the chords. Leaves of zero chord length are left out.
    static void addFlatParts(QVector<zgFlatPart> &parts, double &length, double flatness,
                             QVector<double> values, int index, double t1, double t2);
};

// A compound path: an ordered list of counted contours. Not itself counted:
// it has one owner and may live on the stack or the heap.
class ZG_EXPORT XPath
{
public:
    bool evenOdd;               // true: even-odd fill, false: non-zero
    QVector<zgPath *> children; // one reference each
    zgRect bounds;

    XPath();
    // Shallow: the vector is shared and no references are taken.
    XPath(const XPath &other) = default;
    XPath &operator=(const XPath &other) = default;
    // Releases the children (clearPath).
    ~XPath();

    // A new compound on the heap with copies of the children; the caller owns it.
    XPath *clone() const;
    // Copies evenOdd and bounds and appends a counted copy of each of other's
    // children, with this object as parent. Existing children stay; meant
    // for an empty compound.
    void assign(const XPath *other);
    // Releases every child and empties the list.
    void clearPath();
    bool isEmpty() const { return children.isEmpty(); }
    // Null without children.
    zgPath *getFirstChild() const;
    zgPath *getLastChild() const;

    // Orientation rule of a compound: the first closed child clockwise, the
    // others counter-clockwise. Children that come in without an orientation
    // flag are turned and flagged by it; a flagged child is taken as it is.
    //
    // Inserts child at index (-1 appends) with this object as parent and
    // takes a reference on it. Null is ignored.
    void addChild(zgPath *child, int index = -1);
    // Inserts children at index (-1 appends), keeping their order, with a
    // reference each; their parent pointers are not touched.
    void addChildren(QVector<zgPath *> children, int index = -1);
    // Releases the old children, then adds the new ones.
    void setChildren(QVector<zgPath *> children);
    // Takes child out if it is one, and releases it once in any case; then
    // puts the remaining children back in order by the orientation rule.
    void removeChild(zgPath *child);
    // Releases and takes out the children from first up to last (-1: the
    // end), then reorients the rest as removeChild does.
    void removeChildren(int first, int last = -1);

    // The curves of all children in order, building them where needed.
    QList<zgCurve *> getCurves();
    // The first child's orientation; false without children.
    bool isClockwise();
    // Reverses all children if isClockwise() differs.
    void setClockwise(bool clockwise);
    // Reverses each child; their order stays.
    void reverse();

    // Boolean operators -----------------------------------------------------
    //
    // Each returns a new compound on the heap that the caller owns, with the
    // even-odd rule; the operands are not changed (their curve lists may be
    // built). A compound whose only child is open takes the open route: it is
    // cut at its crossings with path, and the pieces inside path (intersect)
    // or outside it (subtract) are kept, with hard ends at the cuts; uniting
    // or excluding an open contour, or cutting one by another open contour
    // or by null, gives null. Otherwise a null path, or this compound itself,
    // makes the operator work on this compound alone. Identical operands give
    // one copy under unite and intersect and an empty compound under subtract
    // and exclude.
    XPath *unite(XPath *path);
    // sort: whether the contours of each operand are sorted by the area of
    // their bounds, largest first, before their nesting is fixed.
    XPath *intersect(XPath *path, bool sort = true);
    XPath *subtract(XPath *path);
    XPath *exclude(XPath *path);
    // Two results: subtract(path), then intersect(path); either may be null
    // on the open route.
    QList<XPath *> divide(XPath *path);
    // reduce(simplify) on each child from the last to the first, taking out
    // children left without segments. A single child stays a compound.
    XPath *reduce(bool simplify);
    // Brings this compound into a form the operators accept, in place:
    // overlapping stretches of a contour with itself are removed,
    // self-crossings are traced into simple loops, the loops are sorted by
    // the area of their bounds if sort is set, and every closed loop is turned
    // against its nearest container (or like the first loop if it has none).
    // Under the non-zero rule (evenOdd clear) a loop that adds to the winding
    // of its container is dropped. When overlaps were removed but nothing
    // crossed, the contours stay and the links the overlap step left on
    // their segments (some naming removed segments) are cleared. Returns
    // this compound.
    XPath *resolveCrossings(bool sort);
    // The union (zgRect::unite) of the children's zgPath::getBounds, from a
    // zero rectangle: children whose bounds have no area don't count, and no
    // children give the zero rectangle. The arguments are those of
    // zgPath::getBounds.
    zgRect getBounds(const zgBoundOpt &options, const zgStyle &style, zgMatrix *matrix);

    // Splits a child at a distance along the compound. A non-negative
    // offset picks the first child at which the running sum of the
    // children's lengths exceeds it, and cuts that child at (sum - offset)
    // from its start: the distance back from its end, used as an offset
    // from its start. A negative offset walks back from the last child:
    // with d = -offset, the first child at which the running sum exceeds d
    // is cut at d less the lengths of the children after it, as an offset
    // from its start. Returns the piece, as zgPath::splitAt(location)
    // does, or null.
    zgPath *splitAt(double offset);

    // The real crossings between this compound and other (this or null: the
    // crossings of this compound with itself): the intersections whose
    // location is an overlap end or isCrossing(). Touching locations are
    // refused and released with their partners. The locations come with a
    // count of 0 and are not held by anything: the caller releases each one
    // and its partner (intersection()).
    QList<zgCurveLocation *> getCrossings(XPath *other);

    // Smoothing: zgPath::smooth with the same arguments on every child.
    void smooth(int type, double factor, int from, int to);
    // zgPath::flatten on every child.
    void flatten(double flatness);
    // Fits every child as zgPath::simplify does; true if any child changed.
    bool simplify(double tolerance);

private:
    friend class XPathInternals;
    friend class zgSweepOrderInternals; // the sweep against a walk over all pairs
    friend class zgOperatorInternals;

    // Boolean engine: the operators' steps ----------------------------------
    //
    // The operator on working copies of both operands (op 1 intersect,
    // 2 unite, 3 subtract, 4 exclude); sort goes to resolveCrossings.
    static XPath *computeBoolean(XPath *path1, XPath *path2, int op, bool sort);
    // The cut of path1's single open contour by the closed shape path2.
    static XPath *computeOpenBoolean(XPath *path1, XPath *path2, int op);
    // A new even-odd working copy of path with degenerate curves reduced, and
    // with its crossings resolved if resolve is set.
    static XPath *preparePath(XPath *path, bool resolve, bool sort);
    // A new even-odd compound of paths, reduced if simplify is set; path1
    // and path2 are not used.
    static XPath *createResult(QVector<zgPath *> paths, bool simplify, XPath *path1,
                               XPath *path2);

    // All intersections between this compound and other, or within this one
    // if other is null or this. Paths whose bounds don't touch give an empty
    // list at once; otherwise every pair of curves whose boxes touch is
    // tried, in the order of two nested loops over all pairs. The result is
    // sorted within each contour of this compound (path id, then index plus
    // time), the contours following in order. With firstOnly the call returns
    // what the self-intersection of the first curve found, before any pair
    // is compared. filter may refuse locations; refused ones are released.
    QList<zgCurveLocation *> getIntersections(XPath *other,
                                              std::function<bool(zgCurveLocation *)> filter,
                                              bool firstOnly);

    // Renumbers the children and turns each one that has no orientation flag,
    // or a wrong one, to the rule.
    void reorientChildren();
    // Makes the children the blend of from's and to's, child by child, after
    // bringing this compound to their child count (new empty contours at the
    // end, or the surplus removed). Nothing happens if from or to is null or
    // without children or their child counts differ.
    void interpolate(XPath *from, XPath *to, double factor);

public:
    // Winding ---------------------------------------------------------------
    //
    // How often the pieces in curves wind around point, counted along a
    // horizontal ray through it; curves is read, not freed. A new contour
    // starts at each piece whose last is set. onPath tells that the point
    // lies on the outline (within 2e-07 in x of a crossing). With horizontal
    // set, for points on a horizontal stretch, the ray form is asked instead
    // halfway to the nearest outline above and below the point. An empty
    // list gives winding 0, onPath false.
    static zgWinding getWinding(const zgPoint &point, QList<zgMono *> curves, bool horizontal);

private:
    friend class zgWindingInternals;

    // The pieces of every child in child order, for the caller to delete.
    QList<zgMono *> getMonoCurves();
    // The winding number of point over all children; the pieces are deleted.
    int getWinding(const zgPoint &point, bool horizontal);
    // ---------------------------------------------------------- end of winding

    // Boolean engine: division at crossings, winding propagation, tracing ---
    friend class zgTracingInternals;

public:
    // The operator code handed through the boolean engine.
    enum : int { opNone = 0, opIntersect = 1, opUnite = 2, opSubtract = 3, opExclude = 4 };

private:
    // Splits the curves at the locations, walking the list from its last
    // entry to its first, so that a list sorted by contour and ascending time
    // meets each curve's locations from the highest time down; every later
    // split time is rescaled to the piece that the previous split left. A
    // time below 4e-07 or above 0.9999996 takes the curve's end segment and
    // splits nothing. Each processed location is placed on its segment
    // (setSegment, or setSegmentPrev for a location that takes the end of the
    // first piece), and its partner is hung on that segment; where a segment
    // already carries a location, the chains of all locations at that point
    // are joined into one. Straight curves are split with handles, which are
    // cleared again after the walk so that the pieces stay straight.
    //
    // mode 0 processes every location and returns the input list. mode 1
    // processes only overlap locations; mode 2 only those whose curve
    // (getCurve()), or whose partner's curve member, or the path member of
    // either is null, and it first unhooks such a location from its
    // segment. Modes 1 and 2 return the processed locations in input order,
    // or the input list if there were none. A location without a partner
    // counts as having lost it in mode 2.
    static QList<zgCurveLocation *> divideLocations(QList<zgCurveLocation *> locations, int mode);
    // Joins the chain (next / previous) that holds from to the one that holds
    // to: from's chain first, to's chain after its tail. Nothing happens when
    // the two already share a chain or either is null.
    static void linkIntersections(zgCurveLocation *from, zgCurveLocation *to);
    // Measures the winding once for the stretch that starts at segment and
    // runs up to the next segment that carries a location (or round to
    // segment again, or to the end of an open contour), at half the
    // stretch's length, and writes it with the onPath flag on every segment
    // of the stretch. monoCurves are the records of all operands. With
    // opSubtract and a path2, outline of path1 inside path2 and outline of
    // path2 outside path1 get winding 0 whatever the total count. Curve
    // lengths are read from and written to the curves' caches.
    static void propagateWinding(zgSegment *segment, XPath *path1, XPath *path2,
                                 QList<zgMono *> monoCurves, int op);
    // Walks the divided segments into new closed contours (count 0 each), in
    // order of discovery, keeping the stretches that op wants and changing
    // outline at crossings; opNone keeps everything and changes outline at
    // every crossing, which untangles self-crossings. A contour whose
    // segments all lie on overlaps and equal those of the contour across
    // them is copied once for opIntersect and opUnite (unless its area is 0)
    // and dropped otherwise. A closed loop of at most 8 segments and an area
    // within 1e-12 of 0 is dropped, as is a walk that cannot be closed.
    static QVector<zgPath *> tracePaths(QList<zgSegment *> segments, int op);

public:
    // Hit test and containment -------------------------------------------------
    //
    // With options.fill, a point inside the compound's fill gives zgHitFill
    // with compound set, path null and the point zero; otherwise the first
    // hit of a child's zgPath::_hitTestSelf (fill left to the compound),
    // or zgHitNone. No children: zgHitNone.
    zgHitResult hitTest(const zgPoint &point, const zgStyle &style, const zgHitOpt &options);
    // Whether the winding number of point over all children is not 0 (with
    // style.evenOdd: odd); points not strictly inside the union of the
    // children's handle boxes are outside.
    bool contains(const zgPoint &point, const zgStyle &style);

private:
    friend class zgHitTestInternals;

    // The first hit of the children's _hitTestSelf, fill cleared; zgHitNone
    // without one.
    zgHitResult hitTestChildren(const zgPoint &point, const zgStyle &style,
                                const zgHitOpt &options);
    // zgHitFill with compound set if options.fill is set and point is
    // inside; zgHitNone otherwise.
    zgHitResult hitTestSelf(const zgPoint &point, const zgStyle &style, const zgHitOpt &options);
    // As zgPath::getNearestLocation, over the curves of all children.
    zgCurveLocation *getNearestLocation(const zgPoint &point);
    // The point of getNearestLocation, the location released; NaN without one.
    zgPoint getNearestPoint(const zgPoint &point);
    // ------------------------------------------------------ end of hit test
};

#endif // ZGRAPHICS_MODEL_H
