#pragma once

#include <string>

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

inline std::string Resource(std::string const& name, std::string const& uuid,
                            std::string const& extra = "") {
    return "<resource name=\"" + name + "\" type=\"image\" uuid=\"" + uuid + "\"" + extra + "/>";
}

} // namespace ResultDocs

// The first view of the first marking.
inline Tavrin::Vision::DeepLearning::DLResultViewPtr
FirstView(Tavrin::Vision::DeepLearning::DLResultPtr const& result) {
    return result->ResultImage()->ResultMarking()->Item(0)->ResultViews()->Item(0);
}

inline Tavrin::Vision::Transform2DLinearPtr Linear(double a, double b, double c, double d,
                                                   double tx, double ty) {
    return Tavrin::Brnt::CreateObject<Tavrin::Vision::Transform2DLinear>(a, b, c, d, tx, ty);
}

// An operator on a workspace of one stream with a red, a green and a blue tool.
class ThreeKindsOperatorTest : public EngineTest {
protected:
    static constexpr char const* File = "/workspaces/kinds.kelo";

    void SetUp() override {
        EngineTest::SetUp();
        WorkspaceFiles::AddThreeKindsFile(File);
        op_ = Tavrin::Brnt::CreateObject<Tavrin::Vision::DeepLearning::DLOperator>();
        op_->LoadWorkspace(File);
    }
    // The last clone closes the engine workspace, which must happen before the engine forgets it.
    void TearDown() override {
        op_.reset();
        EngineTest::TearDown();
    }

    Tavrin::Vision::DeepLearning::DLToolRuntimeParamsPtr Tool(char const* id) {
        return Tavrin::Vision::DeepLearning::Private::DeepLearningAccess::FindTool(
            *op_->Workspace(), id);
    }

    std::shared_ptr<Tavrin::Vision::DeepLearning::DLOperator> op_;
};
