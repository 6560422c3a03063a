#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace kelmo {

// A saved reference to a watched folder ("bookmark"): opaque bytes made from a
// folder location that later resolve to a location the process may read, or fail.
//
// Byte format, version 1:
//   bytes 0-7  the magic text "KELMOREF"
//   byte  8    format version (1)
//   bytes 9-   the folder's absolute path, raw file-system bytes, no terminator
// Readers reject unknown magic or versions, so later versions can add fields
// (for example a device and inode pair to follow moved folders).
namespace folder_bookmark {

inline constexpr std::uint8_t currentVersion = 1;

// Fails (nothing) unless the location is an absolute path of an existing directory.
std::optional<std::vector<std::uint8_t>> make(const std::filesystem::path& folder);

// The reference of any absolute location, existing or not (a folder on a drive that is
// not mounted now); nothing for a relative one.
std::optional<std::vector<std::uint8_t>> encode(const std::filesystem::path& folder);

// The folder location, or nothing when the data is malformed. The folder may be gone.
std::optional<std::filesystem::path> resolve(const std::vector<std::uint8_t>& data);

// Whether the process may list the folder: the counterpart of starting access to
// a sandboxed location.
bool startAccessing(const std::filesystem::path& folder);

} // namespace folder_bookmark
} // namespace kelmo
