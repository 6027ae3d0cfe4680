#pragma once

#include <memory>
#include <string>

#include "Vision/Core/ChangedEvent.h"
#include "Vision/Core/CoordinateSpaceTree.h"
#include "Vision/Core/Transform2D.h"

namespace Tavrin::Vision {

// How a caller means to use the pixel memory it requests.
enum ImageDataModeConstants : int {
    ImageDataModeConstants_Read = 1,
    ImageDataModeConstants_Write = 2,
    ImageDataModeConstants_ReadWrite = 3,
};

class IImage : public virtual IChangedEvent {
public:
    virtual int Width() const = 0;
    virtual int Height() const = 0;

    // The space in which a host reads coordinates of this image; the root "#" at first.
    virtual std::string const& SelectedSpaceName() const = 0;
    virtual void setSelectedSpaceName(std::string const& name) = 0;

    // The map from coordinates of fromSpace into toSpace; unknown names throw
    // ArgumentException.
    virtual std::shared_ptr<ITransform2D> GetTransform(std::string const& toSpace,
                                                       std::string const& fromSpace) const = 0;

    // Never null. Setting a null tree throws ArgumentException.
    virtual CoordinateSpaceTreePtr CoordinateSpaceTree() const = 0;
    virtual void setCoordinateSpaceTree(CoordinateSpaceTreePtr tree) = 0;

    // A new image with the same pixels, space name and a copy of the space tree. With
    // shareMemory the two images use one pixel memory; without, the pixels are copied.
    virtual std::shared_ptr<IImage> Copy(bool shareMemory) const = 0;

    RTTR_ENABLE(IChangedEvent)
};

using IImagePtr = std::shared_ptr<IImage>;

} // namespace Tavrin::Vision
