#pragma once

#include "app/about_view.h"

#include <gtkmm/window.h>

namespace kelmo {

// The About window ("about") holding the About view. Its size follows its content;
// it cannot be stretched beyond it.
class AboutWindow : public Gtk::Window {
public:
    static constexpr int defaultWidth = AboutView::width;
    static constexpr int defaultHeight = 400;

    AboutWindow();

private:
    AboutView view_;
};

} // namespace kelmo
