#include "store/settings_keys.h"
#include "store_fixture.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace kelmo {
namespace {

using testing::drainMainLoop;
using testing::StoreTest;
using ::testing::UnorderedElementsAre;
using testing::writeFile;

class ArtifactStoreTest : public StoreTest {
protected:
    void SetUp() override { makeStore(); }

    Artifact add(const std::string& name) {
        const auto file = root / "files" / name;
        writeFile(file);
        store->addArtifact(file);
        return *store->selectedArtifact();
    }
};

TEST_F(ArtifactStoreTest, AddingPutsANewFileFirstSelectedAndRecentAndOnlySelectsAKnownOne) {
    EXPECT_FALSE(store->selectedArtifact());
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.html");
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(store->selectedArtifact()->id, b.id);
    EXPECT_EQ(store->recentPaths(), (std::vector<std::string>{b.path(), a.path()}));
    EXPECT_EQ(savedSettings().stringArray(settings_keys::recentPaths), store->recentPaths());

    store->addArtifact(a.url);
    EXPECT_EQ(store->selectedArtifact()->id, a.id);
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(store->recentPaths(), (std::vector<std::string>{b.path(), a.path()}));

    // Any regular file is accepted and typed by its extension; nothing else is, whatever
    // its name: a missing file, a folder, a named pipe.
    EXPECT_EQ(add("notes.md").type.kind, ArtifactType::Kind::html);
    std::filesystem::create_directories(root / "folder.jsx");
    ASSERT_EQ(::mkfifo((root / "pipe.jsx").c_str(), 0600), 0);
    for (const auto* name : {"missing/ghost.tsx", "folder.jsx", "pipe.jsx"})
        store->addArtifact(root / name);
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"notes", "b", "a"}));
}

TEST_F(ArtifactStoreTest, RecentsKeepTheTwentyNewestMoveRepeatsToTheFrontAndSkipRemovedFiles) {
    std::vector<Artifact> added;
    for (int i = 0; i < 21; ++i)
        added.push_back(add(std::to_string(i) + ".html"));
    ASSERT_EQ(store->recentPaths().size(), 20u);
    EXPECT_EQ(store->recentPaths().front(), added[20].path());
    EXPECT_EQ(store->recentPaths().back(), added[1].path());

    store->markRecent(added[10]);
    EXPECT_EQ(store->recentPaths().size(), 20u);
    EXPECT_EQ(store->recentPaths().front(), added[10].path());
    EXPECT_EQ(
        std::count(store->recentPaths().begin(), store->recentPaths().end(), added[10].path()), 1);
    EXPECT_EQ(savedSettings().stringArray(settings_keys::recentPaths), store->recentPaths());

    // A removed file leaves the recent artifacts but keeps its place for its return.
    store->removeArtifact(added[10]);
    EXPECT_EQ(store->recentArtifacts().size(), 19u);
    EXPECT_EQ(store->recentArtifacts().front().name, "20");
    EXPECT_EQ(store->recentPaths().front(), added[10].path());
    store->addArtifact(added[10].url);
    EXPECT_EQ(store->recentArtifacts().front().name, "10");
    EXPECT_EQ(store->recentArtifacts().at(1).name, "20");
}

TEST_F(ArtifactStoreTest, FavouritesToggleSaveAndCountOnlyLibraryRecordsAndSectionsFilter) {
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.jsx");
    const Artifact c = add("c.jsx");
    store->toggleFavorite(a);
    store->toggleFavorite(c);
    store->markRecent(a);
    EXPECT_TRUE(store->isFavorite(a));
    EXPECT_FALSE(store->isFavorite(b));
    EXPECT_EQ(store->favoritesCount(), 2u);
    EXPECT_THAT(savedSettings().stringArray(settings_keys::favoritedPaths).value(),
                UnorderedElementsAre(a.path(), c.path()));

    // Each section in its own order.
    store->setSelectedSection(SidebarItem::favorites());
    EXPECT_EQ(names(store->artifacts()), (std::vector<std::string>{"c", "a"}));
    store->setSelectedSection(SidebarItem::recents());
    EXPECT_EQ(names(store->artifacts()), (std::vector<std::string>{"a", "c", "b"}));
    store->setSelectedSection(SidebarItem::folder(Uuid::random()));
    EXPECT_TRUE(store->artifacts().empty()) << "a folder id that no folder has shows nothing";
    store->setSelectedSection(SidebarItem::library());
    EXPECT_EQ(names(store->artifacts()), (std::vector<std::string>{"c", "b", "a"}));

    store->removeArtifact(a);
    EXPECT_EQ(store->favoritesCount(), 1u) << "a favourite path without a record does not count";
    EXPECT_TRUE(store->favoritedPaths().contains(a.path()));
    store->toggleFavorite(b);
    store->toggleFavorite(b);
    EXPECT_FALSE(store->isFavorite(b));
    EXPECT_THAT(savedSettings().stringArray(settings_keys::favoritedPaths).value(),
                UnorderedElementsAre(a.path(), c.path()));
}

TEST_F(ArtifactStoreTest, RemovingClearsTheSelectionOnlyForTheSelectedRecord) {
    add("a.jsx");
    const Artifact b = add("b.jsx");
    store->removeArtifact(store->allArtifacts().back()); // a reference into the store's own list
    EXPECT_EQ(names(store->allArtifacts()), std::vector<std::string>{"b"});
    EXPECT_EQ(store->selectedArtifact()->id, b.id);
    store->removeArtifact(b);
    EXPECT_FALSE(store->selectedArtifact());
    EXPECT_TRUE(store->allArtifacts().empty());
}

TEST_F(ArtifactStoreTest, OpenFileRunsAPanelAndShowsTheLibrary) {
    store->setSelectedSection(SidebarItem::favorites());
    store->openArtifactFile();
    ASSERT_EQ(panel->pending.size(), 1u);
    const auto& request = panel->pending.front().request;
    EXPECT_TRUE(request.canChooseFiles);
    EXPECT_FALSE(request.canChooseDirectories);
    EXPECT_FALSE(request.allowsMultipleSelection);

    panel->answer(std::nullopt);
    EXPECT_EQ(store->selectedSection(), SidebarItem::favorites()) << "a cancel changes nothing";

    writeFile(root / "page.html");
    store->openArtifactFile();
    panel->answer(root / "page.html");
    EXPECT_EQ(store->selectedArtifact()->name, "page");
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
}

TEST_F(ArtifactStoreTest, NotificationsAreAnsweredOnTheMainLoopWhileTheStoreLives) {
    notifications.post(notification_names::openArtifactFile);
    notifications.post(notification_names::openArtifactFile);
    EXPECT_TRUE(panel->pending.empty()) << "posting returns before the store answers";
    drainMainLoop();
    ASSERT_EQ(panel->pending.size(), 2u);

    notifications.post(notification_names::openFolder);
    drainMainLoop();
    ASSERT_EQ(panel->pending.size(), 3u);
    EXPECT_TRUE(panel->pending.back().request.canChooseDirectories);
    EXPECT_FALSE(panel->pending.back().request.canChooseFiles);

    notifications.post(notification_names::openFolder);
    store.reset(); // the registration ends with the store
    drainMainLoop();
    EXPECT_EQ(panel->pending.size(), 3u);
    // Panels answered after the store is gone do nothing.
    for (const auto& chosen : {root / "a.jsx", root / "b.jsx", root.path()})
        panel->answer(chosen);
}

} // namespace
} // namespace kelmo
