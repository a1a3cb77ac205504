// Tests of the ZDPath element list: construction, the building operations
// and their one-unit continuation rule, closing, and the transformations.
#include <zgraphics/drawing.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <QtCore/QPoint>
#include <QtGui/QPainterPath>
#include <QtGui/QPolygonF>
#include <QtGui/QTransform>

#include <cstddef>

using namespace drawingtest;

// ---------------------------------------------------------------------------
// The element record

TEST(PathElementTest, FieldsInOrder)
{
    EXPECT_EQ(offsetof(ZDPathElement, x), 0u);
    EXPECT_EQ(offsetof(ZDPathElement, y), sizeof(double));
    EXPECT_EQ(offsetof(ZDPathElement, auxX), 2 * sizeof(double));
    EXPECT_EQ(offsetof(ZDPathElement, auxY), 3 * sizeof(double));
    EXPECT_EQ(offsetof(ZDPathElement, type), 4 * sizeof(double));
    EXPECT_EQ(sizeof(ZDPathElement::type), 4u);
}

TEST(PathElementTest, TypeCodesMatchQPainterPath)
{
    EXPECT_EQ(int(ZDMoveToElement), int(QPainterPath::MoveToElement));
    EXPECT_EQ(int(ZDLineToElement), int(QPainterPath::LineToElement));
    EXPECT_EQ(int(ZDCurveToElement), int(QPainterPath::CurveToElement));
    EXPECT_EQ(int(ZDCurveToDataElement), int(QPainterPath::CurveToDataElement));
    EXPECT_EQ(int(ZDCloseElement), 4);
}

TEST(PathElementTest, WrittenElementsHaveZeroAux)
{
    ZDPath path;
    path.moveTo(1, 2);
    path.lineTo(3, 4);
    path.cubicTo(QPointF(5, 6), QPointF(7, 8), QPointF(9, 10));
    path.closeSubpath();
    // The close after (9, 10), away from the start, adds a line back to it.
    expectElements(path, {{1, 2, Move}, {3, 4, Line}, {5, 6, Curve}, {7, 8, CurveData},
                          {9, 10, CurveData}, {1, 2, Line}, {1, 2, Close}});
    for (const ZDPathElement &e : path.elements) {
        EXPECT_EQ(e.auxX, 0.0);
        EXPECT_EQ(e.auxY, 0.0);
    }
}

// ---------------------------------------------------------------------------
// Construction and simple access

TEST(PathConstructionTest, DefaultIsEmpty)
{
    const ZDPath path;
    EXPECT_TRUE(path.isEmpty());
    EXPECT_EQ(path.count(), 0);
    EXPECT_EQ(path.elements.capacity(), 0);
}

TEST(PathConstructionTest, FromRectMovesLinesAndCloses)
{
    const ZDPath path(QRectF(10, 20, 30, 40));
    ASSERT_EQ(path.count(), 6);
    expectElement(path, 0, 10, 20, Move);
    expectElement(path, 1, 40, 20, Line);
    expectElement(path, 2, 40, 60, Line);
    expectElement(path, 3, 10, 60, Line);
    expectElement(path, 4, 10, 20, Line);
    expectElement(path, 5, 10, 20, Close);
}

TEST(PathConstructionTest, FromFlatRectSnapsTheLastCorner)
{
    const ZDPath path(QRectF(10, 20, 30, 0.5));
    ASSERT_EQ(path.count(), 5);
    expectElement(path, 3, 10, 20, Line);
    expectElement(path, 4, 10, 20, Close);
}

TEST(PathConstructionTest, CountIncludesAllTypes)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(1, 1), QPointF(2, 2), QPointF(3, 3));
    path.lineTo(50, 50);
    path.closeSubpath();
    EXPECT_EQ(path.count(), 7);
    EXPECT_FALSE(path.isEmpty());
}

TEST(PathConstructionTest, CopiesShareAndDetachOnWrite)
{
    ZDPath a;
    a.moveTo(1, 2);
    a.lineTo(3, 4);
    ZDPath b(a);
    EXPECT_EQ(a.elements.constData(), b.elements.constData());
    ZDPath c;
    c = a;
    EXPECT_EQ(a.elements.constData(), c.elements.constData());

    b.lineTo(5, 6);
    EXPECT_NE(a.elements.constData(), b.elements.constData());
    EXPECT_EQ(a.count(), 2);
    EXPECT_EQ(b.count(), 3);

    c.translate(10, 10);
    expectElement(a, 0, 1, 2, Move);
    expectElement(c, 0, 11, 12, Move);
}

TEST(PathConstructionTest, ResetKeepsCapacity)
{
    ZDPath path;
    path.elements.reserve(64);
    for (int i = 0; i < 10; ++i)
        path.lineTo(i, i);
    const int capacity = path.elements.capacity();
    path.reset();
    EXPECT_TRUE(path.isEmpty());
    EXPECT_EQ(path.elements.capacity(), capacity);
    // The list can be reused.
    path.moveTo(1, 1);
    EXPECT_EQ(path.count(), 1);
}

TEST(PathConstructionTest, ResetDetachesASharedList)
{
    ZDPath a;
    a.elements.reserve(32);
    a.moveTo(1, 1);
    a.lineTo(2, 2);
    const int capacity = a.elements.capacity();
    ZDPath b = a;
    b.reset();
    EXPECT_TRUE(b.isEmpty());
    EXPECT_EQ(b.elements.capacity(), capacity);
    EXPECT_EQ(a.count(), 2);
    expectElement(a, 1, 2, 2, Line);
}

TEST(PathConstructionTest, ResetOfEmptyListDoesNothing)
{
    ZDPath path;
    path.reset();
    EXPECT_TRUE(path.isEmpty());
    EXPECT_EQ(path.elements.capacity(), 0);
}

TEST(PathConstructionTest, SetBackOverwritesTheLastElement)
{
    ZDPath path;
    path.setBackX(5);
    path.setBackY(6);
    EXPECT_TRUE(path.isEmpty());

    path.moveTo(1, 2);
    path.lineTo(3, 4);
    path.setBackX(7);
    expectElement(path, 1, 7, 4, Line);
    path.setBackY(8);
    expectElement(path, 1, 7, 8, Line);
    expectElement(path, 0, 1, 2, Move);
}

TEST(PathConstructionTest, SetBackXOnCloseMovesOnlyTheCloseElement)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.lineTo(100, 100);
    path.closeSubpath();
    ASSERT_EQ(path.elements.last().type, Close);
    path.setBackX(42);
    expectElement(path, path.count() - 1, 42, 0, Close);
    expectElement(path, 0, 0, 0, Move);
    expectElement(path, path.count() - 2, 0, 0, Line);
}

// ---------------------------------------------------------------------------
// Plain appends

TEST(PathBuildingTest, MoveLineCubicAppendWithoutTests)
{
    ZDPath path;
    path.lineTo(1, 2);
    path.moveTo(3, 4);
    path.moveTo(QPointF(3, 4));
    path.lineTo(QPointF(5, 6));
    path.cubicTo(QPointF(7, 8), QPointF(9, 10), QPointF(11, 12));
    path.closeSubpath();
    path.lineTo(13, 14);
    ASSERT_EQ(path.count(), 10);
    expectElement(path, 0, 1, 2, Line);
    expectElement(path, 1, 3, 4, Move);
    expectElement(path, 2, 3, 4, Move);
    expectElement(path, 3, 5, 6, Line);
    expectElement(path, 4, 7, 8, Curve);
    expectElement(path, 5, 9, 10, CurveData);
    expectElement(path, 6, 11, 12, CurveData);
    expectElement(path, 7, 3, 4, Line);
    expectElement(path, 8, 3, 4, Close);
    expectElement(path, 9, 13, 14, Line);
}

// ---------------------------------------------------------------------------
// The continuation rule, through addLine

TEST(PathContinuationTest, EmptyListStartsWithAMove)
{
    ZDPath path;
    path.addLine(10, 10, 20, 20);
    ASSERT_EQ(path.count(), 2);
    expectElement(path, 0, 10, 10, Move);
    expectElement(path, 1, 20, 20, Line);
}

TEST(PathContinuationTest, AfterCloseStartsWithAMove)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(50, 0);
    path.lineTo(50, 50);
    path.closeSubpath();
    const int before = path.count();
    // The close element sits at (0, 0), and (0.5, 0.5) is within one unit: still a move.
    path.addLine(0.5, 0.5, 20, 20);
    ASSERT_EQ(path.count(), before + 2);
    expectElement(path, before, 0.5, 0.5, Move);
    expectElement(path, before + 1, 20, 20, Line);
}

TEST(PathContinuationTest, WithinOneUnitContinuesFromTheLastPoint)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10.5, 9.5);
    path.addLine(10, 10, 20, 20);
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 1, 10.5, 9.5, Line);
    expectElement(path, 2, 20, 20, Line);
}

TEST(PathContinuationTest, ExactlyOneUnitAwayGetsALine)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(11, 10);
    path.addLine(10, 10, 20, 20);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 2, 10, 10, Line);
    expectElement(path, 3, 20, 20, Line);
}

TEST(PathContinuationTest, StrictOneUnitTestInX)
{
    for (double dx : {0.999, -0.999}) {
        ZDPath path;
        path.moveTo(-50, -50);
        path.lineTo(10 + dx, 10);
        path.addLine(10, 10, 20, 20);
        EXPECT_EQ(path.count(), 3) << "dx " << dx;
    }
    for (double dx : {1.0, -1.0}) {
        ZDPath path;
        path.moveTo(-50, -50);
        path.lineTo(10 + dx, 10);
        path.addLine(10, 10, 20, 20);
        ASSERT_EQ(path.count(), 4) << "dx " << dx;
        expectElement(path, 2, 10, 10, Line);
    }
}

TEST(PathContinuationTest, StrictOneUnitTestInY)
{
    for (double dy : {0.999, -0.999}) {
        ZDPath path;
        path.moveTo(-50, -50);
        path.lineTo(10, 10 + dy);
        path.addLine(10, 10, 20, 20);
        EXPECT_EQ(path.count(), 3) << "dy " << dy;
    }
    for (double dy : {1.0, -1.0}) {
        ZDPath path;
        path.moveTo(-50, -50);
        path.lineTo(10, 10 + dy);
        path.addLine(10, 10, 20, 20);
        ASSERT_EQ(path.count(), 4) << "dy " << dy;
        expectElement(path, 2, 10, 10, Line);
    }
}

TEST(PathContinuationTest, BothAxesMustBeWithinOneUnit)
{
    ZDPath path;
    path.moveTo(-50, -50);
    path.lineTo(10.5, 12);
    path.addLine(10, 10, 20, 20);
    EXPECT_EQ(path.count(), 4);
}

TEST(PathContinuationTest, BareMoveIsTreatedLikeAnyElement)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.addLine(10, 10, 20, 20);
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 0, 0, 0, Move);
    expectElement(path, 1, 10, 10, Line);
    expectElement(path, 2, 20, 20, Line);

    ZDPath near;
    near.moveTo(10.2, 9.9);
    near.addLine(10, 10, 20, 20);
    ASSERT_EQ(near.count(), 2);
    expectElement(near, 0, 10.2, 9.9, Move);
}

TEST(PathContinuationTest, PointFormOfAddLine)
{
    ZDPath path;
    path.addLine(QPointF(1, 2), QPointF(3, 4));
    path.addLine(QPointF(3.5, 4.5), QPointF(30, 40));
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 0, 1, 2, Move);
    expectElement(path, 1, 3, 4, Line);
    expectElement(path, 2, 30, 40, Line);
}

// ---------------------------------------------------------------------------
// addLines, addBezier, addBeziers

TEST(PathBuildingTest, AddLinesOfPointFs)
{
    const QPointF pts[] = {QPointF(0, 0), QPointF(10, 0), QPointF(10, 10)};
    ZDPath path;
    path.addLines(pts, 3);
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 0, 0, 0, Move);
    expectElement(path, 1, 10, 0, Line);
    expectElement(path, 2, 10, 10, Line);

    // Continuing near the end adds only the lines.
    const QPointF more[] = {QPointF(10.5, 10.5), QPointF(20, 20)};
    path.addLines(more, 2);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 3, 20, 20, Line);
}

TEST(PathBuildingTest, AddLinesOfIntegerPoints)
{
    const QPoint pts[] = {QPoint(1, 2), QPoint(30, 40), QPoint(-5, 6)};
    ZDPath path;
    path.moveTo(100, 100);
    path.addLines(pts, 3);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 1, 1, 2, Line);
    expectElement(path, 2, 30, 40, Line);
    expectElement(path, 3, -5, 6, Line);
}

TEST(PathBuildingTest, AddLinesWithOnePointAppliesOnlyTheRule)
{
    const QPointF pts[] = {QPointF(5, 5)};
    ZDPath path;
    path.addLines(pts, 1);
    ASSERT_EQ(path.count(), 1);
    expectElement(path, 0, 5, 5, Move);
}

TEST(PathBuildingTest, AddLinesOfNullDoesNothing)
{
    ZDPath path;
    path.addLines(static_cast<const QPointF *>(nullptr), 3);
    path.addLines(static_cast<const QPoint *>(nullptr), 3);
    path.addBeziers(nullptr, 4);
    EXPECT_TRUE(path.isEmpty());
}

TEST(PathBuildingTest, AddBezierAppliesTheRuleThenACubic)
{
    ZDPath path;
    path.addBezier(QPointF(0, 0), QPointF(1, 5), QPointF(4, 5), QPointF(5, 0));
    EXPECT_EQ(typesOf(path), (QVector<int32_t> {Move, Curve, CurveData, CurveData}));
    expectElement(path, 1, 1, 5, Curve);
    expectElement(path, 2, 4, 5, CurveData);
    expectElement(path, 3, 5, 0, CurveData);

    // A start far from the end gets a line first.
    path.addBezier(QPointF(50, 0), QPointF(51, 5), QPointF(54, 5), QPointF(55, 0));
    ASSERT_EQ(path.count(), 8);
    expectElement(path, 4, 50, 0, Line);
    // A start within one unit continues.
    path.addBezier(QPointF(55.9, 0.9), QPointF(56, 5), QPointF(59, 5), QPointF(60, 0));
    EXPECT_EQ(path.count(), 11);
}

TEST(PathBuildingTest, AddBeziersTakesTriplesAfterTheStart)
{
    const QPointF pts[] = {QPointF(0, 0), QPointF(1, 1), QPointF(2, 1), QPointF(3, 0),
                           QPointF(4, -1), QPointF(5, -1), QPointF(6, 0)};
    ZDPath path;
    path.addBeziers(pts, 7);
    ASSERT_EQ(path.count(), 7);
    EXPECT_EQ(typesOf(path),
              (QVector<int32_t> {Move, Curve, CurveData, CurveData, Curve, CurveData, CurveData}));
    expectElement(path, 3, 3, 0, CurveData);
    expectElement(path, 4, 4, -1, Curve);
    expectElement(path, 6, 6, 0, CurveData);
}

TEST(PathBuildingTest, AddBeziersWithFivePointsReadsPointThree)
{
    const QPointF pts[] = {QPointF(0, 0), QPointF(1, 1), QPointF(2, 1), QPointF(3, 0),
                           QPointF(99, 99)};
    ZDPath path;
    path.addBeziers(pts, 5);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 1, 1, 1, Curve);
    expectElement(path, 2, 2, 1, CurveData);
    expectElement(path, 3, 3, 0, CurveData);
}

TEST(PathBuildingTest, AddBeziersWithTooFewPointsAddsNoCubic)
{
    const QPointF pts[] = {QPointF(0, 0), QPointF(1, 1), QPointF(2, 1)};
    ZDPath path;
    path.addBeziers(pts, 3);
    ASSERT_EQ(path.count(), 1);
    expectElement(path, 0, 0, 0, Move);
    path.addBeziers(pts, 1);
    EXPECT_EQ(path.count(), 1);
}

// ---------------------------------------------------------------------------
// addPath

TEST(PathAddPathTest, EmptyOtherAddsNothing)
{
    ZDPath path;
    path.moveTo(1, 1);
    ZDPath other;
    path.addPath(other, true);
    path.addPath(other, false);
    EXPECT_EQ(path.count(), 1);
}

TEST(PathAddPathTest, ConnectFromEmptyPathCopiesTheMove)
{
    ZDPath other;
    other.moveTo(5, 5);
    other.lineTo(10, 5);
    ZDPath path;
    path.addPath(other, true);
    ASSERT_EQ(path.count(), 2);
    expectElement(path, 0, 5, 5, Move);
    expectElement(path, 1, 10, 5, Line);
}

TEST(PathAddPathTest, WithoutConnectFirstElementGoesInAsItIs)
{
    ZDPath other;
    other.lineTo(5, 5);
    other.elements.first().auxX = 3;
    other.elements.first().auxY = 4;
    other.lineTo(10, 5);
    ZDPath path;
    path.moveTo(5.2, 5.2);
    path.addPath(other, false);
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 1, 5, 5, Line);
    EXPECT_EQ(path.elements.at(1).auxX, 3.0);
    EXPECT_EQ(path.elements.at(1).auxY, 4.0);

    // A move stays a move, even near the end of the list.
    ZDPath moved;
    moved.moveTo(10.5, 5);
    path.addPath(moved);
    expectElement(path, 3, 10.5, 5, Move);
}

TEST(PathAddPathTest, ConnectDropsAFirstElementWithinOneUnit)
{
    ZDPath other;
    other.moveTo(10.9, 0.1);
    other.lineTo(20, 0);
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.addPath(other, true);
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 1, 10, 0, Line);
    expectElement(path, 2, 20, 0, Line);
}

TEST(PathAddPathTest, ConnectJoinsAFarFirstElementWithALine)
{
    ZDPath other;
    other.moveTo(11, 0);
    other.elements.first().auxX = 7;
    other.elements.first().auxY = 8;
    other.lineTo(20, 0);
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.addPath(other, true);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 2, 11, 0, Line);
    EXPECT_EQ(path.elements.at(2).auxX, 7.0);
    EXPECT_EQ(path.elements.at(2).auxY, 8.0);
    expectElement(path, 3, 20, 0, Line);
    // other keeps its move.
    expectElement(other, 0, 11, 0, Move);
}

TEST(PathAddPathTest, ConnectDoesNotLookAtACloseElement)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(50, 0);
    path.lineTo(50, 50);
    path.closeSubpath();
    ZDPath other;
    other.moveTo(0.5, 0.5);
    other.lineTo(20, 30);
    const int before = path.count();
    path.addPath(other, true);
    ASSERT_EQ(path.count(), before + 1);
    expectElement(path, before, 20, 30, Line);
}

TEST(PathAddPathTest, RestIsCopiedUnchangedWithAux)
{
    ZDPath other;
    other.moveTo(0, 0);
    other.cubicTo(QPointF(1, 1), QPointF(2, 2), QPointF(3, 3));
    other.lineTo(10, 0);
    other.elements.last().auxX = 11;
    other.elements.last().auxY = 12;
    other.closeSubpath();
    ZDPath path;
    path.addPath(other);
    ASSERT_EQ(path.count(), other.count());
    for (int i = 0; i < other.count(); ++i) {
        const ZDPathElement &a = path.elements.at(i);
        const ZDPathElement &b = other.elements.at(i);
        EXPECT_EQ(a.x, b.x);
        EXPECT_EQ(a.y, b.y);
        EXPECT_EQ(a.auxX, b.auxX);
        EXPECT_EQ(a.auxY, b.auxY);
        EXPECT_EQ(a.type, b.type);
    }
    EXPECT_EQ(path.elements.at(4).auxX, 11.0);
    EXPECT_EQ(path.elements.at(4).auxY, 12.0);
}

TEST(PathAddPathTest, OtherIsDetachedButKeepsItsContent)
{
    ZDPath other;
    other.moveTo(1, 2);
    other.lineTo(3, 4);
    const ZDPath third = other;
    ASSERT_FALSE(other.elements.isDetached());
    ZDPath path;
    path.addPath(other);
    EXPECT_TRUE(other.elements.isDetached());
    ASSERT_EQ(other.count(), 2);
    expectElement(other, 0, 1, 2, Move);
    expectElement(other, 1, 3, 4, Line);
    EXPECT_EQ(third.count(), 2);
}

TEST(PathAddPathTest, AddingItselfDoublesTheList)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.addPath(path);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 2, 0, 0, Move);
    expectElement(path, 3, 10, 0, Line);
}

// ---------------------------------------------------------------------------
// addPolygon

TEST(PathAddPolygonTest, EmptyPolygonAddsNothing)
{
    ZDPath path;
    path.addPolygon(QPolygonF());
    EXPECT_TRUE(path.isEmpty());
    path.moveTo(1, 1);
    path.addPolygon(QPolygonF());
    EXPECT_EQ(path.count(), 1);
}

TEST(PathAddPolygonTest, OnEmptyListAMoveThenLinesWithoutClose)
{
    const QPolygonF polygon({QPointF(0, 0), QPointF(10, 0), QPointF(10, 10), QPointF(0, 0)});
    ZDPath path;
    path.addPolygon(polygon);
    ASSERT_EQ(path.count(), 4);
    EXPECT_EQ(typesOf(path), (QVector<int32_t> {Move, Line, Line, Line}));
    expectElement(path, 2, 10, 10, Line);
}

TEST(PathAddPolygonTest, AfterCloseStartsWithAMove)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(50, 0);
    path.lineTo(50, 50);
    path.closeSubpath();
    const int before = path.count();
    path.addPolygon(QPolygonF(QVector<QPointF> {QPointF(0, 0), QPointF(5, 5)}));
    ASSERT_EQ(path.count(), before + 2);
    expectElement(path, before, 0, 0, Move);
    expectElement(path, before + 1, 5, 5, Line);
}

TEST(PathAddPolygonTest, AfterABareMoveAllPointsAreLines)
{
    ZDPath path;
    path.moveTo(100, 100);
    path.addPolygon(QPolygonF(QVector<QPointF> {QPointF(0, 0), QPointF(5, 5)}));
    ASSERT_EQ(path.count(), 3);
    EXPECT_EQ(typesOf(path), (QVector<int32_t> {Move, Line, Line}));
    expectElement(path, 1, 0, 0, Line);
}

TEST(PathAddPolygonTest, AfterALineStartsWithAMove)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(0.5, 0.5);
    path.addPolygon(QPolygonF(QVector<QPointF> {QPointF(0.5, 0.5), QPointF(5, 5)}));
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 2, 0.5, 0.5, Move);
}

// ---------------------------------------------------------------------------
// addRect

TEST(PathAddRectTest, AlwaysStartsWithAMoveAndCloses)
{
    ZDPath path;
    path.moveTo(10, 20);
    path.addRect(QRectF(10, 20, 30, 40));
    ASSERT_EQ(path.count(), 7);
    EXPECT_EQ(typesOf(path), (QVector<int32_t> {Move, Move, Line, Line, Line, Line, Close}));
    expectElement(path, 2, 40, 20, Line);
    expectElement(path, 3, 40, 60, Line);
    expectElement(path, 4, 10, 60, Line);
    expectElement(path, 5, 10, 20, Line);
    expectElement(path, 6, 10, 20, Close);
}

TEST(PathAddRectTest, HeightBelowOneUnitSnapsTheFourthCorner)
{
    ZDPath path;
    path.addRect(QRectF(10, 20, 30, 0.8));
    ASSERT_EQ(path.count(), 5);
    EXPECT_EQ(typesOf(path), (QVector<int32_t> {Move, Line, Line, Line, Close}));
    expectElement(path, 1, 40, 20, Line);
    expectElement(path, 2, 40, 20.8, Line);
    expectElement(path, 3, 10, 20, Line);
    expectElement(path, 4, 10, 20, Close);
}

TEST(PathAddRectTest, HeightOfOneUnitGetsTheClosingLine)
{
    ZDPath path;
    path.addRect(QRectF(10, 20, 30, 1));
    EXPECT_EQ(path.count(), 6);
}

// ---------------------------------------------------------------------------
// closeSubpath

TEST(PathCloseSubpathTest, OneElementDoesNothing)
{
    ZDPath path;
    path.closeSubpath();
    EXPECT_TRUE(path.isEmpty());
    path.moveTo(5, 5);
    path.closeSubpath();
    EXPECT_EQ(path.count(), 1);
}

TEST(PathCloseSubpathTest, AfterACloseDoesNothing)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.closeSubpath();
    const int count = path.count();
    path.closeSubpath();
    EXPECT_EQ(path.count(), count);
}

TEST(PathCloseSubpathTest, NearEndIsMovedOntoTheStart)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.lineTo(0.5, 0.5);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 2, 0, 0, Line);
    expectElement(path, 3, 0, 0, Close);
}

TEST(PathCloseSubpathTest, FarEndGetsALine)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.lineTo(0, 50);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 5);
    expectElement(path, 2, 0, 50, Line);
    expectElement(path, 3, 0, 0, Line);
    expectElement(path, 4, 0, 0, Close);
}

TEST(PathCloseSubpathTest, OneUnitTestIsStrict)
{
    ZDPath inside;
    inside.moveTo(0, 0);
    inside.lineTo(100, 0);
    inside.lineTo(0.999, -0.999);
    inside.closeSubpath();
    EXPECT_EQ(inside.count(), 4);

    ZDPath onBound;
    onBound.moveTo(0, 0);
    onBound.lineTo(100, 0);
    onBound.lineTo(0, 1);
    onBound.closeSubpath();
    EXPECT_EQ(onBound.count(), 5);
}

TEST(PathCloseSubpathTest, SnappedCubicEndKeepsItsType)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(50, 0), QPointF(50, 50), QPointF(0.3, 0.4));
    path.closeSubpath();
    ASSERT_EQ(path.count(), 5);
    expectElement(path, 3, 0, 0, CurveData);
    expectElement(path, 4, 0, 0, Close);
}

TEST(PathCloseSubpathTest, UsesTheNearestMove)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.moveTo(100, 100);
    path.lineTo(200, 100);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 6);
    expectElement(path, 4, 100, 100, Line);
    expectElement(path, 5, 100, 100, Close);
}

TEST(PathCloseSubpathTest, LastElementMayBeTheMove)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.moveTo(5, 5);
    path.closeSubpath();
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 1, 5, 5, Move);
    expectElement(path, 2, 5, 5, Close);
}

TEST(PathCloseSubpathTest, WithoutAMoveTheStartIsTheOrigin)
{
    ZDPath far;
    far.lineTo(5, 5);
    far.lineTo(100, 0);
    far.closeSubpath();
    ASSERT_EQ(far.count(), 4);
    expectElement(far, 2, 0, 0, Line);
    expectElement(far, 3, 0, 0, Close);

    ZDPath near;
    near.lineTo(50, 50);
    near.lineTo(0.5, -0.5);
    near.closeSubpath();
    ASSERT_EQ(near.count(), 3);
    expectElement(near, 1, 0, 0, Line);
    expectElement(near, 2, 0, 0, Close);
}

// ---------------------------------------------------------------------------
// Transformations

namespace {

ZDPath transformSample()
{
    ZDPath path;
    path.moveTo(1, 2);
    path.lineTo(10, 2);
    path.lineTo(10, 20);
    path.closeSubpath();
    path.elements[2].auxX = 33;
    path.elements[2].auxY = 44;
    return path;
}

void expectAuxKept(const ZDPath &path)
{
    EXPECT_EQ(path.elements.at(2).auxX, 33.0);
    EXPECT_EQ(path.elements.at(2).auxY, 44.0);
    EXPECT_EQ(path.elements.at(1).auxX, 0.0);
}

} // namespace

TEST(PathTransformTest, TranslateMovesEveryElementIncludingClose)
{
    ZDPath path = transformSample();
    ASSERT_EQ(path.count(), 5);
    path.translate(5, -3);
    expectElement(path, 0, 6, -1, Move);
    expectElement(path, 1, 15, -1, Line);
    expectElement(path, 2, 15, 17, Line);
    expectElement(path, 3, 6, -1, Line);
    expectElement(path, 4, 6, -1, Close);
    expectAuxKept(path);
}

TEST(PathTransformTest, TransformMapsEveryElementIncludingClose)
{
    ZDPath path = transformSample();
    QTransform matrix;
    matrix.translate(100, 0);
    matrix.rotate(90);
    path.transform(matrix);
    // Rotation by 90 degrees maps (x, y) to (-y, x), then the translation.
    expectElement(path, 0, 98, 1, Move);
    EXPECT_NEAR(path.elements.at(2).x, 80, 1e-12);
    EXPECT_NEAR(path.elements.at(2).y, 10, 1e-12);
    EXPECT_NEAR(path.elements.at(4).x, 98, 1e-12);
    EXPECT_NEAR(path.elements.at(4).y, 1, 1e-12);
    EXPECT_EQ(path.elements.at(4).type, Close);
    expectAuxKept(path);
}

TEST(PathTransformTest, ScaleScalesEveryElementIncludingClose)
{
    ZDPath path = transformSample();
    path.scale(2, -3);
    expectElement(path, 0, 2, -6, Move);
    expectElement(path, 2, 20, -60, Line);
    expectElement(path, 4, 2, -6, Close);
    expectAuxKept(path);
}

TEST(PathTransformTest, TransformsDetachSharedCopies)
{
    const ZDPath original = transformSample();
    ZDPath a = original;
    ZDPath b = original;
    ZDPath c = original;
    a.translate(1, 1);
    b.scale(2, 2);
    c.transform(QTransform::fromTranslate(3, 3));
    for (int i = 0; i < original.count(); ++i) {
        EXPECT_EQ(original.elements.at(i).x, transformSample().elements.at(i).x);
        EXPECT_EQ(original.elements.at(i).y, transformSample().elements.at(i).y);
    }
    expectElement(a, 0, 2, 3, Move);
    expectElement(b, 0, 2, 4, Move);
    expectElement(c, 0, 4, 5, Move);
}

TEST(PathTransformTest, EmptyPathStaysEmpty)
{
    ZDPath path;
    path.translate(1, 1);
    path.scale(2, 2);
    path.transform(QTransform::fromScale(3, 3));
    EXPECT_TRUE(path.isEmpty());
}
