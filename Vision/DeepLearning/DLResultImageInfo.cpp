#include "Vision/DeepLearning/DLResultImageInfo.h"

namespace Tavrin::Vision::DeepLearning {

DLResultImageInfo::DLResultImageInfo(ObjectCreateAccessToken const&, int imageWidth,
                                     int imageHeight, int channels, int depth)
    : imageWidth_(imageWidth)
    , imageHeight_(imageHeight)
    , channels_(channels)
    , depth_(depth) {}

} // namespace Tavrin::Vision::DeepLearning
