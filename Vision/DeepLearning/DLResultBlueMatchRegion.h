#pragma once

#include <memory>
#include <string>

#include <Vision/Core/RectangleAffine.h>
#include <Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

// One region of a layout match with the features found in it.
class DLResultBlueMatchRegion : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultBlueMatchRegion)

    std::string Name() const { return name_; }
    std::shared_ptr<RectangleAffine> Rectangle() const { return rectangle_; }
    int Occurrences() const { return occurrences_; }
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> Features() const { return features_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultBlueMatchRegion() = default;
    DLResultBlueMatchRegion(ObjectCreateAccessToken const&, std::string name,
                            std::shared_ptr<RectangleAffine> rectangle, int occurrences,
                            std::shared_ptr<DLBlueFeatureReadOnlyCollection> features);

    std::string name_;
    std::shared_ptr<RectangleAffine> rectangle_;
    int occurrences_ = 0;
    std::shared_ptr<DLBlueFeatureReadOnlyCollection> features_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultBlueMatchRegionPtr = std::shared_ptr<DLResultBlueMatchRegion>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultBlueMatchRegion, 1)
