#pragma once

#include <memory>
#include <vector>

#include "Vision/Core/Archive.h"
#include "Vision/Core/CollectionBase.h"

namespace Tavrin::Vision {

// An immutable point or vector, shared freely between owners.
class Vect2 : public virtual ShareableBase {
public:
    Vect2(ObjectCreateAccessToken const&, double x, double y)
        : x_(x)
        , y_(y) {}

    TAVRIN_SHARED_FROM_THIS(Vect2)

    double X() const { return x_; }
    double Y() const { return y_; }

private:
    Vect2() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double x_ = 0;
    double y_ = 0;

    RTTR_ENABLE(ShareableBase)
};

using Vect2Ptr = std::shared_ptr<Vect2>;

// Compares the values, not the objects; two null pointers are equal, a null and a point not.
bool operator==(Vect2Ptr const& left, Vect2Ptr const& right);
bool operator!=(Vect2Ptr const& left, Vect2Ptr const& right);

class Vect2Collection : public Implementation::CollectionBase<Vect2Ptr> {
public:
    explicit Vect2Collection(ObjectCreateAccessToken const& token)
        : CollectionBase(token) {}
    Vect2Collection(ObjectCreateAccessToken const& token, std::vector<Vect2Ptr> items)
        : CollectionBase(token, std::move(items)) {}

    TAVRIN_SHARED_FROM_THIS(Vect2Collection)

private:
    Vect2Collection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(CollectionBase<Vect2Ptr>)
};

using Vect2CollectionPtr = std::shared_ptr<Vect2Collection>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Vect2, 1)
TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Vect2Collection, 1)
