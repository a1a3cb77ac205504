#include "spline/spline_test_support.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>

using namespace splinetest;

namespace {

// A status holding something else, to see that each call writes it.
SplineStatus staleStatus()
{
    SplineStatus status;
    status.code = 12345;
    std::strcpy(status.message, "stale");
    return status;
}

void expectStatus(const SplineStatus &status, int code, const char *message)
{
    EXPECT_EQ(status.code, code);
    EXPECT_STREQ(status.message, message);
}

// A spline with the given knots and control points i * 1.5 - i * i * 0.25,
// coordinate c offset by 10 * c.
SplineRecord *splineWith(std::size_t numControlPoints, std::size_t dimension, std::size_t degree,
                         const std::vector<double> &knots)
{
    SplineRecord *spline = nullptr;
    EXPECT_EQ(createSpline(numControlPoints, dimension, degree, SplineClamped, &spline, nullptr), SplineSuccess);
    std::vector<double> points(numControlPoints * dimension);
    for (std::size_t i = 0; i < numControlPoints; ++i)
        for (std::size_t c = 0; c < dimension; ++c)
            points[i * dimension + c] = i * 1.5 - i * i * 0.25 + 10.0 * c;
    EXPECT_EQ(setControlPoints(spline, points.data(), nullptr), SplineSuccess);
    if (!knots.empty()) {
        EXPECT_EQ(setKnots(spline, knots.data(), nullptr), SplineSuccess);
    }
    return spline;
}

// A spline of random control points in [-10, 10] and random knots: opened
// (no multiplicity at the ends) or clamped, with some repeated inner values.
SplineRecord *randomSpline(std::mt19937 &random, std::size_t numControlPoints, std::size_t dimension,
                           std::size_t degree, bool clamped)
{
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    std::uniform_real_distribution<double> gap(0.05, 1.0);
    std::uniform_int_distribution<int> repeat(0, 5);
    const std::size_t order = degree + 1;
    const std::size_t numKnots = numControlPoints + order;
    std::vector<double> knots;
    double value = 0.0;
    while (knots.size() < numKnots) {
        const bool atEnd = clamped && (knots.empty() || knots.size() >= numKnots - order);
        std::size_t copies = atEnd ? order : (repeat(random) == 0 ? 2 : 1);
        copies = std::min(copies, numKnots - knots.size());
        for (std::size_t c = 0; c < copies; ++c)
            knots.push_back(value);
        value += gap(random);
    }
    SplineRecord *spline = splineWith(numControlPoints, dimension, degree, {});
    std::vector<double> points(numControlPoints * dimension);
    for (double &p : points)
        p = coordinate(random);
    EXPECT_EQ(setControlPoints(spline, points.data(), nullptr), SplineSuccess);
    EXPECT_EQ(setKnots(spline, knots.data(), nullptr), SplineSuccess);
    return spline;
}

double domainStart(const SplineRecord *spline)
{
    return splineKnots(spline)[splineDegree(spline)];
}

double domainEnd(const SplineRecord *spline)
{
    return splineKnots(spline)[splineNumKnots(spline) - splineOrder(spline)];
}

// The largest coordinate difference between the two splines' textbook
// evaluations at count parameters over the first one's domain.
double curveDifference(const SplineRecord *a, const SplineRecord *b, int count)
{
    const int dim = int(splineDimension(a));
    double worst = 0.0;
    for (int i = 0; i <= count; ++i) {
        const double t = domainStart(a) + (domainEnd(a) - domainStart(a)) * i / count;
        const std::vector<double> pa = deBoorPoint(knotsOf(a), controlPointsOf(a), int(splineDegree(a)), dim, t);
        const std::vector<double> pb = deBoorPoint(knotsOf(b), controlPointsOf(b), int(splineDegree(b)), dim, t);
        for (int c = 0; c < dim; ++c)
            worst = std::max(worst, std::fabs(pa[c] - pb[c]));
    }
    return worst;
}

} // namespace

// --- creation and knot generation ---------------------------------------------

TEST(SplineCreate, ClampedKnotsAndAccessors)
{
    SplineGuard g;
    SplineStatus status = staleStatus();
    ASSERT_EQ(createSpline(7, 2, 3, SplineClamped, &g.spline, &status), SplineSuccess);
    expectStatus(status, 0, "");
    EXPECT_EQ(splineDegree(g.spline), 3u);
    EXPECT_EQ(splineOrder(g.spline), 4u);
    EXPECT_EQ(splineDimension(g.spline), 2u);
    EXPECT_EQ(splineNumControlPoints(g.spline), 7u);
    EXPECT_EQ(splineNumKnots(g.spline), 11u);
    EXPECT_EQ(splineLenControlPoints(g.spline), 14u);
    EXPECT_EQ(knotsOf(g.spline), (std::vector<double>{0, 0, 0, 0, 0.25, 0.5, 0.75, 1, 1, 1, 1}));
    EXPECT_EQ(controlPointsOf(g.spline), std::vector<double>(14, 0.0));
}

TEST(SplineCreate, BlockLayoutIsHeaderThenPointsThenKnots)
{
    static_assert(sizeof(SplineRecord) == 32, "four 64-bit counts");
    static_assert(sizeof(DeBoorNet) == 48, "u and five 64-bit counts");
    SplineGuard g;
    ASSERT_EQ(createSpline(5, 3, 2, SplineClamped, &g.spline, nullptr), SplineSuccess);
    const auto *base = reinterpret_cast<const char *>(g.spline);
    EXPECT_EQ(reinterpret_cast<const char *>(splineControlPoints(g.spline)), base + 32);
    EXPECT_EQ(reinterpret_cast<const char *>(splineKnots(g.spline)), base + 32 + 15 * sizeof(double));
}

TEST(SplineCreate, ClampedStepsAreSinglePrecision)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(8, 1, 2, SplineClamped, &g.spline, nullptr), SplineSuccess);
    // 11 knots: 3 zeros, 5 inner values, 3 ones; step 1 / 6 in float.
    const double step = static_cast<double>(1.0f / 6.0f);
    ASSERT_NE(step, 1.0 / 6.0);
    const std::vector<double> knots = knotsOf(g.spline);
    EXPECT_EQ(knots, (std::vector<double>{0, 0, 0, step, 2 * step, 3 * step, 4 * step, 5 * step, 1, 1, 1}));
}

TEST(SplineCreate, OpenedKnotsEndExactlyAtOne)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(4, 1, 2, SplineOpened, &g.spline, nullptr), SplineSuccess);
    const double step = static_cast<double>(1.0f / 6.0f);
    const std::vector<double> knots = knotsOf(g.spline);
    ASSERT_EQ(knots.size(), 7u);
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(knots[i], i * step) << i;
    EXPECT_NE(6 * step, 1.0);
    EXPECT_EQ(knots[6], 1.0);
}

TEST(SplineCreate, BezierKnotsStandInGroupsOfOrder)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(9, 1, 2, SplineBeziers, &g.spline, nullptr), SplineSuccess);
    const double step = static_cast<double>(1.0f / 3.0f);
    EXPECT_EQ(knotsOf(g.spline), (std::vector<double>{0, 0, 0, step, step, step, 2 * step, 2 * step, 2 * step,
                                                      1, 1, 1}));
}

TEST(SplineCreate, BezierKnotsNeedAMultipleOfTheOrder)
{
    SplineRecord *spline = reinterpret_cast<SplineRecord *>(&spline); // not null: must be cleared
    SplineStatus status = staleStatus();
    EXPECT_EQ(createSpline(11, 1, 2, SplineBeziers, &spline, &status), SplineKnotCountUnsupported);
    expectStatus(status, -7, "num(knots) (14) % order (3) != 0");
    EXPECT_EQ(spline, nullptr);
}

TEST(SplineCreate, OtherKnotTypesLeaveTheKnots)
{
    SplineGuard g;
    SplineStatus status = staleStatus();
    ASSERT_EQ(createSpline(5, 1, 2, 7, &g.spline, &status), SplineSuccess);
    expectStatus(status, 0, "");
    EXPECT_EQ(knotsOf(g.spline), std::vector<double>(8, 0.0));

    const std::vector<double> mine = {0, 0, 0, 0.2, 0.7, 1, 1, 1};
    ASSERT_EQ(setKnots(g.spline, mine.data(), nullptr), SplineSuccess);
    EXPECT_EQ(generateKnots(g.spline, -1, &status), SplineSuccess);
    EXPECT_EQ(knotsOf(g.spline), mine);
    // A failed Bezier generation leaves them too: 8 % 3 != 0.
    EXPECT_EQ(generateKnots(g.spline, SplineBeziers, &status), SplineKnotCountUnsupported);
    expectStatus(status, -7, "num(knots) (8) % order (3) != 0");
    EXPECT_EQ(knotsOf(g.spline), mine);
    EXPECT_EQ(generateKnots(g.spline, SplineOpened, &status), SplineSuccess);
    EXPECT_EQ(knotsOf(g.spline)[7], 1.0);
    EXPECT_EQ(knotsOf(g.spline)[1], static_cast<double>(1.0f / 7.0f));
}

TEST(SplineCreate, TenThousandKnotsAreTheLimit)
{
    SplineGuard g;
    SplineStatus status = staleStatus();
    ASSERT_EQ(createSpline(9996, 1, 3, SplineClamped, &g.spline, &status), SplineSuccess);
    EXPECT_EQ(splineNumKnots(g.spline), 10000u);
    EXPECT_LT(knotsOf(g.spline)[9995], 1.0);
    EXPECT_EQ(knotsOf(g.spline)[9996], 1.0);

    SplineRecord *tooMany = nullptr;
    EXPECT_EQ(createSpline(9997, 1, 3, SplineClamped, &tooMany, &status), SplineKnotCountUnsupported);
    expectStatus(status, -7, "unsupported number of knots: 10001 > 10000");
    EXPECT_EQ(tooMany, nullptr);
}

TEST(SplineCreate, StatusCodesInTheirOrder)
{
    SplineRecord *spline = nullptr;
    SplineStatus status = staleStatus();
    // Dimension first, even with too many knots and too high a degree.
    EXPECT_EQ(createSpline(5, 0, 20000, SplineClamped, &spline, &status), SplineDimensionZero);
    expectStatus(status, -2, "unsupported dimension: 0");
    // Then the knot count, even with too high a degree.
    EXPECT_EQ(createSpline(5, 1, 10000, SplineClamped, &spline, &status), SplineKnotCountUnsupported);
    expectStatus(status, -7, "unsupported number of knots: 10006 > 10000");
    // A degree equal to the number of control points.
    EXPECT_EQ(createSpline(4, 2, 4, SplineClamped, &spline, &status), SplineDegreeTooHigh);
    expectStatus(status, -3, "degree (4) >= num(control_points) (4)");
    EXPECT_EQ(createSpline(4, 2, 7, SplineClamped, &spline, &status), SplineDegreeTooHigh);
    expectStatus(status, -3, "degree (7) >= num(control_points) (4)");
    EXPECT_EQ(spline, nullptr);
    // Without a status the code still comes back.
    EXPECT_EQ(createSpline(4, 2, 4, SplineClamped, &spline, nullptr), SplineDegreeTooHigh);
}

TEST(SplineCreate, SizesBeyondMemoryGiveOutOfMemory)
{
    SplineRecord *spline = nullptr;
    SplineStatus status = staleStatus();
    const std::size_t huge = std::numeric_limits<std::size_t>::max() / 4;
    EXPECT_EQ(createSpline(5, huge, 3, SplineClamped, &spline, &status), SplineOutOfMemory);
    expectStatus(status, -1, "out of memory");
    EXPECT_EQ(spline, nullptr);
}

TEST(SplineCreate, DegreeZeroHasStepKnots)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(3, 1, 0, SplineClamped, &g.spline, nullptr), SplineSuccess);
    const double step = static_cast<double>(1.0f / 3.0f);
    EXPECT_EQ(knotsOf(g.spline), (std::vector<double>{0, step, 2 * step, 1}));
}

// --- control points and knots ----------------------------------------------------

TEST(SplineValues, ControlPointsCopyInAndOut)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(3, 2, 1, SplineClamped, &g.spline, nullptr), SplineSuccess);
    const double values[] = {1, 2, 3, 4, 5, 6};
    SplineStatus status = staleStatus();
    ASSERT_EQ(setControlPoints(g.spline, values, &status), SplineSuccess);
    expectStatus(status, 0, "");
    double *copy = nullptr;
    status = staleStatus();
    ASSERT_EQ(getControlPoints(g.spline, &copy, &status), SplineSuccess);
    expectStatus(status, 0, "");
    ASSERT_NE(copy, splineControlPoints(g.spline));
    EXPECT_EQ(std::vector<double>(copy, copy + 6), std::vector<double>(values, values + 6));
    std::free(copy);
}

TEST(SplineValues, KnotsWithinTheToleranceCountAsEqual)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(6, 1, 3, SplineClamped, &g.spline, nullptr), SplineSuccess);
    // 0.5 followed by a value 5e-10 below it: equal, not decreasing.
    const std::vector<double> knots = {0, 0, 0, 0, 0.5, 0.5 - 5e-10, 1, 1, 1, 1};
    SplineStatus status = staleStatus();
    ASSERT_EQ(setKnots(g.spline, knots.data(), &status), SplineSuccess);
    expectStatus(status, 0, "");
    EXPECT_EQ(knotsOf(g.spline), knots);
}

TEST(SplineValues, DecreasingKnotsAreRejectedBeforeAnyCopy)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(6, 1, 3, SplineClamped, &g.spline, nullptr), SplineSuccess);
    const std::vector<double> before = knotsOf(g.spline);
    const std::vector<double> knots = {0, 0, 0, 0, 0.5, 0.4999, 1, 1, 1, 1};
    SplineStatus status = staleStatus();
    EXPECT_EQ(setKnots(g.spline, knots.data(), &status), SplineKnotsDecreasing);
    expectStatus(status, -6, "decreasing knot vector at index: 5");
    EXPECT_EQ(knotsOf(g.spline), before);
    // 2e-09 is beyond the tolerance.
    const std::vector<double> slightly = {0, 0, 0, 0, 0.5, 0.5, 0.5 - 2e-9, 1, 1, 1};
    EXPECT_EQ(setKnots(g.spline, slightly.data(), &status), SplineKnotsDecreasing);
    expectStatus(status, -6, "decreasing knot vector at index: 6");
    EXPECT_EQ(knotsOf(g.spline), before);
}

TEST(SplineValues, FirstValueMayStandOrderTimes)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(6, 1, 3, SplineClamped, &g.spline, nullptr), SplineSuccess);
    const std::vector<double> before = knotsOf(g.spline);
    const std::vector<double> knots = {0, 0, 0, 0, 0, 0.5, 1, 1, 1, 1};
    SplineStatus status = staleStatus();
    EXPECT_EQ(setKnots(g.spline, knots.data(), &status), SplineMultiplicityTooHigh);
    expectStatus(status, -5, "mult(0.000000) (5) > order (4)");
    EXPECT_EQ(knotsOf(g.spline), before);
}

TEST(SplineValues, LaterValuesMayStandOnceMore)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(9, 1, 3, SplineClamped, &g.spline, nullptr), SplineSuccess);
    // The count restarts at 0 after a step: five copies of 0.5 and of 1 pass.
    const std::vector<double> five = {0, 0, 0, 0, 0.5, 0.5, 0.5, 0.5, 0.5, 1, 1, 1, 1};
    SplineStatus status = staleStatus();
    EXPECT_EQ(setKnots(g.spline, five.data(), &status), SplineSuccess);
    expectStatus(status, 0, "");
    const std::vector<double> ones = {0, 0, 0, 0, 0.25, 0.5, 0.75, 0.8, 1, 1, 1, 1, 1};
    EXPECT_EQ(setKnots(g.spline, ones.data(), &status), SplineSuccess);
    const std::vector<double> six = {0, 0, 0, 0, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 1, 1, 1};
    EXPECT_EQ(setKnots(g.spline, six.data(), &status), SplineMultiplicityTooHigh);
    expectStatus(status, -5, "mult(0.500000) (5) > order (4)");
    EXPECT_EQ(knotsOf(g.spline), ones);
}

// --- knot spans ----------------------------------------------------------------------

TEST(SplineSpan, SpansAndMultiplicities)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(7, 1, 3, SplineClamped, &g.spline, nullptr), SplineSuccess);
    // knots 0 0 0 0 .25 .5 .75 1 1 1 1
    struct Case { double u; std::size_t k; std::size_t s; } cases[] = {
        {0.0, 3, 4}, {0.1, 3, 0}, {0.25, 4, 1}, {0.3, 4, 0}, {0.5, 5, 1}, {0.74, 5, 0},
        {0.75, 6, 1}, {0.9, 6, 0}, {1.0, 10, 4}, {-1e-10, 3, 4}, {0.25 + 5e-10, 4, 1},
        {0.25 - 5e-10, 4, 1}, {1.0 + 5e-10, 10, 4}};
    for (const Case &c : cases) {
        std::size_t k = 99, s = 99;
        SplineStatus status = staleStatus();
        ASSERT_EQ(findKnotSpan(g.spline, c.u, &k, &s, &status), SplineSuccess) << c.u;
        expectStatus(status, 0, "");
        EXPECT_EQ(k, c.k) << c.u;
        EXPECT_EQ(s, c.s) << c.u;
    }
}

TEST(SplineSpan, OutsideTheDomain)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(7, 1, 3, SplineClamped, &g.spline, nullptr), SplineSuccess);
    std::size_t k = 0, s = 0;
    SplineStatus status = staleStatus();
    EXPECT_EQ(findKnotSpan(g.spline, -2e-9, &k, &s, &status), SplineKnotOutOfDomain);
    expectStatus(status, -4, "knot (-0.000000) < min(domain) (0.000000)");
    EXPECT_EQ(findKnotSpan(g.spline, -0.5, &k, &s, &status), SplineKnotOutOfDomain);
    expectStatus(status, -4, "knot (-0.500000) < min(domain) (0.000000)");
    EXPECT_EQ(findKnotSpan(g.spline, 1.5, &k, &s, &status), SplineKnotOutOfDomain);
    expectStatus(status, -4, "knot (1.500000) > max(domain) (1.000000)");
    // NaN is nowhere in the domain; it fails the first test.
    EXPECT_EQ(findKnotSpan(g.spline, std::nan(""), &k, &s, &status), SplineKnotOutOfDomain);
    EXPECT_EQ(std::string(status.message).find("< min(domain) (0.000000)") != std::string::npos, true)
            << status.message;
}

TEST(SplineSpan, OpenedDomainIsInsideTheKnots)
{
    SplineGuard g;
    ASSERT_EQ(createSpline(4, 1, 3, SplineOpened, &g.spline, nullptr), SplineSuccess);
    const std::vector<double> knots = knotsOf(g.spline); // i / 7 in float steps
    std::size_t k = 0, s = 0;
    SplineStatus status = staleStatus();
    // min(domain) = knot 3, minus 1e-10: inside, on knot 3.
    ASSERT_EQ(findKnotSpan(g.spline, knots[3] - 1e-10, &k, &s, &status), SplineSuccess);
    EXPECT_EQ(k, 3u);
    EXPECT_EQ(s, 1u);
    ASSERT_EQ(findKnotSpan(g.spline, knots[4], &k, &s, &status), SplineSuccess);
    EXPECT_EQ(k, 4u);
    EXPECT_EQ(s, 1u);
    EXPECT_EQ(findKnotSpan(g.spline, knots[2], &k, &s, &status), SplineKnotOutOfDomain);
    EXPECT_EQ(findKnotSpan(g.spline, knots[5], &k, &s, &status), SplineKnotOutOfDomain);
    expectStatus(status, -4, "knot (0.714286) > max(domain) (0.571429)");
}

// --- de Boor nets --------------------------------------------------------------------

TEST(SplineNet, AtTheEndsOneControlPoint)
{
    SplineGuard g;
    g.spline = splineWith(7, 2, 3, {});
    NetGuard n;
    SplineStatus status = staleStatus();
    ASSERT_EQ(evaluateNet(g.spline, 1.0, &n.net, &status), SplineSuccess);
    expectStatus(status, 0, "");
    EXPECT_EQ(n.net->numPoints, 1u);
    EXPECT_EQ(n.net->k, 10u);
    EXPECT_EQ(n.net->s, 4u);
    EXPECT_EQ(n.net->h, 0u);
    EXPECT_EQ(n.net->dimension, 2u);
    EXPECT_EQ(deBoorNetPoints(n.net)[0], splineControlPoints(g.spline)[12]);
    EXPECT_EQ(deBoorNetPoints(n.net)[1], splineControlPoints(g.spline)[13]);

    NetGuard start;
    ASSERT_EQ(evaluateNet(g.spline, 0.0, &start.net, &status), SplineSuccess);
    EXPECT_EQ(start.net->numPoints, 1u);
    EXPECT_EQ(start.net->k, 3u);
    EXPECT_EQ(deBoorNetPoints(start.net)[0], splineControlPoints(g.spline)[0]);
    EXPECT_EQ(deBoorNetPoints(start.net)[1], splineControlPoints(g.spline)[1]);
}

TEST(SplineNet, AtAFullInnerKnotBothSidesOfTheBreak)
{
    SplineGuard g;
    g.spline = splineWith(8, 2, 3, {0, 0, 0, 0, 0.5, 0.5, 0.5, 0.5, 1, 1, 1, 1});
    NetGuard n;
    ASSERT_EQ(evaluateNet(g.spline, 0.5, &n.net, nullptr), SplineSuccess);
    EXPECT_EQ(n.net->numPoints, 2u);
    EXPECT_EQ(n.net->k, 7u);
    EXPECT_EQ(n.net->s, 4u);
    EXPECT_EQ(n.net->h, 0u);
    const double *cps = splineControlPoints(g.spline);
    EXPECT_EQ(std::vector<double>(deBoorNetPoints(n.net), deBoorNetPoints(n.net) + 4),
              std::vector<double>(cps + 6, cps + 10)); // control points 3 and 4
}

TEST(SplineNet, TableMatchesTheTextbookTriangle)
{
    std::mt19937 random(11);
    int checked = 0;
    for (int trial = 0; trial < 40; ++trial) {
        const std::size_t degree = 1 + trial % 5;
        SplineGuard g;
        g.spline = randomSpline(random, degree + 1 + trial % 7, 1 + trial % 3, degree, trial % 2 == 0);
        const int dim = int(splineDimension(g.spline));
        for (int i = 0; i <= 20; ++i) {
            const double u = domainStart(g.spline) + (domainEnd(g.spline) - domainStart(g.spline)) * i / 20;
            NetGuard n;
            ASSERT_EQ(evaluateNet(g.spline, u, &n.net, nullptr), SplineSuccess);
            const std::vector<double> expected =
                    deBoorPoint(knotsOf(g.spline), controlPointsOf(g.spline), int(degree), dim, u);
            // The curve point is the last point of the table, or the first
            // at a break (the left end of the next piece).
            const bool breakNet = n.net->s == degree + 1;
            const std::size_t last = breakNet ? (n.net->numPoints == 2 ? 1 : 0) : n.net->numPoints - 1;
            if (!breakNet) {
                const std::size_t rowLength = degree - n.net->s + 1;
                ASSERT_EQ(n.net->numPoints, rowLength * (rowLength + 1) / 2);
                ASSERT_EQ(n.net->h, degree - n.net->s);
            }
            for (int c = 0; c < dim; ++c)
                EXPECT_NEAR(deBoorNetPoints(n.net)[last * dim + c], expected[c], 1e-12)
                        << "trial " << trial << " u " << u;
            ++checked;
        }
    }
    EXPECT_EQ(checked, 40 * 21);
}

TEST(SplineNet, KnotValueSnapsToTheKnot)
{
    SplineGuard g;
    g.spline = splineWith(7, 1, 3, {});
    NetGuard n;
    ASSERT_EQ(evaluateNet(g.spline, 0.5 + 4e-10, &n.net, nullptr), SplineSuccess);
    EXPECT_EQ(n.net->u, 0.5);
    EXPECT_EQ(n.net->k, 5u);
    EXPECT_EQ(n.net->s, 1u);
    EXPECT_EQ(n.net->h, 2u);
    EXPECT_EQ(n.net->numPoints, 6u);
    // The first row is control points k - degree to k - s.
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(deBoorNetPoints(n.net)[i], splineControlPoints(g.spline)[2 + i]);
}

TEST(SplineNet, OutsideTheDomainGivesNoNet)
{
    SplineGuard g;
    g.spline = splineWith(7, 1, 3, {});
    DeBoorNet *net = reinterpret_cast<DeBoorNet *>(&g); // must be cleared
    SplineStatus status = staleStatus();
    EXPECT_EQ(evaluateNet(g.spline, 2.0, &net, &status), SplineKnotOutOfDomain);
    expectStatus(status, -4, "knot (2.000000) > max(domain) (1.000000)");
    EXPECT_EQ(net, nullptr);
}

// --- insertion and resizing ----------------------------------------------------------

TEST(SplineInsert, KeepsTheCurve)
{
    std::mt19937 random(5);
    for (int trial = 0; trial < 30; ++trial) {
        const std::size_t degree = 1 + trial % 4;
        SplineGuard g;
        g.spline = randomSpline(random, degree + 3 + trial % 5, 2, degree, trial % 3 != 0);
        const double u = domainStart(g.spline) + (domainEnd(g.spline) - domainStart(g.spline)) * 0.37;
        NetGuard n;
        ASSERT_EQ(evaluateNet(g.spline, u, &n.net, nullptr), SplineSuccess);
        for (std::size_t times = 1; times + n.net->s <= degree + 1; ++times) {
            SplineGuard inserted;
            SplineStatus status = staleStatus();
            ASSERT_EQ(insertKnot(g.spline, n.net, times, &inserted.spline, &status), SplineSuccess);
            expectStatus(status, 0, "");
            EXPECT_EQ(splineNumControlPoints(inserted.spline), splineNumControlPoints(g.spline) + times);
            const std::vector<double> knots = knotsOf(inserted.spline);
            for (std::size_t i = 0; i < times; ++i)
                EXPECT_EQ(knots[n.net->k + 1 + i], n.net->u);
            EXPECT_LT(curveDifference(g.spline, inserted.spline, 50), 1e-12) << "trial " << trial;
        }
    }
}

TEST(SplineInsert, ZeroTimesCopiesAndTooManyFails)
{
    SplineGuard g;
    g.spline = splineWith(7, 2, 3, {});
    NetGuard n;
    ASSERT_EQ(evaluateNet(g.spline, 0.5, &n.net, nullptr), SplineSuccess);
    SplineGuard copy;
    ASSERT_EQ(insertKnot(g.spline, n.net, 0, &copy.spline, nullptr), SplineSuccess);
    ASSERT_NE(copy.spline, g.spline);
    EXPECT_EQ(knotsOf(copy.spline), knotsOf(g.spline));
    EXPECT_EQ(controlPointsOf(copy.spline), controlPointsOf(g.spline));

    SplineRecord *out = nullptr;
    SplineStatus status = staleStatus();
    EXPECT_EQ(insertKnot(g.spline, n.net, 4, &out, &status), SplineMultiplicityTooHigh);
    expectStatus(status, -5, "multiplicity(0.500000) (1) + 4 > order (4)");
    EXPECT_EQ(out, nullptr);
}

TEST(SplineInsert, IntoTheSameHandleReplacesTheBlock)
{
    SplineGuard g;
    g.spline = splineWith(7, 2, 3, {});
    SplineGuard original;
    original.spline = splineWith(7, 2, 3, {});
    NetGuard n;
    ASSERT_EQ(evaluateNet(g.spline, 0.6, &n.net, nullptr), SplineSuccess);
    ASSERT_EQ(insertKnot(g.spline, n.net, 2, &g.spline, nullptr), SplineSuccess);
    EXPECT_EQ(splineNumControlPoints(g.spline), 9u);
    EXPECT_LT(curveDifference(original.spline, g.spline, 50), 1e-12);
}

TEST(SplineResize, AtTheBack)
{
    SplineGuard g;
    g.spline = splineWith(6, 1, 2, {0, 0, 0, 0.2, 0.4, 0.6, 1, 1, 1});
    SplineGuard grown;
    ASSERT_EQ(resizeSpline(g.spline, 2, true, &grown.spline, nullptr), SplineSuccess);
    ASSERT_EQ(splineNumControlPoints(grown.spline), 8u);
    ASSERT_EQ(splineNumKnots(grown.spline), 11u);
    const std::vector<double> points = controlPointsOf(grown.spline);
    const std::vector<double> old = controlPointsOf(g.spline);
    EXPECT_EQ(std::vector<double>(points.begin(), points.begin() + 6), old);
    EXPECT_EQ(points[6], 0.0);
    EXPECT_EQ(points[7], 0.0);
    // The two new knots are the new block's opened knots.
    const double step = static_cast<double>(1.0f / 10.0f);
    EXPECT_EQ(knotsOf(grown.spline),
              (std::vector<double>{0, 0, 0, 0.2, 0.4, 0.6, 1, 1, 1, 9 * step, 1.0}));

    SplineGuard shrunk;
    ASSERT_EQ(resizeSpline(g.spline, -2, true, &shrunk.spline, nullptr), SplineSuccess);
    EXPECT_EQ(controlPointsOf(shrunk.spline), std::vector<double>(old.begin(), old.begin() + 4));
    EXPECT_EQ(knotsOf(shrunk.spline), (std::vector<double>{0, 0, 0, 0.2, 0.4, 0.6, 1}));
}

TEST(SplineResize, AtTheFront)
{
    SplineGuard g;
    g.spline = splineWith(6, 1, 2, {0, 0, 0, 0.2, 0.4, 0.6, 1, 1, 1});
    const std::vector<double> old = controlPointsOf(g.spline);
    SplineGuard shrunk;
    ASSERT_EQ(resizeSpline(g.spline, -2, false, &shrunk.spline, nullptr), SplineSuccess);
    EXPECT_EQ(controlPointsOf(shrunk.spline), std::vector<double>(old.begin() + 2, old.end()));
    EXPECT_EQ(knotsOf(shrunk.spline), (std::vector<double>{0, 0.2, 0.4, 0.6, 1, 1, 1}));

    SplineGuard grown;
    ASSERT_EQ(resizeSpline(g.spline, 2, false, &grown.spline, nullptr), SplineSuccess);
    const std::vector<double> points = controlPointsOf(grown.spline);
    EXPECT_EQ(points[0], 0.0);
    EXPECT_EQ(points[1], 0.0);
    EXPECT_EQ(std::vector<double>(points.begin() + 2, points.end()), old);
    const double step = static_cast<double>(1.0f / 10.0f);
    EXPECT_EQ(knotsOf(grown.spline), (std::vector<double>{0, step, 0, 0, 0, 0.2, 0.4, 0.6, 1, 1, 1}));
}

TEST(SplineResize, LimitsAndSameHandle)
{
    SplineGuard g;
    g.spline = splineWith(6, 1, 2, {});
    const std::vector<double> knots = knotsOf(g.spline);
    SplineRecord *out = nullptr;
    SplineStatus status = staleStatus();
    EXPECT_EQ(resizeSpline(g.spline, -4, true, &out, &status), SplineDegreeTooHigh);
    expectStatus(status, -3, "degree (2) >= num(control_points) (2)");
    EXPECT_EQ(resizeSpline(g.spline, -10, false, &out, &status), SplineDegreeTooHigh);
    expectStatus(status, -3, "degree (2) >= num(control_points) (0)");
    EXPECT_EQ(resizeSpline(g.spline, 9993, true, &out, &status), SplineKnotCountUnsupported);
    expectStatus(status, -7, "unsupported number of knots: 10002 > 10000");
    EXPECT_EQ(out, nullptr);
    // A failure on the same handle keeps the block.
    EXPECT_EQ(resizeSpline(g.spline, -4, true, &g.spline, &status), SplineDegreeTooHigh);
    EXPECT_EQ(knotsOf(g.spline), knots);

    ASSERT_EQ(resizeSpline(g.spline, 0, true, &out, &status), SplineSuccess);
    EXPECT_NE(out, g.spline);
    EXPECT_EQ(knotsOf(out), knots);
    freeSpline(out);
    ASSERT_EQ(resizeSpline(g.spline, 3, true, &g.spline, &status), SplineSuccess);
    EXPECT_EQ(splineNumControlPoints(g.spline), 9u);
}

// --- splitting and Beziers -----------------------------------------------------------

TEST(SplineSplit, RaisesTheMultiplicityToTheOrder)
{
    SplineGuard g;
    g.spline = splineWith(7, 2, 3, {});
    SplineGuard split;
    std::size_t k = 0;
    ASSERT_EQ(splitAtKnot(g.spline, 0.5, &split.spline, &k, nullptr), SplineSuccess);
    // 0.5 stood once at index 5; three more copies follow it.
    EXPECT_EQ(k, 8u);
    EXPECT_EQ(knotsOf(split.spline), (std::vector<double>{0, 0, 0, 0, 0.25, 0.5, 0.5, 0.5, 0.5, 0.75, 1, 1, 1, 1}));
    EXPECT_LT(curveDifference(g.spline, split.spline, 50), 1e-12);

    // Splitting again changes nothing and leaves k on the last copy.
    SplineGuard again;
    ASSERT_EQ(splitAtKnot(split.spline, 0.5, &again.spline, &k, nullptr), SplineSuccess);
    EXPECT_EQ(k, 8u);
    EXPECT_EQ(knotsOf(again.spline), knotsOf(split.spline));
    EXPECT_EQ(controlPointsOf(again.spline), controlPointsOf(split.spline));

    // Between knots: a new value, inserted order times.
    SplineGuard between;
    ASSERT_EQ(splitAtKnot(g.spline, 0.3, &between.spline, &k, nullptr), SplineSuccess);
    EXPECT_EQ(k, 8u);
    EXPECT_EQ(splineNumControlPoints(between.spline), 11u);
    EXPECT_LT(curveDifference(g.spline, between.spline, 50), 1e-12);

    SplineRecord *out = nullptr;
    SplineStatus status = staleStatus();
    EXPECT_EQ(splitAtKnot(g.spline, -1.0, &out, &k, &status), SplineKnotOutOfDomain);
    expectStatus(status, -4, "knot (-1.000000) < min(domain) (0.000000)");
    EXPECT_EQ(out, nullptr);
}

TEST(SplineBeziers, OneBezierStaysAsItIs)
{
    SplineGuard g;
    g.spline = splineWith(4, 2, 3, {});
    SplineGuard beziers;
    SplineStatus status = staleStatus();
    ASSERT_EQ(toBeziers(g.spline, &beziers.spline, &status), SplineSuccess);
    expectStatus(status, 0, "");
    EXPECT_EQ(controlPointsOf(beziers.spline), controlPointsOf(g.spline));
    EXPECT_EQ(knotsOf(beziers.spline), knotsOf(g.spline));
}

TEST(SplineBeziers, CubicWithInnerKnotsGivesFourPointsPerPiece)
{
    for (std::size_t inner = 0; inner < 8; ++inner) {
        SplineGuard g;
        g.spline = splineWith(4 + inner, 2, 3, {}); // clamped: inner distinct inner knots
        SplineGuard beziers;
        ASSERT_EQ(toBeziers(g.spline, &beziers.spline, nullptr), SplineSuccess);
        EXPECT_EQ(splineNumControlPoints(beziers.spline), 4 * (inner + 1));
        EXPECT_EQ(splineNumKnots(beziers.spline), 4 * (inner + 2));
    }
}

TEST(SplineBeziers, PiecesReproduceTheSpline)
{
    std::mt19937 random(2024);
    int pieces = 0;
    double worst = 0.0;
    for (int trial = 0; trial < 60; ++trial) {
        const std::size_t degree = 1 + trial % 5;
        const std::size_t dim = 1 + trial % 3;
        SplineGuard g;
        g.spline = randomSpline(random, degree + 1 + trial % 9, dim, degree, trial % 4 == 0);
        SplineGuard beziers;
        ASSERT_EQ(toBeziers(g.spline, &beziers.spline, nullptr), SplineSuccess) << trial;
        const std::size_t order = degree + 1;
        const std::vector<double> knots = knotsOf(beziers.spline);
        const std::vector<double> points = controlPointsOf(beziers.spline);
        ASSERT_EQ(splineNumControlPoints(beziers.spline) % order, 0u);
        // Every knot of the result stands order times.
        for (std::size_t i = 0; i < knots.size(); ++i)
            ASSERT_EQ(knots[i], knots[i / order * order]) << trial;
        const std::size_t numPieces = splineNumControlPoints(beziers.spline) / order;
        EXPECT_EQ(knots.front(), domainStart(g.spline));
        EXPECT_EQ(knots.back(), domainEnd(g.spline));
        for (std::size_t piece = 0; piece < numPieces; ++piece) {
            const double t0 = knots[(piece + 1) * order - 1];
            const double t1 = knots[(piece + 1) * order];
            for (int i = 0; i <= 16; ++i) {
                const double s = i / 16.0;
                const double t = t0 + (t1 - t0) * s;
                // A piece ends on the left-hand side of a break.
                const std::vector<double> expected =
                        deBoorPoint(knotsOf(g.spline), controlPointsOf(g.spline), int(degree), int(dim), t, i == 16);
                const std::vector<double> got = bezierPoint(points, int(piece * order), int(order), int(dim), s);
                for (std::size_t c = 0; c < dim; ++c) {
                    worst = std::max(worst, std::fabs(got[c] - expected[c]));
                    EXPECT_NEAR(got[c], expected[c], 1e-12) << "trial " << trial << " piece " << piece << " s " << s;
                }
            }
            ++pieces;
        }
    }
    EXPECT_LT(worst, 1e-12);
    EXPECT_GT(pieces, 200);
}

TEST(SplineBeziers, OpenEndsAreCutOneAtATime)
{
    // Clamped start, open end: only the end is split and cut.
    SplineGuard openEnd;
    openEnd.spline = splineWith(5, 2, 3, {0, 0, 0, 0, 0.5, 1, 2, 3, 4});
    SplineGuard beziers;
    ASSERT_EQ(toBeziers(openEnd.spline, &beziers.spline, nullptr), SplineSuccess);
    EXPECT_EQ(knotsOf(beziers.spline), (std::vector<double>{0, 0, 0, 0, 0.5, 0.5, 0.5, 0.5, 1, 1, 1, 1}));
    const std::vector<double> first = controlPointsOf(openEnd.spline);
    const std::vector<double> cut = controlPointsOf(beziers.spline);
    EXPECT_EQ(cut[0], first[0]);
    EXPECT_EQ(cut[1], first[1]);
    EXPECT_LT(curveDifference(openEnd.spline, beziers.spline, 40), 1e-12);

    // Open start, clamped end: only the start.
    SplineGuard openStart;
    openStart.spline = splineWith(5, 2, 3, {-3, -2, -1, 0, 0.5, 1, 1, 1, 1});
    SplineGuard fromStart;
    ASSERT_EQ(toBeziers(openStart.spline, &fromStart.spline, nullptr), SplineSuccess);
    EXPECT_EQ(knotsOf(fromStart.spline), (std::vector<double>{0, 0, 0, 0, 0.5, 0.5, 0.5, 0.5, 1, 1, 1, 1}));
    const std::vector<double> last = controlPointsOf(openStart.spline);
    const std::vector<double> got = controlPointsOf(fromStart.spline);
    EXPECT_EQ(got[got.size() - 1], last[last.size() - 1]);
    EXPECT_EQ(got[got.size() - 2], last[last.size() - 2]);
    EXPECT_LT(curveDifference(openStart.spline, fromStart.spline, 40), 1e-12);
}

TEST(SplineBeziers, TooManyKnotsOnTheWayFailsAndFreesTheWork)
{
    SplineGuard g;
    // 2596 inner knots would need 10404 knots; each split adds three, so the
    // count goes from 9999 to 10002.
    g.spline = splineWith(2600, 1, 3, {});
    SplineRecord *out = nullptr;
    SplineStatus status = staleStatus();
    EXPECT_EQ(toBeziers(g.spline, &out, &status), SplineKnotCountUnsupported);
    expectStatus(status, -7, "unsupported number of knots: 10002 > 10000");
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(splineNumKnots(g.spline), 2604u);
}

TEST(SplineBeziers, IntoTheSameHandle)
{
    SplineGuard g;
    g.spline = splineWith(6, 2, 2, {});
    SplineGuard original;
    original.spline = splineWith(6, 2, 2, {});
    ASSERT_EQ(toBeziers(g.spline, &g.spline, nullptr), SplineSuccess);
    EXPECT_EQ(splineNumControlPoints(g.spline), 12u);
    EXPECT_LT(curveDifference(original.spline, g.spline, 40), 1e-12);
}

// --- the owning class ----------------------------------------------------------------

TEST(BSplineClass, ThrowsTheStatusMessage)
{
    try {
        BSpline spline(4, 2, 4, SplineClamped);
        FAIL() << "no exception";
    } catch (const std::runtime_error &e) {
        EXPECT_STREQ(e.what(), "degree (4) >= num(control_points) (4)");
    }
    EXPECT_THROW(BSpline(9997, 1, 3, SplineClamped), std::runtime_error);
    EXPECT_THROW(BSpline(5, 0, 3, SplineClamped), std::runtime_error);
}

TEST(BSplineClass, SizeMismatchNamesBothSizes)
{
    BSpline spline(3, 2, 2, SplineClamped);
    ASSERT_EQ(splineNumKnots(zgSplineInternals::record(spline)), 6u);
    try {
        spline.setKnots(std::vector<double>(7, 0.0));
        FAIL() << "no exception";
    } catch (const std::runtime_error &e) {
        EXPECT_STREQ(e.what(), "Expected size: 6, Actual size: 7");
    }
    try {
        spline.setControlPoints(std::vector<double>(5, 0.0));
        FAIL() << "no exception";
    } catch (const std::runtime_error &e) {
        EXPECT_STREQ(e.what(), "Expected size: 6, Actual size: 5");
    }
    try {
        spline.setKnots({0, 0, 0.5, 0.25, 1, 1});
        FAIL() << "no exception";
    } catch (const std::runtime_error &e) {
        EXPECT_STREQ(e.what(), "decreasing knot vector at index: 3");
    }
}

TEST(BSplineClass, ValuesAndBeziers)
{
    BSpline spline(5, 2, 3, SplineClamped);
    EXPECT_EQ(spline.degree(), 3u);
    EXPECT_EQ(spline.numControlPoints(), 5u);
    const std::vector<double> points = {0, 0, 1, 2, 3, 3, 5, 1, 6, 0};
    spline.setControlPoints(points);
    EXPECT_EQ(spline.getControlPoints(), points);
    spline.setKnots({0, 0, 0, 0, 0.4, 1, 1, 1, 1});
    const BSpline beziers = spline.toBeziers();
    EXPECT_EQ(beziers.degree(), 3u);
    EXPECT_EQ(beziers.numControlPoints(), 8u);
    EXPECT_EQ(spline.numControlPoints(), 5u);
    EXPECT_EQ(knotsOf(zgSplineInternals::record(beziers)),
              (std::vector<double>{0, 0, 0, 0, 0.4, 0.4, 0.4, 0.4, 1, 1, 1, 1}));

    BSpline moved = std::move(spline);
    EXPECT_EQ(moved.getControlPoints(), points);
    BSpline other(4, 1, 1, SplineOpened);
    other = std::move(moved);
    EXPECT_EQ(other.numControlPoints(), 5u);
}
