#include "Vision/DeepLearning/DLResult.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "persistence/ResultArchive.h"
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

TAVRIN_DL_ARCHIVED_RESULT(DLResult, cereal::virtual_base_class<ShareableBase>,
                          "DLResult::serialize()", toolId_, resultImage_)
// A run record holds its result as the constructor of its overlay, and records are archived.
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRecordConstructor,
                                     Tavrin::Vision::DeepLearning::DLResult)
