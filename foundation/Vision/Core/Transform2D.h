#pragma once

#include <memory>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ChangedEvent.h"

namespace Tavrin::Vision {

class ITransform2D : public virtual IChangedEvent {
public:
    virtual void MapPoint(double x, double y, double* outX, double* outY) const = 0;

    RTTR_ENABLE(IChangedEvent)
};

// x' = a·x + b·y + tx, y' = c·x + d·y + ty.
class Transform2DLinear : public virtual ChangedEventShareableBase, public ITransform2D {
public:
    static const long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static const long long SfMatrixElementsTranslation = sf0_;
    static const long long sfNextSf_ = sf0_ << 1;

    explicit Transform2DLinear(ObjectCreateAccessToken const&) {}
    Transform2DLinear(ObjectCreateAccessToken const&, double a, double b, double c, double d,
                      double tx, double ty);

    TAVRIN_SHARED_FROM_THIS(Transform2DLinear)

    void SetMatrixElementsTranslation(double a, double b, double c, double d, double tx,
                                      double ty);
    void GetMatrixElementsTranslation(double* a, double* b, double* c, double* d, double* tx,
                                      double* ty) const;
    double A() const { return a_; }
    double B() const { return b_; }
    double C() const { return c_; }
    double D() const { return d_; }
    double TX() const { return tx_; }
    double TY() const { return ty_; }

    // The map p -> this(other(p)).
    std::shared_ptr<Transform2DLinear> Compose(Transform2DLinear const& other) const;
    // Throws InternalErrorException when the matrix is singular.
    std::shared_ptr<Transform2DLinear> Invert() const;
    double Determinant() const { return a_ * d_ - b_ * c_; }
    bool IsIdentity() const;
    // The angle of the image of the x axis, in radians.
    double Rotation() const;
    void MapPoint(double x, double y, double* outX, double* outY) const override;
    // Maps a direction: the linear part without the translation.
    void MapVector(double x, double y, double* outX, double* outY) const;

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    Transform2DLinear() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double a_ = 1, b_ = 0, c_ = 0, d_ = 1, tx_ = 0, ty_ = 0;

    RTTR_ENABLE(ChangedEventShareableBase, ITransform2D)
};

using Transform2DLinearPtr = std::shared_ptr<Transform2DLinear>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Transform2DLinear, 1)
