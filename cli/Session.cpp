#include "Session.h"

#include <exception>
#include <filesystem>

#include "Failure.h"
#include "Parameters.h"

namespace TavrinCli {
namespace {

std::shared_ptr<DLToolRuntimeParams> FindIn(const DLToolRuntimeParamsReadOnlyCollection& tools,
                                            const std::string& name) {
    for (const auto& tool : tools) {
        if (tool->Name() == name)
            return tool;
        if (tool->ChildTools())
            if (auto child = FindIn(*tool->ChildTools(), name))
                return child;
    }
    return nullptr;
}

void AddTree(const DLToolRuntimeParamsReadOnlyCollection& tools,
             std::vector<std::shared_ptr<DLToolRuntimeParams>>& list) {
    for (const auto& tool : tools) {
        list.push_back(tool);
        if (tool->ChildTools())
            AddTree(*tool->ChildTools(), list);
    }
}

} // namespace

Assignment ParseAssignment(const std::string& text) {
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0)
        throw UsageError("'" + text + "' is no TOOL.NAME=VALUE");
    return {text.substr(0, equals), text.substr(equals + 1)};
}

void ApplyAll(Session& session, const std::vector<std::string>& assignments) {
    for (const std::string& text : assignments)
        session.Apply(ParseAssignment(text));
}

std::vector<std::shared_ptr<DLBlueModel>> ModelsOf(const DLToolRuntimeParams& tool) {
    const rttr::instance object(tool);
    const rttr::property models = object.get_derived_type().get_property("Models");
    if (!models.is_valid())
        return {};
    const auto collection =
        models.get_value(object).get_value<std::shared_ptr<DLBlueModelReadOnlyCollection>>();
    if (!collection)
        return {};
    return {collection->begin(), collection->end()};
}

std::optional<double> AnomalyThresholdOf(const DLToolRuntimeParams& tool) {
    const rttr::instance object(tool);
    const rttr::property threshold = object.get_derived_type().get_property("UpperThreshold");
    if (!threshold.is_valid())
        return std::nullopt;
    return threshold.get_value(object).to_double();
}

template <class Holder> void OpenWorkspace(Holder& holder, const std::string& workspaceFile) {
    if (!std::filesystem::is_regular_file(workspaceFile))
        throw CommandError("no such workspace file: " + workspaceFile);
    try {
        holder.LoadWorkspace(workspaceFile);
    } catch (const Tavrin::Vision::VisionException& failure) {
        // Nested, so that a host can still tell the library's exception class and code.
        std::throw_with_nested(
            CommandError("cannot open workspace " + workspaceFile + ": " + failure.Message()));
    }
}

template void OpenWorkspace(DLRuntimeTool&, const std::string&);
template void OpenWorkspace(DLOperator&, const std::string&);

void SelectStream(DLOperator& op, const std::string& name) {
    for (const auto& stream : *op.Workspace()->Streams()) {
        if (name.empty() || stream->Name() == name) {
            op.setStream(stream);
            return;
        }
    }
    throw UsageError(name.empty() ? "the workspace has no stream" : "unknown stream " + name);
}

std::vector<std::shared_ptr<DLToolRuntimeParams>> ToolsOf(const DLStream& stream) {
    std::vector<std::shared_ptr<DLToolRuntimeParams>> tools;
    AddTree(*stream.Tools(), tools);
    return tools;
}

std::shared_ptr<DLToolRuntimeParams> FindTool(const DLWorkspace& workspace,
                                              const std::string& name) {
    for (const auto& stream : *workspace.Streams())
        if (auto tool = FindIn(*stream->Tools(), name))
            return tool;
    throw UsageError("unknown tool " + name);
}

Session::Session(const std::string& workspaceFile)
    : tool_(Tavrin::Brnt::CreateObject<DLRuntimeTool>()) {
    OpenWorkspace(*tool_, workspaceFile);
}

Session::Session(std::shared_ptr<DLRuntimeTool> tool)
    : tool_(std::move(tool)) {}

std::shared_ptr<DLWorkspace> Session::Workspace() const {
    return tool_->DeepLearningOperator()->Workspace();
}

std::shared_ptr<DLStream> Session::Stream() const {
    return tool_->DeepLearningOperator()->Stream();
}

void Session::SelectStream(const std::string& name) {
    TavrinCli::SelectStream(*tool_->DeepLearningOperator(), name);
}

std::vector<std::shared_ptr<DLToolRuntimeParams>> Session::StreamTools() const {
    return ToolsOf(*Stream());
}

std::shared_ptr<DLToolRuntimeParams> Session::FindTool(const std::string& name) const {
    return TavrinCli::FindTool(*Workspace(), name);
}

// TOOL.NAME names a tool's parameter, TOOL.MODEL.NAME one of a model of the tool.
rttr::instance Session::Target(const std::string& address, std::string& parameter) const {
    const auto lastDot = address.rfind('.');
    if (lastDot == std::string::npos || lastDot == 0 || lastDot + 1 == address.size())
        throw UsageError("'" + address + "' is no TOOL.NAME or TOOL.MODEL.NAME");
    parameter = address.substr(lastDot + 1);
    const std::string owner = address.substr(0, lastDot);
    const auto firstDot = owner.find('.');
    const auto tool = FindTool(owner.substr(0, firstDot));
    if (firstDot == std::string::npos)
        return rttr::instance(*tool);
    const std::string modelName = owner.substr(firstDot + 1);
    for (const auto& model : ModelsOf(*tool))
        if (model->Name() == modelName)
            return rttr::instance(*model);
    throw UsageError("tool " + tool->Name() + " has no model " + modelName);
}

std::string Session::Value(const std::string& address) const {
    std::string parameter;
    const rttr::instance target = Target(address, parameter);
    return ParameterValue(target, parameter);
}

void Session::Apply(const Assignment& assignment) {
    std::string parameter;
    const rttr::instance target = Target(assignment.address, parameter);
    SetParameter(target, parameter, assignment.value);
}

std::shared_ptr<DLResult> Session::Run(std::shared_ptr<Tavrin::Vision::IImage> image) {
    tool_->setInputImage(std::move(image));
    tool_->Run();
    return tool_->Results();
}

} // namespace TavrinCli
