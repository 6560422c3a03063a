#include "runtime/babel_context.h"
#include "runtime/javascript_shell.h"
#include "runtime/scheme_support.h"
#include "test_support.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace kelmo {
namespace {

using testing::readFile;
using testing::TemporaryDirectory;
using testing::writeFile;

std::vector<std::string> namesIn(const std::filesystem::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator{folder, error})
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

TEST(ShellBytecodeCacheTest, ANewFolderStartsFromTheBuildsOwnAndOtherBuildsGo) {
    TemporaryDirectory home;
    writeFile(home / "seed" / "build-2" / "1-babel.min.js.bytecode-cache", "babel");
    writeFile(home / "seed" / "build-2" / "2-compiler.js.bytecode-cache", "compiler");
    writeFile(home / "seed" / "build-1" / "1-babel.min.js.bytecode-cache", "older");
    writeFile(home / "cache" / "build-1" / "1-babel.min.js.bytecode-cache", "older");
    // A seeding that ended with its process long ago, and one under way.
    writeFile(home / "cache" / ".seeding-abandoned" / "1-babel.min.js.bytecode-cache", "cut");
    std::filesystem::last_write_time(home / "cache" / ".seeding-abandoned",
                                     std::filesystem::file_time_type::clock::now() -
                                         std::chrono::hours{1});
    writeFile(home / "cache" / ".seeding-running" / "1-babel.min.js.bytecode-cache", "cut");

    const ShellBytecodeCache cache{home / "cache", home / "seed", "build-2"};
    EXPECT_EQ(cache.prepare(), home / "cache" / "build-2");
    EXPECT_EQ(namesIn(home / "cache"), (std::vector<std::string>{".seeding-running", "build-2"}));
    std::filesystem::remove_all(home / "cache" / ".seeding-running");
    EXPECT_EQ(readFile(home / "cache" / "build-2" / "1-babel.min.js.bytecode-cache"), "babel");
    EXPECT_EQ(readFile(home / "cache" / "build-2" / "2-compiler.js.bytecode-cache"), "compiler");

    // What the shell added since is kept; the seed is not copied over it again.
    writeFile(home / "cache" / "build-2" / "1-babel.min.js.bytecode-cache", "babel, grown");
    EXPECT_TRUE(cache.prepare());
    EXPECT_EQ(readFile(home / "cache" / "build-2" / "1-babel.min.js.bytecode-cache"),
              "babel, grown");

    // Without a seed for the build the folder starts empty.
    const ShellBytecodeCache unseeded{home / "cache", home / "seed", "build-3"};
    EXPECT_EQ(unseeded.prepare(), home / "cache" / "build-3");
    EXPECT_TRUE(namesIn(home / "cache" / "build-3").empty());
    EXPECT_EQ(namesIn(home / "cache"), std::vector<std::string>{"build-3"});

    // Without a shell, or with nowhere to write, there is no folder to give it.
    EXPECT_EQ(ShellBytecodeCache(home / "cache", home / "seed", "").prepare(), std::nullopt);
    EXPECT_EQ(ShellBytecodeCache("/proc/kelmo-bytecode", home / "seed", "build-2").prepare(),
              std::nullopt);
}

TEST(ShellBytecodeCacheTest, AFolderGrownPastItsLimitOrDiscardedStartsOver) {
    TemporaryDirectory home;
    writeFile(home / "seed" / "build-1" / "1-babel.min.js.bytecode-cache", "seed");
    const ShellBytecodeCache cache{home / "cache", home / "seed", "build-1", 16};
    ASSERT_TRUE(cache.prepare());

    // A stale file that the shell appended to on every run.
    writeFile(home / "cache" / "build-1" / "1-babel.min.js.bytecode-cache", std::string(17, 'x'));
    EXPECT_TRUE(cache.prepare());
    EXPECT_EQ(readFile(home / "cache" / "build-1" / "1-babel.min.js.bytecode-cache"), "seed");

    writeFile(home / "cache" / "build-1" / "1-babel.min.js.bytecode-cache", "cut sho");
    cache.discard();
    EXPECT_FALSE(std::filesystem::exists(home / "cache" / "build-1"));
    EXPECT_TRUE(cache.prepare());
    EXPECT_EQ(readFile(home / "cache" / "build-1" / "1-babel.min.js.bytecode-cache"), "seed");
}

TEST(ShellBytecodeCacheTest, TheShellsIdentityFollowsItsFile) {
    TemporaryDirectory home;
    EXPECT_EQ(ShellBytecodeCache::identityOf(home / "jsc"), "");
    EXPECT_EQ(ShellBytecodeCache::identityOf(home.path()), "");
    writeFile(home / "jsc", "shell 1");
    const auto identity = ShellBytecodeCache::identityOf(home / "jsc");
    EXPECT_FALSE(identity.empty());
    EXPECT_EQ(identity.find('/'), std::string::npos);
    EXPECT_EQ(ShellBytecodeCache::identityOf(home / "jsc"), identity);
    writeFile(home / "jsc", "shell 1", std::chrono::hours{24});
    EXPECT_NE(ShellBytecodeCache::identityOf(home / "jsc"), identity);
}

#ifdef KELMO_JAVASCRIPT_SHELL

class JavaScriptShellTest : public ::testing::Test {
protected:
    const std::filesystem::path shell{KELMO_JAVASCRIPT_SHELL};
    const std::filesystem::path resources{KELMO_RESOURCES_DIR};
    const std::filesystem::path driver = resources / "compile-in-shell.js";
    const std::filesystem::path babel = resources / "babel.min.js";
    const std::filesystem::path compiler = resources / "artifact-compiler.js";
    TemporaryDirectory home;

    ShellCompile compile(const std::string& source, const std::filesystem::path& bytecode) const {
        return compileInShell(shell, bytecode, driver, babel, compiler, source);
    }
};

TEST_F(JavaScriptShellTest, CompilesAsTheInProcessEngineDoesAndKeepsTheBytecode) {
    const std::string source = "import { useState } from 'react';\n"
                               "type Props = { title: string };\n"
                               "export default function Card({ title }: Props) {\n"
                               "  const [n] = useState(0);\n"
                               "  return <p title=\"ünï\">{title} 😀 {n}</p>;\n"
                               "}\n";
    const auto inProcess =
        compileInContext(*readWholeFile(babel), *readWholeFile(compiler), source);
    ASSERT_TRUE(inProcess);
    EXPECT_NE(inProcess->find(R"("imports":["react","react/jsx-runtime"])"), std::string::npos);

    const auto folder = home / "bytecode";
    std::filesystem::create_directories(folder);
    const auto first = compile(source, folder);
    ASSERT_EQ(first.outcome, ShellCompile::Outcome::compiled);
    EXPECT_EQ(first.module, *inProcess);
    const auto kept = namesIn(folder);
    EXPECT_TRUE(std::any_of(kept.begin(), kept.end(), [](const std::string& name) {
        return name.ends_with("-babel.min.js.bytecode-cache");
    }));

    const auto second = compile(source, folder);
    ASSERT_EQ(second.outcome, ShellCompile::Outcome::compiled);
    EXPECT_EQ(second.module, *inProcess);
}

TEST_F(JavaScriptShellTest, ASourceThatDoesNotCompileIsToldApartFromAShellThatFails) {
    EXPECT_EQ(compile("export default () => <p>", {}).outcome,
              ShellCompile::Outcome::sourceRejected);
    EXPECT_EQ(compile("", {}).outcome, ShellCompile::Outcome::compiled);

    EXPECT_EQ(compileInShell(home / "no-jsc", {}, driver, babel, compiler, "<p/>").outcome,
              ShellCompile::Outcome::failed);
    EXPECT_EQ(compileInShell(shell, {}, driver, home / "none.js", compiler, "<p/>").outcome,
              ShellCompile::Outcome::failed);

    // A bytecode file cut short makes the shell crash.
    const auto folder = home / "bytecode";
    std::filesystem::create_directories(folder);
    ASSERT_EQ(compile("<p/>", folder).outcome, ShellCompile::Outcome::compiled);
    for (const auto& name : namesIn(folder))
        std::filesystem::resize_file(folder / name, 4096);
    EXPECT_EQ(compile("<p/>", folder).outcome, ShellCompile::Outcome::failed);
}

// The helper program, when the shell fails on its cache, compiles all the same and
// starts the cache over.
TEST_F(JavaScriptShellTest, TheHelperCompilesWhateverBecomesOfTheShellsCache) {
    const std::string cacheHome = (home / "cache").string();
    const auto folder =
        home / "cache" / "kelmo" / "javascript-bytecode" / ShellBytecodeCache::identityOf(shell);
    auto runHelper = [&] {
        gchar** environment =
            g_environ_setenv(g_get_environ(), "XDG_CACHE_HOME", cacheHome.c_str(), TRUE);
        const std::string command =
            "sh -c 'echo \"export default () => <p/>;\" | \"$0\" \"$1\" \"$2\"' " +
            std::string{KELMO_COMPILE_HELPER} + " " + babel.string() + " " + compiler.string();
        gchar** argv = nullptr;
        g_shell_parse_argv(command.c_str(), nullptr, &argv, nullptr);
        gchar* output = nullptr;
        gint status = -1;
        g_spawn_sync(nullptr, argv, environment, G_SPAWN_SEARCH_PATH, nullptr, nullptr, &output,
                     nullptr, &status, nullptr);
        std::string module = output ? output : "";
        g_free(output);
        g_strfreev(argv);
        g_strfreev(environment);
        return g_spawn_check_wait_status(status, nullptr) ? module : std::string{};
    };

    const auto module = runHelper();
    EXPECT_NE(module.find("jsx-runtime"), std::string::npos);
    ASSERT_FALSE(namesIn(folder).empty());
    for (const auto& name : namesIn(folder))
        std::filesystem::resize_file(folder / name, 4096);
    EXPECT_EQ(runHelper(), module);
    EXPECT_FALSE(std::filesystem::exists(folder));
    EXPECT_EQ(runHelper(), module);
    EXPECT_FALSE(namesIn(folder).empty());
}

#endif

} // namespace
} // namespace kelmo
