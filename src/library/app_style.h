#pragma once

#include "runtime/resource_locator.h"

#include <gdkmm/display.h>
#include <gtkmm/widget.h>
#include <string>

namespace kelmo {

// CSS classes of the four button styles, defined in the application stylesheet.
namespace button_style {
// White label on the orange accent; only the fill dims while pressed.
inline constexpr const char* appPrimary = "app-primary-button";
// Dim label on a recessed plate with a hairline; the whole button fades while pressed.
inline constexpr const char* appSecondary = "app-secondary-button";
// A bare icon that darkens and gains a recessed plate while pressed.
inline constexpr const char* appIcon = "app-icon-button";
// One segment of a view toggle; add viewToggleActive to the segment that shows the
// current choice.
inline constexpr const char* viewToggle = "view-toggle-button";
inline constexpr const char* viewToggleActive = "active";
} // namespace button_style

// Loads the application stylesheet (the resource "style.css": the palette, the button
// styles and the shell's own styling) for every widget of the display. Loading twice
// replaces the earlier sheet. Answers whether the sheet was found and parsed.
bool loadApplicationStyle(const Glib::RefPtr<Gdk::Display>& display,
                          const ResourceLocator& resources = ResourceLocator::application());

// Styles a button with AppPrimaryButtonStyle, AppSecondaryButtonStyle or
// AppIconButtonStyle: replaces any of the four style classes it had.
void setButtonStyle(Gtk::Widget& button, const char* styleClass);

// Styles a segment with ViewToggleButtonStyle, active or not.
void setViewToggleStyle(Gtk::Widget& button, bool isActive);

// An icon-only control's tooltip, which is also what assistive technologies read
// as its name.
void setTooltipAndName(Gtk::Widget& widget, const Glib::ustring& text);

} // namespace kelmo
