// One whole life of the library, run once clean to learn every engine call it makes, then once
// more for each of those calls with that call failing.
#include <gtest/gtest.h>

#include <functional>
#include <iostream>
#include <map>
#include <optional>
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
using Tavrin::Vision::Image8Grey;
using Tavrin::Vision::VisionException;
using Peer = Private::DeepLearningAccessTestPeer;
using Codes = DeepLearningExceptionCodes;
using InitFailure = DeepLearningInitializeException;

constexpr char const* InspectFile = "/sweep/inspect.kelo";
constexpr char const* ReadFile = "/sweep/read.kelo";
constexpr char const* EngineText = "engine says no";

// Where in the life a call is made. Decode is the part of a run between fetching the result
// document and freeing the sample, where resource images are fetched.
enum class Phase { Start, Open, Browse, Run, Decode, Close, Shutdown };
char const* const PhaseNames[] = {"start", "open", "browse", "run", "decode", "close", "shutdown"};

// What a failed call throws at the host.
struct Thrown {
    std::type_index type;
    int code;
    char const* text;
    bool withEngineText;
};

struct Expectation {
    char const* entryPoint;
    Phase phase;
    std::optional<Thrown> thrown; // none: the library does not look at the call's status
    // What the failed call may leave taken in the engine once the life has let go of everything.
    int buffers = 0, images = 0, workspaces = 0;
};

template <class Exception = DeepLearningException>
Thrown Throws(Codes code, char const* text, bool withEngineText = true) {
    return {typeid(Exception), static_cast<int>(code), text, withEngineText};
}

Thrown const BufferFailure = Throws<InitFailure>(
    Codes::CannotInitializeBuffer, "Could not initialize Solvarine Deep Learning buffer", false);
Thrown const GetParameterFailure =
    Throws(Codes::CannotGetParameter, "Failed to get tool parameters");

// The failure tables of the engine binding, by entry point and phase.
std::vector<Expectation> const Expectations = {
    {"kelo_debug_infos", Phase::Start,
     Throws<InitFailure>(Codes::CannotSetupDebugInfos,
                         "Cannot setup Solvarine Deep Learning debug infos", false)},
    {"kelo_init_buffer", Phase::Start, BufferFailure},
    {"kelo_initialize", Phase::Start,
     Throws<InitFailure>(Codes::CannotInitialize, "Could not initialize Solvarine Deep Learning")},
    {"kelo_free_buffer", Phase::Start,
     Throws(Codes::CannotDeinitializeBuffer, "Failed to de-initialize buffer"), 1},
    // The access buffer is initialised again on each open, and that result is not looked at.
    {"kelo_init_buffer", Phase::Open, std::nullopt},
    {"kelo_runtime_open_workspace_from_file", Phase::Open,
     Thrown{typeid(Tavrin::Vision::FileOpenException),
            Tavrin::Vision::VisionExceptionCodes_FileOpen,
            "Cannot open Solvarine Deep Learning Workspace", true}},
    {"kelo_runtime_list_workspaces", Phase::Open,
     Throws(Codes::CannotListWorkspaces, "Cannot List workspaces")},
    {"kelo_runtime_list_streams", Phase::Open,
     Throws(Codes::CannotListStreams, "Failed to list streams")},
    {"kelo_runtime_list_tools", Phase::Open,
     Throws(Codes::CannotListTools, "Failed to list tools")},
    {"kelo_runtime_blue_list_models", Phase::Open,
     Throws(Codes::CannotListModels, "Failed to List Models")},
    {"kelo_runtime_tool_get_parameter", Phase::Open, GetParameterFailure},
    {"kelo_init_image", Phase::Run,
     Throws(Codes::CannotInitializeImage, "Failed to Initialize Solvarine Deep Learning Image",
            false)},
    {"kelo_runtime_tool_get_parameter", Phase::Run, GetParameterFailure},
    {"kelo_runtime_tool_set_parameter", Phase::Run,
     Throws(Codes::CannotSetParameter, "Failed to set tool parameters")},
    {"kelo_runtime_create_sample", Phase::Run,
     Throws(Codes::CannotCreateSample, "Failed to Create Sample")},
    {"kelo_runtime_sample_add_image", Phase::Run,
     Throws(Codes::CannotAddImage, "Failed to Add Image to Sample")},
    {"kelo_runtime_sample_process", Phase::Run,
     Throws(Codes::CannotRunStream, "Failed to Run Solvarine Deep Learning Stream")},
    // The result buffer: the image record is not released on this way out.
    {"kelo_init_buffer", Phase::Run, BufferFailure, 0, 1},
    {"kelo_runtime_get_sample", Phase::Run,
     Throws(Codes::CannotGetResult, "Failed to Get the Execution result")},
    {"kelo_init_image", Phase::Decode, std::nullopt},
    {"kelo_resource_get_image", Phase::Decode, std::nullopt},
    {"kelo_free_image", Phase::Decode, std::nullopt, 0, 1},
    {"kelo_runtime_free_sample", Phase::Run, std::nullopt},
    {"kelo_free_image", Phase::Run, std::nullopt, 0, 1},
    {"kelo_free_buffer", Phase::Run,
     Throws(Codes::CannotFreeImage, "Failed to Free Solvarine Deep Learning Image"), 1},
    // A workspace's destructor swallows the failed close, and the engine keeps the workspace.
    {"kelo_runtime_close_workspace", Phase::Close, std::nullopt, 0, 0, 1},
    {"kelo_deinitialize", Phase::Shutdown, std::nullopt},
};

Expectation const* ExpectationFor(std::string const& entryPoint, Phase phase) {
    for (auto const& expectation : Expectations)
        if (entryPoint == expectation.entryPoint && phase == expectation.phase)
            return &expectation;
    return nullptr;
}

// A stream of its own name holding one tool whose uuid is the tool's name and "-uuid".
void AddTool(char const* file, char const* stream, char const* tool, char const* type,
             std::initializer_list<std::pair<char const*, char const*>> parameters) {
    testkelo_add_stream(file, stream, (std::string(stream) + "-stream").c_str(), "0,0,64,64");
    testkelo_add_tool(file, stream, nullptr, tool, (std::string(tool) + "-uuid").c_str(), type);
    for (auto [path, value] : parameters)
        testkelo_add_parameter(file, stream, tool, path, value);
}

// Two files: one with a red and a green stream, opened twice, and one with a blue stream whose
// tool holds a model.
void ScriptEngine() {
    testkelo_add_file(InspectFile, "inspect-uuid", "2024-05-01");
    AddTool(InspectFile, "inspect", "red", "red_quick",
            {{"post_process_parameters/red/threshold", "[0.1,0.9]"},
             {"post_process_parameters/red/region_filter", ""}});
    AddTool(InspectFile, "classify", "green", "green_quick",
            {{"post_process_parameters/green/threshold", "0.5"},
             {"runtime_parameters/heat_map_on", "true"}});
    testkelo_add_file(ReadFile, "read-uuid", "2024-05-02");
    AddTool(ReadFile, "read", "blue", "blue_read",
            {{"processing/blue/threshold", "0.3"},
             {"post_processing/blue/feature_filter", ""},
             {"processing/blue/precision", "0.6"},
             {"sampling/feature_size", "8"},
             {"models/digits/enabled", "true"},
             {"models/digits/threshold", "0.4"},
             {"models/digits/occurrences", "2"}});
    testkelo_add_model(ReadFile, "read", "blue", "digits", "node");

    static unsigned char const pels[8] = {1, 2, 3, 4, 5, 6, 7, 8};
    EngineImage const map{4, 2, 1, 0, const_cast<unsigned char*>(pels), 0, 4};
    testkelo_add_resource_image("red-map", &map);
    testkelo_add_resource_image("green-map", &map);
}

// The next run's result: one marking of the tool holding the view.
void ScriptRun(std::string const& tool, std::string const& view) {
    testkelo_set_result_document(
        ("<result><tool uuid=\"" + tool + "\"/><image><marking tool_uuid=\"" + tool +
         "\" duration=\"3\" duration_process_only=\"2\" duration_post_process=\"1\" "
         "processed=\"now\" processed_device=\"gpu0\"><view size=\"8x4\" "
         "ref_pose=\"1,0,0,1,0,0\" pose=\"1,0,0,1,0,0\" group=\"g\">" +
         view + "</view></marking></image></result>")
            .c_str());
}

char const* const RedView =
    "<red score=\"0.8\" filtered_score=\"0.7\" threshold=\"t\"><score score=\"0.6\" "
    "name=\"overall\"/><region score=\"0.9\" name=\"r\" area=\"4\" perimeter=\"8\" center=\"2,2\" "
    "covers=\"\" coverage=\"\" points=\"1,1 3,3\"/><resource name=\"my_score_map\" type=\"image\" "
    "uuid=\"red-map\"/></red>";
char const* const GreenView =
    "<green threshold=\"0.5\" uncertainty=\"0\"><tag name=\"ok\" score=\"0.7\"/><resource "
    "name=\"overlay\" type=\"image\" uuid=\"green-map\"/></green>";
char const* const BlueView =
    "<blue_read><feat id=\"f\" loc=\"1,1\" angle=\"0\" size=\"2x2\" score=\"1\" covers=\"\"/>"
    "<match model_id=\"digits\" model_type=\"node\" score=\"0.9\" covers=\"\" node_coords=\"0\" "
    "string=\"7\" prettified_string=\"7\"><feat idx=\"0\"/></match></blue_read>";

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

// The life, telling enter as each phase begins.
void Live(Life& life, std::function<void(Phase)> const& enter) {
    enter(Phase::Start);
    Peer::StartEngine();
    enter(Phase::Open);
    (life.inspector = CreateObject<DLRuntimeTool>())->LoadWorkspace(InspectFile);
    (life.reader = CreateObject<DLRuntimeTool>())->LoadWorkspace(ReadFile);
    (life.classifier = CreateObject<DLOperator>())->LoadWorkspace(InspectFile);
    enter(Phase::Browse);
    Browse(life);
    enter(Phase::Run);
    ScriptRun("red-uuid", RedView);
    life.inspector->setInputImage(CreateObject<Image8Grey>(16, 8));
    life.inspector->Run();
    ScriptRun("green-uuid", GreenView);
    life.classifier->Execute(*CreateObject<Tavrin::Vision::Image16Grey>(16, 8));
    ScriptRun("blue-uuid", BlueView);
    life.reader->setInputImage(CreateObject<Image8Grey>(16, 8));
    life.reader->Run();
    enter(Phase::Close);
    life = Life{};
    enter(Phase::Shutdown);
    Peer::StopEngine();
}

// Runs the life on a freshly scripted engine that has not started; hands back its exception,
// if any, after letting go of what the life held.
std::exception_ptr LiveOnce(
    std::function<void()> const& beforeLife,
    std::function<void(Phase)> const& enter = [](Phase) {}) {
    testkelo_reset();
    Peer::ForgetEngineStart();
    ScriptEngine();
    beforeLife();
    Life life;
    std::exception_ptr failure;
    try {
        Live(life, enter);
    } catch (...) {
        failure = std::current_exception();
    }
    life = Life{};
    return failure;
}

// Checks that a life threw exactly what the table says, or nothing.
void ExpectThrown(std::exception_ptr failure, std::optional<Thrown> const& expected) {
    if (!failure) {
        EXPECT_FALSE(expected) << "nothing was thrown";
        return;
    }
    try {
        std::rethrow_exception(failure);
    } catch (VisionException const& e) {
        ASSERT_TRUE(expected) << "a failure the library ignores came through: " << e.what();
        EXPECT_EQ(std::type_index(typeid(e)), expected->type) << e.what();
        EXPECT_EQ(static_cast<int>(e.Code()), expected->code);
        EXPECT_EQ(e.Message(),
                  std::string(expected->text) +
                      (expected->withEngineText ? std::string(": ") + EngineText : ""));
    } catch (std::exception const& e) {
        ADD_FAILURE() << "unexpected " << typeid(e).name() << ": " << e.what();
    }
}

struct Position {
    std::string entryPoint;
    int nth;
    Phase phase;
};

// Every call of the clean life, as the nth call of its entry point, in its phase.
std::vector<Position> CleanLifePositions() {
    SCOPED_TRACE("the clean life");
    std::vector<Phase> phases;
    Phase current = Phase::Start;
    auto const enter = [&](Phase next) {
        phases.resize(testkelo_log_size(), current);
        current = next;
    };
    ExpectThrown(LiveOnce([] {}, enter), std::nullopt);
    enter(current);
    std::vector<Position> positions;
    std::map<std::string, int> seen;
    bool decoding = false;
    for (int index = 0; index < testkelo_log_size(); ++index) {
        std::string const call = testkelo_log_entry(index);
        std::string const entryPoint = call.substr(0, call.find('('));
        if (entryPoint == "kelo_runtime_free_sample")
            decoding = false;
        positions.push_back(
            {entryPoint, ++seen[entryPoint], decoding ? Phase::Decode : phases.at(index)});
        if (entryPoint == "kelo_runtime_get_sample")
            decoding = true;
    }
    return positions;
}

void ExpectReleased(Expectation const& expectation) {
    EXPECT_EQ(testkelo_count(TESTKELO_SAMPLES), 0);
    EXPECT_EQ(testkelo_count(TESTKELO_IMAGES), expectation.images);
    EXPECT_EQ(testkelo_count(TESTKELO_WORKSPACES), expectation.workspaces);
    // The access buffer lives as long as the process; a start that failed may not have made it.
    int const buffers = testkelo_count(TESTKELO_BUFFERS) - expectation.buffers;
    if (expectation.phase == Phase::Start)
        EXPECT_LE(buffers, 1);
    else
        EXPECT_EQ(buffers, 1);
}

TEST(FailureSweep, EveryEngineCallOfALifeFailsCleanly) {
    std::vector<Position> const positions = CleanLifePositions();
    ASSERT_FALSE(HasFailure());
    ExpectReleased({"", Phase::Close, std::nullopt});
    for (auto const& position : positions) {
        SCOPED_TRACE(position.entryPoint + " #" + std::to_string(position.nth) + " (" +
                     PhaseNames[static_cast<int>(position.phase)] + ")");
        Expectation const* expectation = ExpectationFor(position.entryPoint, position.phase);
        ASSERT_TRUE(expectation) << "no expectation for this call";
        ExpectThrown(LiveOnce([&] {
                         testkelo_fail(position.entryPoint.c_str(), position.nth, 9, EngineText);
                     }),
                     expectation->thrown);
        ExpectReleased(*expectation);
    }
    testkelo_reset();
    std::cout << "Failure sweep: " << positions.size() << " positions\n";
}

} // namespace
