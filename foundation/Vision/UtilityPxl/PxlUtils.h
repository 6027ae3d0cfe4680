#pragma once

#include <memory>
#include <string>

#include "Vision/UtilityPxl/PelBuffer.h"

namespace Tavrin::Vision {
class IImage;
class Image8Grey;
class Image16Grey;
class Image24PlanarColor;
} // namespace Tavrin::Vision

// Wrapping of pel buffers into images. Each image gets its own copy of the pels, so the
// buffer may go at once. With a source image, the new image takes its selected space name and
// a copy of its space tree; a null source leaves the image in its root space alone.
namespace Tavrin::Vision::UtilityPxl::detail::PxlUtils {

std::shared_ptr<Image8Grey> MakeImage8Grey(tvPelBuffer_const<unsigned char> const& pels,
                                           IImage const* spacesFrom);
std::shared_ptr<Image16Grey> MakeImage16Grey(tvPelBuffer_const<unsigned short> const& pels,
                                             IImage const* spacesFrom);
std::shared_ptr<Image24PlanarColor> MakeImage24PlanarColor(tv3PlanePelBuffer_const const& pels,
                                                           IImage const* spacesFrom);

// The same, taking over the pels of a buffer that nobody else holds, without a copy.
std::shared_ptr<Image8Grey> MakeImage8Grey(tvPelBuffer<unsigned char>&& pels,
                                           IImage const* spacesFrom);
std::shared_ptr<Image16Grey> MakeImage16Grey(tvPelBuffer<unsigned short>&& pels,
                                             IImage const* spacesFrom);
std::shared_ptr<Image24PlanarColor> MakeImage24PlanarColor(tv3PlanePelBuffer&& pels,
                                                           IImage const* spacesFrom);

std::string StringFromPxlString(std::wstring const& text);

class MapPxlException {
public:
    // Throws the VisionException that fits the failure: ArgumentException for a bad argument,
    // InternalErrorException with the code NotInvertible for a singular transform.
    [[noreturn]] static void MapPxlExceptionAndThrow(tvException& failure);
};

} // namespace Tavrin::Vision::UtilityPxl::detail::PxlUtils
