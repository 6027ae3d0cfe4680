#include <gtest/gtest.h>

#include <sstream>
#include <tuple>

#include <rttr/type>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace GraphicsTesting {

namespace {

using namespace Tavrin::Vision;
using Tavrin::Brnt::CreateObject;
using VisionTest::LoadTogether;
using VisionTest::MessageOf;
using VisionTest::SavedTogether;
using VisionTest::Words;

template <class Shape, class Graphic>
std::shared_ptr<Shape> As(std::shared_ptr<Graphic> const& graphic) {
    return std::dynamic_pointer_cast<Shape>(graphic);
}

void SetLook(GraphicInteractiveBase& graphic) {
    graphic.setColor(0xff0000ff);
    graphic.setLineStyle(LineStyleConstants_Dash);
    graphic.setLineWidthInScreenPixels(3);
    graphic.setSelectedSpaceName("@\\Fixture");
    graphic.setInteractive(true);
    graphic.setTipText("tip");
}

// Colour, line style and width, selected space, interactivity and tip.
using Look = std::tuple<Color32, int, int, std::string, bool, std::string>;

Look LookOf(IGraphicInteractive const& graphic) {
    return std::make_tuple(graphic.Color(), graphic.LineStyle(), graphic.LineWidthInScreenPixels(),
                           graphic.SelectedSpaceName(), graphic.Interactive(), graphic.TipText());
}

Look const DefaultLook{0xff00ff00, 0, 1, ".", false, ""};
Look const FixtureLook{0xff0000ff, 1, 3, "@\\Fixture", true, "tip"};

TEST(GraphicInteractiveBase, CopyWithGeometryOnlyLeavesTheLookAtDefaults) {
    auto rectangle = CreateObject<RectangleAffine>();
    rectangle->SetOriginLengthsRotationSkew(1, 2, 3, 4, 0.5, 0.25);
    SetLook(*rectangle);
    auto bare = rectangle->Copy(CopyShapeConstants_GeometryOnly);
    EXPECT_EQ(LookOf(*bare), DefaultLook);
    EXPECT_EQ(std::make_pair(bare->CornerOppositeX(), bare->Skew()),
              std::make_pair(rectangle->CornerOppositeX(), 0.25));
    EXPECT_EQ(LookOf(*rectangle->Copy(CopyShapeConstants_All)), FixtureLook);

    // Decorations of segments and labels are look too; a label's text and alignment are not.
    auto segment = CreateObject<LineSegment>();
    segment->setEndPointAdornment(LineSegmentAdornmentConstants_Arrow);
    EXPECT_EQ(segment->Copy(CopyShapeConstants_GeometryOnly)->EndPointAdornment(),
              LineSegmentAdornmentConstants_None);
    EXPECT_EQ(segment->Copy(CopyShapeConstants_All)->EndPointAdornment(),
              LineSegmentAdornmentConstants_Arrow);
    auto label = CreateObject<GraphicLabel>();
    label->SetXYText(1, 2, "text");
    label->setBackgroundColor(0xffffff00);
    label->setAlignment(GraphicLabelAlignmentConstants_CenterLeft);
    auto bareLabel = label->Copy(CopyShapeConstants_GeometryOnly);
    EXPECT_EQ(
        std::make_tuple(bareLabel->Text(), bareLabel->Alignment(), bareLabel->BackgroundColor()),
        std::make_tuple(std::string("text"), GraphicLabelAlignmentConstants_CenterLeft,
                        Color32(0)));
    EXPECT_EQ(label->Copy(CopyShapeConstants_All)->BackgroundColor(), Color32(0xffffff00));

    // A composite copies its regions, not their pointers.
    auto composite = CreateObject<CompositeShape>();
    composite->AddShape(rectangle, -1);
    auto part = composite->Copy(CopyShapeConstants_All)->Shape(0);
    EXPECT_NE(part, std::static_pointer_cast<IRegion>(rectangle));
    EXPECT_EQ(LookOf(*As<IGraphicInteractive>(part)), FixtureLook);
}

TEST(GraphicInteractiveBase, SettersRaiseTheirBitOnceAndRefuseBadValues) {
    auto marker = CreateObject<PointMarker>();
    VisionTest::FlagLog log(*marker);
    marker->setColor(0xff0000ff);
    marker->setColor(0xff0000ff);
    marker->setX(2);
    marker->setSizeInScreenPixels(25);
    marker->setRotation(0.5);
    EXPECT_EQ(log.words(), (Words{PointMarker::SfColor, PointMarker::SfX,
                                  PointMarker::SfSizeInScreenPixels, PointMarker::SfRotation}));

    EXPECT_EQ(MessageOf([&] { marker->setLineStyle(4); }), "LineStyle must be between 0 and 3");
    EXPECT_THROW(marker->setLineWidthInScreenPixels(0), ArgumentException);
    EXPECT_THROW(marker->setSizeInScreenPixels(-1), ArgumentException);
    EXPECT_EQ(std::make_pair(marker->LineStyle(), marker->SizeInScreenPixels()),
              std::make_pair(0, 25));

    // A label's text and place change together, under one bit.
    auto label = CreateObject<GraphicLabel>();
    VisionTest::FlagLog labelLog(*label);
    label->SetXYText(3, 4, "* 17");
    label->setAlignment(GraphicLabelAlignmentConstants_TopCenter);
    EXPECT_EQ(labelLog.words(), (Words{GraphicLabel::SfXYText, GraphicLabel::SfAlignment}));
    EXPECT_EQ(
        MessageOf([&] { label->setAlignment(static_cast<GraphicLabelAlignmentConstants>(9)); }),
        "Alignment must be between 0 and 8");
    EXPECT_EQ(label->Alignment(), GraphicLabelAlignmentConstants_TopCenter);
}

TEST(Shapes, MappingCarriesTheLookTheModeNamesIntoEveryPart) {
    auto shear = CreateObject<Transform2DLinear>(1, 1, 0, 1, 0, 0);
    auto rectangle = CreateObject<Rectangle>();
    rectangle->SetOriginWidthHeight(1, 2, 4, 2);
    SetLook(*rectangle);
    // An upright rectangle leans under a shear, so its image is a RectangleAffine.
    auto leaning = rectangle->MapLinear(*shear, CopyShapeConstants_All);
    EXPECT_NEAR(leaning->CornerOriginX(), 3, 1e-12);
    EXPECT_NEAR(leaning->CornerYX(), 5, 1e-12);
    EXPECT_NEAR(leaning->CornerYY(), 4, 1e-12);
    EXPECT_EQ(LookOf(*leaning), FixtureLook);

    // Each part is mapped under the composite's mode.
    auto composite = CreateObject<CompositeShape>();
    SetLook(*composite);
    composite->AddShape(rectangle, -1);
    auto mapped = composite->MapLinear(*shear, CopyShapeConstants_GeometryOnly);
    auto part = As<RectangleAffine>(mapped->Shape(0));
    ASSERT_TRUE(part);
    EXPECT_NEAR(part->CornerOppositeX(), 9, 1e-12);
    EXPECT_EQ(LookOf(*mapped), DefaultLook);
    EXPECT_EQ(LookOf(*part), DefaultLook);
    EXPECT_THROW(composite->AddShape(nullptr, -1), ArgumentException);
    EXPECT_THROW(composite->AddShape(rectangle, 2), ArgumentException);

    auto section = CreateObject<EllipticalAnnulusSection>();
    section->setRadialScale(0.25);
    section->SetAngleStartSpan(0.5, 1);
    auto mirrored = section->MapLinear(*CreateObject<Transform2DLinear>(1, 0, 0, -1, 0, 0),
                                       CopyShapeConstants_GeometryOnly);
    EXPECT_EQ(std::make_pair(mirrored->RadialScale(), mirrored->AngleSpan()),
              std::make_pair(0.25, -1.0));
    EXPECT_NEAR(mirrored->AngleStart(), -0.5, 1e-12);
}

TEST(Polygon, AddVertexInsertsBeforeTheIndexAndAppendsAtMinusOne) {
    auto polygon = CreateObject<Polygon>();
    for (auto [x, index] :
         std::initializer_list<std::pair<int, int>>{{0, -1}, {2, -1}, {1, 1}, {-1, 0}})
        polygon->AddVertex(x, -x, index);
    ASSERT_EQ(polygon->VertexCount(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(polygon->Vertex(i) == CreateObject<Vect2>(i - 1, 1 - i)) << "vertex " << i;

    EXPECT_THROW(polygon->AddVertex(5, 5, 5), ArgumentException);
    EXPECT_THROW(polygon->AddVertex(5, 5, -2), ArgumentException);
    polygon->RemoveVertex(0);
    EXPECT_TRUE(polygon->Vertex(0) == CreateObject<Vect2>(0, 0));
    EXPECT_THROW(polygon->Vertex(3), ArgumentException);
}

std::vector<IGraphicPtr> OneOfEach() {
    auto rectangleAffine = CreateObject<RectangleAffine>();
    rectangleAffine->SetOriginLengthsRotationSkew(1, 2, 3, 4, 0.5, 0.25);
    SetLook(*rectangleAffine);
    auto rectangle = CreateObject<Rectangle>();
    rectangle->SetOriginWidthHeight(5, 6, 7, 8);
    auto ellipse = CreateObject<Ellipse>();
    ellipse->SetCenterXYRadiusXYRotation(1, 2, 3, 4, 0.5);
    auto arc = CreateObject<EllipticalArc>();
    arc->SetAngleStartSpan(0.25, -1.5);
    auto section = CreateObject<EllipticalAnnulusSection>();
    section->setRadialScale(0.75);
    auto polygon = CreateObject<Polygon>();
    polygon->AddVertex(9, 10, -1);
    auto composite = CreateObject<CompositeShape>();
    composite->AddShape(rectangleAffine, -1);
    auto segment = CreateObject<LineSegment>();
    segment->SetStartEnd(1, 2, 3, 4);
    segment->setStartPointAdornment(LineSegmentAdornmentConstants_Arrow);
    segment->setParent(composite);
    auto marker = CreateObject<PointMarker>();
    marker->setY(-3);
    auto label = CreateObject<GraphicLabel>();
    label->SetXYText(1, 2, "label");
    label->setBackgroundColor(0x80112233);
    return {rectangleAffine, rectangle, ellipse, arc,   section,        polygon,
            composite,       segment,   marker,  label, rectangleAffine};
}

TEST(GraphicArchive, EveryClassRoundTripsThroughItsInterfacesKeepingIdentity) {
    // Through its base, so that the archive names the collection's class.
    std::shared_ptr<Implementation::CollectionBase<IGraphicPtr>> const graphics =
        CreateObject<GraphicCollection>(OneOfEach());
    std::string const bytes = SavedTogether(graphics, As<IRegion>(graphics->Item(0)));
    for (char const* name : {"Tavrin::Vision::GraphicCollection", "Tavrin::Vision::LineSegment",
                             "Tavrin::Vision::EllipticalAnnulusSection"})
        EXPECT_NE(bytes.find(name), std::string::npos) << name;

    std::shared_ptr<Implementation::CollectionBase<IGraphicPtr>> loaded;
    IRegionPtr loadedRegion;
    LoadTogether(bytes, loaded, loadedRegion);
    EXPECT_TRUE(As<GraphicCollection>(loaded));
    ASSERT_EQ(loaded->Count(), 11);
    auto rectangleAffine = As<RectangleAffine>(loaded->Item(0));
    ASSERT_TRUE(rectangleAffine);
    EXPECT_EQ(loaded->Item(10), loaded->Item(0));
    EXPECT_EQ(As<RectangleAffine>(loadedRegion), rectangleAffine);
    EXPECT_EQ(rectangleAffine->shared_from_this(), rectangleAffine);
    EXPECT_EQ(LookOf(*rectangleAffine), FixtureLook);
    auto segment = As<LineSegment>(loaded->Item(7));
    EXPECT_EQ(
        (std::vector<double>{rectangleAffine->Skew(), As<Rectangle>(loaded->Item(1))->Height(),
                             As<Ellipse>(loaded->Item(2))->RadiusY(),
                             As<EllipticalArc>(loaded->Item(3))->AngleSpan(),
                             As<EllipticalAnnulusSection>(loaded->Item(4))->RadialScale(),
                             segment->EndY(), As<PointMarker>(loaded->Item(8))->Y()}),
        (std::vector<double>{0.25, 8, 4, -1.5, 0.75, 4, -3}));
    EXPECT_TRUE(As<Polygon>(loaded->Item(5))->Vertex(0) == CreateObject<Vect2>(9, 10));
    auto composite = As<CompositeShape>(loaded->Item(6));
    EXPECT_EQ(As<RectangleAffine>(composite->Shape(0)), rectangleAffine);
    EXPECT_EQ(segment->StartPointAdornment(), LineSegmentAdornmentConstants_Arrow);
    EXPECT_EQ(segment->Parent(), As<IGraphicParentChild>(composite));
    auto label = As<GraphicLabel>(loaded->Item(9));
    EXPECT_EQ(std::make_pair(label->Text(), label->BackgroundColor()),
              std::make_pair(std::string("label"), Color32(0x80112233)));
}

TEST(GraphicArchive, AParentLoadedOnlyThroughItsChildIsNotKeptAlive) {
    auto parent = CreateObject<CompositeShape>();
    auto child = CreateObject<PointMarker>();
    child->setParent(parent);
    std::stringstream stream(SavedTogether(std::static_pointer_cast<IGraphic>(child)));
    IGraphicPtr loaded;
    {
        VisionBinaryInputArchive in(stream, SerializerOptionsConstants_None);
        in(loaded);
        EXPECT_TRUE(As<PointMarker>(loaded)->Parent());
    }
    // The archive held the parent's last owner; the child holds it weakly.
    EXPECT_FALSE(As<PointMarker>(loaded)->Parent());
}

TEST(GraphicArchive, CollectionInstancesAndTransformsTravelUnderTheirNames) {
    using Vect2Base = Implementation::CollectionBase<Vect2Ptr>;
    auto point = CreateObject<Vect2>(1, 2);
    std::shared_ptr<ShareableBase> base = CreateObject<Vect2Base>(std::vector<Vect2Ptr>{point});
    std::shared_ptr<Vect2Base> points =
        CreateObject<Vect2Collection>(std::vector<Vect2Ptr>{point, point});
    std::shared_ptr<ITransform2D> rigid = CreateObject<Transform2DRigid>(0.5, 3, 4);
    auto parentChildren = CreateObject<GraphicParentChildCollection>(
        std::vector<IGraphicParentChildPtr>{CreateObject<PointMarker>()});
    std::string const bytes = SavedTogether(base, points, rigid, parentChildren);
    EXPECT_NE(
        bytes.find("Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::Vect2Ptr>"),
        std::string::npos);

    std::shared_ptr<ShareableBase> loadedShareable;
    std::shared_ptr<Vect2Base> loadedPoints;
    std::shared_ptr<ITransform2D> loadedRigid;
    GraphicParentChildCollectionPtr loadedParentChildren;
    LoadTogether(bytes, loadedShareable, loadedPoints, loadedRigid, loadedParentChildren);
    auto const loadedBase = As<Vect2Base>(loadedShareable);
    ASSERT_TRUE(loadedBase);
    auto const& loaded = *loadedBase;
    EXPECT_EQ(typeid(loaded), typeid(Vect2Base));
    ASSERT_TRUE(As<Vect2Collection>(loadedPoints));
    EXPECT_EQ(loadedPoints->Item(0), loadedBase->Item(0));
    EXPECT_EQ(loadedPoints->Item(1).get(), loadedBase->Item(0).get());
    EXPECT_EQ(As<Transform2DRigid>(loadedRigid)->TranslationY(), 4);
    EXPECT_TRUE(As<PointMarker>(loadedParentChildren->Item(0)));
}

TEST(GraphicReflection, ClassesAreFoundByFullNameAndTheLookIsWritable) {
    for (char const* name :
         {"Tavrin::Vision::Vect2", "Tavrin::Vision::Vect2Collection",
          "Tavrin::Vision::RectangleAffine", "Tavrin::Vision::Transform2DLinear",
          "Tavrin::Vision::GraphicCollection", "Tavrin::Vision::Ellipse",
          "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::IGraphicPtr>"})
        EXPECT_TRUE(rttr::type::get_by_name(name).is_valid()) << name;

    auto rectangle = CreateObject<RectangleAffine>();
    auto const type = rttr::type::get_by_name("Tavrin::Vision::RectangleAffine");
    EXPECT_TRUE(type.get_property("LineWidthInScreenPixels").set_value(*rectangle, 4));
    EXPECT_EQ(rectangle->LineWidthInScreenPixels(), 4);
    EXPECT_TRUE(type.get_property("SideXLength").is_readonly());
}

} // namespace

} // namespace GraphicsTesting
