#pragma once

#include "runtime/artifact_scheme_handler.h"

#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace kelmo {

// HTML artifacts are not opened as file:// pages: a file page may load scripts,
// styles and images from anywhere on the disk. They are served instead under
// "artifact-file://<host>/<path relative to the artifact's folder>", the host naming
// the artifact's origin (originHostFor), and this handler answers only under the host
// of the artifact being run and only for files inside its folder (the root):
//   - ".." components are refused, also when percent-encoded;
//   - the resolved file's real path (symbolic links followed) must lie inside the
//     root's real path, so a link that points out of the folder is refused;
//   - only regular files are served.
// Relative links between the page and the files beside it or below it keep working
// because the URL's path mirrors the folder's layout; a link to the parent folder
// resolves to a path inside the root that does not exist there. Free of WebKit.
inline constexpr std::string_view artifactFileScheme = "artifact-file";

class ArtifactFileSchemeHandler {
public:
    // The folder whose files are served, under the host of its artifact; nothing is
    // served until it is set, nor after it is cleared.
    void setRoot(const std::filesystem::path& folder, std::string host);
    void clear();
    const std::optional<std::filesystem::path>& root() const { return root_; }

    // The URL under which a file in the root's folder is requested (its name percent-encoded).
    static std::string urlFor(std::string_view host, const std::filesystem::path& fileName);

    // The file at the URL's path below the root, typed by its extension.
    SchemeResult resolve(std::string_view url) const;

    // Every file served since the root was set, as named below it.
    const std::set<std::filesystem::path>& servedFiles() const { return served_; }

    // The types of common web files by extension (case-insensitive); other extensions
    // are guessed from the system's content-type database.
    static std::string mimeType(const std::filesystem::path& file);

private:
    std::optional<std::filesystem::path> root_;
    std::string host_;
    mutable std::set<std::filesystem::path> served_;
};

} // namespace kelmo
