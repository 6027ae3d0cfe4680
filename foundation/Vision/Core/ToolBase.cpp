#include "Vision/Core/ToolBase.h"

#include <chrono>
#include <sstream>

#include "Vision/Core/Registration.h"

namespace Tavrin::Vision::Implementation {

const long long ToolBase::sf0_;
const long long ToolBase::SfEnabled;
const long long ToolBase::SfCurrentRecord;
const long long ToolBase::SfLastRunRecord;
const long long ToolBase::SfRunStatus;
const long long ToolBase::SfCurrentRecordEnable;
const long long ToolBase::SfLastRunRecordEnable;
const long long ToolBase::sfNextSf_;

namespace {

std::shared_ptr<ToolPinTrackingCollection> NewPins() {
    return Brnt::CreateObject<ToolPinTrackingCollection>();
}

double MillisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

} // namespace

ToolBase::ToolBase()
    : runStatus_(Brnt::CreateObject<Implementation::RunStatus>())
    , inputs_(NewPins())
    , outputs_(NewPins()) {}

ToolBase::ToolBase(ObjectCreateAccessToken const& token)
    : ToolBase(token, std::string()) {}

ToolBase::ToolBase(ObjectCreateAccessToken const& token, std::string const& name)
    : TrackedItemBase(token, name)
    , runStatus_(Brnt::CreateObject<Implementation::RunStatus>())
    , inputs_(NewPins())
    , outputs_(NewPins()) {}

void ToolBase::setEnabled(bool enabled) {
    if (enabled == enabled_)
        return;
    enabled_ = enabled;
    OnChanged_(SfEnabled);
}

void ToolBase::setCurrentRecordEnable(unsigned int flags) {
    if (flags == currentRecordEnable_)
        return;
    currentRecordEnable_ = flags;
    OnChanged_(SfCurrentRecordEnable);
}

void ToolBase::setLastRunRecordEnable(unsigned int flags) {
    if (flags == lastRunRecordEnable_)
        return;
    lastRunRecordEnable_ = flags;
    OnChanged_(SfLastRunRecordEnable);
}

void ToolBase::Run() {
    if (!RunConditionsHold()) {
        runStatus_ = Brnt::CreateObject<Implementation::RunStatus>(
            ToolResultConstants_NotRun, "The run conditions of the tool do not hold", 0.0, nullptr);
        OnChanged_(SfRunStatus);
        return;
    }
    OnRunning();
    running_.Raise();
    std::string message;
    auto const start = std::chrono::steady_clock::now();
    try {
        ToolResultConstants const result = InternalRun(message);
        Finish(result, message, nullptr, MillisecondsSince(start));
    } catch (VisionException const& failure) {
        Finish(ToolResultConstants_Error, failure.Message(), failure.CloneException(),
               MillisecondsSince(start));
        throw;
    } catch (std::exception const& failure) {
        Finish(ToolResultConstants_Error, failure.what(), nullptr, MillisecondsSince(start));
        throw;
    }
}

void ToolBase::Finish(ToolResultConstants result, std::string const& message,
                      std::shared_ptr<Brnt::IException> exception, double milliseconds) {
    runStatus_ = Brnt::CreateObject<Implementation::RunStatus>(result, message, milliseconds,
                                                               std::move(exception));
    OnRan();
    ran_.Raise();
    OnChanged_(SfRunStatus);
}

bool ToolBase::RunConditionsHold() const {
    if (IsCheckRunConditionsDelegateToOwner()) {
        if (auto const owner = std::dynamic_pointer_cast<ITool>(Parent()))
            return owner->CheckRunConditionsSelf();
    }
    return CheckRunConditionsSelf();
}

std::shared_ptr<Record> ToolBase::CreateRootRecord() const {
    return Brnt::CreateObject<Record>(Name(), get_type(), RecordUsageConstants_Tool, false,
                                      rttr::variant(), std::string());
}

std::shared_ptr<Record> ToolBase::CreateCurrentRecord() {
    auto record = CreateRootRecord();
    InternalCreateCurrentRecord(record, currentRecordEnable_);
    return record;
}

std::shared_ptr<Record> ToolBase::CreateLastRunRecord() {
    auto record = CreateRootRecord();
    InternalCreateLastRunRecord(record, lastRunRecordEnable_, lastRunRecordDiagEnable_);
    return record;
}

void ToolBase::InternalCreateCurrentRecord(std::shared_ptr<Record>, unsigned int) {}

void ToolBase::InternalCreateLastRunRecord(std::shared_ptr<Record>, unsigned int, unsigned int) {}

std::shared_ptr<ITool> ToolBase::CopyBase(ToolCopyModeConstants mode) {
    auto const options = static_cast<SerializerOptionsConstants>(mode);
    std::shared_ptr<ITool> const original = SharedFromThisAs<ITool>();
    std::stringstream stream;
    {
        VisionBinaryOutputArchive out(stream, options);
        out(original);
    }
    std::shared_ptr<ITool> copy;
    VisionBinaryInputArchive in(stream, options);
    in(copy);
    copy->ReGuid();
    return copy;
}

void ToolBase::FinalConstruct() {
    AdoptPins();
    OnFinalConstruct();
}

void ToolBase::AdoptPins() {
    std::shared_ptr<Brnt::IObject> const self = weak_from_this().lock();
    inputs_->setOwner(self);
    outputs_->setOwner(self);
}

template <class Archive> void ToolBase::serialize(Archive& archive, unsigned int version) {
    CheckLoadedVersion<Archive>(version, 1, "ToolBase::serialize()");
    archive(cereal::base_class<TrackedItemBase>(this), enabled_, currentRecordEnable_,
            lastRunRecordEnable_, lastRunRecordDiagEnable_, runStatus_, inputs_, outputs_);
    if constexpr (Archive::is_loading::value) {
        // Every tool is made with both pin collections; an archive without one is damaged.
        if (!inputs_ || !outputs_)
            throw SerializationException("ToolBase::serialize(): the archive holds no pins");
        AdoptPins();
    }
}

TAVRIN_INSTANTIATE_SERIALIZE(ToolBase)

} // namespace Tavrin::Vision::Implementation

CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::ITool,
                                     Tavrin::Vision::Implementation::ToolBase)

TAVRIN_REGISTRATION(ToolBase) {
    using namespace Tavrin::Vision;
    using Implementation::ToolBase;
    rttr::registration::enumeration<ToolCopyModeConstants>("Tavrin::Vision::ToolCopyModeConstants")(
        rttr::value("Settings", ToolCopyModeConstants_Settings),
        rttr::value("LastRunData", ToolCopyModeConstants_LastRunData),
        rttr::value("CurrentInputs", ToolCopyModeConstants_CurrentInputs),
        rttr::value("All", ToolCopyModeConstants_All));
    rttr::registration::class_<ITool>("Tavrin::Vision::ITool")
        .property("Enabled", &ITool::Enabled, &ITool::setEnabled)
        .property_readonly("RunStatus", &ITool::RunStatus)
        .property_readonly("Inputs", &ITool::Inputs)
        .property_readonly("Outputs", &ITool::Outputs)
        .method("Run", &ITool::Run)
        .method("CreateCurrentRecord", &ITool::CreateCurrentRecord)
        .method("CreateLastRunRecord", &ITool::CreateLastRunRecord);
    rttr::registration::class_<ToolBase>("Tavrin::Vision::Implementation::ToolBase")
        .property("CurrentRecordEnable", &ToolBase::CurrentRecordEnable,
                  &ToolBase::setCurrentRecordEnable)
        .property("LastRunRecordEnable", &ToolBase::LastRunRecordEnable,
                  &ToolBase::setLastRunRecordEnable)
        .property_readonly("SfEnabled", &ToolBase::SfEnabled)
        .property_readonly("SfCurrentRecord", &ToolBase::SfCurrentRecord)
        .property_readonly("SfLastRunRecord", &ToolBase::SfLastRunRecord)
        .property_readonly("SfRunStatus", &ToolBase::SfRunStatus)
        .property_readonly("SfCurrentRecordEnable", &ToolBase::SfCurrentRecordEnable)
        .property_readonly("SfLastRunRecordEnable", &ToolBase::SfLastRunRecordEnable);
}
