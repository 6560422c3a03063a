#pragma once

namespace kelmo::settings_keys {

inline constexpr const char* hasSeenOnboarding = "hasSeenOnboarding";
inline constexpr const char* favoritedPaths = "favoritedPaths";
inline constexpr const char* recentPaths = "recentPaths";
inline constexpr const char* watchedFolderBookmarks = "watchedFolderBookmarks";

// Fields of one saved folder record.
inline constexpr const char* folderId = "id";
inline constexpr const char* folderName = "name";
inline constexpr const char* folderBookmark = "bookmark";

// Whether a package an artifact imports and Kelmo lacks is downloaded without asking.
inline constexpr const char* fetchMissingPackages = "fetchMissingPackages";

} // namespace kelmo::settings_keys
