#include <gtest/gtest.h>

#include <cmath>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace GeometryTesting {

namespace {

using namespace Tavrin::Vision;
using Tavrin::Brnt::CreateObject;

constexpr double kTolerance = 1e-12;

std::shared_ptr<Transform2DLinear> Linear(double a, double b, double c, double d, double tx,
                                          double ty) {
    return CreateObject<Transform2DLinear>(a, b, c, d, tx, ty);
}

// Each expected value within the tolerance of the actual one in the same place.
void ExpectNear(std::vector<double> const& actual, std::vector<double> const& expected) {
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(actual[i], expected[i], kTolerance) << "value " << i;
}

// Origin, corner X, corner Y, opposite corner and centre, as x and y each.
void ExpectCorners(RectangleAffine const& r, std::vector<double> const& expected) {
    ExpectNear({r.CornerOriginX(), r.CornerOriginY(), r.CornerXX(), r.CornerXY(), r.CornerYX(),
                r.CornerYY(), r.CornerOppositeX(), r.CornerOppositeY(), r.CenterX(), r.CenterY()},
               expected);
}

// The image of (x, y) under the transform.
std::vector<double> Mapped(ITransform2D const& transform, double x, double y) {
    transform.MapPoint(x, y, &x, &y);
    return {x, y};
}

TEST(Vect2, SharedPointerEqualityComparesValues) {
    Vect2Ptr const a = CreateObject<Vect2>(1.5, -2), b = CreateObject<Vect2>(1.5, -2);
    Vect2Ptr const other = CreateObject<Vect2>(1.5, 2), none;
    EXPECT_EQ((std::vector<bool>{a == b, a != other, none == Vect2Ptr(), a == none, none == a}),
              (std::vector<bool>{true, true, true, false, false}));
}

TEST(RectangleAffine, RotatedAndSkewedCornersMatchHandWorkedValues) {
    auto r = CreateObject<RectangleAffine>();
    // A quarter turn: side X runs up the y axis, side Y runs towards negative x.
    r->SetOriginLengthsRotationSkew(10, 20, 4, 2, M_PI / 2, 0);
    ExpectCorners(*r, {10, 20, 10, 24, 8, 20, 8, 24, 9, 22});

    // Skew of an eighth turn: side Y of length 2·sqrt(2) runs along (-1, 1)/sqrt(2).
    r->SetOriginLengthsRotationSkew(1, 1, 3, 2 * std::sqrt(2.0), 0, M_PI / 4);
    ExpectCorners(*r, {1, 1, 4, 1, -1, 3, 2, 3, 1.5, 2});

    r->SetCenterLengthsRotationSkew(1.5, 2, 3, 2 * std::sqrt(2.0), 0, M_PI / 4);
    ExpectCorners(*r, {1, 1, 4, 1, -1, 3, 2, 3, 1.5, 2});
}

TEST(RectangleAffine, OriginCornerXCornerYRoundTripsWithSkewInHalfOpenTurn) {
    auto r = CreateObject<RectangleAffine>();
    r->SetOriginCornerXCornerY(1, 1, 4, 1, -1, 3);
    ExpectNear({r->SideXLength(), r->SideYLength(), r->Rotation(), r->Skew()},
               {3, std::sqrt(8.0), 0, M_PI / 4});

    // Side Y along the rotation's negative normal: a skew of half a turn, which is kept as -pi.
    r->SetOriginCornerXCornerY(0, 0, 0, -1, -1, 0);
    EXPECT_NEAR(r->Rotation(), -M_PI / 2, kTolerance);
    EXPECT_DOUBLE_EQ(r->Skew(), -M_PI);
    ExpectCorners(*r, {0, 0, 0, -1, -1, 0, -1, -1});

    // A skew beyond half a turn comes back shifted by a whole turn, with the same corners.
    auto source = CreateObject<RectangleAffine>();
    source->SetOriginLengthsRotationSkew(2, -3, 5, 7, 2.5, 3.5);
    r->SetOriginCornerXCornerY(source->CornerOriginX(), source->CornerOriginY(), source->CornerXX(),
                               source->CornerXY(), source->CornerYX(), source->CornerYY());
    ExpectNear(
        {r->Rotation(), r->Skew(), r->SideYLength(), r->CornerOppositeX(), r->CornerOppositeY()},
        {2.5, 3.5 - 2 * M_PI, 7, source->CornerOppositeX(), source->CornerOppositeY()});
}

TEST(RectangleAffine, MapLinearIsExactUnderShearAndReflection) {
    auto r = CreateObject<RectangleAffine>();
    r->SetOriginLengthsRotationSkew(0, 0, 2, 1, 0, 0);
    // x' = x + y + 5: the unit square's side Y leans to (1, 1).
    auto sheared = r->MapLinear(*Linear(1, 1, 0, 1, 5, 0), CopyShapeConstants_GeometryOnly);
    ExpectCorners(*sheared, {5, 0, 7, 0, 6, 1, 8, 1, 6.5, 0.5});
    EXPECT_NEAR(sheared->SideYLength(), std::sqrt(2.0), kTolerance);
    EXPECT_NEAR(sheared->Skew(), -M_PI / 4, kTolerance);
    ExpectCorners(*r, {0, 0, 2, 0, 0, 1, 2, 1}); // the source stays as it was

    r->SetOriginLengthsRotationSkew(1, 1, 2, 3, 0, 0);
    auto mirrored = r->MapLinear(*Linear(1, 0, 0, -1, 0, 0), CopyShapeConstants_GeometryOnly);
    ExpectCorners(*mirrored, {1, -1, 3, -1, 1, -4, 3, -4, 2, -2.5});
    EXPECT_DOUBLE_EQ(mirrored->Skew(), -M_PI);
}

// Origin, side lengths, rotation and skew.
std::vector<double> Parameters(RectangleAffine const& r) {
    return {r.CornerOriginX(), r.CornerOriginY(), r.SideXLength(),
            r.SideYLength(),   r.Rotation(),      r.Skew()};
}

// Built without the intermediate rectangle, yet equal to the last bit to mapping one.
TEST(RectangleAffine, MappingFromACenterEqualsMappingTheRectangleOfThatCenter) {
    struct Case {
        double rotation;
        double skew;
        std::shared_ptr<Transform2DLinear> transform;
    };
    Case const cases[] = {
        {0, 0, Linear(1, 0, 0, 1, 0, 0)},
        {0.5, 0, Linear(2, 0.5, -0.25, 1.5, 3, -4)},
        {-2.5, 0.3, Linear(1, 0, 0, -1, 7, 1)},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.rotation);
        auto source = CreateObject<RectangleAffine>();
        source->SetCenterLengthsRotationSkew(10.5, -3, 20, 30, c.rotation, c.skew);
        auto expected = source->MapLinear(*c.transform, CopyShapeConstants_GeometryOnly);
        auto actual = RectangleAffine::MapCenterLengthsRotationSkew(*c.transform, 10.5, -3, 20, 30,
                                                                    c.rotation, c.skew);
        EXPECT_EQ(Parameters(*actual), Parameters(*expected));
    }
}

TEST(Ellipse, MapLinearGivesTheEllipseThroughEveryMappedBoundaryPoint) {
    auto ellipse = CreateObject<Ellipse>();
    ellipse->SetCenterXYRadiusXYRotation(3, -2, 5, 2, 0.7);
    auto transform = Linear(2, 1, -0.5, 1.5, 4, 1);
    auto mapped = ellipse->MapLinear(*transform, CopyShapeConstants_GeometryOnly);
    Implementation::EllipseGeometry const original{3, -2, 5, 2, 0.7};
    Implementation::EllipseGeometry const image{mapped->CenterX(), mapped->CenterY(),
                                                mapped->RadiusX(), mapped->RadiusY(),
                                                mapped->Rotation()};
    for (int step = 0; step < 24; ++step) {
        double x, y, u, v;
        original.PointAt(step * M_PI / 12, &x, &y);
        transform->MapPoint(x, y, &x, &y);
        ASSERT_TRUE(image.ToUnitCircle(x, y, &u, &v));
        EXPECT_NEAR(u * u + v * v, 1, 1e-12) << "step " << step;
    }
    // The product of the singular values is |det M|·rx·ry = 3.5·10.
    EXPECT_NEAR(mapped->RadiusX() * mapped->RadiusY(), 3.5 * 10, 1e-9);

    // The unit circle under [[2, 1], [0, 1]]: singular values sqrt(3 ± sqrt(5)).
    ellipse->SetCenterXYRadiusXYRotation(0, 0, 1, 1, 0);
    auto sheared = ellipse->MapLinear(*Linear(2, 1, 0, 1, 0, 0), CopyShapeConstants_GeometryOnly);
    EXPECT_NEAR(sheared->RadiusX(), (1 + std::sqrt(5.0)) / std::sqrt(2.0), 1e-12);
    EXPECT_NEAR(sheared->RadiusY(), (std::sqrt(5.0) - 1) / std::sqrt(2.0), 1e-12);
}

TEST(Ellipse, TurnsAndMirrorsKeepRadiiOnTheirAxes) {
    auto ellipse = CreateObject<Ellipse>();
    ellipse->SetCenterXYRadiusXYRotation(1, 0, 10, 20, 0);
    double const c = std::cos(M_PI / 6), s = std::sin(M_PI / 6);
    auto turned = ellipse->MapLinear(*Linear(c, -s, s, c, 0, 0), CopyShapeConstants_GeometryOnly);
    ExpectNear({turned->RadiusX(), turned->RadiusY(), turned->Rotation(), turned->CenterX(),
                turned->CenterY()},
               {10, 20, M_PI / 6, c, s});

    ellipse->SetCenterXYRadiusXYRotation(0, 0, 4, 1, 0.3);
    auto mirrored = ellipse->MapLinear(*Linear(1, 0, 0, -1, 0, 0), CopyShapeConstants_GeometryOnly);
    ExpectNear({mirrored->RadiusX(), mirrored->RadiusY(), mirrored->Rotation()}, {4, 1, -0.3});
}

TEST(EllipticalArc, MappedSweepFollowsItsPointsThroughAMirror) {
    Implementation::EllipseGeometry const geometry{2, 1, 3, 1.5, 0.4};
    auto transform = Linear(-1, 0.5, 0.25, 2, 3, -1); // determinant < 0: a mirror
    auto const mapping = Implementation::MapEllipse(geometry, *transform);
    EXPECT_EQ(mapping.parameterSense, -1);
    for (double t : {0.0, 0.3, 1.0, 2.5, 4.0}) {
        double x, y, ex, ey;
        geometry.PointAt(t, &x, &y);
        mapping.geometry.PointAt(mapping.MapParameter(t), &ex, &ey);
        ExpectNear({ex, ey}, Mapped(*transform, x, y));
    }

    auto arc = CreateObject<EllipticalArc>();
    arc->SetCenterXYRadiusXYRotation(2, 1, 3, 1.5, 0.4);
    arc->SetAngleStartSpan(0.5, 1.0);
    auto mapped = arc->MapLinear(*transform, CopyShapeConstants_GeometryOnly);
    EXPECT_DOUBLE_EQ(mapped->AngleSpan(), -1.0);
    EXPECT_NEAR(mapped->AngleStart(), mapping.MapParameter(0.5), 1e-12);
}

TEST(Transform2DRigid, ComposesInvertsAndConvertsToLinear) {
    auto rigid = CreateObject<Transform2DRigid>(M_PI / 2, 1, 2);
    ExpectNear(Mapped(*rigid, 1, 0), {1, 3});
    ExpectNear(Mapped(*rigid->Compose(*rigid->Invert()), 5, -7), {5, -7});
    ExpectNear(Mapped(*Private::MiscUtils::LinearOrElse(*rigid), 2, 3), {-2, 4});

    auto source = Linear(1, 2, 3, 4, 5, 6);
    auto copy = Private::MiscUtils::LinearOrElse(*source);
    EXPECT_NE(copy, source);
    EXPECT_EQ(copy->TY(), 6);
}

// A transform that no matrix can stand for.
class SquareTransform : public ChangedEventShareableBase, public ITransform2D {
public:
    explicit SquareTransform(ObjectCreateAccessToken const& token)
        : ChangedEventShareableBase(token) {}
    void MapPoint(double x, double y, double* outX, double* outY) const override {
        *outX = x * x;
        *outY = y * y;
    }

    RTTR_ENABLE(ChangedEventShareableBase, ITransform2D)
};

TEST(MiscUtils, LinearOrElseRefusesATransformThatIsNotLinear) {
    EXPECT_EQ(VisionTest::MessageOf(
                  [] { Private::MiscUtils::LinearOrElse(*CreateObject<SquareTransform>()); }),
              "The transform is not linear");
}

TEST(Regions, WithinFollowsEachShape) {
    auto arc = CreateObject<EllipticalArc>();
    arc->SetCenterXYRadiusXYRotation(0, 0, 2, 1, 0);
    // From 170 degrees on through 200: the sector straddles the negative x axis.
    arc->SetAngleStartSpan(170 * M_PI / 180, 30 * M_PI / 180);
    EXPECT_TRUE(arc->Within(-1.5, 0));
    EXPECT_TRUE(arc->Within(-1.5, -0.2));
    EXPECT_FALSE(arc->Within(1.5, 0));
    EXPECT_TRUE(arc->Within(0, 0)); // the centre belongs to every sector
    // The same start running clockwise by 30 degrees ends at 140 degrees.
    arc->SetAngleStartSpan(170 * M_PI / 180, -30 * M_PI / 180);
    EXPECT_FALSE(arc->Within(-1.5, -0.2));
    EXPECT_TRUE(arc->Within(-1.5, 0.5));

    auto skewed = CreateObject<RectangleAffine>();
    skewed->SetOriginLengthsRotationSkew(1, 1, 3, 2 * std::sqrt(2.0), 0, M_PI / 4);
    EXPECT_TRUE(skewed->Within(0, 2.9));    // inside the leaning side
    EXPECT_FALSE(skewed->Within(3.9, 2.9)); // inside the bounding box only

    auto section = CreateObject<EllipticalAnnulusSection>();
    section->SetCenterXYRadiusXYRotation(0, 0, 4, 2, 0);
    section->setRadialScale(0.5);
    section->SetAngleStartSpan(0, M_PI / 2);
    EXPECT_TRUE(section->Within(0, 1.5));
    EXPECT_FALSE(section->Within(0, 0.5));  // in the hole
    EXPECT_FALSE(section->Within(-3, 0.1)); // outside the sweep
    EXPECT_THROW(section->setRadialScale(1.5), ArgumentException);

    // A concave "L": the notch at (1.5, 1.5) is outside.
    auto polygon = CreateObject<Polygon>();
    for (auto const& p :
         std::vector<std::pair<double, double>>{{0, 0}, {2, 0}, {2, 1}, {1, 1}, {1, 2}, {0, 2}})
        polygon->AddVertex(p.first, p.second, -1);
    EXPECT_TRUE(polygon->Within(0.5, 1.5));
    EXPECT_FALSE(polygon->Within(1.5, 1.5));

    auto composite = CreateObject<CompositeShape>();
    composite->AddShape(polygon, -1);
    composite->AddShape(section, -1);
    EXPECT_TRUE(composite->Within(0, 1.5));
    EXPECT_TRUE(composite->Within(1.5, 0.5));
    EXPECT_FALSE(composite->Within(1.5, -1));
}

} // namespace

} // namespace GeometryTesting
