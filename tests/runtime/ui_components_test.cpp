// The shadcn/ui components beyond the first set, as the galleries of tests/artifacts
// render them: their structure, and that they open, filter, select and report as
// artifacts expect. One web view serves the suite.

#include "web_view_fixture.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace kelmo {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using testing::WebViewFixture;

const std::filesystem::path artifacts{KELMO_TEST_ARTIFACTS_DIR};

class UiComponentsTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() { host_ = std::make_unique<WebViewFixture>(); }
    static void TearDownTestSuite() { host_.reset(); }

    WebViewFixture& host() { return *host_; }

    bool appears(const std::string& selector) {
        return host().waitUntil("document.querySelector('" + selector + "')");
    }

    void click(const std::string& selector) {
        host().evaluate("document.querySelector('" + selector + "').click()");
    }

    // As typing does: through the element's own value setter, which React watches.
    void type(const std::string& selector, const std::string& text) {
        const std::string typing = R"((function (input, text) {
            Object.getOwnPropertyDescriptor(Object.getPrototypeOf(input), 'value').set.call(input, text);
            input.dispatchEvent(new Event('input', { bubbles: true }));
        }))";
        host().evaluate(typing + "(document.querySelector('" + selector + "'), '" + text + "')");
    }

    static std::unique_ptr<WebViewFixture> host_;
};

std::unique_ptr<WebViewFixture> UiComponentsTest::host_;

TEST_F(UiComponentsTest, NavigationMenusAndToastsHaveTheirStructureAndOpen) {
    ASSERT_EQ(host().play(artifacts / "shadcn-navigation.jsx"), "rendered") << host().panelText();

    EXPECT_EQ(host().text("nav[role=navigation][aria-label=pagination] [aria-current=page]"), "2");
    click("#next-page");
    EXPECT_TRUE(host().waitUntil(
        "document.querySelector('nav[aria-label=pagination] [aria-current=page]').textContent"
        " === '3'"));

    EXPECT_EQ(host().evaluate("document.body.textContent.includes('Introduction')"), "false");
    click("nav[aria-label=Main] button");
    EXPECT_TRUE(host().waitUntil("document.body.textContent.includes('Introduction')"));

    host().evaluate("document.getElementById('file-menu').dispatchEvent(new PointerEvent("
                    "'pointerdown', { bubbles: true, button: 0, pointerType: 'mouse' }))");
    ASSERT_TRUE(appears("[role=menu]"));
    EXPECT_THAT(host().text("[role=menu]"), HasSubstr("New Tab"));
    host().evaluate("document.activeElement.dispatchEvent("
                    "new KeyboardEvent('keydown', { key: 'Escape', bubbles: true }))");
    ASSERT_TRUE(host().waitUntil("!document.querySelector('[role=menu]')"));

    host().evaluate(
        "document.getElementById('context-area').dispatchEvent("
        "new MouseEvent('contextmenu', { bubbles: true, clientX: 100, clientY: 300 }))");
    ASSERT_TRUE(appears("[role=menu]"));
    EXPECT_THAT(host().text("[role=menu]"), HasSubstr("Reload"));

    // The gallery calls toast() of @/components/ui/use-toast; the Toaster follows the
    // store of @/hooks/use-toast, which is the same one.
    EXPECT_EQ(host().evaluate("document.querySelectorAll('[role=region] li').length"), "0");
    click("#show-toast");
    ASSERT_TRUE(appears("[role=region] li[data-state=open]"));
    EXPECT_THAT(host().text("[role=region] li"),
                AllOf(HasSubstr("Scheduled: Catch up"), HasSubstr("Undo")));
}

TEST_F(UiComponentsTest, InputsFilterSelectValidateAndLayoutsResizeAndCollapse) {
    ASSERT_EQ(host().play(artifacts / "shadcn-inputs.jsx"), "rendered") << host().panelText();

    type("[cmdk-input]", "set");
    EXPECT_TRUE(host().waitUntil("document.querySelectorAll('[cmdk-item]').length === 1"));
    EXPECT_THAT(host().text("[cmdk-item]"), HasSubstr("Settings"));

    type("input[data-input-otp]", "123456");
    EXPECT_TRUE(host().waitUntil(
        "document.querySelectorAll('[data-slot=input-otp-slot]')[5].textContent === '6'"));

    EXPECT_EQ(host().text("[role=gridcell][aria-selected=true]"), "12");
    host().evaluate("[...document.querySelectorAll('[role=gridcell] button')]"
                    ".find((day) => day.textContent === '20').click()");
    EXPECT_TRUE(host().waitUntil(
        "document.querySelector('[role=gridcell][aria-selected=true]').textContent === '20'"));

    // The form's schema, through react-hook-form, names the field's error; a valid
    // submit raises a sonner toast.
    host().evaluate("document.getElementById('profile-form').requestSubmit()");
    ASSERT_TRUE(appears("[id$=-form-item-message]"));
    EXPECT_EQ(host().text("[id$=-form-item-message]"), "Username must be at least 2 characters.");
    type("#profile-form input", "kelmo");
    EXPECT_TRUE(host().waitUntil("!document.querySelector('[id$=-form-item-message]')"));
    host().evaluate("document.getElementById('profile-form').requestSubmit()");
    ASSERT_TRUE(appears("[data-sonner-toast]"));
    EXPECT_THAT(host().text("[data-sonner-toast]"), AllOf(HasSubstr("Saved"), HasSubstr("kelmo")));

    EXPECT_EQ(host().text("[aria-roledescription=carousel] button:disabled"), "Previous slide");
    host().evaluate("[...document.querySelectorAll('[aria-roledescription=carousel] button')]"
                    ".find((button) => button.textContent === 'Next slide').click()");
    EXPECT_TRUE(host().waitUntil(
        "!document.querySelector('[aria-roledescription=carousel] button:disabled')"));

    click("#open-drawer");
    ASSERT_TRUE(appears("[role=dialog]"));
    EXPECT_THAT(host().text("[role=dialog]"), HasSubstr("Move goal"));

    ASSERT_EQ(host().play(artifacts / "shadcn-dashboard.jsx"), "rendered") << host().panelText();

    // Panel sizes written as plain numbers are percentages, as artifacts mean them.
    EXPECT_EQ(host().evaluate("Math.round(100 * document.querySelector('[data-panel]').offsetWidth"
                              " / document.querySelector('[data-group]').offsetWidth)"),
              "40");
    const std::string before =
        host().evaluate("document.querySelector('[data-panel]').offsetWidth");
    host().evaluate("(function (handle) {"
                    "  handle.focus();"
                    "  handle.dispatchEvent(new KeyboardEvent('keydown',"
                    "    { key: 'ArrowRight', bubbles: true }));"
                    "})(document.querySelector('[data-separator]'))");
    EXPECT_TRUE(host().waitUntil("document.querySelector('[data-panel]').offsetWidth > " + before));

    // Each series gets its colour from the config, also one written as var(--chart-2).
    ASSERT_TRUE(host().waitUntil(
        "document.querySelectorAll('[data-chart] path.recharts-rectangle').length === 12"));
    EXPECT_EQ(
        host().evaluate("[...document.querySelectorAll('[data-chart] path.recharts-rectangle')]"
                        ".map((bar) => getComputedStyle(bar).fill)"
                        ".filter((fill, index, all) => all.indexOf(fill) === index).join(' ; ')"),
        "rgb(231, 110, 80) ; rgb(42, 157, 144)");

    click("#sidebar-trigger");
    EXPECT_TRUE(
        host().waitUntil("document.getElementById('sidebar-state').textContent === 'collapsed' &&"
                         " document.querySelector('[data-sidebar=sidebar]').offsetWidth < 64"));
}

} // namespace
} // namespace kelmo
