#include <cstring>
#include <utility>
#include <vector>

#include <tinyxml2.h>

#include "Vision/DeepLearning/DLBlueLayoutModel.h"
#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "Vision/DeepLearning/DLBlueNodeModel.h"
#include "Vision/DeepLearning/DLBlueReadToolRuntimeParams.h"
#include "Vision/DeepLearning/DLBlueRegexModel.h"
#include "Vision/DeepLearning/DLBlueStringModel.h"
#include "Vision/DeepLearning/DLBlueToolRuntimeParams.h"
#include "Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLHdmRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLQuickGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLQuickRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLStreamReadOnlyCollection.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"

namespace Tavrin::Vision::DeepLearning::Private {

namespace {

using ToolPtr = std::shared_ptr<DLToolRuntimeParams>;
using ToolsPtr = std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection>;
using ModelPtr = std::shared_ptr<DLBlueModel>;

template <class Tool>
ToolPtr BuildTool(std::shared_ptr<DLStream> const& stream, char const* id, char const* uuid,
                  char const* type, ToolsPtr const& children) {
    return Brnt::ObjectFactory::Construct<Tool>(stream, id, uuid, type, "", children);
}

struct ToolKind {
    char const* type;
    ToolPtr (*build)(std::shared_ptr<DLStream> const&, char const*, char const*, char const*,
                     ToolsPtr const&);
};

// The class of a tool by the engine's type word, compared exactly.
ToolKind const ToolKinds[] = {
    {"red", &BuildTool<DLFocusedModeRedToolRuntimeParams>},
    {"red_sua", &BuildTool<DLHdmRedToolRuntimeParams>},
    {"red_quick", &BuildTool<DLQuickRedToolRuntimeParams>},
    {"green", &BuildTool<DLFocusedModeGreenToolRuntimeParams>},
    {"green_sua", &BuildTool<DLHdmGreenToolRuntimeParams>},
    {"green_quick", &BuildTool<DLQuickGreenToolRuntimeParams>},
    {"blue", &BuildTool<DLBlueToolRuntimeParams>},
    {"blue_read", &BuildTool<DLBlueReadToolRuntimeParams>},
};


template <class Model>
ModelPtr BuildModel(ToolPtr const& tool, char const* id) {
    return Brnt::ObjectFactory::Construct<Model>(tool, id);
}

struct ModelKind {
    char const* type;
    ModelPtr (*build)(ToolPtr const&, char const*);
};

ModelKind const ModelKinds[] = {
    {"node", &BuildModel<DLBlueNodeModel>},
    {"regex", &BuildModel<DLBlueRegexModel>},
    {"string", &BuildModel<DLBlueStringModel>},
    {"layout", &BuildModel<DLBlueLayoutModel>},
};

// The row of a class table whose type word equals type exactly, or null.
template <class Kind, std::size_t Count>
Kind const* FindKind(Kind const (&kinds)[Count], char const* type) {
    for (Kind const& kind : kinds)
        if (std::strcmp(kind.type, type) == 0)
            return &kind;
    return nullptr;
}

ToolPtr BuildToolOfType(std::shared_ptr<DLStream> const& stream, char const* id, char const* uuid,
                        char const* type, ToolsPtr const& children) {
    ToolKind const* kind = FindKind(ToolKinds, type);
    return kind ? kind->build(stream, id, uuid, type, children) : nullptr;
}

// The engine's contract is that only the four known model types occur.
ModelPtr BuildModelOfType(ToolPtr const& tool, char const* id, char const* type) {
    ModelKind const* kind = FindKind(ModelKinds, type);
    return kind ? kind->build(tool, id) : nullptr;
}

// The listing's root, whatever its name. The document copies the text, so the access buffer
// may be reused by nested calls once this has returned.
tinyxml2::XMLElement const* ParseListing(tinyxml2::XMLDocument& document, char const* text) {
    document.Parse(text ? text : "");
    return document.FirstChildElement();
}

char const* Attribute(tinyxml2::XMLElement const& element, char const* name) {
    char const* value = element.Attribute(name);
    return value ? value : "";
}

} // namespace

std::shared_ptr<DLStreamReadOnlyCollection>
DeepLearningAccess::LoadStreams(std::shared_ptr<DLWorkspace> const& workspace) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    InitBuffer();
    ThrowIfFailed(Engine().kelo_runtime_list_streams(workspace->name_.c_str(),
                                                     &accessBuffer_->buffer),
                  DeepLearningExceptionCodes::CannotListStreams,
                  ExceptionTexts::CannotListStreams);
    tinyxml2::XMLDocument document;
    std::vector<DLStreamPtr> streams;
    if (auto root = ParseListing(document, accessBuffer_->buffer.text))
        for (auto element = root->FirstChildElement("stream"); element;
             element = element->NextSiblingElement("stream")) {
            auto stream = Brnt::ObjectFactory::Construct<DLStream>(
                workspace, Attribute(*element, "id"), Attribute(*element, "uuid"),
                Attribute(*element, "frame_window"));
            stream->FinalConstruct();
            streams.push_back(std::move(stream));
        }
    return Brnt::ObjectFactory::Create<DLStreamReadOnlyCollection>(std::move(streams));
}

std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection>
DeepLearningAccess::LoadTools(std::shared_ptr<DLStream> const& stream) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    std::shared_ptr<DLWorkspace> workspace = stream->ParentWorkspace();
    ThrowIfFailed(Engine().kelo_runtime_list_tools(workspace->name_.c_str(),
                                                   stream->name_.c_str(), &accessBuffer_->buffer),
                  DeepLearningExceptionCodes::CannotListTools, ExceptionTexts::CannotListTools);
    tinyxml2::XMLDocument document;
    auto root = ParseListing(document, accessBuffer_->buffer.text);
    auto first = root ? root->FirstChildElement("tool") : nullptr;
    if (!first)
        return Brnt::ObjectFactory::Create<DLToolRuntimeParamsReadOnlyCollection>(
            std::vector<DLToolRuntimeParamsPtr>());
    return CreateDLToolRuntimeParamsReadOnlyCollection(*first, stream);
}

std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection>
DeepLearningAccess::CreateDLToolRuntimeParamsReadOnlyCollection(tinyxml2::XMLElement const& first,
                                                                std::shared_ptr<DLStream> stream) {
    std::vector<DLToolRuntimeParamsPtr> tools;
    for (auto element = &first; element; element = element->NextSiblingElement("tool")) {
        ToolsPtr children;
        if (auto firstChild = element->FirstChildElement("tool"))
            children = CreateDLToolRuntimeParamsReadOnlyCollection(*firstChild, stream);
        ToolPtr tool = BuildToolOfType(stream, Attribute(*element, "id"),
                                       Attribute(*element, "uuid"), Attribute(*element, "type"),
                                       children);
        if (children)
            for (auto const& child : *children)
                child->setParent(tool);
        if (!tool)
            continue;
        tool->FinalConstruct();
        tools.push_back(std::move(tool));
    }
    return Brnt::ObjectFactory::Create<DLToolRuntimeParamsReadOnlyCollection>(std::move(tools));
}

std::shared_ptr<DLBlueModelReadOnlyCollection>
DeepLearningAccess::LoadModels(std::shared_ptr<DLToolRuntimeParams> const& tool) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    ToolAddress const address = AddressOf(*tool);
    ThrowIfFailed(Engine().kelo_runtime_blue_list_models(address.workspaceId, address.streamName,
                                                         address.toolName, &accessBuffer_->buffer),
                  DeepLearningExceptionCodes::CannotListModels, ExceptionTexts::CannotListModels);
    tinyxml2::XMLDocument document;
    std::vector<DLBlueModelPtr> models;
    if (auto root = ParseListing(document, accessBuffer_->buffer.text))
        for (auto element = root->FirstChildElement("model"); element;
             element = element->NextSiblingElement("model")) {
            char const* type = Attribute(*element, "type");
            ModelPtr model = BuildModelOfType(tool, Attribute(*element, "id"), type);
            // The engine lists only the four model types; a listing with another cannot be read.
            if (!model)
                throw DeepLearningException(DeepLearningExceptionCodes::CannotListModels,
                                            std::string(ExceptionTexts::CannotListModels) +
                                                ": no model type is named \"" + type + "\"");
            model->FinalConstruct();
            models.push_back(std::move(model));
        }
    return Brnt::ObjectFactory::Create<DLBlueModelReadOnlyCollection>(std::move(models));
}

std::shared_ptr<DLToolRuntimeParams>
DeepLearningAccess::FindToolRecursively(std::shared_ptr<DLToolRuntimeParams> const& tool,
                                        char const* id) {
    if (!tool)
        return nullptr;
    if (tool->id_ == id)
        return tool;
    if (auto children = tool->ChildTools())
        for (auto const& child : *children)
            if (auto found = FindToolRecursively(child, id))
                return found;
    return nullptr;
}

std::shared_ptr<DLToolRuntimeParams> DeepLearningAccess::FindTool(DLStream const& stream,
                                                                  char const* id) {
    if (auto tools = stream.Tools())
        for (auto const& tool : *tools)
            if (auto found = FindToolRecursively(tool, id))
                return found;
    return nullptr;
}

std::shared_ptr<DLToolRuntimeParams> DeepLearningAccess::FindTool(DLWorkspace const& workspace,
                                                                  char const* id) {
    if (auto streams = workspace.Streams())
        for (auto const& stream : *streams)
            if (auto found = FindTool(*stream, id))
                return found;
    return nullptr;
}

} // namespace Tavrin::Vision::DeepLearning::Private
