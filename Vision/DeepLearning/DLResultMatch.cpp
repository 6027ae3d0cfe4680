#include "Vision/DeepLearning/DLResultMatch.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMatch::DLResultMatch(ObjectCreateAccessToken const&, std::string const& modelId,
                             std::string const& modelType, double score)
    : modelId_(modelId)
    , modelType_(modelType)
    , score_(score) {}

} // namespace Tavrin::Vision::DeepLearning
