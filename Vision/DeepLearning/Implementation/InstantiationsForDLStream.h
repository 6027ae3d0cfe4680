#pragma once

#include <memory>

#include <Vision/Core/CollectionInterfaces.h>
#include <Vision/Core/ReadOnlyCollectionBase.h>

namespace Tavrin::Vision::DeepLearning {
class DLStream;
}

// Names for what the collection template makes of DLStream, so that reflection can name them.
namespace Tavrin::Vision::DeepLearning::Implementation {

using IReadOnlyCollectionOfDLStreamPtr = Brnt::IReadOnlyCollection<std::shared_ptr<DLStream>>;
using ReadOnlyCollectionOfDLStreamPtr =
    Vision::Implementation::ReadOnlyCollectionBase<std::shared_ptr<DLStream>>;

} // namespace Tavrin::Vision::DeepLearning::Implementation
