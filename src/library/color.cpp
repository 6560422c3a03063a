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

// Letters, marks and numbers in the Unicode sense.
bool isAlphanumeric(gunichar c) {
    switch (g_unichar_type(c)) {
    case G_UNICODE_LOWERCASE_LETTER:
    case G_UNICODE_MODIFIER_LETTER:
    case G_UNICODE_OTHER_LETTER:
    case G_UNICODE_TITLECASE_LETTER:
    case G_UNICODE_UPPERCASE_LETTER:
    case G_UNICODE_SPACING_MARK:
    case G_UNICODE_ENCLOSING_MARK:
    case G_UNICODE_NON_SPACING_MARK:
    case G_UNICODE_DECIMAL_NUMBER:
    case G_UNICODE_LETTER_NUMBER:
    case G_UNICODE_OTHER_NUMBER:
        return true;
    default:
        return false;
    }
}

// The text between the first and the last alphanumeric character. Invalid UTF-8
// bytes count as non-alphanumeric.
std::string_view trimmedToAlphanumerics(std::string_view text) {
    std::size_t begin = std::string_view::npos;
    std::size_t end = 0;
    std::size_t position = 0;
    while (position < text.size()) {
        const char* start = text.data() + position;
        const gunichar c = g_utf8_get_char_validated(start, text.size() - position);
        std::size_t length = 1;
        if (c != static_cast<gunichar>(-1) && c != static_cast<gunichar>(-2)) {
            length = static_cast<std::size_t>(g_utf8_next_char(start) - start);
            if (isAlphanumeric(c)) {
                if (begin == std::string_view::npos)
                    begin = position;
                end = position + length;
            }
        }
        position += length;
    }
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, end - begin);
}

int hexDigitValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// Reads a hexadecimal number at the start of the text the way a string scanner
// does: "0x" or "0X" may precede the digits, and values too large saturate.
std::uint64_t scanHex(std::string_view text) {
    std::size_t position = 0;
    const auto digitAt = [&](std::size_t at) {
        return at < text.size() ? hexDigitValue(text[at]) : -1;
    };
    if (!text.empty() && text[0] == '0' && text.size() > 1 && (text[1] == 'x' || text[1] == 'X')) {
        if (digitAt(2) < 0)
            return 0; // just the leading zero
        position = 2;
    }
    std::uint64_t value = 0;
    for (int digit = digitAt(position); digit >= 0; digit = digitAt(++position)) {
        if (value > (std::numeric_limits<std::uint64_t>::max() >> 4))
            value = std::numeric_limits<std::uint64_t>::max();
        else
            value = (value << 4) + static_cast<std::uint64_t>(digit);
    }
    return value;
}

int channel(double component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
}

} // namespace

Color::Color(std::string_view hex) {
    const std::uint64_t value = scanHex(trimmedToAlphanumerics(hex));
    red = static_cast<double>((value >> 16) & 0xff) / 255.0;
    green = static_cast<double>((value >> 8) & 0xff) / 255.0;
    blue = static_cast<double>(value & 0xff) / 255.0;
    opacity = 1;
}

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
