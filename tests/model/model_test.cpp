#include "model/artifact.h"
#include "model/watched_folder.h"
#include "test_support.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <unordered_set>

namespace kelmo {
namespace {

using Kind = ArtifactType::Kind;

TEST(DetectType, DecidesByTheLowerCasedLastExtension) {
    EXPECT_EQ(detectType("/p/Page.HTML"), (ArtifactType{Kind::html, "/p/Page.HTML"}));
    EXPECT_EQ(detectType("/p/App.JSX").kind, Kind::jsx);
    EXPECT_EQ(detectType("/p/Widget.TsX").kind, Kind::tsx);
    for (const char* path : {"/p.jsx/README", "/p/archive.tsx.bak", "/p/notes.md", "/p/x."})
        EXPECT_EQ(detectType(path).kind, Kind::html) << path;
    EXPECT_NE(detectType("/a/x.html"), detectType("/b/x.html")) << "the type carries its file";

    // The folder filter ignores case too, but takes only the supported extensions.
    EXPECT_TRUE(hasSupportedExtension("/d/PAGE.HTM"));
    EXPECT_TRUE(hasSupportedExtension("/d/a.Jsx"));
    for (const char* path : {"/d/notes.md", "/d/html", "/d/a.tsx.bak"})
        EXPECT_FALSE(hasSupportedExtension(path)) << path;
}

TEST(ArtifactFrom, DropsOnlyTheLastExtensionAndReadsTheFileDateOrNow) {
    EXPECT_EQ(Artifact::from("/d/demo.final.jsx").name, "demo.final");
    EXPECT_EQ(Artifact::from("/d/README").name, "README");
    EXPECT_EQ(Artifact::from("/d/archive.tsx.bak").name, "archive.tsx");

    testing::TemporaryDirectory folder;
    const auto file = folder / "old.jsx";
    testing::writeFile(file, "x", std::chrono::hours{48});
    const Artifact artifact = Artifact::from(file);
    EXPECT_EQ(artifact.url, file);
    EXPECT_EQ(artifact.type, (ArtifactType{Kind::jsx, file}));
    const auto age = Clock::now() - artifact.modifiedAt;
    EXPECT_GT(age, std::chrono::hours{47});
    EXPECT_LT(age, std::chrono::hours{49});

    // A missing file still gives a record, dated now.
    const auto before = Clock::now();
    const Artifact ghost = Artifact::from("/no/such/dir/ghost.tsx");
    EXPECT_EQ(ghost.name, "ghost");
    EXPECT_GE(ghost.modifiedAt, before);
    EXPECT_LE(ghost.modifiedAt, Clock::now());
}

TEST(Identity, RecordsOfArtifactsAndFoldersAreEqualByTheirIdAlone) {
    const Artifact first = Artifact::from("/d/a.jsx");
    const Artifact second = Artifact::from("/d/a.jsx");
    EXPECT_NE(first, second) << "two records of one file";
    EXPECT_EQ(first.type, second.type);
    Artifact copy = first;
    copy.name = "changed";
    EXPECT_EQ(copy, first);

    const Uuid id = Uuid::random();
    EXPECT_EQ((WatchedFolder{id, "Projects", "/home/u/Projects"}),
              (WatchedFolder{id, "Other", "/elsewhere"}));
    EXPECT_NE((WatchedFolder{id, "Projects", "/p"}),
              (WatchedFolder{Uuid::random(), "Projects", "/p"}));
}

TEST(Uuid, IdsAreUpperCaseTextThatParsesBackInEitherCase) {
    const Uuid id = Uuid::random();
    std::string lower = id.toString();
    EXPECT_EQ(lower.find_first_of("abcdef"), std::string::npos);
    std::transform(lower.begin(), lower.end(), lower.begin(), ::tolower);
    EXPECT_EQ(Uuid::parse(lower), id);
    EXPECT_NE(Uuid::random(), id);
    for (const char* bad : {"", "E621E1F8-C36C-495A-93FC-0C247A3E6E5", // short
                            "E621E1F8C36C-495A-93FC-0C247A3E6E5F0",    // hyphen moved
                            "G621E1F8-C36C-495A-93FC-0C247A3E6E5F"})
        EXPECT_FALSE(Uuid::parse(bad).has_value()) << bad;
}

TEST(WatchedFolder, HoldsOnlyItsDirectChildrenByExactPath) {
    const WatchedFolder projects{Uuid::random(), "Projects", "/home/u/Projects"};
    const WatchedFolder home{Uuid::random(), "u", "/home/u"};
    const Artifact direct = Artifact::from("/home/u/Projects/demo.jsx");
    const Artifact nested = Artifact::from("/home/u/Projects/old/demo.jsx");

    EXPECT_TRUE(projects.contains(direct));
    EXPECT_FALSE(home.contains(direct));
    EXPECT_FALSE(projects.contains(nested));
    EXPECT_FALSE(projects.contains(Artifact::from("/home/u/ProjectsX/demo.jsx")));
    EXPECT_TRUE((WatchedFolder{Uuid::random(), "/", "/"}).contains(Artifact::from("/a.html")));
    EXPECT_FALSE((WatchedFolder{Uuid::random(), "p", "/home/U/Projects"}).contains(direct))
        << "paths compare case-sensitively";
    // Revealing a file opens the folder that holds it.
    EXPECT_EQ(containingDirectoryPath(nested.path()), "/home/u/Projects/old");
    EXPECT_EQ(containingDirectoryPath("/c.jsx"), "/");
}

} // namespace
} // namespace kelmo
