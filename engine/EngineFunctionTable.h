#pragma once

#include <atomic>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <string>

#include "engine/EngineRecords.h"

namespace Tavrin::Vision::DeepLearning {

class DLWorkspace;

namespace Private {

// One file opened in the engine: the object built from its listing, never handed out.
struct MasterEntry {
    std::shared_ptr<DLWorkspace> master;
    std::int64_t fileTime = 0;
};

// The process-wide record of the engine: open workspaces, the engine's state, the loaded
// library and its entry points, in the engine's record order.
struct EngineFunctionTable {
    std::map<std::string, MasterEntry> OpenFiles;
    std::map<std::string, std::list<std::weak_ptr<DLWorkspace>>> CloneLists;
    // Read before the instance mutex is taken, so it must be safe to read from any thread.
    std::atomic<bool> engineInitialized{false};
    void* library = nullptr;

    kelo_init_buffer_fn kelo_init_buffer = nullptr;
    kelo_debug_infos_fn kelo_debug_infos = nullptr;
    kelo_initialize_fn kelo_initialize = nullptr;
    kelo_optimized_gpu_memory_fn kelo_optimized_gpu_memory = nullptr;
    kelo_initialize_compute_device_fn kelo_initialize_compute_device = nullptr;
    kelo_get_error_message_fn kelo_get_error_message = nullptr;
    kelo_runtime_open_workspace_from_file_fn kelo_runtime_open_workspace_from_file = nullptr;
    kelo_runtime_list_workspaces_fn kelo_runtime_list_workspaces = nullptr;
    kelo_runtime_list_streams_fn kelo_runtime_list_streams = nullptr;
    kelo_runtime_list_tools_fn kelo_runtime_list_tools = nullptr;
    kelo_runtime_tool_list_parameters_fn kelo_runtime_tool_list_parameters = nullptr;
    kelo_init_image_fn kelo_init_image = nullptr;
    kelo_resource_get_image_fn kelo_resource_get_image = nullptr;
    kelo_save_image_fn kelo_save_image = nullptr;
    kelo_deinitialize_fn kelo_deinitialize = nullptr;
    kelo_runtime_create_sample_fn kelo_runtime_create_sample = nullptr;
    kelo_runtime_sample_add_image_fn kelo_runtime_sample_add_image = nullptr;
    kelo_runtime_sample_process_fn kelo_runtime_sample_process = nullptr;
    kelo_runtime_get_sample_fn kelo_runtime_get_sample = nullptr;
    kelo_free_buffer_fn kelo_free_buffer = nullptr;
    kelo_free_image_fn kelo_free_image = nullptr;
    kelo_runtime_free_sample_fn kelo_runtime_free_sample = nullptr;
    kelo_runtime_close_workspace_fn kelo_runtime_close_workspace = nullptr;
    kelo_create_planar_image_fn kelo_create_planar_image = nullptr;
    kelo_create_image_fn kelo_create_image = nullptr;
    kelo_runtime_tool_set_parameter_fn kelo_runtime_tool_set_parameter = nullptr;
    kelo_runtime_tool_get_parameter_fn kelo_runtime_tool_get_parameter = nullptr;
    kelo_runtime_blue_list_models_fn kelo_runtime_blue_list_models = nullptr;
};

// The engine's file name on this platform.
extern wchar_t const EngineFileName[];

// Loads the engine library and resolves its entry points; throws
// DeepLearningInitializeException at the first failure.
void LoadEngine(EngineFunctionTable& table);

} // namespace Private
} // namespace Tavrin::Vision::DeepLearning
