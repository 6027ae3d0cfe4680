#include "Vision/DeepLearning/DLBlueModel.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

namespace {
char const* const EnableKey = "enabled";
} // namespace

DLBlueModel::DLBlueModel(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                         std::string name)
    : parent_(tool)
    , name_(std::move(name)) {}

DLBlueModel::DLBlueModel() = default;

DLBlueModel::~DLBlueModel() = default;

void DLBlueModel::setEnable(bool value) {
    if (StoreIfChanged(enable_, value))
        OnChanged_(SfEnable);
}

void DLBlueModel::setParent(std::shared_ptr<DLToolRuntimeParams> const& parent) {
    parent_ = parent;
}

std::string DLBlueModel::getPropertyPath(std::string const& key) const {
    return "models/" + name_ + "/" + key;
}

char const* DLBlueModel::GetModelParameter(DeepLearningAccess& access, char const* key) const {
    return access.GetParameter(*parent_.lock(), getPropertyPath(key).c_str());
}

void DLBlueModel::SetModelParameter(DeepLearningAccess& access, char const* key,
                                    std::string const& value) const {
    access.SetParameter(*parent_.lock(), getPropertyPath(key).c_str(), value.c_str());
}

void DLBlueModel::FinalConstruct() {
    auto const access = DeepLearningAccess::Instance();
    enable_ = ParseBool(GetModelParameter(*access, EnableKey));
}

void DLBlueModel::ApplyRuntimeParameters() {
    auto const access = DeepLearningAccess::Instance();
    SetModelParameter(*access, EnableKey, FormatBool(enable_));
}

template <class Archive> void DLBlueModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLBlueModel::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), name_, enable_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueModel,
                               "Tavrin::Vision::DeepLearning::DLBlueModel")
