#pragma once

#include <memory>

#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// The training flag of a green label.
class DLResultTrainingFlag : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultTrainingFlag)

    bool Value() const { return value_; }
    bool Manual() const { return manual_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultTrainingFlag() = default;
    DLResultTrainingFlag(ObjectCreateAccessToken const&, bool value, bool manual);

    bool value_ = false;
    bool manual_ = false;

    RTTR_ENABLE(ShareableBase)
};

using DLResultTrainingFlagPtr = std::shared_ptr<DLResultTrainingFlag>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultTrainingFlag, 1)
