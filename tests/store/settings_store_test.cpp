#include "store/settings_store.h"
#include "test_support.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::readFile;
using testing::TemporaryDirectory;
using testing::writeFile;

Glib::VariantBase parse(const char* text) {
    return Glib::VariantBase{g_variant_parse(nullptr, text, nullptr, nullptr, nullptr)};
}

std::vector<std::string> filesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(SettingsStore, MissingFileIsAnEmptyStore) {
    TemporaryDirectory dir;
    SettingsStore settings{dir / "kelmo" / "settings"};
    EXPECT_FALSE(settings.stringArray("recentPaths"));
    EXPECT_FALSE(settings.array("watchedFolderBookmarks"));
    EXPECT_FALSE(settings.boolValue("hasSeenOnboarding"));
    EXPECT_FALSE(std::filesystem::exists(dir / "kelmo")) << "reading creates nothing";
}

TEST(SettingsStore, ValuesSurviveARestartInReadableText) {
    TemporaryDirectory dir;
    const auto file = dir / "kelmo" / "settings";
    {
        SettingsStore settings{file};
        settings.setStringArray("recentPaths", {"/a/b.jsx", "/c/d é.html"});
        settings.setBool("hasSeenOnboarding", true);
        settings.set("blob", makeBytesVariant({0, 1, 255}));
        settings.set("gone", makeStringVariant("x"));
        settings.removeObject("gone");
    }
    SettingsStore reopened{file};
    EXPECT_EQ(reopened.stringArray("recentPaths"),
              (std::vector<std::string>{"/a/b.jsx", "/c/d é.html"}));
    EXPECT_TRUE(reopened.boolValue("hasSeenOnboarding"));
    EXPECT_EQ(bytesValue(reopened.value("blob")), (std::vector<std::uint8_t>{0, 1, 255}));
    EXPECT_FALSE(reopened.value("gone"));
    EXPECT_NE(readFile(file).find("'recentPaths'"), std::string::npos);
    EXPECT_EQ(filesIn(dir / "kelmo"), std::vector<std::string>{"settings"})
        << "an atomic write leaves no temporary file behind";
}

TEST(SettingsStore, UnparsableFileIsMovedAsideNotLost) {
    for (const std::string& content : {std::string{"{'recentPaths': <['/a'"},
                                       std::string{"\xff\xfe not text"}, std::string{"[1, 2]"}}) {
        TemporaryDirectory dir;
        const auto file = dir / "settings";
        writeFile(file, content);
        SettingsStore settings{file};
        EXPECT_FALSE(settings.stringArray("recentPaths"));

        const auto names = filesIn(dir.path());
        ASSERT_EQ(names.size(), 1u);
        EXPECT_EQ(names[0].rfind("settings.corrupt-", 0), 0u) << names[0];
        EXPECT_EQ(readFile(dir / names[0]), content);

        settings.setBool("hasSeenOnboarding", true);
        EXPECT_TRUE(SettingsStore{file}.boolValue("hasSeenOnboarding"));
    }
}

TEST(SettingsStore, TypedReadersRejectForeignShapes) {
    TemporaryDirectory dir;
    SettingsStore settings{dir / "settings"};
    settings.set("mixed", parse("[<'/a'>, <3>]"));
    settings.set("boxedStrings", parse("[<'/a'>, <'/b'>]"));
    settings.set("number", parse("7"));
    settings.set("dictionary", parse("{'a': <1>}"));
    settings.set("emptyList", parse("@as []"));

    EXPECT_FALSE(settings.stringArray("mixed")) << "a number among strings is no string list";
    EXPECT_EQ(settings.stringArray("boxedStrings"), (std::vector<std::string>{"/a", "/b"}));
    EXPECT_FALSE(settings.stringArray("number"));
    EXPECT_FALSE(settings.array("dictionary")) << "a dictionary is not a list";
    EXPECT_EQ(settings.stringArray("emptyList"), std::vector<std::string>{});
    EXPECT_EQ(settings.array("mixed")->size(), 2u);
}

TEST(SettingsStore, BoolReadsLooselyAndDefaultsToFalse) {
    TemporaryDirectory dir;
    SettingsStore settings{dir / "settings"};
    const std::pair<const char*, bool> cases[] = {
        {"true", true},   {"false", false},   {"1", true},        {"0", false},
        {"2.5", true},    {"'YES'", true},    {"'no'", false},    {"['x']", false},
        {"<true>", true}, {"int64 0", false}, {"'maybe'", false},
    };
    for (const auto& [text, expected] : cases) {
        settings.set("flag", parse(text));
        EXPECT_EQ(settings.boolValue("flag"), expected) << text;
    }
    EXPECT_FALSE(settings.boolValue("absent"));
}

TEST(SettingsVariants, DictionaryAndArrayHelpersRoundTrip) {
    const auto record = makeDictionaryVariant(
        {{"id", makeStringVariant("X")}, {"bookmark", makeBytesVariant({1, 2})}});
    const auto entries = dictionaryEntries(record);
    ASSERT_TRUE(entries);
    EXPECT_EQ(stringValue(entries->at("id")), "X");
    EXPECT_EQ(bytesValue(entries->at("bookmark")), (std::vector<std::uint8_t>{1, 2}));
    EXPECT_FALSE(stringValue(entries->at("bookmark")));
    EXPECT_FALSE(dictionaryEntries(makeStringVariant("x")));

    const auto list = makeArrayVariant({record, record});
    EXPECT_STREQ(list.get_type_string().c_str(), "aa{sv}");
    const auto mixed = makeArrayVariant({record, makeStringVariant("x")});
    EXPECT_STREQ(mixed.get_type_string().c_str(), "av");
}

} // namespace
} // namespace kelmo
