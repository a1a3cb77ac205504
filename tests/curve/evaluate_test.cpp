// Evaluation of cubics on the 8-value array: getValues, _evaluate and its
// named forms.
#include "curve/curve_test_util.h"

#include <gtest/gtest.h>

#include <cmath>

using curvetest::values;

namespace {

// A curve with distinct, unround control points.
const QVector<double> kCurve = values(0.1, 0.2, 30.7, 80.3, 70.9, -20.6, 100.3, 40.1);

void expectNaNPoint(const zgPoint &p)
{
    EXPECT_TRUE(std::isnan(p.x));
    EXPECT_TRUE(std::isnan(p.y));
}

} // namespace

// --- getValues ---------------------------------------------------------------

TEST(CurveGetValues, TakesPointsAndAbsoluteHandles)
{
    zgSegment s1(zgPoint(1, 2), zgPoint(-7, -7), zgPoint(3, 4));
    zgSegment s2(zgPoint(10, 20), zgPoint(-1, -2), zgPoint(9, 9));
    const QVector<double> v = zgCurve::getValues(&s1, &s2, nullptr);
    EXPECT_EQ(v, values(1, 2, 4, 6, 9, 18, 10, 20));
}

TEST(CurveGetValues, MatrixMapsHandlesAsAbsolutePoints)
{
    zgSegment s1(zgPoint(1, 2), zgPoint(), zgPoint(3, 4));
    zgSegment s2(zgPoint(10, 20), zgPoint(-1, -2), zgPoint());
    // x' = 2x + 10, y' = 3y + 20: the translation reaches the control points too.
    const zgMatrix m(2, 0, 0, 3, 10, 20);
    const QVector<double> v = zgCurve::getValues(&s1, &s2, &m);
    EXPECT_EQ(v, values(12, 26, 18, 38, 28, 74, 30, 80));
}

TEST(CurveGetValues, RotationMatrixMapsEachPoint)
{
    zgSegment s1(zgPoint(1, 0), zgPoint(), zgPoint(0, 1));
    zgSegment s2(zgPoint(0, 1), zgPoint(1, 0), zgPoint());
    // x' = -y, y' = x.
    const zgMatrix m(0, 1, -1, 0, 0, 0);
    const QVector<double> v = zgCurve::getValues(&s1, &s2, &m);
    const QVector<double> expected = values(0, 1, -1, 1, -1, 1, -1, 0);
    ASSERT_EQ(v.size(), 8);
    for (int i = 0; i < 8; ++i)
        EXPECT_NEAR(v[i], expected[i], 1e-15) << i;
}

TEST(CurveGetValues, NullSegmentsReadAsOrigin)
{
    zgSegment s2(zgPoint(5, 6), zgPoint(1, 1), zgPoint());
    EXPECT_EQ(zgCurve::getValues(nullptr, &s2, nullptr), values(0, 0, 0, 0, 6, 7, 5, 6));
    EXPECT_EQ(zgCurve::getValues(nullptr, nullptr, nullptr), QVector<double>(8, 0.0));
}

// --- _evaluate: time range ---------------------------------------------------

TEST(CurveEvaluate, TimeOutsideRangeIsNaNForEveryType)
{
    for (double t : { -0.0001, 1.0001 }) {
        for (int type = 0; type <= 3; ++type) {
            expectNaNPoint(zgCurve::_evaluate(kCurve, t, type, false));
            expectNaNPoint(zgCurve::_evaluate(kCurve, t, type, true));
        }
        expectNaNPoint(zgCurve::getPoint(kCurve, t));
        expectNaNPoint(zgCurve::getTangent(kCurve, t));
        expectNaNPoint(zgCurve::getNormal(kCurve, t));
        expectNaNPoint(zgCurve::getWeightedTangent(kCurve, t));
        expectNaNPoint(zgCurve::getWeightedNormal(kCurve, t));
        EXPECT_TRUE(std::isnan(zgCurve::getCurvature(kCurve, t)));
    }
}

TEST(CurveEvaluate, TimeRangeIsInclusive)
{
    for (double t : { 0.0, 1.0 }) {
        for (int type = 0; type <= 3; ++type) {
            const zgPoint p = zgCurve::_evaluate(kCurve, t, type, type != 0);
            EXPECT_FALSE(std::isnan(p.x)) << t << " " << type;
            EXPECT_FALSE(std::isnan(p.y)) << t << " " << type;
        }
    }
    // The smallest step outside is already NaN.
    expectNaNPoint(zgCurve::getPoint(kCurve, std::nextafter(1.0, 2.0)));
    expectNaNPoint(zgCurve::getPoint(kCurve, -1e-300));
}

// --- _evaluate: points -------------------------------------------------------

TEST(CurveEvaluate, EndPointsAreExactlyTheStoredPoints)
{
    // Unround values, where the polynomial at t = 1 would round differently.
    const QVector<double> v = values(0.1, 0.7, 0.3, 1.9, 2.3, 0.1, 0.7, 0.3);
    const zgPoint start = zgCurve::getPoint(v, 0.0);
    const zgPoint end = zgCurve::getPoint(v, 1.0);
    EXPECT_EQ(start.x, 0.1);
    EXPECT_EQ(start.y, 0.7);
    EXPECT_EQ(end.x, 0.7);
    EXPECT_EQ(end.y, 0.3);
}

TEST(CurveEvaluate, InteriorPointsMatchBernsteinForm)
{
    for (double t : { 1e-9, 0.1, 0.25, 0.5, 0.77, 0.999, 1.0 - 1e-9 }) {
        long double x, y;
        curvetest::bernstein(kCurve, t, x, y);
        const zgPoint p = zgCurve::getPoint(kCurve, t);
        EXPECT_NEAR(p.x, double(x), 1e-12) << t;
        EXPECT_NEAR(p.y, double(y), 1e-12) << t;
    }
}

TEST(CurveEvaluate, CoincidentPointsGiveThePointAndZeroDerivatives)
{
    const QVector<double> v = values(3, 4, 3, 4, 3, 4, 3, 4);
    for (double t : { 0.0, 0.5, 1.0 }) {
        const zgPoint p = zgCurve::getPoint(v, t);
        EXPECT_EQ(p.x, 3.0);
        EXPECT_EQ(p.y, 4.0);
        const zgPoint tangent = zgCurve::getTangent(v, t);
        EXPECT_EQ(tangent.x, 0.0);
        EXPECT_EQ(tangent.y, 0.0);
        const zgPoint normal = zgCurve::getNormal(v, t);
        EXPECT_EQ(normal.x, 0.0);
        EXPECT_EQ(normal.y, 0.0);
        EXPECT_EQ(zgCurve::getCurvature(v, t), 0.0);
    }
}

// --- _evaluate: handles counting as zero -------------------------------------

TEST(CurveEvaluate, HandleOf5em13CountsAsNone)
{
    const QVector<double> tiny = values(0, 0, 5e-13, 5e-13, 10, 5, 20, 0);
    const QVector<double> none = values(0, 0, 0, 0, 10, 5, 20, 0);
    const zgPoint weighted = zgCurve::getWeightedTangent(tiny, 0.0);
    EXPECT_EQ(weighted.x, 0.0);
    EXPECT_EQ(weighted.y, 0.0);
    for (double t : { 0.0, 0.3, 0.5, 1.0 }) {
        for (int type = 0; type <= 3; ++type) {
            for (bool normalized : { false, true }) {
                const zgPoint a = zgCurve::_evaluate(tiny, t, type, normalized);
                const zgPoint b = zgCurve::_evaluate(none, t, type, normalized);
                EXPECT_EQ(a.x, b.x) << t << " " << type;
                EXPECT_EQ(a.y, b.y) << t << " " << type;
            }
        }
    }
}

TEST(CurveEvaluate, HandleZeroBoundIsInclusiveAt1em12)
{
    // First handle exactly (1e-12, -1e-12): still no handle.
    const zgPoint atBound = zgCurve::getWeightedTangent(values(0, 0, 1e-12, -1e-12, 10, 5, 20, 0), 0.0);
    EXPECT_EQ(atBound.x, 0.0);
    EXPECT_EQ(atBound.y, 0.0);
    // 1.5e-12 is a handle: the derivative at the start is three times it.
    const zgPoint above = zgCurve::getWeightedTangent(values(0, 0, 1.5e-12, 0, 10, 5, 20, 0), 0.0);
    EXPECT_EQ(above.x, 3.0 * 1.5e-12);
    EXPECT_EQ(above.y, 0.0);
    // The same for the second handle, measured from the end.
    const zgPoint endAtBound = zgCurve::getWeightedTangent(values(20, 0, 10, 5, -1e-12, 1e-12, 0, 0), 1.0);
    EXPECT_EQ(endAtBound.x, 0.0);
    EXPECT_EQ(endAtBound.y, 0.0);
    const zgPoint endAbove = zgCurve::getWeightedTangent(values(20, 0, 10, 5, 0, -1.5e-12, 0, 0), 1.0);
    EXPECT_EQ(endAbove.x, 0.0);
    EXPECT_EQ(endAbove.y, 3.0 * 1.5e-12);
}

TEST(CurveEvaluate, SnappedHandleChangesTheInteriorPoint)
{
    // With the handle snapped the point at 0.5 is that of the curve without
    // it, bit for bit.
    const QVector<double> snapped = values(0, 0, 1e-12, 1e-12, 10, 5, 20, 0);
    const QVector<double> none = values(0, 0, 0, 0, 10, 5, 20, 0);
    EXPECT_EQ(zgCurve::getPoint(snapped, 0.5).x, zgCurve::getPoint(none, 0.5).x);
    EXPECT_EQ(zgCurve::getPoint(snapped, 0.5).y, zgCurve::getPoint(none, 0.5).y);
}

// --- _evaluate: derivative forms and the end fall-back -----------------------

TEST(CurveEvaluate, ZeroFirstHandleTangentFallsBackToControlDirection)
{
    const QVector<double> v = values(0, 0, 0, 0, 10, 5, 20, 0);
    const zgPoint weighted = zgCurve::getWeightedTangent(v, 0.0);
    EXPECT_EQ(weighted.x, 0.0);
    EXPECT_EQ(weighted.y, 0.0);
    const zgPoint weightedNormal = zgCurve::getWeightedNormal(v, 0.0);
    EXPECT_EQ(weightedNormal.x, 0.0);
    EXPECT_EQ(weightedNormal.y, 0.0);
    // Direction from control point 1 (the start) to control point 2: (10, 5).
    const double root5 = std::sqrt(5.0);
    const zgPoint tangent = zgCurve::getTangent(v, 0.0);
    EXPECT_NEAR(tangent.x, 2.0 / root5, 1e-15);
    EXPECT_NEAR(tangent.y, 1.0 / root5, 1e-15);
    const zgPoint normal = zgCurve::getNormal(v, 0.0);
    EXPECT_NEAR(normal.x, 1.0 / root5, 1e-15);
    EXPECT_NEAR(normal.y, -2.0 / root5, 1e-15);
    // 3.9e-07 is still the end: the same fall-back.
    const zgPoint nearStart = zgCurve::getTangent(v, 3.9e-07);
    EXPECT_EQ(nearStart.x, tangent.x);
    EXPECT_EQ(nearStart.y, tangent.y);
}

TEST(CurveEvaluate, ZeroFirstHandleAt4em07UsesThePolynomial)
{
    const QVector<double> v = values(0, 0, 0, 0, 10, 5, 20, 0);
    const double t = 4e-07;
    // c = 0, b = 3 (p2 - p1) - c = (30, 15), a = p3 - p0 - c - b = (-10, -15).
    const double dx = (3.0 * -10.0 * t + 2.0 * 30.0) * t + 0.0;
    const double dy = (3.0 * -15.0 * t + 2.0 * 15.0) * t + 0.0;
    const zgPoint weighted = zgCurve::getWeightedTangent(v, t);
    EXPECT_DOUBLE_EQ(weighted.x, dx);
    EXPECT_DOUBLE_EQ(weighted.y, dy);
    const double length = std::sqrt(dx * dx + dy * dy);
    const zgPoint tangent = zgCurve::getTangent(v, t);
    EXPECT_DOUBLE_EQ(tangent.x, dx / length);
    EXPECT_DOUBLE_EQ(tangent.y, dy / length);
}

TEST(CurveEvaluate, ZeroSecondHandleTangentFallsBackAtTheEnd)
{
    const QVector<double> v = values(0, 0, 10, 5, 20, 0, 20, 0);
    const zgPoint weighted = zgCurve::getWeightedTangent(v, 1.0);
    EXPECT_EQ(weighted.x, 0.0);
    EXPECT_EQ(weighted.y, 0.0);
    // From control point 1 (10, 5) to control point 2 (the end, 20, 0).
    const zgPoint tangent = zgCurve::getTangent(v, 1.0);
    EXPECT_NEAR(tangent.x, 2.0 / std::sqrt(5.0), 1e-15);
    EXPECT_NEAR(tangent.y, -1.0 / std::sqrt(5.0), 1e-15);
}

TEST(CurveEvaluate, ZeroSecondHandleFallBackStartsAbove0_9999996)
{
    const QVector<double> v = values(0, 0, 10, 5, 20, 0, 20, 0);
    const zgPoint atEnd = zgCurve::getTangent(v, 1.0);
    // 0.9999997 is the end: derivative (0, 0), so the same fall-back.
    const zgPoint above = zgCurve::getTangent(v, 0.9999997);
    EXPECT_EQ(above.x, atEnd.x);
    EXPECT_EQ(above.y, atEnd.y);
    EXPECT_EQ(zgCurve::getWeightedTangent(v, 0.9999997).x, 0.0);
    // 0.9999996 is still the polynomial, whose tiny derivative is normalised.
    const double t = 0.9999996;
    // c = (30, 15), b = 3 (p2 - p1) - c = (0, -30), a = p3 - p0 - c - b = (-10, 15).
    const double dx = (3.0 * -10.0 * t + 2.0 * 0.0) * t + 30.0;
    const double dy = (3.0 * 15.0 * t + 2.0 * -30.0) * t + 15.0;
    const zgPoint weighted = zgCurve::getWeightedTangent(v, t);
    EXPECT_DOUBLE_EQ(weighted.x, dx);
    EXPECT_DOUBLE_EQ(weighted.y, dy);
    const zgPoint tangent = zgCurve::getTangent(v, t);
    const double length = std::sqrt(dx * dx + dy * dy);
    EXPECT_NEAR(tangent.x, dx / length, 1e-6);
    EXPECT_NEAR(tangent.y, dy / length, 1e-6);
}

TEST(CurveEvaluate, NoFallBackInsideTheCurve)
{
    // A cusp: the derivative is exactly zero at t = 0.5.
    const QVector<double> cusp = values(0, 0, 1, 1, 0, 1, 1, 0);
    const zgPoint weighted = zgCurve::getWeightedTangent(cusp, 0.5);
    EXPECT_EQ(weighted.x, 0.0);
    EXPECT_EQ(weighted.y, 0.0);
    const zgPoint tangent = zgCurve::getTangent(cusp, 0.5);
    EXPECT_EQ(tangent.x, 0.0);
    EXPECT_EQ(tangent.y, 0.0);
    EXPECT_EQ(zgCurve::getCurvature(cusp, 0.5), 0.0);
}

TEST(CurveEvaluate, DerivativeSwitchesToEndFormAbove0_9999996)
{
    const QVector<double> v = kCurve;
    const double cx = 3.0 * (v[2] - v[0]);
    const double bx = 3.0 * (v[4] - v[2]) - cx;
    const double ax = v[6] - v[0] - cx - bx;
    const double cy = 3.0 * (v[3] - v[1]);
    const double by = 3.0 * (v[5] - v[3]) - cy;
    const double ay = v[7] - v[1] - cy - by;

    // At 0.9999996 the polynomial still applies.
    const double t = 0.9999996;
    const zgPoint at = zgCurve::getWeightedTangent(v, t);
    EXPECT_DOUBLE_EQ(at.x, (3.0 * ax * t + 2.0 * bx) * t + cx);
    EXPECT_DOUBLE_EQ(at.y, (3.0 * ay * t + 2.0 * by) * t + cy);

    // At 0.9999997 it is 3 (p3 - p2), exactly, which is not the polynomial.
    const double t2 = 0.9999997;
    const zgPoint above = zgCurve::getWeightedTangent(v, t2);
    EXPECT_EQ(above.x, 3.0 * (v[6] - v[4]));
    EXPECT_EQ(above.y, 3.0 * (v[7] - v[5]));
    EXPECT_GT(std::fabs(above.x - ((3.0 * ax * t2 + 2.0 * bx) * t2 + cx)), 1e-6);
}

TEST(CurveEvaluate, DerivativeSwitchesToStartFormBelow4em07)
{
    const QVector<double> v = kCurve;
    const double cx = 3.0 * (v[2] - v[0]);
    const double bx = 3.0 * (v[4] - v[2]) - cx;
    const double ax = v[6] - v[0] - cx - bx;
    const double cy = 3.0 * (v[3] - v[1]);
    const double by = 3.0 * (v[5] - v[3]) - cy;
    const double ay = v[7] - v[1] - cy - by;

    const zgPoint below = zgCurve::getWeightedTangent(v, 3.9e-07);
    EXPECT_EQ(below.x, cx);
    EXPECT_EQ(below.y, cy);
    const double t = 4e-07;
    const zgPoint at = zgCurve::getWeightedTangent(v, t);
    EXPECT_DOUBLE_EQ(at.x, (3.0 * ax * t + 2.0 * bx) * t + cx);
    EXPECT_DOUBLE_EQ(at.y, (3.0 * ay * t + 2.0 * by) * t + cy);
    EXPECT_NE(at.x, cx);
}

TEST(CurveEvaluate, NamedFormsAgreeWithTheDerivative)
{
    for (double t : { 0.0, 0.2, 0.5, 0.9, 1.0 }) {
        long double dx, dy;
        curvetest::bernsteinDerivative(kCurve, t, dx, dy);
        const double length = double(std::sqrt(dx * dx + dy * dy));
        const zgPoint weighted = zgCurve::getWeightedTangent(kCurve, t);
        EXPECT_NEAR(weighted.x, double(dx), 1e-10) << t;
        EXPECT_NEAR(weighted.y, double(dy), 1e-10) << t;
        const zgPoint tangent = zgCurve::getTangent(kCurve, t);
        EXPECT_NEAR(tangent.x, double(dx) / length, 1e-13) << t;
        EXPECT_NEAR(tangent.y, double(dy) / length, 1e-13) << t;
        // The normal is the tangent turned to (y, -x).
        const zgPoint normal = zgCurve::getNormal(kCurve, t);
        EXPECT_EQ(normal.x, tangent.y);
        EXPECT_EQ(normal.y, -tangent.x);
        const zgPoint weightedNormal = zgCurve::getWeightedNormal(kCurve, t);
        EXPECT_EQ(weightedNormal.x, weighted.y);
        EXPECT_EQ(weightedNormal.y, -weighted.x);
    }
}

TEST(CurveEvaluate, WeightedTangentAtEndsIsThreeTimesTheHandle)
{
    const zgPoint start = zgCurve::getWeightedTangent(kCurve, 0.0);
    EXPECT_EQ(start.x, 3.0 * (kCurve[2] - kCurve[0]));
    EXPECT_EQ(start.y, 3.0 * (kCurve[3] - kCurve[1]));
    const zgPoint end = zgCurve::getWeightedTangent(kCurve, 1.0);
    EXPECT_EQ(end.x, 3.0 * (kCurve[6] - kCurve[4]));
    EXPECT_EQ(end.y, 3.0 * (kCurve[7] - kCurve[5]));
}

TEST(CurveEvaluate, OtherTypesReturnTheDerivative)
{
    const zgPoint type1 = zgCurve::_evaluate(kCurve, 0.3, 1, false);
    const zgPoint type7 = zgCurve::_evaluate(kCurve, 0.3, 7, false);
    EXPECT_EQ(type1.x, type7.x);
    EXPECT_EQ(type1.y, type7.y);
    const zgPoint type1n = zgCurve::_evaluate(kCurve, 0.3, 1, true);
    const zgPoint typeMinus = zgCurve::_evaluate(kCurve, 0.3, -1, true);
    EXPECT_EQ(type1n.x, typeMinus.x);
    EXPECT_EQ(type1n.y, typeMinus.y);
}

// --- curvature ---------------------------------------------------------------

TEST(CurveEvaluate, CurvatureMatchesIndependentFormula)
{
    for (double t : { 0.0, 0.1, 0.35, 0.5, 0.8, 1.0 }) {
        long double dx, dy, ddx, ddy;
        curvetest::bernsteinDerivative(kCurve, t, dx, dy);
        curvetest::bernsteinSecond(kCurve, t, ddx, ddy);
        const long double expected = (dx * ddy - dy * ddx) / std::pow(dx * dx + dy * dy, 1.5L);
        const double k = zgCurve::getCurvature(kCurve, t);
        EXPECT_NEAR(k, double(expected), 1e-12 * std::fabs(double(expected)) + 1e-15) << t;
        EXPECT_EQ(zgCurve::_evaluate(kCurve, t, 3, false).y, 0.0);
    }
}

TEST(CurveEvaluate, CurvatureIsSigned)
{
    // A quarter circle of radius 10, counter-clockwise in a y-up picture.
    const double k = 0.5522847498307936 * 10.0;
    const QVector<double> arc = values(10, 0, 10, k, k, 10, 0, 10);
    const QVector<double> reversed = values(0, 10, k, 10, 10, k, 10, 0);
    // The cubic's curvature strays from the circle's 0.1 by up to about 2.2%
    // (at the ends), so 3% is allowed; the sign is the point of the test.
    for (double t : { 0.0, 0.25, 0.5, 0.75, 1.0 }) {
        EXPECT_NEAR(zgCurve::getCurvature(arc, t), 0.1, 0.1 * 3e-2) << t;
        EXPECT_NEAR(zgCurve::getCurvature(reversed, t), -0.1, 0.1 * 3e-2) << t;
    }
}

TEST(CurveEvaluate, NormalizedCurvatureUsesTheUnitDerivative)
{
    // With normalized set the denominator is 1 and the numerator takes the
    // unit tangent in place of the derivative.
    const QVector<double> v = kCurve;
    const double t = 0.4;
    const zgPoint unit = zgCurve::getTangent(v, t);
    const double cx = 3.0 * (v[2] - v[0]);
    const double bx = 3.0 * (v[4] - v[2]) - cx;
    const double ax = v[6] - v[0] - cx - bx;
    const double cy = 3.0 * (v[3] - v[1]);
    const double by = 3.0 * (v[5] - v[3]) - cy;
    const double ay = v[7] - v[1] - cy - by;
    const double expected = unit.x * (6.0 * ay * t + 2.0 * by) - unit.y * (6.0 * ax * t + 2.0 * bx);
    const zgPoint k = zgCurve::_evaluate(v, t, 3, true);
    EXPECT_NEAR(k.x, expected, 1e-12 * std::fabs(expected));
    EXPECT_EQ(k.y, 0.0);
}

TEST(CurveEvaluate, StraightLineHasZeroCurvature)
{
    const QVector<double> line = values(0, 0, 10, 10, 20, 20, 30, 30);
    for (double t : { 0.0, 0.5, 1.0 })
        EXPECT_NEAR(zgCurve::getCurvature(line, t), 0.0, 1e-15);
}

// --- bad input ---------------------------------------------------------------

TEST(CurveEvaluate, ShortArrayGivesNaNInsteadOfReadingPastItsEnd)
{
    const QVector<double> shortValues = { 1.0, 2.0, 3.0 };
    expectNaNPoint(zgCurve::getPoint(shortValues, 0.5));
    expectNaNPoint(zgCurve::getTangent(shortValues, 0.5));
    EXPECT_TRUE(std::isnan(zgCurve::getCurvature(QVector<double>(), 0.5)));
    EXPECT_EQ(zgCurve::subdivide(shortValues, 0.5).size(), 2);
    // The start is known, the missing points never widen the box.
    const zgRect r = zgCurve::getBounds(shortValues);
    EXPECT_EQ(r.x, 1.0);
    EXPECT_EQ(r.y, 2.0);
}
