#include "Vision/Core/Rectangle.h"

#include <algorithm>

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void Rectangle::SetOriginWidthHeight(double originX, double originY, double width, double height) {
    originX_ = originX;
    originY_ = originY;
    width_ = width;
    height_ = height;
    OnChanged_(SfGeometry);
}

void Rectangle::SetCenterWidthHeight(double centerX, double centerY, double width, double height) {
    SetOriginWidthHeight(centerX - width / 2, centerY - height / 2, width, height);
}

std::shared_ptr<Rectangle> Rectangle::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<Rectangle>(mode);
    copy->SetOriginWidthHeight(originX_, originY_, width_, height_);
    return copy;
}

std::shared_ptr<RectangleAffine> Rectangle::MapLinear(Transform2DLinear const& transform,
                                                      CopyShapeConstants mode) const {
    // The same figure as an unturned RectangleAffine, mapped with everything it carries.
    auto asAffine = CreateCopy<RectangleAffine>(mode);
    asAffine->SetOriginLengthsRotationSkew(originX_, originY_, width_, height_, 0, 0);
    return asAffine->MapLinear(transform, CopyShapeConstants_All);
}

bool Rectangle::Within(double x, double y) const {
    // A negative width or height extends the rectangle the other way from the origin.
    auto const between = [](double value, double from, double extent) {
        return value >= std::min(from, from + extent) && value <= std::max(from, from + extent);
    };
    return between(x, originX_, width_) && between(y, originY_, height_);
}

template <class Archive> void Rectangle::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Rectangle::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), originX_, originY_, width_, height_);
}

TAVRIN_INSTANTIATE_SERIALIZE(Rectangle)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Rectangle, "Tavrin::Vision::Rectangle")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion, Tavrin::Vision::Rectangle)

TAVRIN_REGISTRATION(Rectangle) {
    using Tavrin::Vision::Rectangle;
    rttr::registration::class_<Rectangle>("Tavrin::Vision::Rectangle")
        .property_readonly("OriginX", &Rectangle::OriginX)
        .property_readonly("OriginY", &Rectangle::OriginY)
        .property_readonly("Width", &Rectangle::Width)
        .property_readonly("Height", &Rectangle::Height)
        .property_readonly("CenterX", &Rectangle::CenterX)
        .property_readonly("CenterY", &Rectangle::CenterY)
        .method("SetOriginWidthHeight", &Rectangle::SetOriginWidthHeight)
        .method("SetCenterWidthHeight", &Rectangle::SetCenterWidthHeight);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::RectanglePtr>();
}
