// Tests of the bridges between ZDPath and QPainterPath, and of roundData.
#include <zgraphics/drawing.h>

#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <QtGui/QPainterPath>

#include <algorithm>
#include <climits>
#include <cmath>
#include <iomanip>
#include <random>

using namespace drawingtest;

namespace {

void expectPainterElements(const QPainterPath &path, std::initializer_list<Elem> expected)
{
    ASSERT_EQ(path.elementCount(), int(expected.size()));
    int i = 0;
    for (const Elem &s : expected) {
        const QPainterPath::Element &e = path.elementAt(i);
        EXPECT_DOUBLE_EQ(e.x, s.x) << "painter element " << i;
        EXPECT_DOUBLE_EQ(e.y, s.y) << "painter element " << i;
        EXPECT_EQ(int(e.type), s.type) << "painter element " << i;
        ++i;
    }
}

QPainterPath roundedPainterPath(const ZDPath &path)
{
    QPainterPath out;
    path.toPainterPathWithRoundValue(out);
    return out;
}

double roundedX(double x)
{
    ZDPath path = pathOf({{x, 0, Move}});
    path.roundData();
    return path.elements.at(0).x;
}

} // namespace

// fromPainterPath

TEST(ZDPathFromPainterPath, CopiesPointsAndTypes)
{
    QPainterPath painter;
    painter.moveTo(1.5, 2.5);
    painter.lineTo(10.25, 2.5);
    painter.cubicTo(12, 4, 14, 6, 16, -1);
    ZDPath path;
    path.fromPainterPath(painter);
    expectElements(path, {{1.5, 2.5, Move}, {10.25, 2.5, Line}, {12, 4, Curve}, {14, 6, CurveData},
                          {16, -1, CurveData}});
    for (const ZDPathElement &e : path.elements) {
        EXPECT_EQ(e.auxX, 0.0);
        EXPECT_EQ(e.auxY, 0.0);
    }
}

TEST(ZDPathFromPainterPath, AppendsWithoutClearing)
{
    ZDPath path = pathOf({{0, 0, Move}, {3, 3, Line}});
    QPainterPath painter;
    painter.moveTo(7, 8);
    painter.lineTo(9, 10);
    path.fromPainterPath(painter);
    expectElements(path, {{0, 0, Move}, {3, 3, Line}, {7, 8, Move}, {9, 10, Line}});
}

TEST(ZDPathFromPainterPath, EmptyPainterPathAddsNothing)
{
    ZDPath path = pathOf({{0, 0, Move}, {3, 3, Line}});
    path.fromPainterPath(QPainterPath());
    EXPECT_EQ(path.count(), 2);
}

TEST(ZDPathFromPainterPath, ClosedSubpathGivesALineAndNoCloseElement)
{
    QPainterPath painter;
    painter.moveTo(0, 0);
    painter.lineTo(10, 0);
    painter.lineTo(10, 10);
    painter.closeSubpath();
    ZDPath path;
    path.fromPainterPath(painter);
    expectElements(path, {{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Line}});
}

// toPainterPath

TEST(ZDPathToPainterPath, DrawsMovesLinesAndCubics)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {12, 4, Curve}, {14, 6, CurveData},
                          {16, -1, CurveData}, {50, 50, Move}, {60, 55, Line}});
    QPainterPath out;
    path.toPainterPath(out);
    expectPainterElements(out, {{0, 0, Move}, {10, 0, Line}, {12, 4, Curve}, {14, 6, CurveData},
                                {16, -1, CurveData}, {50, 50, Move}, {60, 55, Line}});
}

TEST(ZDPathToPainterPath, ReplacesWhatOutHeld)
{
    QPainterPath out;
    out.moveTo(100, 100);
    out.lineTo(200, 200);
    ZDPath path = pathOf({{1, 2, Move}, {3, 4, Line}});
    path.toPainterPath(out);
    expectPainterElements(out, {{1, 2, Move}, {3, 4, Line}});

    ZDPath empty;
    empty.toPainterPath(out);
    EXPECT_TRUE(out.isEmpty());
}

TEST(ZDPathToPainterPath, CloseElementClosesThePainterSubpath)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Close}});
    QPainterPath out;
    path.toPainterPath(out);
    // The painter path closes with a line back to its start.
    expectPainterElements(out, {{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Line}});
}

TEST(ZDPathToPainterPath, CurveTypesAreNotLookedAtAfterTheFirstControl)
{
    // The two followers of a type 2 element are taken whatever their types.
    ZDPath path = pathOf({{0, 0, Move}, {1, 2, Curve}, {3, 4, Line}, {5, 6, Move}});
    QPainterPath out;
    path.toPainterPath(out);
    expectPainterElements(out, {{0, 0, Move}, {1, 2, Curve}, {3, 4, CurveData}, {5, 6, CurveData}});
}

TEST(ZDPathToPainterPath, CubicCutShortDrawsNothing)
{
    ZDPath path = pathOf({{0, 0, Move}, {5, 0, Line}, {6, 1, Curve}, {7, 2, CurveData}});
    QPainterPath out;
    path.toPainterPath(out);
    expectPainterElements(out, {{0, 0, Move}, {5, 0, Line}});
}

TEST(ZDPathToPainterPath, CubicCutShortThenALineDrawsTheLine)
{
    ZDPath path = pathOf({{1, 1, Move}, {3, 3, Curve}, {7, 7, Line}});
    QPainterPath out;
    path.toPainterPath(out);
    expectPainterElements(out, {{1, 1, Move}, {7, 7, Line}});
}

TEST(ZDPathToPainterPath, LoneCurveDataDrawsNothing)
{
    ZDPath path = pathOf({{0, 0, Move}, {5, 5, CurveData}, {10, 10, Line}});
    QPainterPath out;
    path.toPainterPath(out);
    expectPainterElements(out, {{0, 0, Move}, {10, 10, Line}});
}

// toPainterPathWithRoundValue

TEST(ZDPathToPainterPathWithRoundValue, RoundsEveryPoint)
{
    ZDPath path = pathOf({{0.4, 0.6, Move}, {10.5, -2.5, Line}, {12.49, 4.51, Curve},
                          {-2.6, -0.5, CurveData}, {16.5, -1.5, CurveData}});
    expectPainterElements(roundedPainterPath(path), {{0, 1, Move}, {11, -2, Line}, {12, 5, Curve},
                                                     {-3, 0, CurveData}, {17, -1, CurveData}});
}

TEST(ZDPathToPainterPathWithRoundValue, IndexStaysRightAcrossCloses)
{
    ZDPath path = pathOf({{0.4, 0.6, Move}, {10.5, 0.2, Line}, {10, 10, Line}, {0.4, 0.6, Close},
                          {20.6, 20.4, Move}, {30.2, 30.7, Line}, {40, 41, Curve}, {42, 43, CurveData},
                          {44.4, 45.5, CurveData}, {20.6, 20.4, Close}, {70.2, 80.8, Move},
                          {90, 95.5, Line}});
    // Each close draws a line back to the rounded start of its painter subpath.
    expectPainterElements(roundedPainterPath(path),
                          {{0, 1, Move}, {11, 0, Line}, {10, 10, Line}, {0, 1, Line}, {21, 20, Move},
                           {30, 31, Line}, {40, 41, Curve}, {42, 43, CurveData}, {44, 46, CurveData},
                           {21, 20, Line}, {70, 81, Move}, {90, 96, Line}});
}

TEST(ZDPathToPainterPathWithRoundValue, CloseElementPointIsNotUsed)
{
    // A close element far from everything leaves no trace in the drawing.
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {500, 500, Close},
                          {20, 20, Move}, {30, 30, Line}});
    expectPainterElements(roundedPainterPath(path), {{0, 0, Move}, {10, 0, Line}, {10, 10, Line},
                                                     {0, 0, Line}, {20, 20, Move}, {30, 30, Line}});
}

TEST(ZDPathToPainterPathWithRoundValue, CubicCutShortStillAdvancesByThree)
{
    // The short cubic takes three places of the point vector; the line after
    // it would read a place past the end, and is not drawn.
    ZDPath path = pathOf({{1.2, 1.2, Move}, {3.3, 3.3, Curve}, {7.7, 7.7, Line}});
    expectPainterElements(roundedPainterPath(path), {{1, 1, Move}});

    ZDPath atEnd = pathOf({{0, 0, Move}, {5.4, 0, Line}, {6, 1, Curve}, {7, 2, CurveData}});
    expectPainterElements(roundedPainterPath(atEnd), {{0, 0, Move}, {5, 0, Line}});
}

TEST(ZDPathToPainterPathWithRoundValue, LoneCurveDataDoesNotAdvanceTheIndex)
{
    // The line after a lone type 3 element reads that element's point.
    ZDPath path = pathOf({{0, 0, Move}, {5.2, 5.2, CurveData}, {10, 10, Line}});
    expectPainterElements(roundedPainterPath(path), {{0, 0, Move}, {5, 5, Line}});
}

TEST(ZDPathToPainterPathWithRoundValue, CloseInsideACubicDoesNotCrash)
{
    // Too few rounded points remain for the cubic: it is not drawn.
    ZDPath path = pathOf({{0, 0, Move}, {1, 1, Curve}, {0, 0, Close}, {3, 3, CurveData}});
    expectPainterElements(roundedPainterPath(path), {{0, 0, Move}});
}

TEST(ZDPathToPainterPathWithRoundValue, ReplacesWhatOutHeld)
{
    QPainterPath out;
    out.moveTo(100, 100);
    out.lineTo(200, 200);
    ZDPath empty;
    empty.toPainterPathWithRoundValue(out);
    EXPECT_TRUE(out.isEmpty());
}

// roundData

TEST(ZDPathRoundData, RoundsHalvesUpIncludingNegativeOnes)
{
    EXPECT_EQ(roundedX(2.5), 3.0);
    EXPECT_EQ(roundedX(2.4999), 2.0);
    EXPECT_EQ(roundedX(0.5), 1.0);
    EXPECT_EQ(roundedX(0.0), 0.0);
    EXPECT_EQ(roundedX(-0.4), 0.0);
    EXPECT_EQ(roundedX(-0.5), 0.0);
    EXPECT_EQ(roundedX(-0.6), -1.0);
    EXPECT_EQ(roundedX(-2.5), -2.0);
    EXPECT_EQ(roundedX(-2.6), -3.0);
    EXPECT_EQ(roundedX(-2.4), -2.0);
    EXPECT_EQ(roundedX(-3.0), -3.0);
}

TEST(ZDPathRoundData, RoundsBothCoordinatesOfAllButCloseElements)
{
    ZDPath path = pathOf({{0.4, 0.6, Move}, {10.5, -2.5, Line}, {12.49, 4.51, Curve},
                          {-2.6, -0.5, CurveData}, {16.5, -1.5, CurveData}, {0.4, 0.6, Close}});
    path.roundData();
    expectElements(path, {{0, 1, Move}, {11, -2, Line}, {12, 5, Curve}, {-3, 0, CurveData},
                          {17, -1, CurveData}, {0.4, 0.6, Close}});
}

TEST(ZDPathRoundData, CloseStaysOffTheRoundedStartByLessThanOne)
{
    ZDPath path;
    path.moveTo(10.7, -3.2);
    path.lineTo(50, -3);
    path.lineTo(30, 40);
    path.closeSubpath();
    ASSERT_EQ(path.elements.last().type, Close);
    path.roundData();
    const ZDPathElement &start = path.elements.first();
    const ZDPathElement &close = path.elements.last();
    EXPECT_EQ(start.x, 11.0);
    EXPECT_EQ(start.y, -3.0);
    EXPECT_DOUBLE_EQ(close.x, 10.7);
    EXPECT_DOUBLE_EQ(close.y, -3.2);
    EXPECT_LT(std::fabs(close.x - start.x), 1.0);
    EXPECT_LT(std::fabs(close.y - start.y), 1.0);
    EXPECT_NE(close.x, start.x);
}

TEST(ZDPathRoundData, AuxiliaryPointIsUntouched)
{
    ZDPath path = pathOf({{0.4, 0.6, Move}, {10.5, 2.2, Line}});
    path.elements[1].auxX = 3.7;
    path.elements[1].auxY = -8.5;
    path.roundData();
    EXPECT_DOUBLE_EQ(path.elements.at(1).auxX, 3.7);
    EXPECT_DOUBLE_EQ(path.elements.at(1).auxY, -8.5);
}

TEST(ZDPathRoundData, ResultsStayInTheIntegerRange)
{
    ZDPath path = pathOf({{1e20, -1e20, Move}, {std::nan(""), 2147483646.7, Line}});
    path.roundData();
    EXPECT_EQ(path.elements.at(0).x, double(INT_MAX));
    EXPECT_EQ(path.elements.at(0).y, double(INT_MIN));
    EXPECT_EQ(path.elements.at(1).x, 0.0);
    EXPECT_EQ(path.elements.at(1).y, 2147483647.0);
}

namespace {

// Rounding worked exactly, independently of the library: next to the ends of
// the int range a double has at least 22 fraction bits, so floor and the
// fraction are exact there, and halves go up as in -2.5 -> -2.
double exactRoundClamped(double v)
{
    const double below = std::floor(v);
    const double rounded = below + (v - below >= 0.5 ? 1.0 : 0.0);
    return std::min(std::max(rounded, double(INT_MIN)), double(INT_MAX));
}

// Values in the last two units inside each end of the int range and just
// beyond it: every double next to the integers and halves there, plus a seeded
// spread.
QVector<double> valuesNextToTheIntEnds()
{
    QVector<double> values;
    for (double end : {double(INT_MIN), double(INT_MAX)}) {
        for (double offset = -2.0; offset <= 2.0; offset += 0.5) {
            double v = end + offset;
            for (int i = 0; i < 3; ++i)
                v = std::nextafter(v, -1e300);
            for (int i = 0; i < 7; ++i) {
                values.append(v);
                v = std::nextafter(v, 1e300);
            }
        }
        std::mt19937 random(0x1e7d);
        std::uniform_real_distribution<double> spread(end - 2.0, end + 2.0);
        for (int i = 0; i < 2000; ++i)
            values.append(spread(random));
    }
    return values;
}

} // namespace

TEST(ZDPathRoundData, JustAboveTheLowestIntRoundsToIt)
{
    ZDPath path = pathOf({{-2147483647.9999998, -2147483647.9999998, Move},
                          {-2147483647.6, -2147483647.5, Line},
                          {-2147483648.4, -2147483648.5, Line}});
    path.roundData();
    expectElements(path, {{-2147483648.0, -2147483648.0, Move},
                          {-2147483648.0, -2147483647.0, Line},
                          {-2147483648.0, -2147483648.0, Line}});
}

TEST(ZDPathRoundData, JustBelowTheHighestIntRoundsToIt)
{
    ZDPath path = pathOf({{2147483647.4999998, 2147483646.5, Move},
                          {2147483646.4999998, 2147483647.5, Line}});
    path.roundData();
    expectElements(path, {{2147483647.0, 2147483647.0, Move}, {2147483646.0, 2147483647.0, Line}});
}

TEST(ZDPathRoundData, ValuesNextToTheIntEndsRoundExactly)
{
    int mismatches = 0;
    for (double v : valuesNextToTheIntEnds()) {
        ZDPath path = pathOf({{v, -v, Move}});
        path.roundData();
        if (path.elements.at(0).x != exactRoundClamped(v) || path.elements.at(0).y != exactRoundClamped(-v)) {
            ++mismatches;
            ADD_FAILURE() << std::setprecision(17) << "v " << v << " gives " << path.elements.at(0).x << ", "
                          << path.elements.at(0).y;
        }
    }
    EXPECT_EQ(mismatches, 0);
}

TEST(ZDPathToPainterPathWithRoundValue, ValuesNextToTheIntEndsRoundExactly)
{
    // Each value is visited from the origin and left again, since a painter
    // path drops a line to the point it is already at.
    const QVector<double> values = valuesNextToTheIntEnds();
    ZDPath path = pathOf({{0, 0, Move}});
    for (double v : values) {
        path.elements.append(ZDPathElement(v, -v, ZDLineToElement));
        path.elements.append(ZDPathElement(0, 0, ZDLineToElement));
    }
    const QPainterPath painter = roundedPainterPath(path);
    ASSERT_EQ(painter.elementCount(), 1 + 2 * values.size());
    int mismatches = 0;
    for (int i = 0; i < values.size(); ++i) {
        const QPainterPath::Element &e = painter.elementAt(1 + 2 * i);
        if (e.x != exactRoundClamped(values.at(i)) || e.y != exactRoundClamped(-values.at(i)))
            ++mismatches;
    }
    EXPECT_EQ(mismatches, 0);
}

TEST(ZDPathToPainterPathWithRoundValue, JustAboveTheLowestIntRoundsToIt)
{
    const QPainterPath painter =
        roundedPainterPath(pathOf({{-2147483647.9999998, 2147483647.4999998, Move}}));
    expectPainterElements(painter, {{-2147483648.0, 2147483647.0, Move}});
}

TEST(ZDPathRoundData, EmptyPathIsLeftAlone)
{
    ZDPath path;
    path.roundData();
    EXPECT_TRUE(path.isEmpty());
}

// Round trips through QPainterPath

namespace {

ZDPath roundTrip(const ZDPath &path)
{
    QPainterPath painter;
    path.toPainterPath(painter);
    ZDPath back;
    back.fromPainterPath(painter);
    return back;
}

// What a round trip is to give: every element as it is, except that a close
// element becomes a line to the subpath's start, or vanishes when the element
// before it already lies exactly on that start.
ZDPath expectedAfterRoundTrip(const ZDPath &path)
{
    ZDPath expected;
    QPointF start;
    for (const ZDPathElement &e : path.elements) {
        if (e.type == Move)
            start = e.toPoint();
        if (e.type != Close) {
            expected.elements.append(ZDPathElement(e.x, e.y, e.type));
            continue;
        }
        const ZDPathElement &before = expected.elements.last();
        if (before.x != start.x() || before.y != start.y())
            expected.elements.append(ZDPathElement(start.x(), start.y(), Line));
    }
    return expected;
}

} // namespace

TEST(ZDPathPainterRoundTrip, OpenPathKeepsEveryElement)
{
    ZDPath path = pathOf({{0.25, -1.5, Move}, {10, 0, Line}, {12.125, 4, Curve}, {14, 6.75, CurveData},
                          {16, -1, CurveData}, {30, 30, Line}, {-40, 50, Move}, {-45.5, 60, Curve},
                          {-50, 70, CurveData}, {-60, 80.0625, CurveData}});
    expectSameElements(roundTrip(path), path);
}

TEST(ZDPathPainterRoundTrip, CloseAfterTheStartPointVanishes)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100, 0);
    path.lineTo(50, 80);
    path.closeSubpath(); // adds a line to (0, 0), then the close element
    ASSERT_EQ(path.count(), 5);
    const ZDPath back = roundTrip(path);
    expectElements(back, {{0, 0, Move}, {100, 0, Line}, {50, 80, Line}, {0, 0, Line}});
}

TEST(ZDPathPainterRoundTrip, CloseAwayFromTheStartBecomesALine)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {50, 80, Line}, {0, 0, Close},
                          {200, 200, Move}, {300, 200, Line}});
    const ZDPath back = roundTrip(path);
    expectElements(back, {{0, 0, Move}, {100, 0, Line}, {50, 80, Line}, {0, 0, Line},
                          {200, 200, Move}, {300, 200, Line}});
}

TEST(ZDPathPainterRoundTrip, ClosedCurvedSubpaths)
{
    ZDPath path;
    path.moveTo(10.7, -3.2);
    path.cubicTo(QPointF(40, -20), QPointF(60, 20), QPointF(50, 50));
    path.cubicTo(QPointF(30, 60), QPointF(0, 40), QPointF(10.7, -3.2));
    path.closeSubpath();
    path.moveTo(100, 100);
    path.lineTo(150, 100);
    path.cubicTo(QPointF(160, 120), QPointF(140, 140), QPointF(120, 130));
    path.elements.append(ZDPathElement(100, 100, Close));
    const ZDPath back = roundTrip(path);
    expectSameElements(back, expectedAfterRoundTrip(path));
    EXPECT_EQ(back.count(), path.count() - 1);
    EXPECT_EQ(back.elements.last().type, Line);
}

TEST(ZDPathPainterRoundTrip, SeededRandomPaths)
{
    std::mt19937 random(20240611u);
    std::uniform_real_distribution<double> coordinate(-1000.0, 1000.0);
    std::uniform_int_distribution<int> subpathCount(1, 4);
    std::uniform_int_distribution<int> pieceCount(1, 6);
    std::uniform_int_distribution<int> coin(0, 1);
    std::uniform_int_distribution<int> ending(0, 2);
    auto point = [&]() { return QPointF(coordinate(random), coordinate(random)); };

    for (int round = 0; round < 300; ++round) {
        ZDPath path;
        const int subpaths = subpathCount(random);
        for (int s = 0; s < subpaths; ++s) {
            const QPointF start = point();
            path.moveTo(start);
            const int pieces = pieceCount(random);
            for (int p = 0; p < pieces; ++p) {
                if (coin(random))
                    path.lineTo(point());
                else
                    path.cubicTo(point(), point(), point());
            }
            const int end = ending(random);
            if (end == 1)
                path.closeSubpath();
            else if (end == 2)
                path.elements.append(ZDPathElement(start.x(), start.y(), Close));
        }
        SCOPED_TRACE(round);
        expectSameElements(roundTrip(path), expectedAfterRoundTrip(path));
    }
}

TEST(ZDPathPainterRoundTrip, FromPainterAndBackKeepsThePainterPath)
{
    QPainterPath painter;
    painter.moveTo(3.5, 4.5);
    painter.lineTo(20, 4.5);
    painter.cubicTo(25, 10, 30, 15, 40, 4);
    painter.moveTo(-7, -8);
    painter.lineTo(-9, 12.25);
    ZDPath path;
    path.fromPainterPath(painter);
    QPainterPath back;
    path.toPainterPath(back);
    ASSERT_EQ(back.elementCount(), painter.elementCount());
    for (int i = 0; i < painter.elementCount(); ++i) {
        EXPECT_EQ(back.elementAt(i).x, painter.elementAt(i).x);
        EXPECT_EQ(back.elementAt(i).y, painter.elementAt(i).y);
        EXPECT_EQ(back.elementAt(i).type, painter.elementAt(i).type);
    }
}
