#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <opencv2/core.hpp>

#include "Analysis.h"
#include "Failure.h"
#include "engine/EngineRecords.h"

namespace KeloReference {

struct RunningStream {
    std::string id;
    std::string uuid;
    std::string frameWindow;
    std::vector<RunningTool> tools;
};

struct OpenWorkspace {
    std::string id;
    std::string path;
    std::string uuid;
    std::string lastModified;
    std::vector<RunningStream> streams;
};

struct Sample {
    std::string workspaceId;
    std::string streamId;
    std::string id;
    cv::Mat image; // the engine's own copy, taken when the image is added
    std::optional<Analysis> result;
};

// An image record handed out by kelo_init_image: the planes a colour image was made of, or the
// engine's copy of a resource image that the record points into.
struct HeldImage {
    std::array<const void*, 3> planes{};
    cv::Mat pixels;
};

// The engine behind the entry points. Every operation does its work or throws Failure and leaves
// the engine as it was; Call turns that, and any other exception, into a status and a text.
class Engine {
public:
    // Never destroyed: the library's shutdown may still call in while static objects go.
    static Engine& Instance();

    int Call(const std::function<void(Engine&)>& operation);

    void Initialize();
    void Deinitialize();
    void InitBuffer(EngineBuffer* buffer);
    void FreeBuffer(EngineBuffer* buffer);
    void ErrorMessage(int status, EngineBuffer* buffer);

    void OpenWorkspace(const char* workspaceId, const char* path);
    void CloseWorkspace(const char* workspaceId);
    void ListWorkspaces(EngineBuffer* buffer);
    void ListStreams(const char* workspaceId, EngineBuffer* buffer);
    void ListTools(const char* workspaceId, const char* streamId, EngineBuffer* buffer);
    void ListModels(const char* workspaceId, const char* streamId, const char* toolId,
                    EngineBuffer* buffer);
    void GetParameter(const char* workspaceId, const char* streamId, const char* toolId,
                      const char* path, EngineBuffer* buffer);
    void SetParameter(const char* workspaceId, const char* streamId, const char* toolId,
                      const char* path, const char* value);

    void InitImage(EngineImage* image);
    void CreateImage(int width, int height, int step, int format,
                     const std::array<const void*, 3>& planes, EngineImage* image);
    void FreeImage(EngineImage* image);
    void ResourceImage(const char* uuid, EngineImage* image);

    void CreateSample(const char* workspaceId, const char* streamId, const char* sampleId);
    void AddImage(const char* workspaceId, const char* streamId, const char* sampleId,
                  EngineImage* image);
    void ProcessSample(const char* workspaceId, const char* streamId, const char* sampleId);
    void GetSample(const char* workspaceId, const char* streamId, const char* sampleId,
                   EngineBuffer* buffer);
    void FreeSample(const char* workspaceId, const char* streamId, const char* sampleId);

private:
    Engine() = default;

    void RequireInitialized() const;
    std::string& HeldText(EngineBuffer* buffer);
    void Write(EngineBuffer* buffer, std::string_view text);
    HeldImage& Held(EngineImage* image);
    KeloReference::OpenWorkspace& Workspace(const char* workspaceId);
    RunningStream& Stream(const char* workspaceId, const char* streamId);
    RunningTool& Tool(const char* workspaceId, const char* streamId, const char* toolId);
    std::vector<Sample>::iterator FindSample(const char* workspaceId, const char* streamId,
                                             const char* sampleId);

    std::mutex mutex_;
    bool initialized_ = false;
    int lastStatus_ = StatusOk;
    std::string lastError_;
    std::map<std::uint64_t, std::string> buffers_;
    std::map<std::int32_t, HeldImage> images_;
    std::uint64_t nextBuffer_ = 0x726566656e670001; // distinct, so a record never initialised
    std::int32_t nextImage_ = 0x72650001;           // is unlikely to pass for a held one
    std::vector<KeloReference::OpenWorkspace> workspaces_;
    std::vector<Sample> samples_;
};

} // namespace KeloReference
