#include <functional>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "GraphicsTestSupport.h"
#include "ResultTestSupport.h"
#include "ToolTestSupport.h"

namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using namespace GraphicTexts;
using Tavrin::Brnt::ObjectFactory;

SerializerOptionsConstants const None = SerializerOptionsConstants_None;
SerializerOptionsConstants const InputImageOnly = SerializerOptionsConstants_CurrentInputImage;
SerializerOptionsConstants const All = static_cast<SerializerOptionsConstants>(
    SerializerOptionsConstants_LastRunData | SerializerOptionsConstants_CurrentInputImage);

template <class T>
std::string Save(std::shared_ptr<T> const& object, SerializerOptionsConstants options) {
    std::stringstream stream;
    VisionBinaryOutputArchive output(stream, options);
    output(object);
    return stream.str();
}

template <class T = DLRuntimeTool>
std::shared_ptr<T> Load(std::string const& bytes, SerializerOptionsConstants options) {
    std::stringstream stream(bytes);
    VisionBinaryInputArchive input(stream, options);
    std::shared_ptr<T> object;
    input(object);
    return object;
}

DLToolRuntimeParamsPtr FindTool(DLRuntimeTool const& tool, char const* id) {
    return Private::DeepLearningAccess::FindTool(*tool.DeepLearningOperator()->Workspace(), id);
}

// Two features, and a match of each model kind on them, seen through a turned and scaled pose.
std::string const BlueView = View(
    "<blue_read show_feature_chiclets=\"true\" show_rectangular_features=\"true\" "
    "oriented=\"true\">"
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

// What the overlay does not show: timings, the red scores and the resource images' sizes.
std::string Facts(DLResult const& result) {
    std::ostringstream facts;
    for (auto const& marking : *result.ResultImage()->ResultMarking()) {
        facts << marking->ProcessedAt() << " " << marking->ProcessedDevice() << " "
              << marking->Duration() << " " << marking->DurationProcessOnly() << " "
              << marking->DurationPostProcess() << ";";
        for (auto const& view : *marking->ResultViews()) {
            auto const red = view->ResultRed();
            if (!red)
                continue;
            facts << red->Score() << " " << red->FilteredScore() << " " << red->Thresholds() << " "
                  << red->ResultScore()->Score() << ";";
            for (auto const& resource : *red->ResultResources())
                facts << resource->Name() << " " << resource->Image()->Width() << "x"
                      << resource->Image()->Height() << ";";
        }
    }
    return facts.str();
}

class ToolArchive : public ThreeKindsRuntimeToolTest {
protected:
    static std::vector<std::string> LastRunKeys(DLRuntimeTool& tool) {
        return tool.CreateLastRunRecord()->SubRecords()->Keys();
    }

    static Texts Overlay(DLRuntimeTool& tool) {
        auto const input = tool.CreateLastRunRecord()->SubRecords()->ItemByKey("InputImage");
        return Described(*input->SubRecords()
                              ->Item(0)
                              ->Content()
                              .get_value<std::shared_ptr<GraphicCollection>>());
    }
};

// Reloaded markings all take the root's tool, so each run here is of one tool only.
TEST_F(ToolArchive, ReloadedResultsDrawWhatTheRunDrew) {
    AddResource("map", 4, 2, 1, 0, PatternPixels(4, 2, 1, 4), 4);
    struct Case {
        char const* tool;
        std::string view;
    };
    Case const cases[] = {
        {"red-uuid", RedView}, {"green-uuid", GreenView}, {"blue-uuid", BlueView}};
    for (auto const& c : cases) {
        SCOPED_TRACE(c.tool);
        testkelo_set_result_document(Document(Marking(c.view, c.tool), c.tool).c_str());
        tool_->Run();
        auto const loaded = Load(Save(tool_, All), All);
        ASSERT_TRUE(loaded->Results());
        EXPECT_EQ(loaded->Results()->Tool(), FindTool(*loaded, c.tool));
        EXPECT_EQ(Facts(*loaded->Results()), Facts(*tool_->Results()));
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
        auto const loaded = Load(Save(tool_, c.saved), c.loaded);
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
    auto const loaded = Load(Save(tool_, None), None);
    ToolTest::FlagLog log(*loaded);
    FindTool(*loaded, "green-uuid")->setShowRegion(false);
    EXPECT_EQ(log.words(), ToolTest::Words{DLRuntimeTool::SfLastRunRecord});
}

// Saved through a base pointer, an object's own version sits after the endianness byte, the
// polymorphic id, the registered name and the pointer id; a newer one is refused with the text of
// the class.
std::string NewerVersionMessage(std::shared_ptr<ShareableBase> const& object,
                                std::string const& name) {
    std::string bytes = Save(object, None);
    std::size_t const versionAt = 1 + 4 + 8 + name.size() + 4;
    if (bytes.compare(1 + 4 + 8, name.size(), name) != 0 || bytes.at(versionAt) != 1)
        return "not saved under " + name;
    bytes[versionAt] = 2;
    try {
        Load<ShareableBase>(bytes, None);
    } catch (SerializationException const& e) {
        return e.what();
    }
    return "nothing thrown";
}

TEST_F(ToolArchive, NewerVersionsAreRefusedWithTheClassText) {
    struct Case {
        char const* text;
        std::function<std::string()> message;
    };
    std::string const prefix = "Tavrin::Vision::DeepLearning::";
    Case const cases[] = {
        {"DLRuntimeTool::serialize()",
         [&] {
             return NewerVersionMessage(tool_, prefix + "DLRuntimeTool");
         }},
        {"DLOperator::serialize()",
         [&] {
             return NewerVersionMessage(tool_->DeepLearningOperator(), prefix + "DLOperator");
         }},
        {"DLResultRedRegionReadOnlyCollection::serialize()",
         [&] {
             return NewerVersionMessage(
                 ObjectFactory::Construct<DLResultResource>("heat", "image", "map", nullptr, 1.0),
                 prefix + "DLResultResource");
         }},
        {"DLResultMatch::serialize()",
         [&] {
             return NewerVersionMessage(
                 ObjectFactory::Construct<DLResultMatchLayout>("l", "layout", 0.5, "", nullptr),
                 prefix + "DLResultMatchLayout");
         }},
        {"DLResultTag::serialize()",
         [&] {
             return NewerVersionMessage(ObjectFactory::Construct<DLResultTag>("ok", 0.7),
                                        prefix + "DLResultTag");
         }},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(c.message().rfind(c.text, 0), 0u) << c.message();
    }
}

} // namespace
