#pragma once

#include <memory>
#include <string>
#include <utility>

#include <cereal/access.hpp>
#include <rttr/registration_friend.h>
#include <rttr/type>

namespace Tavrin::Brnt {

class ObjectFactory;

// Root of every object of the framework. Shareable objects can only be built by the factory,
// which alone can make a creation token.
class IObject {
public:
    class ObjectCreateAccessToken {
        friend class ObjectFactory;
        ObjectCreateAccessToken() = default;
    };

    virtual ~IObject() = default;

protected:
    IObject() = default;
    IObject(IObject const&) = default;
    IObject& operator=(IObject const&) = default;
    explicit IObject(ObjectCreateAccessToken const&) {}

    RTTR_ENABLE()
};

class ObjectBase : public virtual IObject {
public:
    explicit ObjectBase(ObjectCreateAccessToken const&) {}
    virtual std::string ToString() const;

protected:
    ObjectBase() = default;

    RTTR_ENABLE(IObject)
};

// Lets the factory construct classes whose constructors are private: allocate_shared builds
// through the allocator, and only the allocator and the factory are befriended.
template <class T> struct ObjectAllocator {
    using value_type = T;
    ObjectAllocator() = default;
    template <class U> ObjectAllocator(ObjectAllocator<U> const&) {}
    T* allocate(std::size_t n) { return std::allocator<T>().allocate(n); }
    void deallocate(T* p, std::size_t n) { std::allocator<T>().deallocate(p, n); }
    template <class U, class... Args> void construct(U* p, Args&&... args) {
        ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
    }
    template <class U> void destroy(U* p) { p->~U(); }
    template <class U> bool operator==(ObjectAllocator<U> const&) const { return true; }
    template <class U> bool operator!=(ObjectAllocator<U> const&) const { return false; }
};

// The one holder of the creation token.
class ObjectFactory {
public:
    // Builds the object in one allocation and binds shared_from_this, without FinalConstruct;
    // for builders that must wire an object before it finishes its construction.
    template <class T, class... Args> static std::shared_ptr<T> Construct(Args&&... args) {
        return std::allocate_shared<T>(ObjectAllocator<T>(), IObject::ObjectCreateAccessToken(),
                                       std::forward<Args>(args)...);
    }

    template <class T, class... Args> static std::shared_ptr<T> Create(Args&&... args) {
        auto object = Construct<T>(std::forward<Args>(args)...);
        RunFinalConstruct(*object, 0);
        return object;
    }

    template <class T> static void FinalConstruct(T& object) { RunFinalConstruct(object, 0); }

private:
    template <class T>
    static auto RunFinalConstruct(T& object, int) -> decltype(object.FinalConstruct(), void()) {
        object.FinalConstruct();
    }
    template <class T> static void RunFinalConstruct(T&, long) {}
};

template <class T, class... Args> std::shared_ptr<T> CreateObject(Args&&... args) {
    return ObjectFactory::Create<T>(std::forward<Args>(args)...);
}

} // namespace Tavrin::Brnt

// Grants the factory access to private constructors and FinalConstruct.
#define TAVRIN_OBJECT_FACTORY_ACCESS                                                               \
    template <class> friend struct ::Tavrin::Brnt::ObjectAllocator;                                \
    friend class ::Tavrin::Brnt::ObjectFactory;

namespace Tavrin::Vision {

class ShareableBase : public std::enable_shared_from_this<ShareableBase>,
                      public virtual Brnt::IObject {
public:
    explicit ShareableBase(ObjectCreateAccessToken const&) {}
    virtual std::string ToString() const;

protected:
    ShareableBase() = default;
    ShareableBase(ShareableBase const&) : IObject(), std::enable_shared_from_this<ShareableBase>() {}
    ShareableBase& operator=(ShareableBase const&) { return *this; }

    // Shareable classes sit behind virtual bases, so the typed pairs need a dynamic cast.
    template <class T> std::shared_ptr<T> SharedFromThisAs() {
        return std::dynamic_pointer_cast<T>(ShareableBase::shared_from_this());
    }
    template <class T> std::shared_ptr<T const> SharedFromThisAs() const {
        return std::dynamic_pointer_cast<T const>(ShareableBase::shared_from_this());
    }

private:
    // Holds no state of its own; the archive only needs the type as a polymorphic root.
    friend class cereal::access;
    template <class Archive> void serialize(Archive&, unsigned int) {}

    RTTR_ENABLE(IObject)
};

} // namespace Tavrin::Vision

// The typed shared_from_this pair of a shareable class.
#define TAVRIN_SHARED_FROM_THIS(Class)                                                             \
    std::shared_ptr<Class> shared_from_this() { return SharedFromThisAs<Class>(); }                \
    std::shared_ptr<Class const> shared_from_this() const { return SharedFromThisAs<Class>(); }
