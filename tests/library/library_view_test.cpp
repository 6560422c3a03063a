#include "../app/shell_fixture.h"
#include "library/app_style.h"
#include "library/artifact_card_view.h"
#include "library/artifact_row_view.h"
#include "library/card_grid_view.h"
#include "library/library_view.h"
#include "library/symbols.h"
#include "library/type_badge.h"

#include <gdk/gdk.h>
#include <giomm/appinfo.h>
#include <giomm/dbusconnection.h>
#include <gtkmm/droptarget.h>
#include <gtkmm/gridview.h>
#include <gtkmm/listview.h>
#include <gtkmm/messagedialog.h>
#include <gtkmm/popovermenu.h>
#include <gtkmm/stylecontext.h>
#include <set>

namespace kelmo::testing {
namespace {

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

    template <typename View>
    std::vector<View*> shownItems(Gtk::Widget& view) {
        return findAll<View>(view, [](View& item) { return item.get_mapped(); });
    }

    static Gtk::Button& toggle(Gtk::Widget& view, const std::string& tooltip) {
        return theOnly<Gtk::Button>(
            view, [&](Gtk::Button& button) { return button.get_tooltip_text().raw() == tooltip; });
    }

    static GtkDropTarget* dropTargetOf(Gtk::Widget& view) {
        auto controllers = view.observe_controllers();
        for (guint index = 0; index < controllers->get_n_items(); ++index)
            if (auto target =
                    std::dynamic_pointer_cast<Gtk::DropTarget>(controllers->get_object(index)))
                return target->gobj();
        return nullptr;
    }

    static bool menuOffers(LibraryView& view, const Artifact& artifact, const std::string& label) {
        view.showContextMenu(artifact);
        auto& menu = theOnly<Gtk::PopoverMenu>(view);
        const auto items = menuItems(menu.get_menu_model()->gobj());
        menu.popdown();
        return std::any_of(items.begin(), items.end(),
                           [&label](const MenuItem& item) { return item.label == label; });
    }
};

TEST_F(LibraryViewTest, EachSectionShowsItsTitleAndAnEmptyPageOfItsOwnAndOnlyTheLibraryHasButtons) {
    auto& view = showLibrary();
    EXPECT_EQ(view.sectionTitle(), "Library");
    auto* openFile = findButton(view, "Open File…");
    auto* addFolder = findButton(view, "Add Folder…");
    ASSERT_TRUE(openFile && addFolder);
    click(*openFile);
    click(*addFolder);
    ASSERT_EQ(panel->pending.size(), 2u);
    EXPECT_FALSE(panel->pending.front().request.canChooseDirectories);
    EXPECT_TRUE(panel->pending.back().request.canChooseDirectories);
    panel->pending.clear();

    std::set<std::vector<std::string>> pages{shownTexts(view)};
    for (const auto& [section, title] : {std::pair{SidebarItem::recents(), "Recents"},
                                         {SidebarItem::favorites(), "Favorites"},
                                         {SidebarItem::folder(Uuid::random()), "Folder"}}) {
        SCOPED_TRACE(title);
        store->setSelectedSection(section);
        EXPECT_EQ(view.sectionTitle(), title);
        EXPECT_TRUE(pages.insert(shownTexts(view)).second) << "an empty page of its own";
        EXPECT_FALSE(isShown(*openFile) || isShown(*addFolder));
    }

    writeFile(root / "work" / "a.html");
    watchFolder(root / "work");
    store->setSelectedSection(SidebarItem::folder(store->watchedFolders().front().id));
    EXPECT_EQ(view.sectionTitle(), "work");
    addFiles({"two.jsx"});
    EXPECT_TRUE(showsText(view, "2 files"));
    store->setSelectedSection(SidebarItem::favorites());
    drainMainLoop();
    EXPECT_FALSE(showsText(view, "0 files")) << "an empty section shows no count";
}

TEST_F(LibraryViewTest, DropZoneShowsOnlyAboveANonEmptyLibraryScrollsLightsUpAndOpensTheChooser) {
    auto& view = showLibrary();
    auto* zone = findButton(view, "Drop a file to run it");
    ASSERT_NE(zone, nullptr);
    EXPECT_FALSE(isShown(*zone));

    addFiles({"page.html"});
    EXPECT_TRUE(isShown(*zone));
    EXPECT_NE(zone->get_ancestor(GTK_TYPE_SCROLLED_WINDOW), nullptr) << "it scrolls with items";
    click(*zone);
    EXPECT_EQ(panel->pending.size(), 1u);

    // The whole view takes the drag; the zone shows the hover.
    auto* drop = dropTargetOf(view);
    ASSERT_NE(drop, nullptr);
    GdkDragAction action{};
    g_signal_emit_by_name(drop, "enter", 10.0, 10.0, &action);
    EXPECT_EQ(action, GDK_ACTION_COPY);
    EXPECT_TRUE(view.isDraggingOver() && zone->has_css_class("dragging-over"));
    g_signal_emit_by_name(drop, "leave");
    EXPECT_FALSE(view.isDraggingOver() || zone->has_css_class("dragging-over"));

    store->markRecent(artifactNamed("page"));
    store->setSelectedSection(SidebarItem::recents());
    EXPECT_FALSE(isShown(*zone));
}

TEST_F(LibraryViewTest, DroppedFilesAreFilteredByExtensionAndAddedOneByOneFromTheMainLoop) {
    auto& view = showLibrary();
    std::vector<GFile*> dropped;
    for (const char* name : {"one.html", "notes.md", "three.tsx"}) {
        writeFile(root / "drop" / name, "x");
        dropped.push_back(g_file_new_for_path((root / "drop" / name).c_str()));
    }
    GValue value = G_VALUE_INIT;
    g_value_init(&value, GDK_TYPE_FILE_LIST);
    g_value_take_boxed(&value, gdk_file_list_new_from_array(dropped.data(), dropped.size()));
    gboolean accepted = FALSE;
    g_signal_emit_by_name(dropTargetOf(view), "drop", &value, 10.0, 10.0, &accepted);
    g_value_unset(&value);
    for (GFile* file : dropped)
        g_object_unref(file);
    EXPECT_TRUE(accepted);
    EXPECT_TRUE(store->allArtifacts().empty()) << "the files follow from the main loop";
    ASSERT_TRUE(runMainLoopUntil([&] { return store->allArtifacts().size() == 2; }));
    drainMainLoop();
    // Each file went in through its own call: the last one is first and selected.
    EXPECT_EQ(names(store->allArtifacts()), (std::vector<std::string>{"three", "one"}));
    EXPECT_EQ(store->selectedArtifact()->name, "three");
}

TEST_F(LibraryViewTest, ToggleSwitchesBetweenCardsAndRowsAndActivatingEitherSelectsAndMarksRecent) {
    addFiles({"a.html", "b.jsx", "c.tsx"});
    auto& view = showLibrary();
    const auto activate = [&](Gtk::Widget& items, guint position) {
        const Artifact chosen = store->artifacts().at(position);
        g_signal_emit_by_name(items.gobj(), "activate", position);
        ASSERT_TRUE(store->selectedArtifact());
        EXPECT_EQ(store->selectedArtifact()->id, chosen.id);
        EXPECT_EQ(store->recentPaths().front(), chosen.path());
        store->setSelectedArtifact(std::nullopt);
    };
    EXPECT_TRUE(view.isGridView());
    EXPECT_EQ(shownItems<ArtifactCardView>(view).size(), 3u);
    activate(theOnly<Gtk::GridView>(view), 1);

    auto& grid = toggle(view, "Grid view");
    auto& list = toggle(view, "List view");
    click(list);
    ASSERT_TRUE(runMainLoopUntil([&] { return shownItems<ArtifactRowView>(view).size() == 3; }));
    EXPECT_FALSE(view.isGridView());
    EXPECT_TRUE(shownItems<ArtifactCardView>(view).empty());
    EXPECT_TRUE(list.has_css_class("active") && !grid.has_css_class("active"));
    activate(theOnly<Gtk::ListView>(view), 2);

    click(grid);
    ASSERT_TRUE(runMainLoopUntil([&] { return shownItems<ArtifactCardView>(view).size() == 3; }));
    EXPECT_TRUE(view.isGridView());
}

TEST_F(LibraryViewTest, ShowInFilesWithNeitherAFileManagerNorAFolderHandlerSaysWhyAndWhere) {
    const auto bus = Gio::DBus::Connection::get_sync(Gio::DBus::BusType::SESSION);
    const auto names = Glib::VariantBase::cast_dynamic<Glib::Variant<std::vector<Glib::ustring>>>(
                           bus->call_sync("/org/freedesktop/DBus", "org.freedesktop.DBus",
                                          "ListActivatableNames", {}, "org.freedesktop.DBus")
                               .get_child())
                           .get();
    if (Gio::AppInfo::get_default_for_type("inode/directory") ||
        std::find(names.begin(), names.end(), "org.freedesktop.FileManager1") != names.end())
        GTEST_SKIP() << "this desktop has a file manager";

    addFiles({"a.html"});
    auto& view = showLibrary();
    ASSERT_TRUE(menuOffers(view, artifactNamed("a"), "Show in Files"));
    view.showContextMenu(artifactNamed("a"));
    view.activate_action("artifact.reveal");
    Gtk::MessageDialog* said = nullptr;
    ASSERT_TRUE(runMainLoopUntil([&] {
        for (auto* shown : Gtk::Window::list_toplevels())
            if ((said = dynamic_cast<Gtk::MessageDialog*>(shown)))
                return said->get_visible();
        return false;
    }));
    const std::string why = said->property_secondary_text().get_value();
    EXPECT_NE(why.find("no application opens folders"), std::string::npos) << why;
    EXPECT_NE(why.find(root.path().native()), std::string::npos) << why;
    said->response(Gtk::ResponseType::OK);
    EXPECT_TRUE(runMainLoopUntil([&] { return Gtk::Window::list_toplevels().size() == 1; }));
}

TEST_F(LibraryViewTest, CardsShowSizeAndBadgeAndTheFavouriteFlipsByStarOrMenuAsRowsShow) {
    writeFile(root / "a.tsx", std::string(1024, 'x'));
    addFiles({"a.tsx", "b.jsx"});
    auto& view = showLibrary();
    const Artifact a = artifactNamed("a");
    auto& card = *findAll<ArtifactCardView>(view, [](ArtifactCardView& c) {
                      return c.get_mapped() && showsText(c, "1.0 KB");
                  }).at(0);
    EXPECT_EQ(theOnly<TypeBadge>(card).get_text(), "TSX");
    auto& star = theOnly<Gtk::Button>(
        card, [](Gtk::Button& b) { return b.has_css_class("card-star-button"); });
    click(star);
    EXPECT_TRUE(store->isFavorite(a));
    EXPECT_FALSE(store->selectedArtifact()) << "the star does not open the card";
    EXPECT_TRUE(star.has_css_class("favorite"));
    for (const bool favourite : {false, true}) {
        EXPECT_TRUE(menuOffers(view, a, favourite ? "Add to Favorites" : "Remove from Favorites"));
        view.showContextMenu(a);
        view.activate_action("artifact.toggle-favorite");
        EXPECT_EQ(store->isFavorite(a), favourite);
    }

    click(toggle(view, "List view"));
    ASSERT_TRUE(runMainLoopUntil([&] { return shownItems<ArtifactRowView>(view).size() == 2; }));
    auto& rowStar = *findAll<Gtk::Image>(view, [](Gtk::Image& image) {
                         return image.has_css_class("artifact-row-star") && isShown(image);
                     }).at(0);
    store->toggleFavorite(a);
    EXPECT_FALSE(isShown(rowStar));

    view.showContextMenu(a);
    view.activate_action("artifact.remove");
    drainMainLoop();
    EXPECT_EQ(names(store->artifacts()), std::vector<std::string>{"b"});
    EXPECT_EQ(shownItems<ArtifactRowView>(view).size(), 1u);
}

TEST_F(LibraryViewTest, OnlyTheCardsOnScreenAreBuilt) {
    for (int index = 0; index < 10000; ++index)
        writeFile(root / "many" / ("artifact-" + std::to_string(index) + ".html"));
    auto& view = showLibrary();
    watchFolder(root / "many");
    store->setSelectedArtifact(std::nullopt);
    ASSERT_TRUE(runMainLoopUntil([&] { return !shownItems<ArtifactCardView>(view).empty(); }));
    drainMainLoop();
    EXPECT_TRUE(showsText(view, "10000 files"));
    EXPECT_GE(theOnly<CardGridView>(view).columnCount(), 2);
    EXPECT_LT(findAll<ArtifactCardView>(view).size(), 200u);
}

TEST(AppStyleTest, ButtonStylesSwapAndAMissingSheetIsReported) {
    ASSERT_TRUE(loadApplicationStyle(Gdk::Display::get_default()));
    Gtk::Window window;
    Gtk::Button button{"Next"};
    window.set_child(button);
    setButtonStyle(button, button_style::appPrimary);
    const Gdk::RGBA primary = button.get_style_context()->get_color();
    setButtonStyle(button, button_style::appSecondary);
    EXPECT_FALSE(button.has_css_class(button_style::appPrimary));
    EXPECT_NE(button.get_style_context()->get_color(), primary);

    EXPECT_FALSE(loadApplicationStyle(Gdk::Display::get_default(),
                                      ResourceLocator{"/nonexistent/kelmo/resources"}));
}

} // namespace
} // namespace kelmo::testing
