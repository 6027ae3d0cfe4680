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
    std::string const prefix = entryPoint + "(";
    for (std::string const& call : TestKelo::LoggedCalls()) {
        if (call.rfind(prefix, 0) != 0)
            continue;
        // workspace,stream,tool,path[,value]; only the value may hold commas.
        std::string rest = call.substr(prefix.size(), call.size() - prefix.size() - 1);
        for (int field = 0; field < 2; ++field)
            rest.erase(0, rest.find(',') + 1);
        std::size_t const toolEnd = rest.find(',');
        if (rest.substr(0, toolEnd) != tool)
            continue;
        rest.erase(0, toolEnd + 1);
        std::size_t const pathEnd = rest.find(',');
        traffic.push_back(pathEnd == std::string::npos
                              ? rest
                              : rest.substr(0, pathEnd) + "=" + rest.substr(pathEnd + 1));
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
