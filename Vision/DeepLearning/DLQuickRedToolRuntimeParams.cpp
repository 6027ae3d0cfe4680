#include "Vision/DeepLearning/DLQuickRedToolRuntimeParams.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

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

ParameterTable<DLQuickRedToolRuntimeParams> const& DLQuickRedToolRuntimeParams::Parameters() {
    using C = DLQuickRedToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        LeftToTheFile(ThresholdPair(ParameterPaths::RedThreshold, &C::lowerThreshold_,
                                    &C::upperThreshold_, &C::thresholdText_)),
        LeftToTheFile(Engine<PlainText>("RegionFilter", ParameterPaths::RedRegionFilter,
                                        &C::regionFilter_, &C::RegionFilter, &C::setRegionFilter)),
        LeftToTheFile(Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics)));
    return table;
}

ParameterSet<DLToolRuntimeParams> const& DLQuickRedToolRuntimeParams::OwnParameters() const {
    return Parameters();
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
