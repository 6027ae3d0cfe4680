#ifndef TAVRIN_TESTS_ENGINE_CATALOGUE_H
#define TAVRIN_TESTS_ENGINE_CATALOGUE_H

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TestKelo {

struct Model {
    std::string id;
    std::string type;
};

struct Tool {
    std::string id;
    std::string uuid;
    std::string type;
    std::vector<Model> models;
    std::map<std::string, std::string> parameters;
    std::vector<Tool> children;
};

struct Stream {
    std::string id;
    std::string uuid;
    std::string frameWindow;
    std::vector<Tool> tools;
};

// What a workspace file holds; an open workspace works on its own copy.
struct WorkspaceContent {
    std::string uuid;
    std::string lastModified;
    std::vector<Stream> streams;
};

// Lookups as the engine does them; each throws EngineError with TESTKELO_NOT_FOUND.
Stream& findStream(WorkspaceContent& content, const std::string& streamId);
Tool& findTool(Stream& stream, const std::string& toolId);
std::string& findParameter(Tool& tool, const std::string& path);

struct OpenWorkspace {
    std::string id;
    std::string path;
    WorkspaceContent content;
};

// The workspace files a test has registered, by path.
class Catalogue {
public:
    void addFile(const std::string& path, WorkspaceContent content);
    void addStream(const std::string& path, Stream stream);
    void addTool(const std::string& path, const std::string& streamId,
                 const std::optional<std::string>& parentToolId, Tool tool);
    void addModel(const std::string& path, const std::string& streamId, const std::string& toolId,
                  Model model);
    void setParameter(const std::string& path, const std::string& streamId,
                      const std::string& toolId, const std::string& parameterPath,
                      const std::string& value);

    const WorkspaceContent& file(const std::string& path) const;

private:
    WorkspaceContent& registered(const std::string& path);

    std::map<std::string, WorkspaceContent> files_;
};

} // namespace TestKelo

#endif
