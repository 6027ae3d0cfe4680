#include "engine/BlueToolSupport.h"

#include <Vision/Core/Vect2.h>

#include "Vision/DeepLearning/DLBlueModel.h"
#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning::Private {

std::string FormatFeatureSize(Vect2 const& size) {
    return FormatReal(size.X()) + FeatureSizeDelimiter + FormatReal(size.Y());
}

bool StoreFeatureSize(std::shared_ptr<Vect2>& field, std::shared_ptr<Vect2> value) {
    if (field && value && Tavrin::Vision::operator==(field, value))
        return false;
    field = std::move(value);
    return true;
}

void AttachModels(DLBlueModelReadOnlyCollection const* models,
                  std::shared_ptr<DLToolRuntimeParams> const& tool) {
    if (!models)
        return;
    for (auto const& model : *models) {
        if (model)
            model->setParent(tool);
    }
}

void ApplyModels(DLBlueModelReadOnlyCollection const* models) {
    if (!models)
        return;
    for (auto const& model : *models) {
        if (model)
            model->ApplyRuntimeParameters();
    }
}

} // namespace Tavrin::Vision::DeepLearning::Private
