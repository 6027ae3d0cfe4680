#pragma once

#include "Vision/Core/Object.h"

namespace Tavrin::Vision {

namespace Implementation {

// A block of pels in place: where the first one is and how far apart the rows lie.
template <class Pel> class IPelBlock : public virtual Brnt::IObject {
public:
    virtual Pel* FirstPel() const = 0;
    // Bytes from the start of one row to the start of the next.
    virtual int Step() const = 0;
    virtual int Width() const = 0;
    virtual int Height() const = 0;

    RTTR_ENABLE(IObject)
};

} // namespace Implementation

// A window of an image's pixels, lent without a copy; the pixels stay valid while it lives.
class IImage8PixelMemory : public Implementation::IPelBlock<unsigned char> {
    RTTR_ENABLE(IPelBlock)
};

class IImage16PixelMemory : public Implementation::IPelBlock<unsigned short> {
    RTTR_ENABLE(IPelBlock)
};

// The whole pixel buffer that images share.
class IImage8RootBuffer : public Implementation::IPelBlock<unsigned char> {
    RTTR_ENABLE(IPelBlock)
};

class IImage16RootBuffer : public Implementation::IPelBlock<unsigned short> {
    RTTR_ENABLE(IPelBlock)
};

} // namespace Tavrin::Vision
