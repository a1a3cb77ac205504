// The boolean operators on hand-made operands with worked-out outlines and
// areas: the closed route with its working copies and reversal rule, the
// single-operand cases, identical operands, the open route, the private
// steps, and bad input.
#include "boolean/boolean_oracle.h"
#include "boolean/operator_internals.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <memory>

using booleanoracle::evenOddArea;
using booleanoracle::fromXPath;

namespace {

using Result = std::unique_ptr<XPath>;

// A compound of straight closed (or open) contours, one per point list.
XPath *polygons(const QVector<QVector<zgPoint>> &contours, bool closed = true)
{
    XPath *path = new XPath();
    for (const QVector<zgPoint> &points : contours) {
        zgPath *contour = new zgPath(path, closed);
        zgtest::addPoints(*contour, points);
        path->addChild(contour);
    }
    return path;
}

XPath *square(double x, double y, double size)
{
    return polygons({zgtest::squarePoints(x, y, size)});
}

XPath *openLine(const QVector<zgPoint> &points)
{
    return polygons({points}, false);
}

double areaOf(XPath *path)
{
    return evenOddArea(fromXPath(*path));
}

QVector<zgPoint> pointsOf(const zgPath *path)
{
    QVector<zgPoint> points;
    for (const zgSegment *segment : path->segments)
        points.append(segment->point);
    return points;
}

// The points of a contour turned to start at its lowest-left point, so
// that outlines can be compared whatever node a trace started at.
QVector<zgPoint> normalised(const zgPath *path)
{
    QVector<zgPoint> points = pointsOf(path);
    int start = 0;
    for (int k = 1; k < points.size(); ++k) {
        const zgPoint &p = points.at(k), &s = points.at(start);
        if (p.y < s.y || (p.y == s.y && p.x < s.x))
            start = k;
    }
    QVector<zgPoint> turned;
    for (int k = 0; k < points.size(); ++k)
        turned.append(points.at((start + k) % points.size()));
    return turned;
}

} // namespace

TEST(Operators, UniteOfTwoOverlappingSquares)
{
    Result a(square(0, 0, 10));
    Result b(square(5, 5, 10));
    Result united(a->unite(b.get()));
    ASSERT_TRUE(united);
    EXPECT_TRUE(united->evenOdd);
    ASSERT_EQ(united->children.size(), 1);
    const zgPath *outline = united->children.first();
    EXPECT_TRUE(outline->closed);
    // Collinear pieces at the crossings are merged back by reduce.
    EXPECT_EQ(normalised(outline),
              (QVector<zgPoint>{zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 5), zgPoint(15, 5),
                                zgPoint(15, 15), zgPoint(5, 15), zgPoint(5, 10), zgPoint(0, 10)}));
    EXPECT_DOUBLE_EQ(areaOf(united.get()), 175.0);
}

TEST(Operators, IntersectSubtractExcludeOfTwoSquares)
{
    Result a(square(0, 0, 10));
    Result b(square(5, 5, 10));
    Result common(a->intersect(b.get(), true));
    ASSERT_EQ(common->children.size(), 1);
    EXPECT_EQ(normalised(common->children.first()),
              (QVector<zgPoint>{zgPoint(5, 5), zgPoint(10, 5), zgPoint(10, 10), zgPoint(5, 10)}));
    EXPECT_DOUBLE_EQ(areaOf(common.get()), 25.0);

    Result difference(a->subtract(b.get()));
    ASSERT_EQ(difference->children.size(), 1);
    EXPECT_EQ(normalised(difference->children.first()),
              (QVector<zgPoint>{zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 5), zgPoint(5, 5),
                                zgPoint(5, 10), zgPoint(0, 10)}));
    EXPECT_DOUBLE_EQ(areaOf(difference.get()), 75.0);

    Result either(a->exclude(b.get()));
    EXPECT_DOUBLE_EQ(areaOf(either.get()), 150.0);
    EXPECT_TRUE(either->evenOdd);
}

TEST(Operators, DivideGivesTheDifferenceThenTheIntersection)
{
    Result a(square(0, 0, 10));
    Result b(square(5, 5, 10));
    const QList<XPath *> parts = a->divide(b.get());
    ASSERT_EQ(parts.size(), 2);
    Result outside(parts.at(0));
    Result inside(parts.at(1));
    EXPECT_DOUBLE_EQ(areaOf(outside.get()), 75.0);
    EXPECT_DOUBLE_EQ(areaOf(inside.get()), 25.0);
}

TEST(Operators, OperandsStayAsTheyWere)
{
    Result a(square(0, 0, 10));
    Result b(square(5, 5, 10));
    a->evenOdd = false;
    Result united(a->unite(b.get()));
    EXPECT_FALSE(a->evenOdd);
    ASSERT_EQ(a->children.size(), 1);
    EXPECT_EQ(pointsOf(a->children.first()), zgtest::squarePoints(0, 0, 10));
    EXPECT_EQ(pointsOf(b->children.first()), zgtest::squarePoints(5, 5, 10));
    EXPECT_EQ(a->children.first()->refCount, 1);
    for (const zgSegment *segment : a->children.first()->segments)
        EXPECT_EQ(segment->intersection(), nullptr);
    EXPECT_TRUE(united->evenOdd); // even-odd whatever the operands have
}

TEST(Operators, SelfOrNullRunsOnTheFirstOperandAlone)
{
    Result a(square(0, 0, 10));
    for (XPath *other : {a.get(), static_cast<XPath *>(nullptr)}) {
        Result united(a->unite(other));
        ASSERT_EQ(united->children.size(), 1);
        EXPECT_EQ(normalised(united->children.first()), zgtest::squarePoints(0, 0, 10));
        // Subtracting nothing keeps the winding-1 stretches: A itself.
        Result difference(a->subtract(other));
        ASSERT_EQ(difference->children.size(), 1);
        EXPECT_DOUBLE_EQ(areaOf(difference.get()), 100.0);
        // Intersecting one operand alone wants winding 2: nothing.
        Result common(a->intersect(other, true));
        EXPECT_TRUE(common->isEmpty());
    }
}

TEST(Operators, IdenticalOperandsAsTwoObjects)
{
    Result a(square(0, 0, 10));
    Result b(square(0, 0, 10));
    Result united(a->unite(b.get()));
    ASSERT_EQ(united->children.size(), 1);
    EXPECT_EQ(normalised(united->children.first()), zgtest::squarePoints(0, 0, 10));
    Result common(a->intersect(b.get(), true));
    ASSERT_EQ(common->children.size(), 1);
    EXPECT_DOUBLE_EQ(areaOf(common.get()), 100.0);
    Result difference(a->subtract(b.get()));
    EXPECT_NE(difference.get(), nullptr);
    EXPECT_TRUE(difference->isEmpty());
    Result either(a->exclude(b.get()));
    EXPECT_TRUE(either->isEmpty());
}

TEST(Operators, SquaresSharingAnEdgeUnite)
{
    Result a(square(0, 0, 10));
    Result b(square(10, 0, 10));
    Result united(a->unite(b.get()));
    ASSERT_EQ(united->children.size(), 1);
    EXPECT_EQ(normalised(united->children.first()),
              (QVector<zgPoint>{zgPoint(0, 0), zgPoint(20, 0), zgPoint(20, 10), zgPoint(0, 10)}));
    Result common(a->intersect(b.get(), true));
    EXPECT_DOUBLE_EQ(areaOf(common.get()), 0.0);
    Result difference(a->subtract(b.get()));
    EXPECT_DOUBLE_EQ(areaOf(difference.get()), 100.0);
}

TEST(Operators, SquaresOffsetByHalfTheirSide)
{
    // Top and bottom sides run along each other for half their length.
    Result a(square(0, 0, 10));
    Result b(square(5, 0, 10));
    Result united(a->unite(b.get()));
    ASSERT_EQ(united->children.size(), 1);
    EXPECT_EQ(normalised(united->children.first()),
              (QVector<zgPoint>{zgPoint(0, 0), zgPoint(15, 0), zgPoint(15, 10), zgPoint(0, 10)}));
    Result common(a->intersect(b.get(), true));
    EXPECT_DOUBLE_EQ(areaOf(common.get()), 50.0);
    Result difference(a->subtract(b.get()));
    EXPECT_DOUBLE_EQ(areaOf(difference.get()), 50.0);
    Result either(a->exclude(b.get()));
    EXPECT_DOUBLE_EQ(areaOf(either.get()), 100.0);
}

TEST(Operators, HoleCutBySubtraction)
{
    Result wall(square(0, 0, 30));
    Result window(square(10, 10, 10));
    Result cut(wall->subtract(window.get()));
    ASSERT_EQ(cut->children.size(), 2);
    EXPECT_DOUBLE_EQ(areaOf(cut.get()), 800.0);
    // The compound rule: outline clockwise, hole counter-clockwise.
    EXPECT_TRUE(cut->children.at(0)->isClockwise());
    EXPECT_FALSE(cut->children.at(1)->isClockwise());
    EXPECT_EQ(normalised(cut->children.at(1)).first(), zgPoint(10, 10));
}

TEST(Operators, DisjointOperands)
{
    Result a(square(0, 0, 10));
    Result b(square(20, 0, 10));
    Result united(a->unite(b.get()));
    EXPECT_EQ(united->children.size(), 2);
    EXPECT_DOUBLE_EQ(areaOf(united.get()), 200.0);
    Result common(a->intersect(b.get(), true));
    EXPECT_TRUE(common->isEmpty());
    Result difference(a->subtract(b.get()));
    ASSERT_EQ(difference->children.size(), 1);
    EXPECT_DOUBLE_EQ(areaOf(difference.get()), 100.0);
}

TEST(Operators, OppositeOrientationsAreMatched)
{
    // B's only child runs counter-clockwise, and its flag says so, so the
    // compound keeps it: the reversal rule still gives the same results.
    Result a(square(0, 0, 10));
    Result b(new XPath());
    zgPath *backwards = new zgPath(b.get(), true);
    zgtest::addPoints(*backwards, {zgPoint(5, 5), zgPoint(5, 15), zgPoint(15, 15), zgPoint(15, 5)});
    backwards->addFlags(zgPath::CounterClockwiseFlag);
    b->addChild(backwards);
    ASSERT_FALSE(b->isClockwise());
    Result united(a->unite(b.get()));
    EXPECT_DOUBLE_EQ(areaOf(united.get()), 175.0);
    Result difference(a->subtract(b.get()));
    EXPECT_DOUBLE_EQ(areaOf(difference.get()), 75.0);
}

TEST(Operators, CircleAndSquare)
{
    // A circle of radius 10 about a corner of the square: a quarter of it
    // lies inside the square.
    booleanoracle::Shape disc = {booleanoracle::circle(10, 10, 5)};
    Result circle(booleanoracle::toXPath(disc));
    Result box(square(0, 0, 10));
    const double circleArea = evenOddArea(disc);
    Result common(box->intersect(circle.get(), true));
    EXPECT_NEAR(areaOf(common.get()), circleArea / 4, 1e-9 * circleArea);
    Result united(box->unite(circle.get()));
    EXPECT_NEAR(areaOf(united.get()), 100 + circleArea * 3 / 4, 1e-9 * circleArea);
    ASSERT_EQ(united->children.size(), 1);
}

// ---- The open route ----------------------------------------------------------

TEST(OpenOperators, SubtractKeepsThePiecesOutside)
{
    Result line(openLine({zgPoint(-5, 5), zgPoint(15, 5)}));
    Result box(square(0, 0, 10));
    Result outside(line->subtract(box.get()));
    ASSERT_TRUE(outside);
    ASSERT_EQ(outside->children.size(), 2);
    EXPECT_TRUE(outside->evenOdd);
    // The walk goes from the last crossing back: the piece beyond (10, 5)
    // comes first, then what remains of the contour.
    EXPECT_EQ(pointsOf(outside->children.at(0)), (QVector<zgPoint>{zgPoint(10, 5), zgPoint(15, 5)}));
    EXPECT_EQ(pointsOf(outside->children.at(1)), (QVector<zgPoint>{zgPoint(-5, 5), zgPoint(0, 5)}));
    for (zgPath *piece : outside->children) {
        EXPECT_FALSE(piece->closed);
        EXPECT_EQ(piece->parent, outside.get());
    }
}

TEST(OpenOperators, IntersectKeepsThePieceInside)
{
    Result line(openLine({zgPoint(-5, 5), zgPoint(15, 5)}));
    Result box(square(0, 0, 10));
    Result inside(line->intersect(box.get(), true));
    ASSERT_EQ(inside->children.size(), 1);
    EXPECT_EQ(pointsOf(inside->children.first()), (QVector<zgPoint>{zgPoint(0, 5), zgPoint(10, 5)}));
}

TEST(OpenOperators, HardEndsAtTheCuts)
{
    // A curved open contour through the square: the cut ends lose their
    // handles on the kept side.
    XPath *path = new XPath();
    zgPath *wave = new zgPath(path, false);
    wave->moveTo(-5, 5);
    wave->cubicCurveTo(zgPoint(0, -5), zgPoint(10, 15), zgPoint(15, 5));
    path->addChild(wave);
    Result curve(path);
    Result box(square(0, 0, 10));
    Result inside(curve->intersect(box.get(), true));
    ASSERT_EQ(inside->children.size(), 1);
    const zgPath *piece = inside->children.first();
    EXPECT_TRUE(piece->getFirstSegment()->handleIn.isZero());
    EXPECT_TRUE(piece->getLastSegment()->handleOut.isZero());
    EXPECT_FALSE(piece->getFirstSegment()->handleOut.isZero());
}

TEST(OpenOperators, WithoutCrossingTheWholeContourDecides)
{
    Result line(openLine({zgPoint(2, 2), zgPoint(8, 8)}));
    Result box(square(0, 0, 10));
    Result inside(line->intersect(box.get(), true));
    ASSERT_EQ(inside->children.size(), 1);
    EXPECT_EQ(pointsOf(inside->children.first()), (QVector<zgPoint>{zgPoint(2, 2), zgPoint(8, 8)}));
    Result outside(line->subtract(box.get()));
    EXPECT_TRUE(outside->isEmpty());

    Result far(openLine({zgPoint(20, 2), zgPoint(28, 8)}));
    Result farOutside(far->subtract(box.get()));
    EXPECT_EQ(farOutside->children.size(), 1);
}

TEST(OpenOperators, NullResults)
{
    Result line(openLine({zgPoint(-5, 5), zgPoint(15, 5)}));
    Result other(openLine({zgPoint(5, -5), zgPoint(5, 15)}));
    Result box(square(0, 0, 10));
    EXPECT_EQ(line->unite(box.get()), nullptr);
    EXPECT_EQ(line->exclude(box.get()), nullptr);
    EXPECT_EQ(line->intersect(other.get(), true), nullptr);
    EXPECT_EQ(line->subtract(other.get()), nullptr);
    EXPECT_EQ(line->subtract(nullptr), nullptr);
    const QList<XPath *> parts = line->divide(other.get());
    ASSERT_EQ(parts.size(), 2);
    EXPECT_EQ(parts.at(0), nullptr);
    EXPECT_EQ(parts.at(1), nullptr);
}

TEST(OpenOperators, TwoChildrenTakeTheClosedRoute)
{
    XPath *path = square(0, 0, 10);
    zgPath *tail = new zgPath(path, false);
    zgtest::addPoints(*tail, {zgPoint(20, 0), zgPoint(30, 0)});
    path->addChild(tail);
    Result mixed(path);
    Result box(square(5, 5, 10));
    Result united(mixed->unite(box.get()));
    ASSERT_TRUE(united);
    EXPECT_DOUBLE_EQ(areaOf(united.get()), 175.0);
}

// ---- The private steps ---------------------------------------------------------

TEST(OperatorSteps, PreparePathMakesAnEvenOddReducedCopy)
{
    Result a(polygons({{zgPoint(0, 0), zgPoint(5, 0), zgPoint(10, 0), zgPoint(10, 10),
                        zgPoint(0, 10)}}));
    a->evenOdd = false;
    Result copy(zgOperatorInternals::preparePath(a.get(), false, false));
    EXPECT_TRUE(copy->evenOdd);
    ASSERT_EQ(copy->children.size(), 1);
    EXPECT_NE(copy->children.first(), a->children.first());
    EXPECT_EQ(copy->children.first()->segments.size(), 4);
    EXPECT_EQ(a->children.first()->segments.size(), 5);
}

TEST(OperatorSteps, CreateResultIgnoresTheOperands)
{
    zgPath *contour = new zgPath(nullptr, true);
    zgtest::addPoints(*contour, {zgPoint(0, 0), zgPoint(5, 0), zgPoint(10, 0), zgPoint(10, 10)});
    XPath unrelated;
    unrelated.evenOdd = false;
    Result reduced(zgOperatorInternals::createResult({contour}, true, &unrelated, nullptr));
    EXPECT_TRUE(reduced->evenOdd);
    ASSERT_EQ(reduced->children.size(), 1);
    EXPECT_EQ(contour->segments.size(), 3);
    EXPECT_EQ(contour->refCount, 1);

    zgPath *kept = new zgPath(nullptr, true);
    zgtest::addPoints(*kept, {zgPoint(0, 0), zgPoint(5, 0), zgPoint(10, 0), zgPoint(10, 10)});
    Result asIs(zgOperatorInternals::createResult({kept}, false, nullptr, nullptr));
    EXPECT_EQ(kept->segments.size(), 4);
}

TEST(OperatorSteps, ComputeBooleanByCode)
{
    Result a(square(0, 0, 10));
    Result b(square(5, 5, 10));
    const double areas[5] = {0.0, 25.0, 175.0, 75.0, 150.0};
    for (int op = 1; op <= 4; ++op) {
        Result result(zgOperatorInternals::computeBoolean(a.get(), b.get(), op, false));
        EXPECT_DOUBLE_EQ(areaOf(result.get()), areas[op]) << op;
    }
}

// ---- Bad input -------------------------------------------------------------------

TEST(OperatorInput, EmptyOperands)
{
    Result empty(new XPath());
    Result box(square(0, 0, 10));
    Result united(empty->unite(box.get()));
    EXPECT_DOUBLE_EQ(areaOf(united.get()), 100.0);
    Result difference(box->subtract(empty.get()));
    EXPECT_DOUBLE_EQ(areaOf(difference.get()), 100.0);
    Result common(box->intersect(empty.get(), true));
    EXPECT_TRUE(common->isEmpty());
    Result nothing(empty->unite(empty.get()));
    EXPECT_TRUE(nothing->isEmpty());
}

TEST(OperatorInput, NonFiniteCoordinatesGiveSomeResult)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double inf = std::numeric_limits<double>::infinity();
    for (double bad : {nan, inf, -inf}) {
        Result odd(polygons({{zgPoint(0, 0), zgPoint(10, bad), zgPoint(10, 10), zgPoint(0, 10)}}));
        Result box(square(5, 5, 10));
        for (int op = 1; op <= 4; ++op) {
            Result result(zgOperatorInternals::computeBoolean(odd.get(), box.get(), op, true));
            EXPECT_TRUE(result) << op;
            Result back(zgOperatorInternals::computeBoolean(box.get(), odd.get(), op, true));
            EXPECT_TRUE(back) << op;
        }
    }
}

TEST(OperatorInput, ZeroAreaAndHugeContours)
{
    Result flat(polygons({{zgPoint(0, 0), zgPoint(10, 0)}}));
    Result box(square(-5, -5, 10));
    Result united(box->unite(flat.get()));
    EXPECT_DOUBLE_EQ(areaOf(united.get()), 100.0);

    // Large coordinates still work exactly...
    Result largeA(square(0, 0, 1e20));
    Result largeB(square(5e19, 5e19, 1e20));
    Result largeUnion(largeA->unite(largeB.get()));
    EXPECT_NEAR(areaOf(largeUnion.get()), 1.75e40, 1e-9 * 1.75e40);

    // ...while at 1e150 the crossing search, with its absolute tolerances,
    // no longer finds the crossings: without them each outline's one
    // stretch winds 2 at its midpoint and the union comes out empty. No
    // crash and no hang, a result all the same.
    Result hugeA(square(0, 0, 1e150));
    Result hugeB(square(5e149, 5e149, 1e150));
    Result hugeUnion(hugeA->unite(hugeB.get()));
    ASSERT_TRUE(hugeUnion);
    EXPECT_TRUE(hugeUnion->isEmpty());
}

TEST(OperatorInput, ThousandsOfCurvesInBoundedTime)
{
    // Two rippled rings of 2,000 cubics each, crossing a few dozen times.
    auto ring = [](double cx, double cy, double phase) {
        const int n = 2000;
        QVector<double> xs, ys;
        for (int k = 0; k < n; ++k) {
            const double angle = 2 * M_PI * k / n;
            const double r = 40 + 2 * std::sin(7 * angle + phase);
            xs.append(cx + r * std::cos(angle));
            ys.append(cy + r * std::sin(angle));
        }
        booleanoracle::Loop loop;
        for (int k = 0; k < n; ++k) {
            const int next = (k + 1) % n, prev = (k + n - 1) % n, after = (k + 2) % n;
            loop.append(booleanoracle::Piece::curve(
                    xs[k], ys[k], xs[k] + (xs[next] - xs[prev]) / 6, ys[k] + (ys[next] - ys[prev]) / 6,
                    xs[next] - (xs[after] - xs[k]) / 6, ys[next] - (ys[after] - ys[k]) / 6, xs[next],
                    ys[next]));
        }
        return booleanoracle::Shape{loop};
    };
    const booleanoracle::Shape a = ring(100, 100, 0.0);
    const booleanoracle::Shape b = ring(130, 110, 1.0);
    Result pathA(booleanoracle::toXPath(a));
    Result pathB(booleanoracle::toXPath(b));
    const auto start = std::chrono::steady_clock::now();
    Result united(pathA->unite(pathB.get()));
    const double seconds =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    ASSERT_TRUE(united);
    ASSERT_EQ(united->children.size(), 1);
    Result common(pathA->intersect(pathB.get(), true));
    const double areaA = evenOddArea(a), areaB = evenOddArea(b);
    EXPECT_NEAR(areaOf(united.get()) + areaOf(common.get()), areaA + areaB, 1e-9 * areaA);
    // Not a timing assertion: a hang shows as a test timeout; this records it.
    RecordProperty("seconds", std::to_string(seconds));
}

TEST(OperatorInput, DeferredModeLeavesEverythingToTheTrackedLists)
{
    zgtest::DeferredScope deferred;
    Result a(square(0, 0, 10));
    Result b(square(5, 5, 10));
    for (int op = 1; op <= 4; ++op) {
        Result result(zgOperatorInternals::computeBoolean(a.get(), b.get(), op, true));
        ASSERT_TRUE(result);
        for (zgPath *child : result->children)
            EXPECT_EQ(child->refCount, 1);
    }
    // The working copies' contours were released to the sentinel, not freed.
    int released = 0;
    for (zgPath *path : zgPath::s_pathList)
        released += path->refCount <= -2 ? 1 : 0;
    EXPECT_GE(released, 8);
}
