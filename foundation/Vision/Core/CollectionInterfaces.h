#pragma once

#include <string>
#include <vector>

#include <rttr/type>

#include "Vision/Core/Event.h"

namespace Tavrin::Brnt {

class ICountable {
public:
    virtual ~ICountable() = default;
    virtual int Count() const = 0;

    RTTR_ENABLE()
};

template <class T> class IReadOnlyCollection : public virtual ICountable {
public:
    virtual T Item(int index) = 0;

    RTTR_ENABLE(ICountable)
};

// Every change of a collection is announced before and after it happens.
template <class T> class ICollectionEvents {
public:
    virtual ~ICollectionEvents() = default;
    virtual Event<>& ClearingEvent() = 0;
    virtual Event<>& ClearedEvent() = 0;
    virtual Event<int, T const&>& InsertingItemEvent() = 0;
    virtual Event<int, T const&>& InsertedItemEvent() = 0;
    virtual Event<int, int>& MovingItemEvent() = 0;
    virtual Event<int, int>& MovedItemEvent() = 0;
    virtual Event<int, T const&>& RemovingItemEvent() = 0;
    virtual Event<int, T const&>& RemovedItemEvent() = 0;
    // Index, old item, new item.
    virtual Event<int, T const&, T const&>& ReplacingItemEvent() = 0;
    virtual Event<int, T const&, T const&>& ReplacedItemEvent() = 0;
};

template <class T>
class ICollection : public virtual IReadOnlyCollection<T>, public virtual ICollectionEvents<T> {
public:
    virtual void Add(T const& item) = 0;
    virtual void Insert(int index, T const& item) = 0;
    virtual void RemoveAt(int index) = 0;
    virtual void Replace(int index, T const& item) = 0;
    virtual void Move(int fromIndex, int toIndex) = 0;
    virtual void Clear() = 0;

    RTTR_ENABLE(IReadOnlyCollection<T>)
};

// Lookup of items by a key. Several items may share a key; lookups give the first of them.
template <class K, class V> class IReadOnlyDictionary : public virtual ICountable {
public:
    virtual bool ContainsKey(K const& key) const = 0;
    // Leaves value untouched and answers false when no item has the key.
    virtual bool TryGetValue(K const& key, V& value) const = 0;
    // Throws ArgumentException when no item has the key.
    virtual V ItemByKey(K const& key) const = 0;
    // In the order of the items, with repeated keys repeated.
    virtual std::vector<K> Keys() const = 0;

    RTTR_ENABLE(ICountable)
};

// Raised when an item enters or leaves the collection under its key, before the collection's
// own after-event of the change.
template <class K, class V> class IDictionaryEvents {
public:
    virtual ~IDictionaryEvents() = default;
    virtual Event<K const&, V const&>& KeyAddedEvent() = 0;
    virtual Event<K const&, V const&>& KeyRemovedEvent() = 0;
};

} // namespace Tavrin::Brnt
