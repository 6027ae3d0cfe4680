#include "Vision/DeepLearning/DLResultBlue.h"

#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultBlue::DLResultBlue(ObjectCreateAccessToken const&, std::string toolId, bool oriented,
                           bool scaled, bool aspected, bool showFeatureChiclets,
                           bool showRectangularFeatures,
                           std::shared_ptr<DLBlueFeatureReadOnlyCollection> features,
                           std::shared_ptr<DLResultMatchReadOnlyCollection> matches)
    : oriented_(oriented)
    , scaled_(scaled)
    , aspected_(aspected)
    , showFeatureChiclets_(showFeatureChiclets)
    , showRectangularFeatures_(showRectangularFeatures)
    , features_(std::move(features))
    , matches_(std::move(matches))
    , toolId_(std::move(toolId)) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultBlue, cereal::virtual_base_class<ShareableBase>,
                          "DLResultBlue::serialize()", oriented_, scaled_, aspected_,
                          showFeatureChiclets_, showRectangularFeatures_, features_, matches_,
                          toolId_)
