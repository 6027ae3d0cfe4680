#pragma once

#include "Arguments.h"

namespace TavrinCli {

// Joins the output files of the shards of one run or eval into those of the whole batch, as one
// run of it would have written them: run's JSON lines and CSV, eval's rows, with its figures
// measured again over all of them. UsageError when the shards do not make one whole batch.
int Merge(const Options& options);

} // namespace TavrinCli
