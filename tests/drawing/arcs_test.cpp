// Tests of ZDPath::arcTo and ZDPath::ellipse: how the arc joins the list and
// which cubics it appends.
#include <zgraphics/drawing.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtCore/QtGlobal>

using namespace drawingtest;

namespace {

// A circle of radius 50 about (50, 50).
const QRectF Circle(0, 0, 100, 100);

// The cubic elements from `from` on are exactly the points of the list, as
// control, control, end triples.
void expectCubicsFrom(const ZDPath &path, int from, const QVector<QPointF> &points)
{
    ASSERT_EQ(path.count() - from, points.size());
    for (int i = 0; i < points.size(); ++i) {
        const ZDPathElement &e = path.elements.at(from + i);
        EXPECT_EQ(e.x, points.at(i).x()) << "point " << i;
        EXPECT_EQ(e.y, points.at(i).y()) << "point " << i;
        EXPECT_EQ(e.type, i % 3 == 0 ? Curve : CurveData) << "point " << i;
    }
}

// Silences and counts warnings while it lives.
class WarningCatcher
{
public:
    WarningCatcher()
    {
        count() = 0;
        m_previous = qInstallMessageHandler(&WarningCatcher::handler);
    }
    ~WarningCatcher() { qInstallMessageHandler(m_previous); }
    static int &count()
    {
        static int n = 0;
        return n;
    }

private:
    static void handler(QtMsgType type, const QMessageLogContext &, const QString &)
    {
        if (type == QtWarningMsg)
            ++count();
    }
    QtMessageHandler m_previous;
};

} // namespace

// ---------------------------------------------------------------------------
// arcTo: joining the list

TEST(PathArcToTest, EmptyListStartsWithAMoveAtTheArcStart)
{
    QVector<QPointF> points;
    const QPointF start = zgBezier::arcToBezier(Circle, 0, 180, points);
    ASSERT_EQ(points.size(), 6);

    ZDPath path;
    path.arcTo(Circle, 0, 180);
    ASSERT_EQ(path.count(), 7);
    expectElement(path, 0, start.x(), start.y(), Move);
    expectElement(path, 0, 100, 50, Move);
    expectCubicsFrom(path, 1, points);
    expectElement(path, 6, 0, 50, CurveData);
}

TEST(PathArcToTest, AfterCloseStartsWithAMove)
{
    ZDPath path;
    path.moveTo(100, 50);
    path.lineTo(200, 50);
    path.lineTo(200, 100);
    path.closeSubpath();
    const int before = path.count();
    path.arcTo(Circle, 0, 90);
    ASSERT_EQ(path.count(), before + 4);
    expectElement(path, before, 100, 50, Move);
}

TEST(PathArcToTest, MoveCloserThanATenThousandthIsTheArcStart)
{
    // 9e-5 away on one axis.
    ZDPath path;
    path.moveTo(100, 50.00009);
    path.arcTo(Circle, 0, 90);
    ASSERT_EQ(path.count(), 4);
    EXPECT_EQ(typesOf(path), (QVector<int32_t> {Move, Curve, CurveData, CurveData}));
    expectElement(path, 0, 100, 50.00009, Move);

    // 7e-5 on both axes: 9.9e-5 in distance.
    ZDPath diagonal;
    diagonal.moveTo(100.00007, 50.00007);
    diagonal.arcTo(Circle, 0, 90);
    EXPECT_EQ(diagonal.count(), 4);
}

TEST(PathArcToTest, MoveAtATenThousandthOrMoreGetsALine)
{
    // 8e-5 on both axes is within the box but 1.13e-4 in distance.
    ZDPath diagonal;
    diagonal.moveTo(100.00008, 50.00008);
    diagonal.arcTo(Circle, 0, 90);
    ASSERT_EQ(diagonal.count(), 5);
    EXPECT_EQ(typesOf(diagonal), (QVector<int32_t> {Move, Line, Curve, CurveData, CurveData}));
    expectElement(diagonal, 1, 100, 50, Line);

    ZDPath straight;
    straight.moveTo(100.0002, 50);
    straight.arcTo(Circle, 0, 90);
    ASSERT_EQ(straight.count(), 5);
    expectElement(straight, 1, 100, 50, Line);
}

TEST(PathArcToTest, GapBelowOneUnitStillGetsItsLine)
{
    ZDPath path;
    path.moveTo(100.5, 50.5);
    path.arcTo(Circle, 0, 90);
    ASSERT_EQ(path.count(), 5);
    expectElement(path, 1, 100, 50, Line);
}

TEST(PathArcToTest, LineEndingAtTheStartStillGetsALine)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 50);
    path.arcTo(Circle, 0, 90);
    ASSERT_EQ(path.count(), 6);
    EXPECT_EQ(typesOf(path),
              (QVector<int32_t> {Move, Line, Line, Curve, CurveData, CurveData}));
    expectElement(path, 2, 100, 50, Line);
}

TEST(PathArcToTest, CubicsAreTheArcPieces)
{
    QVector<QPointF> points;
    const QPointF start = zgBezier::arcToBezier(QRectF(10, 20, 100, 50), 30, -250, points);
    ASSERT_EQ(points.size(), 12);
    ZDPath path;
    path.arcTo(QRectF(10, 20, 100, 50), 30, -250);
    expectElement(path, 0, start.x(), start.y(), Move);
    expectCubicsFrom(path, 1, points);
}

TEST(PathArcToTest, CoordinateFormBuildsTheRect)
{
    ZDPath a;
    a.arcTo(10, 20, 100, 50, 45, 200);
    ZDPath b;
    b.arcTo(QRectF(10, 20, 100, 50), 45, 200);
    ASSERT_EQ(a.count(), b.count());
    ASSERT_EQ(a.count(), 1 + 9);
    for (int i = 0; i < a.count(); ++i) {
        EXPECT_EQ(a.elements.at(i).x, b.elements.at(i).x);
        EXPECT_EQ(a.elements.at(i).y, b.elements.at(i).y);
        EXPECT_EQ(a.elements.at(i).type, b.elements.at(i).type);
    }
}

TEST(PathArcToTest, EmptyRectangleLeavesTheList)
{
    ZDPath path;
    path.arcTo(QRectF(0, 0, 0, 100), 0, 90);
    path.arcTo(QRectF(0, 0, 100, -1), 0, 90);
    path.arcTo(0, 0, 100, 0, 0, 90);
    EXPECT_TRUE(path.isEmpty());

    path.moveTo(1, 1);
    path.arcTo(QRectF(0, 0, 0, 100), 0, 90);
    EXPECT_EQ(path.count(), 1);
}

TEST(PathArcToTest, EmptyArcLeavesOnlyTheJoin)
{
    // A zero sweep from 90 degrees gives the top middle and no points.
    ZDPath path;
    path.arcTo(Circle, 90, 0);
    ASSERT_EQ(path.count(), 1);
    expectElement(path, 0, 50, 0, Move);
}

TEST(PathArcToTest, NaNArgumentPlacesAMoveOrLineAtTheOrigin)
{
    WarningCatcher catcher;
    ZDPath path;
    path.arcTo(Circle, qQNaN(), 90);
    ASSERT_EQ(path.count(), 1);
    expectElement(path, 0, 0, 0, Move);
    EXPECT_EQ(WarningCatcher::count(), 1);

    path.lineTo(5, 5);
    path.arcTo(Circle, 0, qQNaN());
    ASSERT_EQ(path.count(), 3);
    expectElement(path, 2, 0, 0, Line);

    // A NaN extent does not make the rectangle empty.
    path.arcTo(QRectF(0, 0, qQNaN(), 10), 0, 90);
    ASSERT_EQ(path.count(), 4);
    expectElement(path, 3, 0, 0, Line);
    EXPECT_EQ(WarningCatcher::count(), 3);
}

// ---------------------------------------------------------------------------
// ellipse

TEST(PathEllipseTest, FourCubicsFromTheRightMiddleAndAClose)
{
    QVector<QPointF> points;
    const QPointF start = zgBezier::arcToBezier(QRectF(10, 20, 100, 50), 0, -360.0, points);
    ASSERT_EQ(points.size(), 12);

    ZDPath path;
    path.ellipse(QRectF(10, 20, 100, 50));
    ASSERT_EQ(path.count(), 1 + 12 + 1);
    expectElement(path, 0, 110, 45, Move);
    EXPECT_EQ(path.elements.at(0).x, start.x());
    for (int i = 0; i < 12; ++i) {
        const ZDPathElement &e = path.elements.at(1 + i);
        EXPECT_EQ(e.x, points.at(i).x());
        EXPECT_EQ(e.y, points.at(i).y());
        EXPECT_EQ(e.type, i % 3 == 0 ? Curve : CurveData);
    }
    // Quarter ends: bottom, left, top, right middles; the last cubic ends at the start.
    expectElement(path, 3, 60, 70, CurveData);
    expectElement(path, 6, 10, 45, CurveData);
    expectElement(path, 9, 60, 20, CurveData);
    expectElement(path, 12, 110, 45, CurveData);
    expectElement(path, 13, 110, 45, Close);
}

TEST(PathEllipseTest, BareMoveIsReplaced)
{
    ZDPath path;
    path.moveTo(3, 4);
    path.ellipse(Circle);
    // 1 + 12 + 1 elements, not 2 + 12 + 1.
    ASSERT_EQ(path.count(), 14);
    expectElement(path, 0, 100, 50, Move);
    expectElement(path, 13, 100, 50, Close);
}

TEST(PathEllipseTest, OnlyTheLastBareMoveIsReplaced)
{
    ZDPath path;
    path.moveTo(1, 1);
    path.lineTo(2, 2);
    path.moveTo(3, 3);
    path.ellipse(Circle);
    ASSERT_EQ(path.count(), 2 + 14);
    expectElement(path, 1, 2, 2, Line);
    expectElement(path, 2, 100, 50, Move);
}

TEST(PathEllipseTest, OtherElementsAreKept)
{
    ZDPath afterLine;
    afterLine.moveTo(0, 0);
    afterLine.lineTo(100, 50);
    afterLine.ellipse(Circle);
    ASSERT_EQ(afterLine.count(), 2 + 14);
    expectElement(afterLine, 1, 100, 50, Line);
    expectElement(afterLine, 2, 100, 50, Move);

    ZDPath afterClose(QRectF(200, 200, 10, 10));
    const int before = afterClose.count();
    afterClose.ellipse(Circle);
    ASSERT_EQ(afterClose.count(), before + 14);
    EXPECT_EQ(afterClose.elements.at(before - 1).type, Close);
}

TEST(PathEllipseTest, EmptyRectangleLeavesTheList)
{
    ZDPath path;
    path.moveTo(3, 4);
    path.ellipse(QRectF(0, 0, 100, 0));
    path.ellipse(QRectF(0, 0, -5, 10));
    ASSERT_EQ(path.count(), 1);
    expectElement(path, 0, 3, 4, Move);
}

TEST(PathEllipseTest, NaNRectangleGivesAMoveAndCloseAtTheOrigin)
{
    WarningCatcher catcher;
    ZDPath path;
    path.ellipse(QRectF(0, 0, qQNaN(), 10));
    EXPECT_EQ(WarningCatcher::count(), 1);
    ASSERT_EQ(path.count(), 2);
    expectElement(path, 0, 0, 0, Move);
    expectElement(path, 1, 0, 0, Close);
}

TEST(PathArcToTest, MoveExactlyATenThousandthAwayGetsALine)
{
    // The arc of this rectangle starts exactly at (0, 50); the test is strict.
    ZDPath path;
    path.moveTo(0.0001, 50);
    path.arcTo(QRectF(-100, 0, 100, 100), 0, 90);
    ASSERT_EQ(path.count(), 5);
    EXPECT_EQ(path.elements.at(1).type, ZDLineToElement);
    EXPECT_EQ(path.elements.at(1).x, 0.0);
    EXPECT_EQ(path.elements.at(1).y, 50.0);
}

TEST(PathArcToTest, ReadOnlyChecksKeepTheListShared)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.lineTo(0, 10);
    path.closeSubpath();
    const ZDPath copy = path;
    path.closeSubpath(); // after a close: nothing to do, nothing detached
    EXPECT_EQ(path.elements.constData(), copy.elements.constData());
}

TEST(PathBuildingTest, RectangleConvertsImplicitly)
{
    const ZDPath path = QRectF(0, 0, 10, 10);
    EXPECT_EQ(path.count(), 6);
}
