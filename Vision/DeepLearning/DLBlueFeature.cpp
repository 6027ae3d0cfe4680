#include "Vision/DeepLearning/DLBlueFeature.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLBlueFeature::DLBlueFeature(ObjectCreateAccessToken const&, std::string id,
                             std::shared_ptr<RectangleAffine> rectangle, double score,
                             std::string covers)
    : id_(std::move(id))
    , rectangle_(std::move(rectangle))
    , score_(score)
    , covers_(std::move(covers)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLBlueFeature, cereal::virtual_base_class<ShareableBase>,
                          "DLBlueFeature::serialize()", id_, rectangle_, score_, covers_)
