#include "Catalogue.h"

#include "EngineError.h"
#include "TestEngineControl.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace TestKelo {
namespace {

// Pre-order, as a tree listing reads: a parent before its children, siblings in order.
Tool* searchTool(std::vector<Tool>& tools, const std::string& toolId) {
    for (Tool& tool : tools) {
        if (tool.id == toolId) {
            return &tool;
        }
        if (Tool* child = searchTool(tool.children, toolId)) {
            return child;
        }
    }
    return nullptr;
}

Stream* searchStream(WorkspaceContent& content, const std::string& streamId) {
    auto found = std::find_if(content.streams.begin(), content.streams.end(),
                              [&](const Stream& stream) { return stream.id == streamId; });
    return found == content.streams.end() ? nullptr : &*found;
}

} // namespace

Stream& findStream(WorkspaceContent& content, const std::string& streamId) {
    if (Stream* stream = searchStream(content, streamId)) {
        return *stream;
    }
    throw EngineError(TESTKELO_NOT_FOUND, "unknown stream '" + streamId + "'");
}

Tool& findTool(Stream& stream, const std::string& toolId) {
    if (Tool* tool = searchTool(stream.tools, toolId)) {
        return *tool;
    }
    throw EngineError(TESTKELO_NOT_FOUND,
                      "unknown tool '" + toolId + "' in stream '" + stream.id + "'");
}

std::string& findParameter(Tool& tool, const std::string& path) {
    auto found = tool.parameters.find(path);
    if (found == tool.parameters.end()) {
        throw EngineError(TESTKELO_NOT_FOUND,
                          "unknown parameter path '" + path + "' of tool '" + tool.id + "'");
    }
    return found->second;
}

void Catalogue::addFile(const std::string& path, WorkspaceContent content) {
    if (!files_.emplace(path, std::move(content)).second) {
        throw std::invalid_argument("workspace file '" + path + "' is already registered");
    }
}

void Catalogue::addStream(const std::string& path, Stream stream) {
    WorkspaceContent& content = registered(path);
    if (searchStream(content, stream.id)) {
        throw std::invalid_argument("stream '" + stream.id + "' is already registered");
    }
    content.streams.push_back(std::move(stream));
}

void Catalogue::addTool(const std::string& path, const std::string& streamId,
                        const std::optional<std::string>& parentToolId, Tool tool) {
    Stream& stream = findStream(registered(path), streamId);
    if (searchTool(stream.tools, tool.id)) {
        throw std::invalid_argument("tool '" + tool.id + "' is already registered");
    }
    std::vector<Tool>& siblings =
        parentToolId ? findTool(stream, *parentToolId).children : stream.tools;
    siblings.push_back(std::move(tool));
}

void Catalogue::addModel(const std::string& path, const std::string& streamId,
                         const std::string& toolId, Model model) {
    findTool(findStream(registered(path), streamId), toolId).models.push_back(std::move(model));
}

void Catalogue::setParameter(const std::string& path, const std::string& streamId,
                             const std::string& toolId, const std::string& parameterPath,
                             const std::string& value) {
    findTool(findStream(registered(path), streamId), toolId).parameters[parameterPath] = value;
}

const WorkspaceContent& Catalogue::file(const std::string& path) const {
    auto found = files_.find(path);
    if (found == files_.end()) {
        throw EngineError(TESTKELO_NOT_FOUND, "cannot open workspace file '" + path + "'");
    }
    return found->second;
}

WorkspaceContent& Catalogue::registered(const std::string& path) {
    auto found = files_.find(path);
    if (found == files_.end()) {
        throw std::invalid_argument("workspace file '" + path + "' is not registered");
    }
    return found->second;
}

} // namespace TestKelo
