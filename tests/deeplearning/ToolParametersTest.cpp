#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>

#include <Vision/Core/Vect2.h>

#include "ToolTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "engine/ParameterText.h"

namespace {

using namespace Tavrin::Vision::DeepLearning;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::Vect2;
using ToolTest::FlagLog;
using ToolTest::MakeModel;
using ToolTest::MakeTool;
using ToolTest::Words;
using VisionTest::MessageOf;

constexpr long long Graphics = DLToolRuntimeParams::SfGraphicsSettings;

TEST(ToolParameterFlags, RedSettersRaiseTheirOwnClassesBits) {
    using Focused = DLFocusedModeRedToolRuntimeParams;
    auto focused = MakeTool<Focused>();
    FlagLog focusedLog(*focused);
    focused->setSamplingDensity(1);
    focused->setUpperThreshold(0.75);
    focused->setLowerThreshold(0.25);
    focused->setRegionFilter("area>3");
    focused->setIterations(4);
    focused->setShowGraphics(false);
    EXPECT_EQ(focusedLog.words(),
              (Words{Focused::SfSamplingDensity, Focused::SfUpperThreshold,
                     Focused::SfLowerThreshold, Focused::SfRegionFilter, Focused::SfIterations,
                     Focused::SfShowGraphics | Graphics}));

    using Hdm = DLHdmRedToolRuntimeParams;
    auto hdm = MakeTool<Hdm>();
    FlagLog hdmLog(*hdm);
    hdm->setUpperThreshold(0.75);
    hdm->setLowerThreshold(0.25);
    hdm->setRegionFilter("area>3");
    hdm->setDownsamplingSize(-2);
    hdm->setShowGraphics(false);
    EXPECT_EQ(hdmLog.words(),
              (Words{Hdm::SfUpperThreshold, Hdm::SfLowerThreshold, Hdm::SfRegionFilter,
                     Hdm::SfDownsamplingSize, Hdm::SfShowGraphics | Graphics}));
    EXPECT_EQ(hdm->DownsamplingSize(), -2);

    using Quick = DLQuickRedToolRuntimeParams;
    auto quick = MakeTool<Quick>();
    FlagLog quickLog(*quick);
    quick->setUpperThreshold(0.75);
    quick->setLowerThreshold(0.25);
    quick->setRegionFilter("area>3");
    quick->setShowGraphics(false);
    EXPECT_EQ(quickLog.words(), (Words{Quick::SfUpperThreshold, Quick::SfLowerThreshold,
                                       Quick::SfRegionFilter, Quick::SfShowGraphics | Graphics}));
}

TEST(ToolParameterFlags, GreenAndBlueSettersRaiseTheirOwnClassesBits) {
    using Focused = DLFocusedModeGreenToolRuntimeParams;
    auto focused = MakeTool<Focused>();
    FlagLog focusedLog(*focused);
    focused->setSamplingDensity(1);
    focused->setThreshold(0.5);
    focused->setShowGraphics(false);
    EXPECT_EQ(focusedLog.words(), (Words{Focused::SfSamplingDensity, Focused::SfThreshold,
                                         Focused::SfShowGraphics | Graphics}));

    using Quick = DLQuickGreenToolRuntimeParams;
    auto quick = MakeTool<Quick>();
    FlagLog quickLog(*quick);
    quick->setThreshold(0.5);
    quick->setShowGraphics(false);
    quick->setGenerateHeatmap(true);
    EXPECT_EQ(quickLog.words(), (Words{Quick::SfThreshold, Quick::SfShowGraphics | Graphics,
                                       Quick::SfGenerateHeatmap}));

    using Read = DLBlueReadToolRuntimeParams;
    auto read = MakeTool<Read>();
    FlagLog readLog(*read);
    read->setThreshold(0.5);
    read->setFeatureFilter("f");
    read->setPrecision(0.5);
    read->setFeatureSize(CreateObject<Vect2>(1, 2));
    read->setShowFeatures(false);
    read->setShowModels(false);
    EXPECT_EQ(readLog.words(), (Words{Read::SfThreshold, Read::SfFeatureFilter, Read::SfPrecision,
                                      Read::SfFeatureSize, Read::SfShowFeatures | Graphics,
                                      Read::SfShowModels | Graphics}));

    auto blue = MakeTool<DLBlueToolRuntimeParams>();
    FlagLog blueLog(*blue);
    blue->setSamplingDensity(1);
    blue->setShowRegion(false);
    blue->setAddImageRecords(false);
    EXPECT_EQ(blueLog.words(), (Words{DLBlueToolRuntimeParams::SfSamplingDensity,
                                      DLToolRuntimeParams::SfShowRegion | Graphics,
                                      DLToolRuntimeParams::SfAddImageRecords}));
}

// The same bit means different things in sibling classes; these are the values hosts see.
TEST(ToolParameterFlags, SiblingClassesNumberTheirBitsApart) {
    EXPECT_EQ(
        (Words{DLFocusedModeRedToolRuntimeParams::SfShowGraphics,
               DLHdmRedToolRuntimeParams::SfShowGraphics,
               DLQuickRedToolRuntimeParams::SfShowGraphics,
               DLFocusedModeGreenToolRuntimeParams::SfShowGraphics,
               DLHdmGreenToolRuntimeParams::SfShowGraphics, DLBlueToolRuntimeParams::SfShowModels,
               DLBlueReadToolRuntimeParams::SfShowModels,
               DLFocusedModeRedToolRuntimeParams::SfUpperThreshold,
               DLHdmRedToolRuntimeParams::SfUpperThreshold}),
        (Words{256, 128, 64, 32, 16, 512, 256, 16, 8}));
    EXPECT_EQ((Words{DLFocusedModeRedToolRuntimeParams::sfNextSf_,
                     DLHdmRedToolRuntimeParams::sfNextSf_, DLQuickRedToolRuntimeParams::sfNextSf_,
                     DLFocusedModeGreenToolRuntimeParams::sfNextSf_,
                     DLQuickGreenToolRuntimeParams::sfNextSf_, DLBlueToolRuntimeParams::sfNextSf_,
                     DLBlueReadToolRuntimeParams::sfNextSf_, DLBlueModel::sfNextSf_,
                     DLBlueRegexModel::sfNextSf_, DLStream::sfNextSf_}),
              (Words{512, 256, 128, 64, 64, 1024, 512, 2, 8, 2}));
}

TEST(ToolParameterSetters, AnEqualValueRaisesNothingWhileNaNAlwaysCounts) {
    auto tool = MakeTool<DLFocusedModeGreenToolRuntimeParams>();
    FlagLog log(*tool);
    tool->setShowRegion(true);
    tool->setAddImageRecords(true);
    tool->setShowGraphics(true);
    tool->setThreshold(0);
    EXPECT_TRUE(log.words().empty());

    double const nan = std::numeric_limits<double>::quiet_NaN();
    tool->setThreshold(nan);
    tool->setThreshold(nan);
    EXPECT_TRUE(std::isnan(tool->Threshold()));
    EXPECT_EQ(log.words().size(), 2u);

    auto regex = MakeModel<DLBlueRegexModel>("r");
    FlagLog regexLog(*regex);
    regex->setRegexExpression("[A-Z]+");
    regex->setRegexExpression("[A-Z]+");
    EXPECT_EQ(regexLog.words(), (Words{DLBlueRegexModel::SfRegexExpression}));
}

TEST(ToolParameterSetters, RangedSettersNameTheirBoundsAndLeaveTheObjectAsItWas) {
    auto red = MakeTool<DLFocusedModeRedToolRuntimeParams>();
    red->setSamplingDensity(0.2);
    red->setSamplingDensity(10);
    EXPECT_EQ(MessageOf([&] { red->setSamplingDensity(10.5); }),
              "SamplingDensity must be between 0.200000 and 10.000000");
    EXPECT_EQ(MessageOf([&] { red->setSamplingDensity(0.19); }),
              "SamplingDensity must be between 0.200000 and 10.000000");
    EXPECT_EQ(red->SamplingDensity(), 10);

    auto green = MakeTool<DLHdmGreenToolRuntimeParams>();
    green->setThreshold(1);
    FlagLog log(*green);
    EXPECT_EQ(MessageOf([&] { green->setThreshold(-0.01); }),
              "Threshold must be between 0.000000 and 1.000000");
    EXPECT_EQ(green->Threshold(), 1);
    EXPECT_TRUE(log.words().empty());

    auto string = MakeModel<DLBlueStringModel>("s");
    string->setMinimumLength(3);
    string->setMinimumLength(0);
    EXPECT_EQ(MessageOf([&] { string->setMinimumLength(-1); }),
              "MinimumLength must be non-negative");
    EXPECT_EQ(string->MinimumLength(), 0);
    EXPECT_EQ(MessageOf([&] { string->setThreshold(2); }),
              "Threshold must be between 0.000000 and 1.000000");
}

TEST(ToolParameterSetters, FeatureSizeKeepsAnEqualObjectAndCountsEveryNull) {
    auto blue = MakeTool<DLBlueToolRuntimeParams>();
    FlagLog log(*blue);
    auto const first = CreateObject<Vect2>(16, 24);
    blue->setFeatureSize(first);
    blue->setFeatureSize(CreateObject<Vect2>(16, 24));
    EXPECT_EQ(blue->FeatureSize().get(), first.get());
    blue->setFeatureSize(nullptr);
    blue->setFeatureSize(nullptr);
    EXPECT_EQ(blue->FeatureSize().get(), nullptr);
    EXPECT_EQ(log.words(), (Words(3, DLBlueToolRuntimeParams::SfFeatureSize)));
}

TEST(ToolParameterTree, ANewToolHasAnEmptyChildListAndBothDisplayFlagsSet) {
    auto tool = MakeTool<DLToolRuntimeParams>();
    ASSERT_NE(tool->ChildTools(), nullptr);
    EXPECT_EQ(tool->ChildTools()->Count(), 0);
    EXPECT_TRUE(tool->ShowRegion());
    EXPECT_TRUE(tool->AddImageRecords());
    EXPECT_EQ(tool->Parent(), nullptr);
    auto model = MakeModel<DLBlueLayoutModel>("l", tool);
    EXPECT_FALSE(model->Enable());
    EXPECT_EQ(model->Parent(), tool);
}

TEST(ToolParameterArchive, ALoadedToolKeepsItsFieldsAndGivesItsChildrenTheirParent) {
    auto child = MakeTool<DLHdmRedToolRuntimeParams>("child");
    child->setUpperThreshold(0.75);
    child->setLowerThreshold(0.25);
    child->setDownsamplingSize(-3);
    auto children = Tavrin::Brnt::ObjectFactory::Construct<DLToolRuntimeParamsReadOnlyCollection>(
        std::vector<DLToolRuntimeParamsPtr>{child, nullptr});
    auto parent = MakeTool<DLFocusedModeGreenToolRuntimeParams>("parent", children);
    parent->setShowRegion(false);
    parent->setThreshold(0.4);

    auto copy = ToolTest::RoundTrip(parent);
    ASSERT_NE(copy, parent);
    EXPECT_EQ(copy->Name(), "parent");
    EXPECT_EQ(copy->Id(), "parent-uuid");
    EXPECT_FALSE(copy->ShowRegion());
    EXPECT_TRUE(copy->AddImageRecords());
    EXPECT_EQ(copy->Threshold(), 0.4);
    ASSERT_EQ(copy->ChildTools()->Count(), 2);
    EXPECT_EQ(copy->ChildTools()->Item(1), nullptr);
    auto copiedChild =
        std::dynamic_pointer_cast<DLHdmRedToolRuntimeParams>(copy->ChildTools()->Item(0));
    ASSERT_NE(copiedChild, nullptr);
    EXPECT_EQ(copiedChild->Parent(), copy);
    EXPECT_EQ(copiedChild->LowerThreshold(), 0.25);
    EXPECT_EQ(copiedChild->UpperThreshold(), 0.75);
    EXPECT_EQ(copiedChild->DownsamplingSize(), -3);
}

using Tavrin::Vision::DeepLearning::Private::ParseThresholdText;

using Thresholds = std::pair<double, double>;

Thresholds Parse(std::string const& text) {
    Thresholds pair{-1, -1};
    ParseThresholdText(text, pair.first, pair.second);
    return pair;
}

template <class Exception> std::string Failure(std::string const& text, Thresholds& pair) {
    return MessageOf<Exception>([&] { ParseThresholdText(text, pair.first, pair.second); });
}

TEST(RedThresholdText, ReadsBothNumbersSkippingTheFirstAndLastCharacterUnseen) {
    EXPECT_EQ(Parse("x1,2y"), Thresholds(1, 2));
    EXPECT_EQ(Parse("[ 0.5 , 1e-1]"), Thresholds(0.5, 0.1));
}

// Reals go to the engine exactly as printf's "%f" writes them, rounding and extremes included.
TEST(ParameterText, FormatsRealsAsPrintfFixed) {
    using Limits = std::numeric_limits<double>;
    for (double const value :
         {0.1, -0.0, 0.0000005, 0.0000015, 2.5e-7, 123456789.123456789, -1e300, Limits::max(),
          Limits::denorm_min(), Limits::infinity(), Limits::quiet_NaN()}) {
        char expected[400];
        std::snprintf(expected, sizeof expected, "%f", value);
        EXPECT_EQ(Tavrin::Vision::DeepLearning::Private::FormatReal(value), expected);
    }
}

TEST(RedThresholdText, FailsWithTheStandardTextsAndKeepsALowerParsedBefore) {
    Thresholds pair{-1, -1};
    EXPECT_EQ(Failure<std::out_of_range>("", pair), "invalid string position");
    EXPECT_EQ(Failure<std::invalid_argument>("[0.25]", pair), "invalid stod argument");
    EXPECT_EQ(Failure<std::invalid_argument>("[a,1]", pair), "invalid stod argument");
    EXPECT_EQ(Failure<std::out_of_range>("[1e999,1]", pair), "stod argument out of range");
    EXPECT_EQ(Failure<std::invalid_argument>("[0.5,]", pair), "invalid stod argument");
    EXPECT_EQ(pair.first, 0.5);
}

} // namespace
