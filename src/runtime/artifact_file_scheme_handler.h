#pragma once

#include "runtime/artifact_scheme_handler.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace kelmo {

// HTML artifacts are not opened as file:// pages: a file page may load scripts,
// styles and images from anywhere on the disk. They are served instead under
// "artifact-file://local/<path relative to the artifact's folder>", and this handler
// answers only for files inside that folder (the root):
//   - ".." components are refused, also when percent-encoded;
//   - the resolved file's real path (symbolic links followed) must lie inside the
//     root's real path, so a link that points out of the folder is refused;
//   - only regular files are served.
// Relative links between the page and the files beside it or below it keep working
// because the URL's path mirrors the folder's layout; a link to the parent folder
// resolves to a path inside the root that does not exist there. Free of WebKit.
inline constexpr std::string_view artifactFileScheme = "artifact-file";
inline constexpr std::string_view artifactFileHost = "local";

class ArtifactFileSchemeHandler {
public:
    // The folder whose files are served; nothing is served until it is set.
    void setRoot(const std::filesystem::path& folder);
    const std::optional<std::filesystem::path>& root() const { return root_; }

    // The URL under which a file in the root's folder is requested (its name percent-encoded).
    static std::string urlFor(const std::filesystem::path& fileName);

    // The file at the URL's path below the root, typed by its extension.
    SchemeResult resolve(std::string_view url) const;

    // The types of common web files by extension (case-insensitive); other extensions
    // are guessed from the system's content-type database.
    static std::string mimeType(const std::filesystem::path& file);

private:
    std::optional<std::filesystem::path> root_;
};

} // namespace kelmo
