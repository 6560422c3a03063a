#pragma once

#include "runtime/resource_locator.h"

#include <gtkmm/widget.h>

namespace kelmo {

// The "AppLogo" image in a square of the given size, clipped to rounded corners by
// the stylesheet class "app-logo". Falls back to the application icon when the
// resource is missing. The widget is managed.
Gtk::Widget* makeAppLogo(int size,
                         const ResourceLocator& resources = ResourceLocator::application());

} // namespace kelmo
