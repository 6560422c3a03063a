#pragma once

#include <filesystem>
#include <string>

namespace kelmo {

// Every artifact runs in an origin of its own: the host of the URLs it is served under
// is a digest of its file's path. What the web engine keeps per origin (local storage,
// IndexedDB, caches) is then the artifact's alone, and it finds it again on every run.
std::string originHostFor(const std::filesystem::path& artifactFile);

// The SHA-256 of the path's normal form, in lower-case hexadecimal.
std::string pathDigest(const std::filesystem::path& file);

} // namespace kelmo
