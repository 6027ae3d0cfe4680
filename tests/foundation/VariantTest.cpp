#include <gtest/gtest.h>

#include <Vision/Core/Registration.h>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace VariantTesting {

enum class Bits : int { None = 0, Low = 1, High = 2, All = -1 };
enum class Shade : unsigned int { Light = 1, Dark = 0xffffffffu };

} // namespace VariantTesting

TAVRIN_REGISTRATION(VariantTest) {
    using namespace VariantTesting;
    rttr::registration::enumeration<Bits>("VariantTesting::Bits")(
        rttr::value("None", Bits::None), rttr::value("Low", Bits::Low),
        rttr::value("High", Bits::High), rttr::value("All", Bits::All));
    rttr::registration::enumeration<Shade>("VariantTesting::Shade")(
        rttr::value("Light", Shade::Light), rttr::value("Dark", Shade::Dark));
    Tavrin::Brnt::Internal::VariantUtils::RegisterEnumeration<Bits>();
}

namespace VariantTesting {
namespace {

using Tavrin::Brnt::CreateObject;
using Tavrin::Brnt::Internal::VariantUtils::Int32ToEnumVariant;
using Tavrin::Brnt::Internal::VariantUtils::UInt32ToEnumVariant;
using Tavrin::Vision::ArgumentException;
using Tavrin::Vision::Transform2DLinear;
using Tavrin::Vision::VariantCollection;

TEST(VariantUtils, MakesEnumValuesFromTheirThirtyTwoBitPattern) {
    rttr::type const bits = rttr::type::get<Bits>();
    rttr::type const shade = rttr::type::get<Shade>();
    EXPECT_EQ(Int32ToEnumVariant(-1, bits).get_value<Bits>(), Bits::All);
    EXPECT_EQ(UInt32ToEnumVariant(0xffffffffu, bits).get_value<Bits>(), Bits::All);
    // A union of bits has no name; the registered factory makes it.
    EXPECT_EQ(Int32ToEnumVariant(3, bits).get_value<Bits>(), static_cast<Bits>(3));

    // Without a factory only registered values can be made.
    EXPECT_EQ(UInt32ToEnumVariant(0xffffffffu, shade).get_value<Shade>(), Shade::Dark);
    EXPECT_EQ(Int32ToEnumVariant(-1, shade).get_value<Shade>(), Shade::Dark);
    EXPECT_EQ(VisionTest::MessageOf([&] { Int32ToEnumVariant(2, shade); }),
              "The enumeration VariantTesting::Shade has no value 2");
    EXPECT_THROW(Int32ToEnumVariant(0, rttr::type::get<int>()), ArgumentException);
}

TEST(VariantCollection, ArchivesEveryKindWithItsTypeAndSharedObjectsOnce) {
    auto transform = CreateObject<Transform2DLinear>(1, 2, 3, 4, 5, 6);
    std::vector<rttr::variant> const items{rttr::variant(),
                                           true,
                                           -5,
                                           7u,
                                           1LL << 40,
                                           2.5,
                                           std::string("text"),
                                           transform,
                                           transform,
                                           static_cast<Bits>(3),
                                           Shade::Dark};
    auto const loaded = VisionTest::RoundTrip(CreateObject<VariantCollection>(items));

    auto const& got = loaded->GetDataC();
    ASSERT_EQ(got.size(), items.size());
    EXPECT_FALSE(got[0].is_valid());
    EXPECT_EQ(got[1].get_value<bool>(), true);
    EXPECT_EQ(got[2].get_value<int>(), -5);
    EXPECT_EQ(got[3].get_value<unsigned int>(), 7u);
    EXPECT_EQ(got[4].get_value<long long>(), 1LL << 40);
    EXPECT_EQ(got[5].get_value<double>(), 2.5);
    EXPECT_EQ(got[6].get_value<std::string>(), "text");
    auto const first = got[7].get_value<std::shared_ptr<Transform2DLinear>>();
    EXPECT_EQ(first, got[8].get_value<std::shared_ptr<Transform2DLinear>>());
    EXPECT_EQ(first->TY(), 6);
    EXPECT_EQ(got[9].get_value<Bits>(), static_cast<Bits>(3));
    EXPECT_EQ(got[10].get_value<Shade>(), Shade::Dark);
}

TEST(VariantCollection, RefusesToSaveAKindWithoutArchiver) {
    auto saved = CreateObject<VariantCollection>(std::vector<rttr::variant>{3.5f});
    EXPECT_THROW(VisionTest::Saved(saved), Tavrin::Vision::SerializationException);
}

} // namespace
} // namespace VariantTesting
