#include "Vision/Core/RectangleAffine.h"

#include <cmath>

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

#include "Vision/Core/EllipseGeometry.h"

namespace Tavrin::Vision {

namespace {

void SideXOf(double sideXLength, double rotation, double* x, double* y) {
    *x = sideXLength * std::cos(rotation);
    *y = sideXLength * std::sin(rotation);
}

void SideYOf(double sideYLength, double rotation, double skew, double* x, double* y) {
    *x = -sideYLength * std::sin(rotation + skew);
    *y = sideYLength * std::cos(rotation + skew);
}

// The origin corner of the rectangle of that center and side vectors.
void OriginFromCenter(double centerX, double centerY, double xx, double xy, double yx, double yy,
                      double* originX, double* originY) {
    *originX = centerX - (xx + yx) / 2;
    *originY = centerY - (xy + yy) / 2;
}

} // namespace

void RectangleAffine::SetCenterLengthsRotationSkew(double centerX, double centerY,
                                                   double sideXLength, double sideYLength,
                                                   double rotation, double skew) {
    sideXLength_ = sideXLength;
    sideYLength_ = sideYLength;
    rotation_ = rotation;
    skew_ = skew;
    UpdateSides();
    OriginFromCenter(centerX, centerY, sideXX_, sideXY_, sideYX_, sideYY_, &originX_, &originY_);
    OnChanged_(SfGeometry);
}

void RectangleAffine::SetOriginLengthsRotationSkew(double originX, double originY,
                                                   double sideXLength, double sideYLength,
                                                   double rotation, double skew) {
    originX_ = originX;
    originY_ = originY;
    sideXLength_ = sideXLength;
    sideYLength_ = sideYLength;
    rotation_ = rotation;
    skew_ = skew;
    UpdateSides();
    OnChanged_(SfGeometry);
}

void RectangleAffine::SetOriginCornerXCornerY(double originX, double originY, double cornerXX,
                                              double cornerXY, double cornerYX, double cornerYY) {
    double const xx = cornerXX - originX, xy = cornerXY - originY;
    double const yx = cornerYX - originX, yy = cornerYY - originY;
    double const rotation = std::atan2(xy, xx);
    // Side Y points along rotation + skew + pi/2.
    double const skew = Implementation::NormalizeAngle(std::atan2(yy, yx) - rotation - M_PI / 2);
    SetOriginLengthsRotationSkew(originX, originY, std::hypot(xx, xy), std::hypot(yx, yy), rotation,
                                 skew);
}

void RectangleAffine::SideX(double* x, double* y) const {
    *x = sideXX_;
    *y = sideXY_;
}

void RectangleAffine::SideY(double* x, double* y) const {
    *x = sideYX_;
    *y = sideYY_;
}

void RectangleAffine::UpdateSides() {
    SideXOf(sideXLength_, rotation_, &sideXX_, &sideXY_);
    SideYOf(sideYLength_, rotation_, skew_, &sideYX_, &sideYY_);
}

double RectangleAffine::CenterX() const {
    return (originX_ + CornerOppositeX()) / 2;
}
double RectangleAffine::CenterY() const {
    return (originY_ + CornerOppositeY()) / 2;
}

double RectangleAffine::CornerXX() const {
    double x, y;
    SideX(&x, &y);
    return originX_ + x;
}

double RectangleAffine::CornerXY() const {
    double x, y;
    SideX(&x, &y);
    return originY_ + y;
}

double RectangleAffine::CornerYX() const {
    double x, y;
    SideY(&x, &y);
    return originX_ + x;
}

double RectangleAffine::CornerYY() const {
    double x, y;
    SideY(&x, &y);
    return originY_ + y;
}

double RectangleAffine::CornerOppositeX() const {
    double xx, xy, yx, yy;
    SideX(&xx, &xy);
    SideY(&yx, &yy);
    return originX_ + xx + yx;
}

double RectangleAffine::CornerOppositeY() const {
    double xx, xy, yx, yy;
    SideX(&xx, &xy);
    SideY(&yx, &yy);
    return originY_ + xy + yy;
}

std::shared_ptr<RectangleAffine> RectangleAffine::Copy(CopyShapeConstants mode) const {
    auto copy = CreateCopy<RectangleAffine>(mode);
    copy->SetOriginLengthsRotationSkew(originX_, originY_, sideXLength_, sideYLength_, rotation_,
                                       skew_);
    return copy;
}

std::shared_ptr<RectangleAffine> RectangleAffine::MapLinear(Transform2DLinear const& transform,
                                                            CopyShapeConstants mode) const {
    auto mapped = CreateCopy<RectangleAffine>(mode);
    mapped->SetMappedCorners(transform, originX_, originY_, CornerXX(), CornerXY(), CornerYX(),
                             CornerYY());
    return mapped;
}

std::shared_ptr<RectangleAffine>
RectangleAffine::MapCenterLengthsRotationSkew(Transform2DLinear const& transform, double centerX,
                                              double centerY, double sideXLength,
                                              double sideYLength, double rotation, double skew) {
    double xx, xy, yx, yy, originX, originY;
    SideXOf(sideXLength, rotation, &xx, &xy);
    SideYOf(sideYLength, rotation, skew, &yx, &yy);
    OriginFromCenter(centerX, centerY, xx, xy, yx, yy, &originX, &originY);
    auto mapped = Brnt::ObjectFactory::Create<RectangleAffine>();
    mapped->SetMappedCorners(transform, originX, originY, originX + xx, originY + xy, originX + yx,
                             originY + yy);
    return mapped;
}

void RectangleAffine::SetMappedCorners(Transform2DLinear const& transform, double originX,
                                       double originY, double cornerXX, double cornerXY,
                                       double cornerYX, double cornerYY) {
    double ox, oy, xx, xy, yx, yy;
    transform.MapPoint(originX, originY, &ox, &oy);
    transform.MapPoint(cornerXX, cornerXY, &xx, &xy);
    transform.MapPoint(cornerYX, cornerYY, &yx, &yy);
    SetOriginCornerXCornerY(ox, oy, xx, xy, yx, yy);
}

bool RectangleAffine::Within(double x, double y) const {
    // Solve P - O = u·sideX + v·sideY and test both coordinates against [0, 1].
    double xx, xy, yx, yy;
    SideX(&xx, &xy);
    SideY(&yx, &yy);
    double const determinant = xx * yy - xy * yx;
    if (determinant == 0)
        return false;
    double const dx = x - originX_, dy = y - originY_;
    double const u = (dx * yy - dy * yx) / determinant;
    double const v = (xx * dy - xy * dx) / determinant;
    return u >= 0 && u <= 1 && v >= 0 && v <= 1;
}

template <class Archive> void RectangleAffine::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "RectangleAffine::serialize()");
    archive(cereal::base_class<GraphicInteractiveBase>(this), originX_, originY_, sideXLength_,
            sideYLength_, rotation_, skew_);
    if constexpr (Archive::is_loading::value)
        UpdateSides();
}

TAVRIN_INSTANTIATE_SERIALIZE(RectangleAffine)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::RectangleAffine, "Tavrin::Vision::RectangleAffine")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRegion, Tavrin::Vision::RectangleAffine)

TAVRIN_REGISTRATION(RectangleAffine) {
    using Tavrin::Vision::RectangleAffine;
    rttr::registration::class_<RectangleAffine>("Tavrin::Vision::RectangleAffine")
        .property_readonly("CenterX", &RectangleAffine::CenterX)
        .property_readonly("CenterY", &RectangleAffine::CenterY)
        .property_readonly("CornerOriginX", &RectangleAffine::CornerOriginX)
        .property_readonly("CornerOriginY", &RectangleAffine::CornerOriginY)
        .property_readonly("CornerXX", &RectangleAffine::CornerXX)
        .property_readonly("CornerXY", &RectangleAffine::CornerXY)
        .property_readonly("CornerYX", &RectangleAffine::CornerYX)
        .property_readonly("CornerYY", &RectangleAffine::CornerYY)
        .property_readonly("CornerOppositeX", &RectangleAffine::CornerOppositeX)
        .property_readonly("CornerOppositeY", &RectangleAffine::CornerOppositeY)
        .property_readonly("Rotation", &RectangleAffine::Rotation)
        .property_readonly("Skew", &RectangleAffine::Skew)
        .property_readonly("SideXLength", &RectangleAffine::SideXLength)
        .property_readonly("SideYLength", &RectangleAffine::SideYLength)
        .method("SetCenterLengthsRotationSkew", &RectangleAffine::SetCenterLengthsRotationSkew)
        .method("SetOriginLengthsRotationSkew", &RectangleAffine::SetOriginLengthsRotationSkew)
        .method("SetOriginCornerXCornerY", &RectangleAffine::SetOriginCornerXCornerY);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::RectangleAffinePtr>();
}
