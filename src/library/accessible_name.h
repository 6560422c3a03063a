#pragma once

#include <glibmm/ustring.h>
#include <gtkmm/widget.h>

namespace kelmo {

// The name assistive technologies read for a control whose content is more than one
// plain label: an icon beside a label, a row with a count, a card of several texts.
void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name);

} // namespace kelmo
