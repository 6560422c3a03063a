#include "runtime/handed_over_compile.h"

#include <glib.h>
#include <gtest/gtest.h>
#include <string>

namespace kelmo {
namespace {

using std::chrono::seconds;

const std::string key(64, 'a');

// A stand-in for the compile helper: a shell running the script, its output on a pipe.
HandedOverCompile helperRunning(const std::string& script) {
    const gchar* argv[] = {"/bin/sh", "-c", script.c_str(), nullptr};
    GPid process = 0;
    gint output = -1;
    EXPECT_TRUE(g_spawn_async_with_pipes(nullptr, const_cast<gchar**>(argv), nullptr,
                                         G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr, &process,
                                         nullptr, &output, nullptr, nullptr));
    return HandedOverCompile{output, process};
}

TEST(HandedOverCompileTest, TheKeyLineComesFirstAndOnlyAHelperThatSucceedsLeavesAModule) {
    auto compiled = helperRunning("printf '" + key + "\\n{\"code\":\"x\"}'");
    EXPECT_EQ(compiled.readKey(seconds{10}), key);
    EXPECT_EQ(compiled.readModule(), R"({"code":"x"})");

    auto failed = helperRunning("printf '" + key + "\\npartial'; exit 1");
    EXPECT_EQ(failed.readKey(seconds{10}), key);
    EXPECT_EQ(failed.readModule(), std::nullopt);

    EXPECT_EQ(helperRunning("exit 0").readKey(seconds{10}), std::nullopt) << "nothing to compile";
    EXPECT_EQ(helperRunning("printf '" + key + "a\\n'").readKey(seconds{10}), std::nullopt);
}

TEST(HandedOverCompileTest, ASilentHelperIsEndedAtTheDeadlineAndTheEnvironmentNamesOneOnce) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(helperRunning("exec sleep 30").readKey(std::chrono::milliseconds{100}), std::nullopt);
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds{10}) << "ended, not waited for";

    g_setenv(handedOverCompileVariable, "3 5x", TRUE);
    EXPECT_FALSE(HandedOverCompile::fromEnvironment());
    EXPECT_EQ(g_getenv(handedOverCompileVariable), nullptr) << "taken out of the environment";
}

} // namespace
} // namespace kelmo
