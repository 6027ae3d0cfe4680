#include "Vision/DeepLearning/DLResultImageInfo.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultImageInfo::DLResultImageInfo(ObjectCreateAccessToken const&, int imageWidth,
                                     int imageHeight, int channels, int depth)
    : imageWidth_(imageWidth)
    , imageHeight_(imageHeight)
    , channels_(channels)
    , depth_(depth) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultImageInfo, cereal::virtual_base_class<ShareableBase>,
                          "DLResultImageInfo::serialize()", imageWidth_, imageHeight_, channels_,
                          depth_)
