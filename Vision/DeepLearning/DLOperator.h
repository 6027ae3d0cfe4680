#pragma once

#include <future>
#include <memory>
#include <string>

#include <Vision/Core/Archive.h>
#include <Vision/Core/ChangedEvent.h>

namespace Tavrin::Vision {
class IImage;
}

namespace Tavrin::Vision::DeepLearning {

class DLResult;
class DLStream;
class DLToolRuntimeParams;
class DLWorkspace;

namespace Private {
class DeepLearningAccess;
}

// The engine as the background load hands it over: the future until someone has waited for
// it, then the access object.
struct EngineInstanceHolder {
    std::future<std::shared_ptr<Private::DeepLearningAccess>> future;
    std::shared_ptr<Private::DeepLearningAccess> access;
};

// What a host drives: one workspace file, the clone opened from it and the stream selected in
// it. The engine loads in the background from FinalConstruct, so creating one never waits.
class DLOperator : public virtual ChangedEventShareableBase {
public:
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long sfWorkspacePath = sf0_;
    static constexpr long long SfWorkspace = sf0_ << 1;
    static constexpr long long SfStream = sf0_ << 2;
    static constexpr long long SfToolsGraphicsChanged = sf0_ << 3;
    static constexpr long long sfNextSf_ = sf0_ << 4;

    explicit DLOperator(ObjectCreateAccessToken const&);
    ~DLOperator() override;

    TAVRIN_SHARED_FROM_THIS(DLOperator)

    // Opens the file (once per process, however many operators use it) and works on a clone.
    void LoadWorkspace(std::string const& path);

    // Runs the selected stream on the image; results come in the image's selected space. A
    // stream must have been selected.
    std::shared_ptr<DLResult> Execute(IImage const& image);

    std::shared_ptr<DLStream> Stream() const { return stream_; }
    void setStream(std::shared_ptr<DLStream> stream);
    std::shared_ptr<DLWorkspace> Workspace() const { return workspace_; }
    // A workspace with exactly one stream selects it; otherwise the stream stays as it was.
    void setWorkspace(std::shared_ptr<DLWorkspace> workspace);

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;

    DLOperator();

    void FinalConstruct();
    // The one-shot hand-over of the background load: the first caller gets its exception,
    // later callers std::future_error with no_state.
    std::shared_ptr<Private::DeepLearningAccess> GetEngineInstance();
    void HandleStreamChanged(std::shared_ptr<ChangedEventArgs> args);

    // A load reopens the file and takes only the user's settings from the archived tree.
    template <class Archive> void serialize(Archive& archive, unsigned int version);
    void UpdateToolsProperties(DLWorkspace const& saved);
    void UpdateToolProperties(std::shared_ptr<DLToolRuntimeParams> saved);

    Brnt::ScopedConnection streamConnection_;
    std::string workspacePath_;
    std::shared_ptr<DLWorkspace> workspace_;
    std::shared_ptr<DLStream> stream_;
    std::shared_ptr<EngineInstanceHolder> engineHolder_;

    RTTR_ENABLE(ChangedEventShareableBase)
};

using DLOperatorPtr = std::shared_ptr<DLOperator>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLOperator, 1)
