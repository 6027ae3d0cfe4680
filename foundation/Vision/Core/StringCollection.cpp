#include "Vision/Core/StringCollection.h"

#include "Vision/Core/CollectionReflection.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

StringCollection::StringCollection(ObjectCreateAccessToken const& token,
                                   std::vector<std::string> items)
    : CollectionBase(token, std::move(items)) {}

template <class Archive> void StringCollection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "StringCollection::serialize()");
    archive(cereal::base_class<CollectionBase<std::string>>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(StringCollection)

} // namespace Tavrin::Vision

TAVRIN_REGISTER_COLLECTION_BASE(std::string,
                                "Tavrin::Vision::Implementation::CollectionBase<std::string>")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::StringCollection, "Tavrin::Vision::StringCollection")

TAVRIN_REGISTRATION(StringCollection) {
    using namespace Tavrin::Vision;
    Implementation::RegisterCollectionReflection<Implementation::CollectionBase<std::string>>(
        "Tavrin::Vision::Implementation::CollectionBase<std::string>");
    rttr::registration::class_<StringCollection>("Tavrin::Vision::StringCollection");
    Internal::VariantSerialization::CustomVariantArchivers::Register<StringCollectionPtr>();
}
