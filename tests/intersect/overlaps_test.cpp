// getOverlaps and overlaps through the dispatcher: collinear lines,
// coincident curved pieces, the 4e-07 rule against tiny overlaps, the handle
// check, and the overlap flags of the reported locations.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <cmath>

using crossingtest::FreeCurve;
using crossingtest::releaseAll;
using crossingtest::timeOn;
using crossingtest::values;

namespace {

// A straight curve from (x0, y0) to (x3, y3) with handles at the thirds, so
// that its time is the proportion along the chord.
QVector<double> line(double x0, double y0, double x3, double y3)
{
    return values(x0, y0, x0 + (x3 - x0) / 3.0, y0 + (y3 - y0) / 3.0, x3 - (x3 - x0) / 3.0,
                  y3 - (y3 - y0) / 3.0, x3, y3);
}

// A straight curve without handles.
QVector<double> bare(double x0, double y0, double x3, double y3)
{
    return values(x0, y0, x0, y0, x3, y3, x3, y3);
}

const QVector<double> kArch = values(0, 0, 30, 60, 70, 60, 100, 0);

void expectPairs(const QVector<QVector<double>> &pairs, double a0, double b0, double a1,
                 double b1, double tolerance)
{
    ASSERT_EQ(pairs.size(), 2);
    ASSERT_EQ(pairs.at(0).size(), 2);
    ASSERT_EQ(pairs.at(1).size(), 2);
    EXPECT_NEAR(pairs.at(0).at(0), a0, tolerance);
    EXPECT_NEAR(pairs.at(0).at(1), b0, tolerance);
    EXPECT_NEAR(pairs.at(1).at(0), a1, tolerance);
    EXPECT_NEAR(pairs.at(1).at(1), b1, tolerance);
}

// The dispatcher on two free curves; the list is released at the end.
class OverlapRun
{
public:
    OverlapRun(const QVector<double> &a, const QVector<double> &b, opParam param = opParam())
        : m_a(a), m_b(b)
    {
        zgCurve::getIntersections(a, b, m_a.get(), m_b.get(), m_list, param);
    }
    ~OverlapRun() { releaseAll(m_list); }

    const QList<zgCurveLocation *> &list() const { return m_list; }
    double t(int i) const { return timeOn(m_list.at(i), m_a.get()); }
    double u(int i) const { return timeOn(m_list.at(i), m_b.get()); }

private:
    FreeCurve m_a;
    FreeCurve m_b;
    QList<zgCurveLocation *> m_list;
};

} // namespace

TEST(GetOverlaps, IdenticalStraightCurvesGiveTwoPairs)
{
    expectPairs(zgCurve::getOverlaps(bare(0, 0, 10, 5), bare(0, 0, 10, 5)), 0, 0, 1, 1, 0.0);
    OverlapRun run(bare(0, 0, 10, 5), bare(0, 0, 10, 5));
    ASSERT_EQ(run.list().size(), 2);
    for (zgCurveLocation *location : run.list()) {
        EXPECT_TRUE(location->overlap);
        EXPECT_TRUE(location->intersection()->overlap);
    }
    EXPECT_EQ(run.t(0), 0.0);
    EXPECT_EQ(run.u(0), 0.0);
    EXPECT_EQ(run.t(1), 1.0);
    EXPECT_EQ(run.u(1), 1.0);
}

TEST(GetOverlaps, OverlappingCollinearLinesGiveOverlapPairs)
{
    // The end of the first lies on the second, the start of the second on the first.
    expectPairs(zgCurve::getOverlaps(line(0, 0, 10, 0), line(4, 0, 16, 0)), 1.0, 0.5, 0.4, 0.0,
                1e-12);
    OverlapRun run(line(0, 0, 10, 0), line(4, 0, 16, 0));
    ASSERT_EQ(run.list().size(), 2);
    // Listed by time on the first curve: (4, 0) first, then (10, 0).
    EXPECT_NEAR(run.t(0), 0.4, 1e-12);
    EXPECT_NEAR(run.u(0), 0.0, 1e-12);
    EXPECT_NEAR(run.list().at(0)->point.x, 4.0, 1e-12);
    EXPECT_NEAR(run.t(1), 1.0, 1e-12);
    EXPECT_NEAR(run.u(1), 0.5, 1e-12);
    EXPECT_TRUE(run.list().at(0)->overlap && run.list().at(1)->overlap);
}

TEST(GetOverlaps, OppositeDirectionsAndContainment)
{
    expectPairs(zgCurve::getOverlaps(line(0, 0, 10, 0), line(16, 0, 4, 0)), 1.0, 0.5, 0.4, 1.0,
                1e-12);
    // The second lies inside the first: both its ends give the pairs.
    expectPairs(zgCurve::getOverlaps(line(0, 0, 10, 0), line(2, 0, 6, 0)), 0.2, 0.0, 0.6, 1.0,
                1e-12);
    // The first inside the second: the first's own ends.
    expectPairs(zgCurve::getOverlaps(line(2, 0, 6, 0), line(0, 0, 10, 0)), 0.0, 0.2, 1.0, 0.6,
                1e-12);
}

TEST(GetOverlaps, TheLongerChordIsTheBase)
{
    // The short line leaves the long one's line by 1.5e-07 at its far end:
    // within tolerance of the long line, while the long line's far end is
    // 1.5e-05 from the short one's line. The long one is the base either way.
    const QVector<double> shortLine = line(0, 0, 1, 1.5e-07);
    const QVector<double> longLine = line(0, 0, 100, 0);
    expectPairs(zgCurve::getOverlaps(shortLine, longLine), 0.0, 0.0, 1.0, 0.01, 1e-9);
    expectPairs(zgCurve::getOverlaps(longLine, shortLine), 0.0, 0.0, 0.01, 1.0, 1e-9);
    // At 2.5e-07 the short line's end is off the base line.
    EXPECT_TRUE(zgCurve::getOverlaps(line(0, 0, 1, 2.5e-07), longLine).isEmpty());
}

TEST(GetOverlaps, LinesMeetingOnlyAtAnEnd)
{
    // Nearly collinear lines that share one end: one pair only, so no
    // overlap, and the chord crossing reports the common point.
    const QVector<double> first = line(0, 0, 10, 0);
    const QVector<double> second = line(10, 0, 20, 1e-08);
    EXPECT_TRUE(zgCurve::getOverlaps(first, second).isEmpty());
    OverlapRun run(first, second);
    ASSERT_EQ(run.list().size(), 1);
    EXPECT_FALSE(run.list().at(0)->overlap);
    EXPECT_EQ(run.t(0), 1.0);
    EXPECT_EQ(run.u(0), 0.0);
    // Exactly collinear, the chords are parallel for the line crossing, which
    // then finds nothing either.
    OverlapRun collinear(first, line(10, 0, 20, 0));
    EXPECT_TRUE(collinear.list().isEmpty());
}

TEST(GetOverlaps, CollinearLinesThatDoNotTouch)
{
    EXPECT_TRUE(zgCurve::getOverlaps(line(0, 0, 10, 0), line(20, 0, 30, 0)).isEmpty());
    OverlapRun run(line(0, 0, 10, 0), line(20, 0, 30, 0));
    EXPECT_TRUE(run.list().isEmpty());
}

TEST(GetOverlaps, ParallelLinesApartAreNoOverlap)
{
    EXPECT_TRUE(zgCurve::getOverlaps(line(0, 0, 10, 0), line(0, 3e-07, 10, 3e-07)).isEmpty());
    // 1e-07 apart they lie on each other within tolerance.
    expectPairs(zgCurve::getOverlaps(line(0, 0, 10, 0), line(0, 1e-07, 10, 1e-07)), 0.0, 0.0,
                1.0, 1.0, 1e-9);
}

TEST(GetOverlaps, TinyOverlapsDoNotCount)
{
    // Lines that share 2e-06 of their length: the pairs differ by 2e-07 in
    // time, below 4e-07, so there is only one pair.
    const QVector<double> first = line(0, 0, 10, 0);
    EXPECT_TRUE(zgCurve::getOverlaps(first, line(10 - 2e-06, 0, 20, 0)).isEmpty());
    // 1e-05 of common length is 1e-06 in time: an overlap.
    const auto pairs = zgCurve::getOverlaps(first, line(10 - 1e-05, 0, 20, 0));
    ASSERT_EQ(pairs.size(), 2);
    EXPECT_NEAR(pairs.at(0).at(0), 1.0, 1e-12);
    EXPECT_NEAR(pairs.at(1).at(0), 1.0 - 1e-06, 1e-12);
}

TEST(GetOverlaps, StraightAndCurvedNeverOverlap)
{
    // A hump whose ends lie on the line: the handles leave it.
    const QVector<double> hump = values(2, 0, 4, 3, 6, 3, 8, 0);
    EXPECT_TRUE(zgCurve::getOverlaps(line(0, 0, 10, 0), hump).isEmpty());
    EXPECT_TRUE(zgCurve::getOverlaps(hump, line(0, 0, 10, 0)).isEmpty());
    // Through the dispatcher the curve-line finder reports both ends.
    OverlapRun run(line(0, 0, 10, 0), hump);
    ASSERT_EQ(run.list().size(), 2);
    EXPECT_FALSE(run.list().at(0)->overlap);
    EXPECT_NEAR(run.t(0), 0.2, 1e-9);
    EXPECT_NEAR(run.t(1), 0.8, 1e-9);
}

TEST(GetOverlaps, HandlesOnTheLineMakeCurvesCollinear)
{
    // The first curve runs along the x axis but doubles back (its first handle
    // overshoots the chord), so it is not straight; the second is a straight
    // part of it. All handles lie on the line, so the pairs are searched
    // whatever the flags say.
    const QVector<double> doubling = values(0, 0, 12, 0, -2, 0, 10, 0);
    const QVector<double> part = zgCurve::getPart(doubling, 0.05, 0.2);
    ASSERT_FALSE(zgCurve::isStraight(doubling));
    ASSERT_TRUE(zgCurve::isStraight(part));
    expectPairs(zgCurve::getOverlaps(doubling, part), 0.05, 0.0, 0.2, 1.0, 1e-9);
    // Lift the part's handles off the line: the pairs are still found, and
    // the handles of the stretch refuse them.
    QVector<double> lifted = part;
    lifted[3] += 1e-03;
    lifted[5] += 1e-03;
    ASSERT_FALSE(zgCurve::isStraight(lifted));
    EXPECT_TRUE(zgCurve::getOverlaps(doubling, lifted).isEmpty());
}

TEST(GetOverlaps, CoincidentCurvedPieces)
{
    // Two pieces of the arch that share the stretch from 0.3 to 0.6.
    const QVector<double> first = zgCurve::getPart(kArch, 0.0, 0.6);
    const QVector<double> second = zgCurve::getPart(kArch, 0.3, 1.0);
    expectPairs(zgCurve::getOverlaps(first, second), 1.0, 3.0 / 7.0, 0.5, 0.0, 1e-9);
    OverlapRun run(first, second);
    ASSERT_EQ(run.list().size(), 2);
    EXPECT_NEAR(run.t(0), 0.5, 1e-9);
    EXPECT_NEAR(run.t(1), 1.0, 1e-9);
    EXPECT_TRUE(run.list().at(0)->overlap);
    EXPECT_TRUE(run.list().at(1)->intersection()->overlap);
    EXPECT_NEAR(run.list().at(0)->point.getDistance(zgCurve::getPoint(kArch, 0.3)), 0.0, 1e-9);
}

TEST(GetOverlaps, PieceInsideACurve)
{
    const QVector<double> middle = zgCurve::getPart(kArch, 0.25, 0.75);
    expectPairs(zgCurve::getOverlaps(kArch, middle), 0.25, 0.0, 0.75, 1.0, 1e-9);
    expectPairs(zgCurve::getOverlaps(middle, kArch), 0.0, 0.25, 1.0, 0.75, 1e-9);
    // The reversed piece: its start lies at 0.75.
    const QVector<double> reversed = zgCurve::getPart(kArch, 0.75, 0.25);
    expectPairs(zgCurve::getOverlaps(kArch, reversed), 0.75, 0.0, 0.25, 1.0, 1e-9);
}

TEST(GetOverlaps, HandlesOfTheCommonStretchMustAgree)
{
    const QVector<double> middle = zgCurve::getPart(kArch, 0.25, 0.75);
    // A first handle longer by 3e-07: the ends still lie on the arch, the
    // handles of the stretch differ by more than 2e-07.
    QVector<double> off = middle;
    off[2] += 3e-07;
    EXPECT_TRUE(zgCurve::getOverlaps(kArch, off).isEmpty());
    // By 1e-07 it is the same stretch.
    QVector<double> close = middle;
    close[2] += 1e-07;
    EXPECT_EQ(zgCurve::getOverlaps(kArch, close).size(), 2);
}

TEST(GetOverlaps, SameEndsDifferentHandlesAreNoOverlap)
{
    // Both ends in common, different shapes: the pairs are found, the handles
    // refuse them, and the dispatcher goes on to the clipping, which finds
    // the two common ends as crossings.
    const QVector<double> flatter = values(0, 0, 30, 30, 70, 30, 100, 0);
    EXPECT_TRUE(zgCurve::getOverlaps(kArch, flatter).isEmpty());
    OverlapRun run(kArch, flatter);
    ASSERT_EQ(run.list().size(), 2);
    EXPECT_FALSE(run.list().at(0)->overlap);
    EXPECT_NEAR(run.t(0), 0.0, 1e-9);
    EXPECT_NEAR(run.t(1), 1.0, 1e-9);
}

TEST(GetOverlaps, OverlapsIgnoreTheJoinsAndPassTheFilter)
{
    opParam joined;
    joined.joinedAtStart = true;
    joined.joinedAtEnd = true;
    OverlapRun run(bare(0, 0, 10, 0), bare(0, 0, 10, 0), joined);
    ASSERT_EQ(run.list().size(), 2);
    EXPECT_EQ(run.t(0), 0.0);
    EXPECT_EQ(run.t(1), 1.0);

    opParam refusing;
    refusing.filter = [](zgCurveLocation *location) { return !location->overlap; };
    OverlapRun refused(bare(0, 0, 10, 0), bare(0, 0, 10, 0), refusing);
    EXPECT_TRUE(refused.list().isEmpty());
}

TEST(GetOverlaps, ShortArraysGiveNothing)
{
    EXPECT_TRUE(zgCurve::getOverlaps(QVector<double>(), kArch).isEmpty());
    EXPECT_TRUE(zgCurve::getOverlaps(kArch, QVector<double>{ 1, 2, 3 }).isEmpty());
}
