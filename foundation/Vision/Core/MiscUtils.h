#pragma once

#include <memory>

#include "Vision/Core/Transform2D.h"

namespace Tavrin::Vision::Private::MiscUtils {

// The transform as a new Transform2DLinear; throws ArgumentException for a transform that no
// matrix and translation can represent.
std::shared_ptr<Transform2DLinear> LinearOrElse(ITransform2D const& transform);

} // namespace Tavrin::Vision::Private::MiscUtils
