#include "Vision/Core/Archive.h"

#include <utility>

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

namespace {

// Where the stream ends, or -1 when it can't seek; it is left where it stood.
std::istream::pos_type EndOf(std::basic_istream<char>& stream) {
    std::istream::pos_type const start = stream.tellg();
    if (start == std::istream::pos_type(-1))
        return start;
    stream.seekg(0, std::ios::end);
    std::istream::pos_type const end = stream.tellg();
    stream.seekg(start);
    return end;
}

std::uint32_t StrippedId(std::uint32_t id) {
    return id & ~cereal::detail::msb_32bit;
}

[[noreturn]] void ThrowPointerFault(std::uint32_t id, char const* fault) {
    // Worded as cereal's own refusals of a smart pointer.
    throw cereal::Exception("Error while trying to deserialize a smart pointer. Id " +
                            std::to_string(StrippedId(id)) + " " + fault);
}

} // namespace

VisionBinaryInputArchive::VisionBinaryInputArchive(std::basic_istream<char>& stream,
                                                   SerializerOptionsConstants options)
    : cereal::PortableBinaryInputArchive(stream)
    , VisionArchiveWithOptions(options)
    , stream_(stream)
    , end_(EndOf(stream)) {}

void VisionBinaryInputArchive::RequireElements(std::uint64_t count, std::size_t elementSize) const {
    std::istream::pos_type const at = stream_.tellg();
    if (end_ == std::istream::pos_type(-1) || at == std::istream::pos_type(-1) || elementSize == 0)
        return;
    auto const bytesLeft = static_cast<std::uint64_t>(end_ > at ? end_ - at : 0);
    if (count > bytesLeft / elementSize)
        // The words of cereal's own short read, which is what this is, found before the read.
        throw cereal::Exception("Failed to read " + std::to_string(count * elementSize) +
                                " bytes from input stream! Read " + std::to_string(bytesLeft));
}

void VisionBinaryInputArchive::BeginPointer(std::uint32_t id, std::type_info const& type) {
    weakReferenceNext_ = false;
    if (!pointers_.try_emplace(StrippedId(id), DeclaredPointer{type, true}).second)
        ThrowPointerFault(id, "is declared twice");
}

void VisionBinaryInputArchive::EndPointer(std::uint32_t id) {
    pointers_.at(StrippedId(id)).loading = false;
}

void VisionBinaryInputArchive::RequireMentionable(std::uint32_t id, std::type_info const& type) {
    bool const weak = std::exchange(weakReferenceNext_, false);
    // An id never declared is left to cereal, which refuses it in its own words.
    auto const declared = pointers_.find(StrippedId(id));
    if (declared == pointers_.end())
        return;
    if (declared->second.loading && !weak)
        ThrowPointerFault(id, "names an object that is still loading");
    if (declared->second.type != std::type_index(type))
        ThrowPointerFault(id, "names an object of another type");
}

VisionBinaryInputArchive* VisionArchiveOf(cereal::PortableBinaryInputArchive& archive) {
    return dynamic_cast<VisionBinaryInputArchive*>(&archive);
}

WeakReferenceExpected::WeakReferenceExpected(cereal::PortableBinaryInputArchive& archive)
    : vision_(VisionArchiveOf(archive)) {
    if (vision_)
        vision_->ExpectWeakReference(true);
}

WeakReferenceExpected::~WeakReferenceExpected() {
    if (vision_)
        vision_->ExpectWeakReference(false);
}

void RequireArchivedElements(cereal::PortableBinaryInputArchive& archive, std::uint64_t count,
                             std::size_t elementSize) {
    if (auto const* vision = VisionArchiveOf(archive))
        vision->RequireElements(count, elementSize);
}

void CheckSerializationVersionMismatch(unsigned int archived, unsigned int current,
                                       std::string const& where) {
    // Older versions stay readable; only an archive from a newer build is refused.
    if (archived > current)
        throw SerializationException(where + ": archived version " + std::to_string(archived) +
                                     " is newer than the supported version " +
                                     std::to_string(current));
}

} // namespace Tavrin::Vision
