#pragma once

#include <string>

#include <Vision/Core/Exceptions.h>

namespace Tavrin::Vision::DeepLearning {

// Numbers are fixed: hosts compare Code() against them.
enum class DeepLearningExceptionCodes : int {
    FailedToLoad = 0,
    CannotLoadFunction = 1,
    CannotInitializeBuffer = 2,
    CannotSetupDebugInfos = 3,
    CannotInitialize = 4,
    CannotDeinitializeBuffer = 5,
    CannotCloseWorkspace = 6,
    CannotOpenWorkspace = 7,
    CannotListWorkspaces = 8,
    WorkspaceNotFound = 9,
    CannotListStreams = 10,
    CannotListTools = 11,
    CannotGetParameter = 12,
    CannotSetParameter = 13,
    CannotListModels = 14,
    CannotCreateSample = 15,
    CannotAddImage = 16,
    CannotRunStream = 17,
    CannotGetResult = 18,
    CannotFreeImage = 19,
    CannotParseResult = 20,
    CannotInitializeImage = 21,
};

class DeepLearningException : public ClonableException<DeepLearningException, VisionException> {
public:
    DeepLearningException(DeepLearningExceptionCodes code, std::string const& message);
    DeepLearningException(ObjectCreateAccessToken const&, DeepLearningExceptionCodes code,
                          std::string const& message);

    RTTR_ENABLE(VisionException)
};

class DeepLearningInitializeException
    : public ClonableException<DeepLearningInitializeException, DeepLearningException> {
public:
    DeepLearningInitializeException(DeepLearningExceptionCodes code, std::string const& message);
    DeepLearningInitializeException(ObjectCreateAccessToken const&, DeepLearningExceptionCodes code,
                                    std::string const& message);

    RTTR_ENABLE(DeepLearningException)
};

// The fixed texts of the engine failures.
namespace ExceptionTexts {
extern char const FailedToLoad[];
extern char const CannotLoadFunction[];
extern char const CannotInitializeBuffer[];
extern char const CannotSetupDebugInfos[];
extern char const CannotInitialize[];
extern char const CannotRegisterShutdown[];
extern char const CannotDeinitializeBuffer[];
extern char const CannotCloseWorkspace[];
extern char const CannotOpenWorkspace[];
extern char const CannotListWorkspaces[];
extern char const WorkspaceNotFound[];
extern char const CannotListStreams[];
extern char const CannotListTools[];
extern char const CannotGetParameter[];
extern char const CannotSetParameter[];
extern char const CannotListModels[];
extern char const CannotCreateSample[];
extern char const CannotAddImage[];
extern char const CannotRunStream[];
extern char const CannotGetResult[];
extern char const CannotFreeImage[];
extern char const CannotParseResult[];
extern char const CannotInitializeImage[];
extern char const InputImageRequired[];
extern char const StreamRequired[];
} // namespace ExceptionTexts

} // namespace Tavrin::Vision::DeepLearning
