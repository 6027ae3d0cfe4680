#pragma once

#include <benchmark/benchmark.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace Bench {

// What a program exists for: the real time per iteration of one benchmark over another's, both
// measured in the same run, and the most it may be (or, for a speed-up, the least).
struct Ratio {
    std::string numerator;
    std::string denominator;
    std::string label;
    double goal;
    bool goalIsLeast = false;
};

// Google Benchmark's own table, of the aggregates alone when there are repetitions, keeping the
// real time per iteration of each repetition of each benchmark, by its function's name.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    RatioReporter()
        : ConsoleReporter(isatty(fileno(stdout)) ? OO_Defaults : OO_Tabular) {}

    void ReportRuns(std::vector<Run> const& runs) override {
        std::vector<Run> shown;
        for (Run const& run : runs) {
            if (run.run_type == Run::RT_Aggregate || run.repetitions <= 1)
                shown.push_back(run);
            if (!run.error_occurred && run.run_type == Run::RT_Iteration && run.iterations != 0)
                seconds_[run.run_name.function_name][run.repetition_index] =
                    run.real_accumulated_time / static_cast<double>(run.iterations);
        }
        if (!shown.empty())
            ConsoleReporter::ReportRuns(shown);
    }

    // Seconds per iteration of each repetition, by its index; empty when the benchmark did not
    // run.
    std::map<int64_t, double> Repetitions(std::string const& name) const {
        auto const found = seconds_.find(name);
        return found == seconds_.end() ? std::map<int64_t, double>() : found->second;
    }

private:
    std::map<std::string, std::map<int64_t, double>> seconds_;
};

// The ratio of the repetitions of the same index of the two sides, which ran in random order
// among each other: the median, and the lowest and highest as its spread.
struct RatioSpread {
    double median = 0;
    double lowest = 0;
    double highest = 0;
    std::size_t repetitions = 0;
};

inline RatioSpread SpreadOf(std::map<int64_t, double> const& numerator,
                            std::map<int64_t, double> const& denominator) {
    std::vector<double> ratios;
    for (auto const& [repetition, seconds] : numerator)
        if (auto const other = denominator.find(repetition);
            other != denominator.end() && other->second > 0)
            ratios.push_back(seconds / other->second);
    if (ratios.empty())
        return {};
    std::sort(ratios.begin(), ratios.end());
    std::size_t const middle = ratios.size() / 2;
    double const median =
        ratios.size() % 2 ? ratios[middle] : (ratios[middle - 1] + ratios[middle]) / 2;
    return {median, ratios.front(), ratios.back(), ratios.size()};
}

// Both sides interleaved at random over enough repetitions for a median that a noisy machine
// does not swing; what the command line gives instead wins, since later flags override earlier.
inline std::vector<char*> WithInterleaving(int argc, char** argv) {
    static char interleave[] = "--benchmark_enable_random_interleaving=true";
    static char repetitions[] = "--benchmark_repetitions=15";
    static char minimumTime[] = "--benchmark_min_time=0.2";
    std::vector<char*> arguments{argv[0], interleave, repetitions, minimumTime};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    arguments.push_back(nullptr);
    return arguments;
}

// One line per ratio, which scripts/bench.sh gathers into its table: the median with its
// spread; a goal is met only when the median is within it.
inline void PrintRatio(std::string const& label, RatioSpread const& spread, std::string const& goal,
                       bool met) {
    std::printf("ratio | %s | %.2fx | %.2fx to %.2fx over %zu | %s | %s\n", label.c_str(),
                spread.median, spread.lowest, spread.highest, spread.repetitions, goal.c_str(),
                met ? "met" : "missed");
    std::fflush(stdout);
}

// Runs the benchmarks the command line selects and prints the ratio line after the table.
// Non-zero when the command line is wrong or either benchmark of the ratio did not run.
inline int RunWithRatio(int argc, char** argv, Ratio const& ratio) {
    std::vector<char*> arguments = WithInterleaving(argc, argv);
    int count = static_cast<int>(arguments.size()) - 1;
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();

    RatioSpread const spread =
        SpreadOf(reporter.Repetitions(ratio.numerator), reporter.Repetitions(ratio.denominator));
    if (spread.repetitions == 0) {
        std::fprintf(stderr, "%s: not measured; both %s and %s must run\n", ratio.label.c_str(),
                     ratio.numerator.c_str(), ratio.denominator.c_str());
        return 1;
    }
    char goal[32];
    std::snprintf(goal, sizeof goal, "%s %gx", ratio.goalIsLeast ? ">=" : "<=", ratio.goal);
    bool const met = ratio.goalIsLeast ? spread.median >= ratio.goal : spread.median <= ratio.goal;
    PrintRatio(ratio.label, spread, goal, met);
    return 0;
}

} // namespace Bench
