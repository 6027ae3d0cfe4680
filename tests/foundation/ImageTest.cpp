#include <gtest/gtest.h>

#include <array>
#include <type_traits>
#include <vector>

#include <rttr/type>

#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image24PlanarColor.h>
#include <Vision/Core/Image8Grey.h>

#include "VisionTestSupport.h"

namespace ImageTesting {

namespace {

using Tavrin::Brnt::CreateObject;
using namespace Tavrin::Vision;

template <class Image> auto Memory(Image const& image, ImageDataModeConstants mode) {
    return image.GetPixelMemory(mode, 0, 0, image.Width(), image.Height());
}

// Pel (x, y) of a lent block, through the block's own step.
template <class Pel> Pel& PelAt(Implementation::IPelBlock<Pel> const& block, int x, int y) {
    auto* row = reinterpret_cast<unsigned char*>(block.FirstPel()) + y * block.Step();
    return reinterpret_cast<Pel*>(row)[x];
}

template <class Image> auto Pels(Image const& image) {
    auto const block = Memory(image, ImageDataModeConstants_Read);
    std::vector<std::decay_t<decltype(*block->FirstPel())>> pels;
    for (int y = 0; y < block->Height(); ++y)
        for (int x = 0; x < block->Width(); ++x)
            pels.push_back(PelAt(*block, x, y));
    return pels;
}

template <class Image, class Pel>
std::shared_ptr<Image> Filled(int width, int height, int alignment, std::vector<Pel> const& pels) {
    auto image = CreateObject<Image>(width, height, alignment);
    auto memory = Memory(*image, ImageDataModeConstants_Write);
    for (int i = 0; i < width * height; ++i)
        PelAt(*memory, i % width, i / width) = pels[i];
    return image;
}

using Planes = std::array<std::shared_ptr<IImage8PixelMemory>, 3>;

Planes PlanesOf(Image24PlanarColor const& image, ImageDataModeConstants mode, int size = 1) {
    Planes planes;
    image.Get3PlanePixelMemory(mode, 0, 0, size, size, planes[0], planes[1], planes[2]);
    return planes;
}

// Pel (x, y) of each plane.
std::vector<int> PelsAt(Image24PlanarColor const& image, int x = 0, int y = 0) {
    Planes planes;
    image.Get3PlanePixelMemory(ImageDataModeConstants_Read, x, y, 1, 1, planes[0], planes[1],
                               planes[2]);
    return {*planes[0]->FirstPel(), *planes[1]->FirstPel(), *planes[2]->FirstPel()};
}

std::shared_ptr<CoordinateSpaceTree> TreeWithScaledSpace() {
    auto tree = CreateObject<CoordinateSpaceTree>();
    tree->AddSpace("scaled", "#", *CreateObject<Transform2DLinear>(2, 0, 0, 2, 10, 20));
    return tree;
}

TEST(Image8Grey, LendsPaddedAndPackedRowsInPlace) {
    auto padded = CreateObject<Image8Grey>(5, 3, 4);
    EXPECT_EQ(Memory(*CreateObject<Image8Grey>(5, 3), ImageDataModeConstants_Read)->Step(), 5);
    auto whole = Memory(*padded, ImageDataModeConstants_ReadWrite);
    EXPECT_EQ(whole->Step(), 8);
    auto window = padded->GetPixelMemory(ImageDataModeConstants_Read, 2, 1, 3, 2);
    EXPECT_EQ(window->FirstPel(), whole->FirstPel() + 8 + 2);
    PelAt(*whole, 4, 2) = 77;
    EXPECT_EQ(PelAt(*window, 2, 1), 77);

    EXPECT_THROW(padded->GetPixelMemory(ImageDataModeConstants_Read, 3, 0, 3, 1),
                 ArgumentException);
    EXPECT_THROW(padded->GetPixelMemory(ImageDataModeConstants(0), 0, 0, 1, 1), ArgumentException);
}

TEST(Image24PlanarColor, RefusesPlanesOfMixedSizes) {
    auto small = CreateObject<Image8Root>(2, 2, 1);
    EXPECT_THROW(CreateObject<Image24PlanarColor>(small, small, CreateObject<Image8Root>(3, 2, 1)),
                 ArgumentException);
}

// A shared copy lends the same pels, planes in their order; a deep copy owns its pels and spaces.
TEST(ImageCopy, SharedCopyLendsTheSamePelsDeepCopyOwnsItsPelsAndSpaces) {
    auto colour = CreateObject<Image24PlanarColor>(2, 2);
    auto colourShared = std::dynamic_pointer_cast<Image24PlanarColor>(colour->Copy(true));
    auto colourDeep = std::dynamic_pointer_cast<Image24PlanarColor>(colour->Copy(false));
    ASSERT_TRUE(colourShared && colourDeep);
    Planes const written = PlanesOf(*colour, ImageDataModeConstants_Write, 2);
    for (int plane = 0; plane < 3; ++plane)
        PelAt(*written[plane], 1, 1) = static_cast<unsigned char>(10 * (plane + 1));
    EXPECT_EQ(PelsAt(*colourShared, 1, 1), (std::vector<int>{10, 20, 30}));
    EXPECT_EQ(PelsAt(*colourDeep, 1, 1), (std::vector<int>{0, 0, 0}));

    auto image = Filled<Image8Grey, unsigned char>(2, 1, 4, {1, 2});
    image->setCoordinateSpaceTree(TreeWithScaledSpace());
    image->setSelectedSpaceName("scaled");
    auto deep = std::dynamic_pointer_cast<Image8Grey>(image->Copy(false));
    auto shared = std::dynamic_pointer_cast<Image8Grey>(image->Copy(true));
    ASSERT_TRUE(deep && shared);
    PelAt(*Memory(*image, ImageDataModeConstants_Write), 0, 0) = 9;
    EXPECT_EQ(Pels(*deep), (std::vector<unsigned char>{1, 2}));
    EXPECT_EQ(Pels(*shared), (std::vector<unsigned char>{9, 2}));
    EXPECT_EQ(deep->SelectedSpaceName(), "scaled");
    EXPECT_NE(deep->CoordinateSpaceTree(), image->CoordinateSpaceTree());
    EXPECT_EQ(deep->CoordinateSpaceTree()->SpaceNames(), std::vector<std::string>{"scaled"});
}

TEST(ImagePixels, WriteAccessRaisesSfPixelsWhenTheLastMemoryGoes) {
    auto image = CreateObject<Image24PlanarColor>(2, 2);
    VisionTest::FlagLog log(*image);
    auto const& raised = log.words();
    PlanesOf(*image, ImageDataModeConstants_Read, 2);
    Planes planes = PlanesOf(*image, ImageDataModeConstants_Write, 2);
    planes[0] = planes[1] = nullptr;
    EXPECT_TRUE(raised.empty());
    planes[2] = nullptr;
    EXPECT_EQ(raised, VisionTest::Words{Image24PlanarColor::SfPixels});

    image->setSelectedSpaceName("#");
    image->setSelectedSpaceName("other");
    EXPECT_EQ(raised, (VisionTest::Words{Image24PlanarColor::SfPixels,
                                         Image24PlanarColor::SfSelectedSpaceName}));
    EXPECT_THROW(image->setCoordinateSpaceTree(nullptr), ArgumentException);
}

// The steps count bytes: rows of three 16-bit pels take 8 bytes aligned, 6 packed.
TEST(ImageArchive, RoundTripKeepsPixelsSpacesAndIdentity) {
    auto grey16 = Filled<Image16Grey, unsigned short>(3, 2, 8, {1, 256, 1000, 65535, 0, 300});
    EXPECT_EQ(Memory(*grey16, ImageDataModeConstants_Read)->Step(), 8);
    grey16->setCoordinateSpaceTree(TreeWithScaledSpace());
    grey16->setSelectedSpaceName("scaled");
    auto grey8 = Filled<Image8Grey, unsigned char>(3, 1, 4, {7, 0, 255});
    auto colour = CreateObject<Image24PlanarColor>(1, 1);
    for (int plane = 0; plane < 3; ++plane)
        *PlanesOf(*colour, ImageDataModeConstants_Write)[plane]->FirstPel() = 11 * (plane + 1);

    std::vector<IImagePtr> loaded;
    VisionTest::LoadTogether(
        VisionTest::SavedTogether(std::vector<IImagePtr>{grey16, grey8, colour, grey16}), loaded);
    ASSERT_EQ(loaded.size(), 4u);
    EXPECT_EQ(loaded[0], loaded[3]);
    auto grey16Loaded = std::dynamic_pointer_cast<Image16Grey>(loaded[0]);
    auto grey8Loaded = std::dynamic_pointer_cast<Image8Grey>(loaded[1]);
    auto colourLoaded = std::dynamic_pointer_cast<Image24PlanarColor>(loaded[2]);
    ASSERT_TRUE(grey16Loaded && grey8Loaded && colourLoaded);
    EXPECT_EQ(Memory(*grey16Loaded, ImageDataModeConstants_Read)->Step(), 6);
    EXPECT_EQ(Pels(*grey16Loaded), (std::vector<unsigned short>{1, 256, 1000, 65535, 0, 300}));
    EXPECT_EQ(grey16Loaded->SelectedSpaceName(), "scaled");
    double x, y;
    grey16Loaded->GetTransform("scaled", "#")->MapPoint(1, 2, &x, &y);
    EXPECT_EQ(std::make_pair(x, y), std::make_pair(12.0, 24.0));
    EXPECT_EQ(Pels(*grey8Loaded), (std::vector<unsigned char>{7, 0, 255}));
    EXPECT_EQ(PelsAt(*colourLoaded), (std::vector<int>{11, 22, 33}));
    EXPECT_EQ(colourLoaded->SelectedSpaceName(), "#");
}

TEST(ImageReflection, RegistersFullNamesWithSizeAndSpaceProperties) {
    for (char const* name : {"Tavrin::Vision::IImage", "Tavrin::Vision::Image8Grey",
                             "Tavrin::Vision::Image16Grey", "Tavrin::Vision::Image24PlanarColor"})
        EXPECT_TRUE(rttr::type::get_by_name(name).is_valid()) << name;

    std::shared_ptr<IImage> image = CreateObject<Image16Grey>(7, 4);
    rttr::type type = rttr::type::get_by_name("Tavrin::Vision::Image16Grey");
    EXPECT_EQ(rttr::type::get(*image), type);
    EXPECT_EQ(std::make_pair(type.get_property("Width").get_value(*image).to_int(),
                             type.get_property("Height").get_value(*image).to_int()),
              std::make_pair(7, 4));
    EXPECT_TRUE(type.get_property("SelectedSpaceName").set_value(*image, std::string("s")));
    EXPECT_EQ(image->SelectedSpaceName(), "s");
}

} // namespace

} // namespace ImageTesting
