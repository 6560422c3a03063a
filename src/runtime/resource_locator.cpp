#include "runtime/resource_locator.h"

#include <sys/stat.h>

namespace kelmo {

ResourceLocator::ResourceLocator(std::filesystem::path directory)
    : directory_{std::move(directory)} {}

const ResourceLocator& ResourceLocator::application() {
    static const ResourceLocator locator{installationPrefix() / KELMO_INSTALL_DATADIR / "kelmo" /
                                         "resources"};
    return locator;
}

std::optional<std::filesystem::path> ResourceLocator::url(std::string_view baseName,
                                                          std::string_view extension) const {
    std::string name{baseName};
    if (!extension.empty())
        name.append(".").append(extension);
    if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos ||
        name.find('\0') != std::string::npos)
        return std::nullopt;
    std::filesystem::path file = directory_ / name;
    struct stat info {};
    if (::stat(file.c_str(), &info) != 0 || !S_ISREG(info.st_mode))
        return std::nullopt;
    return file;
}

std::filesystem::path executableDirectory() {
    std::error_code error;
    const auto executable = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return std::filesystem::current_path(error);
    return executable.parent_path();
}

std::filesystem::path installationPrefix() {
    auto directory = executableDirectory();
    // Helpers live in <libexecdir>/kelmo, programs in <bindir>: leave whichever it is.
    const auto helpers = std::filesystem::path{KELMO_INSTALL_LIBEXECDIR} / "kelmo";
    const auto below = directory.string().ends_with("/" + helpers.string())
                           ? helpers
                           : std::filesystem::path{KELMO_INSTALL_BINDIR};
    for (auto part = below.begin(); part != below.end(); ++part)
        directory = directory.parent_path();
    return directory;
}

} // namespace kelmo
