// The spline engine and the fitting statics under extreme input: NaN,
// infinite, huge (1e150) and tiny (1e-300) points and knots, empty and
// single-point lists, and counts at the ends of their types. The engine
// answers with its status codes, the class wrapper and the fitting statics
// with std::runtime_error holding the status message, and the fits of
// finite, well-spread points are finite.
#include <zgraphics/drawing.h>

#include "extreme_input.h"
#include "spline/spline_test_support.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <string>

using namespace extreme;
using splinetest::NetGuard;
using splinetest::SplineGuard;

namespace {

// The message of the runtime_error that f throws, or "no throw".
template <class F>
std::string thrownMessage(F f)
{
    try {
        f();
    } catch (const std::runtime_error &error) {
        return error.what();
    }
    return "no throw";
}

QVector<QPointF> wave(double scale)
{
    return {QPointF(0, 0), QPointF(1 * scale, 0.5 * scale), QPointF(2 * scale, 0),
            QPointF(3 * scale, 0.5 * scale), QPointF(4 * scale, 0)};
}

} // namespace

TEST(SplineExtremeInput, CountsBeyondTheirTypesGiveStatusCodes)
{
    const std::size_t most = std::numeric_limits<std::size_t>::max();
    SplineStatus status;
    SplineRecord *spline = reinterpret_cast<SplineRecord *>(1);
    // A control point count that wraps the knot count around: -7.
    EXPECT_EQ(createSpline(most, 2, 3, SplineClamped, &spline, &status), SplineKnotCountUnsupported);
    EXPECT_EQ(spline, nullptr);
    EXPECT_EQ(createSpline(4, 2, most, SplineClamped, &spline, &status), SplineKnotCountUnsupported);
    // A dimension whose block cannot be allocated: -1, nothing allocated.
    EXPECT_EQ(createSpline(4, most, 3, SplineClamped, &spline, &status), SplineOutOfMemory);
    EXPECT_EQ(spline, nullptr);
    EXPECT_EQ(createSpline(4, most / 4, 3, SplineClamped, &spline, &status), SplineOutOfMemory);
    EXPECT_EQ(spline, nullptr);
    // Dimension 0 first; degree not below the count.
    EXPECT_EQ(createSpline(4, 0, 3, SplineClamped, &spline, nullptr), SplineDimensionZero);
    EXPECT_EQ(createSpline(0, 2, 0, SplineClamped, &spline, nullptr), SplineDegreeTooHigh);
    // The class wrapper throws the same.
    EXPECT_EQ(thrownMessage([] { BSpline(4, 0, 3, SplineClamped); }), "unsupported dimension: 0");
    EXPECT_NE(thrownMessage([most] { BSpline(most, 2, 3, SplineClamped); }), "no throw");
}

TEST(SplineExtremeInput, ParametersOutsideTheDomainGiveMinusFour)
{
    SplineGuard guard;
    ASSERT_EQ(createSpline(5, 2, 3, SplineClamped, &guard.spline, nullptr), SplineSuccess);
    for (double u : {kNaN, kInf, -kInf, kHuge, -kHuge, 1.0 + 1e-8}) {
        std::size_t k = 77, s = 77;
        SplineStatus status;
        EXPECT_EQ(findKnotSpan(guard.spline, u, &k, &s, &status), SplineKnotOutOfDomain) << u;
        EXPECT_NE(std::string(status.message), "") << u;
        NetGuard net;
        EXPECT_EQ(evaluateNet(guard.spline, u, &net.net, nullptr), SplineKnotOutOfDomain) << u;
        EXPECT_EQ(net.net, nullptr) << u;
    }
    // A tiny u lies inside, in the first span.
    std::size_t k = 0, s = 0;
    EXPECT_EQ(findKnotSpan(guard.spline, kTiny, &k, &s, nullptr), SplineSuccess);
    EXPECT_EQ(k, 3u);
}

TEST(SplineExtremeInput, KnotVectorsOfBadValues)
{
    SplineGuard guard;
    ASSERT_EQ(createSpline(4, 2, 3, SplineClamped, &guard.spline, nullptr), SplineSuccess);
    // Decreasing by a huge step: -6. Equal beyond the order: -5.
    const double falling[] = {0, 0, 0, 0, kHuge, kHuge, kHuge, -kHuge};
    EXPECT_EQ(setKnots(guard.spline, falling, nullptr), SplineKnotsDecreasing);
    const double flat[] = {kTiny, kTiny, kTiny, kTiny, kTiny, 1, 1, 1};
    EXPECT_EQ(setKnots(guard.spline, flat, nullptr), SplineMultiplicityTooHigh);
    // NaN knots are not decreasing: taken as they are, after which the
    // domain test refuses every u.
    const double nan[] = {0, 0, 0, 0, kNaN, kNaN, kNaN, kNaN};
    EXPECT_EQ(setKnots(guard.spline, nan, nullptr), SplineSuccess);
    NetGuard net;
    EXPECT_EQ(evaluateNet(guard.spline, 0.5, &net.net, nullptr), SplineKnotOutOfDomain);
    // A huge domain is an ordinary one.
    const double wide[] = {0, 0, 0, 0, kHuge, kHuge, kHuge, kHuge};
    EXPECT_EQ(setKnots(guard.spline, wide, nullptr), SplineSuccess);
    NetGuard middle;
    EXPECT_EQ(evaluateNet(guard.spline, kHuge / 2, &middle.net, nullptr), SplineSuccess);
}

TEST(SplineExtremeInput, BadControlPointsPassThroughTheConversion)
{
    for (double bad : allExtremes()) {
        SplineGuard guard;
        ASSERT_EQ(createSpline(5, 2, 3, SplineClamped, &guard.spline, nullptr), SplineSuccess);
        const double points[] = {0, 0, bad, 1, 2, bad, 3, 1, 4, 0};
        EXPECT_EQ(setControlPoints(guard.spline, points, nullptr), SplineSuccess);
        SplineGuard beziers;
        ASSERT_EQ(toBeziers(guard.spline, &beziers.spline, nullptr), SplineSuccess) << bad;
        const double *out = splineControlPoints(beziers.spline);
        // The ends stay where they were, whatever the inner points hold.
        EXPECT_EQ(out[0], 0.0) << bad;
        const std::size_t last = splineLenControlPoints(beziers.spline) - 2;
        EXPECT_EQ(out[last], 4.0) << bad;
        if (std::isfinite(bad)) {
            for (std::size_t i = 0; i < splineLenControlPoints(beziers.spline); ++i)
                EXPECT_TRUE(std::isfinite(out[i])) << bad;
        }
    }
}

TEST(SplineExtremeInput, FittingTooFewPointsGivesAnEmptyList)
{
    for (int n = 0; n < 3; ++n) {
        QVector<QPointF> points;
        for (int i = 0; i < n; ++i)
            points.append(QPointF(kNaN, i));
        int degree = -5;
        EXPECT_TRUE(ZDPath::bezierFitting(points, degree).isEmpty()) << n;
        EXPECT_EQ(degree, -5) << n;
    }
}

TEST(SplineExtremeInput, FittingHugeAndSmallPointsIsFiniteAndKeepsTheEnds)
{
    // Knots closer than 1e-09 count as equal, so the points must lie
    // farther apart than that (1e-3 here).
    for (double scale : {kHuge, 1e-3, 1.0}) {
        const QVector<QPointF> points = wave(scale);
        int degree = 0;
        const QVector<QPointF> fit = ZDPath::bezierFitting(points, degree);
        EXPECT_EQ(degree, 3);
        ASSERT_EQ(fit.size(), 4 * (points.size() - 1)) << scale;
        for (const QPointF &p : fit)
            EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y())) << scale;
        EXPECT_EQ(fit.first(), points.first()) << scale;
        EXPECT_NEAR(fit.last().x(), points.last().x(), 1e-12 * scale) << scale;
        EXPECT_NEAR(fit.last().y(), points.last().y(), 1e-12 * scale) << scale;
    }
}

TEST(SplineExtremeInput, FittingPointsWithoutDistinctKnotsThrowsTheEngineError)
{
    // NaN and infinite chord lengths make knots outside the domain; points
    // at 1e-300 have knots within 1e-09 of each other, like coincident
    // points, whose repeated knots exceed the order.
    QVector<QPointF> nanPoints = wave(1);
    nanPoints[1].setX(kNaN);
    int degree = 0;
    EXPECT_NE(thrownMessage([&] { ZDPath::bezierFitting(nanPoints, degree); }).find("domain"),
              std::string::npos);
    QVector<QPointF> infPoints = wave(1);
    infPoints[1].setX(kInf);
    EXPECT_NE(thrownMessage([&] { ZDPath::bezierFitting(infPoints, degree); }).find("domain"),
              std::string::npos);
    const QVector<QPointF> tiny = wave(kTiny);
    EXPECT_NE(thrownMessage([&] { ZDPath::bezierFitting(tiny, degree); }).find("mult"),
              std::string::npos);
    const QVector<QPointF> same(4, QPointF(1, 1));
    EXPECT_NE(thrownMessage([&] { ZDPath::bezierFitting(same, degree); }).find("mult"),
              std::string::npos);
}

TEST(SplineExtremeInput, ConversionOfBadListsThrowsOrGivesTheCurve)
{
    const QVector<QPointF> four = {QPointF(0, 0), QPointF(10, 20), QPointF(30, 20), QPointF(40, 0)};
    int degree = 3;
    // Too few control points for a cubic: the engine's degree error.
    for (int n = 0; n < 3; ++n) {
        degree = 3;
        const QVector<QPointF> points(n, QPointF(1, 2));
        EXPECT_NE(thrownMessage([&] { ZDPath::bsplineToBezier(points, {}, degree); }).find("degree"),
                  std::string::npos)
            << n;
    }
    // A NaN knot lies outside the domain; an infinite one before 1 makes
    // the vector decrease.
    degree = 3;
    EXPECT_NE(thrownMessage([&] {
                  ZDPath::bsplineToBezier(four, {0, 0, 0, 0, kNaN, 1, 1, 1}, degree);
              }).find("domain"),
              std::string::npos);
    for (double bad : {kInf, -kInf}) {
        degree = 3;
        EXPECT_NE(thrownMessage([&] {
                      ZDPath::bsplineToBezier(four, {0, 0, 0, 0, bad, 1, 1, 1}, degree);
                  }).find("decreasing"),
                  std::string::npos)
            << bad;
    }
    // Degrees outside the int's sensible range: the knot count error.
    for (int bad : {-1, INT_MAX, INT_MIN}) {
        degree = bad;
        EXPECT_NE(thrownMessage([&] {
                      ZDPath::bsplineToBezier(four, {0, 0, 0, 0, 1, 1, 1, 1}, degree);
                  }).find("knots"),
                  std::string::npos)
            << bad;
    }
    // NaN control points and a huge domain pass through unchanged.
    QVector<QPointF> nanPoints = four;
    nanPoints[0] = QPointF(kNaN, 0);
    degree = 3;
    const QVector<QPointF> same = ZDPath::bsplineToBezier(nanPoints, {0, 0, 0, 0, 1, 1, 1, 1}, degree);
    ASSERT_EQ(same.size(), 4);
    EXPECT_TRUE(std::isnan(same.at(0).x()));
    EXPECT_EQ(same.at(3), QPointF(40, 0));
    const QVector<QPointF> wide =
            ZDPath::bsplineToBezier(four, {0, 0, 0, 0, kHuge, kHuge, kHuge, kHuge}, degree);
    ASSERT_EQ(wide.size(), 4);
    EXPECT_EQ(wide.at(1), QPointF(10, 20));
    // More than 50000 knots: an empty list, degree untouched.
    degree = 3;
    EXPECT_TRUE(ZDPath::bsplineToBezier(four, QVector<double>(50001, 0.0), degree).isEmpty());
    EXPECT_EQ(degree, 3);
}

TEST(SplineExtremeInput, ElevationOfEmptyAndSinglePointLists)
{
    QVector<QPointF> none;
    EXPECT_TRUE(ZDPath::BezierElevate(none).isEmpty());
    QVector<QPointF> one = {QPointF(kNaN, 1)};
    const QVector<QPointF> two = ZDPath::BezierElevate(one);
    ASSERT_EQ(two.size(), 2);
    EXPECT_TRUE(std::isnan(two.at(0).x()));
    EXPECT_EQ(two.at(1).y(), 1.0);
    QVector<QPointF> huge = {QPointF(0, 0), QPointF(kHuge, kHuge)};
    const QVector<QPointF> elevated = ZDPath::BezierElevate(huge);
    ASSERT_EQ(elevated.size(), 3);
    EXPECT_DOUBLE_EQ(elevated.at(1).x(), kHuge / 2);
}
