// The clipping recursion of addCurveIntersections runs on plain arrays. These
// tests hold it to the recursion written with the static functions on
// vectors (getConvexHull, clipConvexHull, getPart, subdivide): on thousands
// of seeded curve pairs, among them near tangencies that reach the limits,
// both add the same locations bit for bit and return the same call count.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

int referenceClip(QVector<double> v1, QVector<double> v2, zgCurve *c1, zgCurve *c2,
                  QList<zgCurveLocation *> &locations, opParam &param, double tMin, double tMax,
                  double uMin, double uMax, bool flip, double recursion, int calls)
{
    if (recursion + 1.0 >= 48.0)
        return calls;
    if (++calls > 0x1000)
        return calls;
    if (v1.size() < 8 || v2.size() < 8)
        return calls;
    auto distance = [&](double x, double y) {
        return zgLine::getSignedDistance(v2[0], v2[1], v2[6], v2[7], x, y, false);
    };
    const double d1 = distance(v2[2], v2[3]);
    const double d2 = distance(v2[4], v2[5]);
    const double factor = d1 * d2 > 0.0 ? 0.75 : 4.0 / 9.0;
    const double dMin = factor * std::min({ 0.0, d1, d2 });
    const double dMax = factor * std::max({ 0.0, d1, d2 });
    const double dp0 = distance(v1[0], v1[1]);
    const double dp1 = distance(v1[2], v1[3]);
    const double dp2 = distance(v1[4], v1[5]);
    const double dp3 = distance(v1[6], v1[7]);
    QVector<QVector<QVector<double>>> hull = zgCurve::getConvexHull(dp0, dp1, dp2, dp3);
    QVector<QVector<double>> top = hull[0];
    QVector<QVector<double>> bottom = hull[1];
    if (d1 == 0.0 && d2 == 0.0 && dp0 == 0.0 && dp1 == 0.0 && dp2 == 0.0 && dp3 == 0.0)
        return calls;
    const double tMinClip = zgCurve::clipConvexHull(top, bottom, dMin, dMax);
    if (std::isnan(tMinClip))
        return calls;
    std::reverse(top.begin(), top.end());
    std::reverse(bottom.begin(), bottom.end());
    const double tMaxClip = zgCurve::clipConvexHull(top, bottom, dMin, dMax);
    if (std::isnan(tMaxClip))
        return calls;
    const double tMinNew = tMinClip * (tMax - tMin) + tMin;
    const double tMaxNew = tMaxClip * (tMax - tMin) + tMin;
    if (std::max(tMaxNew - tMinNew, uMax - uMin) < 1e-09) {
        if (c1)
            v1 = c1->getValues(nullptr);
        if (c2)
            v2 = c2->getValues(nullptr);
        const double t = (tMinNew + tMaxNew) / 2.0;
        const double u = (uMin + uMax) / 2.0;
        const zgPoint none = crossingtest::noPoint();
        if (flip)
            zgCurve::addLocation(locations, param, v2, c2, u, none, v1, c1, t, none, false);
        else
            zgCurve::addLocation(locations, param, v1, c1, t, none, v2, c2, u, none, false);
        return calls;
    }
    v1 = zgCurve::getPart(v1, tMinClip, tMaxClip);
    const double depth = recursion + 1.0;
    if (tMaxClip - tMinClip <= 0.8) {
        calls = referenceClip(v2, v1, c2, c1, locations, param, uMin, uMax, tMinNew, tMaxNew,
                              !flip, depth, calls);
    } else if (tMaxNew - tMinNew > uMax - uMin) {
        const QVector<QVector<double>> parts = zgCurve::subdivide(v1, 0.5);
        const double t = (tMinNew + tMaxNew) / 2.0;
        calls = referenceClip(v2, parts[0], c2, c1, locations, param, uMin, uMax, tMinNew, t,
                              !flip, depth, calls);
        calls = referenceClip(v2, parts[1], c2, c1, locations, param, uMin, uMax, t, tMaxNew,
                              !flip, depth, calls);
    } else {
        const QVector<QVector<double>> parts = zgCurve::subdivide(v2, 0.5);
        const double u = (uMin + uMax) / 2.0;
        calls = referenceClip(parts[0], v1, c2, c1, locations, param, uMin, u, tMinNew, tMaxNew,
                              !flip, depth, calls);
        calls = referenceClip(parts[1], v1, c2, c1, locations, param, u, uMax, tMinNew, tMaxNew,
                              !flip, depth, calls);
    }
    return calls;
}

void appendBits(std::string &out, double value)
{
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof value);
}

std::string fieldsOf(const zgCurveLocation *location)
{
    std::string out = location->overlap ? "o" : "-";
    out += location->curve ? std::to_string(reinterpret_cast<std::uintptr_t>(location->curve))
                           : "null";
    appendBits(out, location->time);
    appendBits(out, location->point.x);
    appendBits(out, location->point.y);
    return out;
}

std::vector<std::string> fieldsOf(QList<zgCurveLocation *> &locations)
{
    std::vector<std::string> fields;
    for (zgCurveLocation *location : locations)
        fields.push_back(fieldsOf(location) + "|" + fieldsOf(location->intersection()));
    crossingtest::releaseAll(locations);
    return fields;
}

struct Pair
{
    QVector<double> v1;
    QVector<double> v2;
};

// Random cubics in a square of 100; some second curves are copies of the
// first moved by a hair or split from it, which meet it along a stretch or
// touch it, and drive the search to its limits.
Pair randomPair(std::mt19937_64 &random)
{
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    std::uniform_int_distribution<int> kind(0, 15);
    Pair pair;
    for (int k = 0; k < 8; ++k)
        pair.v1.append(coordinate(random));
    switch (kind(random)) {
    case 0:
        pair.v2 = pair.v1;
        for (double &value : pair.v2)
            value += 1e-9 * coordinate(random);
        break;
    case 1:
        pair.v2 = zgCurve::getPart(pair.v1, coordinate(random) / 100.0,
                                   coordinate(random) / 100.0);
        break;
    default:
        for (int k = 0; k < 8; ++k)
            pair.v2.append(coordinate(random));
        break;
    }
    return pair;
}

} // namespace

TEST(ClippingEquivalence, ArraysGiveTheLocationsAndCallCountOfTheVectorForm)
{
    std::mt19937_64 random(20261123);
    int withLocations = 0;
    int atCallLimit = 0;
    const int cases = 4000;
    for (int n = 0; n < cases; ++n) {
        const Pair pair = randomPair(random);
        crossingtest::FreeCurve c1(pair.v1);
        crossingtest::FreeCurve c2(pair.v2);
        const bool flip = n % 5 == 0;
        // Some searches run on free values without curves.
        zgCurve *curve1 = n % 7 == 0 ? nullptr : c1.get();
        zgCurve *curve2 = n % 7 == 0 ? nullptr : c2.get();
        opParam expectedParam;
        QList<zgCurveLocation *> expectedList;
        const int expectedCalls = referenceClip(pair.v1, pair.v2, curve1, curve2, expectedList,
                                                expectedParam, 0.0, 1.0, 0.0, 1.0, flip, 0.0, 0);
        opParam actualParam;
        QList<zgCurveLocation *> actualList;
        const int actualCalls = zgCurve::addCurveIntersections(pair.v1, pair.v2, curve1, curve2,
                                                               actualList, actualParam, 0.0, 1.0,
                                                               0.0, 1.0, flip, 0.0, 0);
        EXPECT_EQ(actualCalls, expectedCalls) << "case " << n;
        const std::vector<std::string> expected = fieldsOf(expectedList);
        const std::vector<std::string> actual = fieldsOf(actualList);
        ASSERT_EQ(actual, expected) << "case " << n;
        withLocations += expected.empty() ? 0 : 1;
        atCallLimit += expectedCalls > 0x1000 ? 1 : 0;
    }
    // The pairs must reach both the leaves and the call limit.
    EXPECT_GT(withLocations, cases / 4);
    EXPECT_GT(atCallLimit, 10);
    std::printf("clipping equivalence: %d pairs, %d with locations, %d at the call limit\n",
                cases, withLocations, atCallLimit);
}

// A call on arrays shorter than eight values counts itself and finds nothing,
// as before; at the depth limit it does not count.
TEST(ClippingEquivalence, ShortArraysCountTheCallAndAddNothing)
{
    opParam param;
    QList<zgCurveLocation *> locations;
    const QVector<double> shortValues = { 0.0, 0.0, 1.0, 1.0 };
    const QVector<double> full = crossingtest::values(0, 0, 1, 2, 3, 2, 4, 0);
    EXPECT_EQ(zgCurve::addCurveIntersections(shortValues, full, nullptr, nullptr, locations, param,
                                             0.0, 1.0, 0.0, 1.0, false, 0.0, 7),
              8);
    EXPECT_EQ(zgCurve::addCurveIntersections(full, shortValues, nullptr, nullptr, locations, param,
                                             0.0, 1.0, 0.0, 1.0, false, 47.0, 7),
              7);
    EXPECT_TRUE(locations.isEmpty());
}
