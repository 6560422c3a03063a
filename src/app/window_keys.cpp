#include "app/window_keys.h"

#include <gtkmm/shortcutcontroller.h>

namespace kelmo {

void closeOnEscape(Gtk::Window& window) {
    auto shortcuts = Gtk::ShortcutController::create();
    shortcuts->add_shortcut(Gtk::Shortcut::create(Gtk::KeyvalTrigger::create(GDK_KEY_Escape),
                                                  Gtk::NamedAction::create("window.close")));
    window.add_controller(shortcuts);
}

} // namespace kelmo
