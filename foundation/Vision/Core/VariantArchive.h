#pragma once

#include <type_traits>

#include <rttr/type>

#include "Vision/Core/Archive.h"

namespace Tavrin::Vision::Internal::VariantSerialization {

// The table by which variants travel in the archive, one entry per value type. The foundation
// fills it for empty variants, bool, int, unsigned int, long long, double and std::string, and for
// the shared pointers of its own archived classes; a library adds the shared pointers of its
// classes by calling Register<std::shared_ptr<Class>>() in the class's registration block.
// Enumerations registered for reflection need no entry: they travel as their 32-bit value.
class CustomVariantArchivers {
public:
    using Saver = void (*)(cereal::PortableBinaryOutputArchive&, rttr::variant const&);
    using Loader = void (*)(cereal::PortableBinaryInputArchive&, rttr::variant&);

    template <class T> static void Register() {
        Add(
            rttr::type::get<T>(),
            [](cereal::PortableBinaryOutputArchive& archive, rttr::variant const& value) {
                archive(value.get_value<T>());
            },
            [](cereal::PortableBinaryInputArchive& archive, rttr::variant& value) {
                T read{};
                archive(read);
                value = read;
            });
    }

    // Writes the value alone, nothing for an empty variant; the reader must know its type.
    // Throws SerializationException for a type without an entry.
    static void Save(cereal::PortableBinaryOutputArchive& archive, rttr::variant const& value);
    // Reads a value of that type; an invalid type reads nothing and leaves an empty variant.
    static void Load(cereal::PortableBinaryInputArchive& archive, rttr::type type,
                     rttr::variant& value);

    // A variant with its type: the type's reflected name, empty for an empty variant, then the
    // value as above.
    static void SaveWithType(cereal::PortableBinaryOutputArchive& archive,
                             rttr::variant const& value);
    static void LoadWithType(cereal::PortableBinaryInputArchive& archive, rttr::variant& value);

private:
    static void Add(rttr::type const& type, Saver saver, Loader loader);
};

} // namespace Tavrin::Vision::Internal::VariantSerialization

// Lets any archived member or collection hold variants, with their types. Templates, because a
// variant converts from anything and a plain function would match every type.
namespace cereal {
template <class Archive, class Variant>
std::enable_if_t<std::is_same_v<Variant, rttr::variant>> save(Archive& archive,
                                                              Variant const& value) {
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::SaveWithType(archive,
                                                                                         value);
}
template <class Archive, class Variant>
std::enable_if_t<std::is_same_v<Variant, rttr::variant>> load(Archive& archive, Variant& value) {
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::LoadWithType(archive,
                                                                                         value);
}
} // namespace cereal
