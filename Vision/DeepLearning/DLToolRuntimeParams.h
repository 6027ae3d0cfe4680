#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>
#include <Vision/DeepLearning/Implementation/ParameterRules.h>

namespace Tavrin::Vision::DeepLearning {

class DLStream;
class DLToolRuntimeParamsReadOnlyCollection;

namespace Private {
class DeepLearningAccess;
template <class Root> class ParameterSet;
struct ParameterTables;
} // namespace Private

// The runtime parameters of one engine tool, mirrored as typed fields: read from the engine
// once when built, edited freely, written back at the start of every run. Tools form a tree
// that hangs from a stream; the tree owns downward only.
class DLToolRuntimeParams : public Private::ParameterSetters {
public:
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    // No property behind it: or-ed into a flag word, it says that only drawing is affected.
    static constexpr long long SfGraphicsSettings = sf0_;
    static constexpr long long SfShowRegion = sf0_ << 1;
    static constexpr long long SfAddImageRecords = sf0_ << 2;
    static constexpr long long sfNextSf_ = sf0_ << 3;

    // A null childTools becomes an empty collection.
    DLToolRuntimeParams(ObjectCreateAccessToken const&, std::shared_ptr<DLStream> stream,
                        std::string name, std::string id, std::string type, std::string status,
                        std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools);
    ~DLToolRuntimeParams() override;

    TAVRIN_SHARED_FROM_THIS(DLToolRuntimeParams)

    // The tool's name in its stream, by which the engine addresses it.
    std::string Name() const { return name_; }
    std::string Id() const { return id_; }
    // The engine's type word, which chose the class.
    std::string Type() const { return type_; }
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> ChildTools() const {
        return childTools_;
    }
    // Empty for a top-level tool, and once the owner has gone.
    std::shared_ptr<DLToolRuntimeParams> Parent() const { return parent_.lock(); }
    std::shared_ptr<DLStream> Stream() const { return stream_.lock(); }

    bool ShowRegion() const { return showRegion_; }
    void setShowRegion(bool value) { StoreGraphicsSetting(showRegion_, value, SfShowRegion); }
    bool AddImageRecords() const { return addImageRecords_; }
    void setAddImageRecords(bool value) { Store(addImageRecords_, value, SfAddImageRecords); }

    // Writes every engine-backed field; reached through the access object only.
    virtual void ApplyRuntimeParameters();
    // Reads every engine-backed field; runs once the object is owned by a shared pointer.
    virtual void FinalConstruct();

protected:
    // The table of this class or of a subclass, as the root walks it.
    using OwnParameterSet = Private::ParameterSet<DLToolRuntimeParams>;

    DLToolRuntimeParams();

    // A setting that only changes the drawing raises the graphics flag besides its own.
    void StoreGraphicsSetting(bool& field, bool value, long long flag) {
        Store(field, value, flag | SfGraphicsSettings);
    }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class DLStream;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    // The settings of every tool; each subclass states its own table and returns it here.
    static OwnParameterSet const& Parameters();
    virtual OwnParameterSet const& OwnParameters() const { return Parameters(); }

    void setParent(std::shared_ptr<DLToolRuntimeParams> const& parent);
    void setStream(std::shared_ptr<DLStream> const& stream);

    template <class Archive> void serialize(Archive& archive, unsigned int version);
    void AdoptChildTools();

    std::weak_ptr<DLToolRuntimeParams> parent_;
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> childTools_;
    std::weak_ptr<DLStream> stream_;
    std::string name_;
    std::string id_;
    // Archived with the tool; nothing reads it.
    std::string status_;
    std::string type_;
    bool showRegion_ = true;
    bool addImageRecords_ = true;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using DLToolRuntimeParamsPtr = std::shared_ptr<DLToolRuntimeParams>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLToolRuntimeParams, 1)
