#pragma once

#include <glibmm/refptr.h>
#include <gtkmm/settings.h>
#include <string>
#include <string_view>

namespace kelmo {

// Kelmo's palette is light, so its windows, dialogs and popovers keep to the light
// variant of the desktop's theme even where the desktop prefers dark.

// The light variant of a GTK theme as GTK_THEME or gtk-theme-name names it:
// "Adwaita-dark" and "Adwaita:dark" are "Adwaita", "HighContrastInverse" is
// "HighContrast"; any other theme is its own.
std::string lightThemeVariant(std::string_view theme);

// Rewrites GTK_THEME to its light variant. Call before GTK initialises.
void preferLightThemeInEnvironment();

// Asks GTK for the light variant of the configured theme, now and whenever the
// desktop changes it.
void keepLightTheme(const Glib::RefPtr<Gtk::Settings>& settings);

} // namespace kelmo
