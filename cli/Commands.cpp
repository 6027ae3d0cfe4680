#include "Commands.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "Batch.h"
#include "Evaluation.h"
#include "Failure.h"
#include "Images.h"
#include "Parameters.h"
#include "Plots.h"
#include "Progress.h"
#include "Report.h"
#include "ResultWriters.h"
#include "Session.h"
#include "Truth.h"

namespace TavrinCli {
namespace {

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

void ReportFailure(const std::filesystem::path& image, const std::string& reason) {
    std::cerr << "tavrin-dl: " << image.string() << ": " << reason << '\n';
}

// Analyses the images under one progress bar, naming on standard error each image that yields
// no answer, and hands on every outcome in input order; the number of images without an answer.
template <class Use>
std::size_t AnalyseEach(Batch& batch, const std::vector<std::filesystem::path>& files, Use&& use) {
    Progress progress(files.size());
    std::size_t failed = 0;
    batch.ForEach(files, [&](std::size_t i, const ImageOutcome& outcome) {
        if (outcome.error) {
            progress.Clear();
            ReportFailure(files[i], *outcome.error);
            ++failed;
        }
        use(i, outcome);
        progress.Show(i + 1, files[i].filename().string());
    });
    return failed;
}

// No more workers than images.
std::size_t JobsFor(const Options& options, std::size_t images) {
    return std::min(options.jobs, images);
}

int StatusOfBatch(std::size_t failed) {
    return failed ? SomeImagesFailed : 0;
}

int Run(const Options& options) {
    const auto files = CollectImages(options.inputs);
    Batch batch(options, JobsFor(options, files.size()));
    if (options.overlay)
        std::filesystem::create_directories(*options.overlay);
    const std::string& stream = batch.Setup().stream;
    ResultWriters writers(options.json, options.csv,
                          options.json || options.csv ? nullptr : &std::cout);
    AnswerCounts counts;
    std::set<std::string> overlayNames;
    std::optional<Report> report =
        ReportFor(options, "run", stream, JobsFor(options, files.size()));
    const std::size_t failed =
        AnalyseEach(batch, files, [&](std::size_t i, const ImageOutcome& outcome) {
            if (report)
                report->Add(files[i], outcome);
            const std::string image = files[i].string();
            if (outcome.error) {
                writers.WriteFailure(image, stream, *outcome.error);
                return;
            }
            writers.Write(outcome.jsonLine, image, stream, outcome.answers);
            counts.Add(outcome.answers);
            if (options.overlay)
                WriteFileAtomically(OverlayFile(*options.overlay, files[i], overlayNames),
                                    outcome.overlay);
        });
    writers.Commit();
    std::cerr << files.size() << " images through stream " << stream << '\n';
    counts.Print(std::cerr);
    if (failed)
        std::cerr << "  without an answer: " << failed << " (named above)\n";
    PrintWhere(options);
    FinishReport(report);
    return StatusOfBatch(failed);
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

// What the tool answered for each image that gave an answer, and every class it named on the
// way.
struct Measured {
    std::vector<Outcome> outcomes;
    std::set<std::string> namedClasses;
    std::size_t failed = 0;
};

Measured Measure(Batch& batch, const TruthsOfImages& images, Task task,
                 std::optional<Report>& report) {
    Measured measured;
    measured.failed =
        AnalyseEach(batch, images.files, [&](std::size_t i, const ImageOutcome& outcome) {
            if (report)
                report->Add(images.files[i], outcome,
                            Expectation{images.truths[i], ExpectedAnswer(task, images.truths[i])});
            if (outcome.error)
                return;
            const Answer& answer = outcome.toolAnswer;
            measured.outcomes.push_back({images.truths[i], answer.answer, answer.score});
            measured.namedClasses.insert(outcome.tagNames.begin(), outcome.tagNames.end());
        });
    if (measured.outcomes.empty())
        throw CommandError("none of the " + std::to_string(measured.failed) +
                           " images gave an answer");
    return measured;
}

int Eval(const Options& options) {
    const TruthsOfImages images = ImagesWithTruth(options);
    Batch batch(options, JobsFor(options, images.files.size()));
    const BatchSetup& setup = batch.Setup();
    const Task task = TaskOf(setup.toolType);
    std::optional<Report> report =
        ReportFor(options, "eval", setup.stream, JobsFor(options, images.files.size()));
    const Measured measured = Measure(batch, images, task, report);

    EvaluationSubject subject;
    subject.workspace = options.workspace;
    subject.stream = setup.stream;
    subject.tool = setup.tool;
    subject.type = setup.toolType;
    subject.images = measured.outcomes.size();
    subject.withoutTruth = images.without;
    subject.withoutAnswer = measured.failed;
    subject.threshold = setup.threshold;
    const Evaluation evaluation = Evaluate(task, subject, measured.outcomes, measured.namedClasses);
    PrintEvaluation(evaluation, std::cout);
    WriteFigures(options, evaluation);
    if (report)
        report->AddFigures(evaluation);
    FinishReport(report);
    return StatusOfBatch(measured.failed);
}

int Bench(const Options& options) {
    const auto files = CollectImages(options.inputs);
    Batch batch(options, options.jobs);
    const BenchOutcome outcome = batch.Bench(files, options.seconds);
    for (const ImageFailure& failure : outcome.failures)
        ReportFailure(failure.image, failure.reason);
    if (outcome.failures.size() == files.size())
        throw CommandError("none of the " + std::to_string(files.size()) + " images can be run");

    const BenchFigures& figures = outcome.figures;
    const double seconds = figures.seconds;
    const double engineShare = figures.engineSeconds / figures.workerSeconds;
    std::cout << figures.runs << " runs of stream " << batch.Setup().stream << " on "
              << files.size() - outcome.failures.size() << " images in " << seconds << " s by "
              << options.jobs << (options.jobs == 1 ? " job" : " jobs") << ": "
              << figures.runs / seconds << " images/s\n"
              << "engine analysis " << 100 * engineShare << " %, library and calls "
              << 100 * (1 - engineShare) << " % of the time\n";
    return StatusOfBatch(outcome.failures.size());
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
