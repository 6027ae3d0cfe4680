// The library driving the reference engine through its public operator, as a host would: the
// engine comes from the loader's search path, the workspace from the trained example.
#include <algorithm>
#include <cstring>

#include <gtest/gtest.h>

#include <Vision/Core/Image8Grey.h>
#include <Vision/DeepLearning/DeepLearning.h>

#include "ExampleWorkspace.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using ReferenceTests::TrainedExample;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::Image8Grey;

std::shared_ptr<Image8Grey> ImageOf(const cv::Mat& grey) {
    auto image = CreateObject<Image8Grey>(grey.cols, grey.rows);
    auto memory = image->GetPixelMemory(Tavrin::Vision::ImageDataModeConstants_Write, 0, 0,
                                        grey.cols, grey.rows);
    for (int row = 0; row < grey.rows; ++row)
        std::memcpy(memory->FirstPel() + row * memory->Step(), grey.ptr(row),
                    static_cast<std::size_t>(grey.cols));
    return image;
}

class ReferenceEndToEnd : public ::testing::Test {
protected:
    // An operator on the trained example with the stream selected, and its one tool.
    template <typename Tool> std::shared_ptr<Tool> Select(const std::string& stream) {
        operator_->LoadWorkspace(TrainedExample().workspace);
        for (const auto& candidate : *operator_->Workspace()->Streams())
            if (candidate->Name() == stream)
                operator_->setStream(candidate);
        return std::dynamic_pointer_cast<Tool>(operator_->Stream()->Tools()->Item(0));
    }

    std::shared_ptr<DLResultView> Run(const std::string& kind, const std::string& file) {
        const auto result = operator_->Execute(*ImageOf(TrainedExample().Grey(kind, file)));
        return result->ResultImage()->ResultMarking()->Item(0)->ResultViews()->Item(0);
    }

    std::shared_ptr<DLOperator> operator_ = CreateObject<DLOperator>();
};

TEST_F(ReferenceEndToEnd, RedMarksTheAnomalyUntilTheUpperThresholdPassesIt) {
    auto tool = Select<DLFocusedModeRedToolRuntimeParams>("anomaly");
    ASSERT_TRUE(tool);
    EXPECT_EQ(Run("red", "good_0000.png")->ResultRed()->ResultRegions()->Count(), 0);

    const auto red = Run("red", "bad_0000.png")->ResultRed();
    ASSERT_GT(red->ResultRegions()->Count(), 0);
    EXPECT_GE(red->FilteredScore(), tool->UpperThreshold());
    EXPECT_EQ(red->ResultScore()->Name(), "anomaly");
    const auto heatMap = red->ResultResources()->Item(0);
    EXPECT_EQ(heatMap->Name(), "score_map");
    ASSERT_TRUE(heatMap->Image());
    EXPECT_EQ(heatMap->Image()->Width(), 20);

    tool->setUpperThreshold(red->FilteredScore() + 0.01);
    const auto raised = Run("red", "bad_0000.png")->ResultRed();
    EXPECT_EQ(raised->ResultRegions()->Count(), 0);
    EXPECT_EQ(raised->FilteredScore(), 0);
    EXPECT_EQ(raised->Score(), red->Score());
}

TEST_F(ReferenceEndToEnd, GreenNamesTheDigitAndAHigherThresholdDropsUnsureTags) {
    auto tool = Select<DLFocusedModeGreenToolRuntimeParams>("classify");
    ASSERT_TRUE(tool);
    const auto green = Run("green", "7_0016.png")->ResultGreen();
    EXPECT_EQ(green->BestTag()->Name(), "7");
    ASSERT_EQ(green->Tags()->Count(), 2);
    EXPECT_DOUBLE_EQ(green->Uncertainty(), 1 - green->BestTag()->Score());

    tool->setThreshold(0.5);
    const auto sure = Run("green", "7_0016.png")->ResultGreen();
    ASSERT_EQ(sure->Tags()->Count(), 1);
    EXPECT_EQ(sure->Tags()->Item(0)->Name(), "7");
    EXPECT_DOUBLE_EQ(sure->Threshold(), 0.5);
}

TEST_F(ReferenceEndToEnd, BlueReadsTheRowAndAHigherThresholdLeavesItUnread) {
    auto tool = Select<DLBlueReadToolRuntimeParams>("read");
    ASSERT_TRUE(tool);
    ASSERT_EQ(tool->Models()->Count(), 3);
    const auto blue = Run("blue", "82419_0190.png")->ResultBlue();
    ASSERT_EQ(blue->Features()->Count(), 5);
    EXPECT_NEAR(blue->Features()->Item(0)->Rectangle()->CenterX(), 10, 1);
    const auto read = std::dynamic_pointer_cast<DLResultMatchString>(blue->Matches()->Item(0));
    ASSERT_TRUE(read);
    EXPECT_EQ(read->MatchString(), "82419");
    EXPECT_EQ(read->Features()->Count(), 5);

    tool->setThreshold(0.9);
    const auto strict = Run("blue", "82419_0190.png")->ResultBlue();
    EXPECT_EQ(strict->Features()->Count(), 4);
    for (const auto& match : *strict->Matches())
        EXPECT_EQ(match->ModelType(), "layout");
}

} // namespace
