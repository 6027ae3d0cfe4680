#pragma once

#include <memory>

#include <Vision/Core/CollectionInterfaces.h>
#include <Vision/Core/ReadOnlyCollectionBase.h>

namespace Tavrin::Vision::DeepLearning {
class DLBlueModel;
}

// Names for what the collection template makes of DLBlueModel, so that reflection can name them.
namespace Tavrin::Vision::DeepLearning::Implementation {

using IReadOnlyCollectionOfDLBlueModelPtr = Brnt::IReadOnlyCollection<std::shared_ptr<DLBlueModel>>;
using ReadOnlyCollectionOfDLBlueModelPtr =
    Vision::Implementation::ReadOnlyCollectionBase<std::shared_ptr<DLBlueModel>>;

} // namespace Tavrin::Vision::DeepLearning::Implementation
