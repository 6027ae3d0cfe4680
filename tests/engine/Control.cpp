// The test's side of the engine.
#include "TestEngine.h"
#include "TestEngineControl.h"
#include "TestEngineListings.h"

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using TestKelo::TestEngine;

std::string required(const char* text) {
    if (!text) {
        throw std::invalid_argument("a text argument is null");
    }
    return text;
}

std::optional<std::string> optionalText(const char* text) {
    return text ? std::optional<std::string>(text) : std::nullopt;
}

template <typename Action> decltype(auto) withEngine(Action&& action) {
    return TestEngine::instance().control(std::forward<Action>(action));
}

} // namespace

void testkelo_reset(void) {
    withEngine([](TestEngine& test) { test.reset(); });
}

void testkelo_add_file(const char* path, const char* uuid, const char* lastModified) {
    withEngine([&](TestEngine& test) {
        test.engine().catalogue().addFile(required(path),
                                          {required(uuid), required(lastModified), {}});
    });
}

void testkelo_add_stream(const char* path, const char* streamId, const char* uuid,
                         const char* frameWindow) {
    withEngine([&](TestEngine& test) {
        test.engine().catalogue().addStream(
            required(path), {required(streamId), required(uuid), required(frameWindow), {}});
    });
}

void testkelo_add_tool(const char* path, const char* streamId, const char* parentToolId,
                       const char* toolId, const char* uuid, const char* type) {
    withEngine([&](TestEngine& test) {
        test.engine().catalogue().addTool(
            required(path), required(streamId), optionalText(parentToolId),
            {required(toolId), required(uuid), required(type), {}, {}, {}});
    });
}

void testkelo_add_model(const char* path, const char* streamId, const char* toolId,
                        const char* modelId, const char* type) {
    withEngine([&](TestEngine& test) {
        test.engine().catalogue().addModel(required(path), required(streamId), required(toolId),
                                           {required(modelId), required(type)});
    });
}

void testkelo_add_parameter(const char* path, const char* streamId, const char* toolId,
                            const char* parameterPath, const char* value) {
    withEngine([&](TestEngine& test) {
        test.engine().catalogue().setParameter(required(path), required(streamId), required(toolId),
                                               required(parameterPath), required(value));
    });
}

const char* testkelo_workspace_id(const char* path) {
    return withEngine([&](TestEngine& test) { return test.engine().workspaceId(required(path)); });
}

const char* testkelo_parameter(const char* workspaceId, const char* streamId, const char* toolId,
                               const char* parameterPath) {
    return withEngine([&](TestEngine& test) {
        return test.engine()
            .parameter(required(workspaceId), required(streamId), required(toolId),
                       required(parameterPath))
            .c_str();
    });
}

void testkelo_set_result_document(const char* document) {
    withEngine([&](TestEngine& test) { test.engine().setResultDocument(optionalText(document)); });
}

void testkelo_set_listing(const char* entryPoint, const char* text) {
    withEngine([&](TestEngine& test) {
        test.engine().setListing(required(entryPoint), optionalText(text));
    });
}

void testkelo_add_resource_image(const char* uuid, const EngineImage* image) {
    if (!image) {
        throw std::invalid_argument("a resource image needs a record");
    }
    withEngine([&](TestEngine& test) { test.engine().addResourceImage(required(uuid), *image); });
}

EngineImage testkelo_last_sample_image(void) {
    return withEngine([](TestEngine& test) { return test.engine().lastSampleImage(); });
}

TestKeloCreatedImage testkelo_last_created_image(void) {
    return withEngine([](TestEngine& test) { return test.engine().lastCreatedImage(); });
}

int testkelo_log_size(void) {
    return withEngine([](TestEngine& test) { return test.log().size(); });
}

const char* testkelo_log_entry(int index) {
    return withEngine([&](TestEngine& test) { return test.log().entry(index).c_str(); });
}

int testkelo_call_count(const char* entryPoint) {
    return withEngine([&](TestEngine& test) { return test.log().count(required(entryPoint)); });
}

void testkelo_clear_log(void) {
    withEngine([](TestEngine& test) { test.log() = TestKelo::CallLog(); });
}

void testkelo_fail(const char* entryPoint, int nthCall, int status, const char* errorText) {
    if (status == 0) {
        throw std::invalid_argument("a failing call needs a status other than 0");
    }
    withEngine([&](TestEngine& test) {
        test.faults().add({required(entryPoint), nthCall, status, required(errorText), false});
    });
}

void testkelo_throw(const char* entryPoint, int nthCall, const char* what) {
    withEngine([&](TestEngine& test) {
        test.faults().add({required(entryPoint), nthCall, 0, required(what), true});
    });
}

int testkelo_count(TestKeloCount what) {
    return withEngine([&](TestEngine& test) { return test.engine().count(what); });
}

// Outside the engine's lock, which the held call may be waiting for.
void testkelo_hold(const char* entryPoint, int timeoutMs) {
    TestEngine::instance().gate().hold(required(entryPoint), std::chrono::milliseconds(timeoutMs));
}

void testkelo_release(void) {
    TestEngine::instance().gate().release();
}

int testkelo_holding(void) {
    return TestEngine::instance().gate().holding() ? 1 : 0;
}
