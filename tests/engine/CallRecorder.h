#ifndef TAVRIN_TESTS_ENGINE_CALLRECORDER_H
#define TAVRIN_TESTS_ENGINE_CALLRECORDER_H

#include <chrono>
#include <condition_variable>
#include <initializer_list>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace TestKelo {

// One text or integer argument of an entry point call, as the log shows it. Implicit, so that
// an entry point lists its arguments plainly.
class LoggedArgument {
public:
    LoggedArgument(const char* text)
        : text_(text ? text : "<null>") {}
    LoggedArgument(int value)
        : text_(std::to_string(value)) {}

    const std::string& text() const { return text_; }

private:
    std::string text_;
};

class CallLog {
public:
    void record(const std::string& entryPoint, std::initializer_list<LoggedArgument> arguments);
    int size() const { return static_cast<int>(calls_.size()); }
    const std::string& entry(int index) const;
    int count(const std::string& entryPoint) const;

private:
    struct Call {
        std::string entryPoint;
        std::string text;
    };
    std::vector<Call> calls_;
};

struct Fault {
    std::string entryPoint;
    int remainingCalls;
    int status;
    std::string text;
    bool throws;
};

// Faults waiting for their call. Each counts the calls of its entry point from when it was
// planned.
class FaultPlan {
public:
    void add(Fault fault);
    std::optional<Fault> due(const std::string& entryPoint);

private:
    std::vector<Fault> pending_;
};

// Holds the next call of one entry point until the test lets it go or a time runs out, so that
// a test can act while a call is inside the engine. It has a lock of its own: the held call
// waits before it takes the engine's.
class CallGate {
public:
    void hold(std::string entryPoint, std::chrono::milliseconds limit);
    void release();
    bool holding() const;
    // Waits here when the call is the one held.
    void pass(const std::string& entryPoint);

private:
    mutable std::mutex mutex_;
    std::condition_variable released_;
    std::optional<std::string> entryPoint_;
    std::chrono::milliseconds limit_{};
    bool holding_ = false;
    bool open_ = false;
};

} // namespace TestKelo

#endif
