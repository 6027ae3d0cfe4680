#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "GraphicsTestSupport.h"
#include "ResultTestSupport.h"
#include "ToolTestSupport.h"

namespace ToolArchiveTesting {

namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using GraphicTexts::Described;
using ToolTest::Loaded;
using ToolTest::Saved;

SerializerOptionsConstants const None = SerializerOptionsConstants_None;
SerializerOptionsConstants const InputImageOnly = SerializerOptionsConstants_CurrentInputImage;
SerializerOptionsConstants const All = static_cast<SerializerOptionsConstants>(
    SerializerOptionsConstants_LastRunData | SerializerOptionsConstants_CurrentInputImage);

// Two features, and a match of each model kind on them, seen through a turned and scaled pose.
std::string const BlueView = View(
    "<blue_read show_feature_chiclets=\"true\" show_rectangular_features=\"true\">"
    "<feat id=\"f0\" loc=\"10,20\" angle=\"0\" size=\"40x60\" score=\"0.9\" covers=\"\"/>"
    "<feat id=\"f1\" loc=\"60,20\" angle=\"1.5\" size=\"10x40\" score=\"0.8\" covers=\"\"/>"
    "<match model_id=\"s\" model_type=\"string\" string=\"AB\"><feat idx=\"0\"/></match>"
    "<match model_id=\"x\" model_type=\"regex\" covers=\"\" string=\"AB\" "
    "prettified_string=\"A-B\"><feat idx=\"1\"/></match>"
    "<match model_id=\"n\" model_type=\"node\" covers=\"\" node_coords=\"0;0\" string=\"s\" "
    "prettified_string=\"p\"><feat idx=\"0\"/></match>"
    "<match model_id=\"l\" model_type=\"layout\" covers=\"\"><region name=\"top\" origin=\"0,0\" "
    "size=\"10x20\"><feat idx=\"1\"/></region></match></blue_read>",
    "0,2,-2,2,100,50");

std::string const GreenView =
    View("<green threshold=\"0.5\" uncertainty=\"0.1\"><tag name=\"ok\" score=\"0.7\"/><tag "
         "name=\"nok\" score=\"0.25\"/></green>",
         "0,1,-1,0,10,20");

std::string const RedView =
    View(Red("<region score=\"0.9\" name=\"r0\" area=\"4\" perimeter=\"8\" center=\"10,20\" "
             "covers=\"\" coverage=\"\" points=\"8,18 12,22 9,25\"/>" +
             Resource("heat", "map")));

DLToolRuntimeParamsPtr FindTool(DLRuntimeTool const& tool, char const* id) {
    return DeepLearning::Private::DeepLearningAccess::FindTool(
        *tool.DeepLearningOperator()->Workspace(), id);
}

std::vector<std::string> LastRunKeys(DLRuntimeTool& tool) {
    return tool.CreateLastRunRecord()->SubRecords()->Keys();
}

GraphicTexts::Texts Overlay(DLRuntimeTool& tool) {
    return Described(*LastRunOverlay(tool.CreateLastRunRecord()));
}

using ToolArchive = ThreeKindsRuntimeToolTest;

// Reloaded markings all take the root's tool, so each run here is of one tool only.
TEST_F(ToolArchive, ReloadedResultsDrawWhatTheRunDrew) {
    AddResource("map", 4, 2, 1, 0, PatternPixels(4, 2, 1, 4), 4);
    for (auto [tool, view] :
         {std::pair{"red-uuid", RedView}, {"green-uuid", GreenView}, {"blue-uuid", BlueView}}) {
        SCOPED_TRACE(tool);
        testkelo_set_result_document(Document(Marking(view, tool), tool).c_str());
        tool_->Run();
        auto const loaded = Loaded<DLRuntimeTool>(Saved(tool_, All), All);
        ASSERT_TRUE(loaded->Results());
        EXPECT_EQ(loaded->Results()->Tool(), FindTool(*loaded, tool));
        EXPECT_EQ(LastRunKeys(*loaded), LastRunKeys(*tool_));
        EXPECT_FALSE(Overlay(*tool_).empty());
        EXPECT_EQ(Overlay(*loaded), Overlay(*tool_));
    }
}

TEST_F(ToolArchive, TheReadingArchivesOptionsDecideWhatIsKept) {
    tool_->Run();
    struct Case {
        char const* name;
        SerializerOptionsConstants saved;
        SerializerOptionsConstants loaded;
        bool keepsInputImage;
        bool keepsLastRun;
    };
    Case const cases[] = {
        {"saved with none, read with all", None, All, false, false},
        {"saved with all, read with none", All, None, false, false},
        {"input image only", InputImageOnly, InputImageOnly, true, false},
        {"all", All, All, true, true},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        auto const loaded = Loaded<DLRuntimeTool>(Saved(tool_, c.saved), c.loaded);
        EXPECT_EQ(loaded->InputImage() != nullptr, c.keepsInputImage);
        EXPECT_EQ(loaded->Results() != nullptr, c.keepsLastRun);
        EXPECT_EQ(loaded->CreateLastRunRecord()->SubRecords()->Count() != 0, c.keepsLastRun);
        EXPECT_EQ(loaded->DeepLearningOperator()->Stream()->Name(), "main");
    }

    std::stringstream stream;
    cereal::PortableBinaryOutputArchive plain(stream);
    EXPECT_THROW(plain(tool_), std::bad_cast);
}

TEST_F(ToolArchive, ALoadedToolHearsGraphicsChangesOfItsTools) {
    auto const loaded = Loaded<DLRuntimeTool>(Saved(tool_));
    ToolTest::FlagLog log(*loaded);
    FindTool(*loaded, "green-uuid")->setShowRegion(false);
    EXPECT_EQ(log.words(), ToolTest::Words{DLRuntimeTool::SfLastRunRecord});
}

TEST_F(ToolArchive, NewerVersionsAreRefusedWithTheClassText) {
    using Tavrin::Brnt::ObjectFactory;
    struct Case {
        char const* name;
        std::shared_ptr<ShareableBase> object;
        char const* text;
    };
    Case const cases[] = {
        {"DLRuntimeTool", tool_, "DLRuntimeTool::serialize()"},
        {"DLOperator", tool_->DeepLearningOperator(), "DLOperator::serialize()"},
        {"DLResultResource",
         ObjectFactory::Construct<DLResultResource>("heat", "image", "map", nullptr, 1.0),
         "DLResultRedRegionReadOnlyCollection::serialize()"},
        {"DLResultMatchLayout",
         ObjectFactory::Construct<DLResultMatchLayout>("l", "layout", 0.5, "", nullptr),
         "DLResultMatch::serialize()"},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        std::string const message = VisionTest::NewerVersionRefusal(
            c.object, std::string("Tavrin::Vision::DeepLearning::") + c.name, 0);
        EXPECT_EQ(message.rfind(c.text, 0), 0u) << message;
    }
}

} // namespace

} // namespace ToolArchiveTesting
