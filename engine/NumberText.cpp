#include "engine/NumberText.h"

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>

namespace Tavrin::Vision::DeepLearning::Private {

namespace {

// Runs the C conversion on a terminated copy of the token: reading the token in place could
// run on past its end into the next one. Short tokens stay on the stack.
template <class Convert> auto ConvertToken(std::string_view token, Convert convert) {
    char local[64];
    if (token.size() < sizeof local) {
        std::memcpy(local, token.data(), token.size());
        local[token.size()] = '\0';
        return convert(local);
    }
    return convert(std::string(token).c_str());
}

// Calls strtod or strtol with errno cleared and restored, and tells whether anything was read
// and whether it was in range.
template <class Read> auto ReadNumber(char const* text, Read read, bool& converted, bool& inRange) {
    char* end = nullptr;
    int const savedErrno = errno;
    errno = 0;
    auto const value = read(text, &end);
    inRange = errno != ERANGE;
    errno = savedErrno;
    converted = end != text;
    return value;
}

} // namespace

double ParseRealStrict(char const* text) {
    bool converted = false;
    bool inRange = false;
    double const value = ReadNumber(
        text, [](char const* t, char** end) { return std::strtod(t, end); }, converted, inRange);
    if (!converted)
        throw std::invalid_argument("invalid stod argument");
    if (!inRange)
        throw std::out_of_range("stod argument out of range");
    return value;
}

double ParseRealStrict(std::string_view token) {
    return ConvertToken(token, [](char const* text) { return ParseRealStrict(text); });
}

int ParseIntegerStrict(char const* text) {
    bool converted = false;
    bool inRange = false;
    long const value = ReadNumber(
        text, [](char const* t, char** end) { return std::strtol(t, end, 10); }, converted,
        inRange);
    if (!converted)
        throw std::invalid_argument("invalid stoi argument");
    if (!inRange || value < std::numeric_limits<std::int32_t>::min() ||
        value > std::numeric_limits<std::int32_t>::max())
        throw std::out_of_range("stoi argument out of range");
    return static_cast<int>(value);
}

int ParseIntegerStrict(std::string_view token) {
    return ConvertToken(token, [](char const* text) { return ParseIntegerStrict(text); });
}

} // namespace Tavrin::Vision::DeepLearning::Private
