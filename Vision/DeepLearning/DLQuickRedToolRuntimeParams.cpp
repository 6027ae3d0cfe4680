#include "Vision/DeepLearning/DLQuickRedToolRuntimeParams.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLQuickRedToolRuntimeParams::DLQuickRedToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLQuickRedToolRuntimeParams::DLQuickRedToolRuntimeParams() = default;

void DLQuickRedToolRuntimeParams::setUpperThreshold(double value) {
    if (StoreUpperThreshold(lowerThreshold_, upperThreshold_, value, thresholdText_))
        OnChanged_(SfUpperThreshold);
}

void DLQuickRedToolRuntimeParams::setLowerThreshold(double value) {
    if (StoreLowerThreshold(lowerThreshold_, value, upperThreshold_, thresholdText_))
        OnChanged_(SfLowerThreshold);
}

void DLQuickRedToolRuntimeParams::setRegionFilter(std::string const& value) {
    if (StoreIfChanged(regionFilter_, value))
        OnChanged_(SfRegionFilter);
}

void DLQuickRedToolRuntimeParams::setShowGraphics(bool value) {
    if (StoreIfChanged(showGraphics_, value))
        OnChanged_(SfShowGraphics | SfGraphicsSettings);
}

void DLQuickRedToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    ParseThresholdTextKeepingIt(access->GetParameter(*this, ParameterPaths::RedThreshold),
                                lowerThreshold_, upperThreshold_, thresholdText_);
    regionFilter_ = access->GetParameter(*this, ParameterPaths::RedRegionFilter);
}

void DLQuickRedToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    bool const thresholdCached =
        access->SetParameter(*this, ParameterPaths::RedThreshold, thresholdText_.c_str());
    access->SetParameter(*this, ParameterPaths::RedRegionFilter, regionFilter_.c_str());
    // A cached text reads back as the one just given; without one the engine is asked again.
    if (!thresholdCached)
        thresholdText_ = access->GetParameter(*this, ParameterPaths::RedThreshold);
}

template <class Archive>
void DLQuickRedToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLQuickRedToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), upperThreshold_, lowerThreshold_,
            regionFilter_, showGraphics_, thresholdText_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLQuickRedToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLQuickRedToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLQuickRedToolRuntimeParams")
