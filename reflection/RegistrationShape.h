#pragma once

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <Vision/Core/Registration.h>

#include <Vision/Core/ChangedEvent.h>
#include <Vision/Core/Object.h>
#include <Vision/Core/TypeRegistration.h>

// The one shape that every registration of this library follows: the class declared under its
// full name with the metadata a generic host sorts types by, its change-flag constants as
// read-only properties, and converters between the shared pointers of the class and of each of
// its bases, since a variant holding a base pointer reaches the real class only through them.
namespace Tavrin::Vision::DeepLearning::Reflection {

using Brnt::TypeRegistration::ClassType;
using Brnt::TypeRegistration::PropertyType;
using Brnt::TypeRegistration::TypeSubCategory;

// Arrays rather than pointers, so that a variant made of one holds a std::string.
namespace MetadataKey {
inline constexpr char ClassType[] = "ClassType";
inline constexpr char HeaderPath[] = "HeaderPath";
inline constexpr char LibraryExport[] = "LibraryExport";
inline constexpr char TypeSubCategory[] = "TypeSubCategory";
inline constexpr char PropertyAccessorType[] = "PropertyAccessorType";
} // namespace MetadataKey

inline constexpr char LibraryName[] = "Tavrin.Vision.DeepLearning";

inline std::string FullName(std::string const& className) {
    return "Tavrin::Vision::DeepLearning::" + className;
}

// How a host includes a class of the public surface.
inline std::string PublicHeaderPath(std::string const& className) {
    return "<Vision/DeepLearning/" + className + ">";
}

// What a host reads about a type besides its members; an empty header path is left out.
struct TypeMetadata {
    ClassType classType = ClassType::Class;
    std::string headerPath;
    std::optional<TypeSubCategory> subCategory;
};

// The metadata belongs to the type, not to the handle; handles can't be copied, so the caller
// chains on a fresh one.
template <class T>
rttr::registration::class_<T> DeclareClass(std::string const& name, TypeMetadata const& metadata) {
    rttr::registration::class_<T> described(name);
    described(rttr::metadata(MetadataKey::ClassType, metadata.classType),
              rttr::metadata(MetadataKey::LibraryExport, LibraryName));
    if (!metadata.headerPath.empty())
        described(rttr::metadata(MetadataKey::HeaderPath, metadata.headerPath));
    if (metadata.subCategory)
        described(rttr::metadata(MetadataKey::TypeSubCategory, *metadata.subCategory));
    return rttr::registration::class_<T>(name);
}

// A class of the public surface, named and found by its own header.
template <class T>
rttr::registration::class_<T>
DeclarePublicClass(std::string const& className, ClassType classType = ClassType::Class,
                   std::optional<TypeSubCategory> subCategory = std::nullopt) {
    return DeclareClass<T>(FullName(className),
                           {classType, PublicHeaderPath(className), subCategory});
}

// Values and metadata beyond the common three go in items; names of values must be literals, as
// the registry keeps only views of them.
template <class Enum, class... Items>
void RegisterEnumeration(char const* enumName, std::string const& headerPath, Items&&... items) {
    rttr::registration::enumeration<Enum>(FullName(enumName))(
        rttr::metadata(MetadataKey::ClassType, ClassType::Enumeration),
        rttr::metadata(MetadataKey::HeaderPath, headerPath),
        rttr::metadata(MetadataKey::LibraryExport, LibraryName), std::forward<Items>(items)...);
}

// A change-flag constant: the name is a literal, the value a static member of the class.
struct FlagConstant {
    char const* name;
    long long const* value;
};

template <class T>
void ChainFlagConstants(rttr::registration::class_<T>& declared,
                        std::initializer_list<FlagConstant> constants) {
    for (FlagConstant const& constant : constants)
        declared.property_readonly(constant.name, constant.value)(
            rttr::metadata(MetadataKey::PropertyAccessorType, PropertyType::ChangeFlag));
}

// Casts through the registry's knowledge of the source's dynamic class, so that it works across
// virtual bases and between siblings fails instead of reinterpreting. The result shares
// ownership with the source.
template <class To, class From>
std::shared_ptr<To> ConvertSharedPointer(std::shared_ptr<From> const& source, bool& ok) {
    ok = false;
    if (!source)
        return nullptr;
    To* const target = rttr::rttr_cast<To*>(source.get());
    if (!target)
        return nullptr;
    ok = true;
    return std::shared_ptr<To>(source, target);
}

// RTTR takes a setter only when its parameter is exactly what the getter returns, and the text
// setters take a const reference to what their getters return by copy. This property calls the
// same pair, so a reflected write still goes through the setter's checks and change flags.
template <class C, class Value>
class ConstReferenceSetterProperty final : public rttr::detail::property_wrapper_base {
public:
    using Getter = Value (C::*)() const;
    using Setter = void (C::*)(Value const&);

    ConstReferenceSetterProperty(rttr::string_view name, Getter getter, Setter setter)
        : property_wrapper_base(name, rttr::type::get<C>())
        , getter_(getter)
        , setter_(setter) {
        init();
    }

    bool is_valid() const noexcept override { return true; }
    rttr::access_levels get_access_level() const noexcept override {
        return rttr::access_levels::public_access;
    }
    bool is_readonly() const noexcept override { return false; }
    bool is_static() const noexcept override { return false; }
    rttr::type get_type() const noexcept override { return rttr::type::get<Value>(); }

    bool set_value(rttr::instance& object, rttr::argument& value) const override {
        C* const target = object.try_convert<C>();
        if (!target || !value.is_type<Value>())
            return false;
        (target->*setter_)(value.get_value<Value>());
        return true;
    }

    rttr::variant get_value(rttr::instance& object) const override {
        C const* const source = object.try_convert<C>();
        return source ? rttr::variant((source->*getter_)()) : rttr::variant();
    }

private:
    Getter getter_;
    Setter setter_;
};

// Registers at once, so it takes its place after whatever the caller chained before it.
template <class C, class Value>
void AddConstReferenceSetterProperty(rttr::registration::class_<C>&, char const* name,
                                     Value (C::*getter)() const, void (C::*setter)(Value const&)) {
    rttr::detail::get_registration_manager().add_item(
        std::unique_ptr<rttr::detail::property_wrapper_base>(
            new ConstReferenceSetterProperty<C, Value>(name, getter, setter)));
}

template <class... Types> struct TypeList {};

template <class Base, class List> struct PrependBase;
template <class Base, class... Bases> struct PrependBase<Base, TypeList<Bases...>> {
    using type = TypeList<Base, Bases...>;
};

// A class's bases, the nearest first.
template <class NearestBase, class FartherBases>
using WithNearestBase = typename PrependBase<NearestBase, FartherBases>::type;

using ShareableBases = TypeList<ShareableBase, Brnt::IObject>;
using ChangedEventBases =
    TypeList<ChangedEventShareableBase, ShareableBase, IChangedEvent, Brnt::IObject>;

template <class Class, class... Bases> void RegisterConverters(TypeList<Bases...>) {
    ((rttr::type::register_converter_func(&ConvertSharedPointer<Bases, Class>),
      rttr::type::register_converter_func(&ConvertSharedPointer<Class, Bases>)),
     ...);
}

} // namespace Tavrin::Vision::DeepLearning::Reflection
