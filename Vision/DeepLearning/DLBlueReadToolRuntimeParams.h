#pragma once

#include <memory>
#include <string>

#include <Vision/Core/Vect2.h>
#include <Vision/DeepLearning/DLToolRuntimeParams.h>

namespace Tavrin::Vision::DeepLearning {

class DLBlueModelReadOnlyCollection;

// A blue tool of the engine type "blue_read": a blue tool without a sampling density. It owns the
// tool's models and applies them after its own parameters at each run.
class DLBlueReadToolRuntimeParams : public DLToolRuntimeParams {
public:
    static constexpr long long sf0_ = DLToolRuntimeParams::sfNextSf_;
    static constexpr long long SfThreshold = sf0_;
    static constexpr long long SfFeatureFilter = sf0_ << 1;
    static constexpr long long SfPrecision = sf0_ << 2;
    static constexpr long long SfFeatureSize = sf0_ << 3;
    static constexpr long long SfShowFeatures = sf0_ << 4;
    static constexpr long long SfShowModels = sf0_ << 5;
    static constexpr long long sfNextSf_ = sf0_ << 6;

    TAVRIN_SHARED_FROM_THIS(DLBlueReadToolRuntimeParams)

    double Threshold() const { return threshold_; }
    void setThreshold(double value);
    double MinimumThreshold() const;
    double MaximumThreshold() const;
    std::string FeatureFilter() const { return featureFilter_; }
    void setFeatureFilter(std::string const& value);
    double Precision() const { return precision_; }
    void setPrecision(double value);
    double MinimumPrecision() const;
    double MaximumPrecision() const;
    // The stored object itself. A run needs it set.
    Vect2Ptr FeatureSize() const { return featureSize_; }
    void setFeatureSize(Vect2Ptr value);
    bool ShowFeatures() const { return showFeatures_; }
    void setShowFeatures(bool value);
    bool ShowModels() const { return showModels_; }
    void setShowModels(bool value);
    std::shared_ptr<DLBlueModelReadOnlyCollection> Models() const { return models_; }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLToolRuntimeParams::DLToolRuntimeParams;
    DLBlueReadToolRuntimeParams() = default;

    static Private::ParameterTable<DLBlueReadToolRuntimeParams> const& Parameters();
    Private::ParameterSet<DLToolRuntimeParams> const& OwnParameters() const override;

    template <class Archive> void serialize(Archive& archive, unsigned int version);

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

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueReadToolRuntimeParams, 1)
