#include "Vision/UtilityPxl/PxlUtils.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Image16Grey.h"
#include "Vision/Core/Image24PlanarColor.h"
#include "Vision/Core/Image8Grey.h"
#include "Vision/Core/Platform.h"

namespace Tavrin::Vision::UtilityPxl::detail::PxlUtils {

namespace {

template <class Image>
std::shared_ptr<Image> WithSpacesOf(std::shared_ptr<Image> image, IImage const* spacesFrom) {
    if (spacesFrom)
        Implementation::CopySpaces(*spacesFrom, *image);
    return image;
}

// Pels given as a const view are copied; pels handed over as the last handle are taken in place.
template <class Image, class Root, class Pels>
std::shared_ptr<Image> MakeGreyImage(Pels&& pels, IImage const* spacesFrom) {
    return WithSpacesOf(
        Brnt::CreateObject<Image>(Brnt::CreateObject<Root>(std::forward<Pels>(pels))), spacesFrom);
}

std::shared_ptr<Image8Root> PlaneCopy(tv3PlanePelBuffer_const const& pels, int index) {
    return Brnt::CreateObject<Image8Root>(pels.plane(index));
}

std::shared_ptr<Image8Root> PlaneTaken(tv3PlanePelBuffer const& pels, int index) {
    return Brnt::CreateObject<Image8Root>(pels.plane(index));
}

} // namespace

std::shared_ptr<Image8Grey> MakeImage8Grey(tvPelBuffer_const<unsigned char> const& pels,
                                           IImage const* spacesFrom) {
    return MakeGreyImage<Image8Grey, Image8Root>(pels, spacesFrom);
}

std::shared_ptr<Image16Grey> MakeImage16Grey(tvPelBuffer_const<unsigned short> const& pels,
                                             IImage const* spacesFrom) {
    return MakeGreyImage<Image16Grey, Image16Root>(pels, spacesFrom);
}

std::shared_ptr<Image24PlanarColor> MakeImage24PlanarColor(tv3PlanePelBuffer_const const& pels,
                                                           IImage const* spacesFrom) {
    return WithSpacesOf(Brnt::CreateObject<Image24PlanarColor>(
                            PlaneCopy(pels, 0), PlaneCopy(pels, 1), PlaneCopy(pels, 2)),
                        spacesFrom);
}

std::shared_ptr<Image8Grey> MakeImage8Grey(tvPelBuffer<unsigned char>&& pels,
                                           IImage const* spacesFrom) {
    return MakeGreyImage<Image8Grey, Image8Root>(std::move(pels), spacesFrom);
}

std::shared_ptr<Image16Grey> MakeImage16Grey(tvPelBuffer<unsigned short>&& pels,
                                             IImage const* spacesFrom) {
    return MakeGreyImage<Image16Grey, Image16Root>(std::move(pels), spacesFrom);
}

std::shared_ptr<Image24PlanarColor> MakeImage24PlanarColor(tv3PlanePelBuffer&& pels,
                                                           IImage const* spacesFrom) {
    return WithSpacesOf(Brnt::CreateObject<Image24PlanarColor>(
                            PlaneTaken(pels, 0), PlaneTaken(pels, 1), PlaneTaken(pels, 2)),
                        spacesFrom);
}

std::string StringFromPxlString(std::wstring const& text) {
    return Private::NarrowText(text);
}

void MapPxlException::MapPxlExceptionAndThrow(tvException& failure) {
    std::string const message = StringFromPxlString(failure.message());
    switch (failure.kind()) {
    case tvException::Kind::badArgument:
        throw ArgumentException(message);
    case tvException::Kind::singular:
        throw InternalErrorException(message, VisionExceptionCodes_NotInvertible);
    }
    throw InternalErrorException(message, VisionExceptionCodes_InternalError);
}

} // namespace Tavrin::Vision::UtilityPxl::detail::PxlUtils
