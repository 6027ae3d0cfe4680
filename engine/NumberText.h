#pragma once

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

} // namespace Tavrin::Vision::DeepLearning::Private
