#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

// A red tool of the engine type "red_quick". Besides the two thresholds it keeps their engine
// text, which is what a run sends.
class DLQuickRedToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfUpperThreshold = sf0_;
    static constexpr long long SfLowerThreshold = sf0_ << 1;
    static constexpr long long SfRegionFilter = sf0_ << 2;
    static constexpr long long SfShowGraphics = sf0_ << 3;
    static constexpr long long sfNextSf_ = sf0_ << 4;

    TAVRIN_SHARED_FROM_THIS(DLQuickRedToolRuntimeParams)

    double UpperThreshold() const { return upperThreshold_; }
    void setUpperThreshold(double value);
    double LowerThreshold() const { return lowerThreshold_; }
    void setLowerThreshold(double value);
    std::string RegionFilter() const { return regionFilter_; }
    void setRegionFilter(std::string const& value);
    bool ShowGraphics() const { return showGraphics_; }
    void setShowGraphics(bool value);

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLQuickRedToolRuntimeParams() = default;

    static Private::ParameterTable<DLQuickRedToolRuntimeParams> const& Parameters();
    Private::ParameterSet<DLToolRuntimeParams> const& OwnParameters() const override;

    template <class Archive> void serialize(Archive& archive, unsigned int version);

    double upperThreshold_ = 0;
    double lowerThreshold_ = 0;
    std::string regionFilter_;
    // As the engine last gave it or a setter last composed it.
    std::string thresholdText_;
    bool showGraphics_ = true;

    RTTR_ENABLE(DLToolRuntimeParams)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLQuickRedToolRuntimeParams, 1)
