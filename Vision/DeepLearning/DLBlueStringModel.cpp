#include "Vision/DeepLearning/DLBlueStringModel.h"

#include <Vision/Core/Exceptions.h>

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLBlueStringModel::DLBlueStringModel(ObjectCreateAccessToken const& token,
                                     std::shared_ptr<DLToolRuntimeParams> tool, std::string name)
    : DLBlueModel(token, std::move(tool), std::move(name)) {}

DLBlueStringModel::DLBlueStringModel() = default;

void DLBlueStringModel::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueStringModel::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueStringModel::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueStringModel::setMinimumLength(int value) {
    if (value < 0)
        throw ArgumentException("MinimumLength must be non-negative");
    if (StoreIfChanged(minimumLength_, value))
        OnChanged_(SfMinimumLength);
}

void DLBlueStringModel::FinalConstruct() {
    DLBlueModel::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    threshold_ = ParseReal(GetModelParameter(*access, ParameterPaths::ModelThreshold));
    minimumLength_ = ParseInteger(GetModelParameter(*access, ParameterPaths::StringMinimumLength));
}

void DLBlueStringModel::ApplyRuntimeParameters() {
    DLBlueModel::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    SetModelParameter(*access, ParameterPaths::ModelThreshold, FormatReal(threshold_));
    SetModelParameter(*access, ParameterPaths::StringMinimumLength, FormatInteger(minimumLength_));
}

template <class Archive> void DLBlueStringModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueStringModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this), threshold_, minimumLength_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueStringModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueStringModel,
                               "Tavrin::Vision::DeepLearning::DLBlueStringModel")
