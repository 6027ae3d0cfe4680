#include "Commands.h"

#include <chrono>
#include <iostream>
#include <set>

#include <opencv2/imgcodecs.hpp>

#include "Evaluation.h"
#include "Failure.h"
#include "Images.h"
#include "Overlay.h"
#include "Parameters.h"
#include "Plots.h"
#include "Progress.h"
#include "ResultWriters.h"
#include "Session.h"
#include "Truth.h"

namespace TavrinCli {
namespace {

using Clock = std::chrono::steady_clock;

// The class of an object of the tree, without its namespace.
std::string ClassName(const rttr::instance& object) {
    const std::string name = object.get_derived_type().get_name().to_string();
    return name.substr(name.rfind(':') + 1);
}

void PrintParameters(const rttr::instance& object, int depth) {
    for (const Parameter& parameter : ParametersOf(object))
        std::cout << std::string(2 * depth, ' ') << parameter.name << " = " << parameter.value
                  << (parameter.writable ? "" : " (read-only)") << '\n';
}

void PrintTools(const DLToolRuntimeParamsReadOnlyCollection& tools, int depth) {
    for (const auto& tool : tools) {
        const std::string indent(2 * depth, ' ');
        std::cout << indent << "tool " << tool->Name() << " (" << tool->Type() << ", "
                  << ClassName(rttr::instance(*tool)) << ")\n";
        PrintParameters(rttr::instance(*tool), depth + 1);
        for (const auto& model : ModelsOf(*tool)) {
            std::cout << indent << "  model " << model->Name() << " ("
                      << ClassName(rttr::instance(*model)) << ")\n";
            PrintParameters(rttr::instance(*model), depth + 2);
        }
        if (tool->ChildTools())
            PrintTools(*tool->ChildTools(), depth + 1);
    }
}

void ApplyAll(Session& session, const std::vector<std::string>& assignments) {
    for (const std::string& text : assignments)
        session.Apply(ParseAssignment(text));
}

int Info(const Options& options) {
    Session session(options.workspace);
    ApplyAll(session, options.assignments);
    std::cout << "workspace " << session.Workspace()->SourceFile() << '\n';
    for (const auto& stream : *session.Workspace()->Streams()) {
        std::cout << "stream " << stream->Name() << '\n';
        PrintTools(*stream->Tools(), 1);
    }
    return 0;
}

int Set(const Options& options) {
    Session session(options.workspace);
    for (const std::string& text : options.assignments) {
        const Assignment assignment = ParseAssignment(text);
        const std::string before = session.Value(assignment.address);
        session.Apply(assignment);
        std::cout << assignment.address << ": " << before << " -> "
                  << session.Value(assignment.address) << '\n';
    }
    return 0;
}

// A name in the overlay folder for each image, unique within the run.
std::filesystem::path OverlayFile(const std::filesystem::path& folder,
                                  const std::filesystem::path& image,
                                  std::set<std::string>& taken) {
    std::string name = image.stem().string() + ".png";
    for (int copy = 2; !taken.insert(name).second; ++copy)
        name = image.stem().string() + "-" + std::to_string(copy) + ".png";
    return folder / name;
}

void PrintWhere(const Options& options) {
    for (const auto& [what, where] : {std::pair{"JSON lines", options.json},
                                      {"CSV", options.csv},
                                      {"overlays", options.overlay}})
        if (where)
            std::cerr << what << ": " << where->string() << '\n';
}

// Runs the stream on each image in turn under a progress bar, handing on the image read and
// the result.
template <class Use>
void RunEach(Session& session, const std::vector<std::filesystem::path>& files, Use&& use) {
    Progress progress(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        progress.Show(i, files[i].filename().string());
        const cv::Mat image = ReadImage(files[i]);
        const auto result = session.Run(ToVisionImage(image));
        use(i, image, *result);
    }
}

int Run(const Options& options) {
    Session session(options.workspace);
    session.SelectStream(options.stream);
    ApplyAll(session, options.assignments);
    const auto files = CollectImages(options.inputs);
    if (options.overlay)
        std::filesystem::create_directories(*options.overlay);
    const std::string stream = session.Stream()->Name();
    ResultWriters writers(options.json, options.csv,
                          options.json || options.csv ? nullptr : &std::cout);
    AnswerCounts counts;
    std::set<std::string> overlayNames;
    RunEach(session, files, [&](std::size_t i, const cv::Mat& image, const DLResult& result) {
        writers.Write(files[i].string(), stream, result);
        counts.Add(result);
        if (options.overlay)
            WriteOverlay(OverlayFile(*options.overlay, files[i], overlayNames), image,
                         *session.LastRunRecord());
    });
    writers.Commit();
    std::cerr << files.size() << " images through stream " << stream << '\n';
    counts.Print(std::cerr);
    PrintWhere(options);
    return 0;
}

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

// The images that have a truth, with it; the others are only counted.
struct TruthsOfImages {
    std::vector<std::filesystem::path> files;
    std::vector<std::string> truths;
    std::size_t without = 0;
};

TruthsOfImages ImagesWithTruth(const Options& options) {
    const Truths truths = options.truth ? Truths(*options.truth) : Truths();
    TruthsOfImages found;
    for (const auto& file : CollectImages(options.inputs)) {
        if (const auto truth = truths.Of(file)) {
            found.files.push_back(file);
            found.truths.push_back(*truth);
        } else {
            ++found.without;
        }
    }
    if (found.files.empty())
        throw CommandError("none of the " + std::to_string(found.without) + " images has a truth" +
                           (options.truth ? " in " + options.truth->string() : ""));
    return found;
}

void WriteFigures(const Options& options, const Evaluation& evaluation) {
    if (options.json) {
        AtomicFile file(*options.json);
        file.Stream() << EvaluationJson(evaluation).dump(2) << '\n';
        file.Commit();
        std::cerr << "figures: " << options.json->string() << '\n';
    }
    if (options.plots)
        for (const auto& plot : WritePlots(evaluation, *options.plots))
            std::cerr << "plot: " << plot.string() << '\n';
}

// What the tool answered for each image, and every class it named on the way.
struct Measured {
    std::vector<Outcome> outcomes;
    std::set<std::string> namedClasses;
};

Measured Measure(Session& session, const std::string& tool, const TruthsOfImages& images) {
    Measured measured;
    RunEach(session, images.files, [&](std::size_t i, const cv::Mat&, const DLResult& result) {
        const Answer answer = ToolAnswerOf(result, tool);
        measured.outcomes.push_back({images.truths[i], answer.answer, answer.score});
        for (const std::string& name : TagNamesOf(result, tool))
            measured.namedClasses.insert(name);
    });
    return measured;
}

int Eval(const Options& options) {
    const TruthsOfImages images = ImagesWithTruth(options);
    Session session(options.workspace);
    session.SelectStream(options.stream);
    ApplyAll(session, options.assignments);
    const auto tool = EvaluatedTool(session, options.tool);
    const Task task = TaskOf(tool->Type());
    const Measured measured = Measure(session, tool->Name(), images);

    EvaluationSubject subject;
    subject.workspace = options.workspace;
    subject.stream = session.Stream()->Name();
    subject.tool = tool->Name();
    subject.type = tool->Type();
    subject.images = images.files.size();
    subject.withoutTruth = images.without;
    subject.threshold = AnomalyThresholdOf(*tool);
    const Evaluation evaluation = Evaluate(task, subject, measured.outcomes, measured.namedClasses);
    PrintEvaluation(evaluation, std::cout);
    WriteFigures(options, evaluation);
    return 0;
}

// The engine's own account of its analysis, in seconds.
double EngineSeconds(const DLResult& result) {
    double milliseconds = 0;
    for (const auto& marking : *result.ResultImage()->ResultMarking())
        milliseconds += marking->Duration();
    return milliseconds / 1000;
}

int Bench(const Options& options) {
    Session session(options.workspace);
    session.SelectStream(options.stream);
    ApplyAll(session, options.assignments);
    std::vector<std::shared_ptr<Tavrin::Vision::IImage>> images;
    for (const auto& file : CollectImages(options.inputs))
        images.push_back(ToVisionImage(ReadImage(file)));
    for (const auto& image : images) // the first runs pay for the engine's start
        session.Run(image);

    std::size_t runs = 0;
    double engineSeconds = 0;
    const Clock::time_point start = Clock::now();
    std::chrono::duration<double> elapsed{};
    do {
        for (const auto& image : images)
            engineSeconds += EngineSeconds(*session.Run(image));
        runs += images.size();
        elapsed = Clock::now() - start;
    } while (elapsed.count() < options.seconds);

    const double seconds = elapsed.count();
    std::cout << runs << " runs of stream " << session.Stream()->Name() << " on " << images.size()
              << " images in " << seconds << " s: " << runs / seconds << " images/s\n"
              << "engine analysis " << 100 * engineSeconds / seconds << " %, library and calls "
              << 100 * (1 - engineSeconds / seconds) << " % of the time\n";
    return 0;
}

} // namespace

int RunCommand(const Options& options) {
    switch (options.command) {
    case Command::Info:
        return Info(options);
    case Command::Set:
        return Set(options);
    case Command::Run:
        return Run(options);
    case Command::Bench:
        return Bench(options);
    case Command::Eval:
        return Eval(options);
    }
    return 2;
}

} // namespace TavrinCli
