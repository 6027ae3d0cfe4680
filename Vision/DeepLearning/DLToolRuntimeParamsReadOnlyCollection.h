#pragma once

#include <memory>
#include <vector>

#include <Vision/Core/ReadOnlyCollectionBase.h>
#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

namespace Private {
class DeepLearningAccess;
}

// The child tools of a tool or the top-level tools of a stream, in catalogue order.
class DLToolRuntimeParamsReadOnlyCollection
    : public Vision::Implementation::ReadOnlyCollectionBase<DLToolRuntimeParamsPtr> {
    TAVRIN_READ_ONLY_COLLECTION(DLToolRuntimeParamsReadOnlyCollection, DLToolRuntimeParamsPtr,
                                std::vector<DLToolRuntimeParamsPtr>,
                                "DLToolRuntimeParamsReadOnlyCollection::load")
    friend class Private::DeepLearningAccess;
};

using DLToolRuntimeParamsReadOnlyCollectionPtr =
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLToolRuntimeParamsReadOnlyCollection, 1)
