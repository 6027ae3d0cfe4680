#include "Vision/DeepLearning/DLResultGreenLabel.h"

#include "Vision/DeepLearning/DLResultTrainingFlag.h"
#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultGreenLabel::DLResultGreenLabel(ObjectCreateAccessToken const&,
                                       std::shared_ptr<DLResultTrainingFlag> flags,
                                       std::shared_ptr<DLResultTagReadOnlyCollection> tags)
    : flags_(std::move(flags))
    , tags_(std::move(tags)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultGreenLabel, cereal::virtual_base_class<ShareableBase>,
                          "DLResultGreenLabel::serialize()", flags_, tags_)
