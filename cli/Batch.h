#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <sys/types.h>
#include <vector>

#include "Analysis.h"
#include "Arguments.h"

namespace TavrinCli {

// What a bench found: the images left out, and the figures of all the jobs together.
struct BenchOutcome {
    std::vector<ImageFailure> failures;
    BenchFigures figures;
};

// The analysis of a batch of images by one or more jobs. One job analyses in this process; more
// are worker processes, forked before the library opens anything, each with its own engine, that
// take the images one at a time in input order. A worker that fails or dies costs only the image
// it had; the others go on, and a new worker takes its place.
class Batch {
public:
    // Starts the jobs and sets each up; UsageError or CommandError as the first to fail says.
    Batch(const Options& options, std::size_t jobs);
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    ~Batch();

    const BatchSetup& Setup() const { return setup_; }

    using Use = std::function<void(std::size_t index, const ImageOutcome& outcome)>;
    // Hands on each image's outcome in input order, whatever order the jobs finish in.
    void ForEach(const std::vector<std::filesystem::path>& files, const Use& use);

    // Every job runs the whole set at once, for the rate of all of them together.
    BenchOutcome Bench(const std::vector<std::filesystem::path>& files, double seconds);

private:
    struct Worker {
        pid_t pid = -1;
        int requests = -1;
        int replies = -1;
        std::optional<std::size_t> image;
    };

    Worker Spawn();
    BatchSetup TakeSetup(Worker& worker);
    void Assign(Worker& worker, const std::vector<std::filesystem::path>& files, std::size_t& next);
    // The worker ended: its image gets a failed outcome and a new worker takes its place when
    // images are left.
    ImageOutcome Replace(Worker& worker, bool imagesLeft);
    // Closes its requests, so that it ends; one still busy, or on a failure, is killed.
    void Stop(Worker& worker, bool killIt);

    const Options& options_;
    BatchSetup setup_;
    std::optional<Analyser> local_;
    std::vector<Worker> workers_;
};

} // namespace TavrinCli
