// The tracer on divided outlines whose windings come from an independent
// oracle: overlapping squares, a square and a circle, nested shapes, a
// figure eight and three outlines through one point under every operator
// code; identical contours, slivers, the start, switch and acceptance rules
// on hand-set windings; and random shapes against the regions they bound.
#include "boolean/tracing_pipeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <random>

using namespace tracingtest;
using zgtest::newContour;
using zgtest::squarePoints;
using windingoracle::Polygon;

namespace {

const int kOps[] = {XPath::opNone, XPath::opIntersect, XPath::opUnite, XPath::opSubtract,
                    XPath::opExclude};

// The absolute areas of traced contours, largest first.
QVector<double> areasOf(const QVector<zgPath *> &paths)
{
    QVector<double> areas;
    for (zgPath *path : paths)
        areas.append(std::fabs(plainArea(path)));
    std::sort(areas.begin(), areas.end(), std::greater<double>());
    return areas;
}

QVector<int> sizesOf(const QVector<zgPath *> &paths)
{
    QVector<int> sizes;
    for (zgPath *path : paths)
        sizes.append(path->segments.size());
    std::sort(sizes.begin(), sizes.end(), std::greater<int>());
    return sizes;
}

// Traces first op second with oracle windings; checks every traced contour
// is closed, fresh (count 0, no parent) and agrees with the operands'
// regions on a grid over rect.
QVector<zgPath *> traceAndCompare(XPath &first, XPath *second, int op, const zgRect &rect)
{
    Pipeline pipeline(first, second, op);
    pipeline.setOracleWindings();
    pipeline.clearFlags();
    const QVector<Polygon> a = windingoracle::flatten(first, 32);
    const QVector<Polygon> b = second ? windingoracle::flatten(*second, 32) : QVector<Polygon>();
    const QVector<zgPath *> traced = pipeline.trace();
    for (zgPath *path : traced) {
        EXPECT_TRUE(path->closed);
        EXPECT_EQ(path->refCount, 0);
        EXPECT_EQ(path->parent, nullptr);
    }
    const RegionAgreement agreement = compareRegions(traced, a, b, op, rect, 60);
    EXPECT_GT(agreement.sampled, 1000);
    EXPECT_EQ(agreement.agreed, agreement.sampled) << "op " << op;
    return traced;
}

void addSquare(XPath &compound, double x, double y, double size)
{
    addPolygon(compound, squarePoints(x, y, size));
}

} // namespace

TEST(TracePaths, TwoOverlappingSquaresUnderEveryOperator)
{
    struct Expected
    {
        QVector<int> sizes;
        QVector<double> areas;
    };
    const Expected expected[] = {
        {{}, {}}, // opNone needs one compound: see the next test
        {{4}, {2500.0}},
        {{8}, {17500.0}},
        {{6}, {7500.0}},
        {{6, 6}, {7500.0, 7500.0}}, // the two differences, touching at the crossings
    };
    for (int op : kOps) {
        if (op == XPath::opNone)
            continue;
        XPath first;
        XPath second;
        addSquare(first, 0, 0, 100);
        addSquare(second, 50, 50, 100);
        const QVector<zgPath *> traced
            = traceAndCompare(first, &second, op, zgRect(-10, -10, 170, 170));
        EXPECT_EQ(sizesOf(traced), expected[op].sizes) << "op " << op;
        const QVector<double> areas = areasOf(traced);
        ASSERT_EQ(areas.size(), expected[op].areas.size()) << "op " << op;
        for (int i = 0; i < areas.size(); ++i)
            EXPECT_NEAR(areas[i], expected[op].areas[i], 1e-9) << "op " << op;
        releasePaths(traced);
    }
}

TEST(TracePaths, TwoSquaresInOneCompoundUnderOpNone)
{
    // Overlapping squares untangle into the outer outline and the lens;
    // nested ones, which do not cross, stay as they are.
    struct Case
    {
        double x, size;
        QVector<int> sizes;
        QVector<double> areas;
    };
    const Case cases[] = {{50, 100, {8, 4}, {17500.0, 2500.0}},
                          {25, 50, {4, 4}, {10000.0, 2500.0}}};
    for (const Case &c : cases) {
        XPath both;
        addSquare(both, 0, 0, 100);
        addSquare(both, c.x, c.x, c.size);
        const QVector<zgPath *> traced
            = traceAndCompare(both, nullptr, XPath::opNone, zgRect(-10, -10, 170, 170));
        EXPECT_EQ(sizesOf(traced), c.sizes);
        const QVector<double> areas = areasOf(traced);
        ASSERT_EQ(areas.size(), c.areas.size());
        for (int i = 0; i < areas.size(); ++i)
            EXPECT_NEAR(areas[i], c.areas[i], 1e-9);
        releasePaths(traced);
    }
}

TEST(TracePaths, SquareAndCircleUnderEveryOperator)
{
    for (int op : kOps) {
        XPath first;
        XPath second;
        addSquare(first, 0, 0, 100);
        adopt(op == XPath::opNone ? first : second, newCircle(zgPoint(100, 50), 40));
        const QVector<zgPath *> traced
            = traceAndCompare(first, op == XPath::opNone ? nullptr : &second, op,
                              zgRect(-10, -10, 160, 120));
        EXPECT_EQ(traced.size(), op == XPath::opNone || op == XPath::opExclude ? 2 : 1)
            << "op " << op;
        releasePaths(traced);
    }
}

TEST(TracePaths, NestedSquaresKeepOrDropWholeContours)
{
    // Outer as the first operand and inner as the second, then the other
    // way round: the traced sizes say which contours survived.
    const QVector<int> outerFirst[] = {{}, {4}, {4}, {4, 4}, {4, 4}};
    const QVector<int> innerFirst[] = {{}, {4}, {4}, {}, {4, 4}};
    for (int op : kOps) {
        if (op == XPath::opNone)
            continue;
        for (int order = 0; order < 2; ++order) {
            XPath outer;
            XPath inner;
            addSquare(outer, 0, 0, 100);
            addSquare(inner, 25, 25, 50);
            XPath &first = order == 0 ? outer : inner;
            XPath &second = order == 0 ? inner : outer;
            const QVector<zgPath *> traced
                = traceAndCompare(first, &second, op, zgRect(-10, -10, 120, 120));
            EXPECT_EQ(sizesOf(traced), order == 0 ? outerFirst[op] : innerFirst[op])
                << "op " << op << " order " << order;
            const QVector<double> areas = areasOf(traced);
            if (op == XPath::opIntersect) {
                EXPECT_NEAR(areas.value(0), 2500.0, 1e-9);
            } else if (op == XPath::opUnite) {
                EXPECT_NEAR(areas.value(0), 10000.0, 1e-9);
            }
            releasePaths(traced);
        }
    }
}

TEST(TracePaths, FigureEightUnderOpNoneGivesTwoLoops)
{
    XPath eight;
    addPolygon(eight, {zgPoint(0, 0), zgPoint(100, 100), zgPoint(100, 0), zgPoint(0, 100)});
    const QVector<zgPath *> traced
        = traceAndCompare(eight, nullptr, XPath::opNone, zgRect(-10, -10, 120, 120));
    EXPECT_EQ(sizesOf(traced), (QVector<int>{3, 3}));
    ASSERT_EQ(traced.size(), 2);
    const double area0 = plainArea(traced.at(0));
    const double area1 = plainArea(traced.at(1));
    EXPECT_NEAR(std::fabs(area0), 2500.0, 1e-9);
    EXPECT_NEAR(std::fabs(area1), 2500.0, 1e-9);
    // The two lobes of a figure eight turn opposite ways.
    EXPECT_LT(area0 * area1, 0.0);
    releasePaths(traced);
}

TEST(TracePaths, ThreeOutlinesThroughOnePointUnderOpNone)
{
    // Squares (0, 0, 100) and (50, 50, 100) and a triangle whose long side
    // runs through their crossing at (100, 50): six locations on one chain.
    XPath shapes;
    addSquare(shapes, 0, 0, 100);
    addSquare(shapes, 50, 50, 100);
    addPolygon(shapes, {zgPoint(60, 10), zgPoint(140, 90), zgPoint(140, 10)});
    Pipeline probe(shapes, nullptr, XPath::opNone);
    int longest = 0;
    for (zgSegment *segment : probe.segments) {
        if (segment->intersection())
            longest = std::max(longest, int(chainOf(segment->intersection()).size()));
    }
    EXPECT_EQ(longest, 6);
    const QVector<Polygon> all = windingoracle::flatten(shapes);
    const QVector<zgPath *> traced = probe.trace();
    // The first walk passes the triple point twice and takes sixteen of the
    // twenty segments. The square (100, 10) to (140, 50) that is left cannot
    // be closed: from (100, 10) the walk needs b's stretch at (100, 50),
    // whose next segment is taken already, and there is no backtracking; the
    // walk from b's side then dies on the marks the first one left. So the
    // even-odd fill lacks exactly that square.
    ASSERT_EQ(traced.size(), 1);
    EXPECT_EQ(traced.at(0)->segments.size(), 16);
    QVector<zgPoint> disagreements;
    const RegionAgreement agreement = compareRegions(traced, all, {}, XPath::opNone,
                                                     zgRect(-10, -10, 170, 170), 60,
                                                     &disagreements);
    EXPECT_GT(agreement.sampled, 1000);
    EXPECT_GT(disagreements.size(), 100);
    for (const zgPoint &point : disagreements) {
        EXPECT_TRUE(point.x > 100 && point.x < 140 && point.y > 10 && point.y < 50)
            << point.x << ", " << point.y;
    }
    releasePaths(traced);
}

namespace {

// Two copies of a contour whose segments are linked place by place through
// overlap locations, as when the outlines coincide; flags set as by the
// collection of a boolean.
struct IdenticalPair
{
    explicit IdenticalPair(const QVector<zgPoint> &points)
    {
        addPolygon(first, points);
        addPolygon(second, points);
        zgPath *a = first.children.at(0);
        zgPath *b = second.children.at(0);
        for (int i = 0; i < a->segments.size(); ++i) {
            zgCurveLocation *onA = new zgCurveLocation();
            zgCurveLocation *onB = new zgCurveLocation();
            pair(onA, onB);
            onA->overlap = onB->overlap = true;
            onA->setSegmentM(a->segments.at(i));
            onB->setSegmentM(b->segments.at(i));
            a->segments.at(i)->setIntersection(onB);
            b->segments.at(i)->setIntersection(onA);
            a->segments.at(i)->winding = b->segments.at(i)->winding = 1;
        }
        a->addFlags(zgPath::OverlapsOnlyFlag | zgPath::ValidOverlapsOnlyFlag);
        b->addFlags(zgPath::OverlapsOnlyFlag | zgPath::ValidOverlapsOnlyFlag);
    }
    QList<zgSegment *> segments() const { return segmentsOf(first) + segmentsOf(second); }

    XPath first;
    XPath second;
};

} // namespace

TEST(TracePaths, IdenticalContoursGiveOneCopyForUniteAndIntersect)
{
    for (int op : kOps) {
        IdenticalPair identical(squarePoints(0, 0, 100));
        const QVector<zgPath *> traced = zgTracingInternals::tracePaths(identical.segments(), op);
        const bool copied = op == XPath::opIntersect || op == XPath::opUnite;
        ASSERT_EQ(traced.size(), copied ? 1 : 0) << "op " << op;
        for (zgSegment *segment : identical.segments())
            EXPECT_TRUE(segment->visited);
        if (copied) {
            EXPECT_TRUE(traced.at(0)->equals(identical.first.children.at(0)));
            EXPECT_NE(traced.at(0)->segments.at(0), identical.first.children.at(0)->segments.at(0));
            EXPECT_EQ(traced.at(0)->refCount, 0);
        }
        releasePaths(traced);
    }
}

TEST(TracePaths, IdenticalContoursOfNoAreaGiveNoCopy)
{
    for (int op : {XPath::opIntersect, XPath::opUnite}) {
        IdenticalPair identical({zgPoint(0, 0), zgPoint(100, 0), zgPoint(50, 0)});
        ASSERT_EQ(identical.first.children.at(0)->getArea(true, false), 0.0);
        EXPECT_TRUE(zgTracingInternals::tracePaths(identical.segments(), op).isEmpty());
        for (zgSegment *segment : identical.segments())
            EXPECT_TRUE(segment->visited);
    }
}

TEST(TracePaths, ContoursOnOverlapsThatDifferAreTraced)
{
    IdenticalPair pair(squarePoints(0, 0, 100));
    // Moving one point makes the lists differ: the shortcut does not apply,
    // and the overlap links of a contour that has validOverlapsOnly do not
    // stop it from being started and traced round.
    pair.second.children.at(0)->segments.at(2)->point = zgPoint(100, 101);
    const QVector<zgPath *> traced
        = zgTracingInternals::tracePaths(pair.segments(), XPath::opUnite);
    ASSERT_FALSE(traced.isEmpty());
    EXPECT_EQ(traced.at(0)->segments.size(), 4);
    releasePaths(traced);
}

TEST(TracePaths, OverlapLinkRefusesAStartWithoutValidOverlapsOnly)
{
    IdenticalPair pair(squarePoints(0, 0, 100));
    pair.second.children.at(0)->segments.at(2)->point = zgPoint(100, 101);
    for (zgPath *child : pair.first.children + pair.second.children)
        child->removeFlags(zgPath::ValidOverlapsOnlyFlag);
    EXPECT_TRUE(zgTracingInternals::tracePaths(pair.segments(), XPath::opUnite).isEmpty());
    // Nothing was started, so nothing was visited.
    for (zgSegment *segment : pair.segments())
        EXPECT_FALSE(segment->visited);
}

namespace {

// A closed contour going out along the x axis and back, with count segments
// (at least 4) and no area.
QVector<zgPoint> sliverPoints(int count)
{
    QVector<zgPoint> points;
    const int out = count / 2;
    for (int i = 0; i <= out; ++i)
        points.append(zgPoint(10.0 * i, 0.0));
    for (int i = out - 1; points.size() < count; --i)
        points.append(zgPoint(10.0 * i + (i == 0 ? 5.0 : 0.0), 0.0));
    return points;
}

} // namespace

TEST(TracePaths, SliversOfEightSegmentsVanishAndOfNineStay)
{
    for (int op : kOps) {
        for (int count : {8, 9}) {
            XPath sliver;
            addPolygon(sliver, sliverPoints(count));
            ASSERT_EQ(sliver.children.at(0)->segments.size(), count);
            for (zgSegment *segment : segmentsOf(sliver))
                segment->winding = op == XPath::opIntersect ? 2 : 1;
            const QVector<zgPath *> traced
                = zgTracingInternals::tracePaths(segmentsOf(sliver), op);
            ASSERT_EQ(traced.size(), count == 9 ? 1 : 0) << "op " << op << " count " << count;
            if (count == 9) {
                EXPECT_EQ(traced.at(0)->segments.size(), 9);
                EXPECT_EQ(plainArea(traced.at(0)), 0.0);
            }
            for (zgSegment *segment : segmentsOf(sliver))
                EXPECT_TRUE(segment->visited);
            releasePaths(traced);
        }
    }
}

TEST(TracePaths, SliverAreaBound)
{
    // Eight segments of a thin quadrilateral of area 30 h: an area of 5e-13
    // is still a sliver, one of 2e-12 is kept.
    for (double area : {5e-13, 2e-12}) {
        const double h = area / 30.0;
        XPath sliver;
        addPolygon(sliver, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 0), zgPoint(30, 0),
                            zgPoint(40, h), zgPoint(30, h), zgPoint(20, h), zgPoint(10, h)});
        EXPECT_NEAR(std::fabs(plainArea(sliver.children.at(0))), area, 1e-14);
        for (zgSegment *segment : segmentsOf(sliver))
            segment->winding = 1;
        const QVector<zgPath *> traced
            = zgTracingInternals::tracePaths(segmentsOf(sliver), XPath::opUnite);
        EXPECT_EQ(traced.size(), area < 1e-12 ? 0 : 1) << area;
        releasePaths(traced);
    }
}

namespace {

// Two squares (0, 0, 100) and (50, 50, 100) divided at their crossings, with
// windings set by hand. After division the segments are, in order,
// a: (0,0) (100,0) (100,50)x (100,100) (50,100)x (0,100) and
// b: (50,50) (100,50)x (150,50) (150,150) (50,150) (50,100)x.
struct HandSquares
{
    explicit HandSquares(int op) : pipeline(first(), second(), op)
    {
        a = firstPath.children.at(0)->segments;
        b = secondPath.children.at(0)->segments;
    }
    XPath &first()
    {
        addSquare(firstPath, 0, 0, 100);
        return firstPath;
    }
    XPath *second()
    {
        addSquare(secondPath, 50, 50, 100);
        return &secondPath;
    }
    void setWindings(const QVector<int> &onA, const QVector<int> &onB)
    {
        for (int i = 0; i < 6; ++i) {
            a.at(i)->winding = onA[i];
            b.at(i)->winding = onB[i];
        }
        pipeline.clearFlags();
    }

    XPath firstPath;
    XPath secondPath;
    Pipeline pipeline;
    QList<zgSegment *> a;
    QList<zgSegment *> b;
};

} // namespace

TEST(TracePaths, HandSquaresHaveTheExpectedLayout)
{
    HandSquares squares(XPath::opUnite);
    ASSERT_EQ(squares.a.size(), 6);
    ASSERT_EQ(squares.b.size(), 6);
    EXPECT_EQ(squares.a.at(2)->point, zgPoint(100, 50));
    EXPECT_EQ(squares.a.at(4)->point, zgPoint(50, 100));
    EXPECT_EQ(squares.b.at(1)->point, zgPoint(100, 50));
    EXPECT_EQ(squares.b.at(5)->point, zgPoint(50, 100));
    EXPECT_EQ(squares.a.at(2)->intersection()->segmentM(), squares.b.at(1));
    EXPECT_EQ(squares.a.at(4)->intersection()->segmentM(), squares.b.at(5));
    EXPECT_EQ(squares.b.at(1)->intersection()->segmentM(), squares.a.at(2));
    EXPECT_EQ(squares.b.at(5)->intersection()->segmentM(), squares.a.at(4));
}

TEST(TracePaths, OnPathStretchIsTakenOnlyWhenTheCurrentIsNotWanted)
{
    // a's stretch from (50,100) lies on the other outline with winding 0.
    for (int wantedAtCrossing : {0, 1}) {
        HandSquares squares(XPath::opUnite);
        squares.setWindings({1, 1, 0, 0, 0, 0}, {wantedAtCrossing, 1, 1, 1, 1, wantedAtCrossing});
        squares.a.at(4)->onPath = squares.a.at(5)->onPath = 1;
        const QVector<zgPath *> traced = squares.pipeline.trace();
        if (wantedAtCrossing == 0) {
            // At (50,100) b is not wanted, so the walk changes to a's onPath
            // stretch and closes at the start: the union outline.
            ASSERT_EQ(traced.size(), 1);
            EXPECT_EQ(traced.at(0)->segments.size(), 8);
            EXPECT_NEAR(std::fabs(plainArea(traced.at(0))), 17500.0, 1e-9);
        } else {
            // b is wanted, so the walk stays on b, comes back to (100,50)
            // taken already and dies there.
            EXPECT_TRUE(traced.isEmpty());
            EXPECT_FALSE(squares.a.at(4)->visited);
        }
        releasePaths(traced);
    }
}

TEST(TracePaths, OnPathDoesNotMakeAStart)
{
    HandSquares squares(XPath::opUnite);
    squares.setWindings({0, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0});
    for (zgSegment *segment : squares.a + squares.b)
        segment->onPath = 1;
    EXPECT_TRUE(squares.pipeline.trace().isEmpty());
    for (zgSegment *segment : squares.a + squares.b)
        EXPECT_FALSE(segment->visited);
}

TEST(TracePaths, SwitchMarksTheLeftSegmentForIntersectAndSubtractOnly)
{
    // The winding-2 stretch of a runs into (50,100), where b's winding-2
    // stretch takes over. Under opIntersect a's segment there is marked.
    {
        HandSquares squares(XPath::opIntersect);
        squares.setWindings({1, 1, 2, 2, 1, 1}, {2, 1, 1, 1, 1, 2});
        const QVector<zgPath *> traced = squares.pipeline.trace();
        ASSERT_EQ(traced.size(), 1);
        EXPECT_EQ(traced.at(0)->segments.size(), 4);
        EXPECT_TRUE(squares.a.at(4)->visited);
        releasePaths(traced);
    }
    // Under opUnite the change at (100,50) leaves a's segment there unmarked;
    // it is not wanted as a start either.
    {
        HandSquares squares(XPath::opUnite);
        squares.setWindings({1, 1, 2, 2, 1, 1}, {2, 1, 1, 1, 1, 2});
        const QVector<zgPath *> traced = squares.pipeline.trace();
        ASSERT_EQ(traced.size(), 1);
        EXPECT_EQ(traced.at(0)->segments.size(), 8);
        EXPECT_FALSE(squares.a.at(2)->visited);
        EXPECT_FALSE(squares.b.at(5)->visited);
        releasePaths(traced);
    }
    // Under opSubtract with the same windings the walk from a's start changes
    // to b at (100,50) and marks a's segment there.
    {
        HandSquares squares(XPath::opSubtract);
        squares.setWindings({1, 1, 2, 2, 1, 1}, {2, 1, 1, 1, 1, 2});
        const QVector<zgPath *> traced = squares.pipeline.trace();
        EXPECT_TRUE(squares.a.at(2)->visited);
        releasePaths(traced);
    }
}

TEST(TracePaths, DeadEndDropsThePathAndKeepsTheMarks)
{
    // From a's start the walk changes to b at (100,50), stays on b at
    // (50,100) where a is not wanted, and comes back to b's segment at
    // (100,50), taken already: the walk is given up.
    HandSquares squares(XPath::opUnite);
    squares.setWindings({1, 1, 0, 0, 0, 0}, {1, 1, 1, 1, 1, 1});
    EXPECT_TRUE(squares.pipeline.trace().isEmpty());
    for (int i : {0, 1})
        EXPECT_TRUE(squares.a.at(i)->visited) << i;
    for (int i : {2, 3, 4, 5})
        EXPECT_FALSE(squares.a.at(i)->visited) << i;
    for (zgSegment *segment : squares.b)
        EXPECT_TRUE(segment->visited);
}

TEST(TracePaths, UnwantedSegmentsAreWalkedWhenTheyLeadOn)
{
    // Wantedness counts at the start and at crossings only: with nothing
    // wanted across, the walk stays on its own outline and closes it.
    HandSquares squares(XPath::opUnite);
    squares.setWindings({1, 1, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0});
    const QVector<zgPath *> traced = squares.pipeline.trace();
    ASSERT_EQ(traced.size(), 1);
    EXPECT_EQ(traced.at(0)->segments.size(), 6);
    EXPECT_NEAR(std::fabs(plainArea(traced.at(0))), 10000.0, 1e-9);
    releasePaths(traced);
}

TEST(TracePaths, AcceptanceInAValidOverlapsOnlyContourNeedsAValidSegment)
{
    // a keeps validOverlapsOnly: its start is accepted, as it is wanted,
    // but a segment of winding 0 further on ends the walk.
    HandSquares squares(XPath::opUnite);
    squares.setWindings({1, 0, 0, 0, 0, 0}, {0, 0, 0, 0, 0, 0});
    squares.a.at(0)->path->addFlags(zgPath::ValidOverlapsOnlyFlag);
    EXPECT_TRUE(squares.pipeline.trace().isEmpty());
    EXPECT_TRUE(squares.a.at(0)->visited);
    EXPECT_FALSE(squares.a.at(1)->visited);
}

TEST(TracePaths, OpenContourWrapsToItsStart)
{
    // An open contour is walked to its end and on from its first segment;
    // the last segment gets no handle-out.
    XPath open;
    zgPath *path = new zgPath(nullptr, false);
    path->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(10, 0)));
    path->addSegment(new zgSegment(zgPoint(100, 0), zgPoint(0, -10), zgPoint(0, 10)));
    path->addSegment(new zgSegment(zgPoint(100, 100), zgPoint(5, 5), zgPoint(7, 7)));
    adopt(open, path);
    for (zgSegment *segment : path->segments)
        segment->winding = 1;
    const QVector<zgPath *> traced = zgTracingInternals::tracePaths(path->segments, XPath::opUnite);
    ASSERT_EQ(traced.size(), 1);
    zgPath *result = traced.at(0);
    ASSERT_EQ(result->segments.size(), 3);
    EXPECT_TRUE(result->closed);
    EXPECT_EQ(result->segments.at(2)->handleOut, zgPoint(0, 0));
    EXPECT_EQ(result->segments.at(2)->handleIn, zgPoint(5, 5));
    // The first segment's handle-in is the one the walk carried round: the
    // wrap keeps the last one taken.
    EXPECT_EQ(result->segments.at(0)->handleIn, zgPoint(5, 5));
    EXPECT_EQ(result->segments.at(1)->handleIn, zgPoint(0, -10));
    EXPECT_EQ(result->segments.at(0)->handleOut, zgPoint(10, 0));
    releasePaths(traced);
}

TEST(TracePaths, EmptyListGivesNothing)
{
    for (int op : kOps)
        EXPECT_TRUE(zgTracingInternals::tracePaths({}, op).isEmpty());
}

// Random star-shaped polygons and blobs, two at a time, under every
// operator: the even-odd fill of the traced contours against the regions of
// the operands.
TEST(TracePaths, RandomShapesAgreeWithTheirRegions)
{
    std::mt19937 random(9);
    int agreed = 0;
    int sampled = 0;
    int rounds = 0;
    for (int round = 0; round < 40; ++round) {
        const bool curved = round % 2 == 1;
        zgPath *shapes[2];
        for (zgPath *&shape : shapes)
            shape = randomStarContour(random, curved);
        for (int op : kOps) {
            if (op == XPath::opNone)
                continue;
            XPath first;
            XPath second;
            adopt(first, shapes[0]->clone());
            adopt(second, shapes[1]->clone());
            Pipeline pipeline(first, &second, op);
            pipeline.setOracleWindings();
            pipeline.clearFlags();
            const QVector<zgPath *> traced = pipeline.trace();
            const RegionAgreement agreement
                = compareRegions(traced, windingoracle::flatten(first, 32),
                                 windingoracle::flatten(second, 32), op, zgRect(-20, -20, 140, 140), 30);
            agreed += agreement.agreed;
            sampled += agreement.sampled;
            EXPECT_EQ(agreement.agreed, agreement.sampled) << "round " << round << " op " << op;
            releasePaths(traced);
            ++rounds;
        }
        shapes[0]->release();
        shapes[1]->release();
    }
    RecordProperty("agreed", agreed);
    RecordProperty("sampled", sampled);
    std::printf("tracer region agreement: %d of %d points over %d runs\n", agreed, sampled, rounds);
    EXPECT_EQ(agreed, sampled);
}

TEST(TracePaths, ChainLocationOnTheEndOfAnOpenContourIsNotTaken)
{
    // At p's second corner hangs a chain of two: first a location on the
    // last segment of an open line, which leads nowhere, then one on r's
    // first segment. The walk passes over the first and changes to r.
    XPath shapes;
    addPolygon(shapes, squarePoints(0, 0, 100));                 // p
    addPolygon(shapes, {zgPoint(200, 200), zgPoint(100, 0)}, false); // q, ends at (100, 0)
    addPolygon(shapes, {zgPoint(100, 0), zgPoint(300, 0), zgPoint(300, -100),
                        zgPoint(100, -100)}); // r, starts at (100, 0)
    zgPath *p = shapes.children.at(0);
    zgPath *q = shapes.children.at(1);
    zgPath *r = shapes.children.at(2);
    zgCurveLocation *onQ = new zgCurveLocation();
    zgCurveLocation *onR = new zgCurveLocation();
    onQ->setSegmentM(q->segments.at(1));
    onR->setSegmentM(r->segments.at(0));
    zgTracingInternals::linkIntersections(onQ, onR);
    p->segments.at(1)->setIntersection(onQ);
    // A location back to p closes r's loop at p's corner.
    zgCurveLocation *onP = new zgCurveLocation();
    onP->setSegmentM(p->segments.at(1));
    r->segments.at(0)->setIntersection(onP);
    for (zgSegment *segment : segmentsOf(shapes))
        segment->winding = 1;

    const QVector<zgPath *> traced
        = zgTracingInternals::tracePaths(p->segments + r->segments, XPath::opUnite);

    // p's first side, r all round, back at p's corner through the location
    // on r's start, and the rest of p.
    ASSERT_EQ(traced.size(), 1);
    const QVector<zgPoint> expected{zgPoint(0, 0),    zgPoint(100, 0),    zgPoint(300, 0),
                                    zgPoint(300, -100), zgPoint(100, -100), zgPoint(100, 0),
                                    zgPoint(100, 100), zgPoint(0, 100)};
    const QList<zgSegment *> result = traced.at(0)->segments;
    ASSERT_EQ(result.size(), expected.size());
    for (int i = 0; i < result.size(); ++i)
        EXPECT_EQ(result.at(i)->point, expected.at(i)) << i;
    EXPECT_FALSE(q->segments.at(1)->visited);
    releasePaths(traced);
    onR->release(); // on the chain only, held by no segment
}
