#include <sys/stat.h>
#include <utime.h>

#include <filesystem>
#include <fstream>

#include "EngineTest.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "WorkspaceFiles.h"

namespace OpenWorkspacesTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Private::DeepLearningAccess;
using Peer = Private::DeepLearningAccessTestPeer;

// A workspace file that exists on disk, so that its modification time counts.
class OpenWorkspaces : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        path_ = (std::filesystem::temp_directory_path() /
                 ("workspace-" + std::to_string(::getpid()) + ".kelo"))
                    .string();
        std::ofstream(path_) << "workspace";
        SetFileTime(1000);
        WorkspaceFiles::AddSingleToolFile(path_.c_str());
    }
    void TearDown() override {
        std::filesystem::remove(path_);
        EngineTest::TearDown();
    }

    void SetFileTime(time_t seconds) {
        utimbuf times{seconds, seconds};
        ASSERT_EQ(utime(path_.c_str(), &times), 0);
    }
    static int Calls(char const* entryPoint) { return testkelo_call_count(entryPoint); }

    std::string path_;
};

TEST_F(OpenWorkspaces, OneEngineOpenServesDistinctClonesAndTheLastClosesIt) {
    auto first = Peer::OpenWorkspace(path_);
    auto second = Peer::OpenWorkspace(path_);
    EXPECT_NE(first, second);
    EXPECT_EQ(first->Name(), second->Name());
    EXPECT_EQ(first->SourceFile(), path_);
    EXPECT_EQ(Calls("kelo_runtime_open_workspace_from_file"), 1);
    std::string const id = first->Name();
    auto tool = DeepLearningAccess::FindTool(*first, "quick-uuid");
    Peer::SetParameter(tool, "post_process_parameters/red/region_filter", "area>1");
    tool.reset();

    testkelo_clear_log();
    first.reset();
    EXPECT_TRUE(TestKelo::LoggedCalls().empty());
    second.reset();
    EXPECT_EQ(TestKelo::LoggedCalls(),
              (std::vector<std::string>{"kelo_runtime_close_workspace(" + id + ")"}));
    EXPECT_EQ(Peer::OpenFileCount(), 0u);
    EXPECT_EQ(Peer::CloneListCount(), 0u);
    EXPECT_TRUE(Peer::ParameterCache().empty());
    EXPECT_EQ(testkelo_count(TESTKELO_WORKSPACES), 0);
}

TEST_F(OpenWorkspaces, ANewerFileClosesTheOldEngineWorkspaceAndOpensUnderANewId) {
    auto old = Peer::OpenWorkspace(path_);
    SetFileTime(1000);
    Peer::OpenWorkspace(path_);
    EXPECT_EQ(Calls("kelo_runtime_open_workspace_from_file"), 1);

    SetFileTime(2000);
    testkelo_clear_log();
    auto fresh = Peer::OpenWorkspace(path_);
    EXPECT_NE(fresh->Name(), old->Name());
    auto const calls = WorkspaceFiles::CallsFrom("kelo_runtime_close_workspace");
    ASSERT_GE(calls.size(), 2u);
    EXPECT_EQ(calls[0], "kelo_runtime_close_workspace(" + old->Name() + ")");
    EXPECT_EQ(calls[1],
              "kelo_runtime_open_workspace_from_file(" + fresh->Name() + "," + path_ + ")");
    EXPECT_EQ(DeepLearningAccess::GetWorkspace(*fresh)->Name(), fresh->Name());
}

TEST_F(OpenWorkspaces, ADeletedFileStillOpensFromItsMaster) {
    auto first = Peer::OpenWorkspace(path_);
    std::filesystem::remove(path_);
    auto second = Peer::OpenWorkspace(path_);
    EXPECT_EQ(second->Name(), first->Name());
    EXPECT_EQ(Calls("kelo_runtime_open_workspace_from_file"), 1);
}

} // namespace

} // namespace OpenWorkspacesTesting
