#include "Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLFocusedModeGreenToolRuntimeParams::Parameters() {
    using C = DLFocusedModeGreenToolRuntimeParams;
    static auto const table =
        MakeParameterTable<C>(SiblingRows::SamplingDensity<C>(),
                              SiblingRows::Threshold<C>(ParameterPaths::FocusedGreenThreshold),
                              SiblingRows::ShowGraphics<C>());
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLFocusedModeGreenToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLFocusedModeGreenToolRuntimeParams")
