#include "Vision/DeepLearning/DLBlueModelReadOnlyCollection.h"

TAVRIN_REGISTER_READ_ONLY_COLLECTION(Tavrin::Vision::DeepLearning::DLBlueModelReadOnlyCollection,
                                     "Tavrin::Vision::DeepLearning::DLBlueModelReadOnlyCollection")
TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(Tavrin::Vision::DeepLearning::DLBlueModelPtr,
                                          "Tavrin::Vision::Implementation::ReadOnlyCollectionBase<"
                                          "Tavrin::Vision::DeepLearning::DLBlueModelPtr>")
