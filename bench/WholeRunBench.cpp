// A whole run through the library, DLOperator::Execute from image to decoded result, against the
// reference engine called bare through its C entry points with the same images. The example
// workspace is trained here from OpenCV's handwritten digits; every held-out digit goes through
// its stream: anomaly, classification and reading. Beside the ratio, the engine's own analysis
// time per image of each stream.
#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <opencv2/imgcodecs.hpp>
#include <tinyxml2.h>

#include <Vision/Core/Image8Grey.h>
#include <Vision/DeepLearning/DeepLearning.h>

#include "BareAnswer.h"
#include "Ratio.h"
#include "TrainedExample.h"
#include "engine/EngineFunctionTable.h"
#include "engine/ProcessState.h"

namespace {

namespace fs = std::filesystem;
using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::DeepLearning::Private::Engine;

char const* const DirectId = "whole-run-direct";

void Require(int status, char const* call) {
    if (status != 0)
        throw std::runtime_error(std::string(call) + " failed with status " +
                                 std::to_string(status));
}

std::shared_ptr<Tavrin::Vision::IImage> ImageOf(cv::Mat const& grey) {
    auto image = CreateObject<Tavrin::Vision::Image8Grey>(grey.cols, grey.rows);
    auto memory = image->GetPixelMemory(Tavrin::Vision::ImageDataModeConstants_Write, 0, 0,
                                        grey.cols, grey.rows);
    for (int row = 0; row < grey.rows; ++row)
        std::copy_n(grey.ptr(row), grey.cols, memory->FirstPel() + row * memory->Step());
    return image;
}

// The held-out images of one kind, with the stream that analyses them and an operator on it.
struct Kind {
    std::string stream;
    std::shared_ptr<DLOperator> op;
    std::vector<cv::Mat> pixels;
    std::vector<std::shared_ptr<Tavrin::Vision::IImage>> images;
};

struct Example {
    Example() {
        // The library loads its engine by name; an engine of that name already loaded is the
        // one it gets, so loading the reference engine by path first makes the run use it.
        if (!dlopen(KELO_REFERENCE_ENGINE, RTLD_NOW | RTLD_LOCAL))
            throw std::runtime_error(dlerror());
        fs::path const folder = Bench::TrainExample("whole-run");
        std::string const workspace = (folder / "digits.yml").string();

        for (auto const& [kind, stream] :
             {std::pair{"red", "anomaly"}, {"green", "classify"}, {"blue", "read"}})
            kinds.push_back(Load(folder / "unseen" / kind, stream, workspace));
        Require(Engine().kelo_runtime_open_workspace_from_file(DirectId, workspace.c_str()),
                "kelo_runtime_open_workspace_from_file");
        Require(Engine().kelo_init_buffer(&buffer), "kelo_init_buffer");
        fs::remove_all(folder);
    }

    static Kind Load(fs::path const& images, std::string const& stream,
                     std::string const& workspace) {
        Kind kind{stream, CreateObject<DLOperator>(), {}, {}};
        kind.op->LoadWorkspace(workspace);
        for (auto const& candidate : *kind.op->Workspace()->Streams())
            if (candidate->Name() == stream)
                kind.op->setStream(candidate);
        std::vector<fs::path> files(fs::directory_iterator(images), fs::directory_iterator{});
        std::sort(files.begin(), files.end());
        for (auto const& file : files) {
            kind.pixels.push_back(cv::imread(file.string(), cv::IMREAD_GRAYSCALE));
            kind.images.push_back(ImageOf(kind.pixels.back()));
        }
        return kind;
    }

    std::size_t ImageCount() const {
        std::size_t count = 0;
        for (Kind const& kind : kinds)
            count += kind.images.size();
        return count;
    }

    std::vector<Kind> kinds;
    EngineBuffer buffer{};
};

Example& Shared() {
    static Example example;
    return example;
}

// The resource images an answer names, fetched while the sample lives and released.
class ResourceFetch : public tinyxml2::XMLVisitor {
public:
    bool VisitEnter(tinyxml2::XMLElement const& element, tinyxml2::XMLAttribute const*) override {
        if (char const* uuid = std::strcmp(element.Name(), "resource") == 0
                                   ? element.Attribute("uuid")
                                   : nullptr) {
            auto& kelo = Engine();
            EngineImage image{};
            Require(kelo.kelo_init_image(&image), "kelo_init_image");
            Require(kelo.kelo_resource_get_image(uuid, &image), "kelo_resource_get_image");
            benchmark::DoNotOptimize(image.pixels);
            kelo.kelo_free_image(&image);
        }
        return true;
    }
};

// The image record of a grey image, its pixels borrowed.
EngineImage ImageRecord(cv::Mat const& grey) {
    EngineImage image{};
    Require(Engine().kelo_init_image(&image), "kelo_init_image");
    image.width = grey.cols;
    image.height = grey.rows;
    image.channels = 1;
    image.pixels = grey.data;
    image.pixelType = 0;
    image.step = static_cast<int>(grey.step);
    return image;
}

// A sample of the image made, analysed and released; what comes between the analysis and the
// release is the caller's. Returns the seconds of the analysis alone.
template <class WithAnswer>
double AnalyseSample(std::string const& stream, cv::Mat const& grey, WithAnswer&& withAnswer) {
    auto& kelo = Engine();
    char const* const sample = "sample";
    EngineImage image = ImageRecord(grey);
    Require(kelo.kelo_runtime_create_sample(DirectId, stream.c_str(), sample),
            "kelo_runtime_create_sample");
    Require(kelo.kelo_runtime_sample_add_image(DirectId, stream.c_str(), sample, &image),
            "kelo_runtime_sample_add_image");
    auto const start = std::chrono::steady_clock::now();
    Require(kelo.kelo_runtime_sample_process(DirectId, stream.c_str(), "", sample, ""),
            "kelo_runtime_sample_process");
    std::chrono::duration<double> const analysis = std::chrono::steady_clock::now() - start;
    withAnswer(sample);
    kelo.kelo_runtime_free_sample(DirectId, stream.c_str(), sample);
    kelo.kelo_free_image(&image);
    return analysis.count();
}

// What any client of the engine does at the least for the answer the library gives: the image
// record, a sample, the analysis, its document parsed and read, its resource images fetched, the
// releases.
void DirectRun(std::string const& stream, cv::Mat const& grey, EngineBuffer& buffer) {
    AnalyseSample(stream, grey, [&](char const* sample) {
        Require(Engine().kelo_runtime_get_sample(DirectId, stream.c_str(), sample, &buffer),
                "kelo_runtime_get_sample");
        tinyxml2::XMLDocument answer;
        if (answer.Parse(buffer.text) != tinyxml2::XML_SUCCESS)
            throw std::runtime_error("the engine's answer is no XML document");
        benchmark::DoNotOptimize(Bench::ReadElement(*answer.RootElement()));
        ResourceFetch fetch;
        answer.Accept(&fetch);
    });
}

// Every held-out image through its stream, the library's whole way: parameters pushed, the
// engine's answer decoded into a result tree, resource images copied out.
void LibraryWholeRun(benchmark::State& state) {
    Example& example = Shared();
    for (auto _ : state)
        for (Kind const& kind : example.kinds)
            for (auto const& image : kind.images)
                benchmark::DoNotOptimize(kind.op->Execute(*image));
    state.SetItemsProcessed(state.iterations() * example.ImageCount());
}

void BareEngineRun(benchmark::State& state) {
    Example& example = Shared();
    for (auto _ : state)
        for (Kind const& kind : example.kinds)
            for (cv::Mat const& grey : kind.pixels)
                DirectRun(kind.stream, grey, example.buffer);
    state.SetItemsProcessed(state.iterations() * example.ImageCount());
}

// The engine's own analysis of one held-out image of the stream per iteration, the images taken
// in turn: the time per image that the engine alone costs.
void EngineAnalysis(benchmark::State& state, char const* stream) {
    auto const& kinds = Shared().kinds;
    Kind const& kind = *std::find_if(kinds.begin(), kinds.end(), [&](Kind const& candidate) {
        return candidate.stream == stream;
    });
    std::size_t next = 0;
    for (auto _ : state) {
        state.SetIterationTime(AnalyseSample(kind.stream, kind.pixels[next], [](char const*) {}));
        next = (next + 1) % kind.pixels.size();
    }
}

BENCHMARK(LibraryWholeRun)->Unit(benchmark::kMillisecond);
BENCHMARK(BareEngineRun)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EngineAnalysis, anomaly, "anomaly")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EngineAnalysis, classify, "classify")
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(EngineAnalysis, read, "read")->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return Bench::RunWithRatio(argc, argv,
                               {"LibraryWholeRun", "BareEngineRun",
                                "whole run through the library / bare reference engine", 1.10});
}
