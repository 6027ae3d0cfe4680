#include "Vision/DeepLearning/DLToolRuntimeParamsReadOnlyCollection.h"

TAVRIN_REGISTER_READ_ONLY_COLLECTION(
    Tavrin::Vision::DeepLearning::DLToolRuntimeParamsReadOnlyCollection,
    "Tavrin::Vision::DeepLearning::DLToolRuntimeParamsReadOnlyCollection")
TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(Tavrin::Vision::DeepLearning::DLToolRuntimeParamsPtr,
                                          "Tavrin::Vision::Implementation::ReadOnlyCollectionBase<"
                                          "Tavrin::Vision::DeepLearning::DLToolRuntimeParamsPtr>")
