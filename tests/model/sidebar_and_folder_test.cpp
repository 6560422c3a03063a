#include "model/sidebar_item.h"
#include "model/watched_folder.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace kelmo {
namespace {

TEST(SidebarItem, EqualityByCaseAndFolderId) {
    const Uuid a = Uuid::random();
    const Uuid b = Uuid::random();
    EXPECT_EQ(SidebarItem::folder(a), SidebarItem::folder(a));
    EXPECT_NE(SidebarItem::folder(a), SidebarItem::folder(b));
    EXPECT_NE(SidebarItem::folder(a), SidebarItem::library());

    const SidebarItem fixed[] = {SidebarItem::library(), SidebarItem::recents(),
                                 SidebarItem::favorites()};
    for (const auto& x : fixed)
        for (const auto& y : fixed)
            EXPECT_EQ(x == y, x.kind() == y.kind());
}

TEST(SidebarItem, HashAgreesWithEqualityAndSeparatesFolders) {
    const Uuid a = Uuid::random();
    const std::hash<SidebarItem> hash;
    EXPECT_EQ(hash(SidebarItem::folder(a)), hash(SidebarItem::folder(a)));
    EXPECT_EQ(hash(SidebarItem::recents()), hash(SidebarItem::recents()));

    std::unordered_set<SidebarItem> set{SidebarItem::library(), SidebarItem::recents(),
                                        SidebarItem::favorites(), SidebarItem::folder(a),
                                        SidebarItem::folder(a)};
    for (int i = 0; i < 100; ++i)
        set.insert(SidebarItem::folder(Uuid::random()));
    EXPECT_EQ(set.size(), 104u);
}

TEST(WatchedFolder, IdentityIsTheIdAlone) {
    const Uuid id = Uuid::random();
    const WatchedFolder first{id, "Projects", "/home/u/Projects"};
    const WatchedFolder renamed{id, "Other", "/elsewhere"};
    EXPECT_EQ(first, renamed);
    EXPECT_EQ(std::hash<WatchedFolder>{}(first), std::hash<WatchedFolder>{}(renamed));
    EXPECT_NE(first, (WatchedFolder{Uuid::random(), "Projects", "/home/u/Projects"}));
}

TEST(WatchedFolder, HoldsOnlyItsDirectChildren) {
    const WatchedFolder projects{Uuid::random(), "Projects", "/home/u/Projects"};
    const WatchedFolder home{Uuid::random(), "u", "/home/u"};
    const Artifact direct = Artifact::from("/home/u/Projects/demo.jsx");
    const Artifact nested = Artifact::from("/home/u/Projects/old/demo.jsx");
    const Artifact sibling = Artifact::from("/home/u/ProjectsX/demo.jsx");

    EXPECT_TRUE(projects.contains(direct));
    EXPECT_FALSE(home.contains(direct));
    EXPECT_FALSE(projects.contains(nested));
    EXPECT_FALSE(home.contains(nested));
    EXPECT_FALSE(projects.contains(sibling));
    EXPECT_TRUE((WatchedFolder{Uuid::random(), "/", "/"}).contains(Artifact::from("/a.html")));
    EXPECT_FALSE((WatchedFolder{Uuid::random(), "p", "/home/U/Projects"}).contains(direct))
        << "paths compare case-sensitively";
}

TEST(Paths, ContainingDirectoryAndTrailingSlashes) {
    EXPECT_EQ(containingDirectoryPath("/a/b/c.jsx"), "/a/b");
    EXPECT_EQ(containingDirectoryPath("/c.jsx"), "/");
    EXPECT_EQ(withoutTrailingSlash("/a/b//"), "/a/b");
    EXPECT_EQ(withoutTrailingSlash("/"), "/");
}

} // namespace
} // namespace kelmo
