// Division of contours at their locations: the walk from the last location to
// the first with the rescaling of times, the end bounds, the clearing of
// handles on straight curves, the three modes, and the chains of locations
// that stand at one point, on hand-made lists and on the crossings that the
// intersection sweep finds.
#include "boolean/tracing_test_support.h"

#include <gtest/gtest.h>

#include <random>

using namespace tracingtest;
using zgtest::newContour;
using zgtest::squarePoints;

namespace {

// An open straight contour from (0, 0) to (100, 0), held for a test.
struct Line
{
    Line() : path(newContour({zgPoint(0, 0), zgPoint(100, 0)}, false)) { path->addRef(); }
    ~Line() { path->release(); }
    zgCurve *curve() const { return path->getCurves().at(0); }
    zgPath *path;
};

// x of the line at curve time t: without handles its speed is not constant,
// so that time 0.25 lies at 15.625 and not at 25.
double lineX(double t)
{
    return zgCurve::getPoint({0, 0, 0, 0, 100, 0, 100, 0}, t).x;
}

void expectAt(const zgSegment *segment, double x, double y, double tolerance = 1e-12)
{
    ASSERT_NE(segment, nullptr);
    EXPECT_NEAR(segment->point.x, x, tolerance);
    EXPECT_NEAR(segment->point.y, y, tolerance);
}

// Every location stands on its segment, at 0 or 1 of its curve, and its
// partner is on the chain that hangs on that segment.
void expectDivided(const QList<zgCurveLocation *> &locations, double tolerance)
{
    for (zgCurveLocation *location : locations) {
        zgSegment *segment = location->segmentM();
        ASSERT_NE(segment, nullptr);
        EXPECT_NEAR(segment->point.x, location->point.x, tolerance);
        EXPECT_NEAR(segment->point.y, location->point.y, tolerance);
        EXPECT_TRUE(location->time == 0.0 || location->time == 1.0) << location->time;
        ASSERT_NE(location->curve, nullptr);
        EXPECT_TRUE(location->curve->segment1() == segment
                    || location->curve->segment2() == segment);
        ASSERT_NE(segment->intersection(), nullptr);
        EXPECT_TRUE(chainOf(segment->intersection()).contains(location->intersection()));
    }
}

} // namespace

TEST(DivideLocations, TwoTimesOnOneStraightCurveRescaleTheSecondSplit)
{
    Line line;
    zgCurveLocation *quarter = locationWithPartner(line.curve(), 0.25);
    zgCurveLocation *threeQuarters = locationWithPartner(line.curve(), 0.75);
    const QList<zgCurveLocation *> list{quarter, threeQuarters};
    HeldLocations held(list);

    const QList<zgCurveLocation *> result = zgTracingInternals::divideLocations(list, 0);

    EXPECT_EQ(result, list);
    ASSERT_EQ(line.path->segments.size(), 4);
    // 0.75 splits first; 0.25 then falls at 0.25 / 0.75 of the first piece,
    // which the handles written by the split keep at the original place.
    EXPECT_EQ(lineX(0.25), 15.625);
    expectAt(line.path->segments.at(1), lineX(0.25), 0.0);
    expectAt(line.path->segments.at(2), lineX(0.75), 0.0);
    for (zgCurve *curve : line.path->getCurves())
        EXPECT_FALSE(curve->hasHandles());
    for (zgSegment *segment : line.path->segments)
        EXPECT_FALSE(segment->hasHandles());
    EXPECT_EQ(quarter->segmentM(), line.path->segments.at(1));
    EXPECT_EQ(threeQuarters->segmentM(), line.path->segments.at(2));
    EXPECT_EQ(quarter->time, 0.0);
    EXPECT_EQ(threeQuarters->time, 0.0);
    EXPECT_EQ(line.path->segments.at(1)->intersection(), quarter->intersection());
    EXPECT_EQ(line.path->segments.at(2)->intersection(), threeQuarters->intersection());
    EXPECT_EQ(quarter->intersection()->refCount, 2); // held here and by the segment
    expectDivided(list, 1e-12);
}

TEST(DivideLocations, LocationAtTheEndIsRebornOnTheSecondPiece)
{
    Line line;
    zgCurveLocation *end = locationWithPartner(line.curve(), 1.0);
    zgCurveLocation *middle = locationWithPartner(line.curve(), 0.5);
    ASSERT_EQ(end->time, 1.0); // the last curve of an open contour has no next
    const QList<zgCurveLocation *> list{middle, end};
    HeldLocations held(list);

    zgTracingInternals::divideLocations(list, 0);

    ASSERT_EQ(line.path->segments.size(), 3);
    const QList<zgCurve *> curves = line.path->getCurves();
    ASSERT_EQ(curves.size(), 2);
    // The end location stands at the end of the new second piece...
    EXPECT_EQ(end->segmentM(), line.path->segments.at(2));
    EXPECT_EQ(end->curve, curves.at(1));
    EXPECT_EQ(end->time, 1.0);
    // ...and the middle one, bound through the previous curve, at the end of
    // the first piece.
    EXPECT_EQ(middle->segmentM(), line.path->segments.at(1));
    EXPECT_EQ(middle->curve, curves.at(0));
    EXPECT_EQ(middle->time, 1.0);
    expectAt(middle->segmentM(), lineX(0.5), 0.0);
    expectDivided(list, 1e-12);
}

TEST(DivideLocations, TimesBelowTheLowerBoundNeverSplitAndChainOnOneSegment)
{
    Line line;
    zgCurveLocation *atStart = locationWithPartner(line.curve(), 0.0);
    zgCurveLocation *nearStart = locationWithPartner(line.curve(), 1e-07);
    const QList<zgCurveLocation *> list{atStart, nearStart};
    HeldLocations held(list);

    zgTracingInternals::divideLocations(list, 0);

    ASSERT_EQ(line.path->segments.size(), 2);
    zgSegment *first = line.path->segments.at(0);
    EXPECT_EQ(atStart->segmentM(), first);
    EXPECT_EQ(nearStart->segmentM(), first);
    EXPECT_EQ(nearStart->time, 0.0);
    expectAt(first, 0.0, 0.0);
    // The first one walked (1e-07) hangs its partner; the second joins the
    // chains of both pairs into one.
    EXPECT_EQ(first->intersection(), nearStart->intersection());
    const QList<zgCurveLocation *> chain = chainOf(first->intersection());
    EXPECT_EQ(chain.size(), 4);
    EXPECT_EQ(chain.toSet().size(), 4);
    EXPECT_TRUE(chain.contains(atStart));
    EXPECT_TRUE(chain.contains(nearStart));
    EXPECT_TRUE(chain.contains(atStart->intersection()));
    expectDivided(list, 1e-12);
}

TEST(DivideLocations, TimesAboveTheUpperBoundTakeTheEndSegment)
{
    Line line;
    zgCurveLocation *nearEnd = locationWithPartner(line.curve(), 0.9999997);
    const QList<zgCurveLocation *> list{nearEnd};
    HeldLocations held(list);

    zgTracingInternals::divideLocations(list, 0);

    ASSERT_EQ(line.path->segments.size(), 2);
    EXPECT_EQ(nearEnd->segmentM(), line.path->segments.at(1));
    EXPECT_EQ(nearEnd->time, 1.0);
    // The location takes the segment's point.
    expectAt(line.path->segments.at(1), 100.0, 0.0);
    EXPECT_EQ(nearEnd->point.x, 100.0);
}

TEST(DivideLocations, TimesJustInsideTheBoundsSplit)
{
    Line line;
    zgCurveLocation *low = locationWithPartner(line.curve(), 4e-07);
    zgCurveLocation *high = locationWithPartner(line.curve(), 0.9999996);
    const QList<zgCurveLocation *> list{low, high};
    HeldLocations held(list);

    zgTracingInternals::divideLocations(list, 0);

    ASSERT_EQ(line.path->segments.size(), 4);
    expectAt(line.path->segments.at(1), lineX(4e-07), 0.0, 1e-12);
    expectAt(line.path->segments.at(2), lineX(0.9999996), 0.0, 1e-9);
    expectDivided(list, 1e-9);
}

TEST(DivideLocations, EndTimesOfTheEarlierLocationStopTheRescaling)
{
    {
        // Above the upper bound: the walk did not split, so 0.3 is not rescaled.
        Line line;
        zgCurveLocation *inner = locationWithPartner(line.curve(), 0.3);
        zgCurveLocation *nearEnd = locationWithPartner(line.curve(), 0.9999999);
        const QList<zgCurveLocation *> list{inner, nearEnd};
        HeldLocations held(list);
        zgTracingInternals::divideLocations(list, 0);
        ASSERT_EQ(line.path->segments.size(), 3);
        // Rescaled, it would have landed at lineX(0.30000003).
        ASSERT_GT(lineX(0.30000003) - lineX(0.3), 1e-6);
        expectAt(line.path->segments.at(1), lineX(0.3), 0.0, 1e-9);
    }
    {
        // Below the lower bound: 5e-08 stays below it instead of becoming 0.5.
        Line line;
        zgCurveLocation *tiny = locationWithPartner(line.curve(), 5e-08);
        zgCurveLocation *small = locationWithPartner(line.curve(), 1e-07);
        const QList<zgCurveLocation *> list{tiny, small};
        HeldLocations held(list);
        zgTracingInternals::divideLocations(list, 0);
        EXPECT_EQ(line.path->segments.size(), 2);
        EXPECT_EQ(tiny->segmentM(), line.path->segments.at(0));
    }
}

TEST(DivideLocations, ThreeTimesOnACubicKeepItsGeometry)
{
    zgPath *path = new zgPath(nullptr, false);
    path->addRef();
    path->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(30, 60)));
    path->addSegment(new zgSegment(zgPoint(100, 10), zgPoint(-20, 70), zgPoint()));
    const QVector<double> original = path->getCurves().at(0)->getValues(nullptr);
    const QVector<double> times{0.2, 0.5, 0.8};
    QList<zgCurveLocation *> list;
    for (double t : times)
        list.append(locationWithPartner(path->getCurves().at(0), t));
    HeldLocations held(list);

    zgTracingInternals::divideLocations(list, 0);

    ASSERT_EQ(path->segments.size(), 5);
    const QList<zgCurve *> curves = path->getCurves();
    QVector<double> bounds{0.0, 0.2, 0.5, 0.8, 1.0};
    for (int i = 0; i < curves.size(); ++i) {
        const QVector<double> piece = curves.at(i)->getValues(nullptr);
        const QVector<double> expected = zgCurve::getPart(original, bounds[i], bounds[i + 1]);
        for (int k = 0; k < 8; ++k)
            EXPECT_NEAR(piece[k], expected[k], 1e-9) << "piece " << i << " value " << k;
        EXPECT_TRUE(curves.at(i)->hasHandles());
    }
    for (int i = 0; i < 3; ++i) {
        const zgPoint expected = zgCurve::getPoint(original, times[i]);
        expectAt(list.at(i)->segmentM(), expected.x, expected.y, 1e-9);
        EXPECT_EQ(list.at(i)->segmentM(), path->segments.at(i + 1));
    }
    expectDivided(list, 1e-9);
    path->release();
}

TEST(DivideLocations, ThreeLinesThroughOnePointFormOneChain)
{
    XPath lines;
    addPolygon(lines, {zgPoint(0, 50), zgPoint(100, 50)}, false);
    addPolygon(lines, {zgPoint(50, 0), zgPoint(50, 100)}, false);
    addPolygon(lines, {zgPoint(0, 0), zgPoint(100, 100)}, false);
    QList<zgCurveLocation *> list;
    for (int a = 0; a < 3; ++a) {
        for (int b = a + 1; b < 3; ++b) {
            zgCurveLocation *first = locationAt(lines.children.at(a)->getCurves().at(0), 0.5);
            zgCurveLocation *second = locationAt(lines.children.at(b)->getCurves().at(0), 0.5);
            pair(first, second);
            zgCurveLocation::insert(list, first, false);
            zgCurveLocation::insert(list, second, false);
        }
    }
    ASSERT_EQ(list.size(), 6);
    HeldLocations held(list);

    zgTracingInternals::divideLocations(list, 0);

    for (zgPath *child : lines.children) {
        ASSERT_EQ(child->segments.size(), 3);
        expectAt(child->segments.at(1), 50.0, 50.0, 1e-12);
    }
    expectDivided(list, 1e-12);
    // All six stand on one chain, each once, whichever segment is asked.
    for (zgCurveLocation *location : list) {
        const QList<zgCurveLocation *> chain = chainOf(location->segmentM()->intersection());
        EXPECT_EQ(chain.size(), 6);
        EXPECT_EQ(chain.toSet(), list.toSet());
    }
}

TEST(DivideLocations, ModeOneWithoutOverlapsDividesNothing)
{
    Line line;
    const QList<zgCurveLocation *> list{locationWithPartner(line.curve(), 0.5)};
    HeldLocations held(list);

    const QList<zgCurveLocation *> result = zgTracingInternals::divideLocations(list, 1);

    EXPECT_EQ(result, list);
    EXPECT_EQ(line.path->segments.size(), 2);
    EXPECT_EQ(list.at(0)->segmentM(), nullptr);
    EXPECT_EQ(line.path->segments.at(0)->intersection(), nullptr);
}

TEST(DivideLocations, ModeOneTakesOverlapsOnlyAndListsThemInOrder)
{
    Line line;
    zgCurveLocation *a = locationWithPartner(line.curve(), 0.2);
    zgCurveLocation *b = locationWithPartner(line.curve(), 0.4);
    zgCurveLocation *c = locationWithPartner(line.curve(), 0.6);
    a->overlap = true;
    c->overlap = true;
    const QList<zgCurveLocation *> list{a, b, c};
    HeldLocations held(list);

    const QList<zgCurveLocation *> result = zgTracingInternals::divideLocations(list, 1);

    EXPECT_EQ(result, (QList<zgCurveLocation *>{a, c}));
    ASSERT_EQ(line.path->segments.size(), 4);
    expectAt(line.path->segments.at(1), lineX(0.2), 0.0, 1e-12);
    expectAt(line.path->segments.at(2), lineX(0.6), 0.0, 1e-12);
    EXPECT_EQ(b->segmentM(), nullptr);
}

TEST(DivideLocations, ModeTwoTakesTheLocationsWhoseCurveHasGone)
{
    Line line;
    zgCurveLocation *alive = locationAt(line.curve(), 0.25);
    zgCurveLocation *aliveOther = locationAt(line.curve(), 0.75);
    pair(alive, aliveOther);
    zgCurveLocation *orphan = locationWithPartner(line.curve(), 0.5); // partner has no curve
    QList<zgCurveLocation *> list{alive, orphan, aliveOther};
    HeldLocations held(list);
    // A link of an earlier pass that mode 2 must drop before dividing.
    zgSegment *linked = line.path->segments.at(0);
    orphan->setSegmentM(linked);
    linked->setIntersection(alive);

    const QList<zgCurveLocation *> result = zgTracingInternals::divideLocations(list, 2);

    EXPECT_EQ(result, (QList<zgCurveLocation *>{orphan}));
    EXPECT_EQ(linked->intersection(), nullptr);
    ASSERT_EQ(line.path->segments.size(), 3);
    expectAt(line.path->segments.at(1), lineX(0.5), 0.0, 1e-12);
    EXPECT_EQ(orphan->segmentM(), line.path->segments.at(1));
    EXPECT_EQ(line.path->segments.at(1)->intersection(), orphan->intersection());
    // The live pair is neither hung nor chained.
    EXPECT_EQ(line.path->segments.at(2)->intersection(), nullptr);
    EXPECT_EQ(alive->next(), nullptr);
    EXPECT_EQ(aliveOther->previous(), nullptr);
}

TEST(DivideLocations, ModeTwoWithEverythingAliveReturnsTheInput)
{
    Line line;
    zgCurveLocation *a = locationAt(line.curve(), 0.25);
    zgCurveLocation *b = locationAt(line.curve(), 0.75);
    pair(a, b);
    const QList<zgCurveLocation *> list{a, b};
    HeldLocations held(list);

    EXPECT_EQ(zgTracingInternals::divideLocations(list, 2), list);
    EXPECT_EQ(line.path->segments.size(), 2);
}

TEST(DivideLocations, EmptyListGivesItselfBack)
{
    EXPECT_TRUE(zgTracingInternals::divideLocations({}, 0).isEmpty());
    EXPECT_TRUE(zgTracingInternals::divideLocations({}, 1).isEmpty());
    EXPECT_TRUE(zgTracingInternals::divideLocations({}, 2).isEmpty());
}

TEST(LinkIntersections, JoinsWholeChainsOnce)
{
    zgCurveLocation a, b, c, d;
    zgTracingInternals::linkIntersections(&a, &b);
    EXPECT_EQ(a.next(), &b);
    EXPECT_EQ(b.previous(), &a);
    zgTracingInternals::linkIntersections(&c, &d);
    // b is on a's chain: nothing happens, from either end.
    zgTracingInternals::linkIntersections(&a, &b);
    zgTracingInternals::linkIntersections(&b, &a);
    EXPECT_EQ(b.next(), nullptr);
    EXPECT_EQ(a.previous(), nullptr);
    // From the middle of a chain to the tail of another: the whole of d's
    // chain (c, d) goes behind the tail of b's chain (a, b).
    zgTracingInternals::linkIntersections(&b, &d);
    EXPECT_EQ(chainOf(&a), (QList<zgCurveLocation *>{&a, &b, &c, &d}));
    zgTracingInternals::linkIntersections(&d, &a);
    zgTracingInternals::linkIntersections(&c, &b);
    EXPECT_EQ(chainOf(&d), (QList<zgCurveLocation *>{&a, &b, &c, &d}));
    zgTracingInternals::linkIntersections(nullptr, &a);
    zgTracingInternals::linkIntersections(&a, nullptr);
    EXPECT_EQ(chainOf(&d).size(), 4);
}

TEST(DivideLocations, CrossingsOfTwoSquaresBecomeSegments)
{
    XPath first;
    XPath second;
    addPolygon(first, squarePoints(0, 0, 100));
    addPolygon(second, squarePoints(50, 50, 100));
    QList<zgCurveLocation *> list = zgCurveLocation::expand(first.getCrossings(&second));
    ASSERT_EQ(list.size(), 4);
    HeldLocations held(list);

    const QList<zgCurveLocation *> result = zgTracingInternals::divideLocations(list, 0);

    EXPECT_EQ(result, list);
    EXPECT_EQ(first.children.at(0)->segments.size(), 6);
    EXPECT_EQ(second.children.at(0)->segments.size(), 6);
    expectDivided(list, 1e-9);
    for (zgCurveLocation *location : list) {
        // The partner is on the other square, hanging directly on the segment.
        EXPECT_EQ(location->segmentM()->intersection(), location->intersection());
        EXPECT_NE(location->segmentM()->path, location->intersection()->segmentM()->path);
    }
}

// Random pairs of polygons and cubic blobs: after division every location
// stands on its segment with its partner on that segment's chain, and the
// divided contours enclose the same area as before.
TEST(DivideLocations, RandomShapesKeepTheirGeometry)
{
    std::mt19937 random(20261123);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    std::uniform_int_distribution<int> count(3, 7);
    int locationsChecked = 0;
    for (int round = 0; round < 200; ++round) {
        XPath shapes[2];
        double areas[2];
        for (int k = 0; k < 2; ++k) {
            zgPath *path = new zgPath(nullptr, true);
            const int n = count(random);
            const bool curved = round % 2 == 1;
            for (int i = 0; i < n; ++i) {
                const zgPoint point(coordinate(random), coordinate(random));
                const zgPoint handle = curved ? zgPoint(0.3 * (coordinate(random) - 50.0),
                                                        0.3 * (coordinate(random) - 50.0))
                                              : zgPoint();
                path->addSegment(new zgSegment(point, handle.negate(), handle));
            }
            adopt(shapes[k], path);
            areas[k] = plainArea(path);
        }
        QList<zgCurveLocation *> list
            = zgCurveLocation::expand(shapes[0].getCrossings(&shapes[1]));
        HeldLocations held(list);
        zgTracingInternals::divideLocations(list, 0);
        expectDivided(list, 1e-6);
        locationsChecked += list.size();
        for (int k = 0; k < 2; ++k)
            EXPECT_NEAR(plainArea(shapes[k].children.at(0)), areas[k],
                        1e-6 * (1.0 + std::fabs(areas[k])));
        if (HasFailure())
            FAIL() << "round " << round;
    }
    EXPECT_GT(locationsChecked, 400);
}
