// The chains of locations that a division builds at the points where
// contours meet: the joins without walks make the same chains, in the same
// order, as joins that walk both chains, and a point where many contours
// meet is divided in bounded work.
#include "boolean/location_chains.h"
#include "boolean/tracing_test_support.h"

#include <zgraphics/drawing.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <vector>

namespace {

// n locations, with partners and chains set up by index, so that two
// worlds built from one description can be compared link by link.
class LocationWorld
{
public:
    explicit LocationWorld(const std::vector<int> &partners)
    {
        for (size_t i = 0; i < partners.size(); ++i)
            m_locations.push_back(std::make_unique<zgCurveLocation>());
        for (size_t i = 0; i < partners.size(); ++i)
            at(int(i))->setIntersection(partners[i] < 0 ? nullptr : at(partners[i]));
    }

    zgCurveLocation *at(int index) const { return index < 0 ? nullptr : m_locations[index].get(); }
    int size() const { return int(m_locations.size()); }

    int indexOf(const zgCurveLocation *location) const
    {
        for (int i = 0; i < size(); ++i) {
            if (at(i) == location)
                return i;
        }
        return location ? -2 : -1;
    }

private:
    std::vector<std::unique_ptr<zgCurveLocation>> m_locations;
};

// The division's step at one segment, by walking joins: the partner of
// location hangs on an empty segment; otherwise the chain at the segment is
// joined with the partner's, and then with the chain of every partner of a
// location on it.
void walkingLinkAtSegment(zgCurveLocation *&hanging, zgCurveLocation *location)
{
    zgCurveLocation *inter = hanging;
    zgCurveLocation *dest = location->intersection();
    if (!inter) {
        hanging = dest;
        return;
    }
    zgTracingInternals::linkIntersections(inter, dest);
    for (zgCurveLocation *chained = inter; chained; chained = chained->next())
        zgTracingInternals::linkIntersections(chained->intersection(), inter);
}

// The same step through chains.
void joiningLinkAtSegment(zgLocationChains &chains, zgCurveLocation *&hanging,
                          zgCurveLocation *location)
{
    if (!hanging)
        hanging = location->intersection();
    else
        chains.linkAt(hanging, location->intersection());
}

// Both worlds have every location linked to the same indices.
void expectSameLinks(const LocationWorld &walked, const LocationWorld &joined)
{
    for (int i = 0; i < walked.size(); ++i) {
        ASSERT_EQ(walked.indexOf(walked.at(i)->next()), joined.indexOf(joined.at(i)->next())) << i;
        ASSERT_EQ(walked.indexOf(walked.at(i)->previous()),
                  joined.indexOf(joined.at(i)->previous()))
            << i;
    }
}

} // namespace

TEST(LocationChains, JoinsLikeTheWalkingLinkInOneCall)
{
    zgCurveLocation a, b, c, d;
    zgLocationChains chains;
    chains.link(&a, &b);
    chains.link(&c, &d);
    chains.link(&b, &a); // already one chain
    EXPECT_EQ(a.next(), &b);
    EXPECT_EQ(a.previous(), nullptr);
    EXPECT_EQ(b.next(), nullptr);
    // From the middle of a chain: the whole of d's chain goes behind b's tail.
    chains.link(&b, &d);
    EXPECT_EQ(tracingtest::chainOf(&c), (QList<zgCurveLocation *>{&a, &b, &c, &d}));
    chains.link(&d, &a);
    chains.link(nullptr, &a);
    chains.link(&a, nullptr);
    EXPECT_EQ(tracingtest::chainOf(&d), (QList<zgCurveLocation *>{&a, &b, &c, &d}));
}

TEST(LocationChains, ReadsChainsThatWereLinkedBefore)
{
    zgCurveLocation a, b, c, d, e;
    zgTracingInternals::linkIntersections(&a, &b);
    zgTracingInternals::linkIntersections(&b, &c);
    zgTracingInternals::linkIntersections(&d, &e);
    zgLocationChains chains;
    // Met first in the middle of its chain: still joined behind the tail.
    chains.link(&e, &b);
    EXPECT_EQ(tracingtest::chainOf(&a), (QList<zgCurveLocation *>{&d, &e, &a, &b, &c}));
    chains.link(&c, &d);
    EXPECT_EQ(tracingtest::chainOf(&a).size(), 5);
    EXPECT_EQ(c.next(), nullptr);
}

TEST(LocationChains, ALinkBackToTheStartEndsTheReading)
{
    // A damaged chain that closes on itself: it is read once around, and
    // joining it with another location ends.
    zgCurveLocation a, b, c, lone;
    a.setNext(&b);
    b.setPrevious(&a);
    b.setNext(&c);
    c.setPrevious(&b);
    c.setNext(&a);
    a.setPrevious(&c);
    zgLocationChains chains;
    chains.link(&b, &lone);
    chains.link(&lone, &a);
    EXPECT_EQ(lone.previous(), &b);
    EXPECT_EQ(b.next(), &lone);
}

TEST(LocationChains, TheStepAtASegmentEndsOnAChainThatClosesOnItself)
{
    // a -> b -> a, each the other's partner: the walk along the chain
    // comes back to its start and ends there.
    zgCurveLocation a, b, partner;
    a.setNext(&b);
    b.setPrevious(&a);
    b.setNext(&a);
    a.setPrevious(&b);
    a.setIntersection(&b);
    b.setIntersection(&partner);
    zgLocationChains chains;
    chains.linkAt(&a, &partner);
    // Read from a, the chain runs b (reached backwards), a: the partner
    // outside is joined once, behind a.
    EXPECT_EQ(a.next(), &partner);
    EXPECT_EQ(partner.previous(), &a);
    EXPECT_EQ(b.next(), &a);
    EXPECT_EQ(partner.next(), nullptr);
}

// Seeded worlds of up to 80 locations, some without a partner, some chained
// before the division; a few segments take many locations, as at the corners
// of stacked shapes. After every step, the joins without walks have made
// exactly the links of the walking joins.
TEST(LocationChains, MakesTheSameChainsAsTheWalkingLinks)
{
    std::mt19937 random(20261124);
    int joinsChecked = 0;
    int longestChain = 0;
    for (int round = 0; round < 1500; ++round) {
        const int n = std::uniform_int_distribution<int>(2, 80)(random);
        std::vector<int> partners(n, -1);
        std::vector<int> order(n);
        for (int i = 0; i < n; ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), random);
        for (int i = 0; i + 1 < n; i += 2) {
            if (random() % 8 == 0)
                continue; // a location without a partner
            partners[order[i]] = order[i + 1];
            partners[order[i + 1]] = order[i];
        }
        LocationWorld walked(partners);
        LocationWorld joined(partners);
        std::uniform_int_distribution<int> anyLocation(0, n - 1);
        const int chainedBefore = std::uniform_int_distribution<int>(0, n / 4)(random);
        for (int k = 0; k < chainedBefore; ++k) {
            const int from = anyLocation(random);
            const int to = anyLocation(random);
            zgTracingInternals::linkIntersections(walked.at(from), walked.at(to));
            zgTracingInternals::linkIntersections(joined.at(from), joined.at(to));
        }

        const int segmentCount = std::uniform_int_distribution<int>(1, 6)(random);
        std::vector<zgCurveLocation *> hangingWalked(segmentCount, nullptr);
        std::vector<zgCurveLocation *> hangingJoined(segmentCount, nullptr);
        zgLocationChains chains;
        const int steps = std::uniform_int_distribution<int>(1, 3 * n)(random);
        for (int step = 0; step < steps; ++step) {
            const int location = anyLocation(random);
            const int segment = std::uniform_int_distribution<int>(0, segmentCount - 1)(random);
            if (random() % 16 == 0) {
                // A plain join between two locations, as the division makes
                // none, to mix the chains' order.
                const int other = anyLocation(random);
                zgTracingInternals::linkIntersections(walked.at(location), walked.at(other));
                chains.link(joined.at(location), joined.at(other));
            } else {
                walkingLinkAtSegment(hangingWalked[segment], walked.at(location));
                joiningLinkAtSegment(chains, hangingJoined[segment], joined.at(location));
            }
            ASSERT_EQ(walked.indexOf(hangingWalked[segment]),
                      joined.indexOf(hangingJoined[segment]));
            expectSameLinks(walked, joined);
            if (HasFatalFailure())
                FAIL() << "round " << round << ", step " << step;
            ++joinsChecked;
        }
        for (int i = 0; i < n; ++i)
            longestChain = std::max(longestChain, int(tracingtest::chainOf(walked.at(i)).size()));
    }
    EXPECT_GT(joinsChecked, 50000);
    EXPECT_GE(longestChain, 60);
}

namespace {

// The quadrilateral that remains of both inputs below, as an open subpath
// that the conversion closes.
void addQuadrilateral(ZDPath &path)
{
    path.moveTo(-28, 0);
    path.lineTo(130, 10);
    path.lineTo(130, 80);
    path.lineTo(10, 80);
}

// The union is the quadrilateral alone, starting at (-28, 0), closed.
void expectQuadrilateral(XPath *united)
{
    ASSERT_NE(united, nullptr);
    ZDPath result;
    result.fromXPath(*united, 0);
    const QVector<QPointF> corners{{-28, 0}, {130, 10}, {130, 80}, {10, 80}, {-28, 0}};
    ASSERT_EQ(result.elements.size(), corners.size() + 1);
    for (int i = 0; i < corners.size(); ++i) {
        EXPECT_EQ(result.elementAt(i).type, i == 0 ? 0 : 1) << i;
        EXPECT_NEAR(result.elementAt(i).x, corners[i].x(), 1e-9) << i;
        EXPECT_NEAR(result.elementAt(i).y, corners[i].y(), 1e-9) << i;
    }
    EXPECT_EQ(result.elements.last().type, 4);
    // Shoelace area of the four corners.
    EXPECT_NEAR(std::fabs(united->children.at(0)->getArea()), 10330.0, 1e-6);
}

} // namespace

// Thirty-four copies of one square and a quadrilateral apart from it: every
// pair of copies overlaps along all four sides, and the corners hold
// thousands of locations. Joining their chains by walking them took minutes;
// under the even-odd rule of the working copies the even stack cancels, and
// the union and the difference are the quadrilateral, the intersection empty.
TEST(LocationChains, AnEvenStackOfCopiesOfASquareCancels)
{
    ZDPath path;
    for (int i = 0; i < 34; ++i)
        path.addRect(QRectF(-88, -88, 44, 44));
    addQuadrilateral(path);
    XPath compound;
    path.toXPath(compound, 0);
    ASSERT_EQ(compound.children.size(), 35);

    XPath *united = compound.unite(nullptr);
    expectQuadrilateral(united);
    delete united;
    const QList<XPath *> pieces = compound.divide(nullptr);
    ASSERT_EQ(pieces.size(), 2);
    expectQuadrilateral(pieces.at(0));
    ASSERT_NE(pieces.at(1), nullptr);
    EXPECT_TRUE(pieces.at(1)->children.isEmpty());
    qDeleteAll(pieces);
}

// The input that once ran for minutes: the same stack among lines to NaN
// and denormal coordinates, which the conversion drops or leaves as open
// pieces. Its union with nothing is again the quadrilateral.
TEST(LocationChains, AStackOfSquaresAmongNaNLinesUnitesToWhatRemains)
{
    ZDPath path;
    path.moveTo(2.121995789977141e-314, -64);
    path.moveTo(-28, 0);
    path.lineTo(qQNaN(), qQNaN());
    path.lineTo(5.9642130124967452e-212, -44);
    for (int i = 0; i < 34; ++i) {
        path.moveTo(-44, -44);
        path.lineTo(-88, -44);
        path.lineTo(-88, -88);
        path.lineTo(-44, -88);
        path.lineTo(-44, -44);
        path.closeSubpath();
    }
    for (int i = 0; i < 4; ++i)
        path.lineTo(qQNaN(), qQNaN());
    path.moveTo(-64, -64);
    path.moveTo(-64, -64);
    addQuadrilateral(path);
    XPath compound;
    path.toXPath(compound, 0);

    XPath *united = compound.unite(nullptr);
    expectQuadrilateral(united);
    delete united;
}
