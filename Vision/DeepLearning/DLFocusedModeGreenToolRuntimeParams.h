#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

// A green tool of the engine type "green".
class DLFocusedModeGreenToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfSamplingDensity = sf0_;
    static constexpr long long SfThreshold = sf0_ << 1;
    static constexpr long long SfShowGraphics = sf0_ << 2;
    static constexpr long long sfNextSf_ = sf0_ << 3;

    TAVRIN_SHARED_FROM_THIS(DLFocusedModeGreenToolRuntimeParams)

    double SamplingDensity() const { return samplingDensity_; }
    void setSamplingDensity(double value) {
        Store(samplingDensity_, value, SamplingDensityRange, SfSamplingDensity);
    }
    double MinimumSamplingDensity() const { return SamplingDensityRange.minimum; }
    double MaximumSamplingDensity() const { return SamplingDensityRange.maximum; }
    double Threshold() const { return threshold_; }
    void setThreshold(double value) { Store(threshold_, value, ThresholdRange, SfThreshold); }
    double MinimumThreshold() const { return ThresholdRange.minimum; }
    double MaximumThreshold() const { return ThresholdRange.maximum; }
    bool ShowGraphics() const { return showGraphics_; }
    void setShowGraphics(bool value) { StoreGraphicsSetting(showGraphics_, value, SfShowGraphics); }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLFocusedModeGreenToolRuntimeParams() = default;

    static OwnParameterSet const& Parameters();
    OwnParameterSet const& OwnParameters() const override { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLToolRuntimeParams>(
            archive, version, "DLFocusedModeGreenToolRuntimeParams::serialize()", this,
            samplingDensity_, threshold_, showGraphics_);
    }

    double samplingDensity_ = 0;
    double threshold_ = 0;
    bool showGraphics_ = true;

    RTTR_ENABLE(DLToolRuntimeParams)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLFocusedModeGreenToolRuntimeParams, 1)
