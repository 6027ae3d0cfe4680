#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>
#include <ostream>
#include <string>
#include <type_traits>
#include <typeindex>
#include <typeinfo>
#include <unordered_map>

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

    // The shared pointers as the loader meets them, by the archive's pointer id. An object is
    // declared once; a later mention must name an object of the same type that has finished
    // loading, unless the mention is a weak reference (ArchiveWeakReference), such as a parent
    // named by its children. Anything else throws cereal::Exception: a strong mention while the
    // object still loads would make it own itself, and one as another type would read the
    // object as what it is not.
    void BeginPointer(std::uint32_t id, std::type_info const& type);
    void EndPointer(std::uint32_t id);
    void RequireMentionable(std::uint32_t id, std::type_info const& type);
    // Whether the next pointer read is a weak reference.
    void ExpectWeakReference(bool weak) { weakReferenceNext_ = weak; }

private:
    struct DeclaredPointer {
        std::type_index type;
        bool loading;
    };

    std::basic_istream<char>& stream_;
    std::istream::pos_type end_;
    std::unordered_map<std::uint32_t, DeclaredPointer> pointers_;
    bool weakReferenceNext_ = false;
};

// The foundation's archive behind a cereal one, or null for a plain cereal archive.
VisionBinaryInputArchive* VisionArchiveOf(cereal::PortableBinaryInputArchive& archive);

// RequireElements when the archive is the foundation's; another archive reads unchecked.
void RequireArchivedElements(cereal::PortableBinaryInputArchive& archive, std::uint64_t count,
                             std::size_t elementSize);

// Marks the next pointer that the foundation's archive reads as a weak reference, for as long as
// it lives: a null reference reads no pointer id, and must not leave the mark standing.
class WeakReferenceExpected {
public:
    explicit WeakReferenceExpected(cereal::PortableBinaryInputArchive& archive);
    ~WeakReferenceExpected();
    WeakReferenceExpected(WeakReferenceExpected const&) = delete;
    WeakReferenceExpected& operator=(WeakReferenceExpected const&) = delete;

private:
    VisionBinaryInputArchive* const vision_;
};

// A weak reference travels as a shared pointer, which the archive's tracking joins to the
// object saved elsewhere in the same archive.
template <class Archive, class T>
void ArchiveWeakReference(Archive& archive, std::weak_ptr<T>& reference) {
    std::shared_ptr<T> shared = reference.lock();
    if constexpr (Archive::is_loading::value) {
        WeakReferenceExpected const expected(archive);
        archive(shared);
        reference = shared;
    } else {
        archive(shared);
    }
}

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

// Chosen over cereal's reading of arithmetic values, for not being a template: a bool is archived
// as one byte, and any byte but 0 or 1 would make a bool that no program may hold.
inline void CEREAL_LOAD_FUNCTION_NAME(PortableBinaryInputArchive& archive, bool& value) {
    std::uint8_t byte = 0;
    archive.loadBinary<sizeof(byte)>(&byte, sizeof(byte));
    if (byte > 1)
        throw Exception("Failed to read a bool: the archive holds the byte " +
                        std::to_string(byte));
    value = byte == 1;
}

// Chosen over cereal's own loading of a shared pointer, for the same reason: the foundation's
// archive checks each pointer id (VisionBinaryInputArchive::BeginPointer), so a damaged archive
// can neither make a cycle of owners, which would leak, nor cast an object to a wrong type.
template <class T>
void CEREAL_LOAD_FUNCTION_NAME(PortableBinaryInputArchive& archive,
                               memory_detail::PtrWrapper<std::shared_ptr<T>&>& wrapper) {
    static_assert(!traits::has_load_and_construct<T, PortableBinaryInputArchive>::value,
                  "archived classes are made by their default constructor");
    auto* const vision = ::Tavrin::Vision::VisionArchiveOf(archive);
    std::uint32_t id;
    archive(id); // a binary archive keeps no names
    if ((id & detail::msb_32bit) == 0) {
        if (vision)
            vision->RequireMentionable(id, typeid(T));
        wrapper.ptr = std::static_pointer_cast<T>(archive.getSharedPointer(id));
        return;
    }
    using NonConstT = std::remove_const_t<T>;
    std::shared_ptr<NonConstT> ptr(
        detail::Construct<NonConstT, PortableBinaryInputArchive>::load_andor_construct());
    if (vision)
        vision->BeginPointer(id, typeid(T));
    archive.registerSharedPointer(id, ptr);
    archive(*ptr);
    if (vision)
        vision->EndPointer(id);
    wrapper.ptr = std::move(ptr);
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
