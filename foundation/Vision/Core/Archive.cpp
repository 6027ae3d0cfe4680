#include "Vision/Core/Archive.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

void CheckSerializationVersionMismatch(unsigned int archived, unsigned int current,
                                       std::string const& where) {
    // Older versions stay readable; only an archive from a newer build is refused.
    if (archived > current)
        throw SerializationException(where + ": archived version " + std::to_string(archived) +
                                     " is newer than the supported version " +
                                     std::to_string(current));
}

} // namespace Tavrin::Vision
