#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLBlueModel.h>

namespace Tavrin::Vision::DeepLearning {

// A blue model of the catalogue type "layout": only the enable switch of every model.
class DLBlueLayoutModel : public DLBlueModel {
public:
    TAVRIN_SHARED_FROM_THIS(DLBlueLayoutModel)

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;

    using DLBlueModel::DLBlueModel;
    DLBlueLayoutModel() = default;

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLBlueModel>(archive, version, "DLBlueLayoutModel::serialize()",
                                               this);
    }

    RTTR_ENABLE(DLBlueModel)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueLayoutModel, 1)
