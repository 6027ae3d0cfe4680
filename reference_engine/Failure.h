#pragma once

#include <stdexcept>
#include <string>

namespace KeloReference {

// The engine's statuses. 0 is success; every other one comes with a text.
enum Status : int {
    StatusOk = 0,
    StatusRefused = 1,       // a bad argument or a call out of order
    StatusNotFound = 2,      // an unknown workspace, stream, tool, sample, resource or parameter
    StatusFileFailure = 3,   // a workspace file that cannot be read or written
    StatusComputeFailure = 4 // a failure inside a computation
};

// A refused request. The entry points turn it into its status and keep its text.
class Failure : public std::runtime_error {
public:
    Failure(Status status, const std::string& text)
        : std::runtime_error(text)
        , status_(status) {}

    Status status() const noexcept { return status_; }

private:
    Status status_;
};

[[noreturn]] inline void Refuse(const std::string& text) {
    throw Failure(StatusRefused, text);
}

[[noreturn]] inline void NotFound(const std::string& text) {
    throw Failure(StatusNotFound, text);
}

} // namespace KeloReference
