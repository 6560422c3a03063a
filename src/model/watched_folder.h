#pragma once

#include "model/artifact.h"
#include "model/uuid.h"

#include <filesystem>
#include <string>

namespace kelmo {

// A folder whose supported files the library lists and follows. Identity is the
// id alone; name and location may differ between two values of one folder.
struct WatchedFolder {
    Uuid id;
    std::string name;
    std::string url;

    const std::string& path() const { return url; }

    // A file belongs to the folder when its containing directory's path is exactly
    // the folder's path: direct children only, compared as plain strings.
    bool contains(const Artifact& artifact) const;

    bool operator==(const WatchedFolder& other) const { return id == other.id; }
};

// The path of the directory that holds the file (the location minus its last component).
std::string containingDirectoryPath(const std::string& url);

// An absolute path without trailing slashes (the root stays "/"), the form in
// which every location is kept and compared.
std::string withoutTrailingSlash(std::string path);

} // namespace kelmo

template <>
struct std::hash<kelmo::WatchedFolder> {
    std::size_t operator()(const kelmo::WatchedFolder& folder) const noexcept {
        return std::hash<kelmo::Uuid>{}(folder.id);
    }
};
