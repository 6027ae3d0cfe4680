#pragma once

#include <string>
#include <vector>

#include "TestEngineControl.h"

namespace WorkspaceFiles {

// A quick red tool reads two parameters, the fewest of any class.
inline void AddQuickRedTool(char const* file, char const* stream, char const* parent,
                            char const* id, char const* uuid) {
    testkelo_add_tool(file, stream, parent, id, uuid, "red_quick");
    testkelo_add_parameter(file, stream, id, "post_process_parameters/red/threshold", "[0.1,0.9]");
    testkelo_add_parameter(file, stream, id, "post_process_parameters/red/region_filter", "");
}

inline void AddQuickGreenTool(char const* file, char const* stream, char const* id,
                              char const* uuid) {
    testkelo_add_tool(file, stream, nullptr, id, uuid, "green_quick");
    testkelo_add_parameter(file, stream, id, "post_process_parameters/green/threshold", "0.5");
    testkelo_add_parameter(file, stream, id, "runtime_parameters/heat_map_on", "true");
}

inline void AddBlueReadTool(char const* file, char const* stream, char const* id,
                            char const* uuid) {
    testkelo_add_tool(file, stream, nullptr, id, uuid, "blue_read");
    testkelo_add_parameter(file, stream, id, "processing/blue/threshold", "0.3");
    testkelo_add_parameter(file, stream, id, "post_processing/blue/feature_filter", "");
    testkelo_add_parameter(file, stream, id, "processing/blue/precision", "0.6");
    testkelo_add_parameter(file, stream, id, "sampling/feature_size", "8");
}

// A file with one stream "main" holding a tool of each kind: "red", "green" and "blue", whose
// ids are their names followed by "-uuid".
inline void AddThreeKindsFile(char const* file) {
    testkelo_add_file(file, "file-uuid", "2024-05-01");
    testkelo_add_stream(file, "main", "main-uuid", "0,0,64,64");
    AddQuickRedTool(file, "main", nullptr, "red", "red-uuid");
    AddQuickGreenTool(file, "main", "green", "green-uuid");
    AddBlueReadTool(file, "main", "blue", "blue-uuid");
}

// A file with one stream "main" holding the quick red tool "quick".
inline void AddSingleToolFile(char const* file) {
    testkelo_add_file(file, "file-uuid", "2024-05-01");
    testkelo_add_stream(file, "main", "main-uuid", "0,0,64,64");
    AddQuickRedTool(file, "main", nullptr, "quick", "quick-uuid");
}

// The engine calls from the first one named entryPoint on, or none.
inline std::vector<std::string> CallsFrom(std::string const& entryPoint) {
    std::vector<std::string> calls = TestKelo::LoggedCalls();
    for (auto call = calls.begin(); call != calls.end(); ++call)
        if (call->rfind(entryPoint + "(", 0) == 0)
            return {call, calls.end()};
    return {};
}

// The arguments of a logged call, split at the commas.
inline std::vector<std::string> Arguments(std::string const& call) {
    std::vector<std::string> arguments;
    std::string rest = call.substr(call.find('(') + 1);
    rest.pop_back();
    for (std::size_t comma; (comma = rest.find(',')) != std::string::npos; rest.erase(0, comma + 1))
        arguments.push_back(rest.substr(0, comma));
    arguments.push_back(rest);
    return arguments;
}

} // namespace WorkspaceFiles
