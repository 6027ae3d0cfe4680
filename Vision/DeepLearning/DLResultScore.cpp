#include "Vision/DeepLearning/DLResultScore.h"

namespace Tavrin::Vision::DeepLearning {

DLResultScore::DLResultScore(ObjectCreateAccessToken const&, std::string name, double score)
    : name_(std::move(name))
    , score_(score) {}

} // namespace Tavrin::Vision::DeepLearning
