#include <string>
#include <vector>

#include "EngineTest.h"
#include "GraphicsTestSupport.h"
#include "ToolTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "WorkspaceFiles.h"

namespace OperatorReloadTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using GraphicTexts::Number;
using Texts = std::vector<std::string>;

char const* const File = "/workspaces/reload.kelo";

// What may differ between the file a tool was saved on and the file it is loaded on.
struct FileShape {
    bool hasRead = true;
    bool thresholdsChanged = false;
    char const* model = "n";
};

// Stream "main" holds the blue read tool "read" with one node model and the quick green tool
// "green" with the quick red tool "red" under it; the stream "spare" is empty, so that no stream
// is selected by itself.
void AddReloadFile(FileShape const& shape) {
    testkelo_add_file(File, "file-uuid", "2024-05-01");
    testkelo_add_stream(File, "main", "main-uuid", "0,0,64,64");
    testkelo_add_stream(File, "spare", "spare-uuid", "0,0,64,64");
    char const* const threshold = shape.thresholdsChanged ? "0.2" : "0.3";
    if (shape.hasRead) {
        WorkspaceFiles::AddBlueReadTool(File, "main", "read", "read-uuid");
        testkelo_add_parameter(File, "main", "read", "processing/blue/threshold", threshold);
        testkelo_add_model(File, "main", "read", shape.model, "node");
        std::string const model = std::string("models/") + shape.model + "/";
        for (auto [path, value] : {std::pair{model + "enabled", "true"},
                                   {model + "threshold", "0.4"},
                                   {model + "occurrences", "2"}})
            testkelo_add_parameter(File, "main", "read", path.c_str(), value);
    }
    WorkspaceFiles::AddQuickGreenTool(File, "main", "green", "green-uuid");
    WorkspaceFiles::AddQuickRedTool(File, "main", "green", "red", "red-uuid");
    testkelo_add_parameter(File, "main", "red", "post_process_parameters/red/threshold",
                           shape.thresholdsChanged ? "[0.2,0.6]" : "[0.1,0.9]");
}

template <class Tool> std::shared_ptr<Tool> Find(DLOperator const& op, char const* id) {
    return std::dynamic_pointer_cast<Tool>(
        Private::DeepLearningAccess::FindTool(*op.Workspace(), id));
}

std::shared_ptr<DLBlueNodeModel> NodeModel(DLBlueReadToolRuntimeParams const& read) {
    return std::dynamic_pointer_cast<DLBlueNodeModel>(read.Models()->Item(0));
}

// The selected stream, then what the reload restores or leaves to the file, one text per tool.
Texts Settings(DLOperator const& op) {
    Texts texts{"stream " + (op.Stream() ? op.Stream()->Name() : "none")};
    if (!op.Workspace())
        return texts;
    if (auto const read = Find<DLBlueReadToolRuntimeParams>(op, "read-uuid"))
        texts.push_back("read " + Number(read->Threshold()) + " model " + NodeModel(*read)->Name() +
                        " " + std::to_string(NodeModel(*read)->Enable()) + " " +
                        std::to_string(NodeModel(*read)->Occurrences()));
    auto const red = Find<DLQuickRedToolRuntimeParams>(op, "red-uuid");
    texts.push_back("red " + Number(red->LowerThreshold()) + "-" + Number(red->UpperThreshold()) +
                    " region " + std::to_string(red->ShowRegion()));
    return texts;
}

// A tool on the original file, edited by its user and saved; it is gone on return.
std::string SaveEditedTool() {
    auto const tool = Tavrin::Brnt::CreateObject<DLRuntimeTool>();
    tool->LoadWorkspace(File);
    auto const op = tool->DeepLearningOperator();
    op->setStream(op->Workspace()->Streams()->Item(0));
    auto const read = Find<DLBlueReadToolRuntimeParams>(*op, "read-uuid");
    read->setThreshold(0.7);
    NodeModel(*read)->setEnable(false);
    NodeModel(*read)->setOccurrences(3);
    auto const red = Find<DLQuickRedToolRuntimeParams>(*op, "red-uuid");
    red->setUpperThreshold(0.8);
    red->setShowRegion(false);
    return ToolTest::Saved(tool);
}

class OperatorReload : public EngineTest {
protected:
    // With the saved tool gone, its file closes, so the next open of the path reads the file
    // that the test registers afresh.
    static std::string SavedEditedTool() {
        testkelo_reset();
        AddReloadFile({});
        std::string const saved = SaveEditedTool();
        testkelo_reset();
        return saved;
    }
};

// A quick tool's thresholds always come from the file: only the settings that every tool has
// are restored on it. The red tool sits under another tool, so it is reached only by recursion.
TEST_F(OperatorReload, ArchivedSettingsGoWhereTheFileStillHasTheTool) {
    struct Case {
        char const* name;
        FileShape file;
        Texts expected;
    };
    Case const cases[] = {
        {"unchanged file", {}, {"stream main", "read 0.7 model n 0 3", "red 0.1-0.9 region 0"}},
        {"a tool removed from the file", {false}, {"stream main", "red 0.1-0.9 region 0"}},
        {"thresholds changed in the file", FileShape{true, true},
         Texts{"stream main", "read 0.7 model n 0 3", "red 0.2-0.6 region 0"}},
        {"a model renamed in the file", FileShape{true, false, "m"},
         Texts{"stream main", "read 0.7 model m 1 2", "red 0.1-0.9 region 0"}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        std::string const saved = SavedEditedTool();
        AddReloadFile(c.file);
        auto const loaded = ToolTest::Loaded<DLRuntimeTool>(saved);
        EXPECT_EQ(Settings(*loaded->DeepLearningOperator()), c.expected);
    }
}

// The path survives a load that could not open it, so the next save still names the file.
TEST_F(OperatorReload, AFileThatMovedLeavesAnEmptyOperatorThatKeepsItsPath) {
    std::shared_ptr<DLRuntimeTool> loaded;
    ASSERT_NO_THROW(loaded = ToolTest::Loaded<DLRuntimeTool>(SavedEditedTool()));
    EXPECT_FALSE(loaded->DeepLearningOperator()->Workspace());
    EXPECT_EQ(Settings(*loaded->DeepLearningOperator()), Texts{"stream none"});

    AddReloadFile({});
    auto const reloaded = ToolTest::Loaded<DLRuntimeTool>(ToolTest::Saved(loaded));
    EXPECT_EQ(Settings(*reloaded->DeepLearningOperator()),
              (Texts{"stream none", "read 0.3 model n 1 2", "red 0.1-0.9 region 1"}));
}

} // namespace

} // namespace OperatorReloadTesting
