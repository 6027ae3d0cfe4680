#pragma once

#include <Vision/DeepLearning/DLResultView.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultViewReadOnlyCollection, DLResultView,
                               std::vector<std::shared_ptr<DLResultView>> const&)
