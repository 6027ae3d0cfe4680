#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>

#include <Vision/Core/Vect2.h>

#include "EngineTest.h"
#include "ToolTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"

namespace CatalogueParametersTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Peer = Private::DeepLearningAccessTestPeer;
using Texts = std::vector<std::string>;
using ToolTest::FlagLog;
using ToolTest::Reads;
using ToolTest::Words;
using ToolTest::Writes;

// Concrete classes keep their apply private; the run reaches it through the base.
void Apply(DLToolRuntimeParams& tool) {
    tool.ApplyRuntimeParameters();
}

char const* const File = "/workspaces/catalogue.kelo";

struct Parameter {
    char const* tool;
    char const* path;
    char const* value;
};

// One stream with a tool of each class; "read" is a child of "hgreen", and "blue" has a model of
// each kind.
class Catalogue : public EngineTest {
protected:
    void SetUp() override {
        EngineTest::SetUp();
        testkelo_add_file(File, "file-uuid", "2024-01-01");
        testkelo_add_stream(File, "main", "main-uuid", "0,0,640,480");
        AddTool(nullptr, "focused", "red");
        AddTool(nullptr, "hdm", "red_sua");
        AddTool(nullptr, "quick", "red_quick");
        AddTool(nullptr, "fgreen", "green");
        AddTool(nullptr, "hgreen", "green_sua");
        AddTool("hgreen", "read", "blue_read");
        AddTool(nullptr, "qgreen", "green_quick");
        AddTool(nullptr, "blue", "blue");
        for (auto [model, type] :
             {std::pair{"n", "node"}, {"s", "string"}, {"r", "regex"}, {"l", "layout"}})
            testkelo_add_model(File, "main", "blue", model, type);
        for (Parameter const& p : Parameters)
            testkelo_add_parameter(File, "main", p.tool, p.path, p.value);
        workspace_ = Peer::OpenWorkspace(File);
    }

    // The last clone closes the engine workspace, which must happen before the engine forgets it.
    void TearDown() override {
        workspace_.reset();
        EngineTest::TearDown();
    }

    template <class Tool> std::shared_ptr<Tool> Find(std::string const& name) {
        return std::dynamic_pointer_cast<Tool>(
            Private::DeepLearningAccess::FindTool(*workspace_, (name + "-uuid").c_str()));
    }

    std::shared_ptr<DLStream> Stream() { return workspace_->Streams()->Item(0); }

    // What applying one tool writes to the engine.
    static Texts RunWrites(DLToolRuntimeParams& tool, char const* name) {
        testkelo_clear_log();
        Apply(tool);
        return Writes(name);
    }

    std::shared_ptr<DLWorkspace> workspace_;

    static void AddTool(char const* parent, char const* name, char const* type) {
        testkelo_add_tool(File, "main", parent, name, (std::string(name) + "-uuid").c_str(), type);
    }

    static constexpr Parameter Parameters[] = {
        {"focused", "processing/sampling_density", "0.5"},
        {"focused", "post_processing/red/threshold", "[0.25,0.75]"},
        {"focused", "post_processing/red/region_filter", "area>10"},
        {"focused", "processing/red/sampling_iterations", "3"},
        {"hdm", "post_process_parameters/red/threshold", "[0.25,0.75]"},
        {"hdm", "post_process_parameters/red/region_filter", ""},
        {"hdm", "runtime_parameters/max_downsampling_size", "-2"},
        {"quick", "post_process_parameters/red/threshold", "[0.1,0.9]"},
        {"quick", "post_process_parameters/red/region_filter", ""},
        {"fgreen", "processing/sampling_density", "2"},
        {"fgreen", "post_processing/green/threshold", "none"},
        {"hgreen", "post_process_parameters/green/threshold", "0.5"},
        {"hgreen", "runtime_parameters/heat_map_on", "True"},
        {"read", "processing/blue/threshold", "0.3"},
        {"read", "post_processing/blue/feature_filter", ""},
        {"read", "processing/blue/precision", "0.6"},
        {"read", "sampling/feature_size", "8"},
        {"qgreen", "post_process_parameters/green/threshold", "0.25"},
        {"qgreen", "runtime_parameters/heat_map_on", "true"},
        {"blue", "processing/sampling_density", "1"},
        {"blue", "processing/blue/threshold", "0.3"},
        {"blue", "post_processing/blue/feature_filter", "ff"},
        {"blue", "processing/blue/precision", "0.6"},
        {"blue", "sampling/feature_size", "16x24"},
        {"blue", "models/n/enabled", "true"},
        {"blue", "models/n/threshold", "0.4"},
        {"blue", "models/n/occurrences", "2"},
        {"blue", "models/s/enabled", "false"},
        {"blue", "models/s/threshold", "0.1"},
        {"blue", "models/s/string/min_string_length", "5"},
        {"blue", "models/r/enabled", "true"},
        {"blue", "models/r/threshold", "0.2"},
        {"blue", "models/r/regex/regex", "[A-Z]+"},
        {"blue", "models/l/enabled", "TRUE"},
    };
};

// The file lists each tool's paths in the order its class reads them.
TEST_F(Catalogue, EachClassReadsItsPathsOnceInItsOrder) {
    for (char const* tool : {"focused", "hdm", "quick", "fgreen", "qgreen", "read", "blue"}) {
        SCOPED_TRACE(tool);
        Texts paths;
        for (Parameter const& p : Parameters)
            if (std::string(p.tool) == tool)
                paths.push_back(p.path);
        EXPECT_EQ(Reads(tool), paths);
    }
}

TEST_F(Catalogue, EngineTextsBecomeTypedFields) {
    auto focused = Find<DLFocusedModeRedToolRuntimeParams>("focused");
    EXPECT_EQ(focused->SamplingDensity(), 0.5);
    EXPECT_EQ(focused->LowerThreshold(), 0.25);
    EXPECT_EQ(focused->UpperThreshold(), 0.75);
    EXPECT_EQ(focused->RegionFilter(), "area>10");
    EXPECT_EQ(focused->Iterations(), 3u);
    EXPECT_EQ(Find<DLHdmRedToolRuntimeParams>("hdm")->DownsamplingSize(), -2);
    EXPECT_EQ(Find<DLFocusedModeGreenToolRuntimeParams>("fgreen")->Threshold(), 0);
    EXPECT_FALSE(Find<DLHdmGreenToolRuntimeParams>("hgreen")->GenerateHeatmap());
    EXPECT_TRUE(Find<DLQuickGreenToolRuntimeParams>("qgreen")->GenerateHeatmap());
    EXPECT_EQ(Find<DLQuickGreenToolRuntimeParams>("qgreen")->Threshold(), 0.25);

    // The read tool's one-number size shows in what its run writes.
    EXPECT_EQ(Find<DLBlueReadToolRuntimeParams>("read")->Models()->Count(), 0);
    auto blue = Find<DLBlueToolRuntimeParams>("blue");
    EXPECT_EQ(blue->FeatureSize(), Tavrin::Brnt::CreateObject<Tavrin::Vision::Vect2>(16, 24));
    ASSERT_EQ(blue->Models()->Count(), 4);
    auto node = std::dynamic_pointer_cast<DLBlueNodeModel>(blue->Models()->Item(0));
    auto string = std::dynamic_pointer_cast<DLBlueStringModel>(blue->Models()->Item(1));
    auto regex = std::dynamic_pointer_cast<DLBlueRegexModel>(blue->Models()->Item(2));
    auto layout = std::dynamic_pointer_cast<DLBlueLayoutModel>(blue->Models()->Item(3));
    ASSERT_TRUE(node && string && regex && layout);
    EXPECT_TRUE(node->Enable());
    EXPECT_EQ(node->Threshold(), 0.4);
    EXPECT_EQ(node->Occurrences(), 2);
    EXPECT_FALSE(string->Enable());
    EXPECT_EQ(string->MinimumLength(), 5);
    EXPECT_EQ(regex->RegexExpression(), "[A-Z]+");
    EXPECT_FALSE(layout->Enable());
}

TEST_F(Catalogue, ARunWritesEveryChangedFieldInTheClassesOrder) {
    auto focused = Find<DLFocusedModeRedToolRuntimeParams>("focused");
    focused->setSamplingDensity(2);
    focused->setUpperThreshold(0.9);
    focused->setLowerThreshold(0.1);
    focused->setRegionFilter("r");
    focused->setIterations(7);
    auto hdm = Find<DLHdmRedToolRuntimeParams>("hdm");
    hdm->setRegionFilter("r2");
    hdm->setDownsamplingSize(-4);
    auto hgreen = Find<DLHdmGreenToolRuntimeParams>("hgreen");
    hgreen->setGenerateHeatmap(true);
    auto blue = Find<DLBlueToolRuntimeParams>("blue");
    blue->setSamplingDensity(0.25);
    blue->setThreshold(0.5);
    blue->setFeatureFilter("g");
    blue->setPrecision(0.125);
    blue->setFeatureSize(Tavrin::Brnt::CreateObject<Tavrin::Vision::Vect2>(32, 8.5));
    auto string = std::dynamic_pointer_cast<DLBlueStringModel>(blue->Models()->Item(1));
    string->setMinimumLength(0);
    std::dynamic_pointer_cast<DLBlueNodeModel>(blue->Models()->Item(0))->setOccurrences(-1);
    auto read = Find<DLBlueReadToolRuntimeParams>("read");
    read->setThreshold(0.5);

    testkelo_clear_log();
    for (auto const& tool : *Stream()->Tools())
        tool->ApplyRuntimeParameters();
    Apply(*read);

    EXPECT_EQ(Writes("focused"), (Texts{"processing/sampling_density=2.000000",
                                        "post_processing/red/threshold=[0.100000,0.900000]",
                                        "post_processing/red/region_filter=r",
                                        "processing/red/sampling_iterations=7"}));
    EXPECT_EQ(Writes("hdm"), (Texts{"post_process_parameters/red/region_filter=r2",
                                    "runtime_parameters/max_downsampling_size=-4"}));
    EXPECT_EQ(Writes("fgreen"), (Texts{"processing/sampling_density=2.000000",
                                       "post_processing/green/threshold=0.000000"}));
    EXPECT_EQ(Writes("hgreen"), (Texts{"runtime_parameters/heat_map_on=true"}));
    // The disabled string model is written like the others.
    EXPECT_EQ(Writes("blue"),
              (Texts{"processing/sampling_density=0.250000", "processing/blue/threshold=0.500000",
                     "post_processing/blue/feature_filter=g", "processing/blue/precision=0.125000",
                     "sampling/feature_size=32.000000x8.500000", "models/n/threshold=0.400000",
                     "models/n/occurrences=-1", "models/s/threshold=0.100000",
                     "models/s/string/min_string_length=0", "models/r/threshold=0.200000",
                     "models/l/enabled=false"}));
    EXPECT_EQ(Writes("read"),
              (Texts{"processing/blue/threshold=0.500000", "processing/blue/precision=0.600000",
                     "sampling/feature_size=8.000000x8.000000"}));
}

TEST_F(Catalogue, RedThresholdTextsAreComposedAtRunOrBySetters) {
    auto focused = Find<DLFocusedModeRedToolRuntimeParams>("focused");
    auto hdm = Find<DLHdmRedToolRuntimeParams>("hdm");
    auto quick = Find<DLQuickRedToolRuntimeParams>("quick");
    char const* const HdmPath = "post_process_parameters/red/threshold";

    EXPECT_EQ(RunWrites(*focused, "focused"),
              (Texts{"processing/sampling_density=0.500000",
                     "post_processing/red/threshold=[0.250000,0.750000]"}));
    EXPECT_TRUE(RunWrites(*focused, "focused").empty());
    EXPECT_TRUE(RunWrites(*hdm, "hdm").empty());
    EXPECT_TRUE(RunWrites(*quick, "quick").empty());

    FlagLog hdmLog(*hdm);
    hdm->setLowerThreshold(0.3);
    EXPECT_EQ(hdmLog.words(), (Words{DLHdmRedToolRuntimeParams::SfLowerThreshold}));
    FlagLog quickLog(*quick);
    quick->setLowerThreshold(0.1);
    EXPECT_TRUE(quickLog.words().empty());
    EXPECT_EQ(RunWrites(*hdm, "hdm"), (Texts{std::string(HdmPath) + "=[0.300000,0.750000]"}));
    EXPECT_EQ(RunWrites(*quick, "quick"), (Texts{std::string(HdmPath) + "=[0.100000,0.900000]"}));
    EXPECT_STREQ(testkelo_parameter(workspace_->Name().c_str(), "main", "hdm", HdmPath),
                 "[0.300000,0.750000]");
}

TEST_F(Catalogue, GreenThresholdTextTrailsTheSetterByOneStep) {
    auto hgreen = Find<DLHdmGreenToolRuntimeParams>("hgreen");
    char const* const Path = "post_process_parameters/green/threshold";
    EXPECT_EQ(RunWrites(*hgreen, "hgreen"), (Texts{"runtime_parameters/heat_map_on=false"}));

    FlagLog log(*hgreen);
    hgreen->setThreshold(0.7);
    EXPECT_EQ(RunWrites(*hgreen, "hgreen"), (Texts{std::string(Path) + "=0.500000"}));
    hgreen->setThreshold(0.7);
    EXPECT_EQ(log.words(), (Words{DLHdmGreenToolRuntimeParams::SfThreshold}));
    EXPECT_EQ(RunWrites(*hgreen, "hgreen"), (Texts{std::string(Path) + "=0.700000"}));
}

TEST_F(Catalogue, TheStreamPassesOnOnlyDisplayChangesOfEveryToolOfItsTree) {
    FlagLog streamLog(*Stream());
    auto hgreen = Find<DLHdmGreenToolRuntimeParams>("hgreen");
    auto read = Find<DLBlueReadToolRuntimeParams>("read");
    hgreen->setShowGraphics(false);
    read->setShowModels(false);
    read->setAddImageRecords(false);
    hgreen->setThreshold(0.9);
    Find<DLBlueToolRuntimeParams>("blue")->Models()->Item(0)->setEnable(false);
    EXPECT_EQ(streamLog.words(),
              (Words{DLStream::SfToolsGraphicsChanged, DLStream::SfToolsGraphicsChanged}));
}

// A stream that outlives its workspace keeps its tools but no parent.
TEST_F(Catalogue, ACloneIsWiredToItselfAndNotToItsMaster) {
    auto stream = Stream();
    auto blue = Find<DLBlueToolRuntimeParams>("blue");
    {
        auto const master = Private::DeepLearningAccess::GetWorkspace(workspace_->Name());
        ASSERT_NE(master, nullptr);
        EXPECT_NE(stream, master->Streams()->Item(0));
        EXPECT_NE(blue, Private::DeepLearningAccess::FindTool(*master, "blue-uuid"));
    }
    EXPECT_EQ(stream->ParentWorkspace(), workspace_);
    EXPECT_EQ(stream->UUID(), "main-uuid");
    EXPECT_EQ(Find<DLBlueReadToolRuntimeParams>("read")->Stream(), stream);
    for (auto const& model : *blue->Models())
        EXPECT_EQ(model->Parent(), blue);

    workspace_.reset();
    EXPECT_EQ(stream->ParentWorkspace(), nullptr);
    EXPECT_EQ(stream->Tools()->Count(), 7);
}

TEST_F(Catalogue, OneArchiveKeepsOneObjectPerTrackedPointer) {
    auto blue = Find<DLBlueToolRuntimeParams>("blue");
    std::shared_ptr<DLBlueToolRuntimeParams> loadedBlue;
    std::shared_ptr<DLWorkspace> loaded;
    VisionTest::LoadTogether(VisionTest::SavedTogether(blue, workspace_), loadedBlue, loaded);
    EXPECT_EQ(Private::DeepLearningAccess::FindTool(*loaded, "blue-uuid"), loadedBlue);
    EXPECT_EQ(loadedBlue->Stream(), loaded->Streams()->Item(0));
    EXPECT_EQ(loadedBlue->Stream()->ParentWorkspace(), loaded);
    EXPECT_EQ(loaded->SourceFile(), "");
    EXPECT_EQ(loaded->Name(), workspace_->Name());
    EXPECT_EQ(loadedBlue->FeatureSize()->Y(), 24);
}

// A file's bytes, or nothing when it does not exist.
std::optional<std::string> Kept(std::filesystem::path const& file) {
    std::ifstream kept(file, std::ios::binary);
    if (!kept)
        return std::nullopt;
    return std::string{std::istreambuf_iterator<char>(kept), {}};
}

// GUIDs that each construction or load makes afresh are no part of the format.
std::string WithoutGuids(std::string const& bytes) {
    static std::regex const guid("[0-9a-f]{8}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{4}-[0-9a-f]{12}");
    return std::regex_replace(bytes, guid, std::string(36, '*'));
}

// Every tool and model class, an operator and a runtime tool on the file archive to the bytes
// kept in deeplearning/archives, and each kept archive loads and saves to the same bytes, or to
// those kept beside it as NAME.reloaded.bin where a reload writes texts anew (an operator
// composes its tools' threshold texts again). So the format stays whatever the classes' code
// becomes. A change meant to alter it writes the files afresh, with TAVRIN_WRITE_ARCHIVES=1.
TEST_F(Catalogue, EveryClassArchivesToTheBytesKeptForIt) {
    auto const op = Tavrin::Brnt::CreateObject<DLOperator>();
    op->LoadWorkspace(File);
    auto const runtimeTool = Tavrin::Brnt::CreateObject<DLRuntimeTool>();
    runtimeTool->LoadWorkspace(File);
    auto const blueModels = Find<DLBlueToolRuntimeParams>("blue")->Models();
    std::pair<char const*, std::shared_ptr<Tavrin::Vision::ShareableBase>> const objects[] = {
        {"DLFocusedModeRedToolRuntimeParams", Find<DLToolRuntimeParams>("focused")},
        {"DLHdmRedToolRuntimeParams", Find<DLToolRuntimeParams>("hdm")},
        {"DLQuickRedToolRuntimeParams", Find<DLToolRuntimeParams>("quick")},
        {"DLFocusedModeGreenToolRuntimeParams", Find<DLToolRuntimeParams>("fgreen")},
        {"DLHdmGreenToolRuntimeParams", Find<DLToolRuntimeParams>("hgreen")},
        {"DLBlueReadToolRuntimeParams", Find<DLToolRuntimeParams>("read")},
        {"DLQuickGreenToolRuntimeParams", Find<DLToolRuntimeParams>("qgreen")},
        {"DLBlueToolRuntimeParams", Find<DLToolRuntimeParams>("blue")},
        {"DLBlueNodeModel", blueModels->Item(0)},
        {"DLBlueStringModel", blueModels->Item(1)},
        {"DLBlueRegexModel", blueModels->Item(2)},
        {"DLBlueLayoutModel", blueModels->Item(3)},
        {"DLOperator", op},
        {"DLRuntimeTool", runtimeTool},
    };
    auto const reloaded = [](std::string const& bytes) {
        return ToolTest::Saved(ToolTest::Loaded<Tavrin::Vision::ShareableBase>(bytes));
    };
    for (auto const& [name, object] : objects) {
        SCOPED_TRACE(name);
        std::filesystem::path const folder(TAVRIN_ARCHIVE_DATA_DIR);
        std::filesystem::path const file = folder / (std::string(name) + ".bin");
        std::filesystem::path const reloadedFile = folder / (std::string(name) + ".reloaded.bin");
        std::string const bytes = ToolTest::Saved(object);
        if (std::getenv("TAVRIN_WRITE_ARCHIVES")) {
            std::ofstream(file, std::ios::binary) << bytes;
            std::filesystem::remove(reloadedFile);
            if (std::string const again = reloaded(bytes);
                WithoutGuids(again) != WithoutGuids(bytes))
                std::ofstream(reloadedFile, std::ios::binary) << again;
        }
        std::optional<std::string> const kept = Kept(file);
        ASSERT_TRUE(kept) << file;
        EXPECT_EQ(WithoutGuids(bytes), WithoutGuids(*kept));
        EXPECT_EQ(WithoutGuids(reloaded(*kept)), WithoutGuids(Kept(reloadedFile).value_or(*kept)));
    }
}

} // namespace

} // namespace CatalogueParametersTesting
