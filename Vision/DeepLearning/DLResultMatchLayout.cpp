#include "Vision/DeepLearning/DLResultMatchLayout.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMatchLayout::DLResultMatchLayout(
    ObjectCreateAccessToken const& token, std::string const& modelId, std::string const& modelType,
    double score, std::string const& covers,
    std::shared_ptr<DLResultBlueMatchRegionReadOnlyCollection> regions)
    : DLResultMatch(token, modelId, modelType, score)
    , regions_(std::move(regions))
    , covers_(std::move(covers)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMatchLayout, cereal::base_class<DLResultMatch>,
                          "DLResultMatch::serialize()", regions_, covers_)
