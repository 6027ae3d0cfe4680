#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Vision/Core/Archive.h"
#include "Vision/Core/CollectionInterfaces.h"
#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Meta.h"
#include "Vision/Core/Object.h"

namespace Tavrin::Vision::Implementation {

// A list filled once, by a derived collection's constructor or by the archive, and only read
// after that. For shared pointers, "the same item" means the same object, never an equal one.
//
// A typed collection is a class over an instance of this template with no fields of its own:
//
//   class DLResultViewReadOnlyCollection
//       : public Implementation::ReadOnlyCollectionBase<DLResultViewPtr> {
//       TAVRIN_READ_ONLY_COLLECTION(DLResultViewReadOnlyCollection, DLResultViewPtr,
//                                   std::vector<DLResultViewPtr> const&,
//                                   "DLResultViewReadOnlyCollection::serialize()")
//       friend class Private::DeepLearningAccess; // whoever else may build one
//   };
//   TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultViewReadOnlyCollection, 1)
//
// and in one source file, at global scope, the archive names of the class and of the template
// instance (the instance once per element type in the process):
//
//   TAVRIN_REGISTER_READ_ONLY_COLLECTION(Tavrin::Vision::DeepLearning::DLResultViewReadOnlyCollection,
//       "Tavrin::Vision::DeepLearning::DLResultViewReadOnlyCollection")
//   TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(Tavrin::Vision::DeepLearning::DLResultViewPtr,
//       "Tavrin::Vision::Implementation::ReadOnlyCollectionBase<"
//       "Tavrin::Vision::DeepLearning::DLResultViewPtr>")
//
// Every instance of the template is at archive version 1 through the partial specialisation at
// the end of this header. Reflection of an instance is registered by the library that owns the
// element type, with an "Item" method of one int parameter, which GetFakeProperties relies on.
template <class T>
class ReadOnlyCollectionBase : public virtual ShareableBase,
                               public virtual Brnt::IReadOnlyCollection<T>,
                               public virtual Meta::IHaveFakePropertyMeta {
public:
    using value_type = T;
    using const_iterator = typename std::vector<T>::const_iterator;
    using const_reverse_iterator = typename std::vector<T>::const_reverse_iterator;

    explicit ReadOnlyCollectionBase(ObjectCreateAccessToken const&) {}

    virtual long long Capacity() const { return static_cast<long long>(items_.capacity()); }
    virtual bool IsReadOnly() const { return true; }
    virtual bool Contains(T const& item) const { return Find(item) != items_.cend(); }
    // The first index holding that very item, else -1.
    virtual int IndexOf(T const& item) const {
        auto const found = Find(item);
        return found == items_.cend() ? -1 : static_cast<int>(found - items_.cbegin());
    }

private:
    virtual void throwIfBadIndex(int index) const {
        if (index < 0 || index >= static_cast<int>(items_.size()))
            Internal::ThrowInvalidCollectionIndexException();
    }

public:
    int Count() const override { return static_cast<int>(items_.size()); }
    T Item(int index) override {
        throwIfBadIndex(index);
        return items_[index];
    }
    Meta::FakePropertyMetaListPtr GetFakeProperties() override {
        return Meta::Internal::GetItemFakeProperties(get_type(), *this);
    }
    std::string ToString() const override { return "ReadOnlyCollectionBase"; }

    // Unchecked reads.
    std::vector<T> const& GetDataC() const { return items_; }
    const_iterator begin() const { return items_.cbegin(); }
    const_iterator end() const { return items_.cend(); }
    const_iterator cbegin() const { return items_.cbegin(); }
    const_iterator cend() const { return items_.cend(); }
    const_reverse_iterator crbegin() const { return items_.crbegin(); }
    const_reverse_iterator crend() const { return items_.crend(); }

protected:
    ReadOnlyCollectionBase() = default;
    explicit ReadOnlyCollectionBase(std::vector<T> const& items)
        : items_(items) {}
    explicit ReadOnlyCollectionBase(std::vector<T>&& items)
        : items_(std::move(items)) {}

private:
    const_iterator Find(T const& item) const {
        return std::find(items_.cbegin(), items_.cend(), item);
    }

    // The vector goes as cereal's: a 64-bit count, then each item; a load resizes first and
    // reads each item in place.
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        CheckLoadedVersion<Archive>(version, 1, "ReadOnlyCollectionBase::serialize()");
        archive(cereal::virtual_base_class<ShareableBase>(this), items_);
    }

    std::vector<T> items_;

    RTTR_ENABLE(ShareableBase, Brnt::IReadOnlyCollection<T>, Meta::IHaveFakePropertyMeta)
};

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_TEMPLATE((class T), 1, ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<T>)

// The members of a typed read-only collection, placed inside its class body: the typed
// shared_from_this pair, a public factory constructor and the private constructors (empty, for
// the archive, and from the items), the archive member that saves the base only, and reflection.
// VectorArgument is how the private constructor takes its vector, by value or by const&; a vector
// taken by value moves into the base.
#define TAVRIN_READ_ONLY_COLLECTION(Class, ElementPtr, VectorArgument, VersionText)                \
public:                                                                                            \
    Class(::Tavrin::Brnt::IObject::ObjectCreateAccessToken const&, VectorArgument items)           \
        : ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ElementPtr>(                    \
              std::forward<VectorArgument>(items)) {}                                              \
    TAVRIN_SHARED_FROM_THIS(Class)                                                                 \
                                                                                                   \
private:                                                                                           \
    Class() = default;                                                                             \
    explicit Class(VectorArgument items)                                                           \
        : ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ElementPtr>(                    \
              std::forward<VectorArgument>(items)) {}                                              \
    friend class cereal::access;                                                                   \
    template <class Archive> void serialize(Archive& archive, unsigned int version) {              \
        ::Tavrin::Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, VersionText);    \
        archive(cereal::base_class<                                                                \
                ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ElementPtr>>(this));      \
    }                                                                                              \
    RTTR_ENABLE(::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ElementPtr>)

// The archive name of a typed read-only collection; at global scope in one source file.
#define TAVRIN_REGISTER_READ_ONLY_COLLECTION(Class, Name)                                          \
    CEREAL_REGISTER_TYPE_WITH_NAME(Class, Name)

// The archive name of the template instance for one element pointer type, and the link from its
// interface, through which a pointer may travel too; once per element type, at global scope.
#define TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(ElementPtr, Name)                                \
    CEREAL_REGISTER_TYPE_WITH_NAME(                                                                \
        ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ElementPtr>, Name)                \
    CEREAL_REGISTER_POLYMORPHIC_RELATION(                                                          \
        ::Tavrin::Brnt::IReadOnlyCollection<ElementPtr>,                                           \
        ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ElementPtr>)
