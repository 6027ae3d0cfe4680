#include "Vision/DeepLearning/DLBlueNodeModel.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLBlueNodeModel::DLBlueNodeModel(ObjectCreateAccessToken const& token,
                                 std::shared_ptr<DLToolRuntimeParams> tool, std::string name)
    : DLBlueModel(token, std::move(tool), std::move(name)) {}

DLBlueNodeModel::DLBlueNodeModel() = default;

void DLBlueNodeModel::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueNodeModel::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueNodeModel::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueNodeModel::setOccurrences(int value) {
    if (StoreIfChanged(occurrences_, value))
        OnChanged_(SfOccurrences);
}

void DLBlueNodeModel::FinalConstruct() {
    DLBlueModel::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    threshold_ = ParseReal(GetModelParameter(*access, ParameterPaths::ModelThreshold));
    occurrences_ = ParseInteger(GetModelParameter(*access, ParameterPaths::NodeOccurrences));
}

void DLBlueNodeModel::ApplyRuntimeParameters() {
    DLBlueModel::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    SetModelParameter(*access, ParameterPaths::ModelThreshold, FormatReal(threshold_));
    SetModelParameter(*access, ParameterPaths::NodeOccurrences, FormatInteger(occurrences_));
}

template <class Archive> void DLBlueNodeModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLBlueNodeModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this), threshold_, occurrences_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueNodeModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueNodeModel,
                               "Tavrin::Vision::DeepLearning::DLBlueNodeModel")
