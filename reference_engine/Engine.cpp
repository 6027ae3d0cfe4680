#include "Engine.h"

#include "Parameters.h"

#include <algorithm>
#include <ctime>
#include <string_view>

#include <sys/stat.h>
#include <tinyxml2.h>

namespace KeloReference {
namespace {

std::string_view TextOf(const char* text, const char* what) {
    if (!text)
        Refuse(std::string(what) + " is null");
    return text;
}

const char* Describe(int status) {
    switch (status) {
    case StatusOk:
        return "no error";
    case StatusRefused:
        return "the call was refused";
    case StatusNotFound:
        return "no such object";
    case StatusFileFailure:
        return "a workspace file could not be used";
    default:
        return "a computation failed";
    }
}

std::string FileTime(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0)
        return "";
    std::tm utc{};
    gmtime_r(&status.st_mtime, &utc);
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

// Listings are small flat trees of elements with text attributes.
class Listing {
public:
    explicit Listing(const char* root) { printer_.OpenElement(root); }

    void Open(const char* name,
              std::initializer_list<std::pair<const char*, std::string>> attributes) {
        printer_.OpenElement(name);
        for (const auto& [key, value] : attributes)
            printer_.PushAttribute(key, value.c_str());
    }
    void Close() { printer_.CloseElement(); }
    std::string Text() {
        printer_.CloseElement();
        return printer_.CStr();
    }

private:
    tinyxml2::XMLPrinter printer_{nullptr, true};
};

void ListToolTree(Listing& listing, const std::vector<RunningTool>& tools) {
    for (const RunningTool& tool : tools) {
        listing.Open("tool", {{"id", tool.definition.id},
                              {"uuid", tool.definition.uuid},
                              {"type", tool.definition.type}});
        ListToolTree(listing, tool.children);
        listing.Close();
    }
}

RunningTool* FindTool(std::vector<RunningTool>& tools, std::string_view id) {
    for (RunningTool& tool : tools) {
        if (tool.definition.id == id)
            return &tool;
        if (RunningTool* child = FindTool(tool.children, id))
            return child;
    }
    return nullptr;
}

// The caller's pixels, copied: a grey or interleaved record, or the three planes of a colour
// image, which come first plane last.
cv::Mat CopyPixels(const EngineImage& record, const HeldImage& held) {
    if (record.width <= 0 || record.height <= 0)
        Refuse("the image has no size");
    if (held.planes[0]) {
        std::vector<cv::Mat> planes;
        for (const void* plane : held.planes)
            planes.emplace_back(record.height, record.width, CV_8U, const_cast<void*>(plane),
                                static_cast<std::size_t>(record.step));
        cv::Mat colour;
        cv::merge(planes, colour);
        return colour;
    }
    if (record.channels != 1 && record.channels != 3 && record.channels != 4)
        Refuse("images of " + std::to_string(record.channels) + " channels are not taken");
    if (record.pixelType != 0 && record.pixelType != 1)
        Refuse("pixel type " + std::to_string(record.pixelType) + " is not taken");
    const int depth = record.pixelType == 0 ? CV_8U : CV_16U;
    const int rowBytes = record.width * record.channels * (record.pixelType == 0 ? 1 : 2);
    if (!record.pixels)
        Refuse("the image has no pixels");
    if (record.step < rowBytes)
        Refuse("the image's step of " + std::to_string(record.step) +
               " bytes is shorter than a row of " + std::to_string(rowBytes));
    return cv::Mat(record.height, record.width, CV_MAKETYPE(depth, record.channels),
                   const_cast<void*>(record.pixels), static_cast<std::size_t>(record.step))
        .clone();
}

} // namespace

Engine& Engine::Instance() {
    static Engine* const engine = new Engine();
    return *engine;
}

int Engine::Call(const std::function<void(Engine&)>& operation) {
    std::lock_guard<std::mutex> lock(mutex_);
    std::pair<int, std::string> failure;
    try {
        operation(*this);
        return StatusOk;
    } catch (const Failure& refused) {
        failure = {refused.status(), refused.what()};
    } catch (const cv::Exception& computation) {
        failure = {StatusComputeFailure, "OpenCV failed: " + computation.err};
    } catch (const std::exception& other) {
        failure = {StatusComputeFailure, other.what()};
    } catch (...) {
        failure = {StatusComputeFailure, "an unknown failure"};
    }
    std::tie(lastStatus_, lastError_) = failure;
    return lastStatus_;
}

void Engine::Initialize() {
    initialized_ = true;
}

void Engine::Deinitialize() {
    samples_.clear();
    workspaces_.clear();
    initialized_ = false;
}

void Engine::InitBuffer(EngineBuffer* buffer) {
    if (!buffer)
        Refuse("the buffer is null");
    // A buffer still held keeps its handle, so initialising it again takes nothing new.
    const std::uint64_t handle =
        buffers_.count(buffer->reserved) ? buffer->reserved : nextBuffer_++;
    buffers_[handle].clear();
    *buffer = EngineBuffer{handle, buffers_[handle].c_str()};
}

void Engine::FreeBuffer(EngineBuffer* buffer) {
    HeldText(buffer);
    buffers_.erase(buffer->reserved);
    *buffer = EngineBuffer{};
}

void Engine::ErrorMessage(int status, EngineBuffer* buffer) {
    Write(buffer, status == lastStatus_ && status != StatusOk ? lastError_ : Describe(status));
}

void Engine::OpenWorkspace(const char* workspaceId, const char* path) {
    RequireInitialized();
    KeloReference::OpenWorkspace open{
        std::string(TextOf(workspaceId, "the workspace id")), std::string(TextOf(path, "the path")),
        {}, {}, {}};
    if (open.id.empty())
        Refuse("the workspace id is empty");
    if (std::any_of(workspaces_.begin(), workspaces_.end(),
                    [&](const KeloReference::OpenWorkspace& other) { return other.id == open.id; }))
        Refuse("workspace '" + open.id + "' is already open");
    KeloReference::Workspace file = ReadWorkspace(open.path);
    open.uuid = file.uuid;
    open.lastModified = file.lastModified.empty() ? FileTime(open.path) : file.lastModified;
    try {
        for (KeloReference::Stream& stream : file.streams) {
            RunningStream running{stream.id, stream.uuid, stream.frameWindow, {}};
            for (KeloReference::Tool& tool : stream.tools)
                running.tools.emplace_back(std::move(tool));
            open.streams.push_back(std::move(running));
        }
    } catch (const Failure& failure) {
        throw Failure(StatusFileFailure, "workspace file '" + open.path + "': " + failure.what());
    }
    workspaces_.push_back(std::move(open));
}

void Engine::CloseWorkspace(const char* workspaceId) {
    const std::string id = Workspace(workspaceId).id;
    samples_.erase(std::remove_if(samples_.begin(), samples_.end(),
                                  [&](const Sample& sample) { return sample.workspaceId == id; }),
                   samples_.end());
    workspaces_.erase(
        std::find_if(workspaces_.begin(), workspaces_.end(),
                     [&](const KeloReference::OpenWorkspace& open) { return open.id == id; }));
}

void Engine::ListWorkspaces(EngineBuffer* buffer) {
    RequireInitialized();
    Listing listing("workspaces");
    for (const KeloReference::OpenWorkspace& open : workspaces_) {
        listing.Open("workspace",
                     {{"id", open.id}, {"uuid", open.uuid}, {"last_modified", open.lastModified}});
        listing.Close();
    }
    Write(buffer, listing.Text());
}

void Engine::ListStreams(const char* workspaceId, EngineBuffer* buffer) {
    Listing listing("streams");
    for (const RunningStream& stream : Workspace(workspaceId).streams) {
        listing.Open(
            "stream",
            {{"id", stream.id}, {"uuid", stream.uuid}, {"frame_window", stream.frameWindow}});
        listing.Close();
    }
    Write(buffer, listing.Text());
}

void Engine::ListTools(const char* workspaceId, const char* streamId, EngineBuffer* buffer) {
    Listing listing("tools");
    ListToolTree(listing, Stream(workspaceId, streamId).tools);
    Write(buffer, listing.Text());
}

void Engine::ListModels(const char* workspaceId, const char* streamId, const char* toolId,
                        EngineBuffer* buffer) {
    Listing listing("models");
    for (const Model& model : Tool(workspaceId, streamId, toolId).definition.models) {
        listing.Open("model", {{"id", model.id}, {"type", model.type}});
        listing.Close();
    }
    Write(buffer, listing.Text());
}

void Engine::GetParameter(const char* workspaceId, const char* streamId, const char* toolId,
                          const char* path, EngineBuffer* buffer) {
    RunningTool& tool = Tool(workspaceId, streamId, toolId);
    const auto found = tool.values.find(TextOf(path, "the parameter path"));
    if (found == tool.values.end())
        NotFound("tool '" + tool.definition.id + "' has no parameter '" + path + "'");
    Write(buffer, found->second);
}

void Engine::SetParameter(const char* workspaceId, const char* streamId, const char* toolId,
                          const char* path, const char* value) {
    RunningTool& tool = Tool(workspaceId, streamId, toolId);
    const std::string key(TextOf(path, "the parameter path"));
    const std::string text(TextOf(value, "the parameter value"));
    const ParameterRule* rule = FindParameterRule(tool.definition, key);
    if (!rule)
        NotFound("tool '" + tool.definition.id + "' has no parameter '" + key + "'");
    CheckParameter(*rule, key, text);
    tool.values[key] = text;
}

void Engine::InitImage(EngineImage* image) {
    if (!image)
        Refuse("the image record is null");
    const std::int32_t handle = images_.count(image->reserved) ? image->reserved : nextImage_++;
    images_[handle] = HeldImage{};
    *image = EngineImage{};
    image->reserved = handle;
}

void Engine::CreateImage(int width, int height, int step, int format,
                         const std::array<const void*, 3>& planes, EngineImage* image) {
    HeldImage& held = Held(image);
    if (format != 0)
        Refuse("image format " + std::to_string(format) + " is not taken");
    if (width <= 0 || height <= 0 || step < width)
        Refuse("a colour image of " + std::to_string(width) + " by " + std::to_string(height) +
               " with a step of " + std::to_string(step) + " is not taken");
    if (std::find(planes.begin(), planes.end(), nullptr) != planes.end())
        Refuse("a colour image needs three planes");
    held = HeldImage{planes, {}};
    const std::int32_t handle = image->reserved;
    *image = EngineImage{width, height, 3, handle, planes[0], 0, step};
}

void Engine::FreeImage(EngineImage* image) {
    Held(image);
    images_.erase(image->reserved);
    *image = EngineImage{};
}

void Engine::ResourceImage(const char* uuid, EngineImage* image) {
    HeldImage& held = Held(image);
    const std::string_view id = TextOf(uuid, "the resource uuid");
    for (const Sample& sample : samples_) {
        if (!sample.result)
            continue;
        for (const KeloReference::ResourceImage& resource : sample.result->resources) {
            if (resource.uuid != id)
                continue;
            held = HeldImage{{}, resource.pixels.clone()};
            *image = EngineImage{held.pixels.cols,
                                 held.pixels.rows,
                                 1,
                                 image->reserved,
                                 held.pixels.data,
                                 0,
                                 static_cast<std::int32_t>(held.pixels.step)};
            return;
        }
    }
    NotFound("no sample holds resource '" + std::string(id) + "'");
}

void Engine::CreateSample(const char* workspaceId, const char* streamId, const char* sampleId) {
    const RunningStream& stream = Stream(workspaceId, streamId);
    const std::string id(TextOf(sampleId, "the sample id"));
    if (std::any_of(samples_.begin(), samples_.end(), [&](const Sample& sample) {
            return sample.workspaceId == workspaceId && sample.id == id;
        }))
        Refuse("sample '" + id + "' already exists");
    samples_.push_back({workspaceId, stream.id, id, {}, std::nullopt});
}

void Engine::AddImage(const char* workspaceId, const char* streamId, const char* sampleId,
                      EngineImage* image) {
    Sample& sample = *FindSample(workspaceId, streamId, sampleId);
    const HeldImage& held = Held(image);
    if (!sample.image.empty())
        Refuse("sample '" + sample.id + "' already has an image");
    sample.image = CopyPixels(*image, held);
}

void Engine::ProcessSample(const char* workspaceId, const char* streamId, const char* sampleId) {
    Sample& sample = *FindSample(workspaceId, streamId, sampleId);
    if (sample.image.empty())
        Refuse("sample '" + sample.id + "' has no image");
    sample.result = Analyse(Stream(workspaceId, streamId).tools, sample.image);
}

void Engine::GetSample(const char* workspaceId, const char* streamId, const char* sampleId,
                       EngineBuffer* buffer) {
    const Sample& sample = *FindSample(workspaceId, streamId, sampleId);
    if (!sample.result)
        Refuse("sample '" + sample.id + "' was not processed");
    Write(buffer, sample.result->document);
}

void Engine::FreeSample(const char* workspaceId, const char* streamId, const char* sampleId) {
    samples_.erase(FindSample(workspaceId, streamId, sampleId));
}

void Engine::RequireInitialized() const {
    if (!initialized_)
        Refuse("the engine is not initialised");
}

std::string& Engine::HeldText(EngineBuffer* buffer) {
    const auto found = buffer ? buffers_.find(buffer->reserved) : buffers_.end();
    if (found == buffers_.end())
        Refuse("the buffer was not initialised by the engine");
    return found->second;
}

void Engine::Write(EngineBuffer* buffer, std::string_view text) {
    std::string& held = HeldText(buffer);
    held.assign(text);
    buffer->text = held.c_str();
}

HeldImage& Engine::Held(EngineImage* image) {
    const auto found = image ? images_.find(image->reserved) : images_.end();
    if (found == images_.end())
        Refuse("the image record was not initialised by the engine");
    return found->second;
}

KeloReference::OpenWorkspace& Engine::Workspace(const char* workspaceId) {
    RequireInitialized();
    const std::string_view id = TextOf(workspaceId, "the workspace id");
    for (KeloReference::OpenWorkspace& open : workspaces_)
        if (open.id == id)
            return open;
    NotFound("workspace '" + std::string(id) + "' is not open");
}

RunningStream& Engine::Stream(const char* workspaceId, const char* streamId) {
    KeloReference::OpenWorkspace& open = Workspace(workspaceId);
    const std::string_view id = TextOf(streamId, "the stream id");
    for (RunningStream& stream : open.streams)
        if (stream.id == id)
            return stream;
    NotFound("workspace '" + open.id + "' has no stream '" + std::string(id) + "'");
}

RunningTool& Engine::Tool(const char* workspaceId, const char* streamId, const char* toolId) {
    RunningStream& stream = Stream(workspaceId, streamId);
    const std::string_view id = TextOf(toolId, "the tool id");
    if (RunningTool* tool = FindTool(stream.tools, id))
        return *tool;
    NotFound("stream '" + stream.id + "' has no tool '" + std::string(id) + "'");
}

std::vector<Sample>::iterator Engine::FindSample(const char* workspaceId, const char* streamId,
                                                 const char* sampleId) {
    const RunningStream& stream = Stream(workspaceId, streamId);
    const std::string_view id = TextOf(sampleId, "the sample id");
    const auto found = std::find_if(samples_.begin(), samples_.end(), [&](const Sample& sample) {
        return sample.workspaceId == workspaceId && sample.id == id;
    });
    if (found == samples_.end())
        NotFound("sample '" + std::string(id) + "' does not exist");
    if (found->streamId != stream.id)
        Refuse("sample '" + found->id + "' belongs to stream '" + found->streamId + "'");
    return found;
}

} // namespace KeloReference
