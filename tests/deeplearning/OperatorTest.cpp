#include <Vision/Core/Platform.h>

#include "EngineTest.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "VisionTestSupport.h"
#include "WorkspaceFiles.h"

namespace OperatorTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Peer = Private::DeepLearningAccessTestPeer;
using VisionTest::FlagLog;
using VisionTest::Words;

char const* const OneStream = "/workspaces/one.kelo";
char const* const TwoStreams = "/workspaces/two.kelo";

class Operator : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        WorkspaceFiles::AddSingleToolFile(OneStream);
        WorkspaceFiles::AddSingleToolFile(TwoStreams);
        testkelo_add_stream(TwoStreams, "second", "second-uuid", "");
        op_ = CreateObject<DLOperator>();
    }
    void TearDown() override {
        op_.reset();
        EngineTest::TearDown();
    }

    std::shared_ptr<DLOperator> op_;
};

TEST_F(Operator, SelectsTheOnlyStreamOfAWorkspace) {
    FlagLog first(*op_);
    op_->LoadWorkspace(OneStream);
    ASSERT_TRUE(op_->Stream());
    EXPECT_EQ(op_->Stream(), op_->Workspace()->Streams()->Item(0));
    EXPECT_EQ(first.words(),
              (Words{DLOperator::sfWorkspacePath, DLOperator::SfWorkspace, DLOperator::SfStream}));

    FlagLog again(*op_);
    op_->LoadWorkspace(OneStream);
    EXPECT_EQ(again.words(), (Words{DLOperator::SfWorkspace, DLOperator::SfStream}));
}

TEST_F(Operator, AWorkspaceOfTwoStreamsKeepsTheStreamAsItWas) {
    FlagLog log(*op_);
    op_->LoadWorkspace(TwoStreams);
    EXPECT_EQ(op_->Stream(), nullptr);
    EXPECT_EQ(log.words(), (Words{DLOperator::sfWorkspacePath, DLOperator::SfWorkspace}));
}

TEST_F(Operator, SettingTheSameStreamRaisesNothingAndKeepsOneSubscription) {
    op_->LoadWorkspace(OneStream);
    auto stream = op_->Stream();
    FlagLog log(*op_);
    op_->setStream(stream);
    op_->setStream(stream);
    EXPECT_TRUE(log.words().empty());
    EXPECT_EQ(stream->ChangedEvent().SlotCount(), 1u);
}

TEST_F(Operator, AFileThatCannotOpenKeepsTheNewPathBesideTheOldWorkspace) {
    op_->LoadWorkspace(OneStream);
    auto workspace = op_->Workspace();
    EXPECT_THROW(op_->LoadWorkspace("/workspaces/missing.kelo"), Tavrin::Vision::FileOpenException);
    EXPECT_EQ(op_->Workspace(), workspace);
}

TEST_F(Operator, ShutdownDropsTheWorkspaceOfLiveOperatorsOnly) {
    op_->LoadWorkspace(OneStream);
    auto gone = CreateObject<DLOperator>();
    gone->LoadWorkspace(TwoStreams);
    gone.reset();
    EXPECT_EQ(Peer::ShutdownSubscriberCount(), 1u);
    testkelo_clear_log();

    tsys_shutdown_runEarly();
    EXPECT_EQ(op_->Workspace(), nullptr);
    EXPECT_EQ(testkelo_call_count("kelo_runtime_close_workspace"), 1);
    EXPECT_EQ(testkelo_call_count("kelo_deinitialize"), 1);
    EXPECT_EQ(Peer::ShutdownSubscriberCount(), 0u);
}

} // namespace

} // namespace OperatorTesting
