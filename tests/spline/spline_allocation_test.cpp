// Failed allocations at every step of the engine: -1 with "out of memory",
// no output, the input unchanged, and nothing left allocated.
#include "spline/spline_test_support.h"
#include "spline/spline_block.h"

#include <functional>
#include <stdexcept>

using namespace splinetest;

namespace {

// Makes the allocation after the first `succeeding` ones fail, until the end
// of the scope.
struct FailingAllocations
{
    explicit FailingAllocations(int succeeding) { zgSplineAllocation::s_failAfter = succeeding; }
    ~FailingAllocations() { zgSplineAllocation::s_failAfter = -1; }
};

SplineRecord *sampleSpline()
{
    SplineRecord *spline = nullptr;
    EXPECT_EQ(createSpline(9, 2, 3, SplineOpened, &spline, nullptr), SplineSuccess);
    std::vector<double> points(18);
    for (std::size_t i = 0; i < points.size(); ++i)
        points[i] = double(i % 5) - 0.5 * i;
    setControlPoints(spline, points.data(), nullptr);
    return spline;
}

// Runs call with 0, 1, 2, ... allocations allowed until it succeeds; each
// failing run must report -1 and leave the input and the output alone.
// Returns the number of failing runs. input may be null.
int failEveryAllocation(const SplineRecord *input,
                        const std::function<int(SplineRecord **out, SplineStatus *status)> &call)
{
    const std::vector<double> knots = input ? knotsOf(input) : std::vector<double>();
    const std::vector<double> points = input ? controlPointsOf(input) : std::vector<double>();
    for (int allowed = 0; allowed < 100; ++allowed) {
        SplineRecord *out = reinterpret_cast<SplineRecord *>(&allowed); // must be cleared
        SplineStatus status;
        int code;
        {
            FailingAllocations failing(allowed);
            code = call(&out, &status);
        }
        if (input) {
            EXPECT_EQ(knotsOf(input), knots);
            EXPECT_EQ(controlPointsOf(input), points);
        }
        if (code == SplineSuccess) {
            EXPECT_NE(out, nullptr);
            freeSpline(out);
            return allowed;
        }
        EXPECT_EQ(code, SplineOutOfMemory) << allowed;
        EXPECT_STREQ(status.message, "out of memory");
        EXPECT_EQ(out, nullptr);
    }
    ADD_FAILURE() << "never succeeded";
    return -1;
}

} // namespace

TEST(SplineAllocation, CreateAndCopyOut)
{
    EXPECT_EQ(failEveryAllocation(nullptr, [](SplineRecord **out, SplineStatus *status) {
                  return createSpline(5, 2, 3, SplineClamped, out, status);
              }), 1);
    SplineGuard g;
    g.spline = sampleSpline();
    double *values = reinterpret_cast<double *>(&g);
    SplineStatus status;
    {
        FailingAllocations failing(0);
        EXPECT_EQ(getControlPoints(g.spline, &values, &status), SplineOutOfMemory);
    }
    EXPECT_STREQ(status.message, "out of memory");
    EXPECT_EQ(values, nullptr);
}

TEST(SplineAllocation, NetInsertResizeSplit)
{
    SplineGuard g;
    g.spline = sampleSpline();
    const double u = 0.5;
    {
        DeBoorNet *net = reinterpret_cast<DeBoorNet *>(&g);
        SplineStatus status;
        FailingAllocations failing(0);
        EXPECT_EQ(evaluateNet(g.spline, u, &net, &status), SplineOutOfMemory);
        EXPECT_EQ(net, nullptr);
    }
    NetGuard n;
    ASSERT_EQ(evaluateNet(g.spline, u, &n.net, nullptr), SplineSuccess);
    EXPECT_EQ(failEveryAllocation(g.spline, [&](SplineRecord **out, SplineStatus *status) {
                  return insertKnot(g.spline, n.net, 2, out, status);
              }), 1);
    EXPECT_EQ(failEveryAllocation(g.spline, [&](SplineRecord **out, SplineStatus *status) {
                  return insertKnot(g.spline, n.net, 0, out, status);
              }), 1);
    EXPECT_EQ(failEveryAllocation(g.spline, [&](SplineRecord **out, SplineStatus *status) {
                  return resizeSpline(g.spline, -2, false, out, status);
              }), 1);
    EXPECT_EQ(failEveryAllocation(g.spline, [&](SplineRecord **out, SplineStatus *status) {
                  std::size_t k = 0;
                  return splitAtKnot(g.spline, u, out, &k, status);
              }), 2);
}

TEST(SplineAllocation, BeziersFreeTheirWorkAtEveryStep)
{
    SplineGuard g;
    g.spline = sampleSpline();
    // The working copy; a net and a new block at each end, with a resize
    // after each; a net and a block for each of the five inner knots: 17
    // allocations, every one of which can fail.
    const int failing = failEveryAllocation(g.spline, [&](SplineRecord **out, SplineStatus *status) {
        return toBeziers(g.spline, out, status);
    });
    EXPECT_EQ(failing, 17);
}

TEST(SplineAllocation, SameHandleKeepsTheInput)
{
    SplineGuard g;
    g.spline = sampleSpline();
    const std::vector<double> knots = knotsOf(g.spline);
    SplineRecord *const before = g.spline;
    for (int allowed = 0; allowed < 5; ++allowed) {
        FailingAllocations failing(allowed);
        const int code = toBeziers(g.spline, &g.spline, nullptr);
        ASSERT_EQ(code, SplineOutOfMemory);
        EXPECT_EQ(g.spline, before);
    }
    EXPECT_EQ(knotsOf(g.spline), knots);
}

TEST(SplineAllocation, ClassThrowsOutOfMemory)
{
    {
        FailingAllocations failing(0);
        try {
            BSpline spline(5, 2, 3, SplineClamped);
            ADD_FAILURE() << "no exception";
        } catch (const std::runtime_error &e) {
            EXPECT_STREQ(e.what(), "out of memory");
        }
    }
    BSpline spline(5, 2, 3, SplineClamped);
    FailingAllocations failing(0);
    EXPECT_THROW(spline.getControlPoints(), std::runtime_error);
    EXPECT_THROW(spline.toBeziers(), std::runtime_error);
}
