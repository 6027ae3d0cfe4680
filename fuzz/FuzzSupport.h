#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

// Runs a body on one input, catching only the exceptions that the library documents for bad
// input: any other one escapes to the fuzzer as a finding.
template <class... Documented> struct Tolerating;

template <> struct Tolerating<> {
    template <class Body> static void Run(Body&& body) { body(); }
};

template <class First, class... Rest> struct Tolerating<First, Rest...> {
    template <class Body> static void Run(Body&& body) {
        try {
            Tolerating<Rest...>::Run(body);
        } catch (First const&) {
        }
    }
};

inline std::string Text(std::uint8_t const* data, std::size_t size) {
    return std::string(reinterpret_cast<char const*>(data), size);
}
