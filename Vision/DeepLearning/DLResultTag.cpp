#include "Vision/DeepLearning/DLResultTag.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultTag::DLResultTag(ObjectCreateAccessToken const&, std::string name, double score)
    : name_(std::move(name))
    , score_(score) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultTag, cereal::virtual_base_class<ShareableBase>,
                          "DLResultTag::serialize()", name_, score_)
