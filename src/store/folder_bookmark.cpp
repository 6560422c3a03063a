#include "store/folder_bookmark.h"

#include <algorithm>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace kelmo::folder_bookmark {
namespace {

constexpr std::string_view magic = "KELMOREF";

bool isDirectory(const std::filesystem::path& path) {
    struct stat info {};
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

} // namespace

std::optional<std::vector<std::uint8_t>> make(const std::filesystem::path& folder) {
    if (!isDirectory(folder))
        return std::nullopt;
    return encode(folder);
}

std::optional<std::vector<std::uint8_t>> encode(const std::filesystem::path& folder) {
    const std::string& path = folder.native();
    if (path.empty() || path.front() != '/')
        return std::nullopt;
    std::vector<std::uint8_t> data(magic.begin(), magic.end());
    data.push_back(currentVersion);
    data.insert(data.end(), path.begin(), path.end());
    return data;
}

std::optional<std::filesystem::path> resolve(const std::vector<std::uint8_t>& data) {
    const std::size_t header = magic.size() + 1;
    if (data.size() <= header || !std::equal(magic.begin(), magic.end(), data.begin()) ||
        data[magic.size()] != currentVersion)
        return std::nullopt;
    std::string path(data.begin() + static_cast<std::ptrdiff_t>(header), data.end());
    if (path.front() != '/' || path.find('\0') != std::string::npos)
        return std::nullopt;
    return std::filesystem::path{std::move(path)};
}

bool startAccessing(const std::filesystem::path& folder) {
    return ::access(folder.c_str(), R_OK | X_OK) == 0;
}

} // namespace kelmo::folder_bookmark
