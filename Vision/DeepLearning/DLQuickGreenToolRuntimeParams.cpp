#include "Vision/DeepLearning/DLQuickGreenToolRuntimeParams.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

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

ParameterTable<DLQuickGreenToolRuntimeParams> const& DLQuickGreenToolRuntimeParams::Parameters() {
    using C = DLQuickGreenToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        LeftToTheFile(
            LaggingThreshold(ParameterPaths::GreenThreshold, &C::threshold_, &C::thresholdText_)),
        LeftToTheFile(Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics)),
        LeftToTheFile(Engine<BoolText>("GenerateHeatmap", ParameterPaths::GreenHeatmap,
                                       &C::generateHeatmap_, &C::GenerateHeatmap,
                                       &C::setGenerateHeatmap)));
    return table;
}

ParameterSet<DLToolRuntimeParams> const& DLQuickGreenToolRuntimeParams::OwnParameters() const {
    return Parameters();
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
