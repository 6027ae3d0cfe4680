#include "Vision/Core/Transform2DRigid.h"

#include <cmath>

#include "Vision/Core/Registration.h"

#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

Transform2DRigid::Transform2DRigid(ObjectCreateAccessToken const&, double rotation,
                                   double translationX, double translationY)
    : rotation_(rotation)
    , translationX_(translationX)
    , translationY_(translationY) {}

void Transform2DRigid::SetRotationTranslation(double rotation, double translationX,
                                              double translationY) {
    rotation_ = rotation;
    translationX_ = translationX;
    translationY_ = translationY;
    OnChanged_(SfRotationTranslation);
}

std::shared_ptr<Transform2DRigid> Transform2DRigid::Compose(Transform2DRigid const& other) const {
    double x, y;
    MapPoint(other.translationX_, other.translationY_, &x, &y);
    return Brnt::ObjectFactory::Create<Transform2DRigid>(rotation_ + other.rotation_, x, y);
}

std::shared_ptr<Transform2DRigid> Transform2DRigid::Invert() const {
    auto const turnBack = Brnt::ObjectFactory::Create<Transform2DRigid>(-rotation_, 0, 0);
    double x, y;
    turnBack->MapPoint(-translationX_, -translationY_, &x, &y);
    return Brnt::ObjectFactory::Create<Transform2DRigid>(-rotation_, x, y);
}

std::shared_ptr<Transform2DLinear> Transform2DRigid::LinearTransform() const {
    double const c = std::cos(rotation_), s = std::sin(rotation_);
    return Brnt::ObjectFactory::Create<Transform2DLinear>(c, -s, s, c, translationX_,
                                                          translationY_);
}

void Transform2DRigid::MapPoint(double x, double y, double* outX, double* outY) const {
    double const c = std::cos(rotation_), s = std::sin(rotation_);
    *outX = c * x - s * y + translationX_;
    *outY = s * x + c * y + translationY_;
}

template <class Archive> void Transform2DRigid::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Transform2DRigid::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), rotation_, translationX_,
            translationY_);
}

TAVRIN_INSTANTIATE_SERIALIZE(Transform2DRigid)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Transform2DRigid, "Tavrin::Vision::Transform2DRigid")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::ITransform2D, Tavrin::Vision::Transform2DRigid)

TAVRIN_REGISTRATION(Transform2DRigid) {
    using Tavrin::Vision::Transform2DRigid;
    rttr::registration::class_<Transform2DRigid>("Tavrin::Vision::Transform2DRigid")
        .property_readonly("Rotation", &Transform2DRigid::Rotation)
        .property_readonly("TranslationX", &Transform2DRigid::TranslationX)
        .property_readonly("TranslationY", &Transform2DRigid::TranslationY)
        .method("SetRotationTranslation", &Transform2DRigid::SetRotationTranslation)
        .method("MapPoint", &Transform2DRigid::MapPoint);
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        Tavrin::Vision::Transform2DRigidPtr>();
}
