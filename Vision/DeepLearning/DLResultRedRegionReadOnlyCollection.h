#pragma once

#include <Vision/DeepLearning/DLResultRedRegion.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultRedRegionReadOnlyCollection, DLResultRedRegion,
                               std::vector<std::shared_ptr<DLResultRedRegion>>)
