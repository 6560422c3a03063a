#pragma once

#include <gtkmm/shortcutswindow.h>
#include <memory>

namespace kelmo {

// The Keyboard Shortcuts window: every shortcut of Kelmo's windows, the player's
// included, by title and keys.
std::unique_ptr<Gtk::ShortcutsWindow> makeShortcutsWindow();

} // namespace kelmo
