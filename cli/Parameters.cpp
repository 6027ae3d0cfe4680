#include "Parameters.h"

#include <cerrno>
#include <cstdlib>
#include <exception>
#include <limits>
#include <optional>
#include <sstream>

#include <Vision/Foundation.h>

#include "Failure.h"

namespace TavrinCli {
namespace {

using Tavrin::Vision::Vect2;
using Tavrin::Vision::Vect2Ptr;

// Shown with the tool or model itself rather than among its parameters.
bool IsIdentity(const std::string& name) {
    return name == "Name" || name == "Type" || name == "Id";
}

std::string NumberText(double value) {
    std::ostringstream text;
    text.precision(std::numeric_limits<double>::max_digits10 - 2);
    text << value;
    return text.str();
}

// The text of a plain value; nothing for values that are objects of the tree.
std::optional<std::string> ValueText(const rttr::variant& value) {
    const rttr::type type = value.get_type();
    if (type == rttr::type::get<bool>())
        return value.get_value<bool>() ? "true" : "false";
    if (type == rttr::type::get<double>())
        return NumberText(value.get_value<double>());
    if (type == rttr::type::get<std::string>() || type.is_arithmetic() || type.is_enumeration())
        return value.to_string();
    if (type == rttr::type::get<Vect2Ptr>()) {
        const Vect2Ptr size = value.get_value<Vect2Ptr>();
        return size ? NumberText(size->X()) + "x" + NumberText(size->Y()) : "";
    }
    return std::nullopt;
}

rttr::property PropertyNamed(const rttr::instance& object, const std::string& name) {
    const rttr::property property = object.get_derived_type().get_property(name);
    if (!property.is_valid() || property.is_static() || IsIdentity(name) ||
        !ValueText(property.get_value(object)))
        throw UsageError("unknown parameter " + name);
    return property;
}

double ParseNumber(const std::string& text) {
    char* end = nullptr;
    errno = 0;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || errno == ERANGE)
        throw UsageError("'" + text + "' is not a number");
    return number;
}

long long ParseWhole(const std::string& text, long long minimum, long long maximum) {
    char* end = nullptr;
    errno = 0;
    const long long number = std::strtoll(text.c_str(), &end, 10);
    if (text.empty() || *end != '\0' || errno == ERANGE || number < minimum || number > maximum)
        throw UsageError("'" + text + "' is not a whole number from " + std::to_string(minimum) +
                         " to " + std::to_string(maximum));
    return number;
}

bool ParseFlag(const std::string& text) {
    if (text == "true" || text == "1")
        return true;
    if (text == "false" || text == "0")
        return false;
    throw UsageError("'" + text + "' is not true or false");
}

// A size is written as the engine writes it, WIDTHxHEIGHT.
Vect2Ptr ParseSize(const std::string& text) {
    const auto cross = text.find('x');
    if (cross == std::string::npos)
        throw UsageError("'" + text + "' is not a size WIDTHxHEIGHT");
    return Tavrin::Brnt::CreateObject<Vect2>(ParseNumber(text.substr(0, cross)),
                                             ParseNumber(text.substr(cross + 1)));
}

template <class Whole> rttr::variant WholeValue(const std::string& text) {
    return static_cast<Whole>(
        ParseWhole(text, std::numeric_limits<Whole>::min(), std::numeric_limits<Whole>::max()));
}

rttr::variant ParseValue(const rttr::type& type, const std::string& text) {
    if (type == rttr::type::get<bool>())
        return ParseFlag(text);
    if (type == rttr::type::get<double>())
        return ParseNumber(text);
    if (type == rttr::type::get<int>())
        return WholeValue<int>(text);
    if (type == rttr::type::get<unsigned int>())
        return WholeValue<unsigned int>(text);
    if (type == rttr::type::get<std::string>())
        return text;
    if (type == rttr::type::get<Vect2Ptr>())
        return ParseSize(text);
    if (type.is_enumeration()) {
        rttr::variant value = type.get_enumeration().name_to_value(text);
        if (!value.is_valid())
            throw UsageError("'" + text + "' is no name of " + type.get_name().to_string());
        return value;
    }
    throw UsageError("parameters of type " + type.get_name().to_string() +
                     " cannot be set from text");
}

} // namespace

std::vector<Parameter> ParametersOf(const rttr::instance& object) {
    std::vector<Parameter> parameters;
    for (const rttr::property& property : object.get_derived_type().get_properties()) {
        const std::string name = property.get_name().to_string();
        if (property.is_static() || IsIdentity(name))
            continue;
        if (auto text = ValueText(property.get_value(object)))
            parameters.push_back({name, *text, !property.is_readonly()});
    }
    return parameters;
}

rttr::variant ParameterVariant(const rttr::instance& object, const std::string& name) {
    return PropertyNamed(object, name).get_value(object);
}

std::string ParameterValue(const rttr::instance& object, const std::string& name) {
    return *ValueText(ParameterVariant(object, name));
}

void SetParameter(const rttr::instance& object, const std::string& name, const std::string& text) {
    const rttr::property property = PropertyNamed(object, name);
    if (property.is_readonly())
        throw UsageError("parameter " + name + " is read-only");
    const rttr::variant value = [&] {
        try {
            return ParseValue(property.get_type(), text);
        } catch (const UsageError& error) {
            throw UsageError("invalid value for " + name + ": " + error.what());
        }
    }();
    try {
        if (!property.set_value(object, value))
            throw UsageError("invalid value for " + name + ": '" + text + "'");
    } catch (const Tavrin::Vision::VisionException& refused) {
        // Nested, so that a host can still tell the setter's exception class and code.
        std::throw_with_nested(UsageError(refused.Message()));
    }
}

} // namespace TavrinCli
