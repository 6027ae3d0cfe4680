#include "Vision/DeepLearning/DeepLearningExceptions.h"

namespace Tavrin::Vision::DeepLearning {

DeepLearningException::DeepLearningException(DeepLearningExceptionCodes code,
                                             std::string const& message)
    : ClonableException(static_cast<VisionExceptionCodes>(code), message) {}

DeepLearningException::DeepLearningException(ObjectCreateAccessToken const&,
                                             DeepLearningExceptionCodes code,
                                             std::string const& message)
    : DeepLearningException(code, message) {}

DeepLearningInitializeException::DeepLearningInitializeException(DeepLearningExceptionCodes code,
                                                                 std::string const& message)
    : ClonableException(code, message) {}

DeepLearningInitializeException::DeepLearningInitializeException(ObjectCreateAccessToken const&,
                                                                 DeepLearningExceptionCodes code,
                                                                 std::string const& message)
    : DeepLearningInitializeException(code, message) {}

namespace ExceptionTexts {
char const FailedToLoad[] = "Failed to load Solvarine Deep Learning";
char const CannotLoadFunction[] = "Cannot Load Function";
char const CannotInitializeBuffer[] = "Could not initialize Solvarine Deep Learning buffer";
char const CannotSetupDebugInfos[] = "Cannot setup Solvarine Deep Learning debug infos";
char const CannotInitialize[] = "Could not initialize Solvarine Deep Learning";
char const CannotRegisterShutdown[] = "Could not register a callback method for shutdown";
char const CannotDeinitializeBuffer[] = "Failed to de-initialize buffer";
char const CannotCloseWorkspace[] = "Cannot close Solvarine Deep Learning Workspace";
char const CannotOpenWorkspace[] = "Cannot open Solvarine Deep Learning Workspace";
char const CannotListWorkspaces[] = "Cannot List workspaces";
char const WorkspaceNotFound[] = "The selected workspace cannot be found";
char const CannotListStreams[] = "Failed to list streams";
char const CannotListTools[] = "Failed to list tools";
char const CannotGetParameter[] = "Failed to get tool parameters";
char const CannotSetParameter[] = "Failed to set tool parameters";
char const CannotListModels[] = "Failed to List Models";
char const CannotCreateSample[] = "Failed to Create Sample";
char const CannotAddImage[] = "Failed to Add Image to Sample";
char const CannotRunStream[] = "Failed to Run Solvarine Deep Learning Stream";
char const CannotGetResult[] = "Failed to Get the Execution result";
char const CannotFreeImage[] = "Failed to Free Solvarine Deep Learning Image";
char const CannotParseResult[] = "Failed to Parse result";
char const CannotInitializeImage[] = "Failed to Initialize Solvarine Deep Learning Image";
char const InputImageRequired[] = "Input image is required.";
char const StreamRequired[] = "Need to select a stream to run.";
} // namespace ExceptionTexts

} // namespace Tavrin::Vision::DeepLearning
