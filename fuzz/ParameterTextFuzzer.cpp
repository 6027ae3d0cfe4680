// The texts of parameter values and of the documents' number forms: threshold pairs, points,
// point lists, transforms and numbers. The first byte picks the reader.
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include "FuzzSupport.h"
#include "Vision/DeepLearning/DeepLearningExceptions.h"
#include "engine/NumberText.h"
#include "engine/ParameterText.h"
#include "engine/VectorText.h"

namespace {

using namespace Tavrin::Vision::DeepLearning::Private;
using Tavrin::Vision::DeepLearning::DeepLearningException;

// The fast reading of plain decimals must agree with strtod wherever it answers.
void CheckPlainDecimal(std::string const& text) {
    std::optional<double> const fast = ReadPlainDecimal(text);
    if (!fast)
        return;
    double const slow = std::strtod(text.c_str(), nullptr);
    if (!(*fast == slow || (std::isnan(*fast) && std::isnan(slow))))
        std::abort();
}

void Read(unsigned selector, std::string const& text) {
    double first = 0;
    double second = 0;
    switch (selector % 7) {
    case 0:
        ParseThresholdText(text, first, second);
        break;
    case 1:
        ReadPoint(text, "x");
        break;
    case 2:
        ReadPoint(text, ",");
        break;
    case 3:
        ForEachPoint(text, ",", ' ', [](PointValue) {});
        break;
    case 4:
        ParseTransform2DLinear(text);
        break;
    case 5:
        ParseReal(text.c_str());
        ParseInteger(text.c_str());
        ParseBool(text.c_str());
        break;
    default:
        CheckPlainDecimal(text);
        ParseRealStrict(text);
        ParseIntegerStrict(text);
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0)
        return 0;
    std::string const text = Text(data + 1, size - 1);
    Tolerating<DeepLearningException, std::invalid_argument, std::out_of_range>::Run(
        [&] { Read(data[0], text); });
    return 0;
}
