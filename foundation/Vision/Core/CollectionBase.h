#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/CollectionInterfaces.h"
#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Meta.h"

namespace Tavrin::Vision::Implementation {

// A list that announces every change before and after it happens.
//
// Derived collections take part through three protected hooks: CheckAcceptable may refuse an
// item before any event is raised; ItemEntered and ItemLeft follow each item into and out of the
// list, after the change and before its after-event, so that handlers see the derived state
// already updated. A replacement is the old item leaving and the new one entering.
//
// Every instance is at archive version 1. The archive name of an instance is registered once per
// element type with TAVRIN_REGISTER_COLLECTION_BASE, below.
template <class T>
class CollectionBase : public virtual ChangedEventShareableBase,
                       public virtual Brnt::ICollection<T>,
                       public virtual Meta::IHaveFakePropertyMeta {
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
        CheckAcceptable(item, -1);
        inserting_.Raise(index, item);
        items_.insert(items_.begin() + index, item);
        ItemEntered(index, items_[index]);
        inserted_.Raise(index, items_[index]);
    }

    void RemoveAt(int index) override {
        throwIfBadIndex(index);
        T const item = items_[index];
        removing_.Raise(index, item);
        items_.erase(items_.begin() + index);
        ItemLeft(index, item);
        removed_.Raise(index, item);
    }

    void Replace(int index, T const& item) override {
        throwIfBadIndex(index);
        CheckAcceptable(item, index);
        T const old = items_[index];
        replacing_.Raise(index, old, item);
        items_[index] = item;
        ItemLeft(index, old);
        ItemEntered(index, items_[index]);
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
        std::vector<T> const gone = std::exchange(items_, {});
        for (std::size_t index = 0; index < gone.size(); ++index)
            ItemLeft(static_cast<int>(index), gone[index]);
        cleared_.Raise();
    }

    int Count() const override { return static_cast<int>(items_.size()); }
    T Item(int index) override {
        throwIfBadIndex(index);
        return items_[index];
    }
    Meta::FakePropertyMetaListPtr GetFakeProperties() override {
        return Meta::Internal::GetItemFakeProperties(get_type(), *this);
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

    // Throws to refuse an item; replacedIndex is the index it would replace, or -1 for an insert.
    virtual void CheckAcceptable(T const&, int) const {}
    virtual void ItemEntered(int, T const&) {}
    virtual void ItemLeft(int, T const&) {}

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

    RTTR_ENABLE(ChangedEventShareableBase, Brnt::ICollection<T>, Meta::IHaveFakePropertyMeta)
};

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_TEMPLATE((class T), 1, ::Tavrin::Vision::Implementation::CollectionBase<T>)

// The archive name of the instance for one element type, and the link from its interface, through
// which a pointer may travel too; once per element type, at global scope in one source file.
#define TAVRIN_REGISTER_COLLECTION_BASE(Element, Name)                                             \
    CEREAL_REGISTER_TYPE_WITH_NAME(::Tavrin::Vision::Implementation::CollectionBase<Element>,      \
                                   Name)                                                           \
    CEREAL_REGISTER_POLYMORPHIC_RELATION(                                                          \
        ::Tavrin::Brnt::ICollection<Element>,                                                      \
        ::Tavrin::Vision::Implementation::CollectionBase<Element>)
