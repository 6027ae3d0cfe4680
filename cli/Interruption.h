#pragma once

#include <stdexcept>

namespace TavrinCli {

// Ctrl-C or a scheduler's SIGTERM during a batch: the command stops at its next check, so that
// the workers are stopped and no output file is left half-written. Exit status 128 + the signal.
struct Interrupted : std::runtime_error {
    explicit Interrupted(int signal);
    int status;
};

// From now on SIGINT and SIGTERM only mark the process as interrupted.
void CatchInterruptions();

void ThrowIfInterrupted();

} // namespace TavrinCli
