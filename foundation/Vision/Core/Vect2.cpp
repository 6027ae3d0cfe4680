#include "Vision/Core/Vect2.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/CollectionReflection.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision {

bool operator==(Vect2Ptr const& left, Vect2Ptr const& right) {
    if (!left || !right)
        return !left && !right;
    return left->X() == right->X() && left->Y() == right->Y();
}

bool operator!=(Vect2Ptr const& left, Vect2Ptr const& right) {
    return !(left == right);
}

template <class Archive> void Vect2::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Vect2::serialize()");
    archive(cereal::virtual_base_class<ShareableBase>(this), x_, y_);
}

template <class Archive> void Vect2Collection::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Vect2Collection::serialize()");
    archive(cereal::base_class<CollectionBase<Vect2Ptr>>(this));
}

TAVRIN_INSTANTIATE_SERIALIZE(Vect2)
TAVRIN_INSTANTIATE_SERIALIZE(Vect2Collection)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Vect2, "Tavrin::Vision::Vect2")
TAVRIN_REGISTER_COLLECTION_BASE(
    Tavrin::Vision::Vect2Ptr,
    "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::Vect2Ptr>")
CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Vect2Collection, "Tavrin::Vision::Vect2Collection")

TAVRIN_REGISTRATION(Vect2) {
    using namespace Tavrin::Vision;
    rttr::registration::class_<Vect2>("Tavrin::Vision::Vect2")
        .property_readonly("X", &Vect2::X)
        .property_readonly("Y", &Vect2::Y);
    Implementation::RegisterCollectionReflection<Implementation::CollectionBase<Vect2Ptr>>(
        "Tavrin::Vision::Implementation::CollectionBase<Tavrin::Vision::Vect2Ptr>");
    rttr::registration::class_<Vect2Collection>("Tavrin::Vision::Vect2Collection");
    Internal::VariantSerialization::CustomVariantArchivers::Register<Vect2Ptr>();
    Internal::VariantSerialization::CustomVariantArchivers::Register<Vect2CollectionPtr>();
}
