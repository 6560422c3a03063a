#include "../app/shell_fixture.h"
#include "library/app_style.h"
#include "library/artifact_card_view.h"
#include "library/artifact_row_view.h"
#include "library/card_grid_view.h"
#include "library/library_view.h"
#include "library/symbols.h"
#include "library/type_badge.h"

#include <gdk/gdk.h>
#include <gtkmm/droptarget.h>
#include <gtkmm/gridview.h>
#include <gtkmm/listview.h>
#include <gtkmm/popovermenu.h>

namespace kelmo::testing {
namespace {

bool contains(const std::vector<std::string>& texts, const std::string& text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

class LibraryViewTest : public ShellTest {
protected:
    void SetUp() override {
        installSymbolIcons(Gdk::Display::get_default());
        ASSERT_TRUE(loadApplicationStyle(Gdk::Display::get_default()));
        makeStore();
    }

    LibraryView& showLibrary() {
        auto* view = Gtk::make_managed<LibraryView>(*store);
        show(*view);
        return *view;
    }

    // Adds the files as the user would open them, then returns to the library.
    void addFiles(std::initializer_list<std::string> names) {
        for (const auto& name : names) {
            if (!std::filesystem::exists(root / name))
                writeFile(root / name, "<p>" + name + "</p>");
            store->addArtifact(root / name);
        }
        store->setSelectedSection(SidebarItem::library());
        store->setSelectedArtifact(std::nullopt);
        drainMainLoop();
    }

    const Artifact& artifactNamed(const std::string& name) {
        const auto& all = store->allArtifacts();
        auto found = std::find_if(all.begin(), all.end(),
                                  [&name](const Artifact& a) { return a.name == name; });
        EXPECT_NE(found, all.end()) << name;
        return *found;
    }

    template <typename View>
    std::vector<View*> shownItems(Gtk::Widget& view) {
        return findAll<View>(view, [](View& item) { return item.get_mapped(); });
    }

    static Gtk::Button& toggle(Gtk::Widget& view, const std::string& tooltip) {
        auto buttons = findAll<Gtk::Button>(view, [&tooltip](Gtk::Button& button) {
            return button.get_tooltip_text() == Glib::ustring{tooltip};
        });
        EXPECT_EQ(buttons.size(), 1u) << tooltip;
        return *buttons.front();
    }

    static Glib::RefPtr<Gtk::DropTarget> dropTargetOf(Gtk::Widget& view) {
        auto controllers = view.observe_controllers();
        for (guint index = 0; index < controllers->get_n_items(); ++index) {
            auto item = controllers->get_object(index);
            if (auto target = std::dynamic_pointer_cast<Gtk::DropTarget>(item))
                return target;
        }
        return {};
    }

    // The labels of the context menu's items, in order, for the artifact.
    static std::vector<std::string> menuItems(LibraryView& view, const Artifact& artifact) {
        view.showContextMenu(artifact);
        auto menus = findAll<Gtk::PopoverMenu>(view);
        EXPECT_EQ(menus.size(), 1u);
        std::vector<std::string> labels;
        auto model = menus.front()->get_menu_model();
        for (int section = 0; section < model->get_n_items(); ++section) {
            auto items = model->get_item_link(section, Gio::MenuModel::Link::SECTION);
            for (int item = 0; item < items->get_n_items(); ++item) {
                auto label = items->get_item_attribute(item, Gio::MenuModel::Attribute::LABEL,
                                                       Glib::VARIANT_TYPE_STRING);
                labels.push_back(
                    Glib::VariantBase::cast_dynamic<Glib::Variant<Glib::ustring>>(label).get());
            }
            if (section + 1 < model->get_n_items())
                labels.push_back("—");
        }
        menus.front()->popdown();
        return labels;
    }
};

TEST_F(LibraryViewTest, TitlesFollowTheSectionWithFolderForAFolderThatIsGone) {
    writeFile(root / "work" / "a.html");
    auto& view = showLibrary();
    EXPECT_EQ(view.sectionTitle(), "Library");
    EXPECT_TRUE(contains(shownTexts(view), "Library"));

    store->setSelectedSection(SidebarItem::recents());
    EXPECT_EQ(view.sectionTitle(), "Recents");
    store->setSelectedSection(SidebarItem::favorites());
    EXPECT_EQ(view.sectionTitle(), "Favorites");
    EXPECT_TRUE(contains(shownTexts(view), "Favorites"));

    watchFolder(root / "work");
    store->setSelectedSection(SidebarItem::folder(store->watchedFolders().front().id));
    EXPECT_EQ(view.sectionTitle(), "work");
    store->setSelectedSection(SidebarItem::folder(Uuid::random()));
    EXPECT_EQ(view.sectionTitle(), "Folder");
    EXPECT_TRUE(contains(shownTexts(view), "Folder"));
}

TEST_F(LibraryViewTest, CountLineReadsFilesAndIsAbsentWhenTheSectionIsEmpty) {
    auto& view = showLibrary();
    auto texts = shownTexts(view);
    EXPECT_FALSE(contains(texts, "0 files"));

    addFiles({"one.html"});
    EXPECT_TRUE(contains(shownTexts(view), "1 file"));
    addFiles({"two.jsx"});
    EXPECT_TRUE(contains(shownTexts(view), "2 files"));

    store->setSelectedSection(SidebarItem::favorites());
    drainMainLoop();
    texts = shownTexts(view);
    EXPECT_FALSE(contains(texts, "2 files"));
    EXPECT_FALSE(contains(texts, "0 files"));
}

TEST_F(LibraryViewTest, EachEmptySectionSaysWhatItIsForAndOnlyTheLibraryOffersButtons) {
    auto& view = showLibrary();
    auto texts = shownTexts(view);
    EXPECT_TRUE(contains(texts, "No Files Yet"));
    EXPECT_TRUE(contains(texts, "Open a file or add a folder to get started."));
    auto* openFile = findButton(view, "Open File…");
    auto* addFolder = findButton(view, "Add Folder…");
    ASSERT_NE(openFile, nullptr);
    ASSERT_NE(addFolder, nullptr);
    EXPECT_TRUE(isShown(*openFile));
    click(*openFile);
    ASSERT_EQ(panel->pending.size(), 1u);
    EXPECT_FALSE(panel->pending.back().request.canChooseDirectories);
    click(*addFolder);
    ASSERT_EQ(panel->pending.size(), 2u);
    EXPECT_TRUE(panel->pending.back().request.canChooseDirectories);

    const std::vector<std::tuple<SidebarItem, std::string, std::string>> sections{
        {SidebarItem::recents(), "No Recent Files", "Files you open will appear here."},
        {SidebarItem::favorites(), "No Favorites Yet", "Star a file to add it to Favorites."},
        {SidebarItem::folder(Uuid::random()), "Empty Folder",
         "No supported files found in this folder."},
    };
    for (const auto& [section, title, subtitle] : sections) {
        store->setSelectedSection(section);
        texts = shownTexts(view);
        EXPECT_TRUE(contains(texts, title));
        EXPECT_TRUE(contains(texts, subtitle));
        EXPECT_FALSE(contains(texts, "No Files Yet"));
        EXPECT_FALSE(isShown(*openFile)) << title;
        EXPECT_FALSE(isShown(*addFolder)) << title;
    }
}

TEST_F(LibraryViewTest, DropZoneShowsOnlyAboveANonEmptyLibraryAndOpensTheChooser) {
    auto& view = showLibrary();
    auto* zone = findButton(view, "Drop a file to run it");
    ASSERT_NE(zone, nullptr);
    EXPECT_FALSE(isShown(*zone));

    addFiles({"page.html"});
    EXPECT_TRUE(isShown(*zone));
    EXPECT_TRUE(
        contains(shownTexts(view), ".html · .jsx · .tsx · .svg · .md — or click to browse"));
    EXPECT_FALSE(contains(shownTexts(view), "No Files Yet"));
    click(*zone);
    EXPECT_EQ(panel->pending.size(), 1u);

    store->markRecent(artifactNamed("page"));
    store->setSelectedSection(SidebarItem::recents());
    EXPECT_FALSE(isShown(*zone));
    store->toggleFavorite(artifactNamed("page"));
    store->setSelectedSection(SidebarItem::favorites());
    EXPECT_FALSE(isShown(*zone));
}

TEST_F(LibraryViewTest, ToggleSwitchesBetweenCardsAndRowsAndMarksTheActiveSegment) {
    addFiles({"a.html", "b.jsx", "c.tsx"});
    auto& view = showLibrary();
    EXPECT_TRUE(view.isGridView());
    EXPECT_EQ(shownItems<ArtifactCardView>(view).size(), 3u);
    EXPECT_TRUE(shownItems<ArtifactRowView>(view).empty());
    auto& grid = toggle(view, "Grid view");
    auto& list = toggle(view, "List view");
    EXPECT_TRUE(grid.has_css_class("active"));
    EXPECT_FALSE(list.has_css_class("active"));

    click(list);
    ASSERT_TRUE(runMainLoopUntil([&] { return shownItems<ArtifactRowView>(view).size() == 3; }));
    EXPECT_FALSE(view.isGridView());
    EXPECT_TRUE(shownItems<ArtifactCardView>(view).empty());
    EXPECT_TRUE(list.has_css_class("active"));
    EXPECT_FALSE(grid.has_css_class("active"));

    click(grid);
    ASSERT_TRUE(runMainLoopUntil([&] { return shownItems<ArtifactCardView>(view).size() == 3; }));
    EXPECT_TRUE(view.isGridView());
}

TEST_F(LibraryViewTest, ActivatingACardOrRowSelectsItsArtifactAndMarksItRecent) {
    addFiles({"a.html", "b.jsx", "c.tsx"});
    auto& view = showLibrary();
    const Artifact second = store->artifacts().at(1);

    auto grids = findAll<Gtk::GridView>(view);
    ASSERT_EQ(grids.size(), 1u);
    g_signal_emit_by_name(grids.front()->gobj(), "activate", 1u);
    ASSERT_TRUE(store->selectedArtifact());
    EXPECT_EQ(store->selectedArtifact()->id, second.id);
    EXPECT_EQ(store->recentPaths().front(), second.path());

    store->setSelectedArtifact(std::nullopt);
    click(toggle(view, "List view"));
    drainMainLoop();
    const Artifact third = store->artifacts().at(2);
    auto lists = findAll<Gtk::ListView>(view);
    ASSERT_EQ(lists.size(), 1u);
    g_signal_emit_by_name(lists.front()->gobj(), "activate", 2u);
    ASSERT_TRUE(store->selectedArtifact());
    EXPECT_EQ(store->selectedArtifact()->id, third.id);
    EXPECT_EQ(store->recentPaths().front(), third.path());
}

TEST_F(LibraryViewTest, ContextMenuFlipsWithTheFavouriteAndRemovesFromTheList) {
    addFiles({"a.html", "b.jsx"});
    auto& view = showLibrary();
    const Artifact a = artifactNamed("a");

    const std::vector<std::string> rest{"—", "Remove from List", "Reveal in Finder"};
    auto items = menuItems(view, a);
    ASSERT_EQ(items.size(), 4u);
    EXPECT_EQ(items.front(), "Add to Favorites");
    EXPECT_EQ(std::vector<std::string>(items.begin() + 1, items.end()), rest);

    view.showContextMenu(a);
    view.activate_action("artifact.toggle-favorite");
    EXPECT_TRUE(store->isFavorite(a));
    EXPECT_EQ(menuItems(view, a).front(), "Remove from Favorites");
    view.showContextMenu(a);
    view.activate_action("artifact.toggle-favorite");
    EXPECT_FALSE(store->isFavorite(a));
    EXPECT_EQ(menuItems(view, a).front(), "Add to Favorites");

    view.showContextMenu(a);
    view.activate_action("artifact.remove");
    drainMainLoop();
    ASSERT_EQ(store->artifacts().size(), 1u);
    EXPECT_EQ(store->artifacts().front().name, "b");
    EXPECT_TRUE(contains(shownTexts(view), "1 file"));
    EXPECT_EQ(shownItems<ArtifactCardView>(view).size(), 1u);
}

TEST_F(LibraryViewTest, CardStarTogglesTheFavouriteWithoutSelectingAndRowsShowIt) {
    addFiles({"a.html"});
    auto& view = showLibrary();
    auto cards = shownItems<ArtifactCardView>(view);
    ASSERT_EQ(cards.size(), 1u);
    auto stars = findAll<Gtk::Button>(
        *cards.front(), [](Gtk::Button& b) { return b.has_css_class("card-star-button"); });
    ASSERT_EQ(stars.size(), 1u);
    EXPECT_FALSE(stars.front()->has_css_class("favorite"));

    click(*stars.front());
    EXPECT_TRUE(store->isFavorite(artifactNamed("a")));
    EXPECT_FALSE(store->selectedArtifact());
    EXPECT_TRUE(stars.front()->has_css_class("favorite"));

    click(toggle(view, "List view"));
    ASSERT_TRUE(runMainLoopUntil([&] { return shownItems<ArtifactRowView>(view).size() == 1; }));
    auto& row = *shownItems<ArtifactRowView>(view).front();
    auto shownStars = findAll<Gtk::Image>(row, [](Gtk::Image& image) {
        return image.has_css_class("artifact-row-star") && isShown(image);
    });
    EXPECT_EQ(shownStars.size(), 1u);
    store->toggleFavorite(artifactNamed("a"));
    EXPECT_FALSE(isShown(*findAll<Gtk::Image>(row, [](Gtk::Image& image) {
                              return image.has_css_class("artifact-row-star");
                          }).front()));
}

TEST_F(LibraryViewTest, DroppedFilesAreFilteredByExtensionAndAddedOneByOne) {
    auto& view = showLibrary();
    std::vector<Glib::RefPtr<Gio::File>> files;
    for (const char* name : {"one.html", "page.HTML", "image.svg", "notes.md", "three.tsx"}) {
        writeFile(root / "drop" / name, "x");
        files.push_back(Gio::File::create_for_path(root / "drop" / name));
    }
    int changes = 0;
    auto counting = store->signalChanged().connect([&changes] { ++changes; });

    // Accepted at once; the files follow from the main loop.
    EXPECT_TRUE(view.handleDrop(files));
    EXPECT_TRUE(store->allArtifacts().empty());
    ASSERT_TRUE(runMainLoopUntil([&] { return store->allArtifacts().size() == 3; }));
    drainMainLoop();
    counting.disconnect();
    // Each file went in through its own call: the last one is first and selected.
    EXPECT_EQ(store->allArtifacts().front().name, "three");
    EXPECT_EQ(store->allArtifacts().back().name, "one");
    EXPECT_EQ(store->selectedArtifact()->name, "three");
    EXPECT_GE(changes, 3);
    EXPECT_EQ(store->allArtifacts().at(1).name, "page");

    EXPECT_TRUE(view.handleDrop({}));
}

TEST_F(LibraryViewTest, TheWholeViewTakesFileListDropsAndShowsTheHoverOnTheDropZone) {
    addFiles({"a.html"});
    auto& view = showLibrary();
    auto target = dropTargetOf(view);
    ASSERT_TRUE(target);
    auto* zone = findButton(view, "Drop a file to run it");
    ASSERT_NE(zone, nullptr);

    GdkDragAction action{};
    g_signal_emit_by_name(target->gobj(), "enter", 10.0, 10.0, &action);
    EXPECT_EQ(action, GDK_ACTION_COPY);
    EXPECT_TRUE(view.isDraggingOver());
    EXPECT_TRUE(zone->has_css_class("dragging-over"));
    g_signal_emit_by_name(target->gobj(), "leave");
    EXPECT_FALSE(view.isDraggingOver());
    EXPECT_FALSE(zone->has_css_class("dragging-over"));

    writeFile(root / "drop" / "b.jsx", "x");
    GFile* dropped[] = {g_file_new_for_path((root / "drop" / "b.jsx").c_str()),
                        g_file_new_for_path((root / "drop" / "c.svg").c_str())};
    GValue value = G_VALUE_INIT;
    g_value_init(&value, GDK_TYPE_FILE_LIST);
    g_value_take_boxed(&value, gdk_file_list_new_from_array(dropped, 2));
    gboolean accepted = FALSE;
    g_signal_emit_by_name(target->gobj(), "drop", &value, 10.0, 10.0, &accepted);
    g_value_unset(&value);
    for (GFile* file : dropped)
        g_object_unref(file);
    EXPECT_TRUE(accepted);
    ASSERT_TRUE(runMainLoopUntil([&] { return store->allArtifacts().size() == 2; }));
    EXPECT_EQ(store->allArtifacts().front().name, "b");
}

TEST_F(LibraryViewTest, CardsShowTheFileSizeAndTheTypeBadge) {
    writeFile(root / "small.html", std::string(1023, 'x'));
    writeFile(root / "kilo.jsx", std::string(1024, 'x'));
    writeFile(root / "large.tsx", std::string(10 * 1024 * 1024, 'x'));
    writeFile(root / "gone.htm", "x");
    addFiles({"small.html", "kilo.jsx", "large.tsx", "gone.htm"});
    std::filesystem::remove(root / "gone.htm");
    auto& view = showLibrary();

    auto cards = shownItems<ArtifactCardView>(view);
    ASSERT_EQ(cards.size(), 4u);
    const std::map<std::string, std::pair<std::string, std::string>> expected{
        {"small", {"1023 B", "HTML"}},
        {"kilo", {"1.0 KB", "JSX"}},
        {"large", {"10240.0 KB", "TSX"}},
        {"gone", {"0 B", "HTML"}},
    };
    for (auto* card : cards) {
        const auto texts = shownTexts(*card);
        const auto& [size, badge] = expected.at(card->artifact()->name);
        EXPECT_TRUE(contains(texts, size)) << card->artifact()->name;
        auto badges = findAll<TypeBadge>(*card);
        ASSERT_EQ(badges.size(), 1u);
        EXPECT_EQ(std::string{badges.front()->get_text()}, badge);
    }

    // The TSX badge wears the accent colour.
    auto badges = findAll<TypeBadge>(view, [](TypeBadge& b) { return b.get_text() == "TSX"; });
    ASSERT_FALSE(badges.empty());
    EXPECT_EQ(badges.front()->get_style_context()->get_color(), Gdk::RGBA{"#e8572e"});
}

TEST_F(LibraryViewTest, CardsFitTheAdaptiveColumnsAndOnlyCellsOnScreenAreBuilt) {
    for (int index = 0; index < 10000; ++index)
        writeFile(root / "many" / ("artifact-" + std::to_string(index) + ".html"));
    auto& view = showLibrary();
    watchFolder(root / "many");
    store->setSelectedArtifact(std::nullopt);
    ASSERT_TRUE(runMainLoopUntil([&] { return !shownItems<ArtifactCardView>(view).empty(); }));
    drainMainLoop();

    EXPECT_TRUE(contains(shownTexts(view), "10000 files"));
    auto grids = findAll<CardGridView>(view);
    ASSERT_EQ(grids.size(), 1u);
    EXPECT_EQ(g_list_model_get_n_items(G_LIST_MODEL(grids.front()->get_model()->gobj())), 10000u);
    EXPECT_GE(grids.front()->columnCount(), 2);
    const auto cards = findAll<ArtifactCardView>(view);
    EXPECT_LT(cards.size(), 200u);
    // Each column holds its card and half of the gap on either side.
    for (auto* card : shownItems<ArtifactCardView>(view)) {
        const int column = card->get_parent()->get_allocation().get_width();
        EXPECT_GE(column - 14, 200);
        EXPECT_LE(column - 14, 260);
        EXPECT_LE(card->get_allocation().get_width(), column - 14);
    }
}

} // namespace
} // namespace kelmo::testing
