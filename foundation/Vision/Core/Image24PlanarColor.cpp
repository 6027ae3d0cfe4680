#include "Vision/Core/Image24PlanarColor.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

namespace {

std::shared_ptr<Image8Root> BlankPlane(int width, int height, int alignment) {
    return Brnt::CreateObject<Image8Root>(width, height, alignment);
}

} // namespace

Image24PlanarColor::Image24PlanarColor(ObjectCreateAccessToken const& token)
    : Image24PlanarColor(token, 0, 0) {}

Image24PlanarColor::Image24PlanarColor(ObjectCreateAccessToken const& token, int width, int height,
                                       int alignment)
    : Image24PlanarColor(token, BlankPlane(width, height, alignment),
                         BlankPlane(width, height, alignment),
                         BlankPlane(width, height, alignment)) {}

Image24PlanarColor::Image24PlanarColor(ObjectCreateAccessToken const&,
                                       std::shared_ptr<Image8Root> plane0,
                                       std::shared_ptr<Image8Root> plane1,
                                       std::shared_ptr<Image8Root> plane2)
    : planes_(CheckedPlanes({std::move(plane0), std::move(plane1), std::move(plane2)})) {}

Image24PlanarColor::Image24PlanarColor()
    : planes_{BlankPlane(0, 0, 1), BlankPlane(0, 0, 1), BlankPlane(0, 0, 1)} {}

Image24PlanarColor::Planes Image24PlanarColor::CheckedPlanes(Planes planes) {
    for (auto const& plane : planes)
        if (!plane)
            throw ArgumentException("A planar colour image needs three planes.");
    for (auto const& plane : planes)
        if (plane->Width() != planes[0]->Width() || plane->Height() != planes[0]->Height())
            throw ArgumentException("The planes of a colour image must have the same size.");
    return planes;
}

void Image24PlanarColor::Get3PlanePixelMemory(ImageDataModeConstants mode, int x, int y, int width,
                                              int height,
                                              std::shared_ptr<IImage8PixelMemory>& plane0,
                                              std::shared_ptr<IImage8PixelMemory>& plane1,
                                              std::shared_ptr<IImage8PixelMemory>& plane2) const {
    // One notice for the three planes: it goes with the last of them.
    auto notice = PixelWriteNotice(mode);
    auto memory0 = planes_[0]->Memory(x, y, width, height, notice);
    auto memory1 = planes_[1]->Memory(x, y, width, height, notice);
    auto memory2 = planes_[2]->Memory(x, y, width, height, notice);
    plane0 = std::move(memory0);
    plane1 = std::move(memory1);
    plane2 = std::move(memory2);
}

std::shared_ptr<IImage> Image24PlanarColor::Copy(bool shareMemory) const {
    Planes planes = planes_;
    if (!shareMemory)
        for (auto& plane : planes)
            plane = Brnt::CreateObject<Image8Root>(plane->Pels());
    auto copy = Brnt::CreateObject<Image24PlanarColor>(planes[0], planes[1], planes[2]);
    Implementation::CopySpaces(*this, *copy);
    return copy;
}

template <class Archive>
void Image24PlanarColor::serialize(Archive& archive, unsigned int version) {
    Implementation::CheckLoadedVersion<Archive>(version, 1, "Image24PlanarColor::serialize()");
    archive(cereal::base_class<Implementation::ImageBase>(this));
    for (auto& plane : planes_)
        Implementation::SerializeRoot(archive, plane);
    if constexpr (Archive::is_loading::value)
        planes_ = CheckedPlanes(planes_);
}

TAVRIN_INSTANTIATE_SERIALIZE(Image24PlanarColor)

} // namespace Tavrin::Vision

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::Image24PlanarColor,
                               "Tavrin::Vision::Image24PlanarColor")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IImage, Tavrin::Vision::Image24PlanarColor)

// The size and space properties come from IImage.
TAVRIN_REGISTRATION(Image24PlanarColor) {
    rttr::registration::class_<Tavrin::Vision::Image24PlanarColor>(
        "Tavrin::Vision::Image24PlanarColor");
}
