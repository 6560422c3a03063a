#include "app/onboarding_steps.h"
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

    // The title of the stack's shown page.
    std::string pageTitle() {
        return theOnly<Gtk::Label>(
                   *theOnly<Gtk::Stack>(*guide).get_visible_child(),
                   [](Gtk::Label& l) { return l.has_css_class("onboarding-title"); })
            .get_text();
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
    const auto& steps = onboardingSteps();
    // The shown page, its dot, and the buttons on screen.
    const auto expectPage = [&](std::size_t step, std::vector<std::string> buttons) {
        EXPECT_EQ(guide->currentStep(), static_cast<int>(step));
        EXPECT_EQ(pageTitle(), steps.at(step).title);
        std::vector<bool> current(steps.size(), false);
        current.at(step) = true;
        EXPECT_EQ(dots(), current);
        EXPECT_EQ(shownButtons(), buttons);
    };
    expectPage(0, {"Next"});
    press(*guide, "Next");
    expectPage(1, {"Back", "Next"});
    press(*guide, "Back");
    expectPage(0, {"Next"});
    for (std::size_t step = 1; step < steps.size(); ++step)
        press(*guide, "Next");
    expectPage(steps.size() - 1, {"Back", "Get Started"});

    press(*guide, "Get Started");
    EXPECT_FALSE(store->isShowingOnboarding());
    EXPECT_TRUE(savedSettings().boolValue(settings_keys::hasSeenOnboarding));
    guide.reset();
    EXPECT_FALSE(makeStore().isShowingOnboarding()) << "the next start does not show it again";
}

} // namespace
} // namespace kelmo::testing
