#pragma once

namespace Tavrin::Vision::DeepLearning {

// Which line of a blue label's feature metrics an object holds. Numbers are fixed by archives.
enum class DLResultFeatureMetricsType : int {
    Features = 0,
    Avg = 1,
    Total = 2,
};

} // namespace Tavrin::Vision::DeepLearning
