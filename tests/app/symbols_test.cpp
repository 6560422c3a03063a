#include "library/symbols.h"

#include <gtest/gtest.h>
#include <gtkmm/icontheme.h>

namespace kelmo {
namespace {

TEST(SymbolIcons, EverySymbolOfTheShellHasAnIconInTheTheme) {
    const auto display = Gdk::Display::get_default();
    installSymbolIcons(display);
    installSymbolIcons(display);
    auto theme = Gtk::IconTheme::get_for_display(display);
    for (const char* symbol :
         {"square.grid.2x2", "square.grid.2x2.fill", "clock", "clock.fill", "star", "star.fill",
          "folder", "folder.fill", "magnifyingglass", "xmark.circle.fill", "plus",
          "questionmark.circle", "info.circle", "trash", "sparkles", "doc.badge.plus",
          "folder.badge.plus", "play.rectangle"}) {
        const std::string icon = symbolIconName(symbol);
        EXPECT_NE(icon, "image-missing") << symbol;
        EXPECT_TRUE(theme->has_icon(icon)) << symbol << " -> " << icon;
    }
    EXPECT_NE(symbolIconName("star"), symbolIconName("star.fill"));
    EXPECT_EQ(symbolIconName("no.such.symbol"), "image-missing");
    EXPECT_TRUE(theme->has_icon(KELMO_APP_ID)) << "the logo is the application icon";
}

} // namespace
} // namespace kelmo
