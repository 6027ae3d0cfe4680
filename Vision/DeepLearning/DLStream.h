#pragma once

#include <memory>
#include <string>
#include <vector>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>

namespace Tavrin::Vision::DeepLearning {

class DLWorkspace;
class DLToolRuntimeParamsReadOnlyCollection;

namespace Private {
class DeepLearningAccess;
}

// One stream of an opened workspace: its identity and the tree of its tools. It hears every
// tool of the tree and passes on the one change that matters to a display.
class DLStream : public virtual ChangedEventShareableBase {
public:
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long SfToolsGraphicsChanged = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    ~DLStream() override;

    TAVRIN_SHARED_FROM_THIS(DLStream)

    std::string Name() const { return name_; }
    std::string UUID() const { return uuid_; }
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> Tools() const { return tools_; }
    // Empty once the workspace has gone.
    std::shared_ptr<DLWorkspace> ParentWorkspace() const { return parentWorkspace_.lock(); }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;

    DLStream(ObjectCreateAccessToken const&, std::shared_ptr<DLWorkspace> workspace,
             std::string const& name, std::string const& uuid, std::string const& frameWindow);
    DLStream();

    void FinalConstruct();
    // One connection per tool of the whole tree; a second call would double them.
    void
    SubscribeToToolChanges(std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools);
    // Gives each tool of the tree this stream.
    void setStream(std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools);
    void HandleToolChanged(std::shared_ptr<ChangedEventArgs> args);

    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::vector<Brnt::ScopedConnection> toolConnections_;
    std::string name_;
    std::string uuid_;
    // Archived; nothing reads it.
    std::string frameWindow_;
    std::weak_ptr<DLWorkspace> parentWorkspace_;
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> tools_;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using DLStreamPtr = std::shared_ptr<DLStream>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLStream, 1)
