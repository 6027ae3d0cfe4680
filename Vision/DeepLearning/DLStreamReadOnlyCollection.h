#pragma once

#include <memory>
#include <vector>

#include <Vision/Core/ReadOnlyCollectionBase.h>
#include <Vision/DeepLearning/DLStream.h>

namespace Tavrin::Vision::DeepLearning {

namespace Private {
class DeepLearningAccess;
}

// The streams of a workspace, in catalogue order.
class DLStreamReadOnlyCollection
    : public Vision::Implementation::ReadOnlyCollectionBase<DLStreamPtr> {
    TAVRIN_READ_ONLY_COLLECTION(DLStreamReadOnlyCollection, DLStreamPtr, std::vector<DLStreamPtr>,
                                "DLStreamReadOnlyCollection::load")
    friend class Private::DeepLearningAccess;
};

using DLStreamReadOnlyCollectionPtr = std::shared_ptr<DLStreamReadOnlyCollection>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLStreamReadOnlyCollection, 1)
