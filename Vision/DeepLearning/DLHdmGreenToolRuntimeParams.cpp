#include "Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLHdmGreenToolRuntimeParams::DLHdmGreenToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLHdmGreenToolRuntimeParams::DLHdmGreenToolRuntimeParams() = default;

void DLHdmGreenToolRuntimeParams::setThreshold(double value) {
    if (StoreLaggingThreshold(threshold_, value, thresholdText_))
        OnChanged_(SfThreshold);
}

double DLHdmGreenToolRuntimeParams::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLHdmGreenToolRuntimeParams::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLHdmGreenToolRuntimeParams::setShowGraphics(bool value) {
    if (StoreIfChanged(showGraphics_, value))
        OnChanged_(SfShowGraphics | SfGraphicsSettings);
}

void DLHdmGreenToolRuntimeParams::setGenerateHeatmap(bool value) {
    if (StoreIfChanged(generateHeatmap_, value))
        OnChanged_(SfGenerateHeatmap);
}

void DLHdmGreenToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    thresholdText_ = access->GetParameter(*this, ParameterPaths::GreenThreshold);
    threshold_ = ParseRealStrict(thresholdText_);
    generateHeatmap_ = ParseBool(access->GetParameter(*this, ParameterPaths::GreenHeatmap));
}

void DLHdmGreenToolRuntimeParams::ApplyRuntimeParameters() {
    DLToolRuntimeParams::ApplyRuntimeParameters();
    auto const access = DeepLearningAccess::Instance();
    bool const thresholdCached =
        access->SetParameter(*this, ParameterPaths::GreenThreshold, thresholdText_.c_str());
    access->SetParameter(*this, ParameterPaths::GreenHeatmap, FormatBool(generateHeatmap_).c_str());
    // A cached text reads back as the one just given; without one the engine is asked again.
    if (!thresholdCached)
        thresholdText_ = access->GetParameter(*this, ParameterPaths::GreenThreshold);
}

template <class Archive>
void DLHdmGreenToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLHdmGreenToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), threshold_, thresholdText_,
            showGraphics_, generateHeatmap_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLHdmGreenToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLHdmGreenToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLHdmGreenToolRuntimeParams")
