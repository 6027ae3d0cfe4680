#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DeepLearningAccessTestPeer.h"
#include "TestEngineControl.h"

// Every test starts from an empty test engine and an empty call log.
class EngineTest : public ::testing::Test {
protected:
    void SetUp() override { testkelo_reset(); }
    void TearDown() override { testkelo_reset(); }

    static std::vector<std::string> Calls() { return TestKelo::LoggedCalls(); }
};
