#pragma once

#include <memory>

#include "Vision/Core/Graphic.h"

namespace Tavrin::Vision {

// A straight segment from a start point to an end point, with an optional mark at each end.
class LineSegment : public GraphicInteractiveBase {
public:
    static constexpr long long sf0_ = GraphicInteractiveBase::sfNextSf_;
    static constexpr long long SfGeometry = sf0_;
    static constexpr long long SfStartPointAdornment = sf0_ << 1;
    static constexpr long long SfEndPointAdornment = sf0_ << 2;
    static constexpr long long sfNextSf_ = sf0_ << 3;

    explicit LineSegment(ObjectCreateAccessToken const&) {}

    TAVRIN_SHARED_FROM_THIS(LineSegment)

    void SetStartEnd(double startX, double startY, double endX, double endY);
    double StartX() const { return startX_; }
    double StartY() const { return startY_; }
    double EndX() const { return endX_; }
    double EndY() const { return endY_; }

    LineSegmentAdornmentConstants StartPointAdornment() const { return startAdornment_; }
    void setStartPointAdornment(LineSegmentAdornmentConstants adornment);
    LineSegmentAdornmentConstants EndPointAdornment() const { return endAdornment_; }
    void setEndPointAdornment(LineSegmentAdornmentConstants adornment);

    // The adornments count as decorations of the look.
    std::shared_ptr<LineSegment> Copy(CopyShapeConstants mode) const;
    std::shared_ptr<LineSegment> MapLinear(Transform2DLinear const& transform,
                                           CopyShapeConstants mode) const;

private:
    LineSegment() = default;

    std::shared_ptr<LineSegment> CopyWithEnds(CopyShapeConstants mode, double startX, double startY,
                                              double endX, double endY) const;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double startX_ = 0;
    double startY_ = 0;
    double endX_ = 1;
    double endY_ = 0;
    LineSegmentAdornmentConstants startAdornment_ = LineSegmentAdornmentConstants_None;
    LineSegmentAdornmentConstants endAdornment_ = LineSegmentAdornmentConstants_None;

    RTTR_ENABLE(GraphicInteractiveBase)
};

using LineSegmentPtr = std::shared_ptr<LineSegment>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::LineSegment, 1)
