#pragma once

#include <memory>

#include "Vision/Core/EllipseGeometry.h"
#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// The band between an ellipse and the same ellipse scaled about its centre by the radial
// scale, over the parameters from the start angle through the span (radians).
class EllipticalAnnulusSection : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfGeometry = sf0_;
    static constexpr long long SfRadialScale = sf0_ << 1;
    static constexpr long long SfAngleStartSpan = sf0_ << 2;
    static constexpr long long sfNextSf_ = sf0_ << 3;

    explicit EllipticalAnnulusSection(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(EllipticalAnnulusSection)

    // The outer ellipse.
    void SetCenterXYRadiusXYRotation(double centerX, double centerY, double radiusX, double radiusY,
                                     double rotation);
    // The inner ellipse as a fraction of the outer one, from 0 to 1.
    void setRadialScale(double radialScale);
    void SetAngleStartSpan(double angleStart, double angleSpan);
    double CenterX() const { return geometry_.centerX; }
    double CenterY() const { return geometry_.centerY; }
    double RadiusX() const { return geometry_.radiusX; }
    double RadiusY() const { return geometry_.radiusY; }
    double Rotation() const { return geometry_.rotation; }
    double RadialScale() const { return radialScale_; }
    double AngleStart() const { return sweep_.start; }
    double AngleSpan() const { return sweep_.span; }

    std::shared_ptr<EllipticalAnnulusSection> Copy(CopyShapeConstants mode) const;
    // A linear map keeps the radial scale and carries the outer ellipse and the sweep.
    std::shared_ptr<EllipticalAnnulusSection> MapLinear(Transform2DLinear const& transform,
                                                        CopyShapeConstants mode) const;

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    bool Within(double x, double y) const override;

private:
    EllipticalAnnulusSection() = default;

    void setShape(Implementation::EllipseGeometry const& geometry, double radialScale,
                  Implementation::ParameterSweep const& sweep);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    Implementation::EllipseGeometry geometry_;
    double radialScale_ = 0.5;
    Implementation::ParameterSweep sweep_;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using EllipticalAnnulusSectionPtr = std::shared_ptr<EllipticalAnnulusSection>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::EllipticalAnnulusSection, 1)
