#include "Vision/Core/Transform2D.h"

#include <cmath>

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

Transform2DLinear::Transform2DLinear(ObjectCreateAccessToken const&, double a, double b, double c,
                                     double d, double tx, double ty)
    : a_(a)
    , b_(b)
    , c_(c)
    , d_(d)
    , tx_(tx)
    , ty_(ty) {}

void Transform2DLinear::SetMatrixElementsTranslation(double a, double b, double c, double d,
                                                     double tx, double ty) {
    a_ = a;
    b_ = b;
    c_ = c;
    d_ = d;
    tx_ = tx;
    ty_ = ty;
    OnChanged_(SfMatrixElementsTranslation);
}

void Transform2DLinear::GetMatrixElementsTranslation(double* a, double* b, double* c, double* d,
                                                     double* tx, double* ty) const {
    *a = a_;
    *b = b_;
    *c = c_;
    *d = d_;
    *tx = tx_;
    *ty = ty_;
}

std::shared_ptr<Transform2DLinear> Transform2DLinear::Compose(Transform2DLinear const& o) const {
    return Brnt::ObjectFactory::Create<Transform2DLinear>(
        a_ * o.a_ + b_ * o.c_, a_ * o.b_ + b_ * o.d_, c_ * o.a_ + d_ * o.c_, c_ * o.b_ + d_ * o.d_,
        a_ * o.tx_ + b_ * o.ty_ + tx_, c_ * o.tx_ + d_ * o.ty_ + ty_);
}

std::shared_ptr<Transform2DLinear> Transform2DLinear::Invert() const {
    double const det = Determinant();
    if (det == 0 || !std::isfinite(det))
        throw InternalErrorException("The transform cannot be inverted.",
                                     VisionExceptionCodes_NotInvertible);
    double const ia = d_ / det, ib = -b_ / det, ic = -c_ / det, id = a_ / det;
    return Brnt::ObjectFactory::Create<Transform2DLinear>(ia, ib, ic, id, -(ia * tx_ + ib * ty_),
                                                          -(ic * tx_ + id * ty_));
}

bool Transform2DLinear::IsIdentity() const {
    return a_ == 1 && b_ == 0 && c_ == 0 && d_ == 1 && tx_ == 0 && ty_ == 0;
}

double Transform2DLinear::Rotation() const {
    return std::atan2(c_, a_);
}

void Transform2DLinear::MapPoint(double x, double y, double* outX, double* outY) const {
    *outX = a_ * x + b_ * y + tx_;
    *outY = c_ * x + d_ * y + ty_;
}

void Transform2DLinear::MapVector(double x, double y, double* outX, double* outY) const {
    *outX = a_ * x + b_ * y;
    *outY = c_ * x + d_ * y;
}

template <class Archive> void Transform2DLinear::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Transform2DLinear::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), a_, b_, c_, d_, tx_, ty_);
}

TAVRIN_INSTANTIATE_SERIALIZE(Transform2DLinear)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Transform2DLinear,
                               "Tavrin::Vision::Transform2DLinear")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::ITransform2D,
                                     Tavrin::Vision::Transform2DLinear)

TAVRIN_REGISTRATION(Transform2D) {
    using Tavrin::Vision::Transform2DLinear;
    rttr::registration::class_<Transform2DLinear>("Tavrin::Vision::Transform2DLinear")
        .property_readonly("Rotation", &Transform2DLinear::Rotation)
        .property_readonly("IsIdentity", &Transform2DLinear::IsIdentity)
        .property_readonly("A", &Transform2DLinear::A)
        .property_readonly("B", &Transform2DLinear::B)
        .property_readonly("C", &Transform2DLinear::C)
        .property_readonly("D", &Transform2DLinear::D)
        .property_readonly("TX", &Transform2DLinear::TX)
        .property_readonly("TY", &Transform2DLinear::TY)
        .method("SetMatrixElementsTranslation", &Transform2DLinear::SetMatrixElementsTranslation)
        .method("MapPoint", &Transform2DLinear::MapPoint);
}
