// The curve statics on the 8-value array under extreme input: NaN,
// infinite, huge (1e150) and tiny (1e-300) values and times, offsets and
// points. Each asserts the failure value (a NaN point outside 0 to 1, -100.0
// for a time not found) or a finite result for finite input.
#include <zgraphics/model.h>

#include "extreme_input.h"

#include <gtest/gtest.h>

using namespace extreme;

namespace {

QVector<double> arch(double scale)
{
    return {0, 0, 30 * scale, 60 * scale, 70 * scale, 60 * scale, 100 * scale, 0};
}

QVector<double> withBad(int k, double bad)
{
    QVector<double> v = arch(1);
    v[k] = bad;
    return v;
}

} // namespace

TEST(CurveExtremeInput, EvaluationOutsideZeroToOneIsANaNPoint)
{
    const QVector<double> v = arch(1);
    for (double t : {kNaN, kInf, -kInf, kHuge, -kHuge, -kTiny, 1.0 + 1e-12}) {
        EXPECT_TRUE(nanPoint(zgCurve::getPoint(v, t))) << t;
        EXPECT_TRUE(nanPoint(zgCurve::getTangent(v, t))) << t;
        EXPECT_TRUE(nanPoint(zgCurve::getNormal(v, t))) << t;
        EXPECT_TRUE(nanPoint(zgCurve::getWeightedTangent(v, t))) << t;
        EXPECT_TRUE(nanPoint(zgCurve::getWeightedNormal(v, t))) << t;
        EXPECT_TRUE(std::isnan(zgCurve::getCurvature(v, t))) << t;
    }
    // A tiny time is inside: the start, with the start's tangent.
    const zgPoint start = zgCurve::getPoint(v, kTiny);
    EXPECT_NEAR(start.x, 0.0, 1e-12);
    const zgPoint tangent = zgCurve::getTangent(v, kTiny);
    EXPECT_NEAR(tangent.x, 30 / std::hypot(30.0, 60.0), 1e-9);
}

TEST(CurveExtremeInput, EvaluationOfHugeAndTinyCurves)
{
    for (double scale : {kHuge, 1e-10}) {
        const QVector<double> v = arch(scale);
        const zgPoint middle = zgCurve::getPoint(v, 0.5);
        EXPECT_DOUBLE_EQ(middle.x, 50 * scale) << scale;
        EXPECT_DOUBLE_EQ(middle.y, 45 * scale) << scale;
        const zgPoint tangent = zgCurve::getTangent(v, 0.5);
        EXPECT_TRUE(finitePoint(tangent)) << scale;
        EXPECT_NEAR(std::hypot(tangent.x, tangent.y), 1.0, 1e-12) << scale;
    }
    // Handles within 1e-12 are no handles: at 1e-150 and 1e-300 both are
    // snapped onto their ends and the curve is the straight chord.
    for (double scale : {1e-150, kTiny}) {
        const zgPoint middle = zgCurve::getPoint(arch(scale), 0.5);
        EXPECT_DOUBLE_EQ(middle.x, 50 * scale) << scale;
        EXPECT_EQ(middle.y, 0.0) << scale;
    }
}

TEST(CurveExtremeInput, EvaluationOfNonFiniteValuesDoesNotStop)
{
    for (double bad : nonFinite()) {
        for (int k = 0; k < 8; ++k) {
            const QVector<double> v = withBad(k, bad);
            zgCurve::getPoint(v, 0.5);
            zgCurve::getTangent(v, 0.5);
            zgCurve::getCurvature(v, 0.5);
            const QVector<QVector<double>> halves = zgCurve::subdivide(v, 0.5);
            ASSERT_EQ(halves.size(), 2);
            EXPECT_EQ(halves.at(0).size(), 8);
            EXPECT_EQ(halves.at(1).size(), 8);
            EXPECT_EQ(zgCurve::getPart(v, 0.25, 0.75).size(), 8);
            zgCurve::isStraight(v);
            zgCurve::isLinear(v);
            zgCurve::hasHandles(v);
            zgCurve::isFlatEnough(v, 0.5);
            zgCurve::getArea(v);
        }
    }
}

TEST(CurveExtremeInput, SubdivisionAtBadTimes)
{
    const QVector<double> v = arch(1);
    for (double t : allExtremes()) {
        const QVector<QVector<double>> halves = zgCurve::subdivide(v, t);
        ASSERT_EQ(halves.size(), 2) << t;
        EXPECT_EQ(halves.at(0).size(), 8);
        EXPECT_EQ(halves.at(1).size(), 8);
        // The outer ends stay the curve's own.
        EXPECT_EQ(halves.at(0).at(0), 0.0) << t;
        EXPECT_EQ(halves.at(1).at(6), 100.0) << t;
    }
}

TEST(CurveExtremeInput, LengthsOfBadCurvesAndRanges)
{
    EXPECT_NEAR(zgCurve::getLength(arch(kHuge), 0, 1) / kHuge,
                zgCurve::getLength(arch(1), 0, 1) / 1.0, 1e-12);
    EXPECT_TRUE(std::isnan(zgCurve::getLength(withBad(2, kNaN), 0, 1)));
    // Quadrature orders stay within 2 to 16 for every range.
    for (double bad : allExtremes()) {
        const int iterations = zgCurve::getIterations(0.0, bad);
        EXPECT_GE(iterations, 2) << bad;
        EXPECT_LE(iterations, 16) << bad;
        const int back = zgCurve::getIterations(bad, bad);
        EXPECT_GE(back, 2) << bad;
        EXPECT_LE(back, 16) << bad;
    }
    // A range from 0 to 0 has no length.
    EXPECT_EQ(zgCurve::getLength(arch(1), 0, 0), 0.0);
}

TEST(CurveExtremeInput, TimesNotFoundAreMinusOneHundred)
{
    const QVector<double> v = arch(1);
    const double length = zgCurve::getLength(v, 0, 1);
    for (double offset : {kNaN, kInf, -kInf, kHuge, -kHuge, length + 1e-3}) {
        EXPECT_EQ(zgCurve::getTimeAt(v, offset, -100.0), -100.0) << offset;
        EXPECT_EQ(zgCurve::getTimeAt(v, offset, 0.0), -100.0) << offset;
    }
    for (double bad : nonFinite()) {
        EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(bad, 0)), -100.0) << bad;
        EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(bad, bad)), -100.0) << bad;
    }
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(kHuge, 0)), -100.0);
    // Tiny offsets and points are ordinary.
    EXPECT_NEAR(zgCurve::getTimeAt(v, kTiny, 0.0), 0.0, 1e-12);
    EXPECT_NEAR(zgCurve::getTimeOf(v, zgPoint(kTiny, 0)), 0.0, 1e-9);
    // A NaN start: the time is not found rather than made up.
    const double fromNaN = zgCurve::getTimeAt(v, 10.0, kNaN);
    EXPECT_TRUE(fromNaN == -100.0 || std::isnan(fromNaN) || (fromNaN >= 0.0 && fromNaN <= 1.0));
}

TEST(CurveExtremeInput, NearestTimesStayOnTheCurve)
{
    const QVector<double> v = arch(1);
    for (double bad : allExtremes()) {
        for (const zgPoint &p : {zgPoint(bad, 0), zgPoint(0, bad), zgPoint(bad, bad)}) {
            const double t = zgCurve::getNearestTime(v, p);
            if (finitePoint(p)) {
                EXPECT_GE(t, 0.0) << bad;
                EXPECT_LE(t, 1.0) << bad;
            }
        }
    }
    EXPECT_EQ(zgCurve::getNearestTime(v, zgPoint(-1e10, 0)), 0.0);
    EXPECT_EQ(zgCurve::getNearestTime(v, zgPoint(1e10, 0)), 1.0);
}

TEST(CurveExtremeInput, CubicRootsOfBadValues)
{
    const QVector<double> v = arch(1);
    QVector<double> roots;
    for (double val : {kNaN, kInf, -kInf, kHuge, -kHuge}) {
        roots.clear();
        EXPECT_EQ(zgCurve::solveCubic(v, 0, val, roots, 0.0, 1.0), 0) << val;
        EXPECT_EQ(zgCurve::solveCubic(v, 1, val, roots, 0.0, 1.0), 0) << val;
    }
    // Huge curves: the crossing of x = 50 scale at t = 0.5.
    for (double scale : {kHuge, 1e-150}) {
        roots.clear();
        ASSERT_EQ(zgCurve::solveCubic(arch(scale), 0, 50 * scale, roots, 0.0, 1.0), 1) << scale;
        EXPECT_NEAR(roots.at(0), 0.5, 1e-9) << scale;
    }
    // NaN bounds of the range.
    roots.clear();
    const int found = zgCurve::solveCubic(v, 0, 50, roots, kNaN, kNaN);
    EXPECT_GE(found, 0);
    for (double bad : nonFinite()) {
        for (int k = 0; k < 8; ++k) {
            roots.clear();
            const int n = zgCurve::solveCubic(withBad(k, bad), 0, 50, roots, 0.0, 1.0);
            EXPECT_GE(n, 0);
            EXPECT_LE(n, 3);
        }
    }
}

TEST(CurveExtremeInput, AreasOfHugeAndTinyCurves)
{
    const double unit = zgCurve::getArea(arch(1));
    EXPECT_NEAR(zgCurve::getArea(arch(1e100)) / 1e200, unit, 1e-9 * std::fabs(unit));
    EXPECT_NEAR(zgCurve::getArea(arch(1e-100)) / 1e-200, unit, 1e-9 * std::fabs(unit));
    EXPECT_TRUE(std::isnan(zgCurve::getArea(withBad(3, kNaN))));
}
