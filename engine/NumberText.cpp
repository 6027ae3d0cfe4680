#include "engine/NumberText.h"

#include <langinfo.h>

#include <algorithm>
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
        // An empty token may have no data at all, which memcpy must not be given.
        std::copy(token.begin(), token.end(), local);
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

// Every power of ten up to here is exact as a double.
constexpr double ExactPowersOfTen[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
// Fifteen decimal digits always fit a double's mantissa.
constexpr std::ptrdiff_t MaxExactDigits = 15;

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Adds the run of digits from `at` to the mantissa and returns where it ends.
char const* ReadDigits(char const* at, char const* end, std::uint64_t& mantissa) {
    for (; at != end && IsDigit(*at); ++at)
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
    return at;
}

// What may follow a number's digits and make strtod read on: an exponent or a hex prefix.
bool ExtendsNumber(char c) {
    return c == 'e' || c == 'E' || c == 'x' || c == 'X';
}

// strtod reads the locale's decimal point, which a host may have changed.
bool DecimalPointIsDot() {
    char const* point = nl_langinfo(RADIXCHAR);
    return point[0] == '.' && point[1] == '\0';
}

} // namespace

std::optional<double> ReadPlainDecimal(std::string_view text) {
    char const* const begin = text.data();
    char const* const end = begin + text.size();
    bool const negative = begin != end && *begin == '-';
    std::uint64_t mantissa = 0;
    char const* at = ReadDigits(begin + negative, end, mantissa);
    std::ptrdiff_t digits = at - (begin + negative);
    std::ptrdiff_t fractionDigits = 0;
    if (at != end && *at == '.') {
        char const* const fractionEnd = ReadDigits(at + 1, end, mantissa);
        fractionDigits = fractionEnd - (at + 1);
        at = fractionEnd;
    }
    digits += fractionDigits;
    if (digits == 0 || digits > MaxExactDigits || (at != end && ExtendsNumber(*at)) ||
        !DecimalPointIsDot())
        return std::nullopt;
    // Both operands are exact, so the one rounding of the division is strtod's.
    double const value = static_cast<double>(mantissa) / ExactPowersOfTen[fractionDigits];
    return negative ? -value : value;
}

double ParseRealStrict(char const* text) {
    if (std::optional<double> const plain = ReadPlainDecimal(text))
        return *plain;
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
    if (std::optional<double> const plain = ReadPlainDecimal(token))
        return *plain;
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
