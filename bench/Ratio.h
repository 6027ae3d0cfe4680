#pragma once

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace Bench {

// What a program exists for: the real time per iteration of one benchmark over another's, both
// measured in the same run.
struct Ratio {
    std::string numerator;
    std::string denominator;
    std::string label;
    double goal;
};

// Google Benchmark's own table, keeping each benchmark's real time per iteration; repetitions of
// one benchmark are pooled. When only aggregates are reported, their mean stands in.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter()
        : ConsoleReporter(isatty(fileno(stdout)) ? OO_Defaults : OO_Tabular) {}

    void ReportRuns(std::vector<Run> const& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (Run const& run : runs) {
            if (run.error_occurred)
                continue;
            if (run.run_type == Run::RT_Iteration && run.iterations != 0) {
                Pooled& pooled = pooled_[run.run_name.str()];
                pooled.seconds += run.real_accumulated_time;
                pooled.iterations += static_cast<double>(run.iterations);
            } else if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "mean") {
                means_[run.run_name.str()] =
                    run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
            }
        }
    }

    // Seconds per iteration, or a negative value when the benchmark did not run.
    double SecondsPerIteration(std::string const& name) const {
        if (auto const pooled = pooled_.find(name); pooled != pooled_.end())
            return pooled->second.seconds / pooled->second.iterations;
        auto const mean = means_.find(name);
        return mean == means_.end() ? -1 : mean->second;
    }

private:
    struct Pooled {
        double seconds = 0;
        double iterations = 0;
    };
    std::map<std::string, Pooled> pooled_;
    std::map<std::string, double> means_;
};

// Runs the benchmarks the command line selects and prints the ratio line after the table.
// Non-zero when the command line is wrong or either benchmark of the ratio did not run.
inline int RunWithRatio(int argc, char** argv, Ratio const& ratio) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    double const numerator = reporter.SecondsPerIteration(ratio.numerator);
    double const denominator = reporter.SecondsPerIteration(ratio.denominator);
    if (numerator < 0 || denominator <= 0) {
        std::fprintf(stderr, "%s: not measured; both %s and %s must run\n", ratio.label.c_str(),
                     ratio.numerator.c_str(), ratio.denominator.c_str());
        return 1;
    }
    double const value = numerator / denominator;
    std::printf("%s: %.2fx (goal <= %gx%s)\n", ratio.label.c_str(), value, ratio.goal,
                value <= ratio.goal ? "" : ", missed");
    std::fflush(stdout);
    return 0;
}

} // namespace Bench
