#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>

#include "Vision/Core/Registration.h"

// Change-flag constants are long long, a type that RTTR's own conversions (to_int64, to_double,
// to_string and the rest) do not know: without these, a host that reads a constant through
// reflection without our headers gets 0.
namespace Tavrin::Vision::Implementation {
namespace {

template <class Number> bool Fits(long long value) {
    if constexpr (std::is_floating_point_v<Number>)
        return true;
    else if constexpr (std::is_unsigned_v<Number>)
        return value >= 0 &&
               static_cast<unsigned long long>(value) <= std::numeric_limits<Number>::max();
    else
        return value >= std::numeric_limits<Number>::min() &&
               value <= std::numeric_limits<Number>::max();
}

template <class Number> void RegisterNumberConversion() {
    rttr::type::register_converter_func([](long long value, bool& ok) -> Number {
        ok = Fits<Number>(value);
        return ok ? static_cast<Number>(value) : Number{};
    });
}

template <class... Numbers> void RegisterNumberConversions() {
    (RegisterNumberConversion<Numbers>(), ...);
}

} // namespace
} // namespace Tavrin::Vision::Implementation

TAVRIN_REGISTRATION(FlagConstantConversions) {
    using namespace Tavrin::Vision::Implementation;
    RegisterNumberConversions<std::int8_t, std::int16_t, std::int32_t, std::int64_t, std::uint8_t,
                              std::uint16_t, std::uint32_t, std::uint64_t, float, double>();
    rttr::type::register_converter_func([](long long value, bool& ok) {
        ok = true;
        return value != 0;
    });
    rttr::type::register_converter_func([](long long value, bool& ok) {
        ok = true;
        return std::to_string(value);
    });
}
