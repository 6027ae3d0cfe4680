// Archives as a host reads them back, damaged or written by another version: the first byte
// picks the class loaded and the options, the rest is the archive. A damaged archive fails with
// the exception its first fault meets: cereal's for the stream, SerializationException for a
// version or a missing part, and ArgumentException for a value that its class refuses, as it
// would from any caller.
#include <sstream>

#include <cereal/details/helpers.hpp>

#include "ArchivedClasses.h"
#include "FuzzSupport.h"
#include "FuzzWorkspace.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    // A loaded operator opens its workspace again: the engine knows the file.
    static bool const scripted = (FuzzWorkspace::OpenKinds(), true);
    if (size == 0 || !scripted)
        return 0;
    std::istringstream in(Text(data + 1, size - 1));
    Tolerating<cereal::Exception, Tavrin::Vision::SerializationException,
               Tavrin::Vision::ArgumentException>::Run([&] { ArchivedClasses::Load(data[0], in); });
    testkelo_clear_log();
    return 0;
}
