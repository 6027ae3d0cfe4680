#include "Vision/DeepLearning/DLBlueStringModel.h"

#include <Vision/Core/Exceptions.h>

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

void DLBlueStringModel::setMinimumLength(int value) {
    if (value < 0)
        throw ArgumentException("MinimumLength must be non-negative");
    Store(minimumLength_, value, SfMinimumLength);
}

ParameterSet<DLBlueModel> const& DLBlueStringModel::Parameters() {
    using C = DLBlueStringModel;
    static auto const table =
        MakeParameterTable<C>(SiblingRows::ModelThreshold<C>(),
                              Engine("MinimumLength", ParameterPaths::StringMinimumLength,
                                     &C::minimumLength_, &C::MinimumLength, &C::setMinimumLength));
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueStringModel,
                               "Tavrin::Vision::DeepLearning::DLBlueStringModel")
