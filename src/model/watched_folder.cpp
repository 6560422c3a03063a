#include "model/watched_folder.h"

namespace kelmo {

std::string containingDirectoryPath(const std::string& url) {
    const std::string& path = url;
    const auto slash = path.find_last_of('/');
    if (slash == std::string::npos)
        return {};
    if (slash == 0)
        return "/";
    return path.substr(0, slash);
}

std::string withoutTrailingSlash(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

bool WatchedFolder::contains(const Artifact& artifact) const {
    const std::string& file = artifact.path();
    const std::string& folder = path();
    // Same as comparing containingDirectoryPath(file) with the folder's path,
    // without building a string per artifact.
    const auto slash = file.find_last_of('/');
    if (slash == std::string::npos)
        return false;
    if (slash == 0)
        return folder == "/";
    return slash == folder.size() && file.compare(0, slash, folder) == 0;
}

} // namespace kelmo
