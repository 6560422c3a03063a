#include "runtime/compile_cache.h"
#include "test_support.h"

#include <chrono>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;
using testing::writeFile;

class CompileCacheTest : public ::testing::Test {
protected:
    TemporaryDirectory folder;
    CompileCache cache{folder / "compiled", "compiler-1", 3};
};

TEST_F(CompileCacheTest, KeysFollowBothTheSourceAndTheCompiler) {
    const auto key = cache.keyFor("export default () => <p/>;");
    EXPECT_EQ(key.size(), 64u);
    EXPECT_EQ(cache.keyFor("export default () => <p/>;"), key);
    EXPECT_NE(cache.keyFor("export default () => <p />;"), key);
    EXPECT_NE(CompileCache(folder / "compiled", "compiler-2").keyFor("export default () => <p/>;"),
              key);
    // The fingerprint and the source cannot trade characters and meet.
    EXPECT_NE(CompileCache(folder / "compiled", "ab").keyFor("c"),
              CompileCache(folder / "compiled", "a").keyFor("bc"));
}

TEST_F(CompileCacheTest, StoredModulesAreFoundOnlyUnderTheirOwnKeyAndUnusableOnesNotAtAll) {
    const auto key = cache.keyFor("a");
    EXPECT_EQ(cache.lookup(key), std::nullopt);
    cache.store(key, R"({"code":"ünïcode"})");
    EXPECT_EQ(cache.lookup(key), R"({"code":"ünïcode"})");
    EXPECT_EQ(CompileCache(folder / "compiled", "compiler-1").lookup(key), R"({"code":"ünïcode"})");
    EXPECT_EQ(cache.lookup(cache.keyFor("b")), std::nullopt);

    // What is not a key never reaches the file system.
    cache.store("../escape", "x");
    EXPECT_EQ(cache.lookup("../escape"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / "escape.compiled"));

    // Unusable entries and compilers find nothing.
    writeFile(folder / "compiled" / (key + ".compiled"), "\xff\xfe not text");
    EXPECT_EQ(cache.lookup(key), std::nullopt);

    // Without a known compiler nothing is kept, since nothing could be invalidated.
    CompileCache unknown{folder / "compiled", ""};
    unknown.store(unknown.keyFor("a"), "{}");
    EXPECT_EQ(unknown.lookup(unknown.keyFor("a")), std::nullopt);

    CompileCache unwritable{"/proc/kelmo-compiled", "compiler-1"};
    unwritable.store(unwritable.keyFor("a"), "{}");
    EXPECT_EQ(unwritable.lookup(unwritable.keyFor("a")), std::nullopt);
}

TEST_F(CompileCacheTest, BeyondItsLimitTheLeastRecentlyUsedEntriesGo) {
    using namespace std::chrono_literals;
    const auto now = std::filesystem::file_time_type::clock::now();
    std::vector<std::string> keys;
    for (const char* source : {"1", "2", "3"}) {
        keys.push_back(cache.keyFor(source));
        cache.store(keys.back(), source);
    }
    // Entry 1 is the oldest written but the most recently used.
    std::filesystem::last_write_time(folder / "compiled" / (keys[0] + ".compiled"), now - 3h);
    std::filesystem::last_write_time(folder / "compiled" / (keys[1] + ".compiled"), now - 2h);
    std::filesystem::last_write_time(folder / "compiled" / (keys[2] + ".compiled"), now - 1h);
    EXPECT_EQ(cache.lookup(keys[0]), "1");

    cache.store(cache.keyFor("4"), "4");
    EXPECT_EQ(cache.lookup(keys[1]), std::nullopt);
    EXPECT_EQ(cache.lookup(keys[0]), "1");
    EXPECT_EQ(cache.lookup(keys[2]), "3");
    EXPECT_EQ(cache.lookup(cache.keyFor("4")), "4");
}

TEST_F(CompileCacheTest, TheFingerprintChangesWithTheCompilerScriptOrTheBabelBundle) {
    const auto resources = folder / "resources";
    ResourceLocator locator{resources};
    EXPECT_EQ(CompileCache::fingerprintOf(locator), "");
    writeFile(resources / "artifact-compiler.js", "compiler 1");
    EXPECT_EQ(CompileCache::fingerprintOf(locator), "");
    writeFile(resources / "babel.min.js", "babel 1");
    const auto first = CompileCache::fingerprintOf(locator);
    EXPECT_FALSE(first.empty());
    EXPECT_EQ(CompileCache::fingerprintOf(locator), first);

    writeFile(resources / "artifact-compiler.js", "compiler 2");
    const auto second = CompileCache::fingerprintOf(locator);
    EXPECT_NE(second, first);
    writeFile(resources / "babel.min.js", "babel 22");
    EXPECT_NE(CompileCache::fingerprintOf(locator), second);
}

} // namespace
} // namespace kelmo
