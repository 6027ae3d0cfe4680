#include "Vision/DeepLearning/DLResultBlueMatchRegion.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultBlueMatchRegion::DLResultBlueMatchRegion(
    ObjectCreateAccessToken const&, std::string name, std::shared_ptr<RectangleAffine> rectangle,
    int occurrences, std::shared_ptr<DLBlueFeatureReadOnlyCollection> features)
    : name_(std::move(name))
    , rectangle_(std::move(rectangle))
    , occurrences_(occurrences)
    , features_(std::move(features)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultBlueMatchRegion, cereal::virtual_base_class<ShareableBase>,
                          "DLResultBlueMatchRegion::serialize()", name_, rectangle_, occurrences_,
                          features_)
