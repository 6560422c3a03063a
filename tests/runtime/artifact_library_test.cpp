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

// A component that shows, as JSON, what the async body returns.
std::string probe(const std::string& body) {
    return "export default function App() {\n"
           "  const [out, setOut] = React.useState('');\n"
           "  React.useEffect(() => { (async () => {" +
           body +
           "})().then((result) => setOut(JSON.stringify(result))); }, []);\n"
           "  return <pre id=\"out\">{out}</pre>;\n"
           "}\n";
}

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

    // What a probe shows once it has run.
    static std::string out(WebViewFixture& view) {
        EXPECT_TRUE(view.waitUntil("document.getElementById('out').textContent !== ''"));
        return view.text("#out");
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
    EXPECT_EQ(style("#arbitrary", "width"), "350px");                  // w-[350px]

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

    // md: changes the layout between phone and tablet widths.
    ASSERT_TRUE(host().setViewportWidth(390));
    EXPECT_EQ(style("#layout", "flexDirection"), "column");
    ASSERT_TRUE(host().setViewportWidth(768));
    EXPECT_EQ(style("#layout", "flexDirection"), "row");
    EXPECT_EQ(style("#side", "width"), "256px"); // md:w-64
    host().view().set_size_request(-1, -1);
    host().view().set_halign(Gtk::Align::FILL);
}

// What Tailwind 3.3 and 3.4 added, as shadcn/ui's components use it today.
TEST_F(ArtifactLibraryTest, NewerTailwindClassesApplyAndAMenuOpensAboveAStackedCard) {
    ASSERT_EQ(host().play(artifacts / "tailwind-v3-extras.jsx"), "rendered") << host().panelText();
    EXPECT_EQ(style("#icon-button svg", "width"), "16px");             // [&_svg]:size-4
    EXPECT_EQ(style("#variables", "width"), "123px");                  // w-[--probe-width]
    EXPECT_EQ(style("#has", "backgroundColor"), "rgb(241, 245, 249)"); // has-[:checked]:bg-muted
    EXPECT_EQ(style("#logical-rtl", "marginRight"), "12px");           // ms-3, right to left
    EXPECT_EQ(style("#dark", "color") + style("#light", "color"),      // dark: by class
              "rgb(255, 255, 255)rgb(0, 0, 0)");

    // A menu that opens over a card stacked above the page shows above it: its
    // popper wrapper takes the menu's z-50 when the menu mounts.
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
    EXPECT_EQ(style("#submit", "backgroundColor"), "rgb(15, 23, 42)"); // bg-primary
    EXPECT_EQ(host().evaluate("document.querySelector('[role=alert]') === null"), "true");
    host().evaluate("document.getElementById('submit').click()");
    EXPECT_TRUE(host().waitUntil("document.querySelector('[role=alert]') !== null"));
}

TEST_F(ArtifactLibraryTest, TheWiderLibrarySetWorksAndPackageStylesheetsApplyOrAreIgnored) {
    ASSERT_EQ(host().play(artifacts / "drag-drop-and-dates.jsx"), "rendered") << host().panelText();
    // The package's own stylesheet styles its calendar.
    EXPECT_TRUE(host().waitUntil("getComputedStyle(document.querySelector('.rdp-root'))"
                                 ".getPropertyValue('--rdp-accent-color').trim() !== ''"));

    ASSERT_EQ(host().play(artifacts / "math-diagrams-3d-ai.jsx"), "rendered") << host().panelText();
    EXPECT_TRUE(host().waitUntil("[...document.fonts].some((font) => "
                                 "font.family.includes('KaTeX_Math') && font.status === 'loaded')"))
        << "the stylesheet's fonts come with it";
    EXPECT_TRUE(host().waitUntil("document.getElementById('ai').textContent !== ''"));
    EXPECT_THAT(host().text("#ai"), HasSubstr("Could not reach 127.0.0.1:9"));

    // Other spellings of shipped modules: a CDN URL, a ui path without "components".
    ASSERT_EQ(host().play(artifacts / "styled-headless-code-cdn.jsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(host().evaluate("getComputedStyle(document.getElementById('title')).color + ' ' + "
                              "document.querySelector('#switch[role=switch]').ariaChecked + ' ' +"
                              "document.getElementById('cdn').textContent"),
              "rgb(200, 30, 90) true 2");

    // A stylesheet Kelmo does not ship, and one of the artifact's own project, are
    // ignored with a warning each.
    StandardOutputCapture output;
    ASSERT_EQ(host().play(artifacts / "stylesheet-import.jsx"), "rendered");
    EXPECT_THAT(
        host().logged(output),
        AllOf(HasSubstr("\"bootstrap/dist/css/bootstrap.min.css\" is not available in Kelmo"),
              HasSubstr("\"./App.css\" belongs to the artifact's own project")));
}

// Icons are made when first named; every name the package exports answers, and
// an unknown one gets a placeholder and a warning.
TEST_F(ArtifactLibraryTest, IconsAnswerByEveryNameAndAnUnknownOneByAPlaceholder) {
    StandardOutputCapture output;
    ASSERT_EQ(host().play(artifacts / "lucide-namespace-and-aliases.jsx"), "rendered")
        << host().panelText();
    EXPECT_EQ(host().evaluate("document.querySelectorAll('svg.lucide').length"), "15");
    EXPECT_EQ(host().evaluate("document.querySelector('#old').innerHTML === "
                              "document.querySelector('#new').innerHTML && "
                              "+document.getElementById('icons').dataset.names > 5000 && "
                              "+document.getElementById('icons').dataset.listed > 1000"),
              "true");
    EXPECT_EQ(host().evaluate("document.querySelectorAll('[data-kelmo-missing-icon]').length"),
              "2");
    EXPECT_TRUE(output.waitFor("⚠️  [JS] lucide-react has no icon \"IconFromTheFuture\""));

    // An artifact that names its icons loads only those.
    ASSERT_EQ(run("named-icons.jsx", R"(
        import { Star, Heart as Love } from "lucide-react";
        export default () => <p id="icons"><Star /><Love /></p>;
    )"),
              "rendered");
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
    ASSERT_EQ(run("offline.jsx", probe(R"(
        const reason = (promise) => promise.then(() => "resolved", (error) => error.message);
        return [await reason(window.claude.complete("Hello")),
                await reason(window.fs.readFile("data.csv", { encoding: "utf8" }))];)")),
              "rendered");
    EXPECT_THAT(out(host()), AllOf(HasSubstr("window.claude.complete is not available offline"),
                                   HasSubstr("window.fs.readFile is not available offline")));
}

TEST_F(ArtifactLibraryTest, StorageKeepsValuesPerArtifactAcrossReloads) {
    const std::string visits = probe(R"(
        const before = await window.storage.get("visits");
        const visits = before ? Number(before.value) + 1 : 1;
        const set = await window.storage.set("visits", String(visits));
        await window.storage.set("theme", "dark");
        await window.storage.set("theme", "team", true);
        await window.storage.set("scratch", "x");
        const removed = await window.storage.delete("scratch");
        const mine = await window.storage.list();
        const shared = await window.storage.get("theme", true);
        return { visits, set, removed, keys: mine.keys, shared,
                 missing: await window.storage.get("nothing") };)");
    ASSERT_EQ(run("visits.jsx", visits), "rendered");
    EXPECT_EQ(out(host()),
              R"({"visits":1,"set":{"key":"visits","value":"1","shared":false},)"
              R"("removed":{"key":"scratch","deleted":true,"shared":false},)"
              R"("keys":["theme","visits"],)"
              R"("shared":{"key":"theme","value":"team","shared":true},"missing":null})");
    ASSERT_EQ(host().play(*folder_ / "visits.jsx"), "rendered");
    EXPECT_THAT(out(host()), HasSubstr(R"("visits":2)"));

    ASSERT_EQ(run("other.jsx", visits), "rendered");
    EXPECT_THAT(out(host()), HasSubstr(R"("visits":1)")) << "another file's storage is its own";

    // A new web view, as after a restart, finds the values.
    WebViewFixture again;
    ASSERT_EQ(again.play(*folder_ / "visits.jsx"), "rendered");
    EXPECT_THAT(out(again), HasSubstr(R"("visits":3)"));
}

TEST_F(ArtifactLibraryTest, StorageKeepsAnyStringExactlyAndRefusesPastItsLimit) {
    ASSERT_EQ(run("exact.jsx", probe(R"(
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
        return { back, listed, full, count };)")),
              "rendered");
    EXPECT_THAT(
        out(host()),
        AllOf(HasSubstr(R"("back":[true,true,true,true,true,true],"listed":["a","a\u0000b"])"),
              HasSubstr("storage is full (5 MB)"), HasSubstr(R"("count":6)")));
}

} // namespace
} // namespace kelmo
