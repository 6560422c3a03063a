// Test entry for suites that need a display (GTK widgets, WebKit views), in a throw-away
// home. Run them under Xvfb.

#include "test_support.h"

#include <glib.h>
#include <gtk/gtk.h>
#include <gtkmm/application.h>

int main(int argc, char** argv) {
    Glib::RefPtr<Gtk::Application> application;
    return kelmo::testing::runAllTestsInThrowAwayHome(argc, argv, [&application] {
        g_setenv("GSETTINGS_BACKEND", "memory", TRUE);
        g_setenv("GTK_A11Y", "none", TRUE);
        g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", FALSE);
        // Without a GPU, GTK's GL renderer draws every frame of a spinner on the CPU and
        // starves the web processes of tests running side by side; cairo is cheap.
        g_setenv("GSK_RENDERER", "cairo", FALSE);
        // Creating the application initialises gtkmm's wrappers; gtk_init opens the display.
        application =
            Gtk::Application::create("org.kelmo.Kelmo.Tests", Gio::Application::Flags::NON_UNIQUE);
        gtk_init();
    });
}
