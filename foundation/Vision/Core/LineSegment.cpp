#include "Vision/Core/LineSegment.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

void LineSegment::SetStartEnd(double startX, double startY, double endX, double endY) {
    startX_ = startX;
    startY_ = startY;
    endX_ = endX;
    endY_ = endY;
    OnChanged_(SfGeometry);
}

void LineSegment::setStartPointAdornment(LineSegmentAdornmentConstants adornment) {
    RequireInRange("StartPointAdornment", adornment, LineSegmentAdornmentConstants_None,
                   LineSegmentAdornmentConstants_Arrow);
    Update(startAdornment_, adornment, SfStartPointAdornment);
}

void LineSegment::setEndPointAdornment(LineSegmentAdornmentConstants adornment) {
    RequireInRange("EndPointAdornment", adornment, LineSegmentAdornmentConstants_None,
                   LineSegmentAdornmentConstants_Arrow);
    Update(endAdornment_, adornment, SfEndPointAdornment);
}

std::shared_ptr<LineSegment> LineSegment::CopyWithEnds(CopyShapeConstants mode, double startX,
                                                       double startY, double endX,
                                                       double endY) const {
    auto copy = CreateCopy<LineSegment>(mode);
    copy->SetStartEnd(startX, startY, endX, endY);
    if (Carries(mode, CopyShapeConstants_Decorations)) {
        copy->setStartPointAdornment(startAdornment_);
        copy->setEndPointAdornment(endAdornment_);
    }
    return copy;
}

std::shared_ptr<LineSegment> LineSegment::Copy(CopyShapeConstants mode) const {
    return CopyWithEnds(mode, startX_, startY_, endX_, endY_);
}

std::shared_ptr<LineSegment> LineSegment::MapLinear(Transform2DLinear const& transform,
                                                    CopyShapeConstants mode) const {
    double startX, startY, endX, endY;
    transform.MapPoint(startX_, startY_, &startX, &startY);
    transform.MapPoint(endX_, endY_, &endX, &endY);
    return CopyWithEnds(mode, startX, startY, endX, endY);
}

template <class Archive> void LineSegment::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "LineSegment::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), startX_, startY_, endX_, endY_,
            startAdornment_, endAdornment_);
}

TAVRIN_INSTANTIATE_SERIALIZE(LineSegment)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::LineSegment, "Tavrin::Vision::LineSegment")

TAVRIN_REGISTRATION(LineSegment) {
    using Tavrin::Vision::LineSegment;
    rttr::registration::class_<LineSegment>("Tavrin::Vision::LineSegment")
        .property_readonly("StartX", &LineSegment::StartX)
        .property_readonly("StartY", &LineSegment::StartY)
        .property_readonly("EndX", &LineSegment::EndX)
        .property_readonly("EndY", &LineSegment::EndY)
        .property("StartPointAdornment", &LineSegment::StartPointAdornment,
                  &LineSegment::setStartPointAdornment)
        .property("EndPointAdornment", &LineSegment::EndPointAdornment,
                  &LineSegment::setEndPointAdornment)
        .method("SetStartEnd", &LineSegment::SetStartEnd);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::LineSegmentPtr>();
}
