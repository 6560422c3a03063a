#include "app/settings_view.h"
#include "app/settings_window.h"
#include "runtime/package_fetcher.h"
#include "shell_fixture.h"
#include "store/settings_keys.h"

#include <gtkmm/switch.h>

namespace kelmo::testing {
namespace {

class SettingsViewTest : public ShellTest {
protected:
    void SetUp() override {
        makeStore();
        view = Gtk::make_managed<SettingsView>(*store);
        show(*view);
    }

    static Gtk::MessageDialog* shownDialog() {
        for (auto* toplevel : Gtk::Window::list_toplevels())
            if (auto* dialog = dynamic_cast<Gtk::MessageDialog*>(toplevel);
                dialog && dialog->get_visible())
                return dialog;
        return nullptr;
    }

    SettingsView* view = nullptr;
};

TEST_F(SettingsViewTest, FolderRowFollowsTheFirstWatchedFolderAndClearAsksFirst) {
    EXPECT_TRUE(showsText(*view, "No folder configured"));
    EXPECT_FALSE(isShown(*findButton(*view, "Change…")));

    const auto folder = root / "Prototypes";
    std::filesystem::create_directories(folder);
    press(*view, "Choose Folder…");
    panel->answer(folder);
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() == 1; }));
    EXPECT_TRUE(showsText(*view, folder.string()));

    // With a second folder the row keeps showing the first; "Change…" adds another.
    std::filesystem::create_directories(root / "More");
    std::filesystem::create_directories(root / "Third");
    watchFolder(root / "More");
    EXPECT_FALSE(showsText(*view, "More"));
    press(*view, "Change…");
    panel->answer(root / "Third");
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() == 3; }));
    EXPECT_TRUE(showsText(*view, folder.string()));

    // Cancel, and closing the dialog, leave the folders; only Clear clears.
    for (const auto response :
         {Gtk::ResponseType::CANCEL, Gtk::ResponseType::DELETE_EVENT, Gtk::ResponseType::ACCEPT}) {
        press(*view, "Clear");
        auto* dialog = shownDialog();
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(dialog->get_modal());
        EXPECT_EQ(dialog->get_transient_for(), window.get());
        dialog->response(response);
        EXPECT_EQ(shownDialog(), nullptr);
        EXPECT_EQ(store->watchedFolders().size(), response == Gtk::ResponseType::ACCEPT ? 0u : 3u);
    }
    EXPECT_TRUE(showsText(*view, "No folder configured"));
}

TEST_F(SettingsViewTest, PackageDownloadsCanBeAllowedForAllAndCleared) {
    auto switches = findAll<Gtk::Switch>(*view);
    ASSERT_EQ(switches.size(), 1U);
    EXPECT_FALSE(switches.front()->get_active()) << "off until the user allows it";
    switches.front()->set_active(true);
    EXPECT_TRUE(savedSettings().boolValue(settings_keys::fetchMissingPackages));

    const auto bundle = PackageFetcher::defaultFolder() / "pkg~left-pad.js";
    writeFile(bundle, "/* a downloaded package */");
    press(*view, "Clear Downloaded Packages");
    EXPECT_FALSE(std::filesystem::exists(bundle));
    EXPECT_TRUE(showsText(*view, "No packages downloaded"));
}

TEST_F(SettingsViewTest, TheGuideCanBeShownAgainAndTheWindowIsNotResizable) {
    store->settings().setBool(settings_keys::hasSeenOnboarding, true);
    store->setIsShowingOnboarding(false);
    press(*view, "Show Onboarding Again");
    EXPECT_TRUE(store->isShowingOnboarding());
    EXPECT_TRUE(savedSettings().boolValue(settings_keys::hasSeenOnboarding))
        << "showing the guide again does not write the flag";

    SettingsWindow settings{*store};
    settings.present();
    EXPECT_FALSE(settings.get_resizable());
}

} // namespace
} // namespace kelmo::testing
