#include <Vision/Core/Image.h>
#include <Vision/Core/ToolBase.h>
#include <Vision/DeepLearning/DeepLearning.h>

#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

using Vision::Implementation::ITrackingCollectionTrackedItem;
using Vision::Implementation::ToolBase;
using Vision::Implementation::TrackedItemBase;

// Through the factory, so that a tool made by name is owned by a shared pointer before its
// FinalConstruct runs.
std::shared_ptr<DLRuntimeTool> CreateRuntimeTool() {
    return Brnt::CreateObject<DLRuntimeTool>();
}

void RegisterRuntimeTool() {
    using C = DLRuntimeTool;
    auto declared = DeclarePublicClass<C>("DLRuntimeTool");
    declared.property_readonly("Results", &C::Results)
        .property_readonly("RedToolResults", &C::RedToolResults)
        .property_readonly("GreenToolResults", &C::GreenToolResults)
        .property_readonly("BlueToolResults", &C::BlueToolResults)
        .property_readonly("DeepLearningOperator", &C::DeepLearningOperator)
        .property("InputImage", &C::InputImage, &C::setInputImage)
        .property("LastRunRecordDiagEnable", &C::LastRunRecordDiagEnable,
                  &C::setLastRunRecordDiagEnable);
    ChainFlagConstants(declared, {{"SfInputImage", &C::SfInputImage},
                                  {"SfResults", &C::SfResults},
                                  {"SfRedToolResults", &C::SfRedToolResults},
                                  {"SfGreenToolResults", &C::SfGreenToolResults},
                                  {"SfBlueToolResults", &C::SfBlueToolResults},
                                  {"SfLastRunRecordDiagEnable", &C::SfLastRunRecordDiagEnable}});
    declared.method("LoadWorkspace", &C::LoadWorkspace)(rttr::parameter_names("path"));
    declared.constructor(&CreateRuntimeTool);
    RegisterConverters<C>(
        TypeList<ToolBase, TrackedItemBase, ITool, ChangedEventShareableBase,
                 ITrackingCollectionTrackedItem, ShareableBase, IChangedEvent, Brnt::IObject>{});
}

void RegisterOperator() {
    using C = DLOperator;
    auto declared = DeclarePublicClass<C>("DLOperator");
    declared.property("Stream", &C::Stream, &C::setStream)
        .property("Workspace", &C::Workspace, &C::setWorkspace);
    ChainFlagConstants(declared, {{"SfStream", &C::SfStream},
                                  {"SfWorkspace", &C::SfWorkspace},
                                  {"SfToolsGraphicsChanged", &C::SfToolsGraphicsChanged}});
    declared.method("LoadWorkspace", &C::LoadWorkspace)(rttr::parameter_names("workspacePath"))
        .method("Execute", &C::Execute)(rttr::parameter_names("image"));
    RegisterConverters<C>(ChangedEventBases{});
}

// Its out-of-date flag stays unregistered: a host learns of it from the change event alone.
void RegisterWorkspace() {
    using C = DLWorkspace;
    DeclarePublicClass<C>("DLWorkspace")
        .property_readonly("Streams", &C::Streams)
        .property_readonly("Name", &C::Name)
        .property_readonly("SourceFile", &C::SourceFile);
    RegisterConverters<C>(ChangedEventBases{});
}

void RegisterStream() {
    using C = DLStream;
    auto declared = DeclarePublicClass<C>("DLStream");
    declared.property_readonly("Name", &C::Name)
        .property_readonly("Tools", &C::Tools)
        .property_readonly("ParentWorkspace", &C::ParentWorkspace)
        .property_readonly("UUID", &C::UUID);
    ChainFlagConstants(declared, {{"SfToolsGraphicsChanged", &C::SfToolsGraphicsChanged}});
    RegisterConverters<C>(ChangedEventBases{});
}

} // namespace
} // namespace Tavrin::Vision::DeepLearning::Reflection

TAVRIN_REGISTRATION(RunSurfaceReflection) {
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    RegisterRuntimeTool();
    RegisterOperator();
    RegisterWorkspace();
    RegisterStream();
}
