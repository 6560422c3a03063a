#include "runtime/html_export.h"
#include "runtime/page_snapshot.h"
#include "test_support.h"
#include "web_view_fixture.h"

#include <gdkmm/texture.h>
#include <glibmm/miscutils.h>
#include <glibmm/spawn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelmo::testing {
namespace {

using ::testing::HasSubstr;

const std::filesystem::path artifacts{KELMO_TEST_ARTIFACTS_DIR};
const std::filesystem::path examples{KELMO_EXAMPLES_DIR};

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

// The share of pixels that differ clearly between two pictures, over the part both
// cover; 1 when either cannot be read.
double differingShare(const std::filesystem::path& first, const std::filesystem::path& second) {
    const auto pixels = [](const std::filesystem::path& file, int& width, int& height) {
        std::vector<guchar> data;
        try {
            auto texture = Gdk::Texture::create_from_filename(file.string());
            width = texture->get_width();
            height = texture->get_height();
            data.resize(static_cast<std::size_t>(width) * height * 4);
            texture->download(data.data(), static_cast<gsize>(width) * 4);
        } catch (const Glib::Error&) {
        }
        return data;
    };
    int width1 = 0, height1 = 0, width2 = 0, height2 = 0;
    const auto a = pixels(first, width1, height1);
    const auto b = pixels(second, width2, height2);
    const int width = std::min(width1, width2), height = std::min(height1, height2);
    if (a.empty() || b.empty() || width < 100 || height < 100)
        return 1.0;
    long differing = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            int largest = 0;
            for (int channel = 0; channel < 3; ++channel)
                largest = std::max(largest, std::abs(a[(y * width1 + x) * 4 + channel] -
                                                     b[(y * width2 + x) * 4 + channel]));
            differing += largest > 64;
        }
    return static_cast<double>(differing) / (static_cast<double>(width) * height);
}

// In a real browser of another engine, with its network off, an export looks as the
// artifact does in Kelmo at the same width (fonts are drawn a little differently).
TEST(HtmlExportTest, AnExportLooksInChromiumAsTheArtifactDoesInKelmo) {
    const auto chromium = Glib::find_program_in_path("chromium");
    ASSERT_FALSE(chromium.empty()) << "the tests need Debian's chromium package";
    constexpr int width = 800;
    TemporaryDirectory folder;
    WebViewFixture host;
    ASSERT_TRUE(host.setViewportWidth(width));
    for (const auto& source :
         {examples / "counter.jsx", examples / "task-board.tsx", artifacts / "export-probe.jsx"}) {
        const auto name = source.stem().string();
        writeFile(folder / (name + ".html"), exported(source));
        ASSERT_EQ(host.play(source), "rendered") << name;
        ASSERT_TRUE(host.waitUntil("document.fonts.status === 'loaded'"));
        bool saved = false;
        page_snapshot::saveAsPng(host.view().webView(), folder / (name + "-kelmo.png"),
                                 [&](std::optional<std::string> problem) {
                                     EXPECT_EQ(problem, std::nullopt);
                                     saved = true;
                                 });
        ASSERT_TRUE(runMainLoopUntil([&] { return saved; }));
        // The same viewport in both, so that what is centred in it lands alike.
        const int height =
            Gdk::Texture::create_from_filename((folder / (name + "-kelmo.png")).string())
                ->get_height();

        const std::vector<std::string> command{
            chromium, "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars",
            "--user-data-dir=" + (folder / "chromium").string(),
            // No network: no name resolves and every proxied request fails.
            "--host-resolver-rules=MAP * ~NOTFOUND", "--proxy-server=127.0.0.1:9",
            "--window-size=" + std::to_string(width) + "," + std::to_string(height),
            "--virtual-time-budget=5000",
            "--screenshot=" + (folder / (name + "-chromium.png")).string(),
            "file://" + (folder / (name + ".html")).string()};
        int status = -1;
        Glib::spawn_sync("", command,
                         Glib::SpawnFlags::STDOUT_TO_DEV_NULL |
                             Glib::SpawnFlags::STDERR_TO_DEV_NULL,
                         {}, nullptr, nullptr, &status);
        EXPECT_LT(differingShare(folder / (name + "-kelmo.png"), folder / (name + "-chromium.png")),
                  0.03)
            << name;
    }
}

} // namespace
} // namespace kelmo::testing
