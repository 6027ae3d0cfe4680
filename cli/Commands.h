#pragma once

#include "Arguments.h"

namespace TavrinCli {

// Carries out the command; the exit status. Failures come as UsageError or CommandError, and
// as the library's own exceptions.
int RunCommand(const Options& options);

} // namespace TavrinCli
