#include "Vision/Core/GraphicLabel.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void GraphicLabel::SetXYText(double x, double y, std::string const& text) {
    x_ = x;
    y_ = y;
    text_ = text;
    OnChanged_(SfXYText);
}

void GraphicLabel::setAlignment(GraphicLabelAlignmentConstants alignment) {
    RequireInRange("Alignment", alignment, GraphicLabelAlignmentConstants_TopLeft,
                   GraphicLabelAlignmentConstants_BottomRight);
    Update(alignment_, alignment, SfAlignment);
}

void GraphicLabel::setBackgroundColor(Color32 color) {
    Update(backgroundColor_, color, SfBackgroundColor);
}

void GraphicLabel::setRotation(double rotation) {
    Update(rotation_, rotation, SfRotation);
}

std::shared_ptr<GraphicLabel> GraphicLabel::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<GraphicLabel>(mode);
    copy->SetXYText(x_, y_, text_);
    copy->setAlignment(alignment_);
    copy->setRotation(rotation_);
    if (Carries(mode, CopyShapeConstants_Decorations))
        copy->setBackgroundColor(backgroundColor_);
    return copy;
}

template <class Archive> void GraphicLabel::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "GraphicLabel::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), x_, y_, text_, alignment_,
            backgroundColor_, rotation_);
}

TAVRIN_INSTANTIATE_SERIALIZE(GraphicLabel)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::GraphicLabel, "Tavrin::Vision::GraphicLabel")

TAVRIN_REGISTRATION(GraphicLabel) {
    using Tavrin::Vision::GraphicLabel;
    rttr::registration::class_<GraphicLabel>("Tavrin::Vision::GraphicLabel")
        .property_readonly("X", &GraphicLabel::X)
        .property_readonly("Y", &GraphicLabel::Y)
        .property_readonly("Text", &GraphicLabel::Text)
        .property("Alignment", &GraphicLabel::Alignment, &GraphicLabel::setAlignment)
        .property("BackgroundColor", &GraphicLabel::BackgroundColor,
                  &GraphicLabel::setBackgroundColor)
        .property("Rotation", &GraphicLabel::Rotation, &GraphicLabel::setRotation)
        .method("SetXYText", &GraphicLabel::SetXYText);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::GraphicLabelPtr>();
}
