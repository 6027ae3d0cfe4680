#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Transform2D.h>
#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatch.h>

namespace Tavrin::Vision::DeepLearning {

// A string read from the features.
class DLResultMatchString : public DLResultMatch {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMatchString)

    std::string MatchString() const { return matchString_; }
    std::shared_ptr<Transform2DLinear> Pose() const { return pose_; }
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> Features() const { return features_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultMatchString() = default;
    DLResultMatchString(ObjectCreateAccessToken const& token, std::string const& modelId,
                        std::string const& modelType, double score, std::string const& matchString,
                        std::shared_ptr<Transform2DLinear> pose,
                        std::shared_ptr<DLBlueFeatureReadOnlyCollection> features);

    std::string matchString_;
    std::shared_ptr<Transform2DLinear> pose_;
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> features_;

    RTTR_ENABLE(DLResultMatch)
};

using DLResultMatchStringPtr = std::shared_ptr<DLResultMatchString>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMatchString, 1)
