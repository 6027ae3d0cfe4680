#pragma once

#include <array>
#include <memory>

#include "Vision/Core/ImageBase.h"
#include "Vision/Core/ImageData.h"
#include "Vision/Core/ImageRoot.h"

namespace Tavrin::Vision {

// A colour image in three 8-bit planes of one size.
class Image24PlanarColor final : public Implementation::ImageBase, public IImage24PlanarColorData {
public:
    // An image of no pixels.
    explicit Image24PlanarColor(ObjectCreateAccessToken const& token);
    // Pixels set to 0; each row starts on a multiple of alignment bytes, so 1 packs the rows.
    Image24PlanarColor(ObjectCreateAccessToken const& token, int width, int height,
                       int alignment = 1);
    // An image over the planes' pixels, in place. Null planes or planes of different sizes
    // throw ArgumentException.
    Image24PlanarColor(ObjectCreateAccessToken const&, std::shared_ptr<Image8Root> plane0,
                       std::shared_ptr<Image8Root> plane1, std::shared_ptr<Image8Root> plane2);

    TAVRIN_SHARED_FROM_THIS(Image24PlanarColor)

    int Width() const override { return planes_[0]->Width(); }
    int Height() const override { return planes_[0]->Height(); }

    void Get3PlanePixelMemory(ImageDataModeConstants mode, int x, int y, int width, int height,
                              std::shared_ptr<IImage8PixelMemory>& plane0,
                              std::shared_ptr<IImage8PixelMemory>& plane1,
                              std::shared_ptr<IImage8PixelMemory>& plane2) const override;

    std::shared_ptr<IImage> Copy(bool shareMemory) const override;

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    Image24PlanarColor();

    using Planes = std::array<std::shared_ptr<Image8Root>, 3>;
    static Planes CheckedPlanes(Planes planes);

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    Planes planes_;

    RTTR_ENABLE(ImageBase, IImage24PlanarColorData)
};

using Image24PlanarColorPtr = std::shared_ptr<Image24PlanarColor>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Image24PlanarColor, 1)
