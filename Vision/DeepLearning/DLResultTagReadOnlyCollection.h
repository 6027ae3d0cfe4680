#pragma once

#include <Vision/DeepLearning/DLResultTag.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultTagReadOnlyCollection, DLResultTag,
                               std::vector<std::shared_ptr<DLResultTag>>)
