#pragma once

#include <memory>

#include "Vision/Core/Transform2D.h"

namespace Tavrin::Vision {

// A turn by the rotation (radians) followed by a shift: x' = R(rotation)·x + t.
class Transform2DRigid : public virtual ChangedEventShareableBase, public ITransform2D {
public:
    static constexpr long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static constexpr long long SfRotationTranslation = sf0_;
    static constexpr long long sfNextSf_ = sf0_ << 1;

    explicit Transform2DRigid(ObjectCreateAccessToken const&) {}
    Transform2DRigid(ObjectCreateAccessToken const&, double rotation, double translationX,
                     double translationY);

    TAVRIN_SHARED_FROM_THIS(Transform2DRigid)

    void SetRotationTranslation(double rotation, double translationX, double translationY);
    double Rotation() const { return rotation_; }
    double TranslationX() const { return translationX_; }
    double TranslationY() const { return translationY_; }

    // The map p -> this(other(p)).
    std::shared_ptr<Transform2DRigid> Compose(Transform2DRigid const& other) const;
    std::shared_ptr<Transform2DRigid> Invert() const;
    // The same map as a matrix and a translation.
    std::shared_ptr<Transform2DLinear> LinearTransform() const;
    void MapPoint(double x, double y, double* outX, double* outY) const override;

private:
    Transform2DRigid() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double rotation_ = 0;
    double translationX_ = 0;
    double translationY_ = 0;

    RTTR_ENABLE(ChangedEventShareableBase, ITransform2D)
};

using Transform2DRigidPtr = std::shared_ptr<Transform2DRigid>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Transform2DRigid, 1)
