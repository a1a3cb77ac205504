// Flattening, simplification and the curve stepper.
//
// flatten: XPath::flatten at a flatness of 0.25 beside
// QPainterPath::toSubpathPolygons (Qt's own flattening, which takes no
// flatness) on the same open smooth path of 100 ("small") or 3000 ("large")
// cubics, wavy on a scale of about 30 units. The zgraphics half times a deep
// copy of the path's object graph (XPath::assign) and the flattening, since
// flattening replaces the contours; "copy" below times that copy alone. Each
// half reports its points ("points") and, as its error, the largest distance
// from the true curves of points along its chords (the quarter points of up
// to kErrorChords chords spread over the result).
//
// simplify: XPath::simplify at a tolerance of 2.5 on noisy freehand
// polylines of 1000 and 10000 points. It reports the cubics written
// ("curves") and the largest distance of an input point from the result
// ("maxDistance"). There is no Qt counterpart.
//
// stepper: a ZDCurve walk (init and every vertex) of a cubic in about 1000
// steps, in points per second, beside zgCurve::getPoint at the same
// parameters.
#include "bench_support.h"
#include "ratio_table.h"

#include <zgraphics/drawing.h>
#include <zgraphics/model.h>

#include <QtGui/QPainterPath>
#include <QtGui/QPolygonF>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace {

const double kFlatness = 0.25;
const double kTolerance = 2.5;
const int kErrorChords = 2000;

using zgbench::Real;
using zgbench::RefPiece;
using zgbench::RefPoint;

// An open wavy path of count cubics: nodes on a random walk with smooth
// tangents, the same on every run.
struct WavyPath
{
    ZDPath path;
    QPainterPath painterPath;
    XPath xpath;
    std::vector<RefPiece> pieces;
};

WavyPath *makeWavyPath(int count)
{
    std::mt19937 random(6303u + unsigned(count));
    std::uniform_real_distribution<double> turn(-1.4, 1.4);
    std::uniform_real_distribution<double> side(20.0, 40.0);
    std::uniform_real_distribution<double> handle(0.3, 0.6);
    auto *wavy = new WavyPath;
    QPointF at(0, 0);
    double heading = 0.0;
    wavy->path.moveTo(at);
    for (int i = 0; i < count; ++i) {
        const double length = side(random);
        const QPointF out(std::cos(heading), std::sin(heading));
        heading += turn(random);
        const QPointF next = at + QPointF(std::cos(heading), std::sin(heading)) * length;
        const QPointF in(std::cos(heading + turn(random)), std::sin(heading + turn(random)));
        const QPointF c1 = at + out * (length * handle(random));
        const QPointF c2 = next - in * (length * handle(random));
        wavy->path.cubicTo(c1, c2, next);
        RefPiece piece;
        piece.isLine = false;
        piece.p[0] = {at.x(), at.y()};
        piece.p[1] = {c1.x(), c1.y()};
        piece.p[2] = {c2.x(), c2.y()};
        piece.p[3] = {next.x(), next.y()};
        wavy->pieces.push_back(piece);
        at = next;
    }
    wavy->path.toPainterPath(wavy->painterPath);
    ZDPath source = wavy->path;
    source.toXPath(wavy->xpath, 0);
    return wavy;
}

const WavyPath &wavyOf(bool large)
{
    static const WavyPath *small = makeWavyPath(100);
    static const WavyPath *big = makeWavyPath(3000);
    return large ? *big : *small;
}

// Distance from p to one cubic: 64 samples, then golden-section search
// around the best one.
Real distanceToCubic(const RefPiece &piece, const RefPoint &p)
{
    const int samples = 64;
    int best = 0;
    Real bestDistance = std::numeric_limits<Real>::infinity();
    for (int i = 0; i <= samples; ++i) {
        const Real d = zgbench::distance(piece.pointAt(Real(i) / samples), p);
        if (d < bestDistance) {
            bestDistance = d;
            best = i;
        }
    }
    Real low = std::max(0.0L, (best - 1.0L) / samples);
    Real high = std::min(1.0L, (best + 1.0L) / samples);
    for (int i = 0; i < 80; ++i) {
        const Real a = high - 0.618034L * (high - low);
        const Real b = low + 0.618034L * (high - low);
        if (zgbench::distance(piece.pointAt(a), p) < zgbench::distance(piece.pointAt(b), p))
            high = b;
        else
            low = a;
    }
    return std::min(bestDistance, zgbench::distance(piece.pointAt(0.5L * (low + high)), p));
}

// Distance from p to the nearest of the cubics, skipping those whose
// control box lies farther than the best distance so far.
Real distanceToCubics(const std::vector<RefPiece> &pieces, const RefPoint &p)
{
    Real best = std::numeric_limits<Real>::infinity();
    for (const RefPiece &piece : pieces)
        best = std::min({best, zgbench::distance(piece.p[0], p), zgbench::distance(piece.p[3], p)});
    for (const RefPiece &piece : pieces) {
        Real minX = piece.p[0].x, maxX = minX, minY = piece.p[0].y, maxY = minY;
        for (const RefPoint &c : piece.p) {
            minX = std::min(minX, c.x);
            maxX = std::max(maxX, c.x);
            minY = std::min(minY, c.y);
            maxY = std::max(maxY, c.y);
        }
        const Real dx = std::max({minX - p.x, 0.0L, p.x - maxX});
        const Real dy = std::max({minY - p.y, 0.0L, p.y - maxY});
        if (std::hypot(dx, dy) < best)
            best = std::min(best, distanceToCubic(piece, p));
    }
    return best;
}

// The largest distance from the curves of the quarter points of the
// polyline's chords, over at most kErrorChords chords spread evenly.
double chordDeviation(const std::vector<RefPiece> &pieces, const std::vector<QPointF> &polyline)
{
    if (polyline.size() < 2)
        return NAN;
    const std::size_t chords = polyline.size() - 1;
    const std::size_t stride = std::max<std::size_t>(1, chords / kErrorChords);
    Real worst = 0.0L;
    for (std::size_t i = 0; i < chords; i += stride) {
        for (Real s : {0.25L, 0.5L, 0.75L}) {
            const RefPoint p{polyline[i].x() + (polyline[i + 1].x() - polyline[i].x()) * s,
                             polyline[i].y() + (polyline[i + 1].y() - polyline[i].y()) * s};
            worst = std::max(worst, distanceToCubics(pieces, p));
        }
    }
    return double(worst);
}

void zgFlatten(benchmark::State &state, bool large)
{
    const WavyPath &wavy = wavyOf(large);
    for (auto _ : state) {
        XPath copy;
        copy.assign(&wavy.xpath);
        copy.flatten(kFlatness);
        benchmark::DoNotOptimize(copy.children.constData());
    }
    XPath flat;
    flat.assign(&wavy.xpath);
    flat.flatten(kFlatness);
    std::vector<QPointF> points;
    for (const zgSegment *segment : flat.children.first()->segments)
        points.push_back(segment->point.toPt());
    state.counters["points"] = double(points.size());
    state.counters[zgbench::errorCounter()] = chordDeviation(wavy.pieces, points);
}

void qtFlatten(benchmark::State &state, bool large)
{
    const WavyPath &wavy = wavyOf(large);
    QList<QPolygonF> polygons;
    for (auto _ : state) {
        polygons = wavy.painterPath.toSubpathPolygons();
        benchmark::DoNotOptimize(polygons.constFirst().constData());
    }
    const std::vector<QPointF> points(polygons.first().begin(), polygons.first().end());
    state.counters["points"] = double(points.size());
    state.counters[zgbench::errorCounter()] = chordDeviation(wavy.pieces, points);
}

// The deep copy that the zgraphics half of flatten includes.
void zgCopyOnly(benchmark::State &state, bool large)
{
    const WavyPath &wavy = wavyOf(large);
    for (auto _ : state) {
        XPath copy;
        copy.assign(&wavy.xpath);
        benchmark::DoNotOptimize(copy.children.constData());
    }
}

// A freehand stroke of count points: a loose spiral with hand tremor.
QVector<zgPoint> freehandStroke(int count)
{
    std::mt19937 random(6304u + unsigned(count));
    std::uniform_real_distribution<double> tremor(-1.0, 1.0);
    std::uniform_real_distribution<double> turn(-0.12, 0.12);
    QVector<zgPoint> points;
    zgPoint at(0, 0);
    double heading = 0.0;
    for (int i = 0; i < count; ++i) {
        heading += turn(random) + 0.01;
        at = at.add(zgPoint(std::cos(heading) * 2.0, std::sin(heading) * 2.0));
        points.append(at.add(zgPoint(tremor(random) * 0.7, tremor(random) * 0.7)));
    }
    return points;
}

void zgSimplify(benchmark::State &state, int count)
{
    const QVector<zgPoint> stroke = freehandStroke(count);
    XPath source;
    zgPath *contour = new zgPath(nullptr, false);
    for (const zgPoint &p : stroke)
        contour->addSegment(new zgSegment(p.x, p.y));
    source.addChild(contour);
    XPath result;
    for (auto _ : state) {
        state.PauseTiming();
        result.clearPath();
        result.assign(&source);
        state.ResumeTiming();
        result.simplify(kTolerance);
        benchmark::DoNotOptimize(result.children.constData());
    }
    const QList<zgSegment *> &segments = result.children.first()->segments;
    std::vector<RefPiece> curves;
    for (int i = 0; i + 1 < segments.size(); ++i) {
        const zgSegment *a = segments.at(i);
        const zgSegment *b = segments.at(i + 1);
        RefPiece piece;
        piece.isLine = false;
        piece.p[0] = {a->point.x, a->point.y};
        piece.p[1] = {a->point.x + a->handleOut.x, a->point.y + a->handleOut.y};
        piece.p[2] = {b->point.x + b->handleIn.x, b->point.y + b->handleIn.y};
        piece.p[3] = {b->point.x, b->point.y};
        curves.push_back(piece);
    }
    Real worst = 0.0L;
    for (const zgPoint &p : stroke)
        worst = std::max(worst, distanceToCubics(curves, RefPoint{p.x, p.y}));
    state.counters["curves"] = double(curves.size());
    state.counters["maxDistance"] = double(worst);
}

const double kStepCurve[8] = {0, 0, 150, 400, 450, -200, 600, 100};

void zgStepperWalk(benchmark::State &state)
{
    ZDCurve curve;
    // The control polygon is about 1550 long: about 1000 steps.
    curve.approximation_scale(0.65);
    double x = 0.0;
    double y = 0.0;
    for (auto _ : state) {
        curve.init(kStepCurve[0], kStepCurve[1], kStepCurve[2], kStepCurve[3], kStepCurve[4],
                   kStepCurve[5], kStepCurve[6], kStepCurve[7]);
        while (curve.vertex(&x, &y))
            benchmark::DoNotOptimize(x);
    }
    state.counters["steps"] = curve.stepNum();
    state.counters["points"] =
        benchmark::Counter(curve.stepNum() + 1, benchmark::Counter::kIsIterationInvariantRate);
}

void zgDirectEvaluation(benchmark::State &state)
{
    ZDCurve probe;
    probe.approximation_scale(0.65);
    probe.init(kStepCurve[0], kStepCurve[1], kStepCurve[2], kStepCurve[3], kStepCurve[4],
               kStepCurve[5], kStepCurve[6], kStepCurve[7]);
    const int steps = probe.stepNum();
    const QVector<double> values(kStepCurve, kStepCurve + 8);
    for (auto _ : state) {
        for (int k = 0; k <= steps; ++k)
            benchmark::DoNotOptimize(zgCurve::getPoint(values, double(k) / steps));
    }
    state.counters["points"] =
        benchmark::Counter(steps + 1, benchmark::Counter::kIsIterationInvariantRate);
}

bool registerFlattenBenchmarks()
{
    for (bool large : {false, true}) {
        zgbench::registerPair(
            "flatten", large ? "large" : "small", "units",
            [large](benchmark::State &s) { zgFlatten(s, large); },
            [large](benchmark::State &s) { qtFlatten(s, large); });
        benchmark::RegisterBenchmark(large ? "flatten/large/copy" : "flatten/small/copy",
                                     zgCopyOnly, large)
            ->Unit(benchmark::kMicrosecond);
    }
    for (int count : {1000, 10000}) {
        const std::string name = "simplify/" + std::to_string(count);
        benchmark::RegisterBenchmark(name.c_str(), zgSimplify, count)->Unit(benchmark::kMicrosecond);
    }
    benchmark::RegisterBenchmark("stepper/walk", zgStepperWalk)->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark("stepper/getPoint", zgDirectEvaluation)->Unit(benchmark::kMicrosecond);
    return true;
}

const bool flattenBenchmarksRegistered = registerFlattenBenchmarks();

} // namespace
