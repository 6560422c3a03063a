#pragma once

#include <gdkmm/display.h>
#include <string>
#include <string_view>

namespace kelmo {

// The icon for a symbol name of the design (its SF Symbols names, such as
// "square.grid.2x2" or "star.fill"): one of the symbolic icons bundled with the
// application, our own or a copy of a fitting Adwaita one. Unknown names give
// "image-missing".
std::string symbolIconName(std::string_view symbol);

// The bundled application logo, under a name of its own: an installed copy of the
// application icon (an SVG in the hicolor theme, for launchers) would otherwise be
// found first, and loading it brings in the SVG decoder.
inline constexpr const char* appLogoIconName = "kelmo-app-logo";

// Adds the bundled icons (the symbolic icons and the application icon) to the
// display's icon theme. Safe to call more than once.
void installSymbolIcons(const Glib::RefPtr<Gdk::Display>& display);

} // namespace kelmo
