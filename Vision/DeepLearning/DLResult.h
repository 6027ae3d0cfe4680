#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Record.h>
#include <Vision/DeepLearning/DLResultMarkingsCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

class DLToolRuntimeParams;
class DLRuntimeTool;

// The root of what one run of a stream produced. Immutable and shares nothing with the engine,
// so it outlives the sample, the workspace and the engine itself. As the constructor of a run's
// overlay record it draws its graphics when a host first reads them.
class DLResult : public virtual ShareableBase, public IRecordConstructor {
public:
    TAVRIN_SHARED_FROM_THIS(DLResult)

    void ConstructAnnotation(Record&, int) override {}
    // Stores every graphic of the run as the record's content; reads the result only.
    void ConstructContent(Record& record, int) override;
    void ConstructSubRecords(Record&, int) override {}

    // Null after an archive load until the result is tied to live tools again.
    std::shared_ptr<DLToolRuntimeParams> Tool() const { return tool_; }
    std::shared_ptr<DLResultMarkingsCollection> ResultImage() const { return resultImage_; }

private:
    TAVRIN_DL_RESULT_ACCESS
    friend class DLRuntimeTool;

    DLResult() = default;
    // The tool must not be null: its id is kept so that the link survives the archive.
    DLResult(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
             std::shared_ptr<DLResultMarkingsCollection> resultImage);

    std::shared_ptr<DLToolRuntimeParams> tool_;
    std::shared_ptr<DLResultMarkingsCollection> resultImage_;
    std::string toolId_;

    RTTR_ENABLE(ShareableBase, IRecordConstructor)
};

using DLResultPtr = std::shared_ptr<DLResult>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResult, 1)
