#pragma once

#include <Vision/DeepLearning/DLResultGreen.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultGreenReadOnlyCollection, DLResultGreen,
                               std::vector<std::shared_ptr<DLResultGreen>>)
