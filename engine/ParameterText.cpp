#include "engine/ParameterText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <stdexcept>

#include <Vision/Core/Exceptions.h>

namespace Tavrin::Vision::DeepLearning::Private {

double ParseReal(char const* text) {
    return std::atof(text);
}

int ParseInteger(char const* text) {
    return std::atoi(text);
}

bool ParseBool(char const* text) {
    return std::strcmp(text, "true") == 0;
}

std::string FormatReal(double value) {
    // As printf's "%f" writes it, without printf's cost: every push formats each real.
    constexpr int Precision = 6;
    std::array<char, std::numeric_limits<double>::max_exponent10 + Precision + 4> text;
    auto const written = std::to_chars(text.data(), text.data() + text.size(), value,
                                       std::chars_format::fixed, Precision);
    return std::string(text.data(), written.ptr);
}

std::string FormatInteger(long long value) {
    return std::to_string(value);
}

std::string FormatBool(bool value) {
    return value ? "true" : "false";
}

std::string ComposeThresholdText(double lower, double upper) {
    return "[" + FormatReal(lower) + "," + FormatReal(upper) + "]";
}

void ParseThresholdText(std::string const& text, double& lower, double& upper) {
    std::size_t const length = text.size();
    if (length == 0)
        throw std::out_of_range("invalid string position");
    // Unsigned arithmetic on purpose: without a comma the upper number is read from the whole
    // text but its last character.
    std::size_t const comma = text.find(',');
    lower = ParseRealStrict(text.substr(1, std::min(length - 1, comma - 1)));
    upper =
        ParseRealStrict(text.substr(comma + 1, std::min(length - (comma + 1), length - comma - 2)));
}

void ParseThresholdTextKeepingIt(std::string text, double& lower, double& upper,
                                 std::string& kept) {
    ParseThresholdText(text, lower, upper);
    kept = std::move(text);
}

void CheckInRange(double value, ValueRange const& range) {
    if (value < range.minimum || value > range.maximum)
        throw ArgumentException(std::string(range.name) + " must be between " +
                                FormatReal(range.minimum) + " and " + FormatReal(range.maximum));
}

bool StoreLowerThreshold(double& lower, double value, double upper, std::string& text) {
    text = ComposeThresholdText(value, upper);
    return StoreIfChanged(lower, value);
}

bool StoreUpperThreshold(double lower, double& upper, double value, std::string& text) {
    text = ComposeThresholdText(lower, value);
    return StoreIfChanged(upper, value);
}

bool StoreLaggingThreshold(double& threshold, double value, std::string& text) {
    CheckInRange(value, ThresholdRange);
    text = FormatReal(threshold);
    return StoreIfChanged(threshold, value);
}

} // namespace Tavrin::Vision::DeepLearning::Private
