#pragma once

#include <charconv>
#include <cstring>
#include <string>
#include <vector>

#include <tinyxml2.h>

namespace Bench {

// The least any client does with an engine's answer: every value of every element read into
// plain structs, numbers parsed, lists of points into a vector, texts copied. The bare sides of
// the ratios do this, so that the library is measured against real work, not a bare parse.
struct BarePoint {
    double x;
    double y;
};

struct BareValue {
    std::string name;
    std::string text;
    std::vector<double> numbers;
    std::vector<BarePoint> points;
};

struct BareElement {
    std::string name;
    std::vector<BareValue> values;
    std::vector<BareElement> children;
};

// The numbers of a list such as "1.5,2 3,4", "20x30" or "0.8"; false when any part is not one.
inline bool ReadNumbers(char const* text, std::vector<double>& numbers) {
    char const* const end = text + std::strlen(text);
    while (text < end) {
        if (*text == ',' || *text == ' ' || *text == 'x') {
            ++text;
            continue;
        }
        double number = 0;
        auto const read = std::from_chars(text, end, number);
        if (read.ec != std::errc())
            return false;
        numbers.push_back(number);
        text = read.ptr;
    }
    return !numbers.empty();
}

// A list of pairs apart by spaces, such as a region's outline, is points; other numbers stay
// numbers, anything else text.
inline BareValue ReadValue(tinyxml2::XMLAttribute const& attribute) {
    BareValue value{attribute.Name(), {}, {}, {}};
    char const* const text = attribute.Value();
    if (!ReadNumbers(text, value.numbers)) {
        value.numbers.clear();
        value.text = text;
    } else if (std::strchr(text, ' ') && value.numbers.size() % 2 == 0) {
        for (std::size_t i = 0; i < value.numbers.size(); i += 2)
            value.points.push_back({value.numbers[i], value.numbers[i + 1]});
        value.numbers.clear();
    }
    return value;
}

inline BareElement ReadElement(tinyxml2::XMLElement const& element) {
    BareElement read{element.Name(), {}, {}};
    for (auto const* attribute = element.FirstAttribute(); attribute; attribute = attribute->Next())
        read.values.push_back(ReadValue(*attribute));
    for (auto const* child = element.FirstChildElement(); child;
         child = child->NextSiblingElement())
        read.children.push_back(ReadElement(*child));
    return read;
}

} // namespace Bench
