#include "engine/DeepLearningAccess.h"

#include <algorithm>
#include <atomic>
#include <vector>

#include <Vision/Core/Platform.h>

#include "Vision/DeepLearning/DLOperator.h"
#include "Vision/DeepLearning/DLWorkspace.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/EngineFunctionTable.h"
#include "engine/ProcessState.h"

namespace Tavrin::Vision::DeepLearning::Private {

ProcessState::~ProcessState() {
    if (!table)
        return;
    // Clone lists go first, so that masters dropped with the open files find nothing left to
    // close, while the access object is still there for their destructors to ask.
    table->CloneLists.clear();
    std::map<std::string, MasterEntry> openFiles;
    openFiles.swap(table->OpenFiles);
}

ProcessState& State() {
    static ProcessState state;
    return state;
}

EngineFunctionTable& Engine() { return *State().table; }

std::string FormatEngineError(int status, char const* prefix, EngineBuffer& buffer) {
    Engine().kelo_get_error_message(status, &buffer);
    return std::string(prefix) + ": " + (buffer.text ? buffer.text : "");
}

DeepLearningAccess::DeepLearningAccess(ObjectCreateAccessToken const&) {
    ProcessState& state = State();
    state.table = std::make_unique<EngineFunctionTable>();
    LoadEngine(*state.table);
}

DeepLearningAccess::~DeepLearningAccess() = default;

std::shared_ptr<DeepLearningAccess> DeepLearningAccess::Instance() {
    ProcessState& state = State();
    if (state.published.load(std::memory_order_acquire))
        return state.instance;
    std::lock_guard<std::mutex> lock(state.instanceMutex);
    if (!state.instance) {
        state.instance = Brnt::ObjectFactory::Create<DeepLearningAccess>();
        state.published.store(true, std::memory_order_release);
    }
    return state.instance;
}

std::string DeepLearningAccess::FormatEngineError(int status, char const* prefix) {
    return Private::FormatEngineError(status, prefix, accessBuffer_->buffer);
}

void DeepLearningAccess::ThrowIfFailed(int status, DeepLearningExceptionCodes code,
                                       char const* prefix) {
    if (status != 0)
        throw DeepLearningException(code, FormatEngineError(status, prefix));
}

void DeepLearningAccess::InitBuffer() {
    if (accessBuffer_)
        return;
    InitKelo();
    accessBuffer_ = std::make_shared<EngineAccessBuffer>();
    if (Engine().kelo_init_buffer(&accessBuffer_->buffer) != 0)
        throw DeepLearningInitializeException(DeepLearningExceptionCodes::CannotInitializeBuffer,
                                              ExceptionTexts::CannotInitializeBuffer);
}

namespace {

// The start's own buffer, released on every way out so a failed start leaves nothing taken.
class StartBuffer {
public:
    explicit StartBuffer(EngineFunctionTable& engine) : engine_(engine) {}
    ~StartBuffer() {
        if (held_)
            engine_.kelo_free_buffer(&buffer_);
    }
    int Init() {
        int const status = engine_.kelo_init_buffer(&buffer_);
        held_ = status == 0;
        return status;
    }
    int Free() {
        held_ = false;
        return engine_.kelo_free_buffer(&buffer_);
    }
    EngineBuffer& Buffer() { return buffer_; }

private:
    EngineFunctionTable& engine_;
    EngineBuffer buffer_{};
    bool held_ = false;
};

[[noreturn]] void ThrowStartFailure(DeepLearningExceptionCodes code, std::string const& message) {
    throw DeepLearningInitializeException(code, message);
}

} // namespace

void DeepLearningAccess::InitKelo() {
    EngineFunctionTable& engine = Engine();
    if (engine.engineInitialized.load(std::memory_order_acquire))
        return;
    std::lock_guard<std::mutex> lock(State().instanceMutex);
    if (engine.engineInitialized.load(std::memory_order_relaxed))
        return;

    if (engine.kelo_debug_infos(0, "") != 0)
        ThrowStartFailure(DeepLearningExceptionCodes::CannotSetupDebugInfos,
                          ExceptionTexts::CannotSetupDebugInfos);
    StartBuffer local(engine);
    if (local.Init() != 0)
        ThrowStartFailure(DeepLearningExceptionCodes::CannotInitializeBuffer,
                          ExceptionTexts::CannotInitializeBuffer);
    if (int const status = engine.kelo_initialize(0, ""); status != 0)
        ThrowStartFailure(DeepLearningExceptionCodes::CannotInitialize,
                          Private::FormatEngineError(status, ExceptionTexts::CannotInitialize,
                                                     local.Buffer()));
    if (tsys_shutdown_registerEarly(&DeepLearningAccess::Disconnect, nullptr) < 0)
        ThrowStartFailure(DeepLearningExceptionCodes::CannotInitialize,
                          ExceptionTexts::CannotRegisterShutdown);
    if (int const status = local.Free(); status != 0) {
        engine.kelo_get_error_message(status, &local.Buffer());
        // The access buffer carries the text once it exists; on the very first start only the
        // start's own buffer has one.
        EngineBuffer const& source = accessBuffer_ ? accessBuffer_->buffer : local.Buffer();
        throw DeepLearningException(DeepLearningExceptionCodes::CannotDeinitializeBuffer,
                                    std::string(ExceptionTexts::CannotDeinitializeBuffer) + ": " +
                                        (source.text ? source.text : ""));
    }
    engine.engineInitialized.store(true, std::memory_order_release);
}

void DeepLearningAccess::DeinitKelo() {
    try {
        Engine().kelo_deinitialize();
    } catch (...) {
        // Shutdown goes on whatever the engine says.
    }
}

long DeepLearningAccess::Disconnect(void*) {
    try {
        Instance()->DeinitKelo();
    } catch (...) {
        // Runs at process exit, where nothing may escape.
    }
    return 0;
}

namespace {

// Operators are made and dropped on the host's threads, each changing the list of subscribers.
std::mutex& SubscribersMutex() {
    static std::mutex mutex;
    return mutex;
}

bool IsSubscribed(DLOperator* op) {
    std::lock_guard<std::mutex> lock(SubscribersMutex());
    auto const& subscribers = State().ShutdownSubscribers;
    return std::find(subscribers.begin(), subscribers.end(), op) != subscribers.end();
}

} // namespace

void DeepLearningAccess::SubscribeOnShutdown(DLOperator* op) {
    {
        std::lock_guard<std::mutex> lock(SubscribersMutex());
        State().ShutdownSubscribers.push_back(op);
    }
    tsys_shutdown_registerEarly(&DeepLearningAccess::OperatorShutdownHook, op);
}

void DeepLearningAccess::UnsubscribeOnShutDown(DLOperator* op) {
    std::lock_guard<std::mutex> lock(SubscribersMutex());
    auto& subscribers = State().ShutdownSubscribers;
    auto found = std::find(subscribers.begin(), subscribers.end(), op);
    if (found != subscribers.end())
        subscribers.erase(found);
}

long DeepLearningAccess::OperatorShutdownHook(void* context) {
    auto* op = static_cast<DLOperator*>(context);
    // The platform keeps the registration of an operator that has gone; the list tells.
    if (!IsSubscribed(op))
        return 0;
    try {
        op->setWorkspace(nullptr);
    } catch (...) {
        // Runs at process exit, where nothing may escape.
    }
    UnsubscribeOnShutDown(op);
    return 0;
}

} // namespace Tavrin::Vision::DeepLearning::Private
