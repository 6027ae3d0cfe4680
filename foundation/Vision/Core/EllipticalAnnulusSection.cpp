#include "Vision/Core/EllipticalAnnulusSection.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

void EllipticalAnnulusSection::SetCenterXYRadiusXYRotation(double centerX, double centerY,
                                                           double radiusX, double radiusY,
                                                           double rotation) {
    geometry_ = {centerX, centerY, radiusX, radiusY, rotation};
    OnChanged_(SfGeometry);
}

void EllipticalAnnulusSection::setRadialScale(double radialScale) {
    if (!(radialScale >= 0 && radialScale <= 1))
        throw ArgumentException("RadialScale must be between 0 and 1");
    Update(radialScale_, radialScale, SfRadialScale);
}

void EllipticalAnnulusSection::SetAngleStartSpan(double angleStart, double angleSpan) {
    sweep_ = {angleStart, angleSpan};
    OnChanged_(SfAngleStartSpan);
}

void EllipticalAnnulusSection::setShape(Implementation::EllipseGeometry const& geometry,
                                        double radialScale,
                                        Implementation::ParameterSweep const& sweep) {
    geometry_ = geometry;
    radialScale_ = radialScale;
    sweep_ = sweep;
    OnChanged_(SfGeometry | SfRadialScale | SfAngleStartSpan);
}

std::shared_ptr<EllipticalAnnulusSection>
EllipticalAnnulusSection::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<EllipticalAnnulusSection>(mode);
    copy->setShape(geometry_, radialScale_, sweep_);
    return copy;
}

std::shared_ptr<EllipticalAnnulusSection>
EllipticalAnnulusSection::MapLinear(Transform2DLinear const& transform,
                                    CopyShapeConstants mode) const {
    auto const mapping = Implementation::MapEllipse(geometry_, transform);
    auto mapped = CreateCopy<EllipticalAnnulusSection>(mode);
    mapped->setShape(mapping.geometry, radialScale_, sweep_.Mapped(mapping));
    return mapped;
}

bool EllipticalAnnulusSection::Within(double x, double y) const {
    return geometry_.Contains(x, y, sweep_, radialScale_);
}

template <class Archive>
void EllipticalAnnulusSection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                "EllipticalAnnulusSection::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), geometry_, radialScale_, sweep_);
}

TAVRIN_INSTANTIATE_SERIALIZE(EllipticalAnnulusSection)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::EllipticalAnnulusSection,
                               "Tavrin::Vision::EllipticalAnnulusSection")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion,
                                     Tavrin::Vision::EllipticalAnnulusSection)

TAVRIN_REGISTRATION(EllipticalAnnulusSection) {
    using Tavrin::Vision::EllipticalAnnulusSection;
    rttr::registration::class_<EllipticalAnnulusSection>("Tavrin::Vision::EllipticalAnnulusSection")
        .property_readonly("CenterX", &EllipticalAnnulusSection::CenterX)
        .property_readonly("CenterY", &EllipticalAnnulusSection::CenterY)
        .property_readonly("RadiusX", &EllipticalAnnulusSection::RadiusX)
        .property_readonly("RadiusY", &EllipticalAnnulusSection::RadiusY)
        .property_readonly("Rotation", &EllipticalAnnulusSection::Rotation)
        .property("RadialScale", &EllipticalAnnulusSection::RadialScale,
                  &EllipticalAnnulusSection::setRadialScale)
        .property_readonly("AngleStart", &EllipticalAnnulusSection::AngleStart)
        .property_readonly("AngleSpan", &EllipticalAnnulusSection::AngleSpan)
        .method("SetCenterXYRadiusXYRotation",
                &EllipticalAnnulusSection::SetCenterXYRadiusXYRotation)
        .method("SetAngleStartSpan", &EllipticalAnnulusSection::SetAngleStartSpan);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::EllipticalAnnulusSectionPtr>();
}
