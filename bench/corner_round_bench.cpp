// Corner rounding on long open polylines of 100, 1000 and 10000 points:
//
//   CornerRound/setCornerRound/<n>                 element list, truncated radius
//   CornerRound/setCornerRoundForConnectline/<n>   every corner marked
//   CornerRound/setCornerRound2/<n>                through the contour model
//
// Each iteration rounds a fresh copy of the same polyline. The counters give
// the element counts before and after and the number of arcs made (cubics
// in the output), which for these polylines is one per corner.
#include <benchmark/benchmark.h>

#include <zgraphics/drawing.h>

#include <cmath>
#include <random>

namespace {

// A zigzag going right with random side lengths (20 to 60) and turns (0.3 to
// 2.5 rad either way), so that every corner gets an arc and most sides are
// long enough for the full radius.
ZDPath randomPolyline(int pointCount)
{
    std::mt19937 random(8675309);
    std::uniform_real_distribution<double> side(20.0, 60.0);
    std::uniform_real_distribution<double> turn(0.3, 2.5);
    ZDPath path;
    double x = 0.0;
    double y = 0.0;
    double heading = 0.4;
    path.moveTo(x, y);
    for (int k = 1; k < pointCount; ++k) {
        const double length = side(random);
        x += length * std::cos(heading);
        y += length * std::sin(heading);
        path.lineTo(x, y);
        // Alternate the turn's sign so that the path keeps going right.
        heading += (k % 2 ? -1.0 : 1.0) * turn(random);
        heading = std::remainder(heading, 2.0 * M_PI);
    }
    return path;
}

int countArcs(const ZDPath &path)
{
    int arcs = 0;
    for (const ZDPathElement &e : path.elements)
        arcs += e.type == ZDCurveToElement ? 1 : 0;
    return arcs;
}

void setCounters(benchmark::State &state, const ZDPath &input, const ZDPath &output)
{
    state.counters["elements_in"] = input.count();
    state.counters["elements_out"] = output.count();
    state.counters["arcs"] = countArcs(output);
    state.SetItemsProcessed(state.iterations() * int64_t(input.count()));
}

const double kRadius = 12.0;

void BM_setCornerRound(benchmark::State &state)
{
    const ZDPath input = randomPolyline(int(state.range(0)));
    ZDPath output;
    for (auto _ : state) {
        output = input;
        output.setCornerRound(kRadius);
        benchmark::DoNotOptimize(output.elements.constData());
    }
    setCounters(state, input, output);
}

void BM_setCornerRoundForConnectline(benchmark::State &state)
{
    const ZDPath input = randomPolyline(int(state.range(0)));
    ZDPath marks = input;
    ZDPath output;
    for (auto _ : state) {
        output = input;
        output.setCornerRoundForConnectline(kRadius, marks);
        benchmark::DoNotOptimize(output.elements.constData());
    }
    setCounters(state, input, output);
}

void BM_setCornerRound2(benchmark::State &state)
{
    const ZDPath input = randomPolyline(int(state.range(0)));
    ZDPath output;
    for (auto _ : state) {
        output = input;
        output.setCornerRound2(kRadius);
        benchmark::DoNotOptimize(output.elements.constData());
    }
    setCounters(state, input, output);
}

} // namespace

BENCHMARK(BM_setCornerRound)
    ->Name("CornerRound/setCornerRound")
    ->Arg(100)->Arg(1000)->Arg(10000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_setCornerRoundForConnectline)
    ->Name("CornerRound/setCornerRoundForConnectline")
    ->Arg(100)->Arg(1000)->Arg(10000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_setCornerRound2)
    ->Name("CornerRound/setCornerRound2")
    ->Arg(100)->Arg(1000)->Arg(10000)
    ->Unit(benchmark::kMicrosecond);
