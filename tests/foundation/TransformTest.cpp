#include <gtest/gtest.h>

#include <cmath>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace TransformTesting {

namespace {

using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::Transform2DLinear;

// Composition, inversion and archiving are checked through the coordinate space tree, the
// variant collection and the graphic archive, which rest on them.
TEST(Transform2DLinear, GivesItsRotationAndRefusesToInvertASingularMatrix) {
    EXPECT_DOUBLE_EQ(CreateObject<Transform2DLinear>(0, -1, 1, 0, 0, 0)->Rotation(), M_PI / 2);
    EXPECT_EQ(VisionTest::CodeAndMessageOf<Tavrin::Vision::InternalErrorException>(
                  [] { CreateObject<Transform2DLinear>(1, 2, 2, 4, 0, 0)->Invert(); }),
              VisionTest::CodeAndMessage(Tavrin::Vision::VisionExceptionCodes_NotInvertible,
                                         "The transform cannot be inverted."));
}

} // namespace

} // namespace TransformTesting
