#include "Vision/Core/VariantCollection.h"

#include "Vision/Core/CollectionReflection.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

VariantCollection::VariantCollection(ObjectCreateAccessToken const& token,
                                     std::vector<rttr::variant> items)
    : CollectionBase(token, std::move(items)) {}

template <class Archive> void VariantCollection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "VariantCollection::serialize()");
    archive(cereal::base_class<CollectionBase<rttr::variant>>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(VariantCollection)

} // namespace Tavrin::Vision

TAVRIN_REGISTER_COLLECTION_BASE(rttr::variant,
                                "Tavrin::Vision::Implementation::CollectionBase<rttr::variant>")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::VariantCollection,
                               "Tavrin::Vision::VariantCollection")

TAVRIN_REGISTRATION(VariantCollection) {
    using namespace Tavrin::Vision;
    Implementation::RegisterCollectionReflection<Implementation::CollectionBase<rttr::variant>>(
        "Tavrin::Vision::Implementation::CollectionBase<rttr::variant>");
    rttr::registration::class_<VariantCollection>("Tavrin::Vision::VariantCollection");
    Internal::VariantSerialization::CustomVariantArchivers::Register<VariantCollectionPtr>();
}
