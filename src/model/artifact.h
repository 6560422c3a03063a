#pragma once

#include "model/uuid.h"

#include <array>
#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

using Clock = std::chrono::system_clock;

// What kind of source a file is, decided by its extension. Each case carries the
// location it was decided from, which takes part in equality.
struct ArtifactType {
    enum class Kind { html, jsx, tsx };

    Kind kind = Kind::html;
    std::string url;

    bool operator==(const ArtifactType&) const = default;
};

// Extensions that folder scans and file drops accept (the open panel accepts anything).
inline constexpr std::array<std::string_view, 4> supportedExtensions{"html", "htm", "jsx", "tsx"};

// The extension after the last dot of the last path component, lower-cased; empty when none.
std::string lowercaseExtension(const std::string& url);

// Whether the file's lower-cased extension is one of supportedExtensions.
bool hasSupportedExtension(std::string_view fileNameOrPath);

// Whether the path names a regular file, symbolic links followed. Only regular files
// are artifacts: a folder, a named pipe, a socket or a device is not, whatever its name
// (reading a named pipe would wait for a writer for ever).
bool isRegularFile(const std::string& path);

// "jsx" and "tsx" decide their kinds; every other extension, or none, is html.
ArtifactType detectType(const std::string& url);

// One runnable file of the library. Records are never updated in place; equality
// and hashing use the id alone, so code that needs "the same file" compares paths.
struct Artifact {
    Uuid id;
    std::string name; // file name without its last extension, as UTF-8 for the screen
    std::string url;  // absolute location, exactly as given
    ArtifactType type;
    Clock::time_point modifiedAt;

    // Never fails: an unreadable or missing file takes the current time as its date.
    static Artifact from(const std::string& url);

    // Builds a record when the modification time is already known (folder scans).
    static Artifact make(const std::string& url, Clock::time_point modifiedAt);

    // The path string that favourites, recents and folder membership compare exactly.
    const std::string& path() const { return url; }

    bool operator==(const Artifact& other) const { return id == other.id; }
};

// The file's content modification time, if it can be read.
std::optional<Clock::time_point> contentModificationTime(const std::string& url);

// The display name: the last path component without its last extension.
std::string nameWithoutExtension(const std::string& url);

// A file name or path as UTF-8 text for the screen; bytes that are not UTF-8 in the
// file-name encoding become replacement characters. Never use it to reach the file.
std::string displayName(std::string_view fileName);

} // namespace kelmo

template <>
struct std::hash<kelmo::Artifact> {
    std::size_t operator()(const kelmo::Artifact& artifact) const noexcept {
        return std::hash<kelmo::Uuid>{}(artifact.id);
    }
};
