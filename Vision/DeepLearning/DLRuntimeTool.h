#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Image.h>
#include <Vision/Core/ToolBase.h>
#include <Vision/DeepLearning/DLOperator.h>
#include <Vision/DeepLearning/DLResult.h>
#include <Vision/DeepLearning/DLResultBlueReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultGreenReadOnlyCollection.h>
#include <Vision/DeepLearning/DLResultRedReadOnlyCollection.h>
#include <Vision/DeepLearning/DeepLearningEnums.h>

namespace Tavrin::Vision::DeepLearning {

class DLWorkspace;

// What a host places in its chain of vision tools: an input pin "InputImage", a Run that executes
// the operator's selected stream, the last result with typed views on it, and run records.
class DLRuntimeTool : public Vision::Implementation::ToolBase {
public:
    static const long long sf0_ = ToolBase::sfNextSf_;
    static const long long SfInputImage = sf0_;
    static const long long SfResults = sf0_ << 1;
    static const long long SfRedToolResults = sf0_ << 2;
    static const long long SfGreenToolResults = sf0_ << 3;
    static const long long SfBlueToolResults = sf0_ << 4;
    static const long long SfLastRunRecordDiagEnable = sf0_ << 5;
    static const long long sfNextSf_ = sf0_ << 6;

    // Starts the engine's background load at once, so a tool is ready by the time a host runs it.
    explicit DLRuntimeTool(ObjectCreateAccessToken const& token);
    TAVRIN_SHARED_FROM_THIS(DLRuntimeTool)

    std::shared_ptr<IImage> InputImage() const { return inputImage_; }
    void setInputImage(std::shared_ptr<IImage> image);
    DLLastRunRecordConstants LastRunRecordDiagEnable() const;
    void setLastRunRecordDiagEnable(DLLastRunRecordConstants flags);

    std::shared_ptr<DLResult> Results() const { return results_; }
    // Each call gathers the views of the last result whose marking's tool is of the family; never
    // null.
    std::shared_ptr<DLResultRedReadOnlyCollection> RedToolResults() const;
    std::shared_ptr<DLResultGreenReadOnlyCollection> GreenToolResults() const;
    std::shared_ptr<DLResultBlueReadOnlyCollection> BlueToolResults() const;

    std::shared_ptr<DLOperator> DeepLearningOperator() const { return operator_; }
    void LoadWorkspace(std::string const& path);

protected:
    ToolResultConstants InternalRun(std::string& message) override;
    void InternalCreateCurrentRecord(std::shared_ptr<Record> record, unsigned int flags) override;
    void InternalCreateLastRunRecord(std::shared_ptr<Record> record, unsigned int flags,
                                     unsigned int diagFlags) override;
    void OnFinalConstruct() override;

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class cereal::access;

    // For the archive, which brings the operator, the pins and the settings.
    DLRuntimeTool();
    // Hands a prepared result to the tool for its run records.
    friend class Implementation::Internal::TestHelpers::TestHelper;

    void HandleOperatorChanged(std::shared_ptr<ChangedEventArgs> args);
    void InitializeRunRecordSettings();
    void CacheLastRunRecordInputData();
    void ClearLastRunCache();
    // After an archive load results name their tools by id only; this ties them to live tools.
    static void UpdateToolsInResults(DLResult& result, DLWorkspace const& workspace);

    // The bits of LastRunRecordDiagEnable; the region bit has no use in this tool yet.
    static bool WantInputImageRefLastRun(unsigned int flags);
    static bool WantInputImageCpyLastRun(unsigned int flags);
    static bool WantInputImageLastRun(unsigned int flags);
    static bool WantRegionLastRun(unsigned int flags);

    // The options of the reading or writing archive decide whether the input image and the last
    // run's image and result travel; otherwise empty slots stand in their place.
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::shared_ptr<IImage> inputImage_;
    std::shared_ptr<IImage> lastRunInputImage_;
    std::shared_ptr<DLResult> results_;
    std::shared_ptr<DLOperator> operator_;
    Brnt::ScopedConnection operatorConnection_;

    RTTR_ENABLE(ToolBase)
};

using DLRuntimeToolPtr = std::shared_ptr<DLRuntimeTool>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLRuntimeTool, 1)
