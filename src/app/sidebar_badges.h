#pragma once

#include "model/artifact.h"
#include "model/sidebar_item.h"
#include "model/watched_folder.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace kelmo {

// The number a sidebar row shows in its badge, or nothing when the row shows none:
// the library and folders show theirs from one artifact on, favourites from one
// favourite on, recents never.
std::optional<std::size_t> sidebarBadgeCount(SidebarItem::Kind kind, std::size_t count);

// The artifacts that lie directly inside the folder (files in its subfolders do not
// count), by exact comparison of path strings.
std::size_t folderArtifactCount(const WatchedFolder& folder,
                                const std::vector<Artifact>& artifacts);

// A badge number as decimal digits without grouping.
std::string badgeText(std::size_t count);

// What assistive technologies read for a row: its title, then the count its badge
// shows, if any ("Downloads, 12 artifacts").
std::string sidebarRowName(const std::string& title, std::optional<std::size_t> count);

} // namespace kelmo
