// Tests of ZDPath::setLineHead: open starts and ends shortened by a length,
// lines not longer than the length plus one unit taken out, curves cut
// through the object model, and the unshortened points kept in auxX/auxY.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "services/services_test_support.h"
#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

using drawingtest::Move;
using drawingtest::Line;
using drawingtest::Curve;
using drawingtest::CurveData;
using drawingtest::Close;
using drawingtest::expectElementsWithAux;
using drawingtest::expectSameElements;
using drawingtest::pathOf;

namespace {

// A cubic from `from` to `to` with its control points at the thirds: a
// straight curve measured by its chord, whose time runs with its length.
ZDPath &straightCubic(ZDPath &path, const QPointF &from, const QPointF &to)
{
    const QPointF step = (to - from) / 3.0;
    path.cubicTo(from + step, from + 2.0 * step, to);
    return path;
}

} // namespace

// Nothing to do

TEST(ZDPathLineHead, NoOpenSubpathGivesFalseAndChangesNothing)
{
    ZDPath closed(QRectF(0, 0, 100, 50));
    closed.addRect(QRectF(200, 0, 30, 30));
    const ZDPath before = closed;
    EXPECT_FALSE(closed.setLineHead(10, 10, false));
    expectSameElements(closed, before);
    EXPECT_FALSE(closed.setLineHead(10, 10, true));
    expectSameElements(closed, before);

    ZDPath empty;
    EXPECT_FALSE(empty.setLineHead(10, 10, false));
    EXPECT_TRUE(empty.isEmpty());
}

TEST(ZDPathLineHead, LengthsOfZeroOrBelowLeaveTheEndsAlone)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line}});
    const ZDPath before = path;
    EXPECT_FALSE(path.setLineHead(0, 0, false));
    EXPECT_FALSE(path.setLineHead(-5, -1e-9, false));
    expectSameElements(path, before);
}

TEST(ZDPathLineHead, TheEndOfALoneLineFromElementZeroIsNotFound)
{
    // The backward search for the point before the end never reads element 0.
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}});
    const ZDPath before = path;
    EXPECT_FALSE(path.setLineHead(0, 10, false));
    expectSameElements(path, before);
}

// Starts on lines

TEST(ZDPathLineHead, LongLineStartMovesAlongTheLine)
{
    ZDPath path = pathOf({{5, 7, Move}, {35, 47, Line}});
    EXPECT_TRUE(path.setLineHead(10, 0, false));
    expectElementsWithAux(path, {{11, 15, Move, 5, 7}, {35, 47, Line}});
}

TEST(ZDPathLineHead, LineStartOneUnitLongerThanTheLengthIsRemoved)
{
    ZDPath atBound = pathOf({{0, 0, Move}, {11, 0, Line}});
    EXPECT_TRUE(atBound.setLineHead(10, 0, false));
    EXPECT_TRUE(atBound.isEmpty());

    ZDPath beyond = pathOf({{0, 0, Move}, {11.001, 0, Line}});
    EXPECT_TRUE(beyond.setLineHead(10, 0, false));
    expectElementsWithAux(beyond, {{10, 0, Move}, {11.001, 0, Line}});
}

TEST(ZDPathLineHead, ShortFirstLineOfALongerSubpathTurnsItsEndIntoTheStart)
{
    ZDPath path = pathOf({{1, 1, Move}, {5, 1, Line}, {5, 50, Line}});
    EXPECT_TRUE(path.setLineHead(10, 0, false));
    // The new start is not shortened again; it keeps the old start's point.
    expectElementsWithAux(path, {{5, 1, Move, 1, 1}, {5, 50, Line}});

    ZDPath outer = pathOf({{1, 1, Move}, {5, 1, Line}, {5, 50, Line}});
    EXPECT_TRUE(outer.setLineHead(10, 0, true));
    expectElementsWithAux(outer, {{5, 1, Move}, {5, 50, Line}});
}

TEST(ZDPathLineHead, ShortFirstLineGivesBackOneElementToTheWalk)
{
    ZDPath path = pathOf({{1, 1, Move}, {5, 1, Line}, {5, 50, Line}, {0, 100, Move}, {100, 100, Line}});
    EXPECT_TRUE(path.setLineHead(10, 0, false));
    expectElementsWithAux(path, {{5, 1, Move, 1, 1}, {5, 50, Line}, {10, 100, Move, 0, 100}, {100, 100, Line}});
}

TEST(ZDPathLineHead, ShortLineThatIsTheWholeSubpathTakesBothElements)
{
    // The next subpath moves up to place 0 and is shortened in turn. The
    // stored points go to the open starts in the order of the walk, so the
    // removed subpath's start lands on the next one.
    ZDPath path = pathOf({{1, 2, Move}, {5, 2, Line}, {20, 20, Move}, {60, 20, Line}});
    EXPECT_TRUE(path.setLineHead(10, 0, false));
    expectElementsWithAux(path, {{30, 20, Move, 1, 2}, {60, 20, Line}});

    // With outerOnly the removed start is not listed.
    ZDPath outer = pathOf({{1, 2, Move}, {5, 2, Line}, {20, 20, Move}, {60, 20, Line}});
    EXPECT_TRUE(outer.setLineHead(10, 0, true));
    expectElementsWithAux(outer, {{30, 20, Move, 20, 20}, {60, 20, Line}});
}

TEST(ZDPathLineHead, OuterOnlyMovesOnlyTheStartAtElementZero)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {0, 50, Move}, {100, 50, Line}});
    EXPECT_TRUE(path.setLineHead(10, 0, true));
    // The inner start keeps its place but still gets its point stored.
    expectElementsWithAux(path, {{10, 0, Move, 0, 0}, {100, 0, Line}, {0, 50, Move, 0, 50}, {100, 50, Line}});

    ZDPath all = pathOf({{0, 0, Move}, {100, 0, Line}, {0, 50, Move}, {100, 50, Line}});
    EXPECT_TRUE(all.setLineHead(10, 0, false));
    expectElementsWithAux(all, {{10, 0, Move, 0, 0}, {100, 0, Line}, {10, 50, Move, 0, 50}, {100, 50, Line}});
}

TEST(ZDPathLineHead, ClosedSubpathsAreSkipped)
{
    ZDPath path(QRectF(0, 0, 30, 30));
    path.moveTo(100, 0);
    path.lineTo(150, 0);
    path.lineTo(200, 0);
    EXPECT_TRUE(path.setLineHead(10, 10, false));
    expectElementsWithAux(path, {{0, 0, Move}, {30, 0, Line}, {30, 30, Line}, {0, 30, Line}, {0, 0, Line}, {0, 0, Close},
                                 {110, 0, Move, 100, 0}, {150, 0, Line}, {190, 0, Line, 200, 0}});
}

// The 0.01 rule of the shortening vector

TEST(ZDPathLineHead, ALineAlongAnAxisIsShortenedAlongThatAxisAlone)
{
    ZDPath path = pathOf({{0, 0, Move}, {0, 50, Line}, {0, 100, Line}});
    EXPECT_TRUE(path.setLineHead(10, 10, false));
    ASSERT_EQ(path.count(), 3);
    EXPECT_EQ(path.elements.at(0).x, 0.0);
    EXPECT_EQ(path.elements.at(0).y, 10.0);
    EXPECT_EQ(path.elements.at(2).x, 0.0);
    EXPECT_EQ(path.elements.at(2).y, 90.0);

    ZDPath horizontal = pathOf({{0, 3, Move}, {-50, 3, Line}, {-100, 3, Line}});
    EXPECT_TRUE(horizontal.setLineHead(10, 10, false));
    EXPECT_EQ(horizontal.elements.at(0).x, -10.0);
    EXPECT_EQ(horizontal.elements.at(0).y, 3.0);
    EXPECT_EQ(horizontal.elements.at(2).x, -90.0);
    EXPECT_EQ(horizontal.elements.at(2).y, 3.0);
}

TEST(ZDPathLineHead, ComponentsBelowOneHundredthAreDropped)
{
    // Shortening by 10 along a line that leans by 0.099 in 100: the sideways
    // part of the vector is 0.0099, below 0.01, and is dropped.
    ZDPath below = pathOf({{0, 0, Move}, {0.099, 100, Line}});
    EXPECT_TRUE(below.setLineHead(10, 0, false));
    EXPECT_EQ(below.elements.at(0).x, 0.0);
    EXPECT_NEAR(below.elements.at(0).y, 10.0 * 100.0 / std::hypot(0.099, 100.0), 1e-12);

    // Leaning by 0.101 the part is 0.0101 and stays.
    ZDPath above = pathOf({{0, 0, Move}, {0.101, 100, Line}});
    EXPECT_TRUE(above.setLineHead(10, 0, false));
    EXPECT_NEAR(above.elements.at(0).x, 10.0 * 0.101 / std::hypot(0.101, 100.0), 1e-12);
    EXPECT_GT(above.elements.at(0).x, 0.01);
}

// Starts on cubics

TEST(ZDPathLineHead, LongCubicStartKeepsTheLastStretchOfTheSubpath)
{
    // The compound is cut at (subpath length - length) from the start, and
    // the part before the cut is dropped: of a straight cubic 30 long,
    // shortened by 5, the last 5 units remain.
    ZDPath path;
    path.moveTo(100, 50);
    straightCubic(path, QPointF(100, 50), QPointF(130, 50));
    EXPECT_TRUE(path.setLineHead(5, 0, false));
    expectElementsWithAux(path, {{125, 50, Move, 100, 50},
                                 {125 + 5.0 / 3.0, 50, Curve}, {125 + 10.0 / 3.0, 50, CurveData}, {130, 50, CurveData}},
                          1e-6);
}

TEST(ZDPathLineHead, LongCubicStartMeasuresTheCutOverTheWholeSubpath)
{
    // Cubic 30, then a line 40: the cut at 70 - 5 = 65 lies on the line, and
    // all that remains is its last 5 units.
    ZDPath path;
    path.moveTo(10, 10);
    straightCubic(path, QPointF(10, 10), QPointF(40, 10));
    path.lineTo(40, 50);
    EXPECT_TRUE(path.setLineHead(5, 0, false));
    expectElementsWithAux(path, {{40, 45, Move, 10, 10}, {40, 50, Line}}, 1e-6);
}

TEST(ZDPathLineHead, LongCubicStartWritesLaterSubpathsBack)
{
    ZDPath path;
    path.moveTo(10, 10);
    straightCubic(path, QPointF(10, 10), QPointF(40, 10));
    path.moveTo(0, 100);
    path.lineTo(50, 100);
    EXPECT_TRUE(path.setLineHead(5, 0, false));
    expectElementsWithAux(path, {{35, 10, Move, 10, 10},
                                 {35 + 5.0 / 3.0, 10, Curve}, {35 + 10.0 / 3.0, 10, CurveData}, {40, 10, CurveData},
                                 {5, 100, Move, 0, 100}, {50, 100, Line}},
                          1e-6);
}

TEST(ZDPathLineHead, CubicStartIsLongOnlyBelowTheFirstCurvesLength)
{
    ZDPath atLength;
    atLength.moveTo(0, 0);
    straightCubic(atLength, QPointF(0, 0), QPointF(30, 0));
    atLength.lineTo(30, 100);
    EXPECT_TRUE(atLength.setLineHead(30, 0, false));
    // Too short: the curve goes, its end starts the subpath.
    expectElementsWithAux(atLength, {{30, 0, Move, 0, 0}, {30, 100, Line}});

    ZDPath below;
    below.moveTo(0, 0);
    straightCubic(below, QPointF(0, 0), QPointF(30, 0));
    below.lineTo(30, 100);
    EXPECT_TRUE(below.setLineHead(29.5, 0, false));
    // Long: the cut at 130 - 29.5 = 100.5 falls 70.5 down the line.
    expectElementsWithAux(below, {{30, 70.5, Move, 0, 0}, {30, 100, Line}}, 1e-6);
}

TEST(ZDPathLineHead, LongCubicStartWhoseCutFindsNoLocationDropsTheSubpath)
{
    // 30.5 long and shortened by 0.25: the cut at 30.25 lies past the whole
    // units of the curve, where the location is the curve's end, at which
    // nothing is split. The whole subpath was the part before the cut.
    ZDPath path;
    path.moveTo(1, 0);
    straightCubic(path, QPointF(1, 0), QPointF(31.5, 0));
    path.moveTo(0, 100);
    path.lineTo(50, 100);
    EXPECT_TRUE(path.setLineHead(0.25, 0, false));
    // The dropped start's point goes to the next open start.
    expectElementsWithAux(path, {{0, 100, Move, 1, 0}, {50, 100, Line}});
}

TEST(ZDPathLineHead, ShortCubicThatIsTheWholeSubpathIsRemoved)
{
    ZDPath alone;
    alone.moveTo(0, 0);
    straightCubic(alone, QPointF(0, 0), QPointF(30, 0));
    EXPECT_TRUE(alone.setLineHead(40, 0, false));
    EXPECT_TRUE(alone.isEmpty());

    // A following subpath moves up and is shortened in turn; the removed
    // curve lists no point.
    ZDPath followed;
    followed.moveTo(0, 0);
    straightCubic(followed, QPointF(0, 0), QPointF(30, 0));
    followed.moveTo(0, 100);
    followed.lineTo(100, 100);
    EXPECT_TRUE(followed.setLineHead(40, 0, false));
    expectElementsWithAux(followed, {{40, 100, Move, 0, 100}, {100, 100, Line}});
}

TEST(ZDPathLineHead, ShortCubicBeforeMoreOfTheSubpathTurnsItsEndIntoTheStart)
{
    ZDPath path;
    path.moveTo(3, 4);
    straightCubic(path, QPointF(3, 4), QPointF(33, 4));
    path.lineTo(33, 100);
    EXPECT_TRUE(path.setLineHead(40, 0, false));
    // The new start is past the cursor and not shortened again.
    expectElementsWithAux(path, {{33, 4, Move, 3, 4}, {33, 100, Line}});
}

TEST(ZDPathLineHead, ShortCubicBeforeMoreGivesBackThreeElementsToTheWalk)
{
    ZDPath path;
    path.moveTo(3, 4);
    straightCubic(path, QPointF(3, 4), QPointF(33, 4));
    path.lineTo(33, 100);
    path.moveTo(0, 200);
    path.lineTo(100, 200);
    EXPECT_TRUE(path.setLineHead(40, 0, false));
    expectElementsWithAux(path, {{33, 4, Move, 3, 4}, {33, 100, Line}, {40, 200, Move, 0, 200}, {100, 200, Line}});
}

// Ends on lines

TEST(ZDPathLineHead, LongLineEndMovesBackAlongTheLine)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line}, {80, 40, Line}});
    EXPECT_TRUE(path.setLineHead(0, 10, false));
    expectElementsWithAux(path, {{0, 0, Move}, {50, 0, Line}, {74, 32, Line, 80, 40}});
}

TEST(ZDPathLineHead, LineEndOneUnitLongerThanTheLengthIsRemoved)
{
    ZDPath atBound = pathOf({{0, 0, Move}, {0, 50, Line}, {50, 50, Line}, {61, 50, Line}});
    EXPECT_TRUE(atBound.setLineHead(0, 10, false));
    // The new end keeps the removed end's point.
    expectElementsWithAux(atBound, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line, 61, 50}});

    ZDPath beyond = pathOf({{0, 0, Move}, {0, 50, Line}, {50, 50, Line}, {61.001, 50, Line}});
    EXPECT_TRUE(beyond.setLineHead(0, 10, false));
    expectElementsWithAux(beyond, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line}, {51.001, 50, Line, 61.001, 50}});

    ZDPath outer = pathOf({{0, 0, Move}, {0, 50, Line}, {50, 50, Line}, {61, 50, Line}});
    EXPECT_TRUE(outer.setLineHead(0, 10, true));
    expectElementsWithAux(outer, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line}});
}

TEST(ZDPathLineHead, ShortLastLineGivesBackOneElementToTheWalk)
{
    ZDPath path = pathOf({{0, 0, Move}, {0, 50, Line}, {50, 50, Line}, {61, 50, Line},
                          {0, 100, Move}, {50, 100, Line}, {100, 100, Line}});
    EXPECT_TRUE(path.setLineHead(0, 10, false));
    expectElementsWithAux(path, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line, 61, 50},
                                 {0, 100, Move}, {50, 100, Line}, {90, 100, Line, 100, 100}});
}

TEST(ZDPathLineHead, OuterOnlyMovesOnlyTheEndAtTheLastElement)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line},
                          {0, 50, Move}, {50, 50, Line}, {100, 50, Line}});
    EXPECT_TRUE(path.setLineHead(0, 10, true));
    expectElementsWithAux(path, {{0, 0, Move}, {50, 0, Line}, {100, 0, Line, 100, 0},
                                 {0, 50, Move}, {50, 50, Line}, {90, 50, Line, 100, 50}});

    ZDPath all = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line},
                         {0, 50, Move}, {50, 50, Line}, {100, 50, Line}});
    EXPECT_TRUE(all.setLineHead(0, 10, false));
    expectElementsWithAux(all, {{0, 0, Move}, {50, 0, Line}, {90, 0, Line, 100, 0},
                                {0, 50, Move}, {50, 50, Line}, {90, 50, Line, 100, 50}});
}

TEST(ZDPathLineHead, ShortLineEndThatIsTheWholeSubpathTakesBothElements)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line},
                          {0, 50, Move}, {5, 50, Line},
                          {0, 100, Move}, {50, 100, Line}, {100, 100, Line}});
    EXPECT_TRUE(path.setLineHead(0, 10, false));
    // Three ends were listed for the two that remain: the stored points go
    // to the ends in the order of the walk.
    expectElementsWithAux(path, {{0, 0, Move}, {50, 0, Line}, {90, 0, Line, 100, 0},
                                 {0, 100, Move}, {50, 100, Line}, {90, 100, Line, 5, 50}});

    ZDPath outer = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line},
                           {0, 50, Move}, {5, 50, Line},
                           {0, 100, Move}, {50, 100, Line}, {100, 100, Line}});
    EXPECT_TRUE(outer.setLineHead(0, 10, true));
    expectElementsWithAux(outer, {{0, 0, Move}, {50, 0, Line}, {100, 0, Line, 100, 0},
                                  {0, 100, Move}, {50, 100, Line}, {90, 100, Line, 100, 100}});
}

TEST(ZDPathLineHead, AnEndFoundAtElementZeroIsPassedOver)
{
    // A move right after the move at 0 ends an empty subpath at element 0:
    // the walk goes on without shortening it. The storing pass takes that
    // end as the first open end all the same, so the point lands there.
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Move}, {50, 0, Line}, {100, 0, Line}});
    EXPECT_TRUE(path.setLineHead(0, 10, false));
    expectElementsWithAux(path, {{0, 0, Move, 100, 0}, {10, 0, Move}, {50, 0, Line}, {90, 0, Line}});
}

// Ends on cubics

TEST(ZDPathLineHead, LongCubicEndIsCutByTheLengthFromTheEnd)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(40, 0);
    straightCubic(path, QPointF(40, 0), QPointF(70, 0));
    EXPECT_TRUE(path.setLineHead(0, 5, false));
    expectElementsWithAux(path, {{0, 0, Move}, {40, 0, Line},
                                 {40 + 25.0 / 3.0, 0, Curve}, {40 + 50.0 / 3.0, 0, CurveData}, {65, 0, CurveData, 70, 0}},
                          1e-6);
}

TEST(ZDPathLineHead, LongCubicEndCutDriftsByTheWholeUnitsOfTheLocation)
{
    // A first line of 40.5 counts 40 in the running sum, so the cut at
    // 70.5 - 5 = 65.5 falls 25.5 into the curve, at 66: half a unit short.
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(40.5, 0);
    straightCubic(path, QPointF(40.5, 0), QPointF(70.5, 0));
    EXPECT_TRUE(path.setLineHead(0, 5, false));
    ASSERT_EQ(path.count(), 5);
    EXPECT_NEAR(path.elements.at(4).x, 66, 1e-6);
    EXPECT_EQ(path.elements.at(4).auxX, 70.5);
}

TEST(ZDPathLineHead, LongCubicEndWritesLaterSubpathsBack)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(40, 0);
    straightCubic(path, QPointF(40, 0), QPointF(70, 0));
    path.moveTo(0, 100);
    path.lineTo(50, 100);
    path.lineTo(100, 100);
    EXPECT_TRUE(path.setLineHead(0, 5, false));
    expectElementsWithAux(path, {{0, 0, Move}, {40, 0, Line},
                                 {40 + 25.0 / 3.0, 0, Curve}, {40 + 50.0 / 3.0, 0, CurveData}, {65, 0, CurveData, 70, 0},
                                 {0, 100, Move}, {50, 100, Line}, {95, 100, Line, 100, 100}},
                          1e-6);
}

TEST(ZDPathLineHead, CubicEndIsLongOnlyBelowTheLastCurvesLength)
{
    ZDPath atLength;
    atLength.moveTo(0, 0);
    atLength.lineTo(0, 50);
    atLength.lineTo(50, 50);
    straightCubic(atLength, QPointF(50, 50), QPointF(80, 50));
    EXPECT_TRUE(atLength.setLineHead(0, 30, false));
    // Too short: the curve goes and its start is the new end.
    expectElementsWithAux(atLength, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line, 80, 50}});

    ZDPath below;
    below.moveTo(0, 0);
    below.lineTo(0, 50);
    below.lineTo(50, 50);
    straightCubic(below, QPointF(50, 50), QPointF(80, 50));
    EXPECT_TRUE(below.setLineHead(0, 29.5, false));
    expectElementsWithAux(below, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line},
                                  {50 + 0.5 / 3.0, 50, Curve}, {50 + 1.0 / 3.0, 50, CurveData}, {50.5, 50, CurveData, 80, 50}},
                          1e-6);
}

TEST(ZDPathLineHead, ShortCubicEndThatIsTheWholeSubpathIsRemoved)
{
    ZDPath alone;
    alone.moveTo(0, 0);
    straightCubic(alone, QPointF(0, 0), QPointF(30, 0));
    EXPECT_TRUE(alone.setLineHead(0, 40, false));
    EXPECT_TRUE(alone.isEmpty());

    // In the middle of the path: the subpath goes and lists no point.
    ZDPath middle = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line}, {0, 50, Move}});
    straightCubic(middle, QPointF(0, 50), QPointF(30, 50));
    middle.moveTo(0, 100);
    middle.lineTo(50, 100);
    middle.lineTo(100, 100);
    EXPECT_TRUE(middle.setLineHead(0, 40, false));
    expectElementsWithAux(middle, {{0, 0, Move}, {50, 0, Line}, {60, 0, Line, 100, 0},
                                   {0, 100, Move}, {50, 100, Line}, {60, 100, Line, 100, 100}});
}

TEST(ZDPathLineHead, ShortCubicEndAfterMoreOfTheSubpathEndsItAtTheCurvesStart)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(0, 50);
    path.lineTo(50, 50);
    straightCubic(path, QPointF(50, 50), QPointF(80, 50));
    EXPECT_TRUE(path.setLineHead(0, 40, false));
    // The new end is not shortened again.
    expectElementsWithAux(path, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line, 80, 50}});
}

TEST(ZDPathLineHead, ShortCubicEndAfterMoreGivesBackThreeElementsToTheWalk)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(0, 50);
    path.lineTo(50, 50);
    straightCubic(path, QPointF(50, 50), QPointF(80, 50));
    path.moveTo(0, 100);
    path.lineTo(50, 100);
    path.lineTo(100, 100);
    EXPECT_TRUE(path.setLineHead(0, 40, false));
    expectElementsWithAux(path, {{0, 0, Move}, {0, 50, Line}, {50, 50, Line, 80, 50},
                                 {0, 100, Move}, {50, 100, Line}, {60, 100, Line, 100, 100}});
}

// Both ends

TEST(ZDPathLineHead, BothEndsOfEachOpenSubpath)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line},
                          {0, 50, Move}, {40, 50, Line}, {40, 90, Line}});
    EXPECT_TRUE(path.setLineHead(10, 20, false));
    expectElementsWithAux(path, {{10, 0, Move, 0, 0}, {50, 0, Line}, {80, 0, Line, 100, 0},
                                 {10, 50, Move, 0, 50}, {40, 50, Line}, {40, 70, Line, 40, 90}});
}

TEST(ZDPathLineHead, LeavesNoCountedObjectBehind)
{
    const zgtest::Survivors survivors = zgtest::countSurvivors([] {
        ZDPath starts;
        starts.moveTo(10, 10);
        straightCubic(starts, QPointF(10, 10), QPointF(40, 10));
        starts.lineTo(40, 50);
        starts.moveTo(0, 100);
        straightCubic(starts, QPointF(0, 100), QPointF(30, 100));
        starts.lineTo(30, 200);
        starts.setLineHead(5, 5, false);
        starts.setLineHead(40, 40, false);

        ZDPath ends;
        ends.moveTo(0, 0);
        ends.lineTo(40, 0);
        straightCubic(ends, QPointF(40, 0), QPointF(70, 0));
        ends.addRect(QRectF(200, 0, 20, 20));
        ends.setLineHead(0, 5, true);
    });
    zgtest::expectNoSurvivors(survivors);
}
