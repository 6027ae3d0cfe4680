#include "Engine.h"

#include "Documents.h"
#include "EngineError.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <utility>

namespace TestKelo {
namespace {

// Distinct starting handles make a record that was never initialised unlikely to pass.
constexpr std::uint64_t firstBufferHandle = 0x6b656c6f00000001;
constexpr std::int32_t firstImageHandle = 0x6b650001;

[[noreturn]] void refuse(const std::string& text) {
    throw EngineError(TESTKELO_REFUSED, text);
}

void appendRows(std::vector<unsigned char>& pixels, const void* first, int rows, int rowBytes,
                int step) {
    if (!first) {
        refuse("image has no pixels");
    }
    if (step < rowBytes) {
        refuse("image step " + std::to_string(step) + " is shorter than a row of " +
               std::to_string(rowBytes) + " bytes");
    }
    const auto* row = static_cast<const unsigned char*>(first);
    for (int index = 0; index < rows; ++index, row += step) {
        pixels.insert(pixels.end(), row, row + rowBytes);
    }
}

// The engine reads the caller's pixels when the image joins a sample, as a real one would.
std::vector<unsigned char> readPixels(const EngineImage& image, const ImageState& state) {
    if (image.width <= 0 || image.height <= 0) {
        refuse("image has no size");
    }
    std::vector<unsigned char> pixels;
    if (state.planes[0]) {
        for (const void* plane : state.planes) {
            appendRows(pixels, plane, image.height, image.width, image.step);
        }
        return pixels;
    }
    if (image.channels <= 0) {
        refuse("image has no channels");
    }
    const int bytesPerSample = image.pixelType == 0 ? 1 : 2;
    appendRows(pixels, image.pixels, image.height, image.width * image.channels * bytesPerSample,
               image.step);
    return pixels;
}

} // namespace

Engine::Engine()
    : buffers_(firstBufferHandle, "buffer")
    , images_(firstImageHandle, "image") {}

void Engine::initBuffer(EngineBuffer* buffer) {
    buffers_.init(buffer);
    write(buffer, "");
}

void Engine::freeBuffer(EngineBuffer* buffer) {
    buffers_.release(buffer);
}

void Engine::noteError(std::string text) {
    lastError_ = std::move(text);
}

void Engine::errorMessage(EngineBuffer* buffer) {
    write(buffer, lastError_);
}

void Engine::openWorkspace(const char* workspaceId, const char* path) {
    std::string id = engineText(workspaceId);
    std::string file = engineText(path);
    if (std::any_of(workspaces_.begin(), workspaces_.end(),
                    [&](const OpenWorkspace& open) { return open.id == id; })) {
        refuse("workspace id '" + id + "' is already open");
    }
    workspaces_.push_back({id, file, catalogue_.file(file)});
}

void Engine::closeWorkspace(const char* workspaceId) {
    const std::string id = workspace(engineText(workspaceId)).id;
    samples_.erase(
        std::remove_if(samples_.begin(), samples_.end(),
                       [&](const Sample& existing) { return existing.workspaceId == id; }),
        samples_.end());
    workspaces_.erase(std::find_if(workspaces_.begin(), workspaces_.end(),
                                   [&](const OpenWorkspace& open) { return open.id == id; }));
}

void Engine::listWorkspaces(EngineBuffer* buffer) {
    if (writeScriptedListing("kelo_runtime_list_workspaces", buffer)) {
        return;
    }
    write(buffer, workspaceListing(workspaces_));
}

void Engine::listStreams(const char* workspaceId, EngineBuffer* buffer) {
    if (writeScriptedListing("kelo_runtime_list_streams", buffer)) {
        return;
    }
    write(buffer, streamListing(workspace(engineText(workspaceId)).content));
}

void Engine::listTools(const char* workspaceId, const char* streamId, EngineBuffer* buffer) {
    if (writeScriptedListing("kelo_runtime_list_tools", buffer)) {
        return;
    }
    write(buffer, toolListing(stream(workspaceId, streamId)));
}

void Engine::listModels(const char* workspaceId, const char* streamId, const char* toolId,
                        EngineBuffer* buffer) {
    if (writeScriptedListing("kelo_runtime_blue_list_models", buffer)) {
        return;
    }
    write(buffer, modelListing(findTool(stream(workspaceId, streamId), engineText(toolId))));
}

void Engine::getParameter(const char* workspaceId, const char* streamId, const char* toolId,
                          const char* path, EngineBuffer* buffer) {
    Tool& tool = findTool(stream(workspaceId, streamId), engineText(toolId));
    write(buffer, findParameter(tool, engineText(path)));
}

void Engine::setParameter(const char* workspaceId, const char* streamId, const char* toolId,
                          const char* path, const char* value) {
    Tool& tool = findTool(stream(workspaceId, streamId), engineText(toolId));
    std::string text = engineText(value);
    findParameter(tool, engineText(path)) = std::move(text);
}

void Engine::initImage(EngineImage* image) {
    images_.init(image);
}

void Engine::createImage(const TestKeloCreatedImage& arguments, EngineImage* image) {
    ImageState& state = images_.held(image);
    state.planes = {arguments.planes[0], arguments.planes[1], arguments.planes[2]};
    state.pixels.clear();
    image->width = arguments.width;
    image->height = arguments.height;
    image->channels = 3;
    image->pixels = arguments.planes[0];
    image->pixelType = 0;
    image->step = arguments.step;
    lastCreatedImage_ = arguments;
}

void Engine::freeImage(EngineImage* image) {
    images_.release(image);
}

void Engine::resourceImage(const char* uuid, EngineImage* image) {
    ImageState& state = images_.held(image);
    auto found = resourceImages_.find(engineText(uuid));
    if (found == resourceImages_.end()) {
        throw EngineError(TESTKELO_NOT_FOUND, "unknown resource image '" + std::string(uuid) + "'");
    }
    state.planes = {};
    state.pixels = found->second.pixels;
    const std::int32_t handle = image->reserved;
    *image = found->second.shape;
    image->reserved = handle;
    image->pixels = state.pixels.data();
}

void Engine::createSample(const char* workspaceId, const char* streamId, const char* sampleId) {
    Stream& target = stream(workspaceId, streamId);
    std::string id = engineText(sampleId);
    if (std::any_of(samples_.begin(), samples_.end(), [&](const Sample& existing) {
            return existing.workspaceId == workspaceId && existing.id == id;
        })) {
        refuse("sample '" + id + "' already exists");
    }
    samples_.push_back({workspaceId, target.id, id, std::nullopt, {}, false, std::nullopt});
}

void Engine::addImage(const char* workspaceId, const char* streamId, const char* sampleId,
                      EngineImage* image) {
    Sample& target = *sample(workspaceId, streamId, sampleId);
    const ImageState& state = images_.held(image);
    if (target.image) {
        refuse("sample '" + target.id + "' already has an image");
    }
    target.pixels = readPixels(*image, state);
    target.image = *image;
    lastSampleImage_ = *image;
}

void Engine::processSample(const char* workspaceId, const char* streamId, const char* sampleId) {
    Sample& target = *sample(workspaceId, streamId, sampleId);
    if (!target.image) {
        refuse("sample '" + target.id + "' has no image");
    }
    target.processed = true;
    target.result = resultDocument_;
}

void Engine::getSample(const char* workspaceId, const char* streamId, const char* sampleId,
                       EngineBuffer* buffer) {
    const Sample& target = *sample(workspaceId, streamId, sampleId);
    if (!target.processed) {
        refuse("sample '" + target.id + "' was not processed");
    }
    if (!target.result) {
        refuse("no result document was scripted for sample '" + target.id + "'");
    }
    write(buffer, *target.result);
}

void Engine::freeSample(const char* workspaceId, const char* streamId, const char* sampleId) {
    samples_.erase(sample(workspaceId, streamId, sampleId));
}

const char* Engine::workspaceId(const std::string& path) const {
    auto found = std::find_if(workspaces_.rbegin(), workspaces_.rend(),
                              [&](const OpenWorkspace& open) { return open.path == path; });
    return found == workspaces_.rend() ? nullptr : found->id.c_str();
}

const std::string& Engine::parameter(const std::string& workspaceId, const std::string& streamId,
                                     const std::string& toolId, const std::string& path) {
    Stream& target = findStream(workspace(workspaceId).content, streamId);
    return findParameter(findTool(target, toolId), path);
}

void Engine::setResultDocument(std::optional<std::string> document) {
    resultDocument_ = std::move(document);
}

void Engine::setListing(const std::string& entryPoint, std::optional<std::string> text) {
    if (entryPoint != "kelo_runtime_list_workspaces" && entryPoint != "kelo_runtime_list_streams" &&
        entryPoint != "kelo_runtime_list_tools" && entryPoint != "kelo_runtime_blue_list_models") {
        throw std::invalid_argument("'" + entryPoint + "' is no listing entry point");
    }
    if (text) {
        scriptedListings_[entryPoint] = std::move(*text);
    } else {
        scriptedListings_.erase(entryPoint);
    }
}

bool Engine::writeScriptedListing(const char* entryPoint, EngineBuffer* buffer) {
    auto scripted = scriptedListings_.find(entryPoint);
    if (scripted == scriptedListings_.end()) {
        return false;
    }
    write(buffer, scripted->second);
    return true;
}

void Engine::addResourceImage(const std::string& uuid, const EngineImage& image) {
    if (!image.pixels || image.height <= 0 || image.step <= 0) {
        throw std::invalid_argument("resource image '" + uuid + "' has no pixels");
    }
    const auto* first = static_cast<const unsigned char*>(image.pixels);
    const std::size_t size = static_cast<std::size_t>(image.step) * image.height;
    ResourceImage resource{image, std::vector<unsigned char>(first, first + size)};
    resource.shape.pixels = nullptr;
    resource.shape.reserved = 0;
    resourceImages_[uuid] = std::move(resource);
}

int Engine::count(TestKeloCount what) const {
    switch (what) {
    case TESTKELO_BUFFERS:
        return buffers_.outstanding();
    case TESTKELO_IMAGES:
        return images_.outstanding();
    case TESTKELO_SAMPLES:
        return static_cast<int>(samples_.size());
    case TESTKELO_WORKSPACES:
        return static_cast<int>(workspaces_.size());
    case TESTKELO_INVALID_HANDLES:
        return buffers_.invalidUses() + images_.invalidUses();
    }
    throw std::invalid_argument("unknown count " + std::to_string(static_cast<int>(what)));
}

// A fresh allocation for every text, so a text kept past its time is a use after free.
void Engine::write(EngineBuffer* buffer, std::string text) {
    std::unique_ptr<const std::string>& held = buffers_.held(buffer);
    held = std::make_unique<const std::string>(std::move(text));
    buffer->text = held->c_str();
}

OpenWorkspace& Engine::workspace(const std::string& workspaceId) {
    auto found = std::find_if(workspaces_.begin(), workspaces_.end(),
                              [&](const OpenWorkspace& open) { return open.id == workspaceId; });
    if (found == workspaces_.end()) {
        throw EngineError(TESTKELO_NOT_FOUND, "unknown workspace '" + workspaceId + "'");
    }
    return *found;
}

Stream& Engine::stream(const char* workspaceId, const char* streamId) {
    return findStream(workspace(engineText(workspaceId)).content, engineText(streamId));
}

std::vector<Sample>::iterator Engine::sample(const char* workspaceId, const char* streamId,
                                             const char* sampleId) {
    Stream& owner = stream(workspaceId, streamId);
    const std::string id = engineText(sampleId);
    auto found = std::find_if(samples_.begin(), samples_.end(), [&](const Sample& existing) {
        return existing.workspaceId == workspaceId && existing.id == id;
    });
    if (found == samples_.end()) {
        throw EngineError(TESTKELO_NOT_FOUND, "unknown sample '" + id + "'");
    }
    if (found->streamId != owner.id) {
        throw EngineError(TESTKELO_NOT_FOUND,
                          "sample '" + id + "' is not of stream '" + owner.id + "'");
    }
    return found;
}

} // namespace TestKelo
