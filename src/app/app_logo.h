#pragma once

#include <gtkmm/widget.h>

namespace kelmo {

// The "AppLogo" image (the bundled logo icon) in a square of the given size, clipped
// to rounded corners by the stylesheet class "app-logo". The widget is managed.
Gtk::Widget* makeAppLogo(int size);

} // namespace kelmo
