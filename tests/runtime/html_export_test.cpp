#include "runtime/html_export.h"
#include "test_support.h"
#include "web_view_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelmo::testing {
namespace {

using ::testing::HasSubstr;

const std::filesystem::path artifacts{KELMO_TEST_ARTIFACTS_DIR};

std::string exported(const std::filesystem::path& source) {
    auto result = HtmlExport::exportFile(source);
    if (const auto* failure = std::get_if<HtmlExportFailure>(&result))
        return "failed: " + failure->message;
    return std::get<std::string>(result);
}

// An export is one file that runs anywhere: opened on its own, in a folder without
// any of Kelmo's files, it renders with its libraries, ui components, package
// stylesheets and Tailwind classes, and keeps window.storage in the browser.
TEST(HtmlExportTest, AnExportedArtifactRunsOnItsOwnAndTheSameSourceGivesTheSameBytes) {
    const auto page = exported(artifacts / "export-probe.jsx");
    ASSERT_EQ(page.rfind("<!doctype html>", 0), 0U) << page.substr(0, 300);
    EXPECT_TRUE(exported(artifacts / "export-probe.jsx") == page);
    const auto listed = page.find("window.kelmoEmbeddedFiles = ");
    ASSERT_NE(listed, std::string::npos);
    EXPECT_EQ(page.substr(listed, page.find('\n', listed) - listed),
              "window.kelmoEmbeddedFiles = [\"react.production.min.js\","
              "\"react-dom.production.min.js\",\"lib-lucide.js\",\"lucide-icons.js\","
              "\"lib-recharts.js\",\"kelmo-ui.js\",\"kelmo-tailwind.js\","
              "\"css~katex~dist~katex.min.css\"];")
        << "only what it imports";

    TemporaryDirectory folder;
    writeFile(folder / "probe.html", page);
    WebViewFixture host;
    ASSERT_TRUE(host.load(folder / "probe.html"));
    ASSERT_TRUE(host.waitUntil("document.documentElement.dataset.kelmoState === 'rendered'"))
        << host.panelText();
    EXPECT_TRUE(host.waitUntil("document.getElementById('visits').textContent === '1'"));
    EXPECT_EQ(host.evaluate("document.querySelectorAll('#title svg.lucide').length + ' ' + "
                            "(document.querySelector('.recharts-surface') !== null)"),
              "2 true");
    EXPECT_EQ(host.style("#title", "color"), "rgb(12, 74, 110)"); // text-sky-900
    EXPECT_TRUE(host.waitUntil("getComputedStyle(document.getElementById('button'))"
                               ".backgroundColor === 'rgb(15, 23, 42)'"))
        << "the ui button's primary look";
    EXPECT_EQ(host.evaluate("[...document.fonts].some((font) => font.family.includes('KaTeX'))"),
              "true")
        << "the package stylesheet, with its fonts";
    ASSERT_TRUE(host.load(folder / "probe.html"));
    EXPECT_TRUE(host.waitUntil("document.getElementById('visits').textContent === '2'"))
        << "kept in the browser's local storage";
}

TEST(HtmlExportTest, ACompileErrorOrAnUnknownImportIsNamed) {
    TemporaryDirectory folder;
    writeFile(folder / "broken.jsx", "export default () => <p>;\n");
    writeFile(folder / "unknown.jsx",
              "import x from 'lodahs';\nexport default () => <p>{x}</p>;\n");
    EXPECT_THAT(exported(folder / "broken.jsx"), HasSubstr("failed: Compile error:"));
    EXPECT_EQ(exported(folder / "unknown.jsx"),
              "failed: Cannot resolve import \u201clodahs\u201d: Kelmo does not have it. Did you "
              "mean \u201clodash\u201d?");
}

} // namespace
} // namespace kelmo::testing
