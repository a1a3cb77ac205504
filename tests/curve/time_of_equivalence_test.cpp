// getTimeOf turns away points far outside the control box before solving.
// These tests hold it to the search without that shortcut, bit for bit, on
// points on, near and off seeded curves of every scale, and on points just
// beyond the box at the distance the shortcut starts from.
#include "curve/curve_test_util.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>

namespace {

// The time of point on the curve without the shortcut: end points within
// 1e-12, then the roots of x and of y whose curve point lies within 2e-07,
// then the end points within 2e-07.
double timeOfBySolving(const QVector<double> &values, const zgPoint &point)
{
    const zgPoint start(values[0], values[1]);
    const zgPoint end(values[6], values[7]);
    if (point.isClose(start, 1e-12))
        return 0.0;
    if (point.isClose(end, 1e-12))
        return 1.0;
    const double coordinates[2] = { point.x, point.y };
    QVector<double> roots;
    for (int coord = 0; coord < 2; ++coord) {
        const int count = zgCurve::solveCubic(values, coord, coordinates[coord], roots, 0.0, 1.0);
        for (int i = 0; i < count && i < roots.size(); ++i) {
            if (point.isClose(zgCurve::getPoint(values, roots[i]), 2e-07))
                return roots[i];
        }
    }
    if (point.isClose(start, 2e-07))
        return 0.0;
    if (point.isClose(end, 2e-07))
        return 1.0;
    return -100.0;
}

bool sameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace

TEST(TimeOfEquivalence, PointsOnNearAndOffCurvesGiveTheTimeOfTheFullSearch)
{
    std::mt19937_64 random(77);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const double scales[] = { 1.0, 1e-300, 1e-6, 1e6, 1e150 };
    int found = 0;
    int cases = 0;
    for (int n = 0; n < 20000; ++n) {
        const double scale = scales[n % 5];
        QVector<double> v;
        for (int k = 0; k < 8; ++k)
            v.append(scale * (200.0 * unit(random) - 100.0));
        // Straight curves and zero handles among them.
        if (n % 7 == 0) {
            v[2] = v[0];
            v[3] = v[1];
        }
        if (n % 11 == 0) {
            v[4] = v[0] + (v[6] - v[0]) * 0.25;
            v[5] = v[1] + (v[7] - v[1]) * 0.25;
        }
        const zgPoint onCurve = zgCurve::getPoint(v, unit(random));
        // Offsets from 1e-9 to 1e-5 of a unit in any direction, and of the scale.
        const double angle = 2.0 * M_PI * unit(random);
        const double reach = std::pow(10.0, -9.0 + 4.0 * unit(random));
        const zgPoint points[] = {
            onCurve,
            zgPoint(onCurve.x + reach * std::cos(angle), onCurve.y + reach * std::sin(angle)),
            zgPoint(onCurve.x + scale * reach * std::cos(angle),
                    onCurve.y + scale * reach * std::sin(angle)),
            // Just beyond an end, about where the tolerance ends.
            zgPoint(v[6] + (2e-07 + 1e-9 * (unit(random) - 0.5)) * std::cos(angle),
                    v[7] + (2e-07 + 1e-9 * (unit(random) - 0.5)) * std::sin(angle)),
            zgPoint(scale * (200.0 * unit(random) - 100.0), scale * (200.0 * unit(random) - 100.0)),
        };
        for (const zgPoint &point : points) {
            const double expected = timeOfBySolving(v, point);
            const double actual = zgCurve::getTimeOf(v, point);
            ASSERT_TRUE(sameBits(actual, expected))
                    << "case " << n << ": " << actual << " against " << expected;
            found += expected == -100.0 ? 0 : 1;
            ++cases;
        }
    }
    // Both answers must be common.
    EXPECT_GT(found, cases / 5);
    EXPECT_LT(found, cases * 4 / 5);
}

// The box edge: a curve whose control box is reached only by its end point,
// probed at distances around 2e-07 along both axes and diagonally.
TEST(TimeOfEquivalence, PointsAroundTheToleranceBeyondTheBoxEdge)
{
    const QVector<double> v = curvetest::values(0, 0, 30, 40, 70, 40, 100, 0);
    const double distances[] = { 0.0, 1e-7, 1.99e-07, 2e-07, 2.0000001e-07, 2.01e-07, 3e-07, 1e-6 };
    const zgPoint directions[] = { zgPoint(1, 0), zgPoint(0, -1), zgPoint(M_SQRT1_2, -M_SQRT1_2) };
    for (double d : distances) {
        for (const zgPoint &u : directions) {
            const zgPoint point(100.0 + d * u.x, 0.0 + d * u.y);
            EXPECT_TRUE(sameBits(zgCurve::getTimeOf(v, point), timeOfBySolving(v, point)))
                    << d;
            const zgPoint before(0.0 - d * u.x, 0.0 + d * u.y);
            EXPECT_TRUE(sameBits(zgCurve::getTimeOf(v, before), timeOfBySolving(v, before)))
                    << d;
        }
    }
    // Within the tolerance the end is found, beyond it not.
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(100.0 + 1.9e-07, 0.0)), 1.0);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(100.0 + 2.1e-07, 0.0)), -100.0);
    // NaN anywhere gives the answer of the full search.
    QVector<double> withNaN = v;
    withNaN[3] = qQNaN();
    EXPECT_EQ(zgCurve::getTimeOf(withNaN, zgPoint(0.0, 1e-13)), 0.0);
    EXPECT_EQ(zgCurve::getTimeOf(withNaN, zgPoint(500.0, 500.0)), -100.0);
    EXPECT_EQ(zgCurve::getTimeOf(v, zgPoint(qQNaN(), 0.0)), -100.0);
}
