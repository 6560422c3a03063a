#include "model/artifact.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace kelmo {
namespace {

using Kind = ArtifactType::Kind;

TEST(DetectType, DecidesByTheLowerCasedLastExtension) {
    EXPECT_EQ(detectType("/p/Page.HTML").kind, Kind::html);
    EXPECT_EQ(detectType("/p/App.JSX").kind, Kind::jsx);
    EXPECT_EQ(detectType("/p/Widget.TsX").kind, Kind::tsx);
    EXPECT_EQ(detectType("/p/archive.tsx.bak").kind, Kind::html);
    EXPECT_EQ(detectType("/p.jsx/README").kind, Kind::html) << "a dot in a folder is no extension";
    for (const char* path : {"/p/logo.svg", "/p/notes.md", "/p/script.js", "/p/README", "/p/x."})
        EXPECT_EQ(detectType(path).kind, Kind::html) << path;
}

TEST(DetectType, CarriesTheUrlIntoEquality) {
    EXPECT_EQ(detectType("/a/x.html"), detectType("/a/x.html"));
    EXPECT_NE(detectType("/a/x.html"), detectType("/b/x.html"));
    EXPECT_NE(detectType("/a/x.jsx"), (ArtifactType{Kind::tsx, "/a/x.jsx"}));
}

TEST(SupportedExtensions, FilterIgnoresCase) {
    EXPECT_TRUE(hasSupportedExtension("/d/PAGE.HTM"));
    EXPECT_TRUE(hasSupportedExtension("/d/a.Jsx"));
    EXPECT_FALSE(hasSupportedExtension("/d/notes.md"));
    EXPECT_FALSE(hasSupportedExtension("/d/html"));
    EXPECT_FALSE(hasSupportedExtension("/d/a.tsx.bak"));
}

TEST(ArtifactFrom, NamesDropOnlyTheLastExtension) {
    EXPECT_EQ(Artifact::from("/d/demo.final.jsx").name, "demo.final");
    EXPECT_EQ(Artifact::from("/d/Landing Page.html").name, "Landing Page");
    EXPECT_EQ(Artifact::from("/d/README").name, "README");
    EXPECT_EQ(Artifact::from("/d/archive.tsx.bak").name, "archive.tsx");
}

TEST(ArtifactFrom, KeepsTheUrlAndReadsTheFileDate) {
    testing::TemporaryDirectory folder;
    const auto file = folder / "old.jsx";
    testing::writeFile(file, "x", std::chrono::hours{48});

    const Artifact artifact = Artifact::from(file);
    EXPECT_EQ(artifact.url, file);
    EXPECT_EQ(artifact.type, (ArtifactType{Kind::jsx, file}));
    const auto age = Clock::now() - artifact.modifiedAt;
    EXPECT_GT(age, std::chrono::hours{47});
    EXPECT_LT(age, std::chrono::hours{49});
}

TEST(ArtifactFrom, MissingFileStillGivesARecordDatedNow) {
    const auto before = Clock::now();
    const Artifact artifact = Artifact::from("/no/such/dir/ghost.tsx");
    const auto after = Clock::now();
    EXPECT_EQ(artifact.name, "ghost");
    EXPECT_GE(artifact.modifiedAt, before);
    EXPECT_LE(artifact.modifiedAt, after);
}

TEST(ArtifactIdentity, TwoRecordsOfOneFileDifferButTheirTypesMatch) {
    const Artifact first = Artifact::from("/d/a.jsx");
    const Artifact second = Artifact::from("/d/a.jsx");
    EXPECT_NE(first.id, second.id);
    EXPECT_NE(first, second);
    EXPECT_EQ(first.type, second.type);

    Artifact copy = first;
    copy.name = "changed";
    EXPECT_EQ(copy, first) << "equality is by id alone";
    EXPECT_EQ(std::hash<Artifact>{}(copy), std::hash<Artifact>{}(first));
}

TEST(Uuid, RandomIdsAreVersionFourUpperCaseText) {
    std::unordered_set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        const std::string text = Uuid::random().toString();
        ASSERT_EQ(text.size(), 36u);
        EXPECT_EQ(text[14], '4');
        EXPECT_NE(std::string{"89AB"}.find(text[19]), std::string::npos);
        EXPECT_EQ(text.find_first_of("abcdef"), std::string::npos);
        seen.insert(text);
    }
    EXPECT_EQ(seen.size(), 1000u);
}

TEST(Uuid, ParsesEitherCaseAndRejectsOtherText) {
    const Uuid id = Uuid::random();
    std::string lower = id.toString();
    for (char& c : lower)
        c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_EQ(Uuid::parse(id.toString()), id);
    EXPECT_EQ(Uuid::parse(lower), id);
    for (const char* bad : {"", "not-a-uuid", "E621E1F8-C36C-495A-93FC-0C247A3E6E5", // short
                            "E621E1F8C36C-495A-93FC-0C247A3E6E5F0",                  // hyphen moved
                            "G621E1F8-C36C-495A-93FC-0C247A3E6E5F"})
        EXPECT_FALSE(Uuid::parse(bad).has_value()) << bad;
}

} // namespace
} // namespace kelmo
