#ifndef TAVRIN_TESTS_ENGINE_ENGINE_H
#define TAVRIN_TESTS_ENGINE_ENGINE_H

#include "Catalogue.h"
#include "HandleTable.h"
#include "TestEngineControl.h"

#include <array>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TestKelo {

struct ImageState {
    std::array<const void*, 3> planes{}; // set by kelo_create_image, not copied
    std::vector<unsigned char> pixels;   // the engine's own copy of a resource image
};

struct ResourceImage {
    EngineImage shape{};
    std::vector<unsigned char> pixels;
};

struct Sample {
    std::string workspaceId;
    std::string streamId;
    std::string id;
    std::optional<EngineImage> image;
    std::vector<unsigned char> pixels;
    bool processed = false;
    std::optional<std::string> result;
};

// The engine behind the entry points. Each operation either does its work or throws
// EngineError and leaves everything as it was.
class Engine {
public:
    Engine();

    void initBuffer(EngineBuffer* buffer);
    void freeBuffer(EngineBuffer* buffer);
    void noteError(std::string text);
    void errorMessage(EngineBuffer* buffer);

    void openWorkspace(const char* workspaceId, const char* path);
    void closeWorkspace(const char* workspaceId);
    void listWorkspaces(EngineBuffer* buffer);
    void listStreams(const char* workspaceId, EngineBuffer* buffer);
    void listTools(const char* workspaceId, const char* streamId, EngineBuffer* buffer);
    void listModels(const char* workspaceId, const char* streamId, const char* toolId,
                    EngineBuffer* buffer);
    void getParameter(const char* workspaceId, const char* streamId, const char* toolId,
                      const char* path, EngineBuffer* buffer);
    void setParameter(const char* workspaceId, const char* streamId, const char* toolId,
                      const char* path, const char* value);

    void initImage(EngineImage* image);
    void createImage(const TestKeloCreatedImage& arguments, EngineImage* image);
    void freeImage(EngineImage* image);
    void resourceImage(const char* uuid, EngineImage* image);

    void createSample(const char* workspaceId, const char* streamId, const char* sampleId);
    void addImage(const char* workspaceId, const char* streamId, const char* sampleId,
                  EngineImage* image);
    void processSample(const char* workspaceId, const char* streamId, const char* sampleId);
    void getSample(const char* workspaceId, const char* streamId, const char* sampleId,
                   EngineBuffer* buffer);
    void freeSample(const char* workspaceId, const char* streamId, const char* sampleId);

    Catalogue& catalogue() { return catalogue_; }
    const char* workspaceId(const std::string& path) const;
    const std::string& parameter(const std::string& workspaceId, const std::string& streamId,
                                 const std::string& toolId, const std::string& path);
    void setResultDocument(std::optional<std::string> document);
    void setListing(const std::string& entryPoint, std::optional<std::string> text);
    void addResourceImage(const std::string& uuid, const EngineImage& image);
    EngineImage lastSampleImage() const { return lastSampleImage_; }
    TestKeloCreatedImage lastCreatedImage() const { return lastCreatedImage_; }
    int count(TestKeloCount what) const;

private:
    void write(EngineBuffer* buffer, std::string text);
    // Writes the listing scripted for the entry point, if there is one.
    bool writeScriptedListing(const char* entryPoint, EngineBuffer* buffer);
    OpenWorkspace& workspace(const std::string& workspaceId);
    Stream& stream(const char* workspaceId, const char* streamId);
    std::vector<Sample>::iterator sample(const char* workspaceId, const char* streamId,
                                         const char* sampleId);

    Catalogue catalogue_;
    HandleTable<EngineBuffer, std::unique_ptr<const std::string>> buffers_;
    HandleTable<EngineImage, ImageState> images_;
    std::vector<OpenWorkspace> workspaces_;
    std::vector<Sample> samples_;
    std::map<std::string, ResourceImage> resourceImages_;
    std::optional<std::string> resultDocument_;
    std::map<std::string, std::string> scriptedListings_;
    std::string lastError_;
    EngineImage lastSampleImage_{};
    TestKeloCreatedImage lastCreatedImage_{};
};

} // namespace TestKelo

#endif
