#include <gtest/gtest.h>

#include <Vision/Core/Registration.h>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace CollectionTesting {

using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::ArgumentException;
using Tavrin::Vision::ShareableBase;

class Probe : public virtual ShareableBase {
public:
    Probe(ObjectCreateAccessToken const&, int value)
        : value_(value) {}
    int Value() const { return value_; }

private:
    Probe() = default;
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int) {
        archive(cereal::virtual_base_class<ShareableBase>(this), value_);
    }

    int value_ = 0;

    RTTR_ENABLE(ShareableBase)
};
using ProbePtr = std::shared_ptr<Probe>;
using ConstProbePtr = std::shared_ptr<Probe const>;

class ProbeCollection : public Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ProbePtr> {
    TAVRIN_READ_ONLY_COLLECTION(ProbeCollection, ProbePtr, std::vector<ProbePtr>,
                                "ProbeCollection::serialize()")
};

// Its element's Item method is not registered for reflection.
class UnlistedProbeCollection
    : public Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ConstProbePtr> {
    TAVRIN_READ_ONLY_COLLECTION(UnlistedProbeCollection, ConstProbePtr,
                                std::vector<ConstProbePtr> const&,
                                "UnlistedProbeCollection::serialize()")
};

} // namespace CollectionTesting

TAVRIN_ARCHIVED_CLASS(CollectionTesting::Probe, 1)
TAVRIN_ARCHIVED_CLASS(CollectionTesting::ProbeCollection, 1)
CEREAL_REGISTER_TYPE_WITH_NAME(CollectionTesting::Probe, "CollectionTesting::Probe")
TAVRIN_REGISTER_READ_ONLY_COLLECTION(CollectionTesting::ProbeCollection,
                                     "CollectionTesting::ProbeCollection")
TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(
    CollectionTesting::ProbePtr,
    "Tavrin::Vision::Implementation::ReadOnlyCollectionBase<CollectionTesting::ProbePtr>")

TAVRIN_REGISTRATION(ReadOnlyCollectionTest) {
    using namespace CollectionTesting;
    using Base = Tavrin::Vision::Implementation::ReadOnlyCollectionBase<ProbePtr>;
    using Interface = Tavrin::Brnt::IReadOnlyCollection<ProbePtr>;
    rttr::registration::class_<Interface>("CollectionTesting::IReadOnlyCollectionOfProbePtr")
        .method("Item", &Interface::Item);
    rttr::registration::class_<Base>("CollectionTesting::ReadOnlyCollectionOfProbePtr")
        .method("Capacity", &Base::Capacity)
        .method("IndexOf", &Base::IndexOf);
    rttr::registration::class_<ProbeCollection>("CollectionTesting::ProbeCollection");
    rttr::registration::class_<UnlistedProbeCollection>(
        "CollectionTesting::UnlistedProbeCollection");
}

namespace CollectionTesting {
namespace {

std::shared_ptr<ProbeCollection> MakeCollection(std::vector<ProbePtr> const& items) {
    return CreateObject<ProbeCollection>(items);
}

TEST(ReadOnlyCollectionBase, ComparesByIdentityAndChecksIndices) {
    auto first = CreateObject<Probe>(7);
    auto second = CreateObject<Probe>(8);
    auto twinOfFirst = CreateObject<Probe>(7);
    auto collection = MakeCollection({first, second, first});

    EXPECT_EQ(collection->IndexOf(first), 0);
    EXPECT_EQ(collection->IndexOf(second), 1);
    EXPECT_EQ(collection->IndexOf(twinOfFirst), -1);
    EXPECT_FALSE(collection->Contains(twinOfFirst));
    EXPECT_TRUE(collection->Contains(second));
    EXPECT_EQ(collection->Item(2), first);
    EXPECT_THROW(collection->Item(-1), ArgumentException);
    EXPECT_THROW(collection->Item(3), ArgumentException);

    std::vector<int> backwards;
    for (auto it = collection->crbegin(); it != collection->crend(); ++it)
        backwards.push_back((*it)->Value());
    EXPECT_EQ(backwards, (std::vector<int>{7, 8, 7}));
}

TEST(ReadOnlyCollectionBase, FakePropertiesListEachItemBehindTheNoArgMethods) {
    auto first = CreateObject<Probe>(1);
    auto second = CreateObject<Probe>(2);
    auto collection = MakeCollection({first, second});

    auto properties = collection->GetFakeProperties();
    ASSERT_EQ(properties->size(), 3u);
    EXPECT_EQ((*properties)[0]->Name(), "Capacity");
    EXPECT_FALSE((*properties)[0]->Index().is_valid());
    EXPECT_EQ((*properties)[0]->GetValue(*collection).get_value<long long>(), 2);
    for (int index = 0; index < 2; ++index) {
        auto const& item = (*properties)[index + 1];
        EXPECT_EQ(item->Name(), "");
        EXPECT_EQ(item->Getter()->Name(), "Item");
        EXPECT_TRUE(item->IsReadOnly());
        ASSERT_TRUE(item->Index().is_type<int>());
        EXPECT_EQ(item->Index().get_value<int>(), index);
    }
    EXPECT_EQ((*properties)[2]->GetValue(*collection).get_value<ProbePtr>(), second);

    // Without a reflected Item(int) the items stay unlisted.
    ConstProbePtr constant = first;
    auto unlisted = CreateObject<UnlistedProbeCollection>(std::vector<ConstProbePtr>{constant});
    EXPECT_TRUE(unlisted->GetFakeProperties()->empty());
}

TEST(ReadOnlyCollectionBase, ArchiveRoundTripKeepsOrderAndSharedItems) {
    auto shared = CreateObject<Probe>(5);
    auto other = CreateObject<Probe>(6);
    std::shared_ptr<Tavrin::Brnt::IReadOnlyCollection<ProbePtr>> saved =
        MakeCollection({shared, other, shared});
    std::shared_ptr<Tavrin::Brnt::IReadOnlyCollection<ProbePtr>> loaded;
    ProbePtr loadedShared;
    VisionTest::LoadTogether(VisionTest::SavedTogether(saved, shared), loaded, loadedShared);

    auto typed = std::dynamic_pointer_cast<ProbeCollection>(loaded);
    ASSERT_TRUE(typed);
    ASSERT_EQ(typed->Count(), 3);
    EXPECT_EQ(typed->Item(0), loadedShared);
    EXPECT_EQ(typed->Item(2), loadedShared);
    EXPECT_EQ(typed->Item(1)->Value(), 6);
    EXPECT_EQ(typed->shared_from_this(), typed);
}

TEST(ReadOnlyCollectionBase, ArchivesItsVersionOneAndRefusesANewerOne) {
    std::string const message = VisionTest::NewerVersionRefusal(
        MakeCollection({}), "CollectionTesting::ProbeCollection", 1);
    EXPECT_NE(message.find("ReadOnlyCollectionBase::serialize()"), std::string::npos) << message;
}

} // namespace
} // namespace CollectionTesting
