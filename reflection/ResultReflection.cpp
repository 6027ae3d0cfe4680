#include <Vision/DeepLearning/DeepLearning.h>

#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

using MatchBases = WithNearestBase<DLResultMatch, ShareableBases>;

void RegisterResult() {
    using C = DLResult;
    DeclarePublicClass<C>("DLResult")
        .property_readonly("Tool", &C::Tool)
        .property_readonly("ResultImage", &C::ResultImage);
    RegisterConverters<C>(TypeList<ShareableBase, IRecordConstructor, Brnt::IObject>{});
}

void RegisterResultMarkingsCollection() {
    using C = DLResultMarkingsCollection;
    DeclarePublicClass<C>("DLResultMarkingsCollection")
        .property_readonly("ResultMarking", &C::ResultMarking);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultMarking() {
    using C = DLResultMarking;
    DeclarePublicClass<C>("DLResultMarking")
        .property_readonly("DurationPostProcess", &C::DurationPostProcess)
        .property_readonly("DurationProcessOnly", &C::DurationProcessOnly)
        .property_readonly("Duration", &C::Duration)
        .property_readonly("ProcessedDevice", &C::ProcessedDevice)
        .property_readonly("ProcessedAt", &C::ProcessedAt)
        .property_readonly("Tool", &C::Tool)
        .property_readonly("ImageInfo", &C::ImageInfo)
        .property_readonly("ResultViews", &C::ResultViews);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultImageInfo() {
    using C = DLResultImageInfo;
    DeclarePublicClass<C>("DLResultImageInfo")
        .property_readonly("ImageWidth", &C::ImageWidth)
        .property_readonly("ImageHeight", &C::ImageHeight)
        .property_readonly("Channels", &C::Channels)
        .property_readonly("Depth", &C::Depth);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultView() {
    using C = DLResultView;
    DeclarePublicClass<C>("DLResultView")
        .property_readonly("Region", &C::Region)
        .property_readonly("RefPose", &C::RefPose)
        .property_readonly("Pose", &C::Pose)
        .property_readonly("Group", &C::Group)
        .property_readonly("ResultRed", &C::ResultRed)
        .property_readonly("ResultBlue", &C::ResultBlue)
        .property_readonly("ResultGreen", &C::ResultGreen)
        .property_readonly("Resources", &C::Resources);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultResource() {
    using C = DLResultResource;
    DeclarePublicClass<C>("DLResultResource")
        .property_readonly("Name", &C::Name)
        .property_readonly("UUID", &C::UUID)
        .property_readonly("Type", &C::Type)
        .property_readonly("Scale", &C::Scale)
        .property_readonly("Image", &C::Image);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultRed() {
    using C = DLResultRed;
    DeclarePublicClass<C>("DLResultRed")
        .property_readonly("Score", &C::Score)
        .property_readonly("FilteredScore", &C::FilteredScore)
        .property_readonly("Thresholds", &C::Thresholds)
        .property_readonly("SupervisedMode", &C::SupervisedMode)
        .property_readonly("ResultResources", &C::ResultResources)
        .property_readonly("ResultScore", &C::ResultScore)
        .property_readonly("ResultRegions", &C::ResultRegions)
        .property_readonly("ToolId", &C::ToolId);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultScore() {
    using C = DLResultScore;
    DeclarePublicClass<C>("DLResultScore")
        .property_readonly("Name", &C::Name)
        .property_readonly("Score", &C::Score);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultRedRegion() {
    using C = DLResultRedRegion;
    DeclarePublicClass<C>("DLResultRedRegion")
        .property_readonly("Score", &C::Score)
        .property_readonly("Name", &C::Name)
        .property_readonly("Area", &C::Area)
        .property_readonly("Perimeter", &C::Perimeter)
        .property_readonly("Center", &C::Center)
        .property_readonly("Covers", &C::Covers)
        .property_readonly("Points", &C::Points)
        .property_readonly("Coverage", &C::Coverage);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultGreen() {
    using C = DLResultGreen;
    DeclarePublicClass<C>("DLResultGreen")
        .property_readonly("Tags", &C::Tags)
        .property_readonly("BestTag", &C::BestTag)
        .property_readonly("ToolId", &C::ToolId)
        .property_readonly("ResultResources", &C::ResultResources)
        .property_readonly("Threshold", &C::Threshold)
        .property_readonly("Exclusive", &C::Exclusive)
        .property_readonly("SimilarityReference", &C::SimilarityReference)
        .property_readonly("Uncertainty", &C::Uncertainty);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultTag() {
    using C = DLResultTag;
    DeclarePublicClass<C>("DLResultTag")
        .property_readonly("Name", &C::Name)
        .property_readonly("Score", &C::Score);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultGreenLabel() {
    using C = DLResultGreenLabel;
    DeclarePublicClass<C>("DLResultGreenLabel")
        .property_readonly("Tags", &C::Tags)
        .property_readonly("Flags", &C::Flags);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultTrainingFlag() {
    using C = DLResultTrainingFlag;
    DeclarePublicClass<C>("DLResultTrainingFlag")
        .property_readonly("Value", &C::Value)
        .property_readonly("Manual", &C::Manual);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultBlue() {
    using C = DLResultBlue;
    DeclarePublicClass<C>("DLResultBlue")
        .property_readonly("Features", &C::Features)
        .property_readonly("Matches", &C::Matches)
        .property_readonly("ToolId", &C::ToolId)
        .property_readonly("Aspected", &C::Aspected)
        .property_readonly("Oriented", &C::Oriented)
        .property_readonly("Scaled", &C::Scaled)
        .property_readonly("ShowFeatureChiclets", &C::ShowFeatureChiclets)
        .property_readonly("ShowRectangularFeatures", &C::ShowRectangularFeatures);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterBlueFeature() {
    using C = DLBlueFeature;
    DeclarePublicClass<C>("DLBlueFeature")
        .property_readonly("Id", &C::Id)
        .property_readonly("Score", &C::Score)
        .property_readonly("Covers", &C::Covers)
        .property_readonly("Rectangle", &C::Rectangle);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultBlueLabel() {
    using C = DLResultBlueLabel;
    DeclarePublicClass<C>("DLResultBlueLabel")
        .property_readonly("Matches", &C::Matches)
        .property_readonly("Features", &C::Features)
        .property_readonly("FeatureMetrics", &C::FeatureMetrics);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultFeatureMetricsFeature() {
    using C = DLResultFeatureMetricsFeature;
    DeclarePublicClass<C>("DLResultFeatureMetricsFeature")
        .property_readonly("Name", &C::Name)
        .property_readonly("Distance", &C::Distance)
        .property_readonly("Found", &C::Found)
        .property_readonly("Fscore", &C::Fscore)
        .property_readonly("Precision", &C::Precision)
        .property_readonly("Recall", &C::Recall);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultBlueMatchRegion() {
    using C = DLResultBlueMatchRegion;
    DeclarePublicClass<C>("DLResultBlueMatchRegion")
        .property_readonly("Name", &C::Name)
        .property_readonly("Occurrences", &C::Occurrences)
        .property_readonly("Features", &C::Features)
        .property_readonly("Rectangle", &C::Rectangle);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultMatch() {
    using C = DLResultMatch;
    DeclarePublicClass<C>("DLResultMatch", ClassType::BaseClass)
        .property_readonly("ModelID", &C::ModelID)
        .property_readonly("ModelType", &C::ModelType)
        .property_readonly("Score", &C::Score);
    RegisterConverters<C>(ShareableBases{});
}

void RegisterResultMatchString() {
    using C = DLResultMatchString;
    DeclarePublicClass<C>("DLResultMatchString")
        .property_readonly("MatchString", &C::MatchString)
        .property_readonly("Pose", &C::Pose)
        .property_readonly("Features", &C::Features);
    RegisterConverters<C>(MatchBases{});
}

void RegisterResultMatchNode() {
    using C = DLResultMatchNode;
    DeclarePublicClass<C>("DLResultMatchNode")
        .property_readonly("String", &C::String)
        .property_readonly("Pose", &C::Pose)
        .property_readonly("Features", &C::Features)
        .property_readonly("Covers", &C::Covers)
        .property_readonly("NodeCoords", &C::NodeCoords)
        .property_readonly("PrettifiedString", &C::PrettifiedString);
    RegisterConverters<C>(MatchBases{});
}

void RegisterResultMatchRegex() {
    using C = DLResultMatchRegex;
    DeclarePublicClass<C>("DLResultMatchRegex")
        .property_readonly("String", &C::String)
        .property_readonly("Pose", &C::Pose)
        .property_readonly("Features", &C::Features)
        .property_readonly("PrettifiedString", &C::PrettifiedString);
    RegisterConverters<C>(MatchBases{});
}

void RegisterResultMatchLayout() {
    using C = DLResultMatchLayout;
    DeclarePublicClass<C>("DLResultMatchLayout")
        .property_readonly("Covers", &C::Covers)
        .property_readonly("Regions", &C::Regions);
    RegisterConverters<C>(MatchBases{});
}

} // namespace
} // namespace Tavrin::Vision::DeepLearning::Reflection

TAVRIN_REGISTRATION(ResultReflection) {
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    RegisterResult();
    RegisterResultMarkingsCollection();
    RegisterResultMarking();
    RegisterResultImageInfo();
    RegisterResultView();
    RegisterResultResource();
    RegisterResultRed();
    RegisterResultScore();
    RegisterResultRedRegion();
    RegisterResultGreen();
    RegisterResultTag();
    RegisterResultGreenLabel();
    RegisterResultTrainingFlag();
    RegisterResultBlue();
    RegisterBlueFeature();
    RegisterResultBlueLabel();
    RegisterResultFeatureMetricsFeature();
    RegisterResultBlueMatchRegion();
    RegisterResultMatch();
    RegisterResultMatchString();
    RegisterResultMatchNode();
    RegisterResultMatchRegex();
    RegisterResultMatchLayout();
}
