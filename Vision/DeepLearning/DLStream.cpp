#include "Vision/DeepLearning/DLStream.h"

#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "engine/DeepLearningAccess.h"

namespace Tavrin::Vision::DeepLearning {

namespace {
bool HasTools(std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools) {
    return tools && tools->Count() > 0;
}
} // namespace

DLStream::DLStream(ObjectCreateAccessToken const&, std::shared_ptr<DLWorkspace> workspace,
                   std::string const& name, std::string const& uuid, std::string const& frameWindow)
    : name_(name)
    , uuid_(uuid)
    , frameWindow_(frameWindow)
    , parentWorkspace_(workspace) {}

DLStream::DLStream() = default;

DLStream::~DLStream() = default;

void DLStream::FinalConstruct() {
    auto const access = Private::DeepLearningAccess::Instance();
    tools_ = access->LoadTools(shared_from_this());
    if (tools_)
        SubscribeToToolChanges(tools_);
}

void DLStream::SubscribeToToolChanges(
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools) {
    if (!HasTools(tools))
        return;
    auto const self = shared_from_this();
    for (auto const& tool : *tools) {
        if (!tool)
            continue;
        toolConnections_.emplace_back(
            tool->ChangedEvent().Connect(self, &DLStream::HandleToolChanged));
        SubscribeToToolChanges(tool->ChildTools());
    }
}

void DLStream::setStream(std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools) {
    if (!HasTools(tools))
        return;
    auto const self = shared_from_this();
    for (auto const& tool : *tools) {
        if (!tool)
            continue;
        tool->setStream(self);
        setStream(tool->ChildTools());
    }
}

// Only a change of what is drawn travels upward; engine parameters take effect at the next run
// by themselves.
void DLStream::HandleToolChanged(std::shared_ptr<ChangedEventArgs> args) {
    if (args->Has(DLToolRuntimeParams::SfGraphicsSettings))
        OnChanged_(SfToolsGraphicsChanged);
}

template <class Archive> void DLStream::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLStream::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), name_, uuid_,
            frameWindow_);
    Vision::ArchiveWeakReference(archive, parentWorkspace_);
    archive(tools_);
    if constexpr (Archive::is_loading::value) {
        setStream(tools_);
        SubscribeToToolChanges(tools_);
    }
}

TAVRIN_INSTANTIATE_SERIALIZE(DLStream)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLStream,
                               "Tavrin::Vision::DeepLearning::DLStream")
