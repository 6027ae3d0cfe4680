#include "Vision/DeepLearning/DLBlueNodeModel.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

void DLBlueNodeModel::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueNodeModel::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueNodeModel::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueNodeModel::setOccurrences(int value) {
    if (StoreIfChanged(occurrences_, value))
        OnChanged_(SfOccurrences);
}

// The threshold is sent first but listed last.
ParameterTable<DLBlueNodeModel> const& DLBlueNodeModel::Parameters() {
    using C = DLBlueNodeModel;
    static auto const table = MakeParameterTable<C>(
        ListedLast(Engine<RealText>("Threshold", ParameterPaths::ModelThreshold, &C::threshold_,
                                    &C::Threshold, &C::setThreshold)
                       .Bounded("MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                                &C::MaximumThreshold)),
        Engine<IntegerText<int>>("Occurrences", ParameterPaths::NodeOccurrences, &C::occurrences_,
                                 &C::Occurrences, &C::setOccurrences));
    return table;
}

ParameterSet<DLBlueModel> const& DLBlueNodeModel::OwnParameters() const {
    return Parameters();
}

template <class Archive> void DLBlueNodeModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1, "DLBlueNodeModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this), threshold_, occurrences_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueNodeModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueNodeModel,
                               "Tavrin::Vision::DeepLearning::DLBlueNodeModel")
