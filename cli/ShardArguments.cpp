#include "ShardArguments.h"

#include "Shard.h"

namespace TavrinCli {

void AddShardOption(CLI::App& command, Options& options) {
    command
        .add_option("--shard", options.shard,
                    "analyse only the K-th of N shares of the images, K/N, for merge to join")
        ->check([](const std::string& text) {
            return ParseShard(text) ? std::string() : "not a share K/N with 1 <= K <= N: " + text;
        });
}

void AddRowsOption(CLI::App& eval, Options& options) {
    eval.add_option("--rows", options.rows,
                    "JSON lines file with each image's truth and answer (with --shard, the only "
                    "output)");
}

void AddMergeCommand(CLI::App& app, Options& options) {
    CLI::App* merge = app.add_subcommand(
        "merge", "join the outputs of the shards of a run or eval into those of the whole batch");
    merge->add_option("shards", options.inputs, "the shards' output files, of every share")
        ->required();
    merge->add_option("--json", options.json,
                      "JSON lines of run's shards, or eval's figures, into this file");
    merge->add_option("--csv", options.csv, "CSV of run's shards into this file");
    merge->add_option("--rows", options.rows, "rows of eval's shards into this file");
    merge->add_option("--plots", options.plots, "eval's plots into this folder");
    merge->callback([&options] { options.command = Command::Merge; });
}

} // namespace TavrinCli
