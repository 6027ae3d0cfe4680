#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Transform2D.h>
#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatch.h>

namespace Tavrin::Vision::DeepLearning {

// A node of a layout found among the features.
class DLResultMatchNode : public DLResultMatch {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMatchNode)

    std::string NodeCoords() const { return nodeCoords_; }
    std::string String() const { return string_; }
    std::string PrettifiedString() const { return prettifiedString_; }
    std::shared_ptr<Transform2DLinear> Pose() const { return pose_; }
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> Features() const { return features_; }
    std::string Covers() const { return covers_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultMatchNode() = default;
    DLResultMatchNode(ObjectCreateAccessToken const& token, std::string const& modelId,
                      std::string const& modelType, double score, std::string const& covers,
                      std::string const& nodeCoords, std::string const& string,
                      std::string const& prettifiedString, std::shared_ptr<Transform2DLinear> pose,
                      std::shared_ptr<DLBlueFeatureReadOnlyCollection> features);

    std::string nodeCoords_;
    std::string string_;
    std::string prettifiedString_;
    std::shared_ptr<Transform2DLinear> pose_;
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> features_;
    std::string covers_;

    RTTR_ENABLE(DLResultMatch)
};

using DLResultMatchNodePtr = std::shared_ptr<DLResultMatchNode>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMatchNode, 1)
