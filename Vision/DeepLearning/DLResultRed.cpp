#include "Vision/DeepLearning/DLResultRed.h"

#include "Vision/DeepLearning/DLResultScore.h"
#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultRed::DLResultRed(ObjectCreateAccessToken const&, std::string toolId, double score,
                         double filteredScore, std::string thresholds, std::string supervisedMode,
                         std::shared_ptr<DLResultResourceReadOnlyCollection> resources,
                         std::shared_ptr<DLResultScore> scoreObject,
                         std::shared_ptr<DLResultRedRegionReadOnlyCollection> regions)
    : score_(score)
    , filteredScore_(filteredScore)
    , thresholds_(std::move(thresholds))
    , supervisedMode_(std::move(supervisedMode))
    , resources_(std::move(resources))
    , scoreObject_(std::move(scoreObject))
    , regions_(std::move(regions))
    , toolId_(std::move(toolId)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultRed, cereal::virtual_base_class<ShareableBase>,
                          "DLResultRed::serialize()", score_, filteredScore_, thresholds_,
                          supervisedMode_, resources_, scoreObject_, regions_, toolId_)
