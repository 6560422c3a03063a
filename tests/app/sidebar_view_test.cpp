#include "app/sidebar_view.h"
#include "shell_fixture.h"

#include <giomm/simpleactiongroup.h>
#include <gtkmm/text.h>

namespace kelmo::testing {
namespace {

class SidebarViewTest : public ShellTest {
protected:
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

    SidebarView& showSidebar(std::function<void(const std::string&)> openFolder = {}) {
        makeStore();
        auto* sidebar = openFolder ? Gtk::make_managed<SidebarView>(*store, openFolder)
                                   : Gtk::make_managed<SidebarView>(*store);
        show(*sidebar);
        return *sidebar;
    }
};

TEST_F(SidebarViewTest, CountsFollowTheStoreAndChoosingARowSelectsItsSectionAndTheLibrary) {
    writeFile(root / "work" / "a.html");
    writeFile(root / "work" / "b.jsx");
    writeFile(root / "work" / "nested" / "c.html");
    auto& sidebar = showSidebar();
    EXPECT_EQ(badgeOf(row(sidebar, "Library")), std::nullopt) << "no count at zero";
    press(sidebar, "Add Folder...");
    panel->answer(root / "work");
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() == 1; }));
    drainMainLoop();

    // Files outside every folder count towards the library but not the folder.
    writeFile(root / "nested-elsewhere.tsx");
    store->addArtifact(root / "nested-elsewhere.tsx");
    store->markRecent(store->allArtifacts().front());
    store->toggleFavorite(store->allArtifacts().front());
    drainMainLoop();
    EXPECT_EQ(badgeOf(row(sidebar, "Library")), "3");
    EXPECT_EQ(badgeOf(row(sidebar, "work")), "2");
    EXPECT_EQ(badgeOf(row(sidebar, "Favorites")), "1");
    EXPECT_EQ(badgeOf(row(sidebar, "Recents")), std::nullopt) << "recents show no count";

    click(row(sidebar, "Favorites"));
    EXPECT_EQ(store->selectedSection(), SidebarItem::favorites());
    EXPECT_FALSE(store->selectedArtifact().has_value());
    // The row that is already selected still brings the library back.
    store->setSelectedArtifact(store->allArtifacts().front());
    click(row(sidebar, "Favorites"));
    EXPECT_FALSE(store->selectedArtifact().has_value());
}

TEST_F(SidebarViewTest, FoldersOfTheSameNameAreToldApartAndTheirMenuOpensOrRemovesThem) {
    writeFile(root / "one" / "site" / "a.html");
    writeFile(root / "two" / "site" / "b.html");
    writeFile(root / "two" / "site" / "c.html");
    std::vector<std::string> opened;
    auto& sidebar = showSidebar([&opened](const std::string& path) { opened.push_back(path); });
    watchFolder(root / "one" / "site");
    watchFolder(root / "two" / "site");
    auto& first = row(sidebar, "site", 0);
    auto& second = row(sidebar, "site", 1);
    EXPECT_EQ(badgeOf(first), "1");
    EXPECT_EQ(badgeOf(second), "2");
    click(second);
    EXPECT_EQ(store->selectedSection(), SidebarItem::folder(store->watchedFolders().at(1).id));
    EXPECT_TRUE(isHighlighted(second) && !isHighlighted(first));

    first.activate_action("folder.open");
    EXPECT_EQ(opened, std::vector<std::string>{(root / "one" / "site").native()});
    first.activate_action("folder.remove");
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() == 1; }));
    EXPECT_EQ(store->watchedFolders().front().url, root / "two" / "site");
    drainMainLoop();
    const auto texts = shownTexts(sidebar);
    EXPECT_EQ(std::count(texts.begin(), texts.end(), "site"), 1);
}

TEST_F(SidebarViewTest, SearchFieldSwapsItsHintForAClearButtonAndFiltersNothing) {
    writeFile(root / "work" / "alpha.html");
    writeFile(root / "work" / "beta.html");
    auto& sidebar = showSidebar();
    watchFolder(root / "work");
    const auto artifactsBefore = names(store->artifacts());
    auto& field = theOnly<Gtk::Text>(sidebar);
    const auto hintShown = [&] { return showsText(sidebar, "Ctrl+F"); };
    const auto clearButton = [&]() -> Gtk::Button* {
        auto found = findAll<Gtk::Button>(
            sidebar, [](Gtk::Button& b) { return b.has_css_class("search-clear") && isShown(b); });
        return found.empty() ? nullptr : found.front();
    };
    field.set_text("alpha");
    EXPECT_FALSE(hintShown());
    ASSERT_NE(clearButton(), nullptr);
    EXPECT_EQ(names(store->artifacts()), artifactsBefore);

    click(*clearButton());
    EXPECT_EQ(field.get_text(), "");
    EXPECT_TRUE(hintShown());
    EXPECT_EQ(clearButton(), nullptr);
}

TEST_F(SidebarViewTest, FooterShowsTheGuideAndOpensAbout) {
    auto& sidebar = showSidebar();
    store->setIsShowingOnboarding(false);
    int aboutOpened = 0;
    auto app = Gio::SimpleActionGroup::create();
    app->add_action("about", [&aboutOpened] { ++aboutOpened; });
    window->insert_action_group("app", app);

    press(sidebar, "How to use");
    EXPECT_TRUE(store->isShowingOnboarding());
    press(sidebar, "About");
    EXPECT_EQ(aboutOpened, 1);
}

} // namespace
} // namespace kelmo::testing
