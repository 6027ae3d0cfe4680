#include "Vision/DeepLearning/Implementation/Internal/TestHelpers/TestHelper.h"

#include <type_traits>
#include <utility>
#include <vector>

#include <Vision/Core/Registration.h>

#include "engine/DeepLearningAccess.h"
#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers {

using Brnt::ObjectFactory;
using Private::DeepLearningAccess;

namespace {

// Every argument becomes an item, nulls included, so a collection always counts its arguments.
template <class Collection, class... Items>
std::shared_ptr<Collection> CollectionOf(Items... items) {
    std::vector<std::common_type_t<Items...>> all;
    all.reserve(sizeof...(items));
    (all.push_back(std::move(items)), ...);
    return ObjectFactory::Construct<Collection>(std::move(all));
}

} // namespace

DLBlueFeaturePtr TestHelper::CreateDLBlueFeature(std::string id, RectangleAffinePtr rectangle,
                                                 double score, std::string covers) {
    return ObjectFactory::Construct<DLBlueFeature>(std::move(id), std::move(rectangle), score,
                                                   std::move(covers));
}

DLBlueFeatureReadOnlyCollectionPtr
TestHelper::CreateDLBlueFeatures(DLBlueFeaturePtr feature1, DLBlueFeaturePtr feature2,
                                 DLBlueFeaturePtr feature3, DLBlueFeaturePtr feature4,
                                 DLBlueFeaturePtr feature5, DLBlueFeaturePtr feature6,
                                 DLBlueFeaturePtr feature7) {
    return CollectionOf<DLBlueFeatureReadOnlyCollection>(
        std::move(feature1), std::move(feature2), std::move(feature3), std::move(feature4),
        std::move(feature5), std::move(feature6), std::move(feature7));
}

std::shared_ptr<DLBlueLayoutModel> TestHelper::CreateDLBlueLayoutModel(DLToolRuntimeParamsPtr tool,
                                                                       std::string const& name) {
    return ObjectFactory::Construct<DLBlueLayoutModel>(std::move(tool), name);
}

DLBlueModelReadOnlyCollectionPtr TestHelper::CreateDLBlueModels(DLBlueModelPtr model1,
                                                                DLBlueModelPtr model2) {
    return CollectionOf<DLBlueModelReadOnlyCollection>(std::move(model1), std::move(model2));
}

std::shared_ptr<DLBlueNodeModel> TestHelper::CreateDLBlueNodeModel(DLToolRuntimeParamsPtr tool,
                                                                   std::string name) {
    return ObjectFactory::Construct<DLBlueNodeModel>(std::move(tool), std::move(name));
}

std::shared_ptr<DLBlueReadToolRuntimeParams>
TestHelper::CreateDLBlueReadTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                                 std::string const& type, std::string const& status,
                                 DLToolRuntimeParamsReadOnlyCollectionPtr childTools) {
    return ObjectFactory::Construct<DLBlueReadToolRuntimeParams>(std::move(stream), name, id, type,
                                                                 status, std::move(childTools));
}

std::shared_ptr<DLBlueRegexModel> TestHelper::CreateDLBlueRegexModel(DLToolRuntimeParamsPtr tool,
                                                                     std::string const& name) {
    return ObjectFactory::Construct<DLBlueRegexModel>(std::move(tool), name);
}

std::shared_ptr<DLBlueStringModel> TestHelper::CreateDLBlueStringModel(DLToolRuntimeParamsPtr tool,
                                                                       std::string const& name) {
    return ObjectFactory::Construct<DLBlueStringModel>(std::move(tool), name);
}

std::shared_ptr<DLBlueToolRuntimeParams>
TestHelper::CreateDLBlueTool(DLStreamPtr stream, std::string name, std::string id, std::string type,
                             std::string status,
                             DLToolRuntimeParamsReadOnlyCollectionPtr childTools) {
    return ObjectFactory::Construct<DLBlueToolRuntimeParams>(
        std::move(stream), std::move(name), std::move(id), std::move(type), std::move(status),
        std::move(childTools));
}

std::shared_ptr<DLFocusedModeGreenToolRuntimeParams>
TestHelper::CreateDLFocusedModeGreenTool(DLStreamPtr stream, std::string name, std::string id,
                                         std::string type, std::string status,
                                         DLToolRuntimeParamsReadOnlyCollectionPtr childTools) {
    return ObjectFactory::Construct<DLFocusedModeGreenToolRuntimeParams>(
        std::move(stream), std::move(name), std::move(id), std::move(type), std::move(status),
        std::move(childTools));
}

std::shared_ptr<DLFocusedModeRedToolRuntimeParams> TestHelper::CreateDLFocusedModeRedTool(
    DLStreamPtr stream, std::string const& name, std::string const& id, std::string const& type,
    std::string const& status, DLToolRuntimeParamsReadOnlyCollectionPtr childTools) {
    return ObjectFactory::Construct<DLFocusedModeRedToolRuntimeParams>(
        std::move(stream), name, id, type, status, std::move(childTools));
}

std::shared_ptr<DLHdmRedToolRuntimeParams>
TestHelper::CreateDLHdmRedTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                               std::string const& type, std::string const& status,
                               DLToolRuntimeParamsReadOnlyCollectionPtr childTools) {
    return ObjectFactory::Construct<DLHdmRedToolRuntimeParams>(std::move(stream), name, id, type,
                                                               status, std::move(childTools));
}

DLResultPtr TestHelper::CreateDLResult(DLToolRuntimeParamsPtr tool,
                                       DLResultMarkingsCollectionPtr resultImage) {
    return ObjectFactory::Construct<DLResult>(std::move(tool), std::move(resultImage));
}

DLResultBluePtr TestHelper::CreateDLResultBlue(std::string const& toolId, bool oriented,
                                               bool scaled, bool aspected, bool showFeatureChiclets,
                                               bool showRectangularFeatures,
                                               DLBlueFeatureReadOnlyCollectionPtr features,
                                               DLResultMatchReadOnlyCollectionPtr matches) {
    return ObjectFactory::Construct<DLResultBlue>(toolId, oriented, scaled, aspected,
                                                  showFeatureChiclets, showRectangularFeatures,
                                                  std::move(features), std::move(matches));
}

DLResultBlueLabelPtr TestHelper::CreateDLResultBlueLabel(
    DLBlueFeatureReadOnlyCollectionPtr features, DLResultMatchReadOnlyCollectionPtr matches,
    DLResultFeatureMetricsFeatureReadOnlyCollectionPtr featureMetrics) {
    return ObjectFactory::Construct<DLResultBlueLabel>(std::move(features), std::move(matches),
                                                       std::move(featureMetrics));
}

DLResultBlueLabelReadOnlyCollectionPtr
TestHelper::CreateDLResultBlueLabels(DLResultBlueLabelPtr label1, DLResultBlueLabelPtr label2) {
    return CollectionOf<DLResultBlueLabelReadOnlyCollection>(std::move(label1), std::move(label2));
}

DLResultBlueMatchRegionPtr
TestHelper::CreateDLResultBlueMatchRegion(std::string name, RectangleAffinePtr rectangle,
                                          int occurrences,
                                          DLBlueFeatureReadOnlyCollectionPtr features) {
    return ObjectFactory::Construct<DLResultBlueMatchRegion>(std::move(name), std::move(rectangle),
                                                             occurrences, std::move(features));
}

DLResultBlueMatchRegionReadOnlyCollectionPtr
TestHelper::CreateDLResultBlueMatchRegions(DLResultBlueMatchRegionPtr region1,
                                           DLResultBlueMatchRegionPtr region2) {
    return CollectionOf<DLResultBlueMatchRegionReadOnlyCollection>(std::move(region1),
                                                                   std::move(region2));
}

DLResultBlueReadOnlyCollectionPtr TestHelper::CreateDLResultBlues(DLResultBluePtr blue1,
                                                                  DLResultBluePtr blue2) {
    return CollectionOf<DLResultBlueReadOnlyCollection>(std::move(blue1), std::move(blue2));
}

DLResultFeatureMetricsFeaturePtr
TestHelper::CreateDLResultFeatureMetricsFeature(DLResultFeatureMetricsType type, std::string name,
                                                double found, double recall, double precision,
                                                double fscore, double distance) {
    return ObjectFactory::Construct<DLResultFeatureMetricsFeature>(
        type, std::move(name), found, recall, precision, fscore, distance);
}

DLResultFeatureMetricsFeatureReadOnlyCollectionPtr
TestHelper::CreateDLResultFeatureMetricsFeatureReadOnlyCollection(
    DLResultFeatureMetricsFeaturePtr metrics1, DLResultFeatureMetricsFeaturePtr metrics2) {
    return CollectionOf<DLResultFeatureMetricsFeatureReadOnlyCollection>(std::move(metrics1),
                                                                         std::move(metrics2));
}

DLResultGreenPtr TestHelper::CreateDLResultGreen(std::string const& toolId, double threshold,
                                                 bool exclusive, bool similarityReference,
                                                 double uncertainty,
                                                 DLResultTagReadOnlyCollectionPtr tags,
                                                 DLResultResourceReadOnlyCollectionPtr resources) {
    return ObjectFactory::Construct<DLResultGreen>(toolId, threshold, exclusive,
                                                   similarityReference, uncertainty,
                                                   std::move(tags), std::move(resources));
}

DLResultGreenLabelPtr TestHelper::CreateDLResultGreenLabel(DLResultTrainingFlagPtr flags,
                                                           DLResultTagReadOnlyCollectionPtr tags) {
    return ObjectFactory::Construct<DLResultGreenLabel>(std::move(flags), std::move(tags));
}

DLResultGreenLabelReadOnlyCollectionPtr
TestHelper::CreateDLResultGreenLabels(DLResultGreenLabelPtr label1, DLResultGreenLabelPtr label2,
                                      DLResultGreenLabelPtr label3) {
    return CollectionOf<DLResultGreenLabelReadOnlyCollection>(std::move(label1), std::move(label2),
                                                              std::move(label3));
}

DLResultGreenReadOnlyCollectionPtr TestHelper::CreateDLResultGreens(DLResultGreenPtr green1,
                                                                    DLResultGreenPtr green2) {
    return CollectionOf<DLResultGreenReadOnlyCollection>(std::move(green1), std::move(green2));
}

DLResultMarkingsCollectionPtr
TestHelper::CreateDLResultImage(DLResultMarkingReadOnlyCollectionPtr resultMarking) {
    return CreateDLResultMarkingsCollection(std::move(resultMarking));
}

DLResultImageInfoPtr TestHelper::CreateDLResultImageInfo(int imageWidth, int imageHeight,
                                                         int channels, int depth) {
    return ObjectFactory::Construct<DLResultImageInfo>(imageWidth, imageHeight, channels, depth);
}

DLResultMarkingPtr TestHelper::CreateDLResultMarking(
    DLToolRuntimeParamsPtr tool, std::string const& processedAt, std::string const& processedDevice,
    double duration, double durationProcessOnly, double durationPostProcess,
    DLResultImageInfoPtr imageInfo, DLResultViewReadOnlyCollectionPtr views) {
    return ObjectFactory::Construct<DLResultMarking>(
        std::move(tool), processedAt, processedDevice, duration, durationProcessOnly,
        durationPostProcess, std::move(imageInfo), std::move(views));
}

DLResultMarkingReadOnlyCollectionPtr
TestHelper::CreateDLResultMarkings(DLResultMarkingPtr marking1, DLResultMarkingPtr marking2) {
    return CollectionOf<DLResultMarkingReadOnlyCollection>(std::move(marking1),
                                                           std::move(marking2));
}

DLResultMarkingsCollectionPtr
TestHelper::CreateDLResultMarkingsCollection(DLResultMarkingReadOnlyCollectionPtr resultMarking) {
    return ObjectFactory::Construct<DLResultMarkingsCollection>(std::move(resultMarking));
}

DLResultMatchPtr TestHelper::CreateDLResultMatch(std::string const& modelId,
                                                 std::string const& modelType, double score) {
    return ObjectFactory::Construct<DLResultMatch>(modelId, modelType, score);
}

DLResultMatchLayoutPtr
TestHelper::CreateDLResultMatchLayout(std::string const& modelId, std::string const& modelType,
                                      double score, std::string const& covers,
                                      DLResultBlueMatchRegionReadOnlyCollectionPtr regions) {
    return ObjectFactory::Construct<DLResultMatchLayout>(modelId, modelType, score, covers,
                                                         std::move(regions));
}

DLResultMatchNodePtr
TestHelper::CreateDLResultMatchNode(std::string const& modelId, std::string const& modelType,
                                    double score, std::string const& covers,
                                    std::string const& nodeCoords, std::string const& string,
                                    std::string const& prettifiedString, Transform2DLinearPtr pose,
                                    DLBlueFeatureReadOnlyCollectionPtr features) {
    return ObjectFactory::Construct<DLResultMatchNode>(modelId, modelType, score, covers,
                                                       nodeCoords, string, prettifiedString,
                                                       std::move(pose), std::move(features));
}

DLResultMatchRegexPtr
TestHelper::CreateDLResultMatchRegex(std::string modelId, std::string modelType, double score,
                                     std::string covers, std::string string,
                                     std::string prettifiedString, Transform2DLinearPtr pose,
                                     DLBlueFeatureReadOnlyCollectionPtr features) {
    return ObjectFactory::Construct<DLResultMatchRegex>(
        std::move(modelId), std::move(modelType), score, std::move(covers), std::move(string),
        std::move(prettifiedString), std::move(pose), std::move(features));
}

DLResultMatchStringPtr
TestHelper::CreateDLResultMatchString(std::string const& modelId, std::string const& modelType,
                                      double score, std::string const& matchString,
                                      Transform2DLinearPtr pose,
                                      DLBlueFeatureReadOnlyCollectionPtr features) {
    return ObjectFactory::Construct<DLResultMatchString>(modelId, modelType, score, matchString,
                                                         std::move(pose), std::move(features));
}

DLResultMatchReadOnlyCollectionPtr TestHelper::CreateDLResultMatches(DLResultMatchPtr match1,
                                                                     DLResultMatchPtr match2,
                                                                     DLResultMatchPtr match3,
                                                                     DLResultMatchPtr match4) {
    return CollectionOf<DLResultMatchReadOnlyCollection>(std::move(match1), std::move(match2),
                                                         std::move(match3), std::move(match4));
}

DLResultRedPtr TestHelper::CreateDLResultRed(std::string const& toolId, double score,
                                             double filteredScore, std::string thresholds,
                                             std::string supervisedMode,
                                             DLResultResourceReadOnlyCollectionPtr resources,
                                             DLResultScorePtr scoreObject,
                                             DLResultRedRegionReadOnlyCollectionPtr regions) {
    return ObjectFactory::Construct<DLResultRed>(
        toolId, score, filteredScore, std::move(thresholds), std::move(supervisedMode),
        std::move(resources), std::move(scoreObject), std::move(regions));
}

DLResultRedRegionPtr TestHelper::CreateDLResultRedRegion(double score, std::string const& name,
                                                         double area, double perimeter,
                                                         Vect2Ptr center, std::string const& covers,
                                                         Vect2CollectionPtr points,
                                                         std::string const& coverage) {
    return ObjectFactory::Construct<DLResultRedRegion>(
        score, name, area, perimeter, std::move(center), covers, std::move(points), coverage);
}

DLResultRedRegionReadOnlyCollectionPtr
TestHelper::CreateDLResultRedRegions(DLResultRedRegionPtr region1, DLResultRedRegionPtr region2) {
    return CollectionOf<DLResultRedRegionReadOnlyCollection>(std::move(region1),
                                                             std::move(region2));
}

DLResultRedReadOnlyCollectionPtr TestHelper::CreateDLResultReds(DLResultRedPtr red1,
                                                                DLResultRedPtr red2) {
    return CollectionOf<DLResultRedReadOnlyCollection>(std::move(red1), std::move(red2));
}

DLResultResourcePtr TestHelper::CreateDLResultResource(std::string const& name,
                                                       std::string const& type,
                                                       std::string const& uuid,
                                                       IImagePtr const& image, double scale) {
    return ObjectFactory::Construct<DLResultResource>(name, type, uuid, image, scale);
}

DLResultResourceReadOnlyCollectionPtr
TestHelper::CreateDLResultResources(DLResultResourcePtr resource1, DLResultResourcePtr resource2,
                                    DLResultResourcePtr resource3) {
    return CollectionOf<DLResultResourceReadOnlyCollection>(
        std::move(resource1), std::move(resource2), std::move(resource3));
}

DLResultScorePtr TestHelper::CreateDLResultScore(std::string const& name, double score) {
    return ObjectFactory::Construct<DLResultScore>(name, score);
}

DLResultTagPtr TestHelper::CreateDLResultTag(std::string const& name, double score) {
    return ObjectFactory::Construct<DLResultTag>(name, score);
}

DLResultTagReadOnlyCollectionPtr
TestHelper::CreateDLResultTags(DLResultTagPtr tag1, DLResultTagPtr tag2, DLResultTagPtr tag3) {
    return CollectionOf<DLResultTagReadOnlyCollection>(std::move(tag1), std::move(tag2),
                                                       std::move(tag3));
}

DLResultTrainingFlagPtr TestHelper::CreateDLResultTrainingFlag(bool value, bool manual) {
    return ObjectFactory::Construct<DLResultTrainingFlag>(value, manual);
}

DLResultViewPtr
TestHelper::CreateDLResultView(RectangleAffinePtr region, Transform2DLinearPtr refPose,
                               Transform2DLinearPtr pose, std::string const& group,
                               DLResultRedPtr red, DLResultBluePtr blue, DLResultGreenPtr green,
                               DLResultResourceReadOnlyCollectionPtr const& resources) {
    return ObjectFactory::Construct<DLResultView>(std::move(region), std::move(refPose),
                                                  std::move(pose), group, std::move(red),
                                                  std::move(blue), std::move(green), resources);
}

DLResultViewReadOnlyCollectionPtr TestHelper::CreateDLResultViews(DLResultViewPtr view1,
                                                                  DLResultViewPtr view2) {
    return CollectionOf<DLResultViewReadOnlyCollection>(std::move(view1), std::move(view2));
}

DLRuntimeToolPtr TestHelper::CreateDLRuntimeTool() {
    auto tool = ObjectFactory::Construct<DLRuntimeTool>();
    ObjectFactory::FinalConstruct<Vision::Implementation::ToolBase>(*tool);
    return tool;
}

DLStreamPtr TestHelper::CreateDLStream(DLWorkspacePtr workspace, std::string const& name,
                                       std::string const& uuid, std::string const& frameWindow) {
    return ObjectFactory::Construct<DLStream>(std::move(workspace), name, uuid, frameWindow);
}

DLStreamReadOnlyCollectionPtr TestHelper::CreateDLStreams(DLStreamPtr stream1,
                                                          DLStreamPtr stream2) {
    return CollectionOf<DLStreamReadOnlyCollection>(std::move(stream1), std::move(stream2));
}

DLToolRuntimeParamsReadOnlyCollectionPtr
TestHelper::CreateDLToolRuntimeParams(DLToolRuntimeParamsPtr tool1, DLToolRuntimeParamsPtr tool2) {
    return CollectionOf<DLToolRuntimeParamsReadOnlyCollection>(std::move(tool1), std::move(tool2));
}

DLWorkspacePtr TestHelper::CreateDLWorkspace(std::string const& name, std::string const& uuid,
                                             std::string const& lastModified,
                                             std::string const& sourceFile) {
    return ObjectFactory::Construct<DLWorkspace>(name, uuid, lastModified, sourceFile);
}

DLOperatorPtr TestHelper::CreateDeepLearningOperator() {
    return ObjectFactory::Construct<DLOperator>();
}

std::shared_ptr<DLHdmGreenToolRuntimeParams>
TestHelper::CreateHdmGreenTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                               std::string type, std::string status,
                               DLToolRuntimeParamsReadOnlyCollectionPtr childTools) {
    return ObjectFactory::Construct<DLHdmGreenToolRuntimeParams>(
        std::move(stream), name, id, std::move(type), std::move(status), std::move(childTools));
}

void TestHelper::DLRuntimeToolResults(DLRuntimeToolPtr tool, DLResultPtr result) {
    tool->results_ = std::move(result);
}

DLToolRuntimeParamsPtr TestHelper::DeepLearningAccessFindToolInStream(DLStream const& stream,
                                                                      std::string toolId) {
    return DeepLearningAccess::FindTool(stream, toolId.c_str());
}

DLToolRuntimeParamsPtr
TestHelper::DeepLearningAccessFindToolInWorkspace(DLWorkspace const& workspace,
                                                  std::string toolId) {
    return DeepLearningAccess::FindTool(workspace, toolId.c_str());
}

DLWorkspacePtr TestHelper::DeepLearningAccessGetWorkspace(DLWorkspace const& workspace) {
    return DeepLearningAccess::GetWorkspace(workspace);
}

DLWorkspacePtr TestHelper::DeepLearningAccessGetWorkspaceByName(std::string const& name) {
    return DeepLearningAccess::GetWorkspace(name);
}

template <class Archive> void TestHelper::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "TestHelper::serialize()");
    archive(cereal::virtual_base_class<ShareableBase>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(TestHelper)

} // namespace Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers

CEREAL_REGISTER_TYPE_WITH_NAME(
    Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelper,
    "Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelper")

TAVRIN_REGISTRATION(TestHelper) {
    using namespace Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers;
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    DeclareClass<TestHelper>(
        FullName("Implementation::Internal::TestHelpers::TestHelper"),
        {ClassType::Class, "<Vision/DeepLearning/Implementation/Internal/TestHelpers/TestHelper>",
         std::nullopt})
        .method("CreateDLBlueFeature", &TestHelper::CreateDLBlueFeature)(
            rttr::parameter_names("id", "rectangle", "score", "covers"))
        .method("CreateDLBlueFeatures", &TestHelper::CreateDLBlueFeatures)(rttr::parameter_names(
            "feature1", "feature2", "feature3", "feature4", "feature5", "feature6", "feature7"))
        .method("CreateDLStream", &TestHelper::CreateDLStream)(
            rttr::parameter_names("workspace", "name", "uuid", "frameWindow"))
        .method("CreateHdmGreenTool", &TestHelper::CreateHdmGreenTool)(
            rttr::parameter_names("stream", "name", "id", "type", "status", "childTools"))
        .method("CreateDLBlueTool", &TestHelper::CreateDLBlueTool)(
            rttr::parameter_names("stream", "name", "id", "type", "status", "childTools"))
        .method("CreateDeepLearningOperator", &TestHelper::CreateDeepLearningOperator)
        .method("CreateDLBlueLayoutModel",
                &TestHelper::CreateDLBlueLayoutModel)(rttr::parameter_names("tool", "name"))
        .method("CreateDLBlueModels",
                &TestHelper::CreateDLBlueModels)(rttr::parameter_names("model1", "model2"))
        .method("CreateDLBlueNodeModel",
                &TestHelper::CreateDLBlueNodeModel)(rttr::parameter_names("tool", "name"))
        .method("CreateDLBlueReadTool", &TestHelper::CreateDLBlueReadTool)(
            rttr::parameter_names("stream", "name", "id", "type", "status", "childTools"))
        .method("CreateDLBlueRegexModel",
                &TestHelper::CreateDLBlueRegexModel)(rttr::parameter_names("tool", "name"))
        .method("CreateDLBlueStringModel",
                &TestHelper::CreateDLBlueStringModel)(rttr::parameter_names("tool", "name"))
        .method("CreateDLFocusedModeGreenTool", &TestHelper::CreateDLFocusedModeGreenTool)(
            rttr::parameter_names("stream", "name", "id", "type", "status", "childTools"))
        .method("CreateDLFocusedModeRedTool", &TestHelper::CreateDLFocusedModeRedTool)(
            rttr::parameter_names("stream", "name", "id", "type", "status", "childTools"))
        .method("CreateDLHdmRedTool", &TestHelper::CreateDLHdmRedTool)(
            rttr::parameter_names("stream", "name", "id", "type", "status", "childTools"))
        .method("CreateDLResult",
                &TestHelper::CreateDLResult)(rttr::parameter_names("tool", "resultImage"))
        .method("CreateDLResultBlue", &TestHelper::CreateDLResultBlue)(
            rttr::parameter_names("toolId", "oriented", "scaled", "aspected", "showFeatureChiclets",
                                  "showRectangularFeatures", "features", "matches"))
        .method("CreateDLResultBlueLabel", &TestHelper::CreateDLResultBlueLabel)(
            rttr::parameter_names("features", "matches", "featureMetrics"))
        .method("CreateDLResultBlueLabels",
                &TestHelper::CreateDLResultBlueLabels)(rttr::parameter_names("label1", "label2"))
        .method("CreateDLResultBlueMatchRegion", &TestHelper::CreateDLResultBlueMatchRegion)(
            rttr::parameter_names("name", "rectangle", "occurrences", "features"))
        .method("CreateDLResultBlueMatchRegions", &TestHelper::CreateDLResultBlueMatchRegions)(
            rttr::parameter_names("region1", "region2"))
        .method("CreateDLResultBlues",
                &TestHelper::CreateDLResultBlues)(rttr::parameter_names("blue1", "blue2"))
        .method("CreateDLResultFeatureMetricsFeature",
                &TestHelper::CreateDLResultFeatureMetricsFeature)(rttr::parameter_names(
            "type", "name", "found", "recall", "precision", "fscore", "distance"))
        .method("CreateDLResultFeatureMetricsFeatureReadOnlyCollection",
                &TestHelper::CreateDLResultFeatureMetricsFeatureReadOnlyCollection)(
            rttr::parameter_names("metrics1", "metrics2"))
        .method("CreateDLResultGreen", &TestHelper::CreateDLResultGreen)(
            rttr::parameter_names("toolId", "threshold", "exclusive", "similarityReference",
                                  "uncertainty", "tags", "resources"))
        .method("CreateDLResultGreenLabel",
                &TestHelper::CreateDLResultGreenLabel)(rttr::parameter_names("flags", "tags"))
        .method("CreateDLResultGreenLabels", &TestHelper::CreateDLResultGreenLabels)(
            rttr::parameter_names("label1", "label2", "label3"))
        .method("CreateDLResultGreens",
                &TestHelper::CreateDLResultGreens)(rttr::parameter_names("green1", "green2"))
        .method("CreateDLResultImageInfo", &TestHelper::CreateDLResultImageInfo)(
            rttr::parameter_names("imageWidth", "imageHeight", "channels", "depth"))
        .method("CreateDLResultImage",
                &TestHelper::CreateDLResultImage)(rttr::parameter_names("resultMarking"))
        .method("CreateDLResultMarking", &TestHelper::CreateDLResultMarking)(rttr::parameter_names(
            "tool", "processedAt", "processedDevice", "duration", "durationProcessOnly",
            "durationPostProcess", "imageInfo", "views"))
        .method("CreateDLResultMarkings",
                &TestHelper::CreateDLResultMarkings)(rttr::parameter_names("marking1", "marking2"))
        .method("CreateDLResultMarkingsCollection", &TestHelper::CreateDLResultMarkingsCollection)(
            rttr::parameter_names("resultMarking"))
        .method("CreateDLResultMatch", &TestHelper::CreateDLResultMatch)(
            rttr::parameter_names("modelId", "modelType", "score"))
        .method("CreateDLResultMatches", &TestHelper::CreateDLResultMatches)(
            rttr::parameter_names("match1", "match2", "match3", "match4"))
        .method("CreateDLResultMatchLayout", &TestHelper::CreateDLResultMatchLayout)(
            rttr::parameter_names("modelId", "modelType", "score", "covers", "regions"))
        .method("CreateDLResultMatchNode", &TestHelper::CreateDLResultMatchNode)(
            rttr::parameter_names("modelId", "modelType", "score", "covers", "nodeCoords", "string",
                                  "prettifiedString", "pose", "features"))
        .method("CreateDLResultMatchRegex", &TestHelper::CreateDLResultMatchRegex)(
            rttr::parameter_names("modelId", "modelType", "score", "covers", "string",
                                  "prettifiedString", "pose", "features"))
        .method("CreateDLResultMatchString", &TestHelper::CreateDLResultMatchString)(
            rttr::parameter_names("modelId", "modelType", "score", "matchString", "pose",
                                  "features"))
        .method("CreateDLResultRed", &TestHelper::CreateDLResultRed)(
            rttr::parameter_names("toolId", "score", "filteredScore", "thresholds",
                                  "supervisedMode", "resources", "scoreObject", "regions"))
        .method("CreateDLResultRedRegion", &TestHelper::CreateDLResultRedRegion)(
            rttr::parameter_names("score", "name", "area", "perimeter", "center", "covers",
                                  "points", "coverage"))
        .method("CreateDLResultRedRegions",
                &TestHelper::CreateDLResultRedRegions)(rttr::parameter_names("region1", "region2"))
        .method("CreateDLResultReds",
                &TestHelper::CreateDLResultReds)(rttr::parameter_names("red1", "red2"))
        .method("CreateDLResultResource", &TestHelper::CreateDLResultResource)(
            rttr::parameter_names("name", "type", "uuid", "image", "scale"))
        .method("CreateDLResultResources", &TestHelper::CreateDLResultResources)(
            rttr::parameter_names("resource1", "resource2", "resource3"))
        .method("CreateDLResultScore",
                &TestHelper::CreateDLResultScore)(rttr::parameter_names("name", "score"))
        .method("CreateDLResultTag",
                &TestHelper::CreateDLResultTag)(rttr::parameter_names("name", "score"))
        .method("CreateDLResultTags",
                &TestHelper::CreateDLResultTags)(rttr::parameter_names("tag1", "tag2", "tag3"))
        .method("CreateDLResultTrainingFlag",
                &TestHelper::CreateDLResultTrainingFlag)(rttr::parameter_names("value", "manual"))
        .method("CreateDLResultView", &TestHelper::CreateDLResultView)(rttr::parameter_names(
            "region", "refPose", "pose", "group", "red", "blue", "green", "resources"))
        .method("CreateDLResultViews",
                &TestHelper::CreateDLResultViews)(rttr::parameter_names("view1", "view2"))
        .method("CreateDLRuntimeTool", &TestHelper::CreateDLRuntimeTool)
        .method("DLRuntimeToolResults",
                &TestHelper::DLRuntimeToolResults)(rttr::parameter_names("tool", "result"))
        .method("CreateDLStreams",
                &TestHelper::CreateDLStreams)(rttr::parameter_names("stream1", "stream2"))
        .method("CreateDLWorkspace", &TestHelper::CreateDLWorkspace)(
            rttr::parameter_names("name", "uuid", "lastModified", "sourceFile"))
        .method("CreateDLToolRuntimeParams",
                &TestHelper::CreateDLToolRuntimeParams)(rttr::parameter_names("tool1", "tool2"))
        .method("DeepLearningAccessGetWorkspaceByName",
                &TestHelper::DeepLearningAccessGetWorkspaceByName)(rttr::parameter_names("name"))
        .method("DeepLearningAccessGetWorkspace",
                &TestHelper::DeepLearningAccessGetWorkspace)(rttr::parameter_names("workspace"))
        .method("DeepLearningAccessFindToolInStream",
                &TestHelper::DeepLearningAccessFindToolInStream)(
            rttr::parameter_names("stream", "toolId"))
        .method("DeepLearningAccessFindToolInWorkspace",
                &TestHelper::DeepLearningAccessFindToolInWorkspace)(
            rttr::parameter_names("workspace", "toolId"));

    rttr::registration::class_<TestHelperPtr>(
        "Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelperPtr")(
        rttr::metadata(MetadataKey::LibraryExport, LibraryName));
    RegisterConverters<TestHelper>(ShareableBases{});
}
