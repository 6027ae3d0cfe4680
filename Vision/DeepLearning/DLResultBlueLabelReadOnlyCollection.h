#pragma once

#include <Vision/DeepLearning/DLResultBlueLabel.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultBlueLabelReadOnlyCollection, DLResultBlueLabel,
                               std::vector<std::shared_ptr<DLResultBlueLabel>>)
