#include "app/about_window.h"

#include "app/window_keys.h"

namespace kelmo {

AboutWindow::AboutWindow() {
    add_css_class("about-window");
    set_title("About Kelmo");
    set_default_size(defaultWidth, defaultHeight);
    set_resizable(false);
    set_hide_on_close(true);
    closeOnEscape(*this);
    set_child(view_);
}

} // namespace kelmo
