#include <Vision/DeepLearning/DeepLearning.h>

#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

using ToolBases = WithNearestBase<DLToolRuntimeParams, ChangedEventBases>;
using ModelBases = WithNearestBase<DLBlueModel, ChangedEventBases>;

void RegisterToolRuntimeParams() {
    using C = DLToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLToolRuntimeParams", ClassType::BaseClass);
    declared.property_readonly("Name", &C::Name)
        .property_readonly("Type", &C::Type)
        .property_readonly("Id", &C::Id)
        .property_readonly("ChildTools", &C::ChildTools)
        .property("ShowRegion", &C::ShowRegion, &C::setShowRegion)
        .property("AddImageRecords", &C::AddImageRecords, &C::setAddImageRecords);
    ChainFlagConstants(declared, {{"SfGraphicsSettings", &C::SfGraphicsSettings},
                                  {"SfShowRegion", &C::SfShowRegion},
                                  {"SfAddImageRecords", &C::SfAddImageRecords}});
    RegisterConverters<C>(ChangedEventBases{});
}

void RegisterFocusedModeRedTool() {
    using C = DLFocusedModeRedToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLFocusedModeRedToolRuntimeParams");
    declared.property_readonly("MinimumSamplingDensity", &C::MinimumSamplingDensity)
        .property_readonly("MaximumSamplingDensity", &C::MaximumSamplingDensity)
        .property("SamplingDensity", &C::SamplingDensity, &C::setSamplingDensity)
        .property("UpperThreshold", &C::UpperThreshold, &C::setUpperThreshold)
        .property("LowerThreshold", &C::LowerThreshold, &C::setLowerThreshold);
    AddConstReferenceSetterProperty(declared, "RegionFilter", &C::RegionFilter,
                                    &C::setRegionFilter);
    declared.property("Iterations", &C::Iterations, &C::setIterations)
        .property("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics);
    ChainFlagConstants(declared, {{"SfLowerThreshold", &C::SfLowerThreshold},
                                  {"SfUpperThreshold", &C::SfUpperThreshold},
                                  {"SfRegionFilter", &C::SfRegionFilter},
                                  {"SfIterations", &C::SfIterations},
                                  {"SfSamplingDensity", &C::SfSamplingDensity},
                                  {"SfShowGraphics", &C::SfShowGraphics}});
    RegisterConverters<C>(ToolBases{});
}

void RegisterHdmRedTool() {
    using C = DLHdmRedToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLHdmRedToolRuntimeParams");
    declared.property("UpperThreshold", &C::UpperThreshold, &C::setUpperThreshold)
        .property("LowerThreshold", &C::LowerThreshold, &C::setLowerThreshold);
    AddConstReferenceSetterProperty(declared, "RegionFilter", &C::RegionFilter,
                                    &C::setRegionFilter);
    declared.property("DownsamplingSize", &C::DownsamplingSize, &C::setDownsamplingSize)
        .property("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics);
    ChainFlagConstants(declared, {{"SfLowerThreshold", &C::SfLowerThreshold},
                                  {"SfUpperThreshold", &C::SfUpperThreshold},
                                  {"SfRegionFilter", &C::SfRegionFilter},
                                  {"SfDownsamplingSize", &C::SfDownsamplingSize},
                                  {"SfShowGraphics", &C::SfShowGraphics}});
    RegisterConverters<C>(ToolBases{});
}

void RegisterQuickRedTool() {
    using C = DLQuickRedToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLQuickRedToolRuntimeParams");
    declared.property("UpperThreshold", &C::UpperThreshold, &C::setUpperThreshold)
        .property("LowerThreshold", &C::LowerThreshold, &C::setLowerThreshold);
    AddConstReferenceSetterProperty(declared, "RegionFilter", &C::RegionFilter,
                                    &C::setRegionFilter);
    declared.property("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics);
    ChainFlagConstants(declared, {{"SfLowerThreshold", &C::SfLowerThreshold},
                                  {"SfUpperThreshold", &C::SfUpperThreshold},
                                  {"SfRegionFilter", &C::SfRegionFilter},
                                  {"SfShowGraphics", &C::SfShowGraphics}});
    RegisterConverters<C>(ToolBases{});
}

void RegisterFocusedModeGreenTool() {
    using C = DLFocusedModeGreenToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLFocusedModeGreenToolRuntimeParams");
    declared.property_readonly("MinimumSamplingDensity", &C::MinimumSamplingDensity)
        .property_readonly("MaximumSamplingDensity", &C::MaximumSamplingDensity)
        .property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property("SamplingDensity", &C::SamplingDensity, &C::setSamplingDensity)
        .property("Threshold", &C::Threshold, &C::setThreshold)
        .property("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics);
    ChainFlagConstants(declared, {{"SfThreshold", &C::SfThreshold},
                                  {"SfSamplingDensity", &C::SfSamplingDensity},
                                  {"SfShowGraphics", &C::SfShowGraphics}});
    RegisterConverters<C>(ToolBases{});
}

// The two green tools without sampling share the shape of their registration, not their class.
template <class C> void RegisterThresholdGreenTool(char const* className) {
    auto declared = DeclarePublicClass<C>(className);
    declared.property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property("Threshold", &C::Threshold, &C::setThreshold)
        .property("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics)
        .property("GenerateHeatmap", &C::GenerateHeatmap, &C::setGenerateHeatmap);
    ChainFlagConstants(declared, {{"SfThreshold", &C::SfThreshold},
                                  {"SfGenerateHeatmap", &C::SfGenerateHeatmap},
                                  {"SfShowGraphics", &C::SfShowGraphics}});
    RegisterConverters<C>(ToolBases{});
}

void RegisterBlueTool() {
    using C = DLBlueToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLBlueToolRuntimeParams");
    declared.property_readonly("MinimumSamplingDensity", &C::MinimumSamplingDensity)
        .property_readonly("MaximumSamplingDensity", &C::MaximumSamplingDensity)
        .property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property_readonly("MinimumPrecision", &C::MinimumPrecision)
        .property_readonly("MaximumPrecision", &C::MaximumPrecision)
        .property_readonly("Models", &C::Models)
        .property("SamplingDensity", &C::SamplingDensity, &C::setSamplingDensity)
        .property("Threshold", &C::Threshold, &C::setThreshold);
    AddConstReferenceSetterProperty(declared, "FeatureFilter", &C::FeatureFilter,
                                    &C::setFeatureFilter);
    declared.property("Precision", &C::Precision, &C::setPrecision)
        .property("FeatureSize", &C::FeatureSize, &C::setFeatureSize)
        .property("ShowFeatures", &C::ShowFeatures, &C::setShowFeatures)
        .property("ShowModels", &C::ShowModels, &C::setShowModels);
    ChainFlagConstants(declared, {{"SfThreshold", &C::SfThreshold},
                                  {"SfFeatureFilter", &C::SfFeatureFilter},
                                  {"SfFeatureSize", &C::SfFeatureSize},
                                  {"SfPrecision", &C::SfPrecision},
                                  {"SfSamplingDensity", &C::SfSamplingDensity},
                                  {"SfShowFeatures", &C::SfShowFeatures},
                                  {"SfShowModels", &C::SfShowModels}});
    RegisterConverters<C>(ToolBases{});
}

void RegisterBlueReadTool() {
    using C = DLBlueReadToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLBlueReadToolRuntimeParams");
    declared.property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property_readonly("MinimumPrecision", &C::MinimumPrecision)
        .property_readonly("MaximumPrecision", &C::MaximumPrecision)
        .property_readonly("Models", &C::Models)
        .property("Threshold", &C::Threshold, &C::setThreshold);
    AddConstReferenceSetterProperty(declared, "FeatureFilter", &C::FeatureFilter,
                                    &C::setFeatureFilter);
    declared.property("Precision", &C::Precision, &C::setPrecision)
        .property("FeatureSize", &C::FeatureSize, &C::setFeatureSize)
        .property("ShowFeatures", &C::ShowFeatures, &C::setShowFeatures)
        .property("ShowModels", &C::ShowModels, &C::setShowModels);
    ChainFlagConstants(declared, {{"SfThreshold", &C::SfThreshold},
                                  {"SfFeatureFilter", &C::SfFeatureFilter},
                                  {"SfFeatureSize", &C::SfFeatureSize},
                                  {"SfPrecision", &C::SfPrecision},
                                  {"SfShowFeatures", &C::SfShowFeatures},
                                  {"SfShowModels", &C::SfShowModels}});
    RegisterConverters<C>(ToolBases{});
}

void RegisterBlueModel() {
    using C = DLBlueModel;
    auto declared = DeclarePublicClass<C>("DLBlueModel", ClassType::BaseClass);
    declared.property_readonly("Name", &C::Name).property("Enable", &C::Enable, &C::setEnable);
    ChainFlagConstants(declared, {{"SfEnable", &C::SfEnable}});
    RegisterConverters<C>(ChangedEventBases{});
}

void RegisterBlueNodeModel() {
    using C = DLBlueNodeModel;
    auto declared = DeclarePublicClass<C>("DLBlueNodeModel");
    declared.property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property("Occurrences", &C::Occurrences, &C::setOccurrences)
        .property("Threshold", &C::Threshold, &C::setThreshold);
    ChainFlagConstants(declared,
                       {{"SfThreshold", &C::SfThreshold}, {"SfOccurrences", &C::SfOccurrences}});
    RegisterConverters<C>(ModelBases{});
}

void RegisterBlueLayoutModel() {
    DeclarePublicClass<DLBlueLayoutModel>("DLBlueLayoutModel");
    RegisterConverters<DLBlueLayoutModel>(ModelBases{});
}

void RegisterBlueStringModel() {
    using C = DLBlueStringModel;
    auto declared = DeclarePublicClass<C>("DLBlueStringModel");
    declared.property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property("MinimumLength", &C::MinimumLength, &C::setMinimumLength)
        .property("Threshold", &C::Threshold, &C::setThreshold);
    ChainFlagConstants(
        declared, {{"SfThreshold", &C::SfThreshold}, {"SfMinimumLength", &C::SfMinimumLength}});
    RegisterConverters<C>(ModelBases{});
}

void RegisterBlueRegexModel() {
    using C = DLBlueRegexModel;
    auto declared = DeclarePublicClass<C>("DLBlueRegexModel");
    declared.property_readonly("MinimumThreshold", &C::MinimumThreshold)
        .property_readonly("MaximumThreshold", &C::MaximumThreshold)
        .property("RegexExpression", &C::RegexExpression, &C::setRegexExpression)
        .property("Threshold", &C::Threshold, &C::setThreshold);
    ChainFlagConstants(
        declared, {{"SfThreshold", &C::SfThreshold}, {"SfRegexExpression", &C::SfRegexExpression}});
    RegisterConverters<C>(ModelBases{});
}

} // namespace
} // namespace Tavrin::Vision::DeepLearning::Reflection

TAVRIN_REGISTRATION(ToolParameterReflection) {
    using namespace Tavrin::Vision::DeepLearning;
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    RegisterToolRuntimeParams();
    RegisterFocusedModeRedTool();
    RegisterHdmRedTool();
    RegisterQuickRedTool();
    RegisterFocusedModeGreenTool();
    RegisterThresholdGreenTool<DLHdmGreenToolRuntimeParams>("DLHdmGreenToolRuntimeParams");
    RegisterThresholdGreenTool<DLQuickGreenToolRuntimeParams>("DLQuickGreenToolRuntimeParams");
    RegisterBlueTool();
    RegisterBlueReadTool();
    RegisterBlueModel();
    RegisterBlueNodeModel();
    RegisterBlueLayoutModel();
    RegisterBlueStringModel();
    RegisterBlueRegexModel();
}
