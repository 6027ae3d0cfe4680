#include "Vision/DeepLearning/DLResult.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "records/ResultGraphics.h"

namespace Tavrin::Vision::DeepLearning {

DLResult::DLResult(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                   std::shared_ptr<DLResultMarkingsCollection> resultImage)
    : tool_(std::move(tool))
    , resultImage_(std::move(resultImage))
    , toolId_(tool_->Id()) {}

void DLResult::ConstructContent(Record& record, int) {
    record.setContent(rttr::variant(Records::BuildResultGraphics(*this)));
}

} // namespace Tavrin::Vision::DeepLearning
