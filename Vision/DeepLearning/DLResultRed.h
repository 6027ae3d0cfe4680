#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLResultRedRegionReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultResourceReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

class DLResultScore;

// The answer of a red tool for one view: scores and the regions it marked.
class DLResultRed : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultRed)

    double Score() const { return score_; }
    double FilteredScore() const { return filteredScore_; }
    std::string Thresholds() const { return thresholds_; }
    std::string SupervisedMode() const { return supervisedMode_; }
    std::shared_ptr<DLResultResourceReadOnlyCollection> ResultResources() const {
        return resources_;
    }
    std::shared_ptr<DLResultScore> ResultScore() const { return scoreObject_; }
    std::shared_ptr<DLResultRedRegionReadOnlyCollection> ResultRegions() const { return regions_; }
    std::string ToolId() const { return toolId_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultRed() = default;
    DLResultRed(ObjectCreateAccessToken const&, std::string toolId, double score,
                double filteredScore, std::string thresholds, std::string supervisedMode,
                std::shared_ptr<DLResultResourceReadOnlyCollection> resources,
                std::shared_ptr<DLResultScore> scoreObject,
                std::shared_ptr<DLResultRedRegionReadOnlyCollection> regions);

    double score_ = 0;
    double filteredScore_ = 0;
    std::string thresholds_;
    std::string supervisedMode_;
    std::shared_ptr<DLResultResourceReadOnlyCollection> resources_;
    std::shared_ptr<DLResultScore> scoreObject_;
    std::shared_ptr<DLResultRedRegionReadOnlyCollection> regions_;
    std::string toolId_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultRedPtr = std::shared_ptr<DLResultRed>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultRed, 1)
