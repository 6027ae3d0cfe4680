#include "Vision/DeepLearning/DLResultBlueLabel.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultBlueLabel::DLResultBlueLabel(
    ObjectCreateAccessToken const&, std::shared_ptr<DLBlueFeatureReadOnlyCollection> features,
    std::shared_ptr<DLResultMatchReadOnlyCollection> matches,
    std::shared_ptr<DLResultFeatureMetricsFeatureReadOnlyCollection> featureMetrics)
    : features_(std::move(features))
    , matches_(std::move(matches))
    , featureMetrics_(std::move(featureMetrics)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultBlueLabel, cereal::virtual_base_class<ShareableBase>,
                          "DLResultBlueLabel::serialize()", features_, matches_, featureMetrics_)
