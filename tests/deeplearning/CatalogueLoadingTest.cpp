#include "EngineTest.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "VisionTestSupport.h"
#include "WorkspaceFiles.h"

namespace CatalogueLoadingTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Private::DeepLearningAccess;
using Peer = Private::DeepLearningAccessTestPeer;
using Texts = std::vector<std::string>;
using WorkspaceFiles::AddQuickRedTool;

char const* const File = "/workspaces/tree.kelo";

Texts Names(std::shared_ptr<DLToolRuntimeParamsReadOnlyCollection> const& tools) {
    Texts names;
    for (auto const& tool : *tools)
        names.push_back(tool->Name());
    return names;
}

// Stream "first": A { A1 { A11 } }, X of an unknown type { X1 }, B sharing A11's uuid.
// Stream "empty" has no tools.
class CatalogueLoading : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        testkelo_add_file(File, "file-uuid", "2024-05-01");
        testkelo_add_stream(File, "first", "first-uuid", "0,0,64,64");
        testkelo_add_stream(File, "empty", "empty-uuid", "");
        AddQuickRedTool(File, "first", nullptr, "A", "A-uuid");
        AddQuickRedTool(File, "first", "A", "A1", "A1-uuid");
        AddQuickRedTool(File, "first", "A1", "A11", "dup-uuid");
        testkelo_add_tool(File, "first", nullptr, "X", "X-uuid", "Red_quick");
        AddQuickRedTool(File, "first", "X", "X1", "X1-uuid");
        AddQuickRedTool(File, "first", nullptr, "B", "dup-uuid");
    }
    void TearDown() override {
        workspace_.reset();
        EngineTest::TearDown();
    }

    std::shared_ptr<DLWorkspace> workspace_;
};

TEST_F(CatalogueLoading, BuildsTheTreeDepthFirstChildrenBeforeParents) {
    workspace_ = Peer::OpenWorkspace(File);
    std::string const id = workspace_->Name();
    Texts listings;
    Texts readers;
    for (std::string const& call :
         WorkspaceFiles::CallsFrom("kelo_runtime_open_workspace_from_file")) {
        if (call.rfind("kelo_runtime_tool_get_parameter(", 0) == 0)
            readers.push_back(WorkspaceFiles::Arguments(call)[2]);
        else
            listings.push_back(call);
    }
    EXPECT_EQ(listings,
              (Texts{"kelo_runtime_open_workspace_from_file(" + id + "," + File + ")",
                     "kelo_runtime_list_workspaces()", "kelo_runtime_list_streams(" + id + ")",
                     "kelo_runtime_list_tools(" + id + ",first)",
                     "kelo_runtime_list_tools(" + id + ",empty)"}));
    EXPECT_EQ(readers, (Texts{"A11", "A11", "A1", "A1", "A", "A", "X1", "X1", "B", "B"}));
}

TEST_F(CatalogueLoading, UnknownTypesVanishWithTheirChildrenAndParentsAreDirect) {
    workspace_ = Peer::OpenWorkspace(File);
    auto streams = workspace_->Streams();
    ASSERT_EQ(streams->Count(), 2);
    EXPECT_EQ(streams->Item(0)->Name(), "first");
    auto empty = streams->Item(1)->Tools();
    ASSERT_TRUE(empty);
    EXPECT_EQ(empty->Count(), 0);

    auto top = streams->Item(0)->Tools();
    EXPECT_EQ(Names(top), (Texts{"A", "B"}));
    auto a = top->Item(0);
    auto a1 = a->ChildTools()->Item(0);
    auto a11 = a1->ChildTools()->Item(0);
    EXPECT_EQ(a->Parent(), nullptr);
    EXPECT_EQ(a1->Parent(), a);
    EXPECT_EQ(a11->Parent(), a1);
    EXPECT_EQ(a11->ChildTools()->Count(), 0);

    EXPECT_EQ(DeepLearningAccess::FindTool(*workspace_, "A1-uuid"), a1);
    EXPECT_EQ(DeepLearningAccess::FindTool(*workspace_, "dup-uuid"), a11);
    EXPECT_EQ(DeepLearningAccess::FindTool(*workspace_, "X1-uuid"), nullptr);
    EXPECT_EQ(DeepLearningAccess::FindTool(*streams->Item(1), "A-uuid"), nullptr);
}

class CatalogueListingFailure : public CatalogueLoading,
                                public ::testing::WithParamInterface<char const*> {};

// Each failing step of an open, the engine's own open included, leaves no entry behind.
TEST_P(CatalogueListingFailure, LeavesNothingOpen) {
    testkelo_fail(GetParam(), 1, 9, "listing broke");
    EXPECT_THROW(Peer::OpenWorkspace(File), Tavrin::Vision::VisionException);
    EXPECT_EQ(testkelo_count(TESTKELO_WORKSPACES), 0);
    EXPECT_EQ(Peer::OpenFileCount(), 0u);
    EXPECT_EQ(Peer::CloneListCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(EachStep, CatalogueListingFailure,
                         ::testing::Values("kelo_runtime_open_workspace_from_file",
                                           "kelo_runtime_list_workspaces",
                                           "kelo_runtime_list_streams", "kelo_runtime_list_tools",
                                           "kelo_runtime_tool_get_parameter"));

} // namespace

} // namespace CatalogueLoadingTesting
