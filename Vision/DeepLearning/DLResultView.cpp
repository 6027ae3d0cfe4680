#include "Vision/DeepLearning/DLResultView.h"

#include "Vision/DeepLearning/DLResultBlue.h"
#include "Vision/DeepLearning/DLResultGreen.h"
#include "Vision/DeepLearning/DLResultRed.h"
#include "persistence/ResultArchive.h"

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

TAVRIN_DL_ARCHIVED_RESULT(DLResultView, cereal::virtual_base_class<ShareableBase>,
                          "DLResultView::serialize()", region_, refPose_, pose_, group_, red_,
                          blue_, green_, resources_)
