// Spline fitting: ZDPath::bezierFitting on wobbly polylines of 10 to 3000
// points, the two solves of its linear system on their own (the dense LU
// factorisation with partial pivoting, whose work grows with the cube of the
// point count, and the tridiagonal elimination used from 128 regular points
// on), and ZDPath::bsplineToBezier of a cubic spline of 1000 control points.
// Each benchmark reports the point count ("points") and the points per
// second ("rate").
//
// Qt has no counterpart of these, so they stand outside the ratio table.
// bezierFitting of 3000 points ends in the engine's knot-count error (its
// 2999 Beziers would need 12000 knots, above the limit of 10000); that run
// measures the solve and the conversion up to the error.
#include "spline/fitting.h"

#include <zgraphics/drawing.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <stdexcept>
#include <string>

namespace {

// An open random walk of count points with sides of 2 to 30 units, the same
// on every run.
QVector<QPointF> wobblyPoints(int count)
{
    std::mt19937 random(77u + unsigned(count));
    std::uniform_real_distribution<double> turn(-1.2, 1.2);
    std::uniform_real_distribution<double> side(2.0, 30.0);
    QVector<QPointF> points;
    QPointF p(0.0, 0.0);
    double heading = 0.0;
    for (int i = 0; i < count; ++i) {
        points << p;
        heading += turn(random);
        const double length = side(random);
        p += QPointF(std::cos(heading) * length, std::sin(heading) * length);
    }
    return points;
}

void setCounters(benchmark::State &state, int points)
{
    state.counters["points"] = points;
    state.counters["rate"] = benchmark::Counter(points, benchmark::Counter::kIsIterationInvariantRate);
}

void fittingBenchmark(benchmark::State &state, int count)
{
    const QVector<QPointF> points = wobblyPoints(count);
    int pieces = 0;
    bool failed = false;
    for (auto _ : state) {
        int degree = 0;
        try {
            const QVector<QPointF> result = ZDPath::bezierFitting(points, degree);
            pieces = result.size() / 4;
            benchmark::DoNotOptimize(result.constData());
        } catch (const std::runtime_error &) {
            failed = true;
        }
    }
    setCounters(state, count);
    state.counters["pieces"] = pieces;
    state.counters["threw"] = failed ? 1 : 0;
}

// The fit as it runs on the dense solve alone, for the gain of the
// tridiagonal one.
void denseFittingBenchmark(benchmark::State &state, int count)
{
    const QVector<QPointF> points = wobblyPoints(count);
    for (auto _ : state) {
        const QVector<double> knots = fittingKnots(points);
        int degree = 3;
        const QVector<QPointF> result =
                ZDPath::bsplineToBezier(fittingControlPointsDense(points, knots), knots, degree);
        benchmark::DoNotOptimize(result.constData());
    }
    setCounters(state, count);
}

void solveBenchmark(benchmark::State &state, int count, bool banded)
{
    const QVector<QPointF> points = wobblyPoints(count);
    const QVector<double> knots = fittingKnots(points);
    for (auto _ : state) {
        const QVector<QPointF> control = banded ? fittingControlPointsBanded(points, knots)
                                                : fittingControlPointsDense(points, knots);
        benchmark::DoNotOptimize(control.constData());
    }
    setCounters(state, count);
}

void conversionBenchmark(benchmark::State &state, int count)
{
    // Clamped knots with one unit between distinct values.
    const QVector<QPointF> control = wobblyPoints(count);
    QVector<double> knots;
    for (int i = 0; i < count + 4; ++i)
        knots << std::min(std::max(i - 3, 0), count - 3);
    int pieces = 0;
    for (auto _ : state) {
        int degree = 3;
        const QVector<QPointF> result = ZDPath::bsplineToBezier(control, knots, degree);
        pieces = result.size() / 4;
        benchmark::DoNotOptimize(result.constData());
    }
    setCounters(state, count);
    state.counters["pieces"] = pieces;
}

bool registerAll()
{
    for (int count : {10, 100, 1000, 2500, 3000}) {
        benchmark::RegisterBenchmark(("bezierFitting/" + std::to_string(count)).c_str(), fittingBenchmark, count)
            ->Unit(benchmark::kMillisecond);
    }
    for (int count : {1000, 2500}) {
        benchmark::RegisterBenchmark(("bezierFitting/denseOnly/" + std::to_string(count)).c_str(),
                                     denseFittingBenchmark, count)
            ->Unit(benchmark::kMillisecond);
    }
    for (int count : {10, 100, 1000, 3000}) {
        benchmark::RegisterBenchmark(("fittingSolve/dense/" + std::to_string(count)).c_str(), solveBenchmark,
                                     count, false)
            ->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark(("fittingSolve/tridiagonal/" + std::to_string(count)).c_str(),
                                     solveBenchmark, count, true)
            ->Unit(benchmark::kMillisecond);
    }
    benchmark::RegisterBenchmark("bsplineToBezier/1000", conversionBenchmark, 1000)->Unit(benchmark::kMillisecond);
    return true;
}

const bool registered = registerAll();

} // namespace
