#include "Vision/DeepLearning/DLQuickGreenToolRuntimeParams.h"

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterPaths.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

DLQuickGreenToolRuntimeParams::DLQuickGreenToolRuntimeParams(
    ObjectCreateAccessToken const& token, std::shared_ptr<DLStream> stream, std::string name,
    std::string id, std::string type, std::string status,
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools)
    : DLToolRuntimeParams(token, std::move(stream), std::move(name), std::move(id), std::move(type),
                          std::move(status), std::move(childTools)) {}

DLQuickGreenToolRuntimeParams::DLQuickGreenToolRuntimeParams() = default;

void DLQuickGreenToolRuntimeParams::setThreshold(double value) {
    if (StoreLaggingThreshold(threshold_, value, thresholdText_))
        OnChanged_(SfThreshold);
}

double DLQuickGreenToolRuntimeParams::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLQuickGreenToolRuntimeParams::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLQuickGreenToolRuntimeParams::setShowGraphics(bool value) {
    if (StoreIfChanged(showGraphics_, value))
        OnChanged_(SfShowGraphics | SfGraphicsSettings);
}

void DLQuickGreenToolRuntimeParams::setGenerateHeatmap(bool value) {
    if (StoreIfChanged(generateHeatmap_, value))
        OnChanged_(SfGenerateHeatmap);
}

void DLQuickGreenToolRuntimeParams::FinalConstruct() {
    DLToolRuntimeParams::FinalConstruct();
    auto const access = DeepLearningAccess::Instance();
    thresholdText_ = access->GetParameter(*this, ParameterPaths::GreenThreshold);
    threshold_ = ParseRealStrict(thresholdText_);
    generateHeatmap_ = ParseBool(access->GetParameter(*this, ParameterPaths::GreenHeatmap));
}

void DLQuickGreenToolRuntimeParams::ApplyRuntimeParameters() {
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
void DLQuickGreenToolRuntimeParams::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(
        version, 1, "DLQuickGreenToolRuntimeParams::serialize()");
    archive(cereal::base_class<DLToolRuntimeParams>(this), threshold_, thresholdText_,
            showGraphics_, generateHeatmap_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLQuickGreenToolRuntimeParams)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLQuickGreenToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLQuickGreenToolRuntimeParams")
