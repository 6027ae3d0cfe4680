#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <Vision/Core/Archive.h>
#include <Vision/Core/CollectionInterfaces.h>
#include <Vision/Core/Object.h>
#include <Vision/Core/ReadOnlyCollectionBase.h>

// What every class of the result tree shares: who may build one, and how its typed read-only
// collections and their reflection names are declared.
namespace Tavrin::Vision::DeepLearning {
namespace Private {
class DeepLearningAccess;
}
namespace Implementation::Internal::TestHelpers {
class TestHelper;
}
} // namespace Tavrin::Vision::DeepLearning

// Result objects are written once by the decoder or the fixture factory and only read after.
#define TAVRIN_DL_RESULT_BUILDERS                                                                  \
    TAVRIN_OBJECT_FACTORY_ACCESS                                                                   \
    friend class ::Tavrin::Vision::DeepLearning::Private::DeepLearningAccess;                      \
    friend class ::Tavrin::Vision::DeepLearning::Implementation::Internal::TestHelpers::TestHelper;

// The builders of a result class, and its archive member, which the class's source defines.
#define TAVRIN_DL_RESULT_ACCESS                                                                    \
    TAVRIN_DL_RESULT_BUILDERS                                                                      \
    friend class cereal::access;                                                                   \
    template <class Archive> void serialize(Archive& archive, unsigned int version);

// A typed read-only collection of shared Element objects, declared at global scope after the
// element's own header.
// VectorArgument is how its constructor takes the items: by value or by const&.
#define TAVRIN_DL_READ_ONLY_COLLECTION(Class, Element, VectorArgument)                             \
    namespace Tavrin::Vision::DeepLearning {                                                       \
    class Class : public ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<                 \
                      std::shared_ptr<Element>> {                                                  \
        TAVRIN_READ_ONLY_COLLECTION(Class, std::shared_ptr<Element>, VectorArgument,               \
                                    #Class "::serialize()")                                        \
        TAVRIN_DL_RESULT_BUILDERS                                                                  \
    };                                                                                             \
    using Class##Ptr = std::shared_ptr<Class>;                                                     \
    }                                                                                              \
    TAVRIN_ARCHIVED_CLASS(::Tavrin::Vision::DeepLearning::Class, 1)

// Names for the interface and the base that the collection template makes of Element, so that
// reflection can name them; declared at global scope.
#define TAVRIN_DL_COLLECTION_ALIASES(Element)                                                      \
    namespace Tavrin::Vision::DeepLearning {                                                       \
    class Element;                                                                                 \
    namespace Implementation {                                                                     \
    using IReadOnlyCollectionOf##Element##Ptr =                                                    \
        ::Tavrin::Brnt::IReadOnlyCollection<std::shared_ptr<Element>>;                             \
    using ReadOnlyCollectionOf##Element##Ptr =                                                     \
        ::Tavrin::Vision::Implementation::ReadOnlyCollectionBase<std::shared_ptr<Element>>;        \
    }                                                                                              \
    }
