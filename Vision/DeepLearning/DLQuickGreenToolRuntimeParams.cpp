#include "Vision/DeepLearning/DLQuickGreenToolRuntimeParams.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLQuickGreenToolRuntimeParams::Parameters() {
    static auto const table = MakeParameterTable<DLQuickGreenToolRuntimeParams>(
                                  SiblingRows::GreenKeepingText<DLQuickGreenToolRuntimeParams>())
                                  .LeftToTheFile();
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLQuickGreenToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLQuickGreenToolRuntimeParams")
