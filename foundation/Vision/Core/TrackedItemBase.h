#pragma once

#include <memory>
#include <string>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/Event.h"

namespace Tavrin::Vision {

// A proposed change of a text, which any handler may refuse with a reason.
class CancelChangingStringEventArgs {
public:
    CancelChangingStringEventArgs(std::string oldValue, std::string newValue)
        : oldValue_(std::move(oldValue))
        , newValue_(std::move(newValue)) {}

    std::string const& OldValue() const { return oldValue_; }
    std::string const& NewValue() const { return newValue_; }
    void Cancel(std::string reason) {
        canceled_ = true;
        reason_ = std::move(reason);
    }
    bool Canceled() const { return canceled_; }
    std::string const& Reason() const { return reason_; }

private:
    std::string oldValue_;
    std::string newValue_;
    bool canceled_ = false;
    std::string reason_;
};

using CancelChangingStringEventArgsPtr = std::shared_ptr<CancelChangingStringEventArgs>;
using NameChangingEventType = Brnt::Event<CancelChangingStringEventArgsPtr&>;

} // namespace Tavrin::Vision

namespace Tavrin::Vision::Implementation {

// An item that a tracking collection keeps unique by name and identity.
class ITrackingCollectionTrackedItem : public virtual IChangedEvent {
public:
    virtual std::string ID() const = 0;
    virtual std::shared_ptr<Brnt::IObject> Parent() const = 0;
    virtual void setParent(std::shared_ptr<Brnt::IObject> parent) = 0;
    virtual void ReGuid() = 0;
    virtual std::string Name() const = 0;
    virtual void setName(std::string const& name) = 0;
    virtual NameChangingEventType& NameChangingEvent() = 0;

    RTTR_ENABLE(IChangedEvent)
};

// Identity, parent and name of a tracked item. The identity is a fresh GUID text for each new
// item. The parent is held weakly, since parents own their items. A rename is announced by
// NameChangingEvent first; when a handler refuses it, setName throws ArgumentException with the
// handler's reason and nothing changes.
class TrackedItemBase : public virtual ChangedEventShareableBase,
                        public virtual ITrackingCollectionTrackedItem {
public:
    static const long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static const long long SfName = sf0_;
    static const long long sfNextSf_ = sf0_ << 1;

    explicit TrackedItemBase(ObjectCreateAccessToken const&);
    TrackedItemBase(ObjectCreateAccessToken const&, std::string const& name);

    std::string ID() const override { return id_; }
    std::shared_ptr<Brnt::IObject> Parent() const override { return parent_.lock(); }
    void setParent(std::shared_ptr<Brnt::IObject> parent) override { parent_ = parent; }
    void ReGuid() override;
    std::string Name() const override { return name_; }
    void setName(std::string const& name) override;
    NameChangingEventType& NameChangingEvent() override { return nameChanging_; }

protected:
    TrackedItemBase() = default;
    TrackedItemBase(TrackedItemBase const&) = default;

    // Throws ArgumentException for a name that the class does not accept; the base takes any.
    virtual void CheckName(std::string const& name) const;

private:
    // The parent is not archived: the collection that holds the item sets it again on load.
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::string id_;
    std::weak_ptr<Brnt::IObject> parent_;
    std::string name_;
    NameChangingEventType nameChanging_;

    RTTR_ENABLE(ChangedEventShareableBase, ITrackingCollectionTrackedItem)
};

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Implementation::TrackedItemBase, 1)
