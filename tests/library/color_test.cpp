#include "library/color.h"
#include "library/palette.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <sstream>

namespace kelmo {
namespace {

Color rgb(int red, int green, int blue) {
    return Color{red / 255.0, green / 255.0, blue / 255.0};
}

TEST(ColorFromHex, ReadsTheLastSixDigitsWithoutShortFormOrAlphaAndBlackWithoutDigits) {
    for (const char* text : {"#e8572e", "e8572e", "#E8572E", "  (#e8572e);", "0xe8572e"})
        EXPECT_EQ(Color{text}, rgb(0xe8, 0x57, 0x2e)) << text;
    EXPECT_EQ(Color{"#fff"}, rgb(0, 0x0f, 0xff));
    EXPECT_EQ(Color{"#12345678"}, rgb(0x34, 0x56, 0x78));
    EXPECT_EQ(Color{"ff000080"}.opacity, 1);
    EXPECT_EQ(Color{"12ab zz"}, rgb(0, 0x12, 0xab)) << "reading stops at the first non-digit";
    for (const char* text : {"", "#", "#g12345", "é#e8572e"})
        EXPECT_EQ(Color{text}, rgb(0, 0, 0)) << '"' << text << '"';
}

TEST(ColorCss, OpaqueAsHexTranslucentAsRgba) {
    EXPECT_EQ(Color{"#E8572E"}.css(), "#e8572e");
    EXPECT_EQ(appBorder().withOpacity(0.5).css(), "rgba(232, 221, 210, 0.5)");
}

// The stylesheet's @define-color lines, by name.
std::map<std::string, std::string> stylesheetPalette() {
    std::ifstream file{KELMO_STYLESHEET};
    std::stringstream text;
    text << file.rdbuf();
    const std::string css = text.str();
    std::map<std::string, std::string> colors;
    const std::regex definition{R"(@define-color\s+(\w+)\s+(#[0-9a-fA-F]{6})\s*;)"};
    for (auto it = std::sregex_iterator(css.begin(), css.end(), definition);
         it != std::sregex_iterator(); ++it)
        colors[(*it)[1]] = (*it)[2];
    return colors;
}

TEST(Palette, TheStylesheetDefinesTheSameTenColors) {
    const std::map<std::string, const Color*> palette{
        {"appOrangePrimary", &appOrangePrimary()},
        {"appOrangeLight", &appOrangeLight()},
        {"appOrangeDeep", &appOrangeDeep()},
        {"appBg0", &appBg0()},
        {"appBg1", &appBg1()},
        {"appBg2", &appBg2()},
        {"appBorder", &appBorder()},
        {"appText", &appText()},
        {"appTextDim", &appTextDim()},
        {"appTextMuted", &appTextMuted()},
    };
    const auto defined = stylesheetPalette();
    EXPECT_EQ(defined.size(), palette.size());
    for (const auto& [name, color] : palette) {
        ASSERT_EQ(defined.count(name), 1u) << name;
        EXPECT_EQ(Color{defined.at(name)}, *color) << name;
    }
}

} // namespace
} // namespace kelmo
