#include <string>
#include <vector>

#include <Vision/Core/Ellipse.h>
#include <Vision/Core/GraphicCollection.h>
#include <Vision/Core/GraphicLabel.h>
#include <Vision/Core/PointMarker.h>
#include <Vision/Core/Record.h>
#include <Vision/Core/Transform2D.h>

#include "DeepLearningAccessTestPeer.h"
#include "Ratio.h"
#include "TestEngineControl.h"
#include "Vision/DeepLearning/DeepLearning.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Peer = Private::DeepLearningAccessTestPeer;

char const* const File = "/bench/graphics.kelo";
constexpr int FeatureCount = 10000;

// A blue view of turned features, each drawn as an ellipse, a marker and a label.
std::string ResultDocument() {
    std::string features;
    for (int i = 0; i < FeatureCount; ++i) {
        std::string const n = std::to_string(i);
        features += "<feat id=\"f" + n + "\" loc=\"" + std::to_string(i % 1000) + ".5," +
                    std::to_string(i / 1000) + "\" angle=\"0.3\" size=\"20x30\" score=\"0.9\" "
                    "covers=\"A\"/>";
    }
    return "<result><tool uuid=\"blue-uuid\"/><image><marking tool_uuid=\"blue-uuid\" "
           "duration=\"1\" duration_process_only=\"1\" duration_post_process=\"0\" processed=\"t\" "
           "processed_device=\"gpu0\"><image_info size=\"1024x768\" channels=\"1\" depth=\"8\"/>"
           "<view size=\"1024x768\" ref_pose=\"1,0,0,1,0,0\" pose=\"0.9,0.1,-0.1,0.9,5,7\" "
           "group=\"\"><blue show_feature_chiclets=\"true\">" +
           features + "</blue></view></marking></image></result>";
}

struct Fixture {
    Fixture() {
        testkelo_reset();
        testkelo_add_file(File, "file-uuid", "2024-05-01");
        testkelo_add_stream(File, "main", "main-uuid", "");
        testkelo_add_tool(File, "main", nullptr, "blue", "blue-uuid", "blue");
        for (char const* path : {"processing/sampling_density", "processing/blue/threshold",
                                 "post_processing/blue/feature_filter",
                                 "processing/blue/precision"})
            testkelo_add_parameter(File, "main", "blue", path, "1");
        testkelo_add_parameter(File, "main", "blue", "sampling/feature_size", "8x8");
        workspace = Peer::OpenWorkspace(File);
        result = Peer::ParseResultKeloXml(*workspace->Streams()->Item(0), ResultDocument().c_str(),
                                          CreateObject<Tavrin::Vision::Transform2DLinear>());
    }

    std::shared_ptr<DLWorkspace> workspace;
    std::shared_ptr<DLResult> result;
};

Fixture& Shared() {
    static Fixture fixture;
    return fixture;
}

std::shared_ptr<Tavrin::Vision::Record> OverlayRecord() {
    return CreateObject<Tavrin::Vision::Record>(
        "Features", rttr::type::get<Tavrin::Vision::GraphicCollection>(),
        Tavrin::Vision::RecordUsageConstants_Overlay, true, rttr::variant(), "Features");
}

void BuildGraphics(benchmark::State& state) {
    Fixture& f = Shared();
    for (auto _ : state) {
        auto record = OverlayRecord();
        f.result->ConstructContent(*record, 0);
        benchmark::DoNotOptimize(record);
    }
}

// The same three shapes per feature, only allocated.
void BareShapes(benchmark::State& state) {
    Shared();
    for (auto _ : state) {
        auto record = OverlayRecord();
        std::vector<Tavrin::Vision::IGraphicPtr> shapes;
        shapes.reserve(3 * FeatureCount);
        for (int i = 0; i < FeatureCount; ++i) {
            shapes.push_back(CreateObject<Tavrin::Vision::Ellipse>());
            shapes.push_back(CreateObject<Tavrin::Vision::PointMarker>());
            shapes.push_back(CreateObject<Tavrin::Vision::GraphicLabel>());
        }
        benchmark::DoNotOptimize(shapes.data());
        benchmark::DoNotOptimize(record);
    }
}

BENCHMARK(BuildGraphics)->Unit(benchmark::kMillisecond);
BENCHMARK(BareShapes)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return Bench::RunWithRatio(
        argc, argv, {"BuildGraphics", "BareShapes",
                                 "graphics of 10 000 blue features / bare shapes", 2.0});
}
