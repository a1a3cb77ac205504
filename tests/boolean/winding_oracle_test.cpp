// The winding query against an independent count: for seeded random contours
// (polygons with integer corners, so with horizontal and vertical edges and
// corners on the sample ordinates; cubic blobs; wild self-crossing cubics;
// mixed lines and curves; several contours at once) the winding number of
// each sample point is found by sampling every cubic densely in y, bisecting
// each sign change of y - py to its time and counting the signed crossings
// right of the point. Points within 1e-6 of the outline are left out.
#include "boolean/winding_test_support.h"
#include "model/model_test_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>

namespace {

struct Cubic
{
    double x[4];
    double y[4];

    double xAt(double t) const { return bernstein(x, t); }
    double yAt(double t) const { return bernstein(y, t); }

    static double bernstein(const double *v, double t)
    {
        const double s = 1.0 - t;
        return s * s * s * v[0] + 3.0 * s * s * t * v[1] + 3.0 * s * t * t * v[2]
                + t * t * t * v[3];
    }
};

// 512 samples per cubic: finer than any turn of the random curves, so a
// sign change of y - py between two samples is one crossing.
const int kSamples = 512;

// A cubic with its samples, y exact at both ends so that neighbouring cubics
// agree.
struct SampledCubic
{
    Cubic c;
    QVector<double> xs;
    QVector<double> ys;

    SampledCubic() = default;
    explicit SampledCubic(const Cubic &cubic) : c(cubic), xs(kSamples + 1), ys(kSamples + 1)
    {
        for (int k = 0; k <= kSamples; ++k) {
            xs[k] = c.xAt(double(k) / kSamples);
            ys[k] = c.yAt(double(k) / kSamples);
        }
        xs[0] = c.x[0];
        ys[0] = c.y[0];
        xs[kSamples] = c.x[3];
        ys[kSamples] = c.y[3];
    }
};

// The cubics of a contour, closed by a straight line when it is open, as
// the winding code closes it.
QVector<Cubic> cubicsOf(const zgPath *path)
{
    QVector<Cubic> cubics;
    const int n = path->segments.size();
    const int count = path->closed ? n : n - 1;
    for (int i = 0; i < count; ++i) {
        const zgSegment *a = path->segments.at(i);
        const zgSegment *b = path->segments.at((i + 1) % n);
        cubics.append(Cubic{{a->point.x, a->point.x + a->handleOut.x, b->point.x + b->handleIn.x,
                        b->point.x},
                       {a->point.y, a->point.y + a->handleOut.y, b->point.y + b->handleIn.y,
                        b->point.y}});
    }
    if (!path->closed && n > 1) {
        const zgPoint l = path->segments.last()->point;
        const zgPoint f = path->segments.first()->point;
        cubics.append(Cubic{{l.x, l.x, f.x, f.x}, {l.y, l.y, f.y, f.y}});
    }
    return cubics;
}

// Signed crossings of the ray from (px, py) to +x: an upward crossing
// (y growing through py, half-open at the top) counts +1, a downward one -1.
int oracleWinding(const QVector<SampledCubic> &cubics, double px, double py)
{
    int winding = 0;
    for (const SampledCubic &sampled : cubics) {
        const Cubic &c = sampled.c;
        double y0 = sampled.ys.at(0);
        for (int k = 0; k < kSamples; ++k) {
            const double y1 = sampled.ys.at(k + 1);
            const bool up = y0 <= py && py < y1;
            const bool down = y1 <= py && py < y0;
            if (up || down) {
                double lo = double(k) / kSamples;
                double hi = double(k + 1) / kSamples;
                for (int i = 0; i < 60; ++i) {
                    const double mid = 0.5 * (lo + hi);
                    const bool belowAtMid = c.yAt(mid) < py;
                    if (belowAtMid == up)
                        lo = mid;
                    else
                        hi = mid;
                }
                if (c.xAt(0.5 * (lo + hi)) > px)
                    winding += up ? 1 : -1;
            }
            y0 = y1;
        }
    }
    return winding;
}

// Distance from the point to the outline: the nearest sample, refined by
// ternary search on the samples around it.
double distanceToOutline(const QVector<SampledCubic> &cubics, double px, double py)
{
    double best = std::numeric_limits<double>::infinity();
    for (const SampledCubic &sampled : cubics) {
        const Cubic &c = sampled.c;
        auto distanceAt = [&](double t) { return std::hypot(c.xAt(t) - px, c.yAt(t) - py); };
        int bestK = 0;
        double bestSquared = std::numeric_limits<double>::infinity();
        for (int k = 0; k <= kSamples; ++k) {
            const double dx = sampled.xs.at(k) - px;
            const double dy = sampled.ys.at(k) - py;
            if (dx * dx + dy * dy < bestSquared) {
                bestSquared = dx * dx + dy * dy;
                bestK = k;
            }
        }
        const double bestHere = std::sqrt(bestSquared);
        // Samples of these curves lie less than 1 unit apart, so a cubic whose
        // nearest sample is 1 farther than the best distance so far cannot
        // come nearer.
        if (bestHere > best + 1.0)
            continue;
        double lo = std::max(0.0, double(bestK - 1) / kSamples);
        double hi = std::min(1.0, double(bestK + 1) / kSamples);
        for (int i = 0; i < 80; ++i) {
            const double a = lo + (hi - lo) / 3.0;
            const double b = hi - (hi - lo) / 3.0;
            if (distanceAt(a) < distanceAt(b))
                hi = b;
            else
                lo = a;
        }
        best = std::min({best, bestHere, distanceAt(0.5 * (lo + hi))});
    }
    return best;
}

class ContourMaker
{
public:
    explicit ContourMaker(unsigned seed) : m_random(seed) {}

    double uniform(double a, double b)
    {
        return std::uniform_real_distribution<double>(a, b)(m_random);
    }
    int integer(int a, int b) { return std::uniform_int_distribution<int>(a, b)(m_random); }

    // Corners on a grid of 0..20: many horizontal and vertical edges,
    // collinear runs, repeated corners and self-crossings.
    zgPath *gridPolygon()
    {
        zgPath *path = new zgPath(nullptr, integer(0, 4) != 0);
        const int n = integer(3, 10);
        for (int i = 0; i < n; ++i)
            path->addSegment(new zgSegment(integer(0, 20), integer(0, 20)));
        return path;
    }

    // Axis-parallel steps, closed.
    zgPath *rectilinear()
    {
        zgPath *path = new zgPath(nullptr, true);
        int x = integer(0, 20);
        int y = integer(0, 20);
        const int n = 2 * integer(2, 6);
        for (int i = 0; i < n; ++i) {
            path->addSegment(new zgSegment(x, y));
            if (i % 2 == 0)
                x = integer(0, 20);
            else if (i == n - 1)
                y = path->segments.first()->point.y;
            else
                y = integer(0, 20);
        }
        return path;
    }

    // A smooth star-shaped blob with handles along the circle, sometimes
    // long enough to make loops.
    zgPath *blob()
    {
        zgPath *path = new zgPath(nullptr, true);
        const int n = integer(3, 7);
        const double cx = uniform(5, 15);
        const double cy = uniform(5, 15);
        const double reach = uniform(0.2, 1.5);
        for (int i = 0; i < n; ++i) {
            const double angle = 2.0 * M_PI * i / n + uniform(-0.3, 0.3);
            const double r = uniform(3, 9);
            const zgPoint p(cx + r * std::cos(angle), cy + r * std::sin(angle));
            const double h = reach * r * 2.0 * M_PI / n / 3.0;
            const zgPoint tangent(-std::sin(angle) * h, std::cos(angle) * h);
            path->addSegment(new zgSegment(p, zgPoint(-tangent.x, -tangent.y), tangent));
        }
        return path;
    }

    // Free control points: self-crossing curves with loops and cusps.
    zgPath *wild()
    {
        zgPath *path = new zgPath(nullptr, true);
        const int n = integer(2, 5);
        for (int i = 0; i < n; ++i) {
            const zgPoint p(uniform(0, 20), uniform(0, 20));
            path->addSegment(new zgSegment(p, zgPoint(uniform(-10, 10), uniform(-10, 10)),
                                           zgPoint(uniform(-10, 10), uniform(-10, 10))));
        }
        return path;
    }

    // Grid corners, some with horizontal or vertical handles on the grid.
    zgPath *mixed()
    {
        zgPath *path = new zgPath(nullptr, true);
        const int n = integer(3, 7);
        for (int i = 0; i < n; ++i) {
            zgPoint in;
            zgPoint out;
            switch (integer(0, 3)) {
            case 1:
                out = zgPoint(integer(-6, 6), 0);
                in = zgPoint(-out.x, 0);
                break;
            case 2:
                out = zgPoint(0, integer(-6, 6));
                in = zgPoint(integer(-6, 6), integer(-6, 6));
                break;
            case 3:
                out = zgPoint(integer(-6, 6), integer(-6, 6));
                break;
            default:
                break;
            }
            path->addSegment(
                    new zgSegment(zgPoint(integer(0, 20), integer(0, 20)), in, out));
        }
        return path;
    }

    zgPath *any(int kind)
    {
        switch (kind % 5) {
        case 0:
            return gridPolygon();
        case 1:
            return rectilinear();
        case 2:
            return blob();
        case 3:
            return wild();
        default:
            return mixed();
        }
    }

private:
    std::mt19937 m_random;
};

struct Tally
{
    int compared = 0;
    int skipped = 0;
    int disagreements = 0;
    int wound = 0; // points with a winding other than 0

    // Prints the counts and checks that enough points were compared, enough
    // of them wound, and none disagreed.
    void check(const char *what, int minimumCompared, int minimumWound) const
    {
        std::printf("winding oracle, %s: %d points compared, %d on the outline skipped, %d "
                    "with a winding, %d disagreements\n",
                    what, compared, skipped, wound, disagreements);
        EXPECT_GT(compared, minimumCompared);
        EXPECT_GT(wound, minimumWound);
        EXPECT_EQ(disagreements, 0);
    }
};

void compareAt(const QList<zgMono *> &pieces, const QVector<SampledCubic> &cubics, double px,
               double py, Tally &tally, unsigned seed)
{
    // 1e-6: nearer than this the point is on the outline, not inside or out.
    if (distanceToOutline(cubics, px, py) <= 1e-6) {
        ++tally.skipped;
        return;
    }
    ++tally.compared;
    const int expected = std::abs(oracleWinding(cubics, px, py));
    const int actual = XPath::getWinding(zgPoint(px, py), pieces, false).winding;
    if (expected != 0)
        ++tally.wound;
    if (actual != expected) {
        ++tally.disagreements;
        ADD_FAILURE() << "seed " << seed << " point (" << px << ", " << py << "): winding "
                      << actual << ", oracle " << expected;
    }
}

// Sample points: uniform ones, ones on the ordinate of a corner or a grid
// line, and grid and half-grid points.
void compareContours(const QVector<zgPath *> &contours, unsigned seed, ContourMaker &maker,
                     int points, Tally &tally)
{
    zgtest::MonoList pieces;
    QVector<SampledCubic> cubics;
    QVector<double> cornerYs;
    for (zgPath *path : contours) {
        pieces.list.append(path->getMonoCurves());
        for (const Cubic &cubic : cubicsOf(path))
            cubics.append(SampledCubic(cubic));
        for (const zgSegment *segment : path->segments)
            cornerYs.append(segment->point.y);
    }
    for (int i = 0; i < points; ++i) {
        const double px = maker.uniform(-3, 23);
        double py = maker.uniform(-3, 23);
        switch (i % 4) {
        case 1:
            py = cornerYs.at(maker.integer(0, cornerYs.size() - 1));
            break;
        case 2:
            py = maker.integer(-1, 21);
            break;
        case 3:
            compareAt(pieces.list, cubics, maker.integer(-2, 42) * 0.5, maker.integer(-2, 42) * 0.5,
                      tally, seed);
            continue;
        default:
            break;
        }
        compareAt(pieces.list, cubics, px, py, tally, seed);
    }
}

} // namespace

TEST(WindingOracle, RandomContoursAgreeAwayFromTheOutline)
{
    Tally tally;
    const int contourCount = 400;
    for (int c = 0; c < contourCount; ++c) {
        const unsigned seed = 1000u + unsigned(c);
        ContourMaker maker(seed);
        zgPath *path = maker.any(c);
        path->addRef();
        compareContours({path}, seed, maker, 300, tally);
        path->release();
    }
    tally.check("single contours", 110000, 14000);
}

TEST(WindingOracle, SeveralContoursAtOnceAgree)
{
    Tally tally;
    const int groupCount = 150;
    for (int g = 0; g < groupCount; ++g) {
        const unsigned seed = 5000u + unsigned(g);
        ContourMaker maker(seed);
        QVector<zgPath *> contours;
        const int count = maker.integer(2, 4);
        for (int i = 0; i < count; ++i) {
            contours.append(maker.any(maker.integer(0, 4)));
            contours.last()->addRef();
        }
        compareContours(contours, seed, maker, 300, tally);
        for (zgPath *path : contours)
            path->release();
    }
    tally.check("groups of contours", 40000, 9000);
}
