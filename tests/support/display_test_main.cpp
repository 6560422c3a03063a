// Test entry for suites that need a display (GTK widgets, WebKit views). Run them
// under Xvfb. Every XDG directory points at a throw-away folder first, so no test
// touches the real user's settings, Downloads or caches.

#include <filesystem>
#include <glib.h>
#include <gtest/gtest.h>
#include <gtk/gtk.h>
#include <gtkmm/application.h>
#include <string>

int main(int argc, char** argv) {
    gchar* home = g_dir_make_tmp("kelmo-home-XXXXXX", nullptr);
    const std::string root = home;
    g_free(home);
    g_setenv("HOME", root.c_str(), TRUE);
    g_setenv("XDG_CONFIG_HOME", (root + "/config").c_str(), TRUE);
    g_setenv("XDG_DATA_HOME", (root + "/data").c_str(), TRUE);
    g_setenv("XDG_CACHE_HOME", (root + "/cache").c_str(), TRUE);
    g_setenv("GIO_USE_VFS", "local", TRUE);
    g_setenv("GSETTINGS_BACKEND", "memory", TRUE);
    g_setenv("GTK_A11Y", "none", TRUE);
    g_setenv("WEBKIT_DISABLE_DMABUF_RENDERER", "1", FALSE);
    // Without a GPU, GTK's GL renderer draws every frame of a spinner on the CPU and
    // starves the web processes of tests running side by side; cairo is cheap.
    g_setenv("GSK_RENDERER", "cairo", FALSE);

    // Creating the application initialises gtkmm's wrappers; gtk_init opens the display.
    auto application =
        Gtk::Application::create("org.kelmo.Kelmo.Tests", Gio::Application::Flags::NON_UNIQUE);
    gtk_init();

    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
    return result;
}
