#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TestEngineControl.h"
#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "VisionTestSupport.h"
#include "WorkspaceFiles.h"

namespace ToolTest {

using VisionTest::FlagLog;
using VisionTest::Loaded;
using VisionTest::RoundTrip;
using VisionTest::Saved;
using VisionTest::Words;

// A tool outside any stream, built as the catalogue builds one but without reading the engine.
template <class Tool>
std::shared_ptr<Tool> MakeTool(
    std::string const& name = "tool",
    std::shared_ptr<Tavrin::Vision::DeepLearning::DLToolRuntimeParamsReadOnlyCollection> children =
        nullptr) {
    return Tavrin::Brnt::ObjectFactory::Construct<Tool>(
        std::shared_ptr<Tavrin::Vision::DeepLearning::DLStream>(), name, name + "-uuid", "", "",
        std::move(children));
}

// A model not yet read from the engine.
template <class Model>
std::shared_ptr<Model>
MakeModel(std::string const& name,
          std::shared_ptr<Tavrin::Vision::DeepLearning::DLToolRuntimeParams> tool = nullptr) {
    return Tavrin::Brnt::ObjectFactory::Construct<Model>(std::move(tool), name);
}

// The parameter reads ("path") or writes ("path=value") of one tool, in call order, from the
// engine's call log.
inline std::vector<std::string> ParameterTraffic(std::string const& entryPoint,
                                                 std::string const& tool) {
    std::vector<std::string> traffic;
    for (std::string const& call : TestKelo::LoggedCalls()) {
        if (call.rfind(entryPoint + "(", 0) != 0)
            continue;
        // workspace,stream,tool,path[,value]; only the value may hold commas.
        auto const arguments = WorkspaceFiles::Arguments(call);
        if (arguments[2] != tool)
            continue;
        std::string text = arguments[3];
        for (std::size_t value = 4; value < arguments.size(); ++value)
            text += (value == 4 ? "=" : ",") + arguments[value];
        traffic.push_back(text);
    }
    return traffic;
}

inline std::vector<std::string> Reads(std::string const& tool) {
    return ParameterTraffic("kelo_runtime_tool_get_parameter", tool);
}

inline std::vector<std::string> Writes(std::string const& tool) {
    return ParameterTraffic("kelo_runtime_tool_set_parameter", tool);
}

} // namespace ToolTest
