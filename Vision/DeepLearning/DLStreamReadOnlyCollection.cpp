#include "Vision/DeepLearning/DLStreamReadOnlyCollection.h"

TAVRIN_REGISTER_READ_ONLY_COLLECTION(Tavrin::Vision::DeepLearning::DLStreamReadOnlyCollection,
                                     "Tavrin::Vision::DeepLearning::DLStreamReadOnlyCollection")
TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(Tavrin::Vision::DeepLearning::DLStreamPtr,
                                          "Tavrin::Vision::Implementation::ReadOnlyCollectionBase<"
                                          "Tavrin::Vision::DeepLearning::DLStreamPtr>")
