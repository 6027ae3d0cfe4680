#include "Vision/DeepLearning/DLBlueStringModel.h"

#include <Vision/Core/Exceptions.h>

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

void DLBlueStringModel::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueStringModel::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueStringModel::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueStringModel::setMinimumLength(int value) {
    if (value < 0)
        throw ArgumentException("MinimumLength must be non-negative");
    if (StoreIfChanged(minimumLength_, value))
        OnChanged_(SfMinimumLength);
}

// The threshold is sent first but listed last.
ParameterTable<DLBlueStringModel> const& DLBlueStringModel::Parameters() {
    using C = DLBlueStringModel;
    static auto const table = MakeParameterTable<C>(
        ListedLast(Engine<RealText>("Threshold", ParameterPaths::ModelThreshold, &C::threshold_,
                                    &C::Threshold, &C::setThreshold)
                       .Bounded("MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                                &C::MaximumThreshold)),
        Engine<IntegerText<int>>("MinimumLength", ParameterPaths::StringMinimumLength,
                                 &C::minimumLength_, &C::MinimumLength, &C::setMinimumLength));
    return table;
}

ParameterSet<DLBlueModel> const& DLBlueStringModel::OwnParameters() const {
    return Parameters();
}

template <class Archive> void DLBlueStringModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueStringModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this), threshold_, minimumLength_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueStringModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueStringModel,
                               "Tavrin::Vision::DeepLearning::DLBlueStringModel")
