#include <cstring>
#include <memory>
#include <vector>

#include <Vision/Core/Image.h>

#include "DeepLearningAccessTestPeer.h"
#include "Ratio.h"
#include "TestEngineControl.h"

namespace {

using Tavrin::Vision::DeepLearning::Private::DeepLearningAccess;
using Tavrin::Vision::DeepLearning::Private::Engine;

constexpr int Width = 1024;
constexpr int Height = 1024;

struct Fixture {
    Fixture() {
        testkelo_reset();
        EngineImage const image{Width, Height, 1, 0, pixels.data(), 0, Width};
        testkelo_add_resource_image("map", &image);
        DeepLearningAccess::Instance();
    }

    std::vector<unsigned char> pixels = std::vector<unsigned char>(Width * Height, 7);
};

Fixture& Shared() {
    static Fixture fixture;
    return fixture;
}

// Both loops clear the test engine's call log, which would otherwise grow with every call.

// The library's copy: the engine's fetch, a copy into a new image, the release.
void ResourceImage(benchmark::State& state) {
    Shared();
    for (auto _ : state) {
        benchmark::DoNotOptimize(DeepLearningAccess::GetResourceImage("map", nullptr));
        testkelo_clear_log();
    }
    state.SetBytesProcessed(state.iterations() * Width * Height);
}

// What any client of the engine does at the least: the same fetch and release around a memcpy.
void BareFetchAndMemcpy(benchmark::State& state) {
    Shared();
    for (auto _ : state) {
        EngineImage record{};
        Engine().kelo_init_image(&record);
        Engine().kelo_resource_get_image("map", &record);
        std::size_t const size = static_cast<std::size_t>(record.step) * record.height;
        std::unique_ptr<unsigned char[]> copy(new unsigned char[size]);
        std::memcpy(copy.get(), record.pixels, size);
        benchmark::DoNotOptimize(copy.get());
        Engine().kelo_free_image(&record);
        testkelo_clear_log();
    }
    state.SetBytesProcessed(state.iterations() * Width * Height);
}

BENCHMARK(ResourceImage)->Unit(benchmark::kMicrosecond);
BENCHMARK(BareFetchAndMemcpy)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    return Bench::RunWithRatio(argc, argv,
                               {"ResourceImage", "BareFetchAndMemcpy",
                                "resource image copy / bare fetch and memcpy", 1.5});
}
