#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// One scored tag of a green tool's classification.
class DLResultTag : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultTag)

    std::string Name() const { return name_; }
    double Score() const { return score_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultTag() = default;
    DLResultTag(ObjectCreateAccessToken const&, std::string name, double score);

    std::string name_;
    double score_ = 0;

    RTTR_ENABLE(ShareableBase)
};

using DLResultTagPtr = std::shared_ptr<DLResultTag>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultTag, 1)
