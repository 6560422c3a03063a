#pragma once

#include <filesystem>
#include <glib.h>
#include <stdexcept>
#include <system_error>

namespace kelmo::bench {

// A fresh folder under the temporary directory, removed with its contents.
class TemporaryFolder {
public:
    TemporaryFolder() {
        gchar* made = g_dir_make_tmp("kelmo-bench-XXXXXX", nullptr);
        if (!made)
            throw std::runtime_error{"cannot make a temporary folder"};
        path_ = made;
        g_free(made);
    }
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace kelmo::bench
