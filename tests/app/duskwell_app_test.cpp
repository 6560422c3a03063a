#include "app/duskwell_app.h"
#include "app/main_window.h"
#include "app/onboarding_steps.h"
#include "keyboard.h"
#include "library/library_view.h"
#include "library/symbols.h"
#include "runtime/artifact_detail_view.h"
#include "shell_fixture.h"

#include <gtkmm/icontheme.h>
#include <gtkmm/image.h>
#include <gtkmm/popovermenubar.h>
#include <gtkmm/shortcutsshortcut.h>
#include <gtkmm/shortcutswindow.h>
#include <gtkmm/text.h>
#include <set>

namespace kelmo::testing {
namespace {

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

    virtual DetailViews detailViews() const { return DetailViews::placeholders(); }

    Glib::RefPtr<DuskwellApp> app;
    ArtifactStore* appStore = nullptr;
};

class DuskwellAppIntegrationTest : public DuskwellAppTest {
protected:
    DetailViews detailViews() const override { return DetailViews::standard(); }
};

TEST_F(DuskwellAppTest, OpenCommandsPostNotificationsThatTheStoreAnswers) {
    writeFile(root / "page.html");
    app->activate_action("open-file");
    EXPECT_TRUE(panel->pending.empty()) << "the command only posts";
    ASSERT_TRUE(runMainLoopUntil([&] { return panel->pending.size() == 1; }));
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

TEST_F(DuskwellAppTest, ShortcutsAndMenusCarryEveryCommandAndNoNewWindowItem) {
    for (const auto& [accel, action] : {std::pair{"<Control>o", "app.open-file"},
                                        {"<Shift><Control>o", "app.open-folder"},
                                        {"<Control>comma", "app.settings"},
                                        {"<Control>question", "app.shortcuts"},
                                        {"<Control>w", "window.close"},
                                        {"<Control>q", "app.quit"},
                                        {"<Control>f", "win.search"},
                                        {"F9", "win.toggle-sidebar"}})
        EXPECT_EQ(app->get_actions_for_accel(accel), std::vector<Glib::ustring>{action});

    // The menus carry every parameterless command and no "New" item.
    std::set<std::string> commands{"window.close"}, inMenus;
    for (const auto& name : app->list_actions())
        commands.insert("app." + name);
    for (const auto& name : app->mainWindow()->list_actions())
        if (!g_action_get_parameter_type(app->mainWindow()->lookup_action(name)->gobj()))
            commands.insert("win." + name);
    for (const auto& item : menuItems(app->get_menubar()->gobj())) {
        if (!item.action.empty())
            inMenus.insert(item.action);
        EXPECT_EQ(item.label.find("New"), std::string::npos) << item.label;
    }
    EXPECT_EQ(inMenus, commands);
    EXPECT_EQ(findAll<Gtk::PopoverMenuBar>(*app->mainWindow()).size(), 1u);
}

TEST_F(DuskwellAppTest,
       OneMainWindowWithoutATitleBarWhoseSidebarFollowsFocusModeAndOneOfEachOther) {
    auto* main = app->mainWindow();
    ASSERT_NE(main->get_titlebar(), nullptr);
    EXPECT_FALSE(main->get_titlebar()->get_visible());
    app->activate();
    EXPECT_EQ(app->get_windows().size(), 1u) << "activating again presents the same window";

    const auto sidebarShown = [main] {
        bool shown = false;
        main->get_action_state("toggle-sidebar", shown);
        return shown;
    };
    static_cast<Gtk::Widget*>(main)->activate_action("win.toggle-sidebar");
    EXPECT_TRUE(appStore->isFocusMode());
    EXPECT_FALSE(sidebarShown());
    appStore->setIsFocusMode(false);
    EXPECT_TRUE(sidebarShown());

    for (const auto& [action, title] :
         {std::pair{"about", "About Kelmo"}, {"settings", "Settings"}}) {
        app->activate_action(action);
        app->activate_action(action);
        const auto shown = windowsTitled(title);
        ASSERT_EQ(shown.size(), 1u) << title;
        shown.front()->close();
        drainMainLoop();
        app->activate_action(action);
        EXPECT_EQ(windowsTitled(title), shown);
        EXPECT_TRUE(shown.front()->get_visible());
    }
}

TEST_F(DuskwellAppTest, KeysSearchListTheShortcutsCloseTheFocusedWindowAndPageTheGuide) {
    if (!canTypeKeys())
        GTEST_SKIP() << "keys are typed through XTEST";
    for (const auto* name : {"alpha.html", "beta.jsx"}) {
        writeFile(root / name);
        appStore->addArtifact(root / name);
    }
    appStore->setSelectedArtifact(std::nullopt);
    auto& main = *app->mainWindow();
    ASSERT_TRUE(focusWindow(main));

    // Escape hands the focus from the search field to the detail column, keeping the text.
    auto& search = theOnly<Gtk::Text>(main);
    typeKeys("<Control>f");
    ASSERT_TRUE(runMainLoopUntil([&] { return main.get_focus() == &search; }));
    search.set_text("alpha");
    typeKeys("Escape");
    ASSERT_TRUE(runMainLoopUntil([&] { return main.get_focus() != &search; }));
    EXPECT_EQ(search.get_text(), "alpha");
    ASSERT_NE(main.get_focus(), nullptr);
    EXPECT_TRUE(main.get_focus()->is_ancestor(*main.contentView().detailView()));

    // Each listed shortcut is bound (Reload by the player).
    typeKeys("<Control>question");
    Gtk::ShortcutsWindow* shortcuts = nullptr;
    ASSERT_TRUE(runMainLoopUntil([&] {
        for (auto* window : app->get_windows())
            if ((shortcuts = dynamic_cast<Gtk::ShortcutsWindow*>(window)))
                return shortcuts->get_visible();
        return false;
    }));
    std::set<std::string> listed;
    for (auto* shortcut : findAll<Gtk::ShortcutsShortcut>(*shortcuts))
        listed.insert(shortcut->property_accelerator().get_value());
    EXPECT_TRUE(listed.contains("<Control>r") && listed.contains("<Control>o"));
    for (const auto& accelerator : listed) {
        if (accelerator == "<Control>r")
            continue; // the player's own, bound while it shows
        EXPECT_FALSE(app->get_actions_for_accel(accelerator).empty()) << accelerator;
    }

    // Ctrl+W closes the window it is typed in.
    const auto closesOnCtrlW = [](Gtk::Window& window) {
        if (!focusWindow(window))
            return false;
        typeKeys("<Control>w");
        return runMainLoopUntil([&window] { return !window.get_visible(); });
    };
    EXPECT_TRUE(closesOnCtrlW(*shortcuts));
    ASSERT_TRUE(focusWindow(main));
    typeKeys("<Control>comma");
    ASSERT_TRUE(runMainLoopUntil([&] { return !windowsTitled("Settings").empty(); }));
    EXPECT_TRUE(closesOnCtrlW(*windowsTitled("Settings").front()));
    EXPECT_TRUE(closesOnCtrlW(main));

    app->activate();
    appStore->setIsShowingOnboarding(true);
    ASSERT_TRUE(runMainLoopUntil([&] { return main.contentView().onboardingView(); }));
    auto& guide = *main.contentView().onboardingView();
    ASSERT_TRUE(focusWindow(guide));
    for (const auto& [key, step] : {std::pair{"Right", 1}, {"Right", 2}, {"Left", 1}}) {
        typeKeys(key);
        EXPECT_TRUE(runMainLoopUntil([&] { return guide.currentStep() == step; })) << key;
    }
}

TEST_F(DuskwellAppTest, OpenedFilesJoinTheLibraryAndTheLastOneIsShown) {
    const auto page = root / "given" / "page.html";
    const auto notes = root / "given" / "notes.md";
    writeFile(page);
    writeFile(notes);
    app->open({Gio::File::create_for_path(page), Gio::File::create_for_path(notes)});
    ASSERT_TRUE(runMainLoopUntil([&] { return appStore->allArtifacts().size() == 2; }));
    EXPECT_EQ(appStore->selectedArtifact()->path(), notes.native());
    EXPECT_EQ(appStore->recentPaths(), (std::vector<std::string>{notes, page}));

    app->open({Gio::File::create_for_path(page)});
    ASSERT_TRUE(runMainLoopUntil([&] { return appStore->selectedArtifact()->path() == page; }));
    EXPECT_EQ(appStore->allArtifacts().size(), 2u);
    EXPECT_TRUE(app->mainWindow()->get_visible());
}

TEST_F(DuskwellAppIntegrationTest, AFileOpenedFromOutsideRunsInThePlayerAndQuittingMidLoadIsClean) {
    const auto player = [&] {
        return dynamic_cast<ArtifactDetailView*>(app->mainWindow()->contentView().detailView());
    };
    const auto component = root / "given" / "hello.jsx";
    writeFile(component, "export default function Hello() { return <h1 id='hello'>Hi</h1>; }");
    app->open({Gio::File::create_for_path(component)});
    ASSERT_TRUE(runMainLoopUntil([&] { return appStore->selectedArtifact().has_value(); }));
    ASSERT_NE(player(), nullptr);
    EXPECT_EQ(player()->artifact().path(), component.native());
    bool startedLoading = player()->isLoading();
    struct Watch {
        sigc::connection connection;
        ~Watch() { connection.disconnect(); } // the test may end early, its locals gone
    } watch{player()->signalStateChanged().connect(
        [&] { startedLoading = startedLoading || player()->isLoading(); })};
    ASSERT_TRUE(runMainLoopUntil([&] { return startedLoading && !player()->isLoading(); },
                                 std::chrono::seconds{60}));
    EXPECT_FALSE(player()->errorMessage());

    appStore->setSelectedArtifact(std::nullopt);
    ASSERT_TRUE(runMainLoopUntil([&] {
        return dynamic_cast<LibraryView*>(app->mainWindow()->contentView().detailView()) != nullptr;
    }));

    // The test ends, and the application with it, while another file loads.
    const auto slow = root / "given" / "slow.jsx";
    writeFile(slow, "export default function Slow() { return <h1>Slow</h1>; }");
    app->open({Gio::File::create_for_path(slow)});
    ASSERT_TRUE(runMainLoopUntil([&] { return player() && player()->isLoading(); }));
}

// The icons come from the PNG bundle: an SVG one would bring the SVG decoder into the start.
TEST_F(DuskwellAppIntegrationTest, EverySymbolTheShellShowsHasABundledPngIcon) {
    const auto theme = Gtk::IconTheme::get_for_display(Gdk::Display::get_default());
    const auto expectBundled = [&theme](const std::string& icon, int size = 16) {
        const auto paintable = theme->lookup_icon(icon, size);
        const auto file = paintable ? paintable->get_file() : Glib::RefPtr<Gio::File>();
        const std::string uri = file ? file->get_uri() : "";
        EXPECT_TRUE(uri.starts_with("resource:///org/kelmo/Kelmo/icons/") && uri.ends_with(".png"))
            << icon << " -> " << uri;
    };
    const auto expectSymbolsBundled = [&](Gtk::Widget& shown) {
        const auto symbols = findAll<Gtk::Image>(shown, [](Gtk::Image& image) {
            const std::string icon = image.get_icon_name();
            return icon.starts_with("kelmo-") || icon == symbolIconName("no.such.symbol");
        });
        EXPECT_GT(symbols.size(), 5u);
        for (auto* image : symbols)
            expectBundled(image->get_icon_name());
    };
    writeFile(root / "page.html", "<p>page</p>");
    appStore->addWatchedFolder();
    panel->answer(root.path());
    appStore->toggleFavorite(*appStore->selectedArtifact());
    appStore->setSelectedArtifact(std::nullopt);
    drainMainLoop();
    expectSymbolsBundled(*app->mainWindow()->get_child());
    appStore->setSelectedArtifact(appStore->allArtifacts().front());
    ASSERT_TRUE(dynamic_cast<ArtifactDetailView*>(app->mainWindow()->contentView().detailView()));
    expectSymbolsBundled(*app->mainWindow()->get_child());

    for (const auto& step : onboardingSteps())
        expectBundled(symbolIconName(step.icon));
    expectBundled(appLogoIconName, 28);
    expectBundled(appLogoIconName, 144);
    expectBundled("kelmo-process-working-symbolic");
}

} // namespace
} // namespace kelmo::testing
