#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>

namespace Tavrin::Vision::DeepLearning {

class DLToolRuntimeParams;

namespace Private {
class DeepLearningAccess;
}

// One named model of a blue tool. Its engine parameters live under the model's name and are
// reached through the owning tool, which must outlive every read and write.
class DLBlueModel : public virtual ChangedEventShareableBase {
public:
    // No marker bit here: bit 0 is the model's own switch.
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long SfEnable = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    ~DLBlueModel() override;

    TAVRIN_SHARED_FROM_THIS(DLBlueModel)

    std::string Name() const { return name_; }
    bool Enable() const { return enable_; }
    void setEnable(bool value);

    std::shared_ptr<DLToolRuntimeParams> Parent() const { return parent_.lock(); }
    void setParent(std::shared_ptr<DLToolRuntimeParams> const& parent);

    // Writes every field, whether the model is enabled or not.
    virtual void ApplyRuntimeParameters();

protected:
    DLBlueModel(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                std::string name);
    DLBlueModel();

    virtual void FinalConstruct();

    // "models/<name>/<key>".
    std::string getPropertyPath(std::string const& key) const;
    // One parameter of this model, through the owning tool. The text is the engine's and must
    // be copied or converted at once.
    char const* GetModelParameter(Private::DeepLearningAccess& access, char const* key) const;
    void SetModelParameter(Private::DeepLearningAccess& access, char const* key,
                           std::string const& value) const;

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;

    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::weak_ptr<DLToolRuntimeParams> parent_;
    std::string name_;
    bool enable_ = false;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using DLBlueModelPtr = std::shared_ptr<DLBlueModel>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueModel, 1)
