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

class ArtifactSchemeHandlerTest : public ::testing::Test {
protected:
    ArtifactSchemeHandlerTest() {
        writeFile(resources / "runtime.html", templateText);
        writeFile(resources / "react.js", "window.React = {};");
        writeFile(resources / "Vendor.JS", "upper");
        writeFile(resources / "LICENSE", "text");
        writeFile(resources / "page.htm", "<p>");
        writeFile(resources / "data.json", "{}");
        writeFile(resources / "icon.svg", "<svg/>");
        writeFile(resources / "sub" / "nested.js", "nested");
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

    SchemeError failure(std::string_view url) {
        auto result = handler.resolve(url);
        auto* error = std::get_if<SchemeError>(&result);
        if (!error) {
            ADD_FAILURE() << "unexpected answer for " << url;
            return SchemeError::badURL;
        }
        return *error;
    }

    TemporaryDirectory resources;
    ArtifactSchemeHandler handler{ResourceLocator{resources.path()}};
};

TEST_F(ArtifactSchemeHandlerTest, PageUrlsServeTheTemplateWithTheCodeEmbedded) {
    handler.artifactCode = "let a = 1;";
    const SchemeResponse expected{"<script>const code = \"let a = 1;\";</script>", "text/html"};
    EXPECT_EQ(answer("artifact://player/"), expected);
    EXPECT_EQ(answer("artifact://player"), expected);
    EXPECT_EQ(answer("artifact://player/?reload=1#top"), expected);
}

TEST_F(ArtifactSchemeHandlerTest, BeforeAnyLoadThePageEmbedsAnEmptyLiteral) {
    EXPECT_EQ(answer("artifact://player/").body, "<script>const code = \"\";</script>");
}

TEST_F(ArtifactSchemeHandlerTest, EveryPlaceholderIsReplacedAndTheTemplateIsReadAfresh) {
    handler.artifactCode = std::string{"x"};
    writeFile(resources / "runtime.html", "{{ARTIFACT_CODE_JSON}}|{{ARTIFACT_CODE_JSON}}");
    EXPECT_EQ(answer("artifact://player/").body, "\"x\"|\"x\"");
    writeFile(resources / "runtime.html", "changed {{ARTIFACT_CODE_JSON}}");
    EXPECT_EQ(answer("artifact://player/").body, "changed \"x\"");
}

TEST_F(ArtifactSchemeHandlerTest, ACompiledModuleAndItsKeyFillTheirOwnPlaceholdersInOnePass) {
    writeFile(resources / "runtime.html",
              "{{ARTIFACT_CODE_JSON}} {{COMPILED_ARTIFACT_JSON}} {{COMPILE_KEY_JSON}} "
              "{{TAILWIND_STYLES_JSON}}");
    // Code that happens to hold a placeholder's text is embedded as it is.
    handler.artifactCode = "{{COMPILED_ARTIFACT_JSON}}";
    EXPECT_EQ(answer("artifact://player/").body, "\"{{COMPILED_ARTIFACT_JSON}}\" null \"\" null");

    handler.compiledArtifact = R"({"code":"</script>"})";
    handler.compileKey = "abc";
    handler.tailwindStyles = ".p-4{padding:1rem}";
    EXPECT_EQ(
        answer("artifact://player/").body,
        R"("{{COMPILED_ARTIFACT_JSON}}" "{\"code\":\"<\/script>\"}" "abc" ".p-4{padding:1rem}")");
}

TEST_F(ArtifactSchemeHandlerTest,
       TheModuleCompiledOnTheSideIsAScriptThatWaitsOnlyForARunningCompile) {
    const std::string url = "artifact://player/kelmo-compiled-module.js?key=abc";
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
}

TEST_F(ArtifactSchemeHandlerTest, OtherPathsServeTopLevelResourcesByLastComponent) {
    EXPECT_EQ(answer("artifact://player/react.js"),
              (SchemeResponse{"window.React = {};", "application/javascript"}));
    EXPECT_EQ(answer("artifact://player/vendor/lib/react.js?v=2").body, "window.React = {};");
    EXPECT_EQ(answer("artifact://player/runtime.html"),
              (SchemeResponse{templateText, "text/html"}));
    EXPECT_EQ(answer("artifact://player/Vendor.JS"),
              (SchemeResponse{"upper", "application/javascript"}));
    EXPECT_EQ(answer("artifact://player/%72eact.js").body, "window.React = {};");
}

TEST_F(ArtifactSchemeHandlerTest, UnknownHostsAndMissingFilesDoNotExist) {
    EXPECT_EQ(failure("artifact://other/"), SchemeError::fileDoesNotExist);
    EXPECT_EQ(failure("artifact://Player/"), SchemeError::fileDoesNotExist);
    EXPECT_EQ(failure("artifact:/player/"), SchemeError::fileDoesNotExist);
    EXPECT_EQ(failure("artifact://player/missing.js"), SchemeError::fileDoesNotExist);
    EXPECT_EQ(failure("artifact://player/vendor.js"), SchemeError::fileDoesNotExist);
    EXPECT_EQ(failure("artifact://player/sub/nested.js"), SchemeError::fileDoesNotExist);
    EXPECT_EQ(failure("not a url"), SchemeError::badURL);
}

TEST_F(ArtifactSchemeHandlerTest, AMissingOrNonUtf8TemplateDoesNotExist) {
    writeFile(resources / "runtime.html", "\xff\xfe<html>");
    EXPECT_EQ(failure("artifact://player/"), SchemeError::fileDoesNotExist);
    std::filesystem::remove(resources / "runtime.html");
    EXPECT_EQ(failure("artifact://player/"), SchemeError::fileDoesNotExist);
}

TEST_F(ArtifactSchemeHandlerTest, MimeTypesFollowTheShortTable) {
    EXPECT_EQ(answer("artifact://player/LICENSE").mimeType, "application/octet-stream");
    EXPECT_EQ(answer("artifact://player/page.htm").mimeType, "application/octet-stream");
    EXPECT_EQ(answer("artifact://player/data.json").mimeType, "application/octet-stream");
    EXPECT_EQ(answer("artifact://player/icon.svg").mimeType, "application/octet-stream");
    EXPECT_EQ(ArtifactSchemeHandler::mimeType("CSS"), "text/css");
    EXPECT_EQ(ArtifactSchemeHandler::mimeType("Html"), "text/html");
    EXPECT_EQ(ArtifactSchemeHandler::mimeType(""), "application/octet-stream");
    EXPECT_EQ(ArtifactSchemeHandler::mimeType("png"), "application/octet-stream");
}

TEST_F(ArtifactSchemeHandlerTest, HeadersAreExactlyTypeLengthAndOrigin) {
    handler.artifactCode = "const greeting = \"héllo ✓\";";
    const auto page = answer("artifact://player/");
    const HeaderFields expected{
        {"Content-Type", "text/html; charset=utf-8"},
        {"Content-Length", std::to_string(page.body.size())},
        {"Access-Control-Allow-Origin", "*"},
    };
    EXPECT_EQ(headerFields(page), expected);
    EXPECT_EQ(headerFields(answer("artifact://player/LICENSE"))[0].second,
              "application/octet-stream; charset=utf-8");
    EXPECT_EQ(headerFields(answer("artifact://player/react.js"))[1].second, "18");
}

TEST(EscapeForHTMLScript, WritesAJsonStringLiteralWithTheSolidusEscaped) {
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript(""), "\"\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("</script>"), "\"<\\/script>\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("<!-- a -->"), "\"<!-- a -->\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("say \"hi\" \\ 'yo'"),
              "\"say \\\"hi\\\" \\\\ 'yo'\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("a\nb\r\tc\b\f"),
              "\"a\\nb\\r\\tc\\b\\f\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript(std::string{"\x01\x1f\x7f", 3}),
              "\"\\u0001\\u001f\x7f\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript(std::string{"a\0b", 3}), "\"a\\u0000b\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("héllo ✓ 🚀 \u2028"),
              "\"héllo ✓ 🚀 \u2028\"");
}

TEST(EscapeForHTMLScript, InvalidUtf8BecomesAnEmptyLiteral) {
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("ok \xc3"), "\"\"");
    EXPECT_EQ(ArtifactSchemeHandler::escapeForHTMLScript("\xff"), "\"\"");
}

} // namespace
} // namespace kelmo
