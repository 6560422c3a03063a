#include "store/folder_bookmark.h"
#include "store/settings_keys.h"
#include "store_fixture.h"

#include <glib.h>
#include <sys/stat.h>

namespace kelmo {
namespace {

using testing::StoreTest;
using testing::writeFile;

Glib::VariantBase folderRecord(const std::string& id, const std::string& name,
                               const Glib::VariantBase& bookmark) {
    return makeDictionaryVariant({{settings_keys::folderId, makeStringVariant(id)},
                                  {settings_keys::folderName, makeStringVariant(name)},
                                  {settings_keys::folderBookmark, bookmark}});
}

Glib::VariantBase bookmarkOf(const std::filesystem::path& folder) {
    return makeBytesVariant(folder_bookmark::make(folder).value());
}

class PersistenceTest : public StoreTest {
protected:
    void saveBefore(const std::function<void(SettingsStore&)>& write) {
        SettingsStore settings{settingsFile()};
        write(settings);
    }

    std::vector<std::string> savedFolderNames() {
        std::vector<std::string> result;
        const auto records = savedSettings().array(settings_keys::watchedFolderBookmarks);
        for (const auto& record : records.value_or(std::vector<Glib::VariantBase>{}))
            result.push_back(stringValue(dictionaryEntries(record)->at("name")).value());
        return result;
    }
};

TEST(FolderBookmark, ResolvesWhileTheFolderExists) {
    testing::TemporaryDirectory dir;
    const auto folder = dir / "Projects";
    std::filesystem::create_directory(folder);
    const auto data = folder_bookmark::make(folder);
    ASSERT_TRUE(data);
    EXPECT_EQ(folder_bookmark::resolve(*data), folder);
    EXPECT_TRUE(folder_bookmark::startAccessing(folder));

    std::filesystem::remove(folder);
    EXPECT_FALSE(folder_bookmark::resolve(*data));
    EXPECT_FALSE(folder_bookmark::make(folder));
    EXPECT_FALSE(folder_bookmark::make("relative/path"));

    auto future = *folder_bookmark::make(dir.path());
    future[8] = 2; // a version this build does not know
    EXPECT_FALSE(folder_bookmark::resolve(future));
    EXPECT_FALSE(folder_bookmark::resolve({'K', 'E', 'L'}));
}

TEST_F(PersistenceTest, FavouritesAndRecentsAreRestoredAsSaved) {
    std::vector<std::string> recents;
    for (int i = 0; i < 25; ++i)
        recents.push_back("/r/" + std::to_string(i) + ".jsx");
    saveBefore([&](SettingsStore& s) {
        s.setStringArray(settings_keys::favoritedPaths, {"/f/a.jsx", "/f/a.jsx", "/f/b.jsx"});
        s.setStringArray(settings_keys::recentPaths, recents);
        s.setBool(settings_keys::hasSeenOnboarding, true);
    });
    makeStore();
    EXPECT_EQ(store->favoritedPaths().size(), 2u);
    EXPECT_EQ(store->recentPaths().size(), 25u) << "a restored list is taken as saved";
    EXPECT_FALSE(store->isShowingOnboarding());

    writeFile(root / "n.jsx");
    store->addArtifact(root / "n.jsx");
    EXPECT_EQ(store->recentPaths().size(), 20u);
}

TEST_F(PersistenceTest, AForeignValueAmongFavouritesDiscardsTheList) {
    saveBefore([](SettingsStore& s) {
        s.set(settings_keys::favoritedPaths,
              Glib::VariantBase{g_variant_parse(nullptr, "[<'/a.jsx'>, <3>]", 0, 0, 0)});
        s.set(settings_keys::recentPaths, makeStringVariant("/not/a/list"));
    });
    makeStore();
    EXPECT_TRUE(store->favoritedPaths().empty());
    EXPECT_TRUE(store->recentPaths().empty());
}

TEST_F(PersistenceTest, BadFolderRecordsAreSkippedAndDroppedFromTheSavedList) {
    const auto good = root / "Good";
    const auto other = root / "Other";
    writeFile(good / "a.jsx");
    writeFile(other / "b.jsx");
    const auto vanished = root / "Vanished";
    std::filesystem::create_directory(vanished);
    const auto vanishedBookmark = bookmarkOf(vanished);
    std::filesystem::remove(vanished);
    const auto goodId = Uuid::random();
    saveBefore([&](SettingsStore& s) {
        s.set(settings_keys::watchedFolderBookmarks,
              makeArrayVariant({
                  folderRecord("not-a-uuid", "BadId", bookmarkOf(other)),
                  folderRecord(Uuid::random().toString(), "BadBookmark",
                               makeStringVariant(other.native())),
                  folderRecord(Uuid::random().toString(), "Gone", vanishedBookmark),
                  folderRecord(goodId.toString(), "Saved Name", bookmarkOf(good)),
              }));
    });

    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    const WatchedFolder& restored = store->watchedFolders().front();
    EXPECT_EQ(restored.id, goodId);
    EXPECT_EQ(restored.name, "Saved Name") << "the saved name wins over the folder's own";
    EXPECT_EQ(restored.url, good);
    EXPECT_EQ(names(store->allArtifacts()), std::vector<std::string>{"a"});
    EXPECT_EQ(store->selectedArtifact()->name, "a");
    EXPECT_TRUE(store->isWatching(restored));
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
    EXPECT_EQ(savedFolderNames(), std::vector<std::string>{"Saved Name"});
}

TEST_F(PersistenceTest, AListWithANonDictionaryIsIgnoredWhole) {
    const auto good = root / "Good";
    std::filesystem::create_directories(good);
    saveBefore([&](SettingsStore& s) {
        s.set(settings_keys::watchedFolderBookmarks,
              makeArrayVariant({folderRecord(Uuid::random().toString(), "Good", bookmarkOf(good)),
                                makeStringVariant("stray")}));
    });
    makeStore();
    EXPECT_TRUE(store->watchedFolders().empty());
    EXPECT_EQ(savedSettings().array(settings_keys::watchedFolderBookmarks)->size(), 2u)
        << "nothing is re-saved";
}

TEST_F(PersistenceTest, WhenEveryRecordFailsDownloadsReplacesTheBrokenList) {
    std::filesystem::create_directories(downloads());
    saveBefore([&](SettingsStore& s) {
        s.set(settings_keys::watchedFolderBookmarks,
              makeArrayVariant({folderRecord("bad", "Broken", makeBytesVariant({1, 2, 3}))}));
    });
    offerDownloads = true;
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().url, downloads());
    EXPECT_EQ(savedFolderNames(), std::vector<std::string>{"Downloads"});
}

TEST_F(PersistenceTest, DownloadsIsWatchedOnFirstStartOnlyWhenReadable) {
    writeFile(downloads() / "page.html");
    offerDownloads = true;
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().name, "Downloads");
    EXPECT_EQ(store->selectedArtifact()->name, "page");

    // Restarting restores the saved folder (same id) instead of adding it again.
    const Uuid firstId = store->watchedFolders().front().id;
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().id, firstId);

    // Removing the last folder saves an empty list; the next start offers Downloads again.
    store->removeFolder(store->watchedFolders().front());
    EXPECT_EQ(savedSettings().array(settings_keys::watchedFolderBookmarks)->size(), 0u);
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_NE(store->watchedFolders().front().id, firstId);
}

TEST_F(PersistenceTest, UnreadableOrMissingDownloadsIsSkipped) {
    offerDownloads = true;
    makeStore();
    EXPECT_TRUE(store->watchedFolders().empty());

    if (::geteuid() == 0)
        GTEST_SKIP() << "root reads every folder";
    std::filesystem::create_directories(downloads());
    ::chmod(downloads().c_str(), 0);
    makeStore();
    EXPECT_TRUE(store->watchedFolders().empty());
}

TEST_F(PersistenceTest, ClearingForgetsFoldersAndTheWholeLibraryButKeepsMarks) {
    writeFile(downloads() / "page.html");
    offerDownloads = true;
    makeStore();
    writeFile(root / "hand.jsx");
    store->addArtifact(root / "hand.jsx");
    store->toggleFavorite(*store->selectedArtifact());
    const auto folder = store->watchedFolders().front();
    store->setSelectedSection(SidebarItem::folder(folder.id));

    store->clearWatchedFolder();
    EXPECT_TRUE(store->watchedFolders().empty());
    EXPECT_TRUE(store->allArtifacts().empty());
    EXPECT_FALSE(store->selectedArtifact());
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
    EXPECT_FALSE(store->isWatching(folder));
    EXPECT_FALSE(savedSettings().value(settings_keys::watchedFolderBookmarks));
    EXPECT_EQ(savedSettings().stringArray(settings_keys::favoritedPaths)->size(), 1u);
    EXPECT_EQ(savedSettings().stringArray(settings_keys::recentPaths)->size(), 1u);
}

} // namespace
} // namespace kelmo
