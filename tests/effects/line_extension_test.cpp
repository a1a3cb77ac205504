// Tests of ZDPath::extendPath: its offsets A = cos(a) * length + last.x and
// B = sin(a) * length + last.y, with a the direction from the first point to
// the last, move the first point by -(A, B) and the last by +(A, A).
#include <zgraphics/drawing.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <cmath>

using drawingtest::Move;
using drawingtest::Line;
using drawingtest::Curve;
using drawingtest::CurveData;
using drawingtest::Close;
using drawingtest::lineFrom;

namespace {

void expectPoint(const ZDPathElement &e, double x, double y, double tolerance = 1e-12)
{
    EXPECT_NEAR(e.x, x, tolerance);
    EXPECT_NEAR(e.y, y, tolerance);
}

} // namespace

TEST(ZDPathExtendPath, EmptyPathDoesNothing)
{
    ZDPath path;
    path.extendPath(10, true, true);
    EXPECT_TRUE(path.isEmpty());
}

TEST(ZDPathExtendPath, OneElementDoesNothing)
{
    ZDPath path;
    path.moveTo(3, 4);
    path.extendPath(10, true, true);
    ASSERT_EQ(path.count(), 1);
    EXPECT_EQ(path.elements.at(0).x, 3.0);
    EXPECT_EQ(path.elements.at(0).y, 4.0);
}

TEST(ZDPathExtendPath, StartMovesByMinusAB)
{
    // Direction (3, 4): cos 0.6, sin 0.8; A = 3 + 3 = 6, B = 4 + 4 = 8.
    ZDPath path = lineFrom(0, 0, 3, 4);
    path.extendPath(5, true, false);
    expectPoint(path.elements.at(0), -6, -8);
    expectPoint(path.elements.at(1), 3, 4, 0.0);
}

TEST(ZDPathExtendPath, EndMovesByAOnBothAxes)
{
    ZDPath path = lineFrom(0, 0, 3, 4);
    path.extendPath(5, false, true);
    expectPoint(path.elements.at(0), 0, 0, 0.0);
    expectPoint(path.elements.at(1), 9, 10);
}

TEST(ZDPathExtendPath, BothEndsUseThePointsBeforeAnyChange)
{
    ZDPath path = lineFrom(1, 2, 4, 6);
    path.extendPath(10, true, true);
    // Direction (3, 4): A = 6 + 4 = 10, B = 8 + 6 = 14.
    expectPoint(path.elements.at(0), 1 - 10, 2 - 14);
    expectPoint(path.elements.at(1), 4 + 10, 6 + 10);
}

TEST(ZDPathExtendPath, NeitherEndLeavesThePathAlone)
{
    ZDPath path = lineFrom(1, 2, 4, 6);
    path.extendPath(10, false, false);
    expectPoint(path.elements.at(0), 1, 2, 0.0);
    expectPoint(path.elements.at(1), 4, 6, 0.0);
}

TEST(ZDPathExtendPath, NegativeLengthAndOtherQuadrant)
{
    // Direction (-8, 6): cos -0.8, sin 0.6; length -5: A = 4 + 2 = 6, B = -3 + 9 = 6.
    ZDPath path = lineFrom(10, 3, 2, 9);
    path.extendPath(-5, true, true);
    expectPoint(path.elements.at(0), 10 - 6, 3 - 6);
    expectPoint(path.elements.at(1), 2 + 6, 9 + 6);
}

TEST(ZDPathExtendPath, CoincidentEndsTakeDirectionZero)
{
    // A zero vector has angle 0: A = length + last.x, B = last.y.
    ZDPath path = lineFrom(2, 3, 2, 3);
    path.extendPath(1, true, true);
    expectPoint(path.elements.at(0), 2 - 3, 3 - 3);
    expectPoint(path.elements.at(1), 2 + 3, 3 + 3);
}

TEST(ZDPathExtendPath, NearlyCoincidentEndsOnBothSidesOfTheZeroTest)
{
    // A difference of 1e-12 counts as no direction (angle 0)...
    ZDPath zero = lineFrom(0, 0, 0, 1e-12);
    zero.extendPath(2, true, false);
    expectPoint(zero.elements.at(0), -2, -1e-12, 1e-15);

    // ...but 2e-12 straight up is the direction pi / 2: A = 0, B = 2.
    ZDPath up = lineFrom(0, 0, 0, 2e-12);
    up.extendPath(2, true, false);
    expectPoint(up.elements.at(0), -2 * std::cos(M_PI / 2), -(2 + 2e-12), 1e-15);
}

TEST(ZDPathExtendPath, OnlyTheFirstAndLastElementsChange)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(5, 5);
    path.cubicTo(QPointF(6, 8), QPointF(8, 8), QPointF(3, 4));
    path.elements[0].auxX = 1.25;
    path.elements[4].auxY = -2.5;
    path.extendPath(5, true, true);
    ASSERT_EQ(path.count(), 5);
    expectPoint(path.elements.at(0), -6, -8);
    expectPoint(path.elements.at(1), 5, 5, 0.0);
    expectPoint(path.elements.at(2), 6, 8, 0.0);
    expectPoint(path.elements.at(3), 8, 8, 0.0);
    expectPoint(path.elements.at(4), 9, 10);
    EXPECT_EQ(path.elements.at(0).type, Move);
    EXPECT_EQ(path.elements.at(2).type, Curve);
    EXPECT_EQ(path.elements.at(4).type, CurveData);
    EXPECT_DOUBLE_EQ(path.elements.at(0).auxX, 1.25);
    EXPECT_DOUBLE_EQ(path.elements.at(4).auxY, -2.5);
}

TEST(ZDPathExtendPath, LastElementIsTakenWhateverItsType)
{
    // The close element is the last point; first and last coincide, so the
    // direction is 0: A = 4 + 0 = 4, B = 0.
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(10, 0);
    path.lineTo(10, 10);
    path.closeSubpath();
    ASSERT_EQ(path.elements.last().type, Close);
    path.extendPath(4, true, true);
    expectPoint(path.elements.first(), -4, 0);
    expectPoint(path.elements.last(), 4, 4);
    EXPECT_EQ(path.elements.at(1).type, Line);
}
