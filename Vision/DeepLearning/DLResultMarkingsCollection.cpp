#include "Vision/DeepLearning/DLResultMarkingsCollection.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMarkingsCollection::DLResultMarkingsCollection(
    ObjectCreateAccessToken const&,
    std::shared_ptr<DLResultMarkingReadOnlyCollection> resultMarking)
    : resultMarking_(std::move(resultMarking)) {}

} // namespace Tavrin::Vision::DeepLearning
