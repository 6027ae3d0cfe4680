#include "engine/ParameterTable.h"

#include <Vision/Core/Vect2.h>

#include "engine/DeepLearningAccess.h"

namespace Tavrin::Vision::DeepLearning::Private {

char const* EngineParameters::Get(DeepLearningAccess& access, DLToolRuntimeParams const& tool,
                                  char const* path) {
    return access.GetParameter(tool, path);
}

bool EngineParameters::Set(DeepLearningAccess& access, DLToolRuntimeParams const& tool,
                           char const* path, std::string const& value) {
    return access.SetParameter(tool, path, value.c_str());
}

// "models/<name>/<key>", through the owning tool, which must outlive every read and write.
char const* EngineParameters::Get(DeepLearningAccess& access, DLBlueModel const& model,
                                  char const* key) {
    return access.GetParameter(*model.Parent(), ("models/" + model.Name() + "/" + key).c_str());
}

bool EngineParameters::Set(DeepLearningAccess& access, DLBlueModel const& model, char const* key,
                           std::string const& value) {
    return access.SetParameter(*model.Parent(), ("models/" + model.Name() + "/" + key).c_str(),
                               value.c_str());
}

std::shared_ptr<DLBlueModelReadOnlyCollection>
EngineParameters::LoadModels(DeepLearningAccess& access, DLToolRuntimeParams& tool) {
    return access.LoadModels(tool.shared_from_this());
}

std::shared_ptr<DeepLearningAccess> EngineParameters::Access() {
    return DeepLearningAccess::Instance();
}

std::shared_ptr<Vect2> EngineText<std::shared_ptr<Vect2>>::Parse(char const* text) {
    return DeepLearningAccess::ParseVector2(text, FeatureSizeDelimiter);
}

} // namespace Tavrin::Vision::DeepLearning::Private
