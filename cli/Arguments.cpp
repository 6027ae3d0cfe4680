#include "Arguments.h"

#include <algorithm>
#include <thread>

#include <CLI/CLI.hpp>

#include "ShardArguments.h"

namespace TavrinCli {
namespace {

CLI::App* AddCommand(CLI::App& app, Options& options, Command command, const char* name,
                     const char* description) {
    CLI::App* sub = app.add_subcommand(name, description);
    sub->add_option("workspace", options.workspace, "workspace file")->required();
    sub->callback([&options, command] { options.command = command; });
    return sub;
}

// Each --param takes one value, so that images may follow it.
void AddParameterOption(CLI::App& command, Options& options) {
    command
        .add_option("-p,--param", options.assignments,
                    "set a parameter first, TOOL.NAME=VALUE or TOOL.MODEL.NAME=VALUE; repeatable")
        ->allow_extra_args(false);
}

void AddRunInputs(CLI::App& command, Options& options) {
    command.add_option("images", options.inputs, "image files, or folders of images")->required();
    command.add_option("-s,--stream", options.stream, "stream to run (default: the first)");
    AddParameterOption(command, options);
    command
        .add_option("-j,--jobs", options.jobs,
                    "worker processes, each with its own engine (default: one per core; 1 "
                    "analyses in this process)")
        ->check(CLI::Range(1, 1024));
}

void AddReportOption(CLI::App& command, Options& options) {
    command.add_option("--report", options.report,
                       "folder for an HTML report: index.html with every image's overlay, its "
                       "answer and score, to filter and sort in a browser");
}

} // namespace

std::optional<Options> ParseArguments(int argc, char** argv, int& exitCode) {
    Options options;
    options.jobs = std::max(1u, std::thread::hardware_concurrency());
    CLI::App app("Runs the streams of a deep-learning workspace on images, through the "
                 "Tavrin.Vision.DeepLearning library and the engine it loads.",
                 "tavrin-dl");
    app.require_subcommand(1);

    CLI::App* info = AddCommand(app, options, Command::Info, "info",
                                "list the streams, tools, models and every parameter");
    AddParameterOption(*info, options);

    CLI::App* set = AddCommand(app, options, Command::Set, "set",
                               "check parameter changes against their setters and show them");
    set->add_option("assignments", options.assignments, "TOOL.NAME=VALUE ...")->required();

    CLI::App* run = AddCommand(app, options, Command::Run, "run",
                               "analyse images, writing JSON lines, CSV and overlays");
    AddRunInputs(*run, options);
    run->add_option("--json", options.json,
                    "JSON lines file (default: standard output when "
                    "no --csv is given either)");
    run->add_option("--csv", options.csv, "CSV file, one row per image and tool");
    run->add_option("--overlay", options.overlay, "folder for one PNG per image with the graphics");
    AddShardOption(*run, options);
    AddReportOption(*run, options);

    CLI::App* bench = AddCommand(app, options, Command::Bench, "bench",
                                 "images per second and the library's share of the time");
    AddRunInputs(*bench, options);
    bench->add_option("--seconds", options.seconds, "least time to measure")
        ->capture_default_str()
        ->check(CLI::PositiveNumber);

    CLI::App* eval = AddCommand(app, options, Command::Eval, "eval",
                                "measure a tool's answers against the truth of each image");
    AddRunInputs(*eval, options);
    eval->add_option("-t,--tool", options.tool,
                     "tool to measure (default: the stream's only tool)");
    eval->add_option("--truth", options.truth,
                     "CSV file image,truth (default: each file name before its first _, else "
                     "its folder's name)");
    eval->add_option("--json", options.json, "JSON file with the figures");
    eval->add_option("--plots", options.plots, "folder for the plots, as PNG");
    AddShardOption(*eval, options);
    AddRowsOption(*eval, options);
    AddMergeCommand(app, options);
    AddReportOption(*eval, options);

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        // Every misuse of the arguments ends with status 2; help and version end with 0.
        exitCode = app.exit(error) == 0 ? 0 : 2;
        return std::nullopt;
    }
    return options;
}

} // namespace TavrinCli
