/* Control of the scriptable test engine, libkelo_61.so.
 *
 * The library under test loads the engine by file name and reaches it through its 28 entry
 * points; a test links against the same library and steers it through these functions. Both
 * share one engine per process.
 *
 * What the engine holds:
 *  - workspace files: what a test registered under a path. Opening a path copies that content
 *    into a workspace kept under the id the caller gave, so parameters written to an open
 *    workspace never reach the registered file or another workspace.
 *  - buffers and images handed out by kelo_init_buffer and kelo_init_image; re-initialising a
 *    record the engine still holds keeps it. Every text the engine hands out is freed on the
 *    next write into the same buffer and on its release, so a text read too late shows up
 *    under AddressSanitizer.
 *  - samples, each of one workspace and stream; closing the workspace frees its samples.
 *
 * Failing entry points return a status of TestKeloStatus and keep a text for
 * kelo_get_error_message, which answers the text of the last failure in whatever call.
 * kelo_initialize, kelo_deinitialize, kelo_debug_infos and the five entry points that are only
 * resolved do nothing but answer 0: the engine works without being initialised, so a process
 * that keeps its engine started across tests keeps working after testkelo_reset.
 *
 * Control functions throw a std::exception (std::invalid_argument, std::out_of_range or
 * std::runtime_error) on a null text, an unknown entry point, file, stream, tool, parameter,
 * workspace or log index, so a mistyped set-up fails the test at once. */
#ifndef TAVRIN_TESTS_ENGINE_TESTENGINECONTROL_H
#define TAVRIN_TESTS_ENGINE_TESTENGINECONTROL_H

#include "engine/EngineRecords.h"

#define TESTKELO_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

typedef enum TestKeloStatus {
    TESTKELO_NOT_FOUND = 2,      /* unknown file, workspace, stream, tool, path, sample, uuid */
    TESTKELO_INVALID_HANDLE = 3, /* a buffer or image the engine does not hold */
    TESTKELO_REFUSED = 4         /* a call out of order, a taken id, a null text */
} TestKeloStatus;

typedef enum TestKeloCount {
    TESTKELO_BUFFERS,        /* initialised and not yet freed */
    TESTKELO_IMAGES,         /* initialised and not yet freed */
    TESTKELO_SAMPLES,        /* created and not yet freed nor closed with their workspace */
    TESTKELO_WORKSPACES,     /* opened and not yet closed */
    TESTKELO_INVALID_HANDLES /* calls given a buffer or image the engine does not hold */
} TestKeloCount;

/* The arguments of the last kelo_create_image. */
typedef struct TestKeloCreatedImage {
    int width;
    int height;
    int step;
    int format;
    const void* planes[3]; /* in the order of the arguments */
    void* reserved;
} TestKeloCreatedImage;

/* Forgets everything: files, workspaces, buffers, images, samples, scripted documents and
   resource images, the call log and pending faults. Records handed out before are unknown
   afterwards. */
TESTKELO_API void testkelo_reset(void);

/* Workspace files. A file is registered first; streams, tools, models and parameters are then
   added to it in the order in which the listings give them. parentToolId is NULL for a
   top-level tool; a tool id is unique in its stream, as the engine addresses tools by it. */
TESTKELO_API void testkelo_add_file(const char* path, const char* uuid, const char* lastModified);
TESTKELO_API void testkelo_add_stream(const char* path, const char* streamId, const char* uuid,
                                      const char* frameWindow);
TESTKELO_API void testkelo_add_tool(const char* path, const char* streamId,
                                    const char* parentToolId, const char* toolId, const char* uuid,
                                    const char* type);
TESTKELO_API void testkelo_add_model(const char* path, const char* streamId, const char* toolId,
                                     const char* modelId, const char* type);
/* Adds the parameter or replaces its value. */
TESTKELO_API void testkelo_add_parameter(const char* path, const char* streamId, const char* toolId,
                                         const char* parameterPath, const char* value);

/* Open workspaces. The id of the workspace opened last from the path and still open, or NULL.
   The value of a parameter in an open workspace. Texts stay valid until the next call into
   the engine. */
TESTKELO_API const char* testkelo_workspace_id(const char* path);
TESTKELO_API const char* testkelo_parameter(const char* workspaceId, const char* streamId,
                                            const char* toolId, const char* parameterPath);

/* Runs. A sample takes the scripted document when it is processed; NULL scripts none, and
   kelo_runtime_get_sample then fails. A resource image is copied (step times height bytes);
   kelo_resource_get_image hands out a copy of it that lives until kelo_free_image. */
TESTKELO_API void testkelo_set_result_document(const char* document);
TESTKELO_API void testkelo_add_resource_image(const char* uuid, const EngineImage* image);
/* The record given to the last kelo_runtime_sample_add_image, and the arguments of the last
   kelo_create_image; all zero when there was none since the reset. */
TESTKELO_API EngineImage testkelo_last_sample_image(void);
TESTKELO_API TestKeloCreatedImage testkelo_last_created_image(void);

/* The call log: one entry per entry point call, oldest first, failed calls included. An entry
   reads name(arguments) with the text and integer arguments in order, joined by "," without
   blanks; buffer, image and plane pointers are left out and a null text reads <null>:
   "kelo_runtime_tool_get_parameter(ws,stream,tool,path)", "kelo_debug_infos(0,)",
   "kelo_create_image(640,480,640,0)", "kelo_free_buffer()". */
TESTKELO_API int testkelo_log_size(void);
TESTKELO_API const char* testkelo_log_entry(int index);
TESTKELO_API int testkelo_call_count(const char* entryPoint);
TESTKELO_API void testkelo_clear_log(void);

/* Faults. The entry point's nthCall-th call from now (1 is the next one) does nothing but
   fail: testkelo_fail makes it return status, non-zero, with errorText for
   kelo_get_error_message; testkelo_throw makes it throw std::runtime_error(what). Faults on
   one entry point count independently of each other. */
TESTKELO_API void testkelo_fail(const char* entryPoint, int nthCall, int status,
                                const char* errorText);
TESTKELO_API void testkelo_throw(const char* entryPoint, int nthCall, const char* what);

TESTKELO_API int testkelo_count(TestKeloCount what);

/* Holds the next call of the entry point, before it does anything, until testkelo_release or
   until timeoutMs have passed; testkelo_holding is 1 while the call waits. Not undone by
   testkelo_reset. */
TESTKELO_API void testkelo_hold(const char* entryPoint, int timeoutMs);
TESTKELO_API void testkelo_release(void);
TESTKELO_API int testkelo_holding(void);

#ifdef __cplusplus
} /* extern "C" */

#include <string>
#include <vector>

namespace TestKelo {

/* The call log as one text per call, oldest first. */
inline std::vector<std::string> LoggedCalls() {
    std::vector<std::string> calls;
    for (int index = 0; index < testkelo_log_size(); ++index) {
        calls.emplace_back(testkelo_log_entry(index));
    }
    return calls;
}

} // namespace TestKelo
#endif

#endif /* TAVRIN_TESTS_ENGINE_TESTENGINECONTROL_H */
