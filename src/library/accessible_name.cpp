#include "library/accessible_name.h"

namespace kelmo {

void setAccessibleName(Gtk::Widget& widget, const Glib::ustring& name) {
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget.gobj()), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                   name.c_str(), -1);
}

} // namespace kelmo
