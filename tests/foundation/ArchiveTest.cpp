#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

#include <Vision/Foundation.h>

namespace {

using Tavrin::Vision::SerializerOptionsConstants_None;
using Tavrin::Vision::VisionBinaryInputArchive;
using Tavrin::Vision::VisionBinaryOutputArchive;

// What a damaged archive states, written as the archive's own numbers.
template <class... Numbers> std::string Archived(Numbers... numbers) {
    std::stringstream stream;
    {
        VisionBinaryOutputArchive out(stream, SerializerOptionsConstants_None);
        out(numbers...);
    }
    return stream.str();
}

// A count beyond what the input still holds is refused before anything is made for it: an
// allocation of that size would fail, or take the host's memory, long before the short read.
TEST(Archive, RefusesCountsBeyondTheBytesLeft) {
    std::uint64_t const huge = std::uint64_t{1} << 40;
    struct Case {
        char const* name;
        std::string bytes;
        std::function<void(VisionBinaryInputArchive&)> load;
    };
    std::vector<Case> const cases = {
        {"string", Archived(huge), [](auto& in) { std::string text; in(text); }},
        {"collection", Archived(huge),
         [](auto& in) { std::vector<std::shared_ptr<Tavrin::Vision::Record>> items; in(items); }},
        {"numbers", Archived(huge), [](auto& in) { std::vector<double> values; in(values); }},
        {"image pels", Archived(65535, 65535, std::uint64_t{0}), [](auto& in) {
             auto root = Tavrin::Brnt::CreateObject<Tavrin::Vision::Image8Root>(1, 1, 1);
             Tavrin::Vision::Implementation::SerializeRoot(in, root);
         }},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        std::istringstream stream(c.bytes);
        VisionBinaryInputArchive in(stream, SerializerOptionsConstants_None);
        try {
            c.load(in);
            ADD_FAILURE() << "loaded";
        } catch (cereal::Exception const& e) {
            EXPECT_EQ(std::string(e.what()).rfind("Failed to read ", 0), 0u) << e.what();
        }
    }
}

// The string comes last, so its length is exactly the bytes left.
TEST(Archive, ReadsCountsTheInputHolds) {
    std::stringstream stream;
    {
        VisionBinaryOutputArchive out(stream, SerializerOptionsConstants_None);
        out(std::vector<double>{1.5, 2.5}, std::string("pels"));
    }
    VisionBinaryInputArchive in(stream, SerializerOptionsConstants_None);
    std::string text;
    std::vector<double> values;
    in(values, text);
    EXPECT_EQ(text, "pels");
    EXPECT_EQ(values, (std::vector<double>{1.5, 2.5}));
}

} // namespace
