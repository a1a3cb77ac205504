// The object graph under extreme input: drawing commands with NaN,
// infinite, huge (1e150) and tiny (1e-300) arguments, on empty contours and
// on contours of one lone segment; curve objects at bad times and offsets;
// compounds without children; transforms by bad matrices. Each case asserts
// the defined result (nothing drawn, null, a NaN point) or a contour that
// stays well formed: its curve count matching its segments.
#include <zgraphics/model.h>

#include "extreme_input.h"

#include <gtest/gtest.h>

#include <memory>

using namespace extreme;

namespace {

// The curves of an open contour are one fewer than its segments, of a
// closed one as many (none without segments).
void expectCurvesMatch(zgPath *path)
{
    const int n = path->segments.size();
    const int expected = n == 0 ? 0 : (path->isClosed() ? n : n - 1);
    EXPECT_EQ(path->getCurves().size(), expected);
}

bool finiteSegments(zgPath *path)
{
    for (zgSegment *s : path->segments) {
        if (!finitePoint(s->point) || !finitePoint(s->handleIn) || !finitePoint(s->handleOut))
            return false;
    }
    return true;
}

// Every drawing command that needs a current point, with value v in its arguments.
void drawFromTheCurrentPoint(zgPath *path, double v)
{
    path->lineBy(zgPoint(v, v));
    path->cubicCurveTo(zgPoint(v, 0), zgPoint(1, v), zgPoint(5, 5));
    path->cubicCurveBy(zgPoint(v, 0), zgPoint(1, v), zgPoint(5, 5));
    path->quadraticCurveTo(zgPoint(v, 3), zgPoint(9, 9));
    path->quadraticCurveBy(zgPoint(v, 3), zgPoint(9, 9));
    path->curveTo(zgPoint(v, 3), zgPoint(12, 12), 0.5);
    path->curveTo(zgPoint(3, 3), zgPoint(12, 15), v);
    path->curveBy(zgPoint(v, 3), zgPoint(12, 12), 0.5);
    path->arcTo(zgPoint(v, 20), zgSize(5, 5), 0, true, false);
    path->arcTo(zgPoint(30, 20), zgSize(v, 5), v, true, true);
    path->arcBy(zgPoint(v, 20), zgSize(5, 5), 0, false, false);
    path->arcBy(zgPoint(30, 20), zgSize(5, v), 0, false, false);
}

// All of them, and those that start a contour by themselves.
void drawEverything(zgPath *path, double v)
{
    path->lineTo(v, 1);
    path->lineToPt(zgPoint(2, v));
    drawFromTheCurrentPoint(path, v);
    path->arcTo2(zgRect(0, 0, v, 10), v, 90);
}

} // namespace

TEST(ModelExtremeInput, CommandsOnAnEmptyContourDrawNothing)
{
    for (double v : {1.0, kNaN, kInf, kHuge, kTiny}) {
        Held path(new zgPath(nullptr, false));
        drawFromTheCurrentPoint(path.get(), v);
        EXPECT_TRUE(path->isEmpty()) << v;
        path->closePath(1.0);
        EXPECT_TRUE(path->isEmpty()) << v;
        // A line needs no current point: it adds its segment.
        path->lineTo(v, 1);
        EXPECT_EQ(path->segments.size(), 1) << v;
    }
}

TEST(ModelExtremeInput, CommandsWithBadArgumentsKeepTheContourWellFormed)
{
    for (double v : allExtremes()) {
        Held path(new zgPath(nullptr, false));
        path->moveTo(0, 0);
        drawEverything(path.get(), v);
        EXPECT_GE(path->segments.size(), 2) << v;
        expectCurvesMatch(path.get());
        path->closePath(v);
        expectCurvesMatch(path.get());
        // Tiny values draw finite contours. Huge ones too, except where a
        // huge radius meets a huge distance: the elliptic arc's frame scales
        // by the radius grown to the distance, beyond the double range.
        if (std::fabs(v) < 1.0) {
            EXPECT_TRUE(finiteSegments(path.get())) << v;
        }
    }
}

TEST(ModelExtremeInput, ArcToAFarPointHasAFiniteCentre)
{
    // Radii grown to reach a point 1e150 away have fourth powers beyond the
    // double range; the centre comes from the quotients instead (it used to
    // be NaN, and with it every point of the arc).
    for (double far : {kHuge, -kHuge, 1e100}) {
        Held path(new zgPath(nullptr, false));
        path->moveTo(0, 0);
        path->arcTo(zgPoint(far, 20), zgSize(5, 5), 0, true, false);
        ASSERT_GE(path->segments.size(), 2) << far;
        EXPECT_TRUE(finiteSegments(path.get())) << far;
        EXPECT_EQ(path->getLastSegment()->point.x, far);
        EXPECT_EQ(path->getLastSegment()->point.y, 20.0);
    }
    // Ordinary arcs are drawn as before: a half circle of radius 5 from
    // (0, 0) to (10, 0) through (5, -5) or (5, 5).
    Held path(new zgPath(nullptr, false));
    path->moveTo(0, 0);
    path->arcTo(zgPoint(10, 0), zgSize(5, 5), 0, true, false);
    EXPECT_TRUE(finiteSegments(path.get()));
    EXPECT_EQ(path->getLastSegment()->point.x, 10.0);
}

TEST(ModelExtremeInput, CurveThroughAPointAtAnEndOrNaNTimeDrawsNothing)
{
    for (double t : {0.0, 1.0, kNaN}) {
        Held path(new zgPath(nullptr, false));
        path->moveTo(0, 0);
        path->curveTo(zgPoint(5, 5), zgPoint(10, 0), t);
        EXPECT_EQ(path->segments.size(), 1) << t;
    }
}

TEST(ModelExtremeInput, MoveToOnALoneSegmentReplacesIt)
{
    for (double v : allExtremes()) {
        Held path(new zgPath(nullptr, false));
        path->moveTo(3, 4);
        path->moveTo(v, v);
        ASSERT_EQ(path->segments.size(), 1);
        EXPECT_TRUE(path->segments.at(0)->point.x == v || std::isnan(v));
    }
}

TEST(ModelExtremeInput, EllipsesOfBadRectanglesReturn)
{
    for (double v : allExtremes()) {
        Held path(new zgPath(nullptr, false));
        path->ellipse(zgRect(0, 0, v, 10));
        expectCurvesMatch(path.get());
        Held other(new zgPath(nullptr, false));
        other->ellipse(zgRect(v, v, 10, 10));
        expectCurvesMatch(other.get());
        if (std::isfinite(v) && std::fabs(v) > 1e-12) {
            EXPECT_TRUE(finiteSegments(other.get())) << v;
        }
    }
}

TEST(ModelExtremeInput, TransformsByBadMatrices)
{
    for (double v : allExtremes()) {
        Held path(new zgPath(nullptr, true));
        path->moveTo(0, 0);
        path->lineTo(10, 0);
        path->lineTo(10, 10);
        zgMatrix matrix(v, 0, 0, v, v, 0);
        path->transformContent(&matrix);
        EXPECT_EQ(path->segments.size(), 3);
        expectCurvesMatch(path.get());
    }
    Held empty(new zgPath(nullptr, true));
    zgMatrix nan(kNaN, 0, 0, kNaN, 0, 0);
    empty->transformContent(&nan);
    EXPECT_TRUE(empty->isEmpty());
    EXPECT_FALSE(empty->transformContent(nullptr) && !empty->isEmpty());
}

TEST(ModelExtremeInput, CurveObjectsAtBadTimesAndOffsets)
{
    zgCurve *curve = new zgCurve({0, 0, 30, 60, 70, 60, 100, 0}, nullptr);
    curve->addRef();
    for (double t : {kNaN, kInf, -kInf, kHuge, -kTiny}) {
        EXPECT_TRUE(nanPoint(curve->getPointAtTime(t))) << t;
        EXPECT_TRUE(nanPoint(curve->getTangentAtTime(t))) << t;
        EXPECT_TRUE(std::isnan(curve->getCurvatureAtTime(t))) << t;
        EXPECT_TRUE(nanPoint(curve->getPointAt(t, true))) << t;
        EXPECT_EQ(curve->divideAtTime(t, false), nullptr) << t;
        EXPECT_EQ(curve->getLocationAtTime(t), nullptr) << t;
    }
    // Offsets beyond the curve, or no offset: NaN results.
    for (double offset : {kNaN, kInf, -kInf, kHuge, -kHuge}) {
        EXPECT_TRUE(nanPoint(curve->getPointAt(offset, false))) << offset;
        EXPECT_TRUE(nanPoint(curve->getTangentAt(offset, false))) << offset;
        EXPECT_EQ(curve->getTimeAt(offset), -100.0) << offset;
    }
    // A tiny time lies within 4e-07 of the start: no division there.
    EXPECT_EQ(curve->divideAtTime(kTiny, false), nullptr);
    // A free curve has no path to remove from.
    EXPECT_FALSE(curve->remove());
    curve->release();

    // Fewer than eight values read as zeros.
    zgCurve *shortCurve = new zgCurve({kNaN, 1}, nullptr);
    shortCurve->addRef();
    EXPECT_EQ(shortCurve->getPoint2().x, 0.0);
    EXPECT_TRUE(std::isnan(shortCurve->getPoint1().x));
    shortCurve->release();
}

TEST(ModelExtremeInput, LoneSegmentsAndEmptyContours)
{
    for (bool closed : {false, true}) {
        Held empty(new zgPath(nullptr, closed));
        EXPECT_TRUE(empty->getCurves().isEmpty());
        EXPECT_EQ(empty->getFirstSegment(), nullptr);
        EXPECT_EQ(empty->getLastSegment(), nullptr);
        EXPECT_EQ(empty->getFirstCurve(), nullptr);
        EXPECT_EQ(empty->getLastCurve(), nullptr);
        EXPECT_FALSE(empty->removeSegment(0));
        EXPECT_FALSE(empty->removeSegment(-1));
        empty->reverse();
        empty->reduce(true);
        EXPECT_TRUE(empty->isEmpty());
        zgPath *copy = empty->clone();
        EXPECT_TRUE(copy->isEmpty());
        copy->addRef();
        copy->release();

        Held lone(new zgPath(nullptr, closed));
        lone->addSegment(new zgSegment(kNaN, 4));
        expectCurvesMatch(lone.get());
        lone->reverse();
        lone->reduce(true);
        EXPECT_EQ(lone->segments.size(), 1);
        EXPECT_FALSE(lone->removeSegment(5));
        EXPECT_FALSE(lone->removeSegment(INT_MIN));
    }
}

TEST(ModelExtremeInput, CompoundsWithoutChildren)
{
    XPath empty;
    EXPECT_EQ(empty.getFirstChild(), nullptr);
    EXPECT_EQ(empty.getLastChild(), nullptr);
    EXPECT_TRUE(empty.getCurves().isEmpty());
    EXPECT_FALSE(empty.isClockwise());
    empty.reverse();
    empty.setClockwise(true);
    EXPECT_EQ(empty.reduce(true), &empty);
    std::unique_ptr<XPath> copy(empty.clone());
    EXPECT_TRUE(copy->isEmpty());
    empty.addChild(nullptr);
    EXPECT_TRUE(empty.isEmpty());
    empty.removeChildren(0, -1);
    empty.removeChildren(5, 2);
    EXPECT_TRUE(empty.isEmpty());
    zgStyle style;
    zgBoundOpt options;
    const zgRect bounds = empty.getBounds(options, style, nullptr);
    EXPECT_EQ(bounds.width, 0.0);
    EXPECT_EQ(bounds.height, 0.0);
}
