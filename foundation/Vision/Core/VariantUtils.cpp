#include "Vision/Core/VariantUtils.h"

#include <map>
#include <string>

#include <rttr/enumeration.h>

#include "Vision/Core/Exceptions.h"

namespace Tavrin::Brnt::Internal::VariantUtils {

namespace {

std::map<rttr::type, EnumFactory>& Factories() {
    static std::map<rttr::type, EnumFactory> factories;
    return factories;
}

rttr::variant RegisteredValueWithPattern(rttr::enumeration const& enumeration,
                                         std::uint32_t pattern) {
    for (rttr::variant const& value : enumeration.get_values()) {
        bool converted = false;
        std::int64_t const number = value.to_int64(&converted);
        if (converted && static_cast<std::uint32_t>(number) == pattern)
            return value;
    }
    return rttr::variant();
}

rttr::variant EnumVariantFromPattern(std::uint32_t pattern, std::string const& shownValue,
                                     rttr::type const& enumType) {
    std::string const typeName = enumType.get_name().to_string();
    if (!enumType.is_enumeration())
        throw Vision::ArgumentException(typeName + " is not an enumeration");
    auto const factory = Factories().find(enumType);
    if (factory != Factories().end())
        return factory->second(pattern);
    rttr::variant value = RegisteredValueWithPattern(enumType.get_enumeration(), pattern);
    if (!value.is_valid())
        throw Vision::ArgumentException("The enumeration " + typeName + " has no value " +
                                        shownValue);
    return value;
}

} // namespace

void RegisterEnumFactory(rttr::type const& enumType, EnumFactory factory) {
    Factories()[enumType] = factory;
}

rttr::variant Int32ToEnumVariant(int value, rttr::type const& enumType) {
    return EnumVariantFromPattern(static_cast<std::uint32_t>(value), std::to_string(value),
                                  enumType);
}

rttr::variant UInt32ToEnumVariant(unsigned int value, rttr::type const& enumType) {
    return EnumVariantFromPattern(value, std::to_string(value), enumType);
}

} // namespace Tavrin::Brnt::Internal::VariantUtils
