#include "engine/EngineFunctionTable.h"

#include <Vision/Core/Platform.h>

#include "Vision/DeepLearning/DeepLearningExceptions.h"

namespace Tavrin::Vision::DeepLearning::Private {

wchar_t const EngineFileName[] = L"libkelo_61.so";

namespace {

struct EntryPoint {
    char const* symbol;
    void (*store)(EngineFunctionTable&, void*);
};

#define TAVRIN_ENTRY_POINT(name)                                                                   \
    EntryPoint {                                                                                   \
#name, [](EngineFunctionTable& table, void* address) {                                     \
            table.name = reinterpret_cast<name##_fn>(address);                                     \
        }                                                                                          \
    }

// The order in which the entry points are asked for; the first two swap places against the
// record's order.
EntryPoint const ResolveOrder[] = {
    TAVRIN_ENTRY_POINT(kelo_debug_infos),
    TAVRIN_ENTRY_POINT(kelo_init_buffer),
    TAVRIN_ENTRY_POINT(kelo_initialize),
    TAVRIN_ENTRY_POINT(kelo_optimized_gpu_memory),
    TAVRIN_ENTRY_POINT(kelo_initialize_compute_device),
    TAVRIN_ENTRY_POINT(kelo_get_error_message),
    TAVRIN_ENTRY_POINT(kelo_runtime_open_workspace_from_file),
    TAVRIN_ENTRY_POINT(kelo_runtime_list_workspaces),
    TAVRIN_ENTRY_POINT(kelo_runtime_list_streams),
    TAVRIN_ENTRY_POINT(kelo_runtime_list_tools),
    TAVRIN_ENTRY_POINT(kelo_runtime_tool_list_parameters),
    TAVRIN_ENTRY_POINT(kelo_init_image),
    TAVRIN_ENTRY_POINT(kelo_resource_get_image),
    TAVRIN_ENTRY_POINT(kelo_save_image),
    TAVRIN_ENTRY_POINT(kelo_deinitialize),
    TAVRIN_ENTRY_POINT(kelo_runtime_create_sample),
    TAVRIN_ENTRY_POINT(kelo_runtime_sample_add_image),
    TAVRIN_ENTRY_POINT(kelo_runtime_sample_process),
    TAVRIN_ENTRY_POINT(kelo_runtime_get_sample),
    TAVRIN_ENTRY_POINT(kelo_free_buffer),
    TAVRIN_ENTRY_POINT(kelo_free_image),
    TAVRIN_ENTRY_POINT(kelo_runtime_free_sample),
    TAVRIN_ENTRY_POINT(kelo_runtime_close_workspace),
    TAVRIN_ENTRY_POINT(kelo_create_planar_image),
    TAVRIN_ENTRY_POINT(kelo_create_image),
    TAVRIN_ENTRY_POINT(kelo_runtime_tool_set_parameter),
    TAVRIN_ENTRY_POINT(kelo_runtime_tool_get_parameter),
    TAVRIN_ENTRY_POINT(kelo_runtime_blue_list_models),
};

#undef TAVRIN_ENTRY_POINT

} // namespace

void LoadEngine(EngineFunctionTable& table) {
    std::string const fileName = Tavrin::Vision::Private::NarrowText(EngineFileName);
    if (tsys_loadLibrary(EngineFileName, &table.library) < 0)
        throw DeepLearningInitializeException(DeepLearningExceptionCodes::FailedToLoad,
                                              std::string(ExceptionTexts::FailedToLoad) + " (" +
                                                  fileName + ")");
    for (EntryPoint const& entry : ResolveOrder) {
        void* address = nullptr;
        if (tsys_getProcAddress(table.library, entry.symbol, &address) < 0)
            throw DeepLearningInitializeException(DeepLearningExceptionCodes::CannotLoadFunction,
                                                  ExceptionTexts::CannotLoadFunction + fileName +
                                                      ": " + entry.symbol);
        entry.store(table, address);
    }
}

} // namespace Tavrin::Vision::DeepLearning::Private
