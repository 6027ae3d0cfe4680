#pragma once

#include <memory>

#include <Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// The decoded image element: the markings of every tool run on the image.
class DLResultMarkingsCollection : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMarkingsCollection)

    std::shared_ptr<DLResultMarkingReadOnlyCollection> ResultMarking() const {
        return resultMarking_;
    }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultMarkingsCollection() = default;
    DLResultMarkingsCollection(ObjectCreateAccessToken const&,
                               std::shared_ptr<DLResultMarkingReadOnlyCollection> resultMarking);

    std::shared_ptr<DLResultMarkingReadOnlyCollection> resultMarking_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultMarkingsCollectionPtr = std::shared_ptr<DLResultMarkingsCollection>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMarkingsCollection, 1)
