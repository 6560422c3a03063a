#include "library/color.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <glib.h>
#include <limits>

namespace kelmo {
namespace {

int channel(double component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

} // namespace

std::string Color::css() const {
    char text[64];
    if (opacity >= 1) {
        std::snprintf(text, sizeof text, "#%02x%02x%02x", channel(red), channel(green),
                      channel(blue));
    } else {
        // The opacity is written without the locale's decimal separator.
        char alpha[16] = {};
        std::to_chars(alpha, alpha + sizeof alpha - 1, std::clamp(opacity, 0.0, 1.0),
                      std::chars_format::general, 3);
        std::snprintf(text, sizeof text, "rgba(%d, %d, %d, %s)", channel(red), channel(green),
                      channel(blue), alpha);
    }
    return text;
}

} // namespace kelmo
