#include "Vision/Core/Graphic.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void GraphicInteractiveBase::setColor(Color32 color) {
    Update(color_, color, SfColor);
}

void GraphicInteractiveBase::setLineStyle(int lineStyle) {
    RequireInRange("LineStyle", lineStyle, LineStyleConstants_Solid, LineStyleConstants_DashDot);
    Update(lineStyle_, lineStyle, SfLineStyle);
}

void GraphicInteractiveBase::setLineWidthInScreenPixels(int lineWidth) {
    RequirePositive("LineWidthInScreenPixels", lineWidth);
    Update(lineWidth_, lineWidth, SfLineWidthInScreenPixels);
}

void GraphicInteractiveBase::setSelectedSpaceName(std::string const& name) {
    Update(selectedSpaceName_, name, SfSelectedSpaceName);
}

void GraphicInteractiveBase::setInteractive(bool interactive) {
    Update(interactive_, interactive, SfInteractive);
}

void GraphicInteractiveBase::setTipText(std::string const& text) {
    Update(tipText_, text, SfTipText);
}

void GraphicInteractiveBase::setParent(std::shared_ptr<IGraphicParentChild> parent) {
    parent_ = parent;
    OnChanged_(SfParent);
}

void GraphicInteractiveBase::RequireInRange(char const* name, int value, int minimum, int maximum) {
    if (value < minimum || value > maximum)
        throw ArgumentException(std::string(name) + " must be between " + std::to_string(minimum) +
                                " and " + std::to_string(maximum));
}

void GraphicInteractiveBase::RequirePositive(char const* name, int value) {
    if (value <= 0)
        throw ArgumentException(std::string(name) + " must be positive");
}

void GraphicInteractiveBase::CopyLookFrom(GraphicInteractiveBase const& source,
                                          CopyShapeConstants mode) {
    if (Carries(mode, CopyShapeConstants_Color))
        color_ = source.color_;
    if (Carries(mode, CopyShapeConstants_LineStyle))
        lineStyle_ = source.lineStyle_;
    if (Carries(mode, CopyShapeConstants_LineWidth))
        lineWidth_ = source.lineWidth_;
    if (Carries(mode, CopyShapeConstants_SelectedSpaceName))
        selectedSpaceName_ = source.selectedSpaceName_;
    if (Carries(mode, CopyShapeConstants_Interaction)) {
        interactive_ = source.interactive_;
        tipText_ = source.tipText_;
    }
}

template <class Archive>
void GraphicInteractiveBase::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "GraphicInteractiveBase::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), color_, lineStyle_,
            lineWidth_, selectedSpaceName_, interactive_, tipText_);
    ArchiveWeakReference(archive, parent_);
}

TAVRIN_INSTANTIATE_SERIALIZE(GraphicInteractiveBase)

} // namespace Tavrin::Vision

CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IGraphic, Tavrin::Vision::IGraphicInteractive)
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IGraphicInteractive,
                                     Tavrin::Vision::GraphicInteractiveBase)
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IGraphicParentChild,
                                     Tavrin::Vision::GraphicInteractiveBase)
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IShape, Tavrin::Vision::IRegion)

TAVRIN_REGISTRATION(Graphic) {
    using namespace Tavrin::Vision;
    using rttr::value;
    rttr::registration::class_<Color32>("Tavrin::Vision::Color32")
        .constructor<std::uint32_t>()(rttr::policy::ctor::as_object)
        .property_readonly("Value", &Color32::Value);
    rttr::registration::enumeration<CopyShapeConstants>("Tavrin::Vision::CopyShapeConstants")(
        value("GeometryOnly", CopyShapeConstants_GeometryOnly),
        value("Color", CopyShapeConstants_Color), value("LineStyle", CopyShapeConstants_LineStyle),
        value("LineWidth", CopyShapeConstants_LineWidth),
        value("SelectedSpaceName", CopyShapeConstants_SelectedSpaceName),
        value("Interaction", CopyShapeConstants_Interaction),
        value("Decorations", CopyShapeConstants_Decorations), value("All", CopyShapeConstants_All));
    rttr::registration::enumeration<GraphicLabelAlignmentConstants>(
        "Tavrin::Vision::GraphicLabelAlignmentConstants")(
        value("TopLeft", GraphicLabelAlignmentConstants_TopLeft),
        value("TopCenter", GraphicLabelAlignmentConstants_TopCenter),
        value("TopRight", GraphicLabelAlignmentConstants_TopRight),
        value("CenterLeft", GraphicLabelAlignmentConstants_CenterLeft),
        value("Center", GraphicLabelAlignmentConstants_Center),
        value("CenterRight", GraphicLabelAlignmentConstants_CenterRight),
        value("BottomLeft", GraphicLabelAlignmentConstants_BottomLeft),
        value("BottomCenter", GraphicLabelAlignmentConstants_BottomCenter),
        value("BottomRight", GraphicLabelAlignmentConstants_BottomRight));
    rttr::registration::enumeration<LineSegmentAdornmentConstants>(
        "Tavrin::Vision::LineSegmentAdornmentConstants")(
        value("None", LineSegmentAdornmentConstants_None),
        value("Arrow", LineSegmentAdornmentConstants_Arrow));
    rttr::registration::enumeration<LineStyleConstants>("Tavrin::Vision::LineStyleConstants")(
        value("Solid", LineStyleConstants_Solid), value("Dash", LineStyleConstants_Dash),
        value("Dot", LineStyleConstants_Dot), value("DashDot", LineStyleConstants_DashDot));

    rttr::registration::class_<IGraphic>("Tavrin::Vision::IGraphic")
        .property("Color", &IGraphic::Color, &IGraphic::setColor)
        .property("LineStyle", &IGraphic::LineStyle, &IGraphic::setLineStyle)
        .property("LineWidthInScreenPixels", &IGraphic::LineWidthInScreenPixels,
                  &IGraphic::setLineWidthInScreenPixels)
        .property("SelectedSpaceName", &IGraphic::SelectedSpaceName,
                  &IGraphic::setSelectedSpaceName);
    rttr::registration::class_<IGraphicInteractive>("Tavrin::Vision::IGraphicInteractive")
        .property("Interactive", &IGraphicInteractive::Interactive,
                  &IGraphicInteractive::setInteractive)
        .property("TipText", &IGraphicInteractive::TipText, &IGraphicInteractive::setTipText);
    rttr::registration::class_<IGraphicParentChild>("Tavrin::Vision::IGraphicParentChild")
        .property("Parent", &IGraphicParentChild::Parent, &IGraphicParentChild::setParent);
    rttr::registration::class_<IShape>("Tavrin::Vision::IShape")
        .method("CopyShape", &IShape::CopyShape)
        .method("MapShape", &IShape::MapShape);
    rttr::registration::class_<IRegion>("Tavrin::Vision::IRegion")
        .method("Within", &IRegion::Within);
    rttr::registration::class_<GraphicInteractiveBase>("Tavrin::Vision::GraphicInteractiveBase");
    Internal::VariantSerialization::CustomVariantArchivers::Register<Color32>();
}
