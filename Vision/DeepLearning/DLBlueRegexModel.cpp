#include "Vision/DeepLearning/DLBlueRegexModel.h"

#include "engine/SiblingParameterRows.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

ParameterSet<DLBlueModel> const& DLBlueRegexModel::Parameters() {
    using C = DLBlueRegexModel;
    static auto const table = MakeParameterTable<C>(
        SiblingRows::ModelThreshold<C>(),
        Engine("RegexExpression", ParameterPaths::RegexExpression, &C::regexExpression_,
               &C::RegexExpression, &C::setRegexExpression));
    return table;
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueRegexModel,
                               "Tavrin::Vision::DeepLearning::DLBlueRegexModel")
