#include <Vision/DeepLearning/DeepLearning.h>

#include "engine/ParameterTable.h"
#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

using Private::ParameterTables;
using ToolBases = WithNearestBase<DLToolRuntimeParams, ChangedEventBases>;
using ModelBases = WithNearestBase<DLBlueModel, ChangedEventBases>;

// A tool or model class: its table's properties, then its change flags as the class lists them.
template <class C, class Bases>
void RegisterParameterClass(char const* className, std::initializer_list<FlagConstant> flags,
                            Bases bases) {
    auto declared = DeclarePublicClass<C>(className);
    ParameterTables::Of<C>().Declare(declared);
    ChainFlagConstants(declared, flags);
    RegisterConverters<C>(bases);
}

void RegisterToolRuntimeParams() {
    using C = DLToolRuntimeParams;
    auto declared = DeclarePublicClass<C>("DLToolRuntimeParams", ClassType::BaseClass);
    declared.property_readonly("Name", &C::Name)
        .property_readonly("Type", &C::Type)
        .property_readonly("Id", &C::Id)
        .property_readonly("ChildTools", &C::ChildTools);
    ParameterTables::Of<C>().Declare(declared);
    ChainFlagConstants(declared, {{"SfGraphicsSettings", &C::SfGraphicsSettings},
                                  {"SfShowRegion", &C::SfShowRegion},
                                  {"SfAddImageRecords", &C::SfAddImageRecords}});
    RegisterConverters<C>(ChangedEventBases{});
}

void RegisterBlueModel() {
    using C = DLBlueModel;
    auto declared = DeclarePublicClass<C>("DLBlueModel", ClassType::BaseClass);
    declared.property_readonly("Name", &C::Name);
    ParameterTables::Of<C>().Declare(declared);
    ChainFlagConstants(declared, {{"SfEnable", &C::SfEnable}});
    RegisterConverters<C>(ChangedEventBases{});
}

void RegisterToolClasses() {
    using FocusedRed = DLFocusedModeRedToolRuntimeParams;
    RegisterParameterClass<FocusedRed>("DLFocusedModeRedToolRuntimeParams",
                                       {{"SfLowerThreshold", &FocusedRed::SfLowerThreshold},
                                        {"SfUpperThreshold", &FocusedRed::SfUpperThreshold},
                                        {"SfRegionFilter", &FocusedRed::SfRegionFilter},
                                        {"SfIterations", &FocusedRed::SfIterations},
                                        {"SfSamplingDensity", &FocusedRed::SfSamplingDensity},
                                        {"SfShowGraphics", &FocusedRed::SfShowGraphics}},
                                       ToolBases{});
    using HdmRed = DLHdmRedToolRuntimeParams;
    RegisterParameterClass<HdmRed>("DLHdmRedToolRuntimeParams",
                                   {{"SfLowerThreshold", &HdmRed::SfLowerThreshold},
                                    {"SfUpperThreshold", &HdmRed::SfUpperThreshold},
                                    {"SfRegionFilter", &HdmRed::SfRegionFilter},
                                    {"SfDownsamplingSize", &HdmRed::SfDownsamplingSize},
                                    {"SfShowGraphics", &HdmRed::SfShowGraphics}},
                                   ToolBases{});
    using QuickRed = DLQuickRedToolRuntimeParams;
    RegisterParameterClass<QuickRed>("DLQuickRedToolRuntimeParams",
                                     {{"SfLowerThreshold", &QuickRed::SfLowerThreshold},
                                      {"SfUpperThreshold", &QuickRed::SfUpperThreshold},
                                      {"SfRegionFilter", &QuickRed::SfRegionFilter},
                                      {"SfShowGraphics", &QuickRed::SfShowGraphics}},
                                     ToolBases{});
    using FocusedGreen = DLFocusedModeGreenToolRuntimeParams;
    RegisterParameterClass<FocusedGreen>("DLFocusedModeGreenToolRuntimeParams",
                                         {{"SfThreshold", &FocusedGreen::SfThreshold},
                                          {"SfSamplingDensity", &FocusedGreen::SfSamplingDensity},
                                          {"SfShowGraphics", &FocusedGreen::SfShowGraphics}},
                                         ToolBases{});
    using HdmGreen = DLHdmGreenToolRuntimeParams;
    RegisterParameterClass<HdmGreen>("DLHdmGreenToolRuntimeParams",
                                     {{"SfThreshold", &HdmGreen::SfThreshold},
                                      {"SfGenerateHeatmap", &HdmGreen::SfGenerateHeatmap},
                                      {"SfShowGraphics", &HdmGreen::SfShowGraphics}},
                                     ToolBases{});
    using QuickGreen = DLQuickGreenToolRuntimeParams;
    RegisterParameterClass<QuickGreen>("DLQuickGreenToolRuntimeParams",
                                       {{"SfThreshold", &QuickGreen::SfThreshold},
                                        {"SfGenerateHeatmap", &QuickGreen::SfGenerateHeatmap},
                                        {"SfShowGraphics", &QuickGreen::SfShowGraphics}},
                                       ToolBases{});
    using Blue = DLBlueToolRuntimeParams;
    RegisterParameterClass<Blue>("DLBlueToolRuntimeParams",
                                 {{"SfThreshold", &Blue::SfThreshold},
                                  {"SfFeatureFilter", &Blue::SfFeatureFilter},
                                  {"SfFeatureSize", &Blue::SfFeatureSize},
                                  {"SfPrecision", &Blue::SfPrecision},
                                  {"SfSamplingDensity", &Blue::SfSamplingDensity},
                                  {"SfShowFeatures", &Blue::SfShowFeatures},
                                  {"SfShowModels", &Blue::SfShowModels}},
                                 ToolBases{});
    using BlueRead = DLBlueReadToolRuntimeParams;
    RegisterParameterClass<BlueRead>("DLBlueReadToolRuntimeParams",
                                     {{"SfThreshold", &BlueRead::SfThreshold},
                                      {"SfFeatureFilter", &BlueRead::SfFeatureFilter},
                                      {"SfFeatureSize", &BlueRead::SfFeatureSize},
                                      {"SfPrecision", &BlueRead::SfPrecision},
                                      {"SfShowFeatures", &BlueRead::SfShowFeatures},
                                      {"SfShowModels", &BlueRead::SfShowModels}},
                                     ToolBases{});
}

void RegisterModelClasses() {
    RegisterParameterClass<DLBlueNodeModel>("DLBlueNodeModel",
                                            {{"SfThreshold", &DLBlueNodeModel::SfThreshold},
                                             {"SfOccurrences", &DLBlueNodeModel::SfOccurrences}},
                                            ModelBases{});
    DeclarePublicClass<DLBlueLayoutModel>("DLBlueLayoutModel");
    RegisterConverters<DLBlueLayoutModel>(ModelBases{});
    RegisterParameterClass<DLBlueStringModel>(
        "DLBlueStringModel",
        {{"SfThreshold", &DLBlueStringModel::SfThreshold},
         {"SfMinimumLength", &DLBlueStringModel::SfMinimumLength}},
        ModelBases{});
    RegisterParameterClass<DLBlueRegexModel>(
        "DLBlueRegexModel",
        {{"SfThreshold", &DLBlueRegexModel::SfThreshold},
         {"SfRegexExpression", &DLBlueRegexModel::SfRegexExpression}},
        ModelBases{});
}

} // namespace
} // namespace Tavrin::Vision::DeepLearning::Reflection

TAVRIN_REGISTRATION(ToolParameterReflection) {
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    RegisterToolRuntimeParams();
    RegisterToolClasses();
    RegisterBlueModel();
    RegisterModelClasses();
}
