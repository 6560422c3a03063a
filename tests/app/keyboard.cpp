#include "keyboard.h"

#include "test_support.h"

#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <vector>

// Xlib's macros clash with C++ names; it comes last.
#include <X11/XKBlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#include <gdk/x11/gdkx.h>

namespace kelmo::testing {
namespace {

Display* xDisplay() {
    GdkDisplay* display = gdk_display_get_default();
    if (!display || !GDK_IS_X11_DISPLAY(display))
        return nullptr;
    return gdk_x11_display_get_xdisplay(display);
}

} // namespace

bool canTypeKeys() {
    Display* display = xDisplay();
    int event = 0, error = 0, major = 0, minor = 0;
    return display && XTestQueryExtension(display, &event, &error, &major, &minor);
}

bool focusWindow(Gtk::Window& window) {
    Display* display = xDisplay();
    if (!display)
        return false;
    window.present();
    return runMainLoopUntil([&window, display] {
        GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window.gobj()));
        Window focused = 0;
        int revert = 0;
        XGetInputFocus(display, &focused, &revert);
        return surface && window.is_active() && focused == gdk_x11_surface_get_xid(surface);
    });
}

void typeKeys(const std::string& accelerator) {
    guint keyval = 0;
    GdkModifierType modifiers{};
    ASSERT_TRUE(gtk_accelerator_parse(accelerator.c_str(), &keyval, &modifiers)) << accelerator;
    Display* display = xDisplay();
    ASSERT_NE(display, nullptr);
    const KeyCode key = XKeysymToKeycode(display, keyval);
    ASSERT_NE(key, 0) << accelerator;

    std::vector<KeyCode> held;
    if (modifiers & GDK_CONTROL_MASK)
        held.push_back(XKeysymToKeycode(display, XK_Control_L));
    // A symbol on its key's shifted level, such as "?", takes Shift as well.
    if ((modifiers & GDK_SHIFT_MASK) || XkbKeycodeToKeysym(display, key, 0, 0) != keyval)
        held.push_back(XKeysymToKeycode(display, XK_Shift_L));
    for (const KeyCode modifier : held)
        XTestFakeKeyEvent(display, modifier, True, CurrentTime);
    XTestFakeKeyEvent(display, key, True, CurrentTime);
    XTestFakeKeyEvent(display, key, False, CurrentTime);
    for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier)
        XTestFakeKeyEvent(display, *modifier, False, CurrentTime);
    XFlush(display);
}

} // namespace kelmo::testing
