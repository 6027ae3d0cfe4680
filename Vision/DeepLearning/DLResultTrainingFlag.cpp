#include "Vision/DeepLearning/DLResultTrainingFlag.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultTrainingFlag::DLResultTrainingFlag(ObjectCreateAccessToken const&, bool value, bool manual)
    : value_(value)
    , manual_(manual) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultTrainingFlag, cereal::virtual_base_class<ShareableBase>,
                          "DLResultTrainingFlag::serialize()", value_, manual_)
