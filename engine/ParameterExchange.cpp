#include <cstring>

#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"

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

std::string const& DeepLearningAccess::ParameterKey(ToolAddress const& address,
                                                    char const* path) {
    // One buffer for every key: the steady-state push builds it without allocating.
    parameterKey_.clear();
    parameterKey_.append(address.workspaceId)
        .append("/")
        .append(address.streamName)
        .append("/")
        .append(address.toolName)
        .append("/")
        .append(path);
    return parameterKey_;
}

char const* DeepLearningAccess::GetParameter(std::shared_ptr<DLToolRuntimeParams> const& tool,
                                             char const* path) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    InitBuffer();
    ToolAddress const address = AddressOf(*tool);
    auto const& cache = accessBuffer_->ParameterCache;
    if (auto cached = cache.find(ParameterKey(address, path)); cached != cache.end())
        return cached->second.c_str();
    ThrowIfFailed(Engine().kelo_runtime_tool_get_parameter(
                      address.workspaceId, address.streamName, address.toolName, path, &accessBuffer_->buffer),
                  DeepLearningExceptionCodes::CannotGetParameter,
                  ExceptionTexts::CannotGetParameter);
    return accessBuffer_->buffer.text ? accessBuffer_->buffer.text : "";
}

void DeepLearningAccess::SetParameter(std::shared_ptr<DLToolRuntimeParams> const& tool,
                                      char const* path, char const* value) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    if (std::strcmp(GetParameter(tool, path), value) == 0)
        return;
    ToolAddress const address = AddressOf(*tool);
    // The cache takes the value before the engine is asked, so a refused value stays cached.
    accessBuffer_->ParameterCache.insert_or_assign(ParameterKey(address, path), value);
    ThrowIfFailed(Engine().kelo_runtime_tool_set_parameter(address.workspaceId, address.streamName,
                                                           address.toolName, path, value),
                  DeepLearningExceptionCodes::CannotSetParameter,
                  ExceptionTexts::CannotSetParameter);
}

void DeepLearningAccess::ApplyRuntimeParametersRecursively(
    std::shared_ptr<DLToolRuntimeParams> const& tool) {
    tool->ApplyRuntimeParameters();
    if (auto children = tool->ChildTools())
        for (auto const& child : *children)
            ApplyRuntimeParametersRecursively(child);
}

} // namespace Tavrin::Vision::DeepLearning::Private
