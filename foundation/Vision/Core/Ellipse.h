#pragma once

#include <memory>

#include "Vision/Core/EllipseGeometry.h"
#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// An ellipse by centre, radii and rotation.
class Ellipse : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfGeometry = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    explicit Ellipse(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(Ellipse)

    void SetCenterXYRadiusXYRotation(double centerX, double centerY, double radiusX, double radiusY,
                                     double rotation);
    double CenterX() const { return geometry_.centerX; }
    double CenterY() const { return geometry_.centerY; }
    double RadiusX() const { return geometry_.radiusX; }
    double RadiusY() const { return geometry_.radiusY; }
    double Rotation() const { return geometry_.rotation; }

    std::shared_ptr<Ellipse> Copy(CopyShapeConstants mode) const;
    // The ellipse whose boundary is the image of this one's boundary.
    std::shared_ptr<Ellipse> MapLinear(Transform2DLinear const& transform,
                                       CopyShapeConstants mode) const;

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    bool Within(double x, double y) const override;

private:
    Ellipse() = default;

    void setGeometry(Implementation::EllipseGeometry const& geometry);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    Implementation::EllipseGeometry geometry_;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using EllipsePtr = std::shared_ptr<Ellipse>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Ellipse, 1)
