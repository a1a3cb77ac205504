// Tests of the smoothing of segments and contours. The handles of the range
// types are checked against the same banded system solved by a plain dense
// Gaussian elimination with partial pivoting, and the per-segment types
// against hand-worked values.
#include "model/model_test_support.h"

#include <zgraphics/model.h>

#include <gtest/gtest.h>

#include <QtCore/QtNumeric>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

using zgtest::addPoints;

// A contour of straight segments at the given points.
struct Contour
{
    explicit Contour(const QVector<zgPoint> &points, bool closed = false) : path(nullptr, closed)
    {
        addPoints(path, points);
    }
    zgSegment *at(int i) { return path.segments.at(i); }
    zgPath path;
};

void expectPoint(const zgPoint &actual, double x, double y, double tolerance)
{
    EXPECT_NEAR(actual.x, x, tolerance);
    EXPECT_NEAR(actual.y, y, tolerance);
}

void expectZeroHandles(zgSegment *segment)
{
    EXPECT_EQ(segment->handleIn.x, 0.0);
    EXPECT_EQ(segment->handleIn.y, 0.0);
    EXPECT_EQ(segment->handleOut.x, 0.0);
    EXPECT_EQ(segment->handleOut.y, 0.0);
}

// Dense solve of A x = b by Gaussian elimination with partial pivoting.
std::vector<double> denseSolve(std::vector<std::vector<double>> a, std::vector<double> b)
{
    const int n = int(b.size());
    for (int col = 0; col < n; ++col) {
        int pivot = col;
        for (int r = col + 1; r < n; ++r) {
            if (std::abs(a[r][col]) > std::abs(a[pivot][col]))
                pivot = r;
        }
        std::swap(a[col], a[pivot]);
        std::swap(b[col], b[pivot]);
        for (int r = col + 1; r < n; ++r) {
            const double f = a[r][col] / a[col][col];
            for (int c = col; c < n; ++c)
                a[r][c] -= f * a[col][c];
            b[r] -= f * b[col];
        }
    }
    std::vector<double> x(n);
    for (int r = n - 1; r >= 0; --r) {
        double sum = b[r];
        for (int c = r + 1; c < n; ++c)
            sum -= a[r][c] * x[c];
        x[r] = sum / a[r][r];
    }
    return x;
}

// The first control points after knots 0 to n for the range types: rows
// (2, 1 | k0 + 2 k1), inner rows (1, 4, 1 | 4 ki + 2 ki+1), a last row of
// type 3 (1, 2 | 3 kn-1) or type 4 (2, 7 | 8 kn-1 + kn); the control point
// after the last knot is (3 kn - p[n-1]) / 2.
std::vector<zgPoint> denseControlPoints(const std::vector<zgPoint> &knots, int type)
{
    const int n = int(knots.size()) - 1;
    std::vector<std::vector<double>> a(n, std::vector<double>(n, 0.0));
    std::vector<double> bx(n), by(n);
    for (int i = 0; i < n; ++i) {
        double sub = 1.0, diag = 4.0, u = 4.0, v = 2.0;
        if (i == 0) {
            diag = 2.0, u = 1.0, v = 2.0;
        } else if (i == n - 1) {
            if (type == 3)
                sub = 1.0, diag = 2.0, u = 3.0, v = 0.0;
            else
                sub = 2.0, diag = 7.0, u = 8.0, v = 1.0;
        }
        if (i > 0)
            a[i][i - 1] = sub;
        a[i][i] = diag;
        if (i < n - 1)
            a[i][i + 1] = 1.0;
        bx[i] = u * knots[i].x + v * knots[i + 1].x;
        by[i] = u * knots[i].y + v * knots[i + 1].y;
    }
    const std::vector<double> x = denseSolve(a, bx);
    const std::vector<double> y = denseSolve(a, by);
    std::vector<zgPoint> p;
    for (int i = 0; i < n; ++i)
        p.push_back(zgPoint(x[i], y[i]));
    p.push_back(zgPoint((3.0 * knots[n].x - x[n - 1]) * 0.5, (3.0 * knots[n].y - y[n - 1]) * 0.5));
    return p;
}

QVector<zgPoint> randomPoints(std::mt19937 &rng, int count, double range)
{
    std::uniform_real_distribution<double> coord(-range, range);
    QVector<zgPoint> points;
    for (int i = 0; i < count; ++i)
        points.append(zgPoint(coord(rng), coord(rng)));
    return points;
}

// ---------------------------------------------------------------- segments

TEST(SegmentSmooth, CatmullRomCentripetalHandles)
{
    // d1 = 4, d2 = 9: d1a = 2, d2a = 3. In: (9 p0 + 40 p1 - 4 p2) / 45 - p1;
    // out: (4 p2 + 35 p1 - 9 p0) / 30 - p1.
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(1)->smooth(false, false, 1, -1.0);
    expectPoint(c.at(1)->handleIn, -0.8, -0.8, 1e-12);
    expectPoint(c.at(1)->handleOut, 1.2, 1.2, 1e-12);
}

TEST(SegmentSmooth, CatmullRomFactorZeroIsUniform)
{
    // Uniform Catmull-Rom: the tangent is (p2 - p0) / 2, the handles a third of it.
    Contour c({zgPoint(0, 0), zgPoint(3, 1), zgPoint(10, 5)});
    c.at(1)->smooth(false, false, 1, 0.0);
    expectPoint(c.at(1)->handleIn, -10.0 / 6.0, -5.0 / 6.0, 1e-12);
    expectPoint(c.at(1)->handleOut, 10.0 / 6.0, 5.0 / 6.0, 1e-12);
}

TEST(SegmentSmooth, CatmullRomFactorOtherThanMinusOneIsUsedAsItIs)
{
    // Exponent 1 (chordal): d1s = 16, d2s = 81. In: (81 p0 + A p1 - 16 p2) / N - p1
    // with A = 162 + 108 + 16 = 286, N = 3 * 9 * 13 = 351.
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(1)->smooth(false, false, 1, 1.0);
    expectPoint(c.at(1)->handleIn, (286.0 * 4 - 16.0 * 4) / 351.0 - 4.0, -16.0 * 9 / 351.0, 1e-12);
}

TEST(SegmentSmooth, CatmullRomCoincidentPointsGiveZeroHandle)
{
    // p1 = p2: the handle-in's denominator 3 d2a (d2a + d1a) is 0.
    Contour c({zgPoint(0, 0), zgPoint(5, 5), zgPoint(5, 5)});
    c.at(1)->setHandleIn(zgPoint(7, 7));
    c.at(1)->smooth(false, false, 1, -1.0);
    EXPECT_EQ(c.at(1)->handleIn.x, 0.0);
    EXPECT_EQ(c.at(1)->handleIn.y, 0.0);
    // The handle-out is (p2 - p1) / 3 = 0 by its own weights.
    expectPoint(c.at(1)->handleOut, 0.0, 0.0, 1e-12);
}

TEST(SegmentSmooth, CatmullRomAtOpenEndsUsesThisPointForTheMissingNeighbour)
{
    // First segment: p0 = p1, d1 = 0, so the handle-out's denominator is 0.
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(0)->setHandleIn(zgPoint(1, 2));
    c.at(0)->setHandleOut(zgPoint(3, 4));
    c.at(0)->smooth(false, false, 1, -1.0);
    expectPoint(c.at(0)->handleIn, 1, 2, 0.0);
    expectPoint(c.at(0)->handleOut, 0, 0, 0.0);
    // With exponent 0 the weights are all 1 even at zero distance:
    // out = (p2 + 6 p1 - p0) / 6 - p1 = (p2 - p0) / 6 = (p2 - p1) / 6.
    c.at(0)->smooth(false, false, 1, 0.0);
    expectPoint(c.at(0)->handleOut, 4.0 / 6.0, 0.0, 1e-12);
}

TEST(SegmentSmooth, FirstAndLastKeepTheirHandles)
{
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(1)->setHandleIn(zgPoint(1, 1));
    c.at(1)->setHandleOut(zgPoint(2, 2));
    c.at(1)->smooth(true, false, 1, -1.0);
    expectPoint(c.at(1)->handleIn, 1, 1, 0.0);
    expectPoint(c.at(1)->handleOut, 1.2, 1.2, 1e-12);
    c.at(1)->setHandleOut(zgPoint(2, 2));
    c.at(1)->smooth(false, true, 2, -1.0);
    expectPoint(c.at(1)->handleOut, 2, 2, 0.0);
    expectPoint(c.at(1)->handleIn, -4 * 1.6 / 13, -9 * 1.6 / 13, 1e-12);
}

TEST(SegmentSmooth, GeometricHandles)
{
    // vector = p0 - p2 = (-4, -9), k = 0.4 * 4 / 13.
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(1)->smooth(false, false, 2, -1.0);
    const double k = 0.4 * 4.0 / 13.0;
    expectPoint(c.at(1)->handleIn, -4 * k, -9 * k, 1e-12);
    expectPoint(c.at(1)->handleOut, -4 * (k - 0.4), -9 * (k - 0.4), 1e-12);
    // Any other factor is the ratio itself.
    c.at(1)->smooth(false, false, 2, 0.0);
    expectPoint(c.at(1)->handleIn, 0, 0, 0.0);
    expectPoint(c.at(1)->handleOut, 0, 0, 0.0);
}

TEST(SegmentSmooth, GeometricAtOpenEndsChangesNothing)
{
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(0)->setHandleOut(zgPoint(3, 4));
    c.at(2)->setHandleIn(zgPoint(5, 6));
    c.at(0)->smooth(false, false, 2, -1.0);
    c.at(2)->smooth(false, false, 2, -1.0);
    expectPoint(c.at(0)->handleOut, 3, 4, 0.0);
    expectPoint(c.at(2)->handleIn, 5, 6, 0.0);
}

TEST(SegmentSmooth, GeometricOnCoincidentPointsIsNaN)
{
    // k = t d1 / (d1 + d2) divides 0 by 0: the handles are NaN.
    Contour c({zgPoint(2, 2), zgPoint(2, 2), zgPoint(2, 2)});
    c.at(1)->smooth(false, false, 2, -1.0);
    EXPECT_TRUE(qIsNaN(c.at(1)->handleIn.x));
    EXPECT_TRUE(qIsNaN(c.at(1)->handleOut.y));
}

TEST(SegmentSmooth, ClosedContourWrapsTheNeighbours)
{
    // Segment 0 of a closed contour has the last segment as its previous one.
    Contour c({zgPoint(4, 0), zgPoint(4, 9), zgPoint(0, 0)}, true);
    c.at(0)->smooth(false, false, 1, -1.0);
    expectPoint(c.at(0)->handleIn, -0.8, -0.8, 1e-12);
    expectPoint(c.at(0)->handleOut, 1.2, 1.2, 1e-12);
}

TEST(SegmentSmooth, OtherTypesAndFreeSegmentsChangeNothing)
{
    Contour c({zgPoint(0, 0), zgPoint(4, 0), zgPoint(4, 9)});
    c.at(1)->setHandleIn(zgPoint(1, 1));
    c.at(1)->smooth(false, false, 3, -1.0);
    c.at(1)->smooth(false, false, 0, -1.0);
    expectPoint(c.at(1)->handleIn, 1, 1, 0.0);
    expectPoint(c.at(1)->handleOut, 0, 0, 0.0);
    // Without a contour both neighbours are missing: distances 0, so
    // Catmull-Rom has no neighbour to write for and geometric needs both.
    zgSegment free(3, 3);
    free.smooth(false, false, 1, -1.0);
    free.smooth(false, false, 2, -1.0);
    expectZeroHandles(&free);
}

TEST(SegmentSmooth, NoChangeNoticeToTheCurves)
{
    Contour c({zgPoint(0, 0), zgPoint(10, 0), zgPoint(10, 10)});
    zgCurve *curve = c.path.getCurves().first();
    EXPECT_DOUBLE_EQ(curve->getLength(), 10.0);
    c.at(1)->smooth(false, false, 1, -1.0);
    EXPECT_TRUE(c.at(1)->hasHandles());
    // The cached length stays that of the straight curve.
    EXPECT_DOUBLE_EQ(curve->length, 10.0);
}

// ---------------------------------------------------------------- contours

TEST(PathSmooth, PerSegmentTypesLeaveTheRangeEndsOuterHandles)
{
    Contour c({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0), zgPoint(40, 8)});
    for (int i = 0; i < 5; ++i) {
        c.at(i)->setHandleIn(zgPoint(1, 1));
        c.at(i)->setHandleOut(zgPoint(2, 2));
    }
    Contour expected({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0), zgPoint(40, 8)});
    c.path.smooth(1, -1.0, 1, 3);
    expected.at(1)->smooth(true, false, 1, -1.0);
    expected.at(2)->smooth(false, false, 1, -1.0);
    expected.at(3)->smooth(false, true, 1, -1.0);
    expectPoint(c.at(0)->handleOut, 2, 2, 0.0);
    expectPoint(c.at(1)->handleIn, 1, 1, 0.0);
    expectPoint(c.at(1)->handleOut, expected.at(1)->handleOut.x, expected.at(1)->handleOut.y, 0.0);
    expectPoint(c.at(2)->handleIn, expected.at(2)->handleIn.x, expected.at(2)->handleIn.y, 0.0);
    expectPoint(c.at(3)->handleIn, expected.at(3)->handleIn.x, expected.at(3)->handleIn.y, 0.0);
    expectPoint(c.at(3)->handleOut, 2, 2, 0.0);
    expectPoint(c.at(4)->handleIn, 1, 1, 0.0);
}

TEST(PathSmooth, OpenRangeGivenBackwardsIsSwapped)
{
    Contour a({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0)});
    Contour b({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0)});
    a.path.smooth(2, -1.0, 2, 1);
    b.path.smooth(2, -1.0, 1, 2);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(*a.at(i) == *b.at(i)) << i;
    EXPECT_TRUE(a.at(1)->hasHandles());
}

TEST(PathSmooth, NegativeIndicesCountFromTheEnd)
{
    Contour a({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0), zgPoint(35, 9)});
    Contour b({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0), zgPoint(35, 9)});
    a.path.smooth(1, -1.0, -3, -2);
    b.path.smooth(1, -1.0, 2, 3);
    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(*a.at(i) == *b.at(i)) << i;
    EXPECT_TRUE(a.at(2)->hasHandles());
}

TEST(PathSmooth, ClosedLoopPerSegmentWritesEveryHandle)
{
    Contour c(zgtest::squarePoints(0, 0, 10), true);
    c.path.smooth(1, -1.0, 0, -1);
    // Uniform square, centripetal: each handle is (p_next - p_prev) / 6 scaled
    // by the equal distances, i.e. a sixth of the diagonal.
    expectPoint(c.at(0)->handleOut, 10.0 / 6.0, -10.0 / 6.0, 1e-12);
    expectPoint(c.at(0)->handleIn, -10.0 / 6.0, 10.0 / 6.0, 1e-12);
    for (int i = 0; i < 4; ++i) {
        EXPECT_NEAR(c.at(i)->handleIn.getLength(), std::sqrt(200.0) / 6.0, 1e-12);
        EXPECT_NEAR(c.at(i)->handleOut.getLength(), std::sqrt(200.0) / 6.0, 1e-12);
    }
}

TEST(PathSmooth, RangeTypeOnTwoSegmentsChangesNothing)
{
    for (int type : {3, 4}) {
        Contour c({zgPoint(0, 0), zgPoint(10, 5)});
        c.path.smooth(type, -1.0, 0, -1);
        expectZeroHandles(c.at(0));
        expectZeroHandles(c.at(1));
    }
}

TEST(PathSmooth, ThreeOpenSegmentsAsymmetricMirrorsTheMiddle)
{
    // n = 2: rows (2, 1 | k0 + 2 k1) and (1, 2 | 3 k1). With k = (0, 0),
    // (10, 0), (20, 10): 2 p0 + p1 = 20, p0 + 2 p1 = 30 gives p0 = 10/3,
    // p1 = 40/3 in x; in y 2 p0 + p1 = 0, p0 + 2 p1 = 0: zero.
    Contour c({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 10)});
    c.path.smooth(3, -1.0, 0, -1);
    expectPoint(c.at(0)->handleOut, 10.0 / 3.0, 0.0, 1e-12);
    expectPoint(c.at(0)->handleIn, 0.0, 0.0, 0.0);
    expectPoint(c.at(1)->handleOut, 40.0 / 3.0 - 10.0, 0.0, 1e-12);
    expectPoint(c.at(1)->handleIn, 10.0 - 40.0 / 3.0, 0.0, 1e-12);
    // The last node keeps its handle-out and gets the mirror of (3 k2 - p1) / 2.
    expectPoint(c.at(2)->handleOut, 0.0, 0.0, 0.0);
    expectPoint(c.at(2)->handleIn, -((60.0 - 40.0 / 3.0) * 0.5 - 20.0), -(15.0 - 10.0), 1e-12);
}

TEST(PathSmooth, OpenRangesMatchTheDenseSolve)
{
    std::mt19937 rng(20261123);
    for (int trial = 0; trial < 40; ++trial) {
        const int length = 3 + trial % 9;
        const QVector<zgPoint> points = randomPoints(rng, length, 10.0);
        const int type = 3 + trial % 2;
        std::uniform_int_distribution<int> pick(0, length - 1);
        int from = pick(rng);
        int to = pick(rng);
        if (to < from)
            std::swap(from, to);
        Contour c(points);
        for (int i = 0; i < length; ++i) {
            c.at(i)->setHandleIn(zgPoint(0.5, 0.25));
            c.at(i)->setHandleOut(zgPoint(-0.5, 0.75));
        }
        c.path.smooth(type, -1.0, from, to);

        const int left = from > 0 ? 1 : 0;
        const int right = to < length - 1 ? 1 : 0;
        std::vector<zgPoint> knots;
        for (int j = from - left; j <= to + right; ++j)
            knots.push_back(points[j]);
        const int n = int(knots.size()) - 1;
        if (n < 2) {
            for (int i = 0; i < length; ++i)
                expectPoint(c.at(i)->handleIn, 0.5, 0.25, 0.0);
            continue;
        }
        const std::vector<zgPoint> control = denseControlPoints(knots, type);
        for (int i = 0; i < length; ++i) {
            const int k = i - from + left;
            const bool updated = i >= from && i <= to;
            const zgPoint h = updated ? control[k].subtract(points[i]) : zgPoint();
            if (updated && i < to)
                expectPoint(c.at(i)->handleOut, h.x, h.y, 1e-12);
            else
                expectPoint(c.at(i)->handleOut, -0.5, 0.75, 0.0);
            if (updated && i > from)
                expectPoint(c.at(i)->handleIn, -h.x, -h.y, 1e-12);
            else
                expectPoint(c.at(i)->handleIn, 0.5, 0.25, 0.0);
        }
    }
}

TEST(PathSmooth, ClosedLoopMatchesTheDenseSolveWithPaddingOfFour)
{
    std::mt19937 rng(77);
    for (int trial = 0; trial < 30; ++trial) {
        const int length = 2 + trial % 10;
        const QVector<zgPoint> points = randomPoints(rng, length, 10.0);
        const int type = 3 + trial % 2;
        Contour c(points, true);
        c.path.smooth(type, -1.0, 0, -1);

        const int padding = std::min(length, 4);
        std::vector<zgPoint> knots;
        for (int j = -padding; j <= length - 1 + padding; ++j)
            knots.push_back(points[(j + length) % length]);
        const std::vector<zgPoint> control = denseControlPoints(knots, type);
        for (int i = 0; i < length; ++i) {
            const zgPoint h = control[i + padding].subtract(points[i]);
            expectPoint(c.at(i)->handleOut, h.x, h.y, 1e-12);
            expectPoint(c.at(i)->handleIn, -h.x, -h.y, 1e-12);
        }
    }
}

TEST(PathSmooth, ClosedWrappedRangeHasPaddingOneAndKeepsOuterHandles)
{
    // from 4 > to 1 on six segments: from becomes -2, the range is segments
    // 4, 5, 0, 1 and the knots run from segment 3 to segment 2.
    const QVector<zgPoint> points = {zgPoint(0, 0), zgPoint(10, 1), zgPoint(20, -3),
                                     zgPoint(25, 8), zgPoint(12, 15), zgPoint(2, 9)};
    for (int type : {3, 4}) {
        Contour c(points, true);
        for (int i = 0; i < 6; ++i) {
            c.at(i)->setHandleIn(zgPoint(0.5, 0.25));
            c.at(i)->setHandleOut(zgPoint(-0.5, 0.75));
        }
        c.path.smooth(type, -1.0, 4, 1);
        const std::vector<zgPoint> knots = {points[3], points[4], points[5], points[0], points[1], points[2]};
        const std::vector<zgPoint> control = denseControlPoints(knots, type);
        const int order[] = {4, 5, 0, 1};
        for (int k = 0; k < 4; ++k) {
            const int i = order[k];
            const zgPoint h = control[k + 1].subtract(points[i]);
            if (k < 3)
                expectPoint(c.at(i)->handleOut, h.x, h.y, 1e-12);
            else
                expectPoint(c.at(i)->handleOut, -0.5, 0.75, 0.0);
            if (k > 0)
                expectPoint(c.at(i)->handleIn, -h.x, -h.y, 1e-12);
            else
                expectPoint(c.at(i)->handleIn, 0.5, 0.25, 0.0);
        }
        for (int i : {2, 3}) {
            expectPoint(c.at(i)->handleIn, 0.5, 0.25, 0.0);
            expectPoint(c.at(i)->handleOut, -0.5, 0.75, 0.0);
        }
    }
}

TEST(PathSmooth, ClosedExplicitFullRangeIsNoLoop)
{
    // from 0, to 3 on a closed square: padding 1 each side, the first node
    // keeps its handle-in and the last its handle-out.
    Contour c(zgtest::squarePoints(0, 0, 10), true);
    c.at(0)->setHandleIn(zgPoint(1, 1));
    c.at(3)->setHandleOut(zgPoint(2, 2));
    c.path.smooth(4, -1.0, 0, 3);
    expectPoint(c.at(0)->handleIn, 1, 1, 0.0);
    expectPoint(c.at(3)->handleOut, 2, 2, 0.0);
    const QVector<zgPoint> sq = zgtest::squarePoints(0, 0, 10);
    const std::vector<zgPoint> knots = {sq[3], sq[0], sq[1], sq[2], sq[3], sq[0]};
    const std::vector<zgPoint> control = denseControlPoints(knots, 4);
    const zgPoint h = control[1].subtract(sq[0]);
    expectPoint(c.at(0)->handleOut, h.x, h.y, 1e-12);
}

TEST(PathSmooth, DegenerateInputIsHarmless)
{
    zgPath empty;
    for (int type : {1, 2, 3, 4})
        empty.smooth(type, -1.0, 0, -1);
    EXPECT_TRUE(empty.isEmpty());

    Contour one({zgPoint(3, 4)});
    for (int type : {1, 2, 3, 4})
        one.path.smooth(type, -1.0, 0, -1);
    expectPoint(one.at(0)->handleIn, 0, 0, 0.0);

    // Indices outside an open contour: skipped, or no system for a range type.
    Contour c({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 5), zgPoint(30, 0)});
    c.path.smooth(1, -1.0, -100, 100);
    c.path.smooth(4, -1.0, -2, 3);
    c.path.smooth(4, -1.0, 0, 9);
    c.path.smooth(3, -1.0, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    EXPECT_TRUE(c.at(1)->hasHandles()); // from the first call, which covers all four
    Contour closed(zgtest::squarePoints(0, 0, 10), true);
    closed.path.smooth(4, -1.0, std::numeric_limits<int>::max(), std::numeric_limits<int>::min());
    closed.path.smooth(1, -1.0, std::numeric_limits<int>::max(), std::numeric_limits<int>::min());

    // NaN points spread NaN into the handles but end normally.
    Contour nan({zgPoint(0, 0), zgPoint(qQNaN(), 1), zgPoint(2, 2), zgPoint(3, 0)});
    nan.path.smooth(4, -1.0, 0, -1);
    EXPECT_TRUE(qIsNaN(nan.at(2)->handleIn.x));
}

TEST(PathSmooth, SeededPropertiesKeepPointsAndMirrorHandles)
{
    // Every type keeps every point; the range types give each updated node
    // opposite handles of equal length; Catmull-Rom and geometric give
    // collinear ones.
    std::mt19937 rng(4242);
    int checked = 0;
    for (int trial = 0; trial < 200; ++trial) {
        const int length = 3 + trial % 13;
        const QVector<zgPoint> points = randomPoints(rng, length, 500.0);
        const bool closed = trial % 3 == 0;
        const int type = 1 + trial % 4;
        Contour c(points, closed);
        c.path.smooth(type, -1.0, 0, -1);
        const bool loop = closed;
        for (int i = 0; i < length; ++i) {
            EXPECT_EQ(c.at(i)->point.x, points[i].x);
            EXPECT_EQ(c.at(i)->point.y, points[i].y);
            const bool inner = loop || (i > 0 && i < length - 1);
            if (!inner)
                continue;
            const zgPoint in = c.at(i)->handleIn;
            const zgPoint out = c.at(i)->handleOut;
            const double scale = 1e-9 * (1.0 + out.getLength());
            EXPECT_NEAR(in.cross(out), 0.0, scale * (1.0 + in.getLength())) << trial << " " << i;
            EXPECT_LE(in.dot(out), 0.0) << trial << " " << i;
            if (type >= 3) {
                EXPECT_NEAR(in.x, -out.x, scale);
                EXPECT_NEAR(in.y, -out.y, scale);
            }
            ++checked;
        }
    }
    EXPECT_GT(checked, 1000);
}

TEST(PathSmooth, RunTwiceGivesTheSameHandles)
{
    std::mt19937 rng(9);
    const QVector<zgPoint> points = randomPoints(rng, 12, 100.0);
    for (int type : {1, 2, 3, 4}) {
        Contour a(points, true);
        Contour b(points, true);
        a.path.smooth(type, -1.0, 0, -1);
        b.path.smooth(type, -1.0, 0, -1);
        for (int i = 0; i < 12; ++i) {
            EXPECT_EQ(a.at(i)->handleIn.x, b.at(i)->handleIn.x);
            EXPECT_EQ(a.at(i)->handleOut.y, b.at(i)->handleOut.y);
        }
    }
}

TEST(XPathSmooth, SmoothsEveryChildWithTheSameArguments)
{
    XPath xpath;
    zgPath *first = zgtest::newContour({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 10)}, false);
    zgPath *second = zgtest::newContour({zgPoint(50, 0), zgPoint(60, 5), zgPoint(70, 0), zgPoint(80, 5)}, false);
    xpath.addChild(first);
    xpath.addChild(second);
    xpath.smooth(3, -1.0, 0, -1);
    Contour expectedFirst({zgPoint(0, 0), zgPoint(10, 0), zgPoint(20, 10)});
    Contour expectedSecond({zgPoint(50, 0), zgPoint(60, 5), zgPoint(70, 0), zgPoint(80, 5)});
    expectedFirst.path.smooth(3, -1.0, 0, -1);
    expectedSecond.path.smooth(3, -1.0, 0, -1);
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(*first->segments.at(i) == *expectedFirst.at(i)) << i;
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(*second->segments.at(i) == *expectedSecond.at(i)) << i;
    EXPECT_TRUE(first->segments.at(1)->hasHandles());
}

} // namespace
