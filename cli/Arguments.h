#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace TavrinCli {

enum class Command { Info, Set, Run, Bench, Eval, Merge };

struct Options {
    Command command = Command::Info;
    std::string workspace;
    std::vector<std::string> inputs;
    std::string stream;
    std::string tool;
    std::vector<std::string> assignments;
    std::optional<std::filesystem::path> json;
    std::optional<std::filesystem::path> csv;
    std::optional<std::filesystem::path> overlay;
    std::optional<std::filesystem::path> truth;
    std::optional<std::filesystem::path> plots;
    // Folder of the HTML report of run and eval.
    std::optional<std::filesystem::path> report;
    double seconds = 2;
    // Worker processes of run, eval and bench; one analyses in the tool's own process.
    std::size_t jobs = 1;
    // The share of the images a run or eval analyses, "K/N"; all of them when not given.
    std::optional<std::string> shard;
    // Eval's per-image rows, which merge joins and measures.
    std::optional<std::filesystem::path> rows;
};

// The options of the command line; nothing when the tool is to stop at once (help, or a misuse
// already reported), with the exit status in exitCode.
std::optional<Options> ParseArguments(int argc, char** argv, int& exitCode);

} // namespace TavrinCli
