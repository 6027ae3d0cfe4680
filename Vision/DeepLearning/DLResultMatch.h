#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// A model of a blue tool found among the features. The decoder builds one of the four kinds;
// a reader tells them apart by ModelType ("layout", "node", "regex", "string") and casts.
class DLResultMatch : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMatch)

    std::string ModelID() const { return modelId_; }
    std::string ModelType() const { return modelType_; }
    double Score() const { return score_; }

protected:
    DLResultMatch() = default;
    DLResultMatch(ObjectCreateAccessToken const&, std::string const& modelId,
                  std::string const& modelType, double score);

private:
    TAVRIN_DL_RESULT_ACCESS

    std::string modelId_;
    std::string modelType_;
    double score_ = 0;

    RTTR_ENABLE(ShareableBase)
};

using DLResultMatchPtr = std::shared_ptr<DLResultMatch>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMatch, 1)
