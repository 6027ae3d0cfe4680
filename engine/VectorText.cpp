#include <Vision/Core/Vect2.h>

#include "engine/DeepLearningAccess.h"
#include "engine/ParameterText.h"

namespace Tavrin::Vision::DeepLearning::Private {

std::shared_ptr<Vect2> DeepLearningAccess::ParseVector2(std::string const& text,
                                                        std::string const& delimiter) {
    std::size_t const position = text.find(delimiter);
    double const x = ParseRealStrict(text.substr(0, position));
    // Without a delimiter the position is npos, and npos plus a length of one wraps to the
    // start, so Y is read from the whole text as X was.
    std::size_t const rest = position + delimiter.size();
    double const y = ParseRealStrict(rest < text.size() ? text.substr(rest) : std::string());
    return Brnt::CreateObject<Vect2>(x, y);
}

} // namespace Tavrin::Vision::DeepLearning::Private
