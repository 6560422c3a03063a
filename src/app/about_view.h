#pragma once

#include <gtkmm/scrolledwindow.h>

namespace kelmo {

// The content of the About window: the logo, name and version, the tagline, a card
// about the maker with two contact links, the independence statement and a footer
// note, in a vertical scroll area. The maker's data comes from the build
// (KELMO_MAKER_*, KELMO_ABOUT_FOOTER). It has no state.
class AboutView : public Gtk::ScrolledWindow {
public:
    static constexpr int width = 480;

    AboutView();
};

} // namespace kelmo
