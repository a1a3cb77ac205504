// Tests of ZDPath::toXPath and ZDPath::fromXPath: one contour per subpath,
// the self-join of a closed subpath within one unit, the closing curve that
// ends on the truncated start and is snapped back by closeSubpath, and round
// trips of hand-made and random paths.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "services/services_test_support.h"
#include "drawing/drawing_test_support.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

using namespace drawingtest;

namespace {

void expectSegment(const zgSegment *segment, double x, double y, double inX, double inY,
                   double outX, double outY)
{
    ASSERT_NE(segment, nullptr);
    EXPECT_DOUBLE_EQ(segment->point.x, x);
    EXPECT_DOUBLE_EQ(segment->point.y, y);
    EXPECT_DOUBLE_EQ(segment->handleIn.x, inX);
    EXPECT_DOUBLE_EQ(segment->handleIn.y, inY);
    EXPECT_DOUBLE_EQ(segment->handleOut.x, outX);
    EXPECT_DOUBLE_EQ(segment->handleOut.y, outY);
}

// ZDPath -> XPath -> ZDPath.
ZDPath roundTrip(ZDPath path)
{
    XPath xpath;
    path.toXPath(xpath, 0);
    ZDPath back;
    back.fromXPath(xpath, 0, -1);
    return back;
}

// A heap contour of segments (point, handle in, handle out), count 0.
zgPath *contourOf(std::initializer_list<std::initializer_list<double>> segments, bool closed)
{
    zgPath *contour = new zgPath(nullptr, closed);
    for (const std::initializer_list<double> &s : segments) {
        const double *v = s.begin();
        contour->addSegment(new zgSegment(zgPoint(v[0], v[1]), zgPoint(v[2], v[3]),
                                          zgPoint(v[4], v[5])));
    }
    return contour;
}

} // namespace

// toXPath

TEST(ZDPathToXPath, EmptyPathGivesNoChildren)
{
    ZDPath path;
    XPath xpath;
    path.toXPath(xpath, 0);
    EXPECT_TRUE(xpath.isEmpty());
}

TEST(ZDPathToXPath, OneOpenContourPerSubpathWithThisXPathAsParent)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line},
                          {20, 0, Move}, {25, 5, Curve}, {30, 5, CurveData}, {35, 0, CurveData}});
    XPath xpath;
    path.toXPath(xpath, 0);
    ASSERT_EQ(xpath.children.size(), 2);

    zgPath *first = xpath.children.at(0);
    EXPECT_EQ(first->parent, &xpath);
    EXPECT_FALSE(first->closed);
    EXPECT_EQ(first->index, 0);
    EXPECT_EQ(first->refCount, 1);
    ASSERT_EQ(first->segments.size(), 3);
    expectSegment(first->segments.at(0), 0, 0, 0, 0, 0, 0);
    expectSegment(first->segments.at(1), 10, 0, 0, 0, 0, 0);
    expectSegment(first->segments.at(2), 10, 10, 0, 0, 0, 0);

    zgPath *second = xpath.children.at(1);
    EXPECT_EQ(second->parent, &xpath);
    EXPECT_FALSE(second->closed);
    EXPECT_EQ(second->index, 1);
    ASSERT_EQ(second->segments.size(), 2);
    // The control points become handles relative to their segments.
    expectSegment(second->segments.at(0), 20, 0, 0, 0, 5, 5);
    expectSegment(second->segments.at(1), 35, 0, -5, 5, 0, 0);
}

TEST(ZDPathToXPath, ClosedSquareEndingOnItsStartGivesFourSegments)
{
    // The rectangle constructor ends with a line back to the start and a close.
    ZDPath path(QRectF(0, 0, 10, 10));
    ASSERT_EQ(path.count(), 6);
    XPath xpath;
    path.toXPath(xpath, 0);
    ASSERT_EQ(xpath.children.size(), 1);
    zgPath *square = xpath.children.at(0);
    EXPECT_TRUE(square->closed);
    zgtest::expectPoints(*square, {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10)});
}

TEST(ZDPathToXPath, CloseJoinsALastPointWithinOneUnitInclusive)
{
    // Distance exactly 1.0 from the start: joined.
    ZDPath atOne = pathOf({{0, 0, Move}, {50, 0, Line}, {50, 50, Line}, {0, 1, Line}, {0, 0, Close}});
    XPath joined;
    atOne.toXPath(joined, 0);
    ASSERT_EQ(joined.children.size(), 1);
    EXPECT_TRUE(joined.children.at(0)->closed);
    zgtest::expectPoints(*joined.children.at(0), {zgPoint(0, 0), zgPoint(50, 0), zgPoint(50, 50)});

    // A diagonal 0.6 on both axes is 0.85 away: joined as well.
    ZDPath diagonal = pathOf({{0, 0, Move}, {50, 0, Line}, {50, 50, Line}, {0.6, 0.6, Line}, {0, 0, Close}});
    XPath joinedDiagonal;
    diagonal.toXPath(joinedDiagonal, 0);
    ASSERT_EQ(joinedDiagonal.children.size(), 1);
    EXPECT_EQ(joinedDiagonal.children.at(0)->segments.size(), 3);

    // Just over one unit away: the last point stays a segment of its own.
    ZDPath beyond = pathOf({{0, 0, Move}, {50, 0, Line}, {50, 50, Line}, {0, 1.000001, Line}, {0, 0, Close}});
    XPath kept;
    beyond.toXPath(kept, 0);
    ASSERT_EQ(kept.children.size(), 1);
    EXPECT_TRUE(kept.children.at(0)->closed);
    zgtest::expectPoints(*kept.children.at(0),
                         {zgPoint(0, 0), zgPoint(50, 0), zgPoint(50, 50), zgPoint(0, 1.000001)});
}

TEST(ZDPathToXPath, TheJoinedLastSegmentLeavesItsHandleOnTheFirst)
{
    ZDPath path = pathOf({{0, 0, Move}, {50, 0, Line},
                          {60, 30, Curve}, {10, 40, CurveData}, {0, 0, CurveData}, {0, 0, Close}});
    XPath xpath;
    path.toXPath(xpath, 0);
    ASSERT_EQ(xpath.children.size(), 1);
    zgPath *contour = xpath.children.at(0);
    EXPECT_TRUE(contour->closed);
    ASSERT_EQ(contour->segments.size(), 2);
    expectSegment(contour->segments.at(0), 0, 0, 10, 40, 0, 0);
    expectSegment(contour->segments.at(1), 50, 0, 0, 0, 10, 30);
}

TEST(ZDPathToXPath, ALineAfterACloseGoesOnTheClosedContour)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {10, 10, Line}, {0, 0, Line}, {0, 0, Close},
                          {20, 20, Line}});
    XPath xpath;
    path.toXPath(xpath, 0);
    ASSERT_EQ(xpath.children.size(), 1);
    EXPECT_TRUE(xpath.children.at(0)->closed);
    zgtest::expectPoints(*xpath.children.at(0),
                         {zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10), zgPoint(20, 20)});
}

TEST(ZDPathToXPath, ACurveCutShortAndALoneDataElementAreIgnored)
{
    ZDPath cutShort = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Curve}, {30, 0, CurveData}});
    XPath xpath;
    cutShort.toXPath(xpath, 0);
    ASSERT_EQ(xpath.children.size(), 1);
    zgtest::expectPoints(*xpath.children.at(0), {zgPoint(0, 0), zgPoint(10, 0)});

    // With exactly two elements after it the curve is drawn.
    ZDPath whole = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Curve}, {30, 0, CurveData}, {40, 0, CurveData}});
    XPath drawn;
    whole.toXPath(drawn, 0);
    ASSERT_EQ(drawn.children.size(), 1);
    zgtest::expectPoints(*drawn.children.at(0), {zgPoint(0, 0), zgPoint(10, 0), zgPoint(40, 0)});
}

TEST(ZDPathToXPath, StartSkipsElementsAndDrawsNothingBeforeAMove)
{
    ZDPath path = pathOf({{0, 0, Move}, {10, 0, Line}, {20, 0, Move}, {30, 0, Line}, {30, 10, Line}});
    XPath fromMove;
    path.toXPath(fromMove, 2);
    ASSERT_EQ(fromMove.children.size(), 1);
    zgtest::expectPoints(*fromMove.children.at(0), {zgPoint(20, 0), zgPoint(30, 0), zgPoint(30, 10)});

    // Element 1 is a line with no contour yet: it is skipped.
    XPath fromLine;
    path.toXPath(fromLine, 1);
    ASSERT_EQ(fromLine.children.size(), 1);
    EXPECT_EQ(fromLine.children.at(0)->segments.size(), 3);

    XPath pastTheEnd;
    path.toXPath(pastTheEnd, 5);
    EXPECT_TRUE(pastTheEnd.isEmpty());
}

TEST(ZDPathToXPath, CleansThePathUpFirst)
{
    ZDPath path = pathOf({{5, 5, Move}, {0, 0, Move}, {10, 0, Line}, {20, 20, Move}, {20, 20, Close},
                          {40, 40, Move}});
    XPath xpath;
    path.toXPath(xpath, 0);
    expectElementsWithAux(path, {{0, 0, Move}, {10, 0, Line}});
    ASSERT_EQ(xpath.children.size(), 1);
    zgtest::expectPoints(*xpath.children.at(0), {zgPoint(0, 0), zgPoint(10, 0)});
}

TEST(ZDPathToXPath, ReplacesTheChildrenOfAFilledXPath)
{
    ZDPath first = pathOf({{0, 0, Move}, {10, 0, Line}, {50, 0, Move}, {60, 0, Line}});
    ZDPath second = pathOf({{5, 5, Move}, {15, 5, Line}});
    const zgtest::Survivors survivors = zgtest::countSurvivors([&] {
        XPath xpath;
        first.toXPath(xpath, 0);
        ASSERT_EQ(xpath.children.size(), 2);
        second.toXPath(xpath, 0);
        ASSERT_EQ(xpath.children.size(), 1);
        zgtest::expectPoints(*xpath.children.at(0), {zgPoint(5, 5), zgPoint(15, 5)});
    });
    zgtest::expectNoSurvivors(survivors);
}

TEST(ZDPathToXPath, ClosedChildrenAreTurnedByTheirPlace)
{
    // The first contour runs counter-clockwise (negative area) and is turned;
    // the second runs clockwise and, not being first, is turned as well.
    ZDPath path = pathOf({{0, 0, Move}, {0, 10, Line}, {10, 10, Line}, {10, 0, Line}, {0, 0, Line}, {0, 0, Close},
                          {20, 0, Move}, {30, 0, Line}, {30, 10, Line}, {20, 0, Line}, {20, 0, Close}});
    XPath xpath;
    path.toXPath(xpath, 0);
    ASSERT_EQ(xpath.children.size(), 2);
    zgtest::expectPoints(*xpath.children.at(0),
                         {zgPoint(10, 0), zgPoint(10, 10), zgPoint(0, 10), zgPoint(0, 0)});
    EXPECT_TRUE(xpath.children.at(0)->isClockwise());
    zgtest::expectPoints(*xpath.children.at(1), {zgPoint(30, 10), zgPoint(30, 0), zgPoint(20, 0)});
    EXPECT_FALSE(xpath.children.at(1)->isClockwise());
}

// fromXPath

TEST(ZDPathFromXPath, StraightPiecesBecomeLinesAndOthersCubics)
{
    XPath xpath;
    xpath.addChild(contourOf({{0, 0, 0, 0, 0, 0},
                              {10, 0, 0, 0, 5, 5},
                              {20, 0, -5, 5, 0, 0},
                              // A handle far below 1e-12 is still a handle: the test is for exact zero.
                              {30, 0, 0, 1e-300, 0, 0}},
                             false));
    ZDPath path;
    path.fromXPath(xpath, 0, -1);
    expectElementsWithAux(path, {{0, 0, Move}, {10, 0, Line},
                                 {15, 5, Curve}, {15, 5, CurveData}, {20, 0, CurveData},
                                 {20, 0, Curve}, {30, 1e-300, CurveData}, {30, 0, CurveData}});
    // The XPath keeps its child.
    EXPECT_EQ(xpath.children.size(), 1);
}

TEST(ZDPathFromXPath, ClosedContourWithStraightClosingPieceEndsWithALineAndAClose)
{
    XPath xpath;
    xpath.addChild(contourOf({{0.5, 0.25, 0, 0, 0, 0}, {10, 0, 0, 0, 0, 0}, {10, 10, 0, 0, 0, 0}}, true));
    ZDPath path;
    path.fromXPath(xpath, 0, -1);
    expectElementsWithAux(path, {{0.5, 0.25, Move}, {10, 0, Line}, {10, 10, Line}, {0.5, 0.25, Line},
                                 {0.5, 0.25, Close}});
}

TEST(ZDPathFromXPath, ClosingCurveEndsExactlyOnANonIntegralStart)
{
    XPath xpath;
    xpath.addChild(contourOf({{10.7, -3.2, -4, 6, 3, -5}, {40, 0, 0, 0, 0, 20}, {30, 30, 0, 0, 0, 0}}, true));
    ZDPath path;
    path.fromXPath(xpath, 0, -1);
    expectElementsWithAux(path, {{10.7, -3.2, Move},
                                 {13.7, -8.2, Curve}, {40, 0, CurveData}, {40, 0, CurveData},
                                 {40, 20, Curve}, {30, 30, CurveData}, {30, 30, CurveData},
                                 {30, 30, Curve}, {6.7, 2.8, CurveData}, {10.7, -3.2, CurveData},
                                 {10.7, -3.2, Close}});
    // The end is the start itself, not a value near it.
    EXPECT_EQ(path.elements.at(9).x, 10.7);
    EXPECT_EQ(path.elements.at(9).y, -3.2);
}

TEST(ZDPathFromXPath, NegativeStartIsSnappedBackAsWell)
{
    // Truncation toward zero moves -10.7 to -10 and 3.9 to 3: both within one unit.
    XPath xpath;
    xpath.addChild(contourOf({{-10.7, 3.9, 0, 5, 0, 0}, {20, 0, 0, 0, 0, 0}, {20, 20, 0, 0, 0, 0}}, true));
    ZDPath path;
    path.fromXPath(xpath, 0, -1);
    ASSERT_EQ(path.count(), 7);
    const ZDPathElement &end = path.elements.at(5);
    EXPECT_EQ(end.type, CurveData);
    EXPECT_EQ(end.x, -10.7);
    EXPECT_EQ(end.y, 3.9);
    EXPECT_EQ(path.elements.at(6).type, Close);
    EXPECT_EQ(path.elements.at(6).x, -10.7);
    EXPECT_EQ(path.elements.at(6).y, 3.9);
}

TEST(ZDPathFromXPath, ContoursOfFewerThanTwoSegmentsAreDropped)
{
    XPath xpath;
    xpath.addChild(contourOf({{1, 2, 3, 4, 5, 6}}, true));
    xpath.addChild(contourOf({{7, 8, 0, 0, 0, 0}}, false));
    xpath.addChild(new zgPath(nullptr, false));
    ZDPath path;
    path.fromXPath(xpath, 0, -1);
    EXPECT_TRUE(path.isEmpty());
}

TEST(ZDPathFromXPath, AppendsTheRangeFirstToLastWithoutClearing)
{
    XPath xpath;
    xpath.addChild(contourOf({{0, 0, 0, 0, 0, 0}, {10, 0, 0, 0, 0, 0}}, false));
    xpath.addChild(contourOf({{20, 0, 0, 0, 0, 0}, {30, 0, 0, 0, 0, 0}}, false));
    xpath.addChild(contourOf({{40, 0, 0, 0, 0, 0}, {50, 0, 0, 0, 0, 0}}, false));

    ZDPath middle = pathOf({{-5, -5, Move}, {-1, -1, Line}});
    middle.fromXPath(xpath, 1, 2);
    expectElementsWithAux(middle, {{-5, -5, Move}, {-1, -1, Line}, {20, 0, Move}, {30, 0, Line}});

    ZDPath tail;
    tail.fromXPath(xpath, 1, -1);
    expectElementsWithAux(tail, {{20, 0, Move}, {30, 0, Line}, {40, 0, Move}, {50, 0, Line}});

    ZDPath none;
    none.fromXPath(xpath, 2, 2);
    EXPECT_TRUE(none.isEmpty());

    ZDPath emptySource;
    XPath empty;
    emptySource.fromXPath(empty, 0, -1);
    EXPECT_TRUE(emptySource.isEmpty());
}

// Round trips

TEST(ZDPathXPathRoundTrip, OpenLinesAndCubicsComeBackUnchanged)
{
    ZDPath path;
    path.moveTo(1.5, 2.25);
    path.lineTo(40, 2.25);
    path.cubicTo(QPointF(50, 10), QPointF(45.125, 30), QPointF(30, 35));
    path.lineTo(-20, 35.5);
    path.moveTo(100, 100);
    path.cubicTo(QPointF(110, 90), QPointF(120, 110), QPointF(130, 100));
    expectSameElements(roundTrip(path), path);
}

TEST(ZDPathXPathRoundTrip, ClosedRectangleComesBackUnchanged)
{
    ZDPath path(QRectF(0.5, 0.5, 20, 10));
    expectSameElements(roundTrip(path), path);
}

TEST(ZDPathXPathRoundTrip, ClosedCurvedContourAtANonIntegralStartComesBackUnchanged)
{
    ZDPath path;
    path.moveTo(10.7, -3.2);
    path.cubicTo(QPointF(30, -20), QPointF(60, -10), QPointF(70, 20));
    path.lineTo(40, 50);
    path.cubicTo(QPointF(20, 50), QPointF(0, 20), QPointF(10.7, -3.2));
    path.closeSubpath();
    ASSERT_EQ(path.count(), 9);
    expectSameElements(roundTrip(path), path);
}

TEST(ZDPathXPathRoundTrip, ALastPointWithinOneUnitIsSnappedOntoTheStart)
{
    // Built by hand: closeSubpath would have snapped it already.
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0.5, 0.5, Line}, {0, 0, Close}});
    expectElementsWithAux(roundTrip(path), {{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 0, Line}, {0, 0, Close}});

    // Further than one unit: the point stays and a line back to the start is added.
    ZDPath far = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0.8, 0.8, Line}, {0, 0, Close}});
    expectElementsWithAux(roundTrip(far), {{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0.8, 0.8, Line},
                                           {0, 0, Line}, {0, 0, Close}});
}

TEST(ZDPathXPathRoundTrip, ACloseWithoutALineBackGainsOne)
{
    ZDPath path = pathOf({{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 0, Close}});
    expectElementsWithAux(roundTrip(path), {{0, 0, Move}, {100, 0, Line}, {100, 100, Line}, {0, 0, Line}, {0, 0, Close}});
}

TEST(ZDPathXPathRoundTrip, ACubicWithoutHandlesBecomesALine)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(0, 0), QPointF(10, 5), QPointF(10, 5));
    expectElementsWithAux(roundTrip(path), {{0, 0, Move}, {10, 5, Line}});
}

TEST(ZDPathXPathRoundTrip, AOneCurveClosedSubpathVanishes)
{
    // The curve ends on its start: the self-join leaves one segment.
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(50, -50), QPointF(50, 50), QPointF(0, 0));
    path.closeSubpath();
    path.moveTo(100, 0);
    path.lineTo(110, 0);
    expectElementsWithAux(roundTrip(path), {{100, 0, Move}, {110, 0, Line}});
}

TEST(ZDPathXPathRoundTrip, ACounterClockwiseFirstContourComesBackReversed)
{
    ZDPath path = pathOf({{0, 0, Move}, {0, 10, Line}, {10, 10, Line}, {10, 0, Line}, {0, 0, Line}, {0, 0, Close}});
    expectElementsWithAux(roundTrip(path), {{10, 0, Move}, {10, 10, Line}, {0, 10, Line}, {0, 0, Line},
                                            {10, 0, Line}, {10, 0, Close}});
}

TEST(ZDPathXPathRoundTrip, ALineAfterACurvedCloseTakesTheClosingCurvesFirstHandle)
{
    // After the close the contour goes on from its last segment, which still
    // carries the handle out of the closing curve.
    ZDPath path = pathOf({{0, 0, Move}, {40, 0, Line}, {40, 40, Line},
                          {30, 50, Curve}, {-10, 10, CurveData}, {0, 0, CurveData}, {0, 0, Close},
                          {-20, 20, Line}});
    expectElementsWithAux(roundTrip(path), {{0, 0, Move}, {40, 0, Line}, {40, 40, Line},
                                            {30, 50, Curve}, {-20, 20, CurveData}, {-20, 20, CurveData},
                                            {-20, 20, Curve}, {-10, 10, CurveData}, {0, 0, CurveData},
                                            {0, 0, Close}});
}

TEST(ZDPathXPathRoundTrip, LeavesNoCountedObjectBehind)
{
    ZDPath path;
    path.moveTo(10.7, -3.2);
    path.cubicTo(QPointF(30, -20), QPointF(60, -10), QPointF(70, 20));
    path.lineTo(40, 50);
    path.closeSubpath();
    path.moveTo(100, 100);
    path.lineTo(120, 100);
    ZDPath back;
    const zgtest::Survivors survivors = zgtest::countSurvivors([&] { back = roundTrip(path); });
    zgtest::expectNoSurvivors(survivors);
    expectSameElements(back, path);
}

// Random round trips. Points lie on a grid of eighths, so that a control
// point turned into a handle and back is exact; anchors stand at least three
// units from the anchor before them and from the subpath's start.

namespace {

struct Piece
{
    bool cubic;
    QPointF c1;
    QPointF c2;
    QPointF end;
};

struct Subpath
{
    QPointF start;
    QVector<Piece> pieces; // a closed subpath's last piece ends on start
    bool closed;
};

// Twice the signed area swept about the origin by the piece from `from`:
// the integral of x dy - y dx, by three-point Gauss-Legendre quadrature,
// which is exact for the degree-5 integrand of a cubic.
double sweptArea2(const QPointF &from, const Piece &piece)
{
    if (!piece.cubic)
        return from.x() * piece.end.y() - piece.end.x() * from.y();
    const double nodes[3] = {0.5 - 0.5 * std::sqrt(0.6), 0.5, 0.5 + 0.5 * std::sqrt(0.6)};
    const double weights[3] = {5.0 / 18.0, 8.0 / 18.0, 5.0 / 18.0};
    const QPointF p[4] = {from, piece.c1, piece.c2, piece.end};
    double sum = 0.0;
    for (int k = 0; k < 3; ++k) {
        const double t = nodes[k];
        const double s = 1.0 - t;
        const QPointF point = p[0] * (s * s * s) + p[1] * (3 * s * s * t) + p[2] * (3 * s * t * t)
                              + p[3] * (t * t * t);
        const QPointF d = (p[1] - p[0]) * (3 * s * s) + (p[2] - p[1]) * (6 * s * t)
                          + (p[3] - p[2]) * (3 * t * t);
        sum += weights[k] * (point.x() * d.y() - point.y() * d.x());
    }
    return sum;
}

double area2(const Subpath &subpath)
{
    double sum = 0.0;
    QPointF from = subpath.start;
    for (const Piece &piece : subpath.pieces) {
        sum += sweptArea2(from, piece);
        from = piece.end;
    }
    return sum;
}

class RandomPaths
{
public:
    explicit RandomPaths(unsigned seed) : m_engine(seed) {}

    QVector<Subpath> next()
    {
        QVector<Subpath> subpaths;
        const int count = uniform(1, 4);
        for (int k = 0; k < count; ++k)
            subpaths.append(subpath());
        return subpaths;
    }

private:
    int uniform(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(m_engine); }

    QPointF gridPoint() { return QPointF(uniform(-800, 800) / 8.0, uniform(-800, 800) / 8.0); }

    static double distance(const QPointF &a, const QPointF &b)
    {
        return std::hypot(a.x() - b.x(), a.y() - b.y());
    }

    QPointF anchorAwayFrom(const QPointF &previous, const QPointF &start)
    {
        for (;;) {
            const QPointF p = gridPoint();
            if (distance(p, previous) >= 3.0 && distance(p, start) >= 3.0)
                return p;
        }
    }

    Piece piece(const QPointF &from, const QPointF &end)
    {
        Piece piece{uniform(0, 1) == 1, QPointF(), QPointF(), end};
        if (piece.cubic) {
            do {
                piece.c1 = gridPoint();
                piece.c2 = gridPoint();
            } while (piece.c1 == from && piece.c2 == end);
        }
        return piece;
    }

    Subpath subpath()
    {
        Subpath s;
        s.start = gridPoint();
        s.closed = uniform(0, 9) < 4;
        const int pieces = uniform(1, 5);
        QPointF from = s.start;
        for (int k = 0; k < pieces; ++k) {
            const QPointF end = anchorAwayFrom(from, s.start);
            s.pieces.append(piece(from, end));
            from = end;
        }
        if (s.closed) {
            s.pieces.append(piece(from, s.start));
            // Contours of next to no area have no sure orientation: keep them open.
            if (std::fabs(area2(s)) < 2.0) {
                s.pieces.removeLast();
                s.closed = false;
            }
        }
        return s;
    }

    std::mt19937 m_engine;
};

void appendPiece(ZDPath &path, const Piece &piece)
{
    if (piece.cubic)
        path.cubicTo(piece.c1, piece.c2, piece.end);
    else
        path.lineTo(piece.end);
}

ZDPath build(const QVector<Subpath> &subpaths)
{
    ZDPath path;
    for (const Subpath &s : subpaths) {
        path.moveTo(s.start);
        for (const Piece &piece : s.pieces)
            appendPiece(path, piece);
        if (s.closed)
            path.closeSubpath();
    }
    return path;
}

// A closed subpath drawn the other way round: it starts at the anchor before
// the start, and each piece runs backward with its control points swapped.
Subpath reversed(const Subpath &s)
{
    const int n = s.pieces.size();
    Subpath r;
    r.closed = true;
    r.start = s.pieces.at(n - 2).end;
    for (int k = n - 2; k >= 0; --k) {
        const Piece &p = s.pieces.at(k);
        const QPointF end = k > 0 ? s.pieces.at(k - 1).end : s.start;
        r.pieces.append(Piece{p.cubic, p.c2, p.c1, end});
    }
    const Piece &closing = s.pieces.at(n - 1);
    r.pieces.append(Piece{closing.cubic, closing.c2, closing.c1, r.start});
    return r;
}

// What the round trip gives: the same subpaths, except that a closed one at
// place 0 runs clockwise (non-negative area) and one at a later place
// counter-clockwise, turned round if it did not.
ZDPath expectedRoundTrip(const QVector<Subpath> &subpaths)
{
    QVector<Subpath> expected;
    for (int place = 0; place < subpaths.size(); ++place) {
        const Subpath &s = subpaths.at(place);
        const bool clockwise = area2(s) >= 0.0;
        expected.append(s.closed && clockwise != (place == 0) ? reversed(s) : s);
    }
    return build(expected);
}

} // namespace

TEST(ZDPathXPathRoundTrip, RandomPathsKeepEveryElement)
{
    RandomPaths random(20240611u);
    int closedSeen = 0;
    int reversedSeen = 0;
    for (int round = 0; round < 300; ++round) {
        const QVector<Subpath> subpaths = random.next();
        const ZDPath path = build(subpaths);
        const ZDPath expected = expectedRoundTrip(subpaths);
        for (int place = 0; place < subpaths.size(); ++place) {
            if (subpaths.at(place).closed) {
                ++closedSeen;
                if ((area2(subpaths.at(place)) >= 0.0) != (place == 0))
                    ++reversedSeen;
            }
        }
        SCOPED_TRACE(round);
        expectSameElements(roundTrip(path), expected);
        if (HasFailure())
            break;
    }
    // The sample covers closed subpaths kept and turned.
    EXPECT_GT(closedSeen, 100);
    EXPECT_GT(reversedSeen, 30);
}

TEST(ZDPathXPathRoundTrip, RandomPathsLeaveNoCountedObjectBehind)
{
    RandomPaths random(77u);
    const zgtest::Survivors survivors = zgtest::countSurvivors([&] {
        for (int round = 0; round < 40; ++round)
            roundTrip(build(random.next()));
    });
    zgtest::expectNoSurvivors(survivors);
}
