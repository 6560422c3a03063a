#include "store/settings_keys.h"
#include "store_fixture.h"

#include <sys/stat.h>

namespace kelmo {
namespace {

using std::chrono::hours;
using testing::runMainLoopUntil;
using testing::StoreTest;
using testing::writeFile;

class FolderScanningTest : public StoreTest {
protected:
    void SetUp() override { makeStore(); }

    WatchedFolder watch(const std::filesystem::path& folder) {
        std::filesystem::create_directories(folder);
        store->addWatchedFolder();
        panel->answer(folder);
        return store->watchedFolders().back();
    }

    std::vector<std::string> libraryNames() const { return names(store->allArtifacts()); }

    const Artifact* named(const std::string& name) const {
        for (const auto& artifact : store->allArtifacts())
            if (artifact.name == name)
                return &artifact;
        return nullptr;
    }

    std::size_t savedFolderCount() const {
        return savedSettings().array(settings_keys::watchedFolderBookmarks)->size();
    }
};

TEST_F(FolderScanningTest, ListsAndShowsDirectSupportedVisibleFilesNewestFirst) {
    const auto folder = root / "Projects";
    writeFile(folder / "a.html", "", hours{1});
    writeFile(folder / "b.jsx", "", hours{25});
    writeFile(folder / ".hidden.html");
    writeFile(folder / "notes.md");
    writeFile(folder / "sub" / "c.tsx");
    writeFile(folder / "PAGE.HTM", "", hours{50});
    // Only regular files, links followed, whatever their names.
    std::filesystem::create_directories(folder / "dir.jsx");
    std::filesystem::create_directory_symlink(folder / "sub", folder / "linked-dir.tsx");
    std::filesystem::create_symlink(folder / "gone.jsx", folder / "dangling.jsx");
    ASSERT_EQ(::mkfifo((folder / "pipe.jsx").c_str(), 0600), 0);
    writeFile(root / "elsewhere.jsx", "", hours{3});
    std::filesystem::create_symlink(root / "elsewhere.jsx", folder / "link.jsx");

    const WatchedFolder watched = watch(folder);
    EXPECT_EQ(libraryNames(), (std::vector<std::string>{"a", "link", "b", "PAGE"}));
    EXPECT_EQ(store->selectedArtifact()->name, "a") << "nothing selected: the newest is";
    EXPECT_EQ(store->selectedSection(), SidebarItem::library()) << "adding does not switch";

    // The folder's section shows only its direct files in library order, even one added
    // by hand.
    writeFile(root / "c.jsx", "", hours{2});
    store->addArtifact(root / "c.jsx");
    writeFile(folder / "hand.jsx", "", hours{40});
    store->addArtifact(folder / "hand.jsx");
    store->setSelectedSection(SidebarItem::folder(watched.id));
    EXPECT_EQ(names(store->artifacts()),
              (std::vector<std::string>{"hand", "a", "link", "b", "PAGE"}));
}

TEST_F(FolderScanningTest, ABurstOfEventsIsAppliedOnceAsDifferencesAndContentEditsAreIgnored) {
    const auto folder = root / "Projects";
    writeFile(folder / "new.jsx", "", hours{1});
    writeFile(folder / "older.jsx", "", hours{2});
    writeFile(folder / "kept.html", "", hours{4});
    writeFile(root / "ancient.html", "", hours{100});
    writeFile(root / "fresh.html");
    store->addArtifact(root / "ancient.html");
    store->addArtifact(root / "fresh.html");
    watch(folder);
    EXPECT_EQ(libraryNames(),
              (std::vector<std::string>{"fresh", "new", "older", "kept", "ancient"}));
    const Uuid keptId = named("kept")->id;

    int libraryChanges = 0;
    auto shown = store->allArtifacts();
    store->signalChanged().connect([&] {
        if (store->allArtifacts() != shown) {
            shown = store->allArtifacts();
            ++libraryChanges;
        }
    });
    for (int i = 0; i < 30; ++i)
        writeFile(folder / ("made-" + std::to_string(i) + ".html"), "", hours{3});
    std::filesystem::rename(folder / "older.jsx", folder / "renamed.tsx");
    std::filesystem::remove(folder / "new.jsx");
    writeFile(folder / "notes.txt");
    ASSERT_TRUE(runMainLoopUntil([&] { return store->allArtifacts().size() == 34; }));
    // Not one per event (33): the first events at once, the rest in few steps as they
    // arrive from the monitor.
    EXPECT_LE(libraryChanges, 4);
    EXPECT_EQ(libraryNames()[0], "fresh");
    EXPECT_EQ(libraryNames()[1], "renamed");
    EXPECT_EQ(named("renamed")->type.kind, ArtifactType::Kind::tsx);
    EXPECT_EQ(libraryNames()[32], "kept");
    EXPECT_EQ(named("kept")->id, keptId) << "untouched files keep their records";

    // A change of content in place is no entry event; a file saved by renaming a new
    // one over it is, and its record follows the new date.
    const Uuid renamedId = named("renamed")->id;
    writeFile(folder / "renamed.tsx", "edited", hours{200});
    writeFile(folder / "saved.tmp", "", hours{300});
    std::filesystem::rename(folder / "saved.tmp", folder / "kept.html");
    ASSERT_TRUE(runMainLoopUntil([&] { return libraryNames().back() == "kept"; }));
    EXPECT_EQ(named("renamed")->id, renamedId);
    EXPECT_NE(named("kept")->id, keptId);

    // With nothing selected, a download under way moves nothing; the finished file,
    // renamed into place, is what opens, however old the date it keeps.
    store->setSelectedArtifact(std::nullopt);
    writeFile(folder / "report.html.part", "", hours{500});
    writeFile(folder / ".report.html.swp");
    runMainLoopUntil([] { return false; }, std::chrono::milliseconds{300});
    EXPECT_FALSE(store->selectedArtifact().has_value());
    std::filesystem::rename(folder / "report.html.part", folder / "report.html");
    ASSERT_TRUE(runMainLoopUntil([&] { return store->selectedArtifact().has_value(); }));
    EXPECT_EQ(store->selectedArtifact()->name, "report");
}

TEST_F(FolderScanningTest, AFolderIsWatchedAndSavedOnceAndRemovingItDropsItsFilesAndSection) {
    const auto folder = root / "Projects";
    writeFile(folder / "a.jsx");
    const WatchedFolder first = watch(folder);
    EXPECT_EQ(savedFolderCount(), 1u);
    std::filesystem::remove(settingsFile());
    store->addWatchedFolder();
    panel->answer(root.path() / "Projects/"); // trailing slash names the same folder
    store->addWatchedFolder();
    panel->answer(std::nullopt);
    EXPECT_EQ(store->watchedFolders().size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(settingsFile())) << "nothing is saved";

    writeFile(root / "Other" / "b.jsx");
    const WatchedFolder second = watch(root / "Other");
    const auto selected = store->selectedArtifact();
    store->setSelectedSection(SidebarItem::folder(second.id));
    store->removeFolder(first);
    EXPECT_EQ(store->selectedSection(), SidebarItem::folder(second.id));
    EXPECT_EQ(libraryNames(), std::vector<std::string>{"b"});
    EXPECT_EQ(store->selectedArtifact()->id, selected->id) << "the selection stays";

    store->removeFolder(second);
    EXPECT_EQ(store->selectedSection(), SidebarItem::library());
    EXPECT_TRUE(store->allArtifacts().empty());
    EXPECT_EQ(savedFolderCount(), 0u);
}

TEST_F(FolderScanningTest, DeletingOrRenamingTheFolderEmptiesItButKeepsItListed) {
    for (const bool rename : {false, true}) {
        makeStore();
        const auto folder = root / (rename ? "Moving" : "Doomed");
        writeFile(folder / "a.jsx");
        writeFile(folder / "b.jsx");
        watch(folder);
        ASSERT_EQ(store->allArtifacts().size(), 2u);

        if (rename)
            std::filesystem::rename(folder, root / "Moved");
        else
            std::filesystem::remove_all(folder);
        ASSERT_TRUE(runMainLoopUntil([&] { return store->allArtifacts().empty(); }))
            << (rename ? "rename" : "delete");
        EXPECT_EQ(store->watchedFolders().size(), 1u);
        store->clearWatchedFolder();
    }
}

} // namespace
} // namespace kelmo
