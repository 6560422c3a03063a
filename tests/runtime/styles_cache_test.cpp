#include "runtime/styles_cache.h"
#include "test_support.h"

#include <chrono>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;
using testing::writeFile;

class StylesCacheTest : public ::testing::Test {
protected:
    TemporaryDirectory folder;
    StylesCache cache{folder / "styles", "styler-1", 3};
};

TEST_F(StylesCacheTest, KeysFollowTheSourceAndTheStylerWhoseFingerprintFollowsTheBundle) {
    const auto key = cache.keyFor("export default () => <p/>;");
    EXPECT_EQ(key.size(), 64u);
    EXPECT_EQ(cache.keyFor("export default () => <p/>;"), key);
    EXPECT_NE(cache.keyFor("export default () => <p />;"), key);
    EXPECT_NE(StylesCache(folder / "styles", "styler-2").keyFor("export default () => <p/>;"), key);
    // The fingerprint and the source cannot trade characters and meet.
    EXPECT_NE(StylesCache(folder / "styles", "ab").keyFor("c"),
              StylesCache(folder / "styles", "a").keyFor("bc"));

    const auto bundle = folder / "resources" / "kelmo-tailwind.js";
    ResourceLocator locator{folder / "resources"};
    EXPECT_EQ(StylesCache::fingerprintOf(locator), "");
    writeFile(bundle, "tailwind 1");
    const auto first = StylesCache::fingerprintOf(locator);
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(StylesCache::fingerprintOf(locator), first);
    writeFile(bundle, "tailwind 22");
    EXPECT_NE(StylesCache::fingerprintOf(locator), first);
}

TEST_F(StylesCacheTest, StoredRulesAreFoundOnlyUnderTheirOwnKeyAndUnusableOnesNotAtAll) {
    const auto key = cache.keyFor("a");
    EXPECT_EQ(cache.lookup(key), std::nullopt);
    cache.store(key, R"({"code":"ünïcode"})");
    EXPECT_EQ(cache.lookup(key), R"({"code":"ünïcode"})");
    EXPECT_EQ(StylesCache(folder / "styles", "styler-1").lookup(key), R"({"code":"ünïcode"})");
    EXPECT_EQ(cache.lookup(cache.keyFor("b")), std::nullopt);

    // What is not a key never reaches the file system.
    cache.store("../escape", "x");
    EXPECT_EQ(cache.lookup("../escape"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / "escape.css"));

    writeFile(folder / "styles" / (key + ".css"), "\xff\xfe not text");
    EXPECT_EQ(cache.lookup(key), std::nullopt);

    // Without a known styler nothing is kept, since nothing could be invalidated.
    StylesCache unknown{folder / "styles", ""};
    unknown.store(unknown.keyFor("a"), "{}");
    EXPECT_EQ(unknown.lookup(unknown.keyFor("a")), std::nullopt);

    StylesCache unwritable{"/proc/kelmo-styles", "styler-1"};
    unwritable.store(unwritable.keyFor("a"), "{}");
    EXPECT_EQ(unwritable.lookup(unwritable.keyFor("a")), std::nullopt);
}

TEST_F(StylesCacheTest, BeyondItsLimitTheLeastRecentlyUsedEntriesGo) {
    const auto now = std::filesystem::file_time_type::clock::now();
    std::vector<std::string> keys;
    for (const char* source : {"1", "2", "3"}) {
        keys.push_back(cache.keyFor(source));
        cache.store(keys.back(), source);
    }
    for (int entry = 0; entry < 3; ++entry)
        std::filesystem::last_write_time(folder / "styles" / (keys[entry] + ".css"),
                                         now - std::chrono::hours{3 - entry});
    EXPECT_EQ(cache.lookup(keys[0]), "1") << "the oldest written, now the most recently used";

    cache.store(cache.keyFor("4"), "4");
    EXPECT_EQ(cache.lookup(keys[1]), std::nullopt);
    EXPECT_EQ(cache.lookup(keys[0]), "1");
    EXPECT_EQ(cache.lookup(keys[2]), "3");
    EXPECT_EQ(cache.lookup(cache.keyFor("4")), "4");
}

} // namespace
} // namespace kelmo
