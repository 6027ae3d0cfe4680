// Images per second of tavrin-dl bench on the example with one job and with one job per core, in
// one run: the speed-up the worker processes give a machine.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>

#include "Ratio.h"
#include "TrainedExample.h"

namespace {

namespace fs = std::filesystem;

struct Example {
    Example()
        : folder(Bench::TrainExample("jobs")) {}
    ~Example() { fs::remove_all(folder); }

    fs::path folder;
};

Example& Shared() {
    static Example example;
    return example;
}

unsigned Cores() {
    return std::max(1u, std::thread::hardware_concurrency());
}

// Seconds per image of one stream of the example as tavrin-dl bench measures it: all jobs
// together, their engines started.
double SecondsPerImage(char const* stream, char const* kind, unsigned jobs) {
    fs::path const& folder = Shared().folder;
    std::string const command =
        "LD_LIBRARY_PATH='" KELO_REFERENCE_ENGINE_DIR "' '" TAVRIN_CLI "' bench '" +
        (folder / "digits.yml").string() + "' '" + (folder / "unseen" / kind).string() + "' -s " +
        stream + " --seconds 1 --jobs " + std::to_string(jobs) + " 2>/dev/null";
    FILE* const bench = popen(command.c_str(), "r");
    std::size_t runs = 0;
    double seconds = 0;
    const int read =
        bench ? std::fscanf(bench, "%zu runs of stream %*s on %*u images in %lf s", &runs, &seconds)
              : 0;
    if (bench)
        pclose(bench);
    if (read != 2 || runs == 0)
        throw std::runtime_error("no figures from: " + command);
    return seconds / static_cast<double>(runs);
}

// Each iteration's time is the time per image of the example's three streams.
void Jobs(benchmark::State& state, unsigned jobs) {
    for (auto _ : state)
        state.SetIterationTime(SecondsPerImage("anomaly", "red", jobs) +
                               SecondsPerImage("classify", "green", jobs) +
                               SecondsPerImage("read", "blue", jobs));
}

void OneJob(benchmark::State& state) {
    Jobs(state, 1);
}

void JobPerCore(benchmark::State& state) {
    Jobs(state, Cores());
}

BENCHMARK(OneJob)->UseManualTime()->Iterations(1)->Repetitions(7)->Unit(benchmark::kMillisecond);
BENCHMARK(JobPerCore)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(7)
    ->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    double const goal = 0.85 * Cores();
    return Bench::RunWithRatio(argc, argv,
                               {"OneJob", "JobPerCore",
                                "images per second, " + std::to_string(Cores()) + " jobs / one job",
                                goal, true});
}
