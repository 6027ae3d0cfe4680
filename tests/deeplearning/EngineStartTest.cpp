#include <future>
#include <stdexcept>
#include <thread>

#include <Vision/Core/Platform.h>

#include "EngineTest.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"

namespace {

using Tavrin::Vision::DeepLearning::DeepLearningException;
using Tavrin::Vision::DeepLearning::DeepLearningExceptionCodes;
using Tavrin::Vision::DeepLearning::DeepLearningInitializeException;
using Tavrin::Vision::DeepLearning::Private::DeepLearningAccess;
using Peer = Tavrin::Vision::DeepLearning::Private::DeepLearningAccessTestPeer;
using CallList = std::vector<std::string>;

CallList const StartCalls = {"kelo_debug_infos(0,)", "kelo_init_buffer()", "kelo_initialize(0,)",
                             "kelo_free_buffer()", "kelo_init_buffer()"};

class EngineStart : public EngineTest {};

TEST_F(EngineStart, LoadingCallsNothingAndTheStartRunsOnceInItsOrder) {
    DeepLearningAccess::Instance();
    EXPECT_TRUE(Calls().empty());

    Peer::InitBuffer();
    EXPECT_EQ(Calls(), StartCalls);
    EXPECT_EQ(testkelo_count(TESTKELO_BUFFERS), 1);

    testkelo_clear_log();
    Peer::InitBuffer();
    EXPECT_TRUE(Calls().empty());
}

TEST_F(EngineStart, ConcurrentFirstCallsBuildOneAccessObject) {
    std::promise<void> go;
    std::shared_future<void> start = go.get_future().share();
    auto ask = [start] {
        start.wait();
        return DeepLearningAccess::Instance();
    };
    auto first = std::async(std::launch::async, ask);
    auto second = std::async(std::launch::async, ask);
    go.set_value();
    EXPECT_EQ(first.get(), second.get());
}

struct StartFailure {
    char const* entryPoint;
    int nthCall;
    bool initializeClass;
    DeepLearningExceptionCodes code;
    char const* message;
    int buffersLeft; // a refused release leaves the buffer with the engine
};

class EngineStartFailure : public EngineTest, public ::testing::WithParamInterface<StartFailure> {};

TEST_P(EngineStartFailure, ReportsItsClassCodeAndTextAndReleasesWhatItTook) {
    StartFailure const& failure = GetParam();
    testkelo_fail(failure.entryPoint, failure.nthCall, 7, "engine says no");
    try {
        Peer::InitBuffer();
        FAIL() << "the start went through";
    } catch (DeepLearningException const& e) {
        EXPECT_EQ(dynamic_cast<DeepLearningInitializeException const*>(&e) != nullptr,
                  failure.initializeClass);
        EXPECT_EQ(e.Code(), static_cast<int>(failure.code));
        EXPECT_EQ(e.Message(), failure.message);
    }
    EXPECT_EQ(testkelo_count(TESTKELO_BUFFERS), failure.buffersLeft);
}

INSTANTIATE_TEST_SUITE_P(
    EachStep, EngineStartFailure,
    ::testing::Values(
        StartFailure{"kelo_debug_infos", 1, true, DeepLearningExceptionCodes::CannotSetupDebugInfos,
                     "Cannot setup Solvarine Deep Learning debug infos", 0},
        StartFailure{"kelo_init_buffer", 1, true,
                     DeepLearningExceptionCodes::CannotInitializeBuffer,
                     "Could not initialize Solvarine Deep Learning buffer", 0},
        StartFailure{"kelo_initialize", 1, true, DeepLearningExceptionCodes::CannotInitialize,
                     "Could not initialize Solvarine Deep Learning: engine says no", 0},
        StartFailure{"kelo_free_buffer", 1, false,
                     DeepLearningExceptionCodes::CannotDeinitializeBuffer,
                     "Failed to de-initialize buffer: engine says no", 1}));

TEST_F(EngineStart, AFailedStartRunsAgainFromTheBeginning) {
    testkelo_fail("kelo_initialize", 1, 7, "no device");
    EXPECT_THROW(Peer::InitBuffer(), DeepLearningInitializeException);

    testkelo_clear_log();
    Peer::InitBuffer();
    EXPECT_EQ(Calls(), StartCalls);
}

TEST_F(EngineStart, ShutdownDeinitializesAndSwallowsEngineFailures) {
    Peer::InitBuffer();
    testkelo_clear_log();
    testkelo_throw("kelo_deinitialize", 1, "engine crashed");
    EXPECT_EQ(Peer::Disconnect(), 0);

    tsys_shutdown_runEarly();
    EXPECT_EQ(Calls(), (CallList{"kelo_deinitialize()", "kelo_deinitialize()"}));
}

} // namespace
