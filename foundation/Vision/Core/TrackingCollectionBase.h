#pragma once

#include <map>
#include <memory>
#include <string>

#include "Vision/Core/KeyedCollectionBase.h"
#include "Vision/Core/TrackedItemBase.h"

namespace Tavrin::Vision::Implementation {

// A collection of tracked items, keyed by their names, that keeps names unique: it refuses a null
// item or one whose name another item has, and refuses a rename to such a name. An item that
// comes in with the identity of another one gets a fresh identity. Items get the collection's
// owner as parent while they are in it.
//
// T is a shared pointer to a class derived from ITrackingCollectionTrackedItem. The archive saves
// the list; a load takes every item back as an insert would, and a refusal there goes through
// ThrowLoadedItemRefused. The owner is not archived: the owner sets itself again after its load.
template <class T> class TrackingCollectionBase : public KeyedCollectionBase<std::string, T> {
public:
    explicit TrackingCollectionBase(Brnt::IObject::ObjectCreateAccessToken const&) {}

    // The item with that identity, or null.
    T ItemByID(std::string const& id) const {
        for (T const& item : this->GetDataC())
            if (item->ID() == id)
                return item;
        return nullptr;
    }

    std::shared_ptr<Brnt::IObject> Owner() const { return owner_.lock(); }
    // Makes the owner the parent of every item, now and when added later.
    void setOwner(std::shared_ptr<Brnt::IObject> const& owner) {
        owner_ = owner;
        for (T const& item : this->GetDataC())
            item->setParent(owner);
    }

protected:
    TrackingCollectionBase() = default;

    std::string KeyOf(T const& item) const override { return item->Name(); }

    void CheckAcceptable(T const& item, int replacedIndex) const override {
        if (!item)
            throw ArgumentException("A tracking collection cannot hold a null item");
        int const holder = IndexOfName(item->Name());
        if (holder >= 0 && holder != replacedIndex)
            throw ArgumentException(NameTakenText(item->Name()));
    }

    void ItemEntered(int index, T const& item) override {
        if (IdentityTakenByAnother(item))
            item->ReGuid();
        item->setParent(Owner());
        WatchName(item);
        KeyedCollectionBase<std::string, T>::ItemEntered(index, item);
    }

    void ItemLeft(int index, T const& item) override {
        nameWatches_.erase(item.get());
        item->setParent(nullptr);
        KeyedCollectionBase<std::string, T>::ItemLeft(index, item);
    }

    // Called when a loaded item cannot be taken back; the default throws the refusal again as a
    // SerializationException.
    [[noreturn]] virtual void ThrowLoadedItemRefused(T const&,
                                                     VisionException const& refusal) const {
        throw SerializationException(refusal.Message());
    }

private:
    static std::string NameTakenText(std::string const& name) {
        return "The name " + name + " is already used in this collection";
    }

    int IndexOfName(std::string const& name) const {
        auto const& items = this->GetDataC();
        for (std::size_t index = 0; index < items.size(); ++index)
            if (items[index]->Name() == name)
                return static_cast<int>(index);
        return -1;
    }

    bool IdentityTakenByAnother(T const& item) const {
        for (T const& other : this->GetDataC())
            if (other != item && other->ID() == item->ID())
                return true;
        return false;
    }

    // The connection lives in the collection, so the handler never outlives it.
    void WatchName(T const& item) {
        void const* const watched = item.get();
        nameWatches_[watched] = item->NameChangingEvent().Connect(
            [this, watched](CancelChangingStringEventArgsPtr& args) {
                int const holder = IndexOfName(args->NewValue());
                if (holder >= 0 && this->GetDataC()[holder].get() != watched)
                    args->Cancel(NameTakenText(args->NewValue()));
            });
    }

    // After a load: the items take their places again one by one, checked, re-identified where
    // needed, parented and watched.
    void ReInitNamesAndIDs() {
        std::vector<T> const loaded = std::exchange(this->Items(), {});
        nameWatches_.clear();
        for (T const& item : loaded) {
            try {
                CheckAcceptable(item, -1);
            } catch (VisionException const& refusal) {
                ThrowLoadedItemRefused(item, refusal);
            }
            this->Items().push_back(item);
            ItemEntered(this->Count() - 1, item);
        }
    }

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        CheckLoadedVersion<Archive>(version, 1, "TrackingCollectionBase<>::serialize()");
        archive(cereal::base_class<KeyedCollectionBase<std::string, T>>(this));
        if constexpr (Archive::is_loading::value)
            ReInitNamesAndIDs();
    }

    std::weak_ptr<Brnt::IObject> owner_;
    std::map<void const*, Brnt::ScopedConnection> nameWatches_;

    RTTR_ENABLE(KeyedCollectionBase<std::string, T>)
};

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_TEMPLATE((class T), 1, ::Tavrin::Vision::Implementation::TrackingCollectionBase<T>)
