// zgCurveLocation::insert reads the location's own path and key once per
// call. This test holds it to the insertion written as first described, which
// reads them again at every step of the binary search: on seeded sequences
// of locations that repeat, nearly repeat, stand at curve ends and joints,
// on two contours and with overlaps, both give the same result for every
// call and the same list, in order.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

namespace {

int pathIdOf(zgPath *path)
{
    return path ? path->id : 0;
}

zgCurveLocation *referenceInsert(QList<zgCurveLocation *> &locations, zgCurveLocation *location,
                                 bool merge)
{
    if (locations.isEmpty()) {
        locations.insert(0, location);
        return location;
    }
    if (merge) {
        for (zgCurveLocation *entry : qAsConst(locations)) {
            if (entry->point.getDistance(location->point) > 2e-07)
                break;
            if (entry == location
                || (entry->getPath() == location->getPath() && entry->equals(location, false))) {
                if (location->overlap) {
                    entry->overlap = true;
                    if (entry->intersection())
                        entry->intersection()->overlap = true;
                }
                return entry;
            }
        }
    }
    int low = 0;
    int high = locations.size() - 1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        zgCurveLocation *entry = locations.at(middle);
        const double diff = location->getPath() == entry->getPath()
                ? (location->getIndex() + location->getTime())
                        - (entry->getIndex() + entry->getTime())
                : double(pathIdOf(location->getPath()) - pathIdOf(entry->getPath()));
        if (diff >= 0.0)
            low = middle + 1;
        else
            high = middle - 1;
    }
    locations.insert(low, location);
    return location;
}

// A closed and an open contour on a small grid, so that their curves share
// points and cross at the same places.
void build(crossingtest::Contour &closed, crossingtest::Contour &open, std::mt19937_64 &random)
{
    std::uniform_int_distribution<int> grid(0, 4);
    for (int k = 0; k < 6; ++k) {
        closed.add(grid(random) * 10.0, grid(random) * 10.0, 0.0, 0.0,
                   grid(random) == 0 ? 5.0 : 0.0, 0.0);
        open.add(grid(random) * 10.0, grid(random) * 10.0);
    }
}

double timeOf(std::mt19937_64 &random)
{
    const double times[] = { 0.0, 0.25, 0.5, 0.5 + 1e-07, 0.5 + 1e-06, 0.9999999, 1.0 };
    std::uniform_int_distribution<int> pick(0, 7);
    const int k = pick(random);
    if (k == 7)
        return std::uniform_real_distribution<double>(0.0, 1.0)(random);
    return times[k];
}

} // namespace

TEST(InsertEquivalence, SameResultsAndOrderAsTheStepByStepReads)
{
    int merged = 0;
    int inserted = 0;
    for (std::uint64_t seed = 1; seed <= 400; ++seed) {
        std::mt19937_64 random(seed);
        crossingtest::Contour closed(true);
        crossingtest::Contour open(false);
        build(closed, open, random);
        const QList<zgCurve *> curves = closed.get()->getCurves() + open.get()->getCurves();
        std::uniform_int_distribution<int> pickCurve(0, curves.size() - 1);
        std::uniform_int_distribution<int> percent(0, 99);

        // Pairs of locations; each side may stand where an earlier one
        // stands. Half of them stand at the start of the closed contour,
        // where the list begins and so where the merge scan looks, some as
        // the end of its last curve.
        const int lastClosed = closed.get()->getCurves().size() - 1;
        auto place = [&](zgCurve *&curve, double &t) {
            const int roll = percent(random);
            curve = roll < 35 ? curves.at(0) : roll < 50 ? curves.at(lastClosed)
                                                         : curves.at(pickCurve(random));
            t = roll < 35 ? 0.0 : roll < 50 ? 1.0 : timeOf(random);
        };
        std::vector<zgCurveLocation *> made;
        for (int k = 0; k < 60; ++k) {
            const bool overlap = percent(random) < 10;
            zgCurve *curveA;
            zgCurve *curveB;
            double timeA;
            double timeB;
            place(curveA, timeA);
            place(curveB, timeB);
            zgCurveLocation *a = new zgCurveLocation(curveA, timeA, crossingtest::noPoint(),
                                                     overlap, 0.0);
            zgCurveLocation *b = new zgCurveLocation(curveB, timeB, crossingtest::noPoint(),
                                                     overlap, 0.0);
            a->setIntersection(b);
            b->setIntersection(a);
            made.push_back(a);
            made.push_back(b);
        }

        QList<zgCurveLocation *> expected;
        QList<zgCurveLocation *> actual;
        for (zgCurveLocation *location : made) {
            const bool merge = percent(random) < 80;
            zgCurveLocation *expectedResult = referenceInsert(expected, location, merge);
            zgCurveLocation *actualResult = zgCurveLocation::insert(actual, location, merge);
            ASSERT_EQ(actualResult, expectedResult) << "seed " << seed;
            ASSERT_EQ(actual, expected) << "seed " << seed;
            merged += actualResult != location ? 1 : 0;
            ++inserted;
        }
        for (zgCurveLocation *location : made)
            location->release();
    }
    // Many calls must find an equal entry standing already.
    EXPECT_GT(merged, inserted / 20);
    std::printf("insert equivalence: %d calls, %d merged\n", inserted, merged);
}
