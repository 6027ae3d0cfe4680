#pragma once

#include <memory>
#include <string>

#include "Vision/Core/Archive.h"
#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Object.h"
#include "Vision/Core/ToolConstants.h"

namespace Tavrin::Vision {

class IRunStatus : public virtual Brnt::IObject {
public:
    virtual ToolResultConstants Result() const = 0;
    // What the run reported, or the text of the exception that ended it.
    virtual std::string Message() const = 0;
    // Milliseconds spent in the run.
    virtual double ProcessingTime() const = 0;
    // The exception that ended the run, when it was one of the framework's; not archived.
    virtual std::shared_ptr<Brnt::IException> Exception() const = 0;
    virtual std::string ToString() const = 0;

    RTTR_ENABLE(IObject)
};

namespace Implementation {

// The status of one run. ToolBase makes a new one for each run, so a status kept from an earlier
// run does not change.
class RunStatus : public virtual ShareableBase, public IRunStatus {
public:
    explicit RunStatus(ObjectCreateAccessToken const&) {}
    RunStatus(ObjectCreateAccessToken const&, ToolResultConstants result, std::string message,
              double processingTime, std::shared_ptr<Brnt::IException> exception);

    TAVRIN_SHARED_FROM_THIS(RunStatus)

    ToolResultConstants Result() const override { return result_; }
    std::string Message() const override { return message_; }
    double ProcessingTime() const override { return processingTime_; }
    std::shared_ptr<Brnt::IException> Exception() const override { return exception_; }
    // The result's name, then ": " and the message when there is one: "Error: Input missing".
    std::string ToString() const override;

private:
    RunStatus() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    ToolResultConstants result_ = ToolResultConstants_NotRun;
    std::string message_;
    double processingTime_ = 0;
    std::shared_ptr<Brnt::IException> exception_;

    RTTR_ENABLE(ShareableBase, IRunStatus)
};

using RunStatusPtr = std::shared_ptr<RunStatus>;

} // namespace Implementation

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Implementation::RunStatus, 1)
