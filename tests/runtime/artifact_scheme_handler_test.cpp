#include "runtime/artifact_file_scheme_handler.h"
#include "runtime/artifact_origin.h"
#include "runtime/artifact_scheme_handler.h"
#include "test_support.h"

#include <functional>
#include <gtest/gtest.h>
#include <vector>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;
using testing::writeFile;

constexpr char templateText[] = "<script>const code = {{ARTIFACT_CODE_JSON}};</script>";
constexpr char page[] = "artifact://0a1b/";
// Where the runtime files are.
std::string runtime(std::string_view path) {
    return "artifact://" + std::string{runtimeHost} + "/" + std::string{path};
}
const SchemeResult doesNotExist{SchemeError::fileDoesNotExist};

class ArtifactSchemeHandlerTest : public ::testing::Test {
protected:
    ArtifactSchemeHandlerTest() {
        writeFile(resources / "runtime.html", templateText);
        writeFile(resources / "react.js", "window.React = {};");
        writeFile(resources / "Vendor.JS", "upper");
        writeFile(resources / "sub" / "nested.js", "nested");
        for (const char* name : {"LICENSE", "page.htm", "data.json", "icon.svg"})
            writeFile(resources / name, "x");
    }

    // The page is served once per load: each page request here is a load of its own.
    SchemeResponse answer(std::string_view url) {
        handler.pageAwaited = true;
        auto result = handler.resolve(url);
        auto* response = std::get_if<SchemeResponse>(&result);
        if (!response) {
            ADD_FAILURE() << "no answer for " << url;
            return {};
        }
        return *response;
    }

    TemporaryDirectory resources;
    ArtifactSchemeHandler handler = [this] {
        ArtifactSchemeHandler made{ResourceLocator{resources.path()}};
        made.host = "0a1b";
        return made;
    }();
};

TEST_F(ArtifactSchemeHandlerTest, PageUrlsServeTheTemplateReadAfreshWithEveryPlaceholderFilled) {
    EXPECT_EQ(answer(page).body, "<script>const code = \"\";</script>") << "before any load";
    handler.artifactCode = "let a = 1;";
    const SchemeResponse expected{"<script>const code = \"let a = 1;\";</script>", "text/html"};
    for (const auto* url : {page, "artifact://0a1b", "artifact://0a1b/?reload=1#top"})
        EXPECT_EQ(answer(url), expected) << url;
    EXPECT_EQ(ArtifactSchemeHandler::pageUrl("0a1b"), page);

    // Served once, to the load it was made for; under the artifact's own host only.
    handler.pageAwaited = true;
    EXPECT_EQ(handler.resolve(page), SchemeResult{expected});
    EXPECT_EQ(handler.resolve(page), doesNotExist);
    handler.pageAwaited = true;
    EXPECT_EQ(handler.resolve("artifact://0a1c/"), doesNotExist);
    handler.host.clear();
    EXPECT_EQ(handler.resolve(page), doesNotExist);
    EXPECT_EQ(handler.resolve("artifact:///"), doesNotExist);
    handler.host = "0a1b";

    // Every placeholder is filled wherever it stands, in one pass: code that happens to
    // hold a placeholder's text is embedded as it is.
    writeFile(resources / "runtime.html",
              "{{ARTIFACT_CODE_JSON}}|{{ARTIFACT_CODE_JSON}} {{COMPILED_ARTIFACT_JSON}} "
              "{{COMPILE_KEY_JSON}} {{TAILWIND_STYLES_JSON}} {{ARTIFACT_FILE_NAME_JSON}}");
    handler.artifactCode = "{{COMPILED_ARTIFACT_JSON}}";
    EXPECT_EQ(answer(page).body,
              "\"{{COMPILED_ARTIFACT_JSON}}\"|\"{{COMPILED_ARTIFACT_JSON}}\" null \"\" null \"\"");
    handler.compiledArtifact = R"({"code":"</script>"})";
    handler.compileKey = "abc";
    handler.tailwindStyles = ".p-4{padding:1rem}";
    handler.artifactFileName = "app</script>.jsx";
    EXPECT_EQ(answer(page).body,
              R"("{{COMPILED_ARTIFACT_JSON}}"|"{{COMPILED_ARTIFACT_JSON}}" )"
              R"("{\"code\":\"\u003c\/script\u003e\"}" "abc" ".p-4{padding:1rem}" )"
              R"("app\u003c\/script\u003e.jsx")");

    // A template that is not UTF-8, or missing, does not exist.
    writeFile(resources / "runtime.html", "\xff\xfe<html>");
    handler.pageAwaited = true;
    EXPECT_EQ(handler.resolve(page), doesNotExist);
    std::filesystem::remove(resources / "runtime.html");
    handler.pageAwaited = true;
    EXPECT_EQ(handler.resolve(page), doesNotExist);
}

TEST_F(ArtifactSchemeHandlerTest,
       TheModuleCompiledOnTheSideIsAScriptThatWaitsOnlyForARunningCompile) {
    const std::string url = "artifact://0a1b/kelmo-compiled-module.js?key=abc";
    handler.compileKey = "abc";
    EXPECT_FALSE(handler.answersLater(url));
    EXPECT_EQ(answer(url),
              (SchemeResponse{"window.kelmoCompiledArtifact = null;\n", "application/javascript"}));

    std::vector<std::function<void()>> waiting;
    handler.whenCompiled = [&waiting](std::function<void()> done) {
        waiting.push_back(std::move(done));
    };
    EXPECT_TRUE(handler.answersLater(url));
    EXPECT_FALSE(handler.answersLater(runtime("kelmo-compiled-module.js?key=abc")));
    EXPECT_FALSE(handler.answersLater("artifact://0a1c/kelmo-compiled-module.js?key=abc"));

    handler.compiledArtifact = R"({"code":"</script>"})";
    EXPECT_EQ(
        answer(url).body,
        "window.kelmoCompiledArtifact = \"{\\\"code\\\":\\\"\\u003c\\/script\\u003e\\\"}\";\n");

    // A page of other code (an earlier one, say) neither waits nor gets this module.
    for (const auto* other : {"artifact://0a1b/kelmo-compiled-module.js?key=abd",
                              "artifact://0a1b/kelmo-compiled-module.js"}) {
        EXPECT_FALSE(handler.answersLater(other)) << other;
        EXPECT_EQ(answer(other).body, "window.kelmoCompiledArtifact = null;\n") << other;
    }
}

TEST_F(ArtifactSchemeHandlerTest,
       TheRuntimeHostServesTopLevelResourcesByLastComponentAndNothingElseDoes) {
    EXPECT_EQ(answer(runtime("react.js")),
              (SchemeResponse{"window.React = {};", "application/javascript"}));
    EXPECT_EQ(answer(runtime("vendor/lib/react.js?v=2")).body, "window.React = {};");
    EXPECT_EQ(answer(runtime("%72eact.js")).body, "window.React = {};");
    EXPECT_EQ(answer(runtime("runtime.html")), (SchemeResponse{templateText, "text/html"}));
    EXPECT_EQ(answer(runtime("Vendor.JS")), (SchemeResponse{"upper", "application/javascript"}));

    for (const auto& url : {std::string{"artifact://0a1b/react.js"}, runtime("missing.js"),
                            runtime("vendor.js"), runtime("sub/nested.js"), runtime("")})
        EXPECT_EQ(handler.resolve(url), doesNotExist) << url;
    // Nothing at all while no artifact is run.
    handler.host.clear();
    EXPECT_EQ(handler.resolve(runtime("react.js")), doesNotExist);
    EXPECT_EQ(handler.resolve("not a url"), SchemeResult{SchemeError::badURL});
}

TEST_F(ArtifactSchemeHandlerTest, TheIconTableIsServedWholeOrOnlyTheIconsNamed) {
    const std::string heart = R"(kelmoLucideIcon("heart",["Heart","HeartIcon"],"{}");)";
    const std::string star = R"(kelmoLucideIcon("star",["Star","LucideStar"],"{\"node\":[]}");)";
    const std::string sun = R"(kelmoLucideIcon("sun",["Sun"],"{}");)";
    const std::string listed = R"(kelmoLucideListed(["Heart","Star","Sun"]);)";
    const std::string table = heart + "\n" + star + "\n" + sun + "\n" + listed + "\n";
    writeFile(resources / "lucide-icons.js", table);

    EXPECT_EQ(answer(runtime("lucide-icons.js")).body, table);
    // By any name an icon is exported under, in the table's order, each once.
    const auto some = answer(runtime("lucide-icons.js?names=LucideStar%2CHeart,Heart"));
    EXPECT_EQ(some.body, heart + "\n" + star + "\n");
    EXPECT_EQ(some.mimeType, "application/javascript");
    EXPECT_EQ(answer(runtime("lucide-icons.js?names=")).body, "");
    EXPECT_EQ(answer(runtime("lucide-icons.js?names=Nope,listed")).body, "");
    // Only that table answers in part.
    EXPECT_EQ(answer(runtime("react.js?names=Heart")).body, "window.React = {};");
}

TEST_F(ArtifactSchemeHandlerTest, HeadersAreExactlyTypeLengthOriginAndOtherFilesAreBytes) {
    handler.artifactCode = "const greeting = \"héllo ✓\";";
    const auto shown = answer(page);
    const HeaderFields expected{
        {"Content-Type", "text/html; charset=utf-8"},
        {"Content-Length", std::to_string(shown.body.size())},
        {"Access-Control-Allow-Origin", "*"},
    };
    EXPECT_EQ(headerFields(shown), expected);
    for (const auto* name : {"LICENSE", "page.htm", "data.json", "icon.svg"})
        EXPECT_EQ(answer(runtime(name)).mimeType, "application/octet-stream") << name;
}

TEST(EscapeForHTMLScript, WritesAJsonStringLiteralNoMarkupCanEndAndNothingForBadUtf8) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "\"\""},
        {"</script>", "\"\\u003c\\/script\\u003e\""},
        {"'<!--<script>' && x", "\"'\\u003c!--\\u003cscript\\u003e' \\u0026\\u0026 x\""},
        {"say \"hi\" \\ 'yo'", "\"say \\\"hi\\\" \\\\ 'yo'\""},
        {"a\nb\r\tc\b\f", "\"a\\nb\\r\\tc\\b\\f\""},
        {std::string{"\x01\x1f\x7f", 3}, "\"\\u0001\\u001f\x7f\""},
        {std::string{"a\0b", 3}, "\"a\\u0000b\""},
        {"héllo ✓ 🚀 \u2028\u2029 \u2027", "\"héllo ✓ 🚀 \\u2028\\u2029 \u2027\""},
        {"ok \xc3", "\"\""},
        {"\xff", "\"\""},
    };
    for (const auto& [text, literal] : cases)
        EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript(text), literal) << text;
}

class ArtifactFileSchemeHandlerTest : public ::testing::Test {
protected:
    ArtifactFileSchemeHandlerTest() {
        writeFile(folder / "secret.txt", "outside");
        writeFile(root / "index.html", "<p>page</p>");
        writeFile(root / "style.css", "p{}");
        writeFile(root / "assets" / "my logo.svg", "<svg/>");
        writeFile(root / "data.bin", "bytes");
        writeFile(root / "caf\xe9.html", "latin-1 name");
        std::filesystem::create_symlink(folder / "secret.txt", root / "escape.txt");
        std::filesystem::create_symlink(root / "style.css", root / "alias.css");
        handler.setRoot(root, "c3d4");
    }

    std::string body(std::string_view url) {
        auto result = handler.resolve(url);
        auto* response = std::get_if<SchemeResponse>(&result);
        return response ? response->body : "<failed>";
    }

    TemporaryDirectory folder;
    std::filesystem::path root = folder / "site";
    ArtifactFileSchemeHandler handler;
};

TEST_F(ArtifactFileSchemeHandlerTest, ServesFilesInTheFolderAndBelowAndNothingOutsideIt) {
    EXPECT_EQ(body(ArtifactFileSchemeHandler::urlFor("c3d4", "index.html")), "<p>page</p>");
    EXPECT_EQ(body("artifact-file://c3d4/style.css?x=1"), "p{}");
    EXPECT_EQ(body("artifact-file://c3d4/assets/my%20logo.svg"), "<svg/>");
    EXPECT_EQ(body("artifact-file://c3d4/./assets//my%20logo.svg"), "<svg/>");
    EXPECT_EQ(body("artifact-file://c3d4/alias.css"), "p{}");
    EXPECT_EQ(body(ArtifactFileSchemeHandler::urlFor("c3d4", "caf\xe9.html")), "latin-1 name")
        << "file names are bytes, not necessarily UTF-8";

    for (const auto* url :
         {"artifact-file://c3d4/../secret.txt", "artifact-file://c3d4/%2e%2e/secret.txt",
          "artifact-file://c3d4/assets/..%2F..%2Fsecret.txt", "artifact-file://c3d4/escape.txt",
          "artifact-file://c3d4/index.html%00.png", "artifact-file://c3d4/",
          "artifact-file://c3d4/assets", "artifact-file://local/index.html",
          "artifact-file://c3d4/missing.html"})
        EXPECT_EQ(body(url), "<failed>") << url;
    // Nothing is served before a root is set, nor once it is cleared.
    EXPECT_EQ(ArtifactFileSchemeHandler{}.resolve("artifact-file://c3d4/index.html"),
              SchemeResult{SchemeError::fileDoesNotExist});
    handler.clear();
    EXPECT_EQ(body("artifact-file://c3d4/index.html"), "<failed>");
}

} // namespace
} // namespace kelmo
