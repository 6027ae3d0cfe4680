#include "Vision/DeepLearning/DLBlueToolRuntimeParams.h"

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLBlueToolRuntimeParams::Parameters() {
    using C = DLBlueToolRuntimeParams;
    static auto const table =
        MakeParameterTable<C>(SiblingRows::SamplingDensity<C>(), SiblingRows::Blue<C>());
    return table;
}

void DLBlueToolRuntimeParams::AdoptModels() {
    AttachModels(models_.get(), shared_from_this());
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLBlueToolRuntimeParams")
