#include "test_support.h"

#include <cstdlib>
#include <fstream>
#include <glib.h>
#include <glibmm/main.h>
#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

namespace kelmo::testing {

TemporaryDirectory::TemporaryDirectory() {
    std::string pattern = std::filesystem::temp_directory_path() / "kelmo-test-XXXXXX";
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("cannot make a temporary directory");
    path_ = pattern;
}

TemporaryDirectory::~TemporaryDirectory() {
    std::error_code ignored;
    // Restore permissions that a test may have taken away, so everything can go.
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all,
                                 std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(path_, ignored);
}

void writeFile(const std::filesystem::path& path, std::string_view content,
               std::optional<std::chrono::seconds> age) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream{path, std::ios::binary}.write(content.data(),
                                                static_cast<std::streamsize>(content.size()));
    if (age)
        std::filesystem::last_write_time(path,
                                         std::filesystem::file_time_type::clock::now() - *age);
}

std::string readFile(const std::filesystem::path& path) {
    std::ifstream in{path, std::ios::binary};
    std::ostringstream content;
    content << in.rdbuf();
    return content.str();
}

bool runMainLoopUntil(const std::function<bool()>& condition, std::chrono::milliseconds timeout) {
    auto context = Glib::MainContext::get_default();
    bool expired = false;
    auto deadline = Glib::signal_timeout().connect(
        [&expired] {
            expired = true;
            return false;
        },
        static_cast<unsigned>(timeout.count()));
    while (!condition() && !expired)
        context->iteration(true);
    deadline.disconnect();
    return condition();
}

void drainMainLoop() {
    auto context = Glib::MainContext::get_default();
    while (context->pending())
        context->iteration(false);
}

int runAllTestsInThrowAwayHome(int argc, char** argv, const std::function<void()>& setUp) {
    gchar* made = g_dir_make_tmp("kelmo-home-XXXXXX", nullptr);
    const std::string home = made;
    g_free(made);
    g_setenv("HOME", home.c_str(), TRUE);
    g_setenv("XDG_CONFIG_HOME", (home + "/config").c_str(), TRUE);
    g_setenv("XDG_DATA_HOME", (home + "/data").c_str(), TRUE);
    g_setenv("XDG_CACHE_HOME", (home + "/cache").c_str(), TRUE);
    g_setenv("GIO_USE_VFS", "local", TRUE);
    setUp();
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    std::error_code ignored;
    std::filesystem::remove_all(home, ignored);
    return result;
}

} // namespace kelmo::testing
