#include "Vision/DeepLearning/DLResultMarking.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "persistence/ResultArchive.h"

namespace Tavrin::Vision::DeepLearning {

DLResultMarking::DLResultMarking(ObjectCreateAccessToken const&,
                                 std::shared_ptr<DLToolRuntimeParams> tool, std::string processedAt,
                                 std::string processedDevice, double duration,
                                 double durationProcessOnly, double durationPostProcess,
                                 std::shared_ptr<DLResultImageInfo> imageInfo,
                                 std::shared_ptr<DLResultViewReadOnlyCollection> views)
    : durationPostProcess_(durationPostProcess)
    , durationProcessOnly_(durationProcessOnly)
    , duration_(duration)
    , processedDevice_(std::move(processedDevice))
    , processedAt_(std::move(processedAt))
    , tool_(std::move(tool))
    , imageInfo_(std::move(imageInfo))
    , views_(std::move(views))
    , toolId_(tool_->Id()) {}

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_DL_ARCHIVED_RESULT(DLResultMarking, cereal::virtual_base_class<ShareableBase>,
                          "DLResultMarking::serialize()", durationPostProcess_,
                          durationProcessOnly_, duration_, processedDevice_, processedAt_,
                          imageInfo_, views_, toolId_)
