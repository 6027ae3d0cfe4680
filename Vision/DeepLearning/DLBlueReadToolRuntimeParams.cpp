#include "Vision/DeepLearning/DLBlueReadToolRuntimeParams.h"

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLToolRuntimeParams> const& DLBlueReadToolRuntimeParams::Parameters() {
    using C = DLBlueReadToolRuntimeParams;
    static auto const table = MakeParameterTable<C>(SiblingRows::Blue<C>());
    return table;
}

void DLBlueReadToolRuntimeParams::AdoptModels() {
    AttachModels(models_.get(), shared_from_this());
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueReadToolRuntimeParams,
                               "Tavrin::Vision::DeepLearning::DLBlueReadToolRuntimeParams")
