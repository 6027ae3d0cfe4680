#include "Vision/Core/ImageRoot.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/UtilityPxl/PxlUtils.h"

namespace Tavrin::Vision::Implementation {

namespace {

// A window lent from a root; holding the root keeps the pels alive, and the release notice
// goes with the last holder of it.
template <class Pel>
class LentPixelMemory final : public virtual ShareableBase, public PelTraits<Pel>::PixelMemory {
public:
    LentPixelMemory(ObjectCreateAccessToken const&, std::shared_ptr<ImageRootBase<Pel> const> root,
                    Pel* firstPel, int width, int height, std::shared_ptr<void> releaseNotice)
        : root_(std::move(root))
        , firstPel_(firstPel)
        , width_(width)
        , height_(height)
        , releaseNotice_(std::move(releaseNotice)) {}

    Pel* FirstPel() const override { return firstPel_; }
    int Step() const override { return root_->Step(); }
    int Width() const override { return width_; }
    int Height() const override { return height_; }

private:
    std::shared_ptr<ImageRootBase<Pel> const> root_;
    Pel* firstPel_;
    int width_;
    int height_;
    std::shared_ptr<void> releaseNotice_;

    RTTR_ENABLE(ShareableBase, typename PelTraits<Pel>::PixelMemory)
};

template <class Pel> tvPelBuffer<Pel> MakePels(int width, int height, int alignment) {
    try {
        return tvPelBuffer<Pel>(width, height, alignment);
    } catch (tvException& failure) {
        UtilityPxl::detail::PxlUtils::MapPxlException::MapPxlExceptionAndThrow(failure);
    }
}

} // namespace

template <class Pel>
ImageRootBase<Pel>::ImageRootBase(ObjectCreateAccessToken const&, int width, int height,
                                  int alignment)
    : pels_(MakePels<Pel>(width, height, alignment)) {}

template <class Pel>
ImageRootBase<Pel>::ImageRootBase(ObjectCreateAccessToken const&,
                                  tvPelBuffer_const<Pel> const& source)
    : pels_(tvPackedCopy(source)) {}

template <class Pel>
ImageRootBase<Pel>::ImageRootBase(ObjectCreateAccessToken const&, tvPelBuffer<Pel>&& pels)
    : pels_(std::move(pels)) {}

template <class Pel>
std::shared_ptr<typename ImageRootBase<Pel>::PixelMemory>
ImageRootBase<Pel>::Memory(int x, int y, int width, int height,
                           std::shared_ptr<void> releaseNotice) const {
    if (x < 0 || y < 0 || width < 0 || height < 0 || x > Width() - width || y > Height() - height)
        throw ArgumentException("The pixel memory window lies outside the image.");
    return Brnt::CreateObject<LentPixelMemory<Pel>>(SharedFromThisAs<ImageRootBase<Pel>>(),
                                                    Row(y) + x, width, height,
                                                    std::move(releaseNotice));
}

template class ImageRootBase<unsigned char>;
template class ImageRootBase<unsigned short>;

} // namespace Tavrin::Vision::Implementation
