#include "Vision/DeepLearning/DLResultGreenLabel.h"

namespace Tavrin::Vision::DeepLearning {

DLResultGreenLabel::DLResultGreenLabel(ObjectCreateAccessToken const&,
                                       std::shared_ptr<DLResultTrainingFlag> flags,
                                       std::shared_ptr<DLResultTagReadOnlyCollection> tags)
    : flags_(std::move(flags))
    , tags_(std::move(tags)) {}

} // namespace Tavrin::Vision::DeepLearning
