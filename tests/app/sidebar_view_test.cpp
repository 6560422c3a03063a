#include "app/sidebar_view.h"
#include "shell_fixture.h"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/text.h>

namespace kelmo::testing {
namespace {

class SidebarViewTest : public ShellTest {
protected:
    // The badge number shown on a row, or nothing when the row shows no badge.
    std::optional<std::string> badgeOf(Gtk::Button& row) {
        auto badges = findAll<Gtk::Label>(
            row, [](Gtk::Label& label) { return label.has_css_class("sidebar-badge"); });
        if (badges.empty() || !isShown(*badges.front()))
            return std::nullopt;
        return badges.front()->get_text();
    }

    Gtk::Button& row(SidebarView& sidebar, const std::string& title, int index = 0) {
        auto rows = findAll<Gtk::Button>(sidebar, [&title](Gtk::Button& button) {
            return button.has_css_class("sidebar-row") && findButton(button, title) == &button;
        });
        EXPECT_GT(rows.size(), static_cast<std::size_t>(index)) << title;
        return *rows.at(index);
    }

    static bool isHighlighted(Gtk::Widget& row) { return row.has_css_class("selected"); }
};

TEST_F(SidebarViewTest, EmptyLibraryShowsNoBadgesAndOnlyTheFoldersHeadingAndAddButton) {
    auto& store = makeStore();
    SidebarView sidebar{store};
    show(sidebar);

    EXPECT_EQ(badgeOf(row(sidebar, "Library")), std::nullopt);
    EXPECT_EQ(badgeOf(row(sidebar, "Recents")), std::nullopt);
    EXPECT_EQ(badgeOf(row(sidebar, "Favorites")), std::nullopt);
    const auto texts = shownTexts(sidebar);
    const auto folders = std::find(texts.begin(), texts.end(), "FOLDERS");
    ASSERT_NE(folders, texts.end());
    EXPECT_EQ(*(folders + 1), "Add Folder...");
    EXPECT_NE(std::find(texts.begin(), texts.end(), "Kelmo"), texts.end());
    EXPECT_NE(std::find(texts.begin(), texts.end(), KELMO_MAKER_NAME), texts.end());
}

TEST_F(SidebarViewTest, CountsFollowTheStoreWithRecentsNeverBadgedAndSubfoldersNotCounted) {
    writeFile(root / "work" / "a.html");
    writeFile(root / "work" / "b.jsx");
    writeFile(root / "work" / "nested" / "c.html");
    auto& store = makeStore();
    SidebarView sidebar{store};
    show(sidebar);
    watchFolder(root / "work");

    EXPECT_EQ(badgeOf(row(sidebar, "Library")), "2");
    EXPECT_EQ(badgeOf(row(sidebar, "work")), "2");
    EXPECT_EQ(badgeOf(row(sidebar, "Favorites")), std::nullopt);

    // Files outside every folder count towards the library but not the folder.
    store.addArtifact(root / "nested-elsewhere.tsx");
    store.markRecent(store.allArtifacts().front());
    store.toggleFavorite(store.allArtifacts().front());
    drainMainLoop();
    EXPECT_EQ(badgeOf(row(sidebar, "Library")), "3");
    EXPECT_EQ(badgeOf(row(sidebar, "work")), "2");
    EXPECT_EQ(badgeOf(row(sidebar, "Recents")), std::nullopt);
    EXPECT_EQ(badgeOf(row(sidebar, "Favorites")), "1");
}

TEST_F(SidebarViewTest, ChoosingARowSelectsItsSectionAndReturnsToTheLibrary) {
    writeFile(root / "work" / "a.html");
    auto& store = makeStore();
    SidebarView sidebar{store};
    show(sidebar);
    watchFolder(root / "work");
    store.setSelectedArtifact(store.allArtifacts().front());

    click(row(sidebar, "Favorites"));
    EXPECT_EQ(store.selectedSection(), SidebarItem::favorites());
    EXPECT_FALSE(store.selectedArtifact().has_value());
    EXPECT_TRUE(isHighlighted(row(sidebar, "Favorites")));
    EXPECT_FALSE(isHighlighted(row(sidebar, "Library")));

    // The row that is already selected still brings the library back.
    store.setSelectedArtifact(store.allArtifacts().front());
    click(row(sidebar, "Favorites"));
    EXPECT_FALSE(store.selectedArtifact().has_value());

    click(row(sidebar, "work"));
    EXPECT_EQ(store.selectedSection(), SidebarItem::folder(store.watchedFolders().front().id));
    EXPECT_TRUE(isHighlighted(row(sidebar, "work")));
    EXPECT_FALSE(isHighlighted(row(sidebar, "Favorites")));
}

TEST_F(SidebarViewTest, TwoFoldersWithTheSameNameAreToldApart) {
    writeFile(root / "one" / "site" / "a.html");
    writeFile(root / "two" / "site" / "b.html");
    writeFile(root / "two" / "site" / "c.html");
    auto& store = makeStore();
    SidebarView sidebar{store};
    show(sidebar);
    watchFolder(root / "one" / "site");
    watchFolder(root / "two" / "site");

    auto& first = row(sidebar, "site", 0);
    auto& second = row(sidebar, "site", 1);
    EXPECT_EQ(badgeOf(first), "1");
    EXPECT_EQ(badgeOf(second), "2");

    click(second);
    EXPECT_EQ(store.selectedSection(), SidebarItem::folder(store.watchedFolders().at(1).id));
    EXPECT_TRUE(isHighlighted(second));
    EXPECT_FALSE(isHighlighted(first));
}

TEST_F(SidebarViewTest, FolderContextMenuRemovesTheFolderOrOpensIt) {
    writeFile(root / "work" / "a.html");
    writeFile(root / "other" / "b.html");
    auto& store = makeStore();
    std::vector<std::string> opened;
    SidebarView sidebar{store, [&opened](const std::string& path) { opened.push_back(path); }};
    show(sidebar);
    watchFolder(root / "work");
    watchFolder(root / "other");

    row(sidebar, "work").activate_action("folder.open");
    EXPECT_EQ(opened, std::vector<std::string>{(root / "work").native()});

    row(sidebar, "work").activate_action("folder.remove");
    ASSERT_TRUE(runMainLoopUntil([&] { return store.watchedFolders().size() == 1; }));
    EXPECT_EQ(store.watchedFolders().front().name, "other");
    drainMainLoop();
    const auto texts = shownTexts(sidebar);
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "work"), 0);
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "other"), 1);
}

TEST_F(SidebarViewTest, SearchFieldSwapsItsHintForAClearButtonAndFiltersNothing) {
    writeFile(root / "work" / "alpha.html");
    writeFile(root / "work" / "beta.html");
    auto& store = makeStore();
    SidebarView sidebar{store};
    show(sidebar);
    watchFolder(root / "work");
    const auto artifactsBefore = names(store.artifacts());

    auto fields = findAll<Gtk::Text>(sidebar);
    ASSERT_EQ(fields.size(), 1u);
    auto& field = *fields.front();
    EXPECT_EQ(field.get_placeholder_text(), "Search artifacts");
    const auto hintShown = [&] {
        const auto texts = shownTexts(sidebar);
        return std::find(texts.begin(), texts.end(), "⌘F") != texts.end();
    };
    const auto clearButton = [&]() -> Gtk::Button* {
        auto found = findAll<Gtk::Button>(
            sidebar, [](Gtk::Button& b) { return b.has_css_class("search-clear") && isShown(b); });
        return found.empty() ? nullptr : found.front();
    };
    EXPECT_TRUE(hintShown());
    EXPECT_EQ(clearButton(), nullptr);
    const auto rowsBefore = findAll<Gtk::Button>(sidebar).size();

    field.set_text("alpha");
    EXPECT_FALSE(hintShown());
    ASSERT_NE(clearButton(), nullptr);
    EXPECT_EQ(names(store.artifacts()), artifactsBefore);
    EXPECT_EQ(findAll<Gtk::Button>(sidebar).size(), rowsBefore);
    EXPECT_TRUE(isShown(row(sidebar, "work")));

    click(*clearButton());
    EXPECT_EQ(field.get_text(), "");
    EXPECT_TRUE(hintShown());
    EXPECT_EQ(clearButton(), nullptr);
    EXPECT_EQ(names(store.artifacts()), artifactsBefore);
}

TEST_F(SidebarViewTest, FooterShowsTheGuideAndOpensAbout) {
    auto& store = makeStore();
    store.setIsShowingOnboarding(false);
    SidebarView sidebar{store};
    show(sidebar);
    int aboutOpened = 0;
    auto app = Gio::SimpleActionGroup::create();
    app->add_action("about", [&aboutOpened] { ++aboutOpened; });
    window->insert_action_group("app", app);

    auto* howTo = findButton(sidebar, "How to use");
    ASSERT_NE(howTo, nullptr);
    EXPECT_EQ(howTo->get_tooltip_text(), "Show onboarding guide");
    click(*howTo);
    EXPECT_TRUE(store.isShowingOnboarding());

    auto* about = findButton(sidebar, "About");
    ASSERT_NE(about, nullptr);
    EXPECT_EQ(about->get_tooltip_text(), "About Kelmo");
    click(*about);
    EXPECT_EQ(aboutOpened, 1);
}

TEST_F(SidebarViewTest, AddFolderRunsTheFolderChooser) {
    auto& store = makeStore();
    SidebarView sidebar{store};
    show(sidebar);
    auto* add = findButton(sidebar, "Add Folder...");
    ASSERT_NE(add, nullptr);
    click(*add);
    ASSERT_EQ(panel->pending.size(), 1u);
    EXPECT_TRUE(panel->pending.front().request.canChooseDirectories);
    panel->answer(std::nullopt);
    EXPECT_TRUE(store.watchedFolders().empty());
}

} // namespace
} // namespace kelmo::testing
