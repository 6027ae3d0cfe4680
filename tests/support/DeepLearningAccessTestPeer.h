#pragma once

#include <string>
#include <unordered_map>

#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"

namespace Tavrin::Vision::DeepLearning::Private {

// Opens the access object's private members to the tests, and to nothing else.
class DeepLearningAccessTestPeer {
public:
    using ToolPtr = std::shared_ptr<DLToolRuntimeParams>;

    static std::shared_ptr<DeepLearningAccess> Access() { return DeepLearningAccess::Instance(); }
    static void InitBuffer() { Access()->InitBuffer(); }
    static long Disconnect() { return DeepLearningAccess::Disconnect(nullptr); }
    static std::shared_ptr<DLWorkspace> OpenWorkspace(std::string const& path) {
        return Access()->OpenWorkspace(path);
    }
    static std::string GetParameter(ToolPtr const& tool, char const* path) {
        return Access()->GetParameter(*tool, path);
    }
    static void SetParameter(ToolPtr const& tool, char const* path, char const* value) {
        Access()->SetParameter(*tool, path, value);
    }
    static void ApplyRuntimeParametersRecursively(ToolPtr const& tool) {
        Access()->ApplyRuntimeParametersRecursively(tool);
    }
    static std::shared_ptr<DLResult>
    ParseResultKeloXml(DLStream const& stream, char const* document,
                       std::shared_ptr<Tavrin::Vision::Transform2DLinear> const& transform) {
        return Access()->ParseResultKeloXml(stream, document, transform);
    }
    static std::unordered_map<std::string, std::string> const& ParameterCache() {
        return Access()->accessBuffer_->ParameterCache;
    }
    static std::size_t OpenFileCount() { return Engine().OpenFiles.size(); }
    static std::size_t CloneListCount() { return Engine().CloneLists.size(); }
    static std::size_t ShutdownSubscriberCount() { return State().ShutdownSubscribers.size(); }
};

} // namespace Tavrin::Vision::DeepLearning::Private
