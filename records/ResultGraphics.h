#pragma once

#include <memory>

#include <Vision/Core/GraphicCollection.h>

namespace Tavrin::Vision::DeepLearning {
class DLResult;
}

namespace Tavrin::Vision::DeepLearning::Records {

// Every graphic of a run in one flat collection, in marking order, then view order: each view's
// region outline when its tool shows regions, then the graphics of the tool's family.
std::shared_ptr<GraphicCollection> BuildResultGraphics(DLResult const& result);

} // namespace Tavrin::Vision::DeepLearning::Records
