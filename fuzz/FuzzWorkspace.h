#pragma once

#include <memory>
#include <string>
#include <tuple>

#include "DeepLearningAccessTestPeer.h"
#include "TestEngineControl.h"
#include "Vision/DeepLearning/DeepLearning.h"

// The test engine's workspace that the fuzz targets decode and load against: one stream "main"
// with a quick red, a quick green and a blue read tool, and resource images of each kind.
namespace FuzzWorkspace {

constexpr char const* File = "/fuzz/kinds.kelo";

inline void AddTool(char const* id, char const* uuid, char const* type,
                    std::initializer_list<std::pair<char const*, char const*>> parameters) {
    testkelo_add_tool(File, "main", nullptr, id, uuid, type);
    for (auto [path, value] : parameters)
        testkelo_add_parameter(File, "main", id, path, value);
}

inline void ScriptKindsFile() {
    testkelo_add_file(File, "file-uuid", "2024-05-01");
    testkelo_add_stream(File, "main", "main-uuid", "0,0,64,64");
    AddTool("red", "red-uuid", "red_quick",
            {{"post_process_parameters/red/threshold", "[0.1,0.9]"},
             {"post_process_parameters/red/region_filter", ""}});
    AddTool("green", "green-uuid", "green_quick",
            {{"post_process_parameters/green/threshold", "0.5"},
             {"runtime_parameters/heat_map_on", "true"}});
    AddTool("blue", "blue-uuid", "blue_read",
            {{"processing/blue/threshold", "0.5"},
             {"processing/blue/precision", "0.5"},
             {"post_processing/blue/feature_filter", ""},
             {"sampling/feature_size", "8"},
             {"models/digits/enabled", "true"},
             {"models/digits/threshold", "0.4"},
             {"models/digits/occurrences", "2"}});
    testkelo_add_model(File, "main", "blue", "digits", "node");

    static unsigned char pels[4 * 3 * 2];
    for (auto [uuid, channels, pixelType] :
         {std::tuple{"grey", 1, 0}, {"deep", 1, 1}, {"color", 3, 0}, {"odd", 2, 5}}) {
        EngineImage const image{3, 2, channels, 0, pels, pixelType, 12};
        testkelo_add_resource_image(uuid, &image);
    }
}

// A clone of the workspace, opened on a freshly scripted engine.
inline std::shared_ptr<Tavrin::Vision::DeepLearning::DLWorkspace> OpenKinds() {
    testkelo_reset();
    ScriptKindsFile();
    return Tavrin::Vision::DeepLearning::Private::DeepLearningAccessTestPeer::OpenWorkspace(File);
}

// A run of the stream, as the tests' documents write one, with a resource under red.
inline std::string KindsRunDocument() {
    auto marking = [](char const* tool, std::string const& content) {
        return std::string("<marking tool_uuid=\"") + tool +
               "\" duration=\"31.5\" duration_process_only=\"28.25\" "
               "duration_post_process=\"1.5\" processed=\"2024-05-01T10:00\" "
               "processed_device=\"gpu0\"><image_info size=\"64x48\" channels=\"1\" "
               "depth=\"8\"/><view size=\"100x50\" ref_pose=\"1,0,0,1,0,0\" "
               "pose=\"1,0,0,1,2,3\" group=\"g1\">" +
               content + "</view></marking>";
    };
    return "<result><tool uuid=\"red-uuid\"/><image>" +
           marking("red-uuid",
                   "<red score=\"0.8\" filtered_score=\"0.75\" threshold=\"[0.1,0.9]\" "
                   "mode=\"m\"><score score=\"0.6\" name=\"overall\"/><region score=\"0.9\" "
                   "name=\"r0\" area=\"4\" perimeter=\"8\" center=\"10,20\" covers=\"\" "
                   "coverage=\"\" points=\"8,18 12,22\"/><resource name=\"my_score_map\" "
                   "type=\"image\" uuid=\"grey\" scale=\"0.5\"/></red>") +
           marking("green-uuid",
                   "<green threshold=\"0.5\" uncertainty=\"0\" exclusive=\"true\"><tag "
                   "name=\"ok\" score=\"0.7\"/><tag name=\"bad\" score=\"0.1\"/><label><tag "
                   "name=\"ok\"/><training_flag value=\"true\" manual=\"false\"/></label>"
                   "<resource name=\"overlay\" type=\"image\" uuid=\"color\"/></green>") +
           marking("blue-uuid",
                   "<blue_read oriented=\"true\"><feat id=\"f\" loc=\"1,1\" angle=\"0\" "
                   "size=\"2x2\" score=\"1\" covers=\"\"/><match model_id=\"digits\" "
                   "model_type=\"node\" score=\"0.9\" covers=\"\" node_coords=\"0\" string=\"7\" "
                   "prettified_string=\"7\"><feat idx=\"0\"/></match></blue_read>") +
           "</image></result>";
}

} // namespace FuzzWorkspace
