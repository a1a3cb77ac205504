// Winding propagation: the stretch from a located segment to the next, the
// sample at half its length with its nudges off curve ends and middles, the
// subtract rule, the length cache, and the windings of whole divided
// outlines against the independent oracle; then propagation and tracing
// together against the regions of the operands.
#include "boolean/tracing_pipeline.h"

#include <gtest/gtest.h>

#include <random>

using namespace tracingtest;
using zgtest::newContour;
using zgtest::squarePoints;
using windingoracle::Polygon;

namespace {

const int kBooleanOps[] = {XPath::opIntersect, XPath::opUnite, XPath::opSubtract,
                           XPath::opExclude};

// A straight record from (x0, y0) to (x1, y1), the only one of its list.
QList<zgMono *> detector(double x0, double y0, double x1, double y1)
{
    zgMono *mono = new zgMono();
    mono->values = {x0, y0, x0, y0, x1, y1, x1, y1};
    mono->winding = y1 > y0 ? 1 : -1;
    mono->last = mono;
    return {mono};
}

// A closed square (0, 0, 100) whose segments 1 and 2 carry a location each,
// so that the stretch from segment 1 is its right side alone.
struct BoundedSide
{
    BoundedSide() : path(newContour(squarePoints(0, 0, 100), true))
    {
        path->addRef();
        for (int i : {1, 2}) {
            zgCurveLocation *location = new zgCurveLocation();
            path->segments.at(i)->setIntersection(location);
        }
    }
    ~BoundedSide() { path->release(); }
    zgPath *path;
};

} // namespace

TEST(PropagateWinding, TwoSquaresGetOneWindingPerStretch)
{
    XPath first;
    XPath second;
    addPolygon(first, squarePoints(0, 0, 100));
    addPolygon(second, squarePoints(50, 50, 100));
    Pipeline pipeline(first, &second, XPath::opUnite);
    pipeline.setEngineWindings();
    const QList<zgSegment *> a = first.children.at(0)->segments;
    const QList<zgSegment *> b = second.children.at(0)->segments;
    const int expectedA[] = {1, 1, 2, 2, 1, 1};
    const int expectedB[] = {2, 1, 1, 1, 1, 2};
    // On the outer outline one side has no outline around it: onPath.
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(a.at(i)->winding, expectedA[i]) << "a" << i;
        EXPECT_EQ(b.at(i)->winding, expectedB[i]) << "b" << i;
        EXPECT_EQ(bool(a.at(i)->onPath), expectedA[i] == 1) << "a" << i;
        EXPECT_EQ(bool(b.at(i)->onPath), expectedB[i] == 1) << "b" << i;
    }
}

TEST(PropagateWinding, SubtractDropsMinuendInsideAndSubtrahendOutside)
{
    XPath first;
    XPath second;
    addPolygon(first, squarePoints(0, 0, 100));
    addPolygon(second, squarePoints(50, 50, 100));
    Pipeline pipeline(first, &second, XPath::opSubtract); // reverses the second square
    pipeline.setEngineWindings();
    for (zgSegment *segment : first.children.at(0)->segments) {
        const bool insideOther = segment->point.x >= 100 && segment->point.y >= 50;
        EXPECT_EQ(segment->winding, insideOther ? 0 : 1) << segment->toString().toStdString();
    }
    for (zgSegment *segment : second.children.at(0)->segments) {
        // The stretch of the subtrahend inside the minuend runs from (50,100)
        // through (50,50) to (100,50) and keeps its total count, 1.
        const zgPoint p = segment->point;
        const bool insideFirst = p == zgPoint(100, 50) || p == zgPoint(50, 50);
        EXPECT_EQ(segment->winding, insideFirst ? 1 : 0) << segment->toString().toStdString();
        EXPECT_EQ(bool(segment->onPath), insideFirst);
    }
}

TEST(PropagateWinding, SubtractRuleNeedsASecondOperand)
{
    // Without path2 the total count decides even under opSubtract.
    XPath both;
    addPolygon(both, squarePoints(0, 0, 100));
    addPolygon(both, squarePoints(50, 50, 100));
    Pipeline pipeline(both, nullptr, XPath::opSubtract);
    pipeline.setEngineWindings();
    int twos = 0;
    for (zgSegment *segment : pipeline.segments)
        twos += segment->winding == 2;
    EXPECT_EQ(twos, 4);
}

TEST(PropagateWinding, ContourWithoutCrossingsKeepsOneWinding)
{
    XPath outer;
    XPath inner;
    addPolygon(outer, squarePoints(0, 0, 100));
    addPolygon(inner, squarePoints(25, 25, 50));
    Pipeline pipeline(outer, &inner, XPath::opUnite);
    EXPECT_TRUE(pipeline.locations.isEmpty());
    pipeline.setEngineWindings();
    for (zgSegment *segment : outer.children.at(0)->segments)
        EXPECT_EQ(segment->winding, 1);
    for (zgSegment *segment : inner.children.at(0)->segments) {
        EXPECT_EQ(segment->winding, 2);
        EXPECT_FALSE(segment->onPath);
    }
}

TEST(PropagateWinding, SampleAtTheMiddleOfACurveIsNudgedBack)
{
    // The right side from (100,0) to (100,100) alone: half its length is
    // time 0.5 at (100,50), moved to 0.4999. The detector crosses the ray
    // at x = y + 50, so only the point at y = 50 exactly lies on it.
    BoundedSide side;
    QList<zgMono *> monos = detector(0, -50, 200, 150);
    ASSERT_EQ(XPath::getWinding(zgPoint(100, 50), monos, false).onPath, false);
    ASSERT_EQ(XPath::getWinding(zgPoint(100, 49.985), monos, false).onPath, true);
    zgTracingInternals::propagateWinding(side.path->segments.at(1), nullptr, nullptr, monos,
                                         XPath::opUnite);
    EXPECT_EQ(side.path->segments.at(1)->winding, 1);
    EXPECT_TRUE(side.path->segments.at(1)->onPath);
    // Nothing beyond the stretch is written.
    EXPECT_EQ(side.path->segments.at(2)->winding, -1);
    EXPECT_EQ(side.path->segments.at(0)->winding, -1);
    qDeleteAll(monos);
}

TEST(PropagateWinding, SampleAtACommonVertexIsNudgedBack)
{
    // The whole square is one stretch of length 400 from segment 0: half of
    // it ends the second curve at (100,100), and time 1 is moved to 0.9999.
    zgPath *square = newContour(squarePoints(0, 0, 100), true);
    square->addRef();
    QList<zgMono *> monos = detector(0, 0, 200, 200); // crosses the ray at x = y
    ASSERT_EQ(XPath::getWinding(zgPoint(100, 100), monos, false).onPath, false);
    zgTracingInternals::propagateWinding(square->segments.at(0), nullptr, nullptr, monos,
                                         XPath::opUnite);
    for (zgSegment *segment : square->segments) {
        EXPECT_EQ(segment->winding, 1);
        EXPECT_TRUE(segment->onPath);
    }
    // The lengths went into the curves' caches.
    for (zgCurve *curve : square->getCurves())
        EXPECT_EQ(curve->length, 100.0);
    qDeleteAll(monos);
    square->release();
}

TEST(PropagateWinding, OpenContourCountsItsLastCurveTwice)
{
    // One straight curve at constant speed from (0,0) to (90,90): the last
    // segment answers with the same curve, so the stretch is twice its
    // length and the sample falls at its end, nudged back to 0.9999, at
    // (89.991, 89.991).
    zgPath *open = new zgPath(nullptr, false);
    open->addRef();
    open->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(), zgPoint(30, 30)));
    open->addSegment(new zgSegment(zgPoint(90, 90), zgPoint(-30, -30), zgPoint()));
    // A vertical detector through x = 89.991: the sample lies on it.
    QList<zgMono *> monos = detector(89.991, -10, 89.991, 200);
    zgTracingInternals::propagateWinding(open->segments.at(0), nullptr, nullptr, monos,
                                         XPath::opUnite);
    EXPECT_EQ(open->segments.at(0)->winding, 1);
    EXPECT_FALSE(open->segments.at(0)->onPath);
    EXPECT_EQ(open->segments.at(1)->winding, 1);
    EXPECT_FALSE(open->segments.at(1)->onPath);
    qDeleteAll(monos);
    // Through the middle instead, it would have been off the sample.
    monos = detector(45, -10, 45, 200);
    zgTracingInternals::propagateWinding(open->segments.at(0), nullptr, nullptr, monos,
                                         XPath::opUnite);
    EXPECT_TRUE(open->segments.at(0)->onPath);
    qDeleteAll(monos);
    open->release();
}

TEST(PropagateWinding, SegmentWithoutContourIsLeftAlone)
{
    zgSegment free(10, 10);
    QList<zgMono *> monos = detector(0, 0, 0, 100);
    zgTracingInternals::propagateWinding(&free, nullptr, nullptr, monos, XPath::opUnite);
    EXPECT_EQ(free.winding, -1);
    qDeleteAll(monos);
}

TEST(PropagateWinding, EmptyRecordListGivesZero)
{
    BoundedSide side;
    zgTracingInternals::propagateWinding(side.path->segments.at(1), nullptr, nullptr, {},
                                         XPath::opUnite);
    EXPECT_EQ(side.path->segments.at(1)->winding, 0);
    EXPECT_FALSE(side.path->segments.at(1)->onPath);
}

// The windings the engine writes against the oracle's, segment by segment,
// for random star-shaped polygons and blobs under every operator.
TEST(PropagateWinding, RandomShapesAgreeWithTheOracle)
{
    std::mt19937 random(5);
    int agreed = 0;
    int compared = 0;
    int regionAgreed = 0;
    int regionSampled = 0;
    for (int round = 0; round < 60; ++round) {
        const bool curved = round % 2 == 1;
        zgPath *shapes[2];
        for (zgPath *&shape : shapes)
            shape = randomStarContour(random, curved);
        for (int op : kBooleanOps) {
            XPath first;
            XPath second;
            adopt(first, shapes[0]->clone());
            adopt(second, shapes[1]->clone());
            Pipeline pipeline(first, &second, op);
            pipeline.setEngineWindings();
            QVector<QPair<int, bool>> engine;
            for (zgSegment *segment : pipeline.segments)
                engine.append({segment->winding, bool(segment->onPath)});
            // The traced result of the engine's windings against the regions.
            pipeline.clearFlags();
            const QVector<zgPath *> traced = pipeline.trace();
            const RegionAgreement agreement = compareRegions(
                traced, windingoracle::flatten(first, 32), windingoracle::flatten(second, 32), op,
                zgRect(-20, -20, 140, 140), 30);
            regionAgreed += agreement.agreed;
            regionSampled += agreement.sampled;
            EXPECT_EQ(agreement.agreed, agreement.sampled) << "round " << round << " op " << op;
            releasePaths(traced);
            pipeline.setOracleWindings();
            for (int i = 0; i < pipeline.segments.size(); ++i) {
                const zgSegment *segment = pipeline.segments.at(i);
                ++compared;
                if (engine[i].first == segment->winding
                    && engine[i].second == bool(segment->onPath)) {
                    ++agreed;
                } else {
                    ADD_FAILURE() << "round " << round << " op " << op << " segment " << i
                                  << ": engine " << engine[i].first << "/" << engine[i].second
                                  << ", oracle " << segment->winding << "/"
                                  << bool(segment->onPath);
                }
            }
        }
        shapes[0]->release();
        shapes[1]->release();
    }
    std::printf("stretch winding agreement: %d of %d segments; traced regions: %d of %d points\n",
                agreed, compared, regionAgreed, regionSampled);
    EXPECT_GT(compared, 1000);
}

namespace {

QVector<zgPath *> traceWithEngine(XPath &first, XPath *second, int op, const zgRect &rect)
{
    Pipeline pipeline(first, second, op);
    pipeline.setEngineWindings();
    pipeline.clearFlags();
    const QVector<zgPath *> traced = pipeline.trace();
    const RegionAgreement agreement
        = compareRegions(traced, windingoracle::flatten(first, 32),
                         second ? windingoracle::flatten(*second, 32) : QVector<Polygon>(), op,
                         rect, 60);
    EXPECT_GT(agreement.sampled, 1000);
    EXPECT_EQ(agreement.agreed, agreement.sampled) << "op " << op;
    return traced;
}

} // namespace

TEST(PropagateAndTrace, ShapesUnderEveryOperator)
{
    for (int op : kBooleanOps) {
        for (int shape = 0; shape < 3; ++shape) {
            XPath first;
            XPath second;
            addPolygon(first, squarePoints(0, 0, 100));
            if (shape == 0)
                addPolygon(second, squarePoints(50, 50, 100));
            else if (shape == 1)
                adopt(second, newCircle(zgPoint(100, 50), 40));
            else
                addPolygon(second, squarePoints(25, 25, 50));
            const QVector<zgPath *> traced
                = traceWithEngine(first, &second, op, zgRect(-10, -10, 170, 170));
            EXPECT_FALSE(traced.isEmpty()) << "op " << op << " shape " << shape;
            releasePaths(traced);
        }
    }
}

TEST(PropagateAndTrace, IdenticalSquaresFromTheSweep)
{
    for (int op : kBooleanOps) {
        XPath first;
        XPath second;
        addPolygon(first, squarePoints(0, 0, 100));
        addPolygon(second, squarePoints(0, 0, 100));
        Pipeline pipeline(first, &second, op);
        pipeline.setEngineWindings();
        pipeline.clearFlags();
        const QVector<zgPath *> traced = pipeline.trace();
        if (op == XPath::opIntersect || op == XPath::opUnite) {
            ASSERT_EQ(traced.size(), 1) << "op " << op;
            EXPECT_TRUE(traced.at(0)->equals(first.children.at(0)));
        } else {
            EXPECT_TRUE(traced.isEmpty()) << "op " << op;
        }
        releasePaths(traced);
    }
}

TEST(PropagateAndTrace, FigureEightUnderOpNone)
{
    XPath eight;
    addPolygon(eight, {zgPoint(0, 0), zgPoint(100, 100), zgPoint(100, 0), zgPoint(0, 100)});
    const QVector<zgPath *> traced
        = traceWithEngine(eight, nullptr, XPath::opNone, zgRect(-10, -10, 120, 120));
    EXPECT_EQ(traced.size(), 2);
    releasePaths(traced);
}
