#pragma once

#include <memory>

#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultFeatureMetricsFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatchReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// A training label of a blue result. No result holds one; it exists for archives and fixtures.
class DLResultBlueLabel : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultBlueLabel)

    std::shared_ptr<DLBlueFeatureReadOnlyCollection> Features() const { return features_; }
    std::shared_ptr<DLResultMatchReadOnlyCollection> Matches() const { return matches_; }
    std::shared_ptr<DLResultFeatureMetricsFeatureReadOnlyCollection> FeatureMetrics() const {
        return featureMetrics_;
    }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultBlueLabel() = default;
    DLResultBlueLabel(
        ObjectCreateAccessToken const&, std::shared_ptr<DLBlueFeatureReadOnlyCollection> features,
        std::shared_ptr<DLResultMatchReadOnlyCollection> matches,
        std::shared_ptr<DLResultFeatureMetricsFeatureReadOnlyCollection> featureMetrics);

    std::shared_ptr<DLBlueFeatureReadOnlyCollection> features_;
    std::shared_ptr<DLResultMatchReadOnlyCollection> matches_;
    std::shared_ptr<DLResultFeatureMetricsFeatureReadOnlyCollection> featureMetrics_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultBlueLabelPtr = std::shared_ptr<DLResultBlueLabel>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultBlueLabel, 1)
