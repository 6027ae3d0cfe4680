#include "Vision/DeepLearning/DLResultMatchNode.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMatchNode::DLResultMatchNode(ObjectCreateAccessToken const& token,
                                     std::string const& modelId, std::string const& modelType,
                                     double score, std::string const& covers,
                                     std::string const& nodeCoords, std::string const& string,
                                     std::string const& prettifiedString,
                                     std::shared_ptr<Transform2DLinear> pose,
                                     std::shared_ptr<DLBlueFeatureReadOnlyCollection> features)
    : DLResultMatch(token, modelId, modelType, score)
    , nodeCoords_(nodeCoords)
    , string_(string)
    , prettifiedString_(prettifiedString)
    , pose_(std::move(pose))
    , features_(std::move(features))
    , covers_(covers) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMatchNode, cereal::base_class<DLResultMatch>,
                          "DLResultMatchNode::serialize()", nodeCoords_, string_, prettifiedString_,
                          pose_, features_, covers_)
