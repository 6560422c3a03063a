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
    {"star", "kelmo-non-starred-symbolic"},
    {"star.fill", "kelmo-starred-symbolic"},
    {"folder", "kelmo-folder-symbolic"},
    {"folder.fill", "kelmo-folder-fill-symbolic"},
    {"magnifyingglass", "kelmo-system-search-symbolic"},
    {"xmark.circle.fill", "kelmo-xmark-circle-fill-symbolic"},
    {"plus", "kelmo-list-add-symbolic"},
    {"questionmark.circle", "kelmo-questionmark-circle-symbolic"},
    {"info.circle", "kelmo-info-circle-symbolic"},
    {"trash", "kelmo-user-trash-symbolic"},
    {"sparkles", "kelmo-sparkles-symbolic"},
    {"doc.badge.plus", "kelmo-document-new-symbolic"},
    {"folder.badge.plus", "kelmo-folder-new-symbolic"},
    {"play.rectangle", "kelmo-play-rectangle-symbolic"},
    {"sidebar.left", "kelmo-sidebar-show-symbolic"},
    {"arrow.left", "kelmo-go-previous-symbolic"},
    {"chevron.left", "kelmo-go-previous-symbolic"},
    {"exclamationmark.triangle", "kelmo-dialog-warning-symbolic"},
    {"desktopcomputer", "kelmo-computer-symbolic"},
    {"arrow.clockwise", "kelmo-view-refresh-symbolic"},
    {"arrow.up.right.square", "kelmo-arrow-up-right-square-symbolic"},
    {"list.bullet", "kelmo-view-list-bullet-symbolic"},
    {"arrow.up.doc", "kelmo-document-send-symbolic"},
    {"tray", "kelmo-tray-symbolic"},
    {"star.slash", "kelmo-star-slash-symbolic"},
    {"globe", "kelmo-web-browser-symbolic"},
    {"bolt.circle", "kelmo-bolt-circle-symbolic"},
    {"chevron.left.forwardslash.chevron.right", "kelmo-code-symbolic"},
    {"envelope", "kelmo-mail-unread-symbolic"},
    {"gearshape", "kelmo-emblem-system-symbolic"},
    {"doc", "kelmo-text-x-generic-symbolic"},
    {"folder.badge.minus", "kelmo-list-remove-symbolic"},
    {"hand.point.up.left", "kelmo-input-mouse-symbolic"},
    {"keyboard", "kelmo-input-keyboard-symbolic"},
    {"checkmark", "kelmo-object-select-symbolic"},
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
