#include "Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLFocusedModeGreenToolRuntimeParams::DLFocusedModeGreenToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLFocusedModeGreenToolRuntimeParams::DLFocusedModeGreenToolRuntimeParams() = default;

void DLFocusedModeGreenToolRuntimeParams::setSamplingDensity(double value) {
    if (StoreInRange(samplingDensity_, value, SamplingDensityRange))
        OnChanged_(SfSamplingDensity);
}

double DLFocusedModeGreenToolRuntimeParams::MinimumSamplingDensity() const {
    return SamplingDensityRange.minimum;
}

double DLFocusedModeGreenToolRuntimeParams::MaximumSamplingDensity() const {
    return SamplingDensityRange.maximum;
}

void DLFocusedModeGreenToolRuntimeParams::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLFocusedModeGreenToolRuntimeParams::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLFocusedModeGreenToolRuntimeParams::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLFocusedModeGreenToolRuntimeParams::setShowGraphics(bool value) {
    if (StoreIfChanged(showGraphics_, value))
        OnChanged_(SfShowGraphics | SfGraphicsSettings);
}

void DLFocusedModeGreenToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    samplingDensity_ =
        ParseReal(access->GetParameter(*this, ParameterPaths::FocusedSamplingDensity));
    threshold_ = ParseReal(access->GetParameter(*this, ParameterPaths::FocusedGreenThreshold));
}

void DLFocusedModeGreenToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    access->SetParameter(*this, ParameterPaths::FocusedSamplingDensity,
                         FormatReal(samplingDensity_).c_str());
    access->SetParameter(*this, ParameterPaths::FocusedGreenThreshold,
                         FormatReal(threshold_).c_str());
}

template <class Archive>
void DLFocusedModeGreenToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(
        version, 1, "DLFocusedModeGreenToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), samplingDensity_, threshold_,
            showGraphics_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLFocusedModeGreenToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLFocusedModeGreenToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLFocusedModeGreenToolRuntimeParams")
