#include "runtime/artifact_file_scheme_handler.h"
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
constexpr char page[] = "artifact://player/";
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

    SchemeResponse answer(std::string_view url) {
        auto result = handler.resolve(url);
        auto* response = std::get_if<SchemeResponse>(&result);
        if (!response) {
            ADD_FAILURE() << "no answer for " << url;
            return {};
        }
        return *response;
    }

    TemporaryDirectory resources;
    ArtifactSchemeHandler handler{ResourceLocator{resources.path()}};
};

TEST_F(ArtifactSchemeHandlerTest, PageUrlsServeTheTemplateReadAfreshWithEveryPlaceholderFilled) {
    EXPECT_EQ(answer(page).body, "<script>const code = \"\";</script>") << "before any load";
    handler.artifactCode = "let a = 1;";
    const SchemeResponse expected{"<script>const code = \"let a = 1;\";</script>", "text/html"};
    for (const auto* url : {page, "artifact://player", "artifact://player/?reload=1#top"})
        EXPECT_EQ(answer(url), expected) << url;

    // Every placeholder is filled wherever it stands, in one pass: code that happens to
    // hold a placeholder's text is embedded as it is.
    writeFile(resources / "runtime.html",
              "{{ARTIFACT_CODE_JSON}}|{{ARTIFACT_CODE_JSON}} {{COMPILED_ARTIFACT_JSON}} "
              "{{COMPILE_KEY_JSON}} {{TAILWIND_STYLES_JSON}}");
    handler.artifactCode = "{{COMPILED_ARTIFACT_JSON}}";
    EXPECT_EQ(answer(page).body,
              "\"{{COMPILED_ARTIFACT_JSON}}\"|\"{{COMPILED_ARTIFACT_JSON}}\" null \"\" null");
    handler.compiledArtifact = R"({"code":"</script>"})";
    handler.compileKey = "abc";
    handler.tailwindStyles = ".p-4{padding:1rem}";
    EXPECT_EQ(answer(page).body, R"("{{COMPILED_ARTIFACT_JSON}}"|"{{COMPILED_ARTIFACT_JSON}}" )"
                                 R"("{\"code\":\"<\/script>\"}" "abc" ".p-4{padding:1rem}")");

    // A template that is not UTF-8, or missing, does not exist.
    writeFile(resources / "runtime.html", "\xff\xfe<html>");
    EXPECT_EQ(handler.resolve(page), doesNotExist);
    std::filesystem::remove(resources / "runtime.html");
    EXPECT_EQ(handler.resolve(page), doesNotExist);
}

TEST_F(ArtifactSchemeHandlerTest,
       TheModuleCompiledOnTheSideIsAScriptThatWaitsOnlyForARunningCompile) {
    const std::string url = "artifact://player/kelmo-compiled-module.js?key=abc";
    handler.compileKey = "abc";
    EXPECT_FALSE(handler.answersLater(url));
    EXPECT_EQ(answer(url),
              (SchemeResponse{"window.kelmoCompiledArtifact = null;\n", "application/javascript"}));

    std::vector<std::function<void()>> waiting;
    handler.whenCompiled = [&waiting](std::function<void()> done) {
        waiting.push_back(std::move(done));
    };
    EXPECT_TRUE(handler.answersLater(url));
    EXPECT_FALSE(handler.answersLater("artifact://player/react.js"));
    EXPECT_FALSE(handler.answersLater("artifact://other/kelmo-compiled-module.js"));

    handler.compiledArtifact = R"({"code":"</script>"})";
    EXPECT_EQ(answer(url).body,
              "window.kelmoCompiledArtifact = \"{\\\"code\\\":\\\"<\\/script>\\\"}\";\n");

    // A page of other code (an earlier one, say) neither waits nor gets this module.
    for (const auto* other : {"artifact://player/kelmo-compiled-module.js?key=abd",
                              "artifact://player/kelmo-compiled-module.js"}) {
        EXPECT_FALSE(handler.answersLater(other)) << other;
        EXPECT_EQ(answer(other).body, "window.kelmoCompiledArtifact = null;\n") << other;
    }
}

TEST_F(ArtifactSchemeHandlerTest, OtherPathsServeTopLevelResourcesByLastComponentOrDoNotExist) {
    EXPECT_EQ(answer("artifact://player/react.js"),
              (SchemeResponse{"window.React = {};", "application/javascript"}));
    EXPECT_EQ(answer("artifact://player/vendor/lib/react.js?v=2").body, "window.React = {};");
    EXPECT_EQ(answer("artifact://player/%72eact.js").body, "window.React = {};");
    EXPECT_EQ(answer("artifact://player/runtime.html"),
              (SchemeResponse{templateText, "text/html"}));
    EXPECT_EQ(answer("artifact://player/Vendor.JS"),
              (SchemeResponse{"upper", "application/javascript"}));

    for (const auto* url : {"artifact://other/", "artifact://Player/", "artifact:/player/",
                            "artifact://player/missing.js", "artifact://player/vendor.js",
                            "artifact://player/sub/nested.js"})
        EXPECT_EQ(handler.resolve(url), doesNotExist) << url;
    EXPECT_EQ(handler.resolve("not a url"), SchemeResult{SchemeError::badURL});
}

TEST_F(ArtifactSchemeHandlerTest, TheIconTableIsServedWholeOrOnlyTheIconsNamed) {
    const std::string heart = R"(kelmoLucideIcon("heart",["Heart","HeartIcon"],"{}");)";
    const std::string star = R"(kelmoLucideIcon("star",["Star","LucideStar"],"{\"node\":[]}");)";
    const std::string sun = R"(kelmoLucideIcon("sun",["Sun"],"{}");)";
    const std::string listed = R"(kelmoLucideListed(["Heart","Star","Sun"]);)";
    const std::string table = heart + "\n" + star + "\n" + sun + "\n" + listed + "\n";
    writeFile(resources / "lucide-icons.js", table);

    EXPECT_EQ(answer("artifact://player/lucide-icons.js").body, table);
    // By any name an icon is exported under, in the table's order, each once.
    const auto some = answer("artifact://player/lucide-icons.js?names=LucideStar%2CHeart,Heart");
    EXPECT_EQ(some.body, heart + "\n" + star + "\n");
    EXPECT_EQ(some.mimeType, "application/javascript");
    EXPECT_EQ(answer("artifact://player/lucide-icons.js?names=").body, "");
    EXPECT_EQ(answer("artifact://player/lucide-icons.js?names=Nope,listed").body, "");
    // Only that table answers in part.
    EXPECT_EQ(answer("artifact://player/react.js?names=Heart").body, "window.React = {};");
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
        EXPECT_EQ(answer(std::string{page} + name).mimeType, "application/octet-stream") << name;
}

TEST(EscapeForHTMLScript, WritesAJsonStringLiteralWithTheSolidusEscapedAndNothingForBadUtf8) {
    const std::pair<std::string, std::string> cases[] = {
        {"", "\"\""},
        {"</script>", "\"<\\/script>\""},
        {"<!-- a -->", "\"<!-- a -->\""},
        {"say \"hi\" \\ 'yo'", "\"say \\\"hi\\\" \\\\ 'yo'\""},
        {"a\nb\r\tc\b\f", "\"a\\nb\\r\\tc\\b\\f\""},
        {std::string{"\x01\x1f\x7f", 3}, "\"\\u0001\\u001f\x7f\""},
        {std::string{"a\0b", 3}, "\"a\\u0000b\""},
        {"héllo ✓ 🚀 \u2028", "\"héllo ✓ 🚀 \u2028\""},
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
        std::filesystem::create_symlink(folder / "secret.txt", root / "escape.txt");
        std::filesystem::create_symlink(root / "style.css", root / "alias.css");
        handler.setRoot(root);
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
    EXPECT_EQ(body(ArtifactFileSchemeHandler::urlFor("index.html")), "<p>page</p>");
    EXPECT_EQ(body("artifact-file://local/style.css?x=1"), "p{}");
    EXPECT_EQ(body("artifact-file://local/assets/my%20logo.svg"), "<svg/>");
    EXPECT_EQ(body("artifact-file://local/./assets//my%20logo.svg"), "<svg/>");
    EXPECT_EQ(body("artifact-file://local/alias.css"), "p{}");

    for (const auto* url :
         {"artifact-file://local/../secret.txt", "artifact-file://local/%2e%2e/secret.txt",
          "artifact-file://local/assets/..%2F..%2Fsecret.txt", "artifact-file://local/escape.txt",
          "artifact-file://local/", "artifact-file://local/assets",
          "artifact-file://elsewhere/index.html", "artifact-file://local/missing.html"})
        EXPECT_EQ(body(url), "<failed>") << url;
    // Nothing is served before a root is set.
    EXPECT_EQ(ArtifactFileSchemeHandler{}.resolve("artifact-file://local/index.html"),
              SchemeResult{SchemeError::fileDoesNotExist});
}

} // namespace
} // namespace kelmo
