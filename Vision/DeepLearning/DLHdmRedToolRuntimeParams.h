#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

// A red tool of the engine type "red_sua". Besides the two thresholds it keeps their engine
// text, which is what a run sends.
class DLHdmRedToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfUpperThreshold = sf0_;
    static constexpr long long SfLowerThreshold = sf0_ << 1;
    static constexpr long long SfRegionFilter = sf0_ << 2;
    static constexpr long long SfDownsamplingSize = sf0_ << 3;
    static constexpr long long SfShowGraphics = sf0_ << 4;
    static constexpr long long sfNextSf_ = sf0_ << 5;

    TAVRIN_SHARED_FROM_THIS(DLHdmRedToolRuntimeParams)

    double UpperThreshold() const { return upperThreshold_; }
    void setUpperThreshold(double value) {
        RaiseIf(
            Private::StoreUpperThreshold(lowerThreshold_, upperThreshold_, value, thresholdText_),
            SfUpperThreshold);
    }
    double LowerThreshold() const { return lowerThreshold_; }
    void setLowerThreshold(double value) {
        RaiseIf(
            Private::StoreLowerThreshold(lowerThreshold_, value, upperThreshold_, thresholdText_),
            SfLowerThreshold);
    }
    std::string RegionFilter() const { return regionFilter_; }
    void setRegionFilter(std::string const& value) { Store(regionFilter_, value, SfRegionFilter); }
    int DownsamplingSize() const { return downsamplingSize_; }
    void setDownsamplingSize(int value) { Store(downsamplingSize_, value, SfDownsamplingSize); }
    bool ShowGraphics() const { return showGraphics_; }
    void setShowGraphics(bool value) { StoreGraphicsSetting(showGraphics_, value, SfShowGraphics); }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLHdmRedToolRuntimeParams() = default;

    static OwnParameterSet const& Parameters();
    OwnParameterSet const& OwnParameters() const override { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLToolRuntimeParams>(
            archive, version, "DLHdmRedToolRuntimeParams::serialize()", this, upperThreshold_,
            lowerThreshold_, regionFilter_, downsamplingSize_, showGraphics_, thresholdText_);
    }

    double upperThreshold_ = 0;
    double lowerThreshold_ = 0;
    std::string regionFilter_;
    // As the engine last gave it or a setter last composed it.
    std::string thresholdText_;
    int downsamplingSize_ = 0;
    bool showGraphics_ = true;

    RTTR_ENABLE(DLToolRuntimeParams)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLHdmRedToolRuntimeParams, 1)
