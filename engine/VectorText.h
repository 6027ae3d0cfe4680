#pragma once

#include <memory>
#include <string_view>

namespace Tavrin::Vision {
class Transform2DLinear;
}

// The geometric text forms of the engine's documents, read with the strict number rules.
namespace Tavrin::Vision::DeepLearning::Private {

struct PointValue {
    double x;
    double y;
};

// Two reals joined by the delimiter. Without the delimiter both come from the whole text, so
// "640" reads as 640 by 640.
PointValue ReadPoint(std::string_view text, std::string_view delimiter);

// Calls visit with each point of a list: points joined by `between`, each two reals joined by
// `inside`. An empty text gives no point, a trailing delimiter adds none, and an empty token (a
// doubled or leading delimiter) fails as a bad number does.
template <class Visit>
void ForEachPoint(std::string_view text, std::string_view inside, char between, Visit&& visit) {
    while (!text.empty()) {
        std::size_t const position = text.find(between);
        visit(ReadPoint(text.substr(0, position), inside));
        if (position == std::string_view::npos)
            break;
        text.remove_prefix(position + 1);
    }
}

// Six reals joined by ",": the linear part comes with its two middle numbers in the other order
// than SetMatrixElementsTranslation takes them. Fewer than six numbers is a bad document.
std::shared_ptr<Transform2DLinear> ParseTransform2DLinear(std::string_view text);

} // namespace Tavrin::Vision::DeepLearning::Private
