#pragma once

#include <cstdint>
#include <type_traits>

#include <rttr/type>

namespace Tavrin::Brnt::Internal::VariantUtils {

// Makes a value of one enumeration from its 32-bit pattern.
using EnumFactory = rttr::variant (*)(std::uint32_t pattern);

void RegisterEnumFactory(rttr::type const& enumType, EnumFactory factory);

// Lets the two conversions below make any value of the enumeration, such as a union of bits that
// has no registered name. Only for enumerations with a fixed underlying type, where every value
// of that type is a valid value of the enumeration.
template <class E> void RegisterEnumeration() {
    static_assert(std::is_enum_v<E>);
    RegisterEnumFactory(rttr::type::get<E>(), [](std::uint32_t pattern) {
        return rttr::variant(static_cast<E>(static_cast<std::underlying_type_t<E>>(pattern)));
    });
}

// A variant of the enumeration type holding the value with this 32-bit pattern: any value when the
// enumeration registered its factory, otherwise one of its registered values. Throws
// ArgumentException when the type is not an enumeration or no such value can be made.
rttr::variant Int32ToEnumVariant(int value, rttr::type const& enumType);
rttr::variant UInt32ToEnumVariant(unsigned int value, rttr::type const& enumType);

} // namespace Tavrin::Brnt::Internal::VariantUtils
