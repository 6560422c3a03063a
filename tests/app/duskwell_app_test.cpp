#include "app/duskwell_app.h"
#include "app/main_window.h"
#include "library/library_view.h"
#include "runtime/artifact_detail_view.h"
#include "shell_fixture.h"

#include <gio/gio.h>
#include <gtkmm/popovermenubar.h>

namespace kelmo::testing {
namespace {

struct MenuItem {
    std::string label;
    std::string action;
};

// Every item of the menu and its submenus and sections, depth first.
void collectItems(GMenuModel* menu, std::vector<MenuItem>& items) {
    for (int index = 0; index < g_menu_model_get_n_items(menu); ++index) {
        MenuItem item;
        gchar* text = nullptr;
        if (g_menu_model_get_item_attribute(menu, index, G_MENU_ATTRIBUTE_LABEL, "s", &text)) {
            item.label = text;
            g_free(text);
        }
        if (g_menu_model_get_item_attribute(menu, index, G_MENU_ATTRIBUTE_ACTION, "s", &text)) {
            item.action = text;
            g_free(text);
        }
        items.push_back(item);
        for (const char* link : {G_MENU_LINK_SUBMENU, G_MENU_LINK_SECTION}) {
            if (GMenuModel* inner = g_menu_model_get_item_link(menu, index, link)) {
                collectItems(inner, items);
                g_object_unref(inner);
            }
        }
    }
}

class DuskwellAppTest : public ShellTest {
protected:
    void SetUp() override {
        static int instance = 0;
        DuskwellApp::Configuration configuration;
        configuration.applicationId = "org.kelmo.Kelmo.AppTest" + std::to_string(++instance);
        configuration.flags = Gio::Application::Flags::NON_UNIQUE;
        configuration.notifications = &notifications;
        configuration.openPanel = panel;
        configuration.detailViews = detailViews();
        configuration.makeStore = [this] {
            auto made = std::make_unique<ArtifactStore>(environment());
            made->setIsShowingOnboarding(false);
            appStore = made.get();
            return made;
        };
        app = DuskwellApp::create(std::move(configuration));
        ASSERT_TRUE(app->register_application());
        app->activate();
        ASSERT_NE(app->mainWindow(), nullptr);
        ASSERT_TRUE(runMainLoopUntil([&] { return app->mainWindow()->get_mapped(); }));
    }

    void TearDown() override {
        for (auto* open : app->get_windows())
            open->set_visible(false);
        drainMainLoop();
        app.reset();
        ShellTest::TearDown();
    }

    std::vector<Gtk::Window*> windowsTitled(const std::string& title) {
        std::vector<Gtk::Window*> found;
        for (auto* open : app->get_windows())
            if (std::string{open->get_title()} == title)
                found.push_back(open);
        return found;
    }

    // The shell's own tests use light stand-ins for the library and the player.
    virtual DetailViews detailViews() const { return DetailViews::placeholders(); }

    Glib::RefPtr<DuskwellApp> app;
    ArtifactStore* appStore = nullptr;
};

// The application as users get it: the real library and player.
class DuskwellAppIntegrationTest : public DuskwellAppTest {
protected:
    DetailViews detailViews() const override { return DetailViews::standard(); }
};

TEST_F(DuskwellAppTest, OpenCommandsPostNotificationsThatTheStoreAnswers) {
    writeFile(root / "page.html");
    app->activate_action("open-file");
    EXPECT_TRUE(panel->pending.empty()) << "the command only posts and returns";
    ASSERT_TRUE(runMainLoopUntil([&] { return panel->pending.size() == 1; }));
    EXPECT_TRUE(panel->pending.front().request.canChooseFiles);
    EXPECT_FALSE(panel->pending.front().request.canChooseDirectories);
    panel->answer(root / "page.html");
    ASSERT_TRUE(appStore->selectedArtifact().has_value());
    EXPECT_EQ(appStore->selectedArtifact()->name, "page");

    app->activate_action("open-folder");
    ASSERT_TRUE(runMainLoopUntil([&] { return panel->pending.size() == 1; }));
    EXPECT_TRUE(panel->pending.front().request.canChooseDirectories);
    panel->answer(root.path());
    EXPECT_EQ(appStore->watchedFolders().size(), 1u);
}

TEST_F(DuskwellAppTest, OpenFileTwiceQuicklyRunsTwoChoosersInTurn) {
    app->activate_action("open-file");
    app->activate_action("open-file");
    EXPECT_TRUE(runMainLoopUntil([&] { return panel->pending.size() == 2; }));
    panel->answer(std::nullopt);
    panel->answer(std::nullopt);
    EXPECT_TRUE(appStore->allArtifacts().empty());
}

TEST_F(DuskwellAppTest, ShortcutsAreTheApplicationsAndTellOpenFileFromOpenFolder) {
    EXPECT_EQ(app->get_accels_for_action("app.open-file"),
              std::vector<Glib::ustring>{"<Control>o"});
    EXPECT_EQ(app->get_accels_for_action("app.open-folder"),
              std::vector<Glib::ustring>{"<Shift><Control>o"});
    EXPECT_EQ(app->get_actions_for_accel("<Control>o"),
              std::vector<Glib::ustring>{"app.open-file"});
    EXPECT_EQ(app->get_actions_for_accel("<Shift><Control>o"),
              std::vector<Glib::ustring>{"app.open-folder"});
    EXPECT_EQ(app->get_actions_for_accel("<Control>comma"),
              std::vector<Glib::ustring>{"app.settings"});
    EXPECT_EQ(app->get_actions_for_accel("<Control>q"), std::vector<Glib::ustring>{"app.quit"});
    EXPECT_EQ(app->get_actions_for_accel("F9"), std::vector<Glib::ustring>{"win.toggle-sidebar"});
}

TEST_F(DuskwellAppTest, MenusCarryTheCommandsAndNoNewWindowItem) {
    std::vector<MenuItem> items;
    collectItems(app->get_menubar()->gobj(), items);
    const auto actionOf = [&items](const std::string& label) {
        for (const auto& item : items)
            if (item.label == label)
                return item.action;
        return std::string{"(missing)"};
    };
    EXPECT_EQ(actionOf("Open File…"), "app.open-file");
    EXPECT_EQ(actionOf("Open Folder…"), "app.open-folder");
    EXPECT_EQ(actionOf("About Kelmo"), "app.about");
    EXPECT_EQ(actionOf("Settings…"), "app.settings");
    EXPECT_EQ(actionOf("Quit"), "app.quit");
    EXPECT_EQ(actionOf("Show Sidebar"), "win.toggle-sidebar");
    for (const auto& item : items) {
        EXPECT_EQ(item.label.find("New"), std::string::npos) << item.label;
        EXPECT_EQ(item.action.find("new"), std::string::npos) << item.action;
    }
    // The main window shows the menus in its own top area.
    EXPECT_EQ(findAll<Gtk::PopoverMenuBar>(*app->mainWindow()).size(), 1u);
}

TEST_F(DuskwellAppTest, MainWindowOpensAtItsDefaultSizeWithoutATitleBar) {
    auto* main = app->mainWindow();
    int width = 0;
    int height = 0;
    main->get_default_size(width, height);
    EXPECT_EQ(width, 1100);
    EXPECT_EQ(height, 700);
    ASSERT_NE(main->get_titlebar(), nullptr);
    EXPECT_FALSE(main->get_titlebar()->get_visible());
    app->activate();
    EXPECT_EQ(app->get_windows().size(), 1u) << "activating again presents the same window";
}

TEST_F(DuskwellAppTest, AboutWindowIsSingleInstance) {
    app->activate_action("about");
    auto about = windowsTitled("About Kelmo");
    ASSERT_EQ(about.size(), 1u);
    int width = 0;
    int height = 0;
    about.front()->get_default_size(width, height);
    EXPECT_EQ(width, 480);
    EXPECT_EQ(height, 400);
    EXPECT_FALSE(about.front()->get_resizable());

    app->activate_action("about");
    EXPECT_EQ(windowsTitled("About Kelmo"), about);

    // Closed and opened again, it is still the one window.
    about.front()->close();
    drainMainLoop();
    app->activate_action("about");
    EXPECT_EQ(windowsTitled("About Kelmo"), about);
    EXPECT_TRUE(about.front()->get_visible());
}

TEST_F(DuskwellAppTest, OpenedFilesJoinTheLibraryAndTheLastOneIsShown) {
    const auto page = root / "given" / "page.html";
    const auto notes = root / "given" / "notes.md"; // typed by extension, like the open panel
    writeFile(page);
    writeFile(notes);
    std::vector<Glib::RefPtr<Gio::File>> files{Gio::File::create_for_path(page),
                                               Gio::File::create_for_path(notes)};
    app->open(files);
    ASSERT_TRUE(runMainLoopUntil([&] { return appStore->allArtifacts().size() == 2; }));
    EXPECT_EQ(appStore->selectedArtifact()->path(), notes.native());
    EXPECT_EQ(appStore->selectedArtifact()->type.kind, ArtifactType::Kind::html);
    EXPECT_EQ(appStore->recentPaths(), (std::vector<std::string>{notes, page}));

    app->open({Gio::File::create_for_path(page)}); // already there: selected, not added again
    ASSERT_TRUE(runMainLoopUntil([&] { return appStore->selectedArtifact()->path() == page; }));
    EXPECT_EQ(appStore->allArtifacts().size(), 2u);
    EXPECT_TRUE(app->mainWindow()->get_visible());
}

TEST_F(DuskwellAppIntegrationTest, AFileOpenedFromOutsideRunsInThePlayer) {
    const auto component = root / "given" / "hello.jsx";
    writeFile(component, "export default function Hello() { return <h1 id='hello'>Hi</h1>; }");
    app->open({Gio::File::create_for_path(component)});
    ASSERT_TRUE(runMainLoopUntil([&] { return appStore->selectedArtifact().has_value(); }));

    auto* player = dynamic_cast<ArtifactDetailView*>(app->mainWindow()->contentView().detailView());
    ASSERT_NE(player, nullptr);
    EXPECT_EQ(player->artifact().path(), component.native());
    bool startedLoading = player->isLoading();
    struct Watch {
        sigc::connection connection;
        ~Watch() { connection.disconnect(); } // the test may end early, its locals gone
    } watch{player->signalStateChanged().connect(
        [&] { startedLoading = startedLoading || player->isLoading(); })};
    ASSERT_TRUE(runMainLoopUntil([&] { return startedLoading && !player->isLoading(); },
                                 std::chrono::seconds{60}));
    EXPECT_FALSE(player->errorMessage());

    appStore->setSelectedArtifact(std::nullopt); // back: the library replaces the player
    ASSERT_TRUE(runMainLoopUntil([&] {
        return dynamic_cast<LibraryView*>(app->mainWindow()->contentView().detailView()) != nullptr;
    }));
}

TEST_F(DuskwellAppIntegrationTest, QuittingWhileAnArtifactLoadsIsClean) {
    const auto component = root / "given" / "slow.jsx";
    writeFile(component, "export default function Slow() { return <h1>Slow</h1>; }");
    app->open({Gio::File::create_for_path(component)});
    ASSERT_TRUE(runMainLoopUntil([&] {
        auto* player =
            dynamic_cast<ArtifactDetailView*>(app->mainWindow()->contentView().detailView());
        return player && player->isLoading();
    }));
}

TEST_F(DuskwellAppTest, SettingsOpensOneSettingsWindow) {
    app->activate_action("settings");
    app->activate_action("settings");
    auto settings = windowsTitled("Settings");
    ASSERT_EQ(settings.size(), 1u);
    EXPECT_TRUE(settings.front()->get_visible());
}

TEST_F(DuskwellAppTest, ToggleSidebarWritesFocusModeAndFollowsIt) {
    auto* main = app->mainWindow();
    const auto sidebarShown = [main] {
        bool shown = false;
        main->get_action_state("toggle-sidebar", shown);
        return shown;
    };
    EXPECT_TRUE(sidebarShown());
    static_cast<Gtk::Widget*>(main)->activate_action("win.toggle-sidebar");
    EXPECT_TRUE(appStore->isFocusMode());
    EXPECT_FALSE(sidebarShown());

    appStore->setIsFocusMode(false);
    EXPECT_TRUE(sidebarShown());
}

} // namespace
} // namespace kelmo::testing
