#pragma once

#include "Vision/DeepLearning/DLResultView.h"
#include "Vision/DeepLearning/DLToolRuntimeParams.h"
#include "records/GraphicLooks.h"

namespace Tavrin::Vision::DeepLearning::Records {

// Draws the features and matches of the view's blue result, as the tool's show flags allow.
// A read tool ("blue_read") shows less and more text than a plain blue tool; the tool must be
// of the class that isRead names.
void AddBlueGraphics(GraphicList& graphics, DLResultView const& view, bool isRead,
                     DLToolRuntimeParams const& tool);

} // namespace Tavrin::Vision::DeepLearning::Records
