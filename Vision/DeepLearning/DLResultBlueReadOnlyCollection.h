#pragma once

#include <Vision/DeepLearning/DLResultBlue.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultBlueReadOnlyCollection, DLResultBlue,
                               std::vector<std::shared_ptr<DLResultBlue>>)
