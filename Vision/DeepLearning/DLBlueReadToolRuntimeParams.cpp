#include "Vision/DeepLearning/DLBlueReadToolRuntimeParams.h"

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/BlueToolSupport.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLBlueReadToolRuntimeParams::DLBlueReadToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLBlueReadToolRuntimeParams::DLBlueReadToolRuntimeParams() = default;

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

void DLBlueReadToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    threshold_ = ParseReal(access->GetParameter(*this, BluePaths::Threshold));
    featureFilter_ = access->GetParameter(*this, BluePaths::FeatureFilter);
    precision_ = ParseReal(access->GetParameter(*this, BluePaths::Precision));
    featureSize_ = DeepLearningAccess::ParseVector2(
        access->GetParameter(*this, BluePaths::FeatureSize), FeatureSizeDelimiter);
    models_ = access->LoadModels(shared_from_this());
}

void DLBlueReadToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    access->SetParameter(*this, BluePaths::Threshold, FormatReal(threshold_).c_str());
    access->SetParameter(*this, BluePaths::FeatureFilter, featureFilter_.c_str());
    access->SetParameter(*this, BluePaths::Precision, FormatReal(precision_).c_str());
    access->SetParameter(*this, BluePaths::FeatureSize, FormatFeatureSize(*featureSize_).c_str());
    ApplyModels(models_.get());
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
