#include "Vision/DeepLearning/DLResultScore.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultScore::DLResultScore(ObjectCreateAccessToken const&, std::string name, double score)
    : name_(std::move(name))
    , score_(score) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultScore, cereal::virtual_base_class<ShareableBase>,
                          "DLResultScore::serialize()", name_, score_)
