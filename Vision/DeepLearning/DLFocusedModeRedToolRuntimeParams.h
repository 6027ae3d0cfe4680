#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

// A red tool of the engine type "red". It keeps both thresholds as numbers and composes their
// engine text at each run.
class DLFocusedModeRedToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfSamplingDensity = sf0_;
    static constexpr long long SfUpperThreshold = sf0_ << 1;
    static constexpr long long SfLowerThreshold = sf0_ << 2;
    static constexpr long long SfRegionFilter = sf0_ << 3;
    static constexpr long long SfIterations = sf0_ << 4;
    static constexpr long long SfShowGraphics = sf0_ << 5;
    static constexpr long long sfNextSf_ = sf0_ << 6;

    TAVRIN_SHARED_FROM_THIS(DLFocusedModeRedToolRuntimeParams)

    double SamplingDensity() const { return samplingDensity_; }
    void setSamplingDensity(double value) {
        Store(samplingDensity_, value, SamplingDensityRange, SfSamplingDensity);
    }
    double MinimumSamplingDensity() const { return SamplingDensityRange.minimum; }
    double MaximumSamplingDensity() const { return SamplingDensityRange.maximum; }
    double UpperThreshold() const { return upperThreshold_; }
    void setUpperThreshold(double value) { Store(upperThreshold_, value, SfUpperThreshold); }
    double LowerThreshold() const { return lowerThreshold_; }
    void setLowerThreshold(double value) { Store(lowerThreshold_, value, SfLowerThreshold); }
    std::string RegionFilter() const { return regionFilter_; }
    void setRegionFilter(std::string const& value) { Store(regionFilter_, value, SfRegionFilter); }
    unsigned int Iterations() const { return iterations_; }
    void setIterations(unsigned int value) { Store(iterations_, value, SfIterations); }
    bool ShowGraphics() const { return showGraphics_; }
    void setShowGraphics(bool value) { StoreGraphicsSetting(showGraphics_, value, SfShowGraphics); }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLFocusedModeRedToolRuntimeParams() = default;

    static OwnParameterSet const& Parameters();
    OwnParameterSet const& OwnParameters() const override { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLToolRuntimeParams>(
            archive, version, "DLFocusedModeRedToolRuntimeParams::serialize()", this,
            samplingDensity_, upperThreshold_, lowerThreshold_, regionFilter_, iterations_,
            showGraphics_);
    }

    double samplingDensity_ = 0;
    double upperThreshold_ = 0;
    double lowerThreshold_ = 0;
    std::string regionFilter_;
    unsigned int iterations_ = 0;
    bool showGraphics_ = true;

    RTTR_ENABLE(DLToolRuntimeParams)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLFocusedModeRedToolRuntimeParams, 1)
