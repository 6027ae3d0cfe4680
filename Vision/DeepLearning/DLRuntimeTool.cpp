#include "Vision/DeepLearning/DLRuntimeTool.h"

#include <algorithm>
#include <initializer_list>
#include <vector>

#include <Vision/Core/Exceptions.h>

#include "Vision/DeepLearning/DLResultMarking.h"
#include "Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultView.h"
#include "Vision/DeepLearning/DLResultViewReadOnlyCollection.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"
#include "records/RunRecords.h"

namespace Tavrin::Vision::DeepLearning {

const long long DLRuntimeTool::sf0_;
const long long DLRuntimeTool::SfInputImage;
const long long DLRuntimeTool::SfResults;
const long long DLRuntimeTool::SfRedToolResults;
const long long DLRuntimeTool::SfGreenToolResults;
const long long DLRuntimeTool::SfBlueToolResults;
const long long DLRuntimeTool::SfLastRunRecordDiagEnable;
const long long DLRuntimeTool::sfNextSf_;

namespace {

constexpr char InputImagePinName[] = "InputImage";

enum LastRunBits : unsigned int {
    ReferenceBit = 1,
    DeepCopyBit = 2,
    RegionBit = 4,
};

// The views of one family of tools in a result, in marking order, then view order.
template <class Family>
std::vector<std::shared_ptr<Family>>
CollectFamilyViews(DLResult const* result, std::initializer_list<char const*> types,
                   std::shared_ptr<Family> (DLResultView::*typedResult)() const) {
    std::vector<std::shared_ptr<Family>> found;
    if (!result || !result->ResultImage() || !result->ResultImage()->ResultMarking())
        return found;
    for (auto const& marking : *result->ResultImage()->ResultMarking()) {
        auto const tool = marking->Tool();
        if (!tool || !marking->ResultViews() ||
            std::find(types.begin(), types.end(), tool->Type()) == types.end())
            continue;
        for (auto const& view : *marking->ResultViews())
            if (auto typed = ((*view).*typedResult)())
                found.push_back(std::move(typed));
    }
    return found;
}

} // namespace

DLRuntimeTool::DLRuntimeTool(ObjectCreateAccessToken const& token)
    : ToolBase(token)
    , operator_(Brnt::CreateObject<DLOperator>()) {
    InitializeRunRecordSettings();
    Inputs()->Add(Brnt::CreateObject<Vision::Implementation::ToolPin>(InputImagePinName));
}

DLRuntimeTool::DLRuntimeTool() = default;

void DLRuntimeTool::OnFinalConstruct() {
    operatorConnection_ = operator_->ChangedEvent().Connect(shared_from_this(),
                                                            &DLRuntimeTool::HandleOperatorChanged);
}

void DLRuntimeTool::InitializeRunRecordSettings() {
    StoreLastRunRecordDiagEnable(ReferenceBit);
}

void DLRuntimeTool::setInputImage(std::shared_ptr<IImage> image) {
    if (image == inputImage_)
        return;
    inputImage_ = std::move(image);
    OnChanged_(SfInputImage | SfCurrentRecord);
}

DLLastRunRecordConstants DLRuntimeTool::LastRunRecordDiagEnable() const {
    return static_cast<DLLastRunRecordConstants>(ToolBase::LastRunRecordDiagEnable());
}

void DLRuntimeTool::setLastRunRecordDiagEnable(DLLastRunRecordConstants flags) {
    auto const bits = static_cast<unsigned int>(flags);
    if (bits == ToolBase::LastRunRecordDiagEnable())
        return;
    StoreLastRunRecordDiagEnable(bits);
    OnChanged_(SfLastRunRecordDiagEnable);
}

void DLRuntimeTool::LoadWorkspace(std::string const& path) {
    operator_->LoadWorkspace(path);
}

void DLRuntimeTool::HandleOperatorChanged(std::shared_ptr<ChangedEventArgs> args) {
    if (args->Has(DLOperator::SfToolsGraphicsChanged))
        OnChanged_(SfLastRunRecord);
}

ToolResultConstants DLRuntimeTool::InternalRun(std::string&) {
    ClearLastRunCache();
    if (!inputImage_)
        throw OperatorNoInputImageException(ExceptionTexts::InputImageRequired);
    if (!operator_->Stream())
        throw OperatorNotTrainedException(ExceptionTexts::StreamRequired);
    CacheLastRunRecordInputData();
    OnChanged_(SfLastRunRecord);
    results_ = operator_->Execute(*inputImage_);
    for (long long const bit : {SfResults, SfRedToolResults, SfGreenToolResults, SfBlueToolResults})
        OnChanged_(bit);
    return ToolResultConstants_Accept;
}

void DLRuntimeTool::CacheLastRunRecordInputData() {
    unsigned int const flags = ToolBase::LastRunRecordDiagEnable();
    ClearLastRunCache();
    if (!WantInputImageLastRun(flags))
        return;
    // With both bits the reference wins and the copy is made for nothing; hosts that set All
    // get what they always got.
    if (WantInputImageCpyLastRun(flags))
        lastRunInputImage_ = inputImage_->Copy(false);
    if (WantInputImageRefLastRun(flags))
        lastRunInputImage_ = inputImage_;
}

void DLRuntimeTool::ClearLastRunCache() {
    lastRunInputImage_.reset();
}

std::shared_ptr<DLResultRedReadOnlyCollection> DLRuntimeTool::RedToolResults() const {
    return Brnt::CreateObject<DLResultRedReadOnlyCollection>(CollectFamilyViews(
        results_.get(), {"red", "red_sua", "red_quick"}, &DLResultView::ResultRed));
}

std::shared_ptr<DLResultGreenReadOnlyCollection> DLRuntimeTool::GreenToolResults() const {
    return Brnt::CreateObject<DLResultGreenReadOnlyCollection>(CollectFamilyViews(
        results_.get(), {"green", "green_sua", "green_quick"}, &DLResultView::ResultGreen));
}

std::shared_ptr<DLResultBlueReadOnlyCollection> DLRuntimeTool::BlueToolResults() const {
    return Brnt::CreateObject<DLResultBlueReadOnlyCollection>(
        CollectFamilyViews(results_.get(), {"blue", "blue_read"}, &DLResultView::ResultBlue));
}

void DLRuntimeTool::UpdateToolsInResults(DLResult& result, DLWorkspace const& workspace) {
    using Private::DeepLearningAccess;
    if (!result.tool_)
        result.tool_ = DeepLearningAccess::FindTool(workspace, result.toolId_.c_str());
    if (!result.resultImage_ || !result.resultImage_->ResultMarking())
        return;
    // Every marking takes the root's tool, not the one its own id names: reloaded results have
    // always been tied this way.
    auto const rootTool = DeepLearningAccess::FindTool(workspace, result.toolId_.c_str());
    // A damaged archive may hold empty slots in the list; they stay as they are.
    for (auto const& marking : *result.resultImage_->ResultMarking())
        if (marking && !marking->tool_)
            marking->tool_ = rootTool;
}

void DLRuntimeTool::InternalCreateCurrentRecord(std::shared_ptr<Record> record, unsigned int) {
    record->SubRecords()->Add(Records::MakeImageRecord(InputImagePinName, inputImage_));
}

void DLRuntimeTool::InternalCreateLastRunRecord(std::shared_ptr<Record> record, unsigned int,
                                                unsigned int diagFlags) {
    if (!WantInputImageLastRun(diagFlags) || !lastRunInputImage_)
        return;
    auto inputImage = Records::MakeImageRecord(InputImagePinName, lastRunInputImage_);
    if (!results_)
        return;
    auto features = Records::MakeFeaturesRecord(results_);
    Records::AddResultImageRecords(*results_, *record);
    inputImage->SubRecords()->Add(features);
    record->SubRecords()->Add(inputImage);
}

bool DLRuntimeTool::WantInputImageRefLastRun(unsigned int flags) {
    return (flags & ReferenceBit) != 0;
}

bool DLRuntimeTool::WantInputImageCpyLastRun(unsigned int flags) {
    return (flags & DeepCopyBit) != 0;
}

bool DLRuntimeTool::WantInputImageLastRun(unsigned int flags) {
    return (flags & (ReferenceBit | DeepCopyBit)) != 0;
}

bool DLRuntimeTool::WantRegionLastRun(unsigned int flags) {
    return (flags & RegionBit) != 0;
}

template <class Archive> void DLRuntimeTool::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLRuntimeTool::serialize()");
    archive(cereal::base_class<ToolBase>(this));
    auto const options = ArchiveOptions(archive);
    bool const keepsInputImage = (options & SerializerOptionsConstants_CurrentInputImage) != 0;
    bool const keepsLastRun = (options & SerializerOptionsConstants_LastRunData) != 0;
    std::shared_ptr<IImage> droppedInputImage;
    std::shared_ptr<IImage> droppedLastRunInputImage;
    std::shared_ptr<DLResult> droppedResults;
    archive(keepsInputImage ? inputImage_ : droppedInputImage, operator_,
            keepsLastRun ? lastRunInputImage_ : droppedLastRunInputImage,
            keepsLastRun ? results_ : droppedResults);
    if constexpr (Archive::is_loading::value) {
        // Every tool is made with its operator; an archive without one is damaged.
        if (!operator_)
            throw SerializationException(
                "DLRuntimeTool::serialize(): the archive holds no operator");
        auto const workspace = operator_->Workspace();
        if (keepsLastRun && results_ && workspace)
            UpdateToolsInResults(*results_, *workspace);
        OnFinalConstruct();
    }
}

TAVRIN_INSTANTIATE_SERIALIZE(DLRuntimeTool)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLRuntimeTool,
                               "Tavrin::Vision::DeepLearning::DLRuntimeTool")
