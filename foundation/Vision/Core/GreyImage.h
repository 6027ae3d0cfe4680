#pragma once

#include <memory>

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/ImageBase.h"
#include "Vision/Core/ImageData.h"
#include "Vision/Core/ImageRoot.h"

namespace Tavrin::Vision::Implementation {

// A one-plane image over a shared root. The concrete class comes from the traits rather than
// a template argument, since reflection resolves template arguments as it resolves bases.
template <class Pel> class GreyImage : public ImageBase, public PelTraits<Pel>::GreyData {
public:
    using Root = typename PelTraits<Pel>::Root;
    using PixelMemory = typename PelTraits<Pel>::PixelMemory;

    int Width() const override { return root_->Width(); }
    int Height() const override { return root_->Height(); }

    std::shared_ptr<PixelMemory> GetPixelMemory(ImageDataModeConstants mode, int x, int y,
                                                int width, int height) const override {
        return root_->Memory(x, y, width, height, PixelWriteNotice(mode));
    }

    std::shared_ptr<IImage> Copy(bool shareMemory) const override {
        auto root = shareMemory ? root_ : Brnt::CreateObject<Root>(root_->Pels());
        auto copy = Brnt::CreateObject<typename PelTraits<Pel>::GreyImage>(std::move(root));
        CopySpaces(*this, *copy);
        return copy;
    }

protected:
    explicit GreyImage(std::shared_ptr<Root> root)
        : root_(std::move(root)) {
        if (!root_)
            throw ArgumentException("An image needs a pixel root.");
    }

    template <class Archive> void SerializePixels(Archive& archive) {
        SerializeRoot(archive, root_);
    }

private:
    std::shared_ptr<Root> root_;

    RTTR_ENABLE(ImageBase, typename PelTraits<Pel>::GreyData)
};

} // namespace Tavrin::Vision::Implementation
