#include "Vision/DeepLearning/DLResultGreen.h"

#include "Vision/DeepLearning/DLResultTag.h"
#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultGreen::DLResultGreen(ObjectCreateAccessToken const&, std::string toolId, double threshold,
                             bool exclusive, bool similarityReference, double uncertainty,
                             std::shared_ptr<DLResultTagReadOnlyCollection> tags,
                             std::shared_ptr<DLResultResourceReadOnlyCollection> resources)
    : threshold_(threshold)
    , exclusive_(exclusive)
    , similarityReference_(similarityReference)
    , uncertainty_(uncertainty)
    , tags_(std::move(tags))
    , toolId_(std::move(toolId))
    , resources_(std::move(resources)) {}

std::shared_ptr<DLResultTag> DLResultGreen::BestTag() {
    if (bestTag_ || !tags_)
        return bestTag_;
    for (auto const& tag : *tags_)
        if (!bestTag_ || tag->Score() > bestTag_->Score())
            bestTag_ = tag;
    return bestTag_;
}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultGreen, cereal::virtual_base_class<ShareableBase>,
                          "DLResultGreen::serialize()", threshold_, exclusive_,
                          similarityReference_, uncertainty_, tags_, bestTag_, toolId_, resources_)
