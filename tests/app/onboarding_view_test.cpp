#include "app/onboarding_view.h"
#include "shell_fixture.h"
#include "store/settings_keys.h"

#include <gtkmm/stack.h>

namespace kelmo::testing {
namespace {

class OnboardingViewTest : public ShellTest {
protected:
    void SetUp() override {
        makeStore();
        parent = std::make_unique<Gtk::Window>();
        parent->present();
        guide = std::make_unique<OnboardingView>(*store, parent.get());
        guide->present();
        ASSERT_TRUE(runMainLoopUntil([&] { return guide->get_mapped(); }));
    }

    void TearDown() override {
        guide.reset();
        parent.reset();
        ShellTest::TearDown();
    }

    // The labels of the buttons on screen, in order.
    std::vector<std::string> shownButtons() {
        std::vector<std::string> labels;
        for (auto* button : findAll<Gtk::Button>(*guide, [](Gtk::Button& b) { return isShown(b); }))
            labels.push_back(button->get_label());
        return labels;
    }

    // The shown page's title.
    std::string pageTitle() {
        auto stacks = findAll<Gtk::Stack>(*guide);
        EXPECT_EQ(stacks.size(), 1u);
        auto* page = stacks.front()->get_visible_child();
        auto titles = findAll<Gtk::Label>(
            *page, [](Gtk::Label& l) { return l.has_css_class("onboarding-title"); });
        return titles.empty() ? std::string{} : std::string{titles.front()->get_text()};
    }

    // For each dot, whether it is the current one.
    std::vector<bool> dots() {
        std::vector<bool> current;
        for (auto* dot : findAll<Gtk::Widget>(
                 *guide, [](Gtk::Widget& w) { return w.has_css_class("onboarding-dot"); }))
            current.push_back(dot->has_css_class("current"));
        return current;
    }

    std::unique_ptr<Gtk::Window> parent;
    std::unique_ptr<OnboardingView> guide;
};

TEST_F(OnboardingViewTest, PagesFollowBackAndNextAndGetStartedRecordsThatTheGuideWasSeen) {
    ASSERT_TRUE(store->isShowingOnboarding());
    EXPECT_EQ(pageTitle(), "Welcome to\nKelmo");
    EXPECT_EQ(shownButtons(), std::vector<std::string>{"Next"});
    EXPECT_EQ(dots(), (std::vector<bool>{true, false, false, false}));

    press(*guide, "Next");
    EXPECT_EQ(guide->currentStep(), 1);
    EXPECT_EQ(pageTitle(), "Open a File");
    EXPECT_EQ(shownButtons(), (std::vector<std::string>{"Back", "Next"}));
    EXPECT_EQ(dots(), (std::vector<bool>{false, true, false, false}));
    press(*guide, "Back");
    EXPECT_EQ(guide->currentStep(), 0);

    press(*guide, "Next");
    press(*guide, "Next");
    press(*guide, "Next");
    EXPECT_EQ(guide->currentStep(), 3);
    EXPECT_EQ(shownButtons(), (std::vector<std::string>{"Back", "Get Started"}));

    press(*guide, "Get Started");
    EXPECT_FALSE(store->isShowingOnboarding());
    EXPECT_TRUE(savedSettings().boolValue(settings_keys::hasSeenOnboarding));
    guide.reset();
    EXPECT_FALSE(makeStore().isShowingOnboarding()) << "the next start does not show it again";
}

TEST_F(OnboardingViewTest, TheGuideIsAFixedSizeModalSheetThatEveryOtherCloseOnlyHides) {
    EXPECT_TRUE(guide->get_modal());
    EXPECT_FALSE(guide->get_resizable());
    EXPECT_EQ(guide->get_transient_for(), parent.get());
    ASSERT_TRUE(runMainLoopUntil([&] { return guide->get_width() > 0; }));
    EXPECT_EQ(guide->get_width(), OnboardingView::width);
    EXPECT_EQ(guide->get_height(), OnboardingView::height);

    press(*guide, "Next");
    guide->close();
    EXPECT_FALSE(store->isShowingOnboarding());
    EXPECT_FALSE(savedSettings().boolValue(settings_keys::hasSeenOnboarding));
    guide.reset();
    EXPECT_TRUE(makeStore().isShowingOnboarding()) << "the next start shows it again";
}

} // namespace
} // namespace kelmo::testing
