#include "Vision/DeepLearning/DLBlueFeatureReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultBlueLabelReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultBlueMatchRegionReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultBlueReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultFeatureMetricsFeatureReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultGreenLabelReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultGreenReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultMarkingReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultMatchReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultRedReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultRedRegionReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultResourceReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultTagReadOnlyCollection.h"
#include "Vision/DeepLearning/DLResultViewReadOnlyCollection.h"

// The archive names of the result tree's typed collections and of the template instance under
// each; every collection class lives in Tavrin::Vision::DeepLearning and holds shared Element
// objects.
#define TAVRIN_DL_REGISTER_RESULT_COLLECTION(Class, Element)                                       \
    TAVRIN_REGISTER_READ_ONLY_COLLECTION(Tavrin::Vision::DeepLearning::Class,                      \
                                         "Tavrin::Vision::DeepLearning::" #Class)                  \
    TAVRIN_REGISTER_READ_ONLY_COLLECTION_BASE(                                                     \
        std::shared_ptr<Tavrin::Vision::DeepLearning::Element>,                                    \
        "Tavrin::Vision::Implementation::ReadOnlyCollectionBase<"                                  \
        "Tavrin::Vision::DeepLearning::" #Element "Ptr>")

TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLBlueFeatureReadOnlyCollection, DLBlueFeature)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultBlueReadOnlyCollection, DLResultBlue)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultBlueLabelReadOnlyCollection, DLResultBlueLabel)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultBlueMatchRegionReadOnlyCollection,
                                     DLResultBlueMatchRegion)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultFeatureMetricsFeatureReadOnlyCollection,
                                     DLResultFeatureMetricsFeature)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultGreenReadOnlyCollection, DLResultGreen)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultGreenLabelReadOnlyCollection, DLResultGreenLabel)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultMarkingReadOnlyCollection, DLResultMarking)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultMatchReadOnlyCollection, DLResultMatch)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultRedReadOnlyCollection, DLResultRed)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultRedRegionReadOnlyCollection, DLResultRedRegion)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultResourceReadOnlyCollection, DLResultResource)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultTagReadOnlyCollection, DLResultTag)
TAVRIN_DL_REGISTER_RESULT_COLLECTION(DLResultViewReadOnlyCollection, DLResultView)
