#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <stdexcept>

#include <Vision/Core/Vect2.h>

#include "ToolTestSupport.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "engine/ParameterText.h"

namespace ToolParametersTesting {

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

// The words that a new tool of the setter's class raises while the setter stores the value.
template <class Tool, class Value>
Words Raised(void (Tool::*setter)(Value), std::decay_t<Value> const& value) {
    auto const tool = MakeTool<Tool>();
    FlagLog const log(*tool);
    ((*tool).*setter)(value);
    return log.words();
}

// Each setter raises its own bit, graphics settings also the graphics bit. The same bit means
// different things in sibling classes; these are the values hosts see.
TEST(ToolParameterFlags, EachSetterRaisesItsClassesOwnBit) {
    using FocusedRed = DLFocusedModeRedToolRuntimeParams;
    using HdmRed = DLHdmRedToolRuntimeParams;
    using QuickRed = DLQuickRedToolRuntimeParams;
    using FocusedGreen = DLFocusedModeGreenToolRuntimeParams;
    using HdmGreen = DLHdmGreenToolRuntimeParams;
    using QuickGreen = DLQuickGreenToolRuntimeParams;
    using Read = DLBlueReadToolRuntimeParams;
    using Blue = DLBlueToolRuntimeParams;
    std::pair<Words, long long> const cases[] = {
        {Raised(&FocusedRed::setSamplingDensity, 1), 8},
        {Raised(&FocusedRed::setUpperThreshold, 0.75), 16},
        {Raised(&FocusedRed::setLowerThreshold, 0.25), 32},
        {Raised(&FocusedRed::setRegionFilter, "area>3"), 64},
        {Raised(&FocusedRed::setIterations, 4), 128},
        {Raised(&FocusedRed::setShowGraphics, false), 256 | Graphics},
        {Raised(&HdmRed::setUpperThreshold, 0.75), 8},
        {Raised(&HdmRed::setLowerThreshold, 0.25), 16},
        {Raised(&HdmRed::setRegionFilter, "area>3"), 32},
        {Raised(&HdmRed::setDownsamplingSize, -2), 64},
        {Raised(&HdmRed::setShowGraphics, false), 128 | Graphics},
        {Raised(&QuickRed::setUpperThreshold, 0.75), 8},
        {Raised(&QuickRed::setLowerThreshold, 0.25), 16},
        {Raised(&QuickRed::setRegionFilter, "area>3"), 32},
        {Raised(&QuickRed::setShowGraphics, false), 64 | Graphics},
        {Raised(&FocusedGreen::setSamplingDensity, 1), 8},
        {Raised(&FocusedGreen::setThreshold, 0.5), 16},
        {Raised(&FocusedGreen::setShowGraphics, false), 32 | Graphics},
        {Raised(&HdmGreen::setShowGraphics, false), 16 | Graphics},
        {Raised(&QuickGreen::setThreshold, 0.5), 8},
        {Raised(&QuickGreen::setShowGraphics, false), 16 | Graphics},
        {Raised(&QuickGreen::setGenerateHeatmap, true), 32},
        {Raised(&Read::setThreshold, 0.5), 8},
        {Raised(&Read::setFeatureFilter, "f"), 16},
        {Raised(&Read::setPrecision, 0.5), 32},
        {Raised(&Read::setFeatureSize, CreateObject<Vect2>(1, 2)), 64},
        {Raised(&Read::setShowFeatures, false), 128 | Graphics},
        {Raised(&Read::setShowModels, false), 256 | Graphics},
        {Raised(&Blue::setSamplingDensity, 1), 8},
        {Raised(&Blue::setShowModels, false), 512 | Graphics},
        {Raised(&DLToolRuntimeParams::setShowRegion, false), 2 | Graphics},
        {Raised(&DLToolRuntimeParams::setAddImageRecords, false), 4},
    };
    for (std::size_t row = 0; row < std::size(cases); ++row)
        EXPECT_EQ(cases[row].first, Words{cases[row].second}) << "row " << row;
    EXPECT_EQ(
        (Words{FocusedRed::sfNextSf_, HdmRed::sfNextSf_, QuickRed::sfNextSf_,
               FocusedGreen::sfNextSf_, QuickGreen::sfNextSf_, Blue::sfNextSf_, Read::sfNextSf_,
               DLBlueModel::sfNextSf_, DLBlueRegexModel::sfNextSf_, DLStream::sfNextSf_}),
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
    regex->setEnable(false);
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

// Both numbers are read with the first and last character skipped unseen; a failure keeps a lower
// threshold parsed before it.
TEST(RedThresholdText, ReadsBothNumbersOrFailsWithTheStandardTexts) {
    EXPECT_EQ(Parse("x1,2y"), Thresholds(1, 2));
    EXPECT_EQ(Parse("[ 0.5 , 1e-1]"), Thresholds(0.5, 0.1));
    Thresholds pair{-1, -1};
    EXPECT_EQ(Failure<std::out_of_range>("", pair), "invalid string position");
    EXPECT_EQ(Failure<std::invalid_argument>("[0.25]", pair), "invalid stod argument");
    EXPECT_EQ(Failure<std::invalid_argument>("[a,1]", pair), "invalid stod argument");
    EXPECT_EQ(Failure<std::out_of_range>("[1e999,1]", pair), "stod argument out of range");
    EXPECT_EQ(Failure<std::invalid_argument>("[0.5,]", pair), "invalid stod argument");
    EXPECT_EQ(pair.first, 0.5);
}

} // namespace

} // namespace ToolParametersTesting
