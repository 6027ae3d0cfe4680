// A host's view of the system: create an operator, open a workspace, list what it holds and
// tune a parameter, through the public headers alone.
#include <cstdio>
#include <string>

#include <Vision/DeepLearning/DeepLearning.h>

#include "TestEngineControl.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;

char const* const File = "/workspaces/inspection.kelo";

void ScriptWorkspace() {
    testkelo_add_file(File, "inspection-uuid", "2024-06-01");
    testkelo_add_stream(File, "main", "main-uuid", "0,0,640,480");
    testkelo_add_tool(File, "main", nullptr, "defects", "defects-uuid", "red_quick");
    testkelo_add_parameter(File, "main", "defects", "post_process_parameters/red/threshold",
                           "[0.2,0.8]");
    testkelo_add_parameter(File, "main", "defects", "post_process_parameters/red/region_filter",
                           "");
}

void ListTools(std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools, int depth) {
    for (auto const& tool : *tools) {
        std::printf("%*stool %s (%s), id %s\n", 2 * depth, "", tool->Name().c_str(),
                    tool->Type().c_str(), tool->Id().c_str());
        ListTools(tool->ChildTools(), depth + 1);
    }
}

} // namespace

int main() {
    ScriptWorkspace();
    auto op = Tavrin::Brnt::CreateObject<DLOperator>();
    op->LoadWorkspace(File);
    for (auto const& stream : *op->Workspace()->Streams()) {
        std::printf("stream %s\n", stream->Name().c_str());
        ListTools(stream->Tools(), 1);
    }
    auto tool = std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(
        op->Stream()->Tools()->Item(0));
    std::printf("upper threshold %g\n", tool->UpperThreshold());
    tool->setUpperThreshold(0.9);
    std::printf("upper threshold now %g\n", tool->UpperThreshold());
    return op->Stream() && tool->UpperThreshold() == 0.9 ? 0 : 1;
}
