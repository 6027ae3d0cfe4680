#pragma once

#include <algorithm>
#include <string>
#include <type_traits>
#include <vector>

#include "Vision/Core/CollectionBase.h"

namespace Tavrin::Vision::Implementation {

// A list whose items are also found by a key that each item carries. Keys may repeat: a lookup
// gives the first item with the key. Collections stay small, so lookups scan the list.
template <class K, class V>
class KeyedCollectionBase : public CollectionBase<V>,
                            public virtual Brnt::IReadOnlyDictionary<K, V>,
                            public virtual Brnt::IDictionaryEvents<K, V> {
public:
    bool ContainsKey(K const& key) const override { return Find(key) != this->end(); }

    bool TryGetValue(K const& key, V& value) const override {
        auto const found = Find(key);
        if (found == this->end())
            return false;
        value = *found;
        return true;
    }

    V ItemByKey(K const& key) const override {
        auto const found = Find(key);
        if (found == this->end())
            throw ArgumentException("No item of the collection has the key " + KeyText(key));
        return *found;
    }

    std::vector<K> Keys() const override {
        std::vector<K> keys;
        for (V const& item : this->GetDataC())
            keys.push_back(KeyOf(item));
        return keys;
    }

    Brnt::Event<K const&, V const&>& KeyAddedEvent() override { return keyAdded_; }
    Brnt::Event<K const&, V const&>& KeyRemovedEvent() override { return keyRemoved_; }

protected:
    KeyedCollectionBase() = default;

    virtual K KeyOf(V const& item) const = 0;

    void ItemEntered(int, V const& item) override { keyAdded_.Raise(KeyOf(item), item); }
    void ItemLeft(int, V const& item) override { keyRemoved_.Raise(KeyOf(item), item); }

private:
    typename CollectionBase<V>::const_iterator Find(K const& key) const {
        return std::find_if(this->begin(), this->end(),
                            [&](V const& item) { return KeyOf(item) == key; });
    }

    static std::string KeyText(K const& key) {
        if constexpr (std::is_convertible_v<K, std::string>)
            return key;
        else
            return std::to_string(key);
    }

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        CheckLoadedVersion<Archive>(version, 1, "KeyedCollectionBase<>::serialize()");
        archive(cereal::base_class<CollectionBase<V>>(this));
    }

    Brnt::Event<K const&, V const&> keyAdded_;
    Brnt::Event<K const&, V const&> keyRemoved_;

    RTTR_ENABLE(CollectionBase<V>, Brnt::IReadOnlyDictionary<K, V>)
};

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_TEMPLATE((class K, class V), 1,
                         ::Tavrin::Vision::Implementation::KeyedCollectionBase<K, V>)
