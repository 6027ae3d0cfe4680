#pragma once

#include <stdexcept>

namespace TavrinCli {

// A request the tool cannot take as given: an unknown stream, tool or parameter, or a value the
// parameter refuses. Exit status 2, like any other misuse of the arguments.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Anything else that stops a command, such as a missing or unreadable file. Exit status 1.
struct CommandError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

} // namespace TavrinCli
