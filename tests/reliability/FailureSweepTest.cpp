// One whole life of the library, run once clean to learn every engine call it makes, then once
// more for each of those calls with that call failing.
#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <typeindex>
#include <vector>

#include <Vision/Core/Exceptions.h>
#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image8Grey.h>

#include "StartPeer.h"
#include "TestEngineControl.h"
#include "Vision/DeepLearning/DeepLearning.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::FileOpenException;
using Tavrin::Vision::VisionException;
using Peer = Private::DeepLearningAccessTestPeer;

constexpr char const* InspectFile = "/sweep/inspect.kelo";
constexpr char const* ReadFile = "/sweep/read.kelo";
constexpr char const* EngineText = "engine says no";

// Where in the life a call is made. Decode is the part of a run between fetching the result
// document and freeing the sample, where resource images are fetched.
enum class Phase { Start, Open, Browse, Run, Decode, Close, Shutdown };

char const* Name(Phase phase) {
    static char const* const names[] = {"start",  "open",  "browse",  "run",
                                        "decode", "close", "shutdown"};
    return names[static_cast<int>(phase)];
}

// What a failed call throws at the host.
struct Thrown {
    std::type_index type;
    int code;
    char const* text;
    bool withEngineText;
};

// What a failed call may leave taken in the engine once the life has let go of everything.
struct Leftover {
    int buffers = 0;
    int images = 0;
    int workspaces = 0;
};

struct Expectation {
    Expectation(char const* entryPoint, Phase phase, std::optional<Thrown> thrown,
                Leftover left = {})
        : entryPoint(entryPoint)
        , phase(phase)
        , thrown(std::move(thrown))
        , left(left) {}

    char const* entryPoint;
    Phase phase;
    std::optional<Thrown> thrown; // none: the library does not look at the call's status
    Leftover left;
};

template <class Exception>
Thrown Throws(DeepLearningExceptionCodes code, char const* text, bool withEngineText = true) {
    return {typeid(Exception), static_cast<int>(code), text, withEngineText};
}
Thrown Fails(DeepLearningExceptionCodes code, char const* text) {
    return Throws<DeepLearningException>(code, text);
}

using Codes = DeepLearningExceptionCodes;
using InitFailure = DeepLearningInitializeException;

// The failure tables of the engine binding, by entry point and phase.
std::vector<Expectation> const Expectations = {
    {"kelo_debug_infos", Phase::Start,
     Throws<InitFailure>(Codes::CannotSetupDebugInfos,
                         "Cannot setup Solvarine Deep Learning debug infos", false)},
    {"kelo_init_buffer", Phase::Start,
     Throws<InitFailure>(Codes::CannotInitializeBuffer,
                         "Could not initialize Solvarine Deep Learning buffer", false)},
    {"kelo_initialize", Phase::Start,
     Throws<InitFailure>(Codes::CannotInitialize, "Could not initialize Solvarine Deep Learning")},
    {"kelo_free_buffer",
     Phase::Start,
     Fails(Codes::CannotDeinitializeBuffer, "Failed to de-initialize buffer"),
     {1, 0, 0}},
    // The access buffer is initialised again on each open, and that result is not looked at.
    {"kelo_init_buffer", Phase::Open, std::nullopt},
    {"kelo_runtime_open_workspace_from_file", Phase::Open,
     Thrown{typeid(FileOpenException), Tavrin::Vision::VisionExceptionCodes_FileOpen,
            "Cannot open Solvarine Deep Learning Workspace", true}},
    {"kelo_runtime_list_workspaces", Phase::Open,
     Fails(Codes::CannotListWorkspaces, "Cannot List workspaces")},
    {"kelo_runtime_list_streams", Phase::Open,
     Fails(Codes::CannotListStreams, "Failed to list streams")},
    {"kelo_runtime_list_tools", Phase::Open, Fails(Codes::CannotListTools, "Failed to list tools")},
    {"kelo_runtime_blue_list_models", Phase::Open,
     Fails(Codes::CannotListModels, "Failed to List Models")},
    {"kelo_runtime_tool_get_parameter", Phase::Open,
     Fails(Codes::CannotGetParameter, "Failed to get tool parameters")},
    {"kelo_init_image", Phase::Run,
     Throws<DeepLearningException>(Codes::CannotInitializeImage,
                                   "Failed to Initialize Solvarine Deep Learning Image", false)},
    {"kelo_runtime_tool_get_parameter", Phase::Run,
     Fails(Codes::CannotGetParameter, "Failed to get tool parameters")},
    {"kelo_runtime_tool_set_parameter", Phase::Run,
     Fails(Codes::CannotSetParameter, "Failed to set tool parameters")},
    {"kelo_runtime_create_sample", Phase::Run,
     Fails(Codes::CannotCreateSample, "Failed to Create Sample")},
    {"kelo_runtime_sample_add_image", Phase::Run,
     Fails(Codes::CannotAddImage, "Failed to Add Image to Sample")},
    {"kelo_runtime_sample_process", Phase::Run,
     Fails(Codes::CannotRunStream, "Failed to Run Solvarine Deep Learning Stream")},
    // The result buffer: the image record is not released on this way out.
    {"kelo_init_buffer",
     Phase::Run,
     Throws<InitFailure>(Codes::CannotInitializeBuffer,
                         "Could not initialize Solvarine Deep Learning buffer", false),
     {0, 1, 0}},
    {"kelo_runtime_get_sample", Phase::Run,
     Fails(Codes::CannotGetResult, "Failed to Get the Execution result")},
    {"kelo_init_image", Phase::Decode, std::nullopt},
    {"kelo_resource_get_image", Phase::Decode, std::nullopt},
    {"kelo_free_image", Phase::Decode, std::nullopt, {0, 1, 0}},
    {"kelo_runtime_free_sample", Phase::Run, std::nullopt},
    {"kelo_free_image", Phase::Run, std::nullopt, {0, 1, 0}},
    {"kelo_free_buffer",
     Phase::Run,
     Fails(Codes::CannotFreeImage, "Failed to Free Solvarine Deep Learning Image"),
     {1, 0, 0}},
    // A workspace's destructor swallows the failed close, and the engine keeps the workspace.
    {"kelo_runtime_close_workspace", Phase::Close, std::nullopt, {0, 0, 1}},
    {"kelo_deinitialize", Phase::Shutdown, std::nullopt},
};

Expectation const* ExpectationFor(std::string const& entryPoint, Phase phase) {
    for (auto const& expectation : Expectations)
        if (entryPoint == expectation.entryPoint && phase == expectation.phase)
            return &expectation;
    return nullptr;
}

// Two files: one with a red and a green stream, opened twice, and one with a blue stream whose
// tool holds a model.
void ScriptEngine() {
    testkelo_add_file(InspectFile, "inspect-uuid", "2024-05-01");
    testkelo_add_stream(InspectFile, "inspect", "inspect-stream", "0,0,64,64");
    testkelo_add_tool(InspectFile, "inspect", nullptr, "red", "red-uuid", "red_quick");
    testkelo_add_parameter(InspectFile, "inspect", "red", "post_process_parameters/red/threshold",
                           "[0.1,0.9]");
    testkelo_add_parameter(InspectFile, "inspect", "red",
                           "post_process_parameters/red/region_filter", "");
    testkelo_add_stream(InspectFile, "classify", "classify-stream", "0,0,64,64");
    testkelo_add_tool(InspectFile, "classify", nullptr, "green", "green-uuid", "green_quick");
    testkelo_add_parameter(InspectFile, "classify", "green",
                           "post_process_parameters/green/threshold", "0.5");
    testkelo_add_parameter(InspectFile, "classify", "green", "runtime_parameters/heat_map_on",
                           "true");

    testkelo_add_file(ReadFile, "read-uuid", "2024-05-02");
    testkelo_add_stream(ReadFile, "read", "read-stream", "0,0,64,64");
    testkelo_add_tool(ReadFile, "read", nullptr, "blue", "blue-uuid", "blue_read");
    for (auto [path, value] : {std::pair{"processing/blue/threshold", "0.3"},
                               {"post_processing/blue/feature_filter", ""},
                               {"processing/blue/precision", "0.6"},
                               {"sampling/feature_size", "8"},
                               {"models/digits/enabled", "true"},
                               {"models/digits/threshold", "0.4"},
                               {"models/digits/occurrences", "2"}})
        testkelo_add_parameter(ReadFile, "read", "blue", path, value);
    testkelo_add_model(ReadFile, "read", "blue", "digits", "node");

    static unsigned char const pels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    EngineImage const map{4, 2, 1, 0, const_cast<unsigned char*>(pels), 0, 4};
    testkelo_add_resource_image("red-map", &map);
    testkelo_add_resource_image("green-map", &map);
}

std::string Document(char const* tool, std::string const& view) {
    return std::string("<result><tool uuid=\"") + tool + "\"/><image><marking tool_uuid=\"" + tool +
           "\" duration=\"3\" duration_process_only=\"2\" duration_post_process=\"1\" "
           "processed=\"now\" processed_device=\"gpu0\"><view size=\"8x4\" "
           "ref_pose=\"1,0,0,1,0,0\" pose=\"1,0,0,1,0,0\" group=\"g\">" +
           view + "</view></marking></image></result>";
}

void ScriptRedRun() {
    testkelo_set_result_document(
        Document("red-uuid",
                 "<red score=\"0.8\" filtered_score=\"0.7\" threshold=\"t\"><score score=\"0.6\" "
                 "name=\"overall\"/><region score=\"0.9\" name=\"r\" area=\"4\" perimeter=\"8\" "
                 "center=\"2,2\" covers=\"\" coverage=\"\" points=\"1,1 3,3\"/><resource "
                 "name=\"my_score_map\" type=\"image\" uuid=\"red-map\"/></red>")
            .c_str());
}

void ScriptGreenRun() {
    testkelo_set_result_document(
        Document("green-uuid",
                 "<green threshold=\"0.5\" uncertainty=\"0\"><tag name=\"ok\" score=\"0.7\"/>"
                 "<resource name=\"overlay\" type=\"image\" uuid=\"green-map\"/></green>")
            .c_str());
}

void ScriptBlueRun() {
    testkelo_set_result_document(
        Document("blue-uuid", "<blue_read><feat id=\"f\" loc=\"1,1\" angle=\"0\" size=\"2x2\" "
                              "score=\"1\" covers=\"\"/><match model_id=\"digits\" "
                              "model_type=\"node\" score=\"0.9\" covers=\"\" node_coords=\"0\" "
                              "string=\"7\" prettified_string=\"7\"><feat idx=\"0\"/></match>"
                              "</blue_read>")
            .c_str());
}

// What a life holds; letting go of it closes the workspaces.
struct Life {
    std::shared_ptr<DLRuntimeTool> inspector;
    std::shared_ptr<DLRuntimeTool> reader;
    std::shared_ptr<DLOperator> classifier;
};

template <class Tool> std::shared_ptr<Tool> Find(DLOperator const& op, char const* uuid) {
    return std::dynamic_pointer_cast<Tool>(
        Private::DeepLearningAccess::FindTool(*op.Workspace(), uuid));
}

// Walks the catalogue and changes a parameter of each tool and of the model, so that each run
// writes to the engine.
void Browse(Life& life) {
    auto inspect = life.inspector->DeepLearningOperator();
    inspect->setStream(inspect->Workspace()->Streams()->Item(0));
    life.classifier->setStream(life.classifier->Workspace()->Streams()->Item(1));
    auto red = Find<DLQuickRedToolRuntimeParams>(*inspect, "red-uuid");
    red->setUpperThreshold(red->UpperThreshold() - 0.1);
    auto green = Find<DLQuickGreenToolRuntimeParams>(*life.classifier, "green-uuid");
    green->setThreshold(green->Threshold() + 0.1);
    auto blue =
        Find<DLBlueReadToolRuntimeParams>(*life.reader->DeepLearningOperator(), "blue-uuid");
    blue->setThreshold(blue->Threshold() + 0.1);
    auto model = std::dynamic_pointer_cast<DLBlueNodeModel>(blue->Models()->Item(0));
    model->setThreshold(model->Threshold() + 0.1);
}

struct Step {
    Phase phase;
    std::function<void(Life&)> act;
};

std::vector<Step> const LifeSteps = {
    {Phase::Start,
     [](Life&) {
         Peer::StartEngine();
     }},
    {Phase::Open,
     [](Life& life) {
         life.inspector = CreateObject<DLRuntimeTool>();
         life.inspector->LoadWorkspace(InspectFile);
     }},
    {Phase::Open,
     [](Life& life) {
         life.reader = CreateObject<DLRuntimeTool>();
         life.reader->LoadWorkspace(ReadFile);
     }},
    {Phase::Open,
     [](Life& life) {
         life.classifier = CreateObject<DLOperator>();
         life.classifier->LoadWorkspace(InspectFile);
     }},
    {Phase::Browse, Browse},
    {Phase::Run,
     [](Life& life) {
         ScriptRedRun();
         life.inspector->setInputImage(CreateObject<Tavrin::Vision::Image8Grey>(16, 8));
         life.inspector->Run();
     }},
    {Phase::Run,
     [](Life& life) {
         ScriptGreenRun();
         life.classifier->Execute(*CreateObject<Tavrin::Vision::Image16Grey>(16, 8));
     }},
    {Phase::Run,
     [](Life& life) {
         ScriptBlueRun();
         life.reader->setInputImage(CreateObject<Tavrin::Vision::Image8Grey>(16, 8));
         life.reader->Run();
     }},
    {Phase::Close,
     [](Life& life) {
         life = Life{};
     }},
    {Phase::Shutdown,
     [](Life&) {
         Peer::StopEngine();
     }},
};

// Runs the life on a freshly scripted engine that has not started; stops at the first
// exception, which it hands back after letting go of what the life held.
std::exception_ptr LiveOnce(std::function<void()> const& beforeLife,
                            std::vector<Phase>* phaseOfCall) {
    testkelo_reset();
    Peer::ForgetEngineStart();
    ScriptEngine();
    beforeLife();
    Life life;
    std::exception_ptr failure;
    for (auto const& step : LifeSteps) {
        try {
            step.act(life);
        } catch (...) {
            failure = std::current_exception();
            break;
        }
        if (phaseOfCall)
            phaseOfCall->resize(testkelo_log_size(), step.phase);
    }
    life = Life{};
    return failure;
}

std::string What(std::exception_ptr failure) {
    try {
        std::rethrow_exception(failure);
    } catch (std::exception const& e) {
        return typeid(e).name() + std::string(": ") + e.what();
    }
}

struct Position {
    std::string entryPoint;
    int nth;
    Phase phase;
};

std::string EntryPoint(std::string const& call) {
    return call.substr(0, call.find('('));
}

// Every call of the clean life, as the nth call of its entry point, in its phase.
std::vector<Position> CleanLifePositions() {
    std::vector<Phase> phases;
    if (auto failure = LiveOnce([] {}, &phases)) {
        ADD_FAILURE() << "the clean life failed: " << What(failure);
        return {};
    }
    std::vector<Position> positions;
    std::map<std::string, int> seen;
    bool decoding = false;
    for (int index = 0; index < testkelo_log_size(); ++index) {
        std::string const entryPoint = EntryPoint(testkelo_log_entry(index));
        if (entryPoint == "kelo_runtime_free_sample")
            decoding = false;
        Phase const phase = decoding ? Phase::Decode : phases.at(index);
        positions.push_back({entryPoint, ++seen[entryPoint], phase});
        if (entryPoint == "kelo_runtime_get_sample")
            decoding = true;
    }
    return positions;
}

std::string Describe(Position const& position) {
    return position.entryPoint + " #" + std::to_string(position.nth) + " (" + Name(position.phase) +
           ")";
}

void ExpectThrown(std::exception_ptr failure, std::optional<Thrown> const& expected) {
    if (!expected) {
        EXPECT_FALSE(failure) << "a failure the library ignores came through: " << What(failure);
        return;
    }
    ASSERT_TRUE(failure) << "nothing was thrown";
    try {
        std::rethrow_exception(failure);
    } catch (VisionException const& e) {
        EXPECT_EQ(std::type_index(typeid(e)), expected->type) << e.what();
        EXPECT_EQ(static_cast<int>(e.Code()), expected->code);
        EXPECT_EQ(e.Message(),
                  std::string(expected->text) +
                      (expected->withEngineText ? std::string(": ") + EngineText : ""));
    } catch (std::exception const&) {
        ADD_FAILURE() << "unexpected " << What(failure);
    }
}

void ExpectReleased(Expectation const& expectation) {
    Leftover const& left = expectation.left;
    EXPECT_EQ(testkelo_count(TESTKELO_SAMPLES), 0);
    EXPECT_EQ(testkelo_count(TESTKELO_IMAGES), left.images);
    EXPECT_EQ(testkelo_count(TESTKELO_WORKSPACES), left.workspaces);
    // The access buffer lives as long as the process; a start that failed may not have made it.
    int const buffers = testkelo_count(TESTKELO_BUFFERS) - left.buffers;
    if (expectation.phase == Phase::Start)
        EXPECT_LE(buffers, 1);
    else
        EXPECT_EQ(buffers, 1);
}

TEST(FailureSweep, EveryEngineCallOfALifeFailsCleanly) {
    std::vector<Position> const positions = CleanLifePositions();
    ASSERT_FALSE(HasFailure());
    ExpectReleased({"", Phase::Close, std::nullopt, {}});
    std::set<std::string> entryPoints;
    for (auto const& position : positions) {
        SCOPED_TRACE(Describe(position));
        Expectation const* expectation = ExpectationFor(position.entryPoint, position.phase);
        ASSERT_TRUE(expectation) << "no expectation for this call";
        entryPoints.insert(position.entryPoint);
        std::exception_ptr const failure = LiveOnce(
            [&] { testkelo_fail(position.entryPoint.c_str(), position.nth, 9, EngineText); },
            nullptr);
        ExpectThrown(failure, expectation->thrown);
        ExpectReleased(*expectation);
    }
    testkelo_reset();
    std::cout << "Failure sweep: " << positions.size() << " positions of " << entryPoints.size()
              << " entry points\n";
}

} // namespace
