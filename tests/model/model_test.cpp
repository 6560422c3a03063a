#include "model/artifact.h"
#include "model/sidebar_item.h"
#include "model/watched_folder.h"
#include "test_support.h"

#include <gtest/gtest.h>
#include <unordered_set>

namespace kelmo {
namespace {

using Kind = ArtifactType::Kind;

TEST(DetectType, DecidesByTheLowerCasedLastExtensionAndCarriesTheUrlIntoEquality) {
    EXPECT_EQ(detectType("/p/Page.HTML").kind, Kind::html);
    EXPECT_EQ(detectType("/p/App.JSX").kind, Kind::jsx);
    EXPECT_EQ(detectType("/p/Widget.TsX").kind, Kind::tsx);
    EXPECT_EQ(detectType("/p.jsx/README").kind, Kind::html) << "a dot in a folder is no extension";
    for (const char* path :
         {"/p/archive.tsx.bak", "/p/logo.svg", "/p/notes.md", "/p/script.js", "/p/README", "/p/x."})
        EXPECT_EQ(detectType(path).kind, Kind::html) << path;

    EXPECT_EQ(detectType("/a/x.html"), detectType("/a/x.html"));
    EXPECT_NE(detectType("/a/x.html"), detectType("/b/x.html"));
    EXPECT_NE(detectType("/a/x.jsx"), (ArtifactType{Kind::tsx, "/a/x.jsx"}));

    // The folder filter ignores case too, but takes only the supported extensions.
    EXPECT_TRUE(hasSupportedExtension("/d/PAGE.HTM"));
    EXPECT_TRUE(hasSupportedExtension("/d/a.Jsx"));
    for (const char* path : {"/d/notes.md", "/d/html", "/d/a.tsx.bak"})
        EXPECT_FALSE(hasSupportedExtension(path)) << path;
}

TEST(ArtifactFrom, DropsOnlyTheLastExtensionAndReadsTheFileDateOrNow) {
    EXPECT_EQ(Artifact::from("/d/demo.final.jsx").name, "demo.final");
    EXPECT_EQ(Artifact::from("/d/Landing Page.html").name, "Landing Page");
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

TEST(Uuid, RandomIdsAreVersionFourUpperCaseTextThatParsesBackInEitherCase) {
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

    // Parsed back in either case; other text is rejected.
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

TEST(SidebarItem, EqualityAndHashGoByCaseAndFolderId) {
    const Uuid a = Uuid::random();
    const Uuid b = Uuid::random();
    EXPECT_EQ(SidebarItem::folder(a), SidebarItem::folder(a));
    EXPECT_NE(SidebarItem::folder(a), SidebarItem::folder(b));
    EXPECT_NE(SidebarItem::folder(a), SidebarItem::library());

    const SidebarItem fixed[] = {SidebarItem::library(), SidebarItem::recents(),
                                 SidebarItem::favorites()};
    for (const auto& x : fixed)
        for (const auto& y : fixed)
            EXPECT_EQ(x == y, x.kind() == y.kind());

    const std::hash<SidebarItem> hash;
    EXPECT_EQ(hash(SidebarItem::folder(a)), hash(SidebarItem::folder(a)));
    EXPECT_EQ(hash(SidebarItem::recents()), hash(SidebarItem::recents()));

    std::unordered_set<SidebarItem> set{SidebarItem::library(), SidebarItem::recents(),
                                        SidebarItem::favorites(), SidebarItem::folder(a),
                                        SidebarItem::folder(a)};
    for (int i = 0; i < 100; ++i)
        set.insert(SidebarItem::folder(Uuid::random()));
    EXPECT_EQ(set.size(), 104u);
}

TEST(WatchedFolder, IdentityIsTheIdAlone) {
    const Uuid id = Uuid::random();
    const WatchedFolder first{id, "Projects", "/home/u/Projects"};
    const WatchedFolder renamed{id, "Other", "/elsewhere"};
    EXPECT_EQ(first, renamed);
    EXPECT_EQ(std::hash<WatchedFolder>{}(first), std::hash<WatchedFolder>{}(renamed));
    EXPECT_NE(first, (WatchedFolder{Uuid::random(), "Projects", "/home/u/Projects"}));
}

TEST(WatchedFolder, HoldsOnlyItsDirectChildrenByExactPath) {
    const WatchedFolder projects{Uuid::random(), "Projects", "/home/u/Projects"};
    const WatchedFolder home{Uuid::random(), "u", "/home/u"};
    const Artifact direct = Artifact::from("/home/u/Projects/demo.jsx");
    const Artifact nested = Artifact::from("/home/u/Projects/old/demo.jsx");
    const Artifact sibling = Artifact::from("/home/u/ProjectsX/demo.jsx");

    EXPECT_TRUE(projects.contains(direct));
    EXPECT_FALSE(home.contains(direct));
    EXPECT_FALSE(projects.contains(nested));
    EXPECT_FALSE(home.contains(nested));
    EXPECT_FALSE(projects.contains(sibling));
    EXPECT_TRUE((WatchedFolder{Uuid::random(), "/", "/"}).contains(Artifact::from("/a.html")));
    EXPECT_FALSE((WatchedFolder{Uuid::random(), "p", "/home/U/Projects"}).contains(direct))
        << "paths compare case-sensitively";
}

TEST(Paths, ContainingDirectoryAndTrailingSlashes) {
    EXPECT_EQ(containingDirectoryPath("/a/b/c.jsx"), "/a/b");
    EXPECT_EQ(containingDirectoryPath("/c.jsx"), "/");
    EXPECT_EQ(withoutTrailingSlash("/a/b//"), "/a/b");
    EXPECT_EQ(withoutTrailingSlash("/"), "/");
}

} // namespace
} // namespace kelmo
