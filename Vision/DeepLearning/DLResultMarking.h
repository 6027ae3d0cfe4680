#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLResultImageInfo.h>
#include <Vision/DeepLearning/DLResultViewReadOnlyCollection.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

namespace Tavrin::Vision::DeepLearning {

class DLToolRuntimeParams;
class DLRuntimeTool;

// What one tool of the stream made of the image: timings, the engine's image information and
// its views. Durations are in the engine's units.
class DLResultMarking : public virtual ShareableBase {
public:
    TAVRIN_SHARED_FROM_THIS(DLResultMarking)

    double Duration() const { return duration_; }
    double DurationProcessOnly() const { return durationProcessOnly_; }
    double DurationPostProcess() const { return durationPostProcess_; }
    std::string ProcessedDevice() const { return processedDevice_; }
    std::string ProcessedAt() const { return processedAt_; }
    // Null after an archive load until the result is tied to live tools again.
    std::shared_ptr<DLToolRuntimeParams> Tool() const { return tool_; }
    // Null when the engine sent no image information.
    std::shared_ptr<DLResultImageInfo> ImageInfo() const { return imageInfo_; }
    std::shared_ptr<DLResultViewReadOnlyCollection> ResultViews() const { return views_; }

private:
    TAVRIN_DL_RESULT_ACCESS
    friend class DLRuntimeTool;

    DLResultMarking() = default;
    // The tool must not be null: its id is kept so that the link survives the archive.
    DLResultMarking(ObjectCreateAccessToken const&, std::shared_ptr<DLToolRuntimeParams> tool,
                    std::string processedAt, std::string processedDevice, double duration,
                    double durationProcessOnly, double durationPostProcess,
                    std::shared_ptr<DLResultImageInfo> imageInfo,
                    std::shared_ptr<DLResultViewReadOnlyCollection> views);

    double durationPostProcess_ = 0;
    double durationProcessOnly_ = 0;
    double duration_ = 0;
    std::string processedDevice_;
    std::string processedAt_;
    std::shared_ptr<DLToolRuntimeParams> tool_;
    std::shared_ptr<DLResultImageInfo> imageInfo_;
    std::shared_ptr<DLResultViewReadOnlyCollection> views_;
    std::string toolId_;

    RTTR_ENABLE(ShareableBase)
};

using DLResultMarkingPtr = std::shared_ptr<DLResultMarking>;

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLResultMarking, 1)
