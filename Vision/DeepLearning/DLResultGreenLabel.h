#pragma once

#include <memory>

#include <Vision/DeepLearning/DLResultTagReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

class DLResultTrainingFlag;

// A training label of a green result: its flag and the tags it names.
class DLResultGreenLabel : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultGreenLabel)

    std::shared_ptr<DLResultTrainingFlag> Flags() const { return flags_; }
    std::shared_ptr<DLResultTagReadOnlyCollection> Tags() const { return tags_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultGreenLabel() = default;
    DLResultGreenLabel(ObjectCreateAccessToken const&, std::shared_ptr<DLResultTrainingFlag> flags,
                       std::shared_ptr<DLResultTagReadOnlyCollection> tags);

    std::shared_ptr<DLResultTrainingFlag> flags_;
    std::shared_ptr<DLResultTagReadOnlyCollection> tags_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultGreenLabelPtr = std::shared_ptr<DLResultGreenLabel>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultGreenLabel, 1)
