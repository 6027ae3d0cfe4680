#include "engine/VectorText.h"

#include <array>

#include <Vision/Core/Transform2D.h>
#include <Vision/Core/Vect2.h>

#include "engine/DeepLearningAccess.h"
#include "engine/NumberText.h"
#include "engine/ResultDecoding.h"

namespace Tavrin::Vision::DeepLearning::Private {

PointValue ReadPoint(std::string_view text, std::string_view delimiter) {
    std::size_t const position = text.find(delimiter);
    double const x = ParseRealStrict(text.substr(0, position));
    // Without a delimiter the position is npos, and npos plus a length of one wraps to the
    // start, so Y is read from the whole text as X was.
    std::size_t const rest = position + delimiter.size();
    double const y = ParseRealStrict(rest < text.size() ? text.substr(rest) : std::string_view());
    return {x, y};
}

std::shared_ptr<Transform2DLinear> ParseTransform2DLinear(std::string_view text) {
    std::array<std::string_view, 6> tokens;
    std::size_t count = 0;
    // A trailing comma adds no token, an empty one between two commas stays.
    while (!text.empty() && count < tokens.size()) {
        std::size_t const comma = text.find(',');
        tokens[count++] = text.substr(0, comma);
        text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
    }
    if (count < tokens.size())
        ThrowBadDocument("a transform needs six numbers");
    // The engine's order of conversion decides which bad number is reported.
    double const t5 = ParseRealStrict(tokens[5]);
    double const t4 = ParseRealStrict(tokens[4]);
    double const t3 = ParseRealStrict(tokens[3]);
    double const t1 = ParseRealStrict(tokens[1]);
    double const t2 = ParseRealStrict(tokens[2]);
    double const t0 = ParseRealStrict(tokens[0]);
    auto transform = Brnt::CreateObject<Transform2DLinear>();
    transform->SetMatrixElementsTranslation(t0, t2, t1, t3, t4, t5);
    return transform;
}

std::shared_ptr<Vect2> DeepLearningAccess::ParseVector2(std::string const& text,
                                                        std::string const& delimiter) {
    PointValue const point = ReadPoint(text, delimiter);
    return Brnt::CreateObject<Vect2>(point.x, point.y);
}

} // namespace Tavrin::Vision::DeepLearning::Private
