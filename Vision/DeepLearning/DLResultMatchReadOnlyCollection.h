#pragma once

#include <Vision/DeepLearning/DLResultMatch.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultMatchReadOnlyCollection, DLResultMatch,
                               std::vector<std::shared_ptr<DLResultMatch>>)
