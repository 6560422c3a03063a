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

TEST_F(ArtifactStorageTest, KeepsOwnAndSharedValuesApartPerArtifactFileAcrossObjects) {
    storage.setArtifact("/art/a.jsx");
    EXPECT_EQ(storage.get("k", false), std::nullopt);
    storage.set("k", "own", false);
    storage.set("k", "shared", true);
    storage.set("k2", "ünïcode\n\"quoted\"", false);
    EXPECT_EQ(storage.get("k", false), "own");
    EXPECT_EQ(storage.get("k", true), "shared");
    EXPECT_EQ(storage.get("k2", false), "ünïcode\n\"quoted\"");
    EXPECT_EQ(storage.list("", false), (Keys{"k", "k2"}));
    EXPECT_EQ(storage.list("k2", false), (Keys{"k2"}));
    EXPECT_EQ(storage.list("", true), (Keys{"k"}));
    EXPECT_TRUE(storage.remove("k", false));
    EXPECT_FALSE(storage.remove("k", false));
    EXPECT_EQ(storage.get("k", true), "shared");

    // Each artifact file has values of its own, and they outlive the object.
    storage.set("score", "10", false);
    storage.setArtifact("/art/b.jsx");
    EXPECT_EQ(storage.get("score", false), std::nullopt);

    ArtifactStorage later{folder / "storage"};
    later.setArtifact("/art/./a.jsx");
    EXPECT_EQ(later.get("score", false), "10");
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
