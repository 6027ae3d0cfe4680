#include "Vision/DeepLearning/DLHdmRedToolRuntimeParams.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLHdmRedToolRuntimeParams::DLHdmRedToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLHdmRedToolRuntimeParams::DLHdmRedToolRuntimeParams() = default;

void DLHdmRedToolRuntimeParams::setUpperThreshold(double value) {
    if (StoreUpperThreshold(lowerThreshold_, upperThreshold_, value, thresholdText_))
        OnChanged_(SfUpperThreshold);
}

void DLHdmRedToolRuntimeParams::setLowerThreshold(double value) {
    if (StoreLowerThreshold(lowerThreshold_, value, upperThreshold_, thresholdText_))
        OnChanged_(SfLowerThreshold);
}

void DLHdmRedToolRuntimeParams::setRegionFilter(std::string const& value) {
    if (StoreIfChanged(regionFilter_, value))
        OnChanged_(SfRegionFilter);
}

void DLHdmRedToolRuntimeParams::setDownsamplingSize(int value) {
    if (StoreIfChanged(downsamplingSize_, value))
        OnChanged_(SfDownsamplingSize);
}

void DLHdmRedToolRuntimeParams::setShowGraphics(bool value) {
    if (StoreIfChanged(showGraphics_, value))
        OnChanged_(SfShowGraphics | SfGraphicsSettings);
}

void DLHdmRedToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    ParseThresholdTextKeepingIt(access->GetParameter(*this, ParameterPaths::RedThreshold),
                                lowerThreshold_, upperThreshold_, thresholdText_);
    regionFilter_ = access->GetParameter(*this, ParameterPaths::RedRegionFilter);
    downsamplingSize_ =
        ParseInteger(access->GetParameter(*this, ParameterPaths::RedDownsamplingSize));
}

void DLHdmRedToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    bool const thresholdCached =
        access->SetParameter(*this, ParameterPaths::RedThreshold, thresholdText_.c_str());
    access->SetParameter(*this, ParameterPaths::RedRegionFilter, regionFilter_.c_str());
    access->SetParameter(*this, ParameterPaths::RedDownsamplingSize,
                         FormatInteger(downsamplingSize_).c_str());
    // A cached text reads back as the one just given; without one the engine is asked again.
    if (!thresholdCached)
        thresholdText_ = access->GetParameter(*this, ParameterPaths::RedThreshold);
}

template <class Archive>
void DLHdmRedToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLHdmRedToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), upperThreshold_, lowerThreshold_,
            regionFilter_, downsamplingSize_, showGraphics_, thresholdText_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLHdmRedToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLHdmRedToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLHdmRedToolRuntimeParams")
