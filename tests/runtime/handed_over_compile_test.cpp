#include "runtime/handed_over_compile.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <string>

namespace kelmo {
namespace {

const std::string key(64, 'a');

struct Spawned {
    int output;
    GPid process;
};

// A stand-in for the compile helper: a shell running the script, its output on a pipe.
Spawned spawnHelper(const std::string& script) {
    const gchar* argv[] = {"/bin/sh", "-c", script.c_str(), nullptr};
    GPid process = 0;
    gint output = -1;
    GError* error = nullptr;
    const bool started = g_spawn_async_with_pipes(nullptr, const_cast<gchar**>(argv), nullptr,
                                                  G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr,
                                                  &process, nullptr, &output, nullptr, &error);
    EXPECT_TRUE(started) << (error ? error->message : "");
    g_clear_error(&error);
    return {output, process};
}

HandedOverCompile helperRunning(const std::string& script) {
    const auto spawned = spawnHelper(script);
    return HandedOverCompile{spawned.output, spawned.process};
}

TEST(HandedOverCompileTest, TheKeyLineComesFirstThenTheModuleOfAHelperThatSucceeds) {
    auto compiled = helperRunning("printf '" + key + "\\n{\"code\":\"x\"}'");
    EXPECT_EQ(compiled.readKey(std::chrono::seconds{10}), key);
    EXPECT_EQ(compiled.readModule(), R"({"code":"x"})");

    auto failed = helperRunning("printf '" + key + "\\npartial'; exit 1");
    EXPECT_EQ(failed.readKey(std::chrono::seconds{10}), key);
    EXPECT_EQ(failed.readModule(), std::nullopt) << "a helper that fails leaves no module";
}

TEST(HandedOverCompileTest, NoKeyFromAHelperWithNothingToCompileAMalformedLineOrNoAnswer) {
    EXPECT_EQ(helperRunning("exit 0").readKey(std::chrono::seconds{10}), std::nullopt);
    EXPECT_EQ(helperRunning("printf 'abc\\n'").readKey(std::chrono::seconds{10}), std::nullopt);
    EXPECT_EQ(helperRunning("printf '" + key + "a\\n'").readKey(std::chrono::seconds{10}),
              std::nullopt);

    // The wait ends at its deadline, and the helper with it: the destructor ends and
    // reaps it rather than waiting out its sleep.
    const auto start = std::chrono::steady_clock::now();
    {
        auto silent = helperRunning("exec sleep 30");
        EXPECT_EQ(silent.readKey(std::chrono::milliseconds{100}), std::nullopt);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds{10});
}

TEST(HandedOverCompileTest, TheEnvironmentNamesItOnceAndOnlyWhenWellFormed) {
    g_unsetenv(handedOverCompileVariable);
    EXPECT_FALSE(HandedOverCompile::fromEnvironment());
    for (const char* value : {"not numbers", "3", "-1 5", "3 5x"}) {
        g_setenv(handedOverCompileVariable, value, TRUE);
        EXPECT_FALSE(HandedOverCompile::fromEnvironment()) << value;
        EXPECT_EQ(g_getenv(handedOverCompileVariable), nullptr) << "taken out of the environment";
    }

    const auto spawned = spawnHelper("printf '" + key + "\\n'");
    const auto named = std::to_string(spawned.output) + " " + std::to_string(spawned.process);
    g_setenv(handedOverCompileVariable, named.c_str(), TRUE);
    auto taken = HandedOverCompile::fromEnvironment();
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->readKey(std::chrono::seconds{10}), key);
    EXPECT_FALSE(HandedOverCompile::fromEnvironment()) << "once";
}

} // namespace
} // namespace kelmo
