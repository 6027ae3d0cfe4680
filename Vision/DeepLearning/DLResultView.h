#pragma once

#include <memory>
#include <string>

#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>
#include <Vision/DeepLearning/DLResultResourceReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

class DLResultRed;
class DLResultBlue;
class DLResultGreen;

// One rectangular part of the image as a tool saw it, with at most one result of each kind.
// Region and poses are in the space of the image given to the run.
class DLResultView : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultView)

    std::shared_ptr<RectangleAffine> Region() const { return region_; }
    std::shared_ptr<Transform2DLinear> RefPose() const { return refPose_; }
    std::shared_ptr<Transform2DLinear> Pose() const { return pose_; }
    std::string Group() const { return group_; }
    std::shared_ptr<DLResultRed> ResultRed() const { return red_; }
    std::shared_ptr<DLResultBlue> ResultBlue() const { return blue_; }
    std::shared_ptr<DLResultGreen> ResultGreen() const { return green_; }
    std::shared_ptr<DLResultResourceReadOnlyCollection> Resources() const { return resources_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultView() = default;
    DLResultView(ObjectCreateAccessToken const&, std::shared_ptr<RectangleAffine> region,
                 std::shared_ptr<Transform2DLinear> refPose,
                 std::shared_ptr<Transform2DLinear> pose, std::string group,
                 std::shared_ptr<DLResultRed> red, std::shared_ptr<DLResultBlue> blue,
                 std::shared_ptr<DLResultGreen> green,
                 std::shared_ptr<DLResultResourceReadOnlyCollection> resources);

    std::shared_ptr<RectangleAffine> region_;
    std::shared_ptr<Transform2DLinear> refPose_;
    std::shared_ptr<Transform2DLinear> pose_;
    std::string group_;
    std::shared_ptr<DLResultRed> red_;
    std::shared_ptr<DLResultBlue> blue_;
    std::shared_ptr<DLResultGreen> green_;
    std::shared_ptr<DLResultResourceReadOnlyCollection> resources_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultViewPtr = std::shared_ptr<DLResultView>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultView, 1)
