// The player page with what real artifacts import: every artifact of
// tests/artifacts renders, Tailwind's classes take effect, the shadcn-style
// components look and behave as expected, and the host APIs answer. One web view
// serves the whole suite.

#include "test_support.h"
#include "web_view_fixture.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace kelmo {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using testing::StandardOutputCapture;
using testing::TemporaryDirectory;
using testing::WebViewFixture;
using testing::writeFile;

const std::filesystem::path artifacts{KELMO_TEST_ARTIFACTS_DIR};

class ArtifactLibraryTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        host_ = std::make_unique<WebViewFixture>();
        folder_ = std::make_unique<TemporaryDirectory>();
    }
    static void TearDownTestSuite() {
        host_.reset();
        folder_.reset();
    }

    WebViewFixture& host() { return *host_; }

    // Writes the code to a file of that name and runs it.
    std::string run(const std::string& fileName, const std::string& code) {
        writeFile(*folder_ / fileName, code);
        return host().play(*folder_ / fileName);
    }

    std::string style(const std::string& selector, const std::string& property) {
        return host().style(selector, property);
    }

    static std::unique_ptr<WebViewFixture> host_;
    static std::unique_ptr<TemporaryDirectory> folder_;
};

std::unique_ptr<WebViewFixture> ArtifactLibraryTest::host_;
std::unique_ptr<TemporaryDirectory> ArtifactLibraryTest::folder_;

TEST_F(ArtifactLibraryTest, EveryTestArtifactRendersWithoutError) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator{artifacts})
        files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    ASSERT_GE(files.size(), 20u);
    for (const auto& file : files) {
        EXPECT_EQ(host().play(file), "rendered") << file.filename() << ": " << host().panelText();
        EXPECT_EQ(host().evaluate("document.getElementById('root').childElementCount > 0"), "true")
            << file.filename();
    }
}

TEST_F(ArtifactLibraryTest, TailwindUtilitiesVariantsArbitraryValuesAndBreakpointsApply) {
    ASSERT_EQ(host().play(artifacts / "tailwind-responsive-probe.jsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(style("#side", "backgroundColor"), "rgb(59, 130, 246)"); // bg-blue-500
    EXPECT_EQ(style("#side", "flexShrink"), "0");                      // flex-shrink-0
    EXPECT_EQ(style("#arbitrary", "width"), "350px");                  // w-[350px]
    EXPECT_EQ(style("#arbitrary", "backgroundColor"), "rgb(255, 102, 0)");
    EXPECT_EQ(style("#arbitrary", "fontSize"), "13px");
    EXPECT_EQ(style("#overlay", "backgroundColor"), "rgba(0, 0, 0, 0.5)"); // bg-opacity-50
    EXPECT_EQ(style("#overlay", "color"), "rgba(255, 255, 255, 0.75)");    // text-opacity-75

    // hover:, focus: and active: become rules of their own: for each state, a rule
    // whose selector without the state matches the element.
    EXPECT_EQ(
        host().evaluate("[':hover', ':focus', ':active'].filter((state) =>"
                        "  [...document.styleSheets].some((sheet) => [...sheet.cssRules]"
                        "    .some((rule) => (rule.selectorText || '').endsWith(state) &&"
                        "      document.getElementById('side')"
                        "        .matches(rule.selectorText.slice(0, -state.length))))).join()"),
        ":hover,:focus,:active");

    // A class put together at run time is styled once it appears (and, should the first
    // frame have come from kept rules, once Tailwind has taken over after it).
    host().evaluate("document.getElementById('grow').click()");
    ASSERT_TRUE(host().waitUntil("document.getElementById('late') !== null"));
    EXPECT_TRUE(host().waitUntil( // text-emerald-600
        "getComputedStyle(document.getElementById('late')).color === 'rgb(5, 150, 105)'"));
    EXPECT_EQ(style("#late", "letterSpacing"), "4.8px"); // tracking-[0.3em] at 16px

    // md: changes the layout between phone and tablet widths.
    ASSERT_TRUE(host().setViewportWidth(390));
    EXPECT_EQ(style("#layout", "flexDirection"), "column");
    EXPECT_EQ(style("#side", "width"), style("#layout", "width"));
    ASSERT_TRUE(host().setViewportWidth(768));
    EXPECT_EQ(style("#layout", "flexDirection"), "row");
    EXPECT_EQ(style("#side", "width"), "256px"); // md:w-64
    host().view().set_size_request(-1, -1);
    host().view().set_halign(Gtk::Align::FILL);
}

// What Tailwind 3.3 and 3.4 added, as shadcn/ui's components use it today.
TEST_F(ArtifactLibraryTest, NewerTailwindClassesApplyAndAMenuOpensAboveAStackedCard) {
    ASSERT_EQ(host().play(artifacts / "tailwind-v3-extras.jsx"), "rendered") << host().panelText();
    EXPECT_EQ(style("#size", "height"), "16px");                   // size-4
    EXPECT_EQ(style("#size-arbitrary", "width"), "20px");          // size-[20px]
    EXPECT_EQ(style("#icon-button svg", "width"), "16px");         // [&_svg]:size-4
    EXPECT_EQ(style("#icon-button svg", "pointerEvents"), "none"); // [&_svg]:pointer-events-none
    EXPECT_EQ(style("#clamped span", "webkitLineClamp"), "1");     // [&>span]:line-clamp-1
    EXPECT_EQ(style("#viewport", "height"), host().evaluate("innerHeight + 'px'")); // h-dvh
    EXPECT_EQ(style("#viewport", "width"), host().evaluate("innerWidth + 'px'"));   // w-svw
    EXPECT_EQ(style("#variables", "width"), "123px");                  // w-[--probe-width]
    EXPECT_EQ(style("#variables", "backgroundColor"), "rgb(1, 2, 3)"); // bg-[--probe-colour]
    EXPECT_EQ(style("#has", "backgroundColor"), "rgb(241, 245, 249)"); // has-[:checked]:bg-muted
    EXPECT_EQ(style("#group-has", "fontWeight"), "700");               // group-has-[:checked]:
    EXPECT_EQ(style("#logical", "marginLeft"), "12px");                // ms-3
    EXPECT_EQ(style("#logical", "paddingRight"), "20px");              // pe-5
    EXPECT_EQ(style("#logical", "borderLeftWidth"), "4px");            // border-s-4
    EXPECT_EQ(style("#logical", "borderBottomLeftRadius"), "8px");     // rounded-s-lg
    EXPECT_EQ(style("#logical", "borderBottomRightRadius"), "6px");    // rounded-ee-md
    EXPECT_EQ(style("#logical-rtl", "marginRight"), "12px");           // ms-3, right to left
    EXPECT_EQ(style("#inset", "right"), "24px");                       // end-6
    EXPECT_EQ(style("#sidebar", "backgroundColor"), "rgb(250, 250, 250)"); // bg-sidebar
    EXPECT_EQ(style("#sidebar-primary", "color"), "rgb(250, 250, 250)");
    EXPECT_EQ(style("#size", "backgroundColor"), "rgb(231, 110, 80)"); // bg-chart-1
    EXPECT_EQ(style("#dark", "color") + style("#light", "color"),      // dark: by class
              "rgb(255, 255, 255)rgb(0, 0, 0)");

    // A menu that opens over a card stacked above the page shows above it: its
    // popper wrapper takes the menu's z-50 when the menu mounts. (Should the first
    // frame have come from kept rules, Tailwind takes over after it.)
    ASSERT_TRUE(host().waitUntil("document.getElementById('kelmo-tailwind-cached') === null"));
    host().evaluate("document.getElementById('menu-trigger').dispatchEvent(new PointerEvent("
                    "'pointerdown', { bubbles: true, button: 0, pointerType: 'mouse' }))");
    ASSERT_TRUE(host().waitUntil("document.getElementById('menu') !== null"));
    EXPECT_EQ(style("[data-radix-popper-content-wrapper]", "zIndex"), "50");
    EXPECT_TRUE(host().waitUntil("(({ x, y, width, height }) => document.elementFromPoint("
                                 "x + width / 2, y + height / 2).closest('#menu') !== null)("
                                 "document.getElementById('menu').getBoundingClientRect())"));
}

TEST_F(ArtifactLibraryTest, ShadcnComponentsHaveTheirDefaultLookAndBehave) {
    ASSERT_EQ(host().play(artifacts / "shadcn-login-card.jsx"), "rendered") << host().panelText();
    // Button's default variant: bg-primary on the default theme.
    EXPECT_EQ(style("#submit", "backgroundColor"), "rgb(15, 23, 42)");
    EXPECT_EQ(style("#submit", "borderRadius"), "6px");
    EXPECT_EQ(host().evaluate("document.querySelector('.rounded-lg.border').offsetWidth"), "350");
    EXPECT_EQ(host().evaluate("document.querySelector('[role=alert]') === null"), "true");
    host().evaluate("document.getElementById('submit').click()");
    EXPECT_TRUE(host().waitUntil("document.querySelector('[role=alert]') !== null"));

    ASSERT_EQ(host().play(artifacts / "shadcn-dialogs.jsx"), "rendered") << host().panelText();
    host().evaluate("document.getElementById('open-dialog').click()");
    EXPECT_TRUE(host().waitUntil("document.querySelector('[role=dialog]') !== null"));
    EXPECT_THAT(host().text("[role=dialog]"), HasSubstr("Edit profile"));
}

// Icons are made when first named; every name the package exports answers, and
// an unknown one gets a placeholder and a warning.
TEST_F(ArtifactLibraryTest, TheWiderLibrarySetWorksAndPackageStylesheetsApplyOrAreIgnored) {
    ASSERT_EQ(host().play(artifacts / "drag-drop-and-dates.jsx"), "rendered") << host().panelText();
    EXPECT_EQ(host().text("#dates"), "2026-01-02 3 2 days ago");
    EXPECT_EQ(host().evaluate("document.querySelectorAll('#sortable li').length"), "3");
    // The package's own stylesheet styles its calendar.
    EXPECT_TRUE(host().waitUntil("getComputedStyle(document.querySelector('.rdp-root'))"
                                 ".getPropertyValue('--rdp-accent-color').trim() !== ''"));

    ASSERT_EQ(host().play(artifacts / "markdown-state-forms.tsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(host().text("#facts"), "1 true Ada 2 true");
    EXPECT_EQ(host().evaluate("document.querySelectorAll('#markdown table td').length"), "2");
    EXPECT_EQ(host().evaluate("document.querySelector('#code .token') !== null"), "true");
    EXPECT_EQ(host().text("#route"), "home");

    ASSERT_EQ(host().play(artifacts / "icons-confetti-export.jsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(host().evaluate("document.querySelectorAll('#icons svg').length"), "5");
    EXPECT_EQ(host().text("#exporters"), "function function function function");
    EXPECT_TRUE(host().waitUntil("document.body.textContent.includes('Saved')")) << "a toast";

    ASSERT_EQ(host().play(artifacts / "math-diagrams-3d-ai.jsx"), "rendered") << host().panelText();
    EXPECT_EQ(host().evaluate("document.querySelectorAll('#math .katex, #markdown .katex').length"),
              "2");
    EXPECT_TRUE(host().waitUntil("[...document.fonts].some((font) => "
                                 "font.family.includes('KaTeX_Math') && font.status === 'loaded')"))
        << "the stylesheet's fonts come with it";
    EXPECT_TRUE(host().waitUntil("document.querySelector('#diagram svg') !== null"));
    EXPECT_THAT(host().text("#diagram"), HasSubstr("Prototype"));
    EXPECT_EQ(host().evaluate("document.querySelectorAll('#flow .react-flow__node, "
                              "#legacy-flow .react-flow__node, #scene canvas').length"),
              "5");
    EXPECT_TRUE(host().waitUntil("document.getElementById('ai').textContent !== ''"));
    EXPECT_THAT(host().text("#ai"), HasSubstr("Could not reach 127.0.0.1:9"));

    // Other spellings of shipped modules: a CDN URL, a ui path without "components".
    ASSERT_EQ(host().play(artifacts / "styled-headless-code-cdn.jsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(host().evaluate("getComputedStyle(document.getElementById('title')).color + ' ' + "
                              "document.querySelector('#switch[role=switch]').ariaChecked + ' ' +"
                              "(document.querySelectorAll('#code pre span').length > 5) + ' ' + "
                              "document.querySelectorAll('#picker input').length + ' ' + "
                              "document.getElementById('cdn').textContent"),
              "rgb(200, 30, 90) true true 5 2");

    // A stylesheet Kelmo does not ship, and one of the artifact's own project, are
    // ignored with a warning each.
    StandardOutputCapture output;
    ASSERT_EQ(host().play(artifacts / "stylesheet-import.jsx"), "rendered");
    const auto logged = host().logged(output);
    EXPECT_THAT(
        logged,
        AllOf(HasSubstr("\"bootstrap/dist/css/bootstrap.min.css\" is not available in Kelmo"),
              HasSubstr("\"./App.css\" belongs to the artifact's own project")));
}

TEST_F(ArtifactLibraryTest, IconsAnswerByEveryNameAndAnUnknownOneByAPlaceholder) {
    StandardOutputCapture output;
    ASSERT_EQ(host().play(artifacts / "lucide-namespace-and-aliases.jsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(host().evaluate("document.querySelectorAll('svg.lucide').length"), "15");
    EXPECT_EQ(host().evaluate("document.querySelector('#old').innerHTML === "
                              "document.querySelector('#new').innerHTML && "
                              "['#heart path', '#rocket path', '#dot circle'].every((s) => "
                              "document.querySelector(s)) && "
                              "+document.getElementById('icons').dataset.names > 5000 && "
                              "+document.getElementById('icons').dataset.listed > 1000"),
              "true");
    EXPECT_EQ(host().evaluate("document.querySelectorAll('[data-kelmo-missing-icon]').length"),
              "2");
    EXPECT_EQ(host().evaluate("document.querySelector('[data-kelmo-missing-icon][width=\"32\"]')"
                              " !== null"),
              "true");
    EXPECT_TRUE(output.waitFor("⚠️  [JS] lucide-react has no icon \"IconFromTheFuture\""));
}

TEST_F(ArtifactLibraryTest, AnArtifactThatNamesItsIconsLoadsOnlyThose) {
    ASSERT_EQ(run("named-icons.jsx", R"(
        import { Star, Heart as Love } from "lucide-react";
        export default () => <p id="icons"><Star /><Love /></p>;
    )"),
              "rendered");
    EXPECT_EQ(host().evaluate("document.querySelectorAll('#icons svg.lucide').length"), "2");
    EXPECT_EQ(host().evaluate("Object.keys(kelmoLibraries['lucide-react'])"
                              ".filter((name) => /^[A-Z]/.test(name)).sort().join()"),
              "Heart,HeartIcon,Icon,LucideHeart,LucideProvider,LucideStar,Star,StarIcon");
}

// While a first run compiles, the page loads the shipped modules its source names;
// local files and packages Kelmo lacks are not among them.
TEST_F(ArtifactLibraryTest, TheModulesASourceNamesAreReadFromItsText) {
    ASSERT_EQ(run("named.jsx", "export default () => <p>named</p>;"), "rendered");
    const std::string source = R"(
        import React, { useState } from 'react';
        import {
          LineChart, Line,
        } from "recharts";
        import type { Props } from "./types";
        import "./styles.css";
        import { motion } from "some-package-kelmo-lacks";
        const _ = require("lodash/debounce");
        const d3 = await import("d3");
        export * from "recharts";)";
    EXPECT_EQ(host().evaluate("JSON.stringify(kelmoModuleTable.namedIn(`" + source + "`))"),
              R"(["react","recharts","./styles.css","lodash/debounce","d3"])");
}

TEST_F(ArtifactLibraryTest, ClaudeAndFileApisRejectOffline) {
    ASSERT_EQ(run("offline.jsx", R"(
        export default function App() {
          const [messages, setMessages] = React.useState(null);
          React.useEffect(() => {
            const reason = (promise) => promise.then(() => "resolved", (error) => error.message);
            Promise.all([reason(window.claude.complete("Hello")),
                         reason(window.fs.readFile("data.csv", { encoding: "utf8" }))])
              .then(setMessages);
          }, []);
          return <pre id="out">{messages ? messages.join("\n") : ""}</pre>;
        })"),
              "rendered");
    ASSERT_TRUE(host().waitUntil("document.getElementById('out').textContent !== ''"));
    EXPECT_THAT(host().text("#out"),
                AllOf(HasSubstr("window.claude.complete is not available offline"),
                      HasSubstr("window.fs.readFile is not available offline")));
}

// Runs the storage probe below and answers what it wrote.
const char storageProbe[] = R"(
    export default function App() {
      const [out, setOut] = React.useState("");
      React.useEffect(() => {
        (async () => {
          const before = await window.storage.get("visits");
          const visits = before ? Number(before.value) + 1 : 1;
          const set = await window.storage.set("visits", String(visits));
          await window.storage.set("theme", "dark");
          await window.storage.set("theme", "team", true);
          await window.storage.set("scratch", "x");
          const removed = await window.storage.delete("scratch");
          const mine = await window.storage.list();
          const shared = await window.storage.get("theme", true);
          setOut(JSON.stringify({ visits, set, removed, keys: mine.keys, shared,
                                  missing: await window.storage.get("nothing") }));
        })();
      }, []);
      return <pre id="out">{out}</pre>;
    })";

TEST_F(ArtifactLibraryTest, StorageKeepsValuesPerArtifactAcrossReloads) {
    const auto read = [this] {
        EXPECT_TRUE(host().waitUntil("document.getElementById('out').textContent !== ''"));
        return host().text("#out");
    };
    ASSERT_EQ(run("visits.jsx", storageProbe), "rendered");
    EXPECT_EQ(read(), R"({"visits":1,"set":{"key":"visits","value":"1","shared":false},)"
                      R"("removed":{"key":"scratch","deleted":true,"shared":false},)"
                      R"("keys":["theme","visits"],)"
                      R"("shared":{"key":"theme","value":"team","shared":true},"missing":null})");
    ASSERT_EQ(host().play(*folder_ / "visits.jsx"), "rendered");
    EXPECT_THAT(read(), HasSubstr(R"("visits":2)"));

    // Another artifact file has storage of its own.
    ASSERT_EQ(run("other.jsx", storageProbe), "rendered");
    EXPECT_THAT(read(), HasSubstr(R"("visits":1)"));

    // A new web view, as after a restart, finds the values.
    WebViewFixture again;
    ASSERT_EQ(again.play(*folder_ / "visits.jsx"), "rendered");
    ASSERT_TRUE(again.waitUntil("document.getElementById('out').textContent !== ''"));
    EXPECT_THAT(again.text("#out"), HasSubstr(R"("visits":3)"));
}

TEST_F(ArtifactLibraryTest, StorageKeepsAnyStringExactlyAndRefusesPastItsLimit) {
    ASSERT_EQ(run("exact.jsx", R"(
        export default function App() {
          const [out, setOut] = React.useState("");
          React.useEffect(() => {
            (async () => {
              const keys = ["a", "a\0b", "\ud800", "\ud801", "😀", "\n"];
              for (const [i, key] of keys.entries())
                await window.storage.set(key, key + i + "\0\udfff");
              const back = [];
              for (const [i, key] of keys.entries())
                back.push((await window.storage.get(key)).value === key + i + "\0\udfff");
              const listed = (await window.storage.list("a")).keys;
              const full = await window.storage.set("big", "x".repeat(6 * 1024 * 1024))
                .then(() => "stored", (error) => error.message);
              const count = (await window.storage.list()).keys.length;
              setOut(JSON.stringify({ back, listed, full, count }));
            })();
          }, []);
          return <pre id="out">{out}</pre>;
        })"),
              "rendered");
    ASSERT_TRUE(host().waitUntil("document.getElementById('out').textContent !== ''"));
    EXPECT_THAT(
        host().text("#out"),
        AllOf(HasSubstr(R"("back":[true,true,true,true,true,true],"listed":["a","a\u0000b"])"),
              HasSubstr("storage is full (5 MB)"), HasSubstr(R"("count":6)")));
}

} // namespace
} // namespace kelmo
