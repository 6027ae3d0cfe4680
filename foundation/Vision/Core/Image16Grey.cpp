#include "Vision/Core/Image16Grey.h"

#include "Vision/Core/Registration.h"

namespace Tavrin::Vision {

Image16Grey::Image16Grey(ObjectCreateAccessToken const& token)
    : Image16Grey(token, 0, 0) {}

Image16Grey::Image16Grey(ObjectCreateAccessToken const&, int width, int height, int alignment)
    : GreyImage(Brnt::CreateObject<Image16Root>(width, height, alignment)) {}

Image16Grey::Image16Grey(ObjectCreateAccessToken const&, std::shared_ptr<Image16Root> root)
    : GreyImage(std::move(root)) {}

Image16Grey::Image16Grey()
    : GreyImage(Brnt::CreateObject<Image16Root>(0, 0, 1)) {}

template <class Archive> void Image16Grey::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Image16Grey::serialize()");
    archive(cereal::base_class<Implementation::ImageBase>(this));
    SerializePixels(archive);
}

TAVRIN_INSTANTIATE_SERIALIZE(Image16Grey)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Image16Grey, "Tavrin::Vision::Image16Grey")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IImage, Tavrin::Vision::Image16Grey)

// The size and space properties come from IImage.
TAVRIN_REGISTRATION(Image16Grey) {
    rttr::registration::class_<Tavrin::Vision::Image16Grey>("Tavrin::Vision::Image16Grey");
}
