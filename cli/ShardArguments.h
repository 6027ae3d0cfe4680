#pragma once

#include <CLI/CLI.hpp>

#include "Arguments.h"

namespace TavrinCli {

// --shard K/N, on run and eval.
void AddShardOption(CLI::App& command, Options& options);

// Eval's --rows.
void AddRowsOption(CLI::App& eval, Options& options);

// merge SHARD... with the outputs it joins them into.
void AddMergeCommand(CLI::App& app, Options& options);

} // namespace TavrinCli
