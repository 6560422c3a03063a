#include "app/settings_window.h"

#include "app/window_keys.h"

#include <gtkmm/box.h>

namespace kelmo {

SettingsWindow::SettingsWindow(ArtifactStore& store) : store_{store} {
    add_css_class("settings-window");
    set_title("Settings");
    set_default_size(defaultWidth, defaultHeight);
    set_hide_on_close(true);
    closeOnEscape(*this);
    auto* content = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 0);
    set_child(*content);
}

} // namespace kelmo
