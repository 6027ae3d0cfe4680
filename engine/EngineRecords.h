/* The records exchanged with the inference engine and the signatures of its 28 entry points.
   Shared by the binding, which resolves the entry points at run time, and by the test engine,
   which defines them; so this header stays plain C and depends on nothing. */
#ifndef TAVRIN_ENGINE_ENGINERECORDS_H
#define TAVRIN_ENGINE_ENGINERECORDS_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* A text handed out by the engine. The text belongs to the engine and stays valid only until
   the next engine call on the same buffer. */
typedef struct EngineBuffer {
    uint64_t reserved; /* the engine's own; the caller never reads it */
    const char* text;  /* NUL-terminated */
} EngineBuffer;

/* An image as the engine sees it: filled by the caller for an input image, by the engine for a
   resource image. The pixels stay with whoever filled the record. */
typedef struct EngineImage {
    int32_t width;
    int32_t height;
    int32_t channels;   /* interleaved samples per pel */
    int32_t reserved;   /* the engine's own; the caller leaves it as kelo_init_image set it */
    const void* pixels; /* first sample of the first row */
    int32_t pixelType;  /* depth code: 0 is 8 bits per sample, 1 is 16 bits */
    int32_t step;       /* bytes from one row to the next */
} EngineImage;

/* Every entry point answers a status, 0 on success. The five that are resolved but never
   called take no arguments here. */
typedef int (*kelo_init_buffer_fn)(EngineBuffer* buffer);
typedef int (*kelo_debug_infos_fn)(int level, const char* target);
typedef int (*kelo_initialize_fn)(int options, const char* configuration);
typedef int (*kelo_optimized_gpu_memory_fn)(void);
typedef int (*kelo_initialize_compute_device_fn)(void);
typedef int (*kelo_get_error_message_fn)(int status, EngineBuffer* buffer);
typedef int (*kelo_runtime_open_workspace_from_file_fn)(const char* workspaceId, const char* path);
typedef int (*kelo_runtime_list_workspaces_fn)(EngineBuffer* buffer);
typedef int (*kelo_runtime_list_streams_fn)(const char* workspaceId, EngineBuffer* buffer);
typedef int (*kelo_runtime_list_tools_fn)(const char* workspaceId, const char* streamName,
                                          EngineBuffer* buffer);
typedef int (*kelo_runtime_tool_list_parameters_fn)(void);
typedef int (*kelo_init_image_fn)(EngineImage* image);
typedef int (*kelo_resource_get_image_fn)(const char* uuid, EngineImage* image);
typedef int (*kelo_save_image_fn)(void);
typedef int (*kelo_deinitialize_fn)(void);
typedef int (*kelo_runtime_create_sample_fn)(const char* workspaceId, const char* streamName,
                                             const char* sampleId);
typedef int (*kelo_runtime_sample_add_image_fn)(const char* workspaceId, const char* streamName,
                                                const char* sampleId, EngineImage* image);
typedef int (*kelo_runtime_sample_process_fn)(const char* workspaceId, const char* streamName,
                                              const char* options, const char* sampleId,
                                              const char* target);
typedef int (*kelo_runtime_get_sample_fn)(const char* workspaceId, const char* streamName,
                                          const char* sampleId, EngineBuffer* buffer);
typedef int (*kelo_free_buffer_fn)(EngineBuffer* buffer);
typedef int (*kelo_free_image_fn)(EngineImage* image);
typedef int (*kelo_runtime_free_sample_fn)(const char* workspaceId, const char* streamName,
                                           const char* sampleId);
typedef int (*kelo_runtime_close_workspace_fn)(const char* workspaceId);
typedef int (*kelo_create_planar_image_fn)(void);
typedef int (*kelo_create_image_fn)(int width, int height, int step, int format, const void* plane0,
                                    const void* plane1, const void* plane2, void* reserved,
                                    EngineImage* image);
typedef int (*kelo_runtime_tool_set_parameter_fn)(const char* workspaceId, const char* streamName,
                                                  const char* toolName, const char* path,
                                                  const char* value);
typedef int (*kelo_runtime_tool_get_parameter_fn)(const char* workspaceId, const char* streamName,
                                                  const char* toolName, const char* path,
                                                  EngineBuffer* buffer);
typedef int (*kelo_runtime_blue_list_models_fn)(const char* workspaceId, const char* streamName,
                                                const char* toolName, EngineBuffer* buffer);

#ifdef __cplusplus
} /* extern "C" */

static_assert(sizeof(EngineBuffer) == 16, "EngineBuffer is 16 bytes");
static_assert(offsetof(EngineBuffer, text) == 8, "EngineBuffer text at offset 8");
static_assert(sizeof(EngineImage) == 32, "EngineImage is 32 bytes");
static_assert(offsetof(EngineImage, channels) == 8, "EngineImage channels at offset 8");
static_assert(offsetof(EngineImage, pixels) == 16, "EngineImage pixels at offset 16");
static_assert(offsetof(EngineImage, pixelType) == 24, "EngineImage pixel type at offset 24");
static_assert(offsetof(EngineImage, step) == 28, "EngineImage step at offset 28");
#endif

#endif /* TAVRIN_ENGINE_ENGINERECORDS_H */
