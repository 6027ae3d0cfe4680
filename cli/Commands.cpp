#include "Commands.h"

#include <algorithm>
#include <iostream>
#include <set>

#include "Batch.h"
#include "Evaluation.h"
#include "EvaluationRows.h"
#include "Failure.h"
#include "Images.h"
#include "Merge.h"
#include "Parameters.h"
#include "Progress.h"
#include "Report.h"
#include "ResultWriters.h"
#include "Session.h"
#include "Shard.h"
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
    CheckShardOutputs(options);
    const ShareOfImages share = ShareOf(CollectImages(options.inputs), options.shard);
    const auto& files = share.files;
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
    WriteManifests(options, batch.Setup(), share, failed);
    std::cerr << files.size() << " images through stream " << stream << '\n';
    counts.Print(std::cerr);
    if (failed)
        std::cerr << "  without an answer: " << failed << " (named above)\n";
    PrintWhere(options);
    FinishReport(report);
    return StatusOfBatch(failed);
}

// Every image of the share with its truth where it has one; only those with one are analysed.
struct TruthsOfImages {
    std::vector<EvaluationRow> rows;
    std::vector<std::filesystem::path> files;
    std::vector<std::size_t> rowOfFile;
};

// A shard may hold no image with a truth; the whole batch must.
TruthsOfImages ImagesWithTruth(const Options& options, const ShareOfImages& share) {
    const Truths truths = options.truth ? Truths(*options.truth) : Truths();
    TruthsOfImages found;
    for (const auto& file : share.files) {
        const auto truth = truths.Of(file);
        if (truth) {
            found.rowOfFile.push_back(found.rows.size());
            found.files.push_back(file);
        }
        found.rows.push_back({file.string(), truth, {}, {}, 0, {}});
    }
    if (found.files.empty() && !options.shard)
        throw CommandError("none of the " + std::to_string(found.rows.size()) +
                           " images has a truth" +
                           (options.truth ? " in " + options.truth->string() : ""));
    return found;
}

// The measured tool's answer on each image with a truth, each added to the report when there is
// one; the number of images without an answer.
std::size_t Measure(Batch& batch, TruthsOfImages& images, Task task,
                    std::optional<Report>& report) {
    return AnalyseEach(batch, images.files, [&](std::size_t i, const ImageOutcome& outcome) {
        EvaluationRow& row = images.rows[images.rowOfFile[i]];
        if (report)
            report->Add(images.files[i], outcome,
                        Expectation{*row.truth, ExpectedAnswer(task, *row.truth)});
        row.error = outcome.error;
        row.answer = outcome.toolAnswer.answer;
        row.score = outcome.toolAnswer.score;
        row.tags = outcome.tagNames;
    });
}

int Eval(const Options& options) {
    CheckShardOutputs(options);
    const ShareOfImages share = ShareOf(CollectImages(options.inputs), options.shard);
    TruthsOfImages images = ImagesWithTruth(options, share);
    Batch batch(options, JobsFor(options, images.files.size()));
    const BatchSetup& setup = batch.Setup();
    // A tool eval cannot measure is refused before anything is analysed.
    const Task task = TaskOf(setup.toolType);
    std::optional<Report> report =
        ReportFor(options, "eval", setup.stream, JobsFor(options, images.files.size()));
    const std::size_t failed = Measure(batch, images, task, report);
    // Figures only of the whole batch; they are checked before anything is written.
    std::optional<Evaluation> evaluation;
    if (!options.shard)
        evaluation = EvaluateRows(images.rows, SubjectOf(options.workspace, setup));
    if (options.rows)
        WriteEvaluationRows(*options.rows, images.rows);
    WriteManifests(options, setup, share, failed);
    if (!evaluation) {
        std::cerr << images.files.size() << " images with a truth measured in shard "
                  << *options.shard
                  << "; merge the shards for the figures\nrows: " << options.rows->string() << '\n';
        return StatusOfBatch(failed);
    }
    PrintEvaluation(*evaluation, std::cout);
    WriteFigures(options, *evaluation);
    if (report)
        report->AddFigures(*evaluation);
    FinishReport(report);
    return StatusOfBatch(failed);
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
    case Command::Merge:
        return Merge(options);
    }
    return 2;
}

} // namespace TavrinCli
