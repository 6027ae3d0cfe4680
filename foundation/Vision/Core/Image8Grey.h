#pragma once

#include <memory>

#include "Vision/Core/GreyImage.h"

namespace Tavrin::Vision {

class Image8Grey final : public Implementation::GreyImage<unsigned char> {
public:
    // An image of no pixels.
    explicit Image8Grey(ObjectCreateAccessToken const& token);
    // Pixels set to 0; each row starts on a multiple of alignment bytes, so 1 packs the rows.
    Image8Grey(ObjectCreateAccessToken const& token, int width, int height, int alignment = 1);
    // An image over the root's pixels, in place.
    Image8Grey(ObjectCreateAccessToken const&, std::shared_ptr<Image8Root> root);

    TAVRIN_SHARED_FROM_THIS(Image8Grey)

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    Image8Grey();

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(GreyImage)
};

using Image8GreyPtr = std::shared_ptr<Image8Grey>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Image8Grey, 1)
