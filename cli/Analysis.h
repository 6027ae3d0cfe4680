#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "Arguments.h"
#include "ResultWriters.h"
#include "Session.h"

namespace TavrinCli {

// What a batch runs, as the workspace and the options settle it: the stream and, for eval, the
// tool measured.
struct BatchSetup {
    std::string stream;
    std::string tool;
    std::string toolType;
    std::optional<double> threshold;
};

// Everything the commands keep of one image, in a form that crosses from a worker process:
// either the answers, or the reason why there are none.
struct ImageOutcome {
    std::optional<std::string> error;
    std::string jsonLine;
    std::vector<Answer> answers;
    // The measured tool's answer and every tag it named, for eval.
    Answer toolAnswer;
    std::vector<std::string> tagNames;
    // PNG bytes, when overlays are asked for.
    std::vector<unsigned char> overlay;
};

// What a bench measured: the runs of all its jobs, the engine's share of them, the time it took
// and the time all jobs took together.
struct BenchFigures {
    std::size_t runs = 0;
    double engineSeconds = 0;
    double seconds = 0;
    double workerSeconds = 0;
};

// An image that yielded no answer, and why.
struct ImageFailure {
    std::filesystem::path image;
    std::string reason;
};

// One session on the workspace, set up as the options say, analysing one image at a time. A
// failure to read an image or of the engine on it is the image's outcome, not an exception.
class Analyser {
public:
    // UsageError or CommandError as Session and the options' checks say.
    explicit Analyser(const Options& options);

    const BatchSetup& Setup() const { return setup_; }
    ImageOutcome Analyse(const std::filesystem::path& file);

    // Reads the images for a bench and runs each once, since the first runs pay for the
    // engine's start; the images that cannot be read or run are left out and returned.
    std::vector<ImageFailure> PrepareBench(const std::vector<std::filesystem::path>& files);
    BenchFigures MeasureBench(double seconds);

private:
    Session session_;
    BatchSetup setup_;
    bool overlay_;
    std::vector<std::shared_ptr<Tavrin::Vision::IImage>> benchImages_;
};

} // namespace TavrinCli
