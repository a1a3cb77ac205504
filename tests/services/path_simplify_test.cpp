// Simplifying contours by least-squares cubic fitting.
#include "curve/curve_test_util.h"
#include "services/services_test_support.h"

#include <cmath>
#include <cstdio>
#include <random>

using namespace zgtest;

namespace {

zgPoint bezierPoint(const QVector<zgPoint> &c, double t)
{
    const double s = 1.0 - t;
    return c[0].multiply(s * s * s)
        .add(c[1].multiply(3 * s * s * t))
        .add(c[2].multiply(3 * s * t * t))
        .add(c[3].multiply(t * t * t));
}

void expectCurve(const QVector<zgPoint> &actual, const QVector<zgPoint> &expected,
                 double tolerance = 1e-9)
{
    ASSERT_EQ(actual.size(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(actual[i].x, expected[i].x, tolerance) << "control " << i;
        EXPECT_NEAR(actual[i].y, expected[i].y, tolerance) << "control " << i;
    }
}

// The curves of an open contour as control-point quadruples.
QVector<QVector<zgPoint>> curvesOf(const zgPath &path)
{
    QVector<QVector<zgPoint>> curves;
    const int n = path.segments.size();
    const int count = path.closed ? n : n - 1;
    for (int i = 0; i < count; ++i) {
        const zgSegment *a = path.segments.at(i);
        const zgSegment *b = path.segments.at((i + 1) % n);
        curves.append({a->point, a->point.add(a->handleOut), b->point.add(b->handleIn), b->point});
    }
    return curves;
}

// Distance from p to the contour's curves, by dense sampling refined by a
// golden-section search around the best sample.
double distanceToCurves(const QVector<QVector<zgPoint>> &curves, const zgPoint &p)
{
    // The nearest end point bounds the distance from above.
    double best = qInf();
    for (const QVector<zgPoint> &c : curves)
        best = qMin(best, qMin(c[0].getDistance(p), c[3].getDistance(p)));
    for (const QVector<zgPoint> &c : curves) {
        // The curve lies in the box of its control points: skip it if that
        // box is farther than the best distance so far.
        double minX = c[0].x, maxX = c[0].x, minY = c[0].y, maxY = c[0].y;
        for (const zgPoint &q : c) {
            minX = qMin(minX, q.x);
            maxX = qMax(maxX, q.x);
            minY = qMin(minY, q.y);
            maxY = qMax(maxY, q.y);
        }
        const double boxDx = qMax(0.0, qMax(minX - p.x, p.x - maxX));
        const double boxDy = qMax(0.0, qMax(minY - p.y, p.y - maxY));
        if (std::hypot(boxDx, boxDy) > best)
            continue;
        const int samples = 64;
        int bestSample = 0;
        double bestHere = qInf();
        for (int i = 0; i <= samples; ++i) {
            const double d = bezierPoint(c, double(i) / samples).getDistance(p);
            if (d < bestHere) {
                bestHere = d;
                bestSample = i;
            }
        }
        double lo = qMax(0.0, (bestSample - 1.0) / samples);
        double hi = qMin(1.0, (bestSample + 1.0) / samples);
        for (int k = 0; k < 60; ++k) {
            const double m1 = lo + (hi - lo) * 0.382;
            const double m2 = lo + (hi - lo) * 0.618;
            if (bezierPoint(c, m1).getDistance(p) < bezierPoint(c, m2).getDistance(p))
                hi = m2;
            else
                lo = m1;
        }
        best = qMin(best, qMin(bestHere, bezierPoint(c, (lo + hi) / 2).getDistance(p)));
    }
    return best;
}

// Releases the segments that a fit handed over.
void releaseAll(const QList<zgSegment *> &segments)
{
    for (zgSegment *segment : segments)
        segment->release();
}

// The arch (0, 0), (5, 5), (10, 0): its least-squares handles would cross,
// so the fit falls back to a third of the chord, and the worst point then
// misses the curve by 5 - 0.375 * 2 * (10 / 3) / sqrt(2) in y.
const double kArchMiss = 5.0 - 0.75 * (10.0 / 3.0) / std::sqrt(2.0);

} // namespace

TEST(PathSimplify, TwoPointsTakeTheTwoPointRule)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(9, 12)});
    EXPECT_TRUE(path.simplify(10.0));
    expectPoints(path, {zgPoint(0, 0), zgPoint(9, 12)});
    // A third of the chord (15 / 3 = 5) along the chord both ways.
    expectPoint(path.segments[0]->handleOut, 3, 4);
    expectPoint(path.segments[1]->handleIn, -3, -4);
    expectPoint(path.segments[0]->handleIn, 0, 0);
    expectPoint(path.segments[1]->handleOut, 0, 0);
    expectConsistent(path);
}

// Below 1.0 no trial curve is accepted: every span ends in the two-point
// rule, whatever the order of the splits, so each interior point i gets
// handles of a third of its chords along points[i + 1] - points[i - 1].
TEST(PathSimplify, ToleranceBelowOneKeepsEveryPoint)
{
    const QVector<zgPoint> points = {zgPoint(0, 0), zgPoint(10, 3), zgPoint(20, -2),
                                     zgPoint(33, 7), zgPoint(41, 0), zgPoint(50, 10)};
    for (double tolerance : {0.0, 0.5, 0.999}) {
        zgPath path;
        addPoints(path, points);
        EXPECT_TRUE(path.simplify(tolerance));
        expectPoints(path, points);
        const int n = points.size();
        for (int i = 0; i < n; ++i) {
            const zgSegment *segment = path.segments.at(i);
            const zgPoint across = i == 0 ? points[1].subtract(points[0])
                : i == n - 1 ? points[n - 1].subtract(points[n - 2])
                             : points[i + 1].subtract(points[i - 1]);
            const zgPoint unit = across.divide(across.getLength());
            if (i > 0) {
                const double third = points[i].getDistance(points[i - 1]) / 3.0;
                expectPoint(segment->handleIn, -unit.x * third, -unit.y * third);
            }
            if (i < n - 1) {
                const double third = points[i].getDistance(points[i + 1]) / 3.0;
                expectPoint(segment->handleOut, unit.x * third, unit.y * third);
            }
        }
    }
}

TEST(PathSimplify, BuildingDropsRepeatsAndWrapsClosedContours)
{
    zgPath open;
    addPoints(open, {zgPoint(0, 0), zgPoint(0, 1e-13), zgPoint(5, 0), zgPoint(5, 0), zgPoint(5, 1)});
    const zgSegmentFitter openFitter(&open);
    EXPECT_FALSE(openFitter.closed);
    ASSERT_EQ(openFitter.points.size(), 3);
    expectPoint(openFitter.points[1], 5, 0);

    zgPath closed(nullptr, true);
    addPoints(closed, {zgPoint(0, 0), zgPoint(5, 0), zgPoint(5, 5)});
    const zgSegmentFitter closedFitter(&closed);
    EXPECT_TRUE(closedFitter.closed);
    ASSERT_EQ(closedFitter.points.size(), 5);
    expectPoint(closedFitter.points[0], 5, 5);
    expectPoint(closedFitter.points[1], 0, 0);
    expectPoint(closedFitter.points[3], 5, 5);
    expectPoint(closedFitter.points[4], 0, 0);

    const zgSegmentFitter none(nullptr);
    EXPECT_TRUE(none.points.isEmpty());
}

TEST(PathSimplify, CoincidentPoints)
{
    // Open: one segment, and the answer is true.
    zgPath open;
    addPoints(open, {zgPoint(2, 3), zgPoint(2, 3), zgPoint(2, 3)});
    EXPECT_TRUE(open.simplify(2.5));
    expectPoints(open, {zgPoint(2, 3)});

    // Closed, with an error of 1 or more: the loop p, p, p is one accepted
    // curve, both of whose segments are deleted; the contour stays.
    zgPath closed(nullptr, true);
    addPoints(closed, {zgPoint(2, 3), zgPoint(2, 3)});
    EXPECT_FALSE(closed.simplify(2.5));
    expectPoints(closed, {zgPoint(2, 3), zgPoint(2, 3)});

    // With an error of 0 the loop splits into two curves, and one segment
    // survives the deletions.
    EXPECT_TRUE(closed.simplify(0.5));
    expectPoints(closed, {zgPoint(2, 3)});
    EXPECT_TRUE(closed.closed);
}

TEST(PathSimplify, EmptyContourIsLeftAlone)
{
    zgPath path;
    EXPECT_FALSE(path.simplify(3.0));
    EXPECT_TRUE(path.isEmpty());
    zgSegmentFitter fitter(&path);
    EXPECT_TRUE(fitter.fit(3.0).isEmpty());
}

// The first least-squares curve of the arch, replayed: u = 0, 0.5, 1, and
// only the middle point has weights (b1 = b2 = 0.375).
TEST(PathSimplify, ReplayedLeastSquaresFallsBackWhenHandlesCross)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(5, 5), zgPoint(10, 0)});
    zgSegmentFitter fitter(&path);
    const QVector<double> u = fitter.parameterizeByChord(0, 2);
    ASSERT_EQ(u.size(), 3);
    EXPECT_DOUBLE_EQ(u[1], 0.5);
    EXPECT_DOUBLE_EQ(u[2], 1.0);

    const zgPoint tan1(5, 5);
    const zgPoint tan2(-5, 5);
    // a1 = 0.375 (1, 1) / sqrt 2, a2 = 0.375 (-1, 1) / sqrt 2, tmp = (5, 5) -
    // 0.5 (10, 0) = (0, 5): C00 = C11 = 0.140625, C01 = 0, X0 = X1 =
    // 0.375 * 5 / sqrt 2, so alpha = X0 / C00 = 20 / (3 sqrt 2) = 4.714 * 2.
    const double alpha = (0.375 * 5.0 / std::sqrt(2.0)) / 0.140625;
    const double h = alpha / std::sqrt(2.0); // 6.667 along each axis
    // h1.line - h2.line = 10 h + 10 h = 133.3 > 100: the control points would
    // cross, and both handles fall back to 10 / 3.
    EXPECT_GT(20.0 * h, 100.0);
    const double third = (10.0 / 3.0) / std::sqrt(2.0);
    expectCurve(fitter.generateCurve(0, 2, u, tan1, tan2),
                {zgPoint(0, 0), zgPoint(third, third), zgPoint(10 - third, third), zgPoint(10, 0)});

    const QVector<zgPoint> curve = fitter.generateCurve(0, 2, u, tan1, tan2);
    const QPair<int, double> worst = fitter.findMaxError(0, 2, curve, u);
    EXPECT_EQ(worst.first, 1);
    EXPECT_NEAR(worst.second, kArchMiss * kArchMiss, 1e-12);
}

TEST(PathSimplify, ReplayedLeastSquaresSolvesTheTwoByTwoSystem)
{
    // Four points on the curve (0, 0), (0, 30), (60, 30), (60, 0) at its
    // chord-length parameters are fitted again by the normal equations.
    const QVector<zgPoint> points = {zgPoint(0, 0), zgPoint(10, 20), zgPoint(45, 25),
                                     zgPoint(60, 0)};
    zgPath path;
    addPoints(path, points);
    zgSegmentFitter fitter(&path);
    const QVector<double> u = fitter.parameterizeByChord(0, 3);
    const double d1 = std::hypot(10, 20), d2 = std::hypot(35, 5), d3 = std::hypot(15, 25);
    EXPECT_NEAR(u[1], d1 / (d1 + d2 + d3), 1e-15);
    EXPECT_NEAR(u[2], (d1 + d2) / (d1 + d2 + d3), 1e-15);

    const zgPoint tan1(0, 1);
    const zgPoint tan2(0, 1);
    double c00 = 0, c01 = 0, c11 = 0, x0 = 0, x1 = 0;
    for (int i = 0; i < 4; ++i) {
        const double s = u[i], t = 1 - s;
        const zgPoint a1(0, 3 * s * t * t);
        const zgPoint a2(0, 3 * s * s * t);
        const zgPoint tmp = points[i].subtract(points[0].multiply(t * t * t + 3 * s * t * t))
                                .subtract(points[3].multiply(3 * s * s * t + s * s * s));
        c00 += a1.dot(a1);
        c01 += a1.dot(a2);
        c11 += a2.dot(a2);
        x0 += a1.dot(tmp);
        x1 += a2.dot(tmp);
    }
    const double det = c00 * c11 - c01 * c01;
    const double alpha1 = (c11 * x0 - c01 * x1) / det;
    const double alpha2 = (c00 * x1 - c01 * x0) / det;
    ASSERT_GT(alpha1, 0.0);
    ASSERT_GT(alpha2, 0.0);
    const QVector<zgPoint> curve = fitter.generateCurve(0, 3, u, tan1, tan2);
    expectCurve(curve, {zgPoint(0, 0), zgPoint(0, alpha1), zgPoint(60, alpha2), zgPoint(60, 0)});

    // The worst interior point, by direct evaluation.
    const double e1 = bezierPoint(curve, u[1]).getDistance(points[1], true);
    const double e2 = bezierPoint(curve, u[2]).getDistance(points[2], true);
    const QPair<int, double> worst = fitter.findMaxError(0, 3, curve, u);
    EXPECT_EQ(worst.first, e2 >= e1 ? 2 : 1);
    EXPECT_NEAR(worst.second, qMax(e1, e2), 1e-9);
}

TEST(PathSimplify, SingularSystemSharesOneHandleLength)
{
    // Both tangents along x, all points on the x axis: the two weight
    // vectors are parallel, det = 0, and both alphas are X0 / (C00 + C01).
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(3, 0), zgPoint(10, 0)});
    zgSegmentFitter fitter(&path);
    const QVector<double> u = fitter.parameterizeByChord(0, 2);
    const double s = u[1], t = 1 - s;
    const double b1 = 3 * s * t * t, b2 = 3 * s * s * t;
    // a1 = (b1, 0), a2 = (-b2, 0); tmp.x = 3 - 10 (b2 + s^3).
    const double tmpX = 3 - 10 * (b2 + s * s * s);
    const double c00 = b1 * b1, c01 = -b1 * b2, c11 = b2 * b2;
    ASSERT_NEAR(c00 * c11 - c01 * c01, 0.0, 1e-12);
    const double alpha = (b1 * tmpX) / (c00 + c01);
    const QVector<zgPoint> curve = fitter.generateCurve(0, 2, u, zgPoint(1, 0), zgPoint(-1, 0));
    if (alpha < 10e-12)
        expectCurve(curve, {zgPoint(0, 0), zgPoint(10.0 / 3, 0), zgPoint(10 - 10.0 / 3, 0), zgPoint(10, 0)});
    else
        expectCurve(curve, {zgPoint(0, 0), zgPoint(alpha, 0), zgPoint(10 - alpha, 0), zgPoint(10, 0)});
}

TEST(PathSimplify, ZeroTangentsGiveZeroHandles)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(6, 8)});
    zgSegmentFitter fitter(&path);
    fitter.fit(0.0);
    releaseAll(fitter.segments);
    fitter.segments.clear();
    fitter.fitRange(0, 0, 1, zgPoint(0, 0), zgPoint(0, 0));
    ASSERT_EQ(fitter.segments.size(), 2);
    expectPoint(fitter.segments[0]->handleOut, 0, 0);
    expectPoint(fitter.segments[1]->handleIn, 0, 0);
    releaseAll(fitter.segments);
    // A least-squares curve with zero tangents has no handles either.
    zgPath three;
    addPoints(three, {zgPoint(0, 0), zgPoint(5, 5), zgPoint(10, 0)});
    zgSegmentFitter other(&three);
    const QVector<zgPoint> curve =
        other.generateCurve(0, 2, other.parameterizeByChord(0, 2), zgPoint(), zgPoint());
    expectCurve(curve, {zgPoint(0, 0), zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 0)});
}

TEST(PathSimplify, ErrorIsTheToleranceTruncated)
{
    // The arch's worst squared miss lies between 10 and 11.
    ASSERT_GT(kArchMiss * kArchMiss, 10.0);
    ASSERT_LT(kArchMiss * kArchMiss, 11.0);
    const QVector<zgPoint> arch = {zgPoint(0, 0), zgPoint(5, 5), zgPoint(10, 0)};
    zgPath accepted;
    addPoints(accepted, arch);
    EXPECT_TRUE(accepted.simplify(11.0));
    expectPoints(accepted, {zgPoint(0, 0), zgPoint(10, 0)});
    // 10.99 truncates to 10: the curve is refused, and the Newton passes do
    // not bring the miss below 10 either.
    zgPath refused;
    addPoints(refused, arch);
    EXPECT_TRUE(refused.simplify(10.99));
    EXPECT_EQ(refused.segments.size(), 3);
    // The squared miss is compared with the error as it stands: a tolerance
    // of 4, above the miss of 3.2 units, still refuses the curve.
    ASSERT_LT(kArchMiss, 4.0);
    zgPath squared;
    addPoints(squared, arch);
    EXPECT_TRUE(squared.simplify(4.0));
    EXPECT_EQ(squared.segments.size(), 3);
}

TEST(PathSimplify, NegativeNaNAndHugeTolerances)
{
    const QVector<zgPoint> arch = {zgPoint(0, 0), zgPoint(5, 5), zgPoint(10, 0)};
    for (double tolerance : {-3.0, qQNaN()}) {
        zgPath path;
        addPoints(path, arch);
        EXPECT_TRUE(path.simplify(tolerance));
        expectPoints(path, arch);
    }
    for (double tolerance : {1e30, qInf()}) {
        zgPath path;
        addPoints(path, arch);
        EXPECT_TRUE(path.simplify(tolerance));
        expectPoints(path, {zgPoint(0, 0), zgPoint(10, 0)});
    }
}

TEST(PathSimplify, TiesGoToTheLaterPoint)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(1, 1), zgPoint(2, 1), zgPoint(3, 0)});
    zgSegmentFitter fitter(&path);
    const QVector<zgPoint> line = {zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)};
    const QVector<double> u = {0.0, 1.0 / 3.0, 2.0 / 3.0, 1.0};
    const QPair<int, double> worst = fitter.findMaxError(0, 3, line, u);
    EXPECT_EQ(worst.first, 2);
    EXPECT_NEAR(worst.second, 1.0, 1e-12);
}

TEST(PathSimplify, StartIndexIsNotOffsetByFirst)
{
    // With NaN parameters no distance reaches 0 and the start index
    // (last - first + 1) / 2 stands: here 2 for the range 4 to 7.
    zgPath path;
    for (int i = 0; i < 8; ++i)
        path.addSegment(new zgSegment(i, i * i));
    zgSegmentFitter fitter(&path);
    const QVector<zgPoint> curve = {zgPoint(4, 16), zgPoint(5, 20), zgPoint(6, 30), zgPoint(7, 49)};
    const QVector<double> nans(4, qQNaN());
    const QPair<int, double> worst = fitter.findMaxError(4, 7, curve, nans);
    EXPECT_EQ(worst.first, 2);
    EXPECT_EQ(worst.second, 0.0);
    // A range without interior points keeps its start index too.
    EXPECT_EQ(fitter.findMaxError(4, 5, curve, {0.0, 1.0}).first, 1);
}

TEST(PathSimplify, NewtonStepAgainstDirectDerivatives)
{
    const QVector<zgPoint> curve = {zgPoint(0, 0), zgPoint(10, 40), zgPoint(50, 40), zgPoint(60, 0)};
    const QVector<double> values = curvetest::values(0, 0, 10, 40, 50, 40, 60, 0);
    const zgPoint point(20, 35);
    for (double u : {0.1, 0.3, 0.5, 0.8, 1.2}) {
        long double x, y, dx, dy, ddx, ddy;
        curvetest::bernstein(values, u, x, y);
        curvetest::bernsteinDerivative(values, u, dx, dy);
        curvetest::bernsteinSecond(values, u, ddx, ddy);
        const long double diffX = x - point.x, diffY = y - point.y;
        const long double df = dx * dx + dy * dy + diffX * ddx + diffY * ddy;
        const double expected = double(u - (diffX * dx + diffY * dy) / df);
        EXPECT_NEAR(zgSegmentFitter::newtonStep(curve, point, u), expected, 1e-12) << u;
    }
    // A curve shrunk to a point has no derivatives: u stays.
    const QVector<zgPoint> dot(4, zgPoint(3, 3));
    EXPECT_EQ(zgSegmentFitter::newtonStep(dot, point, 0.4), 0.4);
}

TEST(PathSimplify, ReparameterizeReportsOrder)
{
    zgPath path;
    addPoints(path, {zgPoint(0, 0), zgPoint(20, 20), zgPoint(40, 20), zgPoint(60, 0)});
    zgSegmentFitter fitter(&path);
    const QVector<zgPoint> curve = {zgPoint(0, 0), zgPoint(15, 30), zgPoint(45, 30), zgPoint(60, 0)};
    QVector<double> u = fitter.parameterizeByChord(0, 3);
    QVector<double> expected = u;
    for (int i = 0; i < 4; ++i)
        expected[i] = zgSegmentFitter::newtonStep(curve, fitter.points[i], u[i]);
    EXPECT_TRUE(fitter.reparameterize(0, 3, u, curve));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(u[i], expected[i]);
    // Points given against the curve's direction swap the parameters' order.
    zgPath backwards;
    addPoints(backwards, {zgPoint(0, 0), zgPoint(45, 20), zgPoint(15, 20), zgPoint(60, 0)});
    zgSegmentFitter reversed(&backwards);
    QVector<double> v = {0.0, 0.33, 0.66, 1.0};
    EXPECT_FALSE(reversed.reparameterize(0, 3, v, curve));
}

TEST(PathSimplify, ClosedContourDropsTheOverlapSegments)
{
    // A closed square with tolerance below 1: the fit of p3 p0 p1 p2 p3 p0
    // keeps every point, and the two overlap copies go.
    zgPath path(nullptr, true);
    addPoints(path, squarePoints(0, 0, 10));
    EXPECT_TRUE(path.simplify(0.0));
    EXPECT_TRUE(path.closed);
    expectPoints(path, squarePoints(0, 0, 10));
    // The handles of the closing curve come from the wrapped points: at p0
    // backwards along p1 - p3 = (10, -10), at p3 along p0 - p2 = (-10, -10),
    // a third of the chord of 10 long each.
    const double third = 10.0 / 3.0 / std::sqrt(2.0);
    expectPoint(path.segments[0]->handleIn, -third, third);
    expectPoint(path.segments[3]->handleOut, -third, -third);
    expectConsistent(path);
}

TEST(PathSimplify, CompoundInstallsEveryFit)
{
    XPath xpath;
    zgPath *line = newContour({zgPoint(0, 0), zgPoint(1, 0), zgPoint(2, 0), zgPoint(3, 0)}, false);
    zgPath *empty = new zgPath(nullptr, false);
    xpath.addChild(line);
    xpath.addChild(empty);
    EXPECT_TRUE(xpath.simplify(2.0));
    expectPoints(*line, {zgPoint(0, 0), zgPoint(3, 0)});
    expectConsistent(*line);
    EXPECT_TRUE(empty->isEmpty());

    XPath nothing;
    nothing.addChild(new zgPath(nullptr, false));
    EXPECT_FALSE(nothing.simplify(2.0));
}

TEST(PathSimplify, NonFiniteAndHugePointsEndInBoundedTime)
{
    // An infinite point makes every chord parameter NaN: the splits fall to
    // the middle of each range and the fit ends in pairs.
    zgPath infinite;
    addPoints(infinite, {zgPoint(0, 0), zgPoint(1, 1), zgPoint(qInf(), 0), zgPoint(3, 3),
                         zgPoint(4, 1), zgPoint(5, 5), zgPoint(6, 0)});
    EXPECT_TRUE(infinite.simplify(5.0));
    EXPECT_GE(infinite.segments.size(), 2);
    expectPoint(infinite.segments.first()->point, 0, 0);
    expectPoint(infinite.segments.last()->point, 6, 0);

    // A NaN point is never kept after a finite one.
    zgPath nan;
    addPoints(nan, {zgPoint(0, 0), zgPoint(qQNaN(), 1), zgPoint(10, 0)});
    EXPECT_TRUE(nan.simplify(5.0));
    expectPoints(nan, {zgPoint(0, 0), zgPoint(10, 0)});

    zgPath huge;
    addPoints(huge, {zgPoint(0, 0), zgPoint(1e300, 1e300), zgPoint(-1e300, 1e300), zgPoint(1e300, 0)});
    EXPECT_TRUE(huge.simplify(3.0));
    expectPoint(huge.segments.first()->point, 0, 0);
}

TEST(PathSimplify, LeavesNoCountedObjectsBehind)
{
    expectNoSurvivors(countSurvivors([] {
        zgPath *open = newContour({zgPoint(0, 0), zgPoint(5, 5), zgPoint(10, 0), zgPoint(20, 3)}, false);
        open->addRef();
        open->getCurves();
        open->simplify(2.0);
        open->release();
        // The deleted overlap segments and a refused fit are released.
        zgPath *closed = newContour({zgPoint(1, 1), zgPoint(1, 1)}, true);
        closed->addRef();
        closed->simplify(3.0);
        closed->release();
    }));
}

// Seeded noisy strokes: the fit keeps both ends, and every input point lies
// within sqrt(error) of the result, since each accepted curve has every
// point's squared miss below the error (tolerance truncated).
TEST(PathSimplify, SeededStrokesStayWithinTheErrorBound)
{
    std::mt19937 engine(6302u);
    std::uniform_real_distribution<double> noise(-1.0, 1.0);
    for (double tolerance : {0.5, 1.0, 2.5, 5.0, 10.0, 50.0}) {
        const int error = int(tolerance);
        const double bound = error < 1 ? 0.0 : std::sqrt(double(error));
        double worst = 0.0;
        int inputPoints = 0;
        int outputCurves = 0;
        for (int stroke = 0; stroke < 20; ++stroke) {
            QVector<zgPoint> points;
            double angle = noise(engine) * M_PI;
            zgPoint at(0, 0);
            for (int i = 0; i < 150; ++i) {
                angle += 0.15 * noise(engine);
                at = at.add(zgPoint(std::cos(angle) * 3.0, std::sin(angle) * 3.0));
                points.append(at.add(zgPoint(noise(engine) * 0.8, noise(engine) * 0.8)));
            }
            zgPath path;
            addPoints(path, points);
            ASSERT_TRUE(path.simplify(tolerance));
            expectPoint(path.segments.first()->point, points.first().x, points.first().y, 0.0);
            expectPoint(path.segments.last()->point, points.last().x, points.last().y, 0.0);
            const QVector<QVector<zgPoint>> curves = curvesOf(path);
            for (const zgPoint &p : points)
                worst = qMax(worst, distanceToCurves(curves, p));
            inputPoints += points.size();
            outputCurves += curves.size();
        }
        EXPECT_LE(worst, bound + 1e-6) << tolerance;
        std::printf("simplify tolerance %5.1f: %d points -> %d curves, worst distance %.4f "
                    "(bound sqrt(error) %.4f)\n",
                    tolerance, inputPoints, outputCurves, worst, bound);
    }
}
