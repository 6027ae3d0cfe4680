#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "GraphicsTestSupport.h"
#include "ResultTestSupport.h"

namespace RunRecordsTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using namespace GraphicTexts;

std::string const GreenTags = "<tag name=\"ok\" score=\"0.7\"/><tag name=\"nok\" score=\"0.25\"/>";

std::string GreenView(std::string const& tags, std::string const& pose = "1,0,0,1,0,0",
                      std::string const& resources = "") {
    return View("<green threshold=\"0.5\" uncertainty=\"0\">" + tags + "</green>" + resources,
                pose);
}

std::string const RedGreenLabel = "'Marked: ok 70.0%, nok 25.0%' ";

// The red view of the three-kinds run, and a green view turned a quarter and moved by (10, 20).
std::string const RedGreenDocument = Document(
    Marking(ThreeKindsRedView()) + Marking(GreenView(GreenTags, "0,1,-1,0,10,20"), "green-uuid"));

class RunRecords : public ThreeKindsRuntimeToolTest {
protected:
    void RunOn(std::string const& document) {
        testkelo_set_result_document(document.c_str());
        tool_->Run();
    }

    std::shared_ptr<GraphicCollection> Graphics() {
        return LastRunOverlay(tool_->CreateLastRunRecord());
    }
};

TEST_F(RunRecords, CurrentRecordShowsTheInputImage) {
    auto const records = tool_->CreateCurrentRecord()->SubRecords();
    ASSERT_EQ(records->Count(), 1);
    auto const input = records->Item(0);
    EXPECT_EQ((Texts{input->Key(), input->Annotation()}), (Texts{"InputImage", "InputImage"}));
    EXPECT_EQ(input->ValueType(), rttr::type::get<IImage>());
    EXPECT_EQ(input->Usage(), Tavrin::Vision::RecordUsageConstants_Image);
    EXPECT_FALSE(input->Dynamic());
    EXPECT_EQ(input->Content().get_value<std::shared_ptr<IImage>>(), image_);
}

// Image resources come first, named after the tool and numbered by resource list within a
// marking; the input image follows with the run's overlay under it.
TEST_F(RunRecords, LastRunRecordListsResourceImagesThenTheInputWithItsOverlay) {
    AddResource("map", 4, 2, 1, 0, PatternPixels(4, 2, 1, 4), 4);
    std::string const text = "<resource name=\"note\" type=\"text\" uuid=\"map\"/>";
    RunOn(
        Document(Marking(View(Red(Resource("heat", "map")) + Resource("a", "map") + text +
                              Resource("b", "map")) +
                         View(Resource("c", "map"))) +
                 Marking(GreenView(GreenTags, "1,0,0,1,0,0", Resource("d", "map")), "green-uuid")));

    auto const record = tool_->CreateLastRunRecord();
    EXPECT_EQ(record->SubRecords()->Keys(),
              (std::vector<std::string>{"red.a", "red.b", "red.heat1", "red.c2", "green.d",
                                        "InputImage"}));
    auto const heat = record->SubRecords()->ItemByKey("red.heat1");
    EXPECT_EQ(heat->Annotation(), "red.heat1");
    EXPECT_EQ(heat->Content().get_value<std::shared_ptr<IImage>>(),
              FirstView(tool_->Results())->ResultRed()->ResultResources()->Item(0)->Image());

    auto const input = record->SubRecords()->ItemByKey("InputImage");
    EXPECT_EQ(input->Content().get_value<std::shared_ptr<IImage>>(), image_);
    ASSERT_EQ(input->SubRecords()->Keys(), std::vector<std::string>{"Features"});
    auto const features = input->SubRecords()->Item(0);
    EXPECT_EQ(features->Annotation(), "Features");
    EXPECT_EQ(features->ValueType(), rttr::type::get<GraphicCollection>());
    EXPECT_EQ(features->Usage(), Tavrin::Vision::RecordUsageConstants_Overlay);
    EXPECT_TRUE(features->Dynamic());
    EXPECT_EQ(features->RecordConstructor(),
              std::static_pointer_cast<Tavrin::Vision::IRecordConstructor>(tool_->Results()));
}

// Without a result there is nothing to draw the image under.
TEST_F(RunRecords, LastRunRecordStaysEmptyWhenTheFirstRunFails) {
    testkelo_set_result_document(nullptr);
    EXPECT_THROW(tool_->Run(), DeepLearningException);
    EXPECT_EQ(tool_->CreateLastRunRecord()->SubRecords()->Count(), 0);
}

// Each region twice, solid black under broken grey; the green label at the corner of the
// 100 x 50 view on its Y side, (0, 50), through the pose.
TEST_F(RunRecords, OverlayDrawsRegionOutlinesRedPolygonsAndTheGreenLabel) {
    RunOn(RedGreenDocument);
    auto const graphics = Graphics();
    EXPECT_EQ(Described(*graphics),
              (Texts{"rect 0,0 100,0 0,50 ff000000 w2", "rect 0,0 100,0 0,50 ff808080 w2",
                     "polygon 8,18 12,22 style1 ffff0000 w2",
                     "rect 10,20 10,120 -40,20 ff000000 w2", "rect 10,20 10,120 -40,20 ff808080 w2",
                     "label 'Marked: ok 70.0%, nok 25.0%' -40,20 1.571 align3 ffffff00 on "
                     "ff000000"}));
    ASSERT_EQ(graphics->Count(), 6);
    for (int index : {0, 3})
        EXPECT_EQ(graphics->Item(index)->LineStyle(), 0);
    for (int index : {1, 4})
        EXPECT_EQ(graphics->Item(index)->LineStyle(), 1);
    EXPECT_NE(graphics->Item(0), FirstView(tool_->Results())->Region())
        << "the result's own rectangle is never handed out";
}

TEST_F(RunRecords, EachShowFlagSwitchesItsGraphicsOff) {
    auto red = [this] {
        return std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(LiveTool("red-uuid"));
    };
    auto green = [this] {
        return std::dynamic_pointer_cast<DLQuickGreenToolRuntimeParams>(LiveTool("green-uuid"));
    };
    std::tuple<char const*, std::function<void()>, std::string> const cases[] = {
        {"red region", [&] { red()->setShowRegion(false); }, "polygon rect rect " + RedGreenLabel},
        {"red graphics", [&] { red()->setShowGraphics(false); },
         "rect rect rect rect " + RedGreenLabel},
        {"green region", [&] { green()->setShowRegion(false); },
         "rect rect polygon " + RedGreenLabel},
        {"green graphics", [&] { green()->setShowGraphics(false); },
         "rect rect polygon rect rect "},
    };
    for (auto const& [name, hide, sketch] : cases) {
        SCOPED_TRACE(name);
        TearDown();
        SetUp();
        hide();
        RunOn(RedGreenDocument);
        EXPECT_EQ(Sketched(*Graphics()), sketch);
    }
}

TEST_F(RunRecords, GreenLabelShowsTheBestThreeTagsInPercent) {
    auto tag = [](char const* name, char const* score) {
        return std::string("<tag name=\"") + name + "\" score=\"" + score + "\"/>";
    };
    std::pair<std::string, char const*> const cases[] = {
        {"", "Marked: "},
        {tag("a", "0.5"), "Marked: a 50.0%"},
        {tag("a", "0.7") + tag("b", "0.123") + tag("c", "0.9") + tag("d", "0.05") +
             tag("e", "0.70001"),
         "Marked: c 90.0%, e 70.0%, a 70.0%"},
    };
    for (auto const& [tags, text] : cases) {
        SCOPED_TRACE(text);
        RunOn(Document(Marking(GreenView(tags), "green-uuid")));
        EXPECT_EQ(Sketched(*Graphics()), std::string("rect rect '") + text + "' ");
    }
}

TEST_F(RunRecords, AResultWithoutMarkingsHasAnEmptyOverlay) {
    RunOn(Document(""));
    auto const graphics = Graphics();
    ASSERT_TRUE(graphics);
    EXPECT_EQ(graphics->Count(), 0);
}

} // namespace

} // namespace RunRecordsTesting
