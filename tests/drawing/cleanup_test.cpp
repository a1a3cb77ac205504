// Tests of ZDPath::cleanUp: the removal of empty subpaths in place.
#include <zgraphics/drawing.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

using namespace drawingtest;

TEST(ZDPathCleanUp, EmptyPathIsLeftAlone)
{
    ZDPath path;
    path.cleanUp();
    EXPECT_TRUE(path.isEmpty());
}

TEST(ZDPathCleanUp, WellFormedPathIsUnchanged)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {12, 2, Curve}, {14, 4, CurveData},
                          {16, 0, CurveData}, {0, 0, Close}, {30, 30, Move}, {40, 40, Line}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {10, 0, Line}, {12, 2, Curve}, {14, 4, CurveData},
                          {16, 0, CurveData}, {0, 0, Close}, {30, 30, Move}, {40, 40, Line}});
}

TEST(ZDPathCleanUp, DoubleMoveKeepsTheLaterMove)
{
    ZDPath path = pathOf({{1, 2, Move}, {3, 4, Move}, {5, 6, Line}});
    path.cleanUp();
    expectElements(path, {{3, 4, Move}, {5, 6, Line}});
}

TEST(ZDPathCleanUp, RunOfMovesKeepsOnlyTheLast)
{
    ZDPath path = pathOf({{1, 1, Move}, {2, 2, Move}, {3, 3, Move}, {4, 4, Line}});
    path.cleanUp();
    expectElements(path, {{3, 3, Move}, {4, 4, Line}});
}

TEST(ZDPathCleanUp, DoubleMoveInsideThePath)
{
    ZDPath path = pathOf({{0, 0, Move}, {5, 0, Line}, {7, 7, Move}, {8, 8, Move}, {9, 9, Line}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {5, 0, Line}, {8, 8, Move}, {9, 9, Line}});
}

TEST(ZDPathCleanUp, MoveThenCloseEmptiesThePath)
{
    ZDPath path = pathOf({{1, 1, Move}, {1, 1, Close}});
    path.cleanUp();
    EXPECT_TRUE(path.isEmpty());
}

TEST(ZDPathCleanUp, LoneMoveEmptiesThePath)
{
    ZDPath path = pathOf({{1, 1, Move}});
    path.cleanUp();
    EXPECT_TRUE(path.isEmpty());
}

TEST(ZDPathCleanUp, SingleElementOfAnyTypeEmptiesThePath)
{
    for (int32_t type : {Line, Curve, CurveData, Close}) {
        ZDPath path = pathOf({{4, 5, type}});
        path.cleanUp();
        EXPECT_TRUE(path.isEmpty()) << "type " << type;
    }
}

TEST(ZDPathCleanUp, LeadingLineBecomesAMove)
{
    ZDPath path = pathOf({{1, 2, Line}, {3, 4, Line}});
    path.cleanUp();
    expectElements(path, {{1, 2, Move}, {3, 4, Line}});
}

TEST(ZDPathCleanUp, LeadingCloseBecomesAMove)
{
    ZDPath path = pathOf({{1, 2, Close}, {3, 4, Line}, {5, 4, Line}});
    path.cleanUp();
    expectElements(path, {{1, 2, Move}, {3, 4, Line}, {5, 4, Line}});
}

TEST(ZDPathCleanUp, LeadingLineBeforeAMoveIsRetypedThenMerged)
{
    // The retyped first element is a move followed by a move: the earlier goes.
    ZDPath path = pathOf({{1, 2, Line}, {3, 4, Move}, {5, 6, Line}});
    path.cleanUp();
    expectElements(path, {{3, 4, Move}, {5, 6, Line}});
}

TEST(ZDPathCleanUp, MoveCloseInsideIsRemovedAndTheScanGoesOn)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {20, 20, Move}, {20, 20, Close},
                          {30, 30, Move}, {40, 40, Line}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {30, 30, Move}, {40, 40, Line}});
}

TEST(ZDPathCleanUp, TwoEmptyClosedSubpathsInARow)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {1, 1, Move}, {1, 1, Close}, {2, 2, Move},
                          {2, 2, Close}, {3, 3, Move}, {4, 4, Line}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {10, 0, Line}, {3, 3, Move}, {4, 4, Line}});
}

TEST(ZDPathCleanUp, LeadingMoveCloseLeavesTheRestAsItIs)
{
    // The first element is repaired before the scan only: what follows the
    // removed pair is not retyped.
    ZDPath path = pathOf({{1, 1, Move}, {1, 1, Close}, {5, 5, Line}, {6, 6, Line}});
    path.cleanUp();
    expectElements(path, {{5, 5, Line}, {6, 6, Line}});
}

TEST(ZDPathCleanUp, MoveCloseCloseLeavesTheSecondClose)
{
    ZDPath path = pathOf({{1, 1, Move}, {1, 1, Close}, {2, 2, Close}});
    path.cleanUp();
    expectElements(path, {{2, 2, Close}});
}

TEST(ZDPathCleanUp, DoubleMoveThenClose)
{
    // The moves merge first, and the remaining move with the close is empty.
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {1, 1, Move}, {2, 2, Move}, {2, 2, Close},
                          {3, 3, Line}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {10, 0, Line}, {3, 3, Line}});
}

TEST(ZDPathCleanUp, TrailingMoveIsRemoved)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {5, 5, Move}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {10, 0, Line}, {0, 0, Close}});
}

TEST(ZDPathCleanUp, TrailingMovesAreMergedThenRemoved)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {5, 5, Move}, {6, 6, Move}});
    path.cleanUp();
    expectElements(path, {{0, 0, Move}, {10, 0, Line}});
}

TEST(ZDPathCleanUp, KeptElementsKeepTheirAuxiliaryPoint)
{
    ZDPath path = pathOf({{0, 0, Move}, {1, 1, Move}, {9, 9, Line}});
    path.elements[1].auxX = 7.5;
    path.elements[2].auxY = -3.25;
    path.cleanUp();
    ASSERT_EQ(path.count(), 2);
    EXPECT_DOUBLE_EQ(path.elements.at(0).auxX, 7.5);
    EXPECT_DOUBLE_EQ(path.elements.at(1).auxY, -3.25);
}

TEST(ZDPathCleanUp, SharedCopyIsNotChanged)
{
    ZDPath path = pathOf({{1, 1, Move}, {2, 2, Move}, {3, 3, Line}});
    const ZDPath copy = path;
    path.cleanUp();
    EXPECT_EQ(path.count(), 2);
    expectElements(copy, {{1, 1, Move}, {2, 2, Move}, {3, 3, Line}});
}
