#pragma once

#include <Vision/DeepLearning/DLResultRed.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultRedReadOnlyCollection, DLResultRed,
                               std::vector<std::shared_ptr<DLResultRed>>)
