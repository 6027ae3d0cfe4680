#pragma once

#include <Vision/DeepLearning/DLResultResource.h>
#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_READ_ONLY_COLLECTION(DLResultResourceReadOnlyCollection, DLResultResource,
                               std::vector<std::shared_ptr<DLResultResource>>)
