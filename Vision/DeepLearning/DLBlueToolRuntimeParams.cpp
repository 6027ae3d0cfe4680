#include "Vision/DeepLearning/DLBlueToolRuntimeParams.h"

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

void DLBlueToolRuntimeParams::setSamplingDensity(double value) {
    if (StoreInRange(samplingDensity_, value, SamplingDensityRange))
        OnChanged_(SfSamplingDensity);
}

double DLBlueToolRuntimeParams::MinimumSamplingDensity() const {
    return SamplingDensityRange.minimum;
}

double DLBlueToolRuntimeParams::MaximumSamplingDensity() const {
    return SamplingDensityRange.maximum;
}

void DLBlueToolRuntimeParams::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueToolRuntimeParams::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueToolRuntimeParams::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueToolRuntimeParams::setFeatureFilter(std::string const& value) {
    if (StoreIfChanged(featureFilter_, value))
        OnChanged_(SfFeatureFilter);
}

void DLBlueToolRuntimeParams::setPrecision(double value) {
    if (StoreInRange(precision_, value, PrecisionRange))
        OnChanged_(SfPrecision);
}

double DLBlueToolRuntimeParams::MinimumPrecision() const {
    return PrecisionRange.minimum;
}

double DLBlueToolRuntimeParams::MaximumPrecision() const {
    return PrecisionRange.maximum;
}

void DLBlueToolRuntimeParams::setFeatureSize(Vect2Ptr value) {
    if (StoreFeatureSize(featureSize_, std::move(value)))
        OnChanged_(SfFeatureSize);
}

void DLBlueToolRuntimeParams::setShowFeatures(bool value) {
    if (StoreIfChanged(showFeatures_, value))
        OnChanged_(SfShowFeatures | SfGraphicsSettings);
}

void DLBlueToolRuntimeParams::setShowModels(bool value) {
    if (StoreIfChanged(showModels_, value))
        OnChanged_(SfShowModels | SfGraphicsSettings);
}

ParameterTable<DLBlueToolRuntimeParams> const& DLBlueToolRuntimeParams::Parameters() {
    using C = DLBlueToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        Engine<RealText>("SamplingDensity", BluePaths::SamplingDensity, &C::samplingDensity_,
                         &C::SamplingDensity, &C::setSamplingDensity)
            .Bounded("MinimumSamplingDensity", &C::MinimumSamplingDensity, "MaximumSamplingDensity",
                     &C::MaximumSamplingDensity),
        Engine<RealText>("Threshold", BluePaths::Threshold, &C::threshold_, &C::Threshold,
                         &C::setThreshold)
            .Bounded("MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                     &C::MaximumThreshold),
        Engine<PlainText>("FeatureFilter", BluePaths::FeatureFilter, &C::featureFilter_,
                          &C::FeatureFilter, &C::setFeatureFilter),
        Engine<RealText>("Precision", BluePaths::Precision, &C::precision_, &C::Precision,
                         &C::setPrecision)
            .Bounded("MinimumPrecision", &C::MinimumPrecision, "MaximumPrecision",
                     &C::MaximumPrecision),
        Engine<FeatureSizeText>("FeatureSize", BluePaths::FeatureSize, &C::featureSize_,
                                &C::FeatureSize, &C::setFeatureSize),
        ModelList(&C::models_), Setting("ShowFeatures", &C::ShowFeatures, &C::setShowFeatures),
        Setting("ShowModels", &C::ShowModels, &C::setShowModels));
    return table;
}

ParameterSet<DLToolRuntimeParams> const& DLBlueToolRuntimeParams::OwnParameters() const {
    return Parameters();
}

template <class Archive>
void DLBlueToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), samplingDensity_, threshold_,
            featureFilter_, precision_, featureSize_, models_, showFeatures_, showModels_);
    if constexpr (Archive::is_loading::value)
        AttachModels(models_.get(), shared_from_this());
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLBlueToolRuntimeParams")
