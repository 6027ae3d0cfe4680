#pragma once

#include <memory>

#include "Vision/Core/GreyImage.h"

namespace Tavrin::Vision {

class Image16Grey final : public Implementation::GreyImage<unsigned short> {
public:
    // An image of no pixels.
    explicit Image16Grey(ObjectCreateAccessToken const& token);
    // Pixels set to 0; each row starts on a multiple of alignment bytes, so 1 packs the rows.
    Image16Grey(ObjectCreateAccessToken const& token, int width, int height, int alignment = 1);
    // An image over the root's pixels, in place.
    Image16Grey(ObjectCreateAccessToken const&, std::shared_ptr<Image16Root> root);

    TAVRIN_SHARED_FROM_THIS(Image16Grey)

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    Image16Grey();

    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    RTTR_ENABLE(GreyImage)
};

using Image16GreyPtr = std::shared_ptr<Image16Grey>;

} // namespace Tavrin::Vision

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Image16Grey, 1)
