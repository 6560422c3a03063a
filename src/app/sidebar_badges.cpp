#include "app/sidebar_badges.h"

#include <algorithm>

namespace kelmo {

std::optional<std::size_t> sidebarBadgeCount(SidebarItem::Kind kind, std::size_t count) {
    if (kind == SidebarItem::Kind::recents || count == 0)
        return std::nullopt;
    return count;
}

std::size_t folderArtifactCount(const WatchedFolder& folder,
                                const std::vector<Artifact>& artifacts) {
    return static_cast<std::size_t>(
        std::count_if(artifacts.begin(), artifacts.end(),
                      [&folder](const Artifact& artifact) { return folder.contains(artifact); }));
}

std::string badgeText(std::size_t count) {
    return std::to_string(count);
}

std::string sidebarRowName(const std::string& title, std::optional<std::size_t> count) {
    if (!count)
        return title;
    return title + ", " + badgeText(*count) + (*count == 1 ? " artifact" : " artifacts");
}

} // namespace kelmo
