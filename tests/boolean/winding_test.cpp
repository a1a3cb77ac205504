// Monotone pieces and winding numbers, on hand-made inputs whose answers are
// worked out in the comments.
#include "boolean/winding_test_support.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <QtCore/qnumeric.h>

#include <cmath>
#include <memory>

using namespace zgtest;

namespace {

// A heap contour of straight segments, count 0, released by the owner below.
struct ContourOwner
{
    void operator()(zgPath *path) const { path->release(); }
};
using Contour = std::unique_ptr<zgPath, ContourOwner>;

Contour contour(const QVector<zgPoint> &points, bool closed)
{
    zgPath *path = newContour(points, closed);
    path->addRef();
    return Contour(path);
}

zgWinding windingOf(const QList<zgMono *> &pieces, double x, double y, bool horizontal = false)
{
    return XPath::getWinding(zgPoint(x, y), pieces, horizontal);
}

void expectWinding(const zgWinding &actual, int winding, bool onPath)
{
    EXPECT_EQ(actual.winding, winding);
    EXPECT_EQ(actual.onPath, onPath);
}

void expectValues(const QVector<double> &actual, const QVector<double> &expected,
                  double tolerance = 1e-12)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual.at(i), expected.at(i), tolerance) << "value " << i;
}

// The square (0, 0), (10, 0), (10, 10), (0, 10): its pieces are the top edge
// (horizontal), the right edge (y grows: +1), the bottom edge (horizontal)
// and the left edge (y falls: -1).
QVector<zgPoint> square() { return squarePoints(0, 0, 10); }

} // namespace

// insertMonoCurve --------------------------------------------------------------

TEST(MonoPieces, InsertTakesTheSignOfTheRise)
{
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::insertMonoCurve({0, 0, 1, 1, 2, 2, 3, 3}, pieces.list, last);
    zgWindingInternals::insertMonoCurve({3, 3, 2, 2, 1, 1, 0, 0}, pieces.list, last);
    ASSERT_EQ(pieces.size(), 2);
    EXPECT_EQ(pieces.at(0)->winding, 1);
    EXPECT_EQ(pieces.at(1)->winding, -1);
    EXPECT_EQ(pieces.at(0)->last, nullptr);
    EXPECT_EQ(pieces.at(1)->last, nullptr);
    EXPECT_EQ(last, pieces.at(1));
    expectValues(pieces.at(0)->values, {0, 0, 1, 1, 2, 2, 3, 3}, 0.0);
}

TEST(MonoPieces, HorizontalPiecesLeaveTheLastNonHorizontalAlone)
{
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::insertMonoCurve({0, 0, 0, 0, 5, 5, 5, 5}, pieces.list, last);
    zgWindingInternals::insertMonoCurve({5, 5, 5, 5, 9, 5, 9, 5}, pieces.list, last);
    ASSERT_EQ(pieces.size(), 2);
    EXPECT_EQ(pieces.at(1)->winding, 0);
    EXPECT_EQ(last, pieces.at(0));
}

TEST(MonoPieces, SlopeTestIsRelativeToTheRun)
{
    MonoList pieces;
    zgMono *last = nullptr;
    // A rise of 1 over a run of 1e7 is 1e-7 per unit: horizontal.
    zgWindingInternals::insertMonoCurve({0, 0, 0, 0, 1e7, 1, 1e7, 1}, pieces.list, last);
    // 2e-07 per unit exactly is not below the bound.
    zgWindingInternals::insertMonoCurve({1, 2e-07, 1, 2e-07, 0, 0, 0, 0}, pieces.list, last);
    // Just below it.
    zgWindingInternals::insertMonoCurve({0, 0, 0, 0, 1, 1.9e-07, 1, 1.9e-07}, pieces.list, last);
    ASSERT_EQ(pieces.size(), 3);
    EXPECT_EQ(pieces.at(0)->winding, 0);
    EXPECT_EQ(pieces.at(1)->winding, -1);
    EXPECT_EQ(pieces.at(2)->winding, 0);
    EXPECT_EQ(last, pieces.at(1));
}

TEST(MonoPieces, VerticalPieceHasAnInfiniteSlope)
{
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::insertMonoCurve({4, 0, 4, 0, 4, 1e-9, 4, 1e-9}, pieces.list, last);
    zgWindingInternals::insertMonoCurve({4, 1e-9, 4, 1e-9, 4, 0, 4, 0}, pieces.list, last);
    ASSERT_EQ(pieces.size(), 2);
    EXPECT_EQ(pieces.at(0)->winding, 1);
    EXPECT_EQ(pieces.at(1)->winding, -1);
}

TEST(MonoPieces, CoincidingEndsGiveNaNAndCountAsRising)
{
    // 0 / 0 is NaN, which fails the horizontal test: +1.
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::insertMonoCurve({2, 2, 8, -4, -4, -4, 2, 2}, pieces.list, last);
    ASSERT_EQ(pieces.size(), 1);
    EXPECT_EQ(pieces.at(0)->winding, 1);
    EXPECT_EQ(last, pieces.at(0));
}

// addMonoCurve -----------------------------------------------------------------

TEST(MonoPieces, ZeroLengthCurveMakesNoPiece)
{
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::addMonoCurve({3, 4, 3, 4, 3, 4, 3, 4}, pieces.list, last);
    EXPECT_EQ(pieces.size(), 0);
    EXPECT_EQ(last, nullptr);
}

TEST(MonoPieces, StraightCurveGoesInWhole)
{
    MonoList pieces;
    zgMono *last = nullptr;
    // Handles on the chord, inside it: straight, one piece with the values.
    const QVector<double> values = {0, 0, 1, 2, 2, 4, 3, 6};
    zgWindingInternals::addMonoCurve(values, pieces.list, last);
    ASSERT_EQ(pieces.size(), 1);
    expectValues(pieces.at(0)->values, values, 0.0);
    EXPECT_EQ(pieces.at(0)->winding, 1);
}

TEST(MonoPieces, MonotoneControlPolygonGoesInWhole)
{
    MonoList pieces;
    zgMono *last = nullptr;
    const QVector<double> values = {0, 10, 5, 8, -3, 2, 4, 0};
    zgWindingInternals::addMonoCurve(values, pieces.list, last);
    ASSERT_EQ(pieces.size(), 1);
    expectValues(pieces.at(0)->values, values, 0.0);
    EXPECT_EQ(pieces.at(0)->winding, -1);
}

TEST(MonoPieces, OneExtremeSplitsInTwo)
{
    // Ordinates 0, 2, 2, 0: -4t + 2 = 0 at t = 0.5, where y = 1.5.
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::addMonoCurve({0, 0, 1, 2, 2, 2, 3, 0}, pieces.list, last);
    ASSERT_EQ(pieces.size(), 2);
    expectValues(pieces.at(0)->values, {0, 0, 0.5, 1, 1, 1.5, 1.5, 1.5});
    expectValues(pieces.at(1)->values, {1.5, 1.5, 2, 1.5, 2.5, 1, 3, 0});
    EXPECT_EQ(pieces.at(0)->winding, 1);
    EXPECT_EQ(pieces.at(1)->winding, -1);
    EXPECT_EQ(last, pieces.at(1));
}

TEST(MonoPieces, TwoExtremesSplitInThree)
{
    // Ordinates 0, 3, -3, 0: 18t^2 - 18t + 3 = 0 at t = (1 -+ 1/sqrt(3)) / 2.
    const QVector<double> values = {0, 0, 1, 3, 2, -3, 3, 0};
    MonoList pieces;
    zgMono *last = nullptr;
    zgWindingInternals::addMonoCurve(values, pieces.list, last);
    ASSERT_EQ(pieces.size(), 3);
    const double t1 = (1.0 - 1.0 / std::sqrt(3.0)) / 2.0;
    const double t2 = (1.0 + 1.0 / std::sqrt(3.0)) / 2.0;
    const zgPoint top = zgCurve::getPoint(values, t1);
    const zgPoint bottom = zgCurve::getPoint(values, t2);
    EXPECT_NEAR(pieces.at(0)->values.at(6), top.x, 1e-12);
    EXPECT_NEAR(pieces.at(0)->values.at(7), top.y, 1e-12);
    EXPECT_NEAR(pieces.at(1)->values.at(0), top.x, 1e-12);
    EXPECT_NEAR(pieces.at(1)->values.at(6), bottom.x, 1e-12);
    EXPECT_NEAR(pieces.at(1)->values.at(7), bottom.y, 1e-12);
    EXPECT_NEAR(pieces.at(2)->values.at(6), 3.0, 1e-12);
    EXPECT_NEAR(pieces.at(2)->values.at(7), 0.0, 1e-12);
    // The middle piece runs over the middle of the curve.
    const zgPoint middle = zgCurve::getPoint(pieces.at(1)->values, 0.5);
    const zgPoint expected = zgCurve::getPoint(values, 0.5);
    EXPECT_NEAR(middle.x, expected.x, 1e-12);
    EXPECT_NEAR(middle.y, expected.y, 1e-12);
    EXPECT_EQ(pieces.at(0)->winding, 1);
    EXPECT_EQ(pieces.at(1)->winding, -1);
    EXPECT_EQ(pieces.at(2)->winding, 1);
}

TEST(MonoPieces, ExtremesAtTheEndsAreNotInTheRange)
{
    // Ordinates 0, 0, 1, 1: the polygon is not monotone in the booleans
    // (0 >= 0 but 0 < 1), yet dy/dt vanishes only at t = 0 and t = 1.
    MonoList pieces;
    zgMono *last = nullptr;
    const QVector<double> values = {0, 0, 4, 0, 6, 1, 10, 1};
    zgWindingInternals::addMonoCurve(values, pieces.list, last);
    ASSERT_EQ(pieces.size(), 1);
    expectValues(pieces.at(0)->values, values, 0.0);
}

TEST(MonoPieces, NonMonotonePolygonWithoutExtremeGoesInWhole)
{
    // Ordinates 0, 1, 0.9, 2: 2.3t^2 - 2.2t + 1 has no real root.
    MonoList pieces;
    zgMono *last = nullptr;
    const QVector<double> values = {0, 0, 1, 1, 2, 0.9, 3, 2};
    zgWindingInternals::addMonoCurve(values, pieces.list, last);
    ASSERT_EQ(pieces.size(), 1);
    expectValues(pieces.at(0)->values, values, 0.0);
}

TEST(MonoPieces, ExtremeJustInsideTheEndBoundSplits)
{
    // Ordinates 0, -e, 1, 1: dy/dt vanishes near t = e / 2 and at t = 1,
    // inside the range for e = 3e-06, outside it for e = 3e-07.
    for (const double e : {3e-06, 3e-07}) {
        MonoList pieces;
        zgMono *last = nullptr;
        zgWindingInternals::addMonoCurve({0, 0, 4, -e, 6, 1, 10, 1}, pieces.list, last);
        EXPECT_EQ(pieces.size(), e > 1e-06 ? 2 : 1) << e;
    }
}

// getMonoCurves ----------------------------------------------------------------

TEST(MonoCurves, SquareGivesFourPiecesAndLinksItsFirstToItsLastRiser)
{
    Contour path = contour(square(), true);
    MonoList pieces(path->getMonoCurves());
    ASSERT_EQ(pieces.size(), 4);
    EXPECT_EQ(pieces.at(0)->winding, 0);
    EXPECT_EQ(pieces.at(1)->winding, 1);
    EXPECT_EQ(pieces.at(2)->winding, 0);
    EXPECT_EQ(pieces.at(3)->winding, -1);
    EXPECT_EQ(pieces.at(0)->last, pieces.at(3));
    for (int i = 1; i < 4; ++i)
        EXPECT_EQ(pieces.at(i)->last, nullptr);
    expectValues(pieces.at(3)->values, {0, 10, 0, 10, 0, 0, 0, 0}, 0.0);
    EXPECT_TRUE(path->monos.isEmpty()); // the list goes to the caller only
}

TEST(MonoCurves, LastStaysNullWhenAllPiecesAreHorizontal)
{
    Contour path = contour({zgPoint(0, 5), zgPoint(10, 5)}, true);
    MonoList pieces(path->getMonoCurves());
    ASSERT_EQ(pieces.size(), 2);
    EXPECT_EQ(pieces.at(0)->winding, 0);
    EXPECT_EQ(pieces.at(1)->winding, 0);
    EXPECT_EQ(pieces.at(0)->last, nullptr);
}

TEST(MonoCurves, OpenContourGetsAStraightClosingPiece)
{
    Contour path = contour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)}, false);
    MonoList pieces(path->getMonoCurves());
    ASSERT_EQ(pieces.size(), 3);
    expectValues(pieces.at(2)->values, {10, 10, 10, 10, 0, 0, 0, 0}, 0.0);
    EXPECT_EQ(pieces.at(2)->winding, -1);
    EXPECT_EQ(pieces.at(0)->last, pieces.at(2));
}

TEST(MonoCurves, LoneSegmentGetsNoClosingPiece)
{
    Contour path = contour({zgPoint(3, 3)}, false);
    MonoList pieces(path->getMonoCurves());
    EXPECT_EQ(pieces.size(), 0);
}

TEST(MonoCurves, CoincidentPointsGiveNoPiecesAndWindingZero)
{
    Contour path = contour({zgPoint(2, 2), zgPoint(2, 2), zgPoint(2, 2)}, true);
    MonoList pieces(path->getMonoCurves());
    EXPECT_EQ(pieces.size(), 0);
    expectWinding(windingOf(pieces.list, 2, 2), 0, false);
}

TEST(MonoCurves, CurvedContourSplitsAtItsExtremes)
{
    // A closed contour of two curves that bulge above and below the chord
    // (0, 0)-(10, 0): each has one y extreme, so four pieces.
    zgPath *raw = new zgPath(nullptr, true);
    raw->addSegment(new zgSegment(zgPoint(0, 0), zgPoint(0, 5), zgPoint(0, -5)));
    raw->addSegment(new zgSegment(zgPoint(10, 0), zgPoint(0, -5), zgPoint(0, 5)));
    raw->addRef();
    Contour path(raw);
    MonoList pieces(path->getMonoCurves());
    ASSERT_EQ(pieces.size(), 4);
    EXPECT_EQ(pieces.at(0)->winding, -1);
    EXPECT_EQ(pieces.at(1)->winding, 1);
    EXPECT_EQ(pieces.at(2)->winding, 1);
    EXPECT_EQ(pieces.at(3)->winding, -1);
    EXPECT_EQ(pieces.at(0)->last, pieces.at(3));
    EXPECT_NEAR(pieces.at(0)->values.at(7), -3.75, 1e-12); // 0.75 of the handle
    expectWinding(windingOf(pieces.list, 5, 0), 1, false);
    expectWinding(windingOf(pieces.list, 5, 3.7), 1, false);
    expectWinding(windingOf(pieces.list, 5, 3.8), 0, false);
}

TEST(MonoCurves, KeptMemberListIsReturnedAsItStands)
{
    Contour path = contour(square(), true);
    zgMono *kept = new zgMono({0, 0, 0, 0, 0, 9, 0, 9}, 1);
    path->monos.append(kept); // the contour deletes it
    const QList<zgMono *> pieces = path->getMonoCurves();
    ASSERT_EQ(pieces.size(), 1);
    EXPECT_EQ(pieces.at(0), kept);
}

TEST(MonoCurves, CompoundConcatenatesItsChildren)
{
    XPath empty;
    EXPECT_TRUE(zgWindingInternals::getMonoCurves(empty).isEmpty());

    XPath compound;
    compound.addChild(newContour(square(), true));
    compound.addChild(newContour(squarePoints(20, 0, 5), true));
    MonoList pieces(zgWindingInternals::getMonoCurves(compound));
    ASSERT_EQ(pieces.size(), 8);
    EXPECT_NE(pieces.at(0)->last, nullptr);
    EXPECT_NE(pieces.at(4)->last, nullptr);
    EXPECT_EQ(pieces.at(4)->values.at(0), compound.children.at(1)->segments.at(0)->point.x);
}

// The ray form -----------------------------------------------------------------

TEST(RayWinding, EmptyListGivesZero)
{
    expectWinding(windingOf({}, 0, 0), 0, false);
    expectWinding(windingOf({}, 0, 0, true), 0, false);
}

TEST(RayWinding, InsideAndOutsideASquare)
{
    Contour path = contour(square(), true);
    MonoList pieces(path->getMonoCurves());
    // Inside: the left edge falls (-1) on the left, the right edge rises
    // (+1) on the right.
    expectWinding(windingOf(pieces.list, 5, 5), 1, false);
    // Outside: both on the left and cancelling.
    expectWinding(windingOf(pieces.list, 15, 5), 0, false);
    expectWinding(windingOf(pieces.list, -5, 5), 0, false);
    expectWinding(windingOf(pieces.list, 5, 15), 0, false);
}

TEST(RayWinding, PointOnAVerticalEdgeIsOnThePath)
{
    Contour path = contour(square(), true);
    MonoList pieces(path->getMonoCurves());
    // The right edge falls within the band; the left count is -1 alone.
    expectWinding(windingOf(pieces.list, 10, 5), 1, true);
    expectWinding(windingOf(pieces.list, 10 - 1.9e-07, 5), 1, true);
    expectWinding(windingOf(pieces.list, 10 - 2.1e-07, 5), 1, false);
    expectWinding(windingOf(pieces.list, 10 + 1.9e-07, 5), 1, true);
    expectWinding(windingOf(pieces.list, 10 + 2.1e-07, 5), 0, false);
    expectWinding(windingOf(pieces.list, 0, 5), 1, true);
}

TEST(RayWinding, PointOnAHorizontalEdgeTakesTheOtherSide)
{
    Contour path = contour(square(), true);
    MonoList pieces(path->getMonoCurves());
    // At y = 0 the right edge starts at (10, 0); the previous riser is the
    // left edge, ending at x = 0, on the other side of px = 5: not counted.
    // The left edge ends at (0, 0) and counts -1 on the left.
    expectWinding(windingOf(pieces.list, 5, 0), 1, true);
    // Beside the edge both count and cancel.
    expectWinding(windingOf(pieces.list, 15, 0), 0, false);
    expectWinding(windingOf(pieces.list, -5, 0), 0, false);
    expectWinding(windingOf(pieces.list, 15, 10), 0, false);
}

TEST(RayWinding, LocalExtremeAtTheRayCountsBothSidesOrNeither)
{
    // The diamond (0, 5), (5, 0), (10, 5), (5, 10): its top vertex (5, 0)
    // is where a falling and a rising piece meet.
    Contour path = contour({zgPoint(0, 5), zgPoint(5, 0), zgPoint(10, 5), zgPoint(5, 10)}, true);
    MonoList pieces(path->getMonoCurves());
    ASSERT_EQ(pieces.size(), 4);
    // Left of the vertex: -1 at its end, then +1 at the start of the next
    // piece (same x on the same side), cancelling on the right.
    expectWinding(windingOf(pieces.list, 3, 0), 0, false);
    expectWinding(windingOf(pieces.list, 20, 0), 0, false);
    expectWinding(windingOf(pieces.list, 5, 0), 1, false); // on-curve count only
    // The side vertex (10, 5) joins two rising pieces: counted once.
    expectWinding(windingOf(pieces.list, 7, 5), 1, false);
    expectWinding(windingOf(pieces.list, 12, 5), 0, false);
}

TEST(RayWinding, ProductRuleDecidesAcrossAHorizontalStretch)
{
    // A U turned over: up from (0, 10) to (0, 0)... written in y-down terms
    // as the polygon (0, 10), (0, 0), (10, 0), (10, 10), (20, 10), (20, -10),
    // (-10, -10), (-10, 10). At y = 0 the stretch (0, 0)-(10, 0) is
    // horizontal, with a falling piece ending at x = 0 and a rising piece
    // starting at x = 10.
    Contour path = contour({zgPoint(0, 10), zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10),
                            zgPoint(20, 10), zgPoint(20, -10), zgPoint(-10, -10),
                            zgPoint(-10, 10)},
                           true);
    MonoList pieces(path->getMonoCurves());
    // Under the stretch, inside the notch: on the outline.
    expectWinding(windingOf(pieces.list, 5, 0), 1, true);
    // Beside the stretch, in the body of the shape: both ends count.
    expectWinding(windingOf(pieces.list, 15, 0), 1, false);
    expectWinding(windingOf(pieces.list, -5, 0), 1, false);
    expectWinding(windingOf(pieces.list, 25, 0), 0, false);
    expectWinding(windingOf(pieces.list, 5, 5), 0, false); // in the notch
}

TEST(RayWinding, OpenContourOfTwoSegmentsIsOnItselfEverywhere)
{
    Contour path = contour({zgPoint(0, 0), zgPoint(10, 10)}, false);
    MonoList pieces(path->getMonoCurves());
    ASSERT_EQ(pieces.size(), 2);
    EXPECT_EQ(pieces.at(0)->winding, 1);
    EXPECT_EQ(pieces.at(1)->winding, -1);
    // Both crossings fall in the band: windLeft and windRight take +1 and -1
    // from the on-curve counters.
    expectWinding(windingOf(pieces.list, 5, 5), 1, false);
    expectWinding(windingOf(pieces.list, 0, 0), 1, false);
    expectWinding(windingOf(pieces.list, 10, 10), 1, false);
    expectWinding(windingOf(pieces.list, 3, 5), 0, false);
    Contour flat = contour({zgPoint(0, 0), zgPoint(10, 0)}, false);
    MonoList flatPieces(flat->getMonoCurves());
    expectWinding(windingOf(flatPieces.list, 4, 0), 1, false);
    expectWinding(windingOf(flatPieces.list, 11, 0), 0, false);
}

TEST(RayWinding, OnCurveIsCountedOncePerLoop)
{
    // Two open there-and-back contours crossing at (5, 5): the point lies on
    // both, and each loop counts it once.
    Contour first = contour({zgPoint(0, 0), zgPoint(10, 10)}, false);
    Contour second = contour({zgPoint(0, 10), zgPoint(10, 0)}, false);
    MonoList pieces(first->getMonoCurves());
    pieces.list.append(second->getMonoCurves());
    expectWinding(windingOf(pieces.list, 5, 5), 2, false);
}

TEST(RayWinding, AllHorizontalContourDoesNotEndTheLoop)
{
    // The second contour's pieces are all horizontal, so its first has no
    // last and the first loop runs on through it: a point on both counts once.
    Contour first = contour({zgPoint(0, 0), zgPoint(10, 10)}, false);
    Contour second = contour({zgPoint(0, 5), zgPoint(10, 5)}, false);
    MonoList pieces(first->getMonoCurves());
    pieces.list.append(second->getMonoCurves());
    ASSERT_EQ(pieces.at(2)->last, nullptr);
    expectWinding(windingOf(pieces.list, 5, 5), 1, false);
    // On the horizontal contour alone, it is counted at the end of the list.
    expectWinding(windingOf(pieces.list, 8, 5), 1, false);
}

TEST(RayWinding, CrossingsWinOverTheOnCurveCount)
{
    // Nested squares turning the same way: inside both, 2. On the right edge
    // of the inner one its crossing falls in the band: left -1 - 1, right +1,
    // so 2 without the on-curve count and not on the path.
    Contour outer = contour(square(), true);
    Contour inner = contour(squarePoints(3, 3, 4), true);
    MonoList pieces(outer->getMonoCurves());
    pieces.list.append(inner->getMonoCurves());
    expectWinding(windingOf(pieces.list, 5, 5), 2, false);
    expectWinding(windingOf(pieces.list, 7, 5), 2, false);
    expectWinding(windingOf(pieces.list, 1, 5), 1, false);
}

TEST(RayWinding, CurveWithTwoSolutionsContributesNothing)
{
    // A hand-made piece that is not monotone: the ray meets it twice, so
    // there is no x and the piece adds nothing; the next one still counts.
    zgMono bent({0, 0, 10, 30, 20, -20, 30, 10}, 1);
    zgMono wall({40, 10, 40, 10, 40, 0, 40, 0}, -1);
    const QList<zgMono *> pieces = {&bent, &wall};
    QVector<double> roots;
    ASSERT_GT(zgCurve::solveCubic(bent.values, 1.0, 5.0, roots, 0.0, 1.0), 1);
    expectWinding(windingOf(pieces, 50, 5), 1, true);
}

// The shift form ---------------------------------------------------------------

TEST(ShiftedWinding, PointOnTopEdgeWithNothingAboveIt)
{
    Contour path = contour(square(), true);
    MonoList pieces(path->getMonoCurves());
    // No outline above (y < 0) on x = 5: windLeft stays 0; below, the bottom
    // edge at y = 10 puts the query at (5, 5), winding 1.
    expectWinding(windingOf(pieces.list, 5, 0, true), 1, true);
    expectWinding(windingOf(pieces.list, 5, 10, true), 1, true);
}

TEST(ShiftedWinding, BetweenTwoStacksAsksHalfwayUpAndDown)
{
    // Two squares stacked with a gap: 0..10 and 20..30 in y. The point
    // (5, 20) lies on the top edge of the lower one: above, halfway to
    // y = 10 is (5, 15), outside; below, halfway to y = 30 is inside.
    Contour top = contour(square(), true);
    Contour bottom = contour(squarePoints(0, 20, 10), true);
    MonoList pieces(top->getMonoCurves());
    pieces.list.append(bottom->getMonoCurves());
    expectWinding(windingOf(pieces.list, 5, 20, true), 1, true);
    // On the shared stretch of two touching squares both sides are inside.
    Contour touching = contour(squarePoints(0, 10, 10), true);
    MonoList both(top->getMonoCurves());
    both.list.append(touching->getMonoCurves());
    expectWinding(windingOf(both.list, 5, 10, true), 1, false);
    // A point with no outline on its vertical at all.
    expectWinding(windingOf(both.list, 50, 10, true), 0, false);
}

TEST(ShiftedWinding, OutlineWithinTheBandIsTheOwnOne)
{
    Contour path = contour(square(), true);
    MonoList pieces(path->getMonoCurves());
    // 1.9e-07 below the top edge the top edge still counts as the point's
    // own; at 2.1e-07 it is above the point.
    expectWinding(windingOf(pieces.list, 5, 1.9e-07, true), 1, true);
    expectWinding(windingOf(pieces.list, 5, 2.1e-07, true), 1, false);
}

// Contour and compound forms -----------------------------------------------------

TEST(ContourWinding, LeavesItsPiecesAllocated)
{
    Contour path = contour(square(), true);
    IntendedLeakScope leaks;
    EXPECT_EQ(path->getWinding(zgPoint(5, 5), false), 1);
    EXPECT_EQ(path->getWinding(zgPoint(15, 5), false), 0);
    EXPECT_EQ(path->getWinding(zgPoint(5, 0), true), 1);
    EXPECT_TRUE(path->monos.isEmpty());
}

TEST(CompoundWinding, SquareWithAHole)
{
    XPath compound;
    compound.addChild(newContour(square(), true));
    compound.addChild(newContour(squarePoints(3, 3, 4), true)); // turned by addChild
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(5, 5), false), 0);
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(1, 5), false), 1);
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(8, 5), false), 1);
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(12, 5), false), 0);
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(5, 3), true), 1);
    XPath empty;
    EXPECT_EQ(zgWindingInternals::getWinding(empty, zgPoint(0, 0), false), 0);
}

TEST(CompoundWinding, LeavesPiecesKeptByAChild)
{
    XPath compound;
    compound.addChild(newContour(square(), true));
    zgPath *child = compound.children.at(0);
    child->monos = child->getMonoCurves();
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(5, 5), false), 1);
    EXPECT_EQ(child->monos.size(), 4);
    EXPECT_EQ(zgWindingInternals::getWinding(compound, zgPoint(5, 5), false), 1);
}
