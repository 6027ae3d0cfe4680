#include "Vision/DeepLearning/DLBlueReadToolRuntimeParams.h"

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

void DLBlueReadToolRuntimeParams::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueReadToolRuntimeParams::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueReadToolRuntimeParams::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueReadToolRuntimeParams::setFeatureFilter(std::string const& value) {
    if (StoreIfChanged(featureFilter_, value))
        OnChanged_(SfFeatureFilter);
}

void DLBlueReadToolRuntimeParams::setPrecision(double value) {
    if (StoreInRange(precision_, value, PrecisionRange))
        OnChanged_(SfPrecision);
}

double DLBlueReadToolRuntimeParams::MinimumPrecision() const {
    return PrecisionRange.minimum;
}

double DLBlueReadToolRuntimeParams::MaximumPrecision() const {
    return PrecisionRange.maximum;
}

void DLBlueReadToolRuntimeParams::setFeatureSize(Vect2Ptr value) {
    if (StoreFeatureSize(featureSize_, std::move(value)))
        OnChanged_(SfFeatureSize);
}

void DLBlueReadToolRuntimeParams::setShowFeatures(bool value) {
    if (StoreIfChanged(showFeatures_, value))
        OnChanged_(SfShowFeatures | SfGraphicsSettings);
}

void DLBlueReadToolRuntimeParams::setShowModels(bool value) {
    if (StoreIfChanged(showModels_, value))
        OnChanged_(SfShowModels | SfGraphicsSettings);
}

ParameterTable<DLBlueReadToolRuntimeParams> const& DLBlueReadToolRuntimeParams::Parameters() {
    using C = DLBlueReadToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
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

ParameterSet<DLToolRuntimeParams> const& DLBlueReadToolRuntimeParams::OwnParameters() const {
    return Parameters();
}

template <class Archive>
void DLBlueReadToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueReadToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), threshold_, featureFilter_, precision_,
            featureSize_, models_, showFeatures_, showModels_);
    if constexpr (Archive::is_loading::value)
        AttachModels(models_.get(), shared_from_this());
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueReadToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueReadToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLBlueReadToolRuntimeParams")
