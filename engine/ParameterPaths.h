#pragma once

// Where the engine keeps each runtime parameter of a tool or model, by path in its parameter
// tree; one list, since sibling tool kinds share paths.
namespace Tavrin::Vision::DeepLearning::Private::ParameterPaths {

inline constexpr char RedThreshold[] = "post_process_parameters/red/threshold";
inline constexpr char RedRegionFilter[] = "post_process_parameters/red/region_filter";
inline constexpr char RedDownsamplingSize[] = "runtime_parameters/max_downsampling_size";
inline constexpr char GreenThreshold[] = "post_process_parameters/green/threshold";
inline constexpr char GreenHeatmap[] = "runtime_parameters/heat_map_on";
// Every tool that samples, blue or focused, keeps its density here.
inline constexpr char SamplingDensity[] = "processing/sampling_density";

inline constexpr char FocusedRedThreshold[] = "post_processing/red/threshold";
inline constexpr char FocusedRedRegionFilter[] = "post_processing/red/region_filter";
inline constexpr char FocusedRedIterations[] = "processing/red/sampling_iterations";
inline constexpr char FocusedGreenThreshold[] = "post_processing/green/threshold";

inline constexpr char ModelEnable[] = "enabled";
inline constexpr char ModelThreshold[] = "threshold";
inline constexpr char NodeOccurrences[] = "occurrences";
inline constexpr char RegexExpression[] = "regex/regex";
inline constexpr char StringMinimumLength[] = "string/min_string_length";

} // namespace Tavrin::Vision::DeepLearning::Private::ParameterPaths
