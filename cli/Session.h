#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <Vision/DeepLearning/DeepLearning.h>

namespace TavrinCli {

using namespace Tavrin::Vision::DeepLearning;

// One parameter change, as TOOL.NAME=VALUE or TOOL.MODEL.NAME=VALUE.
struct Assignment {
    std::string address;
    std::string value;
};

Assignment ParseAssignment(const std::string& text);

// The stream of that name in the operator's workspace, or the first when the name is empty;
// UsageError when none is.
void SelectStream(DLOperator& op, const std::string& name);
// Every tool of the stream, parents before their children.
std::vector<std::shared_ptr<DLToolRuntimeParams>> ToolsOf(const DLStream& stream);
// The tool of that name anywhere in the workspace's trees; UsageError when none is.
std::shared_ptr<DLToolRuntimeParams> FindTool(const DLWorkspace& workspace, const std::string& name);

// Opens the workspace file in a runtime tool or an operator; CommandError when the file is
// missing or the engine cannot open it, with the library's exception nested.
template <class Holder> void OpenWorkspace(Holder& holder, const std::string& workspaceFile);

// A workspace opened in a runtime tool, as a host holds it: the stream to run and the parameters
// to tune, and the runs with their records.
class Session {
public:
    // CommandError when the file is missing or the engine cannot open it.
    explicit Session(const std::string& workspaceFile);
    // A runtime tool loaded from an archive, with the workspace it reopened.
    explicit Session(std::shared_ptr<DLRuntimeTool> tool);

    std::shared_ptr<DLWorkspace> Workspace() const;
    std::shared_ptr<DLStream> Stream() const;
    // The stream of that name, or the first when the name is empty; UsageError when none is.
    void SelectStream(const std::string& name);

    // Every tool of the selected stream, parents before their children.
    std::vector<std::shared_ptr<DLToolRuntimeParams>> StreamTools() const;
    // The tool of that name anywhere in the workspace's trees; UsageError when none is.
    std::shared_ptr<DLToolRuntimeParams> FindTool(const std::string& name) const;
    // The text of the parameter that the address names.
    std::string Value(const std::string& address) const;
    // Sets the parameter through its setter; UsageError as SetParameter says.
    void Apply(const Assignment& assignment);

    std::shared_ptr<DLResult> Run(std::shared_ptr<Tavrin::Vision::IImage> image);
    std::shared_ptr<Tavrin::Vision::Record> LastRunRecord() { return tool_->CreateLastRunRecord(); }
    const std::shared_ptr<DLRuntimeTool>& Tool() const { return tool_; }

private:
    rttr::instance Target(const std::string& address, std::string& parameter) const;

    std::shared_ptr<DLRuntimeTool> tool_;
};

// Applies each TOOL.NAME=VALUE in turn.
void ApplyAll(Session& session, const std::vector<std::string>& assignments);

// The models of a tool that has them, read by reflection; empty for other tools.
std::vector<std::shared_ptr<DLBlueModel>> ModelsOf(const DLToolRuntimeParams& tool);

// The least score at which an anomaly tool finds an anomaly, read by reflection; nothing for
// other tools.
std::optional<double> AnomalyThresholdOf(const DLToolRuntimeParams& tool);

} // namespace TavrinCli
