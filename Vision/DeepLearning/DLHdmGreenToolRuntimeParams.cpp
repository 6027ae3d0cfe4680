#include "Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

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

ParameterTable<DLHdmGreenToolRuntimeParams> const& DLHdmGreenToolRuntimeParams::Parameters() {
    using C = DLHdmGreenToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        LaggingThreshold(ParameterPaths::GreenThreshold, &C::threshold_, &C::thresholdText_),
        Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics),
        Engine<BoolText>("GenerateHeatmap", ParameterPaths::GreenHeatmap, &C::generateHeatmap_,
                         &C::GenerateHeatmap, &C::setGenerateHeatmap));
    return table;
}

ParameterSet<DLToolRuntimeParams> const& DLHdmGreenToolRuntimeParams::OwnParameters() const {
    return Parameters();
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
