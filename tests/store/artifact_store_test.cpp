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

    std::vector<std::string> saved(const char* key) const {
        return savedSettings().stringArray(key).value_or(std::vector<std::string>{});
    }
};

// Selection and recents on opening: DuskwellAppTest.OpenedFilesJoinTheLibrary...
TEST_F(ArtifactStoreTest, AddingPutsANewFileFirstAndSavesItAsRecentAndRemovingDropsIt) {
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.html");
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(saved(settings_keys::recentPaths), (std::vector<std::string>{b.path(), a.path()}));
    store->addArtifact(a.url);
    EXPECT_EQ(store->recentPaths(), (std::vector<std::string>{b.path(), a.path()}))
        << "a known file is only selected";

    // Any regular file is accepted; nothing else is, whatever its name: a missing file, a
    // folder, a named pipe.
    const Artifact notes = add("notes.md");
    std::filesystem::create_directories(root / "folder.jsx");
    ASSERT_EQ(::mkfifo((root / "pipe.jsx").c_str(), 0600), 0);
    for (const auto* name : {"missing/ghost.tsx", "folder.jsx", "pipe.jsx"})
        store->addArtifact(root / name);
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"notes", "b", "a"}));

    // Removing clears the selection only for the selected record.
    store->removeArtifact(store->allArtifacts().back()); // a reference into the store's own list
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"notes", "b"}));
    EXPECT_EQ(store->selectedArtifact()->id, notes.id);
    store->removeArtifact(notes);
    EXPECT_FALSE(store->selectedArtifact());
    EXPECT_EQ(names(store->allArtifacts()), std::vector<std::string>{"b"});
}

TEST_F(ArtifactStoreTest, RecentsKeepTheTwentyNewestMoveRepeatsToTheFrontAndSkipRemovedFiles) {
    std::vector<Artifact> added;
    for (int i = 0; i < 21; ++i)
        added.push_back(add(std::to_string(i) + ".html"));
    ASSERT_EQ(store->recentPaths().size(), 20u);
    EXPECT_EQ(store->recentPaths().front(), added[20].path());
    EXPECT_EQ(store->recentPaths().back(), added[1].path());

    store->markRecent(added[10]);
    const auto& recents = store->recentPaths();
    EXPECT_EQ(recents.size(), 20u);
    EXPECT_EQ(recents.front(), added[10].path());
    EXPECT_EQ(std::count(recents.begin(), recents.end(), added[10].path()), 1);
    EXPECT_EQ(saved(settings_keys::recentPaths), recents);

    // A removed file leaves the recent artifacts but keeps its place for its return.
    store->removeArtifact(added[10]);
    EXPECT_EQ(store->recentArtifacts().size(), 19u);
    EXPECT_EQ(store->recentArtifacts().front().name, "20");
    EXPECT_EQ(recents.front(), added[10].path());
    store->addArtifact(added[10].url);
    EXPECT_EQ(names(store->recentArtifacts()).at(0), "10");
    EXPECT_EQ(names(store->recentArtifacts()).at(1), "20");
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
    EXPECT_THAT(saved(settings_keys::favoritedPaths), UnorderedElementsAre(a.path(), c.path()));

    // Each section in its own order.
    const std::pair<SidebarItem, std::vector<std::string>> sections[] = {
        {SidebarItem::favorites(), {"c", "a"}},
        {SidebarItem::recents(), {"a", "c", "b"}},
        {SidebarItem::library(), {"c", "b", "a"}},
    };
    for (const auto& [section, shown] : sections) {
        store->setSelectedSection(section);
        EXPECT_EQ(names(store->artifacts()), shown);
    }

    store->removeArtifact(a);
    EXPECT_EQ(store->favoritesCount(), 1u) << "a favourite path without a record does not count";
    EXPECT_TRUE(store->favoritedPaths().contains(a.path()));
    store->toggleFavorite(c);
    EXPECT_FALSE(store->isFavorite(c));
    EXPECT_EQ(saved(settings_keys::favoritedPaths), std::vector<std::string>{a.path()});
}

// Through the application's commands: DuskwellAppTest.OpenCommandsPostNotifications...
TEST_F(ArtifactStoreTest, AnOpenedFileShowsTheLibraryAndPanelsOutlivingTheStoreDoNothing) {
    store->setSelectedSection(SidebarItem::favorites());
    store->openArtifactFile();
    panel->answer(std::nullopt);
    EXPECT_EQ(store->selectedSection(), SidebarItem::favorites()) << "a cancel changes nothing";
    writeFile(root / "page.html");
    store->openArtifactFile();
    panel->answer(root / "page.html");
    EXPECT_EQ(store->selectedArtifact()->name, "page");
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());

    store->openArtifactFile();
    store->addWatchedFolder();
    notifications.post(notification_names::openFolder);
    store.reset(); // the registration ends with the store
    drainMainLoop();
    ASSERT_EQ(panel->pending.size(), 2u);
    panel->answer(root / "page.html");
    panel->answer(root.path());
}

} // namespace
} // namespace kelmo
