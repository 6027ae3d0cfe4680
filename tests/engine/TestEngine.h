#ifndef TAVRIN_TESTS_ENGINE_TESTENGINE_H
#define TAVRIN_TESTS_ENGINE_TESTENGINE_H

#include "CallRecorder.h"
#include "Engine.h"
#include "EngineError.h"

#include <initializer_list>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>

namespace TestKelo {

// The one engine of the process with its call log and planned faults. Entry points and
// control functions take its lock, since the binding calls some entry points without its own.
class TestEngine {
public:
    static TestEngine& instance();

    // Logs the call, then either fails it as planned or runs it, turning a refusal into the
    // call's status.
    template <typename Operation>
    int call(const char* entryPoint, std::initializer_list<LoggedArgument> arguments,
             Operation&& operation) {
        gate_.pass(entryPoint);
        std::lock_guard<std::mutex> lock(mutex_);
        log_.record(entryPoint, arguments);
        if (std::optional<Fault> fault = faults_.due(entryPoint)) {
            return inject(*fault);
        }
        try {
            operation(engine_);
            return 0;
        } catch (const EngineError& error) {
            engine_.noteError(error.what());
            return error.status();
        }
    }

    template <typename Control> decltype(auto) control(Control&& action) {
        std::lock_guard<std::mutex> lock(mutex_);
        return action(*this);
    }

    Engine& engine() { return engine_; }
    CallLog& log() { return log_; }
    FaultPlan& faults() { return faults_; }
    CallGate& gate() { return gate_; }
    void reset();

private:
    int inject(const Fault& fault);

    std::mutex mutex_;
    Engine engine_;
    CallLog log_;
    FaultPlan faults_;
    CallGate gate_;
};

} // namespace TestKelo

#endif
