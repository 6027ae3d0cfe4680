#ifndef TAVRIN_TESTS_ENGINE_ENTRYPOINTTABLE_H
#define TAVRIN_TESTS_ENGINE_ENTRYPOINTTABLE_H

// The engine's 28 entry points in the order of the binding's function record.
#define TESTKELO_ENTRY_POINTS(X)                                                                   \
    X(kelo_init_buffer)                                                                            \
    X(kelo_debug_infos)                                                                            \
    X(kelo_initialize)                                                                             \
    X(kelo_optimized_gpu_memory)                                                                   \
    X(kelo_initialize_compute_device)                                                              \
    X(kelo_get_error_message)                                                                      \
    X(kelo_runtime_open_workspace_from_file)                                                       \
    X(kelo_runtime_list_workspaces)                                                                \
    X(kelo_runtime_list_streams)                                                                   \
    X(kelo_runtime_list_tools)                                                                     \
    X(kelo_runtime_tool_list_parameters)                                                           \
    X(kelo_init_image)                                                                             \
    X(kelo_resource_get_image)                                                                     \
    X(kelo_save_image)                                                                             \
    X(kelo_deinitialize)                                                                           \
    X(kelo_runtime_create_sample)                                                                  \
    X(kelo_runtime_sample_add_image)                                                               \
    X(kelo_runtime_sample_process)                                                                 \
    X(kelo_runtime_get_sample)                                                                     \
    X(kelo_free_buffer)                                                                            \
    X(kelo_free_image)                                                                             \
    X(kelo_runtime_free_sample)                                                                    \
    X(kelo_runtime_close_workspace)                                                                \
    X(kelo_create_planar_image)                                                                    \
    X(kelo_create_image)                                                                           \
    X(kelo_runtime_tool_set_parameter)                                                             \
    X(kelo_runtime_tool_get_parameter)                                                             \
    X(kelo_runtime_blue_list_models)

#endif
