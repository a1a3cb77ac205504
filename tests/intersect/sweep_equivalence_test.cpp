// The intersection sweep passes over curve pairs whose boxes do not touch
// without visiting them. These tests hold it to a plain walk over all pairs,
// written here as the sweep was first described: on a few thousand seeded
// inputs both give the same locations, field by field and in order, in self
// mode and between two paths, with and without filters and firstOnly.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>

typedef std::function<bool(zgCurveLocation *)> Filter;

// Reaches the private sweep of XPath.
class zgSweepOrderInternals
{
public:
    static QList<zgCurveLocation *> sweep(XPath &path, XPath *other, const Filter &filter,
                                          bool firstOnly)
    {
        return path.getIntersections(other, filter, firstOnly);
    }
};

namespace {

const double kPi = 3.14159265358979323846;

// --- the walk over all pairs -----------------------------------------------------

zgRect referenceBounds(XPath &path)
{
    zgRect united;
    for (zgPath *child : path.children) {
        if (!child)
            continue;
        zgRect bounds = child->getBounds(zgBoundOpt(), zgStyle(), nullptr);
        if (bounds.width > 0.0 && bounds.height == 0.0)
            bounds.height = 1.0;
        else if (bounds.width == 0.0 && bounds.height > 0.0)
            bounds.width = 1.0;
        united = united.unite(bounds);
    }
    return united;
}

QList<zgCurveLocation *> allPairs(XPath &path, XPath *other, const Filter &filter,
                                  bool firstOnly)
{
    const bool self = !other || other == &path;
    if (!self && !referenceBounds(path).touches(referenceBounds(*other)))
        return QList<zgCurveLocation *>();
    const QList<zgCurve *> curves1 = path.getCurves();
    const QList<zgCurve *> curves2 = self ? curves1 : other->getCurves();
    const int length1 = curves1.size();
    const int length2 = curves2.size();
    QVector<QVector<double>> values2;
    for (zgCurve *curve : curves2)
        values2.append(curve->getValues(nullptr));
    QList<QList<zgCurveLocation *>> groups;
    zgPath *lastContour = nullptr;
    for (int i = 0; i < length1; ++i) {
        zgCurve *curve1 = curves1.at(i);
        const QVector<double> values1 = self ? values2.at(i) : curve1->getValues(nullptr);
        if (groups.isEmpty() || curve1->path() != lastContour) {
            lastContour = curve1->path();
            groups.append(QList<zgCurveLocation *>());
        }
        QList<zgCurveLocation *> &locations = groups.last();
        if (self) {
            opParam param;
            param.filter = filter;
            param.joinedAtStart = length1 == 1 && std::abs(values1[0] - values1[6]) <= 1e-12
                    && std::abs(values1[1] - values1[7]) <= 1e-12;
            zgCurve::getSelfIntersection(values1, curve1, locations, param);
        }
        for (int j = self ? i + 1 : 0; j < length2; ++j) {
            if (firstOnly)
                return locations;
            opParam param;
            param.filter = filter;
            if (self) {
                param.joinedAtStart = curve1->getPrevious() == curves2.at(j);
                param.joinedAtEnd = curve1->getNext() == curves2.at(j);
            }
            zgCurve::getIntersections(values1, values2.at(j), curve1, curves2.at(j), locations,
                                      param);
        }
    }
    QList<zgCurveLocation *> result;
    for (const QList<zgCurveLocation *> &group : qAsConst(groups))
        result.append(group);
    return result;
}

// --- comparison, bit for bit ------------------------------------------------------

void appendBits(std::string &out, double value)
{
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    out.append(bytes, sizeof value);
}

void appendPointer(std::string &out, const void *pointer)
{
    char bytes[sizeof pointer];
    std::memcpy(bytes, &pointer, sizeof pointer);
    out.append(bytes, sizeof pointer);
}

// Every public field of a location, with its doubles as raw bits. Partners
// and chain neighbours are new objects in each run, so they are described by
// their own fields one level deep.
std::string fieldsOf(const zgCurveLocation *location)
{
    std::string out;
    if (!location)
        return "null";
    out += location->overlap ? 'o' : '-';
    out += std::to_string(location->refCount) + ":" + std::to_string(location->version) + ":";
    appendPointer(out, location->path);
    appendPointer(out, location->curve);
    appendPointer(out, location->segment1);
    appendPointer(out, location->segment2);
    appendPointer(out, location->segmentM());
    appendBits(out, location->offset);
    appendBits(out, location->time);
    appendBits(out, location->distance);
    appendBits(out, location->point.x);
    appendBits(out, location->point.y);
    return out;
}

std::string describe(const zgCurveLocation *location)
{
    return fieldsOf(location) + "|" + fieldsOf(location->intersection()) + "|"
            + fieldsOf(location->next()) + "|" + fieldsOf(location->previous());
}

// --- inputs ------------------------------------------------------------------------

class Inputs
{
public:
    explicit Inputs(std::uint64_t seed) : m_random(seed) {}

    double unit() { return double(m_random() >> 11) * 0x1.0p-53; }
    int below(int n) { return int(m_random() % std::uint64_t(n)); }
    bool chance(double p) { return unit() < p; }

    // A contour of n segments from one of the families, count 0.
    zgPath *contour(int family, int n)
    {
        switch (family) {
        case 0:
            return randomWalk(n, 1000.0 / std::sqrt(double(n)));
        case 1:
            // Long steps: most pairs meet, so the count is kept small.
            return randomWalk(std::min(n, 40), 1000.0);
        case 2:
            return flower(n, below(3) * 0.5 + (chance(0.3) ? 0.0 : 0.1 * unit()));
        case 3:
            // On a small grid most edges meet or overlap another.
            return gridPolygon(std::min(n, 60));
        case 5:
            // Many edges through one point: crossings that merge.
            return fan(std::min(n, 60));
        case 6:
            // Circles on a grid that touch, coincide or sit a hair apart.
            return circle();
        default:
            return star(n);
        }
    }

    // Poisons some coordinates: NaN, infinity, or a huge or tiny scale.
    void poison(zgPath *path)
    {
        const int kind = below(5);
        for (zgSegment *segment : path->segments) {
            if (kind == 0 && chance(0.1))
                segment->point.x = qQNaN();
            else if (kind == 1 && chance(0.1))
                segment->handleOut.y = qQNaN();
            else if (kind == 2 && chance(0.05))
                segment->point.y = chance(0.5) ? qInf() : -qInf();
            else if (kind == 3)
                scale(segment, 1e150);
            else if (kind == 4)
                scale(segment, 1e-300);
        }
    }

private:
    static void scale(zgSegment *segment, double factor)
    {
        segment->point = zgPoint(segment->point.x * factor, segment->point.y * factor);
        segment->handleIn = zgPoint(segment->handleIn.x * factor, segment->handleIn.y * factor);
        segment->handleOut = zgPoint(segment->handleOut.x * factor,
                                     segment->handleOut.y * factor);
    }

    zgPoint handle(double size)
    {
        // Some straight pieces among the curved ones.
        if (chance(0.25))
            return zgPoint(0.0, 0.0);
        return zgPoint((unit() - 0.5) * size, (unit() - 0.5) * size);
    }

    zgPath *randomWalk(int n, double step)
    {
        zgPath *path = new zgPath(nullptr, chance(0.5));
        double x = 1000.0 * unit();
        double y = 1000.0 * unit();
        for (int k = 0; k < n; ++k) {
            path->addSegment(new zgSegment(zgPoint(x, y), handle(step), handle(step)));
            x = std::min(1000.0, std::max(0.0, x + (unit() - 0.5) * 2.0 * step));
            y = std::min(1000.0, std::max(0.0, y + (unit() - 0.5) * 2.0 * step));
        }
        return path;
    }

    // Closed outline of n cubic petals around (500, 500), turned by phase petals.
    zgPath *flower(int n, double phase)
    {
        zgPath *path = new zgPath(nullptr, true);
        const double step = 2.0 * kPi / n;
        auto at = [](double radius, double angle) {
            return zgPoint(500.0 + radius * std::cos(angle), 500.0 + radius * std::sin(angle));
        };
        for (int k = 0; k < n; ++k) {
            const double a = (k + phase) * step;
            const zgPoint point = at(300.0, a);
            const zgPoint out = at(450.0, a + 0.1 * step);
            const zgPoint in = at(450.0, a - 0.1 * step);
            path->addSegment(new zgSegment(point, zgPoint(in.x - point.x, in.y - point.y),
                                           zgPoint(out.x - point.x, out.y - point.y)));
        }
        return path;
    }

    // Points on a 5 by 5 grid: collinear and coincident edges, repeated points.
    zgPath *gridPolygon(int n)
    {
        zgPath *path = new zgPath(nullptr, chance(0.7));
        for (int k = 0; k < n; ++k) {
            const zgPoint point(below(5) * 10.0, below(5) * 10.0);
            // Handles along the axes keep some curves on grid lines.
            const zgPoint in = chance(0.7) ? zgPoint(0, 0) : zgPoint(below(3) * 5.0 - 5.0, 0.0);
            const zgPoint out = chance(0.7) ? zgPoint(0, 0) : zgPoint(-in.x, 0.0);
            path->addSegment(new zgSegment(point, in, out));
        }
        return path;
    }

    // A polygon that comes back to (500, 500) after every rim point, with
    // some of its pieces curved along the spoke: crossings and overlaps that
    // all stand at the centre, and ends that meet there.
    zgPath *fan(int n)
    {
        zgPath *path = new zgPath(nullptr, chance(0.5));
        const zgPoint centre(500.0, 500.0);
        for (int k = 0; k < n; ++k) {
            if (k % 2 == 0) {
                path->addSegment(new zgSegment(centre, zgPoint(), zgPoint()));
                continue;
            }
            const double angle = 2.0 * kPi * below(12) / 12.0;
            const zgPoint rim(500.0 + 300.0 * std::cos(angle), 500.0 + 300.0 * std::sin(angle));
            // A handle along the spoke keeps the piece on its line.
            const zgPoint along = chance(0.5) ? zgPoint()
                    : zgPoint((centre.x - rim.x) * 0.2, (centre.y - rim.y) * 0.2);
            path->addSegment(new zgSegment(rim, along, along.negate()));
        }
        return path;
    }

    // A circle of four cubic arcs with its centre on a 100-unit grid and a
    // radius of 50 (touching a neighbour), 50 shifted by 1e-07 or 3e-07
    // (near-coincident with a copy), or 70 (crossing).
    zgPath *circle()
    {
        const double kappa = 0.5522847498307936;
        const double cx = 400.0 + 100.0 * below(3);
        const double cy = 400.0 + 100.0 * below(3);
        const double shifts[] = { 0.0, 0.0, 1e-07, 3e-07 };
        const double r = chance(0.2) ? 70.0 : 50.0 + shifts[below(4)];
        zgPath *path = new zgPath(nullptr, true);
        const int start = below(4);
        for (int k = 0; k < 4; ++k) {
            const double angle = kPi / 2.0 * (start + k);
            const double c = std::cos(angle);
            const double s = std::sin(angle);
            const zgPoint tangent(-s * r * kappa, c * r * kappa);
            path->addSegment(new zgSegment(zgPoint(cx + r * c, cy + r * s), tangent.negate(),
                                           tangent));
        }
        return path;
    }

    // A closed star polygon that crosses itself.
    zgPath *star(int n)
    {
        zgPath *path = new zgPath(nullptr, true);
        const int turn = 2 + below(3);
        for (int k = 0; k < n; ++k) {
            const double angle = 2.0 * kPi * k * turn / n + 0.01 * unit();
            path->addSegment(new zgSegment(500.0 + 400.0 * std::cos(angle),
                                           500.0 + 400.0 * std::sin(angle)));
        }
        return path;
    }

    std::mt19937_64 m_random;
};

// Sizes from 1 to 500 curves, most of them small so that the walk over all
// pairs stays affordable.
int pieceCount(Inputs &inputs)
{
    const double u = inputs.unit();
    if (u < 0.6)
        return 1 + inputs.below(12);
    if (u < 0.95)
        return 1 + inputs.below(80);
    return 1 + inputs.below(500);
}

void fill(XPath &compound, Inputs &inputs, int family)
{
    const int contours = inputs.chance(0.7) ? 1 : 2 + inputs.below(2);
    for (int c = 0; c < contours; ++c) {
        zgPath *contour = inputs.contour(family, pieceCount(inputs));
        if (inputs.chance(0.08))
            inputs.poison(contour);
        compound.addChild(contour);
    }
}

Filter filterOf(int kind)
{
    switch (kind) {
    case 1:
        // The filter of getCrossings.
        return [](zgCurveLocation *l) { return l->overlap || l->isCrossing(); };
    case 2:
        return [](zgCurveLocation *) { return false; };
    case 3:
        return [](zgCurveLocation *l) { return l->time < 0.5; };
    default:
        return Filter();
    }
}

struct Outcome
{
    std::vector<std::string> fields;
};

Outcome outcomeOf(QList<zgCurveLocation *> locations)
{
    Outcome outcome;
    for (zgCurveLocation *location : locations)
        outcome.fields.push_back(describe(location));
    crossingtest::releaseAll(locations);
    return outcome;
}

// One seeded case: both searches on the same compound paths.
void checkCase(std::uint64_t seed, int &nonEmpty)
{
    Inputs inputs(seed);
    const int family = inputs.below(7);
    const bool self = inputs.chance(0.4);
    XPath first;
    fill(first, inputs, family);
    XPath second;
    if (!self)
        fill(second, inputs, inputs.chance(0.7) ? family : inputs.below(7));
    XPath *other = self ? (inputs.chance(0.5) ? nullptr : &first) : &second;
    const Filter filter = filterOf(inputs.below(4));
    const bool firstOnly = inputs.chance(0.15);

    const Outcome expected = outcomeOf(allPairs(first, other, filter, firstOnly));
    const Outcome actual = outcomeOf(zgSweepOrderInternals::sweep(first, other, filter,
                                                                  firstOnly));
    ASSERT_EQ(actual.fields.size(), expected.fields.size()) << "seed " << seed;
    for (size_t k = 0; k < expected.fields.size(); ++k)
        ASSERT_EQ(actual.fields[k], expected.fields[k]) << "seed " << seed << " location " << k;
    if (!expected.fields.empty())
        ++nonEmpty;
}

} // namespace

TEST(SweepEquivalence, SameLocationsInSameOrderAsWalkOverAllPairs)
{
    const int cases = 3000;
    int nonEmpty = 0;
    for (int seed = 1; seed <= cases; ++seed) {
        checkCase(std::uint64_t(seed), nonEmpty);
        if (HasFatalFailure())
            return;
    }
    // The inputs must exercise the search, not only its empty answers.
    EXPECT_GT(nonEmpty, cases / 3);
    std::printf("sweep equivalence: %d cases, %d with locations\n", cases, nonEmpty);
}

namespace {

// (x, y), or (y, x) when turned: the same figure mirrored in the diagonal,
// so that each margin is met on the other axis too.
zgPoint at(double x, double y, bool turned)
{
    return turned ? zgPoint(y, x) : zgPoint(x, y);
}

// An open chain of 16 arcs, each from (10 k, 0) to (10 k + 10, 0) bulging
// up to y = 7.5: boxes of height 7.5 that touch at the joints.
zgPath *archChain(bool turned)
{
    zgPath *path = new zgPath(nullptr, false);
    for (int k = 0; k <= 16; ++k)
        path->addSegment(new zgSegment(at(10.0 * k, 0.0, turned), at(-3.0, 10.0, turned),
                                       at(3.0, 10.0, turned)));
    return path;
}

// A line from (x - 8, -gap - 8) and an arc from there up to (x, -gap): the
// box of the arc has its top edge at -gap.
zgPath *hangingArc(double x, double gap, bool turned)
{
    zgPath *path = new zgPath(nullptr, false);
    path->addSegment(new zgSegment(at(x - 8.0, -gap - 8.0, turned), zgPoint(0, 0),
                                   zgPoint(0, 0)));
    path->addSegment(new zgSegment(at(x, -gap, turned), at(-3.0, -10.0, turned), zgPoint(0, 0)));
    return path;
}

zgPath *straightLine(double x1, double y1, double x2, double y2)
{
    zgPath *path = new zgPath(nullptr, false);
    path->addSegment(new zgSegment(x1, y1));
    path->addSegment(new zgSegment(x2, y2));
    return path;
}

int compareRuns(XPath &first, XPath *other)
{
    const Outcome expected = outcomeOf(allPairs(first, other, Filter(), false));
    const Outcome actual = outcomeOf(zgSweepOrderInternals::sweep(first, other, Filter(), false));
    EXPECT_EQ(actual.fields, expected.fields);
    return int(actual.fields.size());
}

} // namespace

// Box edges at and around the margin of the pair test: an end point within
// 2e-07 of a joint of the other path is found by the end-point test of the
// pair, so a pair the sweep dropped too early would show as a missing location.
TEST(SweepEquivalence, BoxesThatTouchWithinTheMarginKeepTheirPairs)
{
    const double gaps[] = { 0.0, 5e-08, 1e-07, 1.5e-07, 1.99e-07, 2e-07, 2.01e-07, 3e-07, 1e-06 };
    for (int turned = 0; turned < 2; ++turned) {
    for (double gap : gaps) {
        for (int joint = 0; joint <= 16; ++joint) {
            XPath chain;
            chain.addChild(archChain(turned));
            XPath arc;
            arc.addChild(hangingArc(10.0 * joint, gap, turned));
            // Far from every curve: pieces below, so that the arc's path
            // has enough of them to be sorted, and one that reaches up to
            // make the bounds of the two paths overlap.
            for (int k = 0; k <= 16; ++k) {
                const bool last = k == 16;
                const zgPoint from = at(1000.0 + 20.0 * k, -50.0, turned);
                const zgPoint to = at(last ? 1320.0 : 1010.0 + 20.0 * k, last ? 5.0 : -50.0,
                                      turned);
                arc.addChild(straightLine(from.x, from.y, to.x, to.y));
            }
            const int found = compareRuns(arc, &chain);
            // 1.5e-07: well inside the 2e-07 of the end-point test.
            if (gap <= 1.5e-07) {
                EXPECT_GT(found, 0) << "gap " << gap << " joint " << joint;
            }
            if (gap >= 3e-07) {
                EXPECT_EQ(found, 0) << "gap " << gap << " joint " << joint;
            }
            // The other way round, the chain's curves come first.
            compareRuns(chain, &arc);
        }
    }
    }
}

// Flat boxes (straight horizontal and vertical pieces), pieces collapsed to
// a point, and pieces with NaN or infinite coordinates among ordinary ones.
TEST(SweepEquivalence, FlatDegenerateAndNaNPiecesKeepTheOrder)
{
    const double odd[] = { qQNaN(), qInf(), -qInf(), 1e300, 0.0 };
    for (double value : odd) {
        for (int at = 0; at < 12; ++at) {
            XPath grid;
            // A comb of horizontal and vertical lines through a point of each other.
            zgPath *comb = new zgPath(nullptr, false);
            for (int k = 0; k < 12; ++k) {
                comb->addSegment(new zgSegment(10.0 * k, 0.0));
                comb->addSegment(new zgSegment(10.0 * k, 20.0));
            }
            // A piece collapsed to a point, on a joint.
            comb->addSegment(new zgSegment(110.0, 20.0));
            grid.addChild(comb);
            zgPath *odds = new zgPath(nullptr, false);
            for (int k = 0; k < 12; ++k)
                odds->addSegment(new zgSegment(zgPoint(10.0 * k + 5.0, k == at ? value : 10.0),
                                               zgPoint(-4.0, 0.0), zgPoint(4.0, 0.0)));
            grid.addChild(odds);
            XPath horizontal;
            horizontal.addChild(straightLine(-5.0, 10.0, 150.0, 10.0));
            compareRuns(grid, nullptr);
            compareRuns(grid, &horizontal);
            const int crossings = compareRuns(horizontal, &grid);
            // A bound at -infinity makes the width of the whole-path bounds
            // NaN, and the paths are rejected as a whole before any pair.
            if (value != -qInf()) {
                EXPECT_GT(crossings, 0) << "value " << value << " at " << at;
            }
        }
    }
}

namespace {

// A one-curve closed contour: a loop from p back to p through two handles.
zgPath *loop(const zgPoint &p, const zgPoint &out, const zgPoint &in)
{
    zgPath *path = new zgPath(nullptr, true);
    path->addSegment(new zgSegment(p, in, out));
    return path;
}

// An open contour of one cubic.
zgPath *cubic(const zgPoint &a, const zgPoint &b, const zgPoint &c, const zgPoint &d)
{
    zgPath *path = new zgPath(nullptr, false);
    path->addSegment(new zgSegment(a, zgPoint(), b.subtract(a)));
    path->addSegment(new zgSegment(d, c.subtract(d), zgPoint()));
    return path;
}

} // namespace

// Curves that share end points exactly, among them curves that close on
// themselves (where a shared end gives two different pairs of end times),
// identical and reversed copies, and straight pieces just beyond and well
// beyond the point tolerance of curves: the cases where the sweep decides
// that the overlap search or a finder cannot report.
TEST(SweepEquivalence, SharedEndsLoopsAndStraightPiecesNearCurves)
{
    const zgPoint p(100.0, 100.0);
    const double offsets[] = { 0.0, 1e-07, 3e-07, 1e-06, 2e-06, 1.0 };
    int found = 0;
    for (double offset : offsets) {
        XPath loops;
        loops.addChild(loop(p, zgPoint(40.0, 10.0), zgPoint(10.0, 40.0)));
        loops.addChild(loop(p, zgPoint(10.0, 40.0), zgPoint(40.0, 10.0)));
        loops.addChild(loop(zgPoint(p.x + offset, p.y), zgPoint(40.0, 10.0), zgPoint(10.0, 40.0)));
        loops.addChild(loop(p, zgPoint(-30.0, 5.0), zgPoint(5.0, -30.0)));
        XPath curves;
        // Cubics that start or end at p, one a reversed copy of another,
        // and one on the loops' handles.
        curves.addChild(cubic(p, zgPoint(130.0, 90.0), zgPoint(150.0, 120.0), zgPoint(170.0, 100.0)));
        curves.addChild(cubic(zgPoint(170.0, 100.0), zgPoint(150.0, 120.0), zgPoint(130.0, 90.0), p));
        curves.addChild(cubic(p, zgPoint(140.0, 110.0), zgPoint(110.0, 140.0), p));
        // Straight pieces: along a loop's tangent, through p, and beside a
        // curve at the offset.
        curves.addChild(straightLine(p.x, p.y, p.x + 40.0, p.y + 10.0));
        curves.addChild(straightLine(p.x - 20.0, p.y + offset, p.x - 5.0, p.y + offset));
        curves.addChild(straightLine(170.0 + offset, 80.0, 170.0 + offset, 120.0));
        curves.addChild(straightLine(60.0, 60.0 - offset, 200.0, 60.0 - offset));
        found += compareRuns(loops, nullptr);
        found += compareRuns(curves, nullptr);
        found += compareRuns(loops, &curves);
        found += compareRuns(curves, &loops);
        XPath both;
        both.addChild(loop(p, zgPoint(40.0, 10.0), zgPoint(10.0, 40.0)));
        both.addChild(cubic(p, zgPoint(140.0, 110.0), zgPoint(110.0, 140.0), p));
        found += compareRuns(both, nullptr);
        found += compareRuns(both, &loops);
    }
    // Many of these pairs do meet.
    EXPECT_GT(found, 50);
}
