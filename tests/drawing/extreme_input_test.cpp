// Drawing paths under extreme input: NaN, infinite, huge (1e150) and tiny
// (1e-300) coordinates and parameters, an empty path and a path of one lone
// move, for building, conversions, set operations and relations, and the
// measures. Each case asserts the failure value of the operation, or that
// the call returns with a well-formed element list.
#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include "extreme_input.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <QtGui/QPainterPath>

#include <cmath>

using namespace extreme;

namespace {

ZDPath openLine()
{
    return linePath(100, 0);
}

// Smallest and largest coordinates of the elements.
QRectF elementBounds(const ZDPath &path)
{
    double left = INFINITY, top = INFINITY, right = -INFINITY, bottom = -INFINITY;
    for (const ZDPathElement &e : path.elements) {
        left = std::min(left, e.x);
        right = std::max(right, e.x);
        top = std::min(top, e.y);
        bottom = std::max(bottom, e.y);
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

// The paths every operation is fed: a closed square with one bad corner for
// each value, huge and tiny squares, an empty path and a lone move.
struct Case
{
    const char *name;
    ZDPath path;
    bool finite;
};

QVector<Case> badPaths()
{
    return {{"nan corner", squareWithBadCorner(kNaN), false},
            {"inf corner", squareWithBadCorner(kInf), false},
            {"-inf corner", squareWithBadCorner(-kInf), false},
            {"huge square", squarePath(0, 0, kHuge), true},
            {"huge offset", squarePath(kHuge, -kHuge, 10), true},
            {"tiny square", squarePath(0, 0, kTiny), true},
            {"empty", ZDPath(), true},
            {"single point", singlePoint(), true}};
}

} // namespace

// ---- Building and conversions ----------------------------------------------

TEST(DrawingExtremeInput, BuildingWithBadCoordinatesKeepsTheListWellFormed)
{
    for (double bad : allExtremes()) {
        ZDPath path;
        path.addLine(QPointF(0, 0), QPointF(bad, 5));
        path.addBezier(QPointF(bad, 5), QPointF(bad, bad), QPointF(3, bad), QPointF(7, 7));
        const QPointF pts[] = {QPointF(bad, 0), QPointF(1, bad), QPointF(2, 2)};
        path.addLines(pts, 3);
        path.closeSubpath();
        path.addRect(QRectF(bad, 0, 10, bad));
        path.translate(bad, 0);
        path.scale(bad, 1);
        EXPECT_WELL_FORMED(path) << bad;
        // A lone move closes to nothing.
        ZDPath lone = singlePoint(bad, bad);
        lone.closeSubpath();
        EXPECT_EQ(lone.count(), 1) << bad;
    }
}

TEST(DrawingExtremeInput, ArcsWithANaNParameterPlaceOnlyTheZeroPoint)
{
    // A NaN angle gives the arc no points and the zero point as its start:
    // on an empty list a move there, after a move a line there.
    for (double angle : {kNaN}) {
        ZDPath empty;
        empty.arcTo(QRectF(0, 0, 10, 10), angle, 90);
        ASSERT_EQ(empty.count(), 1);
        EXPECT_EQ(empty.elementAt(0).type, ZDMoveToElement);
        EXPECT_EQ(empty.elementAt(0).x, 0.0);
        EXPECT_EQ(empty.elementAt(0).y, 0.0);
        ZDPath moved = singlePoint(50, 50);
        moved.arcTo(QRectF(0, 0, 10, 10), 0, angle);
        ASSERT_EQ(moved.count(), 2);
        EXPECT_EQ(moved.elementAt(1).type, ZDLineToElement);
        EXPECT_EQ(moved.elementAt(1).x, 0.0);
        EXPECT_EQ(moved.elementAt(1).y, 0.0);
    }
    // Infinite and huge angles and rectangles: the call returns, well formed.
    for (double bad : allExtremes()) {
        ZDPath path = singlePoint(50, 50);
        path.arcTo(QRectF(0, 0, 10, 10), bad, 90);
        path.arcTo(QRectF(0, 0, 10, 10), 0, bad);
        path.arcTo(QRectF(bad, 0, 10, 10), 0, 90);
        path.ellipse(QRectF(0, 0, bad, 10));
        EXPECT_WELL_FORMED(path) << bad;
    }
    // A tiny rectangle is not empty, but narrower than 1e-12 it has no arc:
    // only the zero point is placed.
    ZDPath tiny;
    tiny.arcTo(QRectF(5, 5, kTiny, kTiny), 0, 90);
    ASSERT_EQ(tiny.count(), 1);
    EXPECT_EQ(tiny.elementAt(0).x, 0.0);
    EXPECT_EQ(tiny.elementAt(0).y, 0.0);
}

TEST(DrawingExtremeInput, EmptyRectanglesLeaveTheListAsItWas)
{
    ZDPath path = singlePoint();
    path.arcTo(QRectF(0, 0, 0, 10), 0, 90);
    path.ellipse(QRectF(5, 5, 10, 0));
    EXPECT_EQ(path.count(), 1);
}

TEST(DrawingExtremeInput, ConversionsOfBadPathsAreWellFormed)
{
    for (Case c : badPaths()) {
        XPath xpath;
        ZDPath source = c.path;
        source.toXPath(xpath);
        EXPECT_XPATH_WELL_FORMED(xpath) << c.name;
        ZDPath back;
        back.fromXPath(xpath);
        EXPECT_WELL_FORMED(back) << c.name;
        if (c.finite) {
            EXPECT_WELL_FORMED_FINITE(back) << c.name;
        }

        QPainterPath painter;
        c.path.toPainterPath(painter);
        ZDPath fromPainter;
        fromPainter.fromPainterPath(painter);
        EXPECT_WELL_FORMED(fromPainter) << c.name;
        QPainterPath rounded;
        c.path.toPainterPathWithRoundValue(rounded);
        ZDPath roundedPath = c.path;
        roundedPath.roundData();
        EXPECT_WELL_FORMED(roundedPath) << c.name;
        ZDPath reversed = c.path;
        reversed.reverse();
        EXPECT_EQ(reversed.count(), c.path.count()) << c.name;
        EXPECT_WELL_FORMED(reversed) << c.name;
        reversed.curveReverse();
        EXPECT_WELL_FORMED(reversed) << c.name;
    }
}

TEST(DrawingExtremeInput, EmptyAndSinglePointConvertToNoContour)
{
    for (ZDPath path : {ZDPath(), singlePoint()}) {
        XPath xpath;
        path.toXPath(xpath);
        EXPECT_TRUE(xpath.isEmpty());
        // The lone move is cleaned away.
        EXPECT_TRUE(path.isEmpty());
        ZDPath back;
        back.fromXPath(xpath);
        EXPECT_TRUE(back.isEmpty());
    }
    ZDPath empty;
    empty.curveReverse();
    empty.reverse();
    EXPECT_TRUE(empty.isEmpty());
    ZDPath lone = singlePoint();
    lone.reverse();
    ASSERT_EQ(lone.count(), 1);
    EXPECT_EQ(lone.elementAt(0).x, 3.0);
}

// ---- Set operations and relations ------------------------------------------

TEST(DrawingExtremeInput, BooleansWithBadOperandsReturnWellFormedPaths)
{
    for (const Case &c : badPaths()) {
        for (int op = 0; op < 3; ++op) {
            ZDPath self = c.path;
            ZDPath other = squarePath(5, 5, 10);
            ZDPath back = squarePath(5, 5, 10);
            ZDPath operand = c.path;
            if (op == 0) {
                self.unite(other);
                back.unite(operand);
            } else if (op == 1) {
                self.intersect(other);
                back.intersect(operand);
            } else {
                self.subtract(other);
                back.subtract(operand);
            }
            EXPECT_WELL_FORMED(self) << c.name << " op " << op;
            EXPECT_WELL_FORMED(back) << c.name << " op " << op;
            if (c.finite) {
                EXPECT_WELL_FORMED_FINITE(self) << c.name << " op " << op;
                EXPECT_WELL_FORMED_FINITE(back) << c.name << " op " << op;
            }
        }
    }
}

TEST(DrawingExtremeInput, BooleansWithAnEmptyOrSinglePointOperand)
{
    for (ZDPath nothing : {ZDPath(), singlePoint()}) {
        // The union and difference with no contour are the square itself.
        ZDPath united = squarePath(0, 0, 10);
        ZDPath operand = nothing;
        united.unite(operand);
        EXPECT_EQ(elementBounds(united), QRectF(0, 0, 10, 10));
        EXPECT_WELL_FORMED_FINITE(united);
        ZDPath difference = squarePath(0, 0, 10);
        difference.subtract(operand);
        EXPECT_EQ(elementBounds(difference), QRectF(0, 0, 10, 10));
        // The intersection with no contour has no child: the path empties.
        ZDPath common = squarePath(0, 0, 10);
        common.intersect(operand);
        EXPECT_TRUE(common.isEmpty());
        // No contour united with the square gives the square.
        ZDPath self = nothing;
        ZDPath square = squarePath(0, 0, 10);
        self.unite(square);
        EXPECT_EQ(elementBounds(self), QRectF(0, 0, 10, 10));
        // No contour less the square, or cut by it: nothing.
        ZDPath less = nothing;
        less.subtract(square);
        EXPECT_TRUE(less.isEmpty());
        ZDPath cut = nothing;
        cut.intersect(square);
        EXPECT_TRUE(cut.isEmpty());
    }
}

TEST(DrawingExtremeInput, HugeAndTinySquaresIntersectedWithThemselvesStayFinite)
{
    for (double size : {kHuge, kTiny, 1e-150}) {
        ZDPath a = squarePath(0, 0, size);
        ZDPath b = squarePath(0, 0, size);
        a.intersect(b);
        EXPECT_WELL_FORMED_FINITE(a) << size;
        for (const ZDPathElement &e : a.elements) {
            EXPECT_GE(e.x, 0.0);
            EXPECT_LE(e.x, size);
        }
    }
}

TEST(DrawingExtremeInput, RelationsOfBadPaths)
{
    zgtest::DeferredScope deferred; // dividePath leaves its crossing locations allocated
    for (const Case &c : badPaths()) {
        ZDPath self = c.path;
        ZDPath square = squarePath(5, 5, 10);
        for (const QPointF &p : self.crossPoints(square)) {
            if (c.finite) {
                EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y())) << c.name;
            }
        }
        self.bestCrossPoint(square);
        ZDPath evenOdd = c.path;
        evenOdd.evenOdd();
        EXPECT_WELL_FORMED(evenOdd) << c.name;
        EXPECT_GE(evenOdd.count(), c.path.count() - 1) << c.name;
        c.path.isEvenOdd();

        ZDPath divided = c.path;
        QPointF point(-7, -7);
        if (!divided.dividePath(square, point, false)) {
            EXPECT_EQ(point, QPointF(-7, -7)) << c.name;
        }
        EXPECT_WELL_FORMED(divided) << c.name;
        ZDPath dividedBefore = c.path;
        dividedBefore.dividePath(square, point, true);
        EXPECT_WELL_FORMED(dividedBefore) << c.name;

        ZDPath hit = c.path;
        const zgHitResult result = hit.hitTest(zgPoint(kNaN, kNaN), zgStyle(), zgHitOpt());
        EXPECT_EQ(result.type, zgHitNone) << c.name;
        EXPECT_FALSE(hit.containsPt(zgPoint(kNaN, 5), true, true, 1.0)) << c.name;
        EXPECT_FALSE(hit.containsPt(zgPoint(kInf, 5), true, true, 1.0)) << c.name;
        zgBoundOpt options;
        hit.getBounds(options, zgStyle(), nullptr);
    }
}

TEST(DrawingExtremeInput, RelationsOfEmptyAndSinglePointPaths)
{
    for (ZDPath nothing : {ZDPath(), singlePoint()}) {
        ZDPath square = squarePath(0, 0, 10);
        EXPECT_TRUE(nothing.crossPoints(square).isEmpty());
        EXPECT_TRUE(square.crossPoints(nothing).isEmpty());
        EXPECT_EQ(nothing.bestCrossPoint(square), QPointF(0, 0));
        EXPECT_FALSE(nothing.isEvenOdd());
        QPointF point(-7, -7);
        EXPECT_FALSE(square.dividePath(nothing, point, false));
        EXPECT_EQ(point, QPointF(-7, -7));
        EXPECT_EQ(square.count(), 5);
        EXPECT_FALSE(nothing.dividePath(square, point, true));
        EXPECT_EQ(point, QPointF(-7, -7));
        EXPECT_FALSE(nothing.intersects(square));
        EXPECT_FALSE(nothing.containsPt(zgPoint(5, 5), true, true, 1.0));
        EXPECT_EQ(nothing.hitTest(zgPoint(5, 5), zgStyle(), zgHitOpt()).type, zgHitNone);
        ZDPath evenOdd = nothing;
        evenOdd.evenOdd();
        EXPECT_TRUE(evenOdd.isEmpty());
        // getSimilarPoint: point itself when either path is empty.
        ZDPath empty;
        const QPointF same = ZDPath::getSimilarPoint(empty, square, zgPoint(1, 2), QRectF(0, 0, 4, 4));
        EXPECT_EQ(same, QPointF(1, 2));
        const QPointF same2 = ZDPath::getSimilarPoint(square, empty, zgPoint(1, 2), QRectF(0, 0, 4, 4));
        EXPECT_EQ(same2, QPointF(1, 2));
    }
}

TEST(DrawingExtremeInput, SimilarPointOfANaNPointIsTheNaNNearestPoint)
{
    // Every distance is NaN, so none equals the smallest: the result is the
    // nearest point of the new path to the NaN point, a NaN point.
    ZDPath oldPath = openLine();
    ZDPath newPath = linePath(0, 100);
    const QPointF p = ZDPath::getSimilarPoint(oldPath, newPath, zgPoint(kNaN, kNaN), QRectF(0, 0, 4, 4));
    EXPECT_TRUE(std::isnan(p.x()) && std::isnan(p.y()));
    // Far points and huge boxes return, with no hang.
    for (double bad : allExtremes()) {
        ZDPath a = openLine();
        ZDPath b = linePath(0, 100);
        ZDPath::getSimilarPoint(a, b, zgPoint(bad, 3), QRectF(0, 0, 4, 4));
        ZDPath::getSimilarPoint(a, b, zgPoint(50, 3), QRectF(0, 0, bad, 4));
    }
}

TEST(DrawingExtremeInput, HitTestsWithBadPointsFindNothing)
{
    ZDPath square = squarePath(0, 0, 10);
    for (double bad : nonFinite()) {
        EXPECT_FALSE(square.containsPt(zgPoint(bad, 5), true, true, 1.0)) << bad;
        EXPECT_FALSE(square.containsPt(zgPoint(5, bad), true, false, 0.0)) << bad;
        EXPECT_EQ(square.hitTest(zgPoint(bad, bad), zgStyle(), zgHitOpt()).type, zgHitNone) << bad;
    }
    EXPECT_FALSE(square.containsPt(zgPoint(kHuge, 5), true, true, 1.0));
    EXPECT_TRUE(square.containsPt(zgPoint(kTiny, 5), true, false, 0.0));
    // A NaN or infinite tolerance finds nothing away from the outline.
    EXPECT_FALSE(square.containsPt(zgPoint(50, 50), false, true, kNaN));
}

// ---- Measures ----------------------------------------------------------------

TEST(DrawingExtremeInput, MeasuresOfEmptyAndSinglePointPaths)
{
    for (ZDPath path : {ZDPath(), singlePoint()}) {
        EXPECT_EQ(path.getLength(), 0.0);
        EXPECT_EQ(path.getLength(zgPoint(3, 4)), -1.0);
        EXPECT_EQ(path.getPathProportionFromPoint(zgPoint(3, 4)), -1.0);
        EXPECT_TRUE(nanPoint(path.getPointAt(0.5)));
        EXPECT_TRUE(nanPoint(path.getPointAt(0.0)));
        EXPECT_EQ(path.pointAtPercent(0.5), QPointF(0, 0));
        EXPECT_TRUE(nanPoint(path.getPointFromCurveProportion(0, 0.5)));
        EXPECT_TRUE(nanPoint(path.getNearestPoint(zgPoint(3, 4))));
        EXPECT_TRUE(nanPoint(path.getTangentAt(zgPoint(3, 4))));
        EXPECT_EQ(path.getTangent(0, true), 0.0);
        EXPECT_EQ(path.getTangent(0, false), 0.0);
        QPointF start(-1, -1), next(-1, -1), end(-1, -1), prev(-1, -1);
        int index = 0;
        EXPECT_EQ(path.getOpenedStart(start, next, index), -1);
        index = 0;
        int moveIndex = 5;
        EXPECT_EQ(path.getOpenedEnd(end, prev, index, moveIndex), -1);
        EXPECT_EQ(next, QPointF(-1, -1));
        EXPECT_EQ(prev, QPointF(-1, -1));
    }
}

TEST(DrawingExtremeInput, MeasuresWithBadParametersGiveTheirFailureValues)
{
    for (double bad : nonFinite()) {
        ZDPath line = openLine();
        EXPECT_TRUE(nanPoint(line.getPointAt(bad))) << bad;
        EXPECT_EQ(line.getLength(zgPoint(bad, 0)), -1.0) << bad;
        EXPECT_EQ(line.getLength(zgPoint(50, bad)), -1.0) << bad;
        EXPECT_EQ(line.getPathProportionFromPoint(zgPoint(bad, 0)), -1.0) << bad;
        EXPECT_TRUE(nanPoint(line.getNearestPoint(zgPoint(bad, 0)))) << bad;
        EXPECT_TRUE(nanPoint(line.getNearestPoint(zgPoint(bad, bad)))) << bad;
        EXPECT_TRUE(nanPoint(line.getTangentAt(zgPoint(bad, 0)))) << bad;
        // No location at a NaN or infinite offset: (0, 0).
        EXPECT_EQ(line.pointAtPercent(bad), QPointF(0, 0)) << bad;
        const zgPoint onCurve = line.getPointFromCurveProportion(0, bad);
        EXPECT_FALSE(finitePoint(onCurve)) << bad;
    }
    ZDPath line = openLine();
    // Shares beyond 0 to 1 and curve indices beyond the list: NaN points.
    for (double t : {kHuge, -kHuge, -kTiny, 1.0 + 1e-15})
        EXPECT_TRUE(nanPoint(line.getPointAt(t))) << t;
    for (int i : {-1, 1, INT_MAX, INT_MIN})
        EXPECT_TRUE(nanPoint(line.getPointFromCurveProportion(i, 0.5))) << i;
    // Points farther than 1e8 from every curve.
    EXPECT_TRUE(nanPoint(line.getNearestPoint(zgPoint(kHuge, 0))));
    EXPECT_TRUE(nanPoint(line.getNearestPoint(zgPoint(0, -kHuge))));
    EXPECT_EQ(line.getLength(zgPoint(kHuge, 0)), -1.0);
    EXPECT_TRUE(nanPoint(line.getTangentAt(zgPoint(kHuge, 0))));
    // Tiny values are ordinary ones.
    const zgPoint nearStart = line.getPointAt(kTiny);
    EXPECT_NEAR(nearStart.x, 0.0, 1e-12);
    EXPECT_EQ(nearStart.y, 0.0);
    EXPECT_NEAR(line.getLength(zgPoint(kTiny, 0)), 0.0, 1e-12);
    const zgPoint nearest = line.getNearestPoint(zgPoint(kTiny, 5));
    EXPECT_NEAR(nearest.x, 0.0, 1e-12);
    EXPECT_EQ(nearest.y, 0.0);
    // Start indices beyond the list or below it.
    EXPECT_EQ(line.getTangent(INT_MAX, true), 0.0);
    EXPECT_EQ(line.getTangent(-5, true), 0.0 /* along +x */);
    QPointF start, next;
    int index = INT_MAX;
    EXPECT_EQ(line.getOpenedStart(start, next, index), -1);
}

TEST(DrawingExtremeInput, MeasuresOfBadPathsReturnTheirFailureValuesOrFiniteOnes)
{
    for (const Case &c : badPaths()) {
        ZDPath path = c.path;
        const double length = path.getLength();
        if (c.finite) {
            EXPECT_TRUE(std::isfinite(length)) << c.name;
            EXPECT_GE(length, 0.0) << c.name;
        }
        const double at = path.getLength(zgPoint(0, 0));
        EXPECT_TRUE(at == -1.0 || at >= 0.0 || std::isnan(at)) << c.name;
        const double share = path.getPathProportionFromPoint(zgPoint(0, 0));
        EXPECT_TRUE(share == -1.0 || (share >= 0.0 && share <= 1.0) || std::isnan(share)) << c.name;
        for (double t : {0.0, 0.5, 1.0}) {
            const zgPoint p = path.getPointAt(t);
            if (c.finite) {
                EXPECT_TRUE(nanPoint(p) || finitePoint(p)) << c.name;
            }
        }
        path.pointAtPercent(0.5);
        path.getPointFromCurveProportion(1, 0.5);
        const zgPoint nearest = path.getNearestPoint(zgPoint(1, 1));
        if (c.finite) {
            EXPECT_TRUE(nanPoint(nearest) || finitePoint(nearest)) << c.name;
        }
        path.getTangentAt(zgPoint(0, 0));
        const double angle = path.getTangent(0, true);
        if (c.finite) {
            EXPECT_TRUE(std::isfinite(angle)) << c.name;
        }
        path.isClockWise();
    }
}

TEST(DrawingExtremeInput, HugeAndTinyLinesMeasureExactly)
{
    ZDPath huge = linePath(kHuge, 0);
    EXPECT_DOUBLE_EQ(huge.getLength(), kHuge);
    const zgPoint middle = huge.getPointAt(0.5);
    EXPECT_NEAR(middle.x, kHuge / 2, kHuge * 1e-12);
    EXPECT_EQ(middle.y, 0.0);
    EXPECT_NEAR(huge.getTangent(0, true), 0.0, 1e-12);
    // A point 1e150 along lies farther than 1e8 from... nothing: it is on it.
    EXPECT_NEAR(huge.getLength(zgPoint(kHuge / 2, 0)), kHuge / 2, kHuge * 1e-12);
}

TEST(DrawingExtremeInput, ElementScansOfBadPoints)
{
    // No point of the subpath differs from a NaN start, or from the start by
    // a NaN: -1, with next, prev and index unwritten.
    ZDPath nanLine;
    nanLine.moveTo(0, 0);
    nanLine.lineTo(kNaN, kNaN);
    QPointF start(-1, -1), next(-1, -1);
    int index = 0;
    EXPECT_EQ(nanLine.getOpenedStart(start, next, index), -1);
    EXPECT_EQ(next, QPointF(-1, -1));
    EXPECT_EQ(index, 0);
    QPointF end(-1, -1), prev(-1, -1);
    int moveIndex = 7;
    EXPECT_EQ(nanLine.getOpenedEnd(end, prev, index, moveIndex), -1);
    EXPECT_EQ(prev, QPointF(-1, -1));
    // A tiny step is within 0.0001 of the start: no open start either.
    ZDPath tiny = linePath(kTiny, 0);
    index = 0;
    EXPECT_EQ(tiny.getOpenedStart(start, next, index), -1);
    // A huge one is found.
    ZDPath huge = linePath(kHuge, 0);
    index = 0;
    ASSERT_EQ(huge.getOpenedStart(start, next, index), 0);
    EXPECT_EQ(next, QPointF(kHuge, 0));
    EXPECT_EQ(index, 2);
    // The orientation of no subpath: an empty contour, area 0, clockwise.
    EXPECT_TRUE(ZDPath().isClockWise());
    EXPECT_TRUE(singlePoint().isClockWise());
}
