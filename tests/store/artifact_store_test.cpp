#include "store/settings_keys.h"
#include "store_fixture.h"

namespace kelmo {
namespace {

using testing::drainMainLoop;
using testing::StoreTest;
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

TEST_F(ArtifactStoreTest, StartsEmptyInTheLibraryWithTheGuideShowing) {
    EXPECT_TRUE(store->allArtifacts().empty());
    EXPECT_FALSE(store->selectedArtifact());
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
    EXPECT_TRUE(store->isShowingOnboarding());
    EXPECT_FALSE(store->isFocusMode());
    EXPECT_FALSE(store->watchedFolderURL());
}

TEST_F(ArtifactStoreTest, AddingANewFilePutsItFirstSelectedAndRecent) {
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.html");
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(store->selectedArtifact()->id, b.id);
    EXPECT_EQ(store->recentPaths(), (std::vector<std::string>{b.path(), a.path()}));
    EXPECT_EQ(savedSettings().stringArray(settings_keys::recentPaths), store->recentPaths());
}

TEST_F(ArtifactStoreTest, AddingAKnownPathSelectsTheExistingRecordAndTouchesNothingElse) {
    const Artifact a = add("a.jsx");
    add("b.jsx");
    const auto recents = store->recentPaths();
    store->addArtifact(a.url);
    EXPECT_EQ(store->selectedArtifact()->id, a.id);
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(store->recentPaths(), recents);
}

TEST_F(ArtifactStoreTest, AnyFileIsAcceptedByAddAndTypedByExtension) {
    const Artifact notes = add("notes.md");
    EXPECT_EQ(notes.type.kind, ArtifactType::Kind::html);
    store->addArtifact(root / "missing" / "ghost.tsx");
    EXPECT_EQ(store->selectedArtifact()->type.kind, ArtifactType::Kind::tsx);
}

TEST_F(ArtifactStoreTest, RecentsKeepTheTwentyNewestAndMoveRepeatsToTheFront) {
    std::vector<Artifact> added;
    for (int i = 0; i < 21; ++i)
        added.push_back(add("f" + std::to_string(i) + ".html"));
    ASSERT_EQ(store->recentPaths().size(), 20u);
    EXPECT_EQ(store->recentPaths().front(), added[20].path());
    EXPECT_EQ(store->recentPaths().back(), added[1].path());

    store->markRecent(added[10]);
    EXPECT_EQ(store->recentPaths().size(), 20u);
    EXPECT_EQ(store->recentPaths().front(), added[10].path());
    EXPECT_EQ(
        std::count(store->recentPaths().begin(), store->recentPaths().end(), added[10].path()), 1);
    EXPECT_EQ(savedSettings().stringArray(settings_keys::recentPaths), store->recentPaths());
}

TEST_F(ArtifactStoreTest, RecentArtifactsSkipMissingFilesButKeepTheirPlace) {
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.jsx");
    store->removeArtifact(b);
    EXPECT_EQ(names(store->recentArtifacts()), std::vector<std::string>{"a"});
    EXPECT_EQ(store->recentPaths().front(), b.path());

    store->addArtifact(b.url); // back in the library: back in its old place
    EXPECT_EQ(names(store->recentArtifacts()), (std::vector<std::string>{"b", "a"}));
    (void)a;
}

TEST_F(ArtifactStoreTest, FavouritesToggleSaveAndCountOnlyLibraryRecords) {
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.jsx");
    store->toggleFavorite(a);
    EXPECT_TRUE(store->isFavorite(a));
    EXPECT_FALSE(store->isFavorite(b));
    EXPECT_EQ(store->favoritesCount(), 1u);
    EXPECT_EQ(savedSettings().stringArray(settings_keys::favoritedPaths),
              std::vector<std::string>{a.path()});

    store->removeArtifact(a);
    EXPECT_EQ(store->favoritesCount(), 0u) << "a favourite path without a record does not count";
    EXPECT_TRUE(store->favoritedPaths().contains(a.path()));

    store->toggleFavorite(b);
    store->toggleFavorite(b);
    EXPECT_FALSE(store->isFavorite(b));
    EXPECT_EQ(savedSettings().stringArray(settings_keys::favoritedPaths),
              std::vector<std::string>{a.path()});
}

TEST_F(ArtifactStoreTest, SectionsFilterTheLibraryInItsOwnOrder) {
    const Artifact a = add("a.jsx");
    const Artifact b = add("b.jsx");
    const Artifact c = add("c.jsx");
    store->toggleFavorite(a);
    store->toggleFavorite(c);
    store->markRecent(a);

    store->setSelectedSection(SidebarItem::favorites());
    EXPECT_EQ(names(store->artifacts()), (std::vector<std::string>{"c", "a"}));
    store->setSelectedSection(SidebarItem::recents());
    EXPECT_EQ(names(store->artifacts()), (std::vector<std::string>{"a", "c", "b"}));
    store->setSelectedSection(SidebarItem::folder(Uuid::random()));
    EXPECT_TRUE(store->artifacts().empty()) << "a folder id that no folder has shows nothing";
    store->setSelectedSection(SidebarItem::library());
    EXPECT_EQ(names(store->artifacts()), (std::vector<std::string>{"c", "b", "a"}));
    (void)b;
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

TEST_F(ArtifactStoreTest, EveryAssignmentAndAnnouncementReachesObservers) {
    int changes = 0;
    store->signalChanged().connect([&changes] { ++changes; });
    store->setIsFocusMode(true);
    store->setIsFocusMode(true);
    store->setSelectedSection(SidebarItem::recents());
    store->setIsShowingOnboarding(false);
    EXPECT_EQ(changes, 4);
    const Artifact a = add("a.jsx");
    changes = 0;
    store->toggleFavorite(a);
    store->markRecent(a);
    EXPECT_EQ(changes, 2);
}

TEST_F(ArtifactStoreTest, OpenFileRunsAPanelAndShowsTheLibrary) {
    store->setSelectedSection(SidebarItem::favorites());
    store->openArtifactFile();
    ASSERT_EQ(panel->pending.size(), 1u);
    const auto& request = panel->pending.front().request;
    EXPECT_EQ(request.title, "Open File");
    EXPECT_EQ(request.message, "Select a file to run (.html, .jsx, or .tsx)");
    EXPECT_TRUE(request.canChooseFiles);
    EXPECT_FALSE(request.canChooseDirectories);
    EXPECT_FALSE(request.allowsMultipleSelection);

    panel->answer(std::nullopt);
    EXPECT_TRUE(store->allArtifacts().empty());
    EXPECT_EQ(store->selectedSection(), SidebarItem::favorites()) << "a cancel changes nothing";

    const auto notes = root / "notes.md";
    writeFile(notes);
    store->openArtifactFile();
    panel->answer(notes);
    EXPECT_EQ(store->selectedArtifact()->type.kind, ArtifactType::Kind::html);
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
}

TEST_F(ArtifactStoreTest, PanelAnswersAfterTheStoreIsGoneDoNothing) {
    store->openArtifactFile();
    store->addWatchedFolder();
    store.reset();
    panel->answer(root / "a.jsx");
    panel->answer(root.path());
    SUCCEED();
}

TEST_F(ArtifactStoreTest, NotificationsAreAnsweredOnTheMainLoopAfterPosting) {
    notifications.post(notification_names::openArtifactFile);
    notifications.post(notification_names::openArtifactFile);
    EXPECT_TRUE(panel->pending.empty()) << "posting returns before the store answers";
    drainMainLoop();
    ASSERT_EQ(panel->pending.size(), 2u);

    notifications.post(notification_names::openFolder);
    drainMainLoop();
    ASSERT_EQ(panel->pending.size(), 3u);
    EXPECT_EQ(panel->pending.back().request.title, "Add Folder");
    EXPECT_EQ(panel->pending.back().request.message, "Choose a folder containing your files");
    EXPECT_TRUE(panel->pending.back().request.canChooseDirectories);
    EXPECT_FALSE(panel->pending.back().request.canChooseFiles);

    notifications.post(notification_names::openFolder);
    store.reset(); // the registration ends with the store
    drainMainLoop();
    EXPECT_EQ(panel->pending.size(), 3u);
}

} // namespace
} // namespace kelmo
