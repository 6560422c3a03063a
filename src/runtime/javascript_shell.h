#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace kelmo {

// The bytecode that JavaScriptCore's command-line shell (`jsc`) keeps for the scripts it
// runs, and reuses on the next run: loaded from there, Babel's bundle starts in about a
// third of the time it takes to parse. The engine's library API keeps no such cache.
//
// One folder per build of the shell (its size and modification time): another build's
// bytecode is of no use, and the shell, finding a file stale, appends fresh bytecode to
// it on every run instead of replacing it. A new folder starts from the one made at
// build time for the same shell, when there is one, copied in whole before it is used;
// the folders of other builds go. A folder grown past its limit starts over.
class ShellBytecodeCache {
public:
    ShellBytecodeCache(std::filesystem::path root, std::filesystem::path seedRoot,
                       std::string shellIdentity, std::uintmax_t sizeLimit = 64u << 20);

    // <user cache>/kelmo/javascript-bytecode.
    static std::filesystem::path defaultRoot();
    // share/kelmo/javascript-bytecode under the installation prefix.
    static std::filesystem::path installedSeedRoot();
    // The shell's size and modification time as a folder name; empty when it is missing.
    static std::string identityOf(const std::filesystem::path& shell);

    // The folder to give the shell, ready; nothing when it cannot be made.
    std::optional<std::filesystem::path> prepare() const;
    // Removes the folder, after the shell failed with it.
    void discard() const;

    std::filesystem::path folder() const { return root_ / identity_; }

private:
    bool seed() const;
    void removeOtherBuilds() const;

    std::filesystem::path root_;
    std::filesystem::path seedRoot_;
    std::string identity_;
    std::uintmax_t sizeLimit_;
};

// What running the compiler script in the shell came to.
struct ShellCompile {
    enum class Outcome {
        compiled,       // module holds the module as JSON text
        sourceRejected, // Babel threw: the source does not compile
        failed,         // the shell did not run the script through
    };
    Outcome outcome = Outcome::failed;
    std::string module;
};

// Runs the compiler script over the source in the shell, with its bytecode in the folder
// (none when empty), and the same engine tiers as keepJavaScriptToQuickTiers().
// The driver script loads Babel and the compiler script, named after it on the shell's
// command line, and compiles the source from standard input.
ShellCompile compileInShell(const std::filesystem::path& shell,
                            const std::filesystem::path& bytecodeFolder,
                            const std::filesystem::path& driver, const std::filesystem::path& babel,
                            const std::filesystem::path& compiler, const std::string& source);

} // namespace kelmo
