#pragma once

#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"

namespace Tavrin::Vision::DeepLearning::Private {

// The access object's start, opened to the failure sweep: each life of the library starts the
// engine as a fresh process would, so that every call of the start can fail in its turn.
class DeepLearningAccessTestPeer {
public:
    static void StartEngine() { DeepLearningAccess::Instance()->InitBuffer(); }
    static void StopEngine() { DeepLearningAccess::Disconnect(nullptr); }
    // Back to a loaded engine that has not started: no start flag, no access buffer, no cache.
    static void ForgetEngineStart() {
        DeepLearningAccess::Instance()->accessBuffer_.reset();
        Engine().engineInitialized.store(false);
    }
};

} // namespace Tavrin::Vision::DeepLearning::Private
