#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image24PlanarColor.h>
#include <Vision/Core/Image8Grey.h>
#include <Vision/UtilityPxl/PxlUtils.h>

#include "VisionTestSupport.h"

namespace PxlUtilsTesting {

namespace {

using Tavrin::Brnt::CreateObject;
using namespace Tavrin::Vision;
namespace PxlUtils = Tavrin::Vision::UtilityPxl::detail::PxlUtils;

// Writes 1, 2, 3... into the pels and 0xEE into the row padding, so that a copy that reads the
// padding shows it.
template <class T> tvPelBuffer<T> Numbered(int width, int height, int alignment, int start) {
    tvPelBuffer<T> buffer(width, height, alignment);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < buffer.rowUpdate(); ++x)
            buffer.pointToOffset()[y * buffer.rowUpdate() + x] =
                static_cast<T>(x < width ? start + y * width + x : 0xEE);
    return buffer;
}

template <class Pel> std::vector<Pel> Pels(Implementation::IPelBlock<Pel> const& block) {
    std::vector<Pel> pels;
    for (int y = 0; y < block.Height(); ++y) {
        auto* row = reinterpret_cast<unsigned char*>(block.FirstPel()) + y * block.Step();
        pels.insert(pels.end(), reinterpret_cast<Pel*>(row),
                    reinterpret_cast<Pel*>(row) + block.Width());
    }
    return pels;
}

TEST(PelBuffer, AlignmentRoundsRowsUpInBytes) {
    EXPECT_EQ((tvPelBuffer<unsigned char>(5, 2, 1).rowUpdate()), 5);
    EXPECT_EQ((tvPelBuffer<unsigned char>(5, 2, 4).rowUpdate()), 8);
    EXPECT_EQ((tvPelBuffer<unsigned short>(5, 2, 1).rowUpdate()), 5);
    EXPECT_EQ((tvPelBuffer<unsigned short>(5, 2, 4).rowUpdate()), 6);
    EXPECT_EQ((tvPelBuffer<unsigned short>(4, 2, 3).rowUpdate()), 6);
    tvPelBuffer<unsigned char> buffer(2, 2, 1);
    tvPelBuffer_const<unsigned char> view = buffer;
    buffer.pointToOffset()[3] = 42;
    EXPECT_EQ(view.pointToOffset()[3], 42);
    EXPECT_THROW((tvPelBuffer<unsigned char>(2, 2, 0)), tvException);
    EXPECT_THROW((tvPelBuffer<unsigned char>(-1, 2, 1)), tvException);
}

TEST(PxlUtils, MakeImage8GreyCopiesPaddedRowsIntoAnImageOfItsOwn) {
    auto buffer = Numbered<unsigned char>(5, 3, 8, 1);
    auto image = PxlUtils::MakeImage8Grey(buffer, nullptr);
    buffer.pointToOffset()[0] = 99;

    auto memory = image->GetPixelMemory(ImageDataModeConstants_Read, 0, 0, 5, 3);
    EXPECT_EQ(memory->Step(), 5);
    EXPECT_EQ(Pels(*memory),
              (std::vector<unsigned char>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}));
    EXPECT_EQ(image->SelectedSpaceName(), "#");
    EXPECT_TRUE(image->CoordinateSpaceTree()->SpaceNames().empty());
}

TEST(PxlUtils, MakeImage16GreyTakesSpacesOfTheSourceImage) {
    auto source = CreateObject<Image8Grey>(1, 1);
    auto tree = CreateObject<CoordinateSpaceTree>();
    tree->AddSpace("mm", "#", *CreateObject<Transform2DLinear>(0.5, 0, 0, 0.5, 0, 0));
    source->setCoordinateSpaceTree(tree);
    source->setSelectedSpaceName("mm");

    auto image = PxlUtils::MakeImage16Grey(Numbered<unsigned short>(3, 2, 4, 300), source.get());
    EXPECT_EQ(Pels(*image->GetPixelMemory(ImageDataModeConstants_Read, 0, 0, 3, 2)),
              (std::vector<unsigned short>{300, 301, 302, 303, 304, 305}));
    EXPECT_EQ(image->SelectedSpaceName(), "mm");
    EXPECT_NE(image->CoordinateSpaceTree(), tree);
    EXPECT_TRUE(image->CoordinateSpaceTree()->Contains("mm"));
}

TEST(PxlUtils, MakeImage24PlanarColorKeepsPlaneOrder) {
    tv3PlanePelBuffer planes(tvPelRoot<tv3PlanePel>(Numbered<unsigned char>(3, 1, 4, 10),
                                                    Numbered<unsigned char>(3, 1, 1, 20),
                                                    Numbered<unsigned char>(3, 1, 2, 30)));
    auto image = PxlUtils::MakeImage24PlanarColor(planes, nullptr);
    std::shared_ptr<IImage8PixelMemory> p0, p1, p2;
    image->Get3PlanePixelMemory(ImageDataModeConstants_Read, 0, 0, 3, 1, p0, p1, p2);
    EXPECT_EQ(Pels(*p0), (std::vector<unsigned char>{10, 11, 12}));
    EXPECT_EQ(Pels(*p1), (std::vector<unsigned char>{20, 21, 22}));
    EXPECT_EQ(Pels(*p2), (std::vector<unsigned char>{30, 31, 32}));
    EXPECT_THROW(tvPelRoot<tv3PlanePel>(tvPelBuffer<unsigned char>(3, 1, 1),
                                        tvPelBuffer<unsigned char>(3, 1, 1),
                                        tvPelBuffer<unsigned char>(3, 2, 1)),
                 tvException);
}

// The code and text of the Vision exception that the pel library's failure maps to.
template <class Expected> std::string Mapped(std::function<void()> const& fail) {
    return VisionTest::CodeAndMessageOf<Expected>([&] {
        try {
            fail();
        } catch (tvException& failure) {
            PxlUtils::MapPxlException::MapPxlExceptionAndThrow(failure);
        }
    });
}

TEST(PxlUtils, MapPxlExceptionThrowsTheFittingVisionException) {
    EXPECT_EQ(Mapped<ArgumentException>([] {
                  throw tvException(tvException::Kind::badArgument, L"Gr\u00f6\u00dfe < 0");
              }),
              VisionTest::CodeAndMessage(VisionExceptionCodes_Argument, "Gr\xc3\xb6\xc3\x9f"
                                                                        "e < 0"));
    EXPECT_EQ(Mapped<InternalErrorException>([] { tv2XformLinear(1, 2, 2, 4, 0, 0).inverse(); }),
              VisionTest::CodeAndMessage(VisionExceptionCodes_NotInvertible,
                                         "The transform cannot be inverted."));
    EXPECT_THROW(CreateObject<Image8Grey>(2, 2, 0), ArgumentException);
}

TEST(PelBuffer, InverseOfALinearTransform) {
    // x' = 2x + 1, y' = 4y - 8 inverts to x = 0.5x' - 0.5, y = 0.25y' + 2.
    tv2XformLinear inverse = tv2XformLinear(2, 0, 0, 4, 1, -8).inverse();
    EXPECT_EQ((std::vector<double>{inverse.a(), inverse.b(), inverse.c(), inverse.d(), inverse.tx(),
                                   inverse.ty()}),
              (std::vector<double>{0.5, 0, 0, 0.25, -0.5, 2}));
}

} // namespace

} // namespace PxlUtilsTesting
