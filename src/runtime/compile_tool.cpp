// kelmo-compile BABEL SCRIPT: compiles the JSX or TSX source on standard input with
// the Babel bundle and the compiler script, and writes the module (JSON text) to
// standard output. Exits with 1, writing nothing, when anything fails.
//
// kelmo-compile --head-start APPLICATION_ID [ARGUMENT…]: run by the launcher beside
// the application's start, with the start's arguments. Finds the JSX or TSX artifact
// that the start will open into, as the application does; when no running Kelmo
// holds the application's name and the artifact's module is not kept yet, writes its
// compile key and a newline, then compiles it as above (see HandedOverCompile).
// Otherwise writes nothing.
//
// kelmo-compile --seed-bytecode FOLDER SOURCE…: compiles the sources in JavaScriptCore's
// shell, keeping its bytecode under the folder (see ShellBytecodeCache); the build
// installs that folder for first runs to start from.
//
// Babel runs in JavaScriptCore's shell when the build found one, with the bytecode it
// kept from earlier runs, and in this process when there is none or it fails.
//
// The application compiles ahead of its pages in this process of its own, so that
// the memory Babel leaves behind goes back to the system as soon as the compile ends.

#include "app/command_line.h"
#include "app/start_artifact.h"
#include "runtime/babel_context.h"
#include "runtime/compile_cache.h"
#include "runtime/javascript_shell.h"
#include "runtime/resource_locator.h"
#include "runtime/scheme_support.h"

#include <cstdio>
#include <glib.h>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <vector>

namespace {

// No artifact takes Babel this long; a compile that does is ended by the system, and
// the artifact's page compiles it instead.
constexpr rlim_t processorSecondsAllowed = 60;

// Compiles in JavaScriptCore's shell when there is one, for its bytecode cache; in a
// context of this process's own when the shell fails for any reason but the source.
std::optional<std::string> compileToModule(const std::filesystem::path& babelFile,
                                           const std::filesystem::path& scriptFile,
                                           const std::string& source) {
#ifdef KELMO_JAVASCRIPT_SHELL
    const std::filesystem::path shell{KELMO_JAVASCRIPT_SHELL};
    const auto driver = kelmo::ResourceLocator::application().url("compile-in-shell", "js");
    const kelmo::ShellBytecodeCache bytecode{kelmo::ShellBytecodeCache::defaultRoot(),
                                             kelmo::ShellBytecodeCache::installedSeedRoot(),
                                             kelmo::ShellBytecodeCache::identityOf(shell)};
    if (const auto folder = driver ? bytecode.prepare() : std::nullopt) {
        auto result = kelmo::compileInShell(shell, *folder, *driver, babelFile, scriptFile, source);
        if (result.outcome == kelmo::ShellCompile::Outcome::compiled)
            return std::move(result.module);
        if (result.outcome == kelmo::ShellCompile::Outcome::sourceRejected)
            return std::nullopt;
        bytecode.discard();
    }
#endif
    const auto babel = kelmo::readWholeFile(babelFile);
    const auto script = kelmo::readWholeFile(scriptFile);
    if (!babel || !script)
        return std::nullopt;
    return kelmo::compileInContext(*babel, *script, source);
}

bool compile(const std::filesystem::path& babelFile, const std::filesystem::path& scriptFile,
             const std::string& source) {
    const auto module = compileToModule(babelFile, scriptFile, source);
    if (!module)
        return false;
    std::fwrite(module->data(), 1, module->size(), stdout);
    return std::fflush(stdout) == 0;
}

// The artifact the start will open into, chosen by a store of its own over a copy of
// the settings: the application's store owns the real file, and nothing written here
// may reach it.
std::optional<std::filesystem::path> artifactTheStartOpens(const std::vector<std::string>& files) {
    kelmo::ArtifactStore::Environment environment;
    gchar* scratch = g_dir_make_tmp("kelmo-head-start-XXXXXX", nullptr);
    if (!scratch)
        return std::nullopt;
    const std::filesystem::path folder{scratch};
    g_free(scratch);
    std::error_code error;
    std::filesystem::copy_file(environment.settingsFile, folder / "settings", error);
    environment.settingsFile = folder / "settings";
    std::optional<std::filesystem::path> file;
    {
        kelmo::ArtifactStore store{std::move(environment)};
        file = kelmo::artifactToCompileAhead(store, files);
    }
    std::filesystem::remove_all(folder, error);
    return file;
}

int headStart(const std::string& applicationId, const std::vector<std::string>& arguments) {
    if (kelmo::isNameOwnedOnSessionBus(applicationId))
        return 0;
    const auto files = kelmo::checkFileArguments(kelmo::fileArguments(arguments));
    // Given only missing files, the start reports them and ends.
    if (files.existing.empty() && !files.missing.empty())
        return 0;
    const auto file = artifactTheStartOpens(files.existing);
    if (!file)
        return 0;
    const auto source = kelmo::readWholeFile(*file);
    if (!source || !kelmo::isValidUtf8(*source))
        return 0;
    const auto& resources = kelmo::ResourceLocator::application();
    const auto babel = resources.url("babel.min", "js");
    const auto script = resources.url("artifact-compiler", "js");
    if (!babel || !script)
        return 0;
    const kelmo::CompileCache cache{kelmo::CompileCache::defaultDirectory(),
                                    kelmo::CompileCache::fingerprintOf(resources)};
    const std::string key = cache.keyFor(*source);
    if (cache.lookup(key))
        return 0;
    std::printf("%s\n", key.c_str());
    if (std::fflush(stdout) != 0)
        return 1;
    return compile(*babel, *script, *source) ? 0 : 1;
}

// Compiles each source in the shell with its bytecode kept under the folder, as the
// build does to give first runs Babel's bytecode ready made.
int seedBytecode(const std::filesystem::path& root, const std::vector<std::string>& sources) {
#ifdef KELMO_JAVASCRIPT_SHELL
    const std::filesystem::path shell{KELMO_JAVASCRIPT_SHELL};
    const auto& resources = kelmo::ResourceLocator::application();
    const auto driver = resources.url("compile-in-shell", "js");
    const auto babel = resources.url("babel.min", "js");
    const auto script = resources.url("artifact-compiler", "js");
    const kelmo::ShellBytecodeCache bytecode{
        root, {}, kelmo::ShellBytecodeCache::identityOf(shell)};
    const auto folder = bytecode.prepare();
    if (!driver || !babel || !script || !folder)
        return 1;
    for (const auto& file : sources) {
        const auto source = kelmo::readWholeFile(file);
        if (!source ||
            kelmo::compileInShell(shell, *folder, *driver, *babel, *script, *source).outcome !=
                kelmo::ShellCompile::Outcome::compiled)
            return 1;
    }
    return 0;
#else
    (void)root;
    (void)sources;
    return 0;
#endif
}

} // namespace

int main(int argc, char* argv[]) {
    const rlimit processorTime{processorSecondsAllowed, processorSecondsAllowed};
    setrlimit(RLIMIT_CPU, &processorTime);
    kelmo::keepJavaScriptToQuickTiers();
    if (argc >= 3 && std::string_view{argv[1]} == "--head-start") {
        // The start's own command line, program name first.
        std::vector<std::string> arguments{"kelmo"};
        arguments.insert(arguments.end(), argv + 3, argv + argc);
        return headStart(argv[2], arguments);
    }
    if (argc >= 3 && std::string_view{argv[1]} == "--seed-bytecode")
        return seedBytecode(argv[2], std::vector<std::string>(argv + 3, argv + argc));
    if (argc != 3) {
        std::fputs("usage: kelmo-compile BABEL SCRIPT < SOURCE > MODULE\n"
                   "       kelmo-compile --head-start APPLICATION_ID [ARGUMENT…]\n"
                   "       kelmo-compile --seed-bytecode FOLDER SOURCE…\n",
                   stderr);
        return 2;
    }
    const std::string source{std::istreambuf_iterator<char>{std::cin},
                             std::istreambuf_iterator<char>{}};
    return compile(argv[1], argv[2], source) ? 0 : 1;
}
