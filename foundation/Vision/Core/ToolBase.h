#pragma once

#include <memory>
#include <string>

#include "Vision/Core/Record.h"
#include "Vision/Core/RunStatus.h"
#include "Vision/Core/ToolConstants.h"
#include "Vision/Core/ToolPin.h"
#include "Vision/Core/TrackedItemBase.h"

namespace Tavrin::Vision {

class ITool : public virtual Implementation::ITrackingCollectionTrackedItem {
public:
    virtual bool Enabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual std::shared_ptr<IRunStatus> RunStatus() const = 0;
    virtual void Run() = 0;
    virtual Brnt::Event<>& RunningEvent() = 0;
    virtual Brnt::Event<>& RanEvent() = 0;
    virtual std::shared_ptr<Record> CreateCurrentRecord() = 0;
    virtual std::shared_ptr<Record> CreateLastRunRecord() = 0;
    virtual std::shared_ptr<ITool> CopyBase(ToolCopyModeConstants mode) = 0;
    virtual bool CheckRunConditionsSelf() const = 0;
    virtual bool IsCheckRunConditionsDelegateToOwner() const = 0;
    virtual std::shared_ptr<Implementation::ToolPinTrackingCollection> Inputs() = 0;
    virtual std::shared_ptr<Implementation::ToolPinTrackingCollection> Outputs() = 0;

    RTTR_ENABLE(ITrackingCollectionTrackedItem)
};

namespace Implementation {

// The base of every tool.
//
// Run: when the run conditions hold (CheckRunConditionsSelf, or the owning tool's when the tool
// delegates to its owner), OnRunning and RunningEvent, then InternalRun, then OnRan and RanEvent,
// then a new RunStatus with the result, the message and the time taken, and SfRunStatus. An
// exception out of InternalRun gives the status ToolResultConstants_Error with the exception's
// text, still runs OnRan and RanEvent, and then goes on to the caller. When the conditions do not
// hold, nothing runs and the status is ToolResultConstants_NotRun.
//
// Records: CreateCurrentRecord and CreateLastRunRecord make a root record keyed by the tool's
// name, of the tool's type and usage RecordUsageConstants_Tool, and hand it to the matching
// InternalCreate... with the tool's flag words, whose bits each tool chooses. The diagnostic flag
// word has no setter here: a derived tool offers it under its own name and change bit.
//
// Change bits below 128 are this class's; a derived tool numbers its own from sfNextSf_.
// SfCurrentRecord and SfLastRunRecord say that what the matching record would show has changed;
// a derived tool raises them together with the bit of the property that caused it.
//
// FinalConstruct, run by the object factory once the tool is shared, makes the tool the parent of
// its pins, then runs OnFinalConstruct of the most derived class. A load sets the pins' parent
// again but leaves OnFinalConstruct to the derived class's own load.
class ToolBase : public TrackedItemBase, public virtual ITool {
public:
    static const long long sf0_ = TrackedItemBase::sfNextSf_;
    static const long long SfEnabled = sf0_;
    static const long long SfCurrentRecord = sf0_ << 1;
    static const long long SfLastRunRecord = sf0_ << 2;
    static const long long SfRunStatus = sf0_ << 3;
    static const long long SfCurrentRecordEnable = sf0_ << 4;
    static const long long SfLastRunRecordEnable = sf0_ << 5;
    static const long long sfNextSf_ = sf0_ << 6;

    explicit ToolBase(ObjectCreateAccessToken const& token);
    ToolBase(ObjectCreateAccessToken const& token, std::string const& name);

    bool Enabled() const override { return enabled_; }
    void setEnabled(bool enabled) override;
    std::shared_ptr<IRunStatus> RunStatus() const override { return runStatus_; }
    void Run() override;
    Brnt::Event<>& RunningEvent() override { return running_; }
    Brnt::Event<>& RanEvent() override { return ran_; }
    std::shared_ptr<Record> CreateCurrentRecord() override;
    std::shared_ptr<Record> CreateLastRunRecord() override;
    // A deep copy through the archive, with a fresh identity; mode chooses the run data it takes.
    // The tool's class must be registered for the archive.
    std::shared_ptr<ITool> CopyBase(ToolCopyModeConstants mode) override;
    // A tool runs while it is enabled.
    bool CheckRunConditionsSelf() const override { return enabled_; }
    bool IsCheckRunConditionsDelegateToOwner() const override { return false; }
    std::shared_ptr<ToolPinTrackingCollection> Inputs() override { return inputs_; }
    std::shared_ptr<ToolPinTrackingCollection> Outputs() override { return outputs_; }

    unsigned int CurrentRecordEnable() const { return currentRecordEnable_; }
    void setCurrentRecordEnable(unsigned int flags);
    unsigned int LastRunRecordEnable() const { return lastRunRecordEnable_; }
    void setLastRunRecordEnable(unsigned int flags);

protected:
    ToolBase();

    virtual void InternalCreateCurrentRecord(std::shared_ptr<Record> record, unsigned int flags);
    virtual void InternalCreateLastRunRecord(std::shared_ptr<Record> record, unsigned int flags,
                                             unsigned int diagFlags);
    virtual ToolResultConstants InternalRun(std::string& message) = 0;
    virtual void OnRan() {}
    virtual void OnRunning() {}
    virtual void OnFinalConstruct() {}

    unsigned int LastRunRecordDiagEnable() const { return lastRunRecordDiagEnable_; }
    // Stores the word without raising anything; the derived tool raises its own bit.
    void StoreLastRunRecordDiagEnable(unsigned int flags) { lastRunRecordDiagEnable_ = flags; }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS

    void FinalConstruct();
    void AdoptPins();
    bool RunConditionsHold() const;
    void Finish(ToolResultConstants result, std::string const& message,
                std::shared_ptr<Brnt::IException> exception, double milliseconds);
    std::shared_ptr<Record> CreateRootRecord() const;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    bool enabled_ = true;
    unsigned int currentRecordEnable_ = 0;
    unsigned int lastRunRecordEnable_ = 0;
    unsigned int lastRunRecordDiagEnable_ = 0;
    std::shared_ptr<Implementation::RunStatus> runStatus_;
    std::shared_ptr<ToolPinTrackingCollection> inputs_;
    std::shared_ptr<ToolPinTrackingCollection> outputs_;
    Brnt::Event<> running_;
    Brnt::Event<> ran_;

    RTTR_ENABLE(TrackedItemBase, ITool)
};

using ToolBasePtr = std::shared_ptr<ToolBase>;

} // namespace Implementation

using IToolPtr = std::shared_ptr<ITool>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Implementation::ToolBase, 1)
