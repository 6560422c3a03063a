#include "runtime/artifact_storage.h"
#include "test_support.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;
using testing::writeFile;

using Keys = std::vector<std::string>;

class ArtifactStorageTest : public ::testing::Test {
protected:
    TemporaryDirectory folder;
    const std::filesystem::path a = "/art/a.jsx";
    const std::filesystem::path b = "/art/b.jsx";
};

// The page's side (keys and values as any string, per artifact, across reloads and
// views, the limit's message) is checked in ArtifactLibraryTest.
TEST_F(ArtifactStorageTest, KeepsEachArtifactsSetsApartExactlyAndOnDiskAfterTheStorageEnds) {
    {
        ArtifactStorage storage{folder / "storage"};
        EXPECT_TRUE(storage.set(a, "\"k\"", "\"own\"", false));
        EXPECT_TRUE(storage.set(a, "\"k\"", "\"shared\"", true));
        // Keys that differ after a NUL character or in a lone surrogate (escaped, as the
        // page sends them) stay apart.
        const std::string withNul = "\"a\\u0000b\"";
        EXPECT_TRUE(storage.set(a, withNul, "1", false));
        EXPECT_TRUE(storage.set(a, "\"a\"", "2", false));
        EXPECT_TRUE(storage.set(a, "\"\\ud800\"", "3", false));
        EXPECT_TRUE(storage.set(a, "\"\\ud801\"", "4", false));
        EXPECT_EQ(storage.get(a, withNul, false), "1");
        EXPECT_EQ(storage.keys(a, false),
                  (Keys{"\"\\ud800\"", "\"\\ud801\"", "\"a\"", withNul, "\"k\""}));
        EXPECT_TRUE(storage.remove(a, "\"a\"", false));
        EXPECT_FALSE(storage.remove(a, "\"a\"", false));
        EXPECT_EQ(storage.get(b, "\"k\"", false), std::nullopt);
        storage.set(b, "\"k\"", "\"b's\"", false);
    }
    ArtifactStorage later{folder / "storage"};
    EXPECT_EQ(later.get("/art/./a.jsx", "\"k\"", false), "\"own\"");
    EXPECT_EQ(later.get(a, "\"k\"", true), "\"shared\"");
    EXPECT_EQ(later.get(a, "\"a\"", false), std::nullopt);
    EXPECT_EQ(later.get(b, "\"k\"", false), "\"b's\"");
    EXPECT_NE(later.fileFor(a), later.fileFor(b));
    EXPECT_EQ(later.fileFor(a).parent_path(), folder / "storage");
}

TEST_F(ArtifactStorageTest, RefusesWhatWouldPassTheLimitAndCountsReplacedValuesOnce) {
    ArtifactStorage storage{folder / "storage", 20};
    EXPECT_TRUE(storage.set(a, "k1", std::string(8, 'x'), false)); // 10 bytes
    EXPECT_TRUE(storage.set(a, "k2", std::string(8, 'y'), true));  // 20
    EXPECT_FALSE(storage.set(a, "k3", "z", false));
    EXPECT_EQ(storage.get(a, "k3", false), std::nullopt);
    EXPECT_TRUE(storage.set(a, "k1", std::string(8, 'w'), false)); // replaces: still 20
    EXPECT_TRUE(storage.set(b, "k3", "z", false));                 // another artifact's room
    storage.remove(a, "k2", true);
    EXPECT_TRUE(storage.set(a, "k3", "z", false));
}

TEST_F(ArtifactStorageTest, ABurstOfChangesIsOneWriteAndReadsNeverWaitForIt) {
    ArtifactStorage storage{folder / "storage"};
    for (int i = 0; i < 2000; ++i)
        storage.set(a, "\"key" + std::to_string(i) + "\"", std::string(100, 'v'), false);
    storage.flush();
    EXPECT_TRUE(std::filesystem::exists(storage.fileFor(a)));
    ArtifactStorage other{folder / "storage"};
    EXPECT_EQ(other.keys(a, false).size(), 2000U);
    EXPECT_EQ(ArtifactStorage::shared(folder / "storage"),
              ArtifactStorage::shared(folder / "storage"));
}

TEST_F(ArtifactStorageTest, DamagedFilesReadAsEmptyAndEarlierPlainFilesAreTakenOver) {
    ArtifactStorage storage{folder / "storage"};
    writeFile(storage.fileFor("/art/c.jsx"), "not a stored value");
    EXPECT_EQ(storage.keys("/art/c.jsx", false), Keys{});
    EXPECT_TRUE(storage.set("/art/c.jsx", "\"fresh\"", "\"start\"", false));

    // Values kept by an earlier version, as plain strings: found under their JSON form.
    GVariant* plain =
        g_variant_ref_sink(g_variant_new_parsed("({'theme': %s}, @a{ss} {})", "dark \"blue\"\n"));
    auto plainFile = storage.fileFor(b);
    plainFile.replace_extension(".gvariant");
    writeFile(plainFile, std::string{static_cast<const char*>(g_variant_get_data(plain)),
                                     g_variant_get_size(plain)});
    g_variant_unref(plain);
    EXPECT_EQ(storage.get(b, "\"theme\"", false), "\"dark \\\"blue\\\"\\n\"");
}

} // namespace
} // namespace kelmo
