#pragma once

#include <string>
#include <unordered_map>

#include "engine/DeepLearningAccess.h"

namespace Tavrin::Vision::DeepLearning::Private {

// Opens the access object's private members to the tests, and to nothing else.
class DeepLearningAccessTestPeer {
public:
    static std::shared_ptr<DeepLearningAccess> Access() { return DeepLearningAccess::Instance(); }
    static void InitBuffer() { Access()->InitBuffer(); }
    static long Disconnect() { return DeepLearningAccess::Disconnect(nullptr); }
    static std::unordered_map<std::string, std::string> const& ParameterCache() {
        return Access()->accessBuffer_->ParameterCache;
    }
};

} // namespace Tavrin::Vision::DeepLearning::Private
