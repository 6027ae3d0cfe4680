#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "Vision/Core/Archive.h"
#include "Vision/Core/ImagePixelMemory.h"
#include "Vision/UtilityPxl/PelBuffer.h"

namespace Tavrin::Vision {

class Image8Root;
class Image16Root;
class IImage8GreyData;
class IImage16GreyData;
class Image8Grey;
class Image16Grey;

namespace Implementation {

// The classes that belong to one pel type.
template <class Pel> struct PelTraits;

template <> struct PelTraits<unsigned char> {
    using RootBuffer = IImage8RootBuffer;
    using PixelMemory = IImage8PixelMemory;
    using Root = Image8Root;
    using GreyData = IImage8GreyData;
    using GreyImage = Image8Grey;
};

template <> struct PelTraits<unsigned short> {
    using RootBuffer = IImage16RootBuffer;
    using PixelMemory = IImage16PixelMemory;
    using Root = Image16Root;
    using GreyData = IImage16GreyData;
    using GreyImage = Image16Grey;
};

// The pixel buffer of one plane, shared by every image made over it.
template <class Pel>
class ImageRootBase : public virtual ShareableBase, public PelTraits<Pel>::RootBuffer {
public:
    using PixelMemory = typename PelTraits<Pel>::PixelMemory;

    // Pels set to 0; each row starts on a multiple of alignment bytes, so 1 packs the rows.
    // A negative size or an alignment below 1 throws ArgumentException.
    ImageRootBase(ObjectCreateAccessToken const&, int width, int height, int alignment);
    // A packed copy of the source's pels.
    ImageRootBase(ObjectCreateAccessToken const&, tvPelBuffer_const<Pel> const& source);
    // Takes the pels over in place; the caller hands in its last handle on them.
    ImageRootBase(ObjectCreateAccessToken const&, tvPelBuffer<Pel>&& pels);

    Pel* FirstPel() const override { return pels_.pointToOffset(); }
    int Step() const override { return pels_.rowUpdate() * static_cast<int>(sizeof(Pel)); }
    int Width() const override { return pels_.width(); }
    int Height() const override { return pels_.height(); }

    Pel* Row(int y) const {
        return FirstPel() + static_cast<std::ptrdiff_t>(y) * pels_.rowUpdate();
    }
    tvPelBuffer_const<Pel> Pels() const { return pels_; }

    // The window from (x, y) of the given size, in place; the memory object holds the release
    // notice until it goes. A window outside the buffer throws ArgumentException.
    std::shared_ptr<PixelMemory> Memory(int x, int y, int width, int height,
                                        std::shared_ptr<void> releaseNotice) const;

private:
    tvPelBuffer<Pel> pels_;

    RTTR_ENABLE(ShareableBase, typename PelTraits<Pel>::RootBuffer)
};

// Archives a root's size and its pels row by row, without the row padding; a loaded root
// has packed rows, made only once the archive is seen to hold them all.
template <class Archive, class Root>
void SerializeRoot(Archive& archive, std::shared_ptr<Root>& root) {
    int width = root->Width();
    int height = root->Height();
    archive(width, height);
    if constexpr (Archive::is_loading::value) {
        if (width >= 0 && height >= 0)
            RequireArchivedElements(archive,
                                    static_cast<std::uint64_t>(width) *
                                        static_cast<std::uint64_t>(height),
                                    sizeof(*root->FirstPel()));
        root = Brnt::CreateObject<Root>(width, height, 1);
    }
    for (int y = 0; y < height; ++y)
        archive(cereal::binary_data(root->Row(y), sizeof(*root->FirstPel()) * width));
}

} // namespace Implementation

class Image8Root final : public Implementation::ImageRootBase<unsigned char> {
public:
    using ImageRootBase::ImageRootBase;

    RTTR_ENABLE(ImageRootBase)
};

class Image16Root final : public Implementation::ImageRootBase<unsigned short> {
public:
    using ImageRootBase::ImageRootBase;

    RTTR_ENABLE(ImageRootBase)
};

using Image8RootPtr = std::shared_ptr<Image8Root>;
using Image16RootPtr = std::shared_ptr<Image16Root>;

} // namespace Tavrin::Vision
