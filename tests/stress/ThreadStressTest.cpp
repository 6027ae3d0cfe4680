// Eight host threads share two workspace files: each makes and drops runtime tools and
// operators, runs them, changes their parameters and reloads them from an archive. The number
// of rounds per thread is TAVRIN_STRESS_ROUNDS (small by default); a watchdog ends the process
// when the rounds do not finish within TAVRIN_STRESS_TIMEOUT seconds, since a deadlock
// otherwise only shows as a hung run.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <Vision/Core/Archive.h>
#include <Vision/Core/Image8Grey.h>

#include "TestEngineControl.h"
#include "Vision/DeepLearning/DeepLearning.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::Image8Grey;

constexpr int Threads = 8;
char const* const Files[] = {"/stress/first.kelo", "/stress/second.kelo"};

int Setting(char const* name, int fallback) {
    char const* text = std::getenv(name);
    return text ? std::atoi(text) : fallback;
}

// Ends the process when it is not let go of within the limit.
class Watchdog {
public:
    explicit Watchdog(std::chrono::seconds limit)
        : thread_([limit, released = released_.get_future()] {
            if (released.wait_for(limit) == std::future_status::timeout) {
                std::fprintf(stderr, "stress: no end after %lld s, a deadlock is likely\n",
                             static_cast<long long>(limit.count()));
                std::_Exit(3);
            }
        }) {}
    ~Watchdog() {
        released_.set_value();
        thread_.join();
    }

private:
    std::promise<void> released_;
    std::thread thread_;
};

// Both files hold the same tools, so that one result document answers every run.
void AddFile(char const* file) {
    testkelo_add_file(file, file, "2024-05-01");
    testkelo_add_stream(file, "main", "main-uuid", "0,0,64,64");
    testkelo_add_tool(file, "main", nullptr, "red", "red-uuid", "red_quick");
    testkelo_add_parameter(file, "main", "red", "post_process_parameters/red/threshold",
                           "[0.1,0.9]");
    testkelo_add_parameter(file, "main", "red", "post_process_parameters/red/region_filter", "");
    testkelo_add_tool(file, "main", nullptr, "green", "green-uuid", "green_quick");
    testkelo_add_parameter(file, "main", "green", "post_process_parameters/green/threshold", "0.5");
    testkelo_add_parameter(file, "main", "green", "runtime_parameters/heat_map_on", "true");
}

std::string Marking(char const* tool, std::string const& content) {
    return std::string("<marking tool_uuid=\"") + tool +
           "\" duration=\"3\" duration_process_only=\"2\" duration_post_process=\"1\" "
           "processed=\"now\" processed_device=\"gpu0\"><view size=\"8x4\" "
           "ref_pose=\"1,0,0,1,0,0\" pose=\"1,0,0,1,0,0\" group=\"g\">" +
           content + "</view></marking>";
}

void ScriptEngine() {
    for (char const* file : Files)
        AddFile(file);
    static unsigned char const pels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    EngineImage const map{4, 2, 1, 0, const_cast<unsigned char*>(pels), 0, 4};
    testkelo_add_resource_image("map", &map);
    std::string const document =
        "<result><tool uuid=\"red-uuid\"/><image>" +
        Marking("red-uuid", "<red score=\"0.8\" filtered_score=\"0.7\" threshold=\"t\"><score "
                            "score=\"0.6\" name=\"overall\"/><region score=\"0.9\" name=\"r\" "
                            "area=\"4\" perimeter=\"8\" center=\"2,2\" covers=\"\" coverage=\"\" "
                            "points=\"1,1 3,3\"/><resource name=\"my_score_map\" type=\"image\" "
                            "uuid=\"map\"/></red>") +
        Marking("green-uuid", "<green threshold=\"0.5\" uncertainty=\"0\"><tag name=\"ok\" "
                              "score=\"0.7\"/><tag name=\"bad\" score=\"0.2\"/></green>") +
        "</image></result>";
    testkelo_set_result_document(document.c_str());
}

template <class T> std::shared_ptr<T> ReloadedThroughArchive(std::shared_ptr<T> const& object) {
    std::stringstream bytes;
    {
        Tavrin::Vision::VisionBinaryOutputArchive output(
            bytes, Tavrin::Vision::SerializerOptionsConstants_None);
        output(object);
    }
    Tavrin::Vision::VisionBinaryInputArchive input(bytes,
                                                   Tavrin::Vision::SerializerOptionsConstants_None);
    std::shared_ptr<T> loaded;
    input(loaded);
    return loaded;
}

// Throws when a run did not give what the document says.
void CheckResult(DLResultPtr const& result) {
    if (!result || result->ResultImage()->ResultMarking()->Count() != 2)
        throw std::runtime_error("a run gave no result or lost a marking");
    auto green = result->ResultImage()->ResultMarking()->Item(1)->ResultViews()->Item(0);
    if (green->ResultGreen()->BestTag()->Name() != "ok")
        throw std::runtime_error("a run read the wrong best tag");
}

void RunTool(DLRuntimeTool& tool) {
    tool.Run();
    CheckResult(tool.Results());
}

void Round(int thread, int round, std::shared_ptr<Image8Grey> const& image) {
    char const* file = Files[(thread + round) % 2];
    auto tool = CreateObject<DLRuntimeTool>();
    tool->LoadWorkspace(file);
    tool->setInputImage(image);
    RunTool(*tool);
    // Clones of one file share one engine workspace: each run must push its own value.
    std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(
        tool->DeepLearningOperator()->Workspace()->Streams()->Item(0)->Tools()->Item(0))
        ->setUpperThreshold(0.5 + 0.01 * ((thread + round) % 40));
    RunTool(*tool);
    if (round % 2 == 0) {
        auto reloaded = ReloadedThroughArchive(tool);
        reloaded->setInputImage(image);
        RunTool(*reloaded);
    }
    auto op = CreateObject<DLOperator>();
    op->LoadWorkspace(Files[(thread + round + 1) % 2]);
    CheckResult(op->Execute(*image));
}

TEST(ThreadStress, ToolsOverSharedWorkspacesOnEightThreads) {
    int const rounds = Setting("TAVRIN_STRESS_ROUNDS", 3);
    Watchdog const watchdog(std::chrono::seconds(Setting("TAVRIN_STRESS_TIMEOUT", 300)));
    testkelo_reset();
    ScriptEngine();

    std::vector<std::thread> threads;
    for (int thread = 0; thread < Threads; ++thread)
        threads.emplace_back([&, thread] {
            auto const image = CreateObject<Image8Grey>(32, 24);
            for (int round = 0; round < rounds; ++round) {
                try {
                    Round(thread, round, image);
                } catch (std::exception const& e) {
                    ADD_FAILURE() << e.what();
                }
            }
        });
    for (auto& thread : threads)
        thread.join();

    EXPECT_EQ(testkelo_count(TESTKELO_WORKSPACES), 0);
    EXPECT_EQ(testkelo_count(TESTKELO_SAMPLES), 0);
    EXPECT_EQ(testkelo_count(TESTKELO_IMAGES), 0);
    EXPECT_EQ(testkelo_count(TESTKELO_BUFFERS), 1) << "only the access buffer stays";
    std::printf("stress: %d threads x %d rounds\n", Threads, rounds);
}

} // namespace
