#include "runtime/artifact_file_scheme_handler.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;
using testing::writeFile;

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

TEST_F(ArtifactFileSchemeHandlerTest, ServesFilesInTheFolderAndBelow) {
    EXPECT_EQ(body(ArtifactFileSchemeHandler::urlFor("index.html")), "<p>page</p>");
    EXPECT_EQ(body("artifact-file://local/style.css?x=1"), "p{}");
    EXPECT_EQ(body("artifact-file://local/assets/my%20logo.svg"), "<svg/>");
    EXPECT_EQ(body("artifact-file://local/./assets//my%20logo.svg"), "<svg/>");
    EXPECT_EQ(body("artifact-file://local/alias.css"), "p{}");
}

TEST_F(ArtifactFileSchemeHandlerTest, RefusesEverythingOutsideTheFolder) {
    EXPECT_EQ(body("artifact-file://local/../secret.txt"), "<failed>");
    EXPECT_EQ(body("artifact-file://local/%2e%2e/secret.txt"), "<failed>");
    EXPECT_EQ(body("artifact-file://local/assets/..%2F..%2Fsecret.txt"), "<failed>");
    EXPECT_EQ(body("artifact-file://local/escape.txt"), "<failed>");
    EXPECT_EQ(body("artifact-file://local/"), "<failed>");
    EXPECT_EQ(body("artifact-file://local/assets"), "<failed>");
    EXPECT_EQ(body("artifact-file://elsewhere/index.html"), "<failed>");
    EXPECT_EQ(body("artifact-file://local/missing.html"), "<failed>");
}

TEST_F(ArtifactFileSchemeHandlerTest, NothingIsServedBeforeARootIsSet) {
    ArtifactFileSchemeHandler fresh;
    EXPECT_EQ(fresh.resolve("artifact-file://local/index.html"),
              SchemeResult{SchemeError::fileDoesNotExist});
}

TEST(ArtifactFileSchemeMimeTypes, TypesCommonWebFiles) {
    EXPECT_EQ(ArtifactFileSchemeHandler::mimeType("a/page.HTM"), "text/html");
    EXPECT_EQ(ArtifactFileSchemeHandler::mimeType("app.js"), "text/javascript");
    EXPECT_EQ(ArtifactFileSchemeHandler::mimeType("data.json"), "application/json");
    EXPECT_EQ(ArtifactFileSchemeHandler::mimeType("logo.svg"), "image/svg+xml");
    EXPECT_EQ(ArtifactFileSchemeHandler::mimeType("photo.JPG"), "image/jpeg");
}

} // namespace
} // namespace kelmo
