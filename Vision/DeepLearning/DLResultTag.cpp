#include "Vision/DeepLearning/DLResultTag.h"

namespace Tavrin::Vision::DeepLearning {

DLResultTag::DLResultTag(ObjectCreateAccessToken const&, std::string name, double score)
    : name_(std::move(name))
    , score_(score) {}

} // namespace Tavrin::Vision::DeepLearning
