#include <type_traits>

#include <Vision/Core/CollectionInterfaces.h>
#include <Vision/Core/Meta.h>
#include <Vision/Core/ReadOnlyCollectionBase.h>
#include <Vision/DeepLearning/DeepLearning.h>

#include "reflection/RegistrationShape.h"

namespace Tavrin::Vision::DeepLearning::Reflection {
namespace {

template <class Element> using InterfaceOf = Brnt::IReadOnlyCollection<std::shared_ptr<Element>>;
template <class Element>
using BaseOf = Vision::Implementation::ReadOnlyCollectionBase<std::shared_ptr<Element>>;

// The typed collection of Element, named after it.
template <class Element, class Collection>
void RegisterTypedCollection(std::string const& elementName,
                             std::optional<TypeSubCategory> subCategory) {
    static_assert(std::is_base_of_v<BaseOf<Element>, Collection>);
    DeclarePublicClass<Collection>(elementName + "ReadOnlyCollection", ClassType::Class,
                                   subCategory);
    RegisterConverters<Collection>(
        TypeList<BaseOf<Element>, InterfaceOf<Element>, Brnt::ICountable,
                 Meta::IHaveFakePropertyMeta, ShareableBase, Brnt::IObject>{});
}

// The interface and the base that the collection template makes of Element. The interface's
// Item, one int and a result, is what GetFakeProperties lists the items through.
template <class Element> void RegisterCollectionAliases(std::string const& elementName) {
    std::string const prefix = "Tavrin::Vision::DeepLearning::Implementation::";
    std::string const suffix = "CollectionOf" + elementName + "Ptr";
    DeclareClass<InterfaceOf<Element>>(prefix + "IReadOnly" + suffix,
                                       {ClassType::Interface, "", TypeSubCategory::Collection})
        .method("Item", &InterfaceOf<Element>::Item)(rttr::parameter_names("index"));
    DeclareClass<BaseOf<Element>>(
        prefix + "ReadOnly" + suffix,
        {ClassType::BaseClass, "vision/DeepLearning/Implementation/InstantiationsFor" + elementName,
         TypeSubCategory::Collection});
}

template <class Element, class Collection>
void RegisterCollectionOf(std::string const& elementName,
                          std::optional<TypeSubCategory> subCategory = std::nullopt) {
    RegisterTypedCollection<Element, Collection>(elementName, subCategory);
    RegisterCollectionAliases<Element>(elementName);
}

} // namespace
} // namespace Tavrin::Vision::DeepLearning::Reflection

TAVRIN_REGISTRATION(CollectionReflection) {
    using namespace Tavrin::Vision::DeepLearning;
    using namespace Tavrin::Vision::DeepLearning::Reflection;
    RegisterCollectionOf<DLBlueFeature, DLBlueFeatureReadOnlyCollection>("DLBlueFeature");
    RegisterCollectionOf<DLBlueModel, DLBlueModelReadOnlyCollection>("DLBlueModel");
    RegisterCollectionOf<DLResultBlue, DLResultBlueReadOnlyCollection>("DLResultBlue");
    RegisterCollectionOf<DLResultBlueLabel, DLResultBlueLabelReadOnlyCollection>(
        "DLResultBlueLabel");
    RegisterCollectionOf<DLResultBlueMatchRegion, DLResultBlueMatchRegionReadOnlyCollection>(
        "DLResultBlueMatchRegion");
    RegisterCollectionOf<DLResultFeatureMetricsFeature,
                         DLResultFeatureMetricsFeatureReadOnlyCollection>(
        "DLResultFeatureMetricsFeature");
    RegisterCollectionOf<DLResultGreen, DLResultGreenReadOnlyCollection>("DLResultGreen");
    RegisterCollectionOf<DLResultGreenLabel, DLResultGreenLabelReadOnlyCollection>(
        "DLResultGreenLabel");
    RegisterCollectionOf<DLResultMarking, DLResultMarkingReadOnlyCollection>("DLResultMarking");
    RegisterCollectionOf<DLResultMatch, DLResultMatchReadOnlyCollection>("DLResultMatch");
    RegisterCollectionOf<DLResultRed, DLResultRedReadOnlyCollection>("DLResultRed");
    RegisterCollectionOf<DLResultRedRegion, DLResultRedRegionReadOnlyCollection>(
        "DLResultRedRegion");
    RegisterCollectionOf<DLResultResource, DLResultResourceReadOnlyCollection>("DLResultResource");
    RegisterCollectionOf<DLResultTag, DLResultTagReadOnlyCollection>("DLResultTag");
    RegisterCollectionOf<DLResultView, DLResultViewReadOnlyCollection>("DLResultView");
    // Only these two concrete collections carry the collection category themselves.
    RegisterCollectionOf<DLStream, DLStreamReadOnlyCollection>("DLStream",
                                                               TypeSubCategory::Collection);
    RegisterCollectionOf<DLToolRuntimeParams, DLToolRuntimeParamsReadOnlyCollection>(
        "DLToolRuntimeParams", TypeSubCategory::Collection);
}
