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

// The exit status of a batch that went through to its end but in which some images yielded no
// answer; each of them is named on standard error and has a failed row.
constexpr int SomeImagesFailed = 3;

} // namespace TavrinCli
