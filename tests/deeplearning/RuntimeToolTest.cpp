#include <vector>

#include <Vision/Core/Exceptions.h>

#include "ResultTestSupport.h"
#include "VisionTestSupport.h"

namespace RuntimeToolTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::IImage;
using Tavrin::Vision::ToolResultConstants_Accept;
using Tavrin::Vision::Implementation::ToolBase;
using VisionTest::FlagLog;
using VisionTest::Words;

std::shared_ptr<IImage> LastRunImage(DLRuntimeTool& tool) {
    auto const records = tool.CreateLastRunRecord()->SubRecords();
    if (records->Count() == 0)
        return nullptr;
    return records->Item(records->Count() - 1)->Content().get_value<std::shared_ptr<IImage>>();
}

using RuntimeTool = ThreeKindsRuntimeToolTest;

TEST_F(RuntimeTool, RunsTheImageOnItsInputPinThroughTheSelectedStream) {
    EXPECT_EQ(tool_->RedToolResults()->Count(), 0);
    EXPECT_EQ(tool_->GreenToolResults()->Count(), 0);
    EXPECT_EQ(tool_->BlueToolResults()->Count(), 0);
    FlagLog log(*tool_);
    // Equal values raise nothing.
    tool_->setInputImage(image_);
    tool_->setLastRunRecordDiagEnable(DLLastRunRecordConstants::InputImageByReference);
    EXPECT_TRUE(log.words().empty());
    tool_->setInputImage(nullptr);
    auto const pin = tool_->Inputs()->Item(0);
    ASSERT_EQ(pin->Name(), "InputImage");
    pin->setValue(rttr::variant(std::shared_ptr<IImage>(image_)));
    EXPECT_EQ(tool_->InputImage(), image_);

    tool_->Run();
    tool_->setLastRunRecordDiagEnable(DLLastRunRecordConstants::All);

    EXPECT_EQ(tool_->RunStatus()->Result(), ToolResultConstants_Accept);
    EXPECT_EQ(log.words(), (Words{132, 132, 8, 256, 512, 1024, 2048, ToolBase::SfRunStatus, 4096}));
    auto const result = tool_->Results();
    ASSERT_TRUE(result);
    auto const markings = result->ResultImage()->ResultMarking();
    auto view = [&](int marking) {
        return markings->Item(marking)->ResultViews()->Item(0);
    };
    ASSERT_EQ(tool_->RedToolResults()->Count(), 1);
    EXPECT_EQ(tool_->RedToolResults()->Item(0), view(0)->ResultRed());
    ASSERT_EQ(tool_->GreenToolResults()->Count(), 1);
    EXPECT_EQ(tool_->GreenToolResults()->Item(0), view(1)->ResultGreen());
    ASSERT_EQ(tool_->BlueToolResults()->Count(), 1);
    EXPECT_EQ(tool_->BlueToolResults()->Item(0), view(2)->ResultBlue());
}

// Refused runs make no engine call and keep the result of the last good run.
TEST_F(RuntimeTool, ChecksItsInputBeforeTheEngineAndKeepsTheOldResult) {
    tool_->Run();
    auto const goodResult = tool_->Results();
    tool_->setInputImage(nullptr);
    auto const noStream = CreateObject<DLRuntimeTool>();
    noStream->setInputImage(image_);
    struct Case {
        char const* name;
        DLRuntimeToolPtr tool;
        Tavrin::Vision::VisionExceptionCodes code;
        char const* text;
    };
    Case const cases[] = {
        {"no image", tool_, Tavrin::Vision::VisionExceptionCodes_OperatorNoInputImage,
         "Input image is required."},
        {"no image, no workspace", CreateObject<DLRuntimeTool>(),
         Tavrin::Vision::VisionExceptionCodes_OperatorNoInputImage, "Input image is required."},
        {"no stream", noStream, Tavrin::Vision::VisionExceptionCodes_OperatorNotTrained,
         "Need to select a stream to run."},
    };
    for (auto const& c : cases) {
        SCOPED_TRACE(c.name);
        auto const before = c.tool->Results();
        testkelo_clear_log();
        EXPECT_EQ(VisionTest::CodeAndMessageOf([&] { c.tool->Run(); }),
                  VisionTest::CodeAndMessage(c.code, c.text));
        EXPECT_EQ(c.tool->Results(), before);
        EXPECT_EQ(LastRunImage(*c.tool), nullptr);
        EXPECT_EQ(testkelo_call_count("kelo_init_image"), 0);
    }
    EXPECT_EQ(tool_->Results(), goodResult);
}

TEST_F(RuntimeTool, EngineFailureKeepsTheOldResultAndTheCachedImage) {
    tool_->Run();
    auto const goodResult = tool_->Results();
    auto const next = CreateObject<Tavrin::Vision::Image8Grey>(64, 48);
    tool_->setInputImage(next);
    testkelo_set_result_document(nullptr);

    EXPECT_THROW(tool_->Run(), DeepLearningException);

    EXPECT_EQ(tool_->Results(), goodResult);
    EXPECT_EQ(LastRunImage(*tool_), next);
}

TEST_F(RuntimeTool, KeepsTheLastRunImageAsItsDiagnosticFlagsSay) {
    struct Case {
        DLLastRunRecordConstants flags;
        char const* kept;
    };
    for (auto const c : {Case{DLLastRunRecordConstants::None, "nothing"},
                         Case{DLLastRunRecordConstants::InputImageByReference, "the input"},
                         Case{DLLastRunRecordConstants::InputImageDeepCopy, "a copy of 64x48"},
                         Case{DLLastRunRecordConstants::All, "the input"}}) {
        SCOPED_TRACE(static_cast<int>(c.flags));
        tool_->setLastRunRecordDiagEnable(c.flags);
        tool_->Run();
        auto const kept = LastRunImage(*tool_);
        EXPECT_EQ(!kept            ? "nothing"
                  : kept == image_ ? "the input"
                                   : "a copy of " + std::to_string(kept->Width()) + "x" +
                                         std::to_string(kept->Height()),
                  c.kept);
    }
}

// A graphics setting of any tool of the stream changes what the last-run record draws; other
// settings change nothing the tool shows.
TEST_F(RuntimeTool, GraphicsSettingsOfItsToolsClimbToIt) {
    FlagLog log(*tool_);
    auto red = std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(LiveTool("red-uuid"));
    red->setUpperThreshold(0.8);
    EXPECT_TRUE(log.words().empty());
    red->setShowGraphics(false);
    LiveTool("green-uuid")->setShowRegion(false);
    EXPECT_EQ(log.words(), (Words{8, 8}));
}

} // namespace

} // namespace RuntimeToolTesting
