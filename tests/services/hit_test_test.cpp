// Containment, nearest locations and hit tests of contours and compound
// paths, on shapes whose answers are worked out in the comments.
#include "services/services_test_support.h"

#include <zgraphics/model.h>

#include <gtest/gtest.h>

#include <QtCore/qnumeric.h>

#include <cmath>

// Reaches the private hit test steps of XPath.
class zgHitTestInternals
{
public:
    static zgHitResult hitTestChildren(XPath &compound, const zgPoint &point,
                                       const zgStyle &style, const zgHitOpt &options)
    {
        return compound.hitTestChildren(point, style, options);
    }
    static zgHitResult hitTestSelf(XPath &compound, const zgPoint &point, const zgStyle &style,
                                   const zgHitOpt &options)
    {
        return compound.hitTestSelf(point, style, options);
    }
    static zgCurveLocation *getNearestLocation(XPath &compound, const zgPoint &point)
    {
        return compound.getNearestLocation(point);
    }
    static zgPoint getNearestPoint(XPath &compound, const zgPoint &point)
    {
        return compound.getNearestPoint(point);
    }
};

using namespace zgtest;

namespace {

// The square (0, 0)-(10, 10) as the only child of a compound.
struct SquareCompound
{
    XPath compound;
    zgPath *square;

    SquareCompound()
    {
        compound.addChild(newContour(squarePoints(0, 0, 10), true));
        square = compound.children.first();
    }
};

// The stroke-only options (no fill, no bare curves) with a tolerance.
zgHitOpt strokeOnly(double tolerance) { return zgHitOpt(false, true, false, true, tolerance); }

zgStyle strokeStyle(double width, zgCap cap, zgJoin join, double miterLimit = 10.0)
{
    return zgStyle(true, true, true, width, cap, join, miterLimit);
}

// The type of a stroke-only hit on the contour.
int strokeHitType(zgPath *path, const zgPoint &point, double tolerance, const zgStyle &style)
{
    return path->_hitTestSelf(point, strokeOnly(tolerance), style).type;
}

void expectResult(const zgHitResult &result, int type, const XPath *compound,
                  const zgPath *path)
{
    EXPECT_EQ(result.type, type);
    EXPECT_EQ(result.compound, compound);
    EXPECT_EQ(result.path, path);
    EXPECT_EQ(result.segment, nullptr);
}

// A heap contour held by this test, destroyed on leaving.
struct HeldContour
{
    zgPath *path;

    HeldContour(const QVector<zgPoint> &points, bool closed) : path(newContour(points, closed))
    {
        path->addRef();
    }
    ~HeldContour() { path->release(); }
    HeldContour(const HeldContour &) = delete;
    HeldContour &operator=(const HeldContour &) = delete;
    zgPath *operator->() const { return path; }
};

} // namespace

// contains -----------------------------------------------------------------------

TEST(Contains, SquareInsideAndOutside)
{
    HeldContour square(squarePoints(0, 0, 10), true);
    const zgStyle style;
    EXPECT_TRUE(square->contains(zgPoint(5, 5), style));
    EXPECT_TRUE(square->contains(zgPoint(9.999, 0.001), style));
    EXPECT_FALSE(square->contains(zgPoint(10.001, 5), style));
    EXPECT_FALSE(square->contains(zgPoint(-1, -1), style));
}

TEST(Contains, OutlineInsideTheHandleBoxCountsAsInside)
{
    // The hypotenuse of the triangle (0, 0), (10, 0), (0, 10) runs inside
    // the box: its points have winding 1 from the on-curve count.
    HeldContour triangle({zgPoint(0, 0), zgPoint(10, 0), zgPoint(0, 10)}, true);
    EXPECT_TRUE(triangle->contains(zgPoint(5, 5), zgStyle()));
    EXPECT_TRUE(triangle->contains(zgPoint(2.5, 7.5), zgStyle()));
    EXPECT_FALSE(triangle->contains(zgPoint(5.01, 5.01), zgStyle()));
}

TEST(Contains, EdgeOfTheHandleBoxIsRejected)
{
    // The square's own edges lie on its box, which is strict: they are
    // outside although their winding is 1.
    HeldContour square(squarePoints(0, 0, 10), true);
    const QList<zgMono *> pieces = square->getMonoCurves();
    EXPECT_EQ(XPath::getWinding(zgPoint(10, 5), pieces, false).winding, 1);
    qDeleteAll(pieces);
    EXPECT_FALSE(square->contains(zgPoint(10, 5), zgStyle()));
    EXPECT_FALSE(square->contains(zgPoint(5, 0), zgStyle()));
    EXPECT_FALSE(square->contains(zgPoint(0, 0), zgStyle()));
}

TEST(Contains, TheBoxDecidesBeforeAnyCurveWork)
{
    // Kept pieces stand for the contour's curves: a wall at x = 20 from
    // y = 0 to 10 gives winding 1 to points left of it. Only those inside
    // the box of the square are asked.
    HeldContour square(squarePoints(0, 0, 10), true);
    square->monos.append(new zgMono({20, 0, 20, 0, 20, 10, 20, 10}, 1));
    EXPECT_TRUE(square->contains(zgPoint(5, 5), zgStyle()));
    EXPECT_FALSE(square->contains(zgPoint(15, 5), zgStyle())); // outside the box
    EXPECT_EQ(square->monos.size(), 1); // still the contour's
}

TEST(Contains, EvenOddAndNonZero)
{
    // A contour that runs round the square twice: winding 2 inside.
    HeldContour twice({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10),
                       zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10)},
                      true);
    const zgStyle evenOdd(true, true, true);
    const zgStyle nonZero(true, true, false);
    EXPECT_FALSE(twice->contains(zgPoint(5, 5), evenOdd));
    EXPECT_TRUE(twice->contains(zgPoint(5, 5), nonZero));
}

TEST(Contains, FigureEightWindsOnceInEachLobe)
{
    // The bow tie (0, 0), (10, 10), (10, 0), (0, 10): its lobes turn opposite
    // ways, and the winding is the absolute count.
    HeldContour eight({zgPoint(0, 0), zgPoint(10, 10), zgPoint(10, 0), zgPoint(0, 10)}, true);
    EXPECT_TRUE(eight->contains(zgPoint(2, 5), zgStyle()));
    EXPECT_TRUE(eight->contains(zgPoint(8, 5), zgStyle()));
    EXPECT_FALSE(eight->contains(zgPoint(5, 2), zgStyle()));
}

TEST(Contains, EmptyContourAndCompound)
{
    zgPath empty;
    EXPECT_FALSE(empty.contains(zgPoint(0, 0), zgStyle()));
    XPath none;
    EXPECT_FALSE(none.contains(zgPoint(0, 0), zgStyle()));
}

TEST(Contains, CompoundWithAHole)
{
    XPath compound;
    compound.addChild(newContour(squarePoints(0, 0, 10), true));
    compound.addChild(newContour(squarePoints(3, 3, 4), true)); // turned the other way
    const zgStyle nonZero(true, true, false);
    EXPECT_TRUE(compound.contains(zgPoint(1, 5), nonZero));
    EXPECT_FALSE(compound.contains(zgPoint(5, 5), nonZero));
    EXPECT_FALSE(compound.contains(zgPoint(5, 5), zgStyle()));
    EXPECT_FALSE(compound.contains(zgPoint(11, 5), nonZero));
}

TEST(Contains, CompoundOfSameWayContoursNeedsNonZero)
{
    // Two overlapping squares added as they are (flagged clockwise, so kept
    // as they come): winding 2 where they overlap.
    XPath compound;
    zgPath *first = newContour(squarePoints(0, 0, 10), true);
    zgPath *second = newContour(squarePoints(5, 5, 10), true);
    first->addFlags(zgPath::ClockwiseFlag);
    second->addFlags(zgPath::ClockwiseFlag);
    compound.addChild(first);
    compound.addChild(second);
    EXPECT_TRUE(compound.contains(zgPoint(7, 7), zgStyle(true, true, false)));
    EXPECT_FALSE(compound.contains(zgPoint(7, 7), zgStyle(true, true, true)));
    EXPECT_TRUE(compound.contains(zgPoint(12, 12), zgStyle(true, true, true)));
}

TEST(Contains, ReferenceCountsStayBalanced)
{
    expectNoSurvivors(countSurvivors([] {
        zgPath *square = newContour(squarePoints(0, 0, 10), true);
        square->addRef();
        square->contains(zgPoint(5, 5), zgStyle());
        square->release();
        XPath compound;
        compound.addChild(newContour(squarePoints(0, 0, 10), true));
        compound.contains(zgPoint(5, 5), zgStyle());
    }));
}

// getNearestLocation ---------------------------------------------------------------

TEST(NearestLocation, OnTheNearestCurveWithItsDistance)
{
    HeldContour square(squarePoints(0, 0, 10), true);
    zgCurveLocation *location = square->getNearestLocation(zgPoint(12, 4));
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getCurve(), square->curves.at(1));
    expectPoint(location->point, 10, 4, 1e-9);
    EXPECT_NEAR(location->distance, 2.0, 1e-9);
    EXPECT_EQ(location->refCount, 0);
    location->release();
}

TEST(NearestLocation, TheFirstCurveWinsATie)
{
    // The centre is 5 from every edge.
    HeldContour square(squarePoints(0, 0, 10), true);
    zgCurveLocation *location = square->getNearestLocation(zgPoint(5, 5));
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getCurve(), square->curves.at(0));
    expectPoint(location->point, 5, 0, 1e-9);
    location->release();
}

TEST(NearestLocation, NoneWithoutCurvesOrForANaNPoint)
{
    zgPath empty;
    EXPECT_EQ(empty.getNearestLocation(zgPoint(1, 1)), nullptr);
    HeldContour square(squarePoints(0, 0, 10), true);
    EXPECT_EQ(square->getNearestLocation(zgPoint(qQNaN(), qQNaN())), nullptr);
}

TEST(NearestLocation, CompoundWalksAllChildren)
{
    XPath compound;
    compound.addChild(newContour(squarePoints(0, 0, 10), true));
    compound.addChild(newContour(squarePoints(20, 0, 10), true));
    zgCurveLocation *location = zgHitTestInternals::getNearestLocation(compound, zgPoint(21, 5));
    ASSERT_NE(location, nullptr);
    EXPECT_EQ(location->getPath(), compound.children.at(1));
    EXPECT_NEAR(location->distance, 1.0, 1e-9);
    location->release();
    expectPoint(zgHitTestInternals::getNearestPoint(compound, zgPoint(21, 5)), 20, 5, 1e-9);
    XPath empty;
    EXPECT_EQ(zgHitTestInternals::getNearestLocation(empty, zgPoint(0, 0)), nullptr);
    expectNaNPoint(zgHitTestInternals::getNearestPoint(empty, zgPoint(0, 0)));
}

TEST(NearestLocation, OnlyTheResultSurvivesUntilReleased)
{
    expectNoSurvivors(countSurvivors([] {
        zgPath *square = newContour(squarePoints(0, 0, 10), true);
        square->addRef();
        square->getNearestLocation(zgPoint(3, 4))->release();
        square->release();
        XPath compound;
        compound.addChild(newContour(squarePoints(0, 0, 10), true));
        zgHitTestInternals::getNearestPoint(compound, zgPoint(3, 4));
    }));
    const Survivors kept = countSurvivors([] {
        zgPath *square = newContour(squarePoints(0, 0, 10), true);
        square->addRef();
        square->getNearestLocation(zgPoint(3, 4)); // not released
        square->release();
    });
    EXPECT_EQ(kept.locations, 1);
}

// XPath::hitTest -------------------------------------------------------------------

TEST(HitTest, DefaultOptionsInsideTheFill)
{
    SquareCompound shape;
    const zgHitResult result = shape.compound.hitTest(zgPoint(5, 5), zgStyle(), zgHitOpt());
    expectResult(result, zgHitFill, &shape.compound, nullptr);
    expectPoint(result.point, 0, 0, 0.0);
}

TEST(HitTest, DefaultOptionsOnTheStrokeOutsideTheFill)
{
    // Stroke radius 0.5, tolerance 0.1: 0.6 from the outline.
    SquareCompound shape;
    const zgHitResult result = shape.compound.hitTest(zgPoint(5, -0.4), zgStyle(), zgHitOpt());
    expectResult(result, zgHitStroke, &shape.compound, shape.square);
    expectPoint(result.point, 5, 0, 1e-9);
    EXPECT_EQ(shape.compound.hitTest(zgPoint(5, -0.7), zgStyle(), zgHitOpt()).type, zgHitNone);
    // The edge of the square itself is on the box edge, so not in the fill:
    // the stroke takes it.
    EXPECT_EQ(shape.compound.hitTest(zgPoint(5, 0), zgStyle(), zgHitOpt()).type, zgHitStroke);
}

TEST(HitTest, WithoutFillTheInsideGoesToTheChildren)
{
    SquareCompound shape;
    const zgHitOpt options = strokeOnly(0.1);
    EXPECT_EQ(shape.compound.hitTest(zgPoint(5, 5), zgStyle(), options).type, zgHitNone);
    const zgHitResult result = shape.compound.hitTest(zgPoint(9.5, 5), zgStyle(), options);
    expectResult(result, zgHitStroke, &shape.compound, shape.square);
    expectPoint(result.point, 10, 5, 1e-9);
}

TEST(HitTest, NoChildrenNoHit)
{
    XPath empty;
    const zgHitResult result = empty.hitTest(zgPoint(0, 0), zgStyle(), zgHitOpt());
    expectResult(result, zgHitNone, nullptr, nullptr);
}

TEST(HitTest, ChildrenAnswerInOrderWithTheFillCleared)
{
    // Two overlapping squares: a point near both outlines goes to the first
    // child; a point inside only the second's fill gets no fill hit from the
    // children, because they test no fill.
    XPath compound;
    compound.addChild(newContour(squarePoints(0, 0, 10), true));
    compound.addChild(newContour(squarePoints(9.8, 0, 10), true));
    const zgHitResult first = zgHitTestInternals::hitTestChildren(
            compound, zgPoint(9.9, 5), zgStyle(), zgHitOpt());
    expectResult(first, zgHitStroke, &compound, compound.children.at(0));
    const zgHitResult second = zgHitTestInternals::hitTestChildren(
            compound, zgPoint(15, 9.7), zgStyle(), zgHitOpt());
    expectResult(second, zgHitStroke, &compound, compound.children.at(1));
    const zgHitResult none = zgHitTestInternals::hitTestChildren(
            compound, zgPoint(15, 5), zgStyle(), zgHitOpt());
    expectResult(none, zgHitNone, nullptr, nullptr);
}

TEST(HitTest, CompoundSelfTestIsTheFillAlone)
{
    SquareCompound shape;
    expectResult(zgHitTestInternals::hitTestSelf(shape.compound, zgPoint(5, 5), zgStyle(),
                                                 zgHitOpt()),
                 zgHitFill, &shape.compound, nullptr);
    expectResult(zgHitTestInternals::hitTestSelf(shape.compound, zgPoint(5, -0.2), zgStyle(),
                                                 zgHitOpt()),
                 zgHitNone, nullptr, nullptr);
    expectResult(zgHitTestInternals::hitTestSelf(shape.compound, zgPoint(5, 5), zgStyle(),
                                                 strokeOnly(0.1)),
                 zgHitNone, nullptr, nullptr);
}

// zgPath::_hitTestSelf: the stroke ---------------------------------------------------

TEST(ContourHit, StrokeDistanceBoundOnBothSides)
{
    // Radius 0.5 and tolerance 0.25: strokePadding 0.75, exactly.
    SquareCompound shape;
    const zgStyle style = strokeStyle(1.0, zgCapButt, zgJoinBevel);
    const zgHitResult on = shape.square->_hitTestSelf(zgPoint(4, -0.75), strokeOnly(0.25), style);
    expectResult(on, zgHitStroke, &shape.compound, shape.square);
    expectPoint(on.point, 4, 0, 1e-9);
    EXPECT_EQ(strokeHitType(shape.square, zgPoint(4, -0.7500001), 0.25, style), zgHitNone);
    EXPECT_EQ(strokeHitType(shape.square, zgPoint(4, 0.75), 0.25, style), zgHitStroke);
}

TEST(ContourHit, ZeroWidthStrokeIsRoundWithTheTolerance)
{
    // Radius 0: the miter join of the style counts as round, so the corner
    // (10, 0) is a distance test against the tolerance alone.
    SquareCompound shape;
    const zgStyle style = strokeStyle(0.0, zgCapButt, zgJoinMiter);
    const zgHitOpt options = strokeOnly(0.25);
    const zgHitResult near = shape.square->_hitTestSelf(zgPoint(10.12, -0.16), options, style);
    expectResult(near, zgHitStroke, &shape.compound, shape.square);
    expectPoint(near.point, 10, 0, 1e-9);
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(10.2, -0.2), options, style).type, zgHitNone);
    // Along an edge, the tolerance too.
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(5, -0.25), options, style).type, zgHitStroke);
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(5, -0.26), options, style).type, zgHitNone);
}

TEST(ContourHit, CurvesOnlyGivesTheCurvePoint)
{
    SquareCompound shape;
    const zgHitOpt curves(false, false, true, true, 0.25);
    const zgStyle wide = strokeStyle(8.0, zgCapSquare, zgJoinMiter);
    const zgHitResult result = shape.square->_hitTestSelf(zgPoint(10.2, 3), curves, wide);
    expectResult(result, zgHitCurve, &shape.compound, shape.square);
    expectPoint(result.point, 10, 3, 1e-9);
    // The stroke width does not count: radius 0.
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(10.3, 3), curves, wide).type, zgHitNone);
}

TEST(ContourHit, FillOnlyWithToleranceZeroTestsTheFillAlone)
{
    SquareCompound shape;
    const zgHitOpt fillOnly(true, false, false, true, 0.0);
    const zgHitResult inside = shape.square->_hitTestSelf(zgPoint(5, 5), fillOnly, zgStyle());
    expectResult(inside, zgHitFill, &shape.compound, shape.square);
    expectPoint(inside.point, 0, 0, 0.0);
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(5, -1e-9), fillOnly, zgStyle()).type,
              zgHitNone);
}

TEST(ContourHit, FillOnlyWithAToleranceTakesTheOutlineAsFill)
{
    // Radius 0: a point within the tolerance of the curve but outside the
    // fill gives zgHitFill.
    SquareCompound shape;
    const zgHitOpt fillOnly(true, false, false, true, 0.25);
    const zgHitResult near = shape.square->_hitTestSelf(zgPoint(5, -0.25), fillOnly, zgStyle());
    expectResult(near, zgHitFill, &shape.compound, shape.square);
    expectPoint(near.point, 0, 0, 0.0);
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(5, -0.3), fillOnly, zgStyle()).type, zgHitNone);
}

TEST(ContourHit, FillOfAContourIsEvenOddWhateverTheStyle)
{
    // Round the square twice: winding 2, which the even-odd rule drops.
    XPath compound;
    compound.addChild(newContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10),
                                  zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10)},
                                 true));
    zgPath *twice = compound.children.first();
    const zgStyle nonZero(true, true, false);
    const zgHitOpt fillOnly(true, false, false, true, 0.0);
    EXPECT_EQ(twice->_hitTestSelf(zgPoint(5, 5), fillOnly, nonZero).type, zgHitNone);
    EXPECT_TRUE(compound.contains(zgPoint(5, 5), nonZero));
    expectResult(compound.hitTest(zgPoint(5, 5), nonZero, fillOnly), zgHitFill, &compound,
                 nullptr);
}

TEST(ContourHit, NothingAskedNothingHit)
{
    SquareCompound shape;
    const zgHitOpt nothing(false, false, false, true, 0.25);
    EXPECT_EQ(shape.square->_hitTestSelf(zgPoint(5, 0), nothing, zgStyle()).type, zgHitNone);
}

TEST(ContourHit, EmptyContourIsNeverHit)
{
    zgPath empty;
    EXPECT_EQ(empty._hitTestSelf(zgPoint(0, 0), zgHitOpt(), zgStyle()).type, zgHitNone);
    EXPECT_EQ(empty._hitTestSelf(zgPoint(0, 0), zgHitOpt(false, false, true, true, 1.0), zgStyle())
                      .type,
              zgHitNone);
}

TEST(ContourHit, ContourWithoutParentGivesANullCompound)
{
    HeldContour line({zgPoint(0, 0), zgPoint(10, 0)}, false);
    const zgHitResult result = line->_hitTestSelf(zgPoint(5, 0.3), strokeOnly(0.1), zgStyle());
    expectResult(result, zgHitStroke, nullptr, line.path);
}

TEST(ContourHit, EachCallTakesAContourIdForItsPolygon)
{
    SquareCompound shape;
    const int before = zgPath::s_maxID;
    shape.square->_hitTestSelf(zgPoint(5, 5), zgHitOpt(), zgStyle());
    EXPECT_EQ(zgPath::s_maxID, before + 1);
    shape.compound.hitTest(zgPoint(50, 50), zgStyle(), zgHitOpt());
    EXPECT_EQ(zgPath::s_maxID, before + 2);
}

// Joins --------------------------------------------------------------------------

namespace {

// The open polyline (0, 0), (20, 0), (0, 6): a sharp turn at (20, 0), whose
// miter corner lies 1 / sin(theta / 2) from it for radius 1, theta being the
// angle between the two edges (about 6.88 units).
struct SharpTurn
{
    XPath compound;
    zgPath *path;
    zgPoint tip;

    SharpTurn()
    {
        compound.addChild(newContour({zgPoint(0, 0), zgPoint(20, 0), zgPoint(0, 6)}, false));
        path = compound.children.first();
        const double theta = std::atan2(6.0, 20.0);
        const double reach = 1.0 / std::sin(theta / 2.0);
        // Outwards: away from the wedge between the edges, along its bisector.
        const double bisector = theta / 2.0;
        tip = zgPoint(20.0 + reach * std::cos(bisector), -reach * std::sin(bisector));
        // The wedge opens towards -x and +y, so outwards is +x and -y.
    }

    // A point on the way from the corner to the miter tip.
    zgPoint towardsTip(double fraction) const
    {
        return zgPoint(20.0 + fraction * (tip.x - 20.0), fraction * tip.y);
    }
};

} // namespace

TEST(ContourHit, MiterTipHitsThroughTheJoinPolygon)
{
    SharpTurn turn;
    const zgPoint nearTip = turn.towardsTip(0.9); // about 6.2 from the corner
    ASSERT_GT(nearTip.getDistance(zgPoint(20, 0)), 6.0);
    const zgStyle miter = strokeStyle(2.0, zgCapButt, zgJoinMiter);
    const zgHitResult hit = turn.path->_hitTestSelf(nearTip, strokeOnly(0.1), miter);
    expectResult(hit, zgHitStroke, &turn.compound, turn.path);
    expectPoint(hit.point, 20, 0, 1e-9);
    // Beyond the tip.
    EXPECT_EQ(strokeHitType(turn.path, turn.towardsTip(1.1), 0.1, miter), zgHitNone);
}

TEST(ContourHit, MiterLimitAndBevelCutTheTipOff)
{
    SharpTurn turn;
    const zgPoint nearTip = turn.towardsTip(0.9);
    // A limit of 6 radii is below the reach of 6.88: beveled.
    const zgStyle shortMiter = strokeStyle(2.0, zgCapButt, zgJoinMiter, 6.0);
    EXPECT_EQ(strokeHitType(turn.path, nearTip, 0.1, shortMiter), zgHitNone);
    const zgStyle bevel = strokeStyle(2.0, zgCapButt, zgJoinBevel);
    EXPECT_EQ(strokeHitType(turn.path, nearTip, 0.1, bevel), zgHitNone);
    const zgStyle round = strokeStyle(2.0, zgCapButt, zgJoinRound);
    EXPECT_EQ(strokeHitType(turn.path, nearTip, 0.1, round), zgHitNone);
}

TEST(ContourHit, BevelAndRoundJoinsNearTheCorner)
{
    // 1.05 from the corner on the bisector: inside the round join's padding
    // (1.1), outside the bevel triangle, whose far edge crosses the bisector
    // sin(theta / 2), about 0.145, from the corner, and more than the
    // tolerance from it.
    SharpTurn turn;
    const double reach = turn.tip.getDistance(zgPoint(20, 0));
    const zgPoint point = turn.towardsTip(1.05 / reach);
    const zgStyle round = strokeStyle(2.0, zgCapButt, zgJoinRound);
    const zgStyle bevel = strokeStyle(2.0, zgCapButt, zgJoinBevel);
    EXPECT_EQ(strokeHitType(turn.path, point, 0.1, round), zgHitStroke);
    EXPECT_EQ(strokeHitType(turn.path, point, 0.1, bevel), zgHitNone);
    // Close to the corner, the bevel triangle holds it.
    EXPECT_EQ(strokeHitType(turn.path, turn.towardsTip(0.1 / reach), 0.0, bevel), zgHitStroke);
}

TEST(ContourHit, JoinWithHandlesOnBothSidesIsRoundByDistance)
{
    // A smooth node (both handles set) makes no join polygon: the distance
    // test decides, whatever the join.
    XPath compound;
    zgPath *path = new zgPath(nullptr, false);
    path->addSegment(new zgSegment(0, 0));
    path->addSegment(new zgSegment(zgPoint(10, 0), zgPoint(-3, 0), zgPoint(3, 0)));
    path->addSegment(new zgSegment(20, 0));
    compound.addChild(path);
    const zgStyle miter = strokeStyle(2.0, zgCapButt, zgJoinMiter);
    const zgHitResult result = path->_hitTestSelf(zgPoint(10, 1.05), strokeOnly(0.1), miter);
    EXPECT_EQ(result.type, zgHitStroke);
    expectPoint(result.point, 10, 0, 1e-9);
    EXPECT_EQ(strokeHitType(path, zgPoint(10, 1.15), 0.1, miter), zgHitNone);
}

// Caps ---------------------------------------------------------------------------

TEST(ContourHit, SquareCapExtendsTheLineButtCapDoesNot)
{
    // The line (0, 0)-(10, 0), radius 1, tolerance 0.1. (10.9, 0.9) is 1.27
    // from the end, beyond the padding 1.1: only the square cap holds it.
    XPath compound;
    compound.addChild(newContour({zgPoint(0, 0), zgPoint(10, 0)}, false));
    zgPath *line = compound.children.first();
    const zgPoint corner(10.9, 0.9);
    const zgHitResult square = line->_hitTestSelf(corner, strokeOnly(0.1),
                                                  strokeStyle(2.0, zgCapSquare, zgJoinBevel));
    expectResult(square, zgHitStroke, &compound, line);
    expectPoint(square.point, 10, 0, 1e-9);
    EXPECT_EQ(strokeHitType(line, corner, 0.1, strokeStyle(2.0, zgCapButt, zgJoinBevel)),
              zgHitNone);
    EXPECT_EQ(strokeHitType(line, corner, 0.1, strokeStyle(2.0, zgCapRound, zgJoinBevel)),
              zgHitNone);
    // At the start the square cap reaches backwards.
    const zgStyle squareCap = strokeStyle(2.0, zgCapSquare, zgJoinBevel);
    EXPECT_EQ(strokeHitType(line, zgPoint(-0.9, -0.9), 0.1, squareCap), zgHitStroke);
    // Beyond the square.
    EXPECT_EQ(strokeHitType(line, zgPoint(11.05, 0.5), 0.0, squareCap), zgHitNone);
}

TEST(ContourHit, ButtCapHitsOnlyWithinToleranceOfItsEdge)
{
    // Past the end the butt cap is the line x = 10 from y = -1 to 1: a point
    // within the tolerance of it hits, one farther does not, though the
    // round cap would take both.
    XPath compound;
    compound.addChild(newContour({zgPoint(0, 0), zgPoint(10, 0)}, false));
    zgPath *line = compound.children.first();
    const zgStyle butt = strokeStyle(2.0, zgCapButt, zgJoinBevel);
    const zgStyle round = strokeStyle(2.0, zgCapRound, zgJoinBevel);
    EXPECT_EQ(strokeHitType(line, zgPoint(10.25, 0.5), 0.25, butt), zgHitStroke);
    EXPECT_EQ(strokeHitType(line, zgPoint(10.3, 0.5), 0.25, butt), zgHitNone);
    EXPECT_EQ(strokeHitType(line, zgPoint(10.3, 0.5), 0.25, round), zgHitStroke);
}

TEST(ContourHit, TheTimeTestIsExact)
{
    // A long line whose handles lie at the thirds runs at constant speed: at
    // (1000, 0.9) the nearest time is 1e-09, a curve point, so the distance
    // 0.9 decides and the butt cap (which would miss) plays no part.
    XPath compound;
    zgPath *path = new zgPath(nullptr, false);
    const double end = 1e12;
    path->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(0, 0), zgPoint(end / 3, 0)));
    path->addSegment(new zgSegment(zgPoint(end, 0), zgPoint(-end / 3, 0), zgPoint(0, 0)));
    compound.addChild(path);
    zgCurveLocation *location = path->getNearestLocation(zgPoint(1000, 0.9));
    ASSERT_NE(location, nullptr);
    EXPECT_GT(location->getTime(), 0.0);
    EXPECT_LT(location->getTime(), 4e-07);
    location->release();
    const zgHitResult result = path->_hitTestSelf(zgPoint(1000, 0.9), strokeOnly(0.1),
                                                  strokeStyle(2.0, zgCapButt, zgJoinBevel));
    EXPECT_EQ(result.type, zgHitStroke);
}

TEST(ContourHit, HitTestsBalanceTheirReferences)
{
    expectNoSurvivors(countSurvivors([] {
        SharpTurn turn;
        turn.path->_hitTestSelf(turn.towardsTip(0.9), strokeOnly(0.1),
                                strokeStyle(2.0, zgCapButt, zgJoinMiter));
        turn.path->_hitTestSelf(zgPoint(-0.9, -0.5), strokeOnly(0.1),
                                strokeStyle(2.0, zgCapSquare, zgJoinMiter));
        turn.path->_hitTestSelf(zgPoint(5, 3), zgHitOpt(), zgStyle());
        turn.compound.hitTest(zgPoint(5, 1), zgStyle(), zgHitOpt());
        turn.compound.hitTest(zgPoint(50, 50), zgStyle(), zgHitOpt());
    }));
}
