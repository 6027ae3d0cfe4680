#pragma once

#include <memory>

#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// A parallelogram: side X of length lx from the origin corner O along (cos r, sin r), side Y
// of length ly along (-sin(r + s), cos(r + s)), with r the rotation and s the skew.
class RectangleAffine : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfGeometry = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    explicit RectangleAffine(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(RectangleAffine)

    void SetCenterLengthsRotationSkew(double centerX, double centerY, double sideXLength,
                                      double sideYLength, double rotation, double skew);
    void SetOriginLengthsRotationSkew(double originX, double originY, double sideXLength,
                                      double sideYLength, double rotation, double skew);
    // Lengths, rotation and skew from three corners; the skew is brought into [-pi, pi).
    void SetOriginCornerXCornerY(double originX, double originY, double cornerXX, double cornerXY,
                                 double cornerYX, double cornerYY);

    double CenterX() const;
    double CenterY() const;
    double CornerOriginX() const { return originX_; }
    double CornerOriginY() const { return originY_; }
    double CornerXX() const;
    double CornerXY() const;
    double CornerYX() const;
    double CornerYY() const;
    double CornerOppositeX() const;
    double CornerOppositeY() const;
    double Rotation() const { return rotation_; }
    double Skew() const { return skew_; }
    double SideXLength() const { return sideXLength_; }
    double SideYLength() const { return sideYLength_; }

    std::shared_ptr<RectangleAffine> Copy(CopyShapeConstants mode) const;
    // Maps the origin and the corners X and Y and sets the copy from them: exact for any
    // linear map.
    std::shared_ptr<RectangleAffine> MapLinear(Transform2DLinear const& transform,
                                               CopyShapeConstants mode) const;
    // What MapLinear gives, with the default look, for a rectangle set by
    // SetCenterLengthsRotationSkew; that rectangle is never built.
    static std::shared_ptr<RectangleAffine>
    MapCenterLengthsRotationSkew(Transform2DLinear const& transform, double centerX, double centerY,
                                 double sideXLength, double sideYLength, double rotation,
                                 double skew);

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    bool Within(double x, double y) const override;

private:
    RectangleAffine() = default;

    // The two side vectors, lx·ux and ly·uy, as last derived by UpdateSides.
    void SideX(double* x, double* y) const;
    void SideY(double* x, double* y) const;
    // Every corner reads the side vectors, so they are derived once per change, not per read.
    void UpdateSides();
    // Sets this rectangle from the images of an origin and corners X and Y.
    void SetMappedCorners(Transform2DLinear const& transform, double originX, double originY,
                          double cornerXX, double cornerXY, double cornerYX, double cornerYY);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double originX_ = 0;
    double originY_ = 0;
    double sideXLength_ = 1;
    double sideYLength_ = 1;
    double rotation_ = 0;
    double skew_ = 0;
    double sideXX_ = 1;
    double sideXY_ = 0;
    double sideYX_ = 0;
    double sideYY_ = 1;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using RectangleAffinePtr = std::shared_ptr<RectangleAffine>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::RectangleAffine, 1)
