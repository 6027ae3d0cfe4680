/* Scripted listings of the test engine, for listing texts that no registered workspace file
 * would give, such as a fuzzer's. */
#ifndef TAVRIN_TESTS_ENGINE_TESTENGINELISTINGS_H
#define TAVRIN_TESTS_ENGINE_TESTENGINELISTINGS_H

#include "TestEngineControl.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Every later call of the listing entry point (kelo_runtime_list_workspaces,
   kelo_runtime_list_streams, kelo_runtime_list_tools or kelo_runtime_blue_list_models) answers
   the text instead of the open workspace's listing; NULL answers that listing again. Forgotten
   by testkelo_reset. Throws std::invalid_argument for any other entry point. */
TESTKELO_API void testkelo_set_listing(const char* entryPoint, const char* text);

#ifdef __cplusplus
} /* extern "C" */
#endif

#endif /* TAVRIN_TESTS_ENGINE_TESTENGINELISTINGS_H */
