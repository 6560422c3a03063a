#include "library/app_style.h"

#include "library/accessible_name.h"

#include <array>
#include <gtkmm/cssprovider.h>
#include <gtkmm/stylecontext.h>

namespace kelmo {
namespace {

constexpr std::array<const char*, 4> allButtonStyles{
    button_style::appPrimary, button_style::appSecondary, button_style::appIcon,
    button_style::viewToggle};

// One sheet per display, so that loading again replaces it.
Glib::RefPtr<Gtk::CssProvider>& installedProvider() {
    static Glib::RefPtr<Gtk::CssProvider> provider;
    return provider;
}

} // namespace

bool loadApplicationStyle(const Glib::RefPtr<Gdk::Display>& display,
                          const ResourceLocator& resources) {
    const auto file = resources.url("style", "css");
    if (!display || !file)
        return false;
    auto provider = Gtk::CssProvider::create();
    bool parsed = true;
    provider->signal_parsing_error().connect([&parsed](const Glib::RefPtr<const Gtk::CssSection>&,
                                                       const Glib::Error&) { parsed = false; });
    provider->load_from_path(file->string());
    auto& installed = installedProvider();
    if (installed)
        Gtk::StyleContext::remove_provider_for_display(display, installed);
    Gtk::StyleContext::add_provider_for_display(display, provider,
                                                GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    installed = provider;
    return parsed;
}

void setButtonStyle(Gtk::Widget& button, const char* styleClass) {
    for (const char* style : allButtonStyles)
        button.remove_css_class(style);
    button.remove_css_class(button_style::viewToggleActive);
    button.add_css_class(styleClass);
}

void setViewToggleStyle(Gtk::Widget& button, bool isActive) {
    setButtonStyle(button, button_style::viewToggle);
    if (isActive)
        button.add_css_class(button_style::viewToggleActive);
}

void setTooltipAndName(Gtk::Widget& widget, const Glib::ustring& text) {
    widget.set_tooltip_text(text);
    setAccessibleName(widget, text);
}

} // namespace kelmo
