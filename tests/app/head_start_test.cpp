#include "app/head_start.h"
#include "app/start_artifact.h"
#include "model/uuid.h"
#include "test_support.h"

#include <giomm/dbusownname.h>
#include <glib.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::TemporaryDirectory;

std::string unusedApplicationId() {
    std::string suffix = Uuid::random().toString();
    std::erase(suffix, '-');
    return "org.kelmo.HeadStartTest.A" + suffix;
}

class HeadStartTest : public ::testing::Test {
protected:
    HeadStartTest() {
        testing::writeFile(downloads() / "older.html", "<p>older</p>", std::chrono::hours{2});
        testing::writeFile(downloads() / "Newest.jsx", source);
    }

    std::filesystem::path downloads() const { return home / "Downloads"; }

    HeadStart::Places places() const {
        HeadStart::Places places;
        places.store.settingsFile = home / "settings.json";
        places.store.downloadsDirectory = [this] {
            return std::optional<std::filesystem::path>{downloads()};
        };
        places.compileCache = home / "compiled";
        return places;
    }

    // The compile helper in its head-start mode, started as the launcher starts it,
    // with this home as the user's (its settings, cache and Downloads).
    HandedOverCompile launcherHelper(const std::string& id, const std::vector<std::string>& files) {
        std::vector<std::string> arguments{compileHelperPath().string(), "--head-start", id};
        arguments.insert(arguments.end(), files.begin(), files.end());
        std::vector<gchar*> argv;
        for (auto& argument : arguments)
            argv.push_back(argument.data());
        argv.push_back(nullptr);
        gchar** environment = g_get_environ();
        environment = g_environ_setenv(environment, "HOME", home.path().c_str(), TRUE);
        environment =
            g_environ_setenv(environment, "XDG_CONFIG_HOME", (home / "config").c_str(), TRUE);
        environment =
            g_environ_setenv(environment, "XDG_CACHE_HOME", (home / "cache").c_str(), TRUE);
        GPid helper = 0;
        gint output = -1;
        const bool started =
            g_spawn_async_with_pipes(nullptr, argv.data(), environment, G_SPAWN_DO_NOT_REAP_CHILD,
                                     nullptr, nullptr, &helper, nullptr, &output, nullptr, nullptr);
        g_strfreev(environment);
        EXPECT_TRUE(started);
        return HandedOverCompile{output, helper};
    }

    // Where the launcher's helper keeps modules, as it uses the user's cache.
    std::filesystem::path helperCache() const { return home / "cache" / "kelmo" / "compiled"; }

    const std::string source = "export default function App() { return <p>new</p>; }\n";
    TemporaryDirectory home;
};

TEST_F(HeadStartTest, AFirstStartMakesItsStoreAndCompilesTheNewJsxItOpensInto) {
    HeadStart start{unusedApplicationId(), {}, places()};

    auto store = start.takeStore();
    ASSERT_TRUE(store);
    ASSERT_TRUE(store->selectedArtifact());
    EXPECT_EQ(store->selectedArtifact()->name, "Newest");
    EXPECT_FALSE(start.takeStore()) << "the store is handed over once";

    ASSERT_TRUE(start.compiler());
    const auto& cache = *start.compiler()->cache();
    EXPECT_TRUE(testing::runMainLoopUntil(
        [&] { return cache.lookup(cache.keyFor(source)).has_value(); }, std::chrono::seconds{60}));
}

TEST_F(HeadStartTest, AStartCompilesTheLastFileItIsGivenAndNothingForAPage) {
    const std::string given = "export default () => <p>given</p>;\n";
    testing::writeFile(home / "elsewhere" / "Given.tsx", given);
    testing::writeFile(home / "elsewhere" / "page.htm", "<p>page</p>");
    {
        HeadStart start{
            unusedApplicationId(), {(home / "elsewhere" / "Given.tsx").string()}, places()};
        ASSERT_TRUE(start.compiler());
        const auto& cache = *start.compiler()->cache();
        EXPECT_TRUE(
            testing::runMainLoopUntil([&] { return cache.lookup(cache.keyFor(given)).has_value(); },
                                      std::chrono::seconds{60}));
        EXPECT_FALSE(cache.lookup(cache.keyFor(source)));
    }
    HeadStart page{unusedApplicationId(), {(home / "elsewhere" / "page.htm").string()}, places()};
    EXPECT_TRUE(page.takeStore());
    EXPECT_FALSE(page.compiler()) << "a start that shows a page has nothing to compile";
}

TEST_F(HeadStartTest, AStartTakesOverTheCompileTheLauncherBeganAndKeepsItsModule) {
    const std::string id = unusedApplicationId();
    auto taken = places();
    taken.compileCache = helperCache();
    taken.handedOver = launcherHelper(id, {});
    HeadStart start{id, {}, std::move(taken)};
    ASSERT_TRUE(start.compiler());
    const auto& cache = *start.compiler()->cache();
    EXPECT_TRUE(testing::runMainLoopUntil(
        [&] { return cache.lookup(cache.keyFor(source)).has_value(); }, std::chrono::seconds{60}));
    EXPECT_FALSE(std::filesystem::exists(home / "config" / "kelmo" / "settings"))
        << "the helper's store writes to a copy of the settings";
    ASSERT_TRUE(testing::runMainLoopUntil(
        [&] { return !start.compiler()->isCompiling(cache.keyFor(source)); }));

    // Had the helper chosen another artifact, its module is kept, and this start leaves
    // its own to the page rather than run a second compile beside it.
    const std::string given = "export default () => <p>given</p>;\n";
    testing::writeFile(home / "elsewhere" / "Given.jsx", given);
    testing::writeFile(downloads() / "Newer.jsx", "export default () => <p>newer</p>;\n");
    auto differing = places();
    differing.compileCache = helperCache();
    differing.handedOver = launcherHelper(id, {(home / "elsewhere" / "Given.jsx").string()});
    HeadStart other{id, {}, std::move(differing)};
    ASSERT_TRUE(other.compiler());
    EXPECT_TRUE(testing::runMainLoopUntil(
        [&] { return cache.lookup(cache.keyFor(given)).has_value(); }, std::chrono::seconds{60}));
    EXPECT_FALSE(cache.lookup(cache.keyFor("export default () => <p>newer</p>;\n")));

    // Newer.jsx, not compiled yet, is what a start without files would open; a start
    // given only missing files opens nothing.
    EXPECT_EQ(
        launcherHelper(id, {(home / "missing.jsx").string()}).readKey(std::chrono::seconds{30}),
        std::nullopt);
}

TEST_F(HeadStartTest, ALaunchWhileKelmoRunsLeavesTheStoreAndTheCompileToIt) {
    const std::string id = unusedApplicationId();
    EXPECT_FALSE(isNameOwnedOnSessionBus(id));
    bool acquired = false;
    const auto owner = Gio::DBus::own_name(Gio::DBus::BusType::SESSION, id, {},
                                           [&](auto&&...) { acquired = true; });
    ASSERT_TRUE(testing::runMainLoopUntil([&] { return acquired; }));
    EXPECT_TRUE(isNameOwnedOnSessionBus(id));

    HeadStart start{id, {}, places()};
    EXPECT_FALSE(start.takeStore());
    EXPECT_FALSE(start.compiler());
    EXPECT_FALSE(std::filesystem::exists(home / "settings.json"))
        << "the running Kelmo owns the settings";
    Gio::DBus::unown_name(owner);
}

// The newest download, the last file given, and a page giving nothing are checked
// through HeadStart above.
TEST_F(HeadStartTest, TheArtifactCompiledAheadIsTheOneTheStartShows) {
    ArtifactStore store{places().store};
    const auto relative = std::filesystem::relative(home / "b.jsx");
    EXPECT_EQ(artifactToCompileAhead(store, {"a.jsx", relative.string()}),
              std::filesystem::absolute(relative));
    store.setSelectedArtifact(Artifact::from((downloads() / "older.html").string()));
    EXPECT_EQ(artifactToCompileAhead(store, {}), std::nullopt);
    store.setSelectedArtifact(std::nullopt);
    EXPECT_EQ(artifactToCompileAhead(store, {}), std::nullopt);
}

} // namespace
} // namespace kelmo
