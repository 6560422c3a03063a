#include "library/symbols.h"

#include <array>
#include <gio/gio.h>
#include <gtkmm/icontheme.h>
#include <utility>

extern "C" void kelmo_icons_register_resource(void);

namespace kelmo {
namespace {

constexpr const char* iconResourcePath = "/org/kelmo/Kelmo/icons";

constexpr std::array<std::pair<std::string_view, const char*>, 39> symbolIcons{{
    {"square.grid.2x2", "kelmo-square-grid-symbolic"},
    {"square.grid.2x2.fill", "kelmo-square-grid-fill-symbolic"},
    {"clock", "kelmo-clock-symbolic"},
    {"clock.fill", "kelmo-clock-fill-symbolic"},
    {"star", "non-starred-symbolic"},
    {"star.fill", "starred-symbolic"},
    {"folder", "kelmo-folder-symbolic"},
    {"folder.fill", "kelmo-folder-fill-symbolic"},
    {"magnifyingglass", "system-search-symbolic"},
    {"xmark.circle.fill", "kelmo-xmark-circle-fill-symbolic"},
    {"plus", "list-add-symbolic"},
    {"questionmark.circle", "kelmo-questionmark-circle-symbolic"},
    {"info.circle", "kelmo-info-circle-symbolic"},
    {"trash", "user-trash-symbolic"},
    {"sparkles", "kelmo-sparkles-symbolic"},
    {"doc.badge.plus", "document-new-symbolic"},
    {"folder.badge.plus", "folder-new-symbolic"},
    {"play.rectangle", "kelmo-play-rectangle-symbolic"},
    {"sidebar.left", "sidebar-show-symbolic"},
    {"arrow.left", "go-previous-symbolic"},
    {"chevron.left", "go-previous-symbolic"},
    {"exclamationmark.triangle", "dialog-warning-symbolic"},
    {"desktopcomputer", "computer-symbolic"},
    {"arrow.clockwise", "view-refresh-symbolic"},
    {"arrow.up.right.square", "kelmo-arrow-up-right-square-symbolic"},
    {"list.bullet", "view-list-bullet-symbolic"},
    {"arrow.up.doc", "document-send-symbolic"},
    {"tray", "kelmo-tray-symbolic"},
    {"star.slash", "kelmo-star-slash-symbolic"},
    {"globe", "web-browser-symbolic"},
    {"bolt.circle", "kelmo-bolt-circle-symbolic"},
    {"chevron.left.forwardslash.chevron.right", "kelmo-code-symbolic"},
    {"envelope", "mail-unread-symbolic"},
    {"gearshape", "emblem-system-symbolic"},
    {"doc", "text-x-generic-symbolic"},
    {"folder.badge.minus", "list-remove-symbolic"},
    {"hand.point.up.left", "input-mouse-symbolic"},
    {"keyboard", "input-keyboard-symbolic"},
    {"checkmark", "object-select-symbolic"},
}};

} // namespace

std::string symbolIconName(std::string_view symbol) {
    for (const auto& [name, icon] : symbolIcons) {
        if (name == symbol)
            return icon;
    }
    return "image-missing";
}

void installSymbolIcons(const Glib::RefPtr<Gdk::Display>& display) {
    static bool registered = false;
    if (!registered) {
        // Registering by hand also keeps the linker from dropping the bundle.
        kelmo_icons_register_resource();
        registered = true;
    }
    if (!display)
        return;
    auto theme = Gtk::IconTheme::get_for_display(display);
    for (const auto& path : theme->get_resource_path()) {
        if (path == iconResourcePath)
            return;
    }
    theme->add_resource_path(iconResourcePath);
}

} // namespace kelmo
