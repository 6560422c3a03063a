#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace kelmo {

// Every artifact runs in an origin of its own: the host of the URLs it is served under
// is a digest of its file's path, in the domain below. What the web engine keeps per
// origin (local storage, IndexedDB) is then the artifact's alone, and it finds it again
// on every run.
std::string originHostFor(const std::filesystem::path& artifactFile);

// The domain of every artifact's host, and of the host that serves the player's runtime
// files to all of them. One site: the engine keeps one web process for the artifacts
// shown one after another, and its memory cache holds the runtime files (React and the
// libraries) under the same URLs for every artifact.
inline constexpr std::string_view artifactSite = "artifacts.kelmo";
inline constexpr std::string_view runtimeHost = "runtime.artifacts.kelmo";

// The SHA-256 of the path's normal form, in lower-case hexadecimal.
std::string pathDigest(const std::filesystem::path& file);

} // namespace kelmo
