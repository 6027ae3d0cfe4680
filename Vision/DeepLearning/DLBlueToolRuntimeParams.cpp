#include "Vision/DeepLearning/DLBlueToolRuntimeParams.h"

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/BlueToolSupport.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLBlueToolRuntimeParams::DLBlueToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLBlueToolRuntimeParams::DLBlueToolRuntimeParams() = default;

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

void DLBlueToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    samplingDensity_ = ParseReal(access->GetParameter(*this, BluePaths::SamplingDensity));
    threshold_ = ParseReal(access->GetParameter(*this, BluePaths::Threshold));
    featureFilter_ = access->GetParameter(*this, BluePaths::FeatureFilter);
    precision_ = ParseReal(access->GetParameter(*this, BluePaths::Precision));
    featureSize_ = DeepLearningAccess::ParseVector2(
        access->GetParameter(*this, BluePaths::FeatureSize), FeatureSizeDelimiter);
    models_ = access->LoadModels(shared_from_this());
}

void DLBlueToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    access->SetParameter(*this, BluePaths::SamplingDensity, FormatReal(samplingDensity_).c_str());
    access->SetParameter(*this, BluePaths::Threshold, FormatReal(threshold_).c_str());
    access->SetParameter(*this, BluePaths::FeatureFilter, featureFilter_.c_str());
    access->SetParameter(*this, BluePaths::Precision, FormatReal(precision_).c_str());
    access->SetParameter(*this, BluePaths::FeatureSize, FormatFeatureSize(*featureSize_).c_str());
    ApplyModels(models_.get());
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
