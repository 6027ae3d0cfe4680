#include "Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLHdmGreenToolRuntimeParams::Parameters() {
    static auto const table = MakeParameterTable<DLHdmGreenToolRuntimeParams>(
        SiblingRows::GreenKeepingText<DLHdmGreenToolRuntimeParams>());
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLHdmGreenToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLHdmGreenToolRuntimeParams")
