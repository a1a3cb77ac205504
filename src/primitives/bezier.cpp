// zgBezier: a plain cubic of four points, its splitting, and the conversion of
// elliptical arcs into cubic pieces.
#include <zgraphics/primitives.h>

#include <QtCore/QMessageLogger>
#include <QtCore/QtGlobal>

#include <cmath>

namespace {

// Handle length of a quarter circle of radius 1 drawn as one cubic.
const double ArcConstant = 0.55228474983;

// The thirteen points of the full ellipse inscribed in a rectangle: the
// right middle, then three points per quarter through the bottom, the left,
// the top and back to the right middle.
struct EllipsePoints
{
    zgPoint p[13];
};

EllipsePoints ellipseControlPoints(const zgRect &rect)
{
    const double w2 = rect.width / 2;
    const double h2 = rect.height / 2;
    const double w2k = w2 * ArcConstant;
    const double h2k = h2 * ArcConstant;
    const double cx = rect.x + w2;
    const double cy = rect.y + h2;
    const double left = rect.x;
    const double top = rect.y;
    const double right = rect.x + rect.width;
    const double bottom = rect.y + rect.height;

    EllipsePoints e;
    e.p[0] = zgPoint(right, cy);
    e.p[1] = zgPoint(right, cy + h2k);
    e.p[2] = zgPoint(cx + w2k, bottom);
    e.p[3] = zgPoint(cx, bottom);
    e.p[4] = zgPoint(cx - w2k, bottom);
    e.p[5] = zgPoint(left, cy + h2k);
    e.p[6] = zgPoint(left, cy);
    e.p[7] = zgPoint(left, cy - h2k);
    e.p[8] = zgPoint(cx - w2k, top);
    e.p[9] = zgPoint(cx, top);
    e.p[10] = zgPoint(cx + w2k, top);
    e.p[11] = zgPoint(right, cy - h2k);
    e.p[12] = zgPoint(right, cy);
    return e;
}

// True when a and b are equal within 1e-12 relative (both zero counts as equal).
bool fuzzyEqual(double a, double b)
{
    return std::fabs(a - b) * 1e12 <= qMin(std::fabs(a), std::fabs(b));
}

// Index of the first of the four points of the quarter that holds segment
// number `segment` (a whole number, possibly negative or very large).
int quarterStart(double segment)
{
    double m = std::fmod(segment, 4.0);
    if (m < 0)
        m += 4.0;
    const int quarter = 3 - int(m);
    return 3 * quarter;
}

bool anyNaN(const zgRect &rect, double startAngle, double sweepLength)
{
    return qIsNaN(rect.x) || qIsNaN(rect.y) || qIsNaN(rect.width) || qIsNaN(rect.height)
        || qIsNaN(startAngle) || qIsNaN(sweepLength);
}

} // namespace

zgBezier zgBezier::fromPoints(const zgPoint &p1, const zgPoint &p2, const zgPoint &p3,
                              const zgPoint &p4)
{
    zgBezier b;
    b.x1 = p1.x;
    b.y1 = p1.y;
    b.x2 = p2.x;
    b.y2 = p2.y;
    b.x3 = p3.x;
    b.y3 = p3.y;
    b.x4 = p4.x;
    b.y4 = p4.y;
    return b;
}

// De Casteljau's construction at t. Everything is computed before anything is
// written, so left may be this object itself.
void zgBezier::parameterSplitLeft(double t, zgBezier &left)
{
    const double ax = x1 + t * (x2 - x1);
    const double ay = y1 + t * (y2 - y1);
    const double bx = x2 + t * (x3 - x2);
    const double by = y2 + t * (y3 - y2);
    const double cx = x3 + t * (x4 - x3);
    const double cy = y3 + t * (y4 - y3);
    const double abx = ax + t * (bx - ax);
    const double aby = ay + t * (by - ay);
    const double bcx = bx + t * (cx - bx);
    const double bcy = by + t * (cy - by);
    const double splitX = abx + t * (bcx - abx);
    const double splitY = aby + t * (bcy - aby);
    const double startX = x1;
    const double startY = y1;

    x1 = splitX;
    y1 = splitY;
    x2 = bcx;
    y2 = bcy;
    x3 = cx;
    y3 = cy;

    left.x1 = startX;
    left.y1 = startY;
    left.x2 = ax;
    left.y2 = ay;
    left.x3 = abx;
    left.y3 = aby;
    left.x4 = splitX;
    left.y4 = splitY;
}

zgBezier zgBezier::bezierOnInterval(double t0, double t1) const
{
    if (t0 == 0 && t1 == 1)
        return *this;

    zgBezier piece = *this;
    zgBezier unused;
    piece.parameterSplitLeft(t0, unused);
    zgBezier result;
    piece.parameterSplitLeft((t1 - t0) / (1 - t0), result);
    return result;
}

// The parameter t of the cubic quarter circle from (1, 0) to (0, 1) whose
// point lies at `angle` degrees: two Newton steps on x, two more on y from
// there, and the mean of both estimates.
double zgBezier::arcAngle(double angle)
{
    // The very start of the quarter.
    if (std::fabs(angle) <= 1e-12)
        return 0;
    // The very end of the quarter: angle equals 90 within 1e-12 relative.
    if (qMin(std::fabs(angle), 90.0) >= std::fabs(angle - 90) * 1e12)
        return 1;

    const double radians = angle * M_PI / 180;
    const double cosAngle = std::cos(radians);
    const double sinAngle = std::sin(radians);

    double t = angle / 90;
    for (int step = 0; step < 2; ++step) {
        t -= (((0.3431457505100002 * t - 1.3431457505100002) * t * t + 1) - cosAngle)
            / ((1.02943725153 * t - 2.6862915010200004) * t);
    }
    const double tFromX = t;

    double u = tFromX;
    for (int step = 0; step < 2; ++step) {
        u -= ((((-0.3431457505100002 * u - 3.3137084989799996) + 3) * u + 1.6568542494899998) * u
              - sinAngle)
            / (((6.627416997959999 - 1.02943725153 * u) - 6) * u + 1.6568542494899998);
    }
    return (tFromX + u) * 0.5;
}

zgPoint zgBezier::arcToBezier(const zgRect &rect, double startAngle, double sweepLength,
                              QVector<zgPoint> &curves)
{
    if (anyNaN(rect, startAngle, sweepLength)) {
        qWarning("Arc to bezier, adding arc where a parameter is NaN, results are undefined");
        return zgPoint(0, 0);
    }
    // A flat rectangle has no arc.
    if (rect.width < 1e-12 || rect.height < 1e-12)
        return zgPoint(0, 0);
    // An infinite start has no quarter to begin in.
    if (!qIsFinite(startAngle))
        return zgPoint(0, 0);

    const EllipsePoints e = ellipseControlPoints(rect);
    const zgPoint *points = e.p;

    const double sweep = qBound(-360.0, sweepLength, 360.0);

    // The full ellipse from the right middle, in either direction.
    if (startAngle == 0) {
        if (sweep == 360) {
            for (int i = 11; i >= 0; --i)
                curves.append(points[i]);
            return points[12];
        }
        if (sweep == -360) {
            for (int i = 1; i <= 12; ++i)
                curves.append(points[i]);
            return points[0];
        }
    }

    // Quarters are counted as whole numbers kept in doubles, so that any
    // finite angle is safe.
    double startSegment = std::floor(startAngle / 90);
    double endSegment = std::floor((startAngle + sweep) / 90);
    double startT = (startAngle - 90 * startSegment) / 90;
    double endT = (startAngle + sweep - 90 * endSegment) / 90;
    const int delta = sweep > 0 ? 1 : -1;
    if (delta < 0) {
        startT = 1 - startT;
        endT = 1 - endT;
    }

    // A start at the very end of its quarter begins in the next one.
    if (std::fabs(startT - 1) <= 1e-12) {
        startT = 0;
        startSegment += delta;
    }
    // An end at the very start of its quarter ends in the previous one.
    if (std::fabs(endT) <= 1e-12) {
        endT = 1;
        endSegment -= delta;
    }

    startT = arcAngle(startT * 90);
    endT = arcAngle(endT * 90);
    // Cut the pieces only where the times are not at the quarter's ends.
    const bool splitAtStart = std::fabs(startT) > 1e-12;
    const bool splitAtEnd = std::fabs(endT - 1) > 1e-12;

    // Empty arc: the corner point of the quarter.
    if (startSegment == endSegment + delta) {
        const int j = quarterStart(startSegment);
        return delta > 0 ? points[j + 3] : points[j];
    }

    const zgPoint startPoint = zgNumeric::ellipsePoint(rect, startAngle);
    const zgPoint endPoint = zgNumeric::ellipsePoint(rect, startAngle + sweep);

    // Number of quarters after the first one, in the direction of the sweep.
    const double lastStep = (endSegment - startSegment) * delta;
    bool appended = false;
    for (int step = 0; step <= lastStep; ++step) {
        const bool first = step == 0;
        const bool last = step == lastStep;
        const int j = quarterStart(startSegment + double(step) * delta);
        zgBezier piece = delta > 0
            ? fromPoints(points[j + 3], points[j + 2], points[j + 1], points[j])
            : fromPoints(points[j], points[j + 1], points[j + 2], points[j + 3]);

        // Start and end at the same time of one quarter: nothing to draw.
        if (startSegment == endSegment && fuzzyEqual(startT, endT))
            return startPoint;

        if (first) {
            if (last && splitAtEnd)
                piece = piece.bezierOnInterval(startT, endT);
            else if (splitAtStart)
                piece = piece.bezierOnInterval(startT, 1);
        } else if (last && splitAtEnd) {
            piece = piece.bezierOnInterval(0, endT);
        }

        curves.append(piece.pt2());
        curves.append(piece.pt3());
        curves.append(piece.pt4());
        appended = true;
    }

    if (appended)
        curves.last() = endPoint;
    return startPoint;
}

QPointF zgBezier::arcToBezier(const QRectF &rect, double startAngle, double sweepLength,
                              QVector<QPointF> &curves)
{
    const zgRect zrect(rect.x(), rect.y(), rect.width(), rect.height());
    QVector<zgPoint> points;
    const zgPoint start = arcToBezier(zrect, startAngle, sweepLength, points);
    curves.reserve(curves.size() + points.size());
    for (const zgPoint &p : points)
        curves.append(p.toPt());
    return start.toPt();
}
