#pragma once

#include <optional>
#include <string_view>

// The strict number reading of engine texts: the standard library's stod and stoi rules with
// their messages, which hosts know. Leading blanks are skipped and trailing text is ignored.
namespace Tavrin::Vision::DeepLearning::Private {

// std::invalid_argument "invalid stod argument", std::out_of_range "stod argument out of range".
double ParseRealStrict(char const* text);
double ParseRealStrict(std::string_view token);
// std::invalid_argument "invalid stoi argument", std::out_of_range "stoi argument out of range";
// the range is that of a 32-bit integer.
int ParseIntegerStrict(char const* text);
int ParseIntegerStrict(std::string_view token);

// A plain decimal, as the engine writes its numbers: an optional minus, digits, a point and
// digits, fifteen digits at most, followed by the end or by anything but an exponent or a hex
// prefix. It reads here exactly as strtod and sscanf read it, at a fraction of the cost, where
// the locale's decimal point is '.'; nothing for any other text.
std::optional<double> ReadPlainDecimal(std::string_view text);

} // namespace Tavrin::Vision::DeepLearning::Private
