#pragma once

#include <memory>

#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// The engine's description of the image it processed for one tool.
class DLResultImageInfo : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultImageInfo)

    int ImageWidth() const { return imageWidth_; }
    int ImageHeight() const { return imageHeight_; }
    int Channels() const { return channels_; }
    int Depth() const { return depth_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultImageInfo() = default;
    DLResultImageInfo(ObjectCreateAccessToken const&, int imageWidth, int imageHeight, int channels,
                      int depth);

    int imageWidth_ = 0;
    int imageHeight_ = 0;
    int channels_ = 0;
    int depth_ = 0;

    RTTR_ENABLE(ShareableBase)
};

using DLResultImageInfoPtr = std::shared_ptr<DLResultImageInfo>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultImageInfo, 1)
