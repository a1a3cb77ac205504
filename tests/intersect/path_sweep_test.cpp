// The intersection sweep of compound paths: the rejection of whole paths by
// their bounds (with flat contours widened to one unit), the pairing of all
// curves in self mode and between two paths, the joins that keep adjacent
// curves from reporting their common point, the grouping and order of the
// result, firstOnly, the filter, and getCrossings.
#include "intersect/crossing_fixtures.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

// Reaches the private sweep of XPath.
class XPathInternals
{
public:
    static QList<zgCurveLocation *> getIntersections(XPath &path, XPath *other,
                                                     std::function<bool(zgCurveLocation *)> filter
                                                     = {},
                                                     bool firstOnly = false)
    {
        return path.getIntersections(other, filter, firstOnly);
    }
};

using crossingtest::releaseAll;
using zgtest::newContour;
using zgtest::squarePoints;

namespace {

typedef std::function<bool(zgCurveLocation *)> Filter;

// Records the orientation the contour really has, so that addChild takes it
// as it is and the curve indices of a test stay those of its points.
void adopt(XPath &compound, zgPath *contour)
{
    contour->addFlags(contour->isClockwise() ? zgPath::ClockwiseFlag
                                             : zgPath::CounterClockwiseFlag);
    compound.addChild(contour);
}

// A compound of one contour of straight segments.
void addPolygon(XPath &compound, const QVector<zgPoint> &points, bool closed)
{
    adopt(compound, newContour(points, closed));
}

void addSquare(XPath &compound, double x, double y, double size)
{
    addPolygon(compound, squarePoints(x, y, size), true);
}

// A contour of one cubic from start to end with absolute control points.
zgPath *newCubic(const zgPoint &start, const zgPoint &control1, const zgPoint &control2,
                 const zgPoint &end)
{
    zgPath *path = new zgPath(nullptr, false);
    path->moveToPt(start);
    path->cubicCurveTo(control1, control2, end);
    return path;
}

// A single segment closed on itself: one curve from the point round to it,
// a teardrop whose two ends meet at the origin.
zgPath *newTeardrop()
{
    zgPath *path = new zgPath(nullptr, true);
    path->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(100, 60), zgPoint(100, -60)));
    return path;
}

// A closed circle of four cubics inscribed in rect.
zgPath *newCircle(const zgRect &rect)
{
    zgPath *path = new zgPath(nullptr, false);
    path->ellipse(rect);
    path->closePath(1e-6);
    return path;
}

// Counts the calls of a filter and answers with accept.
struct CountingFilter
{
    int calls = 0;
    std::function<bool(zgCurveLocation *)> accept = [](zgCurveLocation *) { return true; };

    Filter get()
    {
        return [this](zgCurveLocation *location) {
            ++calls;
            return accept(location);
        };
    }
};

void expectAt(const zgPoint &point, double x, double y, double tolerance = 1e-9)
{
    EXPECT_NEAR(point.x, x, tolerance);
    EXPECT_NEAR(point.y, y, tolerance);
}

// The index plus time of a listed location, the key of its order.
double place(zgCurveLocation *location)
{
    return location->getIndex() + location->getTime();
}

// The time at which a straight curve without handles, x(t) = 3t^2 - 2t^3 of
// its length, has come the given fraction of the way; by bisection.
double timeOfFraction(double fraction)
{
    double low = 0.0;
    double high = 1.0;
    for (int i = 0; i < 200; ++i) {
        const double mid = (low + high) / 2;
        (3 * mid * mid - 2 * mid * mid * mid < fraction ? low : high) = mid;
    }
    return (low + high) / 2;
}

bool curvesBuilt(const XPath &compound)
{
    for (const zgPath *child : compound.children) {
        if (!child->curves.isEmpty())
            return true;
    }
    return false;
}

// The locations created since before that are neither listed in result nor
// partners of listed ones; in deferred mode a released one reads -2.
QList<zgCurveLocation *> unlistedSince(const QSet<zgCurveLocation *> &before,
                                       const QList<zgCurveLocation *> &result)
{
    QSet<zgCurveLocation *> listed;
    for (zgCurveLocation *location : result) {
        listed.insert(location);
        listed.insert(location->intersection());
    }
    QList<zgCurveLocation *> others;
    for (zgCurveLocation *location : zgCurveLocation::s_curveLocationList) {
        if (!before.contains(location) && !listed.contains(location))
            others.append(location);
    }
    return others;
}

QSet<zgCurveLocation *> trackedLocations()
{
    const QList<zgCurveLocation *> &list = zgCurveLocation::s_curveLocationList;
    return QSet<zgCurveLocation *>(list.begin(), list.end());
}

} // namespace

// Whole-path rejection -------------------------------------------------------

TEST(PathSweep, BoundsApartGiveEmptyWithoutBuildingCurves)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 10.000001, 0, 10);
    CountingFilter filter;

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(first, &second,
                                                                       filter.get());
    EXPECT_TRUE(result.isEmpty());
    EXPECT_EQ(filter.calls, 0);
    EXPECT_FALSE(curvesBuilt(first));
    EXPECT_FALSE(curvesBuilt(second));
}

TEST(PathSweep, BoundsThatShareAnEdgeAreNotRejected)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 10, 0, 10);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(first, &second);
    EXPECT_TRUE(curvesBuilt(first));
    EXPECT_TRUE(curvesBuilt(second));
    EXPECT_FALSE(result.isEmpty());
    releaseAll(result);
}

TEST(PathSweep, HorizontalAndVerticalLinesCross)
{
    XPath horizontal;
    XPath vertical;
    addPolygon(horizontal, {zgPoint(100, 105), zgPoint(110, 105)}, false);
    addPolygon(vertical, {zgPoint(105, 100), zgPoint(105, 110)}, false);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(horizontal, &vertical);
    ASSERT_EQ(result.size(), 1);
    expectAt(result.at(0)->getPoint(), 105, 105);
    EXPECT_EQ(result.at(0)->getPath(), horizontal.children.at(0));
    EXPECT_NEAR(result.at(0)->getTime(), 0.5, 1e-12);
    EXPECT_EQ(result.at(0)->intersection()->getPath(), vertical.children.at(0));
    EXPECT_NEAR(result.at(0)->intersection()->getTime(), 0.5, 1e-12);
    releaseAll(result);
}

// A flat contour is one unit high for the touch test: a square from exactly
// one unit below the line is still paired, a hair further it is rejected.
TEST(PathSweep, FlatContourIsWidenedToOneUnitHigh)
{
    XPath line;
    addPolygon(line, {zgPoint(100, 105), zgPoint(110, 105)}, false);
    {
        XPath reached;
        addSquare(reached, 100, 106, 10);
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(line, &reached);
        EXPECT_TRUE(result.isEmpty());
        EXPECT_TRUE(curvesBuilt(reached));
    }
    line.children.at(0)->clearCurves();
    {
        XPath beyond;
        addSquare(beyond, 100, 106.000001, 10);
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(line, &beyond);
        EXPECT_TRUE(result.isEmpty());
        EXPECT_FALSE(curvesBuilt(beyond));
        EXPECT_FALSE(curvesBuilt(line));
    }
}

TEST(PathSweep, FlatContourIsWidenedToOneUnitWide)
{
    XPath line;
    addPolygon(line, {zgPoint(105, 100), zgPoint(105, 110)}, false);
    {
        XPath reached;
        addSquare(reached, 106, 100, 10);
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(reached, &line);
        EXPECT_TRUE(result.isEmpty());
        EXPECT_TRUE(curvesBuilt(reached));
    }
    {
        XPath beyond;
        addSquare(beyond, 106.000001, 100, 10);
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(beyond, &line);
        EXPECT_TRUE(result.isEmpty());
        EXPECT_FALSE(curvesBuilt(beyond));
    }
}

TEST(PathSweep, EmptyPathsGiveEmptyResults)
{
    XPath empty;
    XPath square;
    addSquare(square, 0, 0, 10);

    EXPECT_TRUE(XPathInternals::getIntersections(empty, nullptr).isEmpty());
    EXPECT_TRUE(XPathInternals::getIntersections(empty, &square).isEmpty());
    EXPECT_TRUE(XPathInternals::getIntersections(square, &empty).isEmpty());
}

// Self mode ------------------------------------------------------------------

TEST(PathSweep, SingleClosedCurveDoesNotReportItsJoint)
{
    XPath teardrop;
    adopt(teardrop, newTeardrop());
    ASSERT_EQ(teardrop.getCurves().size(), 1);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(teardrop, nullptr);
    EXPECT_TRUE(result.isEmpty());

    // Without the join the same curve reports its two ends as a loop.
    zgCurve *curve = teardrop.getCurves().at(0);
    QList<zgCurveLocation *> unjoined;
    opParam param;
    zgCurve::getSelfIntersection(curve->getValues(nullptr), curve, unjoined, param);
    EXPECT_EQ(unjoined.size(), 1);
    releaseAll(unjoined);
}

// The ends of a one-curve contour count as one point within 1e-12 in each
// coordinate. The end is moved so that the two tips cross just by it: a tiny
// loop at the joint, refused when the ends count as joined.
TEST(PathSweep, SingleCurveEndsCloseWithinTheZeroTolerance)
{
    {
        XPath nearlyClosed;
        adopt(nearlyClosed, newCubic(zgPoint(0, 0), zgPoint(100, -60), zgPoint(100, 60),
                                     zgPoint(0, -1e-13)));
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(nearlyClosed,
                                                                           nullptr);
        EXPECT_TRUE(result.isEmpty());
        releaseAll(result);
    }
    {
        XPath open;
        adopt(open, newCubic(zgPoint(0, 0), zgPoint(100, -60), zgPoint(100, 60),
                             zgPoint(0, -1e-11)));
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(open, nullptr);
        ASSERT_EQ(result.size(), 1);
        expectAt(result.at(0)->getPoint(), 0, 0, 1e-9);
        releaseAll(result);
    }
}

TEST(PathSweep, RealLoopOfASingleCurveIsReported)
{
    XPath loop;
    adopt(loop, newCubic(zgPoint(0, 0), zgPoint(150, 100), zgPoint(-50, 100), zgPoint(100, 0)));

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(loop, nullptr);
    ASSERT_EQ(result.size(), 1);
    zgCurveLocation *location = result.at(0);
    zgCurveLocation *partner = location->intersection();
    ASSERT_NE(partner, nullptr);
    EXPECT_EQ(location->getPath(), loop.children.at(0));
    EXPECT_EQ(partner->getPath(), loop.children.at(0));
    // Two different times at one point, on the symmetry axis x = 50.
    EXPECT_GT(std::abs(location->getTime() - partner->getTime()), 0.1);
    expectAt(location->getPoint(), partner->getPoint().x, partner->getPoint().y, 1e-7);
    EXPECT_NEAR(location->getPoint().x, 50.0, 1e-7);
    releaseAll(result);
}

TEST(PathSweep, ClosedPolygonDoesNotReportItsJoints)
{
    XPath triangle;
    addPolygon(triangle, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(5, 8)}, true);
    XPath square;
    addSquare(square, 0, 0, 10);

    EXPECT_TRUE(XPathInternals::getIntersections(triangle, nullptr).isEmpty());
    EXPECT_TRUE(XPathInternals::getIntersections(square, &square).isEmpty());
}

// A lens of two cubics: each is the other's previous and next curve, so
// neither of the two joints is reported. Opened, with its end brought back
// onto its start, only the joint at the far end stays hidden.
TEST(PathSweep, CurvedLensReportsOnlyTheJointOfItsOpenForm)
{
    auto left = [] { return new zgSegment(zgPoint(0, 0), zgPoint(30, 30), zgPoint(30, -30)); };
    auto right = [] {
        return new zgSegment(zgPoint(100, 0), zgPoint(-30, -30), zgPoint(-30, 30));
    };
    XPath closedLens;
    zgPath *closed = new zgPath(nullptr, true);
    closed->addSegment(left());
    closed->addSegment(right());
    adopt(closedLens, closed);
    EXPECT_TRUE(XPathInternals::getIntersections(closedLens, nullptr).isEmpty());

    XPath openLens;
    zgPath *open = new zgPath(nullptr, false);
    open->addSegment(left());
    open->addSegment(right());
    open->addSegment(left());
    adopt(openLens, open);
    QList<zgCurveLocation *> result = XPathInternals::getIntersections(openLens, nullptr);
    ASSERT_EQ(result.size(), 1);
    expectAt(result.at(0)->getPoint(), 0, 0);
    EXPECT_EQ(result.at(0)->getIndex(), 0);
    EXPECT_DOUBLE_EQ(result.at(0)->getTime(), 0.0);
    EXPECT_EQ(result.at(0)->intersection()->getIndex(), 1);
    EXPECT_DOUBLE_EQ(result.at(0)->intersection()->getTime(), 1.0);
    releaseAll(result);
}

// An open contour whose end comes back to its start: the first and last
// curves are not neighbours, so their common point is reported.
TEST(PathSweep, OpenPolygonReportsWhereItsEndMeetsItsStart)
{
    XPath triangle;
    addPolygon(triangle, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(5, 8), zgPoint(0, 0)}, false);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(triangle, nullptr);
    ASSERT_EQ(result.size(), 1);
    zgCurveLocation *location = result.at(0);
    expectAt(location->getPoint(), 0, 0);
    EXPECT_EQ(location->getIndex(), 0);
    EXPECT_DOUBLE_EQ(location->getTime(), 0.0);
    EXPECT_EQ(location->intersection()->getIndex(), 2);
    EXPECT_DOUBLE_EQ(location->intersection()->getTime(), 1.0);
    releaseAll(result);
}

TEST(PathSweep, SelfCrossingPolylineAndNullOrThisAgree)
{
    XPath zigzag;
    addPolygon(zigzag, {zgPoint(0, 0), zgPoint(10, 10), zgPoint(10, 0), zgPoint(0, 10)}, false);

    for (XPath *other : {static_cast<XPath *>(nullptr), &zigzag}) {
        QList<zgCurveLocation *> result = XPathInternals::getIntersections(zigzag, other);
        ASSERT_EQ(result.size(), 1);
        zgCurveLocation *location = result.at(0);
        expectAt(location->getPoint(), 5, 5);
        EXPECT_EQ(location->getIndex(), 0);
        EXPECT_NEAR(location->getTime(), 0.5, 1e-12);
        EXPECT_EQ(location->intersection()->getIndex(), 2);
        EXPECT_NEAR(location->intersection()->getTime(), 0.5, 1e-12);
        releaseAll(result);
    }
}

TEST(PathSweep, ContoursOfOneCompoundAreGroupedUnderTheFirst)
{
    XPath compound;
    addSquare(compound, 0, 0, 10);
    addSquare(compound, 5, 5, 10);
    zgPath *first = compound.children.at(0);
    zgPath *second = compound.children.at(1);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(compound, nullptr);
    ASSERT_EQ(result.size(), 2);
    for (zgCurveLocation *location : result) {
        EXPECT_EQ(location->getPath(), first);
        EXPECT_EQ(location->intersection()->getPath(), second);
    }
    // On the first square: its right side at (10, 5), its bottom at (5, 10).
    expectAt(result.at(0)->getPoint(), 10, 5);
    EXPECT_NEAR(place(result.at(0)), 1.5, 1e-12);
    expectAt(result.at(1)->getPoint(), 5, 10);
    EXPECT_NEAR(place(result.at(1)), 2.5, 1e-12);
    releaseAll(result);
}

// firstOnly ------------------------------------------------------------------

TEST(PathSweep, FirstOnlyWithoutALoopIsEmptyThoughCurvesCross)
{
    XPath zigzag;
    addPolygon(zigzag, {zgPoint(0, 0), zgPoint(10, 10), zgPoint(10, 0), zgPoint(0, 10)}, false);
    CountingFilter filter;

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(zigzag, nullptr,
                                                                       filter.get(), true);
    EXPECT_TRUE(result.isEmpty());
    EXPECT_EQ(filter.calls, 0);
}

TEST(PathSweep, FirstOnlyBetweenTwoPathsIsEmpty)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 5, 5, 10);

    EXPECT_TRUE(XPathInternals::getIntersections(first, &second, Filter(), true).isEmpty());
}

// The loop of the first curve is all that firstOnly returns; the crossing of
// the line that follows is not looked for.
TEST(PathSweep, FirstOnlyReturnsTheLoopOfTheFirstCurve)
{
    XPath path;
    zgPath *contour = newCubic(zgPoint(0, 0), zgPoint(150, 100), zgPoint(-50, 100),
                               zgPoint(100, 0));
    contour->lineTo(0, 100);
    adopt(path, contour);

    QList<zgCurveLocation *> all = XPathInternals::getIntersections(path, nullptr);
    EXPECT_GT(all.size(), 1);
    releaseAll(all);

    QList<zgCurveLocation *> first = XPathInternals::getIntersections(path, nullptr, Filter(),
                                                                      true);
    ASSERT_EQ(first.size(), 1);
    EXPECT_EQ(first.at(0)->getIndex(), 0);
    EXPECT_EQ(first.at(0)->intersection()->getIndex(), 0);
    EXPECT_NEAR(first.at(0)->getPoint().x, 50.0, 1e-7);
    releaseAll(first);
}

// Two paths ------------------------------------------------------------------

TEST(PathSweep, TwoOverlappingRectanglesCrossTwice)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 5, 5, 10);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(first, &second);
    ASSERT_EQ(result.size(), 2);
    expectAt(result.at(0)->getPoint(), 10, 5);
    EXPECT_EQ(result.at(0)->getPath(), first.children.at(0));
    EXPECT_NEAR(place(result.at(0)), 1.5, 1e-12);
    EXPECT_NEAR(place(result.at(0)->intersection()), 0.5, 1e-12);
    expectAt(result.at(1)->getPoint(), 5, 10);
    EXPECT_NEAR(place(result.at(1)), 2.5, 1e-12);
    EXPECT_NEAR(place(result.at(1)->intersection()), 3.5, 1e-12);
    for (zgCurveLocation *location : result) {
        EXPECT_FALSE(location->overlap);
        EXPECT_TRUE(location->isCrossing());
    }
    releaseAll(result);
}

TEST(PathSweep, CompoundsOfSeveralContoursEach)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(first, 30, 0, 10);
    addSquare(second, 5, 5, 10);
    addSquare(second, 35, -5, 10);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(first, &second);
    ASSERT_EQ(result.size(), 4);
    expectAt(result.at(0)->getPoint(), 10, 5);
    expectAt(result.at(1)->getPoint(), 5, 10);
    expectAt(result.at(2)->getPoint(), 35, 0);
    expectAt(result.at(3)->getPoint(), 40, 5);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(result.at(i)->getPath(), first.children.at(i / 2)) << i;
        EXPECT_EQ(result.at(i)->intersection()->getPath(), second.children.at(i / 2)) << i;
    }
    releaseAll(result);
}

// A circle of radius 6 about the centre of a square of side 10 crosses each
// side twice, sqrt(11) from its middle.
TEST(PathSweep, SquareAndCircleCrossEightTimes)
{
    XPath square;
    XPath circle;
    addSquare(square, 0, 0, 10);
    adopt(circle, newCircle(zgRect(-1, -1, 12, 12)));
    ASSERT_EQ(circle.getCurves().size(), 4);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(square, &circle);
    ASSERT_EQ(result.size(), 8);
    const double offset = std::sqrt(11.0);
    // Along the square's sides in order: top, right, bottom, left.
    const double expected[8][2] = {{5 - offset, 0},  {5 + offset, 0}, {10, 5 - offset},
                                   {10, 5 + offset}, {5 + offset, 10}, {5 - offset, 10},
                                   {0, 5 + offset},  {0, 5 - offset}};
    for (int i = 0; i < 8; ++i) {
        const zgPoint point = result.at(i)->getPoint();
        // 0.01: the four cubics stray from the true circle by about 3e-4 of
        // the radius, which moves a crossing along the side by a few 1e-3.
        EXPECT_NEAR(point.x, expected[i][0], 0.01) << i;
        EXPECT_NEAR(point.y, expected[i][1], 0.01) << i;
        EXPECT_EQ(result.at(i)->getIndex(), i / 2) << i;
        EXPECT_TRUE(result.at(i)->isCrossing()) << i;
    }
    releaseAll(result);
}

TEST(PathSweep, SquareAndHalfCirclesFromArcsCrossTwice)
{
    XPath square;
    XPath circle;
    addSquare(square, 0, 0, 10);
    zgPath *arcs = new zgPath(nullptr, false);
    // A circle of radius 3 about the square's corner (10, 10).
    arcs->arcTo2(zgRect(7, 7, 6, 6), 0, 180);
    arcs->arcTo2(zgRect(7, 7, 6, 6), 180, 180);
    arcs->closePath(1e-6);
    adopt(circle, arcs);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(square, &circle);
    ASSERT_EQ(result.size(), 2);
    // 0.01: the cubics stray from the true circle, see above.
    expectAt(result.at(0)->getPoint(), 10, 7, 0.01);
    expectAt(result.at(1)->getPoint(), 7, 10, 0.01);
    EXPECT_EQ(result.at(0)->getIndex(), 1);
    EXPECT_EQ(result.at(1)->getIndex(), 2);
    releaseAll(result);
}

// Order: within each contour of the first path by index plus time, whatever
// the order of discovery; the contours in their order, not by id.
TEST(PathSweep, ResultIsSortedWithinContoursWhichKeepTheirOrder)
{
    zgPath *laterOfTwo = newContour(squarePoints(20, 0, 10), true); // the smaller id
    zgPath *firstChild = newContour(squarePoints(0, 0, 10), true);
    ASSERT_LT(laterOfTwo->id, firstChild->id);
    XPath squares;
    adopt(squares, firstChild);
    adopt(squares, laterOfTwo);
    // Each zigzag crosses the top of one square at x = 8, 5, 2 of it, in that
    // order along the zigzag.
    XPath zigzags;
    addPolygon(zigzags, {zgPoint(8, -5), zgPoint(8, 5), zgPoint(2, -5), zgPoint(2, 5)}, false);
    addPolygon(zigzags, {zgPoint(28, -5), zgPoint(28, 5), zgPoint(22, -5), zgPoint(22, 5)},
               false);

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(squares, &zigzags);
    ASSERT_EQ(result.size(), 6);
    const double xs[6] = {2, 5, 8, 22, 25, 28};
    const double zigzagTimes[6] = {2.5, 1.5, 0.5, 2.5, 1.5, 0.5};
    for (int i = 0; i < 6; ++i) {
        zgCurveLocation *location = result.at(i);
        EXPECT_EQ(location->getPath(), i < 3 ? firstChild : laterOfTwo) << i;
        expectAt(location->getPoint(), xs[i], 0);
        const double fraction = (xs[i] - (i < 3 ? 0 : 20)) / 10.0;
        EXPECT_EQ(location->getIndex(), 0) << i;
        EXPECT_NEAR(location->getTime(), timeOfFraction(fraction), 1e-9) << i;
        EXPECT_NEAR(place(location->intersection()), zigzagTimes[i], 1e-12) << i;
    }
    releaseAll(result);
}

// Filter ---------------------------------------------------------------------

TEST(PathSweep, FilterRefusalsAreLeftOutAndReleased)
{
    zgtest::DeferredScope deferred;
    const QSet<zgCurveLocation *> before = trackedLocations();
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 5, 5, 10);
    CountingFilter filter;
    filter.accept = [](zgCurveLocation *location) { return location->getPoint().x > 7.0; };

    QList<zgCurveLocation *> result = XPathInternals::getIntersections(first, &second,
                                                                       filter.get());
    EXPECT_EQ(filter.calls, 2);
    ASSERT_EQ(result.size(), 1);
    expectAt(result.at(0)->getPoint(), 10, 5);
    EXPECT_EQ(result.at(0)->refCount, 0);
    EXPECT_EQ(result.at(0)->intersection()->refCount, 0);
    const QList<zgCurveLocation *> refused = unlistedSince(before, result);
    ASSERT_EQ(refused.size(), 2);
    for (zgCurveLocation *location : refused)
        EXPECT_EQ(location->refCount, -2);
}

TEST(PathSweep, FilterRefusingAllGivesEmpty)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 5, 5, 10);
    CountingFilter filter;
    filter.accept = [](zgCurveLocation *) { return false; };

    EXPECT_TRUE(XPathInternals::getIntersections(first, &second, filter.get()).isEmpty());
    EXPECT_EQ(filter.calls, 2);
}

// getCrossings ---------------------------------------------------------------

TEST(PathSweep, CrossingsOfOverlappingRectangles)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 5, 5, 10);

    QList<zgCurveLocation *> result = first.getCrossings(&second);
    ASSERT_EQ(result.size(), 2);
    expectAt(result.at(0)->getPoint(), 10, 5);
    expectAt(result.at(1)->getPoint(), 5, 10);
    releaseAll(result);
}

TEST(PathSweep, CrossingsOfSquaresTouchingAtACornerAreNone)
{
    zgtest::DeferredScope deferred;
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 10, 10, 10);

    QList<zgCurveLocation *> touching = XPathInternals::getIntersections(first, &second);
    ASSERT_EQ(touching.size(), 1);
    expectAt(touching.at(0)->getPoint(), 10, 10);
    EXPECT_FALSE(touching.at(0)->overlap);
    EXPECT_FALSE(touching.at(0)->isCrossing());

    const QSet<zgCurveLocation *> before = trackedLocations();
    QList<zgCurveLocation *> crossings = first.getCrossings(&second);
    EXPECT_TRUE(crossings.isEmpty());
    const QList<zgCurveLocation *> refused = unlistedSince(before, crossings);
    EXPECT_FALSE(refused.isEmpty());
    EXPECT_EQ(refused.size() % 2, 0);
    for (zgCurveLocation *location : refused)
        EXPECT_EQ(location->refCount, -2);
}

// Squares sharing a side: the corners only touch and are refused; the shared
// side remains as its two overlap ends.
TEST(PathSweep, CrossingsOfSquaresSharingASideLeaveOnlyOverlaps)
{
    zgtest::DeferredScope deferred;
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 10, 0, 10);

    const QSet<zgCurveLocation *> before = trackedLocations();
    QList<zgCurveLocation *> crossings = first.getCrossings(&second);
    ASSERT_EQ(crossings.size(), 2);
    for (zgCurveLocation *location : crossings) {
        EXPECT_TRUE(location->overlap);
        EXPECT_TRUE(location->intersection()->overlap);
        EXPECT_EQ(location->refCount, 0);
    }
    expectAt(crossings.at(0)->getPoint(), 10, 0);
    expectAt(crossings.at(1)->getPoint(), 10, 10);
    const QList<zgCurveLocation *> refused = unlistedSince(before, crossings);
    EXPECT_FALSE(refused.isEmpty());
    for (zgCurveLocation *location : refused)
        EXPECT_EQ(location->refCount, -2);
}

TEST(PathSweep, CrossingsReleaseCleanlyInImmediateMode)
{
    XPath first;
    XPath second;
    addSquare(first, 0, 0, 10);
    addSquare(second, 10, 0, 10);
    XPath corner;
    addSquare(corner, 10, 10, 10);

    QList<zgCurveLocation *> crossings = first.getCrossings(&second);
    EXPECT_EQ(crossings.size(), 2);
    releaseAll(crossings);
    EXPECT_TRUE(first.getCrossings(&corner).isEmpty());
}
