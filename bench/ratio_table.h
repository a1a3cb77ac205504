// Comparison pairs for the benchmark program: each pair times one zgraphics
// operation and its nearest Qt equivalent on the same input, and a reporter
// collects both halves to print, after the run, one table row per pair with
// the time ratio (zgraphics / Qt) and the error of each result.
//
// To add a pair from any bench/*.cpp file, register it at static
// initialisation:
//
//     namespace {
//     const bool registered = (zgbench::registerPair("getLength", "small", "units",
//                                                    zgHalf, qtHalf), true);
//     }
//
// Each half is a callable taking benchmark::State &. After its timed loop it
// sets state.counters[zgbench::errorCounter()] to the distance of its result
// from a reference the program computes itself (leave it unset where there is
// no reference: the table then shows "n/a").
#ifndef ZG_BENCH_RATIO_TABLE_H
#define ZG_BENCH_RATIO_TABLE_H

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

namespace zgbench {

// The counter that carries a half's error into the table.
inline const char *errorCounter()
{
    return "abs_error";
}

// Minimum measuring time of each half, in seconds: about a dozen pairs of
// two sizes stay well within two minutes.
constexpr double kDefaultMinTime = 0.25;

struct PairEntry
{
    std::string pair;      // the operation, e.g. "getLength"
    std::string size;      // the input, e.g. "small"
    std::string errorUnit; // what the error counter measures, e.g. "units", "deg"

    std::string zgName() const { return pair + "/" + size + "/zg"; }
    std::string qtName() const { return pair + "/" + size + "/qt"; }
};

// All pairs in the order of registration, which is the order of the table.
inline std::vector<PairEntry> &registeredPairs()
{
    static std::vector<PairEntry> pairs;
    return pairs;
}

// Registers the benchmarks "<pair>/<size>/zg" and "<pair>/<size>/qt".
template <class ZgHalf, class QtHalf>
void registerPair(const std::string &pair, const std::string &size, const std::string &errorUnit,
                  ZgHalf &&zgHalf, QtHalf &&qtHalf, double minTime = kDefaultMinTime)
{
    const PairEntry entry{pair, size, errorUnit};
    registeredPairs().push_back(entry);
    benchmark::RegisterBenchmark(entry.zgName().c_str(), std::forward<ZgHalf>(zgHalf))
        ->MinTime(minTime)
        ->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark(entry.qtName().c_str(), std::forward<QtHalf>(qtHalf))
        ->MinTime(minTime)
        ->Unit(benchmark::kMicrosecond);
}

inline std::string formatSeconds(double seconds)
{
    if (!std::isfinite(seconds))
        return "-";
    char text[32];
    if (seconds < 1e-6)
        std::snprintf(text, sizeof text, "%.4g ns", seconds * 1e9);
    else if (seconds < 1e-3)
        std::snprintf(text, sizeof text, "%.4g us", seconds * 1e6);
    else if (seconds < 1.0)
        std::snprintf(text, sizeof text, "%.4g ms", seconds * 1e3);
    else
        std::snprintf(text, sizeof text, "%.4g s", seconds);
    return text;
}

inline std::string formatError(double error, bool measured)
{
    if (!measured)
        return "n/a";
    if (std::isnan(error) || std::isinf(error))
        return "fail";
    char text[32];
    std::snprintf(text, sizeof text, "%.2e", error);
    return text;
}

// The console reporter of Google Benchmark that also keeps, per benchmark
// name, the CPU time per iteration and the error counter.
class RatioTableReporter : public benchmark::ConsoleReporter
{
public:
    RatioTableReporter()
        : benchmark::ConsoleReporter(isatty(STDOUT_FILENO) ? OO_ColorTabular : OO_Tabular)
    {
    }

    void ReportRuns(const std::vector<Run> &runs) override
    {
        for (const Run &run : runs)
            collect(run);
        benchmark::ConsoleReporter::ReportRuns(runs);
    }

    void printTable(std::ostream &out) const
    {
        const char *format = "%-18s %-6s %12s %12s %9s %10s %10s  %s\n";
        char line[256];
        out << "\nzgraphics vs Qt: CPU time per call, ratio zg/Qt, error from the long double reference\n";
        std::snprintf(line, sizeof line, format, "pair", "size", "zg time", "Qt time", "zg/Qt",
                      "zg error", "Qt error", "error unit");
        out << line;
        for (const PairEntry &entry : registeredPairs()) {
            const Measured *zg = find(entry.zgName());
            const Measured *qt = find(entry.qtName());
            if (!zg && !qt)
                continue; // filtered out of this run
            const double zgTime = zg ? zg->secondsPerIteration() : NAN;
            const double qtTime = qt ? qt->secondsPerIteration() : NAN;
            char ratio[32] = "-";
            if (std::isfinite(zgTime) && std::isfinite(qtTime) && qtTime > 0.0)
                std::snprintf(ratio, sizeof ratio, "%.3g", zgTime / qtTime);
            std::snprintf(line, sizeof line, format, entry.pair.c_str(), entry.size.c_str(),
                          formatSeconds(zgTime).c_str(), formatSeconds(qtTime).c_str(), ratio,
                          formatError(zg ? zg->error : NAN, zg && zg->hasError).c_str(),
                          formatError(qt ? qt->error : NAN, qt && qt->hasError).c_str(),
                          entry.errorUnit.c_str());
            out << line;
        }
        out.flush();
    }

private:
    struct Measured
    {
        double cpuSeconds = 0.0;
        double iterations = 0.0;
        double error = 0.0; // the largest over repetitions
        bool hasError = false;

        double secondsPerIteration() const { return iterations > 0.0 ? cpuSeconds / iterations : NAN; }
    };

    void collect(const Run &run)
    {
        if (run.run_type != Run::RT_Iteration || run.error_occurred || run.iterations <= 0)
            return;
        Measured &measured = m_measured[run.run_name.function_name];
        measured.cpuSeconds += run.cpu_accumulated_time;
        measured.iterations += double(run.iterations);
        const auto counter = run.counters.find(errorCounter());
        if (counter == run.counters.end())
            return;
        const double error = counter->second.value;
        // A NaN marks a failed result; once stored, no comparison replaces it.
        if (!measured.hasError || std::isnan(error) || error > measured.error)
            measured.error = error;
        measured.hasError = true;
    }

    const Measured *find(const std::string &name) const
    {
        const auto it = m_measured.find(name);
        return it == m_measured.end() ? nullptr : &it->second;
    }

    std::map<std::string, Measured> m_measured;
};

// The whole program: runs the registered benchmarks (the usual --benchmark_*
// flags apply) and prints the table of pairs at the end.
inline int runBenchmarksAndPrintTable(int argc, char **argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioTableReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printTable(std::cout);
    benchmark::Shutdown();
    return 0;
}

} // namespace zgbench

#endif // ZG_BENCH_RATIO_TABLE_H
