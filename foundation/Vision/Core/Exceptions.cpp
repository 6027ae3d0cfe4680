#include "Vision/Core/Exceptions.h"

namespace Tavrin::Vision {

VisionException::VisionException(VisionExceptionCodes code, std::string const& message)
    : code_(code)
    , message_(message) {}

std::shared_ptr<Brnt::IException> VisionException::CloneException() const {
    return std::make_shared<VisionException>(*this);
}

void VisionException::ThrowException() const { throw *this; }

namespace Strings {
char const E_TavImage_BadType[] = "The image type is not supported.";
}

namespace Implementation::Internal {
void ThrowInvalidCollectionIndexException() {
    throw ArgumentException("The index is outside the bounds of the collection.");
}
} // namespace Implementation::Internal

} // namespace Tavrin::Vision
