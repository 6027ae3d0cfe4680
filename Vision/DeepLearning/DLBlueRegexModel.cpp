#include "Vision/DeepLearning/DLBlueRegexModel.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLBlueRegexModel::DLBlueRegexModel(ObjectCreateAccessToken const& token,
                                   std::shared_ptr<DLToolRuntimeParams> tool, std::string name)
    : DLBlueModel(token, std::move(tool), std::move(name)) {}

DLBlueRegexModel::DLBlueRegexModel() = default;

void DLBlueRegexModel::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueRegexModel::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueRegexModel::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueRegexModel::setRegexExpression(std::string value) {
    if (StoreIfChanged(regexExpression_, std::move(value)))
        OnChanged_(SfRegexExpression);
}

void DLBlueRegexModel::FinalConstruct() {
    DLBlueModel::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    threshold_ = ParseReal(GetModelParameter(*access, ParameterPaths::ModelThreshold));
    regexExpression_ = GetModelParameter(*access, ParameterPaths::RegexExpression);
}

void DLBlueRegexModel::ApplyRuntimeParameters() {
    DLBlueModel::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    SetModelParameter(*access, ParameterPaths::ModelThreshold, FormatReal(threshold_));
    SetModelParameter(*access, ParameterPaths::RegexExpression, regexExpression_);
}

template <class Archive> void DLBlueRegexModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueRegexModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this), threshold_, regexExpression_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueRegexModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueRegexModel,
                               "Tavrin::Vision::DeepLearning::DLBlueRegexModel")
