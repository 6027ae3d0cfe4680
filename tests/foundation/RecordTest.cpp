#include <gtest/gtest.h>

#include <Vision/Foundation.h>

#include "VisionTestSupport.h"

namespace RecordTesting {

using Tavrin::Brnt::CreateObject;
using namespace Tavrin::Vision;

// Counts its calls; the content it builds names the argument it was given.
class CountingConstructor : public virtual ShareableBase, public IRecordConstructor {
public:
    explicit CountingConstructor(ObjectCreateAccessToken const&) {}

    void ConstructAnnotation(Record& record, int) override {
        ++annotations;
        record.setAnnotation("built");
    }
    void ConstructContent(Record& record, int argument) override {
        ++contents;
        if (failuresLeft > 0) {
            --failuresLeft;
            throw ArgumentException("not yet");
        }
        record.setContent(argument * 10);
    }
    void ConstructSubRecords(Record& record, int) override {
        ++subRecords;
        record.SubRecords()->Add(CreateObject<Record>("child", rttr::type::get<int>(),
                                                      RecordUsageConstants_Result, false,
                                                      rttr::variant(1), ""));
    }

    int annotations = 0;
    int contents = 0;
    int subRecords = 0;
    int failuresLeft = 0;

private:
    CountingConstructor() = default;
    friend class cereal::access;
    template <class Archive> void serialize(Archive& archive, unsigned int) {
        archive(cereal::virtual_base_class<ShareableBase>(this));
    }

    RTTR_ENABLE(ShareableBase, IRecordConstructor)
};

} // namespace RecordTesting

TAVRIN_ARCHIVED_CLASS(RecordTesting::CountingConstructor, 1)
CEREAL_REGISTER_TYPE_WITH_NAME(RecordTesting::CountingConstructor,
                               "RecordTesting::CountingConstructor")
CEREAL_REGISTER_POLYMORPHIC_RELATION(Tavrin::Vision::IRecordConstructor,
                                     RecordTesting::CountingConstructor)

namespace RecordTesting {
namespace {

RecordPtr MakeDynamic(std::shared_ptr<CountingConstructor> const& constructor) {
    return CreateObject<Record>("Features", rttr::type::get<int>(), RecordUsageConstants_Overlay,
                                true, rttr::variant(), "", constructor, 7);
}

RecordPtr MakePlain(std::string const& key, int content) {
    return CreateObject<Record>(key, rttr::type::get<int>(), RecordUsageConstants_Image, false,
                                rttr::variant(content), "note");
}

TEST(Record, ConstructorBuildsEachPartOnceWhenFirstRead) {
    auto constructor = CreateObject<CountingConstructor>();
    auto record = MakeDynamic(constructor);
    EXPECT_EQ(constructor->contents + constructor->annotations + constructor->subRecords, 0);

    EXPECT_EQ(record->Content().get_value<int>(), 70);
    EXPECT_EQ(record->Content().get_value<int>(), 70);
    EXPECT_EQ(record->Annotation(), "built");
    EXPECT_EQ(record->SubRecords()->Count(), 1);
    EXPECT_EQ(record->SubRecords()->Count(), 1);
    EXPECT_EQ(constructor->contents, 1);
    EXPECT_EQ(constructor->annotations, 1);
    EXPECT_EQ(constructor->subRecords, 1);

    // A part set before it was read is not built; a failed build is tried again.
    auto preset = MakeDynamic(constructor);
    preset->setContent(3);
    EXPECT_EQ(preset->Content().get_value<int>(), 3);
    EXPECT_EQ(constructor->contents, 1);
    constructor->failuresLeft = 1;
    auto retried = MakeDynamic(constructor);
    EXPECT_THROW(retried->Content(), ArgumentException);
    EXPECT_EQ(retried->Content().get_value<int>(), 70);
    EXPECT_EQ(constructor->contents, 3);
}

TEST(RecordCollection, FindsTheFirstRecordOfARepeatedKeyAndAnnouncesKeys) {
    auto records = CreateObject<RecordCollection>();
    std::vector<std::string> keys;
    Tavrin::Brnt::ScopedConnection added = records->KeyAddedEvent().Connect(
        [&keys](std::string const& key, RecordPtr const&) { keys.push_back("+" + key); });
    Tavrin::Brnt::ScopedConnection removed = records->KeyRemovedEvent().Connect(
        [&keys](std::string const& key, RecordPtr const&) { keys.push_back("-" + key); });
    auto first = MakePlain("Tool.map", 1);
    records->Add(first);
    records->Add(MakePlain("InputImage", 2));
    records->Add(MakePlain("Tool.map", 3));
    records->RemoveAt(1);

    EXPECT_EQ(records->ItemByKey("Tool.map"), first);
    EXPECT_EQ(records->Keys(), (std::vector<std::string>{"Tool.map", "Tool.map"}));
    EXPECT_EQ(keys,
              (std::vector<std::string>{"+Tool.map", "+InputImage", "+Tool.map", "-InputImage"}));
    RecordPtr found;
    EXPECT_FALSE(records->TryGetValue("InputImage", found));
    EXPECT_EQ(VisionTest::MessageOf([&] { records->ItemByKey("InputImage"); }),
              "No item of the collection has the key InputImage");
}

TEST(Record, ArchiveRoundTripKeepsTheTreeSharedRecordsAndWhatIsStillToBuild) {
    auto constructor = CreateObject<CountingConstructor>();
    auto root = MakePlain("Probe", 5);
    auto dynamic = MakeDynamic(constructor);
    root->SubRecords()->Add(dynamic);
    root->setContent(dynamic); // the same record twice in one archive
    RecordPtr const loaded = VisionTest::RoundTrip(root);

    EXPECT_EQ(loaded->Key(), "Probe");
    EXPECT_EQ(loaded->Usage(), RecordUsageConstants_Image);
    EXPECT_EQ(loaded->ValueType(), rttr::type::get<int>());
    EXPECT_EQ(loaded->Annotation(), "note");
    RecordPtr child = loaded->SubRecords()->ItemByKey("Features");
    EXPECT_EQ(loaded->Content().get_value<RecordPtr>(), child);
    EXPECT_TRUE(child->Dynamic());
    EXPECT_EQ(child->ConstructorArgument(), 7);
    auto loadedConstructor =
        std::dynamic_pointer_cast<CountingConstructor>(child->RecordConstructor());
    ASSERT_TRUE(loadedConstructor);
    EXPECT_EQ(child->Content().get_value<int>(), 70);
    EXPECT_EQ(loadedConstructor->contents, 1);
}

TEST(Record, ArchiveRoundTripKeepsAnImageContentWithItsPixels) {
    auto image = CreateObject<Image16Grey>(3, 2);
    auto pels = image->GetPixelMemory(ImageDataModeConstants_Write, 0, 0, 3, 2);
    pels->FirstPel()[2] = 4095;
    pels.reset();
    auto record = CreateObject<Record>("InputImage", rttr::type::get<std::shared_ptr<IImage>>(),
                                       RecordUsageConstants_Image, false,
                                       rttr::variant(std::shared_ptr<IImage>(image)), "");
    auto loadedImage = std::dynamic_pointer_cast<Image16Grey>(
        VisionTest::RoundTrip(record)->Content().get_value<std::shared_ptr<IImage>>());
    ASSERT_TRUE(loadedImage);
    EXPECT_EQ(loadedImage->Width(), 3);
    EXPECT_EQ(loadedImage->GetPixelMemory(ImageDataModeConstants_Read, 0, 0, 3, 2)->FirstPel()[2],
              4095);
}

} // namespace
} // namespace RecordTesting
