#pragma once

#include "model/uuid.h"

#include <cstddef>
#include <functional>

namespace kelmo {

// A section of the library that the sidebar can select. A folder section refers
// to its watched folder by id only; an id that matches no folder shows nothing.
class SidebarItem {
public:
    enum class Kind { library, recents, favorites, folder }; // declaration order feeds the hash

    static SidebarItem library() { return SidebarItem{Kind::library, {}}; }
    static SidebarItem recents() { return SidebarItem{Kind::recents, {}}; }
    static SidebarItem favorites() { return SidebarItem{Kind::favorites, {}}; }
    static SidebarItem folder(const Uuid& folderId) { return SidebarItem{Kind::folder, folderId}; }

    Kind kind() const { return kind_; }
    bool isFolder() const { return kind_ == Kind::folder; }
    // Meaningful only for the folder kind.
    const Uuid& folderId() const { return folderId_; }

    bool operator==(const SidebarItem& other) const {
        return kind_ == other.kind_ && (kind_ != Kind::folder || folderId_ == other.folderId_);
    }

private:
    SidebarItem(Kind kind, const Uuid& folderId) : kind_{kind}, folderId_{folderId} {}

    Kind kind_;
    Uuid folderId_;
};

} // namespace kelmo

template <>
struct std::hash<kelmo::SidebarItem> {
    std::size_t operator()(const kelmo::SidebarItem& item) const noexcept {
        const std::size_t position = static_cast<std::size_t>(item.kind());
        if (!item.isFolder())
            return position;
        return position ^ (std::hash<kelmo::Uuid>{}(item.folderId()) * 31);
    }
};
