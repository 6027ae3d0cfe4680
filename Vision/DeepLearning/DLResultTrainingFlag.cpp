#include "Vision/DeepLearning/DLResultTrainingFlag.h"

namespace Tavrin::Vision::DeepLearning {

DLResultTrainingFlag::DLResultTrainingFlag(ObjectCreateAccessToken const&, bool value, bool manual)
    : value_(value)
    , manual_(manual) {}

} // namespace Tavrin::Vision::DeepLearning
