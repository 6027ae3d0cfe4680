#include "Vision/DeepLearning/DLResult.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"

namespace Tavrin::Vision::DeepLearning {

DLResult::DLResult(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                   std::shared_ptr<DLResultMarkingsCollection> resultImage)
    : tool_(std::move(tool))
    , resultImage_(std::move(resultImage))
    , toolId_(tool_->Id()) {}

} // namespace Tavrin::Vision::DeepLearning
