#pragma once

#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <unordered_map>

#include <Vision/Core/Object.h>

#include <tinyxml2.h>

#include "engine/EngineRecords.h"

namespace Tavrin::Vision {
class IImage;
class Transform2DLinear;
class Vect2;
} // namespace Tavrin::Vision

namespace Tavrin::Vision::DeepLearning {

class DLWorkspace;
class DLStream;
class DLOperator;
class DLToolRuntimeParams;
class DLStreamReadOnlyCollection;
class DLToolRuntimeParamsReadOnlyCollection;
class DLBlueModelReadOnlyCollection;
class DLResult;
enum class DeepLearningExceptionCodes : int;

namespace Private {

struct EngineFunctionTable;

// The engine failure message: the fixed prefix, ": ", and the engine's text for the status,
// read through the given buffer.
std::string FormatEngineError(int status, char const* prefix, EngineBuffer& buffer);

// The three names by which the engine addresses a tool, borrowed from the objects it holds.
struct ToolAddress {
    std::shared_ptr<DLStream> stream;
    std::shared_ptr<DLWorkspace> workspace;
    char const* workspaceId;
    char const* streamName;
    char const* toolName;
};

// The access object's engine buffer and, behind it, the last value written per parameter key.
struct EngineAccessBuffer {
    EngineBuffer buffer{};
    std::unordered_map<std::string, std::string> ParameterCache;
};

// The one object through which the engine is reached. Engine calls are serialised on the
// recursive access lock; the instance mutex guards creation and the engine's start.
class DeepLearningAccess : public ShareableBase {
public:
    static std::shared_ptr<DeepLearningAccess> Instance();

    static std::shared_ptr<DLToolRuntimeParams> FindTool(DLStream const& stream, char const* id);
    static std::shared_ptr<DLToolRuntimeParams> FindTool(DLWorkspace const& workspace,
                                                         char const* id);
    static std::shared_ptr<DLToolRuntimeParams>
    FindToolRecursively(std::shared_ptr<DLToolRuntimeParams> const& tool, char const* id);

    static std::shared_ptr<DLWorkspace> GetWorkspace(std::string const& id);
    static std::shared_ptr<DLWorkspace> GetWorkspace(DLWorkspace const& workspace);

    // Two reals joined by the delimiter; without the delimiter both come from the whole text.
    static std::shared_ptr<Vect2> ParseVector2(std::string const& text,
                                               std::string const& delimiter);

    // A resource image of the current sample, copied out of the engine; a score map is
    // resampled to the size when one is given. Null for an image of no known kind.
    static std::shared_ptr<IImage> GetResourceImage(std::string const& uuid,
                                                    std::shared_ptr<Vect2> const& size);

    explicit DeepLearningAccess(ObjectCreateAccessToken const&);
    ~DeepLearningAccess() override;

private:
    friend class DeepLearning::DLWorkspace;
    friend class DeepLearning::DLStream;
    friend class DeepLearning::DLOperator;
    friend class DeepLearning::DLToolRuntimeParams;
    friend struct EngineParameters;
    // Test-only peer; defined by the tests alone.
    friend class DeepLearningAccessTestPeer;

    // Turns a failed status into a DeepLearningException with the engine's text behind the
    // prefix; the one way a call site reports an engine failure.
    void ThrowIfFailed(int status, DeepLearningExceptionCodes code, char const* prefix);
    std::string FormatEngineError(int status, char const* prefix);

    void InitBuffer();
    void InitKelo();
    void DeinitKelo();
    static long Disconnect(void*);
    static void SubscribeOnShutdown(DLOperator* op);
    static void UnsubscribeOnShutDown(DLOperator* op);
    static long OperatorShutdownHook(void* op);

    // The cache keys of one tool's parameters, workspace id "/" stream name "/" tool name "/"
    // path. The tool's address is found at the first key and the prefix written once; each key
    // then appends its path to it.
    class ParameterKeys {
    public:
        explicit ParameterKeys(DLToolRuntimeParams const* tool);
        // Serves another tool, or none, and lets go of the previous one's stream and workspace.
        void Reset(DLToolRuntimeParams const* tool);
        bool Serve(DLToolRuntimeParams const& tool) const { return tool_ == &tool; }
        ToolAddress const& Address();
        std::string const& Key(char const* path);

    private:
        DLToolRuntimeParams const* tool_;
        std::optional<ToolAddress> address_;
        std::string key_;
        std::size_t prefixLength_ = 0;
    };

    // The text is the cache's or the access buffer's, good until the next engine call.
    char const* GetParameter(DLToolRuntimeParams const& tool, char const* path);
    // Writes the value unless the parameter holds it already. Tells whether the cache holds the
    // value now: false only when the engine had it and nothing was cached.
    bool SetParameter(DLToolRuntimeParams const& tool, char const* path, char const* value);
    void ApplyRuntimeParametersRecursively(std::shared_ptr<DLToolRuntimeParams> const& tool);
    void PushParametersOf(DLToolRuntimeParams& tool);
    static ToolAddress AddressOf(DLToolRuntimeParams const& tool);
    // Calls use with the keys of the tool: those of the push in progress when it is the tool's,
    // else keys of its own.
    template <class Use> auto WithKeysOf(DLToolRuntimeParams const& tool, Use use);
    char const* ReadParameter(ParameterKeys& keys, char const* path);
    bool WriteParameter(ParameterKeys& keys, char const* path, char const* value);
    char const* ReadEngineParameter(ToolAddress const& address, char const* path);

    std::shared_ptr<DLStreamReadOnlyCollection>
    LoadStreams(std::shared_ptr<DLWorkspace> const& workspace);
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection>
    LoadTools(std::shared_ptr<DLStream> const& stream);
    std::shared_ptr<DLBlueModelReadOnlyCollection>
    LoadModels(std::shared_ptr<DLToolRuntimeParams> const& tool);
    std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection>
    CreateDLToolRuntimeParamsReadOnlyCollection(tinyxml2::XMLElement const& first,
                                                std::shared_ptr<DLStream> stream);

    std::shared_ptr<DLWorkspace> OpenWorkspace(std::string const& path);
    void CloseWorkspace(DLWorkspace const& workspace);
    std::shared_ptr<DLWorkspace> Clone(std::shared_ptr<DLWorkspace> const& master);
    std::shared_ptr<DLWorkspace> LoadWorkspace(std::string const& path, std::string id);
    // Lists the engine's workspaces and builds the master of the one just opened; a failure
    // closes that engine workspace again.
    std::shared_ptr<DLWorkspace> LoadOpenedWorkspace(std::string const& path,
                                                     std::string const& id);

    // Runs the stream on the image and decodes the answer into the image's selected space.
    std::shared_ptr<DLResult> RunKeloStream(IImage const& image, DLStream const& stream);
    void PushRuntimeParameters(DLStream const& stream);
    // The failure of a run step: the engine's text first, then the image record goes.
    [[noreturn]] void ThrowReleasingImage(int status, DeepLearningExceptionCodes code,
                                          char const* prefix, EngineImage& record);
    // Null when the document's tool is none of the stream's. `inverse` maps the engine's pixels
    // into the caller's space.
    std::shared_ptr<DLResult> ParseResultKeloXml(DLStream const& stream, char const* document,
                                                 std::shared_ptr<Transform2DLinear> const& inverse);

    std::shared_ptr<EngineAccessBuffer> accessBuffer_;
    std::recursive_mutex accessLock_;
    // The keys of the tool whose parameters are being pushed; a push builds them once a tool.
    ParameterKeys pushKeys_{nullptr};
    // The run's answer, parsed under the access lock; empty between runs.
    tinyxml2::XMLDocument resultDocument_{true, tinyxml2::PRESERVE_WHITESPACE};
};

} // namespace Private
} // namespace Tavrin::Vision::DeepLearning
