#include "Vision/DeepLearning/DLResultView.h"

namespace Tavrin::Vision::DeepLearning {

DLResultView::DLResultView(ObjectCreateAccessToken const&, std::shared_ptr<RectangleAffine> region,
                           std::shared_ptr<Transform2DLinear> refPose,
                           std::shared_ptr<Transform2DLinear> pose, std::string group,
                           std::shared_ptr<DLResultRed> red, std::shared_ptr<DLResultBlue> blue,
                           std::shared_ptr<DLResultGreen> green,
                           std::shared_ptr<DLResultResourceReadOnlyCollection> resources)
    : region_(std::move(region))
    , refPose_(std::move(refPose))
    , pose_(std::move(pose))
    , group_(std::move(group))
    , red_(std::move(red))
    , blue_(std::move(blue))
    , green_(std::move(green))
    , resources_(std::move(resources)) {}

} // namespace Tavrin::Vision::DeepLearning
