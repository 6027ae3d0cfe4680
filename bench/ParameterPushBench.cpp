// The steady-state parameter push of a 20-tool stream, where every value is cached, against
// bare hash lookups of the cached keys, each once: the least a push has to look up.

#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "DeepLearningAccessTestPeer.h"
#include "Ratio.h"
#include "TestEngineControl.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "tests/deeplearning/WorkspaceFiles.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Peer = Private::DeepLearningAccessTestPeer;

char const* const File = "/workspaces/bench.kelo";
char const* const Stream = "main";
int const ToolCount = 20;
char const* const GetCall = "kelo_runtime_tool_get_parameter";
char const* const SetCall = "kelo_runtime_tool_set_parameter";

// One cached key, as the parts the push builds it from.
struct Lookup {
    std::string workspace;
    std::string stream;
    std::string tool;
    std::string path;

    std::string Key() const { return workspace + "/" + stream + "/" + tool + "/" + path; }
};

struct Fixture {
    std::shared_ptr<DLWorkspace> workspace;
    std::vector<std::shared_ptr<DLToolRuntimeParams>> tools;
    std::vector<Lookup> lookups;
    std::unordered_map<std::string, std::string> cache;
};

// Set up by main, gone before the library shuts the engine down at exit.
Fixture* fixture = nullptr;

void PushAll() {
    for (auto const& tool : fixture->tools)
        Peer::ApplyRuntimeParametersRecursively(tool);
}

void ParameterPush(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state)
        PushAll();
}
BENCHMARK(ParameterPush);

void BareLookups(benchmark::State& state) {
    auto const& cache = fixture->cache;
    std::string key;
    for ([[maybe_unused]] auto _ : state) {
        for (Lookup const& lookup : fixture->lookups) {
            // Built from C texts into one reused buffer, as the push builds its keys.
            key.clear();
            key.append(lookup.workspace.c_str())
                .append("/")
                .append(lookup.stream.c_str())
                .append("/")
                .append(lookup.tool.c_str())
                .append("/")
                .append(lookup.path.c_str());
            auto const found = cache.find(key);
            benchmark::DoNotOptimize(found);
        }
    }
}
BENCHMARK(BareLookups);

// Opens a stream of quick red tools and warms the cache. A value equal to the engine's is read
// from the engine on every push, so every tool gets values of its own first.
int SetUp(Fixture& f) {
    testkelo_reset();
    testkelo_add_file(File, "bench-uuid", "2024-05-01");
    testkelo_add_stream(File, Stream, "main-uuid", "0,0,64,64");
    for (int index = 0; index < ToolCount; ++index) {
        std::string const id = "tool" + std::to_string(index);
        WorkspaceFiles::AddQuickRedTool(File, Stream, nullptr, id.c_str(), (id + "-uuid").c_str());
    }
    f.workspace = Peer::OpenWorkspace(File);
    for (auto const& tool : *f.workspace->Streams()->Item(0)->Tools())
        f.tools.push_back(tool);

    // Nothing is cached yet, so each key this push looks up shows up as an engine read.
    testkelo_clear_log();
    PushAll();
    std::unordered_set<std::string> seen;
    for (std::string const& call : TestKelo::LoggedCalls()) {
        if (call.rfind(std::string(GetCall) + "(", 0) != 0)
            continue;
        auto const arguments = WorkspaceFiles::Arguments(call);
        Lookup lookup{arguments[0], arguments[1], arguments[2], arguments[3]};
        if (seen.insert(lookup.Key()).second)
            f.lookups.push_back(std::move(lookup));
    }

    for (std::size_t index = 0; index < f.tools.size(); ++index) {
        auto const tool = std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(f.tools[index]);
        tool->setUpperThreshold(0.8);
        tool->setRegionFilter("area>" + std::to_string(index));
    }
    PushAll();
    f.cache = Peer::ParameterCache();
    for (Lookup const& lookup : f.lookups) {
        if (f.cache.count(lookup.Key()) == 0) {
            std::fprintf(stderr, "the warm push left %s uncached\n", lookup.Key().c_str());
            return 1;
        }
    }
    testkelo_clear_log();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    Fixture f;
    fixture = &f;
    int status = 0;
    try {
        status = SetUp(f);
        if (status == 0)
            status = Bench::RunWithRatio(
                argc, argv,
                {"ParameterPush", "BareLookups", "parameter push / bare hash lookups", 2});
    } catch (std::exception const& e) {
        std::fprintf(stderr, "%s\n", e.what());
        status = 1;
    }
    int const engineCalls = testkelo_call_count(GetCall) + testkelo_call_count(SetCall);
    if (status == 0 && engineCalls != 0) {
        std::fprintf(stderr, "the steady-state push made %d engine parameter calls\n", engineCalls);
        status = 1;
    }
    fixture = nullptr;
    return status;
}
