// zgraphics: drawing classes.
//
// ZDPath is the flat list of drawing elements that the host holds, in the
// manner of a painter path, and the library's facade. Its add operations
// follow one rule: two points closer than one unit in both x and y count as
// the same point.
#ifndef ZGRAPHICS_DRAWING_H
#define ZGRAPHICS_DRAWING_H

#include <zgraphics/primitives.h>

class XPath;

#include <QtCore/QList>
#include <QtCore/QPoint>
#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QVector>
#include <QtGui/QPainterPath>
#include <QtGui/QPolygonF>
#include <QtGui/QTransform>

// Element kinds. Codes 0 to 3 are those of QPainterPath::ElementType.
enum ZDPathElementType : int32_t {
    ZDMoveToElement = 0,      // starts a subpath at the point
    ZDLineToElement = 1,      // straight line to the point
    ZDCurveToElement = 2,     // first control point of a cubic
    ZDCurveToDataElement = 3, // second control point, or end point, of a cubic
    ZDCloseElement = 4        // closes the subpath; its point is the subpath's start
};

// One element of a drawing path. A cubic takes three elements: types 2, 3, 3.
class ZG_EXPORT ZDPathElement
{
public:
    static constexpr int32_t ZDMoveToElement = ::ZDMoveToElement;
    static constexpr int32_t ZDLineToElement = ::ZDLineToElement;
    static constexpr int32_t ZDCurveToElement = ::ZDCurveToElement;
    static constexpr int32_t ZDCurveToDataElement = ::ZDCurveToDataElement;
    static constexpr int32_t ZDCloseElement = ::ZDCloseElement;

    double x;
    double y;
    // The point a subpath's end had before setLineHead shortened it; 0 otherwise.
    double auxX;
    double auxY;
    int32_t type;

    ZDPathElement() : x(0.0), y(0.0), auxX(0.0), auxY(0.0), type(ZDMoveToElement) {}
    ZDPathElement(double x, double y, int32_t type) : x(x), y(y), auxX(0.0), auxY(0.0), type(type) {}

    QPointF toPoint() const { return QPointF(x, y); }
    bool isMoveTo() const { return type == ZDMoveToElement; }
    bool isLineTo() const { return type == ZDLineToElement; }
    bool isCurveTo() const { return type == ZDCurveToElement; }
    bool isClose() const { return type == ZDCloseElement; }
};

// A drawing path: a flat, implicitly shared list of elements.
//
// The continuation rule of the add operations: on an empty list or after a
// close element a move is appended at the new start; a start within one unit
// of the last element (strictly, in both x and y) continues from that element;
// any other start gets a line to it first.
class ZG_EXPORT ZDPath
{
public:
    static constexpr int32_t ZDMoveToElement = ::ZDMoveToElement;
    static constexpr int32_t ZDLineToElement = ::ZDLineToElement;
    static constexpr int32_t ZDCurveToElement = ::ZDCurveToElement;
    static constexpr int32_t ZDCurveToDataElement = ::ZDCurveToDataElement;
    static constexpr int32_t ZDCloseElement = ::ZDCloseElement;

    QVector<ZDPathElement> elements;

    ZDPath() {}
    // moveTo top left, lines to top right, bottom right, bottom left, closeSubpath.
    ZDPath(const QRectF &rect);

    int count() const { return elements.size(); }
    bool isEmpty() const { return elements.isEmpty(); }
    const ZDPathElement &elementAt(int i) const { return elements.at(i); }
    // Empties the list and keeps its capacity; nothing on an empty list.
    void reset();
    // Overwrite one coordinate of the last element; nothing on an empty list.
    void setBackX(double x);
    void setBackY(double y);

    // Append one element each, with no test of what came before.
    void moveTo(double x, double y);
    void moveTo(const QPointF &p);
    void lineTo(double x, double y);
    void lineTo(const QPointF &p);
    void cubicTo(const QPointF &c1, const QPointF &c2, const QPointF &end);

    // The continuation rule for the start, then the piece.
    void addLine(const QPointF &p1, const QPointF &p2);
    void addLine(double x1, double y1, double x2, double y2);
    // pts[0] is read whatever n is: n must be at least 1.
    void addLines(const QPointF *pts, int n);
    void addLines(const QPoint *pts, int n);
    void addBezier(const QPointF &p1, const QPointF &c1, const QPointF &c2, const QPointF &p2);
    // pts holds a start and then control, control, end triples: a cubic for
    // i = 3, 6, 9, ... while i < n. pts[0] is read whatever n is.
    void addBeziers(const QPointF *pts, int n);
    // Appends other's elements. With connect set on a non-empty list, other's
    // first element is dropped if it is within one unit of the last element,
    // else appended as a line. other is detached by the access but unchanged.
    void addPath(ZDPath &other, bool connect = false);
    // A move and lines, or only lines if the list ends on a bare move. No close.
    void addPolygon(const QPolygonF &polygon);
    // Move, three lines, then closeSubpath.
    void addRect(const QRectF &rect);
    // Ends the subpath on its start point (snapping the last element within
    // one unit, else adding a line) and appends a close element. Nothing with
    // fewer than 2 elements or after a close element.
    void closeSubpath();

    // In place over every element, close elements included; auxX/auxY untouched.
    void translate(double dx, double dy);
    void transform(const QTransform &matrix);
    void scale(double sx, double sy);

    // An elliptical arc of the ellipse inscribed in rect, angles in degrees
    // (0 is the right middle). The arc's start joins the list with a move
    // (empty list or after a close), nothing (a last move within 0.0001), or
    // a line. Nothing for an empty rectangle.
    void arcTo(const QRectF &rect, double startAngle, double sweepLength);
    void arcTo(double x, double y, double w, double h, double startAngle, double sweepLength);
    // A closed ellipse of four cubics, starting at the right middle; a bare
    // move at the end of the list is replaced. Nothing for an empty rectangle.
    void ellipse(const QRectF &rect);

    // Removes empty subpaths in place: the first element becomes a move, a
    // move followed by a move loses the earlier one, a move followed by a
    // close loses both, and a trailing move is dropped.
    void cleanUp();
    // Fills out with one open or closed zgPath per subpath, from element start
    // on, each with out as its parent; the list is cleaned up first. A close
    // element closes the current contour and joins its ends within 1.0.
    void toXPath(XPath &out, int start = 0);
    // Appends children first up to, not including, last (-1: the child count)
    // as subpaths; contours of fewer than two segments are dropped. Never
    // clears this path first.
    void fromXPath(XPath &xpath, int first = 0, int last = -1);
    // Appends every element of path (a closed painter subpath keeps its line
    // back to the start; no close element comes from here).
    void fromPainterPath(const QPainterPath &path);
    // Replaces out by the painter path drawn from the elements; a cubic cut
    // short at the end of the list and a lone type 3 element draw nothing.
    void toPainterPath(QPainterPath &out) const;
    // The same with every point rounded by qRound. The rounded points of all
    // but the close elements sit in one vector, read with a running index that
    // moves by one for a move or a line and by three for each first control
    // point, whole cubic or not; a lone type 3 element does not move it.
    void toPainterPathWithRoundValue(QPainterPath &out) const;
    // Rounds the points of all but the close elements by qRound, in place.
    void roundData();

    // Walks from index to the next open subpath. Returns its move's index with
    // start set to the move's point and next to the first later point of the
    // subpath off it by 0.0001 or more, and moves index past the subpath; -1
    // when there is none (a subpath lying within 0.0001 of its start also
    // gives -1 and ends the walk).
    int getOpenedStart(QPointF &start, QPointF &next, int &index) const;
    // The mirror of getOpenedStart for the ends: returns the index of the next
    // open subpath's last element, end its point, prev the nearest earlier
    // point off it by 0.0001 or more, moveIndex the subpath's move; -1 when
    // there is none. Element 0 is never taken as prev, nor is the move of the
    // list's last subpath (a subpath ended by a later move may give its move).
    // A move at element 1 after the one at 0 gives 0 with index 1 and leaves
    // end and prev unwritten.
    int getOpenedEnd(QPointF &end, QPointF &prev, int &index, int &moveIndex) const;
    // Reverses every subpath in place; close elements keep their place and
    // point, and auxX/auxY stay with the positions.
    void reverse();
    // reverse() when the first element lies strictly right of the last.
    void curveReverse();

    // Measures along the path. Each call converts the path to a local XPath
    // (cleaning the list up first) and measures its curves; nothing is cached.
    //
    // The sum of the lengths of all curves.
    double getLength();
    // The length from the path's start to point, which must lie on a curve
    // within 2e-07; -1.0 if it lies on none. A point on a joint counts at the
    // first curve that holds it.
    double getLength(const zgPoint &point);
    // getLength(point) as a share of the whole length, counting a point on a
    // joint at the last curve that holds it; -1.0 if none holds it or the
    // path has no length.
    double getPathProportionFromPoint(const zgPoint &point);
    // The point at share t (0 to 1) of the whole length; a NaN point outside.
    zgPoint getPointAt(double t);
    // The point of the first contour's location (zgPath::getLocationAt) at
    // share p of its length; p is not checked. (0, 0) without a contour or a
    // location. The location is released before returning.
    QPointF pointAtPercent(double p);
    // The point at share p of the length of curve i of all contours' curves;
    // a NaN point for an invalid i.
    zgPoint getPointFromCurveProportion(int i, double p);
    // The nearest point on any curve; a NaN point if none is within 1e8.
    zgPoint getNearestPoint(const zgPoint &point);
    // The unit tangent where point lies on the path; a NaN point if it doesn't.
    zgPoint getTangentAt(const zgPoint &point);
    // The direction angle in degrees at the start (atStart) or end of the
    // first contour of the elements from start on; 0.0 without a contour.
    double getTangent(int start, bool atStart);
    // The orientation of the first subpath alone.
    bool isClockWise();

    // Set operations and relations ----------------------------------------
    //
    // Each converts this path, and other, with toXPath (which cleans both
    // element lists up first) and asks the compound. The booleans replace
    // this path by the result's contours; a null result (an open path under
    // unite, or cut by an open path) leaves it as it is.
    void unite(ZDPath &other);
    // flag: whether the contours are sorted by the area of their bounds.
    void intersect(ZDPath &other, bool flag = true);
    void subtract(ZDPath &other);
    // Appends a copy of each contour, oriented by the compound's rule (the
    // first clockwise, the others counter-clockwise), after the elements
    // already there; the path is not reset.
    void evenOdd();
    // Whether the closed subpaths don't all run the same way as the first
    // closed one. The element list is read as it stands, without cleanUp.
    bool isEvenOdd() const;
    // Cuts this path at its first crossing with other, whose point goes to
    // point. With flag clear this path becomes the piece of the first
    // subpath behind the cut, with flag set the piece before it together
    // with the other subpaths. False, with point untouched, if they don't
    // cross. The crossing locations are left allocated (to the tracked
    // lists in deferred mode).
    bool dividePath(ZDPath &other, QPointF &point, bool flag);
    // The points of the real crossings with other (crossings and overlap
    // ends; touching points are not among them).
    QVector<QPointF> crossPoints(ZDPath &other);
    // The first of crossPoints, or (0, 0) without one.
    QPointF bestCrossPoint(ZDPath &other);
    // Maps point, which lies near oldPath, to the place at the same share of
    // the length on newPath, at the same distance and side; then moves it so
    // that a box of rect's size (plus 5) around it touches newPath with a
    // corner without being cut by it. Within 1 of oldPath the box is not
    // considered. point itself if either path is empty.
    static QPointF getSimilarPoint(ZDPath &oldPath, ZDPath &newPath, const zgPoint &point,
                                   const QRectF &rect);
    // Whether the intersection with other has a contour. The intersection
    // made for the answer is not destroyed: each call leaves it allocated.
    bool intersects(ZDPath &other);
    // Whether the hit test with a default style and the options
    // (fill, stroke, curves clear, styleFill set, tolerance) finds anything.
    bool containsPt(const zgPoint &point, bool fill, bool stroke, double tolerance);
    // The hit test of the compound. Its pointers refer to objects that are
    // gone when it returns: only type and point may be used.
    zgHitResult hitTest(const zgPoint &point, const zgStyle &style, const zgHitOpt &options);
    zgRect getBounds(const zgBoundOpt &options, const zgStyle &style, zgMatrix *matrix);

    // Moves the first and the last point. With a the direction of
    // last - first, A = cos(a) * length + last.x and B = sin(a) * length +
    // last.y: atStart subtracts (A, B) from the first point, atEnd adds (A, A)
    // to the last. Nothing with fewer than 2 elements.
    void extendPath(double length, bool atStart, bool atEnd);

    // Shortens every open subpath by startLength at its start and endLength
    // at its end (a length of 0 or below leaves that end alone), in place,
    // to leave room for line heads. A line not longer than the length plus
    // one unit is taken out. Each shortened end keeps its unshortened point in
    // auxX and auxY. With outerOnly set only the path's own first and last
    // points move. True if an open subpath was found for a length above 0.
    bool setLineHead(double startLength, double endLength, bool outerOnly);

    // Corner rounding --------------------------------------------------------
    //
    // Each replaces sharp corners by one cubic (types 2, 3, 3) that starts
    // and ends radius units from the corner along the two sides. Its control
    // points stand on the sides or on the curves' tangents: at 0.448 of the
    // corner vector from the corner, or at 0.672 of it from the arc's end
    // where that end splits a curve (setCornerRound2: always). The arcs are
    // deliberately not circular. All three edit the path in place; a NaN
    // radius leaves it as it is.
    //
    // Rounds line-line, curve-line and line-curve corners and the closing
    // corner of a closed subpath, on the element list. The radius is
    // truncated to an integer at each corner and cut to the truncated half of
    // a shorter side. A line repeating the corner within 0.001 is dropped; a
    // corner between two curves stays sharp. A radius of 0.0 does nothing.
    void setCornerRound(double radius);
    // Rounds only the line-line corners whose corner point and type match an
    // element of marks within 0.1, with the radius cut (not truncated) to half
    // of a shorter side. Marked elements other than moves and lines are
    // dropped. A radius of 0.0 does nothing; marks is only read.
    void setCornerRoundForConnectline(double radius, ZDPath &marks);
    // Rounds the contours of the path's XPath, measuring along the curves and
    // treating runs of smooth nodes as one side. The last segment of each
    // contour stays sharp, and contours of fewer than 3 segments or not
    // longer than radius are left alone; the path is then rebuilt from the
    // contours. A radius below 1.0 does nothing.
    void setCornerRound2(double radius);

    // Parallel outline ------------------------------------------------------
    //
    // Appends to out, for each subpath, the polyline at the signed distance
    // from it: a point p with unit direction (tx, ty) goes to
    // p + distance * (ty, -tx). Curves are sampled every step units of their
    // arc length, so only move, line and close elements are written. Outer
    // corners get a miter point, cut square when it lies farther than
    // |distance| / tan(pi / 4) from the offset side's end; inner corners are
    // trimmed where the two offset sides cross. A distance of 0.0 assigns this
    // path to out instead. A step that is not above 0 leaves out the samples
    // between the ends of each curve. Each walk along a curve (its samples,
    // or the search of an inner corner's trim) takes at most 1048576 (2^20)
    // samples and stops there, which bounds the work of a tiny step.
    void parallelPath(ZDPath &out, double distance, double step);

    // Wave and hand-drawn lines ---------------------------------------------
    //
    // Both displace points sideways along each contour of the path's XPath
    // (toXPath, which cleans the list up first): a point with unit tangent
    // (tx, ty) moves along (ty, -tx). Neither has a random source: equal
    // input gives equal output.
    //
    // Appends to out one wave per non-empty contour. kind 0: smooth wave,
    // alternating sides (cubics); 1 and 2: smooth arches on the side of the
    // normal and on the other side (cubics); 3: zigzag (lines); 4 and 5:
    // teeth on the side of the normal and on the other side (lines); 6:
    // square wave (lines); any other kind writes only each contour's start
    // point. The step count is length / wavelength rounded half away from
    // zero, made even on a closed contour for kinds 0, 3 and 6; it is 0 when
    // that quotient is not a finite number (a wavelength of 0, an infinite
    // length), and a negative count makes no steps. A contour takes at most
    // 100000 steps: a quotient above that draws 100000 steps of length / 100000,
    // which bounds the work and the output of a tiny wavelength. An amplitude of exactly -1.0 means wavelength * 0.5; any other
    // negative amplitude flips the sides. smoothness is the handle length of
    // kinds 0, 1 and 2 as a fraction of the amplitude.
    void wavePath(ZDPath &out, int kind, double wavelength, double amplitude, double smoothness);
    // Replaces this path by a hand-drawn copy of src: every step units of arc
    // length a point moves sideways by perlinNoise_1D(s * 0.05) * amplitude,
    // and the ends of an open contour stay fixed. An empty src leaves this
    // path unchanged. A step that is not above 0, or a contour whose length
    // is not finite, takes no samples between the ends; sampling also stops
    // where adding step no longer moves the offset. A contour takes at most
    // 1048576 (2^20) samples: a step below length / 2^20 samples every
    // length / 2^20 instead, which bounds the work of a tiny step.
    void manualPath(ZDPath &src, double amplitude, double step);

    // Fitting -----------------------------------------------------------------
    //
    // Results are flat lists of Bezier control points, degree + 1 per segment
    // in curve order; the end of a segment and the start of the next both
    // stand in the list. Failures of the spline engine arrive as
    // std::runtime_error with its message and are not caught here.
    //
    // The control points of the clamped cubic B-spline through every point,
    // parameterised by cumulative chord length, whose end derivatives follow
    // the three-point tangents of the first and last three points, as
    // Beziers. degree becomes 3. Fewer than 3 points give an empty list and
    // leave degree alone. A singular system (coincident points) gives what
    // the dense LU solve computes.
    static QVector<QPointF> bezierFitting(const QVector<QPointF> &points, int &degree);
    // The B-spline of controlPoints and knots, clamped, as Beziers; degree is
    // the spline's degree in and the result's degree out. More than 50000
    // knots give an empty list and leave degree alone. Three control points
    // make a quadratic whatever degree says. knots is cut or extended to the
    // count of a cubic (control points + 4), so any other degree throws the
    // engine's size mismatch. A short knot vector is extended by its last
    // step, each new value standing degree + 1 times (once for a degree below
    // 0). It must not end in a
    // repeated value: that case is outside the contract (the step is then 0,
    // the last value is repeated, and setKnots rejects the multiplicity in
    // most cases).
    static QVector<QPointF> bsplineToBezier(QVector<QPointF> controlPoints, QVector<double> knots, int &degree);
    // The Bezier one degree higher with the same curve: one point more. Empty
    // for an empty list; points is not changed.
    static QVector<QPointF> BezierElevate(QVector<QPointF> &points);
    // Smoothing, knot paths and thick outline -------------------------------
    //
    // Recomputes the handles of a chain laid out knot, handle, handle, knot,
    // ..., knot (the knots at indices 0, 3, 6, ...) so that it runs through
    // its knots with continuous first and second derivatives; each inner knot
    // gets two opposite handles of equal length and the list ends with
    // 3 n + 1 points for n + 1 knots. reshape false: through the existing
    // knots, at least 3 of them. reshape true, keepEnds false: a new S-shaped
    // chain of 4 knots from the first to the last knot (a list of exactly two
    // points gives those two), its middle knots at 0.3 and 0.7 of the way and
    // 30 units to either side, turned with the line. reshape true, keepEnds
    // true: 4 knots, the first and last points and two between them taken
    // from the shape of the end handles (a quarter and three quarters of the
    // way for a list of two points; the origin for both for a list of three).
    // Too few knots, or fewer than two points, leave the list unchanged.
    static void knotsPath(QVector<QPointF> &points, bool reshape, bool keepEnds);
    // Smooths every contour of the path's XPath (toXPath, which cleans the
    // list up first) by zgPath::smooth(type, 0.5, 0, -1) and writes them
    // back as fromXPath does, dropping contours of fewer than two segments.
    void smooth(int type);
    // Replaces this path by the closed outline of a stroke along the first
    // contour of src whose half width runs linearly from startWidth at its
    // start to endWidth at its end, with a round cap at the start and one at
    // the end when endWidth is above 0. Straight curves give one pair of side
    // points at their end; other curves are sampled every step units of arc
    // length (halved down to 4 samples while the step stays at 2 or more,
    // at most 100000 samples a curve) and each side of them smoothed by
    // smooth(4). The sides come from zgPath::getLocationAt, so they drift by
    // up to a unit per curve as it does; where there is no location the
    // previous pair is reused, (0, 0) before the first. A closed src is
    // stroked as an open line from its first point; its end location is the
    // start of its first curve, whose direction the end cap takes. Both caps
    // need two points on each side. src is cleaned up by the conversion; its
    // other contours are ignored, the end cap standing at the end of its
    // first subpath. This path is left unchanged when src has no contour or
    // step is not a finite number above 0. A src of zero length gives NaN
    // points (the width is interpolated over the length).
    void thickPath(ZDPath &src, double startWidth, double endWidth, double step);

private:
    void shortenStart(int i, const QPointF &a, const QPointF &b, double startLength, bool outerOnly,
                      int &cursor, QList<QPointF> &startPoints);
    void shortenEnd(int i, int subpathStart, const QPointF &a, const QPointF &b, double endLength,
                    bool outerOnly, int &cursor, QList<QPointF> &endPoints);
};

// Curve stepper ---------------------------------------------------------------
//
// Walks one cubic Bezier curve in equal parameter steps by forward
// differencing: three additions per axis and step, no square root, no
// division, no allocation. The four points are stored as start, end,
// control1, control2; every operation takes them in curve order (start,
// control1, control2, end).
//
// The step counter counts down. A forward walk starts at step == stepCount
// and ends at step == -1; the index that the searches return is the counter
// after its decrement, so the start point has index stepCount - 1 and the
// end point -1, which is also the answer "not found".
//
// Only init sets the differences. vertex and the three searches advance them
// and nothing rewinds them, so a second walk or search without init goes on
// from where the last one stopped, with a restarted counter, and gives points
// off the curve. Call init again for a fresh walk.
class ZG_EXPORT ZDCurve
{
public:
    int32_t stepCount = 0; // steps of the walk, at least 2 after init
    int32_t step = 0;      // the walk's counter
    double scale = 1.0;    // steps per unit of control-polygon length
    // The members below are not set by the default constructor; they read
    // as 0 until init.
    double start[2] = {0.0, 0.0};
    double end[2] = {0.0, 0.0};
    double control1[2] = {0.0, 0.0};
    double control2[2] = {0.0, 0.0};
    double fx = 0.0, fy = 0.0;       // current point of the forward differences
    double dfx = 0.0, dfy = 0.0;     // first difference
    double ddfx = 0.0, ddfy = 0.0;   // second difference
    double dddfx = 0.0, dddfy = 0.0; // third difference, constant over a walk
    // The starting values of the six moving members, written by init and
    // read by nothing.
    double savedFx = 0.0, savedFy = 0.0, savedDfx = 0.0, savedDfy = 0.0, savedDdfx = 0.0,
           savedDdfy = 0.0;

    ZDCurve() {}
    // Scale 1.0, then init.
    ZDCurve(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
            double y4);
    // Scale 1.5, then init: the point form steps more finely.
    ZDCurve(QPointF p1, QPointF p2, QPointF p3, QPointF p4);
    ZDCurve(const ZDCurve &other) = default;
    ZDCurve(ZDCurve &&other) = default;
    // Both copy every member.
    ZDCurve &operator=(const ZDCurve &other) = default;
    ZDCurve &operator=(ZDCurve &&other) = default;

    // Prepares a walk of the curve (points in curve order) with the current
    // scale: stepCount is the control polygon's length times scale,
    // truncated, and at least 2 (also when that product is NaN); a product
    // above 1048576 (2^20) is cut to 2^20, which bounds the work of a walk
    // or search (and keeps the up-counting walk within the int range).
    void init(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
              double y4);
    void init(QPointF p1, QPointF p2, QPointF p3, QPointF p4);
    // A new scale takes effect at the next init.
    void approximation_scale(double s) { scale = s; }
    double approximation_scale() const { return scale; }
    int stepNum() const { return stepCount; }
    // Clears the counters only: stepCount 0, step -1.
    void reset();

    // The next point of the forward walk into x and y (a null pointer is not
    // written), which gives stepCount + 1 points, the two ends exactly.
    // False once step is negative.
    bool vertex(double *x, double *y);
    // The walk backwards through the differences on a counter that counts
    // up: step 0 gives the start, step == stepCount the end, any other step
    // takes the differences back once (f -= df, df -= ddf, ddf -= dddf) and
    // gives f. False once step is above stepCount. These tests do not order
    // the points along the curve: right after init one call gives the end and
    // the next returns false.
    bool vertexn(QPointF &p);
    // Walks from the start and returns the index of the first step point
    // with the smallest Manhattan distance to (x, y), if that distance is
    // below 4.0; else -1 (a match on the end point also reads -1).
    int getstep(double x, double y);
    // The index of the step point, start skipped, whose squared distance to
    // the start is nearest to dist squared, among the points whose Manhattan
    // distance to the start lies strictly between dist and 2 dist; -1 if none.
    int frontPtAtDist(double dist);
    // The same with distances to the end, the start not skipped.
    int backPtAtDist(double dist);
    // Splits by de Casteljau's construction with reversed weights (each new
    // point is t times the earlier point plus 1 - t times the later one), so
    // that t 1 falls on the start and t 0 on the end, as the step index
    // counts down. first gets the start and the first points of the three
    // stages; second the split point, the last points of the second and
    // first stages, and the end. Each needs room for four points. With t
    // outside 0 to 1 (or NaN), or a null array, nothing is written and the
    // result is false; else true.
    bool splitcurve(QPointF *first, QPointF *second, double t);
    // Splits at t = getstep(x, y) / stepCount; false, writing nothing, when
    // getstep gives -1. Since the index of walk point k is stepCount - 1 - k,
    // the split falls one step past the point found, at curve time
    // (k + 1) / stepCount.
    bool splitcurve(QPointF *first, QPointF *second, double x, double y);

private:
    // One forward step of the differences.
    void advance();
    // Walks the rest of the curve from the current counter and returns the
    // index of the point best at dist from anchor (see frontPtAtDist).
    int indexAtDist(const double *anchor, double dist);
};

#endif // ZGRAPHICS_DRAWING_H
