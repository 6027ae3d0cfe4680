#include <cstring>

#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"
#include "engine/ScopeExit.h"
#include "engine/WorkspaceTables.h"

namespace Tavrin::Vision::DeepLearning::Private {

ToolAddress DeepLearningAccess::AddressOf(DLToolRuntimeParams const& tool) {
    std::shared_ptr<DLStream> stream = tool.stream_.lock();
    std::shared_ptr<DLWorkspace> workspace = stream ? stream->ParentWorkspace() : nullptr;
    if (!workspace)
        throw InternalErrorException("The tool " + tool.name_ +
                                         " no longer belongs to an open workspace.",
                                     VisionExceptionCodes_InternalError);
    return {stream, workspace, workspace->name_.c_str(), stream->name_.c_str(), tool.name_.c_str()};
}

DeepLearningAccess::ParameterKeys::ParameterKeys(DLToolRuntimeParams const* tool)
    : tool_(tool) {}

void DeepLearningAccess::ParameterKeys::Reset(DLToolRuntimeParams const* tool) {
    tool_ = tool;
    address_.reset();
}

ToolAddress const& DeepLearningAccess::ParameterKeys::Address() {
    if (!address_) {
        address_ = AddressOf(*tool_);
        key_.assign(address_->workspaceId)
            .append("/")
            .append(address_->streamName)
            .append("/")
            .append(address_->toolName)
            .append("/");
        prefixLength_ = key_.size();
    }
    return *address_;
}

std::string const& DeepLearningAccess::ParameterKeys::Key(char const* path) {
    Address();
    key_.resize(prefixLength_);
    return key_.append(path);
}

template <class Use> auto DeepLearningAccess::WithKeysOf(DLToolRuntimeParams const& tool, Use use) {
    if (pushKeys_.Serve(tool))
        return use(pushKeys_);
    ParameterKeys keys(&tool);
    return use(keys);
}

char const* DeepLearningAccess::GetParameter(DLToolRuntimeParams const& tool, char const* path) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    // The cache loses a closed workspace's entries on the thread that closes it.
    std::lock_guard<std::recursive_mutex> tables(WorkspaceTablesMutex());
    return WithKeysOf(tool, [&](ParameterKeys& keys) { return ReadParameter(keys, path); });
}

bool DeepLearningAccess::SetParameter(DLToolRuntimeParams const& tool, char const* path,
                                      char const* value) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    std::lock_guard<std::recursive_mutex> tables(WorkspaceTablesMutex());
    return WithKeysOf(tool, [&](ParameterKeys& keys) { return WriteParameter(keys, path, value); });
}

char const* DeepLearningAccess::ReadParameter(ParameterKeys& keys, char const* path) {
    InitBuffer();
    auto const& cache = accessBuffer_->ParameterCache;
    if (auto cached = cache.find(keys.Key(path)); cached != cache.end())
        return cached->second.c_str();
    return ReadEngineParameter(keys.Address(), path);
}

char const* DeepLearningAccess::ReadEngineParameter(ToolAddress const& address, char const* path) {
    ThrowIfFailed(
        Engine().kelo_runtime_tool_get_parameter(address.workspaceId, address.streamName,
                                                 address.toolName, path, &accessBuffer_->buffer),
        DeepLearningExceptionCodes::CannotGetParameter, ExceptionTexts::CannotGetParameter);
    return accessBuffer_->buffer.text ? accessBuffer_->buffer.text : "";
}

bool DeepLearningAccess::WriteParameter(ParameterKeys& keys, char const* path, char const* value) {
    InitBuffer();
    auto& cache = accessBuffer_->ParameterCache;
    std::string const& key = keys.Key(path);
    // One lookup serves both the compare and the store.
    auto cached = cache.find(key);
    if (cached != cache.end()) {
        if (std::strcmp(cached->second.c_str(), value) == 0)
            return true;
        cached->second = value;
    } else {
        if (std::strcmp(ReadEngineParameter(keys.Address(), path), value) == 0)
            return false;
        cache.emplace(key, value);
    }
    // The cache took the value before the engine is asked, so a refused value stays cached.
    ToolAddress const& address = keys.Address();
    ThrowIfFailed(Engine().kelo_runtime_tool_set_parameter(address.workspaceId, address.streamName,
                                                           address.toolName, path, value),
                  DeepLearningExceptionCodes::CannotSetParameter,
                  ExceptionTexts::CannotSetParameter);
    return true;
}

void DeepLearningAccess::ApplyRuntimeParametersRecursively(
    std::shared_ptr<DLToolRuntimeParams> const& tool) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    PushParametersOf(*tool);
    if (auto children = tool->ChildTools())
        for (auto const& child : *children)
            ApplyRuntimeParametersRecursively(child);
}

void DeepLearningAccess::PushParametersOf(DLToolRuntimeParams& tool) {
    // The keys serve this tool alone, and hold its stream and workspace only while it pushes.
    ScopeExit const release([this] { pushKeys_.Reset(nullptr); });
    pushKeys_.Reset(&tool);
    tool.ApplyRuntimeParameters();
}

} // namespace Tavrin::Vision::DeepLearning::Private
