#pragma once

#include <string>
#include <string_view>

namespace kelmo {

// An opaque or translucent sRGB colour, components from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double opacity = 1;

    constexpr Color() = default;
    constexpr Color(double r, double g, double b, double a = 1)
        : red{r}, green{g}, blue{b}, opacity{a} {}

    // The colour written as hexadecimal digits, such as "#e8572e". Characters that are
    // neither letters, marks nor digits are trimmed from both ends; the hexadecimal
    // number at the start of what remains is read (an optional 0x prefix allowed,
    // saturating on overflow; no digit gives 0) and its low 24 bits are red, green
    // and blue. Other lengths get no special handling: "fff" is red 0, green 0x0f,
    // blue 0xff, and only the last six digits of "ff000080" count. Always opaque.
    explicit Color(std::string_view hex);

    // The same colour at the given opacity.
    constexpr Color withOpacity(double alpha) const { return Color{red, green, blue, alpha}; }

    // A CSS colour: "#rrggbb" when opaque, otherwise "rgba(r, g, b, a)".
    std::string css() const;

    bool operator==(const Color&) const = default;
};

} // namespace kelmo
