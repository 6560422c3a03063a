#include "app/light_theme.h"

#include <glib.h>

namespace kelmo {
namespace {

void useLightVariant(Gtk::Settings& settings) {
    if (settings.property_gtk_application_prefer_dark_theme().get_value())
        settings.property_gtk_application_prefer_dark_theme() = false;
    const Glib::ustring theme = settings.property_gtk_theme_name().get_value();
    const std::string light = lightThemeVariant(theme.raw());
    if (!light.empty() && light != theme.raw())
        settings.property_gtk_theme_name() = light;
}

} // namespace

std::string lightThemeVariant(std::string_view theme) {
    std::string name{theme};
    if (name.ends_with(":dark"))
        name.erase(name.size() - std::string_view{":dark"}.size());
    if (name.ends_with("-dark"))
        name.erase(name.size() - std::string_view{"-dark"}.size());
    if (name == "HighContrastInverse")
        name = "HighContrast";
    return name;
}

void preferLightThemeInEnvironment() {
    const char* theme = g_getenv("GTK_THEME");
    if (!theme)
        return;
    const std::string light = lightThemeVariant(theme);
    if (light.empty())
        g_unsetenv("GTK_THEME");
    else if (light != theme)
        g_setenv("GTK_THEME", light.c_str(), TRUE);
}

void keepLightTheme(const Glib::RefPtr<Gtk::Settings>& settings) {
    if (!settings)
        return;
    Gtk::Settings* kept = settings.get();
    useLightVariant(*kept);
    // The settings live as long as their display, which may see the application start
    // more than once; they are watched once.
    static const Glib::Quark watched{"kelmo-keeps-light-theme"};
    if (kept->get_data(watched))
        return;
    kept->set_data(watched, kept);
    kept->property_gtk_theme_name().signal_changed().connect([kept] { useLightVariant(*kept); });
    kept->property_gtk_application_prefer_dark_theme().signal_changed().connect(
        [kept] { useLightVariant(*kept); });
}

} // namespace kelmo
