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

    // The shown page's title, its dot alone current, and the buttons on screen in order.
    void expectPage(std::size_t step, std::vector<std::string> buttons) {
        const auto& steps = onboardingSteps();
        EXPECT_EQ(guide->currentStep(), static_cast<int>(step));
        const auto& title =
            theOnly<Gtk::Label>(*theOnly<Gtk::Stack>(*guide).get_visible_child(),
                                [](Gtk::Label& l) { return l.has_css_class("onboarding-title"); });
        EXPECT_EQ(std::string{title.get_text()}, steps.at(step).title);
        std::vector<bool> dots, current(steps.size(), false);
        current.at(step) = true;
        for (auto* dot : findAll<Gtk::Widget>(
                 *guide, [](Gtk::Widget& w) { return w.has_css_class("onboarding-dot"); }))
            dots.push_back(dot->has_css_class("current"));
        EXPECT_EQ(dots, current);
        std::vector<std::string> labels;
        for (auto* button : findAll<Gtk::Button>(*guide, [](Gtk::Button& b) { return isShown(b); }))
            labels.push_back(button->get_label());
        EXPECT_EQ(labels, buttons);
    }

    std::unique_ptr<Gtk::Window> parent;
    std::unique_ptr<OnboardingView> guide;
};

TEST_F(OnboardingViewTest, PagesFollowBackAndNextAndGetStartedRecordsThatTheGuideWasSeen) {
    ASSERT_TRUE(store->isShowingOnboarding());
    const auto& steps = onboardingSteps();
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
