#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo::testing {

// A fresh directory under the system's temporary folder, removed with its contents.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

// Writes the file (creating parent folders); with an age, backdates its modification time.
void writeFile(const std::filesystem::path& path, std::string_view content = "",
               std::optional<std::chrono::seconds> age = std::nullopt);

std::string readFile(const std::filesystem::path& path);

// Iterates the default GLib main context until the condition holds or the deadline
// passes; answers the condition's final value.
bool runMainLoopUntil(const std::function<bool()>& condition,
                      std::chrono::milliseconds timeout = std::chrono::seconds{5});

// Runs the main context for everything that is ready now (idle callbacks included).
void drainMainLoop();

// Points HOME and every XDG directory at a throw-away folder (before GLib reads them, so
// no test touches the real user's settings, Downloads or caches), then runs `setUp` and
// every test, and removes the folder.
int runAllTestsInThrowAwayHome(int argc, char** argv, const std::function<void()>& setUp);

} // namespace kelmo::testing
