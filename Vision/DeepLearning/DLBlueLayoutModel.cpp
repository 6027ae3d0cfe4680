#include "Vision/DeepLearning/DLBlueLayoutModel.h"

namespace Tavrin::Vision::DeepLearning {

template <class Archive> void DLBlueLayoutModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueLayoutModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueLayoutModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueLayoutModel,
                               "Tavrin::Vision::DeepLearning::DLBlueLayoutModel")
