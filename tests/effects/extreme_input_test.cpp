// The line-shape effects under extreme input: NaN, infinite, huge (1e150)
// and tiny (1e-300) coordinates and parameters, an empty path and a path of
// one lone move, for the parallel and thick outlines, waves, hand-drawn
// lines, corner rounding, line heads and extension, knot paths, smoothing
// and the curve stepper. Each case asserts the defined result (an unchanged
// or empty path, the start-and-finish wave, false, -1) or that the call
// returns with a well-formed element list, finite for finite input.
#include <zgraphics/drawing.h>

#include "extreme_input.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>

using namespace extreme;

namespace {

// A 100 x 100 square from (0, 0) with a cubic side, closed.
ZDPath curvedSquare(double scale = 1.0)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(100 * scale, 0);
    path.cubicTo(QPointF(130 * scale, 30 * scale), QPointF(130 * scale, 70 * scale),
                 QPointF(100 * scale, 100 * scale));
    path.lineTo(0, 100 * scale);
    path.elements.append(ZDPathElement(0, 0, ZDCloseElement));
    return path;
}

// An open polyline with a cubic in the middle.
ZDPath openCurve(double scale = 1.0)
{
    ZDPath path;
    path.moveTo(0, 0);
    path.lineTo(50 * scale, 0);
    path.cubicTo(QPointF(80 * scale, 0), QPointF(100 * scale, 20 * scale),
                 QPointF(100 * scale, 50 * scale));
    path.lineTo(100 * scale, 120 * scale);
    return path;
}

QVector<ZDPath> finiteSources()
{
    return {curvedSquare(), openCurve(), curvedSquare(1e148), openCurve(1e148), openCurve(1e-298)};
}

QVector<ZDPath> nonFiniteSources()
{
    QVector<ZDPath> sources;
    for (double bad : nonFinite()) {
        ZDPath square = curvedSquare();
        square.elements[2].x = bad;
        sources.append(square);
        ZDPath open = openCurve();
        open.elements[4].y = bad;
        sources.append(open);
    }
    return sources;
}

// The size of a source in units of the 100-unit sources: steps and
// wavelengths are scaled with it, so that huge sources take as few samples as
// ordinary ones.
double scaleOf(const ZDPath &path)
{
    double extent = 0.0;
    for (const ZDPathElement &e : path.elements)
        extent = std::max(extent, std::max(std::fabs(e.x), std::fabs(e.y)));
    return extent / 100.0;
}

// The extremes whose work stays small: a tiny step or wavelength takes the
// effects to their sample caps, which their own tests cover once.
QVector<double> cheapExtremes()
{
    return {kNaN, kInf, -kInf, kHuge, -kHuge, -kTiny};
}

bool sameElements(const ZDPath &a, const ZDPath &b)
{
    if (a.count() != b.count())
        return false;
    for (int i = 0; i < a.count(); ++i) {
        const ZDPathElement &x = a.elementAt(i), &y = b.elementAt(i);
        const bool samePoint = (x.x == y.x || (std::isnan(x.x) && std::isnan(y.x)))
                && (x.y == y.y || (std::isnan(x.y) && std::isnan(y.y)));
        if (!samePoint || x.type != y.type || x.auxX != y.auxX || x.auxY != y.auxY)
            return false;
    }
    return true;
}

} // namespace

// ---- Parallel outline --------------------------------------------------------

TEST(EffectsExtremeInput, ParallelOutlineOfEmptyAndSinglePointPaths)
{
    const ZDPath marker = linePath(1, 2);
    ZDPath empty;
    ZDPath out = marker;
    empty.parallelPath(out, 5, 1);
    EXPECT_TRUE(sameElements(out, marker));
    // A lone move has no side to offset: nothing beyond its own point.
    ZDPath lone = singlePoint();
    ZDPath loneOut;
    lone.parallelPath(loneOut, 5, 1);
    EXPECT_LE(loneOut.count(), 1);
    EXPECT_WELL_FORMED_FINITE(loneOut);
}

TEST(EffectsExtremeInput, ParallelOutlineWithBadParameters)
{
    for (const ZDPath &source : finiteSources()) {
        for (double bad : cheapExtremes()) {
            ZDPath path = source;
            ZDPath byDistance;
            path.parallelPath(byDistance, bad, 5 * scaleOf(source));
            EXPECT_WELL_FORMED(byDistance) << bad;
            ZDPath byStep;
            path.parallelPath(byStep, 5, bad);
            EXPECT_WELL_FORMED(byStep) << bad;
            EXPECT_GT(byStep.count(), 1) << bad;
            if (std::isfinite(bad)) {
                EXPECT_WELL_FORMED_FINITE(byDistance) << bad;
            }
            // Every step, tiny and huge ones as well, leaves finite samples.
            EXPECT_WELL_FORMED_FINITE(byStep) << bad;
        }
    }
    for (const ZDPath &source : nonFiniteSources()) {
        ZDPath path = source;
        ZDPath out;
        path.parallelPath(out, 5, 1);
        EXPECT_WELL_FORMED(out);
    }
}

TEST(EffectsExtremeInput, ParallelOutlineOfATinyStepIsBoundedPerCurve)
{
    // One cubic: its samples stop after 2^20, the offset end follows.
    ZDPath path;
    path.moveTo(0, 0);
    path.cubicTo(QPointF(30, 0), QPointF(60, 10), QPointF(100, 40));
    ZDPath out;
    path.parallelPath(out, 2, kTiny);
    EXPECT_GT(out.count(), 1000);
    EXPECT_LE(out.count(), (1 << 20) + 2);
    EXPECT_WELL_FORMED_FINITE(out);
}

// ---- Thick outline -------------------------------------------------------------

TEST(EffectsExtremeInput, ThickOutlineLeavesThePathUnchangedWhereDefined)
{
    const ZDPath before = linePath(7, 8);
    for (ZDPath source : {ZDPath(), singlePoint()}) {
        ZDPath path = before;
        path.thickPath(source, 5, 5, 1);
        EXPECT_TRUE(sameElements(path, before));
    }
    // A step that is not a finite number above 0.
    for (double step : {0.0, -1.0, kNaN, kInf, -kInf, -kTiny, -kHuge}) {
        ZDPath path = before;
        ZDPath source = openCurve();
        path.thickPath(source, 5, 5, step);
        EXPECT_TRUE(sameElements(path, before)) << step;
    }
}

TEST(EffectsExtremeInput, ThickOutlineWithBadWidthsAndSteps)
{
    for (const ZDPath &source : finiteSources()) {
        for (double step : {kHuge, 1e-3}) {
            ZDPath src = source;
            ZDPath path;
            path.thickPath(src, 5, 5, step);
            EXPECT_GT(path.count(), 0) << step;
            EXPECT_WELL_FORMED(path) << step;
        }
        for (double width : allExtremes()) {
            ZDPath src = source;
            ZDPath path;
            path.thickPath(src, width, 5, 3 * scaleOf(source));
            EXPECT_WELL_FORMED(path) << width;
            ZDPath other;
            other.thickPath(src, 5, width, 3 * scaleOf(source));
            EXPECT_WELL_FORMED(other) << width;
        }
    }
    for (const ZDPath &source : nonFiniteSources()) {
        ZDPath src = source;
        ZDPath path;
        path.thickPath(src, 5, 5, 3);
        EXPECT_WELL_FORMED(path);
    }
}

TEST(EffectsExtremeInput, ThickOutlineOfATinyStepIsCappedPerCurve)
{
    // A curve of about 130 units: 100000 samples on each side at most.
    ZDPath source;
    source.moveTo(0, 0);
    source.cubicTo(QPointF(30, 0), QPointF(60, 10), QPointF(100, 40));
    ZDPath path;
    path.thickPath(source, 3, 3, kTiny);
    EXPECT_GT(path.count(), 1000);
    EXPECT_LE(path.count(), 14 + 6 * 100001);
    EXPECT_WELL_FORMED_FINITE(path);
}

// ---- Waves and hand-drawn lines ------------------------------------------------

TEST(EffectsExtremeInput, WaveOfEmptyAndSinglePointPathsAppendsNothing)
{
    const ZDPath marker = linePath(1, 2);
    for (ZDPath source : {ZDPath(), singlePoint()}) {
        for (int kind = -1; kind <= 7; ++kind) {
            ZDPath out = marker;
            source.wavePath(out, kind, 10, 3, 0.5);
            EXPECT_TRUE(sameElements(out, marker)) << kind;
        }
    }
}

TEST(EffectsExtremeInput, WaveWithBadParameters)
{
    for (const ZDPath &source : finiteSources()) {
        for (int kind = 0; kind <= 6; ++kind) {
            // Wavelengths without a finite count: start and finish alone.
            for (double wavelength : {kNaN, kInf, -kInf, 0.0}) {
                ZDPath path = source;
                ZDPath out;
                path.wavePath(out, kind, wavelength, 3, 0.5);
                EXPECT_LE(out.count(), 5) << kind;
                EXPECT_WELL_FORMED(out) << kind;
            }
            // Tiny and huge wavelengths, amplitudes and smoothness values.
            for (double bad : {kHuge, -kHuge, -kTiny}) {
                ZDPath path = source;
                ZDPath out;
                path.wavePath(out, kind, bad, 3, 0.5);
                EXPECT_WELL_FORMED_FINITE(out) << kind << " " << bad;
                EXPECT_LE(out.count(), 6 * 100000 + 10);
                ZDPath amplitude;
                path.wavePath(amplitude, kind, 10 * scaleOf(source), bad, bad);
                EXPECT_WELL_FORMED(amplitude) << kind << " " << bad;
            }
            ZDPath path = source;
            ZDPath out;
            path.wavePath(out, kind, 10 * scaleOf(source), kNaN, kInf);
            EXPECT_WELL_FORMED(out) << kind;
        }
    }
    for (const ZDPath &source : nonFiniteSources()) {
        for (int kind = 0; kind <= 6; ++kind) {
            ZDPath path = source;
            ZDPath out;
            path.wavePath(out, kind, 10, 3, 0.5);
            EXPECT_WELL_FORMED(out) << kind;
        }
    }
}

TEST(EffectsExtremeInput, TinyWavelengthsAndStepsStayWithinTheirCaps)
{
    ZDPath source = curvedSquare();
    for (int kind = 0; kind <= 6; ++kind) {
        ZDPath out;
        source.wavePath(out, kind, kTiny, 3, 0.5);
        EXPECT_WELL_FORMED_FINITE(out) << kind;
        EXPECT_GE(out.count(), 100000) << kind;
        EXPECT_LE(out.count(), 6 * 100000 + 4) << kind;
    }
    ZDPath handDrawn;
    handDrawn.manualPath(source, 3, kTiny);
    EXPECT_WELL_FORMED_FINITE(handDrawn);
    EXPECT_GE(handDrawn.count(), (1 << 20) - 2);
    EXPECT_LE(handDrawn.count(), (1 << 20) + 3);
}

TEST(EffectsExtremeInput, HandDrawnLineOfEmptyAndSinglePointSources)
{
    const ZDPath before = linePath(7, 8);
    ZDPath empty;
    ZDPath path = before;
    path.manualPath(empty, 3, 1);
    EXPECT_TRUE(sameElements(path, before));
    // A lone move is a non-empty source without a contour: the path empties.
    ZDPath lone = singlePoint();
    path.manualPath(lone, 3, 1);
    EXPECT_TRUE(path.isEmpty());
}

TEST(EffectsExtremeInput, HandDrawnLineWithBadParameters)
{
    for (const ZDPath &source : finiteSources()) {
        for (double step : cheapExtremes()) {
            ZDPath src = source;
            ZDPath path;
            path.manualPath(src, 3, step);
            EXPECT_WELL_FORMED_FINITE(path) << step;
            EXPECT_LE(path.count(), 3 * ((1 << 20) + 3));
            // The ends of the open source stay fixed.
            const ZDPath cleaned = src;
            EXPECT_EQ(path.elementAt(0).x, cleaned.elementAt(0).x);
        }
        for (double amplitude : allExtremes()) {
            ZDPath src = source;
            ZDPath path;
            path.manualPath(src, amplitude, 7 * scaleOf(source));
            EXPECT_WELL_FORMED(path) << amplitude;
        }
    }
    for (const ZDPath &source : nonFiniteSources()) {
        ZDPath src = source;
        ZDPath path;
        path.manualPath(src, 3, 2);
        EXPECT_WELL_FORMED(path);
    }
}

// ---- Corner rounding ---------------------------------------------------------------

TEST(EffectsExtremeInput, CornerRoundingOfEmptyAndSinglePointPaths)
{
    for (ZDPath source : {ZDPath(), singlePoint()}) {
        for (double radius : {5.0, kNaN, kInf, kHuge, kTiny}) {
            ZDPath a = source;
            a.setCornerRound(radius);
            EXPECT_TRUE(sameElements(a, source)) << radius;
            ZDPath b = source;
            ZDPath marks = source;
            b.setCornerRoundForConnectline(radius, marks);
            EXPECT_TRUE(sameElements(b, source)) << radius;
            ZDPath c = source;
            c.setCornerRound2(radius);
            EXPECT_LE(c.count(), source.count()) << radius;
            EXPECT_WELL_FORMED(c);
        }
    }
}

TEST(EffectsExtremeInput, CornerRoundingWithANaNRadiusLeavesThePath)
{
    for (const ZDPath &source : finiteSources()) {
        ZDPath a = source;
        a.setCornerRound(kNaN);
        EXPECT_TRUE(sameElements(a, source));
        ZDPath b = source;
        ZDPath marks = source;
        b.setCornerRoundForConnectline(kNaN, marks);
        EXPECT_TRUE(sameElements(b, source));
        ZDPath c = source;
        c.setCornerRound2(kNaN);
        EXPECT_TRUE(sameElements(c, source));
    }
}

TEST(EffectsExtremeInput, CornerRoundingWithExtremeRadiiStaysFinite)
{
    for (const ZDPath &source : finiteSources()) {
        for (double radius : {kInf, -kInf, kHuge, -kHuge, kTiny, -kTiny}) {
            ZDPath a = source;
            a.setCornerRound(radius);
            EXPECT_WELL_FORMED(a) << radius;
            ZDPath b = source;
            ZDPath marks = source;
            b.setCornerRoundForConnectline(radius, marks);
            EXPECT_WELL_FORMED(b) << radius;
            ZDPath c = source;
            c.setCornerRound2(radius);
            EXPECT_WELL_FORMED(c) << radius;
            if (std::isfinite(radius)) {
                EXPECT_WELL_FORMED_FINITE(a) << radius;
                EXPECT_WELL_FORMED_FINITE(b) << radius;
                EXPECT_WELL_FORMED_FINITE(c) << radius;
            }
        }
    }
    for (const ZDPath &source : nonFiniteSources()) {
        ZDPath a = source;
        a.setCornerRound(5);
        EXPECT_WELL_FORMED(a);
        // Marked elements other than moves and lines are dropped, and a
        // NaN point matches no mark: with the cubic itself marked, what is
        // left of it need not be a whole cubic. The list only shrinks.
        ZDPath b = source;
        ZDPath marks = source;
        b.setCornerRoundForConnectline(5, marks);
        EXPECT_LE(b.count(), source.count());
        ZDPath c = source;
        c.setCornerRound2(5);
        EXPECT_WELL_FORMED(c);
    }
}

// ---- Line heads and extension ------------------------------------------------------

TEST(EffectsExtremeInput, LineHeadsOfEmptyAndSinglePointPathsFindNothing)
{
    for (ZDPath source : {ZDPath(), singlePoint()}) {
        for (double length : {5.0, kInf, kHuge, kTiny}) {
            ZDPath path = source;
            EXPECT_FALSE(path.setLineHead(length, length, false)) << length;
            EXPECT_TRUE(sameElements(path, source));
            EXPECT_FALSE(path.setLineHead(length, length, true)) << length;
            EXPECT_TRUE(sameElements(path, source));
        }
        ZDPath extended = source;
        extended.extendPath(10, true, true);
        EXPECT_TRUE(sameElements(extended, source));
    }
}

TEST(EffectsExtremeInput, LineHeadsWithLengthsNotAboveZeroLeaveThePath)
{
    // NaN is not above 0: neither end is touched.
    for (const ZDPath &source : finiteSources()) {
        for (double length : {kNaN, 0.0, -kInf, -kHuge, -kTiny}) {
            ZDPath path = source;
            EXPECT_FALSE(path.setLineHead(length, length, false)) << length;
            EXPECT_TRUE(sameElements(path, source)) << length;
        }
    }
}

TEST(EffectsExtremeInput, LineHeadsLongerThanTheLineTakeItOut)
{
    // A lone line not longer than the length plus one goes whole.
    for (double length : {kInf, kHuge}) {
        ZDPath line = linePath(100, 0);
        EXPECT_TRUE(line.setLineHead(length, 0, false)) << length;
        EXPECT_TRUE(line.isEmpty()) << length;
        ZDPath back = linePath(100, 0);
        back.setLineHead(0, length, false);
        EXPECT_WELL_FORMED_FINITE(back);
    }
    // A tiny length moves the start by nothing measurable and keeps the old
    // point in the aux fields.
    ZDPath line = linePath(100, 0);
    line.elements[0].x = 0;
    EXPECT_TRUE(line.setLineHead(kTiny, kTiny, false));
    ASSERT_EQ(line.count(), 2);
    EXPECT_NEAR(line.elementAt(0).x, 0.0, 1e-12);
    EXPECT_NEAR(line.elementAt(1).x, 100.0, 1e-12);
    EXPECT_WELL_FORMED_FINITE(line);
}

TEST(EffectsExtremeInput, LineHeadsOnBadPathsReturn)
{
    for (const ZDPath &source : nonFiniteSources()) {
        ZDPath path = source;
        path.setLineHead(5, 5, false);
        EXPECT_WELL_FORMED(path);
        ZDPath outer = source;
        outer.setLineHead(5, 5, true);
        EXPECT_WELL_FORMED(outer);
    }
    for (const ZDPath &source : finiteSources()) {
        for (double length : {kHuge, kTiny, kInf}) {
            ZDPath path = source;
            path.setLineHead(length, length, false);
            EXPECT_WELL_FORMED(path) << length;
            if (std::isfinite(length)) {
                EXPECT_WELL_FORMED_FINITE(path) << length;
            }
        }
    }
}

TEST(EffectsExtremeInput, ExtensionWithBadLengths)
{
    // The first point moves back along the direction by the formula, the
    // last by (A, A); a NaN length reaches both.
    ZDPath path = linePath(100, 0);
    path.extendPath(kNaN, true, true);
    ASSERT_EQ(path.count(), 2);
    EXPECT_TRUE(std::isnan(path.elementAt(0).x));
    EXPECT_TRUE(std::isnan(path.elementAt(1).x));
    for (double length : finiteExtremes()) {
        ZDPath line = linePath(100, 0);
        line.extendPath(length, true, true);
        EXPECT_WELL_FORMED_FINITE(line) << length;
    }
    ZDPath lone = singlePoint();
    lone.extendPath(kInf, true, true);
    EXPECT_EQ(lone.elementAt(0).x, 3.0);
}

// ---- Knot paths and smoothing -------------------------------------------------------

TEST(EffectsExtremeInput, KnotPathsOfTooFewPointsAreUnchanged)
{
    for (bool reshape : {false, true}) {
        for (bool keepEnds : {false, true}) {
            QVector<QPointF> none;
            ZDPath::knotsPath(none, reshape, keepEnds);
            EXPECT_TRUE(none.isEmpty());
            QVector<QPointF> one = {QPointF(kNaN, 3)};
            ZDPath::knotsPath(one, reshape, keepEnds);
            ASSERT_EQ(one.size(), 1);
            EXPECT_TRUE(std::isnan(one.at(0).x()));
        }
    }
}

TEST(EffectsExtremeInput, KnotPathsOfBadPointsKeepTheirShape)
{
    for (double bad : allExtremes()) {
        for (bool reshape : {false, true}) {
            for (bool keepEnds : {false, true}) {
                // Seven points: three knots.
                QVector<QPointF> points = {QPointF(0, 0),   QPointF(10, 0), QPointF(20, 10),
                                           QPointF(30, bad), QPointF(40, 30), QPointF(50, 30),
                                           QPointF(60, 0)};
                ZDPath::knotsPath(points, reshape, keepEnds);
                EXPECT_EQ(points.size() % 3, 1) << bad;
                if (std::isfinite(bad)) {
                    for (const QPointF &p : points)
                        EXPECT_TRUE(std::isfinite(p.x()) && std::isfinite(p.y())) << bad;
                }
            }
        }
    }
}

TEST(EffectsExtremeInput, SmoothingOfEmptyAndBadPaths)
{
    ZDPath tiny = openCurve(1e-298);
    tiny.smooth(2);
    ASSERT_EQ(tiny.count(), 10);
    EXPECT_TRUE(std::isnan(tiny.elementAt(2).x));
    EXPECT_DOUBLE_EQ(tiny.elementAt(3).x, 50 * 1e-298);

    for (int type = -1; type <= 5; ++type) {
        ZDPath empty;
        empty.smooth(type);
        EXPECT_TRUE(empty.isEmpty());
        ZDPath lone = singlePoint();
        lone.smooth(type);
        EXPECT_TRUE(lone.isEmpty());
        for (const ZDPath &source : finiteSources()) {
            ZDPath path = source;
            path.smooth(type);
            EXPECT_WELL_FORMED(path) << type;
            // The geometric type divides by the sum of the neighbours'
            // distances, which underflows to 0 at 1e-298: the tiny path is
            // then a path of coincident points, whose handles are NaN.
            if (type != 2 || std::fabs(source.elementAt(1).x) > 1e-100) {
                EXPECT_WELL_FORMED_FINITE(path) << type;
            }
        }
        for (const ZDPath &source : nonFiniteSources()) {
            ZDPath path = source;
            path.smooth(type);
            EXPECT_WELL_FORMED(path) << type;
        }
    }
}

// ---- Curve stepper ------------------------------------------------------------------

TEST(EffectsExtremeInput, StepperCountsOfBadCurves)
{
    // NaN, tiny and all-equal control polygons: at least 2 steps.
    for (double bad : {kNaN, kTiny, 0.0}) {
        ZDCurve curve(0, 0, bad, 0, bad, bad, 0, bad);
        EXPECT_EQ(curve.stepNum(), 2) << bad;
    }
    // Infinite and huge polygons, and huge scales, are cut to 2^20 steps.
    for (double bad : {kInf, kHuge}) {
        ZDCurve curve(0, 0, 1, 0, 2, 0, bad, 0);
        EXPECT_EQ(curve.stepNum(), 1 << 20) << bad;
    }
    // Infinite points on both sides of a side make its length NaN: 2 steps.
    ZDCurve square(0, 0, kInf, 0, kInf, kInf, 0, kInf);
    EXPECT_EQ(square.stepNum(), 2);
    ZDCurve scaled;
    scaled.approximation_scale(kHuge);
    scaled.init(0, 0, 1, 0, 1, 1, 0, 1);
    EXPECT_EQ(scaled.stepNum(), 1 << 20);
    scaled.approximation_scale(kNaN);
    scaled.init(0, 0, 1, 0, 1, 1, 0, 1);
    EXPECT_EQ(scaled.stepNum(), 2);
}

TEST(EffectsExtremeInput, StepperSearchesWithBadArgumentsFindNothing)
{
    for (double bad : nonFinite()) {
        ZDCurve curve(0, 0, 30, 0, 60, 30, 90, 30);
        EXPECT_EQ(curve.getstep(bad, 0), -1) << bad;
        curve.init(0, 0, 30, 0, 60, 30, 90, 30);
        EXPECT_EQ(curve.frontPtAtDist(bad), -1) << bad;
        curve.init(0, 0, 30, 0, 60, 30, 90, 30);
        EXPECT_EQ(curve.backPtAtDist(bad), -1) << bad;
        curve.init(0, 0, 30, 0, 60, 30, 90, 30);
        QPointF first[4], second[4];
        first[0] = QPointF(-7, -7);
        EXPECT_FALSE(curve.splitcurve(first, second, bad)) << bad;
        EXPECT_EQ(first[0], QPointF(-7, -7));
        curve.init(0, 0, 30, 0, 60, 30, 90, 30);
        EXPECT_FALSE(curve.splitcurve(first, second, bad, 0.0)) << bad;
        EXPECT_EQ(first[0], QPointF(-7, -7));
    }
    for (double t : {kHuge, -kHuge, -kTiny, 1.0 + 1e-15}) {
        ZDCurve curve(0, 0, 30, 0, 60, 30, 90, 30);
        QPointF first[4], second[4];
        EXPECT_FALSE(curve.splitcurve(first, second, t)) << t;
    }
    ZDCurve curve(0, 0, 30, 0, 60, 30, 90, 30);
    QPointF second[4];
    EXPECT_FALSE(curve.splitcurve(nullptr, second, 0.5));
    // Far points are more than 4.0 away from every step point.
    EXPECT_EQ(curve.getstep(kHuge, kHuge), -1);
    curve.init(0, 0, 30, 0, 60, 30, 90, 30);
    EXPECT_EQ(curve.frontPtAtDist(kHuge), -1);
}

TEST(EffectsExtremeInput, StepperWalksOfNaNCurvesEnd)
{
    ZDCurve curve(0, 0, kNaN, 0, 60, 30, 90, 30);
    int points = 0;
    double x = 0, y = 0;
    while (curve.vertex(&x, &y))
        ++points;
    EXPECT_EQ(points, curve.stepNum() + 1);
    QPointF p;
    int backward = 0;
    curve.init(0, 0, kNaN, 0, 60, 30, 90, 30);
    while (curve.vertexn(p) && backward < 100)
        ++backward;
    EXPECT_LT(backward, 100);
}
