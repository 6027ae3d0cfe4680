#include "Vision/DeepLearning/DLResultRed.h"

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
