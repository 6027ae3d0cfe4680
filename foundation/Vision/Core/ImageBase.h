#pragma once

#include <memory>
#include <string>

#include "Vision/Core/Archive.h"
#include "Vision/Core/Image.h"

namespace Tavrin::Vision::Implementation {

// What every image class shares: the selected space and the coordinate space tree.
class ImageBase : public virtual ChangedEventShareableBase, public IImage {
public:
    static const long long sf0_ = ChangedEventShareableBase::sfNextSf_;
    static const long long SfSelectedSpaceName = sf0_;
    static const long long SfCoordinateSpaceTree = sf0_ << 1;
    // Raised when a writer releases pixel memory it requested for writing.
    static const long long SfPixels = sf0_ << 2;
    static const long long sfNextSf_ = sf0_ << 3;

    std::string const& SelectedSpaceName() const override { return selectedSpaceName_; }
    void setSelectedSpaceName(std::string const& name) override;
    std::shared_ptr<ITransform2D> GetTransform(std::string const& toSpace,
                                               std::string const& fromSpace) const override;
    CoordinateSpaceTreePtr CoordinateSpaceTree() const override { return tree_; }
    void setCoordinateSpaceTree(CoordinateSpaceTreePtr tree) override;

protected:
    ImageBase();

    // Checks the mode. For the writing modes it gives a notice that raises SfPixels on this
    // image, if it still lives, when its last holder lets it go; for reading, none.
    std::shared_ptr<void> PixelWriteNotice(ImageDataModeConstants mode) const;

private:
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int version);

    std::string selectedSpaceName_ = Vision::CoordinateSpaceTree::RootSpaceName;
    CoordinateSpaceTreePtr tree_;

    RTTR_ENABLE(ChangedEventShareableBase, IImage)
};

// Gives `to` the selected space name of `from` and a copy of its space tree.
void CopySpaces(IImage const& from, IImage& to);

} // namespace Tavrin::Vision::Implementation

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::Implementation::ImageBase, 1)
