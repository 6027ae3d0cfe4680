#pragma once

#include <memory>

#include <Vision/Core/CollectionInterfaces.h>
#include <Vision/Core/ReadOnlyCollectionBase.h>

namespace Tavrin::Vision::DeepLearning {
class DLToolRuntimeParams;
}

// Names for what the collection template makes of DLToolRuntimeParams, so that reflection can name
// them.
namespace Tavrin::Vision::DeepLearning::Implementation {

using IReadOnlyCollectionOfDLToolRuntimeParamsPtr =
    Brnt::IReadOnlyCollection<std::shared_ptr<DLToolRuntimeParams>>;
using ReadOnlyCollectionOfDLToolRuntimeParamsPtr =
    Vision::Implementation::ReadOnlyCollectionBase<std::shared_ptr<DLToolRuntimeParams>>;

} // namespace Tavrin::Vision::DeepLearning::Implementation
