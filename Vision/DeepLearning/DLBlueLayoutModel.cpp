#include "Vision/DeepLearning/DLBlueLayoutModel.h"

CEREAL_REGISTER_TYPE_WITH_NAME(Tavrin::Vision::DeepLearning::DLBlueLayoutModel,
                               "Tavrin::Vision::DeepLearning::DLBlueLayoutModel")
