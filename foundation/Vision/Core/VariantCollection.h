#pragma once

#include <vector>

#include <rttr/variant.h>

#include "Vision/Core/CollectionBase.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

// Variants travel with their types through the foundation's variant archivers.
class VariantCollection : public Implementation::CollectionBase<rttr::variant> {
public:
    explicit VariantCollection(ObjectCreateAccessToken const&) {}
    VariantCollection(ObjectCreateAccessToken const&, std::vector<rttr::variant> items);

    TAVRIN_SHARED_FROM_THIS(VariantCollection)

private:
    VariantCollection() = default;

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(Implementation::CollectionBase<rttr::variant>)
};

using VariantCollectionPtr = std::shared_ptr<VariantCollection>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::VariantCollection, 1)
