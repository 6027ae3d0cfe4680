#include "Vision/Core/Object.h"

namespace Tavrin::Brnt {

std::string ObjectBase::ToString() const { return get_type().get_name().to_string(); }

} // namespace Tavrin::Brnt

namespace Tavrin::Vision {

std::string ShareableBase::ToString() const { return get_type().get_name().to_string(); }

} // namespace Tavrin::Vision
