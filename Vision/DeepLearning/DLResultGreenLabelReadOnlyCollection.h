#pragma once

#include <Vision/DeepLearning/DLResultGreenLabel.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultGreenLabelReadOnlyCollection, DLResultGreenLabel,
                               std::vector<std::shared_ptr<DLResultGreenLabel>>)
