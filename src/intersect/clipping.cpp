// Intersection of two curved cubics by Bezier clipping with fat lines, and
// addLocation, through which every intersection enters a result list.
#include <zgraphics/model.h>

#include <QtCore/qnumeric.h>

#include <algorithm>

namespace {

// The time that means "none".
const double kNoTime = -100.0;

// Signed distance of (x, y) from the baseline through the end points of v.
double baselineDistance(const QVector<double> &v, double x, double y)
{
    return zgLine::getSignedDistance(v.at(0), v.at(1), v.at(6), v.at(7), x, y, false);
}

// The distance of the first point of a hull chain; NaN if there is none.
double firstDistance(const QVector<QVector<double>> &chain)
{
    if (chain.isEmpty() || chain.first().size() < 2)
        return qQNaN();
    return chain.first().at(1);
}

void reversePoints(QVector<QVector<double>> &chain)
{
    std::reverse(chain.begin(), chain.end());
}

} // namespace

int zgCurve::addCurveIntersections(QVector<double> v1, QVector<double> v2, zgCurve *c1,
                                   zgCurve *c2, QList<zgCurveLocation *> &locations,
                                   opParam &param, double tMin, double tMax, double uMin,
                                   double uMax, bool flip, double recursion, int calls)
{
    // Depth limit first, then the call count shared by the whole tree.
    if (recursion + 1.0 >= 48.0)
        return calls;
    if (++calls > 0x1000)
        return calls;
    if (v1.size() < 8 || v2.size() < 8)
        return calls;

    // The fat line of v2: the strip around its baseline that holds the curve.
    const double d1 = baselineDistance(v2, v2.at(2), v2.at(3));
    const double d2 = baselineDistance(v2, v2.at(4), v2.at(5));
    const double factor = d1 * d2 > 0.0 ? 0.75 : 4.0 / 9.0;
    const double dMin = factor * std::min({ 0.0, d1, d2 });
    const double dMax = factor * std::max({ 0.0, d1, d2 });

    // The distance function of v1 from that baseline and its convex hull.
    const double dp0 = baselineDistance(v2, v1.at(0), v1.at(1));
    const double dp1 = baselineDistance(v2, v1.at(2), v1.at(3));
    const double dp2 = baselineDistance(v2, v1.at(4), v1.at(5));
    const double dp3 = baselineDistance(v2, v1.at(6), v1.at(7));
    QVector<QVector<QVector<double>>> hull = getConvexHull(dp0, dp1, dp2, dp3);
    QVector<QVector<double>> top = hull.at(0);
    QVector<QVector<double>> bottom = hull.at(1);

    // All on one line: collinear curves are the business of getOverlaps.
    if (d1 == 0.0 && d2 == 0.0 && dp0 == 0.0 && dp1 == 0.0 && dp2 == 0.0 && dp3 == 0.0)
        return calls;

    const double tMinClip = clipConvexHull(top, bottom, dMin, dMax);
    if (qIsNaN(tMinClip))
        return calls;
    reversePoints(top);
    reversePoints(bottom);
    const double tMaxClip = clipConvexHull(top, bottom, dMin, dMax);
    if (qIsNaN(tMaxClip))
        return calls;

    // The clipped range on the whole curve.
    const double tMinNew = tMinClip * (tMax - tMin) + tMin;
    const double tMaxNew = tMaxClip * (tMax - tMin) + tMin;

    // 1e-09: both ranges have shrunk to a point, the intersection is isolated.
    if (std::max(tMaxNew - tMinNew, uMax - uMin) < 1e-09) {
        if (c1)
            v1 = c1->getValues(nullptr);
        if (c2)
            v2 = c2->getValues(nullptr);
        const double t = (tMinNew + tMaxNew) / 2.0;
        const double u = (uMin + uMax) / 2.0;
        const zgPoint noPoint(qQNaN(), qQNaN());
        if (flip)
            addLocation(locations, param, v2, c2, u, noPoint, v1, c1, t, noPoint, false);
        else
            addLocation(locations, param, v1, c1, t, noPoint, v2, c2, u, noPoint, false);
        return calls;
    }

    v1 = getPart(v1, tMinClip, tMaxClip);
    const double depth = recursion + 1.0;
    if (tMaxClip - tMinClip <= 0.8) {
        // Good progress: the clipped curve becomes the clipper.
        calls = addCurveIntersections(v2, v1, c2, c1, locations, param, uMin, uMax, tMinNew,
                                      tMaxNew, !flip, depth, calls);
    } else if (tMaxNew - tMinNew > uMax - uMin) {
        // Poor progress: halve the curve with the wider range.
        const QVector<QVector<double>> parts = subdivide(v1, 0.5);
        const double t = (tMinNew + tMaxNew) / 2.0;
        calls = addCurveIntersections(v2, parts.at(0), c2, c1, locations, param, uMin, uMax,
                                      tMinNew, t, !flip, depth, calls);
        calls = addCurveIntersections(v2, parts.at(1), c2, c1, locations, param, uMin, uMax,
                                      t, tMaxNew, !flip, depth, calls);
    } else {
        const QVector<QVector<double>> parts = subdivide(v2, 0.5);
        const double u = (uMin + uMax) / 2.0;
        calls = addCurveIntersections(parts.at(0), v1, c2, c1, locations, param, uMin, u,
                                      tMinNew, tMaxNew, !flip, depth, calls);
        calls = addCurveIntersections(parts.at(1), v1, c2, c1, locations, param, u, uMax,
                                      tMinNew, tMaxNew, !flip, depth, calls);
    }
    return calls;
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
