#include <cmath>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "GraphicsTestSupport.h"
#include "ResultTestSupport.h"
#include "ToolTestSupport.h"
#include "Vision/DeepLearning/Implementation/Internal/TestHelpers/TestHelper.h"
#include "records/BlueGraphics.h"

namespace BlueGraphicsTesting {

namespace {

using namespace Tavrin::Vision;
using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using namespace GraphicTexts;

// In document order a, c, b, d: x' = -2y + 100, y' = 2x + 2y + 50. Turned, sheared and
// scaled, so that shapes built upright in the view differ from shapes built in the image.
char const* const Pose = "0,2,-2,2,100,50";

// f0 lies along the view; f1 is turned a quarter against it; f2 sits on the view's origin.
std::string const F0 =
    "<feat id=\"f0\" loc=\"10,20\" angle=\"0\" size=\"40x60\" score=\"0.9\" covers=\"\"/>";
std::string const AllFeatures =
    F0 + "<feat id=\"f1\" loc=\"60,20\" angle=\"1.5707963267948966\" size=\"10x40\" score=\"0.8\" "
         "covers=\"\"/><feat id=\"f2\" loc=\"0,0\" angle=\"0\" size=\"10x10\" score=\"0.7\" "
         "covers=\"\"/>";

std::string const Chiclets = "show_feature_chiclets=\"true\" ";
std::string const Rectangular = "show_rectangular_features=\"true\" ";

std::string Refs(std::vector<int> const& indices) {
    std::string refs;
    for (int index : indices)
        refs += "<feat idx=\"" + std::to_string(index) + "\"/>";
    return refs;
}

std::string Match(std::string const& head, std::string const& children) {
    return "<match " + head + ">" + children + "</match>";
}
std::string StringMatch(std::vector<int> const& refs) {
    return Match("model_id=\"s\" model_type=\"string\" string=\"AB\"", Refs(refs));
}
std::string RegexMatch(std::vector<int> const& refs) {
    return Match("model_id=\"x\" model_type=\"regex\" covers=\"\" string=\"AB\" "
                 "prettified_string=\"A-B\"",
                 Refs(refs));
}
std::string NodeMatch(std::vector<int> const& refs) {
    return Match("model_id=\"n\" model_type=\"node\" covers=\"\" node_coords=\"0;0\" "
                 "string=\"s\" prettified_string=\"p\"",
                 Refs(refs));
}
std::string const LayoutMatch =
    Match("model_id=\"l\" model_type=\"layout\" covers=\"\"",
          "<region name=\"top\" origin=\"0,0\" size=\"10x20\">" + Refs({1}) +
              "</region><region name=\"bottom\" origin=\"20,30\" size=\"10x10\"/>");

struct ToolShows {
    bool features = true;
    bool models = true;
};

template <class Tool> GraphicCollectionPtr DrawnBy(DLResultView const& view, ToolShows show) {
    auto tool = ToolTest::MakeTool<Tool>();
    tool->setShowFeatures(show.features);
    tool->setShowModels(show.models);
    Records::GraphicList graphics;
    Records::AddBlueGraphics(graphics, view, std::is_same_v<Tool, DLBlueReadToolRuntimeParams>,
                             *tool);
    return Tavrin::Brnt::CreateObject<GraphicCollection>(std::move(graphics));
}

class BlueGraphics : public ThreeKindsOperatorTest {
protected:
    GraphicCollectionPtr Draw(std::string const& flags, std::string const& content, bool isRead,
                              ToolShows show = {}, char const* pose = Pose) {
        std::string const document =
            Document(Marking(View("<blue " + flags + ">" + content + "</blue>", pose), "blue-uuid"),
                     "blue-uuid");
        auto view = FirstView(Decode(document));
        return isRead ? DrawnBy<DLBlueReadToolRuntimeParams>(*view, show)
                      : DrawnBy<DLBlueToolRuntimeParams>(*view, show);
    }
};

TEST_F(BlueGraphics, FeatureShapesAreBuiltUprightInTheViewAndMappedByThePose) {
    // Name, flags, whether a read tool draws, and the drawing.
    std::tuple<char const*, std::string, bool, Texts> const cases[] = {
        {"plain tool, brackets with arrows at the origin", Rectangular, false,
         Texts{"segment 120,10 120,50 arrow ff0000ff w2", "segment 120,10 80,50 arrow ff0000ff w2",
               "segment 0,210 0,170 ff0000ff w2", "segment 0,210 40,170 ff0000ff w2",
               "segment 120,90 120,50 ff0000ff w2", "segment 120,90 80,130 ff0000ff w2",
               "segment 0,130 0,170 ff0000ff w2", "segment 0,130 40,90 ff0000ff w2",
               "marker 60,110 1.571 size25 ff0000ff w2"}},
        {"read tool, short unequal arms and a label at corner Y", Rectangular + Chiclets, true,
         Texts{"segment 120,10 120,20 ff0000ff w2", "segment 120,10 100,30 ff0000ff w2",
               "segment 0,210 0,200 ff0000ff w2", "segment 0,210 20,190 ff0000ff w2",
               "segment 120,90 120,80 ff0000ff w2", "segment 120,90 100,110 ff0000ff w2",
               "segment 0,130 0,140 ff0000ff w2", "segment 0,130 20,110 ff0000ff w2",
               "label 'f0' 0,130 1.571 align0 ff000000 on ffffff00"}},
        {"plain tool, ellipse with a label on the far Y edge", Chiclets, false,
         Texts{"ellipse 60,110 89.932,26.687 2.247 ff0000ff w2",
               "marker 60,110 1.571 size25 ff0000ff w2",
               "label 'f0' 0,170 1.571 align1 ff000000 on ffffff00"}},
        {"read tool, ellipse without a marker", Chiclets, true,
         Texts{"ellipse 60,110 89.932,26.687 2.247 ff0000ff w2",
               "label 'f0' 0,170 1.571 align1 ff000000 on ffffff00"}},
    };
    for (auto const& [name, flags, isRead, expected] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Described(*Draw(flags, F0, isRead)), expected);
    }
    // A turn with a uniform scale takes a shortcut; the ellipse must be the one the general
    // mapping gives: x' = -2y + 100, y' = 2x + 50.
    EXPECT_EQ(
        Described(*Draw(Chiclets, F0, false, {}, "0,2,-2,0,100,50")),
        (Texts{"ellipse 60,70 40,60 1.571 ff0000ff w2", "marker 60,70 1.571 size25 ff0000ff w2",
               "label 'f0' 0,70 1.571 align1 ff000000 on ffffff00"}));
}

// A result built by hand may have no match list at all; its features are drawn all the same.
TEST_F(BlueGraphics, AResultWithoutAMatchListDrawsItsFeatures) {
    using Factory = DeepLearning::Implementation::Internal::TestHelpers::TestHelper;
    auto rectangle = Tavrin::Brnt::CreateObject<RectangleAffine>();
    rectangle->SetCenterLengthsRotationSkew(10, 20, 40, 60, 0, 0);
    auto const features = Tavrin::Brnt::CreateObject<DLBlueFeatureReadOnlyCollection>(
        std::vector<DLBlueFeaturePtr>{Factory::CreateDLBlueFeature("f0", rectangle, 0.9, "")});
    auto const blue = Factory::CreateDLResultBlue("blue-uuid", false, false, false, true, false,
                                                  features, nullptr);
    auto const view =
        Factory::CreateDLResultView(nullptr, Linear(1, 0, 0, 1, 0, 0), Linear(1, 0, 0, 1, 0, 0), "",
                                    nullptr, blue, nullptr, nullptr);
    EXPECT_EQ(Sketched(*DrawnBy<DLBlueToolRuntimeParams>(*view, {})), "ellipse marker 'f0' ");
}

TEST_F(BlueGraphics, MatchedFeaturesComeFirstAndOnlyAPlainToolLabelsThem) {
    // The layout's region holds f1, which still counts as unmatched.
    std::string const matches = AllFeatures + StringMatch({2, 0}) + LayoutMatch;
    std::string const brackets = "segment segment segment segment segment segment segment segment ";
    // Name, flags, the result, whether a read tool draws, and the drawing.
    std::tuple<char const*, std::string, std::string, bool, std::string> const cases[] = {
        {"plain tool", Chiclets, matches, false,
         "ellipse marker '* f2' ellipse marker '* f0' ellipse marker 'f1' "},
        {"read tool", Chiclets, matches, true, "ellipse ellipse ellipse 'f1' "},
        {"plain tool without chiclets", Rectangular, matches, false,
         brackets + "marker '* f2' " + brackets + "marker '* f0' " + brackets + "marker "},
        {"read tool without chiclets", Rectangular, matches, true, brackets + brackets + brackets},
        {"a feature shared by two matches", Chiclets, F0 + StringMatch({0}) + RegexMatch({0}),
         false, "ellipse marker '* f0' ellipse marker '* f0' "},
    };
    for (auto const& [name, flags, content, isRead, expected] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Sketched(*Draw(flags, content, isRead, {true, false})), expected);
    }
}

TEST_F(BlueGraphics, EachShowFlagOpensOnlyItsOwnPart) {
    // Name, flags, whether a read tool draws, what the tool shows, and the drawing.
    std::tuple<char const*, std::string, bool, ToolShows, std::string> const cases[] = {
        {"all shown", Chiclets, false, {true, true}, "ellipse marker '* f0' rect 's AB' "},
        {"tool hides features", Chiclets, false, {false, true}, "rect 's AB' "},
        {"tool hides models", Chiclets, false, {true, false}, "ellipse marker '* f0' "},
        {"result asks for no features", "", false, {true, true}, "rect 's AB' "},
        {"read tool hides features", Chiclets, true, {false, true}, "rect 's AB' "},
        {"read tool hides models", Chiclets, true, {true, false}, "ellipse "},
        {"tool hides both", Chiclets + Rectangular, false, {false, false}, ""},
    };
    for (auto const& [name, flags, isRead, show, expected] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Sketched(*Draw(flags, F0 + StringMatch({0}), isRead, show)), expected);
    }
}

TEST_F(BlueGraphics, EachMatchKindIsDrawnAsTheToolKindWants) {
    // The box counts f1 with its unturned size: x from 55 to 65 in the view, not 40 to 80.
    std::string const box = "rect 120,10 120,160 0,130 ffffff00 w2";
    auto label = [](std::string const& text, char const* at, int alignment) {
        return "label '" + text + "' " + at + " 1.571 align" + std::to_string(alignment) +
               " ff000000 on ffffff00";
    };
    // Name, the match, whether a read tool draws, and the drawing.
    std::tuple<char const*, std::string, bool, Texts> const cases[] = {
        {"string", StringMatch({0, 1}), false, Texts{box, label("s AB", "0,130", 0)}},
        {"regex", RegexMatch({0, 1}), true, Texts{box, label("x A-B", "0,130", 0)}},
        {"node in a plain tool", NodeMatch({0, 1, 2}), false,
         Texts{"segment 60,110 60,210 ff00cece w1", "segment 60,210 100,50 ff00cece w1"}},
        {"node in a read tool", NodeMatch({0, 1, 2}), true, Texts{box, label("n p", "0,130", 0)}},
        {"node of one feature in a plain tool", NodeMatch({0}), false, Texts{}},
        {"node of one feature in a read tool", NodeMatch({0}), true,
         Texts{"rect 120,10 120,90 0,130 ffffff00 w2", label("n p", "0,130", 0)}},
        {"layout", LayoutMatch, true,
         Texts{"rect 100,50 100,70 60,90 ff0000ff w2", label("top", "60,90", 3),
               "rect 40,150 40,170 20,170 ff0000ff w2", label("bottom", "20,170", 3)}},
    };
    for (auto const& [name, match, isRead, expected] : cases) {
        SCOPED_TRACE(name);
        EXPECT_EQ(Described(*Draw(Chiclets, AllFeatures + match, isRead, {false, true})), expected);
    }
}

TEST_F(BlueGraphics, ARegexMatchWithoutFeaturesGetsABoxAtInfinity) {
    auto graphics = Draw("", RegexMatch({}), false);
    ASSERT_EQ(graphics->Count(), 2);
    auto box = std::dynamic_pointer_cast<RectangleAffine>(graphics->Item(0));
    auto label = std::dynamic_pointer_cast<GraphicLabel>(graphics->Item(1));
    ASSERT_TRUE(box && label);
    EXPECT_EQ(label->Text(), "x A-B");
    for (double coordinate : {box->CornerOriginX(), box->CornerYY(), label->X(), label->Y()})
        EXPECT_FALSE(std::isfinite(coordinate));
}

} // namespace

} // namespace BlueGraphicsTesting
