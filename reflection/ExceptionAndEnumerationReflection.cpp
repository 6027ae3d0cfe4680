#include <Vision/DeepLearning/DeepLearningEnums.h>
#include <Vision/DeepLearning/DeepLearningExceptions.h>

#include "reflection/RegistrationShape.h"

// The exceptions and enumerations keep the header paths that hosts already match on, spelled as
// they always were, lower-case folder and all.
namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

char const ExceptionsHeader[] = "vision/DeepLearning/DeepLearningExceptions";
char const EnumerationsHeader[] = "<vision/DeepLearning/DeepLearningEnums>";

std::string Bracketed(char const* path) {
    return std::string("<") + path + ">";
}

// Its codes are compared as numbers, so no value carries a name.
void RegisterExceptions() {
    DeclareClass<DeepLearningException>(FullName("DeepLearningException"),
                                        {ClassType::BaseClass, Bracketed(ExceptionsHeader), {}})
        .property_readonly("Code", &VisionException::Code)
        .property_readonly("Message", &VisionException::Message);
    DeclareClass<DeepLearningInitializeException>(FullName("DeepLearningInitializeException"),
                                                  {ClassType::Class, ExceptionsHeader, {}});
    RegisterEnumeration<DeepLearningExceptionCodes>("DeepLearningExceptionCodes",
                                                    Bracketed(ExceptionsHeader));
}

void RegisterEnumerations() {
    RegisterEnumeration<DLResultFeatureMetricsType>(
        "DLResultFeatureMetricsType", EnumerationsHeader,
        rttr::value("Total", DLResultFeatureMetricsType::Total),
        rttr::value("Avg", DLResultFeatureMetricsType::Avg),
        rttr::value("Features", DLResultFeatureMetricsType::Features));
    RegisterEnumeration<DLLastRunRecordConstants>(
        "DLLastRunRecordConstants", EnumerationsHeader,
        rttr::metadata(MetadataKey::TypeSubCategory, TypeSubCategory::Constants),
        rttr::value("All", DLLastRunRecordConstants::All),
        rttr::value("InputImageDeepCopy", DLLastRunRecordConstants::InputImageDeepCopy),
        rttr::value("InputImageByReference", DLLastRunRecordConstants::InputImageByReference),
        rttr::value("None", DLLastRunRecordConstants::None));
}

} // namespace
} // namespace Tavrin::Vision::DeepLearning::Reflection

TAVRIN_REGISTRATION(ExceptionAndEnumerationReflection) {
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    RegisterExceptions();
    RegisterEnumerations();
}
