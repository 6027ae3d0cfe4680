#include "Vision/DeepLearning/DLResultMatchRegex.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMatchRegex::DLResultMatchRegex(ObjectCreateAccessToken const& token,
                                       std::string const& modelId, std::string const& modelType,
                                       double score, std::string covers, std::string string,
                                       std::string prettifiedString,
                                       std::shared_ptr<Transform2DLinear> pose,
                                       std::shared_ptr<DLBlueFeatureReadOnlyCollection> features)
    : DLResultMatch(token, modelId, modelType, score)
    , string_(std::move(string))
    , prettifiedString_(std::move(prettifiedString))
    , pose_(std::move(pose))
    , features_(std::move(features))
    , covers_(std::move(covers)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMatchRegex, cereal::base_class<DLResultMatch>,
                          "DLResultMatchRegex::serialize()", string_, prettifiedString_, pose_,
                          features_, covers_)
