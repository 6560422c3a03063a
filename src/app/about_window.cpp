#include "app/about_window.h"

#include "app/app_logo.h"
#include "app/window_keys.h"

#include <gtkmm/box.h>
#include <gtkmm/label.h>

namespace kelmo {

AboutWindow::AboutWindow() {
    add_css_class("about-window");
    set_title("About Kelmo");
    set_default_size(defaultWidth, defaultHeight);
    set_resizable(false);
    set_hide_on_close(true);
    closeOnEscape(*this);

    // The window is as large as this frame and no larger.
    auto* frame = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    frame->set_size_request(defaultWidth, defaultHeight);
    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 8);
    content->set_vexpand(true);
    content->set_valign(Gtk::Align::CENTER);
    content->set_halign(Gtk::Align::CENTER);
    frame->append(*content);
    auto* logo = makeAppLogo(72);
    logo->add_css_class("about-logo");
    logo->set_margin_bottom(8);
    content->append(*logo);
    auto* name = Gtk::make_managed<Gtk::Label>("Kelmo");
    name->add_css_class("about-name");
    content->append(*name);
    auto* version = Gtk::make_managed<Gtk::Label>("Version " KELMO_VERSION);
    version->add_css_class("about-version");
    content->append(*version);
    auto* maker = Gtk::make_managed<Gtk::Label>(KELMO_MAKER_NAME);
    maker->add_css_class("about-maker");
    content->append(*maker);
    set_child(*frame);
}

} // namespace kelmo
