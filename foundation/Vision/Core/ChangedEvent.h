#pragma once

#include <memory>

#include <cereal/types/base_class.hpp>

#include "Vision/Core/Event.h"
#include "Vision/Core/Object.h"

namespace Tavrin::Vision {

// The change bits of the raising object, tested against that class's Sf constants.
class ChangedEventArgs {
public:
    explicit ChangedEventArgs(long long changedBits)
        : changedBits_(changedBits) {}
    long long ChangedBits() const { return changedBits_; }
    bool Has(long long bits) const { return (changedBits_ & bits) != 0; }

private:
    long long changedBits_;
};

using ChangedEventArgsPtr = std::shared_ptr<ChangedEventArgs>;
using ChangedEventType = Brnt::Event<ChangedEventArgsPtr const&>;

class IChangedEvent : public virtual Brnt::IObject {
public:
    virtual int ChangedEventSuspended() const = 0;
    virtual ChangedEventType& ChangedEvent() = 0;
    virtual void ResumeAndRaiseChangedEvent() = 0;
    virtual void SuspendChangedEvent() = 0;

    RTTR_ENABLE(IObject)
};

class ChangedEventShareableBase : public virtual ShareableBase, public virtual IChangedEvent {
public:
    // Bit 0 belongs to the first class derived from this one.
    static const long long sfNextSf_ = 1;

    explicit ChangedEventShareableBase(ObjectCreateAccessToken const&) {}

    int ChangedEventSuspended() const override { return suspended_; }
    ChangedEventType& ChangedEvent() override { return changedEvent_; }
    // At the last resume, one event carries every bit raised while suspended.
    void ResumeAndRaiseChangedEvent() override;
    void SuspendChangedEvent() override { ++suspended_; }

protected:
    ChangedEventShareableBase() = default;
    ChangedEventShareableBase(ChangedEventShareableBase const&) = default;
    ChangedEventShareableBase& operator=(ChangedEventShareableBase const&) = default;

    virtual void OnChanged_(std::shared_ptr<ChangedEventArgs> args);
    // Builds the arguments only when someone listens; a class that must see every change
    // overrides this form.
    virtual void OnChanged_(long long changedBits);

private:
    // While suspended, keeps the bits for the last resume and tells so.
    bool Deferred(long long changedBits);

    // Subscriptions and suspension belong to the live object and are not archived.
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int) {
        archive(cereal::virtual_base_class<ShareableBase>(this));
    }

    ChangedEventType changedEvent_;
    int suspended_ = 0;
    long long pendingBits_ = 0;

    RTTR_ENABLE(ShareableBase, IChangedEvent)
};

} // namespace Tavrin::Vision
