#include "Vision/DeepLearning/DLResultMatch.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMatch::DLResultMatch(ObjectCreateAccessToken const&, std::string const& modelId,
                             std::string const& modelType, double score)
    : modelId_(modelId)
    , modelType_(modelType)
    , score_(score) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMatch, cereal::virtual_base_class<ShareableBase>,
                          "DLResultMatch::serialize()", modelId_, modelType_, score_)
