#pragma once

#include <memory>
#include <string>

#include <Vision/Core/RectangleAffine.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// One located feature of a blue result; its rectangle is in the caller's space. Matches
// share these objects, so pointer identity tells which features a match used.
class DLBlueFeature : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLBlueFeature)

    std::string Id() const { return id_; }
    std::shared_ptr<RectangleAffine> Rectangle() const { return rectangle_; }
    double Score() const { return score_; }
    std::string Covers() const { return covers_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLBlueFeature() = default;
    DLBlueFeature(ObjectCreateAccessToken const&, std::string id,
                  std::shared_ptr<RectangleAffine> rectangle, double score, std::string covers);

    std::string id_;
    std::shared_ptr<RectangleAffine> rectangle_;
    double score_ = 0;
    std::string covers_;

    RTTR_ENABLE(ShareableBase)
};

using DLBlueFeaturePtr = std::shared_ptr<DLBlueFeature>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueFeature, 1)
