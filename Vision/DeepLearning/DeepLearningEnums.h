#pragma once

namespace Tavrin::Vision::DeepLearning {

// Which line of a blue label's feature metrics an object holds. Numbers are fixed by archives.
enum class DLResultFeatureMetricsType : int {
    Features = 0,
    Avg = 1,
    Total = 2,
};

} // namespace Tavrin::Vision::DeepLearning

namespace Tavrin::Vision::DeepLearning {

// What a runtime tool keeps of its input for the last-run record; the values are bits, and All
// sets every bit, the unnamed ones included.
enum class DLLastRunRecordConstants : int {
    All = -1,
    InputImageDeepCopy = 2,
    InputImageByReference = 1,
    None = 0,
};

} // namespace Tavrin::Vision::DeepLearning
