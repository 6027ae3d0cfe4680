#include <future>
#include <string>
#include <utility>
#include <vector>

#include <rttr/type>

#include "GraphicsTestSupport.h"
#include "ResultTestSupport.h"
#include "ToolTestSupport.h"

namespace TestHelperTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Factory = Implementation::Internal::TestHelpers::TestHelper;
using Tavrin::Brnt::CreateObject;
using Tavrin::Brnt::IObject;
using Tavrin::Vision::ShareableBase;

char const* const TestHelperName =
    "Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelper";

// Every collection factory shares one way of making its items, so the longest stands for all.
TEST(TestHelper, CollectionsKeepEveryArgumentInOrderNullsIncluded) {
    auto const f = Factory::CreateDLBlueFeature("f", nullptr, 1, "");
    auto const g = Factory::CreateDLBlueFeature("g", nullptr, 1, "");
    EXPECT_EQ(
        Factory::CreateDLBlueFeatures(nullptr, f, nullptr, g, nullptr, nullptr, f)->GetDataC(),
        (std::vector<DLBlueFeaturePtr>{nullptr, f, nullptr, g, nullptr, nullptr, f}));
}

using FactoryWithEngine = EngineTest;

// Tools, models, streams, workspaces and the operator skip FinalConstruct, which would read the
// engine; dropping them again must not close anything in it either.
TEST_F(FactoryWithEngine, EngineObjectsAreBuiltAndDroppedWithoutAnEngineCall) {
    {
        auto const workspace =
            Factory::CreateDLWorkspace("ws-id", "ws-uuid", "2024-05-01", "/a.kelo");
        auto const stream = Factory::CreateDLStream(workspace, "main", "main-uuid", "0,0,8,8");
        auto const blue = Factory::CreateDLBlueTool(stream, "b", "b-uuid", "blue", "", nullptr);
        DLToolRuntimeParamsPtr const tools[] = {
            Factory::CreateDLBlueReadTool(stream, "r", "r-uuid", "blue_read", "", nullptr),
            Factory::CreateDLFocusedModeRedTool(stream, "f", "f-uuid", "red", "", nullptr),
            Factory::CreateDLHdmRedTool(stream, "h", "h-uuid", "red_sua", "", nullptr),
            Factory::CreateDLFocusedModeGreenTool(stream, "g", "g-uuid", "green", "", nullptr),
            Factory::CreateHdmGreenTool(stream, "s", "s-uuid", "green_sua", "", nullptr),
        };
        DLBlueModelPtr const models[] = {
            Factory::CreateDLBlueNodeModel(blue, "node"),
            Factory::CreateDLBlueLayoutModel(blue, "layout"),
            Factory::CreateDLBlueStringModel(blue, "string"),
            Factory::CreateDLBlueRegexModel(blue, "regex"),
        };
        // The factories are written by hand, one per class: each must hand its arguments to
        // the right places.
        std::vector<std::string> made;
        for (auto const& tool : tools)
            made.push_back(tool->Name() + " " + tool->Id() + " " + tool->Type() +
                           (tool->Stream() == stream ? "" : " astray"));
        for (auto const& model : models)
            made.push_back(model->Name() + (model->Parent() == blue ? "" : " astray"));
        EXPECT_EQ(made, (std::vector<std::string>{"r r-uuid blue_read", "f f-uuid red",
                                                  "h h-uuid red_sua", "g g-uuid green",
                                                  "s s-uuid green_sua", "node", "layout", "string",
                                                  "regex"}));
        auto const runtimeTool = Factory::CreateDLRuntimeTool();
        // An operator that never ran FinalConstruct has no engine load to wait for.
        EXPECT_THROW(Factory::CreateDeepLearningOperator()->LoadWorkspace("/a.kelo"),
                     std::future_error);
    }
    EXPECT_EQ(Calls(), std::vector<std::string>{});
}

// A runtime tool from the factory, loaded with the three-kinds workspace.
class FactoryRecords : public ThreeKindsRuntimeToolTest {
protected:
    void SetUp() override {
        ThreeKindsRuntimeToolTest::SetUp();
        tool_ = Factory::CreateDLRuntimeTool();
        tool_->LoadWorkspace(File);
        tool_->setInputImage(image_);
    }
};

// The collection factories take a fixed number of items, so each region and view comes twice.
std::string const RedRegion = ResultDocs::Region("10,20", "8,18 12,22");
std::string const RedView = ResultDocs::View(ResultDocs::Red(RedRegion + RedRegion));
std::string const GreenView = ResultDocs::View(
    "<green threshold=\"0.5\" uncertainty=\"0\"><tag name=\"ok\" score=\"0.7\"/><tag name=\"nok\" "
    "score=\"0.25\"/><tag name=\"bad\" score=\"0.05\"/></green>",
    "0,1,-1,0,10,20");
std::string const PreparedDocument =
    ResultDocs::Document(ResultDocs::Marking(RedView + RedView) +
                         ResultDocs::Marking(GreenView + GreenView, "green-uuid"));

// What the engine answers with PreparedDocument, built from the factories alone, for tools built
// by the tool factories.
DLResultPtr PreparedResult() {
    using namespace Tavrin::Vision;
    auto const red =
        Factory::CreateDLHdmRedTool(nullptr, "red", "red-uuid", "red_sua", "", nullptr);
    auto const green =
        Factory::CreateHdmGreenTool(nullptr, "green", "green-uuid", "green_sua", "", nullptr);
    auto const region = Factory::CreateDLResultRedRegion(
        0.9, "r0", 4, 8, CreateObject<Vect2>(10, 20), "",
        CreateObject<Vect2Collection>(
            std::vector<Vect2Ptr>{CreateObject<Vect2>(8, 18), CreateObject<Vect2>(12, 22)}),
        "");
    auto const redResult =
        Factory::CreateDLResultRed("red-uuid", 0.8, 0.75, "[0.1,0.9]", "", nullptr,
                                   Factory::CreateDLResultScore("overall", 0.6),
                                   Factory::CreateDLResultRedRegions(region, region));
    auto const greenResult = Factory::CreateDLResultGreen(
        "green-uuid", 0.5, false, false, 0,
        Factory::CreateDLResultTags(Factory::CreateDLResultTag("ok", 0.7),
                                    Factory::CreateDLResultTag("nok", 0.25),
                                    Factory::CreateDLResultTag("bad", 0.05)),
        nullptr);
    auto marking = [](DLToolRuntimeParamsPtr tool, Transform2DLinearPtr const& pose,
                      DLResultRedPtr redView, DLResultGreenPtr greenView) {
        auto const frame = CreateObject<RectangleAffine>();
        frame->SetOriginLengthsRotationSkew(0, 0, 100, 50, 0, 0);
        auto const view = Factory::CreateDLResultView(
            frame->MapLinear(*pose, CopyShapeConstants_GeometryOnly), Linear(1, 0, 0, 1, 0, 0),
            pose, "g1", std::move(redView), nullptr, std::move(greenView), nullptr);
        return Factory::CreateDLResultMarking(std::move(tool), "2024-05-01T10:00", "gpu0", 31.5,
                                              28.25, 1.5, nullptr,
                                              Factory::CreateDLResultViews(view, view));
    };
    // The document writes the matrix column by column.
    auto const markings = Factory::CreateDLResultMarkings(
        marking(red, Linear(1, 0, 0, 1, 0, 0), redResult, nullptr),
        marking(green, Linear(0, -1, 1, 0, 10, 20), nullptr, greenResult));
    return Factory::CreateDLResult(red, Factory::CreateDLResultImage(markings));
}

TEST_F(FactoryRecords, APreparedResultDrawsWhatTheEngineRunDraws) {
    testkelo_set_result_document(PreparedDocument.c_str());
    tool_->Run();
    auto const ran = tool_->CreateLastRunRecord();
    GraphicTexts::Texts const drawn = GraphicTexts::Described(*LastRunOverlay(ran));
    ASSERT_EQ(drawn.size(), 14u) << "two outlines and two regions, or two outlines and a label";

    auto const prepared = PreparedResult();
    ToolTest::FlagLog const flags(*tool_);
    Factory::DLRuntimeToolResults(tool_, prepared);
    EXPECT_EQ(flags.words(), ToolTest::Words{});
    EXPECT_EQ(tool_->Results(), prepared);
    EXPECT_EQ(tool_->Results()->Tool()->Type(), "red_sua")
        << "the result is not tied to live tools";

    auto const record = tool_->CreateLastRunRecord();
    EXPECT_EQ(record->SubRecords()->Keys(), ran->SubRecords()->Keys());
    EXPECT_EQ(GraphicTexts::Described(*LastRunOverlay(record)), drawn);
}

// A result loaded away from its tools can't name its resource images: the run record leaves
// them out rather than fail.
TEST_F(FactoryRecords, AResultLoadedWithoutItsToolsLeavesItsImagesOut) {
    testkelo_set_result_document(PreparedDocument.c_str());
    tool_->Run();
    auto const red =
        Factory::CreateDLHdmRedTool(nullptr, "red", "red-uuid", "red_sua", "", nullptr);
    auto const resource = Factory::CreateDLResultResource(
        "heat", "image", "uuid", CreateObject<Tavrin::Vision::Image8Grey>(4, 2), 1);
    auto const view =
        Factory::CreateDLResultView(nullptr, nullptr, nullptr, "", nullptr, nullptr, nullptr,
                                    Factory::CreateDLResultResources(resource, resource, resource));
    auto const marking = Factory::CreateDLResultMarking(red, "", "", 0, 0, 0, nullptr,
                                                        Factory::CreateDLResultViews(view, view));
    auto const result = Factory::CreateDLResult(
        red, Factory::CreateDLResultImage(Factory::CreateDLResultMarkings(marking, marking)));

    Factory::DLRuntimeToolResults(tool_, ToolTest::Loaded<DLResult>(ToolTest::Saved(result)));
    EXPECT_EQ(tool_->CreateLastRunRecord()->SubRecords()->Keys(),
              std::vector<std::string>{"InputImage"});
}

TEST_F(FactoryRecords, LookupsFindTheOpenWorkspacesAndTheirTools) {
    auto const clone = tool_->DeepLearningOperator()->Workspace();
    auto const master = Factory::DeepLearningAccessGetWorkspaceByName(clone->Name());
    ASSERT_NE(master, nullptr);
    EXPECT_NE(master, clone);
    EXPECT_EQ(Factory::DeepLearningAccessGetWorkspace(*clone), master);
    EXPECT_EQ(Factory::DeepLearningAccessGetWorkspaceByName("no-such-id"), nullptr);

    auto const green = Factory::DeepLearningAccessFindToolInWorkspace(*clone, "green-uuid");
    ASSERT_NE(green, nullptr);
    EXPECT_EQ(green->Name(), "green");
    auto const stream = tool_->DeepLearningOperator()->Stream();
    EXPECT_EQ(Factory::DeepLearningAccessFindToolInStream(*stream, "green-uuid"), green);
    EXPECT_EQ(Factory::DeepLearningAccessFindToolInStream(*stream, "green"), nullptr);
}

TEST(TestHelper, IsRegisteredWithEveryFactoryAsAMethod) {
    auto const type = rttr::type::get_by_name(TestHelperName);
    ASSERT_TRUE(type.is_valid());
    EXPECT_EQ(type.get_methods(rttr::filter_item::static_item | rttr::filter_item::public_access |
                               rttr::filter_item::declared_only)
                  .size(),
              60u);

    auto const method = type.get_method("CreateDLResultTag");
    std::vector<std::string> names;
    for (auto const& parameter : method.get_parameter_infos())
        names.emplace_back(parameter.get_name());
    EXPECT_EQ(names, (std::vector<std::string>{"name", "score"}));
    EXPECT_NE(method.invoke({}, std::string("ok"), 0.7).get_value<DLResultTagPtr>(), nullptr);

    auto const pointer = rttr::type::get_by_name(std::string(TestHelperName) + "Ptr");
    EXPECT_EQ(pointer, rttr::type::get<std::shared_ptr<Factory>>());
    EXPECT_EQ(pointer.get_metadata("LibraryExport").to_string(), "Tavrin.Vision.DeepLearning");
}

// Converters to and from both bases are registered for it as for every other class.
TEST(TestHelper, SharedPointersConvertToAndFromItsBasesByTheObjectsType) {
    auto const helper = CreateObject<Factory>();
    std::shared_ptr<ShareableBase> const asShareable = helper;
    std::shared_ptr<IObject> const asObject = helper;
    EXPECT_EQ(rttr::variant(helper).convert<std::shared_ptr<ShareableBase>>(), asShareable);
    EXPECT_EQ(rttr::variant(helper).convert<std::shared_ptr<IObject>>(), asObject);
    EXPECT_EQ(rttr::variant(asShareable).convert<std::shared_ptr<Factory>>(), helper);
    EXPECT_EQ(rttr::variant(asObject).convert<std::shared_ptr<Factory>>(), helper);
}

TEST(TestHelper, ArchivesAsItsBaseThroughABasePointer) {
    std::shared_ptr<ShareableBase> const original = CreateObject<Factory>();
    auto const copy = ToolTest::RoundTrip(original);
    EXPECT_NE(std::dynamic_pointer_cast<Factory>(copy), nullptr);
    EXPECT_NE(copy, original);
}

} // namespace

} // namespace TestHelperTesting
