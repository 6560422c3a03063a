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

Glib::VariantBase parse(const char* text) {
    return Glib::VariantBase{g_variant_parse(nullptr, text, nullptr, nullptr, nullptr)};
}

Glib::VariantBase folderRecord(const std::string& id, const std::string& name,
                               const Glib::VariantBase& bookmark) {
    return makeDictionaryVariant({{settings_keys::folderId, makeStringVariant(id)},
                                  {settings_keys::folderName, makeStringVariant(name)},
                                  {settings_keys::folderBookmark, bookmark}});
}

Glib::VariantBase bookmarkOf(const std::filesystem::path& folder) {
    return makeBytesVariant(folder_bookmark::make(folder).value());
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

class PersistenceTest : public StoreTest {
protected:
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

TEST_F(PersistenceTest, FavouritesAndRecentsAreRestoredAsSavedOrDiscardedWhenForeign) {
    std::vector<std::string> recents;
    for (int i = 0; i < 25; ++i)
        recents.push_back("/r/" + std::to_string(i) + ".jsx");
    {
        SettingsStore saved{settingsFile()};
        saved.setStringArray(settings_keys::favoritedPaths, {"/f/a.jsx", "/f/a.jsx", "/f/b.jsx"});
        saved.setStringArray(settings_keys::recentPaths, recents);
        saved.setBool(settings_keys::hasSeenOnboarding, true);
    }
    makeStore();
    EXPECT_EQ(store->favoritedPaths().size(), 2u);
    EXPECT_EQ(store->recentPaths().size(), 25u) << "a restored list is taken as saved";
    EXPECT_FALSE(store->isShowingOnboarding());
    writeFile(root / "n.jsx");
    store->addArtifact(root / "n.jsx");
    EXPECT_EQ(store->recentPaths().size(), 20u);

    // A foreign value among favourites, or recents that are no list, discard the list.
    store.reset();
    SettingsStore{settingsFile()}.set(settings_keys::favoritedPaths, parse("[<'/a.jsx'>, <3>]"));
    SettingsStore{settingsFile()}.set(settings_keys::recentPaths, makeStringVariant("/a.jsx"));
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
    auto future = folder_bookmark::make(other).value();
    future[8] = 2; // a format version this build does not know
    const auto goodId = Uuid::random();
    saveFolders({
        folderRecord("not-a-uuid", "BadId", bookmarkOf(other)),
        folderRecord(Uuid::random().toString(), "BadBookmark", makeStringVariant(other.native())),
        folderRecord(Uuid::random().toString(), "Future", makeBytesVariant(future)),
        folderRecord(Uuid::random().toString(), "Gone", vanishedBookmark),
        folderRecord(goodId.toString(), "Saved Name", bookmarkOf(good)),
    });

    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 2u);
    const WatchedFolder& restored = store->watchedFolders().back();
    EXPECT_EQ(restored.id, goodId);
    EXPECT_EQ(restored.name, "Saved Name") << "the saved name wins over the folder's own";
    EXPECT_EQ(names(store->allArtifacts()), std::vector<std::string>{"a"}) << "and is scanned";
    // A missing folder (a drive not mounted) is kept, and read again once it is back.
    EXPECT_EQ(store->watchedFolders().front().url, vanished);
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

TEST_F(PersistenceTest, DownloadsIsWatchedOnFirstStartWhenReadableAndAgainOnceForgotten) {
    offerDownloads = true;
    makeStore();
    EXPECT_TRUE(store->watchedFolders().empty()) << "a missing Downloads is skipped";
    if (::geteuid() != 0) { // root reads every folder
        std::filesystem::create_directories(downloads());
        ::chmod(downloads().c_str(), 0);
        makeStore();
        EXPECT_TRUE(store->watchedFolders().empty()) << "an unreadable one too";
        ::chmod(downloads().c_str(), 0755);
    }

    writeFile(downloads() / "page.html");
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().name, "Downloads");
    EXPECT_EQ(store->selectedArtifact()->name, "page");

    const Uuid firstId = store->watchedFolders().front().id;
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().id, firstId) << "restored, not added again";

    // Removing the last folder saves an empty list; the next start offers Downloads again.
    store->removeFolder(store->watchedFolders().front());
    EXPECT_EQ(savedSettings().array(settings_keys::watchedFolderBookmarks)->size(), 0u);
    makeStore();
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_NE(store->watchedFolders().front().id, firstId);

    // Clearing forgets the folders and the whole library, but not the marks.
    writeFile(root / "hand.jsx");
    store->addArtifact(root / "hand.jsx");
    store->toggleFavorite(*store->selectedArtifact());
    store->setSelectedSection(SidebarItem::folder(store->watchedFolders().front().id));
    store->clearWatchedFolder();
    EXPECT_TRUE(store->watchedFolders().empty());
    EXPECT_TRUE(store->allArtifacts().empty());
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
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
    EXPECT_EQ(store->selectedArtifact()->name, "r\uFFFDsum\uFFFD") << "shown readably";
    EXPECT_EQ(store->watchedFolders().front().name, "Proj\uFFFDts");

    makeStore(); // kept byte for byte
    ASSERT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_EQ(store->watchedFolders().front().path(), folder.native());
    EXPECT_EQ(store->recentPaths(), std::vector<std::string>{byHand.native()});
    EXPECT_EQ(store->favoritedPaths().count(byHand.native()), 1u);
    ASSERT_EQ(store->allArtifacts().size(), 1u);
    EXPECT_EQ(store->allArtifacts().front().path(), inFolder.native());
}

TEST(SettingsStore, WritesAreAtomicReadableTextAndAFailedWriteIsToldOnce) {
    TemporaryDirectory dir;
    const auto file = dir / "kelmo" / "settings";
    EXPECT_FALSE(SettingsStore{file}.stringArray("recentPaths"));
    EXPECT_FALSE(std::filesystem::exists(dir / "kelmo")) << "reading creates nothing";

    // What killed writes left: old temporary files go; a recent one and others stay.
    using std::chrono::hours;
    writeFile(dir / "kelmo" / "settings.Ab12Cd", "stale", hours{2});
    writeFile(dir / "kelmo" / "settings.Xy34Zw", "in progress");
    writeFile(dir / "kelmo" / "settings.corrupt-20261125-101010", "kept", hours{2});
    writeFile(dir / "kelmo" / "notes.Ab12Cd", "not ours", hours{2});
    {
        SettingsStore settings{file};
        settings.setStringArray("recentPaths", {"/a/b.jsx", "/c/d é.html"});
        settings.set("gone", makeStringVariant("x"));
        settings.removeObject("gone");
    }
    SettingsStore reopened{file};
    EXPECT_EQ(reopened.stringArray("recentPaths"),
              (std::vector<std::string>{"/a/b.jsx", "/c/d é.html"}));
    EXPECT_FALSE(reopened.value("gone"));
    EXPECT_NE(readFile(file).find("'recentPaths'"), std::string::npos) << "readable text";
    EXPECT_EQ(filesIn(dir / "kelmo"),
              (std::vector<std::string>{"notes.Ab12Cd", "settings", "settings.Xy34Zw",
                                        "settings.corrupt-20261125-101010"}))
        << "an atomic write leaves no temporary file behind";

    // A file where the settings' folder should be: no write can succeed, even as root.
    SettingsStore blocked{file / "settings"};
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
