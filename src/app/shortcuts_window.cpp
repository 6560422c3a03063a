#include "app/shortcuts_window.h"

#include <glibmm/markup.h>
#include <gtkmm/builder.h>
#include <string>
#include <vector>

namespace kelmo {
namespace {

struct Shortcut {
    const char* title;
    const char* accelerator;
};

struct ShortcutGroup {
    const char* title;
    std::vector<Shortcut> shortcuts;
};

// What the window lists; the keys themselves belong to the application's table and,
// for Reload, to the player.
const std::vector<ShortcutGroup>& shortcutGroups() {
    static const std::vector<ShortcutGroup> groups{
        {"Artifacts",
         {{"Open File", "<Control>o"},
          {"Open Folder", "<Shift><Control>o"},
          {"Reload", "<Control>r"},
          {"Search", "<Control>f"}}},
        {"Windows",
         {{"Settings", "<Control>comma"},
          {"Show Sidebar", "F9"},
          {"Close Window", "<Control>w"},
          {"Keyboard Shortcuts", "<Control>question"},
          {"Quit", "<Control>q"}}},
    };
    return groups;
}

std::string property(const char* name, const std::string& value) {
    return "<property name=\"" + std::string{name} + "\">" + Glib::Markup::escape_text(value) +
           "</property>";
}

// GTK 4.8 lets a shortcuts window be filled only from a builder description.
std::string shortcutsInterface() {
    std::string ui = "<interface><object class=\"GtkShortcutsWindow\" id=\"shortcuts\">" +
                     property("title", "Keyboard Shortcuts") + property("modal", "true") +
                     property("hide-on-close", "true") +
                     "<child><object class=\"GtkShortcutsSection\">" +
                     property("section-name", "shortcuts") + property("max-height", "12");
    for (const auto& group : shortcutGroups()) {
        ui += "<child><object class=\"GtkShortcutsGroup\">" + property("title", group.title);
        for (const auto& shortcut : group.shortcuts)
            ui += "<child><object class=\"GtkShortcutsShortcut\">" +
                  property("title", shortcut.title) +
                  property("accelerator", shortcut.accelerator) + "</object></child>";
        ui += "</object></child>";
    }
    return ui + "</object></child></object></interface>";
}

} // namespace

std::unique_ptr<Gtk::ShortcutsWindow> makeShortcutsWindow() {
    auto builder = Gtk::Builder::create_from_string(shortcutsInterface());
    // A window from a builder belongs to whoever takes it.
    std::unique_ptr<Gtk::ShortcutsWindow> window{
        builder->get_widget<Gtk::ShortcutsWindow>("shortcuts")};
    window->add_css_class("shortcuts-window");
    return window;
}

} // namespace kelmo
