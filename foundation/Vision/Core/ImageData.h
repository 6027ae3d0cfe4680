#pragma once

#include <memory>

#include "Vision/Core/Image.h"
#include "Vision/Core/ImagePixelMemory.h"

namespace Tavrin::Vision {

namespace Implementation {

template <class PixelMemory> class IGreyImageData : public virtual Brnt::IObject {
public:
    // The window from (x, y) of the given size, lent in place: no pixel is copied. A window
    // outside the image or an unknown mode throws ArgumentException.
    virtual std::shared_ptr<PixelMemory> GetPixelMemory(ImageDataModeConstants mode, int x, int y,
                                                        int width, int height) const = 0;

    RTTR_ENABLE(IObject)
};

} // namespace Implementation

class IImage8GreyData : public Implementation::IGreyImageData<IImage8PixelMemory> {
    RTTR_ENABLE(IGreyImageData)
};

class IImage16GreyData : public Implementation::IGreyImageData<IImage16PixelMemory> {
    RTTR_ENABLE(IGreyImageData)
};

class IImage24PlanarColorData : public virtual Brnt::IObject {
public:
    // The same window of the three planes, in plane order, lent in place.
    virtual void Get3PlanePixelMemory(ImageDataModeConstants mode, int x, int y, int width,
                                      int height, std::shared_ptr<IImage8PixelMemory>& plane0,
                                      std::shared_ptr<IImage8PixelMemory>& plane1,
                                      std::shared_ptr<IImage8PixelMemory>& plane2) const = 0;

    RTTR_ENABLE(IObject)
};

} // namespace Tavrin::Vision
