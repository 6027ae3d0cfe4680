#include <sys/stat.h>

#include <sstream>

#include <Vision/Core/Archive.h>
#include <Vision/Core/Platform.h>
#include <tinyxml2.h>

#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ProcessState.h"
#include "engine/WorkspaceTables.h"

namespace Tavrin::Vision::DeepLearning::Private {

namespace {

// Seconds; a file that cannot be read counts as time 0, that is as never changed.
std::int64_t FileTime(std::string const& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? static_cast<std::int64_t>(status.st_mtime) : 0;
}

// Drops the parameter values cached for an engine workspace that has closed.
void TrimParameterCache(std::unordered_map<std::string, std::string>& cache,
                        std::string const& workspaceId) {
    std::vector<std::string> keys;
    for (auto const& entry : cache)
        if (entry.first.rfind(workspaceId) == 0)
            keys.push_back(entry.first);
    for (auto const& key : keys)
        cache.erase(key);
}

SerializerOptionsConstants const CloneOptions = static_cast<SerializerOptionsConstants>(1793);

} // namespace

std::recursive_mutex& WorkspaceTablesMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

std::shared_ptr<DLWorkspace> DeepLearningAccess::OpenWorkspace(std::string const& path) {
    std::lock_guard<std::recursive_mutex> lock(accessLock_);
    InitBuffer();
    // Held to the end, so that a clone closing elsewhere cannot take the master away between
    // finding it and registering the new clone.
    std::lock_guard<std::recursive_mutex> tables(WorkspaceTablesMutex());
    EngineFunctionTable& engine = Engine();
    auto found = engine.OpenFiles.find(path);
    std::string const id = Vision::Private::PalUtils::NewGuid();
    engine.kelo_init_buffer(&accessBuffer_->buffer);
    std::int64_t const fileTime = FileTime(path);

    bool const reload = found != engine.OpenFiles.end();
    if (reload) {
        if (found->second.fileTime >= fileTime)
            return Clone(found->second.master);
        ThrowIfFailed(engine.kelo_runtime_close_workspace(found->second.master->name_.c_str()),
                      DeepLearningExceptionCodes::CannotOpenWorkspace,
                      ExceptionTexts::CannotOpenWorkspace);
    }
    if (int const status = engine.kelo_runtime_open_workspace_from_file(id.c_str(), path.c_str());
        status != 0)
        throw FileOpenException(FormatEngineError(status, ExceptionTexts::CannotOpenWorkspace));
    std::shared_ptr<DLWorkspace> master = LoadOpenedWorkspace(path, id);
    engine.OpenFiles[path] = MasterEntry{master, fileTime};
    if (reload)
        // The list of the new id has no clones yet; the old generation is not marked here.
        for (auto const& weakClone : engine.CloneLists[id])
            if (auto clone = weakClone.lock())
                clone->SetOutOfDate();
    return Clone(master);
}

std::shared_ptr<DLWorkspace> DeepLearningAccess::LoadOpenedWorkspace(std::string const& path,
                                                                     std::string const& id) {
    EngineFunctionTable& engine = Engine();
    try {
        ThrowIfFailed(engine.kelo_runtime_list_workspaces(&accessBuffer_->buffer),
                      DeepLearningExceptionCodes::CannotListWorkspaces,
                      ExceptionTexts::CannotListWorkspaces);
        return LoadWorkspace(path, id);
    } catch (...) {
        // No master will own the engine workspace, so it must not stay open.
        engine.kelo_runtime_close_workspace(id.c_str());
        throw;
    }
}

std::shared_ptr<DLWorkspace> DeepLearningAccess::LoadWorkspace(std::string const& path,
                                                               std::string id) {
    tinyxml2::XMLDocument document;
    document.Parse(accessBuffer_->buffer.text ? accessBuffer_->buffer.text : "");
    tinyxml2::XMLElement const* root = document.FirstChildElement();
    for (auto element = root ? root->FirstChildElement("workspace") : nullptr; element;
         element = element->NextSiblingElement("workspace")) {
        char const* elementId = element->Attribute("id");
        if (!elementId || id != elementId)
            continue;
        auto workspace = Brnt::ObjectFactory::Construct<DLWorkspace>(
            id, element->Attribute("uuid"), element->Attribute("last_modified"), path);
        workspace->FinalConstruct();
        return workspace;
    }
    throw DeepLearningException(DeepLearningExceptionCodes::WorkspaceNotFound,
                                ExceptionTexts::WorkspaceNotFound);
}

std::shared_ptr<DLWorkspace> DeepLearningAccess::Clone(std::shared_ptr<DLWorkspace> const& master) {
    std::shared_ptr<DLWorkspace> clone;
    try {
        std::stringstream stream;
        {
            VisionBinaryOutputArchive output(stream, CloneOptions);
            output(master);
        }
        VisionBinaryInputArchive input(stream, CloneOptions);
        input(clone);
    } catch (cereal::Exception const& e) {
        throw SerializationException(e.what());
    }
    clone->sourceFile_ = master->sourceFile_;
    std::lock_guard<std::recursive_mutex> tables(WorkspaceTablesMutex());
    Engine().CloneLists[master->name_].push_back(clone);
    return clone;
}

void DeepLearningAccess::CloseWorkspace(DLWorkspace const& workspace) {
    std::lock_guard<std::recursive_mutex> tables(WorkspaceTablesMutex());
    EngineFunctionTable& engine = Engine();
    auto clones = engine.CloneLists.find(workspace.name_);
    if (clones == engine.CloneLists.end())
        return;
    clones->second.remove_if([](auto const& clone) { return clone.expired(); });
    if (!clones->second.empty())
        return;
    engine.CloneLists.erase(clones);
    // Dropping the master brings its destructor back here, where it finds no list.
    engine.OpenFiles.erase(workspace.sourceFile_);
    ThrowIfFailed(engine.kelo_runtime_close_workspace(workspace.name_.c_str()),
                  DeepLearningExceptionCodes::CannotCloseWorkspace,
                  ExceptionTexts::CannotCloseWorkspace);
    if (accessBuffer_)
        TrimParameterCache(accessBuffer_->ParameterCache, workspace.name_);
}

std::shared_ptr<DLWorkspace> DeepLearningAccess::GetWorkspace(std::string const& id) {
    ProcessState& state = State();
    if (!state.table)
        return nullptr;
    std::lock_guard<std::recursive_mutex> tables(WorkspaceTablesMutex());
    for (auto const& entry : state.table->OpenFiles)
        if (entry.second.master->name_ == id)
            return entry.second.master;
    return nullptr;
}

std::shared_ptr<DLWorkspace> DeepLearningAccess::GetWorkspace(DLWorkspace const& workspace) {
    return GetWorkspace(workspace.name_);
}

} // namespace Tavrin::Vision::DeepLearning::Private
