// The operators against an independent oracle over seeded operand pairs of
// nine families: at sample points clear of every edge, the even-odd
// containment of the result's element list must equal the operator applied
// to the operands' containment, and for operands without self-crossings the
// exact areas must satisfy the inclusion-exclusion identities.
#include "boolean/boolean_oracle.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>

using namespace booleanoracle;

namespace {

enum Op { Unite, Intersect, Subtract, Exclude, OpCount };
const char *const opNames[OpCount] = {"unite", "intersect", "subtract", "exclude"};

bool expected(Op op, bool a, bool b)
{
    switch (op) {
    case Unite: return a || b;
    case Intersect: return a && b;
    case Subtract: return a && !b;
    default: return a != b;
    }
}

XPath *apply(Op op, XPath *a, XPath *b)
{
    switch (op) {
    case Unite: return a->unite(b);
    case Intersect: return a->intersect(b, true);
    case Subtract: return a->subtract(b);
    default: return a->exclude(b);
    }
}

struct Pair
{
    Shape a;
    Shape b;
    bool simple; // no self-crossing operand: the area identities apply
};

// Counts per family and operator.
struct Tally
{
    int pairs = 0;
    int pairsAgreeing = 0;
    long points = 0;
    long pointsAgreeing = 0;
    int areaChecks = 0;
    int areaAgreeing = 0;
};

Pair makePair(const std::string &family, Families &random)
{
    const double cx = 100, cy = 100;
    auto near = [&](double spread) {
        return std::make_pair(cx + random.uniform(-spread, spread),
                              cy + random.uniform(-spread, spread));
    };
    if (family == "rectangles") {
        auto c = near(35);
        return {random.rect(cx, cy), random.rect(c.first, c.second), true};
    }
    if (family == "circles") {
        auto c = near(45);
        return {random.circleShape(cx, cy), random.circleShape(c.first, c.second), true};
    }
    if (family == "stars") {
        auto c = near(40);
        return {random.star(cx, cy), random.star(c.first, c.second), true};
    }
    if (family == "blobs") {
        auto c = near(40);
        return {random.blob(cx, cy), random.blob(c.first, c.second), true};
    }
    if (family == "holes") {
        auto c = near(40);
        Shape b = random.integer(0, 1) ? random.withHole(c.first, c.second)
                                       : random.circleShape(c.first, c.second);
        return {random.withHole(cx, cy), b, true};
    }
    if (family == "self-crossing") {
        auto c = near(30);
        Shape b = random.integer(0, 1) ? random.selfCrossing(c.first, c.second)
                                       : random.star(c.first, c.second);
        return {random.selfCrossing(cx, cy), b, false};
    }
    if (family == "touching") {
        // Rectangles that meet along part of a side from outside, or circles
        // that touch at one point.
        if (random.integer(0, 1)) {
            const double w = random.uniform(20, 60), h = random.uniform(20, 60);
            const double w2 = random.uniform(20, 60), h2 = random.uniform(20, 60);
            const double dy = random.uniform(-h2 + 5, h - 5);
            return {{rectangle(cx, cy, w, h)}, {rectangle(cx + w, cy + dy, w2, h2)}, true};
        }
        const double r1 = random.uniform(15, 40), r2 = random.uniform(15, 40);
        const double angle = random.uniform(0, 2 * M_PI);
        return {{circle(cx, cy, r1)},
                {circle(cx + (r1 + r2) * std::cos(angle), cy + (r1 + r2) * std::sin(angle), r2)},
                true};
    }
    if (family == "shared edges") {
        // Squares offset by a share of their side, so that two sides of each
        // run along two sides of the other; or a rectangle inside another
        // on a common side.
        const double s = std::round(random.uniform(20, 60));
        if (random.integer(0, 1)) {
            const double shift = s * random.integer(1, 3) / 4.0;
            return {{rectangle(cx, cy, s, s)}, {rectangle(cx + shift, cy, s, s)}, true};
        }
        const double inner = s * random.integer(1, 3) / 4.0;
        return {{rectangle(cx, cy, s, s)}, {rectangle(cx, cy + inner / 2, inner, inner)}, true};
    }
    // identical: the same outline as two objects.
    Shape a;
    switch (random.integer(0, 3)) {
    case 0: a = random.rect(cx, cy); break;
    case 1: a = random.circleShape(cx, cy); break;
    case 2: a = random.star(cx, cy); break;
    default: a = random.blob(cx, cy); break;
    }
    return {a, a, true};
}

void bounds(const Shape &shape, double &x0, double &y0, double &x1, double &y1)
{
    for (const Loop &loop : shape) {
        for (const Piece &p : loop) {
            for (int k = 0; k < 4; ++k) {
                x0 = std::min(x0, p.x[k]); x1 = std::max(x1, p.x[k]);
                y0 = std::min(y0, p.y[k]); y1 = std::max(y1, p.y[k]);
            }
        }
    }
}

const std::vector<std::string> families = {"rectangles", "circles", "stars", "blobs", "holes",
                                           "self-crossing", "touching", "shared edges",
                                           "identical"};

} // namespace

TEST(OperatorOracle, SeededPairsOfNineFamilies)
{
    const int pairsPerFamily = 120;  // 1,080 pairs in all
    const int pointsPerPair = 300;
    std::map<std::string, std::array<Tally, OpCount>> tallies;
    Families random(20261123u);
    for (const std::string &family : families) {
        for (int n = 0; n < pairsPerFamily; ++n) {
            const Pair pair = makePair(family, random);
            double x0 = 1e300, y0 = 1e300, x1 = -1e300, y1 = -1e300;
            bounds(pair.a, x0, y0, x1, y1);
            bounds(pair.b, x0, y0, x1, y1);
            const double mx = 0.1 * (x1 - x0), my = 0.1 * (y1 - y0);
            QVector<std::array<double, 2>> points;
            QVector<bool> inA, inB;
            while (points.size() < pointsPerPair) {
                const double px = random.uniform(x0 - mx, x1 + mx);
                const double py = random.uniform(y0 - my, y1 + my);
                // 1e-6: sample only where no edge of either operand is near.
                if (!isClearOf(pair.a, px, py, 1e-6) || !isClearOf(pair.b, px, py, 1e-6))
                    continue;
                points.append({px, py});
                inA.append(containsEvenOdd(pair.a, px, py));
                inB.append(containsEvenOdd(pair.b, px, py));
            }
            std::unique_ptr<XPath> a(toXPath(pair.a));
            std::unique_ptr<XPath> b(toXPath(pair.b));
            const double areaA = evenOddArea(pair.a), areaB = evenOddArea(pair.b);
            double areas[OpCount] = {0, 0, 0, 0};
            for (int op = 0; op < OpCount; ++op) {
                Tally &tally = tallies[family][op];
                ++tally.pairs;
                std::unique_ptr<XPath> result(apply(Op(op), a.get(), b.get()));
                ASSERT_TRUE(result) << family << " " << opNames[op];
                const Shape shape = fromXPath(*result);
                areas[op] = evenOddArea(shape);
                int agreeing = 0;
                for (int k = 0; k < points.size(); ++k) {
                    const bool inside = containsEvenOdd(shape, points[k][0], points[k][1]);
                    if (inside == expected(Op(op), inA[k], inB[k]))
                        ++agreeing;
                }
                tally.points += points.size();
                tally.pointsAgreeing += agreeing;
                if (agreeing == points.size())
                    ++tally.pairsAgreeing;
            }
            if (pair.simple) {
                // 1e-9 relative to the larger operand: exact integrals on both sides.
                const double scale = std::max(std::fabs(areaA), std::fabs(areaB));
                const bool unionIdentity = std::fabs(areas[Unite] + areas[Intersect] - areaA
                                                     - areaB) <= 1e-9 * scale;
                const bool differenceIdentity = std::fabs(areas[Subtract] + areas[Intersect]
                                                          - areaA) <= 1e-9 * scale;
                Tally &unite = tallies[family][Unite];
                Tally &subtract = tallies[family][Subtract];
                ++unite.areaChecks;
                ++subtract.areaChecks;
                unite.areaAgreeing += unionIdentity;
                subtract.areaAgreeing += differenceIdentity;
            }
        }
    }

    std::printf("%-14s %-10s %12s %16s %12s\n", "family", "operator", "pairs ok",
                "points ok", "areas ok");
    int pairsTotal = 0, pairsOk = 0;
    for (const std::string &family : families) {
        for (int op = 0; op < OpCount; ++op) {
            const Tally &t = tallies[family][op];
            std::printf("%-14s %-10s %5d / %4d %8ld / %6ld %5d / %4d\n", family.c_str(),
                        opNames[op], t.pairsAgreeing, t.pairs, t.pointsAgreeing, t.points,
                        t.areaAgreeing, t.areaChecks);
            pairsTotal += t.pairs;
            pairsOk += t.pairsAgreeing;
            EXPECT_EQ(t.pairsAgreeing, t.pairs) << family << " " << opNames[op];
            EXPECT_EQ(t.areaAgreeing, t.areaChecks) << family << " " << opNames[op];
        }
    }
    std::printf("all: %d of %d operator runs agree at every point\n", pairsOk, pairsTotal);
}
