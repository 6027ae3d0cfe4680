#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLResultBlueMatchRegionReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultMatch.h>

namespace Tavrin::Vision::DeepLearning {

// A layout of regions found among the features.
class DLResultMatchLayout : public DLResultMatch {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMatchLayout)

    std::shared_ptr<DLResultBlueMatchRegionReadOnlyCollection> Regions() const { return regions_; }
    std::string Covers() const { return covers_; }

private:
    TAVRIN_DL_RESULT_ACCESS

    DLResultMatchLayout() = default;
    DLResultMatchLayout(ObjectCreateAccessToken const& token, std::string const& modelId,
                        std::string const& modelType, double score, std::string const& covers,
                        std::shared_ptr<DLResultBlueMatchRegionReadOnlyCollection> regions);

    std::shared_ptr<DLResultBlueMatchRegionReadOnlyCollection> regions_;
    std::string covers_;

    RTTR_ENABLE(DLResultMatch)
};

using DLResultMatchLayoutPtr = std::shared_ptr<DLResultMatchLayout>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMatchLayout, 1)
