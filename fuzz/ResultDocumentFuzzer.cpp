// The engine's result document, decoded against a stream with a tool of each kind and with
// resource images that the engine knows, so that resampling runs on what the document says.
#include <stdexcept>

#include <Vision/Core/Transform2D.h>

#include "FuzzSupport.h"
#include "FuzzWorkspace.h"

using namespace Tavrin::Vision::DeepLearning;

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    // Kept for the whole process: the engine's tables outlive every target call.
    static auto const* workspace = new std::shared_ptr<DLWorkspace>(FuzzWorkspace::OpenKinds());
    static auto const identity = Tavrin::Brnt::CreateObject<Tavrin::Vision::Transform2DLinear>();
    std::string const document = Text(data, size);
    Tolerating<DeepLearningException, std::invalid_argument, std::out_of_range>::Run([&] {
        Private::DeepLearningAccessTestPeer::ParseResultKeloXml(*(*workspace)->Streams()->Item(0),
                                                                document.c_str(), identity);
    });
    testkelo_clear_log();
    return 0;
}
