#include "TestEngine.h"

namespace TestKelo {

// Never destroyed: process shutdown callbacks may still call the engine while static objects
// are being destroyed.
TestEngine& TestEngine::instance() {
    static TestEngine* const engine = new TestEngine();
    return *engine;
}

void TestEngine::reset() {
    engine_ = Engine();
    log_ = CallLog();
    faults_ = FaultPlan();
}

int TestEngine::inject(const Fault& fault) {
    if (fault.throws) {
        throw std::runtime_error(fault.text);
    }
    engine_.noteError(fault.text);
    return fault.status;
}

} // namespace TestKelo
