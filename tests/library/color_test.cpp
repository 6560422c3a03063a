#include "library/color.h"
#include "library/palette.h"

#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <sstream>

namespace kelmo {
namespace {

TEST(ColorCss, OpaqueAsHexTranslucentAsRgba) {
    EXPECT_EQ(Color::hex(0xE8572E).css(), "#e8572e");
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
        EXPECT_EQ(Color::hex(std::stoul(defined.at(name).substr(1), nullptr, 16)), *color) << name;
    }
}

} // namespace
} // namespace kelmo
