#include "library/app_style.h"

#include <gtest/gtest.h>
#include <gtkmm/button.h>
#include <gtkmm/stylecontext.h>
#include <gtkmm/window.h>

namespace kelmo {
namespace {

Gdk::RGBA colorOf(Gtk::Widget& widget) {
    return widget.get_style_context()->get_color();
}

class AppStyleTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(loadApplicationStyle(Gdk::Display::get_default())); }
};

TEST_F(AppStyleTest, ButtonStylesColourTheirLabels) {
    Gtk::Window window;
    Gtk::Button button{"Next"};
    window.set_child(button);

    setButtonStyle(button, button_style::appPrimary);
    EXPECT_EQ(colorOf(button), Gdk::RGBA{"#ffffff"});

    setButtonStyle(button, button_style::appSecondary);
    EXPECT_FALSE(button.has_css_class(button_style::appPrimary));
    EXPECT_EQ(colorOf(button), Gdk::RGBA{"#78716c"});

    setButtonStyle(button, button_style::appIcon);
    EXPECT_EQ(colorOf(button), Gdk::RGBA{"#78716c"});

    setViewToggleStyle(button, true);
    EXPECT_TRUE(button.has_css_class(button_style::viewToggle));
    EXPECT_TRUE(button.has_css_class(button_style::viewToggleActive));
    setViewToggleStyle(button, false);
    EXPECT_FALSE(button.has_css_class(button_style::viewToggleActive));
}

TEST_F(AppStyleTest, LoadingAgainReplacesTheSheetAndAMissingSheetIsReported) {
    EXPECT_TRUE(loadApplicationStyle(Gdk::Display::get_default()));
    EXPECT_FALSE(loadApplicationStyle(Gdk::Display::get_default(),
                                      ResourceLocator{"/nonexistent/kelmo/resources"}));
}

} // namespace
} // namespace kelmo
