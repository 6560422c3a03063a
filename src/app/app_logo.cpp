#include "app/app_logo.h"

#include "library/symbols.h"

#include <gtkmm/image.h>

namespace kelmo {

Gtk::Widget* makeAppLogo(int size) {
    // The icon theme picks the bundled PNG nearest the size and the display's scale.
    auto* logo = Gtk::make_managed<Gtk::Image>();
    logo->set_from_icon_name(appLogoIconName);
    logo->set_pixel_size(size);
    logo->set_size_request(size, size);
    logo->set_halign(Gtk::Align::CENTER);
    logo->set_valign(Gtk::Align::CENTER);
    logo->set_overflow(Gtk::Overflow::HIDDEN);
    logo->add_css_class("app-logo");
    return logo;
}

} // namespace kelmo
