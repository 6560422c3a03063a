#include "app/settings_view.h"
#include "app/settings_window.h"
#include "shell_fixture.h"
#include "store/settings_keys.h"

#include <algorithm>

namespace kelmo::testing {
namespace {

class SettingsViewTest : public ShellTest {
protected:
    void SetUp() override {
        makeStore();
        view = Gtk::make_managed<SettingsView>(*store);
        show(*view);
    }

    // The texts of the labels on screen (mapped), in order.
    std::vector<std::string> texts() {
        std::vector<std::string> result;
        for (auto* label : findAll<Gtk::Label>(*view, [](Gtk::Label& l) { return l.get_mapped(); }))
            result.push_back(label->get_text());
        return result;
    }

    bool showsText(const std::string& text) {
        const auto shown = texts();
        return std::find(shown.begin(), shown.end(), text) != shown.end();
    }

    void press(const std::string& label) {
        auto* button = findButton(*view, label);
        ASSERT_NE(button, nullptr) << label;
        ASSERT_TRUE(button->get_mapped()) << label;
        click(*button);
    }

    // The confirmation dialog on screen, or null.
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
    EXPECT_TRUE(showsText("No folder configured"));
    EXPECT_FALSE(findButton(*view, "Change…")->get_mapped());

    const auto folder = root / "Prototypes";
    std::filesystem::create_directories(folder);
    press("Choose Folder…");
    ASSERT_EQ(panel->pending.size(), 1u);
    EXPECT_TRUE(panel->pending.front().request.canChooseDirectories);
    panel->answer(folder);
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() == 1; }));
    EXPECT_TRUE(showsText("Prototypes"));
    EXPECT_TRUE(showsText(folder.string()));
    EXPECT_FALSE(showsText("No folder configured"));
    EXPECT_TRUE(findButton(*view, "Clear")->get_mapped());

    // With a second folder the row keeps showing the first; "Change…" adds another.
    std::filesystem::create_directories(root / "More");
    std::filesystem::create_directories(root / "Third");
    watchFolder(root / "More");
    EXPECT_TRUE(showsText("Prototypes"));
    EXPECT_FALSE(showsText("More"));
    press("Change…");
    panel->answer(root / "Third");
    ASSERT_TRUE(runMainLoopUntil([&] { return store->watchedFolders().size() == 3; }));
    EXPECT_TRUE(showsText(folder.string()));

    // Cancel, and closing the dialog, leave the folders; only Clear clears.
    EXPECT_FALSE(view->showClearConfirm());
    for (const auto response :
         {Gtk::ResponseType::CANCEL, Gtk::ResponseType::DELETE_EVENT, Gtk::ResponseType::ACCEPT}) {
        press("Clear");
        EXPECT_TRUE(view->showClearConfirm());
        auto* dialog = shownDialog();
        ASSERT_NE(dialog, nullptr);
        EXPECT_TRUE(dialog->get_modal());
        EXPECT_EQ(dialog->get_transient_for(), window.get());
        EXPECT_EQ(dialog->property_text().get_value(), "Clear Folder");
        EXPECT_EQ(dialog->property_secondary_text().get_value(),
                  "This will remove all artifacts loaded from this folder. Manually opened "
                  "files are not affected.");
        auto* clear =
            dynamic_cast<Gtk::Button*>(dialog->get_widget_for_response(Gtk::ResponseType::ACCEPT));
        auto* cancel =
            dynamic_cast<Gtk::Button*>(dialog->get_widget_for_response(Gtk::ResponseType::CANCEL));
        ASSERT_TRUE(clear && cancel);
        EXPECT_EQ(clear->get_label(), "Clear");
        EXPECT_TRUE(clear->has_css_class("destructive-action"));
        EXPECT_EQ(cancel->get_label(), "Cancel");

        dialog->response(response);
        EXPECT_FALSE(view->showClearConfirm());
        EXPECT_EQ(shownDialog(), nullptr);
        EXPECT_EQ(store->watchedFolders().size(), response == Gtk::ResponseType::ACCEPT ? 0u : 3u);
    }
    EXPECT_TRUE(showsText("No folder configured"));
}

TEST_F(SettingsViewTest, RuntimeRowsAreFixedTextsInAFixedSizeWindowAndTheGuideCanBeShownAgain) {
    const auto shown = texts();
    const std::vector<std::string> runtime{"Runtime",
                                           "Supported formats",
                                           ".html  .htm  .jsx  .tsx",
                                           "JSX/TSX engine",
                                           "Babel Standalone + React 18",
                                           "Networking",
                                           "Sandboxed — no outbound server"};
    EXPECT_NE(std::search(shown.begin(), shown.end(), runtime.begin(), runtime.end()), shown.end());
    EXPECT_TRUE(showsText("Artifacts Folder"));
    EXPECT_TRUE(showsText("Help"));

    // Showing the guide again does not write the flag.
    store->settings().setBool(settings_keys::hasSeenOnboarding, true);
    store->setIsShowingOnboarding(false);
    press("Show Onboarding Again");
    EXPECT_TRUE(store->isShowingOnboarding());
    EXPECT_TRUE(savedSettings().boolValue(settings_keys::hasSeenOnboarding));
    press("Show Onboarding Again");
    EXPECT_TRUE(store->isShowingOnboarding());

    SettingsWindow settings{*store};
    settings.present();
    ASSERT_TRUE(runMainLoopUntil([&] { return settings.get_width() > 0; }));
    EXPECT_FALSE(settings.get_resizable());
    EXPECT_EQ(settings.get_width(), SettingsView::width);
    EXPECT_EQ(settings.get_height(), SettingsView::height);
}

} // namespace
} // namespace kelmo::testing
