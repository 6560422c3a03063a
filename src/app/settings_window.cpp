#include "app/settings_window.h"

#include "app/window_keys.h"

namespace kelmo {

SettingsWindow::SettingsWindow(ArtifactStore& store) : view_{store} {
    add_css_class("settings-window");
    set_title("Settings");
    set_default_size(defaultWidth, defaultHeight);
    set_resizable(false);
    set_hide_on_close(true);
    closeOnEscape(*this);
    set_child(view_);
}

} // namespace kelmo
