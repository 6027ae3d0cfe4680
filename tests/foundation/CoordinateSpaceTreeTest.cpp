#include <gtest/gtest.h>

#include <Vision/Core/CoordinateSpaceTree.h>
#include <Vision/Core/Image8Grey.h>

#include "VisionTestSupport.h"

namespace CoordinateSpaceTreeTesting {

namespace {

using Tavrin::Brnt::CreateObject;
using namespace Tavrin::Vision;

// "#" -> "board": x' = 2x + 10, y' = 2y + 20; "board" -> "part": a quarter turn then (5, 0),
// x'' = -y' + 5, y'' = x'; "#" -> "side": a shift by (-3, 4).
std::shared_ptr<CoordinateSpaceTree> TwoLevelTree() {
    auto tree = CreateObject<CoordinateSpaceTree>();
    tree->AddSpace("board", "#", *CreateObject<Transform2DLinear>(2, 0, 0, 2, 10, 20));
    tree->AddSpace("part", "board", *CreateObject<Transform2DLinear>(0, -1, 1, 0, 5, 0));
    tree->AddSpace("side", "#", *CreateObject<Transform2DLinear>(1, 0, 0, 1, -3, 4));
    return tree;
}

void ExpectMaps(std::shared_ptr<ITransform2D> const& transform, double x, double y,
                double expectedX, double expectedY) {
    double outX, outY;
    transform->MapPoint(x, y, &outX, &outY);
    EXPECT_NEAR(outX, expectedX, 1e-12);
    EXPECT_NEAR(outY, expectedY, 1e-12);
}

TEST(CoordinateSpaceTree, ComposesTransformsThroughTwoLevels) {
    auto tree = TwoLevelTree();
    // (1, 1) in "#" is (12, 22) in "board" and (-17, 12) in "part".
    ExpectMaps(tree->TransformFromRoot("part"), 1, 1, -17, 12);
    ExpectMaps(tree->GetTransform("part", "#"), 1, 1, -17, 12);
    ExpectMaps(tree->GetTransform("board", "part"), -17, 12, 12, 22);
    ExpectMaps(tree->GetTransform("#", "part"), -17, 12, 1, 1);
    // Across branches: back to (1, 1) in "#", then shifted into "side".
    ExpectMaps(tree->GetTransform("side", "part"), -17, 12, -2, 5);
    EXPECT_EQ(tree->SpaceNames(), (std::vector<std::string>{"board", "part", "side"}));
    // An image answers through a tree of its own until it is given one.
    ExpectMaps(CreateObject<Image8Grey>(4, 4)->GetTransform("#", "#"), 3, 4, 3, 4);
}

TEST(CoordinateSpaceTree, UnknownOrRepeatedNamesThrowArgumentException) {
    auto tree = TwoLevelTree();
    auto identity = CreateObject<Transform2DLinear>();
    EXPECT_EQ(VisionTest::MessageOf([&] { tree->GetTransform("board", "nowhere"); }),
              "The coordinate space 'nowhere' does not exist.");
    EXPECT_THROW(tree->AddSpace("leaf", "nowhere", *identity), ArgumentException);
    EXPECT_THROW(tree->AddSpace("board", "#", *identity), ArgumentException);
    EXPECT_THROW(tree->AddSpace("#", "#", *identity), ArgumentException);
    EXPECT_THROW(CreateObject<Image8Grey>(1, 1)->GetTransform("board", "#"), ArgumentException);
}

TEST(CoordinateSpaceTree, CopyOwnsItsTransforms) {
    auto tree = TwoLevelTree();
    auto copy = tree->Copy();
    tree->TransformFromParent("board")->SetMatrixElementsTranslation(1, 0, 0, 1, 0, 0);
    copy->AddSpace("extra", "part", *CreateObject<Transform2DLinear>());
    ExpectMaps(copy->TransformFromRoot("board"), 1, 1, 12, 22);
    EXPECT_FALSE(tree->Contains("extra"));
}

} // namespace

} // namespace CoordinateSpaceTreeTesting
