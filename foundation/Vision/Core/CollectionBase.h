#pragma once

#include <memory>
#include <vector>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/CollectionInterfaces.h"
#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision::Implementation {

// A list that announces every change before and after it happens.
template <class T>
class CollectionBase : public virtual ChangedEventShareableBase,
                       public virtual Brnt::ICollection<T> {
public:
    using value_type = T;
    using const_iterator = typename std::vector<T>::const_iterator;

    explicit CollectionBase(ObjectCreateAccessToken const&) {}
    CollectionBase(ObjectCreateAccessToken const&, std::vector<T> items)
        : items_(std::move(items)) {}

    void Add(T const& item) override { Insert(Count(), item); }

    void Insert(int index, T const& item) override {
        if (index < 0 || index > Count())
            Internal::ThrowInvalidCollectionIndexException();
        inserting_.Raise(index, item);
        items_.insert(items_.begin() + index, item);
        inserted_.Raise(index, items_[index]);
    }

    void RemoveAt(int index) override {
        throwIfBadIndex(index);
        T const item = items_[index];
        removing_.Raise(index, item);
        items_.erase(items_.begin() + index);
        removed_.Raise(index, item);
    }

    void Replace(int index, T const& item) override {
        throwIfBadIndex(index);
        T const old = items_[index];
        replacing_.Raise(index, old, item);
        items_[index] = item;
        replaced_.Raise(index, old, items_[index]);
    }

    void Move(int fromIndex, int toIndex) override {
        throwIfBadIndex(fromIndex);
        throwIfBadIndex(toIndex);
        moving_.Raise(fromIndex, toIndex);
        T item = std::move(items_[fromIndex]);
        items_.erase(items_.begin() + fromIndex);
        items_.insert(items_.begin() + toIndex, std::move(item));
        moved_.Raise(fromIndex, toIndex);
    }

    void Clear() override {
        clearing_.Raise();
        items_.clear();
        cleared_.Raise();
    }

    int Count() const override { return static_cast<int>(items_.size()); }
    T Item(int index) override {
        throwIfBadIndex(index);
        return items_[index];
    }

    std::vector<T> const& GetDataC() const { return items_; }
    const_iterator begin() const { return items_.cbegin(); }
    const_iterator end() const { return items_.cend(); }

    Brnt::Event<>& ClearingEvent() override { return clearing_; }
    Brnt::Event<>& ClearedEvent() override { return cleared_; }
    Brnt::Event<int, T const&>& InsertingItemEvent() override { return inserting_; }
    Brnt::Event<int, T const&>& InsertedItemEvent() override { return inserted_; }
    Brnt::Event<int, int>& MovingItemEvent() override { return moving_; }
    Brnt::Event<int, int>& MovedItemEvent() override { return moved_; }
    Brnt::Event<int, T const&>& RemovingItemEvent() override { return removing_; }
    Brnt::Event<int, T const&>& RemovedItemEvent() override { return removed_; }
    Brnt::Event<int, T const&, T const&>& ReplacingItemEvent() override { return replacing_; }
    Brnt::Event<int, T const&, T const&>& ReplacedItemEvent() override { return replaced_; }

protected:
    CollectionBase() = default;

    std::vector<T>& Items() { return items_; }

private:
    void throwIfBadIndex(int index) const {
        if (index < 0 || index >= Count())
            Internal::ThrowInvalidCollectionIndexException();
    }

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        CheckLoadedVersion<Archive>(version, 1, "Collection<>::serialize()");
        archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), items_);
    }

    std::vector<T> items_;
    Brnt::Event<> clearing_;
    Brnt::Event<> cleared_;
    Brnt::Event<int, T const&> inserting_;
    Brnt::Event<int, T const&> inserted_;
    Brnt::Event<int, int> moving_;
    Brnt::Event<int, int> moved_;
    Brnt::Event<int, T const&> removing_;
    Brnt::Event<int, T const&> removed_;
    Brnt::Event<int, T const&, T const&> replacing_;
    Brnt::Event<int, T const&, T const&> replaced_;

    RTTR_ENABLE(ChangedEventShareableBase)
};

} // namespace Tavrin::Vision::Implementation
