#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatchReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// The answer of a blue tool for one view: located features and the models matched among them.
// The last two flags steer how features are drawn; the others are only carried.
class DLResultBlue : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultBlue)

    bool Oriented() const { return oriented_; }
    bool Scaled() const { return scaled_; }
    bool Aspected() const { return aspected_; }
    bool ShowFeatureChiclets() const { return showFeatureChiclets_; }
    bool ShowRectangularFeatures() const { return showRectangularFeatures_; }
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> Features() const { return features_; }
    std::shared_ptr<DLResultMatchReadOnlyCollection> Matches() const { return matches_; }
    std::string ToolId() const { return toolId_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultBlue() = default;
    DLResultBlue(ObjectCreateAccessToken const&, std::string toolId, bool oriented, bool scaled,
                 bool aspected, bool showFeatureChiclets, bool showRectangularFeatures,
                 std::shared_ptr<DLBlueFeatureReadOnlyCollection> features,
                 std::shared_ptr<DLResultMatchReadOnlyCollection> matches);

    bool oriented_ = false;
    bool scaled_ = false;
    bool aspected_ = false;
    bool showFeatureChiclets_ = false;
    bool showRectangularFeatures_ = false;
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> features_;
    std::shared_ptr<DLResultMatchReadOnlyCollection> matches_;
    std::string toolId_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultBluePtr = std::shared_ptr<DLResultBlue>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultBlue, 1)
