#pragma once

#include <memory>
#include <vector>

#include <Vision/Core/ReadOnlyCollectionBase.h>
#include <Vision/DeepLearning/DLBlueModel.h>

namespace Tavrin::Vision::DeepLearning {

namespace Private {
class DeepLearningAccess;
}

// The models of a blue tool, in catalogue order.
class DLBlueModelReadOnlyCollection
    : public Vision::Implementation::ReadOnlyCollectionBase<DLBlueModelPtr> {
    TAVRIN_READ_ONLY_COLLECTION(DLBlueModelReadOnlyCollection, DLBlueModelPtr,
                                std::vector<DLBlueModelPtr>,
                                "DLBlueModelReadOnlyCollection::serialize()")
    friend class Private::DeepLearningAccess;
};

using DLBlueModelReadOnlyCollectionPtr = std::shared_ptr<DLBlueModelReadOnlyCollection>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueModelReadOnlyCollection, 1)
