#include "Vision/Core/MiscUtils.h"

#include "Vision/Core/Exceptions.h"
#include "Vision/Core/Transform2DRigid.h"

namespace Tavrin::Vision::Private::MiscUtils {

std::shared_ptr<Transform2DLinear> LinearOrElse(ITransform2D const& transform) {
    if (auto const linear = dynamic_cast<Transform2DLinear const*>(&transform))
        return Brnt::ObjectFactory::Create<Transform2DLinear>(
            linear->A(), linear->B(), linear->C(), linear->D(), linear->TX(), linear->TY());
    if (auto const rigid = dynamic_cast<Transform2DRigid const*>(&transform))
        return rigid->LinearTransform();
    throw ArgumentException("The transform is not linear");
}

} // namespace Tavrin::Vision::Private::MiscUtils
