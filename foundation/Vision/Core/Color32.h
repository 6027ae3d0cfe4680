#pragma once

#include <cstdint>

namespace Tavrin::Vision {

// A colour as one 0xAARRGGBB word, passed by value. The word converts implicitly, so a
// literal such as 0xff0000ff can be handed to any colour setter.
class Color32 {
public:
    constexpr Color32(std::uint32_t argb = 0)
        : argb_(argb) {}

    static constexpr Color32 FromArgb(std::uint8_t alpha, std::uint8_t red, std::uint8_t green,
                                      std::uint8_t blue) {
        return Color32(std::uint32_t(alpha) << 24 | std::uint32_t(red) << 16 |
                       std::uint32_t(green) << 8 | std::uint32_t(blue));
    }

    constexpr std::uint32_t Value() const { return argb_; }
    constexpr std::uint8_t A() const { return std::uint8_t(argb_ >> 24); }
    constexpr std::uint8_t R() const { return std::uint8_t(argb_ >> 16); }
    constexpr std::uint8_t G() const { return std::uint8_t(argb_ >> 8); }
    constexpr std::uint8_t B() const { return std::uint8_t(argb_); }

    friend constexpr bool operator==(Color32 left, Color32 right) {
        return left.argb_ == right.argb_;
    }
    friend constexpr bool operator!=(Color32 left, Color32 right) { return !(left == right); }

    template <class Archive> void serialize(Archive& archive) { archive(argb_); }

private:
    std::uint32_t argb_;
};

} // namespace Tavrin::Vision
