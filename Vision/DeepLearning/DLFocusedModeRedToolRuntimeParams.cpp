#include "Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLFocusedModeRedToolRuntimeParams::Parameters() {
    using C = DLFocusedModeRedToolRuntimeParams;
    static auto const table =
        MakeParameterTable<C>(SiblingRows::SamplingDensity<C>(),
                              ThresholdPair(ParameterPaths::FocusedRedThreshold,
                                            &C::lowerThreshold_, &C::upperThreshold_),
                              Engine("RegionFilter", ParameterPaths::FocusedRedRegionFilter,
                                     &C::regionFilter_, &C::RegionFilter, &C::setRegionFilter),
                              Engine("Iterations", ParameterPaths::FocusedRedIterations,
                                     &C::iterations_, &C::Iterations, &C::setIterations),
                              SiblingRows::ShowGraphics<C>());
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLFocusedModeRedToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLFocusedModeRedToolRuntimeParams")
