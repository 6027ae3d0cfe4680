#pragma once

#include <Vision/DeepLearning/DLResultMarking.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultMarkingReadOnlyCollection, DLResultMarking,
                               std::vector<std::shared_ptr<DLResultMarking>>)
