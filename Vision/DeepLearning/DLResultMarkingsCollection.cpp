#include "Vision/DeepLearning/DLResultMarkingsCollection.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMarkingsCollection::DLResultMarkingsCollection(
    ObjectCreateAccessToken const&,
    std::shared_ptr<DLResultMarkingReadOnlyCollection> resultMarking)
    : resultMarking_(std::move(resultMarking)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMarkingsCollection, cereal::virtual_base_class<ShareableBase>,
                          "DLResultMarkingsCollection::serialize()", resultMarking_)
