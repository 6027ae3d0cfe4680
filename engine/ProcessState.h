#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "engine/DeepLearningAccess.h"
#include "engine/EngineFunctionTable.h"

namespace Tavrin::Vision::DeepLearning::Private {

// Everything the process keeps about its one engine. Destroyed at exit, after the shutdown
// callbacks have run.
struct ProcessState {
    std::mutex instanceMutex;
    std::atomic<bool> published{false};
    std::shared_ptr<DeepLearningAccess> instance;
    std::unique_ptr<EngineFunctionTable> table;
    std::vector<DLOperator*> ShutdownSubscribers;

    ~ProcessState();
};

ProcessState& State();

// The table of the loaded engine.
EngineFunctionTable& Engine();

} // namespace Tavrin::Vision::DeepLearning::Private
