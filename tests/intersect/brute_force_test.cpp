// An independent check of the curve-curve intersections on seeded random
// pairs of cubics: the crossings are found here by recursive subdivision of
// both curves down to tiny boxes, the hits are merged and polished by
// Newton's method, and the result is compared with zgCurve::getIntersections.
// Every disagreement is sorted into a known cause: a tangency (the fat-line
// clipping then converges too slowly for its depth and call limits, or the
// merge of nearby hits differs), a crossing so close to an end of a curve
// that the clipping's end handling decides (the clear crossings elsewhere
// must still all be found), or a crossing on a halving point
// of the clipping that is listed more than once (the merge on insertion only
// compares the leading run of the list). Anything else fails the test.
#include "intersect/crossing_fixtures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iostream>
#include <random>

using crossingtest::FreeCurve;
using crossingtest::releaseAll;
using crossingtest::timeOn;

namespace {

#if defined(__SANITIZE_ADDRESS__)
const int kPairCount = 400;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
const int kPairCount = 400;
#else
const int kPairCount = 5000;
#endif
#else
const int kPairCount = 5000;
#endif

typedef std::array<double, 8> Cubic;

void halve(const Cubic &c, Cubic &left, Cubic &right)
{
    for (int k = 0; k < 2; ++k) {
        const double p01 = (c[k] + c[k + 2]) / 2, p12 = (c[k + 2] + c[k + 4]) / 2,
                     p23 = (c[k + 4] + c[k + 6]) / 2;
        const double p012 = (p01 + p12) / 2, p123 = (p12 + p23) / 2;
        const double mid = (p012 + p123) / 2;
        left[k] = c[k];
        left[k + 2] = p01;
        left[k + 4] = p012;
        left[k + 6] = mid;
        right[k] = mid;
        right[k + 2] = p123;
        right[k + 4] = p23;
        right[k + 6] = c[k + 6];
    }
}

struct Box
{
    double minX, minY, maxX, maxY;
    double size() const { return std::max(maxX - minX, maxY - minY); }
};

// The box of the control points, which holds the curve.
Box boxOf(const Cubic &c)
{
    Box b = { c[0], c[1], c[0], c[1] };
    for (int i = 2; i < 8; i += 2) {
        b.minX = std::min(b.minX, c[i]);
        b.maxX = std::max(b.maxX, c[i]);
        b.minY = std::min(b.minY, c[i + 1]);
        b.maxY = std::max(b.maxY, c[i + 1]);
    }
    return b;
}

bool touch(const Box &a, const Box &b)
{
    return a.minX <= b.maxX && b.minX <= a.maxX && a.minY <= b.maxY && b.minY <= a.maxY;
}

struct Hit
{
    double t;
    double u;
};

// Recursive subdivision of both curves until both boxes are below minSize;
// the centres of the time ranges of the surviving box pairs are the hits.
// budget bounds the work at tangencies, where the surviving pairs multiply.
class Subdivision
{
public:
    Subdivision(double minSize, int budget) : m_minSize(minSize), m_budget(budget) {}

    void run(const Cubic &a, double t0, double t1, const Cubic &b, double u0, double u1)
    {
        if (--m_budget < 0)
            return;
        const Box boxA = boxOf(a), boxB = boxOf(b);
        if (!touch(boxA, boxB))
            return;
        const bool smallA = boxA.size() < m_minSize, smallB = boxB.size() < m_minSize;
        if (smallA && smallB) {
            hits.push_back({ (t0 + t1) / 2, (u0 + u1) / 2 });
            return;
        }
        Cubic left, right;
        if (!smallA && (smallB || boxA.size() >= boxB.size())) {
            halve(a, left, right);
            const double tm = (t0 + t1) / 2;
            run(left, t0, tm, b, u0, u1);
            run(right, tm, t1, b, u0, u1);
        } else {
            halve(b, left, right);
            const double um = (u0 + u1) / 2;
            run(a, t0, t1, left, u0, um);
            run(a, t0, t1, right, um, u1);
        }
    }

    bool exhausted() const { return m_budget < 0; }
    std::vector<Hit> hits;

private:
    double m_minSize;
    int m_budget;
};

// One crossing found by subdivision, after merging and polishing.
struct Crossing
{
    double t;
    double u;
    zgPoint point;
    double sine;     // of the angle between the tangents; 0 at a tangency
    bool polished;   // Newton's method settled
};

double tangentSine(const QVector<double> &a, const QVector<double> &b, double t, double u)
{
    const zgPoint ta = zgCurve::getTangent(a, std::min(1.0, std::max(0.0, t)));
    const zgPoint tb = zgCurve::getTangent(b, std::min(1.0, std::max(0.0, u)));
    return std::fabs(ta.x * tb.y - ta.y * tb.x);
}

// Merges hits closer than 1e-06 in both times into clusters, then polishes
// the centre of each cluster.
std::vector<Crossing> crossingsOf(const QVector<double> &a, const QVector<double> &b,
                                  std::vector<Hit> hits)
{
    std::sort(hits.begin(), hits.end(), [](const Hit &x, const Hit &y) { return x.t < y.t; });
    std::vector<std::vector<Hit>> clusters;
    for (const Hit &hit : hits) {
        bool placed = false;
        for (auto &cluster : clusters) {
            for (const Hit &member : cluster) {
                if (std::fabs(member.t - hit.t) < 1e-6 && std::fabs(member.u - hit.u) < 1e-6) {
                    cluster.push_back(hit);
                    placed = true;
                    break;
                }
            }
            if (placed)
                break;
        }
        if (!placed)
            clusters.push_back({ hit });
    }
    std::vector<Crossing> crossings;
    for (const auto &cluster : clusters) {
        double t = 0.0, u = 0.0;
        for (const Hit &hit : cluster) {
            t += hit.t;
            u += hit.u;
        }
        t /= cluster.size();
        u /= cluster.size();
        double pt = t, pu = u;
        const bool polished = crossingtest::polishCrossing(a, b, pt, pu)
                && std::fabs(pt - t) < 1e-6 && std::fabs(pu - u) < 1e-6;
        if (polished) {
            t = std::min(1.0, std::max(0.0, pt));
            u = std::min(1.0, std::max(0.0, pu));
        }
        crossings.push_back({ t, u, crossingtest::pointOf(a, t), tangentSine(a, b, t, u),
                              polished });
    }
    return crossings;
}

// The distance from p to the curve, by Newton's method on the foot point
// from a first time.
double distanceToCurve(const QVector<double> &v, const zgPoint &p, double t)
{
    long double lt = t;
    for (int i = 0; i < 50; ++i) {
        long double x, y, dx, dy;
        crossingtest::bernstein(v, lt, x, y, dx, dy);
        const long double h = 1e-6L;
        long double x2, y2, dx2, dy2;
        crossingtest::bernstein(v, lt + h, x2, y2, dx2, dy2);
        const long double f = (x - p.x) * dx + (y - p.y) * dy;
        const long double f2 = (x2 - p.x) * dx2 + (y2 - p.y) * dy2;
        const long double slope = (f2 - f) / h;
        if (slope == 0.0L)
            break;
        lt -= f / slope;
        lt = std::min(1.0L, std::max(0.0L, lt));
    }
    return crossingtest::pointOf(v, double(lt)).getDistance(p);
}

// Counters of the comparison; every disagreement lands in one cause.
struct Tally
{
    int pairs = 0;
    int agreeing = 0;
    int crossings = 0;         // crossings found by subdivision and Newton
    int libraryLocations = 0;  // entries listed by the library
    // causes
    int speed = 0;             // points off by more than 1e-07 but within the
                               // speed times the 1e-09 convergence in time
    int tangent = 0;           // a tangency or near-tangency in the pair; the
                               // clear crossings are still all found
    int nearEnd = 0;           // a crossing within 1e-06 in time of an end;
                               // the clear crossings inside are all found
    int halvingDuplicate = 0;  // one crossing listed twice at a halving point
    int box = 0;               // the box of the three-quarter points, which the
                               // dispatcher tests first, misses the crossing
    int unexplained = 0;
    int bruteForceExhausted = 0;
    int limitReached = 0;      // the clipping ran into its call limit
    double worstPointError = 0.0;
    double worstOnCurve = 0.0;
    double worstSpeedRatio = 0.0; // point error over speed times 1e-09
};

bool nearEnd(double t)
{
    return t < 1e-6 || t > 1.0 - 1e-6;
}

double speedAt(const QVector<double> &v, double t)
{
    return zgCurve::getWeightedTangent(v, std::min(1.0, std::max(0.0, t))).getLength();
}

// How the library's list compares with the crossings, under a point
// tolerance given by a function of the crossing's times.
struct Match
{
    int transversal = 0;      // crossings compared
    bool allMatched = true;   // every compared crossing has a listed point
    bool allListedKnown = true; // every listed point is at a found crossing
    bool onCurves = true;     // every listed point lies on both curves
};

// A crossing at an angle whose sine is below this (about 0.06 degrees) counts
// as a tangency, which the clipping may or may not resolve.
const double kTangentSine = 1e-3;

// Compares the crossings whose sine is at least minSine (0: all that Newton's
// method settled) with the list.
template <class Tolerance>
Match matchList(const QVector<double> &a, const QVector<double> &b,
                const std::vector<Crossing> &found, const QList<zgCurveLocation *> &list,
                zgCurve *curveA, zgCurve *curveB, double minSine, Tolerance tolerance,
                Tally *tally)
{
    Match match;
    for (const Crossing &crossing : found) {
        if (!crossing.polished || crossing.sine < minSine)
            continue;
        ++match.transversal;
        bool matched = false;
        for (zgCurveLocation *location : list) {
            const double error = location->point.getDistance(crossing.point);
            if (error <= tolerance(crossing.t, crossing.u)) {
                matched = true;
                if (tally) {
                    tally->worstPointError = std::max(tally->worstPointError, error);
                    const double scale = 1e-9 * (speedAt(a, crossing.t) + speedAt(b, crossing.u));
                    tally->worstSpeedRatio = std::max(tally->worstSpeedRatio, error / scale);
                }
            }
        }
        match.allMatched = match.allMatched && matched;
    }
    for (zgCurveLocation *location : list) {
        const double t = timeOn(location, curveA);
        const double u = timeOn(location, curveB);
        const zgPoint p = location->curve == curveA ? location->point
                                                    : location->intersection()->point;
        const zgPoint q = location->curve == curveB ? location->point
                                                    : location->intersection()->point;
        // Each point on both curves.
        const double off = std::max(std::max(distanceToCurve(a, p, t), distanceToCurve(a, q, t)),
                                    std::max(distanceToCurve(b, p, u), distanceToCurve(b, q, u)));
        if (tally)
            tally->worstOnCurve = std::max(tally->worstOnCurve, off);
        if (off > tolerance(t, u))
            match.onCurves = false;
        bool known = false;
        for (const Crossing &crossing : found)
            known = known || location->point.getDistance(crossing.point) <= tolerance(t, u);
        match.allListedKnown = match.allListedKnown && known;
    }
    return match;
}

// Listed entries closer than tolerance count as one.
int distinctPoints(const QList<zgCurveLocation *> &list, double tolerance)
{
    int distinct = 0;
    for (int i = 0; i < list.size(); ++i) {
        bool seen = false;
        for (int j = 0; j < i; ++j)
            seen = seen || list.at(i)->point.getDistance(list.at(j)->point) <= tolerance;
        if (!seen)
            ++distinct;
    }
    return distinct;
}

std::string describe(const QVector<double> &a, const QVector<double> &b)
{
    std::string text = "values";
    for (double c : a)
        text += " " + std::to_string(c);
    text += " /";
    for (double c : b)
        text += " " + std::to_string(c);
    return text;
}

// The rejection rule of the dispatcher, computed here: the boxes of the
// start, the three-quarter points (3 p1 + p0) / 4 and (3 p2 + p3) / 4, and the
// end, which need not hold the whole curve.
bool threeQuarterBoxesMiss(const QVector<double> &a, const QVector<double> &b)
{
    for (int c = 0; c < 2; ++c) {
        const auto range = [c](const QVector<double> &v, double &low, double &high) {
            const double q[4] = { v[c], (3 * v[c + 2] + v[c]) / 4, (3 * v[c + 4] + v[c + 6]) / 4,
                                  v[c + 6] };
            low = *std::min_element(q, q + 4);
            high = *std::max_element(q, q + 4);
        };
        double lowA, highA, lowB, highB;
        range(a, lowA, highA);
        range(b, lowB, highB);
        if (!(lowB < highA + 2e-07 && highB > lowA - 2e-07))
            return true;
    }
    return false;
}

// Compares one pair and returns whether it agrees; adds to the tally.
bool comparePair(const QVector<double> &a, const QVector<double> &b, Tally &tally,
                 std::vector<std::string> &notes)
{
    Subdivision subdivision(1e-9, 400000);
    Cubic ca, cb;
    std::copy(a.begin(), a.end(), ca.begin());
    std::copy(b.begin(), b.end(), cb.begin());
    subdivision.run(ca, 0.0, 1.0, cb, 0.0, 1.0);
    const std::vector<Crossing> found = crossingsOf(a, b, subdivision.hits);

    FreeCurve curveA(a), curveB(b);
    QList<zgCurveLocation *> list;
    opParam param;
    zgCurve::getIntersections(a, b, curveA.get(), curveB.get(), list, param);
    tally.libraryLocations += list.size();

    // The strict comparison: every crossing that Newton's method settles,
    // tangent or not, listed once with its point within 1e-07.
    const auto strict = [](double, double) { return 1e-7; };
    const Match exact = matchList(a, b, found, list, curveA.get(), curveB.get(), 0.0, strict,
                                  &tally);
    bool settled = !subdivision.exhausted();
    for (const Crossing &crossing : found)
        settled = settled && crossing.polished;
    tally.crossings += exact.transversal;
    const int distinct = distinctPoints(list, 1e-7);
    const bool agree = settled && exact.allMatched && exact.allListedKnown && exact.onCurves
            && distinct == exact.transversal && list.size() == exact.transversal;
    if (subdivision.exhausted())
        ++tally.bruteForceExhausted;
    if (agree) {
        ++tally.agreeing;
        releaseAll(list);
        return true;
    }

    bool tangent = !settled;
    bool atEnd = false;
    // Every clear crossing away from the ends must be listed whatever else
    // excuses the pair.
    bool clearInsideMatched = true;
    for (const Crossing &crossing : found) {
        tangent = tangent || crossing.sine < kTangentSine;
        const bool crossingAtEnd = nearEnd(crossing.t) || nearEnd(crossing.u);
        atEnd = atEnd || crossingAtEnd;
        if (crossing.polished && crossing.sine >= kTangentSine && !crossingAtEnd) {
            bool matched = false;
            for (zgCurveLocation *location : list)
                matched = matched || location->point.getDistance(crossing.point) <= 1e-7;
            clearInsideMatched = clearInsideMatched && matched;
        }
    }
    // The clipping stops when both time ranges are below 1e-09, so a listed
    // point may be off by the speed of the curves times that.
    const auto bySpeed = [&a, &b](double t, double u) {
        return std::max(1e-7, 1e-9 * (speedAt(a, t) + speedAt(b, u)));
    };
    const Match loose = matchList(a, b, found, list, curveA.get(), curveB.get(), 0.0, bySpeed,
                                  nullptr);
    const bool looseAgree = settled && loose.allMatched && loose.allListedKnown
            && loose.onCurves && list.size() == loose.transversal;
    // At a tangency only the clear crossings must be found, and every listed
    // point must lie on both curves.
    const Match clear = matchList(a, b, found, list, curveA.get(), curveB.get(), kTangentSine,
                                  strict, nullptr);

    QList<zgCurveLocation *> clipped;
    opParam plain;
    const int calls = zgCurve::addCurveIntersections(a, b, curveA.get(), curveB.get(), clipped,
                                                     plain, 0.0, 1.0, 0.0, 1.0, false, 0.0, 0);
    releaseAll(clipped);
    if (calls > 4096)
        ++tally.limitReached;
    if (looseAgree) {
        ++tally.speed;
    } else if (threeQuarterBoxesMiss(a, b)) {
        ++tally.box;
    } else if (tangent && clear.allMatched && clear.onCurves) {
        ++tally.tangent;
    } else if (atEnd && clearInsideMatched && clear.onCurves) {
        ++tally.nearEnd;
    } else if (exact.allMatched && exact.allListedKnown && exact.onCurves
               && distinct == exact.transversal) {
        ++tally.halvingDuplicate;
    } else {
        ++tally.unexplained;
        std::string note = "unexplained: " + std::to_string(exact.transversal) + " crossings (";
        for (const Crossing &crossing : found)
            note += " " + std::to_string(crossing.t) + "/" + std::to_string(crossing.u) + " sine "
                    + std::to_string(crossing.sine);
        note += " ), " + std::to_string(list.size()) + " listed (";
        for (zgCurveLocation *location : list)
            note += " " + std::to_string(timeOn(location, curveA.get())) + "/"
                    + std::to_string(timeOn(location, curveB.get()));
        note += " ), calls " + std::to_string(calls) + "; " + describe(a, b);
        notes.push_back(note);
    }
    releaseAll(list);
    return false;
}

} // namespace

namespace {

// Runs count pairs from make and prints the tally under name.
template <class Make>
Tally runFamily(const char *name, int count, Make make)
{
    Tally tally;
    std::vector<std::string> notes;
    for (int i = 0; i < count; ++i) {
        QVector<double> a(8), b(8);
        make(a, b);
        ++tally.pairs;
        comparePair(a, b, tally, notes);
    }
    const double rate = double(tally.agreeing) / tally.pairs;
    std::cout << name << ": pairs " << tally.pairs << ", agreeing " << tally.agreeing
              << " (rate " << rate << "), crossings " << tally.crossings
              << ", listed " << tally.libraryLocations << "\n  disagreements: tangency "
              << tally.tangent << ", near an end " << tally.nearEnd
              << ", duplicate at a halving point " << tally.halvingDuplicate << ", unexplained "
              << tally.unexplained << ", speed times 1e-09 above 1e-07 " << tally.speed
              << ", three-quarter box " << tally.box
              << "\n  clipping call limit reached in " << tally.limitReached
              << " disagreeing pairs; subdivision budget exhausted in "
              << tally.bruteForceExhausted << " pairs\n  worst point error "
              << tally.worstPointError << ", worst distance from a curve " << tally.worstOnCurve
              << ", worst point error over speed times 1e-09 " << tally.worstSpeedRatio
              << std::endl;
    for (const std::string &note : notes)
        std::cout << "  " << note << "\n";
    return tally;
}

} // namespace

TEST(BruteForce, IndependentRandomPairs)
{
    std::mt19937 engine(20240613u);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    const Tally tally = runFamily("independent", kPairCount, [&](QVector<double> &a,
                                                                 QVector<double> &b) {
        for (double &c : a)
            c = coordinate(engine);
        for (double &c : b)
            c = coordinate(engine);
    });
    RecordProperty("agreement", std::to_string(double(tally.agreeing) / tally.pairs));
    EXPECT_EQ(tally.unexplained, 0);
    EXPECT_GT(double(tally.agreeing) / tally.pairs, 0.98);
    EXPECT_GT(tally.crossings, kPairCount / 2);
}

TEST(BruteForce, PerturbedCopies)
{
    // The second curve is the first with each coordinate moved by up to 10:
    // crossings come in numbers, some at small angles.
    std::mt19937 engine(77u);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    std::uniform_real_distribution<double> shift(-10.0, 10.0);
    const Tally tally = runFamily("perturbed", kPairCount, [&](QVector<double> &a,
                                                               QVector<double> &b) {
        for (int k = 0; k < 8; ++k) {
            a[k] = coordinate(engine);
            b[k] = a[k] + shift(engine);
        }
    });
    RecordProperty("agreement", std::to_string(double(tally.agreeing) / tally.pairs));
    EXPECT_EQ(tally.unexplained, 0);
    EXPECT_GT(double(tally.agreeing) / tally.pairs, 0.95);
    EXPECT_GT(tally.crossings, kPairCount);
}

TEST(BruteForce, LoopyCurves)
{
    // Handles far outside the end points: loops and many crossings.
    std::mt19937 engine(4242u);
    std::uniform_real_distribution<double> end(30.0, 70.0);
    std::uniform_real_distribution<double> handle(-100.0, 200.0);
    const Tally tally = runFamily("loopy", kPairCount, [&](QVector<double> &a,
                                                           QVector<double> &b) {
        for (QVector<double> *v : { &a, &b }) {
            for (int k = 0; k < 8; ++k)
                (*v)[k] = (k >= 2 && k < 6) ? handle(engine) : end(engine);
        }
    });
    RecordProperty("agreement", std::to_string(double(tally.agreeing) / tally.pairs));
    EXPECT_EQ(tally.unexplained, 0);
    EXPECT_GT(double(tally.agreeing) / tally.pairs, 0.95);
}

TEST(BruteForce, CurvesSharingAnEnd)
{
    // The second curve starts where the first ends: a crossing at t = 1,
    // u = 0, found by the clipping or by the end-point pairs.
    std::mt19937 engine(9001u);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    const Tally tally = runFamily("shared end", kPairCount / 2, [&](QVector<double> &a,
                                                                    QVector<double> &b) {
        for (double &c : a)
            c = coordinate(engine);
        for (double &c : b)
            c = coordinate(engine);
        b[0] = a[6];
        b[1] = a[7];
    });
    RecordProperty("agreement", std::to_string(double(tally.agreeing) / tally.pairs));
    EXPECT_EQ(tally.unexplained, 0);
    EXPECT_GE(tally.crossings, tally.pairs);
    EXPECT_GT(double(tally.agreeing) / tally.pairs, 0.9);
}

TEST(BruteForce, GrazingCurves)
{
    // The second curve is the first mirrored in its tangent at a random
    // point, then moved along the normal by up to 1e-03: the curves cross
    // twice close by, or miss each other narrowly. Every tenth pair is not
    // moved and touches without crossing.
    std::mt19937 engine(31337u);
    std::uniform_real_distribution<double> coordinate(0.0, 100.0);
    std::uniform_real_distribution<double> time(0.2, 0.8);
    std::uniform_real_distribution<double> offset(-1e-03, 1e-03);
    int index = 0;
    const Tally tally = runFamily("grazing", kPairCount / 3, [&](QVector<double> &a,
                                                                 QVector<double> &b) {
        for (double &c : a)
            c = coordinate(engine);
        const double t = time(engine);
        const zgPoint p = zgCurve::getPoint(a, t);
        const zgPoint tangent = zgCurve::getTangent(a, t);
        const zgPoint normal(-tangent.y, tangent.x);
        const double shift = index++ % 10 == 0 ? 0.0 : offset(engine);
        for (int k = 0; k < 8; k += 2) {
            const zgPoint d(a[k] - p.x, a[k + 1] - p.y);
            const double along = d.x * tangent.x + d.y * tangent.y;
            const double across = d.x * normal.x + d.y * normal.y;
            b[k] = p.x + along * tangent.x - across * normal.x + shift * normal.x;
            b[k + 1] = p.y + along * tangent.y - across * normal.y + shift * normal.y;
        }
    });
    RecordProperty("agreement", std::to_string(double(tally.agreeing) / tally.pairs));
    EXPECT_EQ(tally.unexplained, 0);
    EXPECT_GT(double(tally.agreeing) / tally.pairs, 0.8);
}
