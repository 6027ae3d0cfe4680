#include <stdexcept>

#include <tinyxml2.h>

#include <Vision/Core/Vect2.h>

#include "ResultTestSupport.h"
#include "VisionTestSupport.h"
#include "engine/ResultDecoding.h"

namespace ResultDecodingTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using Tavrin::Vision::RectangleAffine;
using VisionTest::CodeAndMessage;
using VisionTest::CodeAndMessageOf;
using VisionTest::MessageOf;
using Doubles = std::vector<double>;
using Texts = std::vector<std::string>;

class ResultDecoding : public ThreeKindsOperatorTest {
protected:
    DLResultViewPtr DecodeView(std::string const& content, std::string const& pose = "1,0,0,1,0,0",
                               std::string const& tool = "red-uuid") {
        return FirstView(Decode(Document(Marking(View(content, pose), tool), tool)));
    }
};

// Each value as EXPECT_DOUBLE_EQ compares it.
void ExpectDoubles(Doubles const& actual, Doubles const& expected) {
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t index = 0; index < actual.size(); ++index)
        EXPECT_DOUBLE_EQ(actual[index], expected[index]) << "value " << index;
}

void ExpectCorners(RectangleAffine const& r, Doubles const& originAndSides) {
    ExpectDoubles({r.CornerOriginX(), r.CornerOriginY(), r.SideXLength(), r.SideYLength()},
                  originAndSides);
}

// A size without an x reads both numbers from the whole text.
TEST_F(ResultDecoding, ReadsMarkingsWithTheirToolsTimesAndImageInformation) {
    auto result = Decode(
        Document(Marking("<image_info size=\"1024x768\" channels=\"1\" depth=\"8\"/>" + View("")) +
                 Marking("<image_info size=\"640\" channels=\"3\" depth=\"8\"/>" +
                             View("", "1,0,0,1,0,0", "640"),
                         "blue-uuid")));
    ASSERT_TRUE(result);
    EXPECT_EQ(result->Tool(), Tool("red-uuid"));
    auto markings = result->ResultImage()->ResultMarking();
    ASSERT_EQ(markings->Count(), 2);
    auto first = markings->Item(0);
    EXPECT_EQ(first->Tool(), Tool("red-uuid"));
    EXPECT_EQ(markings->Item(1)->Tool(), Tool("blue-uuid"));
    ExpectDoubles({first->Duration(), first->DurationProcessOnly(), first->DurationPostProcess()},
                  {31.5, 28.25, 1.5});
    EXPECT_EQ((Texts{first->ProcessedAt(), first->ProcessedDevice(),
                     first->ResultViews()->Item(0)->Group()}),
              (Texts{"2024-05-01T10:00", "gpu0", "g1"}));
    auto info = first->ImageInfo();
    ASSERT_TRUE(info);
    EXPECT_EQ((std::vector<int>{info->ImageWidth(), info->ImageHeight(), info->Channels(),
                                info->Depth()}),
              (std::vector<int>{1024, 768, 1, 8}));
    auto const second = markings->Item(1);
    EXPECT_EQ(
        (std::vector<int>{second->ImageInfo()->ImageWidth(), second->ImageInfo()->ImageHeight()}),
        (std::vector<int>{640, 640}));
    ExpectCorners(*second->ResultViews()->Item(0)->Region(), {0, 0, 640, 640});
}

// A document of another tool is refused quietly.
TEST_F(ResultDecoding, AbsentPartsGiveNullResultsOrEmptyCollections) {
    EXPECT_EQ(Decode(Document("<marking/>garbage", "nobody")), nullptr);
    EXPECT_EQ(Decode(Document(""))->ResultImage()->ResultMarking()->Count(), 0);
    auto marking = Decode(Document(Marking("")))->ResultImage()->ResultMarking()->Item(0);
    EXPECT_EQ(marking->ImageInfo(), nullptr);
    EXPECT_EQ(marking->ResultViews()->Count(), 0);

    auto view = DecodeView("");
    EXPECT_EQ(view->ResultRed(), nullptr);
    EXPECT_EQ(view->ResultGreen(), nullptr);
    EXPECT_EQ(view->ResultBlue(), nullptr);
    ASSERT_TRUE(view->Resources());
    EXPECT_EQ(view->Resources()->Count(), 0);
    ExpectCorners(*view->Region(), {0, 0, 100, 50});
}

TEST_F(ResultDecoding, PosesSwapTheirMiddleNumbersAndComposeWithTheRunTransform) {
    auto const document = Document(Marking(
        "<view size=\"100x50\" ref_pose=\"1,2,3,4,5,6\" pose=\"1,0,0,1,10,20\" group=\"\"/>"));
    auto refPose = FirstView(Decode(document))->RefPose();
    EXPECT_EQ((std::vector<double>{refPose->A(), refPose->B(), refPose->C(), refPose->D(),
                                   refPose->TX(), refPose->TY()}),
              (std::vector<double>{1, 3, 2, 4, 5, 6}));

    auto view = FirstView(Decode(document, Linear(2, 0, 0, 2, 1, 1)));
    ExpectDoubles({view->Pose()->TX(), view->Pose()->TY()}, {21, 41});
    ExpectCorners(*view->Region(), {21, 41, 200, 100});
}

struct NumberCase {
    char const* duration;
    double value;
    char const* failure; // empty when the text reads
};

TEST_F(ResultDecoding, ReadsNumbersAsTheStandardConversionsDo) {
    NumberCase const cases[] = {
        {"12ms", 12, ""},
        {" 2.5", 2.5, ""},
        {"0x10", 16, ""},
        {"ms", 0, "invalid stod argument"},
        {"", 0, "invalid stod argument"},
        {"1e999", 0, "stod argument out of range"},
    };
    for (NumberCase const& c : cases) {
        SCOPED_TRACE(c.duration);
        std::string const document = Document(Marking("", "red-uuid", c.duration));
        if (*c.failure == '\0')
            EXPECT_DOUBLE_EQ(Decode(document)->ResultImage()->ResultMarking()->Item(0)->Duration(),
                             c.value);
        else
            EXPECT_EQ(MessageOf<std::logic_error>([&] { Decode(document); }), c.failure);
    }
    auto channels = [&](char const* text) {
        return Document(Marking(std::string("<image_info size=\"4x4\" channels=\"") + text +
                                "\" depth=\"8\"/>"));
    };
    EXPECT_THROW(Decode(channels("abc")), std::invalid_argument);
    EXPECT_THROW(Decode(channels("4294967296")), std::out_of_range);
    // A doubled blank between points leaves an empty point, and any bad point ends the decode.
    EXPECT_EQ(MessageOf<std::invalid_argument>([&] { DecodeView(Red(Region("0,0", "0,0  1,1"))); }),
              "invalid stod argument");
}

// Plain decimals take a quicker road than other texts; both must give the C library's values.
TEST_F(ResultDecoding, PointsReadEveryFormAsTheCLibraryDoes) {
    struct PointCase {
        char const* text;
        double value;
    };
    PointCase const cases[] = {
        {"0.1", 0.1},  {"1000.15", 1000.15}, {"-.5", -0.5},
        {"1.5e1", 15}, {"0x10", 16},         {"12345678901234567", 12345678901234567.0},
        {"+2", 2},
    };
    for (PointCase const& c : cases) {
        SCOPED_TRACE(c.text);
        std::string const text = c.text;
        auto region = DecodeView(Red(Region(text + "," + text, text + ",1 1," + text)))
                          ->ResultRed()
                          ->ResultRegions()
                          ->Item(0);
        EXPECT_EQ((Doubles{region->Center()->X(), region->Center()->Y(),
                           region->Points()->Item(0)->X(), region->Points()->Item(1)->Y()}),
                  Doubles(4, c.value));
    }
}

TEST_F(ResultDecoding, RedRegionsComeBackInTheCallersSpace) {
    auto red =
        DecodeView(Red("<region score=\"0.9\" name=\"r0\" area=\"120.5\" perimeter=\"44\" "
                       "center=\"1,2\" covers=\"c\" coverage=\"cv\" points=\"0,0 10,0 10,5\"/>"
                       "<region score=\"0.1\" name=\"r1\" area=\"1\" perimeter=\"1\" "
                       "center=\"0,0\" covers=\"\" coverage=\"\" points=\"\"/>"),
                   "1,0,0,1,5,6")
            ->ResultRed();
    ASSERT_TRUE(red);
    ASSERT_EQ(red->ResultRegions()->Count(), 2);
    auto region = red->ResultRegions()->Item(0);
    ExpectDoubles({red->Score(), red->FilteredScore(), red->ResultScore()->Score(), region->Area()},
                  {0.8, 0.75, 0.6, 120.5});
    EXPECT_EQ((Texts{red->Thresholds(), red->SupervisedMode(), red->ToolId(),
                     red->ResultScore()->Name(), region->Name()}),
              (Texts{"[0.1,0.9]", "", "red-uuid", "overall", "r0"}));
    EXPECT_EQ(region->Center(), Tavrin::Brnt::CreateObject<Tavrin::Vision::Vect2>(6, 8));
    std::vector<std::pair<double, double>> points;
    for (auto const& point : region->Points()->GetDataC())
        points.emplace_back(point->X(), point->Y());
    EXPECT_EQ(points, (std::vector<std::pair<double, double>>{{5, 6}, {15, 6}, {15, 11}}));
    EXPECT_EQ(red->ResultRegions()->Item(1)->Points()->Count(), 0);
}

TEST_F(ResultDecoding, GreenTagsKeepTheEnginesOrderAndTheBestIsTheFirstHighest) {
    auto green =
        DecodeView("<green threshold=\"0.5\" exclusive=\"yes\" similarity_reference=\"true\" "
                   "uncertainty=\"0.1\"><tag name=\"a\" score=\"0.2\"/><tag name=\"b\" "
                   "score=\"0.9\"/><tag name=\"c\" score=\"0.9\"/><label><training_flag "
                   "value=\"true\" manual=\"true\"/><tag name=\"b\"/></label></green>",
                   "1,0,0,1,0,0", "green-uuid")
            ->ResultGreen();
    ASSERT_TRUE(green);
    EXPECT_DOUBLE_EQ(green->Threshold(), 0.5);
    EXPECT_EQ((std::vector<bool>{green->Exclusive(), green->SimilarityReference()}),
              (std::vector<bool>{false, true}));
    EXPECT_EQ(green->ToolId(), "green-uuid");
    std::string names;
    for (auto const& tag : *green->Tags())
        names += tag->Name();
    EXPECT_EQ(names, "abc");
    EXPECT_EQ(green->BestTag(), green->Tags()->Item(1));
    EXPECT_EQ(green->BestTag(), green->Tags()->Item(1));

    auto noTags = DecodeView("<green threshold=\"0\" uncertainty=\"0\"/>")->ResultGreen();
    EXPECT_EQ(noTags->BestTag(), nullptr);
}

std::string const Features =
    "<feat id=\"f0\" loc=\"10,10\" angle=\"0\" size=\"20x30\" score=\"0.95\" covers=\"A\"/>"
    "<feat id=\"f1\" loc=\"50,10\" angle=\"0.5\" size=\"10x10\" score=\"0.5\" covers=\"B\"/>"
    "<feat id=\"f2\" loc=\"80,10\" angle=\"0\" size=\"10x10\" score=\"0.7\" covers=\"C\"/>";

TEST_F(ResultDecoding, BlueFeaturesAreRectanglesInTheCallersSpace) {
    auto blue = DecodeView("<blue_read oriented=\"true\" show_feature_chiclets=\"1\">" + Features +
                               "</blue_read>",
                           "1,0,0,1,5,6", "blue-uuid")
                    ->ResultBlue();
    ASSERT_TRUE(blue);
    EXPECT_EQ((std::vector<bool>{blue->Oriented(), blue->Scaled(), blue->ShowFeatureChiclets(),
                                 blue->ShowRectangularFeatures()}),
              (std::vector<bool>{true, false, true, false}));
    ASSERT_EQ(blue->Features()->Count(), 3);
    auto feature = blue->Features()->Item(0);
    EXPECT_EQ((Texts{feature->Id(), feature->Covers()}), (Texts{"f0", "A"}));
    auto const box = feature->Rectangle();
    ExpectDoubles(
        {feature->Score(), box->CenterX(), box->CenterY(), box->SideXLength(), box->SideYLength()},
        {0.95, 15, 16, 20, 30});
    EXPECT_NEAR(blue->Features()->Item(1)->Rectangle()->Rotation(), 0.5, 1e-12);
}

TEST_F(ResultDecoding, AViewWithBothBlueKindsKeepsTheSecond) {
    auto blue = DecodeView("<blue scaled=\"true\"/><blue_read aspected=\"true\"/>")->ResultBlue();
    EXPECT_EQ((std::vector<bool>{blue->Scaled(), blue->Aspected()}),
              (std::vector<bool>{false, true}));
}

TEST_F(ResultDecoding, MatchesShareTheFeaturesTheyReferTo) {
    auto blue =
        DecodeView("<blue>" + Features +
                       "<match model_id=\"s\" model_type=\"string\" score=\"abc\" string=\"AB\">"
                       "<pose matrix=\"1,0,0,1,5,6\"/><feat idx=\"2\"/><feat/><feat idx=\"2\"/>"
                       "</match>"
                       "<match model_id=\"n\" model_type=\"node\" score=\"0.5\" covers=\"c\" "
                       "node_coords=\"1;2\" string=\"s\" prettified_string=\"p\"/>"
                       "<match model_id=\"x\" model_type=\"regex\" score=\"0.25\" covers=\"c\" "
                       "string=\"AB\" prettified_string=\"A-B\"><feat idx=\"1\"/></match>"
                       "<match model_id=\"l\" model_type=\"layout\" score=\"1\" covers=\"c\">"
                       "<feat idx=\"0\"/><region name=\"top\" origin=\"0,0\" size=\"10x20\" "
                       "occurrences=\"2\"><feat idx=\"1\"/></region></match></blue>",
                   "1,0,0,1,1,1")
            ->ResultBlue();
    auto features = blue->Features();
    auto matches = blue->Matches();
    ASSERT_EQ(matches->Count(), 4);

    auto string = std::dynamic_pointer_cast<DLResultMatchString>(matches->Item(0));
    ASSERT_TRUE(string);
    EXPECT_EQ((Texts{string->ModelID(), string->MatchString()}), (Texts{"s", "AB"}));
    ExpectDoubles({string->Score(), string->Pose()->TX(), string->Pose()->TY()}, {0, 6, 7});
    EXPECT_EQ(
        string->Features()->GetDataC(),
        (std::vector<DLBlueFeaturePtr>{features->Item(2), features->Item(0), features->Item(2)}));

    auto node = std::dynamic_pointer_cast<DLResultMatchNode>(matches->Item(1));
    ASSERT_TRUE(node);
    EXPECT_EQ((Texts{node->NodeCoords(), node->PrettifiedString()}), (Texts{"1;2", "p"}));
    EXPECT_TRUE(node->Pose()->IsIdentity());
    EXPECT_EQ(node->Features()->Count(), 0);

    auto regex = std::dynamic_pointer_cast<DLResultMatchRegex>(matches->Item(2));
    ASSERT_TRUE(regex);
    EXPECT_EQ(regex->String(), "AB");
    EXPECT_EQ(regex->Features()->Item(0), features->Item(1));

    auto layout = std::dynamic_pointer_cast<DLResultMatchLayout>(matches->Item(3));
    ASSERT_TRUE(layout);
    ASSERT_EQ(layout->Regions()->Count(), 1);
    auto region = layout->Regions()->Item(0);
    EXPECT_EQ(region->Name(), "top");
    EXPECT_EQ(region->Occurrences(), 2);
    ExpectDoubles({region->Rectangle()->CenterX(), region->Rectangle()->CenterY()}, {6, 11});
    EXPECT_EQ(region->Features()->GetDataC(), std::vector<DLBlueFeaturePtr>{features->Item(1)});
}

// Match scores and feature indices read as sscanf reads them, whatever their form.
TEST_F(ResultDecoding, MatchScoresAndFeatureIndicesReadEveryForm) {
    struct MatchCase {
        char const* score;
        double value;
        char const* index;
        int feature;
    };
    MatchCase const cases[] = {
        {"0.25", 0.25, "1", 1}, {" 0.5", 0.5, "02", 2},    {"5e-1", 0.5, "0x2", 2},
        {"-.5", -0.5, " 1", 1}, {"0x1p-1", 0.5, "1.9", 1}, {"0.1", 0.1, "2abc", 2},
    };
    for (MatchCase const& c : cases) {
        SCOPED_TRACE(c.score);
        auto blue = DecodeView("<blue>" + Features +
                               "<match model_id=\"s\" model_type=\"string\" score=\"" + c.score +
                               "\" string=\"s\"><feat idx=\"" + c.index + "\"/></match></blue>")
                        ->ResultBlue();
        auto match = std::dynamic_pointer_cast<DLResultMatchString>(blue->Matches()->Item(0));
        ASSERT_TRUE(match);
        EXPECT_EQ(match->Score(), c.value);
        EXPECT_EQ(match->Features()->Item(0), blue->Features()->Item(c.feature));
    }
}

TEST_F(ResultDecoding, AnUnknownModelTypeIsRefused) {
    for (char const* type : {"Layout", "strings", "", "str"}) {
        SCOPED_TRACE(type);
        EXPECT_EQ(CodeAndMessageOf<DeepLearningException>([&] {
                      DecodeView(std::string("<blue><match model_id=\"m\" model_type=\"") + type +
                                 "\" string=\"s\"/></blue>");
                  }),
                  CodeAndMessage(20, "Failed to Parse result"));
    }
}

TEST_F(ResultDecoding, ADocumentThatBreaksTheContractIsRefusedWithoutACrash) {
    std::string const goodView = View("");
    std::string const documents[] = {
        "",
        "not xml at all",
        "<result><tool uuid=\"red-uuid\"/><image>",
        "<result/>",
        "<result><tool/></result>",
        "<result><tool uuid=\"red-uuid\"/></result>",
        Document("<marking tool_uuid=\"red-uuid\"/>"),
        Document(Marking(goodView, "gone-uuid")),
        Document(Marking("<view size=\"1x1\" ref_pose=\"1,0,0,1,0\" pose=\"1,0,0,1,0,0\" "
                         "group=\"\"/>")),
        Document(Marking(View("<red score=\"1\" filtered_score=\"1\" threshold=\"\"/>"))),
        Document(Marking(View("<blue>" + Features +
                              "<match model_id=\"m\" model_type=\"string\" "
                              "string=\"s\"><feat idx=\"3\"/></match></blue>"))),
        Document(Marking(View("<blue><feat id=\"f\"/></blue>"))),
    };
    for (std::string const& document : documents) {
        SCOPED_TRACE(document);
        std::string const refusal =
            CodeAndMessageOf<DeepLearningException>([&] { Decode(document); });
        EXPECT_EQ(refusal.rfind(CodeAndMessage(20, "Failed to Parse result: "), 0), 0u) << refusal;
    }
}

// The quick readers of typed attributes answer as tinyxml2's own readers do, whatever the text.
TEST(ResultAttributes, ReadEveryTextAsTinyxml2Does) {
    char const* const texts[] = {
        "true", "false", "True", "FALSE", "1",   "0",           "7x",
        " 7",   "-3",    "0x1F", "2.5",   "1e3", "99999999999", "1234567890123456789012",
        "",     "yes"};
    for (char const* text : texts) {
        SCOPED_TRACE(text);
        tinyxml2::XMLDocument document;
        tinyxml2::XMLElement& element = *document.NewElement("e");
        element.SetAttribute("a", text);
        EXPECT_EQ(Private::BoolAttribute(element, "a", true), element.BoolAttribute("a", true));
        EXPECT_EQ(Private::IntAttribute(element, "a", -1), element.IntAttribute("a", -1));
        EXPECT_EQ(Private::Int64Attribute(element, "a", -1), element.Int64Attribute("a", -1));
        EXPECT_EQ(Private::DoubleAttribute(element, "a", -1), element.DoubleAttribute("a", -1));
    }
}

} // namespace

} // namespace ResultDecodingTesting
