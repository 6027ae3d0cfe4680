#include "Vision/DeepLearning/DLOperator.h"

#include <Vision/Core/Exceptions.h>

#include "Vision/DeepLearning/DLResult.h"
#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLStreamReadOnlyCollection.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using Private::DeepLearningAccess;

namespace {

// The engine library is large: its load runs beside the host so creation returns at once.
std::future<std::shared_ptr<DeepLearningAccess>> StartEngineLoad() {
    try {
        return std::async(std::launch::async, &DeepLearningAccess::Instance);
    } catch (std::system_error const&) {
        throw std::future_error(std::future_errc::no_state);
    }
}

} // namespace

DLOperator::DLOperator(ObjectCreateAccessToken const&)
    : DLOperator() {}

DLOperator::DLOperator()
    : engineHolder_(std::make_shared<EngineInstanceHolder>()) {
    DeepLearningAccess::SubscribeOnShutdown(this);
}

DLOperator::~DLOperator() {
    try {
        setWorkspace(nullptr);
    } catch (...) {
        // Dropping the clone may close the engine workspace; a destructor reports nothing.
    }
    DeepLearningAccess::UnsubscribeOnShutDown(this);
}

void DLOperator::FinalConstruct() {
    if (!engineHolder_->access)
        engineHolder_->future = StartEngineLoad();
    if (workspacePath_.empty())
        return;
    try {
        auto access = GetEngineInstance();
        setWorkspace(access->OpenWorkspace(workspacePath_));
    } catch (FileOpenException const&) {
        // A file that cannot be opened leaves the operator without a workspace, silently.
    }
}

std::shared_ptr<DeepLearningAccess> DLOperator::GetEngineInstance() {
    if (engineHolder_->access)
        return engineHolder_->access;
    auto future = std::move(engineHolder_->future);
    if (!future.valid())
        throw std::future_error(std::future_errc::no_state);
    engineHolder_->access = future.get();
    return engineHolder_->access;
}

void DLOperator::LoadWorkspace(std::string const& path) {
    auto access = GetEngineInstance();
    if (path != workspacePath_) {
        workspacePath_ = path;
        OnChanged_(sfWorkspacePath);
    }
    setWorkspace(access->OpenWorkspace(path));
}

std::shared_ptr<DLResult> DLOperator::Execute(IImage const& image) {
    GetEngineInstance();
    std::shared_ptr<DLStream> const stream = stream_;
    if (!stream)
        throw OperatorNotTrainedException(ExceptionTexts::StreamRequired);
    return DeepLearningAccess::Instance()->RunKeloStream(image, *stream);
}

void DLOperator::setWorkspace(std::shared_ptr<DLWorkspace> workspace) {
    if (workspace != workspace_) {
        workspace_ = std::move(workspace);
        OnChanged_(SfWorkspace);
    }
    if (!workspace_)
        return;
    auto streams = workspace_->Streams();
    if (streams && streams->Count() == 1)
        setStream(streams->Item(0));
}

void DLOperator::setStream(std::shared_ptr<DLStream> stream) {
    if (stream_)
        streamConnection_.disconnect();
    if (stream != stream_) {
        stream_ = std::move(stream);
        OnChanged_(SfStream);
    }
    if (stream_)
        streamConnection_ =
            stream_->ChangedEvent().Connect(shared_from_this(), &DLOperator::HandleStreamChanged);
}

void DLOperator::HandleStreamChanged(std::shared_ptr<ChangedEventArgs> args) {
    if (args->Has(DLStream::SfToolsGraphicsChanged))
        OnChanged_(SfToolsGraphicsChanged);
}

template <class Archive> void DLOperator::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLOperator::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), workspacePath_);
    if constexpr (Archive::is_saving::value) {
        archive(workspace_, stream_ ? stream_->UUID() : std::string());
    } else {
        // The archived tree only carries settings: the live tree always comes from the file.
        std::shared_ptr<DLWorkspace> savedWorkspace;
        std::string savedStreamUuid;
        archive(savedWorkspace, savedStreamUuid);
        FinalConstruct();
        if (!workspace_)
            return;
        if (auto const streams = workspace_->Streams())
            for (auto const& stream : *streams)
                if (stream->UUID() == savedStreamUuid)
                    setStream(stream);
        if (savedWorkspace)
            UpdateToolsProperties(*savedWorkspace);
    }
}

TAVRIN_INSTANTIATE_SERIALIZE(DLOperator)

void DLOperator::UpdateToolsProperties(DLWorkspace const& saved) {
    auto const streams = saved.Streams();
    if (!streams)
        return;
    // A damaged archive may hold empty slots; they carry no settings.
    for (auto const& stream : *streams)
        if (auto const tools = stream ? stream->Tools() : nullptr)
            for (auto const& tool : *tools)
                UpdateToolProperties(tool);
}

void DLOperator::UpdateToolProperties(std::shared_ptr<DLToolRuntimeParams> saved) {
    auto const streams = workspace_->Streams();
    if (!saved || !streams)
        return;
    for (auto const& stream : *streams) {
        auto const live = GetEngineInstance()->FindTool(*stream, saved->Id().c_str());
        if (!live)
            continue;
        Private::ParameterTables::Restore(*live, *saved);
        if (auto const children = saved->ChildTools())
            for (auto const& child : *children)
                UpdateToolProperties(child);
    }
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLOperator,
                               "Tavrin::Vision::DeepLearning::DLOperator")
