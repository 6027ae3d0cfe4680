// Each test runs in a process of its own, with only the engine variant it names on the
// loader's path (see tests/CMakeLists.txt).
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <future>

#include "Vision/DeepLearning/DLOperator.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/DeepLearningAccess.h"

namespace {

using Tavrin::Vision::DeepLearning::DeepLearningExceptionCodes;
using Tavrin::Vision::DeepLearning::DeepLearningInitializeException;
using Tavrin::Vision::DeepLearning::Private::DeepLearningAccess;

void ExpectLoadFailure(DeepLearningExceptionCodes code, std::string const& message) {
    try {
        DeepLearningAccess::Instance();
        FAIL() << "the engine loaded";
    } catch (DeepLearningInitializeException const& e) {
        EXPECT_EQ(e.Code(), static_cast<int>(code));
        EXPECT_EQ(e.Message(), message);
    }
}

TEST(LoadEngine, EngineAbsent) {
    ExpectLoadFailure(DeepLearningExceptionCodes::FailedToLoad,
                      "Failed to load Solvarine Deep Learning (libkelo_61.so)");
}

TEST(LoadEngine, DebugInfosMissing) {
    ExpectLoadFailure(DeepLearningExceptionCodes::CannotLoadFunction,
                      "Cannot Load Functionlibkelo_61.so: kelo_debug_infos");
}

TEST(LoadEngine, SaveImageMissing) {
    ExpectLoadFailure(DeepLearningExceptionCodes::CannotLoadFunction,
                      "Cannot Load Functionlibkelo_61.so: kelo_save_image");
}

TEST(LoadEngine, FreeImageMissing) {
    ExpectLoadFailure(DeepLearningExceptionCodes::CannotLoadFunction,
                      "Cannot Load Functionlibkelo_61.so: kelo_free_image");
}

TEST(LoadEngine, RetriedFromScratchAfterAFailure) {
    namespace fs = std::filesystem;
    char const* searched = std::getenv("LD_LIBRARY_PATH");
    char const* fullEngine = std::getenv("TAVRIN_FULL_TEST_ENGINE");
    ASSERT_TRUE(searched && fullEngine);
    // The directory must exist from process start: the loader skips for good a directory
    // that was missing when it first looked.
    fs::path const engine = fs::path(searched) / "libkelo_61.so";
    fs::remove(engine);

    ExpectLoadFailure(DeepLearningExceptionCodes::FailedToLoad,
                      "Failed to load Solvarine Deep Learning (libkelo_61.so)");

    fs::create_symlink(fullEngine, engine);
    auto first = DeepLearningAccess::Instance();
    EXPECT_TRUE(first);
    EXPECT_EQ(DeepLearningAccess::Instance(), first);
    fs::remove(engine);
}

TEST(LoadEngine, OperatorHandsTheFailureToItsFirstCallerOnly) {
    // Creation returns although the engine cannot load: the load runs in the background.
    auto op = Tavrin::Brnt::CreateObject<Tavrin::Vision::DeepLearning::DLOperator>();
    EXPECT_THROW(op->LoadWorkspace("/any.kelo"), DeepLearningInitializeException);
    try {
        op->LoadWorkspace("/any.kelo");
        FAIL() << "the second call went through";
    } catch (std::future_error const& e) {
        EXPECT_EQ(e.code(), std::future_errc::no_state);
    }
    EXPECT_EQ(op->Workspace(), nullptr);
}

} // namespace
