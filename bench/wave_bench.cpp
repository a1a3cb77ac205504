// Wave and hand-drawn lines on long polylines: ZDPath::wavePath for each of
// the seven kinds and ZDPath::manualPath, on open random-walk polylines of
// 100, 1000 and 10000 points (sides of 5 to 20 units, so the length grows with
// the point count). The wavelength of 12 and the sampling step of 6 give a
// few steps per side. Each benchmark reports the elements written per call
// ("elements") and the steps per second as a rate ("steps").
//
// There is no Qt counterpart of these effects, so they stand outside the
// ratio table: plain benchmarks with counters.
#include <zgraphics/drawing.h>

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>

namespace {

const double kWavelength = 12.0;
const double kAmplitude = 4.0;
const double kSmoothness = 0.5;
const double kManualStep = 6.0;

// An open random walk of count points, the same on every run.
ZDPath randomWalk(int count)
{
    std::mt19937 random(20240601u + unsigned(count));
    std::uniform_real_distribution<double> turn(-1.2, 1.2);
    std::uniform_real_distribution<double> side(5.0, 20.0);
    ZDPath path;
    double x = 0.0;
    double y = 0.0;
    double heading = 0.0;
    path.moveTo(x, y);
    for (int i = 1; i < count; ++i) {
        heading += turn(random);
        const double length = side(random);
        x += std::cos(heading) * length;
        y += std::sin(heading) * length;
        path.lineTo(x, y);
    }
    return path;
}

void waveBenchmark(benchmark::State &state, int kind, int points)
{
    ZDPath source = randomWalk(points);
    const double steps = std::round(source.getLength() / kWavelength);
    ZDPath out;
    for (auto _ : state) {
        out.reset();
        source.wavePath(out, kind, kWavelength, kAmplitude, kSmoothness);
        benchmark::DoNotOptimize(out.elements.constData());
    }
    state.counters["elements"] = out.count();
    state.counters["steps"] = benchmark::Counter(steps, benchmark::Counter::kIsIterationInvariantRate);
}

void manualBenchmark(benchmark::State &state, int points)
{
    ZDPath source = randomWalk(points);
    const double samples = std::floor(source.getLength() / kManualStep);
    ZDPath result;
    for (auto _ : state) {
        result.manualPath(source, kAmplitude, kManualStep);
        benchmark::DoNotOptimize(result.elements.constData());
    }
    state.counters["elements"] = result.count();
    state.counters["steps"] = benchmark::Counter(samples, benchmark::Counter::kIsIterationInvariantRate);
}

bool registerAll()
{
    const char *kindNames[] = {"smooth", "archesNormal", "archesOther", "zigzag",
                               "teethNormal", "teethOther", "square"};
    for (int points : {100, 1000, 10000}) {
        for (int kind = 0; kind <= 6; ++kind) {
            const std::string name = std::string("wavePath/") + std::to_string(kind) + "_"
                                     + kindNames[kind] + "/" + std::to_string(points);
            benchmark::RegisterBenchmark(name.c_str(), waveBenchmark, kind, points)
                ->Unit(benchmark::kMicrosecond);
        }
        const std::string name = "manualPath/" + std::to_string(points);
        benchmark::RegisterBenchmark(name.c_str(), manualBenchmark, points)->Unit(benchmark::kMicrosecond);
    }
    return true;
}

const bool registered = registerAll();

} // namespace
