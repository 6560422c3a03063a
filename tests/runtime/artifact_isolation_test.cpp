// Hostile artifacts, run through the real web view: each tries to reach what is not
// its own (another artifact's files, code or storage, the application's channels from
// a frame or a page it navigated to) and must fail; canaries must not leak.

#include "local_web_server.h"
#include "runtime/artifact_origin.h"
#include "runtime/artifact_web_view.h"
#include "test_support.h"
#include "web_view_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using ::testing::HasSubstr;
using testing::LocalWebServer;
using ::testing::Not;
using testing::pageDeadline;
using testing::runMainLoopUntil;
using testing::StandardOutputCapture;
using testing::TemporaryDirectory;
using testing::WebViewFixture;
using testing::writeFile;

const char component[] = "export default () => <p id='out'>ran</p>;\n";

class IsolationTest : public ::testing::Test {
protected:
    // The text the page fetches from the URL, or "failed".
    std::string fetched(const std::string& url) {
        host.evaluate("window.fetched = undefined; fetch('" + url +
                      "').then((r) => r.ok ? r.text() : 'failed', () => 'failed')"
                      ".then((text) => { window.fetched = text; }); 0");
        EXPECT_TRUE(host.waitUntil("window.fetched !== undefined"));
        return host.evaluate("window.fetched");
    }

    TemporaryDirectory folder;
    WebViewFixture host;
};

TEST_F(IsolationTest, EachArtifactHasAnOriginOfItsOwnWhoseWebStorageItKeeps) {
    writeFile(folder / "one" / "page.html", "<p>one</p>");
    writeFile(folder / "two" / "page.html", "<p>two</p>");
    writeFile(folder / "one.jsx", component);
    writeFile(folder / "two.jsx", component);
    const auto visit = [this](const std::filesystem::path& file) {
        if (file.extension() == ".html")
            EXPECT_TRUE(host.load(file));
        else
            EXPECT_EQ(host.play(file), "rendered");
        EXPECT_EQ(host.evaluate("location.host"), originHostFor(file));
        const auto canary = host.evaluate("String(localStorage.getItem('canary'))");
        host.evaluate("localStorage.setItem('canary', '" + file.stem().string() +
                      file.extension().string() + "')");
        return canary;
    };
    for (const auto* name : {"one/page.html", "two/page.html", "one.jsx", "two.jsx"})
        EXPECT_EQ(visit(folder / name), "null") << name;
    // Each finds its own again, in a new view as after a restart.
    WebViewFixture later;
    ASSERT_TRUE(later.load(folder / "two" / "page.html"));
    EXPECT_EQ(later.evaluate("localStorage.getItem('canary')"), "page.html");
    EXPECT_EQ(visit(folder / "one.jsx"), "one.jsx");
}

TEST_F(IsolationTest, NoPageIsServedAnotherArtifactsFilesCodeOrPlayerPage) {
    writeFile(folder / "site" / "index.html", "<p>site</p>");
    writeFile(folder / "site" / "secret.txt", "html canary");
    writeFile(folder / "app.jsx", "// jsx canary\n" + std::string{component});
    writeFile(folder / "other" / "page.html", "<p>other</p>");
    const auto htmlHost = originHostFor(folder / "site" / "index.html");
    const auto playerHost = originHostFor(folder / "app.jsx");

    ASSERT_TRUE(host.load(folder / "site" / "index.html"));
    EXPECT_EQ(fetched("secret.txt"), "html canary");

    // The player: its runtime, but not the last HTML artifact's folder, nor its own page
    // a second time (the page is served once, to its load).
    ASSERT_EQ(host.play(folder / "app.jsx"), "rendered");
    const std::string runtime = "artifact://" + std::string{runtimeHost} + "/runtime.js";
    EXPECT_THAT(fetched(runtime), HasSubstr("Kelmo player"));
    EXPECT_EQ(fetched("runtime.js"), "failed"); // the artifact's host serves its own only
    EXPECT_EQ(fetched("artifact-file://" + htmlHost + "/secret.txt"), "failed");
    EXPECT_EQ(fetched("artifact://" + playerHost + "/"), "failed");

    // Another HTML artifact: nothing of the player's, code, module or runtime.
    ASSERT_TRUE(host.load(folder / "other" / "page.html"));
    for (const auto& url :
         {"artifact://" + playerHost + "/", "artifact://" + playerHost + "/runtime.js",
          "artifact://" + playerHost + "/kelmo-compiled-module.js?key=x", runtime,
          "artifact-file://" + htmlHost + "/secret.txt"})
        EXPECT_EQ(fetched(url), "failed") << url;
}

TEST_F(IsolationTest, FramesAndPostsWithoutTheLoadsTokenReachNoChannel) {
    // Each frame tries the application's channels and tells the page what came of it.
    const std::string attack = R"(<script>
        const report = (what) => parent.postMessage(what, "*");
        const h = window.webkit && window.webkit.messageHandlers;
        if (!h || !h.kelmoStorage) report("no channel");
        else {
          h.jsConsole.postMessage({ level: "error", message: "FORGED by a frame", token: "guess" });
          h.kelmoStorage.postMessage({ operation: "set", key: '"stolen"', value: '"1"', token: "" })
            .then(() => report("stored"), () => report("refused"));
        }
        try { parent.kelmoHost.post("kelmoStorage", {}); report("reached the page"); }
        catch (error) { report(window.kelmoHost ? "bridge in frame" : "kept out"); }
    </script>)";
    std::string escaped;
    for (const char c : attack)
        escaped += c == '"' ? std::string{"&quot;"} : std::string{c};
    const std::unique_ptr<char, decltype(&g_free)> asUrl{
        g_uri_escape_string(attack.c_str(), nullptr, FALSE), g_free};
    writeFile(folder / "frames.html", R"(<!doctype html>
        <script>
          window.reports = [];
          addEventListener("message", (event) => window.reports.push(event.data));
        </script>
        <iframe sandbox="allow-scripts" srcdoc=")" +
                                          escaped + R"("></iframe>
        <iframe src="data:text/html,)" + std::string{asUrl.get()} +
                                          R"("></iframe>)");
    StandardOutputCapture output;
    ASSERT_TRUE(host.load(folder / "frames.html"));
    ASSERT_TRUE(host.waitUntil("window.reports.length === 4"));
    EXPECT_EQ(host.evaluate("window.reports.sort().join()"), "kept out,kept out,refused,refused");

    // The page itself, without its bridge: dropped too.
    host.evaluate(R"(window.webkit.messageHandlers.jsConsole.postMessage(
        { level: "error", message: "FORGED directly" }); 0)");
    host.evaluate("window.kelmoHost.post('kelmoStorage', { operation: 'get', key: '\"stolen\"' })"
                  ".then((value) => { window.stolen = String(value); }); 0");
    ASSERT_TRUE(host.waitUntil("window.stolen !== undefined"));
    EXPECT_EQ(host.evaluate("window.stolen"), "null");
    EXPECT_THAT(host.logged(output), Not(HasSubstr("FORGED")));
}

TEST_F(IsolationTest, AnOldPagesStorageCallsNeverReachTheNextArtifact) {
    writeFile(folder / "flood.jsx", R"(export default function Flood() {
        React.useEffect(() => {
          let n = 0;
          const next = () => window.storage.set("flood-" + n++, "x").then(next, next);
          for (let i = 0; i < 8; ++i) next();
        }, []);
        return <p>flooding</p>;
      })");
    writeFile(folder / "next.jsx", R"(export default function Next() {
        const [keys, setKeys] = React.useState(null);
        React.useEffect(() => { window.storage.list().then((l) => setKeys(l.keys.join())); }, []);
        return <p id="keys">{keys === null ? "" : "keys:" + keys}</p>;
      })");
    ASSERT_EQ(host.play(folder / "flood.jsx"), "rendered");
    // Twice, the second time for requests of the old page that came late.
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(host.play(folder / "next.jsx"), "rendered");
        ASSERT_TRUE(host.waitUntil("document.getElementById('keys').textContent !== ''"));
        testing::drainMainLoop();
    }
    EXPECT_EQ(host.text("#keys"), "keys:");
}

TEST_F(IsolationTest, TheArtifactCannotLeaveItsOriginAndClickedWebLinksOpenInTheBrowser) {
    LocalWebServer server{R"(<script>window.webkit.messageHandlers.jsConsole.postMessage(
        { level: "error", message: "FORGED by a web page" });</script>)"};
    std::vector<std::string> opened;
    host.view().setBrowserOpener([&opened](const std::string& uri) { opened.push_back(uri); });
    writeFile(folder / "nav.html", "<a id='link' href='" + server.url("/clicked") +
                                       "'>link</a><a id='own' href='#part'>part</a>"
                                       "<iframe src='" +
                                       server.url("/frame") + "'></iframe>");
    StandardOutputCapture output;
    ASSERT_TRUE(host.load(folder / "nav.html"));
    const std::string page = host.evaluate("location.href");
    host.evaluate("window.marker = 'kept'");

    // A web page in a frame loads (and reaches no channel). A script's navigation
    // reaches the server, and the answer is refused.
    ASSERT_TRUE(runMainLoopUntil([&] { return server.requested.size() == 1; }, pageDeadline));
    host.evaluate("location.href = '" + server.url("/script") + "'; 0");
    ASSERT_TRUE(runMainLoopUntil([&] { return server.requested.size() == 2; }, pageDeadline));
    host.evaluate("location.href = 'data:text/html,<p>data</p>'; 0");
    host.evaluate("window.open('" + server.url("/popup") + "'); 0");
    ASSERT_TRUE(host.waitUntil("document.readyState === 'complete'"));
    testing::drainMainLoop();
    EXPECT_EQ(host.evaluate("String(window.marker)"), "kept");
    EXPECT_EQ(host.evaluate("location.href"), page);
    EXPECT_TRUE(host.errorMessages.empty());

    // A click on a web link goes to the browser; one within the page stays in it.
    host.evaluate(
        "document.getElementById('link').click(); document.getElementById('own').click()");
    ASSERT_TRUE(runMainLoopUntil([&] { return !opened.empty(); }, pageDeadline));
    EXPECT_EQ(opened, std::vector<std::string>{server.url("/clicked")});
    EXPECT_EQ(host.evaluate("location.hash + ' ' + window.marker"), "#part kept");
    EXPECT_EQ(server.requested, (std::vector<std::string>{"/frame", "/script"}));
    EXPECT_THAT(host.logged(output), Not(HasSubstr("FORGED")));
}

TEST_F(IsolationTest, ThePlayerRunsAgainWhenThePageReloadsItself) {
    writeFile(folder / "again.jsx",
              "export default () => <b id='out' onClick={() => location.reload()}>again</b>;");
    ASSERT_EQ(host.play(folder / "again.jsx"), "rendered");
    host.evaluate("window.marker = 'old'; location.hash = '#x'");
    EXPECT_EQ(host.evaluate("String(window.marker)"), "old");
    host.evaluate("document.getElementById('out').click()");
    ASSERT_TRUE(host.waitUntil("window.marker === undefined"));
    EXPECT_EQ(host.waitForPlayer(), "rendered");
    EXPECT_TRUE(host.errorMessages.empty());
}

TEST_F(IsolationTest, ScriptBreakingSourcesRunAndConsoleMessagesCannotForgeLines) {
    writeFile(folder / "breaker.jsx", R"JSX(
        const a = "<!--<script>";
        const b = "</script><script>window.injected = 1</script>";
        const c = "\u2028\u2029 & <b> 'quoted' \"twice\" \\ héllo 🚀 日本";
        console.log("one\n🔵 [JS] forged\r\x1b[2J\u009b tab\t");
        export default () => <p id="out">{a + b + c}</p>;
    )JSX");
    StandardOutputCapture output;
    ASSERT_EQ(host.play(folder / "breaker.jsx"), "rendered");
    EXPECT_EQ(host.text("#out"),
              "<!--<script></script><script>window.injected = 1</script>\u2028\u2029 & <b> "
              "'quoted' \"twice\" \\ héllo 🚀 日本");
    EXPECT_EQ(host.evaluate("String(window.injected)"), "undefined");
    EXPECT_THAT(host.logged(output),
                HasSubstr("🔵 [JS] one\\n🔵 [JS] forged\\r\\x1b[2J\\u009b tab\\t\n🔵 [JS] done\n"));
}

TEST_F(IsolationTest, DownloadsAskWhereToSave) {
    std::vector<std::string> suggested;
    const auto chosen = folder / "chosen.txt";
    host.view().setSaveChooser([&](const std::string& name, auto answer) {
        suggested.push_back(name);
        answer(chosen);
    });
    writeFile(folder / "download.html",
              "<a id='save' download='notes.txt' href='data:text/plain,hello'>save</a>");
    ASSERT_TRUE(host.load(folder / "download.html"));
    host.evaluate("document.getElementById('save').click()");
    ASSERT_TRUE(runMainLoopUntil(
        [&] { return std::filesystem::exists(chosen) && testing::readFile(chosen) == "hello"; },
        pageDeadline));
    EXPECT_EQ(suggested, std::vector<std::string>{"notes.txt"});
}

} // namespace
} // namespace kelmo
