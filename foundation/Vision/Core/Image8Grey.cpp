#include "Vision/Core/Image8Grey.h"

#include "Vision/Core/Registration.h"

namespace Tavrin::Vision {

Image8Grey::Image8Grey(ObjectCreateAccessToken const& token)
    : Image8Grey(token, 0, 0) {}

Image8Grey::Image8Grey(ObjectCreateAccessToken const&, int width, int height, int alignment)
    : GreyImage(Brnt::CreateObject<Image8Root>(width, height, alignment)) {}

Image8Grey::Image8Grey(ObjectCreateAccessToken const&, std::shared_ptr<Image8Root> root)
    : GreyImage(std::move(root)) {}

Image8Grey::Image8Grey()
    : GreyImage(Brnt::CreateObject<Image8Root>(0, 0, 1)) {}

template <class Archive> void Image8Grey::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Image8Grey::serialize()");
    archive(cereal::base_class<Implementation::ImageBase>(this));
    SerializePixels(archive);
}

TAVRIN_INSTANTIATE_SERIALIZE(Image8Grey)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Image8Grey, "Tavrin::Vision::Image8Grey")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IImage, Tavrin::Vision::Image8Grey)

// The size and space properties come from IImage.
TAVRIN_REGISTRATION(Image8Grey) {
    rttr::registration::class_<Tavrin::Vision::Image8Grey>("Tavrin::Vision::Image8Grey");
}
