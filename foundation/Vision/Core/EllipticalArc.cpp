#include "Vision/Core/EllipticalArc.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void EllipticalArc::SetCenterXYRadiusXYRotation(double centerX, double centerY, double radiusX,
                                                double radiusY, double rotation) {
    geometry_ = {centerX, centerY, radiusX, radiusY, rotation};
    OnChanged_(SfGeometry);
}

void EllipticalArc::SetAngleStartSpan(double angleStart, double angleSpan) {
    sweep_ = {angleStart, angleSpan};
    OnChanged_(SfAngleStartSpan);
}

void EllipticalArc::setShape(Implementation::EllipseGeometry const& geometry,
                             Implementation::ParameterSweep const& sweep) {
    geometry_ = geometry;
    sweep_ = sweep;
    OnChanged_(SfGeometry | SfAngleStartSpan);
}

std::shared_ptr<EllipticalArc> EllipticalArc::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<EllipticalArc>(mode);
    copy->setShape(geometry_, sweep_);
    return copy;
}

std::shared_ptr<EllipticalArc> EllipticalArc::MapLinear(Transform2DLinear const& transform,
                                                        CopyShapeConstants mode) const {
    auto const mapping = Implementation::MapEllipse(geometry_, transform);
    auto mapped = CreateCopy<EllipticalArc>(mode);
    mapped->setShape(mapping.geometry, sweep_.Mapped(mapping));
    return mapped;
}

bool EllipticalArc::Within(double x, double y) const {
    return geometry_.Contains(x, y, sweep_);
}

template <class Archive> void EllipticalArc::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "EllipticalArc::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), geometry_, sweep_);
}

TAVRIN_INSTANTIATE_SERIALIZE(EllipticalArc)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::EllipticalArc, "Tavrin::Vision::EllipticalArc")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion, Tavrin::Vision::EllipticalArc)

TAVRIN_REGISTRATION(EllipticalArc) {
    using Tavrin::Vision::EllipticalArc;
    rttr::registration::class_<EllipticalArc>("Tavrin::Vision::EllipticalArc")
        .property_readonly("CenterX", &EllipticalArc::CenterX)
        .property_readonly("CenterY", &EllipticalArc::CenterY)
        .property_readonly("RadiusX", &EllipticalArc::RadiusX)
        .property_readonly("RadiusY", &EllipticalArc::RadiusY)
        .property_readonly("Rotation", &EllipticalArc::Rotation)
        .property_readonly("AngleStart", &EllipticalArc::AngleStart)
        .property_readonly("AngleSpan", &EllipticalArc::AngleSpan)
        .method("SetCenterXYRadiusXYRotation", &EllipticalArc::SetCenterXYRadiusXYRotation)
        .method("SetAngleStartSpan", &EllipticalArc::SetAngleStartSpan);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::EllipticalArcPtr>();
}
