#pragma once

#include <gtkmm/window.h>

namespace kelmo {

// The About window ("about"): the mark, the name, the version and the maker. Its
// size follows its content; it cannot be stretched beyond it.
class AboutWindow : public Gtk::Window {
public:
    static constexpr int defaultWidth = 480;
    static constexpr int defaultHeight = 400;

    AboutWindow();
};

} // namespace kelmo
