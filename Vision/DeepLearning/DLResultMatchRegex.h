#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Transform2D.h>
#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatch.h>

namespace Tavrin::Vision::DeepLearning {

// A regular expression matched by the features. Covers stays private, as the class has
// always declared it; the archive still carries it.
class DLResultMatchRegex : public DLResultMatch {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMatchRegex)

    std::string String() const { return string_; }
    std::string PrettifiedString() const { return prettifiedString_; }
    std::shared_ptr<Transform2DLinear> Pose() const { return pose_; }
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> Features() const { return features_; }

private:
    TAVRIN_DL_RESULT_ACCESS
    std::string Covers() const { return covers_; }

    DLResultMatchRegex() = default;
    DLResultMatchRegex(ObjectCreateAccessToken const& token, std::string const& modelId,
                       std::string const& modelType, double score, std::string covers,
                       std::string string, std::string prettifiedString,
                       std::shared_ptr<Transform2DLinear> pose,
                       std::shared_ptr<DLBlueFeatureReadOnlyCollection> features);

    std::string string_;
    std::string prettifiedString_;
    std::shared_ptr<Transform2DLinear> pose_;
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> features_;
    std::string covers_;

    RTTR_ENABLE(DLResultMatch)
};

using DLResultMatchRegexPtr = std::shared_ptr<DLResultMatchRegex>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMatchRegex, 1)
