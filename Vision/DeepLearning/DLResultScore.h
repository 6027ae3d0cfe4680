#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// The named overall score of a red tool. A class of its own, so it never mixes with tags.
class DLResultScore : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultScore)

    std::string Name() const { return name_; }
    double Score() const { return score_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultScore() = default;
    DLResultScore(ObjectCreateAccessToken const&, std::string name, double score);

    std::string name_;
    double score_ = 0;

    RTTR_ENABLE(ShareableBase)
};

using DLResultScorePtr = std::shared_ptr<DLResultScore>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultScore, 1)
