#include "app/onboarding_steps.h"
#include "app/renderer_choice.h"
#include "app/sidebar_badges.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

using Kind = SidebarItem::Kind;

TEST(SidebarBadges, LibraryAndFoldersFromOneArtifactFavoritesFromOneRecentsNever) {
    EXPECT_EQ(sidebarBadgeCount(Kind::library, 0), std::nullopt);
    EXPECT_EQ(sidebarBadgeCount(Kind::library, 1), 1u);
    EXPECT_EQ(sidebarBadgeCount(Kind::library, 1234), 1234u);
    EXPECT_EQ(sidebarBadgeCount(Kind::favorites, 0), std::nullopt);
    EXPECT_EQ(sidebarBadgeCount(Kind::favorites, 2), 2u);
    EXPECT_EQ(sidebarBadgeCount(Kind::folder, 0), std::nullopt);
    EXPECT_EQ(sidebarBadgeCount(Kind::folder, 3), 3u);
    EXPECT_EQ(sidebarBadgeCount(Kind::recents, 0), std::nullopt);
    EXPECT_EQ(sidebarBadgeCount(Kind::recents, 20), std::nullopt);
    EXPECT_EQ(badgeText(1234567), "1234567") << "no grouping";
}

TEST(SidebarBadges, FolderCountsOnlyItsDirectChildrenByExactPath) {
    const WatchedFolder folder{Uuid::random(), "site", "/home/u/site"};
    const std::vector<Artifact> artifacts{
        Artifact::make("/home/u/site/a.html", Clock::now()),
        Artifact::make("/home/u/site/b.jsx", Clock::now()),
        Artifact::make("/home/u/site/nested/c.html", Clock::now()),
        Artifact::make("/home/u/site-2/d.html", Clock::now()),
        Artifact::make("/home/u/other/site/e.html", Clock::now()),
    };
    EXPECT_EQ(folderArtifactCount(folder, artifacts), 2u);
    EXPECT_EQ(folderArtifactCount(folder, {}), 0u);
}

TEST(OnboardingGrid, LinesEveryFortyFromTheCornerUpToAndIncludingTheFarEdge) {
    EXPECT_EQ(gridLineOffsets(120), (std::vector<double>{0, 40, 80, 120}));
    EXPECT_EQ(gridLineOffsets(119), (std::vector<double>{0, 40, 80}));
    EXPECT_EQ(gridLineOffsets(0), (std::vector<double>{0}));
    EXPECT_TRUE(gridLineOffsets(-1).empty());
    EXPECT_EQ(gridLineOffsets(520).size(), 14u);
}

TEST(RendererChoice, OnlyMesaSoftwareRasterisersCountAsSoftware) {
    EXPECT_TRUE(isSoftwareRenderer("llvmpipe (LLVM 15.0.6, 256 bits)"));
    EXPECT_TRUE(isSoftwareRenderer("Mesa SoftPipe"));
    EXPECT_TRUE(isSoftwareRenderer("Software Rasterizer (swrast)"));
    EXPECT_FALSE(isSoftwareRenderer("Mesa Intel(R) UHD Graphics 620 (KBL GT2)"));
    EXPECT_FALSE(isSoftwareRenderer("AMD Radeon RX 6600 (radeonsi, navi23, LLVM 15.0.6)"));
    EXPECT_FALSE(isSoftwareRenderer(""));
}

} // namespace
} // namespace kelmo
