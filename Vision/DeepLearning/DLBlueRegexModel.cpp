#include "Vision/DeepLearning/DLBlueRegexModel.h"

#include "engine/ParameterPaths.h"
#include "engine/ParameterTable.h"

namespace Tavrin::Vision::DeepLearning {

using namespace Private;

void DLBlueRegexModel::setThreshold(double value) {
    if (StoreInRange(threshold_, value, ThresholdRange))
        OnChanged_(SfThreshold);
}

double DLBlueRegexModel::MinimumThreshold() const {
    return ThresholdRange.minimum;
}

double DLBlueRegexModel::MaximumThreshold() const {
    return ThresholdRange.maximum;
}

void DLBlueRegexModel::setRegexExpression(std::string value) {
    if (StoreIfChanged(regexExpression_, std::move(value)))
        OnChanged_(SfRegexExpression);
}

// The threshold is sent first but listed last.
ParameterTable<DLBlueRegexModel> const& DLBlueRegexModel::Parameters() {
    using C = DLBlueRegexModel;
    static auto const table = MakeParameterTable<C>(
        ListedLast(Engine<RealText>("Threshold", ParameterPaths::ModelThreshold, &C::threshold_,
                                    &C::Threshold, &C::setThreshold)
                       .Bounded("MinimumThreshold", &C::MinimumThreshold, "MaximumThreshold",
                                &C::MaximumThreshold)),
        Engine<PlainText>("RegexExpression", ParameterPaths::RegexExpression, &C::regexExpression_,
                          &C::RegexExpression, &C::setRegexExpression));
    return table;
}

ParameterSet<DLBlueModel> const& DLBlueRegexModel::OwnParameters() const {
    return Parameters();
}

template <class Archive> void DLBlueRegexModel::serialize(Archive& archive, unsigned int version) {
    Vision::Implementation::CheckLoadedVersion<Archive>(version, 1,
                                                        "DLBlueRegexModel::serialize()");
    archive(cereal::base_class<DLBlueModel>(this), threshold_, regexExpression_);
}

TAVRIN_INSTANTIATE_SERIALIZE(DLBlueRegexModel)

} // namespace Tavrin::Vision::DeepLearning

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueRegexModel,
                               "Tavrin::Vision::DeepLearning::DLBlueRegexModel")
