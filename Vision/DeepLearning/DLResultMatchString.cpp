#include "Vision/DeepLearning/DLResultMatchString.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMatchString::DLResultMatchString(ObjectCreateAccessToken const& token,
                                         std::string const& modelId, std::string const& modelType,
                                         double score, std::string const& matchString,
                                         std::shared_ptr<Transform2DLinear> pose,
                                         std::shared_ptr<DLBlueFeatureReadOnlyCollection> features)
    : DLResultMatch(token, modelId, modelType, score)
    , matchString_(std::move(matchString))
    , pose_(std::move(pose))
    , features_(std::move(features)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMatchString, cereal::base_class<DLResultMatch>,
                          "DLResultMatchString::serialize()", matchString_, pose_, features_)
