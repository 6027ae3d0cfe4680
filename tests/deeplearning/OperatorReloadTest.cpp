#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include "EngineTest.h"
#include "GraphicsTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "WorkspaceFiles.h"

namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;
using GraphicTexts::Number;
using Texts = std::vector<std::string>;

char const* const File = "/workspaces/reload.kelo";

// What may differ between the file a tool was saved on and the file it is loaded on.
struct FileShape {
    bool hasHdm = true;
    char const* redThreshold = "[0.25,0.75]";
    char const* nodeModel = "n";
};

void Parameter(char const* tool, char const* path, char const* value) {
    testkelo_add_parameter(File, "main", tool, path, value);
}

// Stream "main" holds the red tools "hdm" and "quick", the green tool "hgreen" with the blue
// read tool "read" under it, and the blue tool "blue" with a node and a string model; the
// stream "spare" is empty, so that no stream is selected by itself.
void AddReloadFile(FileShape const& shape) {
    testkelo_add_file(File, "file-uuid", "2024-05-01");
    testkelo_add_stream(File, "main", "main-uuid", "0,0,64,64");
    testkelo_add_stream(File, "spare", "spare-uuid", "0,0,64,64");
    if (shape.hasHdm) {
        testkelo_add_tool(File, "main", nullptr, "hdm", "hdm-uuid", "red_sua");
        Parameter("hdm", "post_process_parameters/red/threshold", shape.redThreshold);
        Parameter("hdm", "post_process_parameters/red/region_filter", "");
        Parameter("hdm", "runtime_parameters/max_downsampling_size", "4");
    }
    WorkspaceFiles::AddQuickRedTool(File, "main", nullptr, "quick", "quick-uuid");
    Parameter("quick", "post_process_parameters/red/threshold", shape.redThreshold);
    testkelo_add_tool(File, "main", nullptr, "hgreen", "hgreen-uuid", "green_sua");
    Parameter("hgreen", "post_process_parameters/green/threshold", "0.5");
    Parameter("hgreen", "runtime_parameters/heat_map_on", "true");
    testkelo_add_tool(File, "main", "hgreen", "read", "read-uuid", "blue_read");
    Parameter("read", "processing/blue/threshold", "0.3");
    Parameter("read", "post_processing/blue/feature_filter", "");
    Parameter("read", "processing/blue/precision", "0.6");
    Parameter("read", "sampling/feature_size", "8");
    testkelo_add_tool(File, "main", nullptr, "blue", "blue-uuid", "blue");
    testkelo_add_model(File, "main", "blue", shape.nodeModel, "node");
    testkelo_add_model(File, "main", "blue", "s", "string");
    Parameter("blue", "processing/sampling_density", "1");
    Parameter("blue", "processing/blue/threshold", "0.3");
    Parameter("blue", "post_processing/blue/feature_filter", "");
    Parameter("blue", "processing/blue/precision", "0.6");
    Parameter("blue", "sampling/feature_size", "16x24");
    std::string const node = std::string("models/") + shape.nodeModel + "/";
    Parameter("blue", (node + "enabled").c_str(), "true");
    Parameter("blue", (node + "threshold").c_str(), "0.4");
    Parameter("blue", (node + "occurrences").c_str(), "2");
    Parameter("blue", "models/s/enabled", "true");
    Parameter("blue", "models/s/threshold", "0.1");
    Parameter("blue", "models/s/string/min_string_length", "5");
}

template <class Tool> std::shared_ptr<Tool> Find(DLOperator const& op, char const* id) {
    return std::dynamic_pointer_cast<Tool>(
        Private::DeepLearningAccess::FindTool(*op.Workspace(), id));
}

std::string Save(std::shared_ptr<DLRuntimeTool> const& tool) {
    std::stringstream stream;
    VisionBinaryOutputArchive output(stream, SerializerOptionsConstants_None);
    output(tool);
    return stream.str();
}

std::shared_ptr<DLRuntimeTool> Load(std::string const& bytes) {
    std::stringstream stream(bytes);
    VisionBinaryInputArchive input(stream, SerializerOptionsConstants_None);
    std::shared_ptr<DLRuntimeTool> tool;
    input(tool);
    return tool;
}

// The settings that the reload restores or leaves to the file, one text per tool or model.
Texts Settings(DLOperator const& op) {
    Texts texts{"stream " + (op.Stream() ? op.Stream()->Name() : std::string("none"))};
    if (!op.Workspace())
        return texts;
    if (auto const hdm = Find<DLHdmRedToolRuntimeParams>(op, "hdm-uuid"))
        texts.push_back("hdm " + Number(hdm->LowerThreshold()) + "-" +
                        Number(hdm->UpperThreshold()) + " graphics " +
                        std::to_string(hdm->ShowGraphics()));
    auto const quick = Find<DLQuickRedToolRuntimeParams>(op, "quick-uuid");
    texts.push_back("quick " + Number(quick->LowerThreshold()) + "-" +
                    Number(quick->UpperThreshold()) + " region " +
                    std::to_string(quick->ShowRegion()));
    texts.push_back("read " +
                    Number(Find<DLBlueReadToolRuntimeParams>(op, "read-uuid")->Threshold()));
    for (auto const& model : *Find<DLBlueToolRuntimeParams>(op, "blue-uuid")->Models()) {
        std::string text = "model " + model->Name() + " " + std::to_string(model->Enable());
        if (auto const node = std::dynamic_pointer_cast<DLBlueNodeModel>(model))
            text += " occurrences " + std::to_string(node->Occurrences());
        if (auto const string = std::dynamic_pointer_cast<DLBlueStringModel>(model))
            text += " length " + std::to_string(string->MinimumLength());
        texts.push_back(text);
    }
    return texts;
}

// A tool on the original file, edited by its user and saved; it is gone on return.
std::string SaveEditedTool() {
    auto const tool = Tavrin::Brnt::CreateObject<DLRuntimeTool>();
    tool->LoadWorkspace(File);
    auto const op = tool->DeepLearningOperator();
    op->setStream(op->Workspace()->Streams()->Item(0));
    auto const hdm = Find<DLHdmRedToolRuntimeParams>(*op, "hdm-uuid");
    hdm->setLowerThreshold(0.3);
    hdm->setShowGraphics(false);
    auto const quick = Find<DLQuickRedToolRuntimeParams>(*op, "quick-uuid");
    quick->setUpperThreshold(0.8);
    quick->setShowRegion(false);
    Find<DLBlueReadToolRuntimeParams>(*op, "read-uuid")->setThreshold(0.7);
    auto const models = Find<DLBlueToolRuntimeParams>(*op, "blue-uuid")->Models();
    auto const node = std::dynamic_pointer_cast<DLBlueNodeModel>(models->Item(0));
    node->setEnable(false);
    node->setOccurrences(3);
    std::dynamic_pointer_cast<DLBlueStringModel>(models->Item(1))->setMinimumLength(7);
    return Save(tool);
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
// are restored on it.
TEST_F(OperatorReload, ArchivedSettingsGoWhereTheFileStillHasTheTool) {
    struct Case {
        char const* name;
        FileShape file;
        Texts expected;
    };
    Case const cases[] = {
        {"unchanged file",
         {},
         {"stream main", "hdm 0.3-0.75 graphics 0", "quick 0.25-0.75 region 0", "read 0.7",
          "model n 0 occurrences 3", "model s 1 length 7"}},
        {"a tool removed from the file",
         {false},
         {"stream main", "quick 0.25-0.75 region 0", "read 0.7", "model n 0 occurrences 3",
          "model s 1 length 7"}},
        {"thresholds changed in the file",
         {true, "[0.2,0.6]"},
         {"stream main", "hdm 0.3-0.75 graphics 0", "quick 0.2-0.6 region 0", "read 0.7",
          "model n 0 occurrences 3", "model s 1 length 7"}},
        {"a model renamed in the file",
         {true, "[0.25,0.75]", "m"},
         {"stream main", "hdm 0.3-0.75 graphics 0", "quick 0.25-0.75 region 0", "read 0.7",
          "model m 1 occurrences 2", "model s 1 length 7"}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        std::string const saved = SavedEditedTool();
        AddReloadFile(c.file);
        auto const loaded = Load(saved);
        EXPECT_EQ(Settings(*loaded->DeepLearningOperator()), c.expected);
    }
}

// The path survives a load that could not open it, so the next save still names the file.
TEST_F(OperatorReload, AFileThatMovedLeavesAnEmptyOperatorThatKeepsItsPath) {
    std::string const saved = SavedEditedTool();
    std::shared_ptr<DLRuntimeTool> loaded;
    ASSERT_NO_THROW(loaded = Load(saved));
    auto const op = loaded->DeepLearningOperator();
    EXPECT_FALSE(op->Workspace());
    EXPECT_FALSE(op->Stream());

    std::string const resaved = Save(loaded);
    AddReloadFile({});
    auto const op2 = Load(resaved)->DeepLearningOperator();
    EXPECT_EQ(Settings(*op2),
              (Texts{"stream none", "hdm 0.25-0.75 graphics 1", "quick 0.25-0.75 region 1",
                     "read 0.3", "model n 1 occurrences 2", "model s 1 length 5"}));
}

} // namespace
