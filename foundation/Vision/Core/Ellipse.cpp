#include "Vision/Core/Ellipse.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void Ellipse::SetCenterXYRadiusXYRotation(double centerX, double centerY, double radiusX,
                                          double radiusY, double rotation) {
    setGeometry({centerX, centerY, radiusX, radiusY, rotation});
}

void Ellipse::setGeometry(Implementation::EllipseGeometry const& geometry) {
    geometry_ = geometry;
    OnChanged_(SfGeometry);
}

std::shared_ptr<Ellipse> Ellipse::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<Ellipse>(mode);
    copy->setGeometry(geometry_);
    return copy;
}

std::shared_ptr<Ellipse> Ellipse::MapLinear(Transform2DLinear const& transform,
                                            CopyShapeConstants mode) const {
    auto mapped = CreateCopy<Ellipse>(mode);
    mapped->setGeometry(Implementation::MapEllipse(geometry_, transform).geometry);
    return mapped;
}

bool Ellipse::Within(double x, double y) const {
    return geometry_.Contains(x, y);
}

template <class Archive> void Ellipse::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Ellipse::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), geometry_);
}

TAVRIN_INSTANTIATE_SERIALIZE(Ellipse)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Ellipse, "Tavrin::Vision::Ellipse")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion, Tavrin::Vision::Ellipse)

TAVRIN_REGISTRATION(Ellipse) {
    using Tavrin::Vision::Ellipse;
    rttr::registration::class_<Ellipse>("Tavrin::Vision::Ellipse")
        .property_readonly("CenterX", &Ellipse::CenterX)
        .property_readonly("CenterY", &Ellipse::CenterY)
        .property_readonly("RadiusX", &Ellipse::RadiusX)
        .property_readonly("RadiusY", &Ellipse::RadiusY)
        .property_readonly("Rotation", &Ellipse::Rotation)
        .method("SetCenterXYRadiusXYRotation", &Ellipse::SetCenterXYRadiusXYRotation);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::EllipsePtr>();
}
