#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace {

using Tavrin::Vision::SerializerOptionsConstants_None;
using Tavrin::Vision::VisionBinaryInputArchive;

// The text of the archive's refusal of the load.
template <class Load> std::string Refusal(Load&& load) {
    return VisionTest::MessageOf<cereal::Exception>(load);
}

using VisionTest::SavedTogether;

template <class T> T LoadedFrom(std::string const& bytes) {
    T loaded;
    VisionTest::LoadTogether(bytes, loaded);
    return loaded;
}

// A count beyond what the input still holds is refused before anything is made for it: an
// allocation of that size would fail, or take the host's memory, long before the short read.
TEST(Archive, RefusesCountsBeyondTheBytesLeft) {
    std::string const huge = SavedTogether(std::uint64_t{1} << 40);
    struct Case {
        std::function<void()> load;
        char const* name;
    };
    std::vector<Case> const cases = {
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
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        std::string const refusal = Refusal(c.load);
        EXPECT_EQ(refusal.rfind("Failed to read ", 0), 0u) << refusal;
    }
}

// The string comes last, so its length is exactly the bytes left.
TEST(Archive, ReadsCountsTheInputHolds) {
    std::string text;
    std::vector<double> values;
    VisionTest::LoadTogether(SavedTogether(std::vector<double>{1.5, 2.5}, std::string("pels")),
                             values, text);
    EXPECT_EQ(text, "pels");
    EXPECT_EQ(values, (std::vector<double>{1.5, 2.5}));
}

// Any other byte would make a bool that no program may hold.
TEST(Archive, ReadsOnlyZeroAndOneAsBools) {
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
    struct Case {
        char const* name;
        std::function<void()> load;
        char const* fault;
    };
    std::vector<Case> const cases = {
        {"itself while loading", [] { LoadedFrom<Node>(SavedTogether(Declares | 1, 1u)); },
         "Id 1 names an object that is still loading"},
        {"another type", [] { LoadedFrom<Pair<Leaf>>(SavedTogether(Declares | 1, 0u, 1u)); },
         "Id 1 names an object of another type"},
        {"declared twice",
         [] { LoadedFrom<Pair<Node>>(SavedTogether(Declares | 1, 0u, Declares | 1, 0u)); },
         "Id 1 is declared twice"},
    };
    for (Case const& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(Refusal(c.load),
                  std::string("Error while trying to deserialize a smart pointer. ") + c.fault);
    }
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
