#include "spline/spline_test_support.h"
#include "spline/fitting.h"

#include <zgraphics/drawing.h>

#include <limits>
#include <stdexcept>
#include <string>

using namespace splinetest;

namespace {

// Exact comparison (QPointF's own == is fuzzy).
void expectSamePoint(const QPointF &a, const QPointF &b)
{
    EXPECT_EQ(a.x(), b.x());
    EXPECT_EQ(a.y(), b.y());
}

void expectSameList(const QVector<QPointF> &a, const QVector<QPointF> &b)
{
    ASSERT_EQ(a.size(), b.size());
    for (int i = 0; i < a.size(); ++i)
        expectSamePoint(a[i], b[i]);
}

double scaleOf(const QVector<QPointF> &points)
{
    double scale = 1.0;
    for (const QPointF &p : points)
        scale = std::max({scale, std::fabs(p.x()), std::fabs(p.y())});
    return scale;
}

std::string messageOf(const std::function<void()> &call)
{
    try {
        call();
    } catch (const std::runtime_error &e) {
        return e.what();
    }
    return "no exception";
}

// Chord-length parameters of the points, recomputed here.
std::vector<double> parametersOf(const QVector<QPointF> &points)
{
    std::vector<double> u(1, 0.0);
    for (int i = 1; i < points.size(); ++i)
        u.push_back(u.back() + distance(points[i - 1], points[i]));
    return u;
}

// The fit computed here from its definition: textbook basis values for the
// collocation rows, the tangent rows, Gaussian elimination; the control
// points as x0, y0, x1, y1, ...
std::vector<double> referenceControlPoints(const QVector<QPointF> &points, std::vector<double> &knots)
{
    const int n = points.size();
    const int m = n + 2;
    const std::vector<double> u = parametersOf(points);
    knots.assign(3, u.front());
    knots.insert(knots.end(), u.begin(), u.end());
    knots.insert(knots.end(), 3, u.back());
    std::vector<double> a(m * m, 0.0), b(m * 2, 0.0);
    for (int r = 0; r < n; ++r) {
        b[r * 2] = points[r].x();
        b[r * 2 + 1] = points[r].y();
        if (r == 0) {
            a[0] = 1.0;
        } else if (r == n - 1) {
            a[r * m + m - 1] = 1.0;
        } else {
            for (int j = 0; j < m; ++j)
                a[r * m + j] = coxDeBoor(knots, j, 3, u[r]);
        }
    }
    // End derivatives: the derivative of a clamped cubic at its start is
    // 3 (P1 - P0) / (u1 - u0), and at its end 3 (Pm-1 - Pm-2) / (un-1 - un-2).
    auto unit = [](QPointF v) { return v / std::hypot(v.x(), v.y()); };
    const QPointF c1 = unit(points[1] - points[0]), c2 = unit(points[2] - points[1]);
    const double l1 = distance(points[0], points[1]), l2 = distance(points[1], points[2]);
    const QPointF middleStart = (c2 * l1 + c1 * l2) / (l1 + l2);
    const QPointF startTangent = 2 * c1 - middleStart;
    const QPointF d1 = unit(points[n - 2] - points[n - 3]), d2 = unit(points[n - 1] - points[n - 2]);
    const double e1 = distance(points[n - 3], points[n - 2]), e2 = distance(points[n - 2], points[n - 1]);
    const QPointF middleEnd = (d2 * e1 + d1 * e2) / (e1 + e2);
    const QPointF endTangent = 2 * d2 - middleEnd;
    a[n * m + 0] = -1.0;
    a[n * m + 1] = 1.0;
    b[n * 2] = startTangent.x() * (u[1] - u[0]) / 3.0;
    b[n * 2 + 1] = startTangent.y() * (u[1] - u[0]) / 3.0;
    a[(n + 1) * m + n] = -1.0;
    a[(n + 1) * m + n + 1] = 1.0;
    b[(n + 1) * 2] = endTangent.x() * (u[n - 1] - u[n - 2]) / 3.0;
    b[(n + 1) * 2 + 1] = endTangent.y() * (u[n - 1] - u[n - 2]) / 3.0;
    return gaussSolve(a, b, m, 2);
}

// The largest distance, relative to the points' scale, between the fit's
// Bezier pieces and the reference spline at 9 parameters in each piece.
double differenceToReference(const QVector<QPointF> &points, const QVector<QPointF> &beziers)
{
    std::vector<double> knots;
    const std::vector<double> control = referenceControlPoints(points, knots);
    const std::vector<double> u = parametersOf(points);
    double worst = 0.0;
    for (int piece = 0; piece + 1 < points.size(); ++piece) {
        for (int i = 0; i <= 8; ++i) {
            const double s = i / 8.0;
            const double t = u[piece] + (u[piece + 1] - u[piece]) * s;
            const std::vector<double> expected = deBoorPoint(knots, control, 3, 2, t, i == 8);
            const QPointF got = bezierPoint(beziers, piece * 4, s);
            worst = std::max(worst, std::hypot(got.x() - expected[0], got.y() - expected[1]));
        }
    }
    return worst / scaleOf(points);
}

} // namespace

// --- basis functions and tangents ----------------------------------------------------

TEST(FittingBasis, MatchesTheCoxDeBoorRecursion)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> gap(0.0, 2.0);
    std::uniform_int_distribution<int> coin(0, 3);
    int checked = 0;
    for (int trial = 0; trial < 200; ++trial) {
        QVector<double> knots;
        double value = 0.0;
        for (int i = 0; i < 14; ++i) {
            knots << value;
            if (i >= 3 && i < 10 && coin(random) != 0) // some repeated inner values
                value += gap(random);
        }
        for (int span = 3; span <= 8; ++span) {
            if (!(knots[span] < knots[span + 1]))
                continue;
            for (double s : {0.0, 0.25, 0.5, 0.99}) {
                const double t = knots[span] + (knots[span + 1] - knots[span]) * s;
                std::vector<double> out(9, -1.0);
                basisFunctions(t, span, knots, out);
                ASSERT_EQ(out.size(), 4u);
                const std::vector<double> plain(knots.begin(), knots.end());
                double sum = 0.0;
                for (int j = 0; j < 4; ++j) {
                    EXPECT_NEAR(out[j], coxDeBoor(plain, span - 3 + j, 3, t), 1e-14) << trial << " " << span;
                    sum += out[j];
                }
                EXPECT_NEAR(sum, 1.0, 1e-14);
                if (s == 0.0) {
                    EXPECT_EQ(out[3], 0.0);
                }
                ++checked;
            }
        }
    }
    EXPECT_GT(checked, 1000);
}

TEST(FittingBasis, SpanIsTruncatedAndZeroStepsCountAsZero)
{
    // A zero step between knots 4 and 5: its terms are 0.0, not NaN.
    const QVector<double> knots = {0, 0, 0, 0, 1, 1, 2, 3, 3, 3, 3};
    std::vector<double> out;
    basisFunctions(1.0, 5.7, knots, out); // span 5: [1, 2)
    const std::vector<double> plain(knots.begin(), knots.end());
    for (int j = 0; j < 4; ++j) {
        EXPECT_FALSE(std::isnan(out[j]));
        EXPECT_NEAR(out[j], coxDeBoor(plain, 2 + j, 3, 1.0), 1e-15) << j;
    }
    EXPECT_EQ(out[3], 0.0);
    // On the empty span 4 itself every term meets a zero step somewhere.
    basisFunctions(1.0, 4, knots, out);
    for (int j = 0; j < 4; ++j)
        EXPECT_FALSE(std::isnan(out[j])) << j;
    EXPECT_EQ(out[3], 0.0);
}

TEST(FittingTangents, WeightsAndMirrors)
{
    QPointF ta, tb, tc;
    threePointTangents(QPointF(0, 0), QPointF(3, 0), QPointF(3, 1), ta, tb, tc);
    // l1 = 3, l2 = 1: tb = (0, 1) * 0.75 + (1, 0) * 0.25.
    EXPECT_DOUBLE_EQ(tb.x(), 0.25);
    EXPECT_DOUBLE_EQ(tb.y(), 0.75);
    EXPECT_DOUBLE_EQ(ta.x(), 1.75);
    EXPECT_DOUBLE_EQ(ta.y(), -0.75);
    EXPECT_DOUBLE_EQ(tc.x(), -0.25);
    EXPECT_DOUBLE_EQ(tc.y(), 1.25);

    threePointTangents(QPointF(1, 1), QPointF(3, 3), QPointF(5, 5), ta, tb, tc);
    const double r = std::sqrt(0.5);
    for (const QPointF &t : {ta, tb, tc}) {
        EXPECT_NEAR(t.x(), r, 1e-15);
        EXPECT_NEAR(t.y(), r, 1e-15);
    }
}

TEST(FittingTangents, CoincidentNeighboursGiveNaN)
{
    QPointF ta, tb, tc;
    threePointTangents(QPointF(2, 2), QPointF(2, 2), QPointF(5, 1), ta, tb, tc);
    for (const QPointF &t : {ta, tb, tc}) {
        EXPECT_TRUE(std::isnan(t.x()));
        EXPECT_TRUE(std::isnan(t.y()));
    }
    threePointTangents(QPointF(0, 0), QPointF(2, 2), QPointF(2, 2), ta, tb, tc);
    EXPECT_TRUE(std::isnan(ta.x()));
    EXPECT_TRUE(std::isnan(tc.y()));
}

// --- the fit --------------------------------------------------------------------------

TEST(BezierFitting, FewerThanThreePointsGiveNothing)
{
    for (int count = 0; count < 3; ++count) {
        int degree = -5;
        const QVector<QPointF> points = wobblyPoints(count, 1);
        EXPECT_TRUE(ZDPath::bezierFitting(points, degree).isEmpty());
        EXPECT_EQ(degree, -5);
    }
}

TEST(BezierFitting, ThreePointsMakeTwoPiecesFromOneTriple)
{
    const QVector<QPointF> points = {QPointF(0, 0), QPointF(10, 10), QPointF(20, 0)};
    int degree = 0;
    const QVector<QPointF> result = ZDPath::bezierFitting(points, degree);
    EXPECT_EQ(degree, 3);
    ASSERT_EQ(result.size(), 8);
    // A 5 by 5 system with one interior row; both end tangents come from the
    // same triple, and the symmetric input gives a curve symmetric about
    // x = 10 through the middle point.
    const double tolerance = 1e-12; // a 5 by 5 solve on values near 10
    expectSamePoint(result[0], points[0]);
    expectSamePoint(result[7], points[2]);
    EXPECT_NEAR(result[3].x(), 10.0, tolerance);
    EXPECT_NEAR(result[3].y(), 10.0, tolerance);
    expectSamePoint(result[3], result[4]);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(result[i].x(), 20.0 - result[7 - i].x(), tolerance) << i;
        EXPECT_NEAR(result[i].y(), result[7 - i].y(), tolerance) << i;
    }
    QPointF ta, tb, tc;
    threePointTangents(points[0], points[1], points[2], ta, tb, tc);
    const double step = 10.0 * std::sqrt(2.0);
    EXPECT_NEAR(3.0 * (result[1].x() - result[0].x()) / step, ta.x(), 1e-12);
    EXPECT_NEAR(3.0 * (result[1].y() - result[0].y()) / step, ta.y(), 1e-12);
    EXPECT_NEAR(3.0 * (result[7].x() - result[6].x()) / step, tc.x(), 1e-12);
    EXPECT_NEAR(3.0 * (result[7].y() - result[6].y()) / step, tc.y(), 1e-12);
    EXPECT_LT(differenceToReference(points, result), 1e-12);
}

TEST(BezierFitting, PassesThroughEveryPointWithTheEndTangents)
{
    int fits = 0, reproduced = 0, total = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const int count = 3 + int(seed * 37 % 400); // both solves: the tridiagonal one from 128 on
        const QVector<QPointF> points = wobblyPoints(count, seed, 0.5, 40.0);
        int degree = 0;
        const QVector<QPointF> result = ZDPath::bezierFitting(points, degree);
        ASSERT_EQ(degree, 3);
        ASSERT_EQ(result.size(), 4 * (count - 1)) << seed;
        const double tolerance = 1e-9 * scaleOf(points); // relative reproduction
        for (int i = 0; i < count; ++i) {
            // Point i is where piece i starts and piece i - 1 ends.
            const QPointF at = i + 1 < count ? bezierPoint(result, 4 * i, 0.0) : bezierPoint(result, 4 * (i - 1), 1.0);
            const QPointF before = i > 0 ? bezierPoint(result, 4 * (i - 1), 1.0) : at;
            reproduced += distance(at, points[i]) <= tolerance && distance(before, points[i]) <= tolerance;
            ++total;
        }
        expectSamePoint(result.first(), points.first());
        expectSamePoint(result.last(), points.last());
        const std::vector<double> u = parametersOf(points);
        QPointF startTangent, endTangent, unused;
        threePointTangents(points[0], points[1], points[2], startTangent, unused, unused);
        threePointTangents(points[count - 3], points[count - 2], points[count - 1], unused, unused, endTangent);
        const QPointF startDerivative = 3.0 * (result[1] - result[0]) / (u[1] - u[0]);
        const QPointF endDerivative = 3.0 * (result.last() - result[result.size() - 2]) / (u[count - 1] - u[count - 2]);
        EXPECT_LT(distance(startDerivative, startTangent), 1e-9) << seed;
        EXPECT_LT(distance(endDerivative, endTangent), 1e-9) << seed;
        ++fits;
    }
    EXPECT_EQ(fits, 60);
    EXPECT_EQ(reproduced, total);
}

TEST(BezierFitting, AgreesWithAnIndependentSolve)
{
    // Small systems: the library's pieces against a spline solved here by
    // plain Gaussian elimination on textbook basis values.
    int agreeing = 0;
    for (unsigned seed = 100; seed < 160; ++seed) {
        const QVector<QPointF> points = wobblyPoints(3 + int(seed % 12), seed);
        int degree = 0;
        const QVector<QPointF> result = ZDPath::bezierFitting(points, degree);
        const double difference = differenceToReference(points, result);
        EXPECT_LT(difference, 1e-11) << seed;
        agreeing += difference < 1e-11;
    }
    EXPECT_EQ(agreeing, 60);
}

TEST(BezierFitting, TridiagonalSolveGivesTheDenseControlPoints)
{
    int compared = 0;
    for (int count : {3, 4, 5, 8, 20, 50, 127, 128, 200, 350, 500}) {
        for (unsigned seed = 1; seed <= 4; ++seed) {
            const QVector<QPointF> points = wobblyPoints(count, seed * 31 + count, 0.3, 60.0);
            const QVector<double> knots = fittingKnots(points);
            const QVector<QPointF> dense = fittingControlPointsDense(points, knots);
            const QVector<QPointF> banded = fittingControlPointsBanded(points, knots);
            ASSERT_EQ(banded.size(), count + 2);
            const double tolerance = 1e-9 * scaleOf(points); // relative agreement of two solves
            for (int i = 0; i < count + 2; ++i)
                EXPECT_LT(distance(banded[i], dense[i]), tolerance) << count << " " << seed << " " << i;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 44);
}

TEST(BezierFitting, LongInputsTakeTheTridiagonalSolveUnlessDegenerate)
{
    // Bit for bit (NaN matching NaN): the fit is the conversion of the
    // control points of the solve it chose.
    auto sameBits = [](double a, double b) { return (std::isnan(a) && std::isnan(b)) || a == b; };
    auto expectConversionOf = [&](const QVector<QPointF> &points, const QVector<QPointF> &control) {
        int degree = 3;
        const QVector<QPointF> expected = ZDPath::bsplineToBezier(control, fittingKnots(points), degree);
        degree = 0;
        const QVector<QPointF> result = ZDPath::bezierFitting(points, degree);
        ASSERT_EQ(result.size(), expected.size());
        for (int i = 0; i < result.size(); ++i)
            EXPECT_TRUE(sameBits(result[i].x(), expected[i].x()) && sameBits(result[i].y(), expected[i].y())) << i;
    };
    const QVector<QPointF> regular = wobblyPoints(200, 5);
    expectConversionOf(regular, fittingControlPointsBanded(regular, fittingKnots(regular)));
    const QVector<QPointF> small = wobblyPoints(127, 5);
    expectConversionOf(small, fittingControlPointsDense(small, fittingKnots(small)));
    // Coincident points keep the dense solve, whatever it yields.
    QVector<QPointF> coincident = regular;
    coincident[100] = coincident[99];
    expectConversionOf(coincident, fittingControlPointsDense(coincident, fittingKnots(coincident)));
}

TEST(BezierFitting, TridiagonalSolveRefusesZeroSteps)
{
    QVector<QPointF> points = wobblyPoints(10, 8);
    points[5] = points[4];
    EXPECT_TRUE(fittingControlPointsBanded(points, fittingKnots(points)).isEmpty());
}

TEST(BezierFitting, KnotsAreChordLengthsClampedFourTimes)
{
    const QVector<QPointF> points = {QPointF(0, 0), QPointF(3, 4), QPointF(3, 4), QPointF(3, 10)};
    EXPECT_EQ(fittingKnots(points), (QVector<double>{0, 0, 0, 0, 5, 5, 11, 11, 11, 11}));
}

TEST(BezierFitting, FitGivesTheConversionItsExactKnotCount)
{
    // The fit's knots go into bsplineToBezier unchanged (n + 6 = control
    // points + 4), so its result equals the engine's Beziers of that spline.
    const QVector<QPointF> points = wobblyPoints(9, 77);
    const QVector<double> knots = fittingKnots(points);
    const QVector<QPointF> control = fittingControlPointsDense(points, knots);
    ASSERT_EQ(knots.size(), control.size() + 4);
    BSpline spline(control.size(), 2, 3, SplineClamped);
    std::vector<double> flat;
    for (const QPointF &p : control) {
        flat.push_back(p.x());
        flat.push_back(p.y());
    }
    spline.setControlPoints(flat);
    spline.setKnots(std::vector<double>(knots.begin(), knots.end()));
    const std::vector<double> expected = spline.toBeziers().getControlPoints();
    int degree = 0;
    const QVector<QPointF> result = ZDPath::bezierFitting(points, degree);
    ASSERT_EQ(int(expected.size()), 2 * result.size());
    for (int i = 0; i < result.size(); ++i) {
        EXPECT_EQ(result[i].x(), expected[2 * i]) << i;
        EXPECT_EQ(result[i].y(), expected[2 * i + 1]) << i;
    }
}

TEST(BezierFitting, CoincidentNeighboursInsideGiveTheSolversResult)
{
    // Points 3 and 4 coincide: a zero step in the parameters, guarded terms
    // of 0.0 in the basis values, and a singular system whose solution is
    // whatever the LU solve yields. One piece fewer.
    QVector<QPointF> points = wobblyPoints(7, 4);
    points[4] = points[3];
    int degree = 0;
    QVector<QPointF> result;
    EXPECT_NO_THROW(result = ZDPath::bezierFitting(points, degree));
    EXPECT_EQ(degree, 3);
    EXPECT_EQ(result.size(), 4 * 5);
}

TEST(BezierFitting, CoincidentPointsAmongTheFirstThree)
{
    // Points 1 and 2: the start tangent is NaN, so is the solution.
    QVector<QPointF> points = {QPointF(0, 0), QPointF(5, 5), QPointF(5, 5), QPointF(10, 0), QPointF(15, 3)};
    int degree = 0;
    QVector<QPointF> result;
    EXPECT_NO_THROW(result = ZDPath::bezierFitting(points, degree));
    EXPECT_EQ(degree, 3);
    ASSERT_EQ(result.size(), 4 * 3);
    EXPECT_TRUE(std::isnan(result[1].x()));
    // Points 0 and 1: the first knot stands five times.
    points = {QPointF(0, 0), QPointF(0, 0), QPointF(5, 5), QPointF(10, 0)};
    degree = 0;
    EXPECT_EQ(messageOf([&] { ZDPath::bezierFitting(points, degree); }), "mult(0.000000) (5) > order (4)");
    EXPECT_EQ(degree, 3);
}

TEST(BezierFitting, NaNCoordinatesRaiseTheDomainError)
{
    for (int at : {0, 2, 5}) {
        QVector<QPointF> points = wobblyPoints(6, 9);
        points[at].setY(std::nan(""));
        int degree = 0;
        const std::string message = messageOf([&] { ZDPath::bezierFitting(points, degree); });
        EXPECT_TRUE(message == "knot (nan) < min(domain) (0.000000)"
                    || message == "knot (-nan) < min(domain) (0.000000)") << at << ": " << message;
    }
}

TEST(BezierFitting, TheLongestFitIsBoundedByTheKnotLimit)
{
    // n points give 4 n knots of Beziers: 2500 points fit, 2501 do not.
    const QVector<QPointF> fits = wobblyPoints(2500, 12, 1.0, 5.0);
    int degree = 0;
    const QVector<QPointF> result = ZDPath::bezierFitting(fits, degree);
    ASSERT_EQ(result.size(), 4 * 2499);
    expectSamePoint(result.last(), fits.last());
    EXPECT_LT(distance(bezierPoint(result, 4 * 1200, 0.0), fits[1200]), 1e-9 * scaleOf(fits));

    const QVector<QPointF> tooMany = wobblyPoints(2501, 12, 1.0, 5.0);
    EXPECT_EQ(messageOf([&] { ZDPath::bezierFitting(tooMany, degree); }),
              "unsupported number of knots: 10001 > 10000");
    // n + 6 above 10000: the spline itself cannot be made.
    const QVector<QPointF> farTooMany = wobblyPoints(9995, 12, 1.0, 5.0);
    EXPECT_EQ(messageOf([&] { ZDPath::bezierFitting(farTooMany, degree); }),
              "unsupported number of knots: 10001 > 10000");
}

// --- conversion -----------------------------------------------------------------------

TEST(BsplineToBezier, ConvertsAndReportsTheDegree)
{
    const QVector<QPointF> control = {QPointF(0, 0), QPointF(1, 3), QPointF(4, 4), QPointF(6, 1), QPointF(8, 2),
                                      QPointF(9, 6)};
    const QVector<double> knots = {0, 0, 0, 0, 1, 2.5, 4, 4, 4, 4};
    int degree = 3;
    const QVector<QPointF> result = ZDPath::bsplineToBezier(control, knots, degree);
    EXPECT_EQ(degree, 3);
    ASSERT_EQ(result.size(), 12);
    std::vector<double> flat;
    for (const QPointF &p : control)
        flat.push_back(p.x()), flat.push_back(p.y());
    const std::vector<double> plainKnots(knots.begin(), knots.end());
    const double breaks[] = {0, 1, 2.5, 4};
    for (int piece = 0; piece < 3; ++piece) {
        for (int i = 0; i <= 10; ++i) {
            const double s = i / 10.0;
            const double t = breaks[piece] + (breaks[piece + 1] - breaks[piece]) * s;
            const std::vector<double> expected = deBoorPoint(plainKnots, flat, 3, 2, t);
            const QPointF got = bezierPoint(result, 4 * piece, s);
            EXPECT_NEAR(got.x(), expected[0], 1e-12);
            EXPECT_NEAR(got.y(), expected[1], 1e-12);
        }
    }
}

TEST(BsplineToBezier, KnotsAreCutOrExtendedToACubicsCount)
{
    const QVector<QPointF> control = {QPointF(0, 0), QPointF(1, 3), QPointF(4, 4), QPointF(6, 1), QPointF(8, 2),
                                      QPointF(9, 6)};
    std::vector<double> flat;
    for (const QPointF &p : control)
        flat.push_back(p.x()), flat.push_back(p.y());
    int degree = 3;
    // Surplus knots are cut from the end.
    const QVector<QPointF> cut = ZDPath::bsplineToBezier(control, {0, 0, 0, 0, 1, 2.5, 4, 4, 4, 4, 7, 9}, degree);
    degree = 3;
    expectSameList(cut, ZDPath::bsplineToBezier(control, {0, 0, 0, 0, 1, 2.5, 4, 4, 4, 4}, degree));

    // A short vector: 2 then stands four times and 3 follows (step 1).
    degree = 3;
    const QVector<QPointF> extended = ZDPath::bsplineToBezier(control, {0, 0, 0, 0, 1, 2}, degree);
    const std::vector<double> full = {0, 0, 0, 0, 1, 2, 2, 2, 2, 3};
    ASSERT_EQ(extended.size(), 8);
    for (int piece = 0; piece < 2; ++piece) {
        for (int i = 0; i <= 10; ++i) {
            const double s = i / 10.0;
            const std::vector<double> expected = deBoorPoint(full, flat, 3, 2, piece + s, i == 10);
            const QPointF got = bezierPoint(extended, 4 * piece, s);
            EXPECT_NEAR(got.x(), expected[0], 1e-12);
            EXPECT_NEAR(got.y(), expected[1], 1e-12);
        }
    }
    // Extending an empty or one-knot vector repeats one value: too often.
    degree = 3;
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(control, {0.5}, degree); }), "mult(0.500000) (5) > order (4)");
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(control, {}, degree); }), "mult(0.000000) (5) > order (4)");
}

TEST(BsplineToBezier, OtherDegreesMeetTheCubicKnotCount)
{
    int degree = 3;
    const QVector<QPointF> three = {QPointF(0, 0), QPointF(1, 1), QPointF(2, 0)};
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(three, {0, 0, 0, 0, 1, 1, 1}, degree); }),
              "Expected size: 6, Actual size: 7");
    degree = 7; // three control points make a quadratic whatever degree says
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(three, {0, 0, 0, 1, 1, 1}, degree); }),
              "Expected size: 6, Actual size: 7");
    EXPECT_EQ(degree, 7);
    const QVector<QPointF> five = wobblyPoints(5, 2);
    degree = 2;
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(five, {0, 0, 0, 1, 2, 3, 3, 3}, degree); }),
              "Expected size: 8, Actual size: 9");
    degree = 5;
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(five, {}, degree); }),
              "degree (5) >= num(control_points) (5)");
}

TEST(BsplineToBezier, NegativeDegreeThrows)
{
    // A negative degree read as a count wraps past the knot limit.
    int degree = -1;
    EXPECT_THROW(ZDPath::bsplineToBezier(wobblyPoints(6, 3), {0, 1, 2, 3}, degree), std::runtime_error);
    EXPECT_EQ(degree, -1);
}

TEST(BsplineToBezier, ShortKnotsOfThreePointsWithANegativeDegreeAreExtendedOnce)
{
    // Three control points make a quadratic whatever the degree says, so the
    // spline is built; the knots are then extended with each new value
    // standing once (a degree below 0 counts as 0), to the seven of a cubic,
    // which the quadratic's six refuse.
    int degree = -1;
    EXPECT_EQ(messageOf([&] {
                  ZDPath::bsplineToBezier({QPointF(0, 0), QPointF(1, 2), QPointF(3, 0)}, {0, 1},
                                          degree);
              }),
              "Expected size: 6, Actual size: 7");
    EXPECT_EQ(degree, -1);
}

TEST(BsplineToBezier, KnotLimits)
{
    int degree = 3;
    const QVector<QPointF> few = wobblyPoints(6, 3);
    EXPECT_TRUE(ZDPath::bsplineToBezier(few, QVector<double>(50001, 0.0), degree).isEmpty());
    EXPECT_EQ(degree, 3);
    degree = 4;
    EXPECT_TRUE(ZDPath::bsplineToBezier(few, QVector<double>(50001, 0.0), degree).isEmpty());
    EXPECT_EQ(degree, 4);

    // 20000 knots for 19996 control points: the engine's knot-count error.
    degree = 3;
    const QVector<QPointF> many = wobblyPoints(19996, 3);
    QVector<double> knots(20000);
    for (int i = 0; i < knots.size(); ++i)
        knots[i] = i;
    EXPECT_EQ(messageOf([&] { ZDPath::bsplineToBezier(many, knots, degree); }),
              "unsupported number of knots: 20000 > 10000");
    // The same 20000 knots with few control points are cut to fit.
    QVector<QPointF> result;
    EXPECT_NO_THROW(result = ZDPath::bsplineToBezier(few, knots, degree));
    EXPECT_EQ(result.size(), 4 * 3); // opened knots 0..9: domain [3, 6], three pieces
}

// --- degree elevation ------------------------------------------------------------------

TEST(BezierElevate, LineGetsItsMidpoint)
{
    QVector<QPointF> line = {QPointF(1, 2), QPointF(5, 10)};
    expectSameList(ZDPath::BezierElevate(line), {QPointF(1, 2), QPointF(3, 6), QPointF(5, 10)});
    EXPECT_EQ(line.size(), 2);
    QVector<QPointF> none;
    EXPECT_TRUE(ZDPath::BezierElevate(none).isEmpty());
    QVector<QPointF> one = {QPointF(4, 4)};
    expectSameList(ZDPath::BezierElevate(one), {QPointF(4, 4), QPointF(4, 4)});
}

TEST(BezierElevate, KeepsTheCurve)
{
    std::mt19937 random(6);
    std::uniform_real_distribution<double> coordinate(-50.0, 50.0);
    for (int order = 2; order <= 7; ++order) {
        QVector<QPointF> points;
        std::vector<double> flat;
        for (int i = 0; i < order; ++i) {
            points << QPointF(coordinate(random), coordinate(random));
            flat.push_back(points.last().x());
            flat.push_back(points.last().y());
        }
        const QVector<QPointF> elevated = ZDPath::BezierElevate(points);
        ASSERT_EQ(elevated.size(), order + 1);
        std::vector<double> flatElevated;
        for (const QPointF &p : elevated)
            flatElevated.push_back(p.x()), flatElevated.push_back(p.y());
        for (int i = 0; i <= 20; ++i) {
            const std::vector<double> a = bezierPoint(flat, 0, order, 2, i / 20.0);
            const std::vector<double> b = bezierPoint(flatElevated, 0, order + 1, 2, i / 20.0);
            EXPECT_NEAR(a[0], b[0], 1e-12);
            EXPECT_NEAR(a[1], b[1], 1e-12);
        }
    }
    // The middle points by the formula, in double: (n - i) / n and i / n.
    QVector<QPointF> cubic = {QPointF(0, 0), QPointF(3, 9), QPointF(6, 0), QPointF(9, 3)};
    const QVector<QPointF> quartic = ZDPath::BezierElevate(cubic);
    expectSamePoint(quartic[1], QPointF(3 * 3.0 / 4.0 + 0 * 1.0 / 4.0, 9 * 3.0 / 4.0));
    EXPECT_DOUBLE_EQ(quartic[2].x(), 6 * 2.0 / 4.0 + 3 * 2.0 / 4.0);
    EXPECT_DOUBLE_EQ(quartic[2].y(), 0 * 2.0 / 4.0 + 9 * 2.0 / 4.0);
    EXPECT_DOUBLE_EQ(quartic[3].x(), 9 * 1.0 / 4.0 + 6 * 3.0 / 4.0);
    EXPECT_DOUBLE_EQ(quartic[3].y(), 3 * 1.0 / 4.0);
}
