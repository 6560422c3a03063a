#pragma once

#include <gtkmm/window.h>

namespace kelmo {

// Lets Escape close the window, as it closes dialogs.
void closeOnEscape(Gtk::Window& window);

} // namespace kelmo
