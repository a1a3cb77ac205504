// zgraphics: geometric primitives.
//
// Plain values (points, sizes, rectangles, lines), the option and result
// records of the query functions, the affine matrix, the numeric solvers and
// the conversion of elliptical arcs into cubic Bezier pieces.
//
// All coordinates are doubles in the host's units. The y axis is not
// interpreted: "top" is the smaller y, "bottom" the larger. Nothing here
// throws; a failed geometric operation returns a NaN point.
#ifndef ZGRAPHICS_PRIMITIVES_H
#define ZGRAPHICS_PRIMITIVES_H

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QString>
#include <QtCore/QVector>
#include <QtCore/qglobal.h>
#include <QtGui/QImage>

#include <cstdint>
#include <functional>

#if defined(ZGRAPHICS_LIBRARY)
#define ZG_EXPORT Q_DECL_EXPORT
#else
#define ZG_EXPORT Q_DECL_IMPORT
#endif

class XPath;
class zgPath;
class zgSegment;
class zgRect;
class zgMatrix;

// A point, also used as a vector. Same two-double layout as QPointF.
// Unless a member says it changes the object, it returns a new value.
class ZG_EXPORT zgPoint
{
public:
    double x;
    double y;

    zgPoint() : x(0.0), y(0.0) {}
    zgPoint(double x, double y) : x(x), y(y) {}
    zgPoint(const QPointF &p) : x(p.x()), y(p.y()) {}

    zgPoint add(const zgPoint &p) const;
    zgPoint subtract(const zgPoint &p) const;
    // No guard against a zero divisor.
    zgPoint multiply(double s) const;
    zgPoint divide(double s) const;
    zgPoint negate() const;
    double dot(const zgPoint &p) const;
    double cross(const zgPoint &p) const;
    double getLength() const;
    // Euclidean distance; the squared distance, without the root, if squared is set.
    double getDistance(const zgPoint &p, bool squared = false) const;
    // The vector scaled to length; the zero vector gives (0, 0).
    zgPoint normalize(double length = 1.0) const;
    // Changes the object: scales by length over the current length, unguarded,
    // so that the zero vector turns to NaN.
    void setLength(double length);
    // Unsigned angle to other in degrees (0 to 180), or the direction of this
    // vector (atan2; 0 for a zero vector) when other is null. NaN (qSNaN from
    // getAngleInRadians) if the product of the lengths is within 1e-12 of zero.
    double getAngle(const zgPoint *other = nullptr) const;
    double getAngleInRadians(const zgPoint *other = nullptr) const;
    // Change the object: keep the length, set the direction. A zero vector is left alone.
    void setAngle(double degrees);
    void setAngleInRadians(double radians);
    // atan2(cross, dot) in degrees, -180 to 180.
    double getDirectedAngle(const zgPoint &p) const;
    // 1 to 4, as a double: x >= 0 gives 1 (y >= 0) or 4; x < 0 gives 2 (y >= 0) or 3.
    double getQuadrant() const;
    // Rotated copy about center (null: the origin); an angle of exactly 0 gives a copy.
    zgPoint rotate(double degrees, const zgPoint *center = nullptr) const;
    // Changes the object: replaces it by its projection on onto.
    void project(const zgPoint &onto);
    // Changes the object: each coordinate through qRound, kept as a double.
    void round();
    // A copy mapped by matrix; null gives a plain copy.
    zgPoint transform(const zgMatrix *matrix) const;
    // Changes the object, in spite of its name, and returns nothing.
    void translated(double dx, double dy);
    void set(double x, double y);
    // Strictly inside rect on all four sides.
    bool isInside(const zgRect &rect) const;
    // Both coordinates within [-1e-12, 1e-12].
    bool isZero() const;
    bool isNaN() const;
    // Both differences within [-1e-12, 1e-12].
    bool operator==(const zgPoint &p) const;
    bool operator!=(const zgPoint &p) const { return !(*this == p); }
    // Box test, strict: |dx| < tolerance and |dy| < tolerance.
    bool equals(const zgPoint &p, double tolerance) const;
    // Circle test, inclusive: distance <= tolerance.
    bool isClose(const zgPoint &p, double tolerance) const;
    bool isCollinear(const zgPoint &p) const;
    static bool isCollinear(double x1, double y1, double x2, double y2);
    bool isOrthogonal(const zgPoint &p) const;
    static bool isOrthogonal(double x1, double y1, double x2, double y2);
    // y from a first qrand(), x from a second, unscaled.
    static zgPoint random();
    QPointF toPt() const { return QPointF(x, y); }
    // "x: %1, y: %2"
    QString toString() const;
};

class ZG_EXPORT zgSize
{
public:
    double width;
    double height;

    zgSize() : width(0.0), height(0.0) {}
    zgSize(double width, double height) : width(width), height(height) {}

    void set(double w, double h);
    // Both change the object, componentwise.
    void add(double dw, double dh);
    void multiply(double sw, double sh);
    bool operator==(const zgSize &s) const;
};

// A rectangle stored as corner and extent. Negative extents are kept as they
// are by everything but the two-point constructor.
class ZG_EXPORT zgRect
{
public:
    double x;
    double y;
    double width;
    double height;

    zgRect() : x(0.0), y(0.0), width(0.0), height(0.0) {}
    zgRect(double x, double y, double w, double h) : x(x), y(y), width(w), height(h) {}
    // Normalised: corner at the smaller coordinates, extents not negative.
    zgRect(const zgPoint &p1, const zgPoint &p2);

    double left() const { return x; }
    double top() const { return y; }
    double right() const { return x + width; }
    double bottom() const { return y + height; }
    zgPoint topLeft() const;
    zgPoint topRight() const;
    zgPoint bottomLeft() const;
    zgPoint bottomRight() const;
    zgPoint center() const;
    zgSize size() const;

    void set(double x, double y, double w, double h);
    void reset();
    void translate(double dx, double dy);
    // Moves the top-left corner by (dx1, dy1) and the bottom-right one by (dx2, dy2).
    void adjust(double dx1, double dy1, double dx2, double dy2);
    // Grows the width by dw and the height by dh, half on each side.
    void expand(double dw, double dh);
    // Leaves the object alone, in spite of its name: returns a rectangle of
    // the same size centred on p.
    zgRect setCenter(const zgPoint &p) const;
    zgRect include(const zgPoint &p) const;
    // Extents may come out negative for disjoint rectangles.
    zgRect intersect(const zgRect &r) const;
    // A rectangle with width <= 0 or height <= 0 counts as absent.
    zgRect unite(const zgRect &r) const;
    // Strict: a point on the edge is outside.
    bool containsPt(const zgPoint &p) const;
    // Not strict.
    bool containsRect(const zgRect &r) const;
    // Strict: touching rectangles do not intersect.
    bool intersects(const zgRect &r) const;
    bool touches(const zgRect &r) const;
    // width < 1e-12 or height < 1e-12.
    bool isEmpty() const;
    double getArea() const;
    bool operator==(const zgRect &r) const;
    // 0 near the centre, else the nearest edge line: 1 top, 2 bottom, 3 left, 4 right.
    int nearSide(const QPointF &p) const;
    // "x: %1, y: %2, width: %3, height: %4"
    QString toString() const;
};

// A line stored as a start point and a vector.
class ZG_EXPORT zgLine
{
public:
    zgPoint point;
    zgPoint vector;

    zgLine() {}
    // With asVector set, p2 is the vector; otherwise the vector is p2 - p1.
    zgLine(const zgPoint &p1, const zgPoint &p2, bool asVector = false);
    zgLine(double x1, double y1, double x2, double y2, bool asVector = false);

    zgPoint getPoint() const { return point; }
    zgPoint getVector() const { return vector; }
    double getLength() const;
    // The parallel line at distance, on the side of the normal (uy, -ux).
    zgLine getColline(double distance) const;
    // -1, 0 or 1.
    int getSide(const zgPoint &p, bool isInfinite) const;
    static int getSide(double px, double py, double vx, double vy, double x, double y,
                       bool asVector, bool isInfinite);
    static double getSignedDistance(double px, double py, double vx, double vy,
                                    double x, double y, bool asVector);
    double getDistance(const zgPoint &p) const;
    bool isCollinear(const zgLine &line) const;
    bool isOrthogonal(const zgLine &line) const;

    // Intersection of two lines, or a NaN point for parallel lines or
    // parameters out of range. See the source for the exact rules.
    static zgPoint intersect(double p1x, double p1y, double v1x, double v1y,
                             double p2x, double p2y, double v2x, double v2y,
                             bool asVector, bool isInfinite);
    // As intersect; u1 and u2 receive the parameters on both lines (u1 clamped
    // on success). Untouched for parallel lines.
    static zgPoint intersect1(double &u1, double &u2,
                              double p1x, double p1y, double v1x, double v1y,
                              double p2x, double p2y, double v2x, double v2y,
                              bool asVector, bool isInfinite);
    static zgPoint intersect2(double p1x, double p1y, double v1x, double v1y,
                              double p2x, double p2y, double v2x, double v2y,
                              bool asVector, bool isInfinite1, bool isInfinite2);
    zgPoint intersect(const zgLine &line, bool isInfinite) const;
    zgPoint intersect1(double &u1, double &u2, const zgLine &line, bool isInfinite) const;
    zgPoint intersect2(const zgLine &line, bool isInfinite1, bool isInfinite2) const;
};

enum zgCap : int32_t { zgCapButt = 0, zgCapSquare = 1, zgCapRound = 2 };
enum zgJoin : int32_t { zgJoinBevel = 0, zgJoinMiter = 1, zgJoinRound = 2 };

// Stroke and fill description.
class ZG_EXPORT zgStyle
{
public:
    bool hasFill;      // carried, read by nothing
    bool hasStroke;    // stroke bounds and padding only if set
    bool evenOdd;      // fill rule of containment and fill hit tests
    double strokeWidth; // full width
    zgCap cap;
    zgJoin join;
    double miterLimit; // times the stroke radius, for miter joins

    zgStyle(bool hasFill = true, bool hasStroke = true, bool evenOdd = true,
            double strokeWidth = 1.0, zgCap cap = zgCapButt, zgJoin join = zgJoinBevel,
            double miterLimit = 10.0)
        : hasFill(hasFill), hasStroke(hasStroke), evenOdd(evenOdd), strokeWidth(strokeWidth),
          cap(cap), join(join), miterLimit(miterLimit) {}
};

// Bounds options. The four-argument constructor takes its flags in another
// order than the record holds them: (stroke, reservedA, reservedB, handle).
class ZG_EXPORT zgBoundOpt
{
public:
    bool handle;    // handle bounds; wins over stroke
    bool stroke;    // stroke bounds
    bool reservedA; // carried, read by nothing
    bool reservedB; // carried, read by nothing

    zgBoundOpt() : handle(false), stroke(false), reservedA(false), reservedB(false) {}
    zgBoundOpt(bool stroke, bool reservedA, bool reservedB, bool handle)
        : handle(handle), stroke(stroke), reservedA(reservedA), reservedB(reservedB) {}
};

// Hit test options. The five-argument constructor takes the tolerance last.
class ZG_EXPORT zgHitOpt
{
public:
    double tolerance; // hit distance for fills
    bool fill;
    bool stroke;      // radius: half the strokeWidth of the given style
    bool curves;      // bare curves, radius zero
    bool styleFill;   // copied into hasFill of the fill test's local style

    zgHitOpt() : tolerance(0.1), fill(true), stroke(true), curves(false), styleFill(true) {}
    zgHitOpt(bool fill, bool stroke, bool curves, bool styleFill, double tolerance)
        : tolerance(tolerance), fill(fill), stroke(stroke), curves(curves), styleFill(styleFill) {}
};

enum zgHitType : int32_t { zgHitNone = 0, zgHitStroke = 1, zgHitFill = 2, zgHitCurve = 3 };

// Result of a hit test. The pointers are not owned.
class ZG_EXPORT zgHitResult
{
public:
    int32_t type;
    XPath *compound;
    zgPath *path;
    zgSegment *segment;
    zgPoint point;

    zgHitResult() : type(zgHitNone), compound(nullptr), path(nullptr), segment(nullptr) {}
    // Sets compound to the parent of path, which must not be null.
    zgHitResult(int32_t type, zgPath *path, zgSegment *segment, const zgPoint &point);
};

// 2D affine transform: x' = a*x + c*y + tx, y' = b*x + d*y + ty.
// Composing operations multiply on the right: the transform given acts first.
// Angles are in degrees.
class ZG_EXPORT zgMatrix
{
public:
    double a;
    double b;
    double c;
    double d;
    double tx;
    double ty;

    zgMatrix() : a(1.0), b(0.0), c(0.0), d(1.0), tx(0.0), ty(0.0) {}
    zgMatrix(double a, double b, double c, double d, double tx, double ty)
        : a(a), b(b), c(c), d(d), tx(tx), ty(ty) {}

    void set(double a, double b, double c, double d, double tx, double ty);
    void reset();
    // this = this x m: m acts first.
    void append(const zgMatrix &m);
    // this = m x this: m acts last.
    void prepend(const zgMatrix &m);
    void translate(double dx, double dy);
    void translate(const zgPoint &p) { translate(p.x, p.y); }
    // Rotation about the origin.
    void rotate(double angle);
    void rotateAt(double angle, const zgPoint &center);
    // center may be null.
    void scale(double sx, double sy, const zgPoint *center = nullptr);
    void shear(double shx, double shy, const zgPoint *center = nullptr);
    // shear with tan of the two angles.
    void skew(double skewX, double skewY, const zgPoint *center = nullptr);
    // Leaves the matrix alone if det is NaN or tx, ty aren't finite. A det of
    // exactly 0 is not caught: ask isInvertible first.
    void invert();
    bool isIdentity() const;
    // True for a non-identity matrix.
    bool _orNullIfIdentity() const;
    // Sets tx and ty to 0 in place.
    void _shiftless();
    bool isInvertible() const;
    bool isSingular() const;
    // Exact comparison.
    bool operator==(const zgMatrix &m) const;
    zgPoint transformPoint(const zgPoint &p) const;
    zgPoint transformXY(double x, double y) const;
    void transformPoints(QVector<zgPoint> &points) const;
    // Maps count pairs at the start of coords in place; coords holds at least 2*count values.
    void transformCoords(QVector<double> &coords, int count) const;
    // Empties coords and writes the four mapped corners of rect into it.
    void transformCorners(const zgRect &rect, QVector<double> &coords) const;
    zgRect transformBounds(const zgRect &rect) const;
    // p unchanged if det is NaN or tx, ty aren't finite.
    zgPoint inverseTransform(const zgPoint &p) const;
    // "a: %1, b: %2, c: %3, d: 4%, tx: %5, ty: %6", filled with a, b, c, d,
    // tx, ty in turn: the misplaced "4%" is no placeholder, so d appears as
    // tx, tx as ty, and ty is dropped.
    QString toString() const;
};

// Static numeric routines: tolerance tests, polynomial solvers, Gauss-Legendre
// integration, Newton root finding. Holds no state but its two tables.
class ZG_EXPORT zgNumeric
{
public:
    zgNumeric() {}

    // Gauss-Legendre nodes and weights on [-1, 1], non-negative half only.
    // Row r is the order n = r + 2 (2 to 16) and holds ceil(n/2) entries in
    // ascending order, then zeros; for odd n the first abscissa is 0.
    static const double abscissas[15][8];
    static const double weights[15][8];

    // -1e-12 <= v <= 1e-12.
    static bool isZero(double v);
    // min if v < min; v if v <= max; else max.
    static double clamp(double v, double min, double max);
    static double log2(double v);
    static double distance(const QPointF &a, const QPointF &b);
    // The one-unit rule of drawing paths: |dx| < 1.0 and |dy| < 1.0.
    static bool pointEquate1(const QPointF &a, const QPointF &b);
    // b^2 - a*c, computed in split precision when the subtraction cancels.
    static double getDiscriminant(double a, double b, double c);
    // Roots of a*x^2 + b*x + c in roots (entry i overwritten if it exists,
    // appended otherwise). min == max == 0 means no bounds; with bounds a root
    // within 1e-12 outside is kept and clamped. Returns the count of roots,
    // -1 if every x solves it.
    static int solveQuadratic(double a, double b, double c, QVector<double> &roots,
                              double min, double max);
    // Roots of a*x^3 + b*x^2 + c*x + d, as solveQuadratic.
    static int solveCubic(double a, double b, double c, double d, QVector<double> &roots,
                          double min, double max);
    // Newton's method from x, safeguarded by bisection in [a, b], at most n
    // passes; returns when a step is below tolerance. Not clamped.
    static double findRoot(std::function<double(double)> f, std::function<double(double)> df,
                           double x, double a, double b, int n, double tolerance);
    // Gauss-Legendre integral of f over [a, b] of order n (2 to 16, unchecked).
    static double integrate(std::function<double(double)> f, double a, double b, int n);
    // The point at angle degrees on the ellipse inscribed in rect; a height
    // below 0.1 is taken as 0.1.
    static zgPoint ellipsePoint(const zgRect &rect, double angle);
    static QPointF ellipsePoint(const QRectF &rect, double angle);

    // One-dimensional value noise in double precision, deterministic, no seed.
    // Integer hash of n with 32-bit wrap-around arithmetic, in (-1, 1].
    static double intNoise_1D(int n);
    // The hash of v truncated towards zero (no neighbours are blended). A v
    // that does not fit an int (NaN, beyond the int range) is truncated to the
    // lowest int, -2147483648, here and in interpolateNoise_1D.
    static double smoothNoise_1D(double v);
    // Cosine blend of the hashes of i = trunc(v) and i + 1 by t = v - i.
    static double interpolateNoise_1D(double v);
    // Four octaves: sum of interpolateNoise_1D(v * 2^i) * 0.1^i, i = 0 to 3.
    static double perlinNoise_1D(double v);
    // a * (1 - f) + b * f with f = (1 - cos(t * pi)) / 2, pi as 3.1415927f.
    static double cosineInterpolate_1D(double a, double b, double t);
    // Cubic through v1 (t = 0) and v2 (t = 1) shaped by v0 and v3.
    static double cubicInterpolate_1D(double v0, double v1, double v2, double v3, double t);

private:
    friend class zgNumericInternals;
    // Splits v into a high and a low part: a heap array of two doubles that
    // the caller frees with delete[].
    static double *split(double v);
    // 2^-round(log2(m)) for the greatest m of the n absolute values if it lies
    // outside [1e-8, 1e8]; otherwise 0, meaning no scaling.
    static double getNormalizationFactor(const double *values, int n);
};

// A cubic Bezier of four points, and the conversion of elliptical arcs.
class ZG_EXPORT zgBezier
{
public:
    double x1, y1, x2, y2, x3, y3, x4, y4;

    zgBezier() : x1(0), y1(0), x2(0), y2(0), x3(0), y3(0), x4(0), y4(0) {}

    static zgBezier fromPoints(const zgPoint &p1, const zgPoint &p2, const zgPoint &p3,
                               const zgPoint &p4);
    zgPoint pt1() const { return zgPoint(x1, y1); }
    zgPoint pt2() const { return zgPoint(x2, y2); }
    zgPoint pt3() const { return zgPoint(x3, y3); }
    zgPoint pt4() const { return zgPoint(x4, y4); }
    // The piece between parameters t0 and t1.
    zgBezier bezierOnInterval(double t0, double t1) const;
    // Splits at t: left receives the first piece, this object becomes the second.
    void parameterSplitLeft(double t, zgBezier &left);

    // Appends to curves the control, control, end triples of the arc of the
    // ellipse inscribed in rect, from startAngle over sweepLength degrees
    // (0 is the right middle, the sweep is clamped to [-360, 360]), and
    // returns the arc's start point. A NaN argument gives a warning and (0, 0)
    // with nothing appended; a width or height below 1e-12 gives (0, 0).
    static zgPoint arcToBezier(const zgRect &rect, double startAngle, double sweepLength,
                               QVector<zgPoint> &curves);
    static QPointF arcToBezier(const QRectF &rect, double startAngle, double sweepLength,
                               QVector<QPointF> &curves);

protected:
    friend class zgBezierInternals;
    // The parameter of the quarter-circle cubic at angle degrees (0 to 90).
    static double arcAngle(double angle);
};

// Value noise in one and two dimensions in single precision, and its use on
// images. All members are static and deterministic: no seed, no state.
// Coordinates that do not fit an int (NaN, beyond the int range) are
// truncated to the lowest int, -2147483648.
class ZG_EXPORT Noise
{
public:
    // Integer hash of n with 32-bit wrap-around arithmetic, in [-1, 1] (the
    // rounding to float can reach -1).
    static float intNoise_1D(int n);
    // The hash of x + 57 * y (wrapping).
    static float intNoise_2D(int x, int y);
    // The hash of v truncated towards zero (no neighbours are blended).
    static float smoothNoise_1D(float v);
    // Centre * 1/4 + edge neighbours * 1/8 + corner neighbours * 1/16, each
    // neighbour hashed at the truncation of x or y, x - 1 or y - 1, x + 1 or y + 1.
    static float smoothNoise_2D(float x, float y);
    // Cosine blend of the hashes of i = trunc(v) and i + 1 by t = v - i.
    static float interpolateNoise_1D(float v);
    // Linear blend of smoothNoise_2D at the grid points (gx, gy), (gx + 1, gy),
    // (gx, gy + 1), (gx + 1, gy + 1), g = floor(coordinate + 0.5), with the
    // factors fx = x - gx and fy = y - gy: the first point of each pair is
    // weighted by fx, the first pair by 1 - fy.
    static float interpolateNoise_2D(float x, float y);
    // Four octaves: sum of interpolateNoise_1D(v * 2^i) * 0.1f^i, i = 0 to 3.
    static float perlinNoise_1D(float v);
    // Four octaves: sum of interpolateNoise_2D(x * 2^i, y * 2^i) * 0.1f^i.
    static float perlinNoise_2D(float x, float y);
    // a * (1 - f) + b * f with f = (1 - cos(t * pi)) / 2, despite its name a
    // one-dimensional blend.
    static float cosineInterpolate_2D(float a, float b, float t);
    // Cubic through v1 (t = 0) and v2 (t = 1) shaped by v0 and v3.
    static float cubicInterpolate_1D(float v0, float v1, float v2, float v3, float t);
    // Draws a black noise curve into a 32-bit image and returns it: for each
    // column x from 1 on, r = floor(5 * four octaves of noise at x * 0.05),
    // and the first three bytes of the pixels (x, r + 200) and (x, r + 201)
    // become 0, the fourth byte is kept. Rows outside the image are skipped,
    // so an image less than about 207 rows tall gets part or none of the
    // curve; a null image or one whose depth is not 32 bits comes back
    // unchanged.
    static QImage perlinNoise(QImage image);
};

#endif // ZGRAPHICS_PRIMITIVES_H
