#pragma once

#include <memory>

#include "Vision/Core/EllipseGeometry.h"
#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// A part of an ellipse's boundary, swept over the ellipse parameter from the start angle by
// the span (radians, negative for clockwise). As a region it is the sector between the arc
// and the centre.
class EllipticalArc : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfGeometry = sf0_;
    static constexpr long long SfAngleStartSpan = sf0_ << 1;
    static constexpr long long sfNextSf_ = sf0_ << 2;

    explicit EllipticalArc(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(EllipticalArc)

    void SetCenterXYRadiusXYRotation(double centerX, double centerY, double radiusX, double radiusY,
                                     double rotation);
    void SetAngleStartSpan(double angleStart, double angleSpan);
    double CenterX() const { return geometry_.centerX; }
    double CenterY() const { return geometry_.centerY; }
    double RadiusX() const { return geometry_.radiusX; }
    double RadiusY() const { return geometry_.radiusY; }
    double Rotation() const { return geometry_.rotation; }
    double AngleStart() const { return sweep_.start; }
    double AngleSpan() const { return sweep_.span; }

    std::shared_ptr<EllipticalArc> Copy(CopyShapeConstants mode) const;
    // The arc whose points are the images of this one's.
    std::shared_ptr<EllipticalArc> MapLinear(Transform2DLinear const& transform,
                                             CopyShapeConstants mode) const;

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    bool Within(double x, double y) const override;

private:
    EllipticalArc() = default;

    void setShape(Implementation::EllipseGeometry const& geometry,
                  Implementation::ParameterSweep const& sweep);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    Implementation::EllipseGeometry geometry_;
    Implementation::ParameterSweep sweep_;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using EllipticalArcPtr = std::shared_ptr<EllipticalArc>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::EllipticalArc, 1)
