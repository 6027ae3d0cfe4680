#include "Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

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

ParameterTable<DLFocusedModeRedToolRuntimeParams> const&
DLFocusedModeRedToolRuntimeParams::Parameters() {
    using C = DLFocusedModeRedToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        Engine<RealText>("SamplingDensity", ParameterPaths::FocusedSamplingDensity,
                         &C::samplingDensity_, &C::SamplingDensity, &C::setSamplingDensity)
            .Bounded("MinimumSamplingDensity", &C::MinimumSamplingDensity, "MaximumSamplingDensity",
                     &C::MaximumSamplingDensity),
        ThresholdPair(ParameterPaths::FocusedRedThreshold, &C::lowerThreshold_,
                      &C::upperThreshold_),
        Engine<PlainText>("RegionFilter", ParameterPaths::FocusedRedRegionFilter, &C::regionFilter_,
                          &C::RegionFilter, &C::setRegionFilter),
        Engine<IntegerText<unsigned int>>("Iterations", ParameterPaths::FocusedRedIterations,
                                          &C::iterations_, &C::Iterations, &C::setIterations),
        Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics));
    return table;
}

ParameterSet<DLToolRuntimeParams> const& DLFocusedModeRedToolRuntimeParams::OwnParameters() const {
    return Parameters();
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
