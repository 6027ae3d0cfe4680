#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Archive.h>
#include <Vision/Core/Image.h>
#include <Vision/Core/Object.h>
#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>
#include <Vision/Core/Vect2.h>
#include <Vision/DeepLearning/DLBlueFeature.h>
#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLBlueLayoutModel.h>
#include <Vision/DeepLearning/DLBlueModel.h>
#include <Vision/DeepLearning/DLBlueModelReadOnlyCollection.h>
#include <Vision/DeepLearning/DLBlueNodeModel.h>
#include <Vision/DeepLearning/DLBlueReadToolRuntimeParams.h>
#include <Vision/DeepLearning/DLBlueRegexModel.h>
#include <Vision/DeepLearning/DLBlueStringModel.h>
#include <Vision/DeepLearning/DLBlueToolRuntimeParams.h>
#include <Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h>
#include <Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h>
#include <Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h>
#include <Vision/DeepLearning/DLHdmRedToolRuntimeParams.h>
#include <Vision/DeepLearning/DLOperator.h>
#include <Vision/DeepLearning/DLResult.h>
#include <Vision/DeepLearning/DLResultBlue.h>
#include <Vision/DeepLearning/DLResultBlueLabel.h>
#include <Vision/DeepLearning/DLResultBlueLabelReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultBlueMatchRegion.h>
#include <Vision/DeepLearning/DLResultBlueMatchRegionReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultBlueReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultFeatureMetricsFeature.h>
#include <Vision/DeepLearning/DLResultFeatureMetricsFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultGreen.h>
#include <Vision/DeepLearning/DLResultGreenLabel.h>
#include <Vision/DeepLearning/DLResultGreenLabelReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultGreenReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultImageInfo.h>
#include <Vision/DeepLearning/DLResultMarking.h>
#include <Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMarkingsCollection.h>
#include <Vision/DeepLearning/DLResultMatch.h>
#include <Vision/DeepLearning/DLResultMatchLayout.h>
#include <Vision/DeepLearning/DLResultMatchNode.h>
#include <Vision/DeepLearning/DLResultMatchReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatchRegex.h>
#include <Vision/DeepLearning/DLResultMatchString.h>
#include <Vision/DeepLearning/DLResultRed.h>
#include <Vision/DeepLearning/DLResultRedReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultRedRegion.h>
#include <Vision/DeepLearning/DLResultRedRegionReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultResource.h>
#include <Vision/DeepLearning/DLResultResourceReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultScore.h>
#include <Vision/DeepLearning/DLResultTag.h>
#include <Vision/DeepLearning/DLResultTagReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultTrainingFlag.h>
#include <Vision/DeepLearning/DLResultView.h>
#include <Vision/DeepLearning/DLResultViewReadOnlyCollection.h>
#include <Vision/DeepLearning/DLRuntimeTool.h>
#include <Vision/DeepLearning/DLStream.h>
#include <Vision/DeepLearning/DLStreamReadOnlyCollection.h>
#include <Vision/DeepLearning/DLToolRuntimeParams.h>
#include <Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h>
#include <Vision/DeepLearning/DLWorkspace.h>
#include <Vision/DeepLearning/DeepLearningEnums.h>

namespace Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers {

// Builds any object of the result and parameter model from plain arguments, without an engine,
// so that a host can exercise its own display and persistence. Each factory passes its arguments
// unchanged to the class's constructor; nothing is defaulted or checked here. Engine-backed
// objects (tools, models, streams, workspaces, the operator) are built without their
// FinalConstruct, so they never read from the engine. The four lookups are the only calls that
// reach the engine's open workspaces.
//
// The mix of arguments by value and by const& is part of the exported interface and stays so.
class TestHelper : public virtual ShareableBase {
public:
    explicit TestHelper(ObjectCreateAccessToken const&) {}
    TAVRIN_SHARED_FROM_THIS(TestHelper)

    static DLBlueFeaturePtr CreateDLBlueFeature(std::string id, RectangleAffinePtr rectangle,
                                                double score, std::string covers);
    // Each collection factory keeps null arguments as null items: Count() is always the number of
    // arguments.
    static DLBlueFeatureReadOnlyCollectionPtr
    CreateDLBlueFeatures(DLBlueFeaturePtr feature1, DLBlueFeaturePtr feature2,
                         DLBlueFeaturePtr feature3, DLBlueFeaturePtr feature4,
                         DLBlueFeaturePtr feature5, DLBlueFeaturePtr feature6,
                         DLBlueFeaturePtr feature7);
    static std::shared_ptr<DLBlueLayoutModel> CreateDLBlueLayoutModel(DLToolRuntimeParamsPtr tool,
                                                                      std::string const& name);
    static DLBlueModelReadOnlyCollectionPtr CreateDLBlueModels(DLBlueModelPtr model1,
                                                               DLBlueModelPtr model2);
    static std::shared_ptr<DLBlueNodeModel> CreateDLBlueNodeModel(DLToolRuntimeParamsPtr tool,
                                                                  std::string name);
    static std::shared_ptr<DLBlueReadToolRuntimeParams>
    CreateDLBlueReadTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                         std::string const& type, std::string const& status,
                         DLToolRuntimeParamsReadOnlyCollectionPtr childTools);
    static std::shared_ptr<DLBlueRegexModel> CreateDLBlueRegexModel(DLToolRuntimeParamsPtr tool,
                                                                    std::string const& name);
    static std::shared_ptr<DLBlueStringModel> CreateDLBlueStringModel(DLToolRuntimeParamsPtr tool,
                                                                      std::string const& name);
    static std::shared_ptr<DLBlueToolRuntimeParams>
    CreateDLBlueTool(DLStreamPtr stream, std::string name, std::string id, std::string type,
                     std::string status, DLToolRuntimeParamsReadOnlyCollectionPtr childTools);
    static std::shared_ptr<DLFocusedModeGreenToolRuntimeParams>
    CreateDLFocusedModeGreenTool(DLStreamPtr stream, std::string name, std::string id,
                                 std::string type, std::string status,
                                 DLToolRuntimeParamsReadOnlyCollectionPtr childTools);
    static std::shared_ptr<DLFocusedModeRedToolRuntimeParams>
    CreateDLFocusedModeRedTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                               std::string const& type, std::string const& status,
                               DLToolRuntimeParamsReadOnlyCollectionPtr childTools);
    static std::shared_ptr<DLHdmRedToolRuntimeParams>
    CreateDLHdmRedTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                       std::string const& type, std::string const& status,
                       DLToolRuntimeParamsReadOnlyCollectionPtr childTools);
    // The tool must not be null.
    static DLResultPtr CreateDLResult(DLToolRuntimeParamsPtr tool,
                                      DLResultMarkingsCollectionPtr resultImage);
    static DLResultBluePtr CreateDLResultBlue(std::string const& toolId, bool oriented, bool scaled,
                                              bool aspected, bool showFeatureChiclets,
                                              bool showRectangularFeatures,
                                              DLBlueFeatureReadOnlyCollectionPtr features,
                                              DLResultMatchReadOnlyCollectionPtr matches);
    static DLResultBlueLabelPtr
    CreateDLResultBlueLabel(DLBlueFeatureReadOnlyCollectionPtr features,
                            DLResultMatchReadOnlyCollectionPtr matches,
                            DLResultFeatureMetricsFeatureReadOnlyCollectionPtr featureMetrics);
    static DLResultBlueLabelReadOnlyCollectionPtr
    CreateDLResultBlueLabels(DLResultBlueLabelPtr label1, DLResultBlueLabelPtr label2);
    static DLResultBlueMatchRegionPtr
    CreateDLResultBlueMatchRegion(std::string name, RectangleAffinePtr rectangle, int occurrences,
                                  DLBlueFeatureReadOnlyCollectionPtr features);
    static DLResultBlueMatchRegionReadOnlyCollectionPtr
    CreateDLResultBlueMatchRegions(DLResultBlueMatchRegionPtr region1,
                                   DLResultBlueMatchRegionPtr region2);
    static DLResultBlueReadOnlyCollectionPtr CreateDLResultBlues(DLResultBluePtr blue1,
                                                                 DLResultBluePtr blue2);
    static DLResultFeatureMetricsFeaturePtr
    CreateDLResultFeatureMetricsFeature(DLResultFeatureMetricsType type, std::string name,
                                        double found, double recall, double precision,
                                        double fscore, double distance);
    static DLResultFeatureMetricsFeatureReadOnlyCollectionPtr
    CreateDLResultFeatureMetricsFeatureReadOnlyCollection(
        DLResultFeatureMetricsFeaturePtr metrics1, DLResultFeatureMetricsFeaturePtr metrics2);
    static DLResultGreenPtr CreateDLResultGreen(std::string const& toolId, double threshold,
                                                bool exclusive, bool similarityReference,
                                                double uncertainty,
                                                DLResultTagReadOnlyCollectionPtr tags,
                                                DLResultResourceReadOnlyCollectionPtr resources);
    static DLResultGreenLabelPtr CreateDLResultGreenLabel(DLResultTrainingFlagPtr flags,
                                                          DLResultTagReadOnlyCollectionPtr tags);
    static DLResultGreenLabelReadOnlyCollectionPtr
    CreateDLResultGreenLabels(DLResultGreenLabelPtr label1, DLResultGreenLabelPtr label2,
                              DLResultGreenLabelPtr label3);
    static DLResultGreenReadOnlyCollectionPtr CreateDLResultGreens(DLResultGreenPtr green1,
                                                                   DLResultGreenPtr green2);
    // The same function as CreateDLResultMarkingsCollection, under the name of the result's
    // ResultImage.
    static DLResultMarkingsCollectionPtr
    CreateDLResultImage(DLResultMarkingReadOnlyCollectionPtr resultMarking);
    static DLResultImageInfoPtr CreateDLResultImageInfo(int imageWidth, int imageHeight,
                                                        int channels, int depth);
    // The tool must not be null.
    static DLResultMarkingPtr
    CreateDLResultMarking(DLToolRuntimeParamsPtr tool, std::string const& processedAt,
                          std::string const& processedDevice, double duration,
                          double durationProcessOnly, double durationPostProcess,
                          DLResultImageInfoPtr imageInfo, DLResultViewReadOnlyCollectionPtr views);
    static DLResultMarkingReadOnlyCollectionPtr CreateDLResultMarkings(DLResultMarkingPtr marking1,
                                                                       DLResultMarkingPtr marking2);
    static DLResultMarkingsCollectionPtr
    CreateDLResultMarkingsCollection(DLResultMarkingReadOnlyCollectionPtr resultMarking);
    static DLResultMatchPtr CreateDLResultMatch(std::string const& modelId,
                                                std::string const& modelType, double score);
    static DLResultMatchLayoutPtr
    CreateDLResultMatchLayout(std::string const& modelId, std::string const& modelType,
                              double score, std::string const& covers,
                              DLResultBlueMatchRegionReadOnlyCollectionPtr regions);
    static DLResultMatchNodePtr
    CreateDLResultMatchNode(std::string const& modelId, std::string const& modelType, double score,
                            std::string const& covers, std::string const& nodeCoords,
                            std::string const& string, std::string const& prettifiedString,
                            Transform2DLinearPtr pose, DLBlueFeatureReadOnlyCollectionPtr features);
    static DLResultMatchRegexPtr
    CreateDLResultMatchRegex(std::string modelId, std::string modelType, double score,
                             std::string covers, std::string string, std::string prettifiedString,
                             Transform2DLinearPtr pose,
                             DLBlueFeatureReadOnlyCollectionPtr features);
    static DLResultMatchStringPtr
    CreateDLResultMatchString(std::string const& modelId, std::string const& modelType,
                              double score, std::string const& matchString,
                              Transform2DLinearPtr pose,
                              DLBlueFeatureReadOnlyCollectionPtr features);
    static DLResultMatchReadOnlyCollectionPtr CreateDLResultMatches(DLResultMatchPtr match1,
                                                                    DLResultMatchPtr match2,
                                                                    DLResultMatchPtr match3,
                                                                    DLResultMatchPtr match4);
    static DLResultRedPtr CreateDLResultRed(std::string const& toolId, double score,
                                            double filteredScore, std::string thresholds,
                                            std::string supervisedMode,
                                            DLResultResourceReadOnlyCollectionPtr resources,
                                            DLResultScorePtr scoreObject,
                                            DLResultRedRegionReadOnlyCollectionPtr regions);
    static DLResultRedRegionPtr CreateDLResultRedRegion(double score, std::string const& name,
                                                        double area, double perimeter,
                                                        Vect2Ptr center, std::string const& covers,
                                                        Vect2CollectionPtr points,
                                                        std::string const& coverage);
    static DLResultRedRegionReadOnlyCollectionPtr
    CreateDLResultRedRegions(DLResultRedRegionPtr region1, DLResultRedRegionPtr region2);
    static DLResultRedReadOnlyCollectionPtr CreateDLResultReds(DLResultRedPtr red1,
                                                               DLResultRedPtr red2);
    static DLResultResourcePtr CreateDLResultResource(std::string const& name,
                                                      std::string const& type,
                                                      std::string const& uuid,
                                                      IImagePtr const& image, double scale);
    static DLResultResourceReadOnlyCollectionPtr
    CreateDLResultResources(DLResultResourcePtr resource1, DLResultResourcePtr resource2,
                            DLResultResourcePtr resource3);
    static DLResultScorePtr CreateDLResultScore(std::string const& name, double score);
    static DLResultTagPtr CreateDLResultTag(std::string const& name, double score);
    static DLResultTagReadOnlyCollectionPtr
    CreateDLResultTags(DLResultTagPtr tag1, DLResultTagPtr tag2, DLResultTagPtr tag3);
    static DLResultTrainingFlagPtr CreateDLResultTrainingFlag(bool value, bool manual);
    static DLResultViewPtr
    CreateDLResultView(RectangleAffinePtr region, Transform2DLinearPtr refPose,
                       Transform2DLinearPtr pose, std::string const& group, DLResultRedPtr red,
                       DLResultBluePtr blue, DLResultGreenPtr green,
                       DLResultResourceReadOnlyCollectionPtr const& resources);
    static DLResultViewReadOnlyCollectionPtr CreateDLResultViews(DLResultViewPtr view1,
                                                                 DLResultViewPtr view2);
    // The only factory that finishes construction: the tool connects to its operator, whose
    // engine load starts in the background as with any runtime tool.
    static DLRuntimeToolPtr CreateDLRuntimeTool();
    static DLStreamPtr CreateDLStream(DLWorkspacePtr workspace, std::string const& name,
                                      std::string const& uuid, std::string const& frameWindow);
    static DLStreamReadOnlyCollectionPtr CreateDLStreams(DLStreamPtr stream1, DLStreamPtr stream2);
    static DLToolRuntimeParamsReadOnlyCollectionPtr
    CreateDLToolRuntimeParams(DLToolRuntimeParamsPtr tool1, DLToolRuntimeParamsPtr tool2);
    static DLWorkspacePtr CreateDLWorkspace(std::string const& name, std::string const& uuid,
                                            std::string const& lastModified,
                                            std::string const& sourceFile);
    // Without FinalConstruct the operator starts no engine load; a workspace can't be loaded.
    static DLOperatorPtr CreateDeepLearningOperator();
    static std::shared_ptr<DLHdmGreenToolRuntimeParams>
    CreateHdmGreenTool(DLStreamPtr stream, std::string const& name, std::string const& id,
                       std::string type, std::string status,
                       DLToolRuntimeParamsReadOnlyCollectionPtr childTools);
    // Replaces the tool's results as they are, with no change event and without tying them to
    // the tool's workspace, so that run records can be made from a prepared result.
    static void DLRuntimeToolResults(DLRuntimeToolPtr tool, DLResultPtr result);

    static DLToolRuntimeParamsPtr DeepLearningAccessFindToolInStream(DLStream const& stream,
                                                                     std::string toolId);
    static DLToolRuntimeParamsPtr
    DeepLearningAccessFindToolInWorkspace(DLWorkspace const& workspace, std::string toolId);
    static DLWorkspacePtr DeepLearningAccessGetWorkspace(DLWorkspace const& workspace);
    static DLWorkspacePtr DeepLearningAccessGetWorkspaceByName(std::string const& name);

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class cereal::access;

    TestHelper() = default;

    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(ShareableBase)
};

using TestHelperPtr = std::shared_ptr<TestHelper>;

} // namespace Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers

TAVRIN_ARCHIVED_CLASS(
    Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelper, 1)
