#include "Vision/DeepLearning/DLBlueModel.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLBlueModel::DLBlueModel(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                         std::string name)
    : parent_(tool)
    , name_(std::move(name)) {}

DLBlueModel::DLBlueModel() = default;

DLBlueModel::~DLBlueModel() = default;

void DLBlueModel::setParent(std::shared_ptr<DLToolRuntimeParams> const& parent) {
    parent_ = parent;
}

void DLBlueModel::FinalConstruct() {
    ParameterTables::Read(*this);
}

void DLBlueModel::ApplyRuntimeParameters() {
    ParameterTables::Push(*this);
}

ParameterSet<DLBlueModel> const& DLBlueModel::Parameters() {
    using C = DLBlueModel;
    static auto const table = MakeParameterTable<C>(
        Engine("Enable", ParameterPaths::ModelEnable, &C::enable_, &C::Enable, &C::setEnable));
    return table;
}

template <class Archive> void DLBlueModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLBlueModel::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), name_, enable_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueModel,
                               "Tavrin::Vision::DeepLearning::DLBlueModel")
