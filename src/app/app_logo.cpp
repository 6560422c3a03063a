#include "app/app_logo.h"

#include <gdkmm/pixbuf.h>
#include <gdkmm/texture.h>
#include <gtkmm/image.h>

namespace kelmo {

Gtk::Widget* makeAppLogo(int size, const ResourceLocator& resources) {
    Gtk::Widget* logo = nullptr;
    if (const auto file = resources.url("AppLogo", "svg")) {
        try {
            // Rendered at twice the size so that it stays sharp on scaled displays.
            auto pixbuf = Gdk::Pixbuf::create_from_file(file->string(), size * 2, size * 2);
            auto* image = Gtk::make_managed<Gtk::Image>(Gdk::Texture::create_for_pixbuf(pixbuf));
            image->set_pixel_size(size);
            logo = image;
        } catch (const Glib::Error&) {
        }
    }
    if (!logo) {
        auto* image = Gtk::make_managed<Gtk::Image>();
        image->set_from_icon_name(KELMO_APP_ID);
        image->set_pixel_size(size);
        logo = image;
    }
    logo->set_size_request(size, size);
    logo->set_halign(Gtk::Align::CENTER);
    logo->set_valign(Gtk::Align::CENTER);
    logo->set_overflow(Gtk::Overflow::HIDDEN);
    logo->add_css_class("app-logo");
    return logo;
}

} // namespace kelmo
