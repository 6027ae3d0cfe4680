#include "Vision/DeepLearning/DLResultFeatureMetricsFeature.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultFeatureMetricsFeature::DLResultFeatureMetricsFeature(ObjectCreateAccessToken const&,
                                                             DLResultFeatureMetricsType type,
                                                             std::string name, double found,
                                                             double recall, double precision,
                                                             double fscore, double distance)
    : found_(found)
    , recall_(recall)
    , precision_(precision)
    , fscore_(fscore)
    , distance_(distance)
    , type_(type)
    , name_(std::move(name)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultFeatureMetricsFeature, cereal::virtual_base_class<ShareableBase>,
                          "DLResultFeatureMetricsFeature::serialize()", found_, recall_, precision_,
                          fscore_, distance_, type_, name_)
