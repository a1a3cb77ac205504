// getSelfIntersection: the early outs of curves without a loop, the split at
// the highest curvature, the remapping of the halves' times, the closed
// single curve, and the member getIntersectionscurve on the curve itself.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <cmath>

using crossingtest::FreeCurve;
using crossingtest::releaseAll;
using crossingtest::values;

namespace {

// A loop symmetric about x = 50: x(t) - 50 = 50 (2t - 1)(7t^2 - 7t + 1), so it
// crosses itself at t = (7 -+ sqrt(21)) / 14, where y = 300 t (1 - t) = 300 / 7.
const QVector<double> kLoop = values(0, 0, 150, 100, -50, 100, 100, 0);
const double kLoopT1 = (7.0 - std::sqrt(21.0)) / 14.0;
const double kLoopT2 = (7.0 + std::sqrt(21.0)) / 14.0;
const zgPoint kLoopPoint(50.0, 300.0 / 7.0);

// A loop without symmetry.
const QVector<double> kLeaningLoop = values(0, 0, 150, 100, -30, 120, 100, 10);

// A single curve that starts and ends at the origin.
const QVector<double> kTeardrop = values(0, 0, 100, 100, -100, 100, 0, 0);

// Runs getSelfIntersection on a free curve with the values v.
class SelfRun
{
public:
    explicit SelfRun(const QVector<double> &v, opParam param = opParam())
        : m_curve(v), m_param(param)
    {
        const QList<zgCurveLocation *> copy =
                zgCurve::getSelfIntersection(v, m_curve.get(), m_list, m_param);
        m_copyMatches = copy == m_list;
    }
    ~SelfRun() { releaseAll(m_list); }

    const QList<zgCurveLocation *> &list() const { return m_list; }
    const opParam &param() const { return m_param; }
    zgCurve *curve() const { return m_curve.get(); }
    bool copyMatches() const { return m_copyMatches; }

private:
    FreeCurve m_curve;
    opParam m_param;
    QList<zgCurveLocation *> m_list;
    bool m_copyMatches = false;
};

bool untouched(const opParam &param)
{
    return !param.joinedAtStart && !param.joinedAtEnd && !param.splitRemap
            && param.splitTime == 0.0;
}

} // namespace

TEST(GetSelfIntersection, LoopingCubicCrossesItself)
{
    SelfRun run(kLoop);
    EXPECT_TRUE(run.copyMatches());
    ASSERT_EQ(run.list().size(), 1);
    zgCurveLocation *first = run.list().at(0);
    zgCurveLocation *second = first->intersection();
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(first->curve, run.curve());
    EXPECT_EQ(second->curve, run.curve());
    // The listed side is the one on the first half, with the smaller time.
    EXPECT_NEAR(first->time, kLoopT1, 1e-9);
    EXPECT_NEAR(second->time, kLoopT2, 1e-9);
    EXPECT_NEAR(first->point.getDistance(kLoopPoint), 0.0, 1e-7);
    EXPECT_NEAR(second->point.getDistance(kLoopPoint), 0.0, 1e-7);
    EXPECT_FALSE(first->overlap);
}

TEST(GetSelfIntersection, ParamRecordsTheSplit)
{
    SelfRun run(kLoop);
    EXPECT_TRUE(run.param().joinedAtEnd);
    EXPECT_TRUE(run.param().splitRemap);
    EXPECT_FALSE(run.param().joinedAtStart);
    // The symmetric loop has its sharpest point at its middle.
    EXPECT_NEAR(run.param().splitTime, 0.5, 1e-12);
}

TEST(GetSelfIntersection, SplitAtTheHighestCurvatureOnTheLoop)
{
    SelfRun run(kLeaningLoop);
    ASSERT_EQ(run.list().size(), 1);
    const double split = run.param().splitTime;
    const double t1 = run.list().at(0)->time;
    const double t2 = run.list().at(0)->intersection()->time;
    EXPECT_GT(split, t1);
    EXPECT_LT(split, t2);
    EXPECT_GT(std::fabs(split - 0.5), 1e-3);
    // The split is a turning point of the speed: just before and just after
    // it the squared speed lies on the same side of its value there.
    const auto squaredSpeed = [](double t) {
        const zgPoint d = zgCurve::getWeightedTangent(kLeaningLoop, t);
        return d.x * d.x + d.y * d.y;
    };
    const double here = squaredSpeed(split);
    EXPECT_GT((squaredSpeed(split - 1e-04) - here) * (squaredSpeed(split + 1e-04) - here), 0.0);
    double t = t1, u = t2;
    ASSERT_TRUE(crossingtest::polishCrossing(kLeaningLoop, kLeaningLoop, t, u));
    EXPECT_NEAR(t1, t, 1e-9);
    EXPECT_NEAR(t2, u, 1e-9);
}

TEST(GetSelfIntersection, CurvatureIsTakenOnTheCurveObject)
{
    // The values ask for a leaning loop, the curve object is straight: every
    // curvature is 0, none is above the best of 0.0, and the split stays 0.5.
    FreeCurve straight(values(0, 0, 0, 0, 100, 0, 100, 0));
    opParam param;
    QList<zgCurveLocation *> list;
    zgCurve::getSelfIntersection(kLeaningLoop, straight.get(), list, param);
    EXPECT_EQ(param.splitTime, 0.5);
    EXPECT_TRUE(param.splitRemap);
    releaseAll(list);
}

TEST(GetSelfIntersection, CurveWithoutLoopLeavesEverythingAlone)
{
    // An arch: both handles on one side, turning one way.
    SelfRun arch(values(0, 0, 30, 60, 70, 60, 100, 0));
    EXPECT_TRUE(arch.list().isEmpty());
    EXPECT_TRUE(untouched(arch.param()));
    // An S: handles on both sides, the discriminant says no loop.
    SelfRun wave(values(0, 0, 30, 60, 70, -60, 100, 0));
    EXPECT_TRUE(wave.list().isEmpty());
    EXPECT_TRUE(untouched(wave.param()));
    // A straight curve.
    SelfRun straight(values(0, 0, 10, 0, 20, 0, 30, 0));
    EXPECT_TRUE(straight.list().isEmpty());
    EXPECT_TRUE(untouched(straight.param()));
}

TEST(GetSelfIntersection, SingleClosedCurveReportsItsJointUnlessJoinedAtStart)
{
    SelfRun open(kTeardrop);
    ASSERT_EQ(open.list().size(), 1);
    EXPECT_EQ(open.list().at(0)->time, 0.0);
    EXPECT_EQ(open.list().at(0)->intersection()->time, 1.0);
    EXPECT_EQ(open.list().at(0)->point, zgPoint(0, 0));

    opParam closed;
    closed.joinedAtStart = true;
    SelfRun joined(kTeardrop, closed);
    EXPECT_TRUE(joined.list().isEmpty());
    EXPECT_TRUE(joined.param().joinedAtStart);
    EXPECT_TRUE(joined.param().joinedAtEnd);
}

TEST(GetSelfIntersection, ListedIntoAnExistingList)
{
    // The result goes into the caller's list, sorted with what is there.
    FreeCurve loop(kLoop);
    opParam first;
    QList<zgCurveLocation *> list;
    zgCurve::getSelfIntersection(kLoop, loop.get(), list, first);
    opParam second;
    zgCurve::getSelfIntersection(kLoop, loop.get(), list, second);
    // The second finding is the same pair and merges with the first.
    EXPECT_EQ(list.size(), 1);
    releaseAll(list);
}

TEST(GetSelfIntersection, TinyLoop)
{
    // The loop scaled to 1e-06: the times do not change.
    QVector<double> tiny = kLoop;
    for (double &c : tiny)
        c *= 1e-08;
    SelfRun run(tiny);
    ASSERT_EQ(run.list().size(), 1);
    EXPECT_NEAR(run.list().at(0)->time, kLoopT1, 1e-9);
    EXPECT_NEAR(run.list().at(0)->intersection()->time, kLoopT2, 1e-9);
}

TEST(GetIntersectionsCurve, TheCurveItselfOrNullGivesItsLoop)
{
    FreeCurve loop(kLoop);
    for (zgCurve *other : { static_cast<zgCurve *>(nullptr), loop.get() }) {
        QList<zgCurveLocation *> list = loop.get()->getIntersectionscurve(other);
        ASSERT_EQ(list.size(), 1);
        // A loop, not an overlap of the curve with itself.
        EXPECT_FALSE(list.at(0)->overlap);
        EXPECT_NEAR(list.at(0)->time, kLoopT1, 1e-9);
        EXPECT_NEAR(list.at(0)->intersection()->time, kLoopT2, 1e-9);
        releaseAll(list);
    }
}

TEST(GetIntersections, EmptySecondArrayAsksForTheLoop)
{
    FreeCurve loop(kLoop);
    opParam param;
    QList<zgCurveLocation *> list;
    const QList<zgCurveLocation *> copy = zgCurve::getIntersections(
            kLoop, QVector<double>(), loop.get(), nullptr, list, param);
    EXPECT_EQ(copy, list);
    ASSERT_EQ(list.size(), 1);
    EXPECT_TRUE(param.splitRemap);
    releaseAll(list);
}
