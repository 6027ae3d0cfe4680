#include "Vision/Core/RunStatus.h"

#include "Vision/Core/Registration.h"

namespace Tavrin::Vision::Implementation {

RunStatus::RunStatus(ObjectCreateAccessToken const&, ToolResultConstants result,
                     std::string message, double processingTime,
                     std::shared_ptr<Brnt::IException> exception)
    : result_(result)
    , message_(std::move(message))
    , processingTime_(processingTime)
    , exception_(std::move(exception)) {}

std::string RunStatus::ToString() const {
    std::string const name =
        rttr::type::get<ToolResultConstants>().get_enumeration().value_to_name(result_).to_string();
    return message_.empty() ? name : name + ": " + message_;
}

template <class Archive> void RunStatus::serialize(Archive& archive, unsigned int version) {
    CheckLoadedVersion<Archive>(version, 1, "RunStatus::serialize()");
    archive(cereal::virtual_base_class<ShareableBase>(this), result_, message_, processingTime_);
}

TAVRIN_INSTANTIATE_SERIALIZE(RunStatus)

} // namespace Tavrin::Vision::Implementation

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Implementation::RunStatus,
                               "Tavrin::Vision::Implementation::RunStatus")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRunStatus,
                                     Tavrin::Vision::Implementation::RunStatus)

TAVRIN_REGISTRATION(RunStatus) {
    using namespace Tavrin::Vision;
    rttr::registration::enumeration<ToolResultConstants>("Tavrin::Vision::ToolResultConstants")(
        rttr::value("Accept", ToolResultConstants_Accept),
        rttr::value("Warning", ToolResultConstants_Warning),
        rttr::value("Reject", ToolResultConstants_Reject),
        rttr::value("Error", ToolResultConstants_Error),
        rttr::value("NotRun", ToolResultConstants_NotRun));
    rttr::registration::class_<IRunStatus>("Tavrin::Vision::IRunStatus")
        .property_readonly("Result", &IRunStatus::Result)
        .property_readonly("Message", &IRunStatus::Message)
        .property_readonly("ProcessingTime", &IRunStatus::ProcessingTime);
    rttr::registration::class_<Implementation::RunStatus>(
        "Tavrin::Vision::Implementation::RunStatus");
}
