#include <algorithm>

#include "EngineTest.h"
#include "ToolTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "WorkspaceFiles.h"

namespace ParameterExchangeTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Peer = Private::DeepLearningAccessTestPeer;

char const* const File = "/workspaces/parameters.kelo";
char const* const Filter = "post_process_parameters/red/region_filter";

class ParameterExchange : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        WorkspaceFiles::AddSingleToolFile(File);
        WorkspaceFiles::AddQuickRedTool(File, "main", "quick", "child", "child-uuid");
        workspace_ = Peer::OpenWorkspace(File);
        tool_ = Tool(workspace_, "quick-uuid");
        testkelo_clear_log();
    }
    void TearDown() override {
        tool_.reset();
        workspace_.reset();
        EngineTest::TearDown();
    }

    static std::shared_ptr<DLToolRuntimeParams> Tool(std::shared_ptr<DLWorkspace> const& workspace,
                                                     char const* uuid) {
        return Private::DeepLearningAccess::FindTool(*workspace, uuid);
    }
    std::string Key(char const* path) const { return workspace_->Name() + "/main/quick/" + path; }
    // One argument of each logged write of the region filter.
    static std::vector<std::string> FilterWrites(std::size_t argument) {
        std::vector<std::string> values;
        for (auto const& call : TestKelo::LoggedCalls()) {
            if (call.rfind("kelo_runtime_tool_set_parameter(", 0) != 0)
                continue;
            auto const arguments = WorkspaceFiles::Arguments(call);
            if (arguments[3] == Filter)
                values.push_back(arguments[argument]);
        }
        return values;
    }
    static int Reads() { return testkelo_call_count("kelo_runtime_tool_get_parameter"); }
    static int Writes() { return testkelo_call_count("kelo_runtime_tool_set_parameter"); }

    std::shared_ptr<DLWorkspace> workspace_;
    std::shared_ptr<DLToolRuntimeParams> tool_;
};

TEST_F(ParameterExchange, ReadsReachTheEngineUntilAWriteIsCached) {
    Peer::GetParameter(tool_, Filter);
    Peer::GetParameter(tool_, Filter);
    EXPECT_EQ(Reads(), 2);
    // The engine's own value is neither written nor cached.
    Peer::SetParameter(tool_, Filter, "");
    EXPECT_EQ(Writes(), 0);
    EXPECT_EQ(Peer::ParameterCache().count(Key(Filter)), 0u);

    Peer::SetParameter(tool_, Filter, "area>5");
    EXPECT_EQ(Peer::ParameterCache().at(Key(Filter)), "area>5");
    EXPECT_EQ(testkelo_parameter(workspace_->Name().c_str(), "main", "quick", Filter),
              std::string("area>5"));
    testkelo_clear_log();
    EXPECT_EQ(Peer::GetParameter(tool_, Filter), "area>5");
    Peer::SetParameter(tool_, Filter, "area>5");
    EXPECT_EQ(Reads(), 0);
    EXPECT_EQ(Writes(), 0);
}

TEST_F(ParameterExchange, ARefusedWriteKeepsItsValueCached) {
    testkelo_fail("kelo_runtime_tool_set_parameter", 1, 5, "value refused");
    EXPECT_THROW(Peer::SetParameter(tool_, Filter, "bad"), DeepLearningException);
    EXPECT_EQ(Peer::ParameterCache().at(Key(Filter)), "bad");
    Peer::SetParameter(tool_, Filter, "bad");
    EXPECT_EQ(Writes(), 1);
}

TEST_F(ParameterExchange, ClonesOfOneFileEachPushTheirOwnValues) {
    auto other = Peer::OpenWorkspace(File);
    auto otherTool = Tool(other, "quick-uuid");
    auto mine = std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(tool_);
    auto theirs = std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(otherTool);
    mine->setRegionFilter("mine");
    theirs->setRegionFilter("theirs");

    Peer::ApplyRuntimeParametersRecursively(tool_);
    Peer::ApplyRuntimeParametersRecursively(otherTool);
    Peer::ApplyRuntimeParametersRecursively(tool_);
    EXPECT_EQ(testkelo_parameter(workspace_->Name().c_str(), "main", "quick", Filter),
              std::string("mine"));
    EXPECT_EQ(FilterWrites(4), (std::vector<std::string>{"mine", "theirs", "mine"}));
}

TEST_F(ParameterExchange, ARedToolReadsItsThresholdBackFromTheEngineOnlyWhileUncached) {
    char const* const Threshold = "post_process_parameters/red/threshold";
    auto thresholdReads = [&] {
        auto const reads = ToolTest::Reads("quick");
        testkelo_clear_log();
        return std::count(reads.begin(), reads.end(), Threshold);
    };
    // The engine's own text: compared, nothing written, and read back.
    Peer::ApplyRuntimeParametersRecursively(tool_);
    EXPECT_EQ(thresholdReads(), 2);
    // A new text: compared and written; the read-back finds it cached.
    std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(tool_)->setUpperThreshold(0.8);
    Peer::ApplyRuntimeParametersRecursively(tool_);
    EXPECT_EQ(thresholdReads(), 1);
    Peer::ApplyRuntimeParametersRecursively(tool_);
    EXPECT_EQ(thresholdReads(), 0);
}

TEST_F(ParameterExchange, AParentIsWrittenBeforeItsChildren) {
    auto child = Tool(workspace_, "child-uuid");
    std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(child)->setRegionFilter("child");
    std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(tool_)->setRegionFilter("parent");
    Peer::ApplyRuntimeParametersRecursively(tool_);
    EXPECT_EQ(FilterWrites(2), (std::vector<std::string>{"quick", "child"}));
}

} // namespace

} // namespace ParameterExchangeTesting
