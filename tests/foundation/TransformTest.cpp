#include <gtest/gtest.h>

#include <cmath>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace {

using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::Transform2DLinear;

std::shared_ptr<Transform2DLinear> Make(double a, double b, double c, double d, double tx,
                                        double ty) {
    auto t = CreateObject<Transform2DLinear>();
    t->SetMatrixElementsTranslation(a, b, c, d, tx, ty);
    return t;
}

TEST(Transform2DLinear, ComposeAppliesArgumentFirst) {
    auto rotate = Make(0, -1, 1, 0, 0, 0); // quarter turn
    auto shift = Make(1, 0, 0, 1, 10, 0);
    double x, y;
    rotate->Compose(*shift)->MapPoint(1, 2, &x, &y); // rotate(shift(p)) = rotate(11, 2)
    EXPECT_DOUBLE_EQ(x, -2);
    EXPECT_DOUBLE_EQ(y, 11);
    EXPECT_DOUBLE_EQ(rotate->Rotation(), M_PI / 2);
}

TEST(Transform2DLinear, InvertRoundTripsAndRefusesSingular) {
    auto t = Make(2, 1, -1, 3, 5, -7);
    auto identity = t->Compose(*t->Invert());
    double x, y;
    identity->MapPoint(4, 9, &x, &y);
    EXPECT_NEAR(x, 4, 1e-12);
    EXPECT_NEAR(y, 9, 1e-12);
    EXPECT_THROW(Make(1, 2, 2, 4, 0, 0)->Invert(), Tavrin::Vision::InternalErrorException);
}

TEST(Transform2DLinear, ArchiveRoundTripThroughBasePointerKeepsIdentity) {
    std::shared_ptr<Tavrin::Vision::ITransform2D> original = Make(1, 2, 3, 4, 5, 6);
    std::shared_ptr<Tavrin::Vision::ITransform2D> first, second;
    VisionTest::LoadTogether(VisionTest::SavedTogether(original, original), first, second);
    ASSERT_EQ(first, second);
    auto loaded = std::dynamic_pointer_cast<Transform2DLinear>(first);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(loaded->D(), 4);
    EXPECT_EQ(loaded->TY(), 6);
    EXPECT_EQ(loaded->shared_from_this(), loaded);
}

} // namespace
