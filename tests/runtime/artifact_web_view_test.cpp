#include "runtime/artifact_web_view.h"
#include "test_support.h"
#include "web_view_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace kelmo {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using testing::pageDeadline;
using testing::runMainLoopUntil;
using testing::StandardOutputCapture;
using testing::TemporaryDirectory;
using testing::WebViewFixture;
using testing::writeFile;

const std::filesystem::path examples{KELMO_EXAMPLES_DIR};

int countOf(const std::string& text, const std::string& fragment) {
    int count = 0;
    for (auto at = text.find(fragment); at != std::string::npos; at = text.find(fragment, at + 1))
        ++count;
    return count;
}

class PlayerPageTest : public ::testing::Test {
protected:
    // Writes the code to a file of that name and runs it in the player.
    std::string run(const std::string& fileName, const std::string& code) {
        writeFile(folder / fileName, code);
        return host.play(folder / fileName);
    }

    TemporaryDirectory folder;
    WebViewFixture host;
};

TEST_F(PlayerPageTest, AnExampleRunsAndItsConsoleIsForwardedAsExactLinesWithoutMalformedPosts) {
    ASSERT_EQ(host.play(examples / "task-board.tsx"), "rendered");
    StandardOutputCapture output;
    host.evaluate(R"(
        [{ level: "error", message: "e" }, { level: "warn", message: "w" },
         { level: "info", message: "i" }, { level: "log", message: "l" },
         { level: "debug", message: "d" }, { level: "Error", message: "E" }, // levels match exactly
         { level: "warn" }, { level: 5, message: "number" }, ["error", "array"], "just text",
        ].forEach((body) => window.kelmoHost.post("jsConsole", body));
        window.webkit.messageHandlers.artifactBridge.postMessage({ level: "error", message: "b" });
        console.log("joined", 1, { a: [1, "x"] }, null, undefined, new TypeError("bad"));
        console.warn("%s has %d items", "list", 3);
        console.debug("end");
        "posted"
    )");
    ASSERT_TRUE(output.waitFor("🔵 [JS] end\n"));
    EXPECT_EQ(output.text(), "❌ [JS] e\n"
                             "⚠️  [JS] w\n"
                             "ℹ️  [JS] i\n"
                             "🔵 [JS] l\n"
                             "🔵 [JS] d\n"
                             "🔵 [JS] E\n"
                             "🔵 [JS] joined 1 {\"a\":[1,\"x\"]} null undefined TypeError: bad\n"
                             "⚠️  [JS] list has 3 items\n"
                             "🔵 [JS] end\n");
}

TEST_F(PlayerPageTest, ComponentsArriveCompiledAndTheirFirstFrameStylesAreKept) {
    const std::string counter = R"(
        import { useState } from "react";
        import { Star } from "lucide-react";
        export default function App() {
          const [count, setCount] = useState(0);
          return <button id="b" className="p-4" onClick={() => setCount(count + 1)}><Star />{count}</button>;
        })";
    const auto keptRules = [] {
        std::error_code ignored;
        return std::distance(
            std::filesystem::directory_iterator{StylesCache::defaultDirectory(), ignored},
            std::filesystem::directory_iterator{});
    };
    const auto before = keptRules();
    // Compiled by the application while the page loaded: the page never loads Babel.
    ASSERT_EQ(run("kept.jsx", counter), "rendered");
    EXPECT_EQ(host.evaluate("typeof Babel"), "undefined");
    EXPECT_TRUE(runMainLoopUntil([&] { return keptRules() == before + 1; }, pageDeadline));

    // A new view, as after a restart: the kept rules style the first frame, then Tailwind
    // takes over.
    WebViewFixture again;
    ASSERT_EQ(again.play(folder / "kept.jsx"), "rendered");
    EXPECT_EQ(again.evaluate("document.querySelectorAll('#b svg').length"), "1");
    EXPECT_EQ(again.style("#b", "paddingTop"), "16px");
    EXPECT_TRUE(again.waitUntil("document.querySelector('style[data-twind]') !== null && "
                                "!document.getElementById('kelmo-tailwind-cached')"));
    EXPECT_EQ(again.style("#b", "paddingTop"), "16px");
    again.evaluate("document.getElementById('b').click()");
    EXPECT_TRUE(again.waitUntil("document.getElementById('b').textContent === '1'"));

    // Any change to the code is new code.
    std::string edited = counter;
    edited.replace(edited.find("useState(0)"), 11, "useState(7)");
    ASSERT_EQ(run("kept.jsx", edited), "rendered");
    EXPECT_EQ(host.text("#b"), "7");
}

TEST_F(PlayerPageTest, WithoutACompilerThatRunsThePageCompilesWithBabel) {
    WebViewFixture babel{ResourceLocator::application(),
                         std::make_shared<ArtifactCompiler>(std::nullopt)};
    writeFile(folder / "typed.tsx", R"(
        import { useState } from "react";
        enum Size { Small = 1, Large = 4 }
        export default () => <p id="out">{useState<Size>(Size.Large)[0]}</p>;)");
    ASSERT_EQ(babel.play(folder / "typed.tsx"), "rendered");
    EXPECT_EQ(babel.text("#out"), "4");
    EXPECT_EQ(babel.evaluate("typeof Babel"), "object");

    writeFile(folder / "broken.jsx",
              "export default function App() {\n  const b = ;\n  return <p />;\n}\n");
    ASSERT_EQ(babel.play(folder / "broken.jsx"), "error");
    EXPECT_THAT(babel.panelText(),
                AllOf(HasSubstr("Compile error"), HasSubstr("Line 2, column 13")));
}

TEST_F(PlayerPageTest, EveryReactImportFormResolvesAndANamedComponentRunsWithoutADefault) {
    ASSERT_EQ(run("imports.jsx", R"(
        import { useState, useEffect } from "react";
        import * as ReactNamespace from "react";
        import ReactDOM, { createPortal } from "react-dom";
        import Client, { createRoot } from "react-dom/client";
        function helper() { return null; }
        export function Widget() {
            const [ticks, setTicks] = useState(0);
            useEffect(() => { if (ticks < 3) setTicks(ticks + 1); }, [ticks]);
            const forms = [ReactNamespace.useMemo, ReactDOM.createPortal, createPortal,
                Client.createRoot, createRoot].map((form) => typeof form);
            return <b id="out">{ticks}:{forms.join()}</b>;
        }
        export { helper };
    )"),
              "rendered");
    EXPECT_TRUE(host.waitUntil("document.getElementById('out').textContent === "
                               "'3:function,function,function,function,function'"));
}

TEST_F(PlayerPageTest, CompileRuntimeAndImportErrorsShowThePanelAndAreLoggedOnce) {
    {
        StandardOutputCapture output;
        ASSERT_EQ(run("broken.jsx", "const a = \"ünï\";\n\nexport default function App() {\n"
                                    "  const b = ;\n  return <div>{a}</div>;\n}\n"),
                  "error");
        EXPECT_THAT(host.panelText(),
                    AllOf(HasSubstr("Compile error"), HasSubstr("Line 4, column 13"),
                          HasSubstr("const b = ;"), HasSubstr("return <div>{a}</div>;")));
        EXPECT_EQ(host.evaluate("typeof Babel"), "undefined");
        EXPECT_TRUE(host.errorMessages.empty());
        const auto text = host.logged(output);
        EXPECT_EQ(countOf(text, "❌ [JS]"), 1) << text;
        EXPECT_THAT(text,
                    AllOf(HasSubstr("❌ [JS] Compile error: "), HasSubstr("(line 4, column 13)\n")));
    }
    {
        StandardOutputCapture output;
        ASSERT_EQ(run("throws.jsx", "export default function App() { throw new Error('boom'); }"),
                  "error");
        EXPECT_THAT(host.panelText(), HasSubstr("Error: boom"));
        run("later.jsx", "export default function App() {\n"
                         "  setTimeout(() => { throw new RangeError('thrown later'); });\n"
                         "  Promise.reject(new Error('rejected later'));\n"
                         "  return <p>shown</p>;\n}\n");
        EXPECT_TRUE(
            host.waitUntil("document.querySelectorAll('.kelmo-error__entry').length === 2"));
        EXPECT_THAT(host.panelText(), AllOf(HasSubstr("RangeError: thrown later"),
                                            HasSubstr("Error: rejected later")));
        EXPECT_EQ(host.evaluate("document.documentElement.dataset.kelmoState"), "error");
        const auto text = host.logged(output);
        EXPECT_EQ(countOf(text, "boom"), 1) << text;
        EXPECT_EQ(countOf(text, "❌ [JS]"), 3) << text;
    }
    // An unknown import names the package and what is available; a near miss, what was
    // probably meant.
    const std::tuple<const char*, const char*, std::vector<std::string>> imports[] = {
        {"unknown.jsx",
         "import { Bell } from 'lucide-react';\nimport chunk from 'left-pad-ultra/chunk';\n"
         "export default () => <p>{chunk([1, 2], 1).length}</p>;",
         {"\"left-pad-ultra/chunk\" (unknown.jsx, line 2)",
          "package \"left-pad-ultra\" is not available", "recharts", "lucide-react",
          "@/components/ui/*"}},
        {"path.jsx",
         "import { BarChart } from 'recharts/lib/BarChart';\nexport default () => <BarChart />;",
         {"(path.jsx, line 1): Kelmo has the package \"recharts\" but not this path in it. "
          "Did you mean \"recharts\"?"}},
        {"typo.jsx",
         "import { motion } from 'framer-motoin';\nexport default () => <motion.div />;",
         {"Did you mean \"framer-motion\"?"}},
        {"component.jsx",
         "import { Button } from '@/components/ui/buton';\nexport default () => <Button />;",
         {"Kelmo has no @/components/ui/buton", "{accordion,"}},
    };
    StandardOutputCapture output;
    for (const auto& [file, source, said] : imports) {
        ASSERT_EQ(run(file, source), "error");
        for (const auto& text : said)
            EXPECT_THAT(host.panelText(), HasSubstr(text)) << file;
    }
    EXPECT_THAT(host.logged(output),
                AllOf(HasSubstr("❌ [JS] Unknown import: "), HasSubstr("left-pad-ultra/chunk")));
}

using WebViewLoadingTest = PlayerPageTest;

TEST_F(WebViewLoadingTest, ReportsArriveFromTheMainLoopAndTheLoadKeyDecidesWhetherToLoad) {
    const auto artifact = Artifact::from(examples / "counter.jsx");
    const auto token = Uuid::random();
    host.view().loadIfNeeded(artifact, token);
    EXPECT_TRUE(host.loadingReports.empty());
    ASSERT_TRUE(host.loadEnds());
    EXPECT_TRUE(host.loadingReports.front());
    ASSERT_EQ(host.waitForPlayer(), "rendered");
    host.evaluate("window.marker = 'kept'");

    host.loadingReports.clear();
    host.view().loadIfNeeded(artifact, token);
    testing::drainMainLoop();
    EXPECT_TRUE(host.loadingReports.empty());
    EXPECT_EQ(host.evaluate("String(window.marker)"), "kept");

    host.view().loadIfNeeded(artifact, Uuid::random());
    ASSERT_TRUE(host.loadEnds());
    ASSERT_EQ(host.waitForPlayer(), "rendered");
    EXPECT_EQ(host.evaluate("String(window.marker)"), "undefined");
}

TEST_F(WebViewLoadingTest, FilesThatCannotRunEndTheLoadWithAMessageAndKeepThePreviousPage) {
    ASSERT_EQ(::mkfifo((folder / "pipe.jsx").c_str(), 0600), 0);
    std::filesystem::create_directories(folder / "folder.tsx");
    writeFile(folder / "latin1.jsx", "export default () => <p>caf\xe9</p>;");
    writeFile(folder / "huge.jsx", "// " + std::string(10 * 1024 * 1024, 'x') + "\n");
    ASSERT_TRUE(host.load(folder / "missing.html"));
    EXPECT_EQ(host.errorMessages, std::vector<std::string>{"File does not exist"});
    EXPECT_FALSE(host.loadingReports.back());

    ASSERT_EQ(host.play(examples / "counter.jsx"), "rendered");
    const std::pair<const char*, const char*> failures[] = {
        {"latin1.jsx", "Could not read file"},
        {"pipe.jsx", "Could not read file"},
        {"folder.tsx", "Could not read file"},
        {"huge.jsx", "The file is too large to run (over 10 MB)"},
    };
    for (const auto& [name, message] : failures) {
        ASSERT_TRUE(host.load(folder / name)) << name;
        EXPECT_EQ(host.errorMessages, std::vector<std::string>{message}) << name;
        EXPECT_EQ(host.loadingReports, (std::vector<bool>{true, false})) << name;
        EXPECT_EQ(host.text("#count"), "0") << name;
    }

    // A load that takes too long, and a player page that is missing, fail too.
    WebViewFixture slow;
    slow.view().setLoadTimeout(std::chrono::milliseconds{1});
    TemporaryDirectory emptyResources;
    WebViewFixture withoutTemplate{ResourceLocator{emptyResources.path()}};
    for (auto [view, message] : {std::pair{&slow, "The request timed out."},
                                 std::pair{&withoutTemplate, "File does not exist"}}) {
        ASSERT_TRUE(view->load(examples / "counter.jsx"));
        EXPECT_EQ(view->errorMessages, std::vector<std::string>{message});
        EXPECT_FALSE(view->loadingReports.back());
    }
}

TEST_F(WebViewLoadingTest, OddNamesLoadAndRunawayOrStuckPagesEndWithAClearOutcome) {
    // File names are bytes: Latin-1 names load like any other.
    writeFile(folder / "caf\xe9.html", "<p id='p'>latin</p>");
    ASSERT_TRUE(host.load(folder / "caf\xe9.html"));
    EXPECT_TRUE(host.errorMessages.empty());
    EXPECT_EQ(host.text("#p"), "latin");
    ASSERT_EQ(run("r\xe9sum\xe9.jsx", "export default () => <p>ok</p>;"), "rendered");

    // A page that allocates without end has its process ended, and says so.
    std::vector<std::string> ended;
    host.view().signalPageEnded().connect([&](const std::string& why) { ended.push_back(why); });
    writeFile(folder / "hog.html", "<script>const kept = []; setInterval(() => { for (let i = 0; "
                                   "i < 8; i++) kept.push(new Uint8Array(16 << 20).fill(1)); }, "
                                   "20);</script>");
    ASSERT_TRUE(host.load(folder / "hog.html"));
    ASSERT_TRUE(runMainLoopUntil([&] { return !ended.empty(); }, std::chrono::seconds{30}));
    EXPECT_EQ(ended, std::vector<std::string>{"The artifact's page ran out of memory"});

    // A page stuck in a script does not hold the next artifact back.
    ASSERT_EQ(run("stuck.jsx", "export default () => <button id='b' onClick={() => { "
                               "while (true) {} }}>stick</button>;"),
              "rendered");
    host.evaluate("setTimeout(() => document.getElementById('b').click(), 0); 0");
    ASSERT_EQ(host.play(examples / "counter.jsx"), "rendered");
    EXPECT_EQ(host.text("#count"), "0");

    // A load that never ends, begun again while it runs, still runs out of time.
    host.view().setLoadTimeout(std::chrono::milliseconds{1500});
    writeFile(folder / "endless.html", "<p>endless</p><script>while (true) {}</script>");
    const auto endless = Artifact::from(folder / "endless.html");
    host.errorMessages.clear();
    host.view().loadIfNeeded(endless, Uuid::random());
    runMainLoopUntil([] { return false; }, std::chrono::milliseconds{300});
    host.view().loadIfNeeded(endless, Uuid::random());
    EXPECT_TRUE(runMainLoopUntil([&] { return !host.errorMessages.empty(); }, pageDeadline));
    EXPECT_EQ(host.errorMessages, std::vector<std::string>{"The request timed out."});
}

TEST_F(WebViewLoadingTest, HtmlPagesForwardTheirConsoleAndReadTheirFolderAndBelowButNotAbove) {
    writeFile(folder / "outside.js", "window.parentScript = true;");
    writeFile(folder / "outside.txt", "parent");
    writeFile(folder / "site" / "style.css", "#probe { width: 123px; }");
    writeFile(folder / "site" / "data.json", R"({"from": "sibling"})");
    writeFile(folder / "site" / "scripts" / "child.js", "window.childScript = true;");
    const std::string outside = "file://" + (folder / "outside").string();
    writeFile(folder / "site" / "index.html", R"(<!doctype html>
        <link rel="stylesheet" href="style.css">
        <div id="probe"></div>
        <script src="scripts/child.js"></script>
        <script src="../outside.js"></script>
        <script src=")" + outside + R"(.js"></script>
        <script>
          console.warn("from %s", "html", 1);
          const text = (url) => fetch(url).then((r) => r.ok ? r.text() : "failed", () => "failed");
          Promise.all([text("data.json"), text("../outside.txt"), text(")" +
                                                  outside + R"(.txt")])
            .then(([sibling, parent, file]) => {
              window.results = { sibling: JSON.parse(sibling).from, parent, file,
                child: window.childScript === true, parentScript: window.parentScript === true,
                width: getComputedStyle(document.getElementById("probe")).width };
              console.log("done");
            });
        </script>)");
    StandardOutputCapture output;
    ASSERT_TRUE(host.load(folder / "site" / "index.html"));
    EXPECT_TRUE(host.errorMessages.empty());
    ASSERT_TRUE(host.waitUntil("window.results"));
    EXPECT_EQ(host.evaluate("JSON.stringify(window.results)"),
              R"({"sibling":"sibling","parent":"failed","file":"failed","child":true,)"
              R"("parentScript":false,"width":"123px"})");
    ASSERT_TRUE(output.waitFor("🔵 [JS] done\n"));
    EXPECT_EQ(output.text(), "⚠️  [JS] from html 1\n🔵 [JS] done\n");
}

} // namespace
} // namespace kelmo
