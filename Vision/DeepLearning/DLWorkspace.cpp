#include "Vision/DeepLearning/DLWorkspace.h"

#include "Vision/DeepLearning/DLStreamReadOnlyCollection.h"
#include "engine/DeepLearningAccess.h"

namespace Tavrin::Vision::DeepLearning {

DLWorkspace::DLWorkspace(ObjectCreateAccessToken const&, std::string const& name,
                         std::string const& uuid, std::string const& lastModified,
                         std::string const& sourceFile)
    : name_(name)
    , uuid_(uuid)
    , lastModified_(lastModified)
    , sourceFile_(sourceFile) {}

DLWorkspace::DLWorkspace() = default;

// The close logic decides whether this was the last object of its engine workspace.
DLWorkspace::~DLWorkspace() {
    try {
        Private::DeepLearningAccess::Instance()->CloseWorkspace(*this);
    } catch (...) {
    }
}

void DLWorkspace::FinalConstruct() {
    auto const access = Private::DeepLearningAccess::Instance();
    streams_ = access->LoadStreams(shared_from_this());
}

void DLWorkspace::SetOutOfDate() {
    if (outOfDate_)
        return;
    outOfDate_ = true;
    OnChanged_(SfOutOfDate);
}

template <class Archive> void DLWorkspace::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLWorkspace::serialize()");
    archive(cereal::virtual_base_class<ShareableBase>(this), name_, uuid_, lastModified_, streams_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLWorkspace)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLWorkspace,
                               "Tavrin::Vision::DeepLearning::DLWorkspace")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::ChangedEventShareableBase,
                                     Tavrin::Vision::DeepLearning::DLWorkspace)
