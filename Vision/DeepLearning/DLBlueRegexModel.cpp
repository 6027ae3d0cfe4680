#include "Vision/DeepLearning/DLBlueRegexModel.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

namespace {
char const* const ThresholdKey = "threshold";
char const* const RegexExpressionKey = "regex/regex";
} // namespace

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
    threshold_ = ParseReal(GetModelParameter(*access, ThresholdKey));
    regexExpression_ = GetModelParameter(*access, RegexExpressionKey);
}

void DLBlueRegexModel::ApplyRuntimeParameters() {
    DLBlueModel::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    SetModelParameter(*access, ThresholdKey, FormatReal(threshold_));
    SetModelParameter(*access, RegexExpressionKey, regexExpression_);
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
