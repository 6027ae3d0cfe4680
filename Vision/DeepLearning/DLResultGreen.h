#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLResultResourceReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultTagReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

class DLResultTag;

// The answer of a green tool for one view: the scored tags of a classification, in the
// engine's order.
class DLResultGreen : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultGreen)

    double Threshold() const { return threshold_; }
    bool Exclusive() const { return exclusive_; }
    bool SimilarityReference() const { return similarityReference_; }
    double Uncertainty() const { return uncertainty_; }
    std::shared_ptr<DLResultTagReadOnlyCollection> Tags() const { return tags_; }
    std::string ToolId() const { return toolId_; }
    std::shared_ptr<DLResultResourceReadOnlyCollection> ResultResources() const {
        return resources_;
    }

    // The tag of the highest score, the earliest among equals; null without tags. Computed on
    // first use and kept, without a lock: two threads must not ask first at the same time.
    std::shared_ptr<DLResultTag> BestTag();

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultGreen() = default;
    DLResultGreen(ObjectCreateAccessToken const&, std::string toolId, double threshold,
                  bool exclusive, bool similarityReference, double uncertainty,
                  std::shared_ptr<DLResultTagReadOnlyCollection> tags,
                  std::shared_ptr<DLResultResourceReadOnlyCollection> resources);

    double threshold_ = 0;
    bool exclusive_ = false;
    bool similarityReference_ = false;
    double uncertainty_ = 0;
    std::shared_ptr<DLResultTagReadOnlyCollection> tags_;
    std::shared_ptr<DLResultTag> bestTag_;
    std::string toolId_;
    std::shared_ptr<DLResultResourceReadOnlyCollection> resources_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultGreenPtr = std::shared_ptr<DLResultGreen>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultGreen, 1)
