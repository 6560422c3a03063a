// Test entry for the core: points every XDG directory at a throw-away folder before
// GLib reads them, so no test can touch the real user's settings or Downloads.

#include <cstdlib>
#include <filesystem>
#include <giomm/init.h>
#include <glib.h>
#include <gtest/gtest.h>
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

    Gio::init();
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
    return result;
}
