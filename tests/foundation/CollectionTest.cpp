#include <gtest/gtest.h>

#include <sstream>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace TrackingTesting {

using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::ArgumentException;
using Tavrin::Vision::Implementation::TrackedItemBase;

class Tag : public TrackedItemBase {
public:
    Tag(ObjectCreateAccessToken const& token, std::string const& name)
        : TrackedItemBase(token, name) {}
    TAVRIN_SHARED_FROM_THIS(Tag)

    // A twin with the same identity.
    std::shared_ptr<Tag> Clone() const { return std::shared_ptr<Tag>(new Tag(*this)); }

private:
    Tag() = default;
    Tag(Tag const&) = default;
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int) {
        archive(cereal::base_class<TrackedItemBase>(this));
    }

    RTTR_ENABLE(TrackedItemBase)
};
using TagPtr = std::shared_ptr<Tag>;
using TagCollection = Tavrin::Vision::Implementation::TrackingCollectionBase<TagPtr>;

} // namespace TrackingTesting

TAVRIN_ARCHIVED_CLASS(TrackingTesting::Tag, 1)
CEREAL_REGISTER_TYPE_WITH_NAME(TrackingTesting::Tag, "TrackingTesting::Tag")
CEREAL_REGISTER_TYPE_WITH_NAME(TrackingTesting::TagCollection, "TrackingTesting::TagCollection")

namespace TrackingTesting {
namespace {

using Tavrin::Vision::StringCollection;

// Records each event of a string collection as one line: its name, its arguments and the count
// seen at that moment.
struct EventLog {
    explicit EventLog(StringCollection& list)
        : list(list) {
        Log(list.InsertingItemEvent(), "inserting");
        Log(list.InsertedItemEvent(), "inserted");
        Log(list.RemovingItemEvent(), "removing");
        Log(list.RemovedItemEvent(), "removed");
        Log(list.MovingItemEvent(), "moving");
        Log(list.MovedItemEvent(), "moved");
        Log(list.ReplacingItemEvent(), "replacing");
        Log(list.ReplacedItemEvent(), "replaced");
        Log(list.ClearingEvent(), "clearing");
        Log(list.ClearedEvent(), "cleared");
    }
    template <class... Args>
    void Log(Tavrin::Brnt::Event<Args...>& event, std::string const& what) {
        connections.emplace_back(
            event.Connect(std::function<void(Args...)>([this, what](Args... args) {
                std::ostringstream line;
                line << what;
                ((line << ' ' << args), ...);
                lines.push_back(line.str() + " #" + std::to_string(list.Count()));
            })));
    }

    StringCollection& list;
    std::vector<std::string> lines;
    std::vector<Tavrin::Brnt::ScopedConnection> connections;
};

TEST(CollectionBase, AnnouncesEachChangeBeforeAndAfterWithItsArguments) {
    auto list = CreateObject<StringCollection>(std::vector<std::string>{"a"});
    EventLog log(*list);
    list->Add("b");
    list->Insert(0, "c");
    list->Replace(1, "d");
    list->Move(0, 2);
    list->RemoveAt(1);
    list->Clear();
    EXPECT_EQ(log.lines,
              (std::vector<std::string>{
                  "inserting 1 b #1", "inserted 1 b #2", "inserting 0 c #2", "inserted 0 c #3",
                  "replacing 1 a d #3", "replaced 1 a d #3", "moving 0 2 #3", "moved 0 2 #3",
                  "removing 1 b #3", "removed 1 b #2", "clearing #2", "cleared #0"}));
}

TEST(CollectionBase, BadIndicesThrowWithoutAnyEvent) {
    auto list = CreateObject<StringCollection>(std::vector<std::string>{"a", "b"});
    EventLog log(*list);
    EXPECT_THROW(list->Insert(3, "x"), ArgumentException);
    EXPECT_THROW(list->Insert(-1, "x"), ArgumentException);
    EXPECT_THROW(list->RemoveAt(2), ArgumentException);
    EXPECT_THROW(list->Replace(-1, "x"), ArgumentException);
    EXPECT_THROW(list->Move(0, 2), ArgumentException);
    EXPECT_TRUE(log.lines.empty());
    EXPECT_EQ(list->GetDataC(), (std::vector<std::string>{"a", "b"}));
    // Item(int) is reflected, so a host sees the two texts as fake properties.
    auto properties = list->GetFakeProperties();
    ASSERT_EQ(properties->size(), 2u);
    EXPECT_EQ((*properties)[1]->GetValue(*list).get_value<std::string>(), "b");
}

struct TrackedFixture {
    std::shared_ptr<StringCollection> owner = CreateObject<StringCollection>();
    std::shared_ptr<TagCollection> tags = CreateObject<TagCollection>();
    TagPtr first = CreateObject<Tag>("first");
    TagPtr second = CreateObject<Tag>("second");

    TrackedFixture() {
        tags->setOwner(owner);
        tags->Add(first);
        tags->Add(second);
    }
};

TEST(TrackingCollectionBase, RefusesTakenNamesOnAddAndOnRename) {
    TrackedFixture fixture;
    auto& tags = *fixture.tags;
    int inserts = 0;
    Tavrin::Brnt::ScopedConnection counting =
        tags.InsertingItemEvent().Connect([&](int, TagPtr const&) { ++inserts; });

    EXPECT_THROW(tags.Add(CreateObject<Tag>("first")), ArgumentException);
    EXPECT_THROW(tags.Add(nullptr), ArgumentException);
    EXPECT_THROW(tags.Add(fixture.first), ArgumentException);
    EXPECT_EQ(inserts, 0);
    EXPECT_THROW(tags.Replace(0, CreateObject<Tag>("second")), ArgumentException);
    tags.Replace(1, CreateObject<Tag>("second")); // the name it replaces is free
    EXPECT_NE(tags.ItemByKey("second"), fixture.second);

    EXPECT_EQ(VisionTest::MessageOf([&] { fixture.first->setName("second"); }),
              "The name second is already used in this collection");
    EXPECT_EQ(fixture.first->Name(), "first");
    fixture.first->setName("renamed");
    EXPECT_EQ(tags.ItemByKey("renamed"), fixture.first);
    EXPECT_FALSE(tags.ContainsKey("first"));
    EXPECT_EQ(tags.Keys(), (std::vector<std::string>{"renamed", "second"}));
    // An item that left is watched no more.
    fixture.second->setName("renamed");
    EXPECT_EQ(fixture.second->Name(), "renamed");
}

TEST(TrackingCollectionBase, ParentsItemsAndKeepsIdentitiesUnique) {
    TrackedFixture fixture;
    EXPECT_EQ(fixture.first->Parent(), fixture.owner);
    auto twin = fixture.first->Clone();
    twin->setName("twin");
    std::string const sharedId = fixture.first->ID();
    ASSERT_EQ(twin->ID(), sharedId);

    fixture.tags->Insert(0, twin);
    EXPECT_EQ(fixture.first->ID(), sharedId);
    EXPECT_NE(twin->ID(), sharedId);
    EXPECT_EQ(fixture.tags->ItemByID(sharedId), fixture.first);
    EXPECT_EQ(twin->Parent(), fixture.owner);

    fixture.tags->RemoveAt(1);
    EXPECT_EQ(fixture.first->Parent(), nullptr);
    EXPECT_EQ(fixture.tags->ItemByID(sharedId), nullptr);
}

TEST(TrackingCollectionBase, LoadRestoresNameWatchesIdentitiesAndLookups) {
    TrackedFixture fixture;
    auto tags = std::dynamic_pointer_cast<TagCollection>(
        VisionTest::RoundTrip<Tavrin::Vision::ShareableBase>(fixture.tags));
    ASSERT_TRUE(tags);
    TagPtr first = tags->ItemByKey("first");
    EXPECT_EQ(first->ID(), fixture.first->ID());
    EXPECT_EQ(tags->ItemByID(fixture.second->ID()), tags->Item(1));
    EXPECT_THROW(first->setName("second"), ArgumentException);

    auto owner = CreateObject<StringCollection>();
    tags->setOwner(owner);
    EXPECT_EQ(tags->Item(1)->Parent(), owner);
}

} // namespace
} // namespace TrackingTesting
