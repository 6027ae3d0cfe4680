#include "Vision/DeepLearning/DLBlueNodeModel.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLBlueModel> const& DLBlueNodeModel::Parameters() {
    using C = DLBlueNodeModel;
    static auto const table =
        MakeParameterTable<C>(SiblingRows::ModelThreshold<C>(),
                              Engine("Occurrences", ParameterPaths::NodeOccurrences,
                                     &C::occurrences_, &C::Occurrences, &C::setOccurrences));
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueNodeModel,
                               "Tavrin::Vision::DeepLearning::DLBlueNodeModel")
