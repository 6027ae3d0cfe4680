// The engine's catalogue listings, read as a host's open reads them: the first byte picks the
// listing that answers with the input, the others come from the fuzz workspace.
#include "FuzzSupport.h"
#include "FuzzWorkspace.h"
#include "TestEngineListings.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static char const* const listings[] = {"kelo_runtime_list_workspaces",
                                           "kelo_runtime_list_streams", "kelo_runtime_list_tools",
                                           "kelo_runtime_blue_list_models"};
    if (size == 0)
        return 0;
    testkelo_reset();
    FuzzWorkspace::ScriptKindsFile();
    testkelo_set_listing(listings[data[0] % 4], Text(data + 1, size - 1).c_str());
    using Tavrin::Vision::DeepLearning::DeepLearningException;
    Tolerating<DeepLearningException>::Run([] {
        Tavrin::Vision::DeepLearning::Private::DeepLearningAccessTestPeer::OpenWorkspace(
            FuzzWorkspace::File);
    });
    return 0;
}
