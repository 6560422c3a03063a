#include "runtime/artifact_storage.h"
#include "test_support.h"

#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;
using testing::writeFile;

using Keys = std::vector<std::string>;

class ArtifactStorageTest : public ::testing::Test {
protected:
    TemporaryDirectory folder;
    ArtifactStorage storage{folder / "storage"};
};

// The page's storage API (own and shared values, per artifact, across reloads and
// views) is checked in ArtifactLibraryTest.StorageKeepsValuesPerArtifactAcrossReloads.
TEST_F(ArtifactStorageTest, KeepsOwnAndSharedValuesApartListsByPrefixAndNamesFilesByPath) {
    storage.setArtifact("/art/a.jsx");
    storage.set("k", "own", false);
    storage.set("k", "shared", true);
    storage.set("k2", "ünïcode\n\"quoted\"", false);
    EXPECT_EQ(storage.get("k2", false), "ünïcode\n\"quoted\"");
    EXPECT_EQ(storage.list("", false), (Keys{"k", "k2"}));
    EXPECT_EQ(storage.list("k2", false), (Keys{"k2"}));
    EXPECT_TRUE(storage.remove("k", false));
    EXPECT_FALSE(storage.remove("k", false));
    EXPECT_EQ(storage.get("k", true), "shared");

    ArtifactStorage later{folder / "storage"};
    later.setArtifact("/art/./a.jsx");
    EXPECT_EQ(later.get("k2", false), "ünïcode\n\"quoted\"");
    EXPECT_NE(later.fileFor("/art/a.jsx"), later.fileFor("/art/b.jsx"));
    EXPECT_EQ(later.fileFor("/art/a.jsx").parent_path(), folder / "storage");
}

TEST_F(ArtifactStorageTest, WithoutAnArtifactOrWithADamagedFileNothingIsFound) {
    storage.set("lost", "value", false);
    EXPECT_EQ(storage.get("lost", false), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(folder / "storage"));

    writeFile(storage.fileFor("/art/c.jsx"), "not a stored value");
    storage.setArtifact("/art/c.jsx");
    EXPECT_EQ(storage.list("", false), Keys{});
    storage.set("fresh", "start", false);
    EXPECT_EQ(storage.get("fresh", false), "start");
}

} // namespace
} // namespace kelmo
