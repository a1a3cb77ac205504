// Tests of ZDPath::thickPath, the outline of a tapered stroke. The sideways
// normal of a unit tangent (tx, ty) is (ty, -tx): the right side lies at
// point + w (ty, -tx), the left side at point - w (ty, -tx). Straight cases
// are worked out by hand; curved ones are checked against a reference
// geometry independent of the library: cubics in Bernstein form, arc length
// by a dense polyline, nearest points by dense sampling refined by golden
// section search.
#include "model/model_test_support.h"

#include <zgraphics/drawing.h>

#include <gtest/gtest.h>

#include <QtCore/QtNumeric>

#include <cmath>
#include <iostream>
#include <random>
#include <vector>

namespace {

struct Cubic
{
    QPointF p0, p1, p2, p3;

    QPointF at(double t) const
    {
        const double s = 1.0 - t;
        return s * s * s * p0 + 3.0 * s * s * t * p1 + 3.0 * s * t * t * p2 + t * t * t * p3;
    }
};

double distance(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

// A dense table of a cubic: the points at equal time steps and the arc
// length up to each.
struct ReferenceCurve
{
    explicit ReferenceCurve(const Cubic &c, int samples = 20000) : cubic(c)
    {
        for (int i = 0; i <= samples; ++i) {
            const double t = double(i) / samples;
            const QPointF p = c.at(t);
            lengths.push_back(points.empty() ? 0.0 : lengths.back() + distance(points.back(), p));
            points.push_back(p);
        }
    }

    double length() const { return lengths.back(); }

    // The distance from q to the curve and the arc length of the nearest point.
    void nearest(const QPointF &q, double &dist, double &arc) const
    {
        // A coarse scan brackets the nearest time; the offsets tested lie
        // well inside the radius of curvature, so the bracket holds it.
        const int coarse = 400;
        int best = 0;
        for (int i = 1; i <= coarse; ++i) {
            if (distance(cubic.at(double(i) / coarse), q) < distance(cubic.at(double(best) / coarse), q))
                best = i;
        }
        double lo = double(qMax(best - 1, 0)) / coarse;
        double hi = double(qMin(best + 1, coarse)) / coarse;
        const int n = int(points.size()) - 1;
        const double g = (std::sqrt(5.0) - 1.0) / 2.0;
        for (int k = 0; k < 60; ++k) {
            const double a = hi - g * (hi - lo);
            const double b = lo + g * (hi - lo);
            if (distance(cubic.at(a), q) < distance(cubic.at(b), q))
                hi = b;
            else
                lo = a;
        }
        const double t = 0.5 * (lo + hi);
        dist = distance(cubic.at(t), q);
        const double f = t * n - std::floor(t * n);
        const int i = qMin(int(std::floor(t * n)), n - 1);
        arc = lengths[i] + f * (lengths[i + 1] - lengths[i]);
    }

    Cubic cubic;
    std::vector<QPointF> points;
    std::vector<double> lengths;
};

// The smallest radius of curvature of a cubic, by dense sampling.
double minRadius(const Cubic &c)
{
    double best = 1e300;
    for (int i = 0; i <= 2000; ++i) {
        const double t = i / 2000.0;
        const double s = 1.0 - t;
        const QPointF d1 = 3.0 * (s * s * (c.p1 - c.p0) + 2.0 * s * t * (c.p2 - c.p1) + t * t * (c.p3 - c.p2));
        const QPointF d2 = 6.0 * (s * (c.p2 - 2.0 * c.p1 + c.p0) + t * (c.p3 - 2.0 * c.p2 + c.p1));
        const double speed = std::hypot(d1.x(), d1.y());
        const double cross = std::abs(d1.x() * d2.y() - d1.y() * d2.x());
        if (cross > 0.0)
            best = qMin(best, speed * speed * speed / cross);
    }
    return best;
}

ZDPath lineSource(const QPointF &a, const QPointF &b)
{
    ZDPath src;
    src.moveTo(a);
    src.lineTo(b);
    return src;
}

ZDPath cubicSource(const Cubic &c)
{
    ZDPath src;
    src.moveTo(c.p0);
    src.cubicTo(c.p1, c.p2, c.p3);
    return src;
}

void expectElement(const ZDPath &path, int i, const QPointF &p, int32_t type, double tolerance)
{
    ASSERT_LT(i, path.count());
    EXPECT_NEAR(path.elementAt(i).x, p.x(), tolerance) << "element " << i;
    EXPECT_NEAR(path.elementAt(i).y, p.y(), tolerance) << "element " << i;
    EXPECT_EQ(path.elementAt(i).type, type) << "element " << i;
}

bool sameElements(const ZDPath &a, const ZDPath &b)
{
    if (a.count() != b.count())
        return false;
    for (int i = 0; i < a.count(); ++i) {
        const ZDPathElement &x = a.elementAt(i);
        const ZDPathElement &y = b.elementAt(i);
        const bool same = (x.x == y.x || (qIsNaN(x.x) && qIsNaN(y.x)))
                          && (x.y == y.y || (qIsNaN(x.y) && qIsNaN(y.y))) && x.type == y.type;
        if (!same)
            return false;
    }
    return true;
}

// The point beyond a on the line from b through a, at distance k from a.
QPointF beyond(const QPointF &a, const QPointF &b, double k)
{
    return a + (a - b) * (k / distance(a, b));
}

const int32_t M = ZDMoveToElement;
const int32_t L = ZDLineToElement;
const int32_t C = ZDCurveToElement;
const int32_t D = ZDCurveToDataElement;
const int32_t Z = ZDCloseElement;

// ----------------------------------------------------------- straight lines

TEST(ThickPath, StraightLineWithBothCaps)
{
    ZDPath src = lineSource(QPointF(0, 0), QPointF(100, 0));
    ZDPath out;
    out.thickPath(src, 10.0, 5.0, 1.0);
    // Sides: left (0, 10) to (100, 5), right (0, -10) to (100, -5). The start
    // cap prolongs them by 10 * 1.2 * 0.6 = 7.2, the end cap by 3.6.
    ASSERT_EQ(out.count(), 16);
    const double tol = 1e-12;
    expectElement(out, 0, QPointF(0, -10), M, tol);
    expectElement(out, 1, beyond(QPointF(0, -10), QPointF(100, -5), 7.2), C, tol);
    expectElement(out, 2, QPointF(-12, -5.5), D, tol);
    expectElement(out, 3, QPointF(-12, 0), D, tol);
    expectElement(out, 4, QPointF(-12, 5.5), C, tol);
    expectElement(out, 5, beyond(QPointF(0, 10), QPointF(100, 5), 7.2), D, tol);
    expectElement(out, 6, QPointF(0, 10), D, tol);
    expectElement(out, 7, QPointF(100, 5), L, tol);
    expectElement(out, 8, beyond(QPointF(100, 5), QPointF(0, 10), 3.6), C, tol);
    expectElement(out, 9, QPointF(106, 2.75), D, tol);
    expectElement(out, 10, QPointF(106, 0), D, tol);
    expectElement(out, 11, QPointF(106, -2.75), C, tol);
    expectElement(out, 12, beyond(QPointF(100, -5), QPointF(0, -10), 3.6), D, tol);
    expectElement(out, 13, QPointF(100, -5), D, tol);
    expectElement(out, 14, QPointF(0, -10), L, tol);
    expectElement(out, 15, QPointF(0, -10), Z, tol);
}

TEST(ThickPath, EndWidthZeroHasNoEndCap)
{
    ZDPath src = lineSource(QPointF(0, 0), QPointF(100, 0));
    ZDPath out;
    out.thickPath(src, 10.0, 0.0, 1.0);
    // The sides meet at the line's end: left's (100, 0) is followed by the
    // reversed right side, whose first point (100, 0) joins it.
    ASSERT_EQ(out.count(), 10);
    expectElement(out, 6, QPointF(0, 10), D, 1e-12);
    expectElement(out, 7, QPointF(100, 0), L, 1e-12);
    expectElement(out, 8, QPointF(0, -10), L, 1e-12);
    expectElement(out, 9, QPointF(0, -10), Z, 1e-12);
}

TEST(ThickPath, CapsTurnWithTheLine)
{
    // Downwards: tangent (0, 1), angle 90; left at x - w, right at x + w.
    ZDPath src = lineSource(QPointF(50, 0), QPointF(50, 200));
    ZDPath out;
    out.thickPath(src, 10.0, 10.0, 1.0);
    ASSERT_EQ(out.count(), 16);
    const double tol = 1e-9;
    expectElement(out, 0, QPointF(60, 0), M, tol);
    expectElement(out, 2, QPointF(55.5, -12), D, tol);
    expectElement(out, 3, QPointF(50, -12), D, tol);
    expectElement(out, 4, QPointF(44.5, -12), C, tol);
    expectElement(out, 6, QPointF(40, 0), D, tol);
    expectElement(out, 7, QPointF(40, 200), L, tol);
    expectElement(out, 9, QPointF(44.5, 212), D, tol);
    expectElement(out, 10, QPointF(50, 212), D, tol);
    expectElement(out, 13, QPointF(60, 200), D, tol);
}

TEST(ThickPath, PolylineSidesAtTheInterpolatedWidth)
{
    // (0, 0) -> (100, 0) -> (100, 60): length 160, width 8 to 0. At s = 100
    // the width is 8 - 8 * 100 / 160 = 3, taken at the corner with the
    // tangent of the curve whose whole-unit running length passes s: the
    // second one, so the pair there is (100 -+ 3, 100).
    ZDPath src;
    src.moveTo(0, 0);
    src.lineTo(100, 0);
    src.lineTo(100, 60);
    ZDPath out;
    out.thickPath(src, 8.0, 0.0, 1.0);
    ASSERT_EQ(out.count(), 7 + 2 + 2 + 1);
    expectElement(out, 6, QPointF(0, 8), D, 1e-12);
    expectElement(out, 7, QPointF(97, 0), L, 1e-12);
    expectElement(out, 8, QPointF(100, 60), L, 1e-12);
    expectElement(out, 9, QPointF(103, 0), L, 1e-12);
    expectElement(out, 10, QPointF(0, -8), L, 1e-12);
}

TEST(ThickPath, OnlyTheFirstContourCounts)
{
    ZDPath src = lineSource(QPointF(0, 0), QPointF(100, 20));
    src.moveTo(300, 300);
    src.lineTo(400, 350);
    ZDPath single = lineSource(QPointF(0, 0), QPointF(100, 20));
    ZDPath out;
    ZDPath expected;
    out.thickPath(src, 6.0, 3.0, 1.0);
    expected.thickPath(single, 6.0, 3.0, 1.0);
    EXPECT_TRUE(sameElements(out, expected));
    EXPECT_EQ(out.count(), 16);
}

TEST(ThickPath, ClosedSourceIsAnOpenLineFromItsFirstPoint)
{
    ZDPath src(QRectF(0, 0, 100, 50));
    ZDPath out;
    out.thickPath(src, 5.0, 5.0, 1.0);
    // Four straight curves (the closing one included): a pair each, then
    // both caps at (0, 0). The start cap looks back along -x. A location at
    // the end of a closed contour is time 0 of its first curve, so the last
    // pair and the end cap take the first curve's direction too: the end cap
    // looks ahead along +x, and the last pair repeats the first one.
    ASSERT_EQ(out.count(), 7 + 4 + 6 + 4 + 1);
    expectElement(out, 0, QPointF(0, -5), M, 1e-9);
    expectElement(out, 3, QPointF(-6, 0), D, 1e-9);
    expectElement(out, 6, QPointF(0, 5), D, 1e-9);
    expectElement(out, 7, QPointF(95, 0), L, 1e-9);
    expectElement(out, 10, QPointF(0, 5), L, 1e-9);
    const int endCapMiddle = 7 + 4 + 2;
    expectElement(out, endCapMiddle, QPointF(6, 0), D, 1e-9);
    EXPECT_EQ(out.elementAt(out.count() - 1).type, Z);
}

TEST(ThickPath, ResultReplacesThePathAndSourceMayBeThePath)
{
    ZDPath out = lineSource(QPointF(-5, -5), QPointF(7, 9));
    out.lineTo(30, 30);
    ZDPath src = lineSource(QPointF(0, 0), QPointF(100, 0));
    ZDPath expected;
    expected.thickPath(src, 10.0, 5.0, 1.0);
    out.thickPath(src, 10.0, 5.0, 1.0);
    EXPECT_TRUE(sameElements(out, expected));
    // The source is read before the path is replaced.
    ZDPath self = lineSource(QPointF(0, 0), QPointF(100, 0));
    self.thickPath(self, 10.0, 5.0, 1.0);
    EXPECT_TRUE(sameElements(self, expected));
}

// ------------------------------------------------------------- curves

const Cubic kArc = {QPointF(100, 0), QPointF(100, 55.228475), QPointF(55.228475, 100), QPointF(0, 100)};

int samplesFor(double len, double step)
{
    double d = step;
    double n = len / d;
    while (n < 4.0 && d >= 2.0) {
        d *= 0.5;
        n = len / d;
    }
    return int(std::ceil((len - 0.1) / d));
}

TEST(ThickPath, CurveSamplesEveryStepHalvedForShortCurves)
{
    // A quarter circle of radius 100, about 157.08 long. Each sample becomes
    // one cubic per side: 7 start cap + 3 k left + 6 end cap + 3 k right + 1.
    const double len = ReferenceCurve(kArc).length();
    for (double step : {1.5, 10.0, 100.0, 1000.0}) {
        SCOPED_TRACE(step);
        ZDPath src = cubicSource(kArc);
        ZDPath out;
        out.thickPath(src, 6.0, 2.0, step);
        const int k = samplesFor(len, step);
        EXPECT_EQ(out.count(), 14 + 6 * k);
    }
    // 100 halves to 25: 7 samples; 1000 to 31.25: 6 samples.
    EXPECT_EQ(samplesFor(len, 100.0), 7);
    EXPECT_EQ(samplesFor(len, 1000.0), 6);
}

TEST(ThickPath, StepOfOneDoesNotHalve)
{
    // A curve about 2.4 long: fewer than 4 samples, but a step below 2 stays.
    const Cubic tiny = {QPointF(0, 0), QPointF(1, 1), QPointF(2, 1), QPointF(2, 0)};
    ZDPath src = cubicSource(tiny);
    ZDPath out;
    out.thickPath(src, 1.0, 1.0, 1.0);
    const double len = ReferenceCurve(tiny).length();
    EXPECT_EQ(out.count(), 14 + 6 * int(std::ceil(len - 0.1)));
}

TEST(ThickPath, SeededCurvesLieAtTheInterpolatedHalfWidth)
{
    // Anchors and piece midpoints of the outline whose nearest source point
    // is inside the curve (so not on a cap) lie at the width interpolated at
    // that point's arc length.
    std::mt19937 rng(8675309);
    std::uniform_real_distribution<double> y(-90.0, 90.0);
    std::uniform_real_distribution<double> width(1.0, 8.0);
    int anchors = 0, anchorsOk = 0, middles = 0, middlesOk = 0, curves = 0;
    for (int trial = 0; trial < 40; ++trial) {
        const Cubic c = {QPointF(0, 0), QPointF(100, y(rng)), QPointF(200, y(rng)), QPointF(300, y(rng))};
        const double sw = width(rng);
        const double ew = trial % 4 == 0 ? 0.0 : width(rng);
        if (minRadius(c) < 3.0 * qMax(sw, ew))
            continue;
        ++curves;
        const ReferenceCurve ref(c);
        ZDPath src = cubicSource(c);
        ZDPath out;
        out.thickPath(src, sw, ew, 3.0);
        ASSERT_EQ(out.elementAt(out.count() - 1).type, Z);
        // Starts with the cap: the right side's first point, then the cap's
        // middle 1.2 sw behind the start.
        const QPointF t0 = (c.p1 - c.p0) / distance(c.p1, c.p0);
        expectElement(out, 0, c.p0 + sw * QPointF(t0.y(), -t0.x()), M, 1e-9);
        expectElement(out, 3, c.p0 - 1.2 * sw * t0, D, 1e-9);

        QPointF last = out.elementAt(0).toPoint();
        for (int i = 1; i < out.count(); ++i) {
            const ZDPathElement &e = out.elementAt(i);
            const bool cubicEnd = e.type == D && out.elementAt(i - 1).type == D;
            if (e.type != L && !cubicEnd)
                continue;
            std::vector<std::pair<QPointF, bool>> probes = {{e.toPoint(), true}};
            if (cubicEnd) {
                const Cubic piece = {last, out.elementAt(i - 2).toPoint(), out.elementAt(i - 1).toPoint(), e.toPoint()};
                probes.push_back({piece.at(0.5), false});
            }
            last = e.toPoint();
            for (const auto &probe : probes) {
                double dist = 0.0, arc = 0.0;
                ref.nearest(probe.first, dist, arc);
                if (arc < 1.0 || arc > ref.length() - 1.0)
                    continue;
                const double w = sw - (sw - ew) * arc / ref.length();
                // Anchors: the getLocationAt drift of under a unit moves the
                // width by (sw - ew) / length; piece middles: the sampling error.
                const double tol = probe.second ? 1e-6 + std::abs(sw - ew) / ref.length() : 0.02;
                const bool ok = std::abs(dist - w) <= tol;
                (probe.second ? anchors : middles) += 1;
                (probe.second ? anchorsOk : middlesOk) += ok ? 1 : 0;
            }
        }
    }
    std::cout << "[ oracle   ] " << curves << " curves: anchors " << anchorsOk << "/" << anchors
              << ", piece middles " << middlesOk << "/" << middles << " at the half width\n";
    EXPECT_GT(curves, 20);
    EXPECT_GT(anchors, 3000);
    EXPECT_EQ(anchorsOk, anchors);
    EXPECT_EQ(middlesOk, middles);
}

TEST(ThickPath, RunTwiceGivesTheSameElements)
{
    ZDPath src;
    src.moveTo(0, 0);
    src.cubicTo(QPointF(50, -80), QPointF(120, 80), QPointF(200, 0));
    src.lineTo(260, 40);
    src.cubicTo(QPointF(300, 90), QPointF(340, -20), QPointF(400, 10));
    ZDPath a;
    ZDPath b;
    ZDPath srcCopy = src;
    srcCopy.elements.detach();
    a.thickPath(src, 9.0, 2.0, 3.0);
    b.thickPath(srcCopy, 9.0, 2.0, 3.0);
    EXPECT_TRUE(sameElements(a, b));
    EXPECT_GT(a.count(), 100);
}

TEST(ThickPath, DeferredModeGivesTheSameOutline)
{
    // With release only marking, the temporary objects stay listed until the
    // scope sweeps them; the result does not change.
    const ZDPath source = cubicSource(kArc);
    ZDPath immediate;
    ZDPath src = source;
    immediate.thickPath(src, 6.0, 1.0, 4.0);
    QVector<QPointF> chain = {QPointF(0, 0), QPointF(10, 0), QPointF(40, 60), QPointF(50, 60)};
    QVector<QPointF> immediateChain = chain;
    ZDPath::knotsPath(immediateChain, true, true);
    ZDPath deferred;
    QVector<QPointF> deferredChain = chain;
    {
        zgtest::DeferredScope scope;
        ZDPath deferredSrc = source;
        deferred.thickPath(deferredSrc, 6.0, 1.0, 4.0);
        ZDPath::knotsPath(deferredChain, true, true);
    }
    EXPECT_TRUE(sameElements(immediate, deferred));
    EXPECT_EQ(immediateChain, deferredChain);
}

// --------------------------------------------------------- degenerate input

TEST(ThickPath, StepNotAboveZeroLeavesThePathUnchanged)
{
    const ZDPath before = lineSource(QPointF(1, 2), QPointF(3, 4));
    for (double step : {0.0, -1.0, qQNaN(), qInf()}) {
        ZDPath out = before;
        ZDPath src = cubicSource(kArc);
        out.thickPath(src, 5.0, 5.0, step);
        EXPECT_TRUE(sameElements(out, before)) << step;
    }
}

TEST(ThickPath, SourceWithoutContourLeavesThePathUnchanged)
{
    const ZDPath before = lineSource(QPointF(1, 2), QPointF(3, 4));
    ZDPath out = before;
    ZDPath empty;
    out.thickPath(empty, 5.0, 5.0, 1.0);
    EXPECT_TRUE(sameElements(out, before));
    // A lone move is cleaned away by the conversion, from src too.
    ZDPath lone;
    lone.moveTo(5, 5);
    out.thickPath(lone, 5.0, 5.0, 1.0);
    EXPECT_TRUE(sameElements(out, before));
    EXPECT_TRUE(lone.isEmpty());
}

TEST(ThickPath, ZeroLengthSourceGivesNaNPoints)
{
    // The width is interpolated over a length of 0: 0 / 0.
    ZDPath src = lineSource(QPointF(5, 5), QPointF(5, 5));
    ZDPath out;
    out.thickPath(src, 5.0, 5.0, 1.0);
    ASSERT_GT(out.count(), 0);
    EXPECT_TRUE(qIsNaN(out.elementAt(0).x));
}

TEST(ThickPath, ZeroWidthsCollapseOntoTheLine)
{
    ZDPath src = lineSource(QPointF(0, 0), QPointF(100, 0));
    ZDPath out;
    out.thickPath(src, 0.0, 0.0, 1.0);
    // No end cap; the start cap shrinks to the start point.
    ASSERT_EQ(out.count(), 10);
    for (int i = 0; i < out.count(); ++i)
        EXPECT_EQ(out.elementAt(i).y, 0.0) << i;
    EXPECT_EQ(out.elementAt(7).x, 100.0);
}

TEST(ThickPath, NegativeWidthsSwapTheSides)
{
    ZDPath src = lineSource(QPointF(0, 0), QPointF(100, 0));
    ZDPath out;
    out.thickPath(src, -10.0, -5.0, 1.0);
    // No end cap for a width not above 0, so the reversed right side joins
    // the left one by a line; the start cap bulges forward.
    ASSERT_EQ(out.count(), 11);
    expectElement(out, 0, QPointF(0, 10), M, 1e-12);
    expectElement(out, 3, QPointF(12, 0), D, 1e-12);
    expectElement(out, 7, QPointF(100, -5), L, 1e-12);
}

TEST(ThickPath, NaNAndHugeCoordinatesEndInBoundedTime)
{
    ZDPath nan;
    nan.moveTo(0, 0);
    nan.cubicTo(QPointF(qQNaN(), 5), QPointF(10, 10), QPointF(20, 0));
    ZDPath out;
    out.thickPath(nan, 5.0, 5.0, 1.0);
    EXPECT_GT(out.count(), 0);

    // About 1.6e9 units long: the samples are capped per curve.
    const Cubic big = {QPointF(1e9, 0), QPointF(1e9, 5.5e8), QPointF(5.5e8, 1e9), QPointF(0, 1e9)};
    ZDPath bigSrc = cubicSource(big);
    ZDPath bigOut;
    bigOut.thickPath(bigSrc, 5.0, 5.0, 1.0);
    EXPECT_GE(bigOut.count(), 14 + 6 * 100000);
    EXPECT_LE(bigOut.count(), 14 + 6 * 100001);

    const Cubic huge = {QPointF(1e300, 0), QPointF(1e300, 5e299), QPointF(5e299, 1e300), QPointF(0, 1e300)};
    ZDPath hugeSrc = cubicSource(huge);
    ZDPath hugeOut;
    hugeOut.thickPath(hugeSrc, 5.0, 5.0, 1.0);
    EXPECT_GT(hugeOut.count(), 0);
}

} // namespace
