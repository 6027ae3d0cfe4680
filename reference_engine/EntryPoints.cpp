// The engine's exported C interface: each entry point runs one engine operation through
// Engine::Call, the one place where a failure becomes a status.
#include "Engine.h"

#include <functional>
#include <type_traits>

#define KELO_API extern "C" __attribute__((visibility("default")))

namespace {

using KeloReference::Engine;

// Handed on by reference, so that no call allocates for what its operation captures.
template <typename Operation> int Call(const Operation& operation) {
    return Engine::Instance().Call(std::cref(operation));
}

int NotOffered(const char* entryPoint) {
    return Call([entryPoint](Engine&) {
        KeloReference::Refuse(std::string(entryPoint) + " is not offered by the reference engine");
    });
}

} // namespace

KELO_API int kelo_init_buffer(EngineBuffer* buffer) {
    return Call([&](Engine& engine) { engine.InitBuffer(buffer); });
}

// The reference engine keeps no debug output; any level and target are accepted.
KELO_API int kelo_debug_infos(int, const char*) {
    return Call([](Engine&) {});
}

KELO_API int kelo_initialize(int, const char*) {
    return Call([](Engine& engine) { engine.Initialize(); });
}

KELO_API int kelo_optimized_gpu_memory(void) {
    return NotOffered("kelo_optimized_gpu_memory");
}

KELO_API int kelo_initialize_compute_device(void) {
    return NotOffered("kelo_initialize_compute_device");
}

KELO_API int kelo_get_error_message(int status, EngineBuffer* buffer) {
    return Call([&](Engine& engine) { engine.ErrorMessage(status, buffer); });
}

KELO_API int kelo_runtime_open_workspace_from_file(const char* workspaceId, const char* path) {
    return Call([&](Engine& engine) { engine.OpenWorkspace(workspaceId, path); });
}

KELO_API int kelo_runtime_list_workspaces(EngineBuffer* buffer) {
    return Call([&](Engine& engine) { engine.ListWorkspaces(buffer); });
}

KELO_API int kelo_runtime_list_streams(const char* workspaceId, EngineBuffer* buffer) {
    return Call([&](Engine& engine) { engine.ListStreams(workspaceId, buffer); });
}

KELO_API int kelo_runtime_list_tools(const char* workspaceId, const char* streamName,
                                     EngineBuffer* buffer) {
    return Call([&](Engine& engine) { engine.ListTools(workspaceId, streamName, buffer); });
}

KELO_API int kelo_runtime_tool_list_parameters(void) {
    return NotOffered("kelo_runtime_tool_list_parameters");
}

KELO_API int kelo_init_image(EngineImage* image) {
    return Call([&](Engine& engine) { engine.InitImage(image); });
}

KELO_API int kelo_resource_get_image(const char* uuid, EngineImage* image) {
    return Call([&](Engine& engine) { engine.ResourceImage(uuid, image); });
}

KELO_API int kelo_save_image(void) {
    return NotOffered("kelo_save_image");
}

KELO_API int kelo_deinitialize(void) {
    return Call([](Engine& engine) { engine.Deinitialize(); });
}

KELO_API int kelo_runtime_create_sample(const char* workspaceId, const char* streamName,
                                        const char* sampleId) {
    return Call([&](Engine& engine) { engine.CreateSample(workspaceId, streamName, sampleId); });
}

KELO_API int kelo_runtime_sample_add_image(const char* workspaceId, const char* streamName,
                                           const char* sampleId, EngineImage* image) {
    return Call([&](Engine& engine) { engine.AddImage(workspaceId, streamName, sampleId, image); });
}

KELO_API int kelo_runtime_sample_process(const char* workspaceId, const char* streamName,
                                         const char*, const char* sampleId, const char*) {
    return Call([&](Engine& engine) { engine.ProcessSample(workspaceId, streamName, sampleId); });
}

KELO_API int kelo_runtime_get_sample(const char* workspaceId, const char* streamName,
                                     const char* sampleId, EngineBuffer* buffer) {
    return Call(
        [&](Engine& engine) { engine.GetSample(workspaceId, streamName, sampleId, buffer); });
}

KELO_API int kelo_free_buffer(EngineBuffer* buffer) {
    return Call([&](Engine& engine) { engine.FreeBuffer(buffer); });
}

KELO_API int kelo_free_image(EngineImage* image) {
    return Call([&](Engine& engine) { engine.FreeImage(image); });
}

KELO_API int kelo_runtime_free_sample(const char* workspaceId, const char* streamName,
                                      const char* sampleId) {
    return Call([&](Engine& engine) { engine.FreeSample(workspaceId, streamName, sampleId); });
}

KELO_API int kelo_runtime_close_workspace(const char* workspaceId) {
    return Call([&](Engine& engine) { engine.CloseWorkspace(workspaceId); });
}

KELO_API int kelo_create_planar_image(void) {
    return NotOffered("kelo_create_planar_image");
}

KELO_API int kelo_create_image(int width, int height, int step, int format, const void* plane0,
                               const void* plane1, const void* plane2, void*, EngineImage* image) {
    return Call([&](Engine& engine) {
        engine.CreateImage(width, height, step, format, {plane0, plane1, plane2}, image);
    });
}

KELO_API int kelo_runtime_tool_set_parameter(const char* workspaceId, const char* streamName,
                                             const char* toolName, const char* path,
                                             const char* value) {
    return Call([&](Engine& engine) {
        engine.SetParameter(workspaceId, streamName, toolName, path, value);
    });
}

KELO_API int kelo_runtime_tool_get_parameter(const char* workspaceId, const char* streamName,
                                             const char* toolName, const char* path,
                                             EngineBuffer* buffer) {
    return Call([&](Engine& engine) {
        engine.GetParameter(workspaceId, streamName, toolName, path, buffer);
    });
}

KELO_API int kelo_runtime_blue_list_models(const char* workspaceId, const char* streamName,
                                           const char* toolName, EngineBuffer* buffer) {
    return Call(
        [&](Engine& engine) { engine.ListModels(workspaceId, streamName, toolName, buffer); });
}

// Each definition keeps the signature that the library resolves it with.
#define KELO_CHECK_SIGNATURE(name)                                                                 \
    static_assert(std::is_same_v<decltype(&name), name##_fn>, #name " has another signature");
KELO_CHECK_SIGNATURE(kelo_init_buffer)
KELO_CHECK_SIGNATURE(kelo_debug_infos)
KELO_CHECK_SIGNATURE(kelo_initialize)
KELO_CHECK_SIGNATURE(kelo_optimized_gpu_memory)
KELO_CHECK_SIGNATURE(kelo_initialize_compute_device)
KELO_CHECK_SIGNATURE(kelo_get_error_message)
KELO_CHECK_SIGNATURE(kelo_runtime_open_workspace_from_file)
KELO_CHECK_SIGNATURE(kelo_runtime_list_workspaces)
KELO_CHECK_SIGNATURE(kelo_runtime_list_streams)
KELO_CHECK_SIGNATURE(kelo_runtime_list_tools)
KELO_CHECK_SIGNATURE(kelo_runtime_tool_list_parameters)
KELO_CHECK_SIGNATURE(kelo_init_image)
KELO_CHECK_SIGNATURE(kelo_resource_get_image)
KELO_CHECK_SIGNATURE(kelo_save_image)
KELO_CHECK_SIGNATURE(kelo_deinitialize)
KELO_CHECK_SIGNATURE(kelo_runtime_create_sample)
KELO_CHECK_SIGNATURE(kelo_runtime_sample_add_image)
KELO_CHECK_SIGNATURE(kelo_runtime_sample_process)
KELO_CHECK_SIGNATURE(kelo_runtime_get_sample)
KELO_CHECK_SIGNATURE(kelo_free_buffer)
KELO_CHECK_SIGNATURE(kelo_free_image)
KELO_CHECK_SIGNATURE(kelo_runtime_free_sample)
KELO_CHECK_SIGNATURE(kelo_runtime_close_workspace)
KELO_CHECK_SIGNATURE(kelo_create_planar_image)
KELO_CHECK_SIGNATURE(kelo_create_image)
KELO_CHECK_SIGNATURE(kelo_runtime_tool_set_parameter)
KELO_CHECK_SIGNATURE(kelo_runtime_tool_get_parameter)
KELO_CHECK_SIGNATURE(kelo_runtime_blue_list_models)
#undef KELO_CHECK_SIGNATURE
