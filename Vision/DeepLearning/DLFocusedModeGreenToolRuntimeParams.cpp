#include "Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

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

ParameterTable<DLFocusedModeGreenToolRuntimeParams> const&
DLFocusedModeGreenToolRuntimeParams::Parameters() {
    using C = DLFocusedModeGreenToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        Engine<RealText>("SamplingDensity", ParameterPaths::FocusedSamplingDensity,
                         &C::samplingDensity_, &C::SamplingDensity, &C::setSamplingDensity)
            .Bounded("MinimumSamplingDensity", &C::MinimumSamplingDensity, "MaximumSamplingDensity",
                     &C::MaximumSamplingDensity),
        Engine<RealText>("Threshold", ParameterPaths::FocusedGreenThreshold, &C::threshold_,
                         &C::Threshold, &C::setThreshold)
            .Bounded("MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                     &C::MaximumThreshold),
        Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics));
    return table;
}

ParameterSet<DLToolRuntimeParams> const&
DLFocusedModeGreenToolRuntimeParams::OwnParameters() const {
    return Parameters();
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
