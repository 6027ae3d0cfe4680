#include "Vision/DeepLearning/DLOperator.h"

#include <algorithm>

#include <Vision/Core/Exceptions.h>
#include <Vision/Core/Vect2.h>

#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"
#include "Vision/DeepLearning/DLBlueNodeModel.h"
#include "Vision/DeepLearning/DLBlueReadToolRuntimeParams.h"
#include "Vision/DeepLearning/DLBlueRegexModel.h"
#include "Vision/DeepLearning/DLBlueStringModel.h"
#include "Vision/DeepLearning/DLBlueToolRuntimeParams.h"
#include "Vision/DeepLearning/DLFocusedModeGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLFocusedModeRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLHdmGreenToolRuntimeParams.h"
#include "Vision/DeepLearning/DLHdmRedToolRuntimeParams.h"
#include "Vision/DeepLearning/DLResult.h"
#include "Vision/DeepLearning/DLStream.h"
#include "Vision/DeepLearning/DLStreamReadOnlyCollection.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"

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

// Runs copy when both objects are of class Derived. The rows of a settings table each test by
// themselves: none excludes another.
template <class Derived, class Base>
void CopyWhenBothAre(Base& live, Base const& saved, void (*copy)(Derived&, Derived const&)) {
    auto* const liveDerived = dynamic_cast<Derived*>(&live);
    auto const* const savedDerived = dynamic_cast<Derived const*>(&saved);
    if (liveDerived && savedDerived)
        copy(*liveDerived, *savedDerived);
}

void CopyNodeModelSettings(DLBlueNodeModel& live, DLBlueNodeModel const& saved) {
    live.setOccurrences(saved.Occurrences());
    live.setThreshold(saved.Threshold());
}

void CopyRegexModelSettings(DLBlueRegexModel& live, DLBlueRegexModel const& saved) {
    live.setRegexExpression(saved.RegexExpression());
    live.setThreshold(saved.Threshold());
}

void CopyStringModelSettings(DLBlueStringModel& live, DLBlueStringModel const& saved) {
    live.setMinimumLength(saved.MinimumLength());
    live.setThreshold(saved.Threshold());
}

// Models are matched by name, so a model renamed in the file keeps the file's values. A layout
// model has nothing beyond Enable.
void MergeBlueModels(std::shared_ptr<DLBlueModelReadOnlyCollection> const& live,
                     std::shared_ptr<DLBlueModelReadOnlyCollection> const& saved) {
    if (!live || !saved)
        return;
    for (auto const& model : *live) {
        auto const match = std::find_if(saved->begin(), saved->end(), [&](auto const& candidate) {
            return candidate && candidate->Name() == model->Name();
        });
        if (match == saved->end())
            continue;
        model->setEnable((*match)->Enable());
        CopyWhenBothAre(*model, **match, &CopyNodeModelSettings);
        CopyWhenBothAre(*model, **match, &CopyRegexModelSettings);
        CopyWhenBothAre(*model, **match, &CopyStringModelSettings);
    }
}

void CopyBlueSettings(DLBlueToolRuntimeParams& live, DLBlueToolRuntimeParams const& saved) {
    live.setFeatureFilter(saved.FeatureFilter());
    live.setFeatureSize(saved.FeatureSize());
    live.setPrecision(saved.Precision());
    live.setSamplingDensity(saved.SamplingDensity());
    live.setThreshold(saved.Threshold());
    live.setShowFeatures(saved.ShowFeatures());
    live.setShowModels(saved.ShowModels());
    MergeBlueModels(live.Models(), saved.Models());
}

void CopyBlueReadSettings(DLBlueReadToolRuntimeParams& live,
                          DLBlueReadToolRuntimeParams const& saved) {
    live.setThreshold(saved.Threshold());
    live.setFeatureFilter(saved.FeatureFilter());
    live.setFeatureSize(saved.FeatureSize());
    live.setPrecision(saved.Precision());
    live.setShowFeatures(saved.ShowFeatures());
    live.setShowModels(saved.ShowModels());
    MergeBlueModels(live.Models(), saved.Models());
}

void CopyFocusedModeGreenSettings(DLFocusedModeGreenToolRuntimeParams& live,
                                  DLFocusedModeGreenToolRuntimeParams const& saved) {
    live.setThreshold(saved.Threshold());
    live.setSamplingDensity(saved.SamplingDensity());
    live.setShowGraphics(saved.ShowGraphics());
}

void CopyFocusedModeRedSettings(DLFocusedModeRedToolRuntimeParams& live,
                                DLFocusedModeRedToolRuntimeParams const& saved) {
    live.setSamplingDensity(saved.SamplingDensity());
    live.setIterations(saved.Iterations());
    live.setLowerThreshold(saved.LowerThreshold());
    live.setUpperThreshold(saved.UpperThreshold());
    live.setRegionFilter(saved.RegionFilter());
    live.setShowGraphics(saved.ShowGraphics());
}

void CopyHdmGreenSettings(DLHdmGreenToolRuntimeParams& live,
                          DLHdmGreenToolRuntimeParams const& saved) {
    live.setThreshold(saved.Threshold());
    live.setShowGraphics(saved.ShowGraphics());
    live.setGenerateHeatmap(saved.GenerateHeatmap());
}

void CopyHdmRedSettings(DLHdmRedToolRuntimeParams& live, DLHdmRedToolRuntimeParams const& saved) {
    live.setLowerThreshold(saved.LowerThreshold());
    live.setUpperThreshold(saved.UpperThreshold());
    live.setRegionFilter(saved.RegionFilter());
    live.setDownsamplingSize(saved.DownsamplingSize());
    live.setShowGraphics(saved.ShowGraphics());
}

// The two quick classes have no row: of a quick tool only the settings that every tool has
// survive a reload.
void CopyClassSettings(DLToolRuntimeParams& live, DLToolRuntimeParams const& saved) {
    CopyWhenBothAre(live, saved, &CopyBlueSettings);
    CopyWhenBothAre(live, saved, &CopyBlueReadSettings);
    CopyWhenBothAre(live, saved, &CopyFocusedModeGreenSettings);
    CopyWhenBothAre(live, saved, &CopyFocusedModeRedSettings);
    CopyWhenBothAre(live, saved, &CopyHdmGreenSettings);
    CopyWhenBothAre(live, saved, &CopyHdmRedSettings);
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
        auto const access = GetEngineInstance();
        auto const live = access->FindTool(*stream, saved->Id().c_str());
        if (!live)
            continue;
        live->setShowRegion(saved->ShowRegion());
        live->setAddImageRecords(saved->AddImageRecords());
        CopyClassSettings(*live, *saved);
        if (auto const children = saved->ChildTools())
            for (auto const& child : *children)
                UpdateToolProperties(child);
    }
}

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLOperator,
                               "Tavrin::Vision::DeepLearning::DLOperator")
