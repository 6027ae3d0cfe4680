#include "Vision/Core/ImageBase.h"

#include "Vision/Core/Registration.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/VariantArchive.h"

namespace Tavrin::Vision::Implementation {

ImageBase::ImageBase()
    : tree_(Brnt::CreateObject<Vision::CoordinateSpaceTree>()) {}

void ImageBase::setSelectedSpaceName(std::string const& name) {
    if (name == selectedSpaceName_)
        return;
    selectedSpaceName_ = name;
    OnChanged_(SfSelectedSpaceName);
}

std::shared_ptr<ITransform2D> ImageBase::GetTransform(std::string const& toSpace,
                                                      std::string const& fromSpace) const {
    return tree_->GetTransform(toSpace, fromSpace);
}

void ImageBase::setCoordinateSpaceTree(CoordinateSpaceTreePtr tree) {
    if (!tree)
        throw ArgumentException("The coordinate space tree cannot be null.");
    if (tree == tree_)
        return;
    tree_ = std::move(tree);
    OnChanged_(SfCoordinateSpaceTree);
}

std::shared_ptr<void> ImageBase::PixelWriteNotice(ImageDataModeConstants mode) const {
    switch (mode) {
    case ImageDataModeConstants_Read:
        return nullptr;
    case ImageDataModeConstants_Write:
    case ImageDataModeConstants_ReadWrite:
        return std::shared_ptr<void>(nullptr, [weakSelf = weak_from_this()](void*) {
            try {
                if (auto self = std::dynamic_pointer_cast<ImageBase const>(weakSelf.lock()))
                    std::const_pointer_cast<ImageBase>(self)->OnChanged_(SfPixels);
            } catch (...) {
                // It runs as the memory object is destroyed: an observer's failure stops here.
            }
        });
    }
    throw ArgumentException("The image data mode is not valid.");
}

template <class Archive> void ImageBase::serialize(Archive& archive, unsigned int version) {
    CheckLoadedVersion<Archive>(version, 1, "ImageBase::serialize()");
    archive(cereal::virtual_base_class<ChangedEventShareableBase>(this), selectedSpaceName_, tree_);
}

TAVRIN_INSTANTIATE_SERIALIZE(ImageBase)

void CopySpaces(IImage const& from, IImage& to) {
    to.setSelectedSpaceName(from.SelectedSpaceName());
    to.setCoordinateSpaceTree(from.CoordinateSpaceTree()->Copy());
}

} // namespace Tavrin::Vision::Implementation

TAVRIN_REGISTRATION(ImageBase) {
    using Tavrin::Vision::IImage;
    rttr::registration::class_<IImage>("Tavrin::Vision::IImage")
        .property_readonly("Width", &IImage::Width)
        .property_readonly("Height", &IImage::Height)
        .property("SelectedSpaceName", &IImage::SelectedSpaceName, &IImage::setSelectedSpaceName);
    // Records carry images as variants of the interface pointer.
    Tavrin::Vision::Internal::VariantSerialization::CustomVariantArchivers::Register<
        std::shared_ptr<IImage>>();
}
