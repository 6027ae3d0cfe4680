#include <Vision/DeepLearning/DeepLearning.h>

#include "engine/ParameterTable.h"
#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

using Private::ParameterTables;
template <class C> using BasesOf = WithNearestBase<Private::RootOf<C>, ChangedEventBases>;

// A tool or model class: its table's properties, then its change flags as the class lists them.
template <class C>
void RegisterParameterClass(char const* className, std::initializer_list<FlagConstant> flags) {
    auto declared = DeclarePublicClass<C>(className);
    ParameterTables::Of<C>().Declare(declared);
    ChainFlagConstants(declared, flags);
    RegisterConverters<C>(BasesOf<C>{});
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
                                        {"SfShowGraphics", &FocusedRed::SfShowGraphics}});
    using HdmRed = DLHdmRedToolRuntimeParams;
    RegisterParameterClass<HdmRed>("DLHdmRedToolRuntimeParams",
                                   {{"SfLowerThreshold", &HdmRed::SfLowerThreshold},
                                    {"SfUpperThreshold", &HdmRed::SfUpperThreshold},
                                    {"SfRegionFilter", &HdmRed::SfRegionFilter},
                                    {"SfDownsamplingSize", &HdmRed::SfDownsamplingSize},
                                    {"SfShowGraphics", &HdmRed::SfShowGraphics}});
    using QuickRed = DLQuickRedToolRuntimeParams;
    RegisterParameterClass<QuickRed>("DLQuickRedToolRuntimeParams",
                                     {{"SfLowerThreshold", &QuickRed::SfLowerThreshold},
                                      {"SfUpperThreshold", &QuickRed::SfUpperThreshold},
                                      {"SfRegionFilter", &QuickRed::SfRegionFilter},
                                      {"SfShowGraphics", &QuickRed::SfShowGraphics}});
    using FocusedGreen = DLFocusedModeGreenToolRuntimeParams;
    RegisterParameterClass<FocusedGreen>("DLFocusedModeGreenToolRuntimeParams",
                                         {{"SfThreshold", &FocusedGreen::SfThreshold},
                                          {"SfSamplingDensity", &FocusedGreen::SfSamplingDensity},
                                          {"SfShowGraphics", &FocusedGreen::SfShowGraphics}});
    using HdmGreen = DLHdmGreenToolRuntimeParams;
    RegisterParameterClass<HdmGreen>("DLHdmGreenToolRuntimeParams",
                                     {{"SfThreshold", &HdmGreen::SfThreshold},
                                      {"SfGenerateHeatmap", &HdmGreen::SfGenerateHeatmap},
                                      {"SfShowGraphics", &HdmGreen::SfShowGraphics}});
    using QuickGreen = DLQuickGreenToolRuntimeParams;
    RegisterParameterClass<QuickGreen>("DLQuickGreenToolRuntimeParams",
                                       {{"SfThreshold", &QuickGreen::SfThreshold},
                                        {"SfGenerateHeatmap", &QuickGreen::SfGenerateHeatmap},
                                        {"SfShowGraphics", &QuickGreen::SfShowGraphics}});
    using Blue = DLBlueToolRuntimeParams;
    RegisterParameterClass<Blue>("DLBlueToolRuntimeParams",
                                 {{"SfThreshold", &Blue::SfThreshold},
                                  {"SfFeatureFilter", &Blue::SfFeatureFilter},
                                  {"SfFeatureSize", &Blue::SfFeatureSize},
                                  {"SfPrecision", &Blue::SfPrecision},
                                  {"SfSamplingDensity", &Blue::SfSamplingDensity},
                                  {"SfShowFeatures", &Blue::SfShowFeatures},
                                  {"SfShowModels", &Blue::SfShowModels}});
    using BlueRead = DLBlueReadToolRuntimeParams;
    RegisterParameterClass<BlueRead>("DLBlueReadToolRuntimeParams",
                                     {{"SfThreshold", &BlueRead::SfThreshold},
                                      {"SfFeatureFilter", &BlueRead::SfFeatureFilter},
                                      {"SfFeatureSize", &BlueRead::SfFeatureSize},
                                      {"SfPrecision", &BlueRead::SfPrecision},
                                      {"SfShowFeatures", &BlueRead::SfShowFeatures},
                                      {"SfShowModels", &BlueRead::SfShowModels}});
}

void RegisterModelClasses() {
    RegisterParameterClass<DLBlueNodeModel>("DLBlueNodeModel",
                                            {{"SfThreshold", &DLBlueNodeModel::SfThreshold},
                                             {"SfOccurrences", &DLBlueNodeModel::SfOccurrences}});
    DeclarePublicClass<DLBlueLayoutModel>("DLBlueLayoutModel");
    RegisterConverters<DLBlueLayoutModel>(BasesOf<DLBlueLayoutModel>{});
    RegisterParameterClass<DLBlueStringModel>(
        "DLBlueStringModel", {{"SfThreshold", &DLBlueStringModel::SfThreshold},
                              {"SfMinimumLength", &DLBlueStringModel::SfMinimumLength}});
    RegisterParameterClass<DLBlueRegexModel>(
        "DLBlueRegexModel", {{"SfThreshold", &DLBlueRegexModel::SfThreshold},
                             {"SfRegexExpression", &DLBlueRegexModel::SfRegexExpression}});
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
