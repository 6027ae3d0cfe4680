// Writes the archive fuzzer's seeds into the folder given: a runtime tool after a run of the
// fuzz workspace, with and without its last run, and each object of that run and workspace.
#include <fstream>
#include <iostream>

#include <Vision/Core/Image8Grey.h>

#include "ArchivedClasses.h"
#include "FuzzWorkspace.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;

template <class T>
void Write(std::string const& folder, char const* name, std::shared_ptr<T> const& object,
           bool withLastRunData = false) {
    std::ofstream out(folder + "/" + name, std::ios::binary);
    ArchivedClasses::Save(out, object, withLastRunData);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    std::string const folder = argv[1];
    auto const workspace = FuzzWorkspace::OpenKinds();
    testkelo_set_result_document(FuzzWorkspace::KindsRunDocument().c_str());
    auto tool = Tavrin::Brnt::CreateObject<DLRuntimeTool>();
    tool->LoadWorkspace(FuzzWorkspace::File);
    tool->setInputImage(Tavrin::Brnt::CreateObject<Tavrin::Vision::Image8Grey>(64, 48));
    tool->Run();

    auto const result = tool->Results();
    auto const marking = result->ResultImage()->ResultMarking()->Item(0);
    auto const view = marking->ResultViews()->Item(0);
    auto const stream = workspace->Streams()->Item(0);
    auto const blue =
        std::dynamic_pointer_cast<DLBlueReadToolRuntimeParams>(stream->Tools()->Item(2));
    auto const blueView = result->ResultImage()->ResultMarking()->Item(2)->ResultViews()->Item(0);
    Write(folder, "runtime-tool", tool);
    Write(folder, "runtime-tool-with-last-run", tool, true);
    Write(folder, "operator", tool->DeepLearningOperator());
    Write(folder, "workspace", workspace);
    Write(folder, "stream", stream);
    Write(folder, "blue-tool", std::static_pointer_cast<DLToolRuntimeParams>(blue));
    Write(folder, "model", blue->Models()->Item(0));
    Write(folder, "result", result);
    Write(folder, "marking", marking);
    Write(folder, "view", view);
    Write(folder, "red", view->ResultRed());
    Write(folder, "green",
          result->ResultImage()->ResultMarking()->Item(1)->ResultViews()->Item(0)->ResultGreen());
    Write(folder, "blue", blueView->ResultBlue());
    Write(folder, "match", blueView->ResultBlue()->Matches()->Item(0));
    Write(folder, "resource", view->ResultRed()->ResultResources()->Item(0));
    return 0;
}
