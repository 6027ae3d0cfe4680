#pragma once

#include <Vision/DeepLearning/DeepLearningExceptions.h>
