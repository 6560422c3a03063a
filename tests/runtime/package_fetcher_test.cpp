// Fetching a package an artifact imports and Kelmo lacks, from a registry that the test
// serves on 127.0.0.1 itself: the package is a fixture packed with npm.

#include "local_web_server.h"
#include "runtime/artifact_compiler.h"
#include "runtime/package_fetcher.h"
#include "test_support.h"
#include "web_view_fixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using ::testing::HasSubstr;
using testing::runMainLoopUntil;
using testing::TemporaryDirectory;
using testing::writeFile;

// npm's "sha512-<base64>" integrity of the bytes.
std::string integrityOf(const std::string& bytes) {
    GChecksum* checksum = g_checksum_new(G_CHECKSUM_SHA512);
    g_checksum_update(checksum, reinterpret_cast<const guchar*>(bytes.data()), bytes.size());
    guint8 raw[64];
    gsize length = sizeof raw;
    g_checksum_get_digest(checksum, raw, &length);
    g_checksum_free(checksum);
    gchar* encoded = g_base64_encode(raw, length);
    const std::string integrity = std::string{"sha512-"} + encoded;
    g_free(encoded);
    return integrity;
}

class PackageFetcherTest : public ::testing::Test {
protected:
    static constexpr char name[] = "kelmo-fixture-greeting";

    // Packs the fixture and serves it with its metadata, as the npm registry does.
    std::unique_ptr<testing::LocalWebServer> serveRegistry() {
        const auto source = work / "source";
        const std::string manifest = std::string{R"("name":")"} + name +
                                     R"(","version":"1.0.0","main":"index.js",)" +
                                     R"("peerDependencies":{"react":"*"})";
        writeFile(source / "package.json", "{" + manifest + "}");
        writeFile(source / "index.js",
                  "const React = require('react');\n"
                  "exports.Greeting = ({ name }) => React.createElement('p', { id: 'greeting' }, "
                  "'Hello ' + name);\n");
        const std::string pack =
            "cd '" + source.string() + "' && npm pack --silent >/dev/null 2>&1";
        EXPECT_EQ(std::system(pack.c_str()), 0) << "npm pack";
        const std::string tarball = testing::readFile(source / (std::string{name} + "-1.0.0.tgz"));
        auto server = std::make_unique<testing::LocalWebServer>();
        const std::string tarballPath = std::string{"/"} + name + "/-/" + name + "-1.0.0.tgz";
        server->route(std::string{"/"} + name,
                      {"application/json",
                       std::string{R"({"name":")"} + name + R"(","dist-tags":{"latest":"1.0.0"},)" +
                           R"("versions":{"1.0.0":{)" + manifest + R"(,"dist":{"tarball":")" +
                           server->url(tarballPath) + R"(","integrity":")" + integrityOf(tarball) +
                           R"("}}}})"});
        server->route(tarballPath, {"application/octet-stream", tarball});
        return server;
    }

    PackageFetcher::Result fetch(PackageFetcher& fetcher, const std::string& package) {
        std::optional<PackageFetcher::Result> result;
        progress.clear();
        fetcher.fetch(
            package, [this](const std::string& step) { progress.push_back(step); },
            [&result](PackageFetcher::Result done) { result = std::move(done); });
        EXPECT_TRUE(
            runMainLoopUntil([&] { return result.has_value(); }, std::chrono::seconds{120}));
        return result.value_or(PackageFetcher::Result{false, "<no answer>"});
    }

    TemporaryDirectory work;
    std::vector<std::string> progress;
};

TEST(PackageNames, OnlyPlainRegistryNamesAreHandedToNpm) {
    for (const char* good : {"left-pad", "@scope/name", "lodash.debounce", "react-use"})
        EXPECT_TRUE(PackageFetcher::isPackageName(good)) << good;
    for (const char* bad : {"", "--registry=http://x", "../x", "file:x", "a b", "Left-Pad",
                            "git+https://x/y", "@scope", "name@1.0.0", "-x"})
        EXPECT_FALSE(PackageFetcher::isPackageName(bad)) << bad;
    EXPECT_EQ(PackageFetcher::packageOf("@scope/name/sub/path"), "@scope/name");
    EXPECT_EQ(PackageFetcher::packageOf("left-pad/chunk"), "left-pad");
    EXPECT_EQ(PackageFetcher::bundleFileName("@scope/name"), "pkg~@scope~name.js");
}

TEST_F(PackageFetcherTest, AMissingPackageIsFetchedAndRunsAndFailuresSayWhy) {
    const auto server = serveRegistry();
    g_setenv("npm_config_registry", server->url("/").c_str(), TRUE);
    g_setenv("npm_config_cache", (work / "npm-cache").c_str(), TRUE);
    g_setenv("npm_config_fetch_retries", "0", TRUE);
    PackageFetcher fetcher{PackageFetcher::defaultFolder(), ArtifactCompiler::bundledEsbuild()};
    fetcher.clear();

    const auto fetched = fetch(fetcher, name);
    ASSERT_TRUE(fetched.ok) << fetched.message;
    EXPECT_THAT(progress, ::testing::ElementsAre(std::string{"Downloading "} + name + " from npm…",
                                                 std::string{"Preparing "} + name + "…"));
    EXPECT_EQ(fetcher.downloaded(), std::vector<std::string>{name});

    // The artifact that imports it runs, with the page's one React.
    testing::WebViewFixture host;
    writeFile(work / "uses.jsx", std::string{"import { Greeting } from '"} + name +
                                     "';\nexport default () => <Greeting name='Ada' />;\n");
    ASSERT_EQ(host.play(work / "uses.jsx"), "rendered") << host.panelText();
    EXPECT_EQ(host.text("#greeting"), "Hello Ada");

    // A package the registry does not have, a registry that does not answer, no npm.
    EXPECT_THAT(fetch(fetcher, "no-such-package").message,
                HasSubstr("\"no-such-package\" does not exist on npm"));
    g_setenv("npm_config_registry", "http://127.0.0.1:9/", TRUE);
    EXPECT_THAT(fetch(fetcher, "left-pad").message, HasSubstr("could not reach the npm registry"));
    const std::string path = g_getenv("PATH");
    g_setenv("PATH", "/nonexistent", TRUE);
    EXPECT_THAT(fetch(fetcher, "left-pad").message, HasSubstr("npm was not found"));
    g_setenv("PATH", path.c_str(), TRUE);
    EXPECT_FALSE(fetch(fetcher, "--global").ok);
    EXPECT_EQ(fetcher.downloaded(), std::vector<std::string>{name});

    fetcher.clear();
    EXPECT_TRUE(fetcher.downloaded().empty());
    g_unsetenv("npm_config_registry");
}

} // namespace
} // namespace kelmo
