#pragma once

#include <memory>
#include <string>

// What the two blue tool classes share beyond the parameter text rules: their engine paths,
// the feature size and the walks over their models.
namespace Tavrin::Vision {
class Vect2;
}

namespace Tavrin::Vision::DeepLearning {
class DLBlueModelReadOnlyCollection;
class DLToolRuntimeParams;
} // namespace Tavrin::Vision::DeepLearning

namespace Tavrin::Vision::DeepLearning::Private {

namespace BluePaths {
inline constexpr char const* Threshold = "processing/blue/threshold";
inline constexpr char const* FeatureFilter = "post_processing/blue/feature_filter";
inline constexpr char const* Precision = "processing/blue/precision";
inline constexpr char const* FeatureSize = "sampling/feature_size";
} // namespace BluePaths

// The delimiter of the feature size text, "<x>x<y>".
inline constexpr char const* FeatureSizeDelimiter = "x";
std::string FormatFeatureSize(Vect2 const& size);

// Gives each model the tool as its parent, after a load; a null collection is left alone.
void AttachModels(DLBlueModelReadOnlyCollection const* models,
                  std::shared_ptr<DLToolRuntimeParams> const& tool);
// Applies each model in order; the first failure stops the walk.
void ApplyModels(DLBlueModelReadOnlyCollection const* models);

} // namespace Tavrin::Vision::DeepLearning::Private
