#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

// A green tool of the engine type "green_sua". A run sends the kept threshold text, which a
// setter fills with the value held before it, one step behind Threshold.
class DLHdmGreenToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfThreshold = sf0_;
    static constexpr long long SfShowGraphics = sf0_ << 1;
    static constexpr long long SfGenerateHeatmap = sf0_ << 2;
    static constexpr long long sfNextSf_ = sf0_ << 3;

    TAVRIN_SHARED_FROM_THIS(DLHdmGreenToolRuntimeParams)

    double Threshold() const { return threshold_; }
    void setThreshold(double value) {
        RaiseIf(Private::StoreLaggingThreshold(threshold_, value, thresholdText_), SfThreshold);
    }
    double MinimumThreshold() const { return ThresholdRange.minimum; }
    double MaximumThreshold() const { return ThresholdRange.maximum; }
    bool ShowGraphics() const { return showGraphics_; }
    void setShowGraphics(bool value) { StoreGraphicsSetting(showGraphics_, value, SfShowGraphics); }
    bool GenerateHeatmap() const { return generateHeatmap_; }
    void setGenerateHeatmap(bool value) { Store(generateHeatmap_, value, SfGenerateHeatmap); }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLHdmGreenToolRuntimeParams() = default;

    static OwnParameterSet const& Parameters();
    OwnParameterSet const& OwnParameters() const override { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLToolRuntimeParams>(
            archive, version, "DLHdmGreenToolRuntimeParams::serialize()", this, threshold_,
            thresholdText_, showGraphics_, generateHeatmap_);
    }

    double threshold_ = 0;
    std::string thresholdText_;
    bool showGraphics_ = true;
    bool generateHeatmap_ = false;

    RTTR_ENABLE(DLToolRuntimeParams)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLHdmGreenToolRuntimeParams, 1)
