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
        for (const char* name : {"page.htm", "icon.svg"})
            writeFile(resources / name, "x");
    }

    // As a load of its own: the page is served once per load.
    SchemeResult resolve(std::string_view url) {
        handler.pageAwaited = true;
        return handler.resolve(url);
    }

    SchemeResponse answer(std::string_view url) {
        auto result = resolve(url);
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

TEST_F(ArtifactSchemeHandlerTest, ThePageIsTheTemplateReadAfreshFilledInOnePassAndServedOnce) {
    EXPECT_EQ(answer(page).body, "<script>const code = \"\";</script>") << "before any load";
    handler.artifactCode = "let a = \"héllo ✓\";";
    const SchemeResponse expected{"<script>const code = \"let a = \\\"héllo ✓\\\";\";</script>",
                                  "text/html"};
    for (const auto* url : {page, "artifact://0a1b", "artifact://0a1b/?reload=1#top"})
        EXPECT_EQ(answer(url), expected) << url;
    EXPECT_EQ(headerFields(expected), (HeaderFields{
                                          {"Content-Type", "text/html; charset=utf-8"},
                                          {"Content-Length", std::to_string(expected.body.size())},
                                          {"Access-Control-Allow-Origin", "*"},
                                      }));

    EXPECT_EQ(resolve(page), SchemeResult{expected});
    EXPECT_EQ(handler.resolve(page), doesNotExist) << "a second time";
    EXPECT_EQ(resolve("artifact://0a1c/"), doesNotExist);
    handler.host.clear();
    EXPECT_EQ(resolve(page), doesNotExist);
    EXPECT_EQ(resolve("artifact:///"), doesNotExist);
    handler.host = "0a1b";

    writeFile(resources / "runtime.html", "\xff\xfe<html>");
    EXPECT_EQ(resolve(page), doesNotExist) << "a template that is not UTF-8";

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
}

TEST_F(ArtifactSchemeHandlerTest,
       TheModuleCompiledOnTheSideIsAScriptThatWaitsOnlyForARunningCompile) {
    const std::string url = "artifact://0a1b/kelmo-compiled-module.js?key=abc";
    const std::string none = "window.kelmoCompiledArtifact = null;\n";
    handler.compileKey = "abc";
    EXPECT_FALSE(handler.answersLater(url));
    EXPECT_EQ(answer(url), (SchemeResponse{none, "application/javascript"}));

    handler.whenCompiled = [](std::function<void()>) {};
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
        EXPECT_EQ(answer(other).body, none) << other;
    }
}

TEST_F(ArtifactSchemeHandlerTest,
       TheRuntimeHostServesTopLevelResourcesByLastComponentAndNothingElseDoes) {
    const std::string script = "application/javascript", bytes = "application/octet-stream";
    const std::tuple<std::string, std::string, std::string> served[] = {
        {"react.js", "window.React = {};", script},
        {"vendor/lib/react.js?v=2", "window.React = {};", script},
        {"%72eact.js", "window.React = {};", script},
        {"runtime.html", templateText, "text/html"},
        {"Vendor.JS", "upper", script},
        {"page.htm", "x", bytes},
        {"icon.svg", "x", bytes},
    };
    for (const auto& [path, body, type] : served)
        EXPECT_EQ(answer(runtime(path)), (SchemeResponse{body, type})) << path;

    for (const auto& url : {std::string{"artifact://0a1b/react.js"}, runtime("missing.js"),
                            runtime("vendor.js"), runtime("sub/nested.js"), runtime("")})
        EXPECT_EQ(resolve(url), doesNotExist) << url;
    // Nothing at all while no artifact is run.
    handler.host.clear();
    EXPECT_EQ(resolve(runtime("react.js")), doesNotExist);
    EXPECT_EQ(resolve("not a url"), SchemeResult{SchemeError::badURL});
}

TEST_F(ArtifactSchemeHandlerTest, TheIconTableIsServedWholeOrOnlyTheIconsNamed) {
    const std::string heart = R"(kelmoLucideIcon("heart",["Heart","HeartIcon"],"{}");)";
    const std::string star = R"(kelmoLucideIcon("star",["Star","LucideStar"],"{\"node\":[]}");)";
    const std::string table = heart + "\n" + star + "\n" +
                              R"(kelmoLucideIcon("sun",["Sun"],"{}");)" + "\n" +
                              R"(kelmoLucideListed(["Heart","Star","Sun"]);)" + "\n";
    writeFile(resources / "lucide-icons.js", table);

    // By any name an icon is exported under, in the table's order, each once; only that
    // table answers in part.
    const std::pair<std::string, std::string> asked[] = {
        {"lucide-icons.js", table},
        {"lucide-icons.js?names=LucideStar%2CHeart,Heart", heart + "\n" + star + "\n"},
        {"lucide-icons.js?names=", ""},
        {"lucide-icons.js?names=Nope,listed", ""},
        {"react.js?names=Heart", "window.React = {};"},
    };
    for (const auto& [path, body] : asked)
        EXPECT_EQ(answer(runtime(path)), (SchemeResponse{body, "application/javascript"})) << path;
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
