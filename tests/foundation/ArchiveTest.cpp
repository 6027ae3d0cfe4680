#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace ArchiveTesting {

namespace {

using Tavrin::Vision::SerializerOptionsConstants_None;
using Tavrin::Vision::VisionBinaryInputArchive;

using VisionTest::SavedTogether;
using Loads = std::vector<std::pair<std::function<void()>, char const*>>;

// The text of the archive's refusal of the load.
std::string Refusal(std::function<void()> const& load) {
    return VisionTest::MessageOf<cereal::Exception>(load);
}

template <class T> T LoadedFrom(std::string const& bytes) {
    T loaded;
    VisionTest::LoadTogether(bytes, loaded);
    return loaded;
}

// A count beyond what the input still holds is refused before anything is made for it: an
// allocation of that size would fail, or take the host's memory, long before the short read.
TEST(Archive, RefusesCountsBeyondTheBytesLeft) {
    std::string const huge = SavedTogether(std::uint64_t{1} << 40);
    Loads const loads = {
        {[&] { LoadedFrom<std::string>(huge); }, "string"},
        {[&] { LoadedFrom<std::vector<Tavrin::Vision::RecordPtr>>(huge); }, "collection"},
        {[&] { LoadedFrom<std::vector<double>>(huge); }, "numbers"},
        {[] {
             std::istringstream stream(SavedTogether(65535, 65535, std::uint64_t{0}));
             VisionBinaryInputArchive in(stream, SerializerOptionsConstants_None);
             auto root = Tavrin::Brnt::CreateObject<Tavrin::Vision::Image8Root>(1, 1, 1);
             Tavrin::Vision::Implementation::SerializeRoot(in, root);
         },
         "image pels"},
    };
    for (auto const& [load, name] : loads) {
        std::string const refusal = Refusal(load);
        EXPECT_EQ(refusal.rfind("Failed to read ", 0), 0u) << name << ": " << refusal;
    }
}

// The string comes last, so its length is exactly the bytes left. Any byte but 0 and 1 would
// make a bool that no program may hold.
TEST(Archive, ReadsCountsTheInputHoldsAndOnlyZeroAndOneAsBools) {
    std::string text;
    std::vector<double> values;
    VisionTest::LoadTogether(SavedTogether(std::vector<double>{1.5, 2.5}, std::string("pels")),
                             values, text);
    EXPECT_EQ(std::make_pair(values, text),
              std::make_pair(std::vector<double>{1.5, 2.5}, std::string("pels")));
    EXPECT_TRUE(LoadedFrom<bool>(SavedTogether(std::uint8_t{1})));
    EXPECT_FALSE(LoadedFrom<bool>(SavedTogether(std::uint8_t{0})));
    EXPECT_EQ(Refusal([] { LoadedFrom<bool>(SavedTogether(std::uint8_t{213})); }),
              "Failed to read a bool: the archive holds the byte 213");
}

struct Node {
    std::shared_ptr<Node> next;
    template <class Archive> void serialize(Archive& archive) { archive(next); }
};

struct Leaf {
    int value = 0;
    template <class Archive> void serialize(Archive& archive) { archive(value); }
};

template <class Second> struct Pair {
    std::shared_ptr<Node> first;
    std::shared_ptr<Second> second;
    template <class Archive> void serialize(Archive& archive) { archive(first, second); }
};

// Pointer ids as the archive states them: the top bit declares a new object, a plain id names
// one declared before, zero is null.
std::uint32_t constexpr Declares = 0x80000000u;

// A damaged archive may name any id anywhere; only a finished object of the same type is
// handed out, so loading never makes an object own itself nor casts one to what it is not.
TEST(Archive, RefusesPointerIdsThatNameNoFinishedObjectOfTheType) {
    Loads const loads = {
        {[] { LoadedFrom<Node>(SavedTogether(Declares | 1, 1u)); },
         "names an object that is still loading"},
        {[] { LoadedFrom<Pair<Leaf>>(SavedTogether(Declares | 1, 0u, 1u)); },
         "names an object of another type"},
        {[] { LoadedFrom<Pair<Node>>(SavedTogether(Declares | 1, 0u, Declares | 1, 0u)); },
         "is declared twice"},
    };
    for (auto const& [load, fault] : loads)
        EXPECT_EQ(Refusal(load),
                  std::string("Error while trying to deserialize a smart pointer. Id 1 ") + fault);
}

struct Child;

struct Parent {
    std::shared_ptr<Child> child;
    template <class Archive> void serialize(Archive& archive) { archive(child); }
};

// Names its parent while the parent is still loading, as children do.
struct Child {
    std::weak_ptr<Parent> parent;
    template <class Archive> void serialize(Archive& archive) {
        Tavrin::Vision::ArchiveWeakReference(archive, parent);
    }
};

TEST(Archive, JoinsEveryMentionToItsObject) {
    auto const pair = LoadedFrom<Pair<Node>>(SavedTogether(Declares | 1, 0u, 1u));
    ASSERT_NE(pair.first, nullptr);
    EXPECT_EQ(pair.first, pair.second);

    auto const parent =
        LoadedFrom<std::shared_ptr<Parent>>(SavedTogether(Declares | 1, Declares | 2, 1u));
    ASSERT_NE(parent->child, nullptr);
    EXPECT_EQ(parent->child->parent.lock(), parent);
}

} // namespace

} // namespace ArchiveTesting
