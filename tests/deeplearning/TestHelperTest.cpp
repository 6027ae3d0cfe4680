#include <future>
#include <string>
#include <utility>
#include <vector>

#include <rttr/type>

#include "GraphicsTestSupport.h"
#include "ResultTestSupport.h"
#include "ToolTestSupport.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Factory = Implementation::Internal::TestHelpers::TestHelper;
using Tavrin::Brnt::CreateObject;
using Tavrin::Brnt::IObject;
using Tavrin::Vision::ShareableBase;

char const* const TestHelperName =
    "Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelper";

using Pointers = std::vector<void const*>;

// The items of a collection as addresses, read by Count and Item, so that collections of any
// element compare alike.
template <class Collection> Pointers Items(Collection& collection) {
    Pointers items;
    for (int index = 0; index < collection.Count(); ++index)
        items.push_back(collection.Item(index).get());
    return items;
}

TEST(TestHelper, CollectionsKeepEveryArgumentInOrderNullsIncluded) {
    auto const tag = Factory::CreateDLResultTag("ok", 0.7);
    auto const feature = Factory::CreateDLBlueFeature("f", nullptr, 1, "");
    auto const match = Factory::CreateDLResultMatch("m", "node", 0.5);
    auto const other = Factory::CreateDLResultMatch("n", "string", 0.25);
    auto const stream = Factory::CreateDLStream(nullptr, "main", "main-uuid", "");
    auto const tool =
        Factory::CreateDLHdmRedTool(nullptr, "red", "red-uuid", "red_sua", "", nullptr);
    struct Case {
        char const* name;
        Pointers items;
        Pointers expected;
    };
    Case const cases[] = {
        {"tags", Items(*Factory::CreateDLResultTags(tag, nullptr, nullptr)),
         Pointers{tag.get(), nullptr, nullptr}},
        {"features",
         Items(*Factory::CreateDLBlueFeatures(nullptr, feature, nullptr, nullptr, nullptr, nullptr,
                                              feature)),
         Pointers{nullptr, feature.get(), nullptr, nullptr, nullptr, nullptr, feature.get()}},
        {"matches", Items(*Factory::CreateDLResultMatches(other, nullptr, match, other)),
         Pointers{other.get(), nullptr, match.get(), other.get()}},
        {"views", Items(*Factory::CreateDLResultViews(nullptr, nullptr)), {nullptr, nullptr}},
        {"streams", Items(*Factory::CreateDLStreams(nullptr, stream)), {nullptr, stream.get()}},
        {"tools", Items(*Factory::CreateDLToolRuntimeParams(tool, nullptr)), {tool.get(), nullptr}},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.items, c.expected);
    }
}

TEST(TestHelper, BothNamesOfTheMarkingsCollectionBuildAnImageOfIt) {
    auto const markings = Factory::CreateDLResultMarkings(nullptr, nullptr);
    EXPECT_EQ(Factory::CreateDLResultImage(markings)->ResultMarking(), markings);
    EXPECT_EQ(Factory::CreateDLResultMarkingsCollection(markings)->ResultMarking(), markings);
}

class FactoryWithEngine : public EngineTest {};

using ToolFactory = DLToolRuntimeParamsPtr (*)(DLStreamPtr, std::string const&,
                                               DLToolRuntimeParamsReadOnlyCollectionPtr);

// One tool factory seen through the shape all of them share; the status is never read back.
template <auto Create>
DLToolRuntimeParamsPtr BuildTool(DLStreamPtr stream, std::string const& type,
                                 DLToolRuntimeParamsReadOnlyCollectionPtr children) {
    return Create(std::move(stream), "tool", "tool-uuid", type, "", std::move(children));
}

// Tools, models, streams, workspaces and the operator skip FinalConstruct, which would read the
// engine; dropping them again must not close anything in it either.
TEST_F(FactoryWithEngine, EngineObjectsAreBuiltAndDroppedWithoutAnEngineCall) {
    {
        auto const workspace =
            Factory::CreateDLWorkspace("ws-id", "ws-uuid", "2024-05-01", "/a.kelo");
        auto const stream = Factory::CreateDLStream(workspace, "main", "main-uuid", "0,0,8,8");
        EXPECT_EQ(stream->ParentWorkspace(), workspace);
        auto const children = Factory::CreateDLToolRuntimeParams(nullptr, nullptr);
        std::pair<char const*, ToolFactory> const toolFactories[] = {
            {"blue", &BuildTool<&Factory::CreateDLBlueTool>},
            {"blue_read", &BuildTool<&Factory::CreateDLBlueReadTool>},
            {"red", &BuildTool<&Factory::CreateDLFocusedModeRedTool>},
            {"red_sua", &BuildTool<&Factory::CreateDLHdmRedTool>},
            {"green", &BuildTool<&Factory::CreateDLFocusedModeGreenTool>},
            {"green_sua", &BuildTool<&Factory::CreateHdmGreenTool>},
        };
        for (auto const& [type, create] : toolFactories) {
            SCOPED_TRACE(type);
            auto const tool = create(stream, type, children);
            EXPECT_EQ(tool->Name(), "tool");
            EXPECT_EQ(tool->Id(), "tool-uuid");
            EXPECT_EQ(tool->Type(), type);
            EXPECT_EQ(tool->Stream(), stream);
            EXPECT_EQ(tool->ChildTools(), children);
        }
        auto const tool =
            Factory::CreateDLBlueTool(stream, "blue", "blue-uuid", "blue", "", nullptr);
        DLBlueModelPtr const models[] = {
            Factory::CreateDLBlueNodeModel(tool, "node"),
            Factory::CreateDLBlueLayoutModel(tool, "layout"),
            Factory::CreateDLBlueStringModel(tool, "string"),
            Factory::CreateDLBlueRegexModel(tool, "regex"),
        };
        std::vector<std::string> names;
        for (auto const& model : models) {
            EXPECT_EQ(model->Parent(), tool);
            names.push_back(model->Name());
        }
        EXPECT_EQ(names, (std::vector<std::string>{"node", "layout", "string", "regex"}));

        // An operator that never ran FinalConstruct has no engine load to wait for.
        auto const op = Factory::CreateDeepLearningOperator();
        EXPECT_THROW(op->LoadWorkspace("/a.kelo"), std::future_error);
        auto const runtimeTool = Factory::CreateDLRuntimeTool();
        EXPECT_EQ(runtimeTool->Results(), nullptr);
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

Tavrin::Vision::RectangleAffinePtr ViewRegion(Tavrin::Vision::Transform2DLinear const& pose) {
    auto frame = CreateObject<Tavrin::Vision::RectangleAffine>();
    frame->SetOriginLengthsRotationSkew(0, 0, 100, 50, 0, 0);
    return frame->MapLinear(pose, Tavrin::Vision::CopyShapeConstants_GeometryOnly);
}

Tavrin::Vision::Vect2CollectionPtr Points(std::vector<std::pair<double, double>> const& points) {
    std::vector<Tavrin::Vision::Vect2Ptr> vectors;
    for (auto const& [x, y] : points)
        vectors.push_back(CreateObject<Tavrin::Vision::Vect2>(x, y));
    return CreateObject<Tavrin::Vision::Vect2Collection>(std::move(vectors));
}

std::string RedRegionElement(char const* name, char const* points) {
    return std::string("<region score=\"0.9\" name=\"") + name +
           "\" area=\"4\" perimeter=\"8\" center=\"10,20\" covers=\"\" coverage=\"\" points=\"" +
           points + "\"/>";
}

// A red marking of two views, the first with two regions, the second turned a quarter and
// moved; a green marking of two views with three tags each.
std::string const ThreeTagsGreen =
    "<green threshold=\"0.5\" uncertainty=\"0\"><tag name=\"ok\" score=\"0.7\"/><tag name=\"nok\" "
    "score=\"0.25\"/><tag name=\"bad\" score=\"0.05\"/></green>";
char const* const TurnedPose = "0,1,-1,0,10,20";

std::string const PreparedDocument = ResultDocs::Document(
    ResultDocs::Marking(
        ResultDocs::View(ResultDocs::Red(RedRegionElement("r0", "8,18 12,22") +
                                         RedRegionElement("r1", "30,5 40,5 35,15"))) +
        ResultDocs::View("", TurnedPose)) +
    ResultDocs::Marking(ResultDocs::View(ThreeTagsGreen, TurnedPose) +
                            ResultDocs::View(ThreeTagsGreen),
                        "green-uuid"));

// What the engine answers with PreparedDocument, built from the factories alone, for tools built
// by the tool factories.
DLResultPtr PreparedResult() {
    auto const red =
        Factory::CreateDLHdmRedTool(nullptr, "red", "red-uuid", "red_sua", "", nullptr);
    auto const green =
        Factory::CreateHdmGreenTool(nullptr, "green", "green-uuid", "green_sua", "", nullptr);
    auto const identity = Linear(1, 0, 0, 1, 0, 0);
    // The document writes the matrix column by column.
    auto const turned = Linear(0, -1, 1, 0, 10, 20);
    auto region = [](char const* name, Tavrin::Vision::Vect2CollectionPtr points) {
        return Factory::CreateDLResultRedRegion(0.9, name, 4, 8,
                                                CreateObject<Tavrin::Vision::Vect2>(10, 20), "",
                                                std::move(points), "");
    };
    auto const redResult = Factory::CreateDLResultRed(
        "red-uuid", 0.8, 0.75, "[0.1,0.9]", "", nullptr,
        Factory::CreateDLResultScore("overall", 0.6),
        Factory::CreateDLResultRedRegions(region("r0", Points({{8, 18}, {12, 22}})),
                                          region("r1", Points({{30, 5}, {40, 5}, {35, 15}}))));
    auto const greenResult = Factory::CreateDLResultGreen(
        "green-uuid", 0.5, false, false, 0,
        Factory::CreateDLResultTags(Factory::CreateDLResultTag("ok", 0.7),
                                    Factory::CreateDLResultTag("nok", 0.25),
                                    Factory::CreateDLResultTag("bad", 0.05)),
        nullptr);
    auto view = [&](auto const& pose, DLResultRedPtr redView, DLResultGreenPtr greenView) {
        return Factory::CreateDLResultView(ViewRegion(*pose), identity, pose, "g1",
                                           std::move(redView), nullptr, std::move(greenView),
                                           nullptr);
    };
    auto marking = [](DLToolRuntimeParamsPtr tool, DLResultViewReadOnlyCollectionPtr views) {
        return Factory::CreateDLResultMarking(std::move(tool), "2024-05-01T10:00", "gpu0", 31.5,
                                              28.25, 1.5, nullptr, std::move(views));
    };
    auto const markings = Factory::CreateDLResultMarkings(
        marking(red, Factory::CreateDLResultViews(view(identity, redResult, nullptr),
                                                  view(turned, nullptr, nullptr))),
        marking(green, Factory::CreateDLResultViews(view(turned, nullptr, greenResult),
                                                    view(identity, nullptr, greenResult))));
    return Factory::CreateDLResult(red, Factory::CreateDLResultImage(markings));
}

TEST_F(FactoryRecords, APreparedResultDrawsWhatTheEngineRunDraws) {
    testkelo_set_result_document(PreparedDocument.c_str());
    tool_->Run();
    auto const ran = tool_->CreateLastRunRecord();
    GraphicTexts::Texts const drawn = GraphicTexts::Described(*LastRunOverlay(ran));
    ASSERT_EQ(GraphicTexts::Sketched(*LastRunOverlay(ran)),
              "rect rect polygon polygon rect rect rect rect 'Marked: ok 70.0%, nok 25.0%, bad "
              "5.0%' rect rect 'Marked: ok 70.0%, nok 25.0%, bad 5.0%' ");

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
    EXPECT_EQ(master->SourceFile(), File);
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
    auto const methods =
        type.get_methods(rttr::filter_item::static_item | rttr::filter_item::public_access |
                         rttr::filter_item::declared_only);
    EXPECT_EQ(methods.size(), 60u);

    auto const method = type.get_method("CreateDLResultTag");
    std::vector<std::string> names;
    for (auto const& parameter : method.get_parameter_infos())
        names.emplace_back(parameter.get_name());
    EXPECT_EQ(names, (std::vector<std::string>{"name", "score"}));
    auto const tag = method.invoke({}, std::string("ok"), 0.7).get_value<DLResultTagPtr>();
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(tag->Name(), "ok");
    EXPECT_EQ(tag->Score(), 0.7);

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
