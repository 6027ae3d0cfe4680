#include "Vision/DeepLearning/DLHdmRedToolRuntimeParams.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLHdmRedToolRuntimeParams::Parameters() {
    using C = DLHdmRedToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(
        SiblingRows::RedKeepingText<C>(),
        Engine("DownsamplingSize", ParameterPaths::RedDownsamplingSize, &C::downsamplingSize_,
               &C::DownsamplingSize, &C::setDownsamplingSize),
        SiblingRows::ShowGraphics<C>());
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLHdmRedToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLHdmRedToolRuntimeParams")
