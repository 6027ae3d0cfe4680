#include "Vision/DeepLearning/DLResultBlueLabel.h"

namespace Tavrin::Vision::DeepLearning {

DLResultBlueLabel::DLResultBlueLabel(
    ObjectCreateAccessToken const&, std::shared_ptr<DLBlueFeatureReadOnlyCollection> features,
    std::shared_ptr<DLResultMatchReadOnlyCollection> matches,
    std::shared_ptr<DLResultFeatureMetricsFeatureReadOnlyCollection> featureMetrics)
    : features_(std::move(features))
    , matches_(std::move(matches))
    , featureMetrics_(std::move(featureMetrics)) {}

} // namespace Tavrin::Vision::DeepLearning
