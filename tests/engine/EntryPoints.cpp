// The engine's exported C interface: each entry point logs itself and runs one engine operation.
#include "EntryPointTable.h"
#include "TestEngine.h"
#include "TestEngineControl.h"

#include <type_traits>
#include <utility>

namespace {

using TestKelo::Engine;

template <typename Operation>
int call(const char* entryPoint, std::initializer_list<TestKelo::LoggedArgument> arguments,
         Operation&& operation) {
    return TestKelo::TestEngine::instance().call(entryPoint, arguments,
                                                 std::forward<Operation>(operation));
}

void nothing(Engine&) {}

} // namespace

extern "C" {

TESTKELO_API int kelo_init_buffer(EngineBuffer* buffer) {
    return call("kelo_init_buffer", {}, [&](Engine& engine) { engine.initBuffer(buffer); });
}

TESTKELO_API int kelo_debug_infos(int level, const char* target) {
    return call("kelo_debug_infos", {level, target}, nothing);
}

TESTKELO_API int kelo_initialize(int options, const char* configuration) {
    return call("kelo_initialize", {options, configuration}, nothing);
}

TESTKELO_API int kelo_optimized_gpu_memory(void) {
    return call("kelo_optimized_gpu_memory", {}, nothing);
}

TESTKELO_API int kelo_initialize_compute_device(void) {
    return call("kelo_initialize_compute_device", {}, nothing);
}

TESTKELO_API int kelo_get_error_message(int status, EngineBuffer* buffer) {
    return call("kelo_get_error_message", {status},
                [&](Engine& engine) { engine.errorMessage(buffer); });
}

TESTKELO_API int kelo_runtime_open_workspace_from_file(const char* workspaceId, const char* path) {
    return call("kelo_runtime_open_workspace_from_file", {workspaceId, path},
                [&](Engine& engine) { engine.openWorkspace(workspaceId, path); });
}

TESTKELO_API int kelo_runtime_list_workspaces(EngineBuffer* buffer) {
    return call("kelo_runtime_list_workspaces", {},
                [&](Engine& engine) { engine.listWorkspaces(buffer); });
}

TESTKELO_API int kelo_runtime_list_streams(const char* workspaceId, EngineBuffer* buffer) {
    return call("kelo_runtime_list_streams", {workspaceId},
                [&](Engine& engine) { engine.listStreams(workspaceId, buffer); });
}

TESTKELO_API int kelo_runtime_list_tools(const char* workspaceId, const char* streamName,
                                         EngineBuffer* buffer) {
    return call("kelo_runtime_list_tools", {workspaceId, streamName},
                [&](Engine& engine) { engine.listTools(workspaceId, streamName, buffer); });
}

TESTKELO_API int kelo_runtime_tool_list_parameters(void) {
    return call("kelo_runtime_tool_list_parameters", {}, nothing);
}

TESTKELO_API int kelo_init_image(EngineImage* image) {
    return call("kelo_init_image", {}, [&](Engine& engine) { engine.initImage(image); });
}

TESTKELO_API int kelo_resource_get_image(const char* uuid, EngineImage* image) {
    return call("kelo_resource_get_image", {uuid},
                [&](Engine& engine) { engine.resourceImage(uuid, image); });
}

TESTKELO_API int kelo_save_image(void) {
    return call("kelo_save_image", {}, nothing);
}

TESTKELO_API int kelo_deinitialize(void) {
    return call("kelo_deinitialize", {}, nothing);
}

TESTKELO_API int kelo_runtime_create_sample(const char* workspaceId, const char* streamName,
                                            const char* sampleId) {
    return call("kelo_runtime_create_sample", {workspaceId, streamName, sampleId},
                [&](Engine& engine) { engine.createSample(workspaceId, streamName, sampleId); });
}

TESTKELO_API int kelo_runtime_sample_add_image(const char* workspaceId, const char* streamName,
                                               const char* sampleId, EngineImage* image) {
    return call("kelo_runtime_sample_add_image", {workspaceId, streamName, sampleId},
                [&](Engine& engine) { engine.addImage(workspaceId, streamName, sampleId, image); });
}

TESTKELO_API int kelo_runtime_sample_process(const char* workspaceId, const char* streamName,
                                             const char* options, const char* sampleId,
                                             const char* target) {
    return call("kelo_runtime_sample_process", {workspaceId, streamName, options, sampleId, target},
                [&](Engine& engine) { engine.processSample(workspaceId, streamName, sampleId); });
}

TESTKELO_API int kelo_runtime_get_sample(const char* workspaceId, const char* streamName,
                                         const char* sampleId, EngineBuffer* buffer) {
    return call(
        "kelo_runtime_get_sample", {workspaceId, streamName, sampleId},
        [&](Engine& engine) { engine.getSample(workspaceId, streamName, sampleId, buffer); });
}

TESTKELO_API int kelo_free_buffer(EngineBuffer* buffer) {
    return call("kelo_free_buffer", {}, [&](Engine& engine) { engine.freeBuffer(buffer); });
}

TESTKELO_API int kelo_free_image(EngineImage* image) {
    return call("kelo_free_image", {}, [&](Engine& engine) { engine.freeImage(image); });
}

TESTKELO_API int kelo_runtime_free_sample(const char* workspaceId, const char* streamName,
                                          const char* sampleId) {
    return call("kelo_runtime_free_sample", {workspaceId, streamName, sampleId},
                [&](Engine& engine) { engine.freeSample(workspaceId, streamName, sampleId); });
}

TESTKELO_API int kelo_runtime_close_workspace(const char* workspaceId) {
    return call("kelo_runtime_close_workspace", {workspaceId},
                [&](Engine& engine) { engine.closeWorkspace(workspaceId); });
}

TESTKELO_API int kelo_create_planar_image(void) {
    return call("kelo_create_planar_image", {}, nothing);
}

TESTKELO_API int kelo_create_image(int width, int height, int step, int format, const void* plane0,
                                   const void* plane1, const void* plane2, void* reserved,
                                   EngineImage* image) {
    const TestKeloCreatedImage arguments{width,   height, step, format, {plane0, plane1, plane2},
                                         reserved};
    return call("kelo_create_image", {width, height, step, format},
                [&](Engine& engine) { engine.createImage(arguments, image); });
}

TESTKELO_API int kelo_runtime_tool_set_parameter(const char* workspaceId, const char* streamName,
                                                 const char* toolName, const char* path,
                                                 const char* value) {
    return call("kelo_runtime_tool_set_parameter", {workspaceId, streamName, toolName, path, value},
                [&](Engine& engine) {
                    engine.setParameter(workspaceId, streamName, toolName, path, value);
                });
}

TESTKELO_API int kelo_runtime_tool_get_parameter(const char* workspaceId, const char* streamName,
                                                 const char* toolName, const char* path,
                                                 EngineBuffer* buffer) {
    return call("kelo_runtime_tool_get_parameter", {workspaceId, streamName, toolName, path},
                [&](Engine& engine) {
                    engine.getParameter(workspaceId, streamName, toolName, path, buffer);
                });
}

TESTKELO_API int kelo_runtime_blue_list_models(const char* workspaceId, const char* streamName,
                                               const char* toolName, EngineBuffer* buffer) {
    return call(
        "kelo_runtime_blue_list_models", {workspaceId, streamName, toolName},
        [&](Engine& engine) { engine.listModels(workspaceId, streamName, toolName, buffer); });
}

} // extern "C"

// Each definition must keep the signature that the binding resolves it with. A variant build
// renames one entry point to leave it out of the library; the check follows the new name.
#define TESTKELO_CHECK_SIGNATURE(name)                                                             \
    static_assert(std::is_same_v<decltype(&name), name##_fn>, #name " has another signature");
TESTKELO_ENTRY_POINTS(TESTKELO_CHECK_SIGNATURE)
#undef TESTKELO_CHECK_SIGNATURE
