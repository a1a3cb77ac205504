// The primitives under extreme input: points, rectangles, lines, the matrix,
// the numeric solvers and the arc conversion with NaN, infinite, huge
// (1e150) and tiny (1e-300) values. Each asserts the defined result: a NaN
// point for a failed intersection, NaN for an undefined angle, no roots for
// NaN coefficients, the zero point and an empty list for a NaN arc.
#include <zgraphics/primitives.h>

#include "extreme_input.h"

#include <gtest/gtest.h>

#include <QtCore/QVector>

using namespace extreme;

TEST(PrimitivesExtremeInput, PointArithmeticPassesNaNAndInfinityOn)
{
    for (double v : allExtremes()) {
        const zgPoint p(v, 1);
        EXPECT_EQ(p.add(zgPoint(1, 1)).y, 2.0);
        EXPECT_EQ(p.multiply(2).y, 2.0);
        EXPECT_EQ(p.negate().y, -1.0);
        p.getLength();
        p.getAngle();
        p.getQuadrant();
        p.rotate(v);
        zgPoint q = p;
        q.round();
        q.setLength(v);
        q.setAngle(v);
    }
    // The zero vector normalises to (0, 0) and has direction 0.
    EXPECT_EQ(zgPoint(0, 0).normalize().x, 0.0);
    EXPECT_EQ(zgPoint(0, 0).getAngle(), 0.0);
    // A tiny vector is no zero vector: it normalises to unit length.
    const zgPoint tiny = zgPoint(kTiny, kTiny).normalize();
    EXPECT_TRUE(finitePoint(tiny));
    // A huge vector keeps its direction.
    const zgPoint huge = zgPoint(kHuge, kHuge).normalize();
    EXPECT_NEAR(huge.x, std::sqrt(0.5), 1e-12);
    // An angle to a zero vector is undefined: NaN.
    const zgPoint zero(0, 0);
    EXPECT_TRUE(std::isnan(zgPoint(1, 0).getAngle(&zero)));
    // NaN compares unequal and is no zero.
    EXPECT_TRUE(zgPoint(kNaN, kNaN).isNaN());
    EXPECT_FALSE(zgPoint(kNaN, 0).isZero());
    EXPECT_FALSE(zgPoint(kNaN, 0) == zgPoint(kNaN, 0));
    EXPECT_FALSE(zgPoint(kNaN, 0).isClose(zgPoint(0, 0), kInf));
}

TEST(PrimitivesExtremeInput, LineIntersectionsFailWithANaNPoint)
{
    // Parallel, NaN and infinite lines: a NaN point.
    EXPECT_TRUE(zgLine::intersect(0, 0, 10, 0, 0, 1, 10, 1, true, false).isNaN());
    for (double v : nonFinite()) {
        const zgPoint p = zgLine::intersect(0, 0, v, 10, 0, 10, 10, 0, false, false);
        EXPECT_TRUE(p.isNaN() || finitePoint(p)) << v;
        const zgPoint q = zgLine::intersect(0, 0, 10, 10, v, 10, 10, 0, true, false);
        EXPECT_TRUE(q.isNaN() || finitePoint(q)) << v;
    }
    // Huge crossing lines meet in the middle.
    const zgPoint p = zgLine::intersect(0, 0, kHuge, kHuge, 0, kHuge, kHuge, 0, false, false);
    ASSERT_FALSE(p.isNaN());
    EXPECT_NEAR(p.x, kHuge / 2, 1e-12 * kHuge);
    // Tiny ones have a cross product within 1e-12 of zero: parallel, a NaN point.
    EXPECT_TRUE(zgLine::intersect(0, 0, 1e-150, 1e-150, 0, 1e-150, 1e-150, 0, false, false).isNaN());
    // Side and distance of a zero-length line: px - x, no error.
    EXPECT_EQ(zgLine::getSignedDistance(5, 5, 0, 0, 2, 9, true), 3.0);
    for (double v : nonFinite())
        zgLine::getSide(0, 0, 10, 0, v, v, false, true);
}

TEST(PrimitivesExtremeInput, RectanglesOfBadValues)
{
    for (double v : allExtremes()) {
        const zgRect r(0, 0, v, 10);
        zgPoint(5, 5).isInside(r);
        r.unite(zgRect(v, v, 1, 1));
        r.center();
        r.isEmpty();
    }
    EXPECT_FALSE(zgPoint(kNaN, 5).isInside(zgRect(0, 0, 10, 10)));
    EXPECT_FALSE(zgPoint(kInf, 5).isInside(zgRect(0, 0, 10, 10)));
    EXPECT_TRUE(zgPoint(5, 5).isInside(zgRect(0, 0, kHuge, kHuge)));
}

TEST(PrimitivesExtremeInput, MatricesOfBadValues)
{
    for (double v : allExtremes()) {
        zgMatrix m(v, 0, 0, 1, 0, 0);
        const zgPoint p = zgPoint(1, 2).transform(&m);
        EXPECT_EQ(p.y, 2.0) << v;
        QVector<double> coords = {1, 2, 3, 4};
        m.transformCoords(coords, 2);
        EXPECT_EQ(coords.at(1), 2.0) << v;
        EXPECT_EQ(coords.at(3), 4.0) << v;
    }
    // A null matrix leaves the point alone.
    EXPECT_EQ(zgPoint(3, 4).transform(nullptr).x, 3.0);
}

TEST(PrimitivesExtremeInput, SolversGiveNoRootsForNaNCoefficients)
{
    QVector<double> roots;
    for (double v : {kNaN}) {
        roots.clear();
        EXPECT_EQ(zgNumeric::solveQuadratic(v, 1, 1, roots, 0, 1), 0);
        roots.clear();
        EXPECT_EQ(zgNumeric::solveQuadratic(1, v, 1, roots, 0, 0), 0);
        roots.clear();
        EXPECT_EQ(zgNumeric::solveCubic(v, 1, 1, 1, roots, 0, 1), 0);
        roots.clear();
        EXPECT_EQ(zgNumeric::solveCubic(1, 1, v, 1, roots, 0, 0), 0);
    }
    // Infinite coefficients: no finite root is made up.
    for (double v : {kInf, -kInf}) {
        roots.clear();
        const int n = zgNumeric::solveCubic(1, v, 1, 1, roots, 0, 0);
        for (int i = 0; i < qMax(n, 0); ++i)
            EXPECT_FALSE(std::isnan(roots.at(i))) << v;
    }
    // x^2 - 1 times 1e150 has its two roots; times 1e-150 or 1e-300 all
    // coefficients lie within 1e-12 of zero: every x solves it.
    roots.clear();
    ASSERT_EQ(zgNumeric::solveQuadratic(kHuge, 0, -kHuge, roots, 0, 0), 2);
    EXPECT_NEAR(std::fabs(roots.at(0)), 1.0, 1e-9);
    for (double s : {1e-150, kTiny}) {
        roots.clear();
        EXPECT_EQ(zgNumeric::solveQuadratic(s, 0, -s, roots, 0, 0), -1) << s;
    }
    // The cubic is scaled first, at every size.
    for (double s : {kHuge, 1e-150, kTiny}) {
        roots.clear();
        // (x - 0.5)(x^2 + 1) scaled: one real root.
        ASSERT_EQ(zgNumeric::solveCubic(s, -0.5 * s, s, -0.5 * s, roots, 0, 1), 1) << s;
        EXPECT_NEAR(roots.at(0), 0.5, 1e-9) << s;
    }
}

TEST(PrimitivesExtremeInput, RootSearchAndIntegralWithBadRanges)
{
    const auto f = [](double x) { return x * x - 0.25; };
    const auto df = [](double x) { return 2 * x; };
    // The search returns within its passes whatever the start.
    for (double x : allExtremes())
        zgNumeric::findRoot(f, df, x, 0, 1, 32, 1e-12);
    EXPECT_NEAR(zgNumeric::findRoot(f, df, kTiny, 0, 1, 32, 1e-12), 0.5, 1e-9);
    // A NaN range integrates to NaN; a tiny one to about nothing.
    const auto one = [](double) { return 1.0; };
    EXPECT_TRUE(std::isnan(zgNumeric::integrate(one, 0, kNaN, 8)));
    EXPECT_NEAR(zgNumeric::integrate(one, 0, kTiny, 8), kTiny, 1e-310);
    EXPECT_NEAR(zgNumeric::integrate(one, 0, kHuge, 8), kHuge, 1e-12 * kHuge);
}

TEST(PrimitivesExtremeInput, ArcConversionOfBadArguments)
{
    QVector<zgPoint> points;
    // A NaN anywhere: the warning, the zero point, no points.
    const zgPoint start = zgBezier::arcToBezier(zgRect(0, 0, 10, 10), kNaN, 90, points);
    EXPECT_EQ(start.x, 0.0);
    EXPECT_EQ(start.y, 0.0);
    EXPECT_TRUE(points.isEmpty());
    zgBezier::arcToBezier(zgRect(kNaN, 0, 10, 10), 0, 90, points);
    EXPECT_TRUE(points.isEmpty());
    // An infinite start angle or a flat rectangle: no arc either.
    EXPECT_EQ(zgBezier::arcToBezier(zgRect(0, 0, 10, 10), kInf, 90, points).x, 0.0);
    EXPECT_TRUE(points.isEmpty());
    EXPECT_EQ(zgBezier::arcToBezier(zgRect(0, 0, kTiny, 10), 0, 90, points).x, 0.0);
    EXPECT_TRUE(points.isEmpty());
    // A huge sweep is cut to a full turn; a huge start angle is a valid angle.
    zgBezier::arcToBezier(zgRect(0, 0, 10, 10), 0, kHuge, points);
    EXPECT_EQ(points.size(), 12);
    for (const zgPoint &p : points)
        EXPECT_TRUE(finitePoint(p));
    points.clear();
    zgBezier::arcToBezier(zgRect(0, 0, 10, 10), kHuge, 90, points);
    for (const zgPoint &p : points)
        EXPECT_TRUE(finitePoint(p));
    EXPECT_LE(points.size(), 15);
    // Huge rectangles stay finite.
    points.clear();
    zgBezier::arcToBezier(zgRect(0, 0, kHuge, kHuge), 0, 90, points);
    EXPECT_FALSE(points.isEmpty());
    for (const zgPoint &p : points)
        EXPECT_TRUE(finitePoint(p));
}

TEST(PrimitivesExtremeInput, EllipsePointsOfBadAngles)
{
    for (double angle : allExtremes()) {
        const zgPoint p = zgNumeric::ellipsePoint(zgRect(0, 0, 10, 10), angle);
        if (std::isfinite(angle)) {
            EXPECT_TRUE(finitePoint(p)) << angle;
        }
    }
}
