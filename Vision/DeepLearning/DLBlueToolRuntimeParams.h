#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Vect2.h>
#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

class DLBlueModelReadOnlyCollection;

// A blue tool of the engine type "blue". It owns the tool's models and applies them after its
// own parameters at each run.
class DLBlueToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfSamplingDensity = sf0_;
    static constexpr long long SfThreshold = sf0_ << 1;
    static constexpr long long SfFeatureFilter = sf0_ << 2;
    static constexpr long long SfPrecision = sf0_ << 3;
    static constexpr long long SfFeatureSize = sf0_ << 4;
    static constexpr long long SfShowFeatures = sf0_ << 5;
    static constexpr long long SfShowModels = sf0_ << 6;
    static constexpr long long sfNextSf_ = sf0_ << 7;

    TAVRIN_SHARED_FROM_THIS(DLBlueToolRuntimeParams)

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
    std::string FeatureFilter() const { return featureFilter_; }
    void setFeatureFilter(std::string const& value) {
        Store(featureFilter_, value, SfFeatureFilter);
    }
    double Precision() const { return precision_; }
    void setPrecision(double value) { Store(precision_, value, PrecisionRange, SfPrecision); }
    double MinimumPrecision() const { return PrecisionRange.minimum; }
    double MaximumPrecision() const { return PrecisionRange.maximum; }
    // The stored object itself. A run needs it set.
    Vect2Ptr FeatureSize() const { return featureSize_; }
    void setFeatureSize(Vect2Ptr value) {
        RaiseIf(Private::StoreFeatureSize(featureSize_, std::move(value)), SfFeatureSize);
    }
    bool ShowFeatures() const { return showFeatures_; }
    void setShowFeatures(bool value) { StoreGraphicsSetting(showFeatures_, value, SfShowFeatures); }
    bool ShowModels() const { return showModels_; }
    void setShowModels(bool value) { StoreGraphicsSetting(showModels_, value, SfShowModels); }
    std::shared_ptr<DLBlueModelReadOnlyCollection> Models() const { return models_; }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLBlueToolRuntimeParams() = default;

    static OwnParameterSet const& Parameters();
    OwnParameterSet const& OwnParameters() const override { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLToolRuntimeParams>(
            archive, version, "DLBlueToolRuntimeParams::serialize()", this, samplingDensity_,
            threshold_, featureFilter_, precision_, featureSize_, models_, showFeatures_,
            showModels_);
        if constexpr (Archive::is_loading::value)
            AdoptModels();
    }
    // Loaded models learn their tool only once it is whole.
    void AdoptModels();

    double samplingDensity_ = 0;
    double threshold_ = 0;
    std::string featureFilter_;
    double precision_ = 0;
    Vect2Ptr featureSize_;
    std::shared_ptr<DLBlueModelReadOnlyCollection> models_;
    bool showFeatures_ = true;
    bool showModels_ = true;

    RTTR_ENABLE(DLToolRuntimeParams)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueToolRuntimeParams, 1)
