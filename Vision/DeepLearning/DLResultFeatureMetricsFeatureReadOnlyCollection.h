#pragma once

#include <Vision/DeepLearning/DLResultFeatureMetricsFeature.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultFeatureMetricsFeatureReadOnlyCollection,
                               DLResultFeatureMetricsFeature,
                               std::vector<std::shared_ptr<DLResultFeatureMetricsFeature>>)
