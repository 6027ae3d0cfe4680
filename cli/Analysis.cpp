#include "Analysis.h"

#include <chrono>

#include <opencv2/imgcodecs.hpp>

#include "Failure.h"
#include "Images.h"
#include "Overlay.h"

namespace TavrinCli {
namespace {

using Clock = std::chrono::steady_clock;

// The tool named, which must be in the stream, or the stream's only tool.
std::shared_ptr<DLToolRuntimeParams> EvaluatedTool(const Session& session,
                                                   const std::string& name) {
    const auto tools = session.StreamTools();
    const std::string stream = session.Stream()->Name();
    std::string names;
    for (const auto& tool : tools) {
        if (tool->Name() == name || (name.empty() && tools.size() == 1))
            return tool;
        names += " " + tool->Name();
    }
    if (!name.empty())
        throw UsageError("stream " + stream + " has no tool " + name);
    throw UsageError("stream " + stream + " has the tools" + names + ": name one with --tool");
}

// The engine's own account of its analysis, in seconds.
double EngineSeconds(const DLResult& result) {
    double milliseconds = 0;
    for (const auto& marking : *result.ResultImage()->ResultMarking())
        milliseconds += marking->Duration();
    return milliseconds / 1000;
}

} // namespace

Analyser::Analyser(const Options& options)
    : session_(options.workspace)
    , overlay_(options.overlay || options.report) {
    session_.SelectStream(options.stream);
    ApplyAll(session_, options.assignments);
    setup_.stream = session_.Stream()->Name();
    if (options.command == Command::Eval) {
        const auto tool = EvaluatedTool(session_, options.tool);
        setup_.tool = tool->Name();
        setup_.toolType = tool->Type();
        setup_.threshold = AnomalyThresholdOf(*tool);
    }
}

ImageOutcome Analyser::Analyse(const std::filesystem::path& file) {
    ImageOutcome outcome;
    try {
        const cv::Mat image = ReadImage(file);
        const auto result = session_.Run(ToVisionImage(image));
        outcome.jsonLine = ResultJson(file.string(), setup_.stream, *result).dump();
        outcome.answers = AnswersOf(*result);
        if (!setup_.tool.empty()) {
            outcome.toolAnswer = ToolAnswerOf(*result, setup_.tool);
            outcome.tagNames = TagNamesOf(*result, setup_.tool);
        }
        if (overlay_)
            outcome.overlay = OverlayPng(image, *session_.LastRunRecord(), outcome.answers);
    } catch (const std::exception& failure) {
        outcome.error = failure.what();
    }
    return outcome;
}

std::vector<ImageFailure> Analyser::PrepareBench(const std::vector<std::filesystem::path>& files) {
    std::vector<ImageFailure> failures;
    for (const auto& file : files) {
        try {
            auto image = ToVisionImage(ReadImage(file));
            session_.Run(image);
            benchImages_.push_back(std::move(image));
        } catch (const std::exception& failure) {
            failures.push_back({file, failure.what()});
        }
    }
    return failures;
}

BenchFigures Analyser::MeasureBench(double seconds) {
    BenchFigures figures;
    if (benchImages_.empty())
        return figures;
    const Clock::time_point start = Clock::now();
    do {
        for (const auto& image : benchImages_)
            figures.engineSeconds += EngineSeconds(*session_.Run(image));
        figures.runs += benchImages_.size();
        figures.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    } while (figures.seconds < seconds);
    figures.workerSeconds = figures.seconds;
    return figures;
}

} // namespace TavrinCli
