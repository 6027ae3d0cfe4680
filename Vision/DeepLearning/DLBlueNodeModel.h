#pragma once

#include <memory>
#include <string>

#include <Vision/DeepLearning/DLBlueModel.h>

namespace Tavrin::Vision::DeepLearning {

// A blue model of the catalogue type "node".
class DLBlueNodeModel : public DLBlueModel {
public:
    static constexpr long long sf0_ = DLBlueModel::sfNextSf_;
    static constexpr long long SfThreshold = sf0_;
    static constexpr long long SfOccurrences = sf0_ << 1;
    static constexpr long long sfNextSf_ = sf0_ << 2;

    TAVRIN_SHARED_FROM_THIS(DLBlueNodeModel)

    double Threshold() const { return threshold_; }
    void setThreshold(double value) { Store(threshold_, value, ThresholdRange, SfThreshold); }
    double MinimumThreshold() const { return ThresholdRange.minimum; }
    double MaximumThreshold() const { return ThresholdRange.maximum; }
    int Occurrences() const { return occurrences_; }
    void setOccurrences(int value) { Store(occurrences_, value, SfOccurrences); }

private:
    TAVRIN_OBJECT_FACTORY_ACCESS
    friend class Private::DeepLearningAccess;
    friend class cereal::access;
    friend struct Private::ParameterTables;

    using DLBlueModel::DLBlueModel;
    DLBlueNodeModel() = default;

    static OwnParameterSet const& Parameters();
    OwnParameterSet const& OwnParameters() const override { return Parameters(); }

    template <class Archive> void serialize(Archive& archive, unsigned int version) {
        Private::ArchiveBelowRoot<DLBlueModel>(archive, version, "DLBlueNodeModel::serialize()",
                                               this, threshold_, occurrences_);
    }

    double threshold_ = 0;
    int occurrences_ = 0;

    RTTR_ENABLE(DLBlueModel)
};

} // namespace Tavrin::Vision::DeepLearning

TAVRIN_ARCHIVED_CLASS(Tavrin::Vision::DeepLearning::DLBlueNodeModel, 1)
