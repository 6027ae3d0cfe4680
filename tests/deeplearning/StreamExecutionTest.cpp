#include <array>
#include <set>
#include <stdexcept>
#include <tuple>

#include <Vision/Core/Image16Grey.h>
#include <Vision/Core/Image24PlanarColor.h>
#include <Vision/Core/Image8Grey.h>
#include <Vision/Core/ImageBase.h>

#include "ResultTestSupport.h"
#include "VisionTestSupport.h"

namespace StreamExecutionTesting {

namespace {

using namespace Tavrin::Vision::DeepLearning;
using namespace ResultDocs;
using Tavrin::Brnt::CreateObject;
using Tavrin::Vision::IImage;
using Tavrin::Vision::Image16Grey;
using Tavrin::Vision::Image24PlanarColor;
using Tavrin::Vision::Image8Grey;

// An image class that the engine does not take.
class OtherImage : public Tavrin::Vision::Implementation::ImageBase {
public:
    explicit OtherImage(ObjectCreateAccessToken const&) {}
    int Width() const override { return 4; }
    int Height() const override { return 4; }
    std::shared_ptr<IImage> Copy(bool) const override { return nullptr; }
};

// Images, buffers and samples the engine holds beyond those held before.
using Outstanding = std::array<int, 3>;

Outstanding Held(Outstanding const& before = {}) {
    return {testkelo_count(TESTKELO_IMAGES) - before[0],
            testkelo_count(TESTKELO_BUFFERS) - before[1],
            testkelo_count(TESTKELO_SAMPLES) - before[2]};
}

// The entry points called, without their arguments, from the first kelo_init_image on, leaving
// out the parameter push.
std::vector<std::string> RunCalls() {
    std::vector<std::string> names;
    for (std::string const& call : WorkspaceFiles::CallsFrom("kelo_init_image"))
        if (call.rfind("kelo_runtime_tool_", 0) != 0)
            names.push_back(call.substr(0, call.find('(')));
    return names;
}

class StreamExecution : public ThreeKindsOperatorTest {
protected:
    void SetUp() override {
        ThreeKindsOperatorTest::SetUp();
        testkelo_set_result_document(ThreeKindsRunDocument().c_str());
        testkelo_clear_log();
    }

    std::shared_ptr<Image8Grey> image_ = CreateObject<Image8Grey>(64, 48);
};

TEST_F(StreamExecution, RunsEveryKindOfToolAndReleasesWhatItTook) {
    Outstanding const before = Held();
    auto result = op_->Execute(*image_);

    ASSERT_TRUE(result);
    EXPECT_EQ(result->ResultImage()->ResultMarking()->Count(), 3);

    EXPECT_EQ(RunCalls(),
              (std::vector<std::string>{
                  "kelo_init_image", "kelo_runtime_create_sample", "kelo_runtime_sample_add_image",
                  "kelo_runtime_sample_process", "kelo_init_buffer", "kelo_runtime_get_sample",
                  "kelo_runtime_free_sample", "kelo_free_image", "kelo_free_buffer"}));
    EXPECT_EQ(Held(), before);
    EXPECT_EQ(testkelo_count(TESTKELO_INVALID_HANDLES), 0);
}

TEST_F(StreamExecution, GreyImagesReachTheEngineInPlace) {
    op_->Execute(*image_);
    EngineImage sent = testkelo_last_sample_image();
    auto memory = image_->GetPixelMemory(Tavrin::Vision::ImageDataModeConstants_Read, 0, 0, 64, 48);
    EXPECT_EQ((std::vector<int>{sent.width, sent.height, sent.channels, sent.pixelType, sent.step}),
              (std::vector<int>{64, 48, 1, 0, memory->Step()}));
    EXPECT_EQ(sent.pixels, memory->FirstPel());

    auto deep = CreateObject<Image16Grey>(6, 4);
    op_->Execute(*deep);
    sent = testkelo_last_sample_image();
    EXPECT_EQ((std::vector<int>{sent.width, sent.height, sent.channels, sent.pixelType, sent.step}),
              (std::vector<int>{6, 4, 1, 1, 12}));
}

TEST_F(StreamExecution, ColourPlanesGoToTheEngineInReverseOrder) {
    auto color = CreateObject<Image24PlanarColor>(8, 2);
    std::shared_ptr<Tavrin::Vision::IImage8PixelMemory> planes[3];
    color->Get3PlanePixelMemory(Tavrin::Vision::ImageDataModeConstants_Read, 0, 0, 8, 2, planes[0],
                                planes[1], planes[2]);
    op_->Execute(*color);
    TestKeloCreatedImage const created = testkelo_last_created_image();
    EXPECT_EQ((std::vector<int>{created.width, created.height, created.step, created.format}),
              (std::vector<int>{8, 2, planes[2]->Step(), 0}));
    EXPECT_EQ((std::vector<void const*>{created.planes[0], created.planes[1], created.planes[2],
                                        created.reserved}),
              (std::vector<void const*>{planes[2]->FirstPel(), planes[1]->FirstPel(),
                                        planes[0]->FirstPel(), nullptr}));
}

TEST_F(StreamExecution, AnImageOfAnotherClassIsRefused) {
    auto other = CreateObject<OtherImage>();
    EXPECT_EQ(
        VisionTest::CodeAndMessageOf<Tavrin::Vision::ImageException>([&] { op_->Execute(*other); }),
        VisionTest::CodeAndMessage(18, Tavrin::Vision::Strings::E_TavImage_BadType));
    EXPECT_EQ(testkelo_call_count("kelo_runtime_create_sample"), 0);
}

// Each failing engine call of a run: its code and what stays held in the engine beyond what was
// held before. A failed run leaves its sample until the workspace closes.
TEST_F(StreamExecution, EachFailingStepReportsAndReleasesInItsOrder) {
    std::tuple<char const*, int, Outstanding> const rows[] = {
        {"kelo_init_image", 21, {0, 0, 0}},
        {"kelo_runtime_create_sample", 15, {0, 0, 0}},
        {"kelo_runtime_sample_add_image", 16, {0, 0, 1}},
        {"kelo_runtime_sample_process", 17, {0, 0, 1}},
        {"kelo_init_buffer", 2, {1, 0, 1}},
        {"kelo_runtime_get_sample", 18, {0, 0, 1}},
        {"kelo_free_buffer", 19, {0, 1, 0}},
    };
    for (auto const& [entryPoint, code, held] : rows) {
        SCOPED_TRACE(entryPoint);
        Outstanding const before = Held();
        testkelo_fail(entryPoint, 1, TESTKELO_REFUSED, "boom");
        try {
            op_->Execute(*image_);
            ADD_FAILURE() << "nothing thrown";
        } catch (DeepLearningException const& e) {
            EXPECT_EQ(e.Code(), code);
        }
        EXPECT_EQ(Held(before), held);
        EXPECT_TRUE(op_->Execute(*image_)) << "the lock and the engine are free again";
    }
}

TEST_F(StreamExecution, ADecodingFailureReachesTheCallerUnchanged) {
    Outstanding const before = Held();
    std::string const bad = Document(Marking(ThreeKindsRedView(), "red-uuid", "ms"));
    testkelo_set_result_document(bad.c_str());
    EXPECT_THROW(op_->Execute(*image_), std::invalid_argument);
    EXPECT_EQ(Held(before), (Outstanding{0, 0, 1}));
}

TEST_F(StreamExecution, AParameterRefusedBeforeTheRunMakesNoSample) {
    auto red = std::dynamic_pointer_cast<DLQuickRedToolRuntimeParams>(Tool("red-uuid"));
    red->setUpperThreshold(0.5);
    testkelo_fail("kelo_runtime_tool_set_parameter", 1, TESTKELO_REFUSED, "no");
    Outstanding const before = Held();
    EXPECT_THROW(op_->Execute(*image_), DeepLearningException);
    EXPECT_EQ(Held(), before);
    EXPECT_EQ(testkelo_call_count("kelo_runtime_create_sample"), 0);
}

TEST_F(StreamExecution, EachRunHasAFreshSample) {
    op_->Execute(*image_);
    op_->Execute(*image_);
    std::set<std::string> ids;
    for (std::string const& call : TestKelo::LoggedCalls())
        if (call.rfind("kelo_runtime_create_sample", 0) == 0)
            ids.insert(WorkspaceFiles::Arguments(call).at(2));
    ASSERT_EQ(ids.size(), 2u);
    EXPECT_EQ(ids.begin()->size(), 36u);
}

TEST_F(StreamExecution, ResultsComeInTheImagesSelectedSpace) {
    image_->CoordinateSpaceTree()->AddSpace("half", "#", *Linear(0.5, 0, 0, 0.5, 0, 0));
    image_->setSelectedSpaceName("half");
    auto center = FirstView(op_->Execute(*image_))->ResultRed()->ResultRegions()->Item(0)->Center();
    EXPECT_DOUBLE_EQ(center->X(), 5);
    EXPECT_DOUBLE_EQ(center->Y(), 10);
}

} // namespace

} // namespace StreamExecutionTesting
