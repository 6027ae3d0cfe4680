#pragma once

#include <memory>

#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// A mark at a point that keeps its size on screen however far the display zooms.
class PointMarker : public GraphicInteractiveBase {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfX = sf0_;
    static constexpr long long SfY = sf0_ << 1;
    static constexpr long long SfRotation = sf0_ << 2;
    static constexpr long long SfSizeInScreenPixels = sf0_ << 3;
    static constexpr long long sfNextSf_ = sf0_ << 4;

    explicit PointMarker(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(PointMarker)

    double X() const { return x_; }
    void setX(double x);
    double Y() const { return y_; }
    void setY(double y);
    // Radians.
    double Rotation() const { return rotation_; }
    void setRotation(double rotation);
    int SizeInScreenPixels() const { return sizeInScreenPixels_; }
    void setSizeInScreenPixels(int size);

    std::shared_ptr<PointMarker> Copy(CopyShapeConstants mode) const;

private:
    PointMarker() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double x_ = 0;
    double y_ = 0;
    double rotation_ = 0;
    int sizeInScreenPixels_ = 10;

    RTTR_ENABLE(GraphicInteractiveBase)
};

using PointMarkerPtr = std::shared_ptr<PointMarker>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::PointMarker, 1)
