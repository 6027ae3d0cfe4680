#include "Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLFocusedModeRedToolRuntimeParams::DLFocusedModeRedToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLFocusedModeRedToolRuntimeParams::DLFocusedModeRedToolRuntimeParams() = default;

void DLFocusedModeRedToolRuntimeParams::setSamplingDensity(double value) {
    if (StoreInRange(samplingDensity_, value, SamplingDensityRange))
        OnChanged_(SfSamplingDensity);
}

double DLFocusedModeRedToolRuntimeParams::MinimumSamplingDensity() const {
    return SamplingDensityRange.minimum;
}

double DLFocusedModeRedToolRuntimeParams::MaximumSamplingDensity() const {
    return SamplingDensityRange.maximum;
}

void DLFocusedModeRedToolRuntimeParams::setUpperThreshold(double value) {
    if (StoreIfChanged(upperThreshold_, value))
        OnChanged_(SfUpperThreshold);
}

void DLFocusedModeRedToolRuntimeParams::setLowerThreshold(double value) {
    if (StoreIfChanged(lowerThreshold_, value))
        OnChanged_(SfLowerThreshold);
}

void DLFocusedModeRedToolRuntimeParams::setRegionFilter(std::string const& value) {
    if (StoreIfChanged(regionFilter_, value))
        OnChanged_(SfRegionFilter);
}

void DLFocusedModeRedToolRuntimeParams::setIterations(unsigned int value) {
    if (StoreIfChanged(iterations_, value))
        OnChanged_(SfIterations);
}

void DLFocusedModeRedToolRuntimeParams::setShowGraphics(bool value) {
    if (StoreIfChanged(showGraphics_, value))
        OnChanged_(SfShowGraphics | SfGraphicsSettings);
}

void DLFocusedModeRedToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    samplingDensity_ =
        ParseReal(access->GetParameter(*this, ParameterPaths::FocusedSamplingDensity));
    ParseThresholdText(access->GetParameter(*this, ParameterPaths::FocusedRedThreshold),
                       lowerThreshold_, upperThreshold_);
    regionFilter_ = access->GetParameter(*this, ParameterPaths::FocusedRedRegionFilter);
    iterations_ = static_cast<unsigned int>(
        ParseInteger(access->GetParameter(*this, ParameterPaths::FocusedRedIterations)));
}

void DLFocusedModeRedToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    access->SetParameter(*this, ParameterPaths::FocusedSamplingDensity,
                         FormatReal(samplingDensity_).c_str());
    access->SetParameter(*this, ParameterPaths::FocusedRedThreshold,
                         ComposeThresholdText(lowerThreshold_, upperThreshold_).c_str());
    access->SetParameter(*this, ParameterPaths::FocusedRedRegionFilter, regionFilter_.c_str());
    access->SetParameter(*this, ParameterPaths::FocusedRedIterations,
                         FormatInteger(iterations_).c_str());
}

template <class Archive>
void DLFocusedModeRedToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(
        version, 1, "DLFocusedModeRedToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), samplingDensity_, upperThreshold_,
            lowerThreshold_, regionFilter_, iterations_, showGraphics_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLFocusedModeRedToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLFocusedModeRedToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLFocusedModeRedToolRuntimeParams")
