#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <ostream>
#include <string>
#include <typeindex>

#include <cereal/archives/portable_binary.hpp>
#include <cereal/cereal.hpp>
#include <cereal/types/base_class.hpp>
#include <cereal/types/memory.hpp>
#include <cereal/types/polymorphic.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>

#include "Vision/Core/Object.h"

namespace Tavrin::Vision {

// Bits of the options word that serialisers read from the archive they are given.
enum SerializerOptionsConstants : std::uint32_t {
    SerializerOptionsConstants_None = 0,
    SerializerOptionsConstants_LastRunData = 0x1,
    SerializerOptionsConstants_CurrentInputImage = 0x100,
};

class VisionArchiveWithOptions {
public:
    explicit VisionArchiveWithOptions(SerializerOptionsConstants options)
        : options_(options) {}
    virtual ~VisionArchiveWithOptions() = default;
    SerializerOptionsConstants Options() const { return options_; }

private:
    SerializerOptionsConstants options_;
};

class VisionBinaryOutputArchive : public cereal::PortableBinaryOutputArchive,
                                  public VisionArchiveWithOptions {
public:
    VisionBinaryOutputArchive(std::basic_ostream<char>& stream, SerializerOptionsConstants options)
        : cereal::PortableBinaryOutputArchive(stream)
        , VisionArchiveWithOptions(options) {}
};

// Besides reading, knows where its stream ends, so that a count the archive states (a string's
// length, a collection's size, an image's pels) is checked against the bytes left before
// anything is allocated for it: a damaged archive makes the loader allocate at most a fixed
// multiple of its own size. A stream that can't tell where it ends (a pipe) goes unchecked.
class VisionBinaryInputArchive : public cereal::PortableBinaryInputArchive,
                                 public VisionArchiveWithOptions {
public:
    VisionBinaryInputArchive(std::basic_istream<char>& stream, SerializerOptionsConstants options);

    // Throws cereal::Exception unless the stream still holds count elements of elementSize bytes.
    void RequireElements(std::uint64_t count, std::size_t elementSize) const;

private:
    std::basic_istream<char>& stream_;
    std::istream::pos_type end_;
};

// RequireElements when the archive is the foundation's; another archive reads unchecked.
void RequireArchivedElements(cereal::PortableBinaryInputArchive& archive, std::uint64_t count,
                             std::size_t elementSize);

// The options of the archive a serialiser was given; any other archive throws std::bad_cast.
template <class Archive> SerializerOptionsConstants ArchiveOptions(Archive& archive) {
    return dynamic_cast<VisionArchiveWithOptions&>(archive).Options();
}

// Throws SerializationException when the archive holds a version this build cannot read.
void CheckSerializationVersionMismatch(unsigned int archived, unsigned int current,
                                       std::string const& where);

namespace Implementation {
// The version check at the top of every serialize; only loading checks.
template <class Archive>
void CheckLoadedVersion(unsigned int archived, unsigned int current, char const* where) {
    if constexpr (Archive::is_loading::value)
        CheckSerializationVersionMismatch(archived, current, where);
}
} // namespace Implementation

} // namespace Tavrin::Vision

namespace cereal {
// Chosen over cereal's own reading of a size tag, for being more specialised: every element of
// a string or collection takes at least one byte, so a count beyond the bytes left is refused
// before cereal allocates for it.
template <class T>
void CEREAL_SERIALIZE_FUNCTION_NAME(PortableBinaryInputArchive& archive, SizeTag<T>& tag) {
    archive(tag.size);
    ::Tavrin::Vision::RequireArchivedElements(archive, static_cast<std::uint64_t>(tag.size), 1);
}
} // namespace cereal

// Instantiates a class's serialize member for the two archives the framework uses.
#define TAVRIN_INSTANTIATE_SERIALIZE(Class)                                                        \
    template void Class::serialize<cereal::PortableBinaryOutputArchive>(                           \
        cereal::PortableBinaryOutputArchive&, unsigned int);                                       \
    template void Class::serialize<cereal::PortableBinaryInputArchive>(                            \
        cereal::PortableBinaryInputArchive&, unsigned int);

// Declares an archived shareable class: its version, and ShareableBase as the owner of its
// enable_shared_from_this state, which cereal would otherwise look for in the class that the
// typed shared_from_this pair names.
#define TAVRIN_ARCHIVED_CLASS(Class, Version)                                                      \
    CEREAL_CLASS_VERSION(Class, Version)                                                           \
    namespace cereal::traits {                                                                     \
    template <> struct get_shared_from_this_base<Class> {                                          \
        using type = ::Tavrin::Vision::ShareableBase;                                              \
    };                                                                                             \
    }

#define TAVRIN_EXPAND_PARAMETERS(...) __VA_ARGS__

// TAVRIN_ARCHIVED_CLASS for every instance of a class template at once, through partial
// specialisations; used once, at global scope, beside the template. The template's parameter
// list comes in parentheses, then the version, then the specialised form, which may hold commas:
//   TAVRIN_ARCHIVED_TEMPLATE((class K, class V), 1, Tavrin::Vision::Implementation::Keyed<K, V>)
#define TAVRIN_ARCHIVED_TEMPLATE(TemplateParameters, VersionNumber, ...)                           \
    namespace cereal::detail {                                                                     \
    template <TAVRIN_EXPAND_PARAMETERS TemplateParameters> struct Version<__VA_ARGS__> {           \
        static std::uint32_t registerVersion() {                                                   \
            StaticObject<Versions>::getInstance().mapping.emplace(                                 \
                std::type_index(typeid(__VA_ARGS__)).hash_code(), VersionNumber);                  \
            return VersionNumber;                                                                  \
        }                                                                                          \
        static inline const std::uint32_t version = registerVersion();                             \
    };                                                                                             \
    }                                                                                              \
    namespace cereal::traits {                                                                     \
    template <TAVRIN_EXPAND_PARAMETERS TemplateParameters>                                         \
    struct get_shared_from_this_base<__VA_ARGS__> {                                                \
        using type = ::Tavrin::Vision::ShareableBase;                                              \
    };                                                                                             \
    }
