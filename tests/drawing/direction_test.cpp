// Tests of the ZDPath scans for open subpath ends (getOpenedStart,
// getOpenedEnd) and of reverse and curveReverse.
#include <zgraphics/drawing.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace drawingtest;

namespace {

void expectPoint(const QPointF &p, double x, double y)
{
    EXPECT_DOUBLE_EQ(p.x(), x);
    EXPECT_DOUBLE_EQ(p.y(), y);
}

// A value no scan writes, to see which arguments were left alone.
const QPointF untouched(-777, -777);

} // namespace

// getOpenedStart

TEST(ZDPathOpenedStart, EmptyPathGivesMinusOne)
{
    ZDPath path;
    QPointF start = untouched, next = untouched;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    EXPECT_EQ(start, untouched);
    EXPECT_EQ(next, untouched);
    EXPECT_EQ(index, 0);
}

TEST(ZDPathOpenedStart, IndexAtOrPastTheCountLeavesTheArgumentsAlone)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}});
    for (int startIndex : {2, 3}) {
        QPointF start = untouched, next = untouched;
        int index = startIndex;
        EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
        EXPECT_EQ(start, untouched);
        EXPECT_EQ(next, untouched);
        EXPECT_EQ(index, startIndex);
    }
}

TEST(ZDPathOpenedStart, WalksOpenSubpathsAndSkipsClosedOnes)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line},
                          {20, 0, Move}, {30, 0, Line}, {30, 10, Line}, {20, 0, Close},
                          {40, 5, Move}, {50, 6, Line}});
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), 0);
    expectPoint(start, 0, 0);
    expectPoint(next, 10, 0);
    EXPECT_EQ(index, 2);

    EXPECT_EQ(path.getOpenedStart(start, next, index), 6);
    expectPoint(start, 40, 5);
    expectPoint(next, 50, 6);
    EXPECT_EQ(index, 8);

    start = next = untouched;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    EXPECT_EQ(start, untouched);
    EXPECT_EQ(index, 8);
}

TEST(ZDPathOpenedStart, NextIsTheFirstPointOffTheStart)
{
    // 0.0001 or more on one axis counts; 0.00009 on both does not.
    ZDPath path = pathOf({{0, 0, Move}, {0.00009, -0.00009, Line}, {0, 0.0001, Line}, {5, 5, Line}});
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), 0);
    expectPoint(next, 0, 0.0001);
    EXPECT_EQ(index, 4);

    ZDPath alongX = pathOf({{0, 0, Move}, {-0.0001, 0, Line}});
    index = 0;
    EXPECT_EQ(alongX.getOpenedStart(start, next, index), 0);
    expectPoint(next, -0.0001, 0);
}

TEST(ZDPathOpenedStart, SubpathWithinToleranceOfItsStartGivesMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {0.00009, 0, Line}, {0, -0.00009, Line}});
    QPointF start = untouched, next = untouched;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    expectPoint(start, 0, 0); // the move was seen before the search failed
    EXPECT_EQ(next, untouched);
    EXPECT_EQ(index, 0);
}

TEST(ZDPathOpenedStart, SearchStopsAtTheNextMoveAndEndsTheWalk)
{
    // The first subpath lies on its start; the move after it is not read, and
    // the open subpath after it is not reached.
    ZDPath path = pathOf({{0, 0, Move}, {0, 0, Line}, {5, 5, Move}, {6, 6, Line}});
    QPointF start, next = untouched;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    expectPoint(start, 0, 0);
    EXPECT_EQ(next, untouched);
    EXPECT_EQ(index, 0);
}

TEST(ZDPathOpenedStart, BareMoveBeforeAMoveGivesMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {5, 5, Move}, {6, 6, Line}});
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    EXPECT_EQ(index, 0);
}

TEST(ZDPathOpenedStart, TrailingBareMoveGivesMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Close}, {5, 5, Move}});
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    expectPoint(start, 5, 5);
}

TEST(ZDPathOpenedStart, OnlyClosedSubpathsGiveMinusOne)
{
    ZDPath path = pathOf({{1, 2, Move}, {10, 0, Line}, {1, 2, Close}, {3, 4, Move}, {10, 10, Line},
                          {3, 4, Close}});
    QPointF start = untouched, next = untouched;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
    expectPoint(start, 3, 4); // each move is stored as it is met
    EXPECT_EQ(next, untouched);
}

TEST(ZDPathOpenedStart, LinesAfterACloseWithoutAMoveAreNotOpen)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {20, 20, Line}, {30, 30, Line}});
    QPointF start, next;
    int index = 0;
    EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
}

TEST(ZDPathOpenedStart, WalkStartsAtTheGivenIndex)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Line}, {30, 30, Move}, {40, 30, Line}});
    QPointF start, next;
    int index = 1;
    EXPECT_EQ(path.getOpenedStart(start, next, index), 3);
    expectPoint(start, 30, 30);
    expectPoint(next, 40, 30);
    EXPECT_EQ(index, 5);
}

TEST(ZDPathOpenedStart, NegativeIndexWalksFromTheStart)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}});
    QPointF start, next;
    int index = -5;
    EXPECT_EQ(path.getOpenedStart(start, next, index), 0);
    EXPECT_EQ(index, 2);
}

// getOpenedEnd

TEST(ZDPathOpenedEnd, EmptyPathGivesMinusOne)
{
    ZDPath path;
    QPointF end, prev;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    EXPECT_EQ(moveIndex, 42);
}

TEST(ZDPathOpenedEnd, IndexAtOrPastTheCountLeavesTheArgumentsAlone)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Line}});
    QPointF end = untouched, prev = untouched;
    int index = 3, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    EXPECT_EQ(end, untouched);
    EXPECT_EQ(prev, untouched);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(moveIndex, 42);
}

TEST(ZDPathOpenedEnd, WalksOpenSubpathsAndSkipsClosedOnes)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Line},
                          {30, 0, Move}, {40, 0, Line},
                          {50, 0, Move}, {60, 0, Line}, {50, 0, Close},
                          {70, 0, Move}, {80, 0, Line}, {90, 0, Line}});
    QPointF end, prev;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 2);
    expectPoint(end, 20, 0);
    expectPoint(prev, 10, 0);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(moveIndex, 0);

    // A subpath ended by a later move may take its own move as prev.
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 4);
    expectPoint(end, 40, 0);
    expectPoint(prev, 30, 0);
    EXPECT_EQ(index, 5);
    EXPECT_EQ(moveIndex, 3);

    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 10);
    expectPoint(end, 90, 0);
    expectPoint(prev, 80, 0);
    EXPECT_EQ(index, 11);
    EXPECT_EQ(moveIndex, 8);

    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    EXPECT_EQ(moveIndex, 8);
}

TEST(ZDPathOpenedEnd, OnlyClosedSubpathsGiveMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}});
    QPointF end = untouched, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    EXPECT_EQ(moveIndex, -1);
    EXPECT_EQ(end, untouched);
    EXPECT_EQ(index, 0);
}

TEST(ZDPathOpenedEnd, MoveAtIndexOneReturnsWithoutWritingThePoints)
{
    ZDPath path = pathOf({{0, 0, Move}, {5, 5, Move}, {6, 6, Line}});
    QPointF end = untouched, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 0);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(moveIndex, 0);
    EXPECT_EQ(end, untouched);
    EXPECT_EQ(prev, untouched);
}

TEST(ZDPathOpenedEnd, BareMoveBeforeAMoveFurtherOnGivesMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {5, 5, Move}, {6, 6, Move},
                          {7, 7, Line}});
    QPointF end = untouched, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    expectPoint(end, 5, 5);
    EXPECT_EQ(prev, untouched);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(moveIndex, 3);
}

TEST(ZDPathOpenedEnd, ElementZeroIsNeverTakenAsPrev)
{
    // The first subpath is a single line: its move at element 0 is not read.
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Move}, {30, 0, Line}, {40, 0, Line}});
    QPointF end = untouched, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    expectPoint(end, 10, 0);
    EXPECT_EQ(prev, untouched);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(moveIndex, 0);
}

TEST(ZDPathOpenedEnd, SingleLinePathGivesMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}});
    QPointF end = untouched, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    expectPoint(end, 100, 0);
    EXPECT_EQ(prev, untouched);
    EXPECT_EQ(moveIndex, 0);
}

TEST(ZDPathOpenedEnd, TwoLinePathTakesTheMiddlePoint)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line}, {100, 0, Line}});
    QPointF end, prev;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 2);
    expectPoint(end, 100, 0);
    expectPoint(prev, 50, 0);
    EXPECT_EQ(index, 3);
    EXPECT_EQ(moveIndex, 0);
}

TEST(ZDPathOpenedEnd, LastSubpathDoesNotReachItsMove)
{
    // The same subpath reaches its move when a later move ends it, but not
    // when it is the last one of the list.
    ZDPath last = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close},
                          {5, 5, Move}, {0, 0, Line}, {0, 0.00009, Line}});
    QPointF end, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(last.getOpenedEnd(end, prev, index, moveIndex), -1);
    expectPoint(end, 0, 0.00009);
    EXPECT_EQ(prev, untouched);
    EXPECT_EQ(moveIndex, 3);

    ZDPath followed = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close},
                              {5, 5, Move}, {0, 0, Line}, {0, 0.00009, Line},
                              {9, 9, Move}, {10, 10, Line}, {11, 11, Line}});
    index = 0;
    EXPECT_EQ(followed.getOpenedEnd(end, prev, index, moveIndex), 5);
    expectPoint(prev, 5, 5);
    EXPECT_EQ(index, 6);
    EXPECT_EQ(moveIndex, 3);
}

TEST(ZDPathOpenedEnd, TrailingSubpathOfOneLineAfterAnotherGivesMinusOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {20, 20, Move}, {30, 30, Line}});
    QPointF end, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    expectPoint(end, 30, 30);
    EXPECT_EQ(prev, untouched);
}

TEST(ZDPathOpenedEnd, PrevIsTheFirstPointOffTheEnd)
{
    // 0.0001 or more on one axis counts; 0.00009 on both does not.
    ZDPath path = pathOf({{9, 9, Move}, {0, -0.0001, Line}, {0.00009, -0.00009, Line}, {0, 0, Line}});
    QPointF end, prev;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 3);
    expectPoint(end, 0, 0);
    expectPoint(prev, 0, -0.0001);

    ZDPath alongX = pathOf({{9, 9, Move}, {0.0001, 0, Line}, {0, 0, Line}, {20, 20, Move},
                            {30, 30, Line}});
    index = 0;
    EXPECT_EQ(alongX.getOpenedEnd(end, prev, index, moveIndex), 2);
    expectPoint(prev, 0.0001, 0);
    EXPECT_EQ(index, 3);
}

TEST(ZDPathOpenedEnd, SubpathWithinToleranceOfItsEndGivesMinusOne)
{
    ZDPath path = pathOf({{9, 9, Move}, {0.00009, 0, Line}, {0, 0.00009, Line}, {0, 0, Line}});
    QPointF end, prev = untouched;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
    EXPECT_EQ(prev, untouched);
    EXPECT_EQ(index, 0);
}

TEST(ZDPathOpenedEnd, WalkStartsAtTheGivenIndex)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Line}, {30, 0, Move}, {40, 0, Line},
                          {50, 0, Line}});
    QPointF end, prev;
    int index = 1, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 5);
    expectPoint(end, 50, 0);
    expectPoint(prev, 40, 0);
    EXPECT_EQ(moveIndex, 3);
    EXPECT_EQ(index, 6);
}

TEST(ZDPathOpenedEnd, CurveEndTakesTheSecondControlAsPrev)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 20, Curve}, {30, 20, CurveData}, {40, 0, CurveData}});
    QPointF end, prev;
    int index = 0, moveIndex = 42;
    EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), 3);
    expectPoint(end, 40, 0);
    expectPoint(prev, 30, 20);
}

// reverse

TEST(ZDPathReverse, EmptyAndSingleElementPathsAreUnchanged)
{
    ZDPath empty;
    empty.reverse();
    EXPECT_TRUE(empty.isEmpty());

    ZDPath single = pathOf({{3, 4, Move}});
    single.reverse();
    expectElements(single, {{3, 4, Move}});
}

TEST(ZDPathReverse, LinesRunBackward)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 5, Line}, {3, 7, Line}});
    path.reverse();
    expectElements(path, {{3, 7, Move}, {10, 5, Line}, {10, 0, Line}, {0, 0, Line}});
}

TEST(ZDPathReverse, MoveAndCubicKeepTheirTypes)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 20, Curve}, {30, 25, CurveData}, {40, 0, CurveData}});
    path.reverse();
    expectElements(path, {{40, 0, Move}, {30, 25, Curve}, {10, 20, CurveData}, {0, 0, CurveData}});
}

TEST(ZDPathReverse, ClosedRectangleKeepsItsCloseElement)
{
    ZDPath path(QRectF(0, 0, 10, 5));
    path.reverse();
    expectElements(path, {{0, 0, Move}, {0, 5, Line}, {10, 5, Line}, {10, 0, Line}, {0, 0, Line},
                          {0, 0, Close}});

    // A close whose point is not the new start keeps its old point.
    ZDPath triangle = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 5, Line}, {0, 0, Close}});
    triangle.reverse();
    expectElements(triangle, {{10, 5, Move}, {10, 0, Line}, {0, 0, Line}, {0, 0, Close}});
}

TEST(ZDPathReverse, MixedSubpathsEachReverseInPlace)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {12, 4, Curve}, {14, 6, CurveData},
                          {16, 1, CurveData}, {0, 0, Close},
                          {100, 100, Move}, {110, 120, Curve}, {130, 125, CurveData},
                          {140, 100, CurveData}, {150, 90, Line},
                          {200, 200, Move}, {210, 200, Line}, {220, 210, Line}});
    path.reverse();
    expectElements(path, {{16, 1, Move}, {14, 6, Curve}, {12, 4, CurveData}, {10, 0, CurveData},
                          {0, 0, Line}, {0, 0, Close},
                          {150, 90, Move}, {140, 100, Line}, {130, 125, Curve},
                          {110, 120, CurveData}, {100, 100, CurveData},
                          {220, 210, Move}, {210, 200, Line}, {200, 200, Line}});
}

TEST(ZDPathReverse, LinesAfterACloseFormTheirOwnSubpath)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {0, 0, Close}, {20, 20, Line}, {30, 35, Line}});
    path.reverse();
    expectElements(path, {{10, 0, Move}, {0, 0, Line}, {0, 0, Close}, {30, 35, Line}, {20, 20, Line}});
}

TEST(ZDPathReverse, AuxiliaryPointsStayWithThePositions)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 5, Line}});
    path.elements[0].auxX = 1.5;
    path.elements[2].auxX = 2.5;
    path.elements[2].auxY = 3.5;
    path.reverse();
    expectElements(path, {{20, 5, Move}, {10, 0, Line}, {0, 0, Line}});
    EXPECT_DOUBLE_EQ(path.elements.at(0).auxX, 1.5);
    EXPECT_DOUBLE_EQ(path.elements.at(2).auxX, 2.5);
    EXPECT_DOUBLE_EQ(path.elements.at(2).auxY, 3.5);
}

TEST(ZDPathReverse, CubicRepairRetypesAnyTypeThreeWithTwoFollowers)
{
    // A type 3 element that ends up with two elements after it starts a cubic,
    // even when those were lines.
    ZDPath path = pathOf({{0, 0, Move}, {1, 1, Line}, {2, 2, Line}, {3, 3, CurveData}});
    path.reverse();
    expectElements(path, {{3, 3, Move}, {2, 2, Curve}, {1, 1, CurveData}, {0, 0, CurveData}});

    // With fewer than two followers it stays as it is.
    ZDPath shortTail = pathOf({{0, 0, Move}, {1, 1, CurveData}, {2, 2, Line}});
    shortTail.reverse();
    expectElements(shortTail, {{2, 2, Move}, {1, 1, Line}, {0, 0, CurveData}});
}

TEST(ZDPathReverse, LeadingCloseElementKeepsItsPlace)
{
    ZDPath path = pathOf({{5, 5, Close}, {1, 1, Line}, {2, 3, Line}});
    path.reverse();
    expectElements(path, {{5, 5, Close}, {2, 3, Line}, {1, 1, Line}});
}

TEST(ZDPathReverse, TwiceGivesBackSeededRandomPaths)
{
    std::mt19937 random(7321u);
    std::uniform_real_distribution<double> coordinate(-500.0, 500.0);
    std::uniform_int_distribution<int> pieceCount(1, 5);
    std::uniform_int_distribution<int> choice(0, 2);
    auto point = [&]() { return QPointF(coordinate(random), coordinate(random)); };

    for (int round = 0; round < 200; ++round) {
        ZDPath path;
        const int subpaths = 1 + round % 3;
        for (int s = 0; s < subpaths; ++s) {
            path.moveTo(point());
            const int pieces = pieceCount(random);
            for (int p = 0; p < pieces; ++p) {
                if (choice(random) == 0)
                    path.lineTo(point());
                else
                    path.cubicTo(point(), point(), point());
            }
            if (choice(random) == 0)
                path.closeSubpath();
        }
        ZDPath twice = path;
        twice.reverse();
        twice.reverse();
        SCOPED_TRACE(round);
        ASSERT_EQ(twice.count(), path.count());
        for (int i = 0; i < path.count(); ++i) {
            EXPECT_EQ(twice.elements.at(i).x, path.elements.at(i).x);
            EXPECT_EQ(twice.elements.at(i).y, path.elements.at(i).y);
            EXPECT_EQ(twice.elements.at(i).type, path.elements.at(i).type);
        }
    }
}

TEST(ZDPathReverse, SeededRandomPathsMatchTheirPiecesDrawnBackwards)
{
    // Each subpath is drawn from random pieces, and its expected reversal is
    // built from the same pieces in the opposite order: a move to the last
    // point, each line back to the point before it, each cubic with its
    // controls swapped back to its start, a close element unchanged in its
    // place.
    struct Piece
    {
        bool cubic;
        QPointF c1, c2, end;
    };
    std::mt19937 random(5147u);
    std::uniform_real_distribution<double> coordinate(-500.0, 500.0);
    std::uniform_int_distribution<int> pieceCount(1, 5);
    std::uniform_int_distribution<int> choice(0, 2);
    auto point = [&]() { return QPointF(coordinate(random), coordinate(random)); };
    auto append = [](ZDPath &path, const QPointF &p, int32_t type) {
        path.elements.append(ZDPathElement(p.x(), p.y(), type));
    };

    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        ZDPath path, expected;
        const int subpaths = 1 + round % 3;
        for (int s = 0; s < subpaths; ++s) {
            const QPointF start = point();
            std::vector<Piece> pieces(pieceCount(random));
            for (Piece &piece : pieces) {
                piece.cubic = choice(random) != 0;
                if (piece.cubic) {
                    piece.c1 = point();
                    piece.c2 = point();
                }
                piece.end = point();
            }
            const bool closed = choice(random) == 0;
            const QPointF closePoint = point();

            append(path, start, Move);
            for (const Piece &piece : pieces) {
                if (piece.cubic) {
                    append(path, piece.c1, Curve);
                    append(path, piece.c2, CurveData);
                    append(path, piece.end, CurveData);
                } else {
                    append(path, piece.end, Line);
                }
            }
            append(expected, pieces.back().end, Move);
            for (int k = int(pieces.size()) - 1; k >= 0; --k) {
                const QPointF before = k > 0 ? pieces[k - 1].end : start;
                if (pieces[k].cubic) {
                    append(expected, pieces[k].c2, Curve);
                    append(expected, pieces[k].c1, CurveData);
                    append(expected, before, CurveData);
                } else {
                    append(expected, before, Line);
                }
            }
            if (closed) {
                append(path, closePoint, Close);
                append(expected, closePoint, Close);
            }
        }
        path.reverse();
        ASSERT_EQ(path.count(), expected.count());
        for (int i = 0; i < path.count(); ++i) {
            EXPECT_EQ(path.elements.at(i).x, expected.elements.at(i).x) << "element " << i;
            EXPECT_EQ(path.elements.at(i).y, expected.elements.at(i).y) << "element " << i;
            EXPECT_EQ(path.elements.at(i).type, expected.elements.at(i).type) << "element " << i;
        }
    }
}

TEST(ZDPathReverse, SharedCopyIsNotChanged)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}});
    const ZDPath copy = path;
    path.reverse();
    expectElements(copy, {{0, 0, Move}, {10, 0, Line}});
    expectElements(path, {{10, 0, Move}, {0, 0, Line}});
}

// curveReverse

TEST(ZDPathCurveReverse, RightToLeftPathIsReversed)
{
    ZDPath path = pathOf({{100, 0, Move}, {50, 20, Line}, {0, 0, Line}});
    path.curveReverse();
    expectElements(path, {{0, 0, Move}, {50, 20, Line}, {100, 0, Line}});
}

TEST(ZDPathCurveReverse, LeftToRightPathIsLeftAlone)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 20, Line}, {100, 0, Line}});
    path.curveReverse();
    expectElements(path, {{0, 0, Move}, {50, 20, Line}, {100, 0, Line}});
}

TEST(ZDPathCurveReverse, VerticalLineWithEqualXIsLeftAlone)
{
    ZDPath path = pathOf({{10, 100, Move}, {10, 0, Line}});
    path.curveReverse();
    expectElements(path, {{10, 100, Move}, {10, 0, Line}});

    // The test is strict: a hair further right at the start reverses.
    ZDPath tilted = pathOf({{10.000001, 100, Move}, {10, 0, Line}});
    tilted.curveReverse();
    expectElements(tilted, {{10, 0, Move}, {10.000001, 100, Line}});
}

TEST(ZDPathCurveReverse, LastElementIsReadWhateverItsType)
{
    // The close element's x equals the first: nothing happens.
    ZDPath path = pathOf({{10, 0, Move}, {0, 0, Line}, {0, 5, Line}, {10, 0, Close}});
    path.curveReverse();
    expectElements(path, {{10, 0, Move}, {0, 0, Line}, {0, 5, Line}, {10, 0, Close}});
}

TEST(ZDPathCurveReverse, EmptyPathReturnsAtOnce)
{
    ZDPath path;
    path.curveReverse();
    EXPECT_TRUE(path.isEmpty());
}
