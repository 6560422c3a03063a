#pragma once

#include <gtkmm/window.h>
#include <string>

namespace kelmo::testing {

// Whether typeKeys can reach the display: an X server with the XTEST extension.
bool canTypeKeys();

// Presents the window and waits until the X server gives it the keyboard. (Without a
// window manager GTK may count a window as active while the keys go elsewhere.)
bool focusWindow(Gtk::Window& window);

// Presses and releases the keys of a GTK accelerator ("<Control>f", "Escape",
// "<Control>question") on the X server, as the user would: they go to the window that
// has the focus. Returns at once; the keys arrive through the main loop.
void typeKeys(const std::string& accelerator);

} // namespace kelmo::testing
