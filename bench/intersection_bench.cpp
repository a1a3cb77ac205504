// Intersections and bounds of long paths, each paired with the nearest Qt
// operation on the same input:
//
//   getCrossings      XPath::getCrossings(&other)     QPainterPath::intersected(other)
//   getBounds         XPath::getBounds, plain         QPainterPath::boundingRect
//   strokeButtBevel   XPath::getBounds, stroke        QPainterPathStroker::createStroke
//   strokeRoundRound    (width 8, butt/bevel and        (same width, cap and join)
//                        round/round, miter limit 10)   .boundingRect()
//
// Crossings. Two open paths of n pieces each (n = 10 to 3000), built as
// ZDPath and converted with toXPath outside the timed loop. The first zigzags
// across y = 100 once per piece, every piece monotone in x and in y (every
// fifth a line, the others cubics); the second is its mirror image in
// y = 100. Both being graphs over x, they meet exactly where the first one
// crosses y = 100: n crossings, known in long double by bisection on each
// piece. The zgraphics half times getCrossings and the release of every
// returned location and of its partner (intersection()), since the locations
// are owned by nobody and a caller must pay for that release. Qt has no
// curve-curve intersection: its half is the filled-area boolean
// QPainterPath::intersected on the same two paths (each taken as closed by its
// fill), the nearest Qt operation that computes the crossings of two
// outlines; it is a timing reference only and has no error, and it runs up
// to n = 1000 only (one call at 3000 takes the better part of a minute). The
// error of the
// zgraphics half is the Hausdorff distance in path units between the
// crossing points found and the reference ones (infinite if none is found
// while some exist). Counters: "crossings" found, "expected" = n. After the
// table, one line per half gives the exponent k of time ~ n^k.
//
// Bounds. One open wave of 3000 pieces with corners at most joints, every
// fourth piece a line. The error is the largest difference of the four edges
// of a result from a long double reference: for the plain bounds, the
// extremes of every piece found by dense sampling and golden-section
// refinement; for round caps and joins, that rectangle grown by the half
// width on each side (the stroke is then the path swept by a disc); for butt
// caps and bevel joins, the extremes of the two offset curves p(t) +- w/2 n(t)
// of every piece found the same way (a butt end and a bevel triangle add no
// point beyond those curves).
#include "bench_support.h"
#include "ratio_table.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>
#include <zgraphics/primitives.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPainterPathStroker>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <iterator>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <time.h>

namespace {

using zgbench::Real;
using zgbench::RefPiece;
using zgbench::RefPoint;

// One element of the source geometry in the element coding of both ZDPath
// and QPainterPath: 0 move, 1 line, 2 and 3 the three points of a cubic.
struct SourceElement
{
    int type;
    double x;
    double y;
};

// Uniform in [0, 1) from the 53 high bits, the same on every platform.
double unit(std::mt19937_64 &random)
{
    return double(random() >> 11) * 0x1.0p-53;
}

double failed()
{
    return std::numeric_limits<double>::quiet_NaN();
}

void setError(benchmark::State &state, double error)
{
    state.counters[zgbench::errorCounter()] = error;
}

// The CPU time of this thread in seconds, the clock Google Benchmark reports.
double threadCpuSeconds()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) + 1e-9 * double(now.tv_nsec);
}

// The three forms of one path: drawing path, painter path, reference pieces.
struct SourceForms
{
    ZDPath drawing;
    QPainterPath painter;
    std::vector<RefPiece> pieces;
};

RefPiece linePiece(const RefPoint &from, const RefPoint &to)
{
    RefPiece piece;
    piece.isLine = true;
    piece.p[0] = from;
    piece.p[1] = {from.x + (to.x - from.x) / 3.0L, from.y + (to.y - from.y) / 3.0L};
    piece.p[2] = {from.x + 2.0L * (to.x - from.x) / 3.0L, from.y + 2.0L * (to.y - from.y) / 3.0L};
    piece.p[3] = to;
    return piece;
}

RefPiece cubicPiece(const RefPoint &from, const RefPoint &c1, const RefPoint &c2, const RefPoint &to)
{
    RefPiece piece;
    piece.isLine = false;
    piece.p[0] = from;
    piece.p[1] = c1;
    piece.p[2] = c2;
    piece.p[3] = to;
    return piece;
}

// Builds all three forms from one element list of a single open subpath.
void buildForms(const std::vector<SourceElement> &source, SourceForms &forms)
{
    RefPoint current;
    for (size_t i = 0; i < source.size(); ++i) {
        const SourceElement &e = source[i];
        if (e.type == 0) {
            forms.drawing.moveTo(e.x, e.y);
            forms.painter.moveTo(e.x, e.y);
            current = {e.x, e.y};
        } else if (e.type == 1) {
            forms.drawing.lineTo(e.x, e.y);
            forms.painter.lineTo(e.x, e.y);
            forms.pieces.push_back(linePiece(current, {e.x, e.y}));
            current = {e.x, e.y};
        } else if (e.type == 2 && i + 2 < source.size()) {
            const SourceElement &c2 = source[i + 1];
            const SourceElement &end = source[i + 2];
            forms.drawing.cubicTo(QPointF(e.x, e.y), QPointF(c2.x, c2.y), QPointF(end.x, end.y));
            forms.painter.cubicTo(e.x, e.y, c2.x, c2.y, end.x, end.y);
            forms.pieces.push_back(cubicPiece(current, {e.x, e.y}, {c2.x, c2.y}, {end.x, end.y}));
            current = {end.x, end.y};
            i += 2;
        }
    }
}

// --- growth of time with n --------------------------------------------------------

// Keeps the CPU time per call of each size of a family and prints, at the
// end of the program (after the table), the exponent k of time ~ n^k.
class GrowthLog
{
public:
    // The last run of a benchmark is the one Google Benchmark reports, so a
    // later record replaces an earlier one.
    void record(const std::string &family, int n, double secondsPerCall)
    {
        m_times[family][n] = secondsPerCall;
    }

    ~GrowthLog()
    {
        if (m_times.empty())
            return;
        std::printf("\nGrowth of CPU time per call with the piece count n of each path (time ~ n^k).\n"
                    "getCrossings/qt is QPainterPath::intersected, a filled-area boolean: Qt has no\n"
                    "curve-curve intersection. getCrossings/zg includes the release of the locations.\n");
        for (const auto &family : m_times)
            printFamily(family.first, family.second);
        std::fflush(stdout);
    }

private:
    static void printFamily(const std::string &name, const std::map<int, double> &times)
    {
        if (times.size() < 2)
            return;
        const auto first = times.begin();
        const auto last = std::prev(times.end());
        std::string steps;
        for (auto it = times.begin(); std::next(it) != times.end(); ++it) {
            const auto next = std::next(it);
            char step[64];
            std::snprintf(step, sizeof step, "%s%d-%d: %.2f", steps.empty() ? "" : ", ", it->first,
                          next->first, slope(it->first, it->second, next->first, next->second));
            steps += step;
        }
        std::printf("  %-16s k = %.2f from n = %d (%s) to n = %d (%s); least squares over %zu sizes: "
                    "%.2f\n                   steps %s\n",
                    name.c_str(), slope(first->first, first->second, last->first, last->second),
                    first->first, zgbench::formatSeconds(first->second).c_str(), last->first,
                    zgbench::formatSeconds(last->second).c_str(), times.size(),
                    leastSquaresSlope(times), steps.c_str());
    }

    static double slope(int n1, double t1, int n2, double t2)
    {
        return std::log(t2 / t1) / std::log(double(n2) / double(n1));
    }

    static double leastSquaresSlope(const std::map<int, double> &times)
    {
        double sx = 0.0, sy = 0.0, sxx = 0.0, sxy = 0.0;
        const double count = double(times.size());
        for (const auto &entry : times) {
            const double x = std::log(double(entry.first));
            const double y = std::log(entry.second);
            sx += x;
            sy += y;
            sxx += x * x;
            sxy += x * y;
        }
        return (count * sxy - sx * sy) / (count * sxx - sx * sx);
    }

    std::map<std::string, std::map<int, double>> m_times;
};

GrowthLog &growthLog()
{
    static GrowthLog log;
    return log;
}

// --- crossings ---------------------------------------------------------------------

const double kAxis = 100.0; // the line both crossing paths cross, once per piece

// An open zigzag going right whose ends alternate below and above the axis
// by 15 to 45 units, every piece monotone in x and y: each piece crosses the
// axis exactly once, away from its ends. Every fifth piece is a line.
std::vector<SourceElement> makeZigzag(int pieceCount, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::vector<SourceElement> elements;
    double x = 10.0;
    double y = kAxis - (15.0 + 30.0 * unit(random));
    elements.push_back({0, x, y});
    for (int k = 0; k < pieceCount; ++k) {
        const double side = y < kAxis ? 1.0 : -1.0;
        const double endX = x + 20.0 + 30.0 * unit(random);
        const double endY = kAxis + side * (15.0 + 30.0 * unit(random));
        if (k % 5 == 4) {
            elements.push_back({1, endX, endY});
        } else {
            // Control values strictly between the ends keep both coordinates monotone.
            const double a = 0.05 + 0.4 * unit(random);
            const double b = 0.55 + 0.4 * unit(random);
            const double c = 0.1 + 0.35 * unit(random);
            const double d = 0.55 + 0.35 * unit(random);
            elements.push_back({2, x + (endX - x) * c, y + (endY - y) * a});
            elements.push_back({3, x + (endX - x) * d, y + (endY - y) * b});
            elements.push_back({3, endX, endY});
        }
        x = endX;
        y = endY;
    }
    return elements;
}

std::vector<SourceElement> mirroredInAxis(std::vector<SourceElement> elements)
{
    for (SourceElement &e : elements)
        e.y = 2.0 * kAxis - e.y;
    return elements;
}

// Where a piece that is monotone in y crosses the axis, by bisection on y in
// long double until the interval stops shrinking.
RefPoint axisCrossing(const RefPiece &piece)
{
    const bool rising = piece.p[3].y > piece.p[0].y;
    Real low = 0.0L;
    Real high = 1.0L;
    for (int step = 0; step < 80; ++step) {
        const Real middle = 0.5L * (low + high);
        if (middle <= low || middle >= high)
            break;
        const bool below = piece.pointAt(middle).y < Real(kAxis);
        if (below == rising)
            low = middle;
        else
            high = middle;
    }
    return piece.pointAt(0.5L * (low + high));
}

struct CrossingInput
{
    SourceForms first;
    SourceForms second;
    XPath firstX;
    XPath secondX;
    std::vector<RefPoint> crossings; // by increasing x
    double error = failed();         // of getCrossings, computed once
    bool errorKnown = false;
};

CrossingInput &crossingInput(int n)
{
    static std::map<int, CrossingInput> inputs;
    auto found = inputs.find(n);
    if (found != inputs.end())
        return found->second;
    CrossingInput &input = inputs[n];
    const std::vector<SourceElement> zigzag = makeZigzag(n, 4099u + std::uint64_t(n));
    buildForms(zigzag, input.first);
    buildForms(mirroredInAxis(zigzag), input.second);
    input.first.drawing.toXPath(input.firstX);
    input.second.drawing.toXPath(input.secondX);
    // The curves are built on first demand; build them here so that every
    // timed call does the same work.
    input.firstX.getCurves();
    input.secondX.getCurves();
    for (const RefPiece &piece : input.first.pieces)
        input.crossings.push_back(axisCrossing(piece));
    return input;
}

// The locations of a getCrossings result are held by nobody: each one and its
// partner on the other path are released once.
void releaseCrossings(const QList<zgCurveLocation *> &locations)
{
    for (zgCurveLocation *location : locations) {
        zgCurveLocation *partner = location->intersection();
        location->release();
        if (partner)
            partner->release();
    }
}

// The distance from p to the nearest of points, which are sorted by x and
// at least 20 units apart in x: the neighbours in x hold the nearest one.
Real nearestDistance(const RefPoint &p, const std::vector<RefPoint> &points)
{
    const auto byX = [](const RefPoint &a, const RefPoint &b) { return a.x < b.x; };
    const auto at = std::lower_bound(points.begin(), points.end(), p, byX);
    Real nearest = std::numeric_limits<Real>::infinity();
    if (at != points.end())
        nearest = zgbench::distance(p, *at);
    if (at != points.begin())
        nearest = std::fmin(nearest, zgbench::distance(p, *std::prev(at)));
    if (at != points.end() && std::next(at) != points.end())
        nearest = std::fmin(nearest, zgbench::distance(p, *std::next(at)));
    return nearest;
}

// The Hausdorff distance between the points found and the reference ones:
// a missed crossing counts as much as a misplaced one.
double crossingError(const QList<zgCurveLocation *> &locations, const std::vector<RefPoint> &reference)
{
    std::vector<RefPoint> found;
    for (const zgCurveLocation *location : locations) {
        if (std::isnan(location->point.x) || std::isnan(location->point.y))
            return failed();
        found.push_back({location->point.x, location->point.y});
    }
    if (found.empty() != reference.empty())
        return std::numeric_limits<double>::infinity();
    std::sort(found.begin(), found.end(), [](const RefPoint &a, const RefPoint &b) { return a.x < b.x; });
    Real worst = 0.0L;
    for (const RefPoint &p : found)
        worst = std::fmax(worst, nearestDistance(p, reference));
    for (const RefPoint &p : reference)
        worst = std::fmax(worst, nearestDistance(p, found));
    return double(worst);
}

void zgGetCrossings(benchmark::State &state, int n)
{
    CrossingInput &input = crossingInput(n);
    int found = 0;
    const double start = threadCpuSeconds();
    for (auto _ : state) {
        const QList<zgCurveLocation *> locations = input.firstX.getCrossings(&input.secondX);
        found = locations.size();
        releaseCrossings(locations);
        benchmark::DoNotOptimize(found);
    }
    const double elapsed = threadCpuSeconds() - start;
    growthLog().record("getCrossings/zg", n, elapsed / double(state.iterations()));
    if (!input.errorKnown) {
        const QList<zgCurveLocation *> locations = input.firstX.getCrossings(&input.secondX);
        input.error = crossingError(locations, input.crossings);
        input.errorKnown = true;
        releaseCrossings(locations);
    }
    state.counters["crossings"] = found;
    state.counters["expected"] = n;
    setError(state, input.error);
}

void qtIntersected(benchmark::State &state, int n)
{
    const CrossingInput &input = crossingInput(n);
    int elements = 0;
    const double start = threadCpuSeconds();
    for (auto _ : state) {
        const QPainterPath common = input.first.painter.intersected(input.second.painter);
        elements = common.elementCount();
        benchmark::DoNotOptimize(elements);
    }
    const double elapsed = threadCpuSeconds() - start;
    growthLog().record("getCrossings/qt", n, elapsed / double(state.iterations()));
    state.counters["elements"] = elements;
}

// --- bounds --------------------------------------------------------------------------

const double kStrokeWidth = 8.0;

// An open wave going right: every fourth piece a line, the cubics with
// control points that overshoot the ends in y, so that most extremes lie
// inside pieces and most joints are corners.
std::vector<SourceElement> makeWave(int pieceCount, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::vector<SourceElement> elements;
    double x = 10.0;
    double y = 100.0;
    elements.push_back({0, x, y});
    for (int k = 0; k < pieceCount; ++k) {
        const double dx = 20.0 + 30.0 * unit(random);
        const double dy = (unit(random) - 0.5) * 60.0 - 0.2 * (y - 100.0); // drifts back to 100
        const double endX = x + dx;
        const double endY = y + dy;
        if (k % 4 == 3) {
            elements.push_back({1, endX, endY});
        } else {
            elements.push_back({2, x + dx * (0.15 + 0.2 * unit(random)), y + (unit(random) - 0.5) * 120.0});
            elements.push_back({3, x + dx * (0.6 + 0.25 * unit(random)), endY + (unit(random) - 0.5) * 120.0});
            elements.push_back({3, endX, endY});
        }
        x = endX;
        y = endY;
    }
    return elements;
}

// A rectangle in long double by its four edges.
struct RefBox
{
    Real left = std::numeric_limits<Real>::infinity();
    Real top = std::numeric_limits<Real>::infinity();
    Real right = -std::numeric_limits<Real>::infinity();
    Real bottom = -std::numeric_limits<Real>::infinity();

    RefBox grown(Real d) const { return {left - d, top - d, right + d, bottom + d}; }
};

using PlaneCurve = std::function<RefPoint(Real)>;

// The largest value of direction(curve(t)) for t in 0 to 1: the best of 257
// samples, then golden-section search between its neighbours, where the
// value has a single maximum for the smooth curves used here.
Real largestAlong(const PlaneCurve &curve, const std::function<Real(const RefPoint &)> &direction)
{
    const int samples = 256;
    int best = 0;
    Real bestValue = direction(curve(0.0L));
    for (int i = 1; i <= samples; ++i) {
        const Real value = direction(curve(Real(i) / samples));
        if (value > bestValue) {
            bestValue = value;
            best = i;
        }
    }
    const Real inverseGolden = 0.61803398874989484820458683436563812L;
    Real low = Real(std::max(best - 1, 0)) / samples;
    Real high = Real(std::min(best + 1, samples)) / samples;
    for (int step = 0; step < 120 && high - low > 1e-18L; ++step) {
        const Real a = high - inverseGolden * (high - low);
        const Real b = low + inverseGolden * (high - low);
        if (direction(curve(a)) < direction(curve(b)))
            low = a;
        else
            high = b;
    }
    return std::fmax(bestValue, direction(curve(0.5L * (low + high))));
}

void includeCurve(RefBox &box, const PlaneCurve &curve)
{
    box.left = std::fmin(box.left, -largestAlong(curve, [](const RefPoint &p) { return -p.x; }));
    box.top = std::fmin(box.top, -largestAlong(curve, [](const RefPoint &p) { return -p.y; }));
    box.right = std::fmax(box.right, largestAlong(curve, [](const RefPoint &p) { return p.x; }));
    box.bottom = std::fmax(box.bottom, largestAlong(curve, [](const RefPoint &p) { return p.y; }));
}

RefBox plainReference(const std::vector<RefPiece> &pieces)
{
    RefBox box;
    for (const RefPiece &piece : pieces)
        includeCurve(box, [&piece](Real t) { return piece.pointAt(t); });
    return box;
}

// The bounds of the two offset curves p(t) +- radius n(t) of every piece:
// the stroke with butt caps and bevel joins. The pieces here have no cusps.
RefBox offsetReference(const std::vector<RefPiece> &pieces, Real radius)
{
    RefBox box;
    for (const RefPiece &piece : pieces) {
        for (Real side : {-radius, radius}) {
            includeCurve(box, [&piece, side](Real t) {
                const RefPoint p = piece.pointAt(t);
                const RefPoint d = piece.derivativeAt(t);
                const Real speed = std::hypot(d.x, d.y);
                return RefPoint{p.x - side * d.y / speed, p.y + side * d.x / speed};
            });
        }
    }
    return box;
}

struct BoundsInput
{
    SourceForms forms;
    XPath xpath;
    RefBox plain;
    RefBox buttBevel;
    RefBox roundRound;
};

// getBounds is not const, and a copy of an XPath would release the shared
// contours when it dies: the halves use this one object.
BoundsInput &boundsInput()
{
    static BoundsInput *input = [] {
        auto *made = new BoundsInput; // kept for the whole run
        buildForms(makeWave(3000, 1234567), made->forms);
        made->forms.drawing.toXPath(made->xpath);
        made->xpath.getCurves();
        const Real radius = Real(kStrokeWidth) / 2.0L;
        made->plain = plainReference(made->forms.pieces);
        // A disc swept along the path reaches exactly radius beyond the path's bounds.
        made->roundRound = made->plain.grown(radius);
        made->buttBevel = offsetReference(made->forms.pieces, radius);
        return made;
    }();
    return *input;
}

// The largest difference of the four edges; NaN if an edge is NaN.
double boxError(double left, double top, double right, double bottom, const RefBox &reference)
{
    if (std::isnan(left) || std::isnan(top) || std::isnan(right) || std::isnan(bottom))
        return failed();
    const Real worst = std::fmax(std::fmax(std::fabs(left - reference.left), std::fabs(top - reference.top)),
                                 std::fmax(std::fabs(right - reference.right),
                                           std::fabs(bottom - reference.bottom)));
    return double(worst);
}

double zgRectError(const zgRect &r, const RefBox &reference)
{
    return boxError(r.left(), r.top(), r.right(), r.bottom(), reference);
}

double qtRectError(const QRectF &r, const RefBox &reference)
{
    return boxError(r.left(), r.top(), r.right(), r.bottom(), reference);
}

enum class Stroke { None, ButtBevel, RoundRound };

const RefBox &referenceOf(const BoundsInput &input, Stroke stroke)
{
    switch (stroke) {
    case Stroke::ButtBevel:
        return input.buttBevel;
    case Stroke::RoundRound:
        return input.roundRound;
    case Stroke::None:
        break;
    }
    return input.plain;
}

void zgGetBounds(benchmark::State &state, Stroke stroke)
{
    BoundsInput &input = boundsInput();
    const bool round = stroke == Stroke::RoundRound;
    const zgBoundOpt options = stroke == Stroke::None ? zgBoundOpt() : zgBoundOpt(true, false, false, false);
    const zgStyle style = stroke == Stroke::None
            ? zgStyle()
            : zgStyle(true, true, true, kStrokeWidth, round ? zgCapRound : zgCapButt,
                      round ? zgJoinRound : zgJoinBevel, 10.0);
    zgRect bounds;
    for (auto _ : state) {
        bounds = input.xpath.getBounds(options, style, nullptr);
        benchmark::DoNotOptimize(bounds);
    }
    setError(state, zgRectError(bounds, referenceOf(input, stroke)));
}

void qtBoundingRect(benchmark::State &state, Stroke stroke)
{
    const BoundsInput &input = boundsInput();
    const QPainterPath &path = input.forms.painter;
    const bool round = stroke == Stroke::RoundRound;
    QPainterPathStroker stroker;
    stroker.setWidth(kStrokeWidth);
    stroker.setCapStyle(round ? Qt::RoundCap : Qt::FlatCap);
    stroker.setJoinStyle(round ? Qt::RoundJoin : Qt::BevelJoin);
    stroker.setMiterLimit(10.0);
    // QPainterPath keeps its bounding rectangle until the path changes. Setting
    // the first element to its own position marks it changed, at constant
    // cost on a path of its own, so that every call computes the bounds.
    QPainterPath own = path;
    own.setElementPositionAt(0, path.elementAt(0).x, path.elementAt(0).y);
    const QPointF start = own.elementAt(0);
    QRectF bounds;
    for (auto _ : state) {
        own.setElementPositionAt(0, start.x(), start.y());
        bounds = stroke == Stroke::None ? own.boundingRect() : stroker.createStroke(own).boundingRect();
        benchmark::DoNotOptimize(bounds);
    }
    setError(state, qtRectError(bounds, referenceOf(input, stroke)));
}

// --- registration ----------------------------------------------------------------------

// A table row with the zgraphics half alone: its Qt time and ratio show "-".
template <class ZgHalf>
void registerZgOnly(const std::string &pair, const std::string &size, const std::string &errorUnit,
                    ZgHalf &&zgHalf, double minTime)
{
    const zgbench::PairEntry entry{pair, size, errorUnit};
    zgbench::registeredPairs().push_back(entry);
    benchmark::RegisterBenchmark(entry.zgName().c_str(), std::forward<ZgHalf>(zgHalf))
        ->MinTime(minTime)
        ->Unit(benchmark::kMicrosecond);
}

bool registerIntersectionPairs()
{
    // One call at n = 3000 compares nine million pairs of curves: a short
    // minimum time lets the large sizes run a single iteration.
    const double crossingMinTime = 0.1;
    const char *crossingUnit = "units (qt: QPainterPath::intersected)";
    for (int n : {10, 30, 100, 300, 1000}) {
        zgbench::registerPair(
            "getCrossings", "n=" + std::to_string(n), crossingUnit,
            [n](benchmark::State &s) { zgGetCrossings(s, n); },
            [n](benchmark::State &s) { qtIntersected(s, n); }, crossingMinTime);
    }
    // QPainterPath::intersected grows faster than n^3 past n = 1000 (about 45 s
    // of CPU for one call at n = 3000), so the largest size times zgraphics alone.
    const int largest = 3000;
    registerZgOnly("getCrossings", "n=" + std::to_string(largest), crossingUnit,
                   [](benchmark::State &s) { zgGetCrossings(s, largest); }, crossingMinTime);
    const struct
    {
        const char *pair;
        Stroke stroke;
    } boundsPairs[] = {{"getBounds", Stroke::None},
                       {"strokeButtBevel", Stroke::ButtBevel},
                       {"strokeRoundRound", Stroke::RoundRound}};
    for (const auto &entry : boundsPairs) {
        const Stroke stroke = entry.stroke;
        zgbench::registerPair(
            entry.pair, "large", "units", [stroke](benchmark::State &s) { zgGetBounds(s, stroke); },
            [stroke](benchmark::State &s) { qtBoundingRect(s, stroke); });
    }
    return true;
}

const bool intersectionPairsRegistered = registerIntersectionPairs();

} // namespace
