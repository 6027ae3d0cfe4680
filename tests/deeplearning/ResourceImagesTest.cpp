#include <stdexcept>

#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image24PlanarColor.h>
#include <Vision/Core/Image8Grey.h>

#include "ResultTestSupport.h"
#include "VisionTestSupport.h"

namespace ResourceImagesTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::IImagePtr;
using Tavrin::Vision::Image16Grey;
using Tavrin::Vision::Image24PlanarColor;
using Tavrin::Vision::Image8Grey;
using Tavrin::Vision::ImageDataModeConstants_Read;

template <class Image> std::vector<int> Samples(IImagePtr const& image) {
    auto grey = std::dynamic_pointer_cast<Image>(image);
    EXPECT_TRUE(grey);
    if (!grey)
        return {};
    auto memory =
        grey->GetPixelMemory(ImageDataModeConstants_Read, 0, 0, grey->Width(), grey->Height());
    std::vector<int> samples;
    for (int y = 0; y < grey->Height(); ++y)
        for (int x = 0; x < grey->Width(); ++x)
            samples.push_back(
                memory->FirstPel()[y * memory->Step() / sizeof(*memory->FirstPel()) + x]);
    return samples;
}

class ResourceImages : public ThreeKindsOperatorTest {
protected:
    void SetUp() override {
        ThreeKindsOperatorTest::SetUp();
        AddResource("map", 4, 2, 1, 0, PatternPixels(4, 2, 1, 7), 7);
    }

    DLResultViewPtr Run(std::string const& content, std::string const& size = "8x4") {
        testkelo_set_result_document(Document(Marking(View(content, "1,0,0,1,0,0", size))).c_str());
        return FirstView(op_->Execute(*CreateObject<Image8Grey>(8, 4)));
    }
};

TEST_F(ResourceImages, ScoreMapsUnderRedAreResampledToTheView) {
    int const before = testkelo_count(TESTKELO_IMAGES);
    auto view =
        Run(Red(Resource("my_score_map_2", "map", " scale=\"0.25\"")) + Resource("overlay", "map"));
    auto map = view->ResultRed()->ResultResources()->Item(0);
    EXPECT_EQ((std::vector<std::string>{map->Name(), map->Type(), map->UUID()}),
              (std::vector<std::string>{"my_score_map_2", "image", "map"}));
    EXPECT_DOUBLE_EQ(map->Scale(), 0.25);
    // Each source pel becomes a block of two by two.
    EXPECT_EQ(Samples<Image8Grey>(map->Image()),
              (std::vector<int>{0,  0,  1,  1,  2,  2,  3,  3,  0,  0,  1,  1,  2,  2,  3,  3,
                                10, 10, 11, 11, 12, 12, 13, 13, 10, 10, 11, 11, 12, 12, 13, 13}));
    auto overlay = view->Resources()->Item(0);
    EXPECT_DOUBLE_EQ(overlay->Scale(), 1.0);
    EXPECT_EQ(Samples<Image8Grey>(overlay->Image()),
              (std::vector<int>{0, 1, 2, 3, 10, 11, 12, 13}));
    EXPECT_EQ(testkelo_count(TESTKELO_IMAGES), before);
}

TEST_F(ResourceImages, ScoreMapsElsewhereKeepTheEnginesSize) {
    auto view = Run("<green threshold=\"0\" uncertainty=\"0\">" + Resource("score_map", "map") +
                        "</green>" + Resource("score_map", "map"),
                    "6.9x3.9");
    EXPECT_EQ(view->ResultGreen()->ResultResources()->Item(0)->Image()->Width(), 4);
    auto resampled = view->Resources()->Item(0)->Image();
    EXPECT_EQ((std::vector<int>{resampled->Width(), resampled->Height()}),
              (std::vector<int>{6, 3}));
    EXPECT_EQ(Samples<Image8Grey>(resampled),
              (std::vector<int>{0, 0, 1, 1, 2, 2, 0, 0, 1, 1, 2, 2, 10, 10, 11, 11, 12, 12}));
}

TEST_F(ResourceImages, ColourAndDeepImagesAreCopiedByTheirLayout) {
    AddResource("color", 2, 2, 4, 0, PatternPixels(2, 2, 4, 9), 9);
    std::vector<unsigned short> const deep{1, 2, 300, 65535};
    EngineImage const deepImage{2, 2, 1, 0, deep.data(), 1, 4};
    testkelo_add_resource_image("deep", &deepImage);
    AddResource("odd", 2, 2, 1, 2, PatternPixels(2, 2, 1, 4), 4);

    auto resources =
        Run(Resource("color", "color") + Resource("deep", "deep") + Resource("odd", "odd"))
            ->Resources();
    auto color = std::dynamic_pointer_cast<Image24PlanarColor>(resources->Item(0)->Image());
    ASSERT_TRUE(color);
    std::shared_ptr<Tavrin::Vision::IImage8PixelMemory> planes[3];
    color->Get3PlanePixelMemory(ImageDataModeConstants_Read, 0, 0, 2, 2, planes[0], planes[1],
                                planes[2]);
    auto pel = [&](int plane, int x, int y) {
        return planes[plane]->FirstPel()[y * planes[plane]->Step() + x];
    };
    // Interleaved samples s0 s1 s2 s3 go to the third, second and first plane; s3 is dropped.
    EXPECT_EQ((std::vector<int>{pel(2, 1, 1), pel(1, 1, 1), pel(0, 1, 1)}),
              (std::vector<int>{11, 12, 13}));
    EXPECT_EQ(pel(2, 0, 1), 10);

    EXPECT_EQ(Samples<Image16Grey>(resources->Item(1)->Image()),
              (std::vector<int>{1, 2, 300, 65535}));
    EXPECT_EQ(resources->Item(2)->Image(), nullptr);
}

TEST_F(ResourceImages, NothingIsFetchedWithImageRecordsOff) {
    Tool("red-uuid")->setAddImageRecords(false);
    testkelo_clear_log();
    auto view = Run(Red(Resource("score_map", "map")) + Resource("overlay", "map"));
    EXPECT_EQ(view->Resources()->Count(), 0);
    EXPECT_EQ(view->ResultRed()->ResultResources()->Count(), 0);
    EXPECT_EQ(testkelo_call_count("kelo_resource_get_image"), 0);
}

TEST_F(ResourceImages, AnImageTheEngineCannotGiveIsEmpty) {
    auto image = Run(Resource("score_map", "unknown"))->Resources()->Item(0)->Image();
    ASSERT_TRUE(image);
    EXPECT_EQ((std::vector<int>{image->Width(), image->Height()}), (std::vector<int>{0, 0}));
}

TEST_F(ResourceImages, ABadScaleEndsTheRun) {
    EXPECT_EQ(VisionTest::MessageOf<std::invalid_argument>(
                  [&] { Run(Resource("overlay", "map", " scale=\"x\"")); }),
              "invalid stod argument");
}

} // namespace

} // namespace ResourceImagesTesting
