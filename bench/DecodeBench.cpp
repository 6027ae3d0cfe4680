#include <string>

#include <tinyxml2.h>

#include <Vision/Core/Transform2D.h>

#include "BareAnswer.h"
#include "DeepLearningAccessTestPeer.h"
#include "Ratio.h"
#include "TestEngineControl.h"
#include "Vision/DeepLearning/DeepLearning.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Peer = Private::DeepLearningAccessTestPeer;

char const* const File = "/bench/decode.kelo";

// About 1 MB in the engine's vocabulary: a red view of regions with outlines and a blue view of
// features with matches that refer to them.
std::string ResultDocument() {
    std::string red;
    std::string blue;
    for (int i = 0; red.size() < 500000; ++i) {
        std::string const n = std::to_string(i);
        red += "<region score=\"0." + n + "\" name=\"r" + n +
               "\" area=\"12.5\" perimeter=\"14\" "
               "center=\"" +
               n + ",20\" covers=\"c\" coverage=\"0.5\" points=\"";
        for (int p = 0; p < 16; ++p)
            red +=
                std::to_string(i + p) + "." + std::to_string(p) + "," + std::to_string(p) + ".5 ";
        red += "\"/>";
    }
    int features = 0;
    for (; blue.size() < 400000; ++features) {
        std::string const n = std::to_string(features);
        blue += "<feat id=\"f" + n + "\" loc=\"" + n +
                ".5,40\" angle=\"0.1\" size=\"20x30\" "
                "score=\"0.95\" covers=\"A\"/>";
    }
    for (int m = 0; m + 3 < features; m += 4)
        blue += "<match model_id=\"s\" model_type=\"string\" score=\"0.9\" string=\"ABCD\">"
                "<pose matrix=\"1,0,0,1,5,6\"/><feat idx=\"" +
                std::to_string(m) + "\"/><feat idx=\"" + std::to_string(m + 1) +
                "\"/><feat idx=\"" + std::to_string(m + 2) + "\"/><feat idx=\"" +
                std::to_string(m + 3) + "\"/></match>";
    auto marking = [](char const* tool, std::string const& content) {
        return std::string("<marking tool_uuid=\"") + tool +
               "\" duration=\"31.5\" duration_process_only=\"28.25\" "
               "duration_post_process=\"1.5\" processed=\"t\" processed_device=\"gpu0\">"
               "<image_info size=\"1024x768\" channels=\"1\" depth=\"8\"/><view size=\"1024x768\" "
               "ref_pose=\"1,0,0,1,0,0\" pose=\"1,0,0,1,2,3\" group=\"\">" +
               content + "</view></marking>";
    };
    return "<result><tool uuid=\"red-uuid\"/><image>" +
           marking("red-uuid", "<red score=\"0.8\" filtered_score=\"0.75\" threshold=\"t\">"
                               "<score score=\"0.8\" name=\"s\"/>" +
                                   red + "</red>") +
           marking("blue-uuid", "<blue>" + blue + "</blue>") + "</image></result>";
}

struct Fixture {
    Fixture() {
        testkelo_reset();
        testkelo_add_file(File, "file-uuid", "2024-05-01");
        testkelo_add_stream(File, "main", "main-uuid", "");
        for (char const* tool : {"red", "blue"}) {
            std::string const uuid = std::string(tool) + "-uuid";
            testkelo_add_tool(File, "main", nullptr, tool, uuid.c_str(), "red_quick");
            testkelo_add_parameter(File, "main", tool, "post_process_parameters/red/threshold",
                                   "[0.1,0.9]");
            testkelo_add_parameter(File, "main", tool, "post_process_parameters/red/region_filter",
                                   "");
        }
        workspace = Peer::OpenWorkspace(File);
    }

    std::string document = ResultDocument();
    std::shared_ptr<DLWorkspace> workspace;
    std::shared_ptr<Tavrin::Vision::Transform2DLinear> identity =
        Tavrin::Brnt::CreateObject<Tavrin::Vision::Transform2DLinear>();
};

Fixture& Shared() {
    static Fixture fixture;
    return fixture;
}

void Decode(benchmark::State& state) {
    Fixture& f = Shared();
    auto const stream = f.workspace->Streams()->Item(0);
    for (auto _ : state)
        benchmark::DoNotOptimize(Peer::ParseResultKeloXml(*stream, f.document.c_str(), f.identity));
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * f.document.size()));
}

void BareParseAndRead(benchmark::State& state) {
    Fixture& f = Shared();
    for (auto _ : state) {
        tinyxml2::XMLDocument xml(true, tinyxml2::PRESERVE_WHITESPACE);
        xml.Parse(f.document.c_str());
        benchmark::DoNotOptimize(Bench::ReadElement(*xml.RootElement()));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * f.document.size()));
}

BENCHMARK(Decode)->Unit(benchmark::kMillisecond);
BENCHMARK(BareParseAndRead)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    return Bench::RunWithRatio(
        argc, argv,
        {"Decode", "BareParseAndRead", "result document decoding / bare parse and read", 1.5});
}
