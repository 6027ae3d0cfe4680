#include <future>
#include <utility>

#include <Vision/Core/Platform.h>

#include "EngineTest.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"

namespace EngineStartTesting {

namespace {

using Tavrin::Vision::DeepLearning::DeepLearningException;
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

// What a failed start leaves taken: a refused release leaves the buffer with the engine.
class EngineStartFailure : public EngineTest,
                           public ::testing::WithParamInterface<std::pair<char const*, int>> {};

TEST_P(EngineStartFailure, ReleasesWhatItTook) {
    testkelo_fail(GetParam().first, 1, 7, "engine says no");
    EXPECT_THROW(Peer::InitBuffer(), DeepLearningException);
    EXPECT_EQ(testkelo_count(TESTKELO_BUFFERS), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(EachStep, EngineStartFailure,
                         ::testing::Values(std::pair{"kelo_debug_infos", 0},
                                           std::pair{"kelo_init_buffer", 0},
                                           std::pair{"kelo_initialize", 0},
                                           std::pair{"kelo_free_buffer", 1}));

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

} // namespace EngineStartTesting
