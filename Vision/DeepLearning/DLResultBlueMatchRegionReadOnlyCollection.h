#pragma once

#include <Vision/DeepLearning/DLResultBlueMatchRegion.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultBlueMatchRegionReadOnlyCollection, DLResultBlueMatchRegion,
                               std::vector<std::shared_ptr<DLResultBlueMatchRegion>>)
