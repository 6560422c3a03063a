#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

namespace kelmo {

// Finds the application's resource files: the top-level files of one directory,
// by base name and extension. The application's directory is
// share/kelmo/resources under the installation prefix, in the build tree as after
// installation.
class ResourceLocator {
public:
    explicit ResourceLocator(std::filesystem::path directory);

    // The resources of the running executable.
    static const ResourceLocator& application();

    // The top-level regular file "<baseName>.<extension>" (just "<baseName>" when the
    // extension is empty), or nothing. Names that would leave the directory find nothing.
    std::optional<std::filesystem::path> url(std::string_view baseName,
                                             std::string_view extension) const;

    const std::filesystem::path& directory() const { return directory_; }

private:
    std::filesystem::path directory_;
};

// The directory that holds the running executable.
std::filesystem::path executableDirectory();

// The directory that holds bin, libexec and share: the parent of bin, where the
// application and the tests' programs live, or of libexec/kelmo, where its helper
// programs do.
std::filesystem::path installationPrefix();

} // namespace kelmo
