// Intersection of two curved cubics by Bezier clipping with fat lines, and
// addLocation, through which every intersection enters a result list.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// The time that means "none".
const double kNoTime = -100.0;

// The distance of the first point of a hull chain; NaN if there is none.
double firstDistance(const QVector<QVector<double>> &chain)
{
    if (chain.isEmpty() || chain.first().size() < 2)
        return qQNaN();
    return chain.first().at(1);
}

// The clipping recursion works on plain arrays, so that a step allocates
// nothing; every value is computed by the same operations in the same order
// as by the static functions on vectors (getConvexHull, clipConvexHull,
// getPart, subdivide), which stay the reference.
typedef std::array<double, 8> Values;

Values valuesOf(const QVector<double> &v)
{
    Values values;
    std::copy(v.constBegin(), v.constBegin() + 8, values.begin());
    return values;
}

QVector<double> vectorOf(const Values &v)
{
    return QVector<double>(v.begin(), v.end());
}

// zgLine::getSignedDistance from the line through the end points of v, as
// a point, with the square root taken once for all the points measured.
class Baseline
{
public:
    explicit Baseline(const Values &v)
        : m_px(v[0]), m_py(v[1]), m_vx(v[6] - v[0]), m_vy(v[7] - v[1]),
          m_length(m_vx == 0.0 || m_vy == 0.0 ? 0.0 : std::sqrt(m_vx * m_vx + m_vy * m_vy))
    {
    }

    double distance(double x, double y) const
    {
        if (m_vx == 0.0)
            return m_vy > 0.0 ? x - m_px : m_px - x;
        if (m_vy == 0.0)
            return m_vx >= 0.0 ? m_py - y : y - m_py;
        return ((x - m_px) * m_vy - (y - m_py) * m_vx) / m_length;
    }

private:
    double m_px, m_py, m_vx, m_vy, m_length;
};

// One chain of the hull of the distance function: up to four (time,
// distance) points.
struct Chain
{
    double t[4];
    double d[4];
    int size;
};

// getConvexHull: top is the upper chain.
void convexHull(double dq0, double dq1, double dq2, double dq3, Chain &top, Chain &bottom)
{
    const double t1 = 1.0 / 3.0;
    const double t2 = 2.0 / 3.0;
    const double dist1 = dq1 - (2.0 * dq0 + dq3) / 3.0;
    const double dist2 = dq2 - (dq0 + 2.0 * dq3) / 3.0;
    if (dist1 * dist2 < 0.0) {
        top = { { 0.0, t1, 1.0 }, { dq0, dq1, dq3 }, 3 };
        bottom = { { 0.0, t2, 1.0 }, { dq0, dq2, dq3 }, 3 };
    } else {
        const double ratio = dist1 / dist2;
        if (ratio >= 2.0)
            top = { { 0.0, t1, 1.0 }, { dq0, dq1, dq3 }, 3 };
        else if (ratio <= 0.5)
            top = { { 0.0, t2, 1.0 }, { dq0, dq2, dq3 }, 3 };
        else
            top = { { 0.0, t1, t2, 1.0 }, { dq0, dq1, dq2, dq3 }, 4 };
        bottom = { { 0.0, 1.0 }, { dq0, dq3 }, 2 };
    }
    if (dist1 < 0.0 || (dist1 == 0.0 && dist2 < 0.0))
        std::swap(top, bottom);
}

// clipConvexHullPart on the chain's points in the order given by step: +1
// from the first, -1 from the last, which reads the reversed chain without
// reversing it.
double clipChain(const Chain &part, int step, bool top, double threshold)
{
    const int first = step > 0 ? 0 : part.size - 1;
    double px = part.t[first];
    double py = part.d[first];
    for (int k = 1; k < part.size; ++k) {
        const int i = first + step * k;
        const double qx = part.t[i];
        const double qy = part.d[i];
        const bool reached = top ? !(qy < threshold) : !(qy > threshold);
        if (reached) {
            if (qy == threshold)
                return qx;
            return (qx - px) * (threshold - py) / (qy - py) + px;
        }
        px = qx;
        py = qy;
    }
    return qQNaN();
}

// clipConvexHull, on the chains read forward (step +1) or reversed (-1).
double clipHull(const Chain &top, const Chain &bottom, int step, double dMin, double dMax)
{
    const int topFirst = step > 0 ? 0 : top.size - 1;
    const int bottomFirst = step > 0 ? 0 : bottom.size - 1;
    if (top.d[topFirst] < dMin)
        return clipChain(top, step, true, dMin);
    if (bottom.d[bottomFirst] > dMax)
        return clipChain(bottom, step, false, dMax);
    return top.t[topFirst];
}

// subdivide, both halves.
void halve(const Values &v, double t, Values &before, Values &after)
{
    const double u = 1.0 - t;
    const double x4 = u * v[0] + t * v[2], y4 = u * v[1] + t * v[3];
    const double x5 = u * v[2] + t * v[4], y5 = u * v[3] + t * v[5];
    const double x6 = u * v[4] + t * v[6], y6 = u * v[5] + t * v[7];
    const double x7 = u * x4 + t * x5, y7 = u * y4 + t * y5;
    const double x8 = u * x5 + t * x6, y8 = u * y5 + t * y6;
    const double x9 = u * x7 + t * x8, y9 = u * y7 + t * y8;
    before = { v[0], v[1], x4, y4, x7, y7, x9, y9 };
    after = { x9, y9, x8, y8, x6, y6, v[6], v[7] };
}

Values firstHalf(const Values &v, double t)
{
    Values before;
    Values after;
    halve(v, t, before, after);
    return before;
}

Values secondHalf(const Values &v, double t)
{
    Values before;
    Values after;
    halve(v, t, before, after);
    return after;
}

// getPart.
Values part(Values values, double from, double to)
{
    const bool flip = from > to;
    if (flip)
        std::swap(from, to);
    if (from > 0.0)
        values = secondHalf(values, from);
    if (to < 1.0)
        values = firstHalf(values, (to - from) / (1.0 - from));
    if (flip)
        values = { values[6], values[7], values[4], values[5], values[2], values[3], values[0],
                   values[1] };
    return values;
}

// The curves and the result list that stay the same through one search.
struct ClipSearch
{
    zgCurve *c1;
    zgCurve *c2;
    QList<zgCurveLocation *> &locations;
    opParam &param;
};

// One step of addCurveIntersections; c1 and c2 of the step are the search's
// curves exchanged when flip is set.
int clipStep(ClipSearch &search, const Values &v1, const Values &v2, double tMin, double tMax,
             double uMin, double uMax, bool flip, double recursion, int calls)
{
    if (recursion + 1.0 >= 48.0)
        return calls;
    if (++calls > 0x1000)
        return calls;

    const Baseline baseline(v2);
    const double d1 = baseline.distance(v2[2], v2[3]);
    const double d2 = baseline.distance(v2[4], v2[5]);
    const double factor = d1 * d2 > 0.0 ? 0.75 : 4.0 / 9.0;
    const double dMin = factor * std::min({ 0.0, d1, d2 });
    const double dMax = factor * std::max({ 0.0, d1, d2 });

    const double dp0 = baseline.distance(v1[0], v1[1]);
    const double dp1 = baseline.distance(v1[2], v1[3]);
    const double dp2 = baseline.distance(v1[4], v1[5]);
    const double dp3 = baseline.distance(v1[6], v1[7]);
    Chain top;
    Chain bottom;
    convexHull(dp0, dp1, dp2, dp3, top, bottom);

    if (d1 == 0.0 && d2 == 0.0 && dp0 == 0.0 && dp1 == 0.0 && dp2 == 0.0 && dp3 == 0.0)
        return calls;

    const double tMinClip = clipHull(top, bottom, 1, dMin, dMax);
    if (std::isnan(tMinClip))
        return calls;
    const double tMaxClip = clipHull(top, bottom, -1, dMin, dMax);
    if (std::isnan(tMaxClip))
        return calls;

    const double tMinNew = tMinClip * (tMax - tMin) + tMin;
    const double tMaxNew = tMaxClip * (tMax - tMin) + tMin;

    zgCurve *c1 = flip ? search.c2 : search.c1;
    zgCurve *c2 = flip ? search.c1 : search.c2;
    if (std::max(tMaxNew - tMinNew, uMax - uMin) < 1e-09) {
        const QVector<double> full1 = c1 ? c1->getValues(nullptr) : vectorOf(v1);
        const QVector<double> full2 = c2 ? c2->getValues(nullptr) : vectorOf(v2);
        const double t = (tMinNew + tMaxNew) / 2.0;
        const double u = (uMin + uMax) / 2.0;
        const zgPoint noPoint(qQNaN(), qQNaN());
        if (flip)
            zgCurve::addLocation(search.locations, search.param, full2, c2, u, noPoint, full1, c1,
                                 t, noPoint, false);
        else
            zgCurve::addLocation(search.locations, search.param, full1, c1, t, noPoint, full2, c2,
                                 u, noPoint, false);
        return calls;
    }

    const Values clipped = part(v1, tMinClip, tMaxClip);
    const double depth = recursion + 1.0;
    if (tMaxClip - tMinClip <= 0.8) {
        calls = clipStep(search, v2, clipped, uMin, uMax, tMinNew, tMaxNew, !flip, depth, calls);
    } else if (tMaxNew - tMinNew > uMax - uMin) {
        Values first;
        Values second;
        halve(clipped, 0.5, first, second);
        const double t = (tMinNew + tMaxNew) / 2.0;
        calls = clipStep(search, v2, first, uMin, uMax, tMinNew, t, !flip, depth, calls);
        calls = clipStep(search, v2, second, uMin, uMax, t, tMaxNew, !flip, depth, calls);
    } else {
        Values first;
        Values second;
        halve(v2, 0.5, first, second);
        const double u = (uMin + uMax) / 2.0;
        calls = clipStep(search, first, clipped, uMin, u, tMinNew, tMaxNew, !flip, depth, calls);
        calls = clipStep(search, second, clipped, u, uMax, tMinNew, tMaxNew, !flip, depth,
                         calls);
    }
    return calls;
}

} // namespace

int zgCurve::addCurveIntersections(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                   zgCurve *c2, QList<zgCurveLocation *> &locations,
                                   opParam &param, double tMin, double tMax, double uMin,
                                   double uMax, bool flip, double recursion, int calls)
{
    if (v1.size() < 8 || v2.size() < 8) {
        // The limits still count this call.
        if (recursion + 1.0 >= 48.0)
            return calls;
        return calls + 1;
    }
    // The step sees c1 and c2 in the roles given; the search keeps them in
    // the order of a call without flip.
    ClipSearch search = { flip ? c2 : c1, flip ? c1 : c2, locations, param };
    return clipStep(search, valuesOf(v1), valuesOf(v2), tMin, tMax, uMin, uMax, flip, recursion,
                    calls);
}

QVector<QVector<QVector<double>>> zgCurve::getConvexHull(double dq0, double dq1, double dq2,
                                                         double dq3)
{
    const QVector<double> p0 = { 0.0, dq0 };
    const QVector<double> p1 = { 1.0 / 3.0, dq1 };
    const QVector<double> p2 = { 2.0 / 3.0, dq2 };
    const QVector<double> p3 = { 1.0, dq3 };
    // Heights of the two inner points above the chord from p0 to p3.
    const double dist1 = dq1 - (2.0 * dq0 + dq3) / 3.0;
    const double dist2 = dq2 - (dq0 + 2.0 * dq3) / 3.0;

    QVector<QVector<QVector<double>>> hull;
    if (dist1 * dist2 < 0.0) {
        // The inner points lie on different sides of the chord.
        hull = { { p0, p1, p3 }, { p0, p2, p3 } };
    } else {
        // Same side: one chain runs over the inner points, the other is the
        // chord. An inner point at most half as high as the other lies inside.
        const double ratio = dist1 / dist2;
        QVector<QVector<double>> outer;
        if (ratio >= 2.0)
            outer = { p0, p1, p3 };
        else if (ratio <= 0.5)
            outer = { p0, p2, p3 };
        else
            outer = { p0, p1, p2, p3 };
        hull = { outer, { p0, p3 } };
    }
    // The upper chain comes first.
    if (dist1 < 0.0 || (dist1 == 0.0 && dist2 < 0.0))
        std::swap(hull[0], hull[1]);
    return hull;
}

double zgCurve::clipConvexHull(QVector<QVector<double>> top, QVector<QVector<double>> bottom,
                               double dMin, double dMax)
{
    if (firstDistance(top) < dMin)
        return clipConvexHullPart(top, true, dMin);
    if (firstDistance(bottom) > dMax)
        return clipConvexHullPart(bottom, false, dMax);
    // The hull begins inside the strip.
    if (top.isEmpty() || top.first().isEmpty())
        return qQNaN();
    return top.first().at(0);
}

double zgCurve::clipConvexHullPart(QVector<QVector<double>> part, bool top, double threshold)
{
    if (part.isEmpty() || part.first().size() < 2)
        return qQNaN();
    double px = part.first().at(0);
    double py = part.first().at(1);
    for (int i = 1; i < part.size(); ++i) {
        const QVector<double> &q = part.at(i);
        if (q.size() < 2)
            return qQNaN();
        const double qx = q.at(0);
        const double qy = q.at(1);
        const bool reached = top ? !(qy < threshold) : !(qy > threshold);
        if (reached) {
            if (qy == threshold)
                return qx;
            // Where the edge from the previous point crosses the threshold.
            return (qx - px) * (threshold - py) / (qy - py) + px;
        }
        px = qx;
        py = qy;
    }
    return qQNaN();
}

void zgCurve::addLocation(QList<zgCurveLocation *> &locations, opParam &param,
                          QVector<double> v1, zgCurve *c1, double t1, const zgPoint &p1,
                          QVector<double> v2, zgCurve *c2, double t2, const zgPoint &p2,
                          bool overlap)
{
    // An overlap is never filtered by the joins.
    const bool joinedStart = !overlap && param.joinedAtStart;
    const bool joinedEnd = !overlap && param.joinedAtEnd;

    // 4e-07, 0.9999996: a time this close to a joined end is the joint itself.
    if (t1 == kNoTime)
        t1 = getTimeOf(v1, p1);
    if (t1 == kNoTime)
        return;
    if (!(t1 >= (joinedStart ? 4e-07 : 0.0) && t1 <= (joinedEnd ? 0.9999996 : 1.0)))
        return;
    if (t2 == kNoTime)
        t2 = getTimeOf(v2, p2);
    if (t2 == kNoTime)
        return;
    // The end of the first curve is the start of the second, hence the exchange.
    if (!(t2 >= (joinedEnd ? 4e-07 : 0.0) && t2 <= (joinedStart ? 0.9999996 : 1.0)))
        return;

    if (param.splitRemap) {
        t1 = t1 * param.splitTime;
        t2 = t2 * (1.0 - param.splitTime) + param.splitTime;
    }

    const zgPoint point1 = p1.isNaN() ? getPoint(v1, t1) : p1;
    const zgPoint point2 = p2.isNaN() ? getPoint(v2, t2) : p2;
    zgCurveLocation *loc1 = new zgCurveLocation(c1, t1, point1, overlap, 0.0);
    zgCurveLocation *loc2 = new zgCurveLocation(c2, t2, point2, overlap, 0.0);

    // The location on the lower curve of a contour enters the list.
    const bool secondFirst = loc1->getPath() == loc2->getPath()
            && loc1->getIndex() > loc2->getIndex();
    zgCurveLocation *entering = secondFirst ? loc2 : loc1;

    loc1->setIntersection(loc2);
    loc2->setIntersection(loc1);

    if (!param.filter || param.filter(entering)) {
        zgCurveLocation *standing = zgCurveLocation::insert(locations, entering, true);
        if (standing == entering)
            return;
        // An equal pair is listed already and stands for this one.
    }
    loc1->release();
    loc2->release();
}
