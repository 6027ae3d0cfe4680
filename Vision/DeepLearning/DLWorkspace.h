#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>

namespace Tavrin::Vision::DeepLearning {

class DLStreamReadOnlyCollection;

namespace Private {
class DeepLearningAccess;
}

// What a host sees of one opened workspace file: its identity and its streams. Every workspace
// object, master or clone, goes through the engine's close logic when it dies.
class DLWorkspace : public virtual ChangedEventShareableBase {
public:
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long SfOutOfDate = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    ~DLWorkspace() override;

    TAVRIN_SHARED_FROM_THIS(DLWorkspace)

    std::string Name() const { return name_; }
    // The path the workspace was opened from; empty on a workspace loaded from an archive.
    std::string SourceFile() const { return sourceFile_; }
    std::shared_ptr<DLStreamReadOnlyCollection> Streams() const { return streams_; }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;

    DLWorkspace(ObjectCreateAccessToken const&, std::string const& name, std::string const& uuid,
                std::string const& lastModified, std::string const& sourceFile);
    DLWorkspace();

    void FinalConstruct();
    // Raises SfOutOfDate the first time only; the event is the flag's whole effect.
    void SetOutOfDate();

    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::string name_;
    std::string uuid_;
    std::string lastModified_;
    // Not archived: a clone gets it from its master.
    std::string sourceFile_;
    std::shared_ptr<DLStreamReadOnlyCollection> streams_;
    bool outOfDate_ = false;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using DLWorkspacePtr = std::shared_ptr<DLWorkspace>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLWorkspace, 1)
