#include "Vision/Core/GraphicCollection.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/CollectionReflection.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

template <class Archive> void GraphicCollection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "GraphicCollection::serialize()");
    archive(cereal::base_class<CollectionBase<IGraphicPtr>>(this));
}

template <class Archive>
void GraphicParentChildCollection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                "GraphicParentChildCollection::serialize()");
    archive(cereal::base_class<CollectionBase<IGraphicParentChildPtr>>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(GraphicCollection)
TAVRIN_INSTANTIATE_SERIALIZE(GraphicParentChildCollection)

} // namespace Tavrin::Vision

TAVRIN_REGISTER_COLLECTION_BASE(
    Tavrin::Vision::IGraphicPtr,
    "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::IGraphicPtr>")
TAVRIN_REGISTER_COLLECTION_BASE(
    Tavrin::Vision::IGraphicParentChildPtr,
    "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::IGraphicParentChildPtr>")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::GraphicCollection,
                               "Tavrin::Vision::GraphicCollection")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::GraphicParentChildCollection,
                               "Tavrin::Vision::GraphicParentChildCollection")

TAVRIN_REGISTRATION(GraphicCollection) {
    using namespace Tavrin::Vision;
    using Implementation::CollectionBase;
    Implementation::RegisterCollectionReflection<CollectionBase<IGraphicPtr>>(
        "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::IGraphicPtr>");
    Implementation::RegisterCollectionReflection<CollectionBase<IGraphicParentChildPtr>>(
        "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::IGraphicParentChildPtr>");
    rttr::registration::class_<GraphicCollection>("Tavrin::Vision::GraphicCollection");
    rttr::registration::class_<GraphicParentChildCollection>(
        "Tavrin::Vision::GraphicParentChildCollection");
    Internal::VariantSerialization::CustomVariantArchivers::Register<IGraphicPtr>();
    Internal::VariantSerialization::CustomVariantArchivers::Register<GraphicCollectionPtr>();
    Internal::VariantSerialization::CustomVariantArchivers::Register<
        GraphicParentChildCollectionPtr>();
}
