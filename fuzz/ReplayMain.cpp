// Runs a fuzz target once on each file of the folders given, as the fuzzer would, so that its
// seeds and the inputs of past findings run in the normal test build.
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int main(int argc, char** argv) {
    int replayed = 0;
    for (int arg = 1; arg < argc; ++arg) {
        for (auto const& entry : std::filesystem::directory_iterator(argv[arg])) {
            std::ifstream in(entry.path(), std::ios::binary);
            std::vector<std::uint8_t> const bytes{std::istreambuf_iterator<char>(in), {}};
            LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
            ++replayed;
        }
    }
    std::cout << "replayed " << replayed << " inputs\n";
    return replayed > 0 ? 0 : 1;
}
