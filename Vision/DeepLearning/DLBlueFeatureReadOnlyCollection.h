#pragma once

#include <Vision/DeepLearning/DLBlueFeature.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLBlueFeatureReadOnlyCollection, DLBlueFeature,
                               std::vector<std::shared_ptr<DLBlueFeature>> const&)
