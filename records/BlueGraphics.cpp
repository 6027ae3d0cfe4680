#include "records/BlueGraphics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <Vision/Core/Ellipse.h>
#include <Vision/Core/EllipseGeometry.h>
#include <Vision/Core/LineSegment.h>
#include <Vision/Core/PointMarker.h>
#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>

#include "Vision/DeepLearning/DLBlueFeature.h"
#include "Vision/DeepLearning/DLBlueReadToolRuntimeParams.h"
#include "Vision/DeepLearning/DLBlueToolRuntimeParams.h"
#include "Vision/DeepLearning/DLResultBlue.h"
#include "Vision/DeepLearning/DLResultBlueMatchRegion.h"
#include "Vision/DeepLearning/DLResultMatchLayout.h"
#include "Vision/DeepLearning/DLResultMatchNode.h"
#include "Vision/DeepLearning/DLResultMatchRegex.h"
#include "Vision/DeepLearning/DLResultMatchString.h"
#include "records/GraphicLooks.h"

namespace Tavrin::Vision::DeepLearning::Records {

namespace {

using Features = std::vector<DLBlueFeaturePtr>;

constexpr CopyShapeConstants GeometryOnly = CopyShapeConstants_GeometryOnly;
constexpr int FeatureMarkerSize = 25;
// From a side length to a radius or a half extent.
constexpr double Half = 0.5;
// Bracket arms, in view units. A read tool's arms are unequal so that its small brackets
// still show which side is X.
constexpr double BracketArm = 20.0;
constexpr double ReadBracketArmX = 5.0;
constexpr double ReadBracketArmY = 10.0;
char const* const MatchedFeaturePrefix = "* ";

// Every label here is black on yellow; only where the text sits on its anchor differs.
LabelLook BlueLabel(GraphicLabelAlignmentConstants alignment) {
    return {alignment, Palette::Yellow, Palette::Black};
}

struct ShowFlags {
    bool features;
    bool models;
};

template <class Tool> ShowFlags ShowFlagsOf(DLToolRuntimeParams const& tool) {
    auto const& blueTool = dynamic_cast<Tool const&>(tool);
    return {blueTool.ShowFeatures(), blueTool.ShowModels()};
}

ShowFlags ReadShowFlags(DLToolRuntimeParams const& tool, bool isRead) {
    return isRead ? ShowFlagsOf<DLBlueReadToolRuntimeParams>(tool)
                  : ShowFlagsOf<DLBlueToolRuntimeParams>(tool);
}

// The view's pose, and its inverse made once for all shapes of the view rather than once per
// shape; still only when a shape needs it, so a pose that can't be inverted fails where it did.
class ViewSpace {
public:
    explicit ViewSpace(DLResultView const& view)
        : pose_(*view.Pose())
        , keepsAngles_(pose_.A() == pose_.D() && pose_.B() == -pose_.C() &&
                       (pose_.A() != 0 || pose_.B() != 0)) {}
    Transform2DLinear const& Pose() const { return pose_; }
    // A turn with a uniform scale, the usual pose of a view: it maps a shape's inscribed
    // ellipse onto the inscribed ellipse of the shape's image.
    bool KeepsAngles() const { return keepsAngles_; }
    Transform2DLinear const& Inverse() {
        if (!inverse_)
            inverse_ = pose_.Invert();
        return *inverse_;
    }

private:
    Transform2DLinear const& pose_;
    bool keepsAngles_;
    std::shared_ptr<Transform2DLinear> inverse_;
};

struct Point {
    double x;
    double y;
};

Point operator+(Point a, Point b) {
    return {a.x + b.x, a.y + b.y};
}
Point operator-(Point a, Point b) {
    return {a.x - b.x, a.y - b.y};
}

// The arm of the given length from one corner towards another. A side of length 0 has no
// direction; nothing guards it.
Point Arm(Point from, Point to, double length) {
    Point const side = to - from;
    double const inverseNorm = 1.0 / std::sqrt(side.x * side.x + side.y * side.y);
    return {side.x * inverseNorm * length, side.y * inverseNorm * length};
}

Point Mapped(Transform2DLinear const& transform, double x, double y) {
    Point mapped;
    transform.MapPoint(x, y, &mapped.x, &mapped.y);
    return mapped;
}

double Length(Point vector) {
    return std::hypot(vector.x, vector.y);
}

// A feature's corners, in the image or as its view sees them.
struct Corners {
    Point origin;
    Point x;
    Point y;
    Point opposite;

    Point Center() const {
        return {(origin.x + opposite.x) * Half, (origin.y + opposite.y) * Half};
    }
    Point SideX() const { return x - origin; }
    Point SideY() const { return y - origin; }
};

Corners CornersOf(RectangleAffine const& rectangle) {
    return {{rectangle.CornerOriginX(), rectangle.CornerOriginY()},
            {rectangle.CornerXX(), rectangle.CornerXY()},
            {rectangle.CornerYX(), rectangle.CornerYY()},
            {rectangle.CornerOppositeX(), rectangle.CornerOppositeY()}};
}

// The inverse pose is linear, so mapping the corners is exact, and no shape needs to be built.
Corners CornersInView(ViewSpace& view, Corners const& image) {
    Transform2DLinear const& inverse = view.Inverse();
    return {Mapped(inverse, image.origin.x, image.origin.y), Mapped(inverse, image.x.x, image.x.y),
            Mapped(inverse, image.y.x, image.y.y),
            Mapped(inverse, image.opposite.x, image.opposite.y)};
}

// The radius X lies along side X as it points, so a negative length turns it half round.
Vision::Implementation::EllipseGeometry InscribedEllipse(RectangleAffine const& rectangle,
                                                         Corners const& image) {
    double const turn = rectangle.SideXLength() < 0 ? M_PI : 0.0;
    Point const center = image.Center();
    return {center.x, center.y, std::fabs(rectangle.SideXLength()) * Half,
            std::fabs(rectangle.SideYLength()) * Half,
            Vision::Implementation::NormalizeAngle(rectangle.Rotation() + turn)};
}

template <class Match>
std::shared_ptr<DLBlueFeatureReadOnlyCollection> FeaturesOfKind(DLResultMatchPtr const& match) {
    auto const typed = std::dynamic_pointer_cast<Match>(match);
    return typed ? typed->Features() : nullptr;
}

// A layout keeps its features in its regions, and those don't count as matched.
std::shared_ptr<DLBlueFeatureReadOnlyCollection> MatchFeatures(DLResultMatchPtr const& match) {
    std::string const type = match->ModelType();
    if (type == "regex")
        return FeaturesOfKind<DLResultMatchRegex>(match);
    if (type == "string")
        return FeaturesOfKind<DLResultMatchString>(match);
    if (type == "node")
        return FeaturesOfKind<DLResultMatchNode>(match);
    return nullptr;
}

// Repetitions stay: a feature that two matches share is drawn once for each.
Features CollectMatchFeatures(DLResultMatchReadOnlyCollection const& matches) {
    Features collected;
    for (auto const& match : matches)
        if (auto const features = MatchFeatures(match))
            collected.insert(collected.end(), features->begin(), features->end());
    return collected;
}

bool Contains(Features const& features, DLBlueFeaturePtr const& feature) {
    return std::find(features.begin(), features.end(), feature) != features.end();
}

std::shared_ptr<LineSegment> MakeCornerSegment(Transform2DLinear const& pose, Point start,
                                               Point end, LineSegmentAdornmentConstants adornment) {
    Point const mappedStart = Mapped(pose, start.x, start.y);
    Point const mappedEnd = Mapped(pose, end.x, end.y);
    auto segment = Brnt::CreateObject<LineSegment>();
    segment->SetStartEnd(mappedStart.x, mappedStart.y, mappedEnd.x, mappedEnd.y);
    segment->setEndPointAdornment(adornment);
    return segment;
}

// Brackets are built upright in the view, where the arms have their lengths, and then mapped
// back into the image.
void AddFeatureCorners(GraphicList& graphics, ViewSpace& view, Corners const& image, bool isRead) {
    auto const [o, x, y, p] = CornersInView(view, image);
    Point const dx = Arm(o, x, isRead ? ReadBracketArmX : BracketArm);
    Point const dy = Arm(o, y, isRead ? ReadBracketArmY : BracketArm);
    // Arrows at the origin corner show a plain tool's feature direction.
    LineSegmentAdornmentConstants const origin =
        isRead ? LineSegmentAdornmentConstants_None : LineSegmentAdornmentConstants_Arrow;
    LineSegmentAdornmentConstants const none = LineSegmentAdornmentConstants_None;

    struct Bracket {
        Point start;
        Point end;
        LineSegmentAdornmentConstants adornment;
    };
    Bracket const brackets[] = {
        {o, o + dx, origin}, {o, o + dy, origin}, {p, p - dx, none}, {p, p - dy, none},
        {x, x - dx, none},   {x, x + dy, none},   {y, y + dx, none}, {y, y - dy, none},
    };
    for (Bracket const& bracket : brackets)
        AddStyled(graphics,
                  MakeCornerSegment(view.Pose(), bracket.start, bracket.end, bracket.adornment),
                  Palette::Blue);
}

// The ellipse is inscribed in the feature as the view sees it, then mapped into the image.
Vision::Implementation::EllipseGeometry
FeatureEllipse(ViewSpace& view, RectangleAffine const& rectangle, Corners const& image) {
    if (view.KeepsAngles())
        return InscribedEllipse(rectangle, image);
    Corners const local = CornersInView(view, image);
    Point const center = local.Center();
    Point const sideX = local.SideX();
    Vision::Implementation::EllipseGeometry const inscribed{
        center.x, center.y, Length(sideX) * Half, Length(local.SideY()) * Half,
        std::atan2(sideX.y, sideX.x)};
    return Vision::Implementation::MapEllipse(inscribed, view.Pose()).geometry;
}

void AddFeatureEllipse(GraphicList& graphics, ViewSpace& view, RectangleAffine const& rectangle,
                       Corners const& image) {
    auto const geometry = FeatureEllipse(view, rectangle, image);
    auto ellipse = Brnt::CreateObject<Ellipse>();
    ellipse->SetCenterXYRadiusXYRotation(geometry.centerX, geometry.centerY, geometry.radiusX,
                                         geometry.radiusY, geometry.rotation);
    AddStyled(graphics, std::move(ellipse), Palette::Blue);
}

void AddFeatureMarker(GraphicList& graphics, RectangleAffine const& rectangle,
                      Corners const& image) {
    Point const center = image.Center();
    auto marker = Brnt::CreateObject<PointMarker>();
    marker->setX(center.x);
    marker->setY(center.y);
    marker->setSizeInScreenPixels(FeatureMarkerSize);
    marker->setRotation(rectangle.Rotation());
    AddStyled(graphics, std::move(marker), Palette::Blue);
}

struct FeatureDrawing {
    bool rectangular;
    bool isRead;
    bool showLabel;
    bool marked; // the feature stands in a match
};

// Beside brackets the label sits at corner Y. An ellipse doesn't reach the corners, so there
// the label hangs from the middle of the edge opposite side X, where the ellipse touches it.
void AddFeatureLabel(GraphicList& graphics, DLBlueFeature const& feature,
                     RectangleAffine const& rectangle, Corners const& image,
                     FeatureDrawing const& drawing) {
    std::string const text = drawing.marked ? MatchedFeaturePrefix + feature.Id() : feature.Id();
    double x = image.y.x;
    double y = image.y.y;
    if (!drawing.rectangular) {
        x += (image.opposite.x - image.y.x) * Half;
        y += (image.opposite.y - image.y.y) * Half;
    }
    AddLabel(graphics, x, y, text,
             BlueLabel(drawing.rectangular ? GraphicLabelAlignmentConstants_TopLeft
                                           : GraphicLabelAlignmentConstants_TopCenter),
             rectangle.Rotation());
}

void AddFeatureGraphics(GraphicList& graphics, ViewSpace& view, DLBlueFeature const& feature,
                        FeatureDrawing const& drawing) {
    RectangleAffine const& rectangle = *feature.Rectangle();
    Corners const image = CornersOf(rectangle);
    if (drawing.rectangular)
        AddFeatureCorners(graphics, view, image, drawing.isRead);
    else
        AddFeatureEllipse(graphics, view, rectangle, image);
    if (!drawing.isRead)
        AddFeatureMarker(graphics, rectangle, image);
    if (drawing.showLabel)
        AddFeatureLabel(graphics, feature, rectangle, image, drawing);
}

// Matched features first, in match order; a read tool labels only unmatched ones, and only
// when the result asks for labels.
void AddFeatures(GraphicList& graphics, ViewSpace& view, DLResultBlue const& blue, bool isRead) {
    if (!blue.ShowFeatureChiclets() && !blue.ShowRectangularFeatures())
        return;
    auto const matches = blue.Matches();
    Features const matched = matches ? CollectMatchFeatures(*matches) : Features{};
    FeatureDrawing drawing{blue.ShowRectangularFeatures(), isRead, !isRead, true};
    // Room for the usual three graphics a feature (ellipse, marker, label) is made at once.
    auto const features = blue.Features();
    graphics.reserve(graphics.size() +
                     3 * (matched.size() + static_cast<std::size_t>(features->Count())));
    for (auto const& feature : matched)
        AddFeatureGraphics(graphics, view, *feature, drawing);

    drawing.showLabel = blue.ShowFeatureChiclets();
    drawing.marked = false;
    for (auto const& feature : *features)
        if (!Contains(matched, feature))
            AddFeatureGraphics(graphics, view, *feature, drawing);
}

// The box is taken upright in the view from each feature's centre and its own side lengths,
// not its corners, so a feature turned against the view counts with its unturned size. No
// features leave the extents infinite.
std::shared_ptr<RectangleAffine>
MatchFeatureBounds(ViewSpace& view, DLBlueFeatureReadOnlyCollection const& features) {
    double const infinity = std::numeric_limits<double>::infinity();
    double minX = infinity, minY = infinity, maxX = -infinity, maxY = -infinity;
    for (auto const& feature : features) {
        Corners const local = CornersInView(view, CornersOf(*feature->Rectangle()));
        Point const center = local.Center();
        double const halfX = Length(local.SideX()) * Half;
        double const halfY = Length(local.SideY()) * Half;
        minX = std::min(minX, center.x - halfX);
        minY = std::min(minY, center.y - halfY);
        maxX = std::max(maxX, center.x + halfX);
        maxY = std::max(maxY, center.y + halfY);
    }
    auto bounds = Brnt::CreateObject<RectangleAffine>();
    bounds->SetOriginCornerXCornerY(minX, minY, maxX, minY, minX, maxY);
    return bounds->MapLinear(view.Pose(), GeometryOnly);
}

void AddMatchBox(GraphicList& graphics, ViewSpace& view, std::string const& modelId,
                 std::string const& text, DLBlueFeatureReadOnlyCollection const& features) {
    auto const box = MatchFeatureBounds(view, features);
    AddStyled(graphics, box, Palette::Yellow);
    AddLabel(graphics, box->CornerYX(), box->CornerYY(), modelId + " " + text,
             BlueLabel(GraphicLabelAlignmentConstants_TopLeft), box->Rotation());
}

// An open chain through the feature centres, in the match's order.
void AddNodeLinks(GraphicList& graphics, DLResultMatchNode const& match) {
    Features const& features = match.Features()->GetDataC();
    for (std::size_t index = 1; index < features.size(); ++index) {
        auto const previous = features[index - 1]->Rectangle();
        auto const current = features[index]->Rectangle();
        auto link = Brnt::CreateObject<LineSegment>();
        link->SetStartEnd(previous->CenterX(), previous->CenterY(), current->CenterX(),
                          current->CenterY());
        // Thin on purpose: the links stay at the default width.
        link->setColor(Palette::NodeLink);
        graphics.emplace_back(std::move(link));
    }
}

void AddLayoutRegions(GraphicList& graphics, DLResultMatchLayout const& match) {
    for (auto const& region : *match.Regions()) {
        auto const rectangle = region->Rectangle()->Copy(GeometryOnly);
        AddStyled(graphics, rectangle, Palette::Blue);
        AddLabel(graphics, rectangle->CornerYX(), rectangle->CornerYY(), region->Name(),
                 BlueLabel(GraphicLabelAlignmentConstants_CenterLeft), rectangle->Rotation());
    }
}

// A read tool shows a node as text in a box, like a string; a plain tool shows how it links.
void AddNodeMatch(GraphicList& graphics, ViewSpace& view, DLResultMatchNode const& match,
                  bool isRead) {
    if (isRead)
        AddMatchBox(graphics, view, match.ModelID(), match.PrettifiedString(), *match.Features());
    else
        AddNodeLinks(graphics, match);
}

void AddMatch(GraphicList& graphics, ViewSpace& view, DLResultMatchPtr const& match, bool isRead) {
    std::string const type = match->ModelType();
    if (type == "node") {
        AddNodeMatch(graphics, view, *std::dynamic_pointer_cast<DLResultMatchNode>(match), isRead);
    } else if (type == "layout") {
        AddLayoutRegions(graphics, *std::dynamic_pointer_cast<DLResultMatchLayout>(match));
    } else if (type == "regex") {
        auto const regex = std::dynamic_pointer_cast<DLResultMatchRegex>(match);
        AddMatchBox(graphics, view, regex->ModelID(), regex->PrettifiedString(),
                    *regex->Features());
    } else if (type == "string") {
        auto const string = std::dynamic_pointer_cast<DLResultMatchString>(match);
        AddMatchBox(graphics, view, string->ModelID(), string->MatchString(), *string->Features());
    }
}

void AddMatchGraphics(GraphicList& graphics, ViewSpace& view,
                      DLResultMatchReadOnlyCollection const& matches, bool isRead) {
    for (auto const& match : matches)
        AddMatch(graphics, view, match, isRead);
}

} // namespace

void AddBlueGraphics(GraphicList& graphics, DLResultView const& view, bool isRead,
                     DLToolRuntimeParams const& tool) {
    ShowFlags const show = ReadShowFlags(tool, isRead);
    auto const blue = view.ResultBlue();
    if (!blue)
        return;
    ViewSpace space(view);
    if (blue->Features() && show.features)
        AddFeatures(graphics, space, *blue, isRead);
    if (blue->Matches() && show.models)
        AddMatchGraphics(graphics, space, *blue->Matches(), isRead);
}

} // namespace Tavrin::Vision::DeepLearning::Records
