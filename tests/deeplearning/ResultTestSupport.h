#pragma once

#include <string>
#include <vector>

#include <Vision/Core/GraphicCollection.h>
#include <Vision/Core/Image8Grey.h>
#include <Vision/Core/RectangleAffine.h>
#include <Vision/Core/Transform2D.h>

#include "EngineTest.h"
#include "Vision/DeepLearning/DeepLearning.h"
#include "WorkspaceFiles.h"

// Result documents as the engine writes them, built from their parts.
namespace ResultDocs {

inline std::string Document(std::string const& markings, std::string const& tool = "red-uuid") {
    return "<result><tool uuid=\"" + tool + "\"/><image>" + markings + "</image></result>";
}

inline std::string Marking(std::string const& content, std::string const& tool = "red-uuid",
                           std::string const& duration = "31.5") {
    return "<marking tool_uuid=\"" + tool + "\" duration=\"" + duration +
           "\" duration_process_only=\"28.25\" duration_post_process=\"1.5\" "
           "processed=\"2024-05-01T10:00\" processed_device=\"gpu0\">" +
           content + "</marking>";
}

inline std::string View(std::string const& content, std::string const& pose = "1,0,0,1,0,0",
                        std::string const& size = "100x50") {
    return "<view size=\"" + size + "\" ref_pose=\"1,0,0,1,0,0\" pose=\"" + pose +
           "\" group=\"g1\">" + content + "</view>";
}

inline std::string Red(std::string const& content, std::string const& extra = "") {
    return "<red score=\"0.8\" filtered_score=\"0.75\" threshold=\"[0.1,0.9]\"" + extra +
           "><score score=\"0.6\" name=\"overall\"/>" + content + "</red>";
}

// A red region of score 0.9, area 4 and perimeter 8.
inline std::string Region(std::string const& center, std::string const& points) {
    return "<region score=\"0.9\" name=\"r0\" area=\"4\" perimeter=\"8\" center=\"" + center +
           "\" covers=\"\" coverage=\"\" points=\"" + points + "\"/>";
}

inline std::string Resource(std::string const& name, std::string const& uuid,
                            std::string const& extra = "") {
    return "<resource name=\"" + name + "\" type=\"image\" uuid=\"" + uuid + "\"" + extra + "/>";
}

// A red view of one region with two points.
inline std::string ThreeKindsRedView() {
    return View(Red(Region("10,20", "8,18 12,22")));
}

// A run of the three-kinds stream: a marking for each of its tools.
inline std::string ThreeKindsRunDocument() {
    return Document(Marking(ThreeKindsRedView()) +
                    Marking(View("<green threshold=\"0.5\" uncertainty=\"0\"><tag name=\"ok\" "
                                 "score=\"0.7\"/></green>"),
                            "green-uuid") +
                    Marking(View("<blue_read><feat id=\"f\" loc=\"1,1\" angle=\"0\" "
                                 "size=\"2x2\" score=\"1\" covers=\"\"/></blue_read>"),
                            "blue-uuid"));
}

} // namespace ResultDocs

namespace DL = Tavrin::Vision::DeepLearning;

// An engine image of one byte per sample whose sample at (x, y) is x + 10 y, rows step bytes
// apart.
inline std::vector<unsigned char> PatternPixels(int width, int height, int channels, int step) {
    std::vector<unsigned char> pixels(static_cast<std::size_t>(step) * height, 0xEE);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width * channels; ++x)
            pixels[y * step + x] = static_cast<unsigned char>(x / channels + 10 * y + x % channels);
    return pixels;
}

inline void AddResource(char const* uuid, int width, int height, int channels, int pixelType,
                        std::vector<unsigned char> const& pixels, int step) {
    EngineImage const image{width, height, channels, 0, pixels.data(), pixelType, step};
    testkelo_add_resource_image(uuid, &image);
}

// The first view of the first marking.
inline DL::DLResultViewPtr FirstView(DL::DLResultPtr const& result) {
    return result->ResultImage()->ResultMarking()->Item(0)->ResultViews()->Item(0);
}

inline Tavrin::Vision::Transform2DLinearPtr Linear(double a, double b, double c, double d,
                                                   double tx, double ty) {
    return Tavrin::Brnt::CreateObject<Tavrin::Vision::Transform2DLinear>(a, b, c, d, tx, ty);
}

// The overlay that a last-run record draws over its input image.
inline std::shared_ptr<Tavrin::Vision::GraphicCollection>
LastRunOverlay(Tavrin::Vision::RecordPtr const& lastRun) {
    auto const overlay = lastRun->SubRecords()->ItemByKey("InputImage")->SubRecords()->Item(0);
    return overlay->Content().get_value<std::shared_ptr<Tavrin::Vision::GraphicCollection>>();
}

// An operator on a workspace of one stream with a red, a green and a blue tool.
class ThreeKindsOperatorTest : public EngineTest {
protected:
    static constexpr char const* File = "/workspaces/kinds.kelo";

    void SetUp() override {
        EngineTest::SetUp();
        WorkspaceFiles::AddThreeKindsFile(File);
        op_ = Tavrin::Brnt::CreateObject<DL::DLOperator>();
        op_->LoadWorkspace(File);
    }
    // The last clone closes the engine workspace, which must happen before the engine forgets it.
    void TearDown() override {
        op_.reset();
        EngineTest::TearDown();
    }

    DL::DLToolRuntimeParamsPtr Tool(char const* id) {
        return DL::Private::DeepLearningAccess::FindTool(*op_->Workspace(), id);
    }
    // The result that the stream decodes from an engine document.
    DL::DLResultPtr
    Decode(std::string const& document,
           Tavrin::Vision::Transform2DLinearPtr const& transform = Linear(1, 0, 0, 1, 0, 0)) {
        return DL::Private::DeepLearningAccessTestPeer::ParseResultKeloXml(
            *op_->Workspace()->Streams()->Item(0), document.c_str(), transform);
    }

    std::shared_ptr<DL::DLOperator> op_;
};

// A runtime tool on the three-kinds workspace, beside the fixture's operator, with the engine
// scripted to answer the three-kinds run.
class ThreeKindsRuntimeToolTest : public ThreeKindsOperatorTest {
protected:
    void SetUp() override {
        ThreeKindsOperatorTest::SetUp();
        testkelo_set_result_document(ResultDocs::ThreeKindsRunDocument().c_str());
        tool_ = Tavrin::Brnt::CreateObject<DL::DLRuntimeTool>();
        tool_->LoadWorkspace(File);
        tool_->setInputImage(image_);
    }
    void TearDown() override {
        tool_.reset();
        ThreeKindsOperatorTest::TearDown();
    }

public:
    // A tool of the runtime tool's own workspace clone.
    DL::DLToolRuntimeParamsPtr LiveTool(char const* id) {
        return DL::Private::DeepLearningAccess::FindTool(
            *tool_->DeepLearningOperator()->Workspace(), id);
    }

protected:
    std::shared_ptr<Tavrin::Vision::Image8Grey> image_ =
        Tavrin::Brnt::CreateObject<Tavrin::Vision::Image8Grey>(64, 48);
    std::shared_ptr<DL::DLRuntimeTool> tool_;
};
