#include "store/folder_bookmark.h"
#include "store/settings_keys.h"
#include "store/settings_store.h"
#include "store_fixture.h"
#include "test_support.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kelmo {
namespace {

using testing::readFile;
using testing::StoreTest;
using testing::TemporaryDirectory;
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

    void saveFolders(const std::vector<Glib::VariantBase>& records) {
        SettingsStore{settingsFile()}.set(settings_keys::watchedFolderBookmarks,
                                          makeArrayVariant(records));
    }

    std::vector<std::string> savedFolderNames() {
        std::vector<std::string> result;
        const auto records = savedSettings().array(settings_keys::watchedFolderBookmarks);
        for (const auto& record : records.value_or(std::vector<Glib::VariantBase>{}))
            result.push_back(stringValue(dictionaryEntries(record)->at("name")).value());
        return result;
    }
};

// Resolving a vanished or malformed bookmark is checked through the store in
// BadFolderRecordsAreDroppedMissingFoldersKeptAndAStrayEntryVoidsTheList below.
TEST(FolderBookmark, IsMadeOnlyForAnExistingAbsoluteFolderAndRejectsUnknownVersions) {
    testing::TemporaryDirectory dir;
    EXPECT_FALSE(folder_bookmark::make(dir / "missing"));
    EXPECT_FALSE(folder_bookmark::make("relative/path"));
    EXPECT_TRUE(folder_bookmark::startAccessing(dir.path()));
    auto future = *folder_bookmark::make(dir.path());
    EXPECT_EQ(folder_bookmark::resolve(future), dir.path());
    future[8] = 2; // a version this build does not know
    EXPECT_FALSE(folder_bookmark::resolve(future));
}

TEST_F(PersistenceTest, FavouritesAndRecentsAreRestoredAsSavedOrDiscardedWhenForeign) {
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

    // A foreign value among favourites, or recents that are no list, discard the list.
    store.reset();
    saveBefore([](SettingsStore& s) {
        s.set(settings_keys::favoritedPaths,
              Glib::VariantBase{g_variant_parse(nullptr, "[<'/a.jsx'>, <3>]", 0, 0, 0)});
        s.set(settings_keys::recentPaths, makeStringVariant("/not/a/list"));
    });
    makeStore();
    EXPECT_TRUE(store->favoritedPaths().empty());
    EXPECT_TRUE(store->recentPaths().empty());
}

TEST_F(PersistenceTest, BadFolderRecordsAreDroppedMissingFoldersKeptAndAStrayEntryVoidsTheList) {
    const auto good = root / "Good";
    const auto other = root / "Other";
    writeFile(good / "a.jsx");
    writeFile(other / "b.jsx");
    const auto vanished = root / "Vanished";
    std::filesystem::create_directory(vanished);
    const auto vanishedBookmark = bookmarkOf(vanished);
    std::filesystem::remove(vanished);
    const auto goodId = Uuid::random();
    saveFolders({
        folderRecord("not-a-uuid", "BadId", bookmarkOf(other)),
        folderRecord(Uuid::random().toString(), "BadBookmark", makeStringVariant(other.native())),
        folderRecord(Uuid::random().toString(), "Gone", vanishedBookmark),
        folderRecord(goodId.toString(), "Saved Name", bookmarkOf(good)),
    });

    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 2u);
    const WatchedFolder& restored = store->watchedFolders().back();
    EXPECT_EQ(restored.id, goodId);
    EXPECT_EQ(restored.name, "Saved Name") << "the saved name wins over the folder's own";
    EXPECT_EQ(restored.url, good);
    EXPECT_EQ(names(store->allArtifacts()), std::vector<std::string>{"a"}) << "and is scanned";
    // A folder that is missing (a drive not mounted) is kept, empty, and read again at a
    // later start once it is back.
    EXPECT_EQ(store->watchedFolders().front().url, vanished);
    EXPECT_EQ(savedFolderNames(), (std::vector<std::string>{"Gone", "Saved Name"}));
    store.reset();
    writeFile(vanished / "back.jsx");
    makeStore();
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"back", "a"}));
    EXPECT_EQ(savedFolderNames(), (std::vector<std::string>{"Gone", "Saved Name"}));

    // A list with a non-dictionary is ignored whole, and nothing is re-saved.
    store.reset();
    saveFolders({folderRecord(Uuid::random().toString(), "Good", bookmarkOf(good)),
                 makeStringVariant("stray")});
    makeStore();
    EXPECT_TRUE(store->watchedFolders().empty());
    EXPECT_EQ(savedSettings().array(settings_keys::watchedFolderBookmarks)->size(), 2u);

    // When every record fails, Downloads replaces the broken list.
    store.reset();
    std::filesystem::create_directories(downloads());
    saveFolders({folderRecord("bad", "Broken", makeBytesVariant({1, 2, 3}))});
    offerDownloads = true;
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().url, downloads());
    EXPECT_EQ(savedFolderNames(), std::vector<std::string>{"Downloads"});
}

TEST_F(PersistenceTest, DownloadsIsWatchedOnFirstStartWhenItExistsAndAgainAfterItsRemoval) {
    offerDownloads = true;
    makeStore();
    EXPECT_TRUE(store->watchedFolders().empty()) << "a missing Downloads is skipped";

    writeFile(downloads() / "page.html");
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

TEST_F(PersistenceTest, UnreadableDownloadsIsSkipped) {
    if (::geteuid() == 0)
        GTEST_SKIP() << "root reads every folder";
    std::filesystem::create_directories(downloads());
    ::chmod(downloads().c_str(), 0);
    offerDownloads = true;
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

TEST_F(PersistenceTest, FileNamesThatAreNotUtf8AreKeptByteForByteAndShownReadably) {
    // Latin-1 names, as an old archive or a network share gives them.
    const auto folder = root / "Proj\xe9ts";
    const auto inFolder = folder / "caf\xe9.jsx";
    const auto byHand = root / "r\xe9sum\xe9.html";
    writeFile(inFolder);
    writeFile(byHand);
    makeStore();
    store->addWatchedFolder();
    panel->answer(folder);
    store->addArtifact(byHand);
    store->toggleFavorite(*store->selectedArtifact());
    EXPECT_EQ(store->selectedArtifact()->name, "r\uFFFDsum\uFFFD");
    EXPECT_EQ(store->watchedFolders().front().name, "Proj\uFFFDts");

    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().path(), folder.native());
    EXPECT_EQ(store->recentPaths(), std::vector<std::string>{byHand.native()});
    EXPECT_EQ(store->favoritedPaths().count(byHand.native()), 1u);
    ASSERT_EQ(store->allArtifacts().size(), 1u);
    EXPECT_EQ(store->allArtifacts().front().path(), inFolder.native());
}

Glib::VariantBase parse(const char* text) {
    return Glib::VariantBase{g_variant_parse(nullptr, text, nullptr, nullptr, nullptr)};
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(SettingsStore, AMissingFileIsEmptyAndValuesSurviveARestartInReadableText) {
    TemporaryDirectory dir;
    SettingsStore settings{dir / "kelmo" / "settings"};
    EXPECT_FALSE(settings.stringArray("recentPaths"));
    EXPECT_FALSE(settings.array("watchedFolderBookmarks"));
    EXPECT_FALSE(settings.boolValue("hasSeenOnboarding"));
    EXPECT_FALSE(std::filesystem::exists(dir / "kelmo")) << "reading creates nothing";

    const auto file = dir / "kelmo" / "settings";
    {
        SettingsStore settings{file};
        settings.setStringArray("recentPaths", {"/a/b.jsx", "/c/d é.html"});
        settings.setBool("hasSeenOnboarding", true);
        settings.set("blob", makeBytesVariant({0, 1, 255}));
        settings.set("gone", makeStringVariant("x"));
        settings.removeObject("gone");
    }
    SettingsStore reopened{file};
    EXPECT_EQ(reopened.stringArray("recentPaths"),
              (std::vector<std::string>{"/a/b.jsx", "/c/d é.html"}));
    EXPECT_TRUE(reopened.boolValue("hasSeenOnboarding"));
    EXPECT_EQ(bytesValue(reopened.value("blob")), (std::vector<std::uint8_t>{0, 1, 255}));
    EXPECT_FALSE(reopened.value("gone"));
    EXPECT_NE(readFile(file).find("'recentPaths'"), std::string::npos);
    EXPECT_EQ(filesIn(dir / "kelmo"), std::vector<std::string>{"settings"})
        << "an atomic write leaves no temporary file behind";
}

TEST(SettingsStore, KilledWritesLeftoversGoAndAFailedWriteIsToldOnce) {
    TemporaryDirectory dir;
    const auto file = dir / "settings";
    using std::chrono::hours;
    writeFile(dir / "settings.Ab12Cd", "stale", hours{2});
    writeFile(dir / "settings.Xy34Zw", "in progress");
    writeFile(dir / "settings.corrupt-20261125-101010", "kept", hours{2});
    writeFile(dir / "notes.Ab12Cd", "not ours", hours{2});
    SettingsStore{file};
    EXPECT_EQ(filesIn(dir.path()), (std::vector<std::string>{"notes.Ab12Cd", "settings.Xy34Zw",
                                                             "settings.corrupt-20261125-101010"}));

    // A folder where the file's own folder should be: no write can succeed, even as root.
    writeFile(dir / "blocked", "a file");
    SettingsStore blocked{dir / "blocked" / "settings"};
    std::vector<std::string> told;
    blocked.signalWriteFailed().connect([&told](const std::string& why) { told.push_back(why); });
    blocked.setBool("hasSeenOnboarding", true);
    blocked.setBool("hasSeenOnboarding", false);
    ASSERT_EQ(told.size(), 1u);
    EXPECT_EQ(blocked.writeError(), told.front());
    EXPECT_FALSE(blocked.boolValue("hasSeenOnboarding")) << "values still change in memory";
}

TEST(SettingsStore, UnparsableFileIsMovedAsideNotLost) {
    for (const std::string& content : {std::string{"{'recentPaths': <['/a'"},
                                       std::string{"\xff\xfe not text"}, std::string{"[1, 2]"}}) {
        TemporaryDirectory dir;
        const auto file = dir / "settings";
        writeFile(file, content);
        SettingsStore settings{file};
        EXPECT_FALSE(settings.stringArray("recentPaths"));

        const auto names = filesIn(dir.path());
        ASSERT_EQ(names.size(), 1u);
        EXPECT_EQ(names[0].rfind("settings.corrupt-", 0), 0u) << names[0];
        EXPECT_EQ(readFile(dir / names[0]), content);

        settings.setBool("hasSeenOnboarding", true);
        EXPECT_TRUE(SettingsStore{file}.boolValue("hasSeenOnboarding"));
    }
}

TEST(SettingsStore, TypedReadersRejectForeignShapesAndBoolsReadLoosely) {
    TemporaryDirectory dir;
    SettingsStore settings{dir / "settings"};
    settings.set("mixed", parse("[<'/a'>, <3>]"));
    settings.set("boxedStrings", parse("[<'/a'>, <'/b'>]"));
    settings.set("dictionary", parse("{'a': <1>}"));
    settings.set("emptyList", parse("@as []"));

    EXPECT_FALSE(settings.stringArray("mixed")) << "a number among strings is no string list";
    EXPECT_EQ(settings.stringArray("boxedStrings"), (std::vector<std::string>{"/a", "/b"}));
    EXPECT_FALSE(settings.array("dictionary")) << "a dictionary is not a list";
    EXPECT_EQ(settings.stringArray("emptyList"), std::vector<std::string>{});
    EXPECT_EQ(settings.array("mixed")->size(), 2u);

    // A bool reads loosely (numbers, "yes"/"true" in any case) and defaults to false.
    const std::pair<const char*, bool> cases[] = {
        {"<true>", true}, {"int64 0", false}, {"2.5", true},
        {"'YES'", true},  {"'maybe'", false}, {"['x']", false},
    };
    for (const auto& [text, expected] : cases) {
        settings.set("flag", parse(text));
        EXPECT_EQ(settings.boolValue("flag"), expected) << text;
    }
    EXPECT_FALSE(settings.boolValue("absent"));
}

} // namespace
} // namespace kelmo
