#pragma once

#include <memory>

#include "Vision/Core/Graphic.h"
#include "Vision/Core/RectangleAffine.h"

namespace Tavrin::Vision {

// A rectangle with sides along the axes, from its origin corner by width and height.
class Rectangle : public GraphicInteractiveBase, public IRegion {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfGeometry = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    explicit Rectangle(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(Rectangle)

    void SetOriginWidthHeight(double originX, double originY, double width, double height);
    void SetCenterWidthHeight(double centerX, double centerY, double width, double height);
    double OriginX() const { return originX_; }
    double OriginY() const { return originY_; }
    double Width() const { return width_; }
    double Height() const { return height_; }
    double CenterX() const { return originX_ + width_ / 2; }
    double CenterY() const { return originY_ + height_ / 2; }

    std::shared_ptr<Rectangle> Copy(CopyShapeConstants mode) const;
    // A linear map turns and skews the sides, so the image is a RectangleAffine.
    std::shared_ptr<RectangleAffine> MapLinear(Transform2DLinear const& transform,
                                               CopyShapeConstants mode) const;

    std::shared_ptr<IShape> CopyShape(CopyShapeConstants mode) const override { return Copy(mode); }
    std::shared_ptr<IShape> MapShape(Transform2DLinear const& transform,
                                     CopyShapeConstants mode) const override {
        return MapLinear(transform, mode);
    }
    bool Within(double x, double y) const override;

private:
    Rectangle() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double originX_ = 0;
    double originY_ = 0;
    double width_ = 1;
    double height_ = 1;

    RTTR_ENABLE(GraphicInteractiveBase, IRegion)
};

using RectanglePtr = std::shared_ptr<Rectangle>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Rectangle, 1)
