#pragma once

#include <Vision/DeepLearning/Implementation/ResultClassSupport.h>

TAVRIN_DL_COLLECTION_ALIASES(DLResultMatch)
