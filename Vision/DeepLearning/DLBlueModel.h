#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>
#include <Vision/DeepLearning/Implementation/ParameterRules.h>

namespace Tavrin::Vision::DeepLearning {

class DLToolRuntimeParams;

namespace Private {
class DeepLearningAccess;
template <class Root> class ParameterSet;
struct ParameterTables;
} // namespace Private

// One named model of a blue tool. Its engine parameters live under the model's name and are
// reached through the owning tool, which must outlive every read and write.
class DLBlueModel : public Private::ParameterSetters {
public:
    // No marker bit here: bit 0 is the model's own switch.
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long SfEnable = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    ~DLBlueModel() override;

    TAVRIN_SHARED_FROM_THIS(DLBlueModel)

    std::string Name() const { return name_; }
    bool Enable() const { return enable_; }
    void setEnable(bool value) { Store(enable_, value, SfEnable); }

    std::shared_ptr<DLToolRuntimeParams> Parent() const { return parent_.lock(); }
    void setParent(std::shared_ptr<DLToolRuntimeParams> const& parent);

    // Writes every field, whether the model is enabled or not.
    virtual void ApplyRuntimeParameters();

protected:
    // The table of this class or of a subclass, as the root walks it.
    using OwnParameterSet = Private::ParameterSet<DLBlueModel>;

    DLBlueModel(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                std::string name);
    DLBlueModel();

    virtual void FinalConstruct();

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    // The switch of every model; each subclass states its own table and returns it here.
    static OwnParameterSet const& Parameters();
    virtual OwnParameterSet const& OwnParameters() const { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::weak_ptr<DLToolRuntimeParams> parent_;
    std::string name_;
    bool enable_ = false;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using DLBlueModelPtr = std::shared_ptr<DLBlueModel>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueModel, 1)
