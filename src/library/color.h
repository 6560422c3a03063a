#pragma once

#include <cstdint>
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

    // The colour of a 0xRRGGBB constant, such as hex(0xe8572e); opaque.
    static constexpr Color hex(std::uint32_t rgb) {
        return Color{((rgb >> 16) & 0xff) / 255.0, ((rgb >> 8) & 0xff) / 255.0,
                     (rgb & 0xff) / 255.0};
    }

    // The same colour at the given opacity.
    constexpr Color withOpacity(double alpha) const { return Color{red, green, blue, alpha}; }

    // A CSS colour: "#rrggbb" when opaque, otherwise "rgba(r, g, b, a)".
    std::string css() const;

    bool operator==(const Color&) const = default;
};

} // namespace kelmo
