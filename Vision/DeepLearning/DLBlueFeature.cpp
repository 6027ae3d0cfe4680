#include "Vision/DeepLearning/DLBlueFeature.h"

namespace Tavrin::Vision::DeepLearning {

DLBlueFeature::DLBlueFeature(ObjectCreateAccessToken const&, std::string id,
                             std::shared_ptr<RectangleAffine> rectangle, double score,
                             std::string covers)
    : id_(std::move(id))
    , rectangle_(std::move(rectangle))
    , score_(score)
    , covers_(std::move(covers)) {}

} // namespace Tavrin::Vision::DeepLearning
