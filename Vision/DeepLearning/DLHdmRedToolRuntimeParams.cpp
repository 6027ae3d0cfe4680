#include "Vision/DeepLearning/DLHdmRedToolRuntimeParams.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

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

ParameterTable<DLHdmRedToolRuntimeParams> const& DLHdmRedToolRuntimeParams::Parameters() {
    using C = DLHdmRedToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        ThresholdPair(ParameterPaths::RedThreshold, &C::lowerThreshold_, &C::upperThreshold_,
                      &C::thresholdText_),
        Engine<PlainText>("RegionFilter", ParameterPaths::RedRegionFilter, &C::regionFilter_,
                          &C::RegionFilter, &C::setRegionFilter),
        Engine<IntegerText<int>>("DownsamplingSize", ParameterPaths::RedDownsamplingSize,
                                 &C::downsamplingSize_, &C::DownsamplingSize,
                                 &C::setDownsamplingSize),
        Setting("ShowGraphics", &C::ShowGraphics, &C::setShowGraphics));
    return table;
}

ParameterSet<DLToolRuntimeParams> const& DLHdmRedToolRuntimeParams::OwnParameters() const {
    return Parameters();
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
