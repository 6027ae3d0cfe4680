#include "Vision/DeepLearning/DLQuickRedToolRuntimeParams.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLQuickRedToolRuntimeParams::Parameters() {
    using C = DLQuickRedToolRuntimeParams;
    static auto const table =
        MakeParameterTable<C>(SiblingRows::RedKeepingText<C>(), SiblingRows::ShowGraphics<C>())
            .LeftToTheFile();
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLQuickRedToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLQuickRedToolRuntimeParams")
